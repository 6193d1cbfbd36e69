#include "lists/Time.h"

#include <cmath>

namespace zw {

void Wait(int seconds, const std::function<double()>& secondsSinceMidnight,
          const std::function<void()>& letEventsRun)
{
    constexpr double kDay = 86400;
    const double start = std::floor(secondsSinceMidnight());
    for (;;) {
        double passed = secondsSinceMidnight() - start;
        if (passed < 0)
            passed += kDay;
        if (std::trunc(passed) >= seconds)
            return;
        letEventsRun();
    }
}

} // namespace zw
