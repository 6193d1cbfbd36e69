#include "app/SettingsStore.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <sys/stat.h>
#include <utility>

#include "app/AtomicFile.h"
#include "app/FileLock.h"
#include "app/TextFile.h"
#include "core/RunError.h"

namespace zw {
namespace {

std::string lower(std::string_view text)
{
    std::string out(text);
    std::transform(out.begin(), out.end(), out.begin(),
                   [](char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; });
    return out;
}

bool sameName(std::string_view a, std::string_view b) { return a.size() == b.size() && lower(a) == lower(b); }

// Escapes what would break a line or the key/value split: backslash, CR, LF, and in names '=' and '['.
std::string escape(std::string_view text, bool isName)
{
    std::string out;
    for (char c : text) {
        switch (c) {
        case '\\': out += "\\\\"; break;
        case '\n': out += "\\n"; break;
        case '\r': out += "\\r"; break;
        case '=': out += isName ? "\\=" : "="; break;
        case '[': out += isName ? "\\[" : "["; break;
        case ']': out += isName ? "\\]" : "]"; break;
        default: out += c;
        }
    }
    return out;
}

// Undoes escape; a backslash before anything else was written by hand and stays.
std::string unescape(std::string_view text)
{
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char next = i + 1 < text.size() ? text[i + 1] : '\0';
        if (text[i] != '\\' || std::string_view("\\nr=[]").find(next) == std::string_view::npos || next == '\0') {
            out += text[i];
            continue;
        }
        out += next == 'n' ? '\n' : next == 'r' ? '\r' : next;
        ++i;
    }
    return out;
}

// Position of the first '=' that no backslash escapes.
std::size_t findSeparator(std::string_view line)
{
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '\\')
            ++i;
        else if (line[i] == '=')
            return i;
    }
    return std::string_view::npos;
}

std::string environment(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
}

using Line = SettingsStore::Line;
using Lines = SettingsStore::Lines;

Lines parse(const std::string& text)
{
    Lines lines;
    for (auto& raw : splitLines(text)) {
        Line line;
        if (raw.size() >= 2 && raw.front() == '[' && raw.back() == ']') {
            line.kind = Line::Kind::Section;
            line.name = unescape(std::string_view(raw).substr(1, raw.size() - 2));
        } else if (auto separator = findSeparator(raw); separator != std::string::npos) {
            line.kind = Line::Kind::Key;
            line.name = unescape(std::string_view(raw).substr(0, separator));
            line.value = unescape(std::string_view(raw).substr(separator + 1));
        }
        line.text = std::move(raw);
        lines.push_back(std::move(line));
    }
    return lines;
}

Line keyLine(std::string_view key, std::string_view value)
{
    return {Line::Kind::Key, escape(key, true) + "=" + escape(value, false), std::string(key), std::string(value)};
}

// The lines of one section: from its head to the next head. Keys before the first section belong to no section
// the program asks for; they are only kept.
struct SectionRange
{
    std::size_t head;
    std::size_t end;
};

std::vector<SectionRange> sectionsNamed(const Lines& lines, std::string_view section)
{
    std::vector<SectionRange> found;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].kind != Line::Kind::Section || !sameName(lines[i].name, section))
            continue;
        std::size_t end = i + 1;
        while (end < lines.size() && lines[end].kind != Line::Kind::Section)
            ++end;
        found.push_back({i, end});
    }
    return found;
}

Line* findKey(Lines& lines, std::string_view section, std::string_view key)
{
    for (const auto& range : sectionsNamed(lines, section)) {
        for (std::size_t i = range.head + 1; i < range.end; ++i) {
            if (lines[i].kind == Line::Kind::Key && sameName(lines[i].name, key))
                return &lines[i];
        }
    }
    return nullptr;
}

} // namespace

SettingsStore::SettingsStore(std::filesystem::path folder) : m_folder(std::move(folder))
{
    // An interrupted save of an earlier run leaves a copy of the settings, password included; it goes.
    removeStaleTemporaryFiles(m_folder, programStartTime());
}

std::filesystem::path SettingsStore::defaultFolder()
{
    if (auto own = environment("ZETTELWERK_CONFIG"); !own.empty())
        return own;
    if (auto xdg = environment("XDG_CONFIG_HOME"); !xdg.empty())
        return std::filesystem::path(xdg) / "Zettelwerk";
    return std::filesystem::path(environment("HOME")) / ".config" / "Zettelwerk";
}

std::filesystem::path SettingsStore::fileOf(std::string_view application) const
{
    // Application names compare without case, so "Zettelwerk" and "zettelwerk" share one file, as they shared
    // one branch of the old store.
    return m_folder / (lower(application) + ".ini");
}

