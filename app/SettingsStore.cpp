#include "app/SettingsStore.h"

#include <algorithm>
#include <cstdlib>
#include <sys/stat.h>

#include "app/AtomicFile.h"
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

std::string unescape(std::string_view text)
{
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 1 < text.size()) {
            char next = text[++i];
            out += next == 'n' ? '\n' : next == 'r' ? '\r' : next;
        } else {
            out += text[i];
        }
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

} // namespace

SettingsStore::SettingsStore(std::filesystem::path folder) : m_folder(std::move(folder)) {}

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

SettingsStore::Tree& SettingsStore::tree(std::string_view application) const
{
    auto name = lower(application);
    auto found = m_trees.find(name);
    if (found != m_trees.end())
        return found->second;
    Tree& loaded = m_trees[name];
    std::string text;
    try {
        text = readFileBytes(fileOf(application));
    } catch (const RunError&) {
        return loaded; // no file yet: an empty tree
    }
    Section* current = nullptr;
    for (const auto& line : splitLines(text)) {
        if (line.size() >= 2 && line.front() == '[' && line.back() == ']') {
            loaded.push_back({unescape(std::string_view(line).substr(1, line.size() - 2)), {}});
            current = &loaded.back();
            continue;
        }
        auto separator = findSeparator(line);
        if (current == nullptr || separator == std::string::npos)
            continue; // a line of no known form is skipped, not fatal
        current->keys.emplace_back(unescape(std::string_view(line).substr(0, separator)),
                                   unescape(std::string_view(line).substr(separator + 1)));
    }
    return loaded;
}

std::string SettingsStore::serialize(std::string_view application) const
{
    std::string out;
    for (const auto& section : tree(application)) {
        out += "[" + escape(section.name, true) + "]\n";
        for (const auto& [key, value] : section.keys)
            out += escape(key, true) + "=" + escape(value, false) + "\n";
    }
    return out;
}

void SettingsStore::write(std::string_view application)
{
    try {
        std::error_code ignored;
        if (!std::filesystem::exists(m_folder, ignored)) {
            std::filesystem::create_directories(m_folder, ignored);
            ::chmod(m_folder.c_str(), 0700);
        }
        writeFileAtomically(fileOf(application), serialize(application), 0600);
        m_lastWriteError.clear();
    } catch (const RunError& error) {
        m_lastWriteError = error.description();
    }
}

std::string SettingsStore::get(std::string_view application, std::string_view section, std::string_view key,
                               std::string_view defaultValue) const
{
    for (const auto& s : tree(application)) {
        if (!sameName(s.name, section))
            continue;
        for (const auto& [name, value] : s.keys) {
            if (sameName(name, key))
                return value;
        }
    }
    return std::string(defaultValue);
}

void SettingsStore::save(std::string_view application, std::string_view section, std::string_view key,
                         std::string_view value)
{
    Tree& sections = tree(application);
    auto s = std::find_if(sections.begin(), sections.end(), [&](const Section& e) { return sameName(e.name, section); });
    if (s == sections.end()) {
        sections.push_back({std::string(section), {}});
        s = std::prev(sections.end());
    }
    auto k = std::find_if(s->keys.begin(), s->keys.end(), [&](const auto& e) { return sameName(e.first, key); });
    if (k == s->keys.end())
        s->keys.emplace_back(std::string(key), std::string(value));
    else
        k->second = value;
    write(application);
}

bool SettingsStore::remove(std::string_view application, std::string_view section, std::string_view key)
{
    Tree& sections = tree(application);
    for (auto& s : sections) {
        if (!sameName(s.name, section))
            continue;
        auto k = std::find_if(s.keys.begin(), s.keys.end(), [&](const auto& e) { return sameName(e.first, key); });
        if (k == s.keys.end())
            return false;
        s.keys.erase(k);
        write(application);
        return true;
    }
    return false;
}

bool SettingsStore::removeSection(std::string_view application, std::string_view section)
{
    Tree& sections = tree(application);
    auto s = std::find_if(sections.begin(), sections.end(), [&](const Section& e) { return sameName(e.name, section); });
    if (s == sections.end())
        return false;
    sections.erase(s);
    write(application);
    return true;
}

} // namespace zw
