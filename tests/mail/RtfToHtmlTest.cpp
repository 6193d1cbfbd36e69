#include "mail/RtfToHtml.h"

#include <gtest/gtest.h>

#include "tests/app/PeerProgram.h"
#include "tests/app/TempFolder.h"

namespace zw {
namespace {

// What Python's HTML reader sees of a page (tests/mail/html_runs.py): title, paragraphs, runs and their marks.
std::string seen(const std::filesystem::path& page)
{
    return test::runPeer("/usr/bin/python3 " ZW_HTML_RUNS " '" + page.string() + "'");
}

// LibreOffice converts the same rich text to HTML; a reader must see the same text with the same marks in both.
TEST(RtfToHtml, AReaderSeesWhatLibreOfficeShowsOfTheSameRichText)
{
    if (!test::toolAvailable("soffice"))
        GTEST_SKIP() << "LibreOffice (soffice) missing";
    struct Row
    {
        const char* name;
        const char* rtf;
    };
    const Row rows[] = {
        {"escaped characters and umlauts",
         R"({\rtf1\ansi{\fonttbl{\f0 Arial;}}\f0\fs20 Gr\'fc\'dfe <b>&amp; "Zitat" 'x' \u8364?\par})"},
        {"nested marks",
         R"({\rtf1\ansi{\fonttbl{\f0 Arial;}}\f0\fs24 a {\b fett {\i schr\'e4g}} {\ul unter}{\strike weg} b\par})"},
        {"colours, fonts and sizes",
         R"({\rtf1\ansi{\fonttbl{\f0 Arial;}{\f1 Courier New;}}{\colortbl;\red255\green0\blue0;\red0\green128\blue255;})"
         R"(\f0\fs20 \cf1 rot\cf2 blau\cf0 schwarz {\f1\fs30 klein}\par})"},
        {"paragraphs, alignment and line breaks",
         R"({\rtf1\ansi{\fonttbl{\f0 Arial;}}\f0\fs20 links\par\qc mitte\line zweite\par\par\qr rechts\par})"},
    };
    const test::TempFolder folder;
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        test::writeBytes(folder / ("r" + std::to_string(i) + ".rtf"), rows[i].rtf);
        test::writeBytes(folder / ("r" + std::to_string(i) + ".ours"),
                         RtfToHtml().Convert(rows[i].rtf, /*fullDocument=*/true, ""));
    }
    ASSERT_EQ(test::run("cd '" + folder.path().string() + "' && soffice -env:UserInstallation=file://" +
                        (folder / "profile").string() + " --headless --convert-to html r*.rtf >/dev/null 2>&1")
                  .exitCode,
              0);
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        SCOPED_TRACE(rows[i].name);
        const std::string theirs = seen(folder / ("r" + std::to_string(i) + ".html"));
        ASSERT_NE(theirs.find('|'), std::string::npos) << "LibreOffice wrote no paragraph";
        EXPECT_EQ(seen(folder / ("r" + std::to_string(i) + ".ours")), theirs);
    }
}

TEST(RtfToHtml, TheTitleIsEscapedAndTheBodyAloneHasNoPage)
{
    const test::TempFolder folder;
    const std::string rtf = R"({\rtf1 Text\par})";
    test::writeBytes(folder / "page.html", RtfToHtml().Convert(rtf, /*fullDocument=*/true, "A & <B> \"C\""));
    EXPECT_EQ(seen(folder / "page.html"), "title: A & <B> \"C\"\nleft|[size=12pt]Text\n");
    const std::string body = RtfToHtml().Convert(rtf, /*fullDocument=*/false, "T");
    EXPECT_EQ(body.find("<title>"), std::string::npos);
    EXPECT_NE(body.find("Text"), std::string::npos);
}

} // namespace
} // namespace zw
