#include "lists/AutocompleteEditor.h"

#include <algorithm>
#include <optional>
#include <unordered_set>

#include "app/LineMerge.h"
#include "app/TextFile.h"
#include "core/CodePage.h"
#include "core/FormHost.h"
#include "core/RunError.h"
#include "lists/Autocomplete.h"

namespace zw {

void AutocompleteEditor::open()
{
    m_lines.clear();
    m_opened.clear();
    m_stamp = stampOf(m_list.file());
    try {
        m_lines = readAutocompleteFile(m_list.file());
    } catch (const RunError&) {
        return;
    }
    m_opened = m_lines;
    count();
}

void AutocompleteEditor::count()
{
    m_countCaption = "Einträge: " + std::to_string(m_lines.size());
}

void AutocompleteEditor::addEntry(const std::string& text)
{
    m_lines.push_back(text);
    count();
}

void AutocompleteEditor::deleteMarked(const std::vector<std::size_t>& marked)
{
    if (marked.empty()) {
        // The platform's box, with OK alone.
        m_host.messageBox("Es sind keine Einträge zum Löschen markiert!", static_cast<int>(MessageStyle::Information),
                          "Autovervollständigung");
        return;
    }
    std::vector<std::size_t> lastFirst = marked;
    std::sort(lastFirst.rbegin(), lastFirst.rend());
    lastFirst.erase(std::unique(lastFirst.begin(), lastFirst.end()), lastFirst.end());
    for (std::size_t index : lastFirst)
        if (index < m_lines.size())
            m_lines.erase(m_lines.begin() + static_cast<std::ptrdiff_t>(index));
}

void AutocompleteEditor::clearList()
{
    m_lines.clear();
}

void AutocompleteEditor::removeDuplicates()
{
    // The first occurrence keeps its place; the set keeps a long list from taking quadratic time.
    std::vector<std::string> kept;
    std::unordered_set<std::string> seen;
    for (std::string& line : m_lines)
        if (seen.insert(line).second)
            kept.push_back(std::move(line));
    m_lines = std::move(kept);
    count();
}

void AutocompleteEditor::save()
{
    m_stamp = updateFileLocked(m_list.file(), [this](const FileOnDisk& onDisk) -> std::optional<std::string> {
        if (onDisk.exists && stampOf(m_list.file()) != m_stamp) {
            m_lines = mergeLineChanges(m_opened, m_lines, readInputFields(cp1252ToUtf8(onDisk.bytes)));
            count();
        }
        std::string bytes;
        for (const auto& line : m_lines)
            bytes += utf8ToCp1252(line) + "\r\n";
        return bytes;
    });
    m_opened = m_lines;
}

void AutocompleteEditor::back()
{
    m_list.LoadEntries();
    m_list.SaveEntries();
}

} // namespace zw
