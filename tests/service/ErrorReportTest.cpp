#include "service/ErrorReport.h"

#include <gtest/gtest.h>

#include "export/rtf/RtfReader.h"

namespace zw {
namespace {

TEST(StringReplace, ScansOnceFromLeftToRight)
{
    struct Row
    {
        const char* text;
        const char* find;
        const char* replacement;
        const char* expected;
    };
    const Row rows[] = {
        {"a<X>b<X>c", "<X>", "1", "a1b1c"},
        {"aaa", "aa", "b", "ba"},   // no overlapping second match
        {"abc", "b", "bb", "abbc"}, // replaced text is not scanned again
        {"abc", "", "z", "abc"},
        {"Grüße <N>", "<N>", "Straße", "Grüße Straße"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(stringReplace(row.text, row.find, row.replacement), row.expected);
    }
}

TEST(ErrorReport, FilledTemplateReadsAsTheReportTheWindowShows)
{
    std::string report = fillErrorReport(kErrorReportTemplate, {"62", "Eingabe nach Dateiende", "optionen"},
                                         "23.11.2026 14:05:09", "Zettelwerk", "6.0.0");
    auto document = rtf::readRtf(report);
    EXPECT_EQ(document.plainText(),
              "Fehlermeldung:\n62\n\nFehlerbeschreibung:\nEingabe nach Dateiende\n\n"
              "Betrifft die Form:\noptionen\n\nDer Fehler ist am 23.11.2026 14:05:09 im "
              "Programm Zettelwerk mit der Version 6.0.0 aufgetreten.");
    ASSERT_EQ(document.fonts.size(), 1u);
    EXPECT_EQ(document.fonts[0].name, "Arial");
    // The three facts stand in bold, the date in bold italics; everything at ten points.
    const auto& number = document.paragraphs[1].runs.at(0);
    EXPECT_EQ(number.text, "62");
    EXPECT_TRUE(number.format.bold);
    EXPECT_EQ(number.format.halfPoints, 20);
    EXPECT_FALSE(document.paragraphs[3].runs.at(0).format.bold);
    const auto& last = document.paragraphs.back().runs;
    ASSERT_GE(last.size(), 2u);
    EXPECT_EQ(last[1].text, "23.11.2026 14:05:09 ");
    EXPECT_TRUE(last[1].format.bold && last[1].format.italic);
}

TEST(ErrorReport, PlaceholdersAreFilledInTheirOrderOverTheWholeText)
{
    // A description naming a later placeholder gets that placeholder's value: the order is fixed.
    std::string report = fillErrorReport("<NUMMER>|<BEZEICHNUNG>|<FORM>",
                                         {"5", "bad <FORM> in <NUMMER>", "report1"}, "", "", "");
    EXPECT_EQ(report, "5|bad report1 in <NUMMER>|report1");
}

TEST(ErrorReport, RichTextCharactersInTheDescriptionGoInRaw)
{
    std::string report =
        fillErrorReport(kErrorReportTemplate, {"13", "Typen {unver}träglich \\b0", "Quittung"}, "1.1.2026",
                        "Zettelwerk", "6.0.0");
    EXPECT_NE(report.find("Typen {unver}träglich \\b0"), std::string::npos);
    auto document = rtf::readRtf(report);
    // The braces vanish as a group and the \b0 ends the bold early: the report is distorted, not lost.
    EXPECT_NE(document.plainText().find("Typen unverträglich"), std::string::npos);
}

} // namespace
} // namespace zw
