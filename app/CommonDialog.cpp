#include "app/CommonDialog.h"

#include <filesystem>

namespace zw {

std::vector<CommonDialog::FilterEntry> CommonDialog::parseFilter(std::string_view filter)
{
    std::vector<std::string_view> parts;
    for (std::size_t start = 0;;) {
        const auto bar = filter.find('|', start);
        parts.push_back(filter.substr(start, bar == std::string_view::npos ? std::string_view::npos : bar - start));
        if (bar == std::string_view::npos)
            break;
        start = bar + 1;
    }
    std::vector<FilterEntry> entries;
    for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
        FilterEntry entry{std::string(parts[i]), {}};
        std::string_view patterns = parts[i + 1];
        for (std::size_t start = 0; start <= patterns.size();) {
            const auto semicolon = patterns.find(';', start);
            const auto end = semicolon == std::string_view::npos ? patterns.size() : semicolon;
            if (end > start)
                entry.patterns.emplace_back(patterns.substr(start, end - start));
            start = end + 1;
        }
        entries.push_back(std::move(entry));
    }
    return entries;
}

RunError CommonDialog::cancelled() { return {kCancelNumber, "Abbrechen wurde gewählt."}; }

void CommonDialog::show(bool forSaving)
{
    std::optional<std::string> chosen;
    if (m_presenter)
        chosen = m_presenter(*this, forSaving);
    if (!chosen || chosen->empty()) {
        FileName.clear();
        if (CancelError)
            throw cancelled();
        return;
    }
    FileName = std::move(*chosen);
    if (!DefaultExt.empty() && std::filesystem::path(FileName).extension().empty()) {
        FileName += DefaultExt.front() == '.' ? DefaultExt : "." + DefaultExt;
    }
}

} // namespace zw
