// The error window's report reaching a real SMTP server through the mail part, as a user sends it.
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTextEdit>
#include <QTimer>
#include <gtest/gtest.h>

#include <fstream>

#include "app/TextFile.h"
#include "core/RunError.h"
#include "tests/app/PeerProgram.h"
#include "tests/app/TempFolder.h"
#include "tests/net/Peer.h"
#include "tests/ui/MainWindowFixture.h"
#include "tests/ui/ModalCloser.h"
#include "ui/mail/MailPart.h"
#include "ui/mail/anregungen_neu.h"
#include "ui/mail/beleg_mail.h"
#include "ui/mail/frmLog.h"
#include "ui/mail/newsletter.h"

namespace zw {
namespace {

using test::inModal;

// The vendor's mail host is a local aiosmtpd; every message box is noted as "title: text" and answered "No".
class MailWindowTest : public test::MainWindowFixture
{
protected:
    MailWindowTest() : server({"smtp-open", received.string()})
    {
        useVendor(server.port(), "support@zettelwerk.example");
        join(installMail);
        start();
    }

    // The mail host and support address every send reads anew.
    void useVendor(int port, const char* support)
    {
        std::ofstream(paths.home() / "vendor.ini") << "mailHost=127.0.0.1:" << port << "\nsupportAddress=" << support
                                                   << "\nnewsletterAddress=news@zettelwerk.example\n";
    }

    // Subject, From, To, Cc, the leaf content types and whether the text parts hold `needle`.
    std::string summary(const std::string& needle)
    {
        return test::runPeer("/usr/bin/python3 -c 'import email,email.policy,sys\n"
                             "m=email.message_from_bytes(open(sys.argv[1],\"rb\").read(),policy=email.policy.default)\n"
                             "print(m[\"Subject\"]);print(m[\"From\"]);print(m[\"To\"]);print(m[\"Cc\"])\n"
                             "leaves=[p for p in m.walk() if not p.is_multipart()]\n"
                             "print([p.get_content_type() for p in leaves])\n"
                             "print(all(sys.argv[2] in p.get_content() for p in leaves))' " +
                             received.string() + " '" + needle + "'");
    }

