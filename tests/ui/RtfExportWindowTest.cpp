#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QTest>
#include <QToolBar>
#include <gtest/gtest.h>

#include "export/rtf/RtfReader.h"
#include "export/rtf/RtfWriter.h"
#include "tests/app/PeerProgram.h"
#include "tests/ui/MainWindowFixture.h"
#include "tests/ui/ModalCloser.h"
#include "ui/frame/RtfBridge.h"
#include "ui/export/rtfexp.h"

namespace zw {
namespace {

using test::ModalCloser;

// A picture whose parts a renderer cannot miss: a blue frame around an orange and a white half.
QImage boldPicture()
{
    QImage image(570, 429, QImage::Format_RGB32);
    image.fill(QColor(0, 102, 204));
    QPainter painter(&image);
    painter.fillRect(20, 20, 265, 389, QColor(255, 153, 0));
    painter.fillRect(285, 20, 265, 389, Qt::white);
    return image;
}

std::vector<const rtf::Run*> runsOf(const rtf::Document& document)
{
    std::vector<const rtf::Run*> runs;
    for (const auto& paragraph : document.paragraphs)
        for (const auto& run : paragraph.runs)
            runs.push_back(&run);
    return runs;
}

class RtfExportWindowTest : public test::MainWindowFixture
{
protected:
    RtfExportWindowTest()
    {
        installRtfExport({*window, form, settings, paths, [this] { return picture ? *picture : capture(form); }});
        window->logic().load();
        form.setText(FormElement::Text12, "119,00");
        form.setText(FormElement::Text5, "Jürgen Weiß");
    }

    // alsrtf from the menu; `inside` runs in the open window.
    void alsrtf(const std::function<void(rtfexp&)>& inside)
    {
        ModalCloser watcher([&](QDialog* dialog) {
            if (auto* view = dynamic_cast<rtfexp*>(dialog))
                inside(*view);
        });
        window->action("alsrtf")->trigger();
        ASSERT_EQ(watcher.seen, std::vector<QString>{"rtfexp"});
    }

    // What the user types, one key event a character, umlauts included (QTest's key clicks know ASCII only).
    static void type(rtfexp& view, const QString& text)
    {
        view.RTFBox()->setFocus();
        for (const QChar character : text) {
            if (character == QLatin1Char('\n'))
                QTest::keyClick(view.RTFBox(), Qt::Key_Return);
            else
                QTest::sendKeyEvent(QTest::Click, view.RTFBox()->viewport(), Qt::Key_unknown, QString(character), {});
        }
    }

    // The font dialog answers `chosen`, as if the user had picked it; returns what the dialog opened with.
    static FontDialogValues chooseFont(rtfexp& view, const FontDialogValues& chosen)
    {
        FontDialogValues preset;
        view.setFontPresenter([&preset, chosen](const FontDialogValues& shown) {
            preset = shown;
            return chosen;
        });
        view.schriftartBar();
        return preset;
    }

