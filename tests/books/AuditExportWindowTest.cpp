#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <gtest/gtest.h>

#include "tests/ui/MainWindowFixture.h"
#include "tests/ui/ModalCloser.h"
#include "ui/books/AuditExportPart.h"
#include "ui/books/AuditExportWindow.h"
#include "ui/frame/QtText.h"

namespace zw {

namespace {

using AuditExportWindowTest = test::StartedWindow<installAuditExport>;

TEST_F(AuditExportWindowTest, TheExportMenuWritesThePeriodAndNamesAReversedOne)
{
    test::writeBytes(paths.dataFile("belege.dat"),
                     "15.06.2025;7;119,00;;EUR;19;100,00;19,00;;Max;;Beratung;;;Quittung\r\n");
    const auto target = folder.path() / "pruefung";
    test::ModalCloser answerer{{}, /*messagesOnly=*/true};
    test::inModal(
        [this] { window->action("betriebspruefung")->trigger(); },
        [&](QDialog& dialog) {
            auto& audit = dynamic_cast<AuditExportWindow&>(dialog);
            audit.folderField()->setText(qt(target.string()));
            audit.fromField()->setText("01.07.2025");
            audit.toField()->setText("30.06.2025");
            audit.exportButton()->click();
            audit.fromField()->setText("01.01.2025");
            audit.exportButton()->click();
            EXPECT_EQ(audit.resultLabel()->text().toStdString(),
                      "Exportiert: 1 Beleg, 0 Einträge des Änderungsprotokolls und 0 Tagesabschlüsse nach " +
                          target.string() + ".");
            dialog.reject();
        });
    ASSERT_EQ(answerer.boxes.size(), 1u);
    EXPECT_TRUE(
        answerer.boxes[0].startsWith("Daten für die Betriebsprüfung: Der Zeitraum endet vor seinem Beginn"));
    EXPECT_TRUE(std::filesystem::exists(target / "index.xml"));
}

} // namespace
} // namespace zw
