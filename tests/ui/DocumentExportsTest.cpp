// The PDF and XML commands of the composed main window, as a person uses them.
#include <QAction>
#include <QImage>
#include <QListWidget>
#include <QPushButton>
#include <QToolButton>
#include <QUrl>
#include <gtest/gtest.h>

#include "tests/ui/MainWindowFixture.h"
#include "tests/ui/ModalCloser.h"
#include "ui/export/export_pdf.h"

namespace zw {
namespace {

using F = FormElement;

QStringList linesOf(const QListWidget* list)
{
    QStringList lines;
    for (int row = 0; row < list->count(); ++row)
        lines << list->item(row)->text();
    return lines;
}

class DocumentExportsTest : public test::StartedWindow<installExports>
{
protected:
    DocumentExportsTest()
    {
        form.setText(F::Text12, "119,00");
        form.setText(F::Text7, "Miete & Nebenkosten");
    }
};

TEST_F(DocumentExportsTest, PdfCommandCapturesMakesSavesAndOpensTheDocumentButACancelLeavesOpeningOff)
{
    const auto target = folder.path() / "Quittung 42.pdf";
    std::vector<QUrl> opened;
    test::inModal([&] { window->action("alspdf")->trigger(); }, [&](QDialog& modal) {
        auto& dialog = dynamic_cast<export_pdf&>(modal);
        auto* open = dialog.findChild<QPushButton*>("Command1");
        dialog.speicherDialog().setPresenter([](const CommonDialog&, bool) { return std::nullopt; });
        dialog.findChild<QPushButton*>("cmdGo")->click();
        EXPECT_EQ(linesOf(dialog.findChild<QListWidget*>("lstLog")),
                  QStringList({"Los gehts...", "Seite 1 begonnen..."}));
        EXPECT_FALSE(open->isEnabled());

        dialog.openUrl = [&](const QUrl& url) { opened.push_back(url); };
        dialog.speicherDialog().setPresenter([&](const CommonDialog&, bool) { return target.string(); });
        dialog.findChild<QPushButton*>("cmdGo")->click();
        EXPECT_EQ(linesOf(dialog.findChild<QListWidget*>("lstLog")),
                  QStringList({"Los gehts...", "Seite 1 begonnen...", "Seite 1 beendet.", "Fertig!"}));
        ASSERT_TRUE(open->isEnabled());
        open->click();
        dialog.findChild<QToolButton*>("Image4")->click();
    });
    const QImage capture(QString::fromStdString((paths.home() / "temp.bmp").string()));
    EXPECT_EQ(capture.size(), QSize(570, 429)) << "the capture stays as temp.bmp";
    EXPECT_EQ(test::readBytes(target).substr(0, 8), "%PDF-1.1");
    ASSERT_EQ(opened.size(), 2u);
    EXPECT_EQ(opened[0], QUrl::fromLocalFile(QString::fromStdString(target.string())));
    EXPECT_EQ(opened[1], QUrl(export_pdf::kReaderDownloadPage));
}

TEST_F(DocumentExportsTest, XmlCommandWritesThroughADialogOfItsOwn)
{
    const auto target = folder.path() / "q.xml";
    window->fileDialog("alsxml").setPresenter([&](const CommonDialog&, bool) { return target.string(); });
    window->action("alsxml")->trigger();
    // Every field's bytes are the command line's check; here the window's receipt reaches the chosen file.
    EXPECT_NE(test::readBytes(target).find("     Miete & Nebenkosten\r\n"), std::string::npos);

    // The picture export's dialog never saw the XML name.
    EXPECT_EQ(window->fileDialog("bmpdatei").FileName, "");
}

} // namespace
} // namespace zw
