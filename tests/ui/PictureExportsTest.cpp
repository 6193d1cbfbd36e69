#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "export/DibFile.h"
#include "tests/app/PeerProgram.h"
#include "tests/ui/MainWindowFixture.h"
#include "tests/ui/ModalCloser.h"
#include "ui/export/jpg_export.h"
#include "ui/export/png_export.h"

namespace zw {
namespace {

using test::ModalCloser;

// The save dialog's answer.
struct DialogAnswer
{
    std::optional<std::string> path;

    CommonDialog::Presenter presenter()
    {
        return [this](const CommonDialog&, bool forSaving) {
            EXPECT_TRUE(forSaving);
            return path;
        };
    }
};

// Raw red-green-blue bytes of a picture file as ImageMagick reads it.
std::string peerPixels(const std::filesystem::path& file)
{
    return test::runPeer("/usr/bin/convert '" + file.string() + "' -depth 8 rgb:- 2>/dev/null");
}

std::string rgbBytes(const QImage& image)
{
    const QImage rgb = image.convertToFormat(QImage::Format_RGB888);
    std::string bytes;
    for (int y = 0; y < rgb.height(); ++y)
        bytes.append(reinterpret_cast<const char*>(rgb.constScanLine(y)), static_cast<std::size_t>(rgb.width()) * 3);
    return bytes;
}

class PictureExportsTest : public test::MainWindowFixture
{
protected:
    PictureExportsTest()
    {
        installPictureExports(exportContext());
        start();
        form.setText(FormElement::Text12, "119,00");
        form.setText(FormElement::Text5, "Jürgen Weiß");
    }

    // The hand-over file as the main window leaves it.
    std::filesystem::path handOver()
    {
        const auto file = paths.home() / "temp.bmp";
        saveBitmapFile(surfaceFromImage(capture(form)), file);
        return file;
    }
};

TEST_F(PictureExportsTest, JpgWindowOpensAtEightyFiveItsLabelFollowsTheBarAndTheBarSetsTheQuality)
{
    jpg_export dialog(handOver(), window.get());
    auto* label = dialog.findChild<QLabel*>("Label3");
    EXPECT_EQ(label->text(), "JPG Kompression: 85");
    QScrollBar* bar = dialog.HScroll1();
    bar->setValue(30);
    EXPECT_EQ(label->text(), "JPG Kompression: 30");
    // Without tracking only the drag itself can move the label.
    bar->setTracking(false);
    bar->setSliderDown(true);
    bar->setSliderPosition(12);
    EXPECT_EQ(label->text(), "JPG Kompression: 12");
    bar->setSliderDown(false);

    const QPixmap preview = dialog.findChild<QLabel*>("Picture2")->pixmap();
    ASSERT_FALSE(preview.isNull());
    EXPECT_EQ(preview.size(), QSize(380, 286)) << "two thirds of the receipt area";

    // The file dialog shows the pattern as the name (the closer cancels it), and the bar's quality reaches the file.
    std::vector<QString> names;
    ModalCloser closer([&names](QDialog* shown) {
        if (auto* name = shown->findChild<QLineEdit*>("fileNameEdit"))
            names.push_back(name->text());
    });
    QTest::mouseClick(dialog.findChild<QPushButton*>("xpButton3"), Qt::LeftButton);
    EXPECT_EQ(names, std::vector<QString>{"*.jpg"});
    DialogAnswer answer;
    dialog.dialog().setPresenter(answer.presenter());
    std::map<int, std::uintmax_t> sizes;
    for (int quality : {0, 100}) {
        SCOPED_TRACE(quality);
        const auto file = folder / ("beleg" + std::to_string(quality) + ".jpg");
        answer.path = file.string();
        dialog.HScroll1()->setValue(quality);
        QTest::mouseClick(dialog.findChild<QPushButton*>("xpButton3"), Qt::LeftButton);
        EXPECT_EQ(QImage(QString::fromStdString(file.string())).size(), QSize(570, 429)) << "the whole picture";
        sizes[quality] = std::filesystem::exists(file) ? std::filesystem::file_size(file) : 0;
    }
    EXPECT_GT(sizes[100], 3 * sizes[0]);
    EXPECT_TRUE(closer.messages.empty());
}

TEST_F(PictureExportsTest, PngWindowCancelWritesNothingAndAFailureIsReportedTwice)
{
    // The file dialog shows the pattern as the name; the closer cancels it.
    std::vector<QString> names;
    ModalCloser closer([&names](QDialog* shown) {
        if (auto* name = shown->findChild<QLineEdit*>("fileNameEdit"))
            names.push_back(name->text());
    });
    png_export dialog(handOver(), window.get());
    const auto before = std::distance(std::filesystem::directory_iterator(folder.path()), {});
    dialog.Command1();
    EXPECT_EQ(names, std::vector<QString>{"*.png"});
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), before);
    EXPECT_TRUE(closer.messages.empty()) << "a cancel says nothing";