    std::filesystem::path received = folder.path() / "mail.eml";
    test::Peer server;
    test::ModalCloser answerer{{}, /*messagesOnly=*/true};
    std::vector<QString>& boxes = answerer.boxes;
};

TEST_F(MailWindowTest, TheErrorReportGoesOutAsHtmlAloneWithTheUsersAddressAsSenderAndCopy)
{
    // A description with rich-text control characters goes into the report raw; the send still works.
    // The report key is back and the hourglass gone by the time the closing words ask.
    QDialog* shownReport = nullptr;
    bool keyBackAtBox = false;
    answerer.inspect = [&](QDialog*) {
        keyBackAtBox = shownReport->findChild<QPushButton*>("Command3")->isEnabled() &&
                       QApplication::overrideCursor() == nullptr;
    };
    inModal([&] { window->faultReporter().report(RunError(13, "Typen unverträglich {\\b"), "optionen"); },
            [&](QDialog& report) {
                shownReport = &report;
                report.findChild<QPushButton*>("Command3")->click();
                report.findChild<QLineEdit*>("sevText1")->setText("kunde@example.org");
                report.findChild<QPushButton*>("Command4")->click();
            });
    EXPECT_EQ(boxes, std::vector<QString>{"Support: Übermittlung erfolgreich abgeschlossen."});
    EXPECT_EQ(answerer.keys, std::vector<QString>{"Support: Ja / Nein"});
    EXPECT_TRUE(keyBackAtBox);
    EXPECT_EQ(summary("Typen unverträglich"), "Fehlermeldung aus Zettelwerk 6.0.0\nkunde@example.org\n"
                                              "support@zettelwerk.example\nkunde@example.org\n['text/html']\nTrue\n");
}

TEST_F(MailWindowTest, TheSupportMessageAndTheNewsletterSignUpReachTheVendor)
{
    struct HalfRandom : Random
    {
        double next() override { return 0.5; }
    } half;
    window->setRandom(half); // the code is 0.5 * 123456 + 1
    inModal([&] { window->openWindow("anregungen_neu"); },
            [](QDialog& wizard) {
                wizard.findChild<QLineEdit*>("xpText1")->setText("kunde@example.org");
                wizard.findChild<QComboBox*>("txtSubject")->setCurrentIndex(3);
                for (int page = 0; page < 4; ++page)
                    wizard.findChild<QPushButton*>("cmdNext")->click(); // the fourth click sends
            });
    EXPECT_EQ(boxes, std::vector<QString>{"Support: Übermittlung erfolgreich abgeschlossen."});
    EXPECT_EQ(summary("HelpCode: 061729"), "Zettelwerk V6.0.0 - Fragen zum Programm\nkunde@example.org\n"
                                     "support@zettelwerk.example\nNone\n['text/plain', 'text/html']\nTrue\n");

    inModal([&] { window->action("newsletter_bestellen")->trigger(); },
            [](QDialog& signUp) {
                signUp.findChild<QLineEdit*>("txtFrom")->setText("leser@example.org");
                signUp.findChild<QPushButton*>("cmdSend")->click();
            });
    EXPECT_EQ(boxes.back(), "Newsletter: Anmeldung erfolgreich abgeschlossen.");
    EXPECT_EQ(summary("eintragen"), "SUBSCRIBE : leser@example.org\nleser@example.org\nnews@zettelwerk.example\n"
                                    "None\n['text/plain']\nTrue\n");
}

// Nobody listens on the mail host's port, or the server refuses the support address: the error box, and after a
// failed send the closing words all the same.
TEST_F(MailWindowTest, ARefusedConnectionOrRecipientShowsItsBox)
{
    const int closedPort = [] {
        test::Peer gone({"silent"});
        return gone.port(); // closed again when `gone` ends
    }();
    struct Row
    {
        const char* name;
        int port;
        const char* support;
        std::vector<QString> boxes;
        bool connectFails; // a refused connection leaves the report button disabled
    };
    const Row rows[] = {
        {"refused connection", closedPort, "support@zettelwerk.example",
         {"Zettelwerk: Fehler beim Verbinden mit dem Mailserver"}, true},
        {"refused recipient", server.port(), "niemand@zettelwerk.example",
         {"Zettelwerk: Fehler beim Versenden der Nachricht", "Support: Übermittlung erfolgreich abgeschlossen."}, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        useVendor(row.port, row.support);
        boxes.clear();
        inModal([&] { window->faultReporter().report(RunError::typeMismatch(), "optionen"); },
                [&](QDialog& report) {
                    report.findChild<QPushButton*>("Command3")->click();
                    report.findChild<QPushButton*>("Command4")->click();
                    if (row.connectFails) {
                        EXPECT_FALSE(report.findChild<QPushButton*>("Command3")->isEnabled());
                    }
                    QApplication::restoreOverrideCursor();
                });
        EXPECT_EQ(boxes, row.boxes);
    }
}

// The mail window asks with the platform's "Ja" and "Nein" and reports a failure with "OK" alone; "Nein" keeps
// the contact.
TEST_F(MailWindowTest, TheMailWindowsBoxesHaveTheButtonsTheyAskWith)
{
    test::writeBytes(paths.dataFile("adressbuch.dat"), "kunde@example.org;Hans;Meier;Herr\r\n");
    test::writeBytes(folder.path() / "1.bmp", "BM");
    settings.save("Zettelwerk", "EMail", "SMTP", "127.0.0.1:1"); // nobody listens there
    frmLog log(window.get());
    beleg_mail mail(settings, paths, *window, log, window->clock(), folder.path() / "1.bmp", window.get());
    ASSERT_TRUE(mail.loaded());
    mail.findChild<QPushButton*>("cmdSend")->click();
    auto* cancel = mail.findChild<QPushButton*>("cmdCancel");
    cancel->setEnabled(true); // as while a send runs
    cancel->click();
    for (auto* key : mail.findChildren<QPushButton*>("Command5")) {
        if (key->property("Index").toInt() == 2)
            key->click();
    }
    EXPECT_EQ(answerer.keys, (std::vector<QString>{"Zettelwerk: OK", "Abbrechen: Ja / Nein",
                                                   "Eintrag löschen: Ja / Nein"}));
    EXPECT_EQ(mail.findChild<QTableWidget*>("Grid1")->rowCount(), 1);
}

// A rich-text key toggles a selection that is all one way and leaves a mixed one as it is.
TEST_F(MailWindowTest, TheRichTextKeysToggleAUniformSelectionAndLeaveAMixedOne)
{
    test::writeBytes(folder.path() / "1.bmp", "BM");
    settings.save("Zettelwerk", "EMail", "SMTP", "127.0.0.1:1");
    frmLog log(window.get());
    beleg_mail mail(settings, paths, *window, log, window->clock(), folder.path() / "1.bmp", window.get());
    auto* message = mail.findChild<QTextEdit*>("RichTextBox1");
    const auto boldOf = [message](int position) {
        QTextCursor at(message->document());
        at.setPosition(position + 1);
        return at.charFormat().fontWeight() > QFont::Normal;
    };
    struct Row
    {
        const char* html;
        bool firstAfter, lastAfter;
    };
    for (const Row& row : {Row{"<b>fett</b>normal", true, false}, Row{"normal", true, true}, Row{"<b>fett</b>", false, false}}) {
        SCOPED_TRACE(row.html);
        message->setHtml(row.html);
        message->selectAll();
        mail.findChild<QAction*>("fett")->trigger();
        EXPECT_EQ(boldOf(0), row.firstAfter);
        EXPECT_EQ(boldOf(static_cast<int>(message->toPlainText().size()) - 1), row.lastAfter);
    }
}

// A second click on a send key while the first send waits: one mail, no second send.
TEST_F(MailWindowTest, ASecondClickOnSendWhileTheFirstWaitsSendsNothing)
{
    const std::filesystem::path log = folder.path() / "smtp.log";
    test::Peer logged({"smtp-log", log.string()});
    useVendor(logged.port(), "support@zettelwerk.example");
    const auto clickTwice = [](QPushButton* key) {
        QTimer::singleShot(0, key, [key] { key->click(); }); // runs inside the first send's wait
        key->click();
    };
    inModal([&] { window->action("newsletter_bestellen")->trigger(); },
            [&](QDialog& signUp) { clickTwice(signUp.findChild<QPushButton*>("cmdSend")); });
    inModal([&] { window->openWindow("anregungen_neu"); },
            [&](QDialog& wizard) {
                auto* next = wizard.findChild<QPushButton*>("cmdNext");
                for (int page = 0; page < 3; ++page)
                    next->click();
                clickTwice(next);
            });
    const std::string text = test::readBytes(log);
    std::size_t mails = 0;
    for (std::size_t at = text.find("\ndata\n"); at != std::string::npos; at = text.find("\ndata\n", at + 1))
        ++mails;
    EXPECT_EQ(mails, 2u) << text;
    EXPECT_EQ(boxes, (std::vector<QString>{"Newsletter: Anmeldung erfolgreich abgeschlossen.",
                                           "Support: Übermittlung erfolgreich abgeschlossen."}));
}

// Coming back from another program keeps what was typed and adds nothing; a modal window of the program closing
// adds a second start text below it.
TEST_F(MailWindowTest, TheSupportWizardKeepsWhatWasTyped)
{
    inModal([&] { window->openWindow("anregungen_neu"); },
            [&](QDialog& wizard) {
                auto* message = wizard.findChild<QTextEdit*>("RichTextBox1");
                ASSERT_EQ(message->toPlainText().count("HelpCode: "), 1);
                message->append("Mein Anliegen");
                QApplication::setActiveWindow(nullptr);
                QApplication::setActiveWindow(&wizard);
                EXPECT_EQ(message->toPlainText().count("HelpCode: "), 1);
                // The help wraps its text and fits a 1024 x 768 screen with its key.
                inModal([&] { wizard.findChild<QPushButton*>("Command1")->click(); }, [](QDialog& help) {
                    EXPECT_EQ(help.objectName(), "hilfesupport");
                    EXPECT_LE(help.width(), 1024);
                    EXPECT_LE(help.height(), 768);
                    EXPECT_TRUE(help.findChild<QPushButton*>("xpButton1")->isVisible());
                });
                QApplication::setActiveWindow(&wizard);
                const QString text = message->toPlainText();
                EXPECT_EQ(text.count("HelpCode: "), 2);
                EXPECT_LT(text.indexOf("Mein Anliegen"), text.lastIndexOf("HelpCode: ")) << text.toStdString();
                EXPECT_TRUE(text.contains("Mein Anliegen")) << text.toStdString();
            });
}

} // namespace
} // namespace zw
