#pragma once

#include <QDateTime>

#include "app/Clock.h"

namespace zw::test {

// A clock that stands at one local moment.
class FixedClock final : public Clock
{
public:
    explicit FixedClock(const QDateTime& moment)
        : m_now(std::chrono::system_clock::from_time_t(moment.toSecsSinceEpoch()))
    {
    }
    std::chrono::system_clock::time_point now() const override { return m_now; }

private:
    std::chrono::system_clock::time_point m_now;
};

} // namespace zw::test
