// Real readers judge the documents: qpdf checks their structure, poppler renders them and extracts their
// text.
#include "export/clsPDF.h"

#include <gtest/gtest.h>

#include "tests/export/PopplerPage.h"
#include "tests/export/TestPicture.h"
#include "tests/export/clsPDFTestAccess.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

namespace zw {
namespace {

using test::CommandResult;
using test::PictureKind;
using test::testPicture;
using test::run;
using test::toolAvailable;

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

class clsPDFOracle : public ::testing::Test
{
protected:
    std::filesystem::path save(clsPDF& pdf, const std::string& name)
    {
        const auto path = m_folder / (name + ".pdf");
        pdf.SavePDF(path);
        return path;
    }

    test::TempFolder m_folder;
};

// The documents a caller makes, each with a name for the messages.
std::vector<std::pair<std::string, std::function<void(clsPDF&)>>> sampleDocuments()
{
    return {
        {"fresh", [](clsPDF&) {}},
        {"three text pages",
         [](clsPDF& pdf) {
             for (int line = 1; line <= 150; ++line)
                 pdf.PrintLine("Zeile " + std::to_string(line) + " (mit Klammern) \\ und Größe €");
         }},
        {"drawing",
         [](clsPDF& pdf) {
             pdf.PrintLine("Zeichnung");
             pdf.setDrawColor(0x0000FF);
             pdf.setFillColor(0x80FF80);
             pdf.setDrawWidth(1.5f);
             pdf.DrawBox(50, 100, 200, 80, clsPDF::ModeCloseFillStroke);
             pdf.DrawBox(60, 110, 20, 20, clsPDF::ModeFill);
             pdf.DrawCircle(300, 400, 60, clsPDF::ModeStroke);
             pdf.DrawLine(10, 10, 580, 830);
             pdf.MoveTo(100, 600);
             pdf.DrawLineTo(200, 650);
             pdf.DrawCurveTo(250, 600, 300, 700, 350, 650);
             pdf.DrawShape(clsPDF::ModeCloseStroke);
             pdf.DrawText(100, 700, "gedreht", 0.7f);
         }},
        {"pictures",
         [](clsPDF& pdf) {
             pdf.DrawPicture(20, 20, 200, 150, testPicture(57, 43, PictureKind::Noise), /*gray=*/false);
             pdf.PrintLine("Bilder");
             pdf.DrawPicture(250, 20, 200, 150, testPicture(100, 80, PictureKind::Areas), /*gray=*/false);
             pdf.DrawPicture(20, 300, -200, -150, testPicture(100, 80, PictureKind::Areas), /*gray=*/true);
         }},
        {"landscape with form feeds and blank pages",
         [](clsPDF& pdf) {
             pdf.setOrientation(1);
             pdf.setDropBlankPages(false);
             pdf.PrintText("erste\r\n\f\r\n\f\r\ndritte Seite");
         }},
        // Twenty-five pages outgrow the page and object tables that a fresh document starts with.
        {"events draw on every one of many pages",
         [](clsPDF& pdf) {
             pdf.PageStarted = [&pdf] { pdf.DrawLine(20, 30, 570, 30); };
             pdf.PageFinished = [&pdf] {
                 pdf.DrawText(500, 800, "Seite " + std::to_string(pdf.PageNumber()));
             };
             pdf.Clear(0, 2);
             for (int line = 0; line < 50; ++line)
                 pdf.PrintLine("x");
         }},
        {"snapshot taken mid-page, then more lines",
         [](clsPDF& pdf) {
             pdf.PrintLine("vorher");
             pdf.Value();
             pdf.PrintLine("nachher");
         }},
    };
}

TEST_F(clsPDFOracle, QpdfFindsNothingButTheCarriageReturnAfterStreamAndPopplerRendersEveryPage)
{
    if (!toolAvailable("qpdf") || !toolAvailable("pdftoppm"))
        GTEST_SKIP() << "qpdf or poppler-utils is not installed";
    for (const auto& [name, build] : sampleDocuments()) {
        SCOPED_TRACE(name);
        clsPDF pdf = newWriter();
        build(pdf);
        const auto path = save(pdf, "check");
        const CommandResult result = run("qpdf --check '" + path.string() + "' 2>&1");
        const bool hasPages = pdf.PageNumber() > 0;
        // qpdf exits 3 for warnings, 2 for errors; the carriage return alone after "stream" is the only
        // warning expected.
        EXPECT_EQ(result.exitCode, hasPages ? 3 : 0) << result.output;
        for (const std::string& line : linesOf(result.output))
            EXPECT_TRUE(!line.starts_with("WARNING: ") ||
                        line.ends_with("stream keyword followed by carriage return only"))
                << line;
        if (!hasPages)
            continue;
        const CommandResult rendered =
            run("pdftoppm -r 20 '" + path.string() + "' '" + (m_folder / "page").string() + "' 2>&1");
        EXPECT_EQ(rendered.exitCode, 0);
        EXPECT_EQ(rendered.output, "");
    }
}

TEST_F(clsPDFOracle, PicturePagesRenderBackToTheSourcePixels)
{
    if (!toolAvailable("pdftoppm"))
        GTEST_SKIP() << "poppler-utils is not installed";
    struct Row
    {
        const char* name;
        Bitmap picture;
        bool gray;
        bool mirrored;
    };
    const std::vector<Row> rows = {
        {"noise, raw data", testPicture(37, 23, PictureKind::Noise), false, false},
        {"areas, run-length data", testPicture(64, 48, PictureKind::Areas), false, false},
        {"gray", testPicture(50, 30, PictureKind::Areas), true, false},
        {"mirrored by a negative width", testPicture(40, 20, PictureKind::Noise), false, true},
        {"570 x 429, the receipt's size", testPicture(570, 429, PictureKind::Areas), false, false},
    };
    constexpr std::int32_t kScale = 4;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Bitmap& source = row.picture;
        clsPDF pdf = newWriter();
        pdf.setWidth(static_cast<std::int16_t>(source.width));
        pdf.setHeight(static_cast<std::int16_t>(source.height));
        const auto width = static_cast<std::int16_t>(row.mirrored ? -source.width : source.width);
        pdf.DrawPicture(0, 0, width, static_cast<std::int16_t>(source.height), source, row.gray);
        pdf.PrintLine("");
        // Four pixels per point: poppler smooths pictures drawn at less than four times their size.
        const Bitmap rendered = test::renderFirstPage(save(pdf, "picture"), 288);
        ASSERT_EQ(rendered.width, source.width * kScale);
        ASSERT_EQ(rendered.height, source.height * kScale);

        // Each source pixel becomes a block of 4 x 4; its centre is read back. (Poppler may shift the edges
        // of a mirrored picture's blocks by a device pixel.)
        Bitmap sampled = source;
        Bitmap expected = source;
        for (std::int32_t y = 0; y < source.height; ++y) {
            for (std::int32_t x = 0; x < source.width; ++x) {
                const auto at = static_cast<std::size_t>((y * source.width + x) * 3);
                const auto centre =
                    static_cast<std::size_t>(((y * kScale + 2) * rendered.width + x * kScale + 2) * 3);
                std::copy_n(&rendered.pixels[centre], 3, &sampled.pixels[at]);
                const std::uint8_t* in = &source.pixels[static_cast<std::size_t>(
                    (y * source.width + (row.mirrored ? source.width - 1 - x : x)) * 3)];
                if (row.gray) {
                    const auto level =
                        static_cast<std::uint8_t>((77 * in[0] + 151 * in[1] + 28 * in[2] + 127) / 256);
                    std::fill_n(&expected.pixels[at], 3, level);
                } else {
                    std::copy_n(in, 3, &expected.pixels[at]);
                }
            }
        }
        EXPECT_EQ(test::firstDifference(sampled.pixels, expected.pixels), "") << "rendered pixels differ from the source";
    }
}

TEST_F(clsPDFOracle, PopplerReadsBackTheTextLinesPageByPage)
{
    if (!toolAvailable("pdftotext"))
        GTEST_SKIP() << "poppler-utils is not installed";
    clsPDF pdf = newWriter();
    pdf.Clear(0, 3);
    pdf.PrintText("Größe 5 € (netto)\r\nback\\slash\r\ndritte\r\nvierte\r\n\f\r\nneue Seite");
    pdf.DrawText(300, 300, "gezeichnet");
    const auto path = save(pdf, "text");
    const CommandResult result = run("pdftotext -layout '" + path.string() + "' - 2>&1");
    EXPECT_EQ(result.exitCode, 0);
    std::vector<std::string> lines;
    for (std::string line : linesOf(result.output)) {
        line.erase(0, line.find_first_not_of(' '));
        line.erase(line.find_last_not_of(' ') + 1);
        if (!line.empty())
            lines.push_back(line);
    }
    EXPECT_EQ(lines, (std::vector<std::string>{"Größe 5 € (netto)", "back\\slash", "dritte", "\fvierte",
                                               "\fneue Seite", "gezeichnet", "\f"}));
}

} // namespace
} // namespace zw
