#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <future>
#include <optional>
#include <thread>

#include "app/FileLock.h"

namespace zw::test {

// Whether routine waits for another holder of the file's lock: it must not have finished while the lock was held
// and must finish once it is released. A slow machine can only make the first check pass more easily.
inline bool waitsForLock(const std::filesystem::path& file, const std::function<void()>& routine)
{
    std::optional<FileLock> other(std::in_place, file);
    auto done = std::async(std::launch::async, routine);
    const bool finishedWhileHeld = done.wait_for(std::chrono::milliseconds(200)) == std::future_status::ready;
    other.reset();
    done.get();
    return !finishedWhileHeld;
}

} // namespace zw::test
