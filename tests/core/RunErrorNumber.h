#pragma once

#include <functional>

#include "core/RunError.h"

namespace zw::test {

// Runs the call and gives the number of the RunError it raised, or 0.
inline int errorNumberOf(const std::function<void()>& call)
{
    try {
        call();
    } catch (const RunError& error) {
        return error.number();
    }
    return 0;
}

} // namespace zw::test
