#pragma once

namespace zw {

// Waits while the event loop keeps running. A monotonic clock makes a wait across midnight come out right.
void pause(double seconds);

} // namespace zw