    DialogAnswer answer;
    dialog.dialog().setPresenter(answer.presenter());

    answer.path = (folder / "fehlt" / "beleg.png").string();
    dialog.Command1();
    EXPECT_THAT(closer.messages, ::testing::ElementsAre("GDI Error: File Not Found. GDI+ Error:10",
                                                    "Error: Speichern ist fehlgeschlagen."));

    answer.path = (folder / "beleg.png").string();
    dialog.Command1();
    EXPECT_EQ(closer.messages.size(), 2u);
    EXPECT_EQ(peerPixels(folder / "beleg.png"), rgbBytes(capture(form)));
}

TEST_F(PictureExportsTest, AfterAFailedStartTheSaveButtonDoesNothingAndThePreviewStillShows)
{
    const EncoderTable none = [] { return std::vector<ImageEncoder>{}; };
    const auto file = handOver();
    ModalCloser closer;
    jpg_export jpg(file, window.get(), none);
    png_export png(file, window.get(), none);
    EXPECT_THAT(closer.messages, ::testing::ElementsAre("GDI Error: Generic Error. GDI+ Error:1",
                                                    "GDI Error: GDI+ not inizialized.",
                                                    "GDI Error: Generic Error. GDI+ Error:1",
                                                    "GDI Error: GDI+ not inizialized."));
    closer.seen.clear();
    DialogAnswer answer;
    answer.path = (folder / "x.jpg").string();
    jpg.dialog().setPresenter(answer.presenter());
    png.dialog().setPresenter(answer.presenter());
    QTest::mouseClick(jpg.findChild<QPushButton*>("xpButton3"), Qt::LeftButton);
    QTest::mouseClick(png.findChild<QPushButton*>("Command1"), Qt::LeftButton);
    EXPECT_TRUE(closer.seen.empty());
    EXPECT_FALSE(std::filesystem::exists(folder / "x.jpg")) << "neither window asked for a name and wrote";
    EXPECT_FALSE(jpg.findChild<QLabel*>("Picture2")->pixmap().isNull());
    EXPECT_EQ(jpg.findChild<QLabel*>("Label3")->text(), "JPG Kompression: 85");
}

// A cancel of the command: CancelledDialogTest.
TEST_F(PictureExportsTest, BitmapCommandWritesTheCaptureAndAFailedWriteIsSilent)
{
    DialogAnswer answer;
    window->fileDialog("bmpdatei").setPresenter(answer.presenter());
    ModalCloser closer;
    answer.path = (folder / "beleg").string();
    window->action("bmpdatei")->trigger();
    EXPECT_THAT(closer.seen, ::testing::ElementsAre("NoticeWindow"));
    EXPECT_EQ(peerPixels(folder / "beleg.BMP"), rgbBytes(capture(form))) << "the extension added as the dialog does";

    answer.path = (folder / "fehlt" / "beleg.bmp").string();
    closer.seen.clear();
    window->action("bmpdatei")->trigger();
    EXPECT_THAT(closer.seen, ::testing::ElementsAre("NoticeWindow")) << "a failed write is silent";
}

TEST_F(PictureExportsTest, JpegAndPngCommandsHandOverTheCaptureToTheirWindows)
{
    std::vector<QString> previews;
    ModalCloser closer([&](QDialog* dialog) {
        if (auto* preview = dialog->findChild<QLabel*>(dialog->objectName() == "jpg_export" ? "Picture2" : "Picture1"))
            previews.push_back(preview->pixmap().isNull() ? "empty" : "shown");
    });
    window->action("jpeg")->trigger();
    EXPECT_THAT(closer.seen, ::testing::ElementsAre("NoticeWindow", "jpg_export"));
    const auto handOverFile = paths.home() / "temp.bmp";
    EXPECT_EQ(peerPixels(handOverFile), rgbBytes(capture(form)));

    std::filesystem::remove(handOverFile);
    closer.seen.clear();
    window->action("pngdatei")->trigger();
    EXPECT_THAT(closer.seen, ::testing::ElementsAre("png_export"));
    EXPECT_TRUE(std::filesystem::exists(handOverFile)) << "it stays after the export";
    EXPECT_THAT(previews, ::testing::ElementsAre("shown", "shown"));
}

TEST_F(PictureExportsTest, CopyPutsTheCaptureOnTheClipboardAfterItsNotice)
{
    ModalCloser closer;
    QGuiApplication::clipboard()->clear();
    window->action("quikop")->trigger();
    EXPECT_THAT(closer.seen, ::testing::ElementsAre("NoticeWindow"));
    const QImage copied = QGuiApplication::clipboard()->image();
    ASSERT_EQ(copied.size(), QSize(570, 429));
    EXPECT_EQ(rgbBytes(copied), rgbBytes(capture(form)));
}

} // namespace
} // namespace zw
