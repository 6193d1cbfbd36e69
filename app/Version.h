#pragma once

#include <string>

namespace zw {

inline constexpr int kVersionMajor = 6;
inline constexpr int kVersionMinor = 0;
inline constexpr int kVersionRevision = 0;

inline std::string versionText()
{
    return std::to_string(kVersionMajor) + "." + std::to_string(kVersionMinor) + "." +
           std::to_string(kVersionRevision);
}

} // namespace zw
