// report1 and helpp3 as a user resizes them.
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QScreen>
#include <gtest/gtest.h>

#include <map>

#include "ledger/ReceiptLedger.h"
#include "tests/ui/FaultRecorder.h"
#include "tests/ui/MainWindowFixture.h"
#include "tests/ui/ModalCloser.h"
#include "ui/frame/MessageDialog.h"
#include "ui/ledger/ReportWindow.h"
#include "ui/lists/Autocompletion.h"

namespace zw {
namespace {

using ResizingWindowsTest = test::StartedWindow<installHelpWindow>;

// Each control's place and size as shares of the window's.
std::map<QWidget*, QRectF> sharesOf(QDialog& window)
{
    std::map<QWidget*, QRectF> shares;
    for (auto* control : window.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (window.layout()->indexOf(control) < 0)
            continue;
        const QRect box = control->geometry();
        shares[control] = QRectF(1.0 * box.x() / window.width(), 1.0 * box.y() / window.height(),
                                 1.0 * box.width() / window.width(), 1.0 * box.height() / window.height());
    }
    return shares;
}

TEST_F(ResizingWindowsTest, EveryControlKeepsItsSharesAndTheReportsHeadlineIsNeverCut)
{
    ReceiptLedger ledger;
    test::FaultRecorder faults;
    ReportWindow report(window.get(), ledger, paths, faults);
    window->action("hel11")->trigger();
    auto* help = window->findChild<QDialog*>("helpp3");
    ASSERT_NE(help, nullptr);
    for (QDialog* shown : {static_cast<QDialog*>(&report), help}) {
        SCOPED_TRACE(shown->objectName().toStdString());
        shown->show();
        QApplication::processEvents();
        const auto before = sharesOf(*shown);
        ASSERT_GE(before.size(), 2u);
        for (const QSize size : {QSize(shown->width() * 3 / 2, shown->height() * 5 / 4), QSize(900, 700)}) {
            shown->resize(size);
            QApplication::processEvents();
            for (const auto& [control, share] : sharesOf(*shown)) {
                SCOPED_TRACE(control->objectName().toStdString());
                const QRectF was = before.at(control);
                EXPECT_NEAR(share.x(), was.x(), 0.01);
                EXPECT_NEAR(share.y(), was.y(), 0.01);
                EXPECT_NEAR(share.width(), was.width(), 0.01);
                EXPECT_NEAR(share.height(), was.height(), 0.01);
            }
        }
    }
    help->close();

    report.resize(120, 90);
    QApplication::processEvents();
    auto* headline = report.findChild<QLabel*>("Label1");
    ASSERT_NE(headline, nullptr);
    EXPECT_GE(headline->width(), headline->sizeHint().width());
    EXPECT_GE(headline->height(), headline->sizeHint().height());
    EXPECT_TRUE(faults.seen.empty());
}

TEST_F(ResizingWindowsTest, ALongMessageWrapsInsideTheScreenWithItsButtons)
{
    std::string text = "1 Buchung nach /home/anwender/EXTF_Buchungsstapel_20260101_20261231.csv geschrieben.";
    for (int i = 0; i < 5; ++i)
        text += " Ein Stapel darf nur Belege eines Wirtschaftsjahres enthalten.";
    test::inModal([&] { MessageDialog::showMessage(window.get(), text, MessageStyle::Information, "DATEV-Export"); },
                  [](QDialog& box) {
                      const QRect screen = box.screen()->availableGeometry();
                      EXPECT_LE(box.width(), screen.width());
                      for (auto* button : box.findChildren<QPushButton*>())
                          EXPECT_LE(button->mapTo(&box, button->rect().bottomRight()).x(), box.width());
                  });
}

} // namespace
} // namespace zw
