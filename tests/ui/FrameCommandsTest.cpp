#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QFontDialog>
#include <QFontInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSystemTrayIcon>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolBox>
#include <QToolButton>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <set>

#include "app/CommandCatalogue.h"
#include "tests/ui/FixedClock.h"
#include "tests/ui/MainWindowFixture.h"
#include "ui/ledger/LedgerCommands.h"
#include "ui/print/PrintCommands.h"
#include "tests/ui/ModalCloser.h"
#include "tests/ui/UrlRecorder.h"
#include "ui/receipt/ReceiptFormView.h"
#include "ui/frame/fehlerform.h"
#include "ui/frame/UserLocale.h"

namespace zw {
namespace {

using F = FormElement;

using test::UrlRecorder;
using test::ModalCloser;

class FrameCommandsTest : public test::MainWindowFixture
{
protected:
    void open()
    {
        start();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }
};

TEST_F(FrameCommandsTest, EveryBuiltMenuEntryReachesItsCommand)
{
    UrlRecorder urls;
    ModalCloser closer;
    open();
    auto option = [&](const char* key) { return settings.get("Zettelwerk", "Options", key, ""); };
    auto lastUrl = [&] { return urls.urls.empty() ? std::string() : urls.urls.back().toStdString(); };
    auto sawModal = [&](const char* name) {
        return [&closer, name] { return !closer.seen.empty() && closer.seen.back() == name; };
    };

    // What each built entry must have done; an enabled entry missing here fails the test.
    std::map<std::string, std::function<bool()>> reached = {
        {"neue", [&] { return form.text(F::Text5).empty(); }},
        {"exxxit", sawModal("MessageDialog")},
        {"schriftarial", [&] { return form.fontFamily(F::Text10) == "Courier New"; }},
        {"schrift", [&] { return form.fontFamily(F::Text10) == "Verdana"; }},
        {"pdf_Schablone", [&] { return lastUrl().ends_with("/ZW-Schablone.pdf"); }},
        {"einna", [&] { return form.income() == 1; }},
        {"ausga", [&] { return form.income() == 0; }},
        {"steueran",
         [&] { return settings.get("Zettelwerk", "Steuer", "Anzeigen", "") == "Ja" && form.isVisible(F::Text10); }},
        {"steueraus", [&] { return !form.isVisible(F::Text10); }},
        {"eur", [&] { return settings.get("Zettelwerk", "Waehrung", "waehr.Text", "") == "EUR"; }},
        {"ortfest", sawModal("MessageDialog")},
        {"spr_deutsch", [&] { return window->action("spr_deutsch")->isChecked(); }},
        {"spr_englisch", [&] { return window->action("spr_englisch")->isChecked(); }},
        {"optio", sawModal("optionen")},
        {"hel11", [&] { return lastUrl().ends_with("/hilfe/index.html"); }},
        {"www_start", [&] { return lastUrl() == "https://www.zettelwerk.example/"; }},
        {"www_download", [&] { return lastUrl() == "https://www.zettelwerk.example/download/"; }},
        {"www_neu", [&] { return lastUrl() == "https://www.zettelwerk.example/neuigkeiten/"; }},
        {"softbew", [&] { return lastUrl().ends_with("/formulare/bewertung.php"); }},
        {"fehlmit", [&] { return lastUrl().ends_with("/formulare/fehlermeldung.php"); }},
        {"info", sawModal("info1")},
        {"copy", sawModal("Copyright")},
    };
    const std::pair<const char*, const char*> colours[] = {
        {"hg_standard", "quittung_leer.jpg"}, {"hg_red", "quittung_rot.bmp"},
        {"hg_orange", "quittung_orange.bmp"}, {"hg_yellow", "quittung_gelb.bmp"},
        {"hg_green", "quittung_gruen.bmp"},   {"hg_blue", "quittung_blau.bmp"},
        {"hg_purple", "quittung_purpur.bmp"}, {"hg_hellgrau", "quittung_hellgrau.bmp"}};
    for (auto [entry, picture] : colours)
        reached[entry] = [&, picture] { return form.formBackground() == std::string("\\hintergrund\\") + picture; };
    for (auto [entry, stored] : {std::pair{"xpdesign", "XP"}, {"office2003er", "2003"}, {"office2007er", "2007"},
                                 {"vbstudio05", "VS2005"}})
        reached[entry] = [&, stored] { return option("Menue") == stored; };
    for (auto [entry, stored] : {std::pair{"stand_button", "Standard"}, {"flat_button", "Flat"},
                                 {"xp_button", "XP-Style"}, {"office_button", "Office"},
                                 {"office2003_button", "Office2003"}, {"vista_button", "Vista"}})
        reached[entry] = [&, stored] { return option("Buttons") == stored; };
    for (int number = 1; number <= 4; ++number)
        reached["hintergrund" + std::to_string(number)] = [&, number] {
            return option("Hintergrund") == "\\hintergrund\\hg" + std::to_string(number) + ".jpg";
        };

    int triggered = 0;
    for (const MenuEntry& entry : menuTree()) {
        QAction* action = window->action(std::string(entry.name));
        if (action == nullptr || !action->isEnabled())
            continue;
        SCOPED_TRACE(std::string(entry.name));
        auto check = reached.find(std::string(entry.name));
        ASSERT_NE(check, reached.end()) << "an enabled entry without a check";
        form.setText(F::Text5, "vorher");
        action->trigger();
        QApplication::processEvents();
        EXPECT_TRUE(check->second());
        ++triggered;
    }
    EXPECT_EQ(triggered, static_cast<int>(reached.size())) << "an entry of the table is not built or disabled";
    for (const char* later : {"oeffnen", "save", "updaten", "quikop", "aussetller", "report"}) {
        SCOPED_TRACE(later);
        ASSERT_NE(window->action(later), nullptr);
        EXPECT_FALSE(window->action(later)->isEnabled()) << "its subsystem is not wired here";
    }
    EXPECT_EQ(window->action("oeffnen")->shortcut(), QKeySequence(Qt::Key_F1)) << "F1 opens a file, not the help";
    EXPECT_EQ(window->action("exxxit")->shortcut(), QKeySequence(Qt::Key_F12));
}

TEST_F(FrameCommandsTest, LooksDifferForEachDesignAndStyleAndComeBackAfterARestart)
{
    ModalCloser closer;
    join(installPrinting); // its print key takes the button style
    open();
    std::set<QString> menuLooks;
    for (const char* entry : {"xpdesign", "office2003er", "office2007er", "vbstudio05"}) {
        window->action(entry)->trigger();
        menuLooks.insert(window->menuBar()->styleSheet());
        EXPECT_EQ(window->menu("desi")->styleSheet(), window->menuBar()->styleSheet()) << entry;
    }
    EXPECT_EQ(menuLooks.size(), 4u);
    auto* print = window->findChild<QPushButton*>("xpButton3");
    ASSERT_NE(print, nullptr);
    std::set<QString> buttonLooks;
    for (const char* entry : {"stand_button", "flat_button", "xp_button", "office_button", "office2003_button",
                              "vista_button"}) {
        window->action(entry)->trigger();
        buttonLooks.insert(print->styleSheet());
    }
    EXPECT_EQ(buttonLooks.size(), 6u);
    EXPECT_FALSE(window->action("stand_button")->isChecked());

    window->action("office2007er")->trigger();
    window->action("flat_button")->trigger();
    window->action("hintergrund4")->trigger();
    const QString menuLook = window->menuBar()->styleSheet();
    const QString buttonLook = print->styleSheet();
    window.reset();

    // A restart over the same store and folder.
    ReceiptForm restarted;
    auto again = std::make_unique<Quittung>(restarted, settings, paths);
    installFrameCommands({*again, restarted, settings, paths});
    installPrinting({*again, restarted, settings, paths});
    again->logic().load();
    again->show();
    EXPECT_EQ(again->menuBar()->styleSheet(), menuLook);
    EXPECT_TRUE(again->action("office2007er")->isChecked());
    EXPECT_EQ(again->findChild<QPushButton*>("xpButton3")->styleSheet(), buttonLook);
    EXPECT_TRUE(again->findChild<QWidget*>("centralArea")->autoFillBackground()) << "the window background stays";
}

// The calendar's and the font's keys have tests of their own.
TEST_F(FrameCommandsTest, ToolbarKeysFollowTheirEntriesAndDoTheirCommands)
{
    ModalCloser closer;
    open();
    auto* bar = window->findChild<QToolBar*>("Coolbar1");
    ASSERT_NE(bar, nullptr);
    auto key = [&](const char* name) { return window->findChild<QAction*>(name); };
    for (auto [name, entry] : {std::pair{"neu_bar", "neue"}, {"open_bar", "oeffnen"}, {"save_bar", "save"},
                               {"grafik_bar", "quikop"}, {"aussteller_bar", "aussetller"}, {"help_bar", "hel11"},
                               {"bmp_bm", "bmpdatei"}, {"pdf_bm", "alspdf"}}) {
        SCOPED_TRACE(name);
        ASSERT_NE(key(name), nullptr);
        EXPECT_EQ(key(name)->isEnabled(), window->action(entry)->isEnabled());
    }
    // A subsystem that registers its handler later enables the key with the entry, disabled until then.
    bool saved = false;
    window->setCommand("save", [&] { saved = true; });
    EXPECT_TRUE(key("save_bar")->isEnabled());
    key("save_bar")->trigger();
    EXPECT_TRUE(saved);

    key("einstellungen_bar")->trigger();
    EXPECT_EQ(closer.seen.back(), "optionen");
    for (auto [name, stamp] : {std::pair{"bm_original", StampChoice::Original}, {"bm_kopie", StampChoice::Copy},
                               {"bm_keinstempel", StampChoice::None}}) {
        key(name)->trigger();
        EXPECT_EQ(form.stampChoice(), stamp) << name;
    }
    EXPECT_EQ(key("bm_email"), nullptr) << "a part's key brings its twin";
}

TEST_F(FrameCommandsTest, TheFontDialogOpensOnTheFamilyTheReceiptIsDrawnIn)
{
    QString preset;
    ModalCloser closer([&](QDialog* dialog) {
        if (auto* fonts = qobject_cast<QFontDialog*>(dialog))
            preset = fonts->currentFont().family();
    });
    open();
    window->findChild<QAction*>("bm_schriftart")->trigger();
    EXPECT_EQ(preset, QFontInfo(QFont(QString::fromStdString(form.fontFamily(F::Label1)))).family());
}

TEST_F(FrameCommandsTest, ShortcutBarPopupShowsMoreAndFewerGroups)
{
    join(installLedger); // the fourth of the five groups
    open();
    auto* bar = window->findChild<QToolBox*>("ShortcutBar1");
    auto* popup = window->findChild<QMenu*>("mnuPopupTop");
    ASSERT_NE(bar, nullptr);
    ASSERT_NE(popup, nullptr);
    ASSERT_EQ(bar->count(), 5);
    auto* button = bar->findChild<QToolButton*>("ShortcutBar1_menu");
    ASSERT_NE(button, nullptr);
    EXPECT_TRUE(bar->rect().contains(button->geometry())) << "the menu button sits in the bar's corner";
    EXPECT_EQ(bar->childAt(button->geometry().center()), button) << "nothing covers it";
    button->click();
    EXPECT_TRUE(popup->isVisible());
    popup->close();
    auto entry = [&](const char* name) { return popup->findChild<QAction*>(name); };
    entry("mnuPopup_0")->trigger();
    EXPECT_EQ(bar->count(), 5) << "no more than the five groups";
    for (int i = 0; i < 6; ++i)
        entry("mnuPopup_1")->trigger();
    EXPECT_EQ(bar->count(), 1) << "one group stays";
    entry("mnuPopup_0")->trigger();
    entry("mnuPopup_0")->trigger();
    ASSERT_EQ(bar->count(), 3);
    EXPECT_EQ(bar->itemText(2), "Belegeinstellungen") << "groups come back in their order";
}

TEST_F(FrameCommandsTest, TrayAppearsOnMinimiseAndItsMenuReachesItsCommands)
{
    UrlRecorder urls;
    ModalCloser closer;
    open();
    window->showMinimized();
    QApplication::processEvents();
    auto* tray = window->findChild<QMenu*>("trayMenu");
    ASSERT_NE(tray, nullptr) << "the tray comes with the first minimise";
    auto entry = [&](const char* name) { return tray->findChild<QAction*>(name); };
    entry("einstellungen")->trigger();
    EXPECT_EQ(closer.seen, std::vector<QString>{"optionen"});
    entry("hilfe")->trigger();
    ASSERT_EQ(urls.urls.size(), 1u);
    EXPECT_FALSE(entry("upd")->isEnabled());
    EXPECT_TRUE(entry("copyr")->isEnabled());
    entry("open")->trigger();
    QApplication::processEvents();
    EXPECT_FALSE(window->isMinimized());
    EXPECT_TRUE(window->isVisible());
    window->showMinimized();
    QApplication::processEvents();
    auto* icon = window->findChild<QSystemTrayIcon*>("sevTray1");
    ASSERT_NE(icon, nullptr);
    emit icon->activated(QSystemTrayIcon::Context);
    EXPECT_TRUE(window->isMinimized()) << "a right click leaves the window where it is";
    emit icon->activated(QSystemTrayIcon::DoubleClick);
    QApplication::processEvents();
    EXPECT_FALSE(window->isMinimized());
    EXPECT_FALSE(icon->isVisible()) << "the double click takes the icon away";
    // The tray's exit asks nothing and ends the program.
    entry("exit")->trigger();
    EXPECT_EQ(closer.seen.size(), 1u);
    EXPECT_FALSE(window->isVisible());
}

// The window shows what the files hold, its rate field follows the choice, and Save hands the typed fields to the
// files before the notice shows.
TEST_F(FrameCommandsTest, SettingsWindowShowsTheFilesAndSavesWhatWasTyped)
{
    std::ofstream(paths.dataFile("mwst.dat"), std::ios::binary) << "7\r\n";
    open();
    ModalCloser closer([&](QDialog* modal) {
        if (modal->objectName() != "optionen")
            return;
        auto* rate = modal->findChild<QLineEdit*>("mwstwert1");
        EXPECT_EQ(rate->text(), "7");
        EXPECT_TRUE(modal->findChild<QRadioButton*>("Option2")->isChecked());
        modal->findChild<QRadioButton*>("Option1")->click();
        EXPECT_EQ(rate->text(), "19");
        EXPECT_FALSE(rate->isEnabled());
        modal->findChild<QRadioButton*>("Option2")->click();
        EXPECT_TRUE(rate->isEnabled());
        rate->setText("7,5");
        modal->findChild<QLineEdit*>("abstand")->setText("12");
        modal->findChild<QLineEdit*>("anzahl")->setText("2");
        modal->findChild<QLineEdit*>("oben")->setText("30");
        modal->findChild<QLineEdit*>("Text1")->setText("00000100");
        modal->findChild<QCheckBox*>("ruler_check1")->setChecked(false);
        // Clicked after this look returns, so that the notice it opens is seen too.
        QTimer::singleShot(0, modal->findChild<QPushButton*>("xpButton1"), &QPushButton::click);
        modal->setProperty("zwLeaveOpen", true); // Save closes it and opens the notice
    });
    window->action("optio")->trigger();
    EXPECT_EQ(test::readBytes(paths.dataFile("mwst.dat")), "7,5\r\n");
    EXPECT_EQ(test::readBytes(paths.dataFile("druck.dat")), "12\r\n2\r\n30\r\n");
    EXPECT_EQ(test::readBytes(paths.dataFile("nummer.dat")), "00000100\r\n");
    EXPECT_EQ(closer.seen, (std::vector<QString>{"optionen", "NoticeWindow"}));
    for (const char* ruler : {"Ruler1", "Ruler2"})
        EXPECT_TRUE(window->findChild<QWidget*>(ruler)->isHidden()) << ruler;
}

// A fault while the settings window loads reaches the error window, then the window opens all the same.
TEST_F(FrameCommandsTest, AFaultWhileTheSettingsWindowLoadsIsReportedAndTheWindowOpens)
{
    std::ofstream(paths.dataFile("druck.dat"), std::ios::binary) << "10\r\n1\r\n20\r\n5\r\n";
    open();
    QString reportedForm;
    ModalCloser closer([&](QDialog* modal) {
        if (modal->objectName() == "fehlerform")
            reportedForm = modal->findChild<QLabel*>("Label3")->text();
    });
    window->openWindow("optionen");
    EXPECT_EQ(closer.seen, (std::vector<QString>{"fehlerform", "optionen"}));
    EXPECT_EQ(reportedForm, "optionen");
    EXPECT_TRUE(window->isVisible());
}

TEST_F(FrameCommandsTest, ErrorWindowFillsTheReportBeepsThriceAndEndsTheProgramOnce)
{
    int beeps = 0;
    int closes = 0;
    const test::FixedClock clock(QDateTime(QDate(2026, 3, 15), QTime(9, 5, 7)));
    fehlerform window(nullptr, clock, [&] { ++closes; });
    window.beep = [&] { ++beeps; };
    window.pauseSeconds = 0.05;
    window.setFault("53", "Datei nicht gefunden", "report1");
    QTimer::singleShot(0, &window, [&] {
        QTRY_COMPARE_WITH_TIMEOUT(beeps, 3, 5000);
        EXPECT_NE(window.reportSource().find("\\b 53"), std::string::npos);
        EXPECT_NE(window.reportSource().find(userShortDate(QDate(2026, 3, 15)).toStdString()), std::string::npos);
        auto* frame = window.findChild<QWidget*>("Frame1");
        EXPECT_FALSE(frame->isVisible());
        auto* show = window.findChild<QPushButton*>("Command3");
        const QSize before = window.size();
        show->click();
        EXPECT_TRUE(frame->isVisible());
        EXPECT_EQ(window.width(), before.width());
        EXPECT_GT(window.height(), before.height());
        EXPECT_FALSE(show->isEnabled());
        EXPECT_FALSE(window.findChild<QPushButton*>("Command4")->isEnabled());
        auto* end = window.findChild<QPushButton*>("Command2");
        end->click();
        end->click();
    });
    window.exec();
    EXPECT_EQ(closes, 1);
    EXPECT_EQ(beeps, 3);
}

} // namespace
} // namespace zw

