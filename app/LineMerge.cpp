#include "app/LineMerge.h"

#include <algorithm>
#include <map>

namespace zw {
namespace {

using Counts = std::map<std::string, int>;

Counts countsOf(const std::vector<std::string>& lines)
{
    Counts counts;
    for (const auto& line : lines)
        ++counts[line];
    return counts;
}

} // namespace

std::vector<std::string> mergeLineChanges(const std::vector<std::string>& loaded, const std::vector<std::string>& mine,
                                          const std::vector<std::string>& onDisk)
{
    if (onDisk == loaded)
        return mine;
    const Counts before = countsOf(loaded);
    const Counts after = countsOf(mine);
    Counts removed;
    for (const auto& [line, count] : before) {
        auto now = after.find(line);
        if (int gone = count - (now == after.end() ? 0 : now->second); gone > 0)
            removed[line] = gone;
    }
    std::vector<std::string> merged;
    merged.reserve(onDisk.size() + mine.size());
    for (const auto& line : onDisk) {
        if (auto found = removed.find(line); found != removed.end() && found->second > 0) {
            --found->second;
            continue;
        }
        merged.push_back(line);
    }
    // Added lines are those of mine beyond the count loaded had; each goes where it stands in mine, or at the end.
    Counts kept = before;
    for (std::size_t at = 0; at < mine.size(); ++at) {
        if (auto found = kept.find(mine[at]); found != kept.end() && found->second > 0) {
            --found->second;
            continue;
        }
        merged.insert(merged.begin() + static_cast<std::ptrdiff_t>(std::min(at, merged.size())), mine[at]);
    }
    return merged;
}

} // namespace zw
