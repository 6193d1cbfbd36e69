// Typing into the receipt's name fields with the distribution's autocompletion list, as a user would.
#include <QLabel>
#include <QPushButton>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include "tests/ui/MainWindowFixture.h"
#include "tests/ui/ModalCloser.h"
#include "ui/lists/Autocompletion.h"

namespace zw {
namespace {

using F = FormElement;

using AutocompletionWindowTest = test::StartedWindow<installAutocompletion>;

TEST_F(AutocompletionWindowTest, TypingCompletesEnterAddsWhileTheWindowKeepsTakingKeys)
{
    auto* from = qobject_cast<QLineEdit*>(window->formView()->widgetOf(F::Text5));
    ASSERT_NE(from, nullptr);
    from->setFocus();
    QTest::keyClicks(from, "m");
    QTest::sendKeyEvent(QTest::Click, from, Qt::Key_Udiaeresis, QString("ü"), Qt::NoModifier);
    EXPECT_EQ(from->text(), "Müller GmbH");
    EXPECT_EQ(from->selectedText(), "ller GmbH");

    // Keys typed during the notice's wait reach the field: the first replaces the selected tail.
    bool noticeShownWhileTyping = false;
    QTimer::singleShot(300, from, [&] {
        noticeShownWhileTyping = window->formView()->findChild<QLabel*>("autoge")->isVisible();
        QTest::keyClicks(from, "x");
    });
    QTest::keyClick(from, Qt::Key_Return);
    EXPECT_TRUE(noticeShownWhileTyping);
    EXPECT_FALSE(window->formView()->findChild<QLabel*>("autoge")->isVisible());
    EXPECT_EQ(from->text(), "Müx");

    // Opening the editor writes the list first, the entry added by Enter at its end.
    test::ModalCloser closer([](QDialog* dialog) {
        EXPECT_EQ(dialog->findChild<QLabel*>("Label1")->text().toStdString(), "Einträge: 10");
    });
    window->action("autver")->trigger();
    ASSERT_EQ(closer.seen, std::vector<QString>{"autocom_bear"});
    EXPECT_TRUE(test::readBytes(paths.dataFile("autocom.dat")).ends_with("Hamburg\r\nM\xFCller GmbH\r\n"));
}

// "Eintrag löschen" with nothing marked: the platform's box with OK alone.
TEST_F(AutocompletionWindowTest, DeletingWithNothingMarkedShowsABoxWithOkAlone)
{
    test::ModalCloser closer([](QDialog* dialog) {
        if (dialog->objectName() != "autocom_bear")
            return;
        dialog->setProperty("zwLeaveOpen", true);
        QTimer::singleShot(0, dialog, [dialog] {
            dialog->findChild<QPushButton*>("xpButton1")->click();
            dialog->reject();
        });
    });
    window->action("autver")->trigger();
    EXPECT_EQ(closer.keys, std::vector<QString>{"Autovervollständigung: OK"});
}

} // namespace
} // namespace zw
