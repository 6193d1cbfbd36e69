#pragma once

#include <QString>
#include <optional>
#include <vector>

class QWidget;

namespace zw {

// "Navigationsoptionen": a box for each group of the shortcut bar, the first `shown` ticked. Gives how many
// groups to show, or nothing when cancelled.
std::optional<int> askVisibleGroups(QWidget* parent, const std::vector<QString>& groups, int shown);

} // namespace zw
