#include "lists/Autocomplete.h"

#include <algorithm>
#include <optional>
#include <unordered_set>

#include "app/AtomicFile.h"
#include "app/TextFile.h"
#include "core/CodePage.h"
#include "core/RunError.h"

namespace zw {
namespace {

// The next code point of UTF-8 text at pos, which moves past it. A byte that starts no valid sequence
// stands for itself, so odd text compares without harm.
char32_t nextCodePoint(std::string_view text, std::size_t& pos)
{
    const auto lead = static_cast<unsigned char>(text[pos]);
    int length = lead < 0x80           ? 1
                 : (lead >> 5) == 0x6  ? 2
                 : (lead >> 4) == 0xE  ? 3
                 : (lead >> 3) == 0x1E ? 4
                                       : 0;
    if (length == 0 || pos + static_cast<std::size_t>(length) > text.size()) {
        ++pos;
        return lead;
    }
    char32_t cp = length == 1 ? lead : lead & (0x7F >> length);
    for (int i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[pos + static_cast<std::size_t>(i)]);
        if ((next & 0xC0) != 0x80) {
            ++pos;
            return lead;
        }
        cp = (cp << 6) | (next & 0x3F);
    }
    pos += static_cast<std::size_t>(length);
    return cp;
}

char32_t upperOf(char32_t c)
{
    if ((c >= U'a' && c <= U'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7))
        return c - 0x20;
    switch (c) {
    case 0xFF:
        return 0x178; // ÿ
    case 0x161:
        return 0x160; // š
    case 0x153:
        return 0x152; // œ
    case 0x17E:
        return 0x17D; // ž
    default:
        return c;
    }
}

std::u32string codePoints(std::string_view text, IgnoreCase ignoreCase)
{
    std::u32string out;
    for (std::size_t pos = 0; pos < text.size();) {
        char32_t c = nextCodePoint(text, pos);
        out += ignoreCase == IgnoreCase::Yes ? upperOf(c) : c;
    }
    return out;
}

// The entry cut to as many characters as `wanted` has (upper-cased when asked) equals `wanted`; compared
// character by character, so that a keystroke over a long list allocates nothing.
bool beginsWith(std::string_view entry, const std::u32string& wanted, IgnoreCase ignoreCase)
{
    std::size_t pos = 0;
    for (char32_t want : wanted) {
        if (pos >= entry.size())
            return false;
        char32_t c = nextCodePoint(entry, pos);
        if (ignoreCase == IgnoreCase::Yes)
            c = upperOf(c);
        if (c != want)
            return false;
    }
    return true;
}

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

void fieldsOfLine(std::string_view line, std::vector<std::string>& fields)
{
    std::size_t pos = 0;
    for (;;) {
        while (pos < line.size() && isBlank(line[pos]))
            ++pos;
        std::size_t end = 0;
        if (pos < line.size() && line[pos] == '"') {
            std::size_t close = line.find('"', pos + 1);
            if (close == std::string_view::npos)
                close = line.size(); // an unclosed quote ends with its line, taking no other line with it
            fields.emplace_back(line.substr(pos + 1, close - pos - 1));
            end = line.find(',', close);
        } else {
            end = line.find(',', pos);
            std::size_t last = end == std::string_view::npos ? line.size() : end;
            while (last > pos && isBlank(line[last - 1]))
                --last;
            fields.emplace_back(line.substr(pos, last - pos));
        }
        if (end == std::string_view::npos)
            return;
        pos = end + 1; // a comma at the line's end still opens an empty field
    }
}

} // namespace

std::string upperCase(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    for (std::size_t pos = 0; pos < text.size();)
        appendUtf8(out, upperOf(nextCodePoint(text, pos)));
    return out;
}

int fieldLength(std::string_view text)
{
    int length = 0;
    for (std::size_t pos = 0; pos < text.size();)
        length += nextCodePoint(text, pos) >= 0x10000 ? 2 : 1;
    return length;
}

std::vector<std::string> readInputFields(std::string_view text)
{
    std::vector<std::string> fields;
    for (const std::string& line : splitLines(std::string(text)))
        fieldsOfLine(line, fields);
    return fields;
}

std::vector<std::string> readAutocompleteFile(const std::filesystem::path& file)
{
    return readInputFields(cp1252ToUtf8(readFileBytes(file)));
}

Autocomplete::Autocomplete(std::filesystem::path file) : m_file(std::move(file)) {}

void Autocomplete::AddEntry(std::string text)
{
    m_entries.push_back(std::move(text));
}

bool Autocomplete::Exists(std::string_view text, IgnoreCase ignoreCase) const
{
    const std::string wanted = ignoreCase == IgnoreCase::Yes ? upperCase(text) : std::string(text);
    for (const std::string& entry : m_entries)
        if (entry == wanted)
            return true;
    return false;
}

std::string Autocomplete::Complete(std::string_view text, IgnoreCase ignoreCase) const
{
    if (Exists(text, ignoreCase))
        return {};
    const std::u32string wanted = codePoints(text, ignoreCase);
    for (const std::string& entry : m_entries)
        if (beginsWith(entry, wanted, ignoreCase))
            return entry;
    return {};
}

void Autocomplete::LoadEntries()
{
    std::vector<std::string> fields;
    // Stamped before the read: a change that slips in between makes the next save merge rather than overwrite.
    const FileStamp stamp = stampOf(m_file);
    try {
        fields = readAutocompleteFile(m_file);
    } catch (const RunError& error) {
        if (error.number() == RunError::fileNotFound().number())
            return;
        throw;
    }
    takeFields(std::move(fields));
    m_stamp = stamp;
}

void Autocomplete::takeFields(std::vector<std::string> fields)
{
    // Exists(field) against the elements so far, kept in a set so that a long file loads in linear time; the
    // element being filled is still empty, so an empty field always counts as present.
    std::vector<std::string> loaded(2);
    std::unordered_set<std::string> present{""};
    for (std::size_t i = 0; i < fields.size(); ++i) {
        loaded.resize(i + 1);
        std::string upper = upperCase(fields[i]);
        if (!present.contains(upper)) {
            loaded[i] = std::move(fields[i]);
            present.insert(loaded[i]);
        }
    }
    m_entries = std::move(loaded);
    m_savedCount = m_entries.size();
}

void Autocomplete::SaveEntries()
{
    m_stamp = updateFileLocked(m_file, [this](const FileOnDisk& onDisk) -> std::optional<std::string> {
        if (onDisk.exists && stampOf(m_file) != m_stamp) {
            std::vector<std::string> added(m_entries.begin() + static_cast<std::ptrdiff_t>(
                                                                   std::min(m_savedCount, m_entries.size())),
                                           m_entries.end());
            takeFields(readInputFields(cp1252ToUtf8(onDisk.bytes)));
            m_entries.insert(m_entries.end(), added.begin(), added.end());
        }
        std::string bytes;
        for (const auto& entry : m_entries)
            bytes += utf8ToCp1252(entry) + "\r\n";
        return bytes;
    });
    m_savedCount = m_entries.size();
}

} // namespace zw
