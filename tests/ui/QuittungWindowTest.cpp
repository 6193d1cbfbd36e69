#include <QAction>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <fstream>
#include <gtest/gtest.h>

#include "tests/ui/MainWindowFixture.h"
#include "tests/ui/ModalCloser.h"
#include "ui/frame/FrmSplash1.h"
#include "ui/ledger/LedgerCommands.h"
#include "ui/print/PrintCommands.h"
#include "ui/receipt/ReceiptFormView.h"

namespace zw {
namespace {

// Types text character by character, umlauts included, as a keyboard would.
void typeText(QWidget* widget, const QString& text)
{
    for (QChar character : text)
        QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_unknown, QString(character), Qt::NoModifier);
}

class QuittungWindowTest : public test::MainWindowFixture
{
protected:
    QString fieldText(FormElement element)
    {
        auto* edit = qobject_cast<QLineEdit*>(window->formView()->widgetOf(element));
        return edit ? edit->text() : QString();
    }
};

TEST_F(QuittungWindowTest, SplashRunsAllStepsToTheFullBar)
{
    FrmSplash1 splash(paths);
    splash.show();
    splash.laden(0.0);
    EXPECT_EQ(splash.progress(), 100);
    EXPECT_EQ(splash.stepText(), "Programmfenster öffnen...");
    EXPECT_TRUE(std::filesystem::is_directory(paths.backgroundFolder()));
}

TEST_F(QuittungWindowTest, FirstStartShowsTheFormWithItsDefaultsAfterTheTaxNumberNote)
{
    settings.remove("Zettelwerk", "Steuer", "Steuer_Check");
    test::ModalCloser closer;
    start();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    EXPECT_EQ(closer.seen, std::vector<QString>{"MessageDialog"});
    EXPECT_EQ(fieldText(FormElement::Text1), "00000001");
    EXPECT_EQ(fieldText(FormElement::Text2), "EUR");
    EXPECT_EQ(fieldText(FormElement::Text3), "19");
    EXPECT_TRUE(window->action("steueran")->isChecked());
    EXPECT_TRUE(window->action("xpdesign")->isChecked());
    EXPECT_EQ(settings.get("Zettelwerk", "Buchhaltung", "Einnahme", ""), "0");
    // The note was closed, and the tax number caption is hidden.
    EXPECT_FALSE(window->formView()->widgetOf(FormElement::Label29)->isVisible());
}

TEST_F(QuittungWindowTest, TypedTextReachesTheModelAndTaxOffHidesTheAmounts)
{
    settings.save("Zettelwerk", "Steuer", "Steuer_Check", "1");
    start();
    auto* payer = window->formView()->widgetOf(FormElement::Text5);
    typeText(payer, "Müller & Söhne");
    EXPECT_EQ(form.text(FormElement::Text5), "Müller & Söhne");

    window->action("steueraus")->trigger();
    EXPECT_FALSE(window->formView()->widgetOf(FormElement::Text10)->isVisible());
    EXPECT_TRUE(window->action("steueraus")->isChecked());
    EXPECT_FALSE(window->action("steueran")->isChecked());
    EXPECT_EQ(settings.get("Zettelwerk", "Steuer", "Anzeigen", ""), "Nein");
}

TEST_F(QuittungWindowTest, ExitAskedAndRefusedKeepsTheWindow)
{
    settings.save("Zettelwerk", "Steuer", "Steuer_Check", "1");
    start();
    test::ModalCloser closer;
    window->action("exxxit")->trigger();
    EXPECT_EQ(closer.seen, std::vector<QString>{"MessageDialog"});
    EXPECT_TRUE(window->isVisible());
}

TEST_F(QuittungWindowTest, PrintingFromTheWholeWindowFilesOneRowAndKeepsTheNumber)
{
    settings.save("Zettelwerk", "Steuer", "Steuer_Check", "1");
    settings.save("Zettelwerk", "Options", "Auto_Save", "1");
    std::ofstream(paths.dataFile("mwst.dat"), std::ios::binary) << "19\r\n";
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
    EXPECT_TRUE(std::filesystem::exists(paths.tempFolder() / "temp_.bmp"));
}

TEST_F(QuittungWindowTest, TypingKeepsToTheFieldRules)
{
    struct Case
    {
        FormElement element;
        const char* typed;
        const char* shown;
    };
    const Case cases[] = {{FormElement::Text2, "EURO", "EUR"},          // three letters of a currency
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
    }
}

} // namespace
} // namespace zw
