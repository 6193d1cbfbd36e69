// The backup window and the update window as a user drives them, the update against a local HTTP server.
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QLocale>
#include <QScopeGuard>
#include <gtest/gtest.h>

#include <fstream>
#include <memory>

#include "app/TextFile.h"
#include "tests/net/Peer.h"
#include "tests/app/PeerProgram.h"
#include "tests/ui/MainWindowFixture.h"
#include "tests/ui/ModalCloser.h"
#include "ui/service/ServicePart.h"
#include "ui/service/datensicherung.h"

namespace zw {
namespace {

namespace fs = std::filesystem;

class ServiceWindowTest : public test::StartedWindow<installService>
{
protected:
    // Opens the window by its command and runs `act` on it while it is shown.
    void inWindow(const char* command, const std::function<void(QDialog&)>& act)
    {
        test::inModal([&] { window->action(command)->trigger(); }, act);
    }

    // A local server whose update description names `installer` as the download; `served` is its folder.
    std::unique_ptr<test::Peer> serveUpdate(const fs::path& served, const char* installer)
    {
        fs::create_directories(served / "update" / "quittung");
        auto server = std::make_unique<test::Peer>(std::vector<std::string>{"http", served.string()});
        std::ofstream(served / "update" / "quittung" / "webup.inf", std::ios::binary)
            << "xxxx\r\nZettelwerk 6.1\r\n6.1.0\r\n24 KB\r\n" << server->url("http", installer) << "\r\n";
        std::ofstream(paths.home() / "vendor.ini") << "updateServer=" << server->url("http", "/") << "\n";
        fs::create_directories(paths.tempFolder());
        return server;
    }

    static void click(QDialog& dialog, const char* key) { dialog.findChild<QPushButton*>(key)->click(); }
    static QString text(QDialog& dialog, const char* name)
    {
        auto* label = dialog.findChild<QLabel*>(name);
        return label ? label->text() : dialog.findChild<QLineEdit*>(name)->text();
    }

