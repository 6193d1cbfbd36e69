#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include "tests/ui/MainWindowFixture.h"
#include "tests/ui/ModalCloser.h"
#include "ui/frame/FrmSplash1.h"
#include "ui/ledger/LedgerCommands.h"
#include "ui/print/PrintCommands.h"
#include "ui/receipt/ReceiptFormView.h"

namespace zw {
namespace {

using F = FormElement;

// Types text character by character, umlauts included, as a keyboard would.
void typeText(QWidget* widget, const QString& text)
{
    for (QChar character : text)
        QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_unknown, QString(character), Qt::NoModifier);
}

using QuittungWindowTest = test::MainWindowFixture;

TEST_F(QuittungWindowTest, SplashRunsAllStepsToTheFullBar)
{
    FrmSplash1 splash(paths);
    splash.show();
    splash.laden(0.0);
    EXPECT_EQ(splash.progress(), 100);
    EXPECT_EQ(splash.stepText(), "Programmfenster öffnen...");
    EXPECT_TRUE(std::filesystem::is_directory(paths.backgroundFolder()));
}

TEST_F(QuittungWindowTest, PrintingFromTheWholeWindowFilesOneRowAndKeepsTheNumber)
{
    settings.save("Zettelwerk", "Steuer", "Steuer_Check", "1");
    settings.save("Zettelwerk", "Options", "Auto_Save", "1");
    // Composed as the program composes it.
    auto* ledger = &join(installLedgerPart);
    join(installPrinting);
    start();
    form.setText(FormElement::Text12, "119,00");
    form.setText(FormElement::Text5, "Anna Weiß");

    test::ModalCloser closer;
    window->findChild<QPushButton*>("xpButton3")->click();

    ASSERT_EQ(ledger->ledger().rowCount(), 1u);
    EXPECT_EQ(form.text(FormElement::Text1), "00000001");
    EXPECT_TRUE(std::filesystem::exists(paths.dataFile("belege.dat")));
}

TEST_F(QuittungWindowTest, TypedTextKeepsToTheFieldRulesAndReachesTheModel)
{
    struct Case
    {
        FormElement element;
        const char* typed;
        const char* shown;
    };
    const Case cases[] = {{FormElement::Text5, "Müller & Söhne", "Müller & Söhne"},
                          {FormElement::Text2, "EURO", "EUR"},          // three letters of a currency
                          {FormElement::Text9, "12032011", "12.03.2011"}, // the date mask places the points
                          {FormElement::Text11, "19", ""}};              // the tax is computed, never typed
    for (const auto& c : cases) {
        SCOPED_TRACE(c.typed);
        auto* edit = qobject_cast<QLineEdit*>(window->formView()->widgetOf(c.element));
        ASSERT_NE(edit, nullptr);
        edit->clear();
        edit->home(false);
        typeText(edit, c.typed);
        EXPECT_EQ(edit->text(), c.shown);
        if (!edit->isReadOnly()) {
            EXPECT_EQ(form.text(c.element), c.shown) << "what is typed reaches the model";
        }
    }
}

// The main window composed as the program composes it, every part installed, used by typing.
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
