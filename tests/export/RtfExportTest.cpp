#include <QImage>
#include <gtest/gtest.h>

#include "app/CommonDialog.h"
#include "core/RunError.h"
#include "export/PngEncoder.h"
#include "export/RtfExport.h"
#include "export/rtf/RtfWriter.h"
#include "tests/app/TempFolder.h"
#include "tests/core/RunErrorNumber.h"
#include "tests/export/TestPicture.h"

namespace zw {
namespace {

// Qt's PNG reader (libpng) judges the encoder; ImageMagick judges the receipt's size in the export check.
TEST(PngEncoder, DecodesToTheSamePixels)
{
    struct Row
    {
        const char* name;
        Bitmap picture;
    };
    const Row rows[] = {
        {"odd width of noise", test::testPicture(333, 7, test::PictureKind::Noise)},
        {"one column", test::testPicture(1, 50, test::PictureKind::Noise)},
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

rtf::Document typedDocument()
{
    rtf::Document document;
    document.append("getippt", {});
    return document;
}

// A cancel in the RTF window: its own test.
TEST(ExportRtfFile, AsksBeforeOverwritingAndWritesOnlyWhereAFileCanBe)
{
    const test::TempFolder folder;
    struct Row
    {
        const char* name;
        std::optional<std::string> answer;
        bool written;
    };
    const Row rows[] = {
        {"a new file", (folder / "beleg.rtf").string(), true},
        {"cancelled", std::nullopt, false},
        {"missing folder", (folder / "fehlt" / "beleg.rtf").string(), false},
        {"a folder in the file's place", folder.path().string(), false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        CommonDialog dialog;
        dialog.FileName = (folder / "vorher.rtf").string();
        dialog.setPresenter([&](const CommonDialog& shown, bool forSaving) {
            EXPECT_TRUE(forSaving && shown.CancelError);
            // Ask before overwriting and before creating, hide the read-only box, the path must exist.
            EXPECT_EQ(shown.Flags, CommonDialog::kOverwritePrompt | CommonDialog::kHideReadOnly |
                                       CommonDialog::kPathMustExist | CommonDialog::kCreatePrompt);
            return row.answer;
        });
        bool built = false;
        const auto written = exportRtfFile(dialog, [&] {
            built = true;
            return typedDocument();
        });
        EXPECT_EQ(written, row.written ? row.answer : std::nullopt);
        EXPECT_EQ(built, row.answer.has_value()) << "the document is only built once a name is chosen";
        EXPECT_FALSE(std::filesystem::exists(folder / "vorher.rtf"));
    }
    EXPECT_EQ(test::readBytes(folder / "beleg.rtf"), rtf::writeRtf(typedDocument()));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
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
