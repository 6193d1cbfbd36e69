#include "app/Appearance.h"

#include <gtest/gtest.h>

#include "app/ProgramPaths.h"
#include "app/QuittungLogic.h"
#include "core/ReceiptForm.h"
#include "tests/app/ProgramFolder.h"
#include "tests/app/RecordingParts.h"
#include "tests/core/FakeHost.h"

namespace zw {
namespace {

using F = FormElement;

class AppearanceTest : public ::testing::Test, protected test::FakeFormParts
{
protected:
    test::ProgramFolder home;
    const ProgramPaths& paths = home.paths;
    test::RecordingParts parts;
    ReceiptLook look;
    QuittungLogic quittung{form, settings, paths, host, parts, [] { return std::string("01.02.2026"); }};
    AppearanceLogic appearance{form, settings, paths, parts, look};
};

// Colour numbers keep red in the low byte; a swapped byte order would paint the fields blue for red. The form's
// picture of each colour is checked through the frame's menu entries.
TEST_F(AppearanceTest, ReceiptColoursSetTheStampAreaAndFieldColourForTheSessionOnly)
{
    struct Row
    {
        const char* entry;
        const char* stampArea;
        std::optional<Rgb> fieldRgb; // nullopt: the platform's button face
    };
    const Row rows[] = {
        {"hg_standard", "\\hintergrund\\stempel_weiss.bmp", std::nullopt},
        {"hg_red", "\\hintergrund\\stempel_rot.bmp", Rgb{255, 0, 0}},
        {"hg_orange", "\\hintergrund\\stempel_orange.bmp", Rgb{255, 128, 0}},
        {"hg_blue", "\\hintergrund\\stempel_blau.bmp", Rgb{0, 0, 255}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.entry);
        ASSERT_TRUE(appearance.receiptColour(row.entry));
        EXPECT_EQ(form.picture(F::Image3), paths.resolve(row.stampArea).string());
        ASSERT_TRUE(look.fieldColour().has_value());
        EXPECT_EQ(rgbOfColourNumber(*look.fieldColour()), row.fieldRgb);
    }
    EXPECT_TRUE(settings.values.empty()) << "a receipt colour lasts for the session and is not stored";
    EXPECT_FALSE(appearance.receiptColour("hg_pink"));
}

TEST_F(AppearanceTest, ColourAndTaxModeShareTheFormPictureButNotTheFields)
{
    quittung.steueraus();
    appearance.receiptColour("hg_green");
    EXPECT_EQ(form.formBackground(), "\\hintergrund\\quittung_gruen.bmp");
    EXPECT_FALSE(form.isVisible(F::Text10));

    quittung.steueran();
    EXPECT_EQ(form.formBackground(), "\\hintergrund\\quittung_leer.jpg");
    EXPECT_EQ(look.fieldColour(), 65280u) << "the fields keep their colour";
    EXPECT_EQ(form.picture(F::Image3), (paths.backgroundFolder() / "stempel_gruen.bmp").string());
}

// That the choice is stored and comes back after a restart is checked through the frame's window.
TEST_F(AppearanceTest, AWindowBackgroundIsShownAtOnceAndAnUnknownOneRefused)
{
    ASSERT_TRUE(appearance.windowBackground("hintergrund3"));
    EXPECT_EQ(parts.windowBackground, "\\hintergrund\\hg3.jpg");
    EXPECT_FALSE(appearance.windowBackground("hintergrund5"));
}

// The amounts' font of each entry is checked through the frame's menu entries.
TEST_F(AppearanceTest, FontEntriesAndTheChosenFontReachEveryField)
{
    appearance.schrift();
    quittung.schriftarial();
    EXPECT_EQ(form.fontFamily(F::Text7), "Arial");
    EXPECT_FALSE(form.isChecked("schrift"));
    EXPECT_TRUE(form.isChecked("schriftarial"));

    // A font from the dialog goes everywhere, but the title keeps its eighteen points.
    appearance.applyChosenFont({"Times New Roman", 12, {/*bold=*/true, /*italic=*/false}});
    for (F element : {F::Label1, F::Text1, F::Text12})
        EXPECT_EQ(form.fontFamily(element), "Times New Roman") << elementName(element);
    EXPECT_EQ(form.pointSize(F::Text5), 12);
    EXPECT_EQ(form.pointSize(F::Label1), 18);
    ASSERT_TRUE(look.fontStyle().has_value());
    EXPECT_TRUE(look.fontStyle()->bold);
    EXPECT_FALSE(look.fontStyle()->italic);
    EXPECT_EQ(appearance.fontDialogPreset(), "Times New Roman");
}

} // namespace
} // namespace zw