    std::optional<QImage> picture;
};

TEST_F(RtfExportWindowTest, OpensWithTheFreshPictureAtFirstSightAndTheClipboardEmpty)
{
    QGuiApplication::clipboard()->setText("was vorher da war");
    std::vector<QImage> shown;
    for (int opening = 0; opening < 2; ++opening) {
        SCOPED_TRACE(opening);
        form.setText(FormElement::Text5, opening == 0 ? "Erika Muster" : "Max Mustermann GmbH & Co. KG");
        alsrtf([&](rtfexp& view) {
            const QMimeData* left = QGuiApplication::clipboard()->mimeData();
            EXPECT_TRUE(left == nullptr || (!left->hasImage() && !left->hasText())) << "the clipboard is emptied";
            // The window was painted once, with the picture in it.
            const QImage seen = view.RTFBox()->viewport()->grab().toImage();
            const rtf::Document document = view.document();
            const QImage expected = capture(form).convertToFormat(QImage::Format_RGB32);
            int same = 0;
            for (int y = 40; y < 400; y += 7)
                for (int x = 40; x < 540; x += 7)
                    same += seen.pixel(x + 4, y + 4) == expected.pixel(x, y) ? 1 : 0;
            EXPECT_GT(same, 72 * 52 * 9 / 10) << "the painted box shows the picture at its size";
            // Saving the unchanged window writes what the command line writes: the same picture, alone.
            ASSERT_EQ(rtf::writeRtf(document), rtf::writeRtf(receiptRtfDocument(bitmapOfImage(capture(form)))));
            shown.push_back(QImage::fromData(QByteArray::fromStdString(runsOf(document)[0]->picture->png)));
        });
    }
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_NE(shown[0], shown[1]) << "each command photographs the receipt anew";
}

TEST_F(RtfExportWindowTest, SavingSetsTheCaptionACancelWritesNothingAndHelpOpensItsWindow)
{
    const auto target = folder / "beleg.rtf";
    alsrtf([&](rtfexp& view) {
        ModalCloser help;
        view.Coolbar1()->findChild<QAction*>("hilfe_bar")->trigger();
        EXPECT_EQ(help.seen, std::vector<QString>{"hilfertf"});

        view.dlgCommonDialog().setPresenter([](const CommonDialog&, bool) { return std::nullopt; });
        view.Coolbar1()->findChild<QAction*>("export_bar")->trigger();
        EXPECT_EQ(view.windowTitle(), "Export als RTF-Datei");
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2) << "home and config only";

        view.dlgCommonDialog().setPresenter([&](const CommonDialog&, bool) { return target.string(); });
        view.Coolbar1()->findChild<QAction*>("export_bar")->trigger();
        EXPECT_EQ(view.windowTitle().toStdString(), target.string());
    });
    const rtf::Document saved = rtf::readRtf(test::readBytes(target));
    ASSERT_EQ(runsOf(saved).size(), 1u);
    EXPECT_TRUE(runsOf(saved)[0]->picture.has_value());
}

TEST_F(RtfExportWindowTest, EachFontChoiceGoesToTheTextTypedAfterItInTheFile)
{
    const auto target = folder / "brief.rtf";
    alsrtf([&](rtfexp& view) {
        chooseFont(view, {"DejaVu Serif", 14, true, false, true, false, {128, 0, 0}});
        type(view, "Danke für Ihren Einkauf");
        EXPECT_EQ(chooseFont(view, {"Liberation Mono", 9, false, true, false, true, {}}).name, "DejaVu Serif")
            << "the dialog opens on the font being typed";
        type(view, " – Gruß");
        view.dlgCommonDialog().setPresenter([&](const CommonDialog&, bool) { return target.string(); });
        view.exportBar();
    });
    const rtf::Document saved = rtf::readRtf(test::readBytes(target));
    const auto runs = runsOf(saved);
    ASSERT_EQ(runs.size(), 3u);
    EXPECT_TRUE(runs[0]->picture.has_value());
    EXPECT_EQ(runs[1]->text, "Danke für Ihren Einkauf");
    EXPECT_EQ(saved.fonts.at(static_cast<std::size_t>(runs[1]->format.font)).name, "DejaVu Serif");
    EXPECT_EQ(runs[1]->format.halfPoints, 28);
    EXPECT_TRUE(runs[1]->format.bold && runs[1]->format.underline && !runs[1]->format.italic);
    ASSERT_GT(runs[1]->format.colour, 0);
    EXPECT_EQ(saved.colours.at(static_cast<std::size_t>(runs[1]->format.colour) - 1), (rtf::Colour{128, 0, 0}));
    EXPECT_EQ(runs[2]->text, " – Gruß");
    EXPECT_EQ(saved.fonts.at(static_cast<std::size_t>(runs[2]->format.font)).name, "Liberation Mono");
    EXPECT_TRUE(runs[2]->format.italic && runs[2]->format.strikethrough && !runs[2]->format.bold);
}

TEST_F(RtfExportWindowTest, PrintDialogOffersTheSelectionOnlyWithOne)
{
    rtfexp view(window.get());
    type(view, "Zeile zum Drucken");
    std::vector<bool> offered;
    ModalCloser watcher([&offered](QDialog* dialog) {
        auto* print = qobject_cast<QPrintDialog*>(dialog);
        ASSERT_NE(print, nullptr);
        offered.push_back(print->testOption(QAbstractPrintDialog::PrintSelection));
        EXPECT_FALSE(print->testOption(QAbstractPrintDialog::PrintPageRange));
    });
    view.druckenBar();
    view.RTFBox()->moveCursor(QTextCursor::StartOfBlock, QTextCursor::KeepAnchor);
    view.druckenBar();
    EXPECT_EQ(offered, (std::vector<bool>{false, true}));
}

TEST_F(RtfExportWindowTest, PrintsTextAndPicture)
{
    if (!test::toolAvailable("pdftotext"))
        GTEST_SKIP() << "poppler-utils missing";
    picture = boldPicture();
    const auto pdf = folder / "druck.pdf";
    alsrtf([&](rtfexp& view) {
        type(view, "Gedruckter Zusatz");
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(QString::fromStdString(pdf.string()));
        view.printTo(printer);
    });
    EXPECT_NE(test::run("pdftotext '" + pdf.string() + "' -").output.find("Gedruckter Zusatz"), std::string::npos);
    EXPECT_NE(test::run("pdfimages -list '" + pdf.string() + "'").output.find("570   429"), std::string::npos);
}

// LibreOffice opens the saved file: the typed text is on the page and so is the picture, at its size.
TEST_F(RtfExportWindowTest, LibreOfficeShowsThePictureAndTheTypedText)
{
    if (!test::toolAvailable("soffice"))
        GTEST_SKIP() << "LibreOffice (soffice) missing";
    picture = boldPicture();
    const auto rtfFile = folder / "beleg.rtf";
    alsrtf([&](rtfexp& view) {
        chooseFont(view, {"Liberation Serif", 16, true, false, false, false, {}});
        type(view, "\nVielen Dank");
        view.dlgCommonDialog().setPresenter([&](const CommonDialog&, bool) { return rtfFile.string(); });
        view.exportBar();
    });
    ASSERT_TRUE(std::filesystem::exists(rtfFile));
    const auto out = folder / "pdf";
    const auto command = "soffice -env:UserInstallation=file://" + (folder / "lo-profile").string() +
                         " --headless --convert-to pdf --outdir '" + out.string() + "' '" + rtfFile.string() +
                         "' >/dev/null 2>&1";
    ASSERT_EQ(test::run(command).exitCode, 0);
    const auto pdf = out / "beleg.pdf";
    ASSERT_TRUE(std::filesystem::exists(pdf));
    EXPECT_NE(test::run("pdftotext '" + pdf.string() + "' -").output.find("Vielen Dank"), std::string::npos);

    constexpr int kDpi = 50;
    ASSERT_EQ(test::run("pdftoppm -r " + std::to_string(kDpi) + " -png -f 1 -l 1 '" + pdf.string() + "' '" +
                        (out / "seite").string() + "'")
                  .exitCode,
              0);
    QImage page((out / "seite-1.png").c_str());
    ASSERT_FALSE(page.isNull());
    auto near = [](QRgb pixel, int r, int g, int b) {
        return std::abs(qRed(pixel) - r) < 40 && std::abs(qGreen(pixel) - g) < 40 && std::abs(qBlue(pixel) - b) < 40;
    };
    QRect frame;
    int orange = 0;
    for (int y = 0; y < page.height(); ++y) {
        for (int x = 0; x < page.width(); ++x) {
            const QRgb pixel = page.pixel(x, y);
            if (near(pixel, 0, 102, 204))
                frame |= QRect(x, y, 1, 1);
            orange += near(pixel, 255, 153, 0) ? 1 : 0;
        }
    }
    // 8550 x 6435 twips are 5.94 x 4.47 inches.
    EXPECT_NEAR(frame.width(), 8550.0 / 1440 * kDpi, 4);
    EXPECT_NEAR(frame.height(), 6435.0 / 1440 * kDpi, 4);
    const double orangeArea = 265.0 * 389 / (570.0 * 429) * frame.width() * frame.height();
    EXPECT_NEAR(orange, orangeArea, orangeArea * 0.1);
}

} // namespace
} // namespace zw
