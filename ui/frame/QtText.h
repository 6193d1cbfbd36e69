#pragma once

#include <QString>
#include <string_view>

namespace zw {

// The logic holds its texts as UTF-8; the windows show them as QString.
inline QString qt(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

} // namespace zw
