#pragma once

#include <chrono>
#include <random>

namespace zw {

// Where windows take the time and chance from, so that a test can fix both.
class Clock
{
public:
    virtual ~Clock() = default;
    virtual std::chrono::system_clock::time_point now() const = 0;
};

class Random
{
public:
    virtual ~Random() = default;
    // A number from [0, 1).
    virtual double next() = 0;
};

class SystemClock final : public Clock
{
public:
    std::chrono::system_clock::time_point now() const override { return std::chrono::system_clock::now(); }
};

class SystemRandom final : public Random
{
public:
    double next() override { return std::uniform_real_distribution<double>(0.0, 1.0)(m_engine); }

private:
    std::mt19937 m_engine{std::random_device{}()};
};

} // namespace zw
