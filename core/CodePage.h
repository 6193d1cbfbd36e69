#pragma once

#include <string>
#include <string_view>

namespace zw {

// Files on disk are Windows-1252; the program holds UTF-8 in memory.
std::string cp1252ToUtf8(std::string_view bytes);

// Characters without a Windows-1252 byte become '?', as the old program wrote them.
std::string utf8ToCp1252(std::string_view text);

} // namespace zw
