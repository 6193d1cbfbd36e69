// The main window composed as the program composes it, every part installed, used by typing.
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>
#include <gtest/gtest.h>

#include "tests/ui/MainWindowFixture.h"
#include "ui/ledger/LedgerCommands.h"
#include "ui/print/PrintCommands.h"
#include "ui/receipt/ReceiptFormView.h"

namespace zw {
namespace {

using F = FormElement;

class ComposedWindowTest : public test::StartedWindow<installLedger, installPrinting, installExports>
{
protected:
    QString shown(FormElement element) const
    {
        QWidget* widget = window->formView()->widgetOf(element);
        if (auto* line = qobject_cast<QLineEdit*>(widget))
            return line->text();
        if (auto* plain = qobject_cast<QPlainTextEdit*>(widget))
            return plain->toPlainText();
        return "<no field>";
    }
};

TEST_F(ComposedWindowTest, ReturnInTheGrossFieldShowsEveryFieldItCalculated)
{
    auto* gross = qobject_cast<QLineEdit*>(window->formView()->widgetOf(F::Text12));
    ASSERT_NE(gross, nullptr);
    gross->setFocus();
    QTest::keyClicks(gross, "119");
    QTest::keyClick(gross, Qt::Key_Return);
    EXPECT_EQ(shown(F::Text10), "100,00");
    EXPECT_EQ(shown(F::Text11), "19,00");
    EXPECT_EQ(shown(F::Text12), "119,00");
    EXPECT_EQ(shown(F::Text4).toStdString(), form.text(F::Text4));
    EXPECT_FALSE(form.text(F::Text4).empty());
}

TEST_F(ComposedWindowTest, FieldHooksSeeTheKeysAndTheChangesTypedIntoTheirField)
{
    QString keys;
    std::string changed;
    window->onFieldKey(F::Text6, [&](const QKeyEvent& key) {
        keys += key.text();
        return key.key() == Qt::Key_X; // a hook may take a key from the field
    });
    window->onFieldChanged(F::Text6, [&](const std::string& text) { changed = text; });
    QWidget* field = window->formView()->widgetOf(F::Text6);
    ASSERT_NE(field, nullptr);
    if (auto* plain = qobject_cast<QPlainTextEdit*>(field))
        field = plain->viewport();
    field->setFocus();
    QTest::keyClicks(field, "Mxu");
    EXPECT_EQ(keys, "Mxu");
    EXPECT_EQ(form.text(F::Text6), "Mu");
    EXPECT_EQ(changed, "Mu");
}

} // namespace
} // namespace zw
