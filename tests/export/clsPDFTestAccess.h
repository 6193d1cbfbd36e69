#pragma once

#include "export/clsPDF.h"

#include <string>
#include <string_view>

namespace zw {

// Reaches the writer's private helper whose rules are checked on their own.
struct clsPDFTestAccess
{
    static std::string CompressRunLength(std::string_view bytes) { return clsPDF::CompressRunLength(bytes); }
};

// A writer whose clock always gives the same creation date.
inline clsPDF newWriter() { return clsPDF([] { return LocalDateTime{2024, 3, 5, 14, 7, 9}; }); }

} // namespace zw
