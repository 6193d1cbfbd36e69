#include "print/Capture.h"

#include <gtest/gtest.h>

#include "app/Appearance.h"
#include "core/ReceiptForm.h"
#include "tests/app/ProgramFolder.h"
#include "tests/print/PictureProbe.h"

namespace zw {
namespace {

using F = FormElement;
using test::inkIn;
using test::pixelsOf;

// Field rectangles in pixels, from the twips of the receipt's layout table divided by 15.
const QRect kText8(56, 312, 209, 19);
const QRect kText12(432, 128, 113, 19);
const QRect kRTFBox(24, 72, 297, 73);
const QRect kImage6(288, 352, 257, 57);

class CaptureTest : public ::testing::Test, protected test::ProgramFolder
{
protected:
    CaptureTest()
    {
        // Start from an empty form so that each case sees only its own ink.
        for (std::size_t i = 0; i < kFormElementCount; ++i)
            form.setText(static_cast<F>(i), "");
    }

    Capture capture{paths};
    ReceiptForm form;
};

TEST_F(CaptureTest, HasTheSizeOfTheFormAndItsBackgroundAtTheTopLeft)
{
    test::writeSolidPicture(paths.backgroundFolder() / "blau.bmp", 566, 425, QColor(0, 0, 255));
    form.setFormBackground("\\hintergrund\\blau.bmp");

    QImage photo = capture(form);

    EXPECT_EQ(photo.size(), QSize(570, 429));
    EXPECT_EQ(pixelsOf(photo, QRect(0, 0, 566, 425), qRgb(0, 0, 255)), 566 * 425);
    // The four pixels the picture does not cover keep the grey of the area.
    EXPECT_EQ(pixelsOf(photo, QRect(566, 0, 4, 429), qRgb(0xF0, 0xF0, 0xF0)), 4 * 429);
    EXPECT_EQ(pixelsOf(photo, QRect(0, 425, 570, 4), qRgb(0xF0, 0xF0, 0xF0)), 570 * 4);

    // A missing background leaves the grey area everywhere.
    form.setFormBackground("\\hintergrund\\fehlt.jpg");
    photo = capture(form);
    EXPECT_EQ(pixelsOf(photo, photo.rect(), qRgb(0xF0, 0xF0, 0xF0)), 570 * 429);
}

TEST_F(CaptureTest, TheReceiptColourFillsTheFieldsAndTheStampAreaButNotTheWords)
{
    test::writeSolidPicture(paths.backgroundFolder() / "stempel_gruen.bmp", 116, 37, QColor(0, 255, 0));
    form.setPicture(F::Image3, (paths.backgroundFolder() / "stempel_gruen.bmp").string());
    ReceiptLook look;
    look.setColour(255); // red, in the blue-high number form
    capture.setLook(&look);

    QImage photo = capture(form);

    EXPECT_EQ(pixelsOf(photo, kText12, qRgb(255, 0, 0)), kText12.width() * kText12.height());
    EXPECT_EQ(pixelsOf(photo, QRect(440, 16, 116, 37), qRgb(0, 255, 0)), 116 * 37);
    // Text4, the amount in words, keeps its own background.
    EXPECT_EQ(pixelsOf(photo, QRect(24, 176, 521, 19), qRgb(255, 0, 0)), 0);
    form.setVisible(F::Text12, false);
    EXPECT_EQ(pixelsOf(capture(form), kText12, qRgb(255, 0, 0)), 0);
}

// Where a text's ink lands beyond its plain place: cut at its field's edge, clear of its neighbours, right-aligned
// for amounts, on two lines for the issuer block.
TEST_F(CaptureTest, TextsAreCutAtTheirFieldsAndAlignedAsTheirKindWants)
{
    const QRect text12Left(kText12.left(), kText12.top(), kText12.width() / 2, kText12.height());
    const QRect text12Right(kText12.center().x(), kText12.top(), kText12.width() / 2 + 1, kText12.height());
    struct Row
    {
        const char* name;
        F element;
        std::string text;
        std::vector<QRect> inked;
        std::vector<QRect> blank;
    };
    const Row rows[] = {
        {"an overlong place reaches its field's edge and not the date caption", F::Text8, std::string(80, 'W'),
         {QRect(kText8.right() - 10, kText8.top(), 10, kText8.height())},
         {QRect(kText8.right() + 1, 300, 287 - kText8.right(), 50)}},
        {"a caption wider than its box touches neither the rate nor the share", F::Label14, "% MwSt.",
         {QRect(377, 104, 432 - 377, 17)}, {QRect(377, 104, 2, 17), QRect(429, 104, 3, 17)}},
        {"an amount stands right", F::Text12, "1,00", {text12Right}, {text12Left}},
        {"an overlong amount shows its start", F::Text12, "999.999.999.999.999,00",
         {QRect(kText12.left(), kText12.top(), 12, kText12.height())}, {}},
        {"the issuer block keeps its line breaks", F::RTFBox, "Erste Zeile\r\nZweite Zeile\r\n",
         {QRect(kRTFBox.left(), kRTFBox.top(), kRTFBox.width(), 18),
          QRect(kRTFBox.left(), kRTFBox.top() + 19, kRTFBox.width(), 15)},
         {QRect(kRTFBox.left(), kRTFBox.top() + 40, kRTFBox.width(), 30)}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        form.setText(row.element, row.text);
        const QImage photo = capture(form);
        for (const QRect& area : row.inked)
            EXPECT_GT(inkIn(photo, area), 0);
        for (const QRect& area : row.blank)
            EXPECT_EQ(inkIn(photo, area), 0);
        form.setText(row.element, "");
    }
}

TEST_F(CaptureTest, FitsPicturesToTheirVisibleFieldsAndShowsNothingOfAnUnreadableOne)
{
    const auto red = folder / "rot.bmp";
    test::writeSolidPicture(red, 10, 10, QColor(255, 0, 0));
    form.setPicture(F::Image6, red.string());
    form.setPicture(F::Image7, red.string());
    form.setVisible(F::Image6, true);
    form.setVisible(F::Image7, false);

    QImage photo = capture(form);
    EXPECT_EQ(pixelsOf(photo, kImage6, qRgb(255, 0, 0)), kImage6.width() * kImage6.height());
    EXPECT_EQ(pixelsOf(photo, photo.rect(), qRgb(255, 0, 0)), kImage6.width() * kImage6.height());

    test::writeBytes(folder / "kaputt.jpg", "kein Bild");
    form.setPicture(F::Image6, (folder / "kaputt.jpg").string());
    photo = capture(form);
    EXPECT_EQ(pixelsOf(photo, photo.rect(), qRgb(0xF0, 0xF0, 0xF0)), 570 * 429);
}

} // namespace
} // namespace zw
