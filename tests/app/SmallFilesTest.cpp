#include "app/SmallFiles.h"

#include <gtest/gtest.h>

#include "app/ProgramPaths.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "tests/app/TempFolder.h"
#include "tests/core/RunErrorNumber.h"

namespace zw {
namespace {

class SmallFilesTest : public ::testing::Test
{
protected:
    SmallFilesTest() : paths(folder.path()) { std::filesystem::create_directory(paths.dataFolder()); }

    void writeData(const std::string& name, const std::string& bytes) { test::writeBytes(paths.dataFile(name), bytes); }
    std::string readData(const std::string& name) { return test::readBytes(paths.dataFile(name)); }

    test::TempFolder folder;
    ProgramPaths paths;
    ReceiptForm form;
};

// Lines of the rate and number files are joined without a separator, as the old program read them.
TEST_F(SmallFilesTest, RateAndNumberLinesAreJoined)
{
    writeData("mwst.dat", "1\r\n9\r\n");
    writeData("nummer.dat", "12\r\n34\r\n");
    smallfiles::loadRate(form, paths);
    smallfiles::loadNumber(form, paths);
    EXPECT_EQ(form.text(FormElement::Text3), "19");
    EXPECT_EQ(form.text(FormElement::Text1), "1234");
    writeData("mwst.dat", "");
    smallfiles::loadRate(form, paths);
    EXPECT_EQ(form.text(FormElement::Text3), "");
}

TEST_F(SmallFilesTest, MissingFilesAreCreatedAndTheFieldsKeepTheirValues)
{
    smallfiles::loadRate(form, paths);
    smallfiles::loadNumber(form, paths);
    EXPECT_EQ(readData("mwst.dat"), "\r\n");
    EXPECT_EQ(readData("nummer.dat"), "00000001\r\n");
    EXPECT_EQ(form.text(FormElement::Text3), "19");
    // The next start then comes up without a rate.
    ReceiptForm next;
    smallfiles::loadRate(next, paths);
    EXPECT_EQ(next.text(FormElement::Text3), "");
}

TEST_F(SmallFilesTest, ManyLinedFilesReachTheWindowOnceWithTheWholeText)
{
    // Told once per line, a window re-lays out the growing text each time and a long file takes minutes.
    int told = 0;
    form.addListener([&told](const FormChange&) { ++told; });
    std::string number, numberLines, abstand, anzahl, oben, printLines;
    for (int i = 0; i < 10000; ++i) {
        number += std::to_string(i % 10);
        numberLines += std::to_string(i % 10) + "\r\n";
    }
    for (int i = 0; i < 3333; ++i) {
        abstand += "1";
        anzahl += "2";
        oben += "3";
        printLines += "1\r\n2\r\n3\r\n";
    }
    writeData("nummer.dat", numberLines);
    writeData("druck.dat", printLines);
    smallfiles::loadNumber(form, paths);
    EXPECT_EQ(form.text(FormElement::Text1), number);
    EXPECT_LE(told, 1);
    told = 0;
    smallfiles::loadPrintSetup(form, paths);
    EXPECT_EQ(form.abstand(), abstand);
    EXPECT_EQ(form.anzahl(), anzahl);
    EXPECT_EQ(form.oben(), oben);
    EXPECT_LE(told, 3);
}

TEST_F(SmallFilesTest, PrintSetupWithAFourthLineAppendsAndThenFailsPastTheEnd)
{
    writeData("druck.dat", "10\r\n1\r\n20\r\n5\r\n");
    EXPECT_EQ(test::errorNumberOf([&] { smallfiles::loadPrintSetup(form, paths); }), 62);
    EXPECT_EQ(form.abstand(), "105");
    EXPECT_EQ(form.anzahl(), "1");
    EXPECT_EQ(form.oben(), "20");
}

TEST_F(SmallFilesTest, PrintSetupIsWrittenInItsOrderWithCrLf)
{
    form.setAbstand("-25");
    form.setAnzahl("3");
    form.setOben("270");
    smallfiles::savePrintSetup(form, paths);
    EXPECT_EQ(readData("druck.dat"), "-25\r\n3\r\n270\r\n");
}

TEST_F(SmallFilesTest, MarkFileCountsOnlyWhenItHoldsOne)
{
    struct Row
    {
        const char* content;
        bool on;
        int error; // 0: no fault
    };
    const Row rows[] = {{"1\r\n", true, 0}, {" 1 \r\n", true, 0}, {"2\r\n", false, 0},
                        {"ja\r\n", false, 13}, {"", false, 62}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.content);
        writeData("siglogoaa.dat", row.content);
        bool on = false;
        EXPECT_EQ(test::errorNumberOf([&] { on = smallfiles::readMark(paths.dataFile("siglogoaa.dat")); }), row.error);
        EXPECT_EQ(on, row.on);
    }
    EXPECT_FALSE(smallfiles::readMark(paths.dataFile("sigunteraa.dat")));
}

TEST_F(SmallFilesTest, MissingDataFolderFailsWithPathNotFound)
{
    std::filesystem::remove_all(paths.dataFolder());
    EXPECT_EQ(test::errorNumberOf([&] { smallfiles::loadNumber(form, paths); }), 76);
    EXPECT_EQ(form.text(FormElement::Text1), "00000001");
}

} // namespace
} // namespace zw
