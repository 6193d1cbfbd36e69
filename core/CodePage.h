#pragma once

#include <string>
#include <string_view>

namespace zw {

// Files on disk are Windows-1252; the program holds UTF-8 in memory.
std::string cp1252ToUtf8(std::string_view bytes);

// Characters without a Windows-1252 byte become '?', as the old program wrote them.
std::string utf8ToCp1252(std::string_view text);

// Appends one Unicode code point to UTF-8 text.
void appendUtf8(std::string& out, char32_t codePoint);
std::string utf8Of(char32_t codePoint);

// The first `count` characters of UTF-8 text, never cutting a character in two.
std::string firstCharacters(std::string_view text, std::size_t count);

} // namespace zw
