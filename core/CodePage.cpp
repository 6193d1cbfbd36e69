#include "core/CodePage.h"

#include <array>
#include <cstdint>

namespace zw {
namespace {

// Code points of the bytes 0x80..0x9F; zero marks the five bytes Windows-1252 leaves undefined,
// which are carried through as the C1 control of the same value so that no byte is lost.
constexpr std::array<char32_t, 32> kHighControls = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

char encodeCodePoint(char32_t cp)
{
    if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF))
        return static_cast<char>(cp);
    for (std::size_t i = 0; i < kHighControls.size(); ++i) {
        if (kHighControls[i] == cp || (kHighControls[i] == 0 && cp == 0x80 + i))
            return static_cast<char>(0x80 + i);
    }
    return '?';
}

} // namespace

void appendUtf8(std::string& out, char32_t cp)
{
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

std::string utf8Of(char32_t codePoint)
{
    std::string out;
    appendUtf8(out, codePoint);
    return out;
}

std::string firstCharacters(std::string_view text, std::size_t count)
{
    std::size_t end = 0;
    for (std::size_t taken = 0; end < text.size() && taken < count; ++taken) {
        ++end;
        while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
            ++end;
    }
    return std::string(text.substr(0, end));
}

std::string cp1252ToUtf8(std::string_view bytes)
{
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 8);
    for (unsigned char byte : bytes) {
        if (byte < 0x80) {
            out += static_cast<char>(byte);
        } else if (byte < 0xA0) {
            char32_t cp = kHighControls[byte - 0x80];
            appendUtf8(out, cp != 0 ? cp : char32_t{byte});
        } else {
            appendUtf8(out, byte);
        }
    }
    return out;
}

std::string utf8ToCp1252(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    std::size_t i = 0;
    while (i < text.size()) {
        auto lead = static_cast<unsigned char>(text[i]);
        if (lead < 0x80) {
            out += static_cast<char>(lead);
            ++i;
            continue;
        }
        int length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 0;
        char32_t cp = length == 4 ? lead & 0x07 : length == 3 ? lead & 0x0F : lead & 0x1F;
        bool valid = length != 0 && i + length <= text.size();
        for (int k = 1; valid && k < length; ++k) {
            auto next = static_cast<unsigned char>(text[i + k]);
            valid = (next & 0xC0) == 0x80;
            cp = (cp << 6) | (next & 0x3F);
        }
        if (!valid) {
            // A stray byte that is no UTF-8 is taken as already Windows-1252.
            out += static_cast<char>(lead);
            ++i;
            continue;
        }
        out += encodeCodePoint(cp);
        i += length;
    }
    return out;
}

} // namespace zw