    test::ModalCloser answerer{{}, /*messagesOnly=*/true};
    std::vector<QString>& boxes = answerer.boxes;
};

TEST_F(ServiceWindowTest, ABackupBringsAChangedLedgerBack)
{
    const fs::path store = folder.path() / "sicherung";
    fs::create_directory(store);
    const std::string ledger = "1;23.11.2026;Müller;12,50\r\n";
    std::ofstream(paths.dataFile("belege.dat"), std::ios::binary) << ledger;
    inWindow("sicherung", [&](QDialog& dialog) {
        static_cast<datensicherung&>(dialog).chooseFolder(QString::fromStdString(store.string()));
        click(dialog, "Button3");
        EXPECT_FALSE(dialog.findChild<QPushButton*>("Button3")->isEnabled());
        click(dialog, "cmdPackIt");
        EXPECT_TRUE(text(dialog, "Label8").endsWith(" Datei(en) gesichert.")) << text(dialog, "Label8").toStdString();
        EXPECT_FALSE(text(dialog, "Label8").startsWith("0 "));
        EXPECT_TRUE(test::waitFor([&] { return dialog.findChild<QListView*>("File1")->model()->rowCount(
                                                dialog.findChild<QListView*>("File1")->rootIndex()) == 1; }))
            << "the new archive is listed at once";
        std::ofstream(paths.dataFile("belege.dat"), std::ios::binary) << "geändert";
        click(dialog, "cmdExtractIt");
        click(dialog, "Button2");
        EXPECT_TRUE(text(dialog, "Label9").endsWith(" Datei(en) rückgesichert."));
        EXPECT_EQ(text(dialog, "txtStatus2"), "100");
    });
    EXPECT_EQ(readFileBytes(paths.dataFile("belege.dat")), ledger);
    EXPECT_TRUE(boxes.empty()) << "unpacking asks nothing";
}

TEST_F(ServiceWindowTest, TheUpdateWindowFindsANewerVersionAndFetchesItsInstaller)
{
    const fs::path served = folder.path() / "server";
    const auto server = serveUpdate(served, "/zettelwerk.exe");
    // The installer's bytes and its new name are the command line's check; the box comes after the renaming.
    std::ofstream(served / "zettelwerk.exe", std::ios::binary) << std::string(8192 * 3 + 5, 'Z');
    // The program's widgets speak German; the speed keeps the separators of the user's own locale.
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const auto restore = qScopeGuard([] { QLocale::setDefault(QLocale::system()); });
    inWindow("webup", [&](QDialog& dialog) {
        click(dialog, "Command1");
        ASSERT_TRUE(test::waitFor([&] { return dialog.findChild<QPushButton*>("Command4")->isEnabled(); }));
        EXPECT_EQ(text(dialog, "lblStatus6"), "Es ist eine neue Version vorhanden!");
        EXPECT_EQ(text(dialog, "Text3"), "6.1.0");
        EXPECT_FALSE(dialog.findChild<QPushButton*>("Command1")->isEnabled());
        click(dialog, "Command4");
        ASSERT_TRUE(test::waitFor([&] { return !boxes.empty(); }));
        EXPECT_EQ(text(dialog, "lblStatus6"), "Status: Update ist runtergeladen!");
        EXPECT_EQ(text(dialog, "lblStatus1"), "24581 Bytes");
        const QString speed = text(dialog, "lblStatus5"); // "#,##0.00 KB/s"
        ASSERT_GE(speed.size(), 8);
        EXPECT_EQ(speed.mid(speed.size() - 8, 1), QLocale::system().decimalPoint()) << speed.toStdString();
    });
    EXPECT_EQ(boxes, std::vector<QString>{"Update: Das Update wurde runtergeladen."});
    EXPECT_EQ(answerer.keys, std::vector<QString>{"Update: OK / JA"}) << "the message shape asks";
}

TEST_F(ServiceWindowTest, AMissingInstallerLeavesItsErrorStandingWithNoBytesCountedAndNothingToStart)
{
    const auto server = serveUpdate(folder.path() / "server", "/fehlt/zettelwerk.exe");
    inWindow("webup", [&](QDialog& dialog) {
        click(dialog, "Command1");
        ASSERT_TRUE(test::waitFor([&] { return dialog.findChild<QPushButton*>("Command4")->isEnabled(); }));
        click(dialog, "Command4");
        const QString missing = "Status: Fehler 404, Datei nicht gefunden";
        ASSERT_TRUE(test::waitFor([&] { return text(dialog, "lblStatus6") == missing; }))
            << text(dialog, "lblStatus6").toStdString();
        EXPECT_FALSE(text(dialog, "lblStatus1").endsWith(" Bytes")) << "the error page was counted";
    });
    EXPECT_TRUE(boxes.empty()) << "no fault and no question after a failed download";
    EXPECT_TRUE(fs::is_empty(paths.tempFolder()));
}

// The version question is the platform's box with "Ja" and "Nein"; "Nein" opens nothing.
TEST_F(ServiceWindowTest, TheVersionQuestionAsksWithJaAndNein)
{
    window->action("updaten")->trigger();
    EXPECT_EQ(answerer.keys, std::vector<QString>{"Online-Update: Ja / Nein"});
}

// The exported file is a script that puts the settings of the moment of export back when it is started.
TEST_F(ServiceWindowTest, TheSettingsExportLeavesAScriptThatRestoresTheSettings)
{
    const fs::path chosen = folder.path() / "einstellungen.sh";
    window->fileDialog("regspeichern").setPresenter([&](const CommonDialog& dialog, bool forSaving) {
        EXPECT_TRUE(forSaving);
        EXPECT_EQ(dialog.Filter, "Registrierungseintrag zum Starten (*.sh)|*.sh");
        return std::optional<std::string>(chosen.string());
    });
    settings.save("zettelwerk", "Options", "Kennwort", "a'b\"c ä\r\nZETTELWERK_EINSTELLUNGEN");
    const std::string exported = readFileBytes(settings.fileOf("zettelwerk"));
    window->action("regspeichern")->trigger();
    EXPECT_EQ(boxes, std::vector<QString>{"Sicherung angelegt: Die Sicherung des Registrierungseintrags wurde unter:"});
    ASSERT_TRUE(test::waitFor([&] { return fs::exists(chosen); })) << readFileBytes(paths.home() / "save_reg.sh");
    // Both scripts carry the mail password.
    for (const fs::path& script : {chosen, paths.home() / "save_reg.sh"})
        EXPECT_EQ(fs::status(script).permissions() & fs::perms::all, fs::perms::owner_all) << script;

    settings.save("zettelwerk", "Options", "Kennwort", "danach");
    fs::remove(settings.fileOf("zettelwerk"));
    EXPECT_EQ(test::runPeer("/bin/sh " + chosen.string()),
              "Die Einstellungen von Zettelwerk wurden wieder eingespielt: " + settings.fileOf("zettelwerk").string() +
                  "\n");
    EXPECT_EQ(readFileBytes(settings.fileOf("zettelwerk")), exported);
}

} // namespace
} // namespace zw
