#pragma once

// Timing for the benchmarks that set the program beside its floor in the same run: five rounds, each measuring
// both, then the minimum and the median of each and their ratio.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <functional>
#include <fcntl.h>
#include <spawn.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <vector>

extern char** environ;

namespace zw::bench {

struct ProcessRun
{
    double milliseconds = 0;
    double cpuMilliseconds = 0; // user and system time: on a busy machine a fairer measure than the clock
    long maxResidentKiB = 0;
    int exitCode = -1;
};

// Starts the program with its output to /dev/null and waits for it; the time is the whole process, start to exit.
inline ProcessRun runProcess(const std::vector<std::string>& arguments)
{
    std::vector<char*> argv;
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    ProcessRun run;
    const auto start = std::chrono::steady_clock::now();
    pid_t pid = 0;
    if (posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ) == 0) {
        int status = 0;
        rusage usage{};
        wait4(pid, &status, 0, &usage);
        run.milliseconds = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
        run.maxResidentKiB = usage.ru_maxrss;
        const auto ms = [](const timeval& time) { return static_cast<double>(time.tv_sec) * 1e3 + time.tv_usec / 1e3; };
        run.cpuMilliseconds = ms(usage.ru_utime) + ms(usage.ru_stime);
        run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    posix_spawn_file_actions_destroy(&actions);
    return run;
}

struct WorkTime
{
    double milliseconds = 0;
    double cpuMilliseconds = 0;
};

inline WorkTime timeOf(const std::function<void()>& work)
{
    const auto cpuNow = [] {
        timespec time{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    };
    const double cpuStart = cpuNow();
    const auto start = std::chrono::steady_clock::now();
    work();
    return {std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count(),
            cpuNow() - cpuStart};
}

struct Spread
{
    double minimum = 0;
    double median = 0;
};

inline Spread spreadOf(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return {values.front(), values[values.size() / 2]};
}

inline void printSpread(const char* what, const Spread& spread, const char* unit)
{
    std::printf("%-46s min %9.2f %s   median %9.2f %s\n", what, spread.minimum, unit, spread.median, unit);
}

// A goal of 0 prints none.
inline void printRatio(const char* what, const Spread& program, const Spread& floor, double goal)
{
    std::printf("%-46s min %9.2f x     median %9.2f x", what, program.minimum / floor.minimum,
                program.median / floor.median);
    if (goal > 0)
        std::printf("     goal <= %.2f x", goal);
    std::printf("\n");
}

} // namespace zw::bench
