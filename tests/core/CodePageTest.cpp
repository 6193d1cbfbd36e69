#include "core/CodePage.h"

#include <gtest/gtest.h>

namespace zw {
namespace {

TEST(CodePage, UmlautsEuroAndQuotesSurviveARoundTrip)
{
    const std::string utf8 = "Größe 5 € – „Zuzahlung“ ß";
    const std::string bytes = utf8ToCp1252(utf8);
    EXPECT_EQ(bytes, "Gr\xF6\xDF" "e 5 \x80 \x96 \x84Zuzahlung\x93 \xDF");
    EXPECT_EQ(cp1252ToUtf8(bytes), utf8);
}

TEST(CodePage, CharactersOutsideTheCodePageBecomeQuestionMarks)
{
    EXPECT_EQ(utf8ToCp1252("Ω 😀 x"), "? ? x");
}

TEST(CodePage, UndefinedBytesAndBrokenUtf8LoseNothing)
{
    // 0x81 has no character in Windows-1252; it must come back as the same byte.
    EXPECT_EQ(utf8ToCp1252(cp1252ToUtf8("\x81\x8D")), "\x81\x8D");
    // A lone Latin-1 byte inside "UTF-8" text (a file read without conversion) is kept.
    EXPECT_EQ(utf8ToCp1252("K\xE4se"), "K\xE4se");
    EXPECT_EQ(utf8ToCp1252("\xC3"), "\xC3");
}

} // namespace
} // namespace zw
