#pragma once

#include "export/clsPDF.h"

#include <string>
#include <string_view>

namespace zw {

// Reaches the writer's private helpers whose rules are checked on their own.
struct clsPDFTestAccess
{
    static std::string CompressRunLength(std::string_view bytes) { return clsPDF::CompressRunLength(bytes); }
    static std::string FormatNumber(double value) { return clsPDF::FormatNumber(value); }
};

} // namespace zw
