#include <QImage>
#include <gtest/gtest.h>
#include <random>

#include "app/CommonDialog.h"
#include "core/RunError.h"
#include "export/PngEncoder.h"
#include "export/RtfExport.h"
#include "export/rtf/RtfReader.h"
#include "export/rtf/RtfWriter.h"
#include "tests/app/TempFolder.h"
#include "tests/core/RunErrorNumber.h"

namespace zw {
namespace {

Bitmap pictureOf(int width, int height, unsigned seed, bool noise)
{
    Bitmap picture{width, height, {}};
    std::mt19937 random(seed);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            // Flat areas with ruled lines, as on the receipt, or noise that no filter predicts.
            const bool line = y % 17 == 0 || x % 61 == 0;
            for (int channel = 0; channel < 3; ++channel)
                picture.pixels.push_back(noise ? static_cast<std::uint8_t>(random())
                                               : static_cast<std::uint8_t>(line ? 40 * channel : 255 - 20 * channel));
        }
    }
    return picture;
}

// Qt's PNG reader (libpng) is the judge of the encoder.
TEST(PngEncoder, DecodesToTheSamePixels)
{
    struct Row
    {
        const char* name;
        Bitmap picture;
    };
    const Row rows[] = {
        {"the receipt's size, ruled", pictureOf(570, 429, 2, false)},
        {"odd width of noise", pictureOf(333, 7, 3, true)},
        {"one column", pictureOf(1, 50, 4, true)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string png = encodePng(row.picture);
        QImage decoded;
        ASSERT_TRUE(decoded.loadFromData(reinterpret_cast<const uchar*>(png.data()), static_cast<int>(png.size()), "PNG"));
        decoded = decoded.convertToFormat(QImage::Format_RGB888);
        ASSERT_EQ(decoded.width(), row.picture.width);
        ASSERT_EQ(decoded.height(), row.picture.height);
        for (int y = 0; y < decoded.height(); ++y) {
            const auto* line = decoded.constScanLine(y);
            const auto* expected = row.picture.pixels.data() + static_cast<std::size_t>(y) * row.picture.width * 3;
            ASSERT_EQ(0, std::memcmp(line, expected, static_cast<std::size_t>(row.picture.width) * 3)) << "row " << y;
        }
    }
}

TEST(PngEncoder, RejectsPicturesThatDoNotAddUp)
{
    const Bitmap wrong[] = {{0, 5, {}}, {2, 2, std::vector<std::uint8_t>(11)}, {-1, -1, std::vector<std::uint8_t>(3)}};
    for (const auto& picture : wrong)
        EXPECT_EQ(test::errorNumberOf([&] { encodePng(picture); }), 481) << picture.width << " x " << picture.height;
}

TEST(ReceiptRtf, HoldsThePhotographAtTheReceiptsSizeOnPaper)
{
    const Bitmap capture = pictureOf(570, 429, 5, false);
    const rtf::Document back = rtf::readRtf(rtf::writeRtf(receiptRtfDocument(capture)));
    ASSERT_EQ(back.paragraphs.size(), 1u);
    ASSERT_EQ(back.paragraphs[0].runs.size(), 1u);
    const auto& picture = back.paragraphs[0].runs[0].picture;
    ASSERT_TRUE(picture.has_value());
    // The receipt area is 8550 x 6435 twips, the size the print composition gives picToPrint.
    EXPECT_EQ(picture->goalWidthTwips, 8550);
    EXPECT_EQ(picture->goalHeightTwips, 6435);
    // Its pixels are judged against the bitmap export by export_cli_check.py.
}

class ExportRtfFileTest : public ::testing::Test
{
protected:
    rtf::Document document()
    {
        rtf::Document result;
        result.append("getippt", {});
        return result;
    }

    test::TempFolder folder;
    CommonDialog dialog;
};

TEST_F(ExportRtfFileTest, AsksBeforeOverwritingAndWritesTheDocument)
{
    const auto target = (folder / "beleg.rtf").string();
    dialog.setPresenter([&](const CommonDialog& shown, bool forSaving) -> std::optional<std::string> {
        EXPECT_TRUE(forSaving);
        // Ask before overwriting and before creating, hide the read-only box, the path must exist.
        EXPECT_EQ(shown.Flags, CommonDialog::kOverwritePrompt | CommonDialog::kHideReadOnly |
                                   CommonDialog::kPathMustExist | CommonDialog::kCreatePrompt);
        EXPECT_TRUE(shown.CancelError);
        return target;
    });
    EXPECT_EQ(exportRtfFile(dialog, [this] { return document(); }), target);
    EXPECT_EQ(test::readBytes(target), rtf::writeRtf(document()));
}

TEST_F(ExportRtfFileTest, CancelOrFailureWritesNothing)
{
    struct Row
    {
        const char* name;
        std::optional<std::string> answer;
    };
    const Row rows[] = {
        {"cancelled", std::nullopt},
        {"missing folder", (folder / "fehlt" / "beleg.rtf").string()},
        {"a folder in the file's place", folder.path().string()},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        dialog.FileName = (folder / "vorher.rtf").string();
        dialog.setPresenter([&](const CommonDialog&, bool) { return row.answer; });
        bool built = false;
        EXPECT_EQ(exportRtfFile(dialog, [&] { built = true; return document(); }), std::nullopt);
        EXPECT_EQ(built, row.answer.has_value()) << "the document is only built once a name is chosen";
        EXPECT_FALSE(std::filesystem::exists(folder / "vorher.rtf"));
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 0);
}

TEST(FontCommand, PresetsFromTheSelectionAndTrapsTheDialogsFaults)
{
    SelectionFont mixed; // a selection over several fonts, sizes and styles
    SelectionFont uniform{"Liberation Serif", 14.5, true, true};
    FontDialogValues choice{"DejaVu Sans", 16, false, true, true, true, {128, 0, 0}};

    FontDialogValues seen;
    auto choose = [&](const FontDialogValues& preset) { seen = preset; return choice; };
    auto outcome = schriftartBar(mixed, choose);
    EXPECT_EQ(seen, (FontDialogValues{"Arial", 10, false, false, false, false, {}}));
    EXPECT_EQ(outcome.chosen, choice);
    EXPECT_EQ(outcome.message, "");

    schriftartBar(uniform, choose);
    EXPECT_EQ(seen, (FontDialogValues{"Liberation Serif", 14.5, true, true, false, false, {}}));

    outcome = schriftartBar(uniform, [](const FontDialogValues&) -> FontDialogValues { throw CommonDialog::cancelled(); });
    EXPECT_EQ(outcome.chosen, std::nullopt);
    EXPECT_EQ(outcome.message, "") << "a cancel is silent";

    outcome = schriftartBar(uniform, [](const FontDialogValues&) -> FontDialogValues {
        throw RunError(24574, "Keine Schriftarten vorhanden.");
    });
    EXPECT_EQ(outcome.chosen, std::nullopt);
    EXPECT_EQ(outcome.message, "Fehler 24574 bei Auswahl der Schriftart.\r\nKeine Schriftarten vorhanden.");
}

} // namespace
} // namespace zw