void SettingsStore::setNoticeRoutine(NoticeRoutine routine)
{
    m_notice = std::move(routine);
    if (!m_notice)
        return;
    for (const auto& message : std::exchange(m_waitingNotices, {}))
        m_notice(message);
}

void SettingsStore::tell(const std::string& message) const
{
    if (m_notice)
        m_notice(message);
    else
        m_waitingNotices.push_back(message);
}

SettingsStore::Lines& SettingsStore::lines(std::string_view application) const
{
    auto name = lower(application);
    auto found = m_files.find(name);
    if (found != m_files.end())
        return found->second;
    Lines& loaded = m_files[name];
    const auto file = fileOf(application);
    try {
        loaded = parse(readFileBytes(file));
    } catch (const RunError& error) {
        if (error.number() != RunError::fileNotFound().number()) {
            m_unreadable.insert(name);
            tell("Die Einstellungsdatei " + file.string() +
                 " konnte nicht gelesen werden. Das Programm arbeitet bis zum Ende mit den Standardwerten und "
                 "überschreibt die Datei nicht.");
        }
    }
    return loaded;
}

bool SettingsStore::readable(std::string_view application) const
{
    lines(application);
    return !m_unreadable.contains(lower(application));
}

std::string SettingsStore::serialize(std::string_view application) const
{
    std::string out;
    for (const auto& line : lines(application))
        out += line.text + "\n";
    return out;
}

bool SettingsStore::change(std::string_view application, const std::function<bool(Lines&)>& edit)
{
    Lines& cached = lines(application);
    if (m_unreadable.contains(lower(application)))
        return edit(cached); // the values hold for this run; what could not be read is never replaced
    const auto file = fileOf(application);
    bool changed = false;
    try {
        std::error_code ignored;
        if (!std::filesystem::exists(m_folder, ignored)) {
            std::filesystem::create_directories(m_folder, ignored);
            ::chmod(m_folder.c_str(), 0700);
        }
        // Under the lock the change is made to what is on disk now, so that another program's settings stay.
        updateFileLocked(file, [&](const FileOnDisk& onDisk) -> std::optional<std::string> {
            if (onDisk.exists)
                cached = parse(onDisk.bytes);
            changed = edit(cached);
            if (!changed)
                return std::nullopt;
            // Narrowed before the replacement, which keeps the mode it finds.
            ::chmod(file.c_str(), 0600);
            return serialize(application);
        }, 0600);
        m_lastWriteError.clear();
        m_writeFailureTold = false;
    } catch (const RunError& error) {
        if (!changed)
            changed = edit(cached);
        m_lastWriteError = error.description();
        if (!std::exchange(m_writeFailureTold, true))
            tell("Die Einstellungen konnten nicht in " + file.string() + " gespeichert werden (" +
                 error.description() + "). Änderungen gelten nur bis zum Ende des Programms.");
    }
    return changed;
}

std::string SettingsStore::get(std::string_view application, std::string_view section, std::string_view key,
                               std::string_view defaultValue) const
{
    if (const Line* line = findKey(lines(application), section, key))
        return line->value;
    return std::string(defaultValue);
}

void SettingsStore::save(std::string_view application, std::string_view section, std::string_view key,
                         std::string_view value)
{
    change(application, [&](Lines& lines) {
        if (Line* line = findKey(lines, section, key)) {
            if (line->value != value)
                *line = keyLine(line->name, value);
            return true;
        }
        auto sections = sectionsNamed(lines, section);
        if (sections.empty()) {
            lines.push_back({Line::Kind::Section, "[" + escape(section, true) + "]", std::string(section), {}});
            lines.push_back(keyLine(key, value));
            return true;
        }
        // A new key goes behind the section's last key, before the blank lines and comments that end it.
        std::size_t at = sections.front().head + 1;
        for (std::size_t i = at; i < sections.front().end; ++i) {
            if (lines[i].kind == Line::Kind::Key)
                at = i + 1;
        }
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at), keyLine(key, value));
        return true;
    });
}

bool SettingsStore::remove(std::string_view application, std::string_view section, std::string_view key)
{
    return change(application, [&](Lines& lines) {
        Line* line = findKey(lines, section, key);
        if (line == nullptr)
            return false;
        lines.erase(lines.begin() + (line - lines.data()));
        return true;
    });
}

bool SettingsStore::removeSection(std::string_view application, std::string_view section)
{
    return change(application, [&](Lines& lines) {
        auto sections = sectionsNamed(lines, section);
        if (sections.empty())
            return false;
        lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(sections.front().head),
                    lines.begin() + static_cast<std::ptrdiff_t>(sections.front().end));
        return true;
    });
}

} // namespace zw
