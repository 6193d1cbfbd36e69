#pragma once

#include <string>
#include <vector>

namespace zw {

// The lines of a file this program changed, laid onto what another program wrote meanwhile, so that neither
// loses what it did. A line is a record: the lines this program removed since it loaded go from what is on
// disk (one occurrence each), the lines it added join it at the place they hold in its own list. An edit is a
// removal and an addition, so an edited line that the other program removed comes back as edited; nothing
// typed is lost.
std::vector<std::string> mergeLineChanges(const std::vector<std::string>& loaded, const std::vector<std::string>& mine,
                                          const std::vector<std::string>& onDisk);

} // namespace zw
