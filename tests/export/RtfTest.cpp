#include <gtest/gtest.h>

#include "export/rtf/RtfReader.h"
#include "export/rtf/RtfWriter.h"

namespace zw::rtf {
namespace {

TEST(RtfReader, EscapesCodePageAndUnicodeCharacters)
{
    struct Row
    {
        const char* name;
        const char* source;
        const char* text;
    };
    const Row rows[] = {
        {"escaped braces and backslash", R"({\rtf1 a\{b\}c\\d})", "a{b}c\\d"},
        {"Windows-1252 hex", R"({\rtf1 Gr\'fc\'dfe \'80})", "Grüße €"},
        {"unicode with its replacement skipped", R"({\rtf1\uc1 x\u8364?y})", "x€y"},
        {"negative unicode", R"({\rtf1\uc1 \u-3913?})", "\xEF\x82\xB7"},
        {"two replacement characters", R"({\rtf1\uc2 \u252\'fc\'fcz})", "üz"},
        {"utf-8 text in memory", "{\\rtf1 Stra\xC3\x9F" "e}", "Straße"},
        {"tab and line", R"({\rtf1 a\tab b\line c})", "a\tb\nc"},
        {"line ends in the source are no text", "{\\rtf1 a\r\nb}", "ab"},
        {"the blank after a word is its delimiter", R"({\rtf1\b  two})", " two"},
        {"skipped destinations", R"({\rtf1{\*\generator Riched20;}{\info{\title T}}x})", "x"},
        {"unbalanced braces still give the text", R"({\rtf1 a}}} b)", "a b"},
        {"truncated at a backslash", "{\\rtf1 abc\\", "abc"},
        {"truncated hex escape", "{\\rtf1 abc\\'f", "abc"},
        {"paragraphs", R"({\rtf1 one\par two\par })", "one\ntwo"},
        {"empty paragraph kept", R"({\rtf1 one\par\par three})", "one\n\nthree"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(readRtf(row.source).plainText(), row.text);
    }
}

TEST(RtfReader, FormattingFollowsGroupsAndTables)
{
    auto document = readRtf(R"({\rtf1\ansi\ansicpg1252\deff0\deflang1031{\fonttbl{\f0\fswiss\fcharset0 Arial;})"
                            R"({\f1\fmodern Courier New;}}{\colortbl ;\red255\green0\blue0;\red0\green0\blue128;})"
                            R"(\pard\qc\f1\fs28 plain {\b bold \i both} \cf2 blue\ul under\ulnone\par)"
                            R"(\pard left})");
    ASSERT_EQ(document.fonts.size(), 2u);
    EXPECT_EQ(document.fonts[1].name, "Courier New");
    EXPECT_EQ(document.fonts[1].family, "fmodern");
    ASSERT_EQ(document.colours.size(), 2u);
    EXPECT_EQ(document.colours[1], (Colour{0, 0, 128}));
    ASSERT_EQ(document.paragraphs.size(), 2u);
    EXPECT_EQ(document.paragraphs[0].alignment, Alignment::Centre);
    EXPECT_EQ(document.paragraphs[1].alignment, Alignment::Left);
    const auto& runs = document.paragraphs[0].runs;
    ASSERT_EQ(runs.size(), 6u);
    EXPECT_EQ(runs[0].text, "plain ");
    EXPECT_EQ(runs[0].format.font, 1);
    EXPECT_EQ(runs[0].format.halfPoints, 28);
    EXPECT_TRUE(runs[1].format.bold);
    EXPECT_FALSE(runs[1].format.italic);
    EXPECT_TRUE(runs[2].format.bold && runs[2].format.italic);
    EXPECT_FALSE(runs[3].format.bold) << "the group's end restores the format";
    EXPECT_EQ(runs[4].format.colour, 2);
    EXPECT_TRUE(runs[5].format.underline);
    EXPECT_EQ(runs[5].text, "under");
}

TEST(RtfWriter, WritesAsciiThatReadsBackToTheSameDocument)
{
    Document document;
    document.fonts = {{"Arial", "fswiss", 0}, {"Courier New", "fmodern", 0}};
    document.colours = {{255, 0, 0}};
    document.append("Quittung Nr. 0042 über 12,50 €", {});
    CharFormat bold;
    bold.bold = true;
    bold.halfPoints = 20;
    document.append(" {fett} \\ ", bold);
    document.newParagraph(Alignment::Right);
    CharFormat red;
    red.colour = 1;
    red.font = 1;
    document.append("Zeile\teins\nzwei ☃ 𝄞", red);
    document.newParagraph();
    document.newParagraph();
    document.append("5 after an empty paragraph", {});

    std::string source = writeRtf(document);
    for (char c : source)
        ASSERT_LT(static_cast<unsigned char>(c), 0x80) << source;
    EXPECT_EQ(source.rfind("{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1031", 0), 0u);
    EXPECT_NE(source.find("\\'fcber 12,50 \\'80"), std::string::npos) << source;
    EXPECT_NE(source.find("\\u9731?"), std::string::npos) << source;

    Document back = readRtf(source);
    // A character beyond the 16-bit range becomes '?', which is the one change the round trip may make.
    document.paragraphs[1].runs[0].text = "Zeile\teins\nzwei ☃ ?";
    EXPECT_EQ(back.fonts, document.fonts);
    EXPECT_EQ(back.colours, document.colours);
    EXPECT_EQ(back.paragraphs, document.paragraphs);
}

TEST(RtfWriter, EmptyDocumentIsStillValid)
{
    std::string source = writeRtf(Document{});
    EXPECT_EQ(readRtf(source).plainText(), "");
    EXPECT_EQ(source.back(), '\n');
    EXPECT_EQ(source.find('}', source.rfind("\\par")), source.size() - 3);
}

} // namespace
} // namespace zw::rtf
