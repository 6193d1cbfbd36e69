// The label editor, the tips, the news, the autostart switch and the help of a question as a user meets them.
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QTextEdit>
#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/ui/MainWindowFixture.h"
#include "tests/ui/ModalCloser.h"
#include "ui/lists/Autocompletion.h"
#include "ui/service/SmallWindowsPart.h"

namespace zw {
namespace {

namespace fs = std::filesystem;
using F = FormElement;

class SmallWindowTest : public test::StartedWindow<installSmallWindows, installHelpWindow>
{
protected:
    SmallWindowTest() { window->setFaultReporter(faults); }
    static void click(QDialog& dialog, const char* key) { dialog.findChild<QPushButton*>(key)->click(); }

    test::FaultRecorder faults;
    test::ModalCloser answerer{{}, /*messagesOnly=*/true};
};

TEST_F(SmallWindowTest, RenamedLabelsShowAtOnceAndResetThenZurueckChangesNothing)
{
    test::inModal([&] { window->findChild<QPushButton*>("Command6_2")->click(); }, [&](QDialog& editor) {
        auto* share = editor.findChild<QLineEdit*>("sevText5");
        EXPECT_EQ(share->text(), "% MwSt.") << "the editor opens with the window's labels";
        share->setText("% USt.");
        click(editor, "Command3");
        EXPECT_EQ(editor.findChild<QProgressBar*>("ProgressBar1")->value(), 90);
        EXPECT_FALSE(editor.isVisible()) << "the editor closes on its own";
    });
    EXPECT_EQ(form.text(F::Label14), "% USt.");

    // Reset followed by Zurück changes nothing.
    test::inModal([&] { window->openWindow("feldbezeichnung"); }, [&](QDialog& editor) {
        click(editor, "Command2");
        EXPECT_EQ(editor.findChild<QLineEdit*>("sevText15")->text(), "Steuernummer");
        click(editor, "Command1");
    });
    EXPECT_EQ(form.text(F::Label14), "% USt.");
}

TEST_F(SmallWindowTest, TheTipsOfTheDistributionShowOneByOneAndTheSwitchTurnsThemOff)
{
    settings.save("zettelwerk", "Options", "Show Tips at Startup", "1");
    test::inModal([&] { window->action("tipppp")->trigger(); }, [&](QDialog& tip) {
        const QString count = tip.findChild<QLabel*>("lblCount")->text();
        const int total = count.section(" of ", 1).toInt();
        EXPECT_GE(total, 20) << count.toStdString();
        for (int i = 0; i < total; ++i) {
            click(tip, "cmdNextTip");
            EXPECT_FALSE(tip.findChild<QTextEdit*>("txtTipContent")->toPlainText().isEmpty());
        }
        EXPECT_EQ(tip.findChild<QLabel*>("lblCount")->text(), count) << "next wraps round to the same tip";
        tip.findChild<QCheckBox*>("chkLoadTipsAtStartup")->setChecked(false);
    });
    EXPECT_EQ(settings.get("zettelwerk", "Options", "Show Tips at Startup", "?"), "0");
    window->action("tipppp")->trigger();
    EXPECT_EQ(answerer.boxes, std::vector<QString>{"Tipp des Tages: Sie haben den <Tipp des Tages> deaktiviert."});
}

TEST_F(SmallWindowTest, TheAutostartEntryComesAndGoes)
{
    const fs::path config = folder.path() / "desktop-config";
    ::setenv("XDG_CONFIG_HOME", config.c_str(), 1);
    test::inModal([&] { window->action("autosta")->trigger(); }, [&](QDialog& autostart) {
        const auto program = autostart.findChild<QLineEdit*>("txtFilename")->text().toStdString();
        const fs::path entry = config / "autostart" / (fs::path(program).stem().string() + ".desktop");
        click(autostart, "Command1");
        EXPECT_TRUE(fs::exists(entry)) << entry;
        EXPECT_FALSE(autostart.findChild<QPushButton*>("Command1")->isEnabled());
        click(autostart, "Command3");
        EXPECT_FALSE(fs::exists(entry));
    });
    ::unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(answerer.boxes,
              (std::vector<QString>{"Autostart: Der Eintrag war erfolgreich.", "Autostart: Der Eintrag wurde entfernt!"}));
}

TEST_F(SmallWindowTest, TheNewsComeFromTheDistributionAndTheirMissingFileIsAFault)
{
    test::inModal([&] { window->action("whatistnew")->trigger(); }, [&](QDialog& news) {
        EXPECT_EQ(news.findChild<QLabel*>("Label2")->text(), "6 . 0 . 0");
        EXPECT_TRUE(news.findChild<QTextEdit*>("sevText1")->toPlainText().contains("6.0.0"));
    });
    fs::remove(paths.home() / "neu_in_dieser_version.txt");
    test::inModal([&] { window->action("whatistnew")->trigger(); }, [](QDialog&) {});
    EXPECT_EQ(faults.seen, std::vector<std::string>{"53 whatsnew"});
}

TEST_F(SmallWindowTest, TheCopyrightWindowShowsItsVersionAndSystem)
{
    test::inModal([&] { window->action("copy")->trigger(); }, [](QDialog& rights) {
        QStringList lines;
        for (auto* line : rights.findChildren<QLabel*>())
            lines << line->text();
        EXPECT_TRUE(lines.contains("Version 6.0.0")) << lines.join('|').toStdString();
        EXPECT_EQ(lines.filter(QRegularExpression("^.+ \\( Version .+\\)$")).size(), 1) << lines.join('|').toStdString();
    });
}

// A question's "Hilfe" shows the handbook in the program's own window, which takes input above the question.
TEST_F(SmallWindowTest, AQuestionsHelpShowsTheHandbookAboveIt)
{
    QString above;
    answerer.inspect = [&above](QDialog* question) {
        for (auto* key : question->findChildren<QPushButton*>()) {
            if (key->text() == "Hilfe")
                key->click();
        }
        if (QWidget* top = QApplication::activeModalWidget(); top && top != question) {
            above = top->objectName();
            top->close();
        }
    };
    window->confirmQuestion("Frage", MessageStyle::QuestionYesNo, "Titel");
    EXPECT_EQ(above, "helpp3");
}

} // namespace
} // namespace zw
