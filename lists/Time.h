#pragma once

#include <functional>

namespace zw {

// The module Time's wait: starts from the whole second since midnight and returns once the time since then,
// cut to whole seconds, has reached `seconds` (so a wait of 3 lasts between 2 and 3 seconds). The events run
// all the while, so the window stays responsive and a second wait may start inside the first. A wait across
// midnight counts on past it instead of waiting for the clock to come round again.
void Wait(int seconds, const std::function<double()>& secondsSinceMidnight,
          const std::function<void()>& letEventsRun);

} // namespace zw
