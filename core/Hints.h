#pragma once

#include <string>
#include <string_view>

#include "core/FormElement.h"

namespace zw {

// The explanation that the HintLine (Label16) shows for a field, the same on click and on mouse move; "" for
// an element without one. Label1 shows its text on mouse move only, since a click there opens the type menu.
std::string_view hintText(FormElement element);

// What the HintLine reads at start.
std::string hintGreeting();

// A hint as a line wider than the old fixed HintLine reads it: the long runs of blanks that pushed the next
// sentence onto the next line become a line break, so the sentences wrap whole at any width.
std::string hintShown(std::string_view hint);

} // namespace zw
