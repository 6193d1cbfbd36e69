#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/FaultReporter.h"
#include "core/RunError.h"

namespace zw::test {

// A fault reporter that notes "<number> <window>" instead of opening the error window.
class FaultRecorder : public FaultReporter
{
public:
    void report(const RunError& error, std::string_view windowName) override
    {
        seen.push_back(std::to_string(error.number()) + " " + std::string(windowName));
    }
    std::vector<std::string> seen;
};

} // namespace zw::test
