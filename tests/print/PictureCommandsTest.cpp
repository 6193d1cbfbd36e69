#include "print/PictureCommands.h"

#include <gtest/gtest.h>

#include "tests/core/RunErrorNumber.h"

#include "core/ReceiptForm.h"
#include "tests/app/ProgramFolder.h"
#include "tests/core/FakeHost.h"
#include "tests/print/PictureProbe.h"

namespace zw {
namespace {

using F = FormElement;

class PictureCommandsTest : public ::testing::Test, protected test::ProgramFolder
{
protected:
    PictureCommandsTest()
    {
        logoPicture = (folder / "logo.bmp").string();
        test::writeSolidPicture(logoPicture, 313, 97, QColor(0, 0, 200));
    }

    ReceiptForm form;
    test::FakeHost host;
    PictureCommands commands{form, paths, host};
    std::string logoPicture;
};

TEST_F(PictureCommandsTest, FirstLogoClickWithoutSigFileOpensTheWindowAndAsksForASecondClick)
{
    commands.switchOn(PictureKind::Logo);

    EXPECT_TRUE(std::filesystem::exists(paths.dataFile("signatur_logo.sig")));
    EXPECT_EQ(host.openedWindows, std::vector<std::string>{"logodatei"});
    EXPECT_EQ(host.messages.size(), 1u) << "asks for a second click";
    EXPECT_TRUE(form.isVisible(F::RTFBox));

    // The window saved a path meanwhile; the second click shows the logo in place of the issuer block.
    commands.saveFile(PictureKind::Logo, logoPicture);
    commands.switchOn(PictureKind::Logo);
    EXPECT_EQ(form.picture(F::Image7), logoPicture);
    EXPECT_FALSE(form.isVisible(F::RTFBox));
    EXPECT_TRUE(form.isChecked("ausstellerein"));
    EXPECT_EQ(host.messages.size(), 1u);
}

TEST_F(PictureCommandsTest, AnEmptySigFileBlanksTheFieldWithTheMarksOn)
{
    writeBytes("signatur.sig", "");
    form.setPicture(F::Image6, logoPicture);
    commands.switchOn(PictureKind::Signature);
    EXPECT_EQ(form.picture(F::Image6), "");
    EXPECT_TRUE(form.isChecked("einfst"));
    EXPECT_TRUE(host.openedWindows.empty());
}

TEST_F(PictureCommandsTest, APathSplitOverLinesIsJoinedAndABrokenPathFails)
{
    const auto cut = logoPicture.size() / 2;
    writeBytes("signatur.sig", logoPicture.substr(0, cut) + "\r\n" + logoPicture.substr(cut) + "\r\n");
    commands.switchOn(PictureKind::Signature);
    EXPECT_EQ(form.picture(F::Image6), logoPicture);

    writeBytes("kein_bild.jpg", "Text statt Bild");
    for (const auto& [picture, error] :
         {std::pair{folder / "weg.jpg", 53}, {paths.dataFile("kein_bild.jpg"), 481}}) {
        writeBytes("signatur.sig", picture.string() + "\r\n");
        EXPECT_EQ(test::errorNumberOf([&] { commands.switchOn(PictureKind::Signature); }), error) << picture;
    }
}

TEST_F(PictureCommandsTest, OffAndChooseSetTheMarksAndOnlyTheLogoGivesBackTheIssuerBlock)
{
    writeBytes("signatur_logo.sig", logoPicture + "\r\n");
    commands.switchOn(PictureKind::Logo);
    commands.choose(PictureKind::Logo);
    EXPECT_TRUE(form.isVisible(F::RTFBox));
    EXPECT_FALSE(form.isVisible(F::Image7));
    EXPECT_EQ(host.openedWindows.back(), "logodatei");

    writeBytes("signatur.sig", logoPicture + "\r\n");
    commands.switchOn(PictureKind::Signature);
    commands.choose(PictureKind::Signature);
    EXPECT_TRUE(form.isVisible(F::Image6)) << "choosing leaves the signature picture as it is";
    EXPECT_EQ(host.openedWindows.back(), "stunter");
    commands.switchOff(PictureKind::Signature);
    EXPECT_FALSE(form.isVisible(F::Image6));
}

TEST_F(PictureCommandsTest, TheFileWindowCreatesAMissingSigFileAndReadsTheStartSwitch)
{
    PictureFileChoice choice = commands.openFileWindow(PictureKind::Signature, "");
    EXPECT_EQ(choice.path, "");
    EXPECT_FALSE(choice.everyStart);
    EXPECT_EQ(readBytes("signatur.sig"), "\r\n");

    commands.setEveryStart(PictureKind::Signature, true);
    EXPECT_EQ(readBytes("sigunteraa.dat"), "1\r\n");
    commands.saveFile(PictureKind::Signature, "/bilder/unterschrift.jpg");
    choice = commands.openFileWindow(PictureKind::Signature, "");
    EXPECT_EQ(choice.path, "/bilder/unterschrift.jpg");
    EXPECT_TRUE(choice.everyStart);
    EXPECT_EQ(host.notices.size(), 1u);
}

} // namespace
} // namespace zw
