#include "export/clsPDF.h"

#include "tests/export/clsPDFTestAccess.h"
#include "tests/export/fuzz/MemberSequence.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/TempFolder.h"
#include "tests/core/RunErrorNumber.h"

#include <clocale>
#include <cmath>
#include <filesystem>
#include <functional>
#include <locale>
#include <string>
#include <vector>

namespace zw {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

// The content streams of a document, in file order.
std::vector<std::string> contentStreams(std::string_view document)
{
    std::vector<std::string> streams;
    std::size_t at = 0;
    while ((at = document.find("\rstream\r", at)) != std::string_view::npos) {
        at += 8;
        const std::size_t end = document.find("endstream\r", at);
        streams.emplace_back(document.substr(at, end - at));
        at = end;
    }
    return streams;
}

std::string firstStream(clsPDF& pdf)
{
    const auto streams = contentStreams(pdf.Value());
    return streams.empty() ? std::string("(no page)") : streams.front();
}

using test::errorNumberOf;

// The text head of a portrait A4 page with the defaults: font 10, left margin 80, top margin 60.
constexpr std::string_view kHead = "BT\r/F1 10 Tf\r80 782 Td\r10 TL\r";
// A fresh object's first page starts with the "S" that FillMode 0 left pending at creation.
const std::string kFirstHead = "S\r" + std::string(kHead);

// Objects, offsets, lengths and the page tree are judged by qpdf and poppler in the oracle test; what they
// let pass is the document's information and its font.
TEST(clsPDF, ADocumentNamesItsTimeProducerAndCourierInWindowsCharacters)
{
    clsPDF pdf = newWriter();
    pdf.PrintLine("x");
    const std::string document = pdf.Value();
    EXPECT_THAT(document, HasSubstr("1 0 obj\r<<\r/CreationDate (D:20240305140709)\r"
                                    "/Producer (Zettelwerk [www.zettelwerk.example])\r>>\rendobj\r"));
    EXPECT_THAT(document, HasSubstr("/Name /F1\r/BaseFont /Courier\r/Encoding /WinAnsiEncoding\r"));
}

TEST(clsPDF, ClearStartsAnEmptyDocumentWithItsArguments)
{
    clsPDF pdf = newWriter();
    for (int line = 0; line < 100; ++line)
        pdf.PrintLine("old");
    pdf.Clear(/*fontSize=*/12, /*linesPerPage=*/2);
    EXPECT_EQ(pdf.PageNumber(), 0);
    EXPECT_EQ(pdf.LineNumber(), 0);
    pdf.PrintLine("a");
    pdf.PrintLine("b");
    pdf.PrintLine("c");
    const std::string document = pdf.Value();
    EXPECT_THAT(document, HasSubstr("/Count 2\r"));
    EXPECT_THAT(document, HasSubstr("/Kids [ 6 0 R 9 0 R ]\r"));
    EXPECT_THAT(contentStreams(document), ElementsAre("BT\r/F1 12 Tf\r80 782 Td\r12 TL\r(a)'\r(b)'\rET\r",
                                                      "BT\r/F1 12 Tf\r80 782 Td\r12 TL\r(c)'\rET\r"));
    EXPECT_EQ(fuzz::checkDocumentStructure(document), "");
}

TEST(clsPDF, PrintTextSplitsLinesAtTheFirstSeparatorFoundAndPagesAtFormFeedLines)
{
    struct Row
    {
        const char* name;
        bool dropBlankPages;
        std::string text;
        std::vector<std::string> pages; // the lines printed on each page
    };
    const std::vector<Row> rows = {
        {"CR LF wins over a lone CR", true, "a\rb\r\nc", {"(a\rb)'\r(c)'\r"}},
        {"LF CR", true, "a\n\rb\n\rc", {"(a)'\r(b)'\r(c)'\r"}},
        {"CR CR wins over a later single CR", true, "a\r\rb\rc", {"(a)'\r(b\rc)'\r"}},
        {"LF before CR", true, "a\rb\nc", {"(a\rb)'\r(c)'\r"}},
        {"CR alone", true, "a\rb", {"(a)'\r(b)'\r"}},
        {"no separator", true, "abc", {"(abc)'\r"}},
        {"empty text prints one empty line", true, "", {"()'\r"}},
        {"a final separator prints a final empty line", true, "a\r\n", {"(a)'\r()'\r"}},
        {"empty lines in between", true, "a\n\nb", {"(a)'\r()'\r(b)'\r"}},
        {"two form feeds, dropped", true, "a\n\f\n\f\nb", {"(a)'\r", "(b)'\r"}},
        {"two form feeds, kept", false, "a\n\f\n\f\nb", {"(a)'\r", "", "(b)'\r"}},
        {"a form feed inside a line is text", true, "a\f\nb", {"(a\f)'\r(b)'\r"}},
        {"a form feed alone, dropped", true, "\f", {}},
        {"a form feed alone, kept", false, "\f", {""}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        clsPDF pdf = newWriter();
        pdf.setDropBlankPages(row.dropBlankPages);
        pdf.PrintText(row.text);
        std::vector<std::string> streams;
        for (const std::string& lines : row.pages)
            streams.push_back((streams.empty() ? kFirstHead : std::string(kHead)) + lines + "ET\r");
        const std::string document = pdf.Value();
        EXPECT_EQ(contentStreams(document), streams);
        EXPECT_THAT(document, HasSubstr("/Count " + std::to_string(streams.size()) + "\r"));
    }
}

// The drawing operators, byte for byte, each after one printed line.
TEST(clsPDF, DrawingWritesTheseOperators)
{
    const std::string curves = "328 392 350 414 350 442 c\r" // k = 50 * 0.5522847 = 27.6, rounded 28
                               "350 470 328 492 300 492 c\r"
                               "272 492 250 470 250 442 c\r"
                               "250 414 272 392 300 392 c\r";
    struct Row
    {
        const char* name;
        std::function<void(clsPDF&)> draw;
        std::string operators;
    };
    const std::vector<Row> rows = {
        {"boxes of one mode share one painting operator",
         [](clsPDF& pdf) {
             pdf.DrawBox(10, 60, 100, 50, clsPDF::ModeStroke);
             pdf.DrawBox(20, 70, 30, 40, clsPDF::ModeStroke);
             pdf.setDrawColor(0x0000FF);
             pdf.DrawBox(0, 0, 1, 1, clsPDF::ModeStroke);
             pdf.DrawBox(0, 0, 1, 1, clsPDF::ModeFill);
         },
         "10 732 100 50 re\r20 732 30 40 re\rS\r1 0 0 RG\r0 841 1 1 re\rS\r0 841 1 1 re\rf\r"},
        {"changed state comes in its order before the next drawing",
         [](clsPDF& pdf) {
             pdf.setDrawWidth(0.25f);
             pdf.setFillColor(0xFF0000);
             pdf.setDrawColor(0x8000FF);
             pdf.setDrawColor(0x8000FF); // unchanged: nothing
             pdf.DrawBox(0, 0, 1, 1, clsPDF::ModeCloseFillStroke);
             pdf.setDrawColor(0x808080);
             pdf.DrawBox(0, 0, 1, 1, clsPDF::ModeCloseFillStroke);
         },
         "1 0 0.502 RG\r0 0 1 rg\r0.25 w\r0 841 1 1 re\rb\r0.502 G\r0 841 1 1 re\rb\r"},
        {"fill mode flushes, and unknown modes are ignored",
         [](clsPDF& pdf) {
             pdf.DrawBox(0, 0, 1, 1, clsPDF::ModeStroke);
             pdf.setFillMode(5);
             pdf.DrawBox(0, 0, 1, 1, 7);
             pdf.setFillMode(clsPDF::ModeFill);
             pdf.DrawShape(clsPDF::ModeCloseStroke);
         },
         "0 841 1 1 re\rS\r0 841 1 1 re\rf\rs\r"},
        {"lines are always stroked",
         [](clsPDF& pdf) {
             pdf.setFillMode(clsPDF::ModeFill);
             pdf.DrawBox(0, 0, 10, 10, clsPDF::ModeFill);
             pdf.DrawLine(1, 2, 3, 4);
             pdf.DrawLine(5, 6, 7, 8);
         },
         "0 832 10 10 re\rf\r1 840 m 3 838 l\r5 836 m 7 834 l\rS\r"},
        {"a move to the current point writes nothing",
         [](clsPDF& pdf) {
             pdf.MoveTo(0, 0); // the page start point
             pdf.MoveTo(10, 20);
             pdf.MoveTo(10, 20);
             pdf.DrawLineTo(30, 40);
             pdf.MoveTo(30, 40);
             pdf.DrawShape(clsPDF::ModeCloseStroke);
             pdf.DrawLine(0, 0, 50, 60);
             pdf.MoveTo(50, 60);
         },
         "10 822 m\r30 802 l\rs\r0 842 m 50 782 l\rS\r"},
        {"a circle is four curves, a second at the same place has no move",
         [](clsPDF& pdf) {
             pdf.DrawCircle(300, 400, 50, clsPDF::ModeStroke);
             pdf.DrawCircle(300, 400, 50, clsPDF::ModeFill);
         },
         "300 392 m\r" + curves + "S\r" + curves + "f\r"},
        {"coordinates at the sixteen-bit limits",
         [](clsPDF& pdf) {
             pdf.MoveTo(-32768, -31925);
             pdf.DrawBox(32767, 842, 0, 0, 0);
             pdf.DrawLineTo(0, 32767);
         },
         "-32768 32767 m\r32767 0 0 0 re\r0 -31925 l\rS\r"},
        {"text at a place", [](clsPDF& pdf) { pdf.DrawText(100, 42, "a(b)"); },
         "BT\r/F1 10 Tf\r100 800 Td\r(a\\(b\\))'\rET\r"},
        // sin(pi) rounds to "0", and the negated sine is then "-0".
        {"text turned by pi", [](clsPDF& pdf) { pdf.DrawText(100, 42, "a", 3.1415927f); },
         "BT\r/F1 10 Tf\r-1 0 -0 -1 100 800 Tm\r(a)'\rET\r"},
        {"a picture that does not shrink goes out raw",
         [](clsPDF& pdf) {
             pdf.DrawBox(0, 0, 1, 1, clsPDF::ModeStroke);
             pdf.DrawPicture(0, 0, 10, 20, Bitmap{1, 2, {10, 20, 30, 40, 50, 60}}, /*gray=*/false);
         },
         "0 841 1 1 re\rS\rq\r10 0 0 20 0 822 cm\rBI\r/W 1\r/H 2\r/BPC 8\r/CS /RGB\r"
         "ID \x0A\x14\x1E\x28\x32\x3C>\rEI\rQ\r"},
        // Twelve bytes of 255 are one run: length byte 257 - 12, the byte, the end of data.
        {"a picture that shrinks goes out run-length encoded",
         [](clsPDF& pdf) {
             pdf.DrawPicture(0, 0, 10, 20, Bitmap{2, 2, std::vector<std::uint8_t>(12, 255)}, false);
         },
         "q\r10 0 0 20 0 822 cm\rBI\r/W 2\r/H 2\r/BPC 8\r/CS /RGB\r/F /RL\rID \xF5\xFF\x80\rEI\rQ\r"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        clsPDF pdf = newWriter();
        pdf.PrintLine("x");
        row.draw(pdf);
        EXPECT_EQ(firstStream(pdf), kFirstHead + "(x)'\rET\r" + row.operators);
    }
}

TEST(clsPDF, ColoursAndWidthsAreWrittenWithAPointInAGermanLocale)
{
    // The C++ global locale and, where installed, the C locale use a decimal comma.
    struct CommaDecimal : std::numpunct<char>
    {
        char do_decimal_point() const override { return ','; }
    };
    const std::locale previous = std::locale::global(std::locale(std::locale::classic(), new CommaDecimal));
    const std::string previousC = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "de_DE.UTF-8");

    clsPDF pdf = newWriter();
    pdf.PrintLine("x");
    pdf.setDrawColor(0x808080);
    pdf.setDrawWidth(1.5f);
    pdf.DrawText(0, 0, "r", 0.5f);
    const std::string stream = firstStream(pdf);

    std::setlocale(LC_ALL, previousC.c_str());
    std::locale::global(previous);
    EXPECT_EQ(stream, kFirstHead +
                          "(x)'\rET\r0.502 G\r1.5 w\rBT\r/F1 10 Tf\r0.878 0.479 -0.479 0.878 0 842 Tm\r"
                          "(r)'\rET\r");
}

TEST(clsPDF, EventsLetAHandlerDrawAheadOfAndBehindThePageText)
{
    // Each box drawn once, in its place around the text, shows each event raised once at its time.
    clsPDF pdf = newWriter();
    pdf.PageStarted = [&] { pdf.DrawBox(0, 0, 1, 1, clsPDF::ModeStroke); };
    pdf.PageFinished = [&] { pdf.DrawBox(0, 10, 1, 1, clsPDF::ModeFill); };
    pdf.PrintLine("x");
    EXPECT_EQ(firstStream(pdf), "S\r0 841 1 1 re\rS\r" + std::string(kHead) + "(x)'\rET\r0 831 1 1 re\rf\r");
}

// Whether snapshots leave a well-formed file, qpdf judges in the oracle test.
TEST(clsPDF, ValueIsASnapshotThatRaisesNoEventWhenReadAgain)
{
    clsPDF pdf = newWriter();
    int finished = 0;
    pdf.PageFinished = [&] { ++finished; };
    pdf.PrintLine("a");
    const std::string first = pdf.Value();
    EXPECT_EQ(pdf.Value(), first);
    EXPECT_EQ(finished, 1);

    // Printing goes on over the trailer of the snapshot, on the same page.
    pdf.PrintLine("b");
    EXPECT_EQ(contentStreams(pdf.Value()), std::vector<std::string>{kFirstHead + "(a)'\r(b)'\rET\r"});
    EXPECT_EQ(finished, 2);

    // After a closed page a snapshot adds only the trailer and raises no event.
    pdf.NewPage();
    const int finishedBefore = finished;
    const std::string closed = pdf.Value();
    EXPECT_EQ(pdf.Value(), closed);
    EXPECT_EQ(finished, finishedBefore);
}

// A picture drawn from a bitmap file, poppler judges in the PDF export's test.
TEST(clsPDF, PicturesThatCannotBeReadOrDoNotAddUpRaiseTheirFaults)
{
    const test::TempFolder folder;
    clsPDF pdf = newWriter();
    EXPECT_EQ(errorNumberOf([&] { pdf.DrawPicture(0, 0, 1, 1, folder / "missing.bmp", false); }), 53);
    EXPECT_EQ(errorNumberOf([&] { pdf.DrawPicture(0, 0, 1, 1, folder.path(), false); }), 75);
    EXPECT_EQ(errorNumberOf([&] { pdf.DrawPicture(0, 0, 1, 1, Bitmap{2, 2, {1, 2, 3}}, false); }), 481);
    EXPECT_EQ(errorNumberOf([&] {
                  pdf.DrawPicture(0, 0, 1, 1, Bitmap{-1, -3, {1, 2, 3, 4, 5, 6, 7, 8, 9}}, false);
              }),
              481);
}

TEST(clsPDF, CoordinatesThatLeaveSixteenBitsRaiseOverflow)
{
    struct Row
    {
        const char* name;
        std::function<void(clsPDF&)> call;
    };
    const std::vector<Row> rows = {
        {"box bottom", [](clsPDF& pdf) { pdf.DrawBox(0, -32000, 10, 10, 0); }},
        {"move", [](clsPDF& pdf) { pdf.MoveTo(0, -32000); }},
        {"circle", [](clsPDF& pdf) { pdf.DrawCircle(32760, 0, 10, 0); }},
        {"picture width", [](clsPDF& pdf) { pdf.DrawPicture(0, 0, -32768, 1, Bitmap{}, false); }},
        {"text", [](clsPDF& pdf) { pdf.DrawText(0, -32000, "x"); }},
        {"top margin",
         [](clsPDF& pdf) {
             pdf.setTopMargin(-32000);
             pdf.PrintLine("x");
         }},
        {"width that cannot be written",
         [](clsPDF& pdf) {
             pdf.setDrawWidth(std::nanf(""));
             pdf.DrawBox(0, 0, 1, 1, 0);
         }},
        {"line number after 32767 lines on a page that never ends",
         [](clsPDF& pdf) {
             pdf.setLinesPerPage(-1);
             for (int line = 0; line < 32767; ++line)
                 pdf.PrintLine("");
             EXPECT_EQ(pdf.LineNumber(), 32767);
             pdf.PrintLine("");
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        clsPDF pdf = newWriter();
        EXPECT_EQ(errorNumberOf([&] { row.call(pdf); }), 6);
        EXPECT_EQ(fuzz::checkDocumentStructure(pdf.Value()), "");
    }
}

TEST(clsPDFFiles, PrintFilePassesTheBytesThroughAndAMissingFilePrintsOneEmptyLine)
{
    const test::TempFolder folder;
    test::writeBytes(folder / "text.txt", "a\r\nK\xE4se (1)\r\n\f\r\nb");
    clsPDF pdf = newWriter();
    pdf.PrintFile(folder / "text.txt");
    pdf.PrintFile(folder / "missing.txt");
    pdf.PrintFile(folder.path());
    EXPECT_EQ(contentStreams(pdf.Value()),
              (std::vector<std::string>{kFirstHead + "(a)'\r(K\xE4se \\(1\\))'\rET\r",
                                        std::string(kHead) + "(b)'\r()'\r()'\rET\r"}));
}

TEST(clsPDFFiles, SavePDFWritesExactlyValueOrReportsAFolderItCannotWriteAndKeepsTheOldFile)
{
    const test::TempFolder folder;
    const auto file = folder / "out.pdf";
    test::writeBytes(file, std::string(100000, 'x'));
    clsPDF pdf = newWriter();
    pdf.PrintLine("x");
    pdf.SavePDF(file);
    EXPECT_EQ(test::readBytes(file), pdf.Value());
    EXPECT_EQ(errorNumberOf([&] { pdf.SavePDF(folder / "missing" / "out.pdf"); }), 76);
    std::filesystem::create_directories(folder / "folder");
    EXPECT_EQ(errorNumberOf([&] { pdf.SavePDF(folder / "folder"); }), 75);
    EXPECT_TRUE(std::filesystem::is_directory(folder / "folder"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2);
}

TEST(clsPDFRunLength, FollowsTheEncoderRules)
{
    std::string distinct128;
    for (int value = 0; value < 128; ++value)
        distinct128 += static_cast<char>(value);
    const std::string zero(1, '\0');
    struct Row
    {
        const char* name;
        std::string input;
        std::string encoded;
    };
    const std::vector<Row> rows = {
        {"nothing", "", ""},
        {"one byte", "A", zero + "A"},
        {"a pair alone is a run", "AA", "\xFF" + std::string("A")},
        {"129 equal bytes", std::string(129, 'A'), "\x81" + std::string("A") + zero + "A"},
        {"a pair joins an open literal", "ABBC", "\x03" + std::string("ABBC")},
        {"three equal bytes end a literal", "ABBB", zero + "A\xFE" + "B"},
        {"the 129th byte opens a new literal", distinct128 + "\x80", "\x7F" + distinct128 + zero + "\x80"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(clsPDFTestAccess::CompressRunLength(row.input), row.encoded);
    }
}

} // namespace
} // namespace zw
