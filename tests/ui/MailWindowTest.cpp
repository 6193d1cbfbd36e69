// The error window's report reaching a real SMTP server through the mail part, as a user sends it.
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <gtest/gtest.h>

#include <fstream>

#include "app/TextFile.h"
#include "core/RunError.h"
#include "tests/app/PeerProgram.h"
#include "tests/net/Peer.h"
#include "tests/ui/MainWindowFixture.h"
#include "ui/mail/MailWindows.h"

namespace zw {
namespace {

using MailWindowTest = test::MainWindowFixture;

TEST_F(MailWindowTest, TheErrorReportGoesOutAsHtmlAloneWithTheUsersAddressAsSenderAndCopy)
{
    const auto received = folder.path() / "report.eml";
    test::Peer server({"smtp-open", received.string()});
    std::ofstream(paths.home() / "vendor.ini")
        << "mailHost=127.0.0.1:" << server.port() << "\nsupportAddress=support@zettelwerk.example\n";
    installMail(*window, form, settings, paths);
    start();

    // The closing question is answered "No", so the transcript stays closed.
    QString question;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog != nullptr && dialog->objectName() == "MessageDialog") {
            question = dialog->windowTitle();
            dialog->reject();
        }
    });
    answer.start(20);
    QTimer::singleShot(50, [&] {
        auto* report = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_TRUE(report != nullptr && report->objectName() == "fehlerform");
        report->findChild<QPushButton*>("Command3")->click();
        report->findChild<QLineEdit*>("sevText1")->setText("kunde@example.org");
        report->findChild<QPushButton*>("Command4")->click();
        EXPECT_TRUE(report->findChild<QPushButton*>("Command3")->isEnabled());
        report->reject();
    });
    window->faultReporter().report(RunError::typeMismatch(), "optionen");
    EXPECT_EQ(question, "Support");

    const std::string check = test::runPeer(
        "/usr/bin/python3 -c 'import email,email.policy,sys\n"
        "m=email.message_from_bytes(open(sys.argv[1],\"rb\").read(),policy=email.policy.default)\n"
        "print(m[\"Subject\"]);print(m[\"From\"]);print(m[\"To\"]);print(m[\"Cc\"])\n"
        "print([p.get_content_type() for p in m.walk() if not p.is_multipart()])\n"
        "print(\"Typen unverträglich\" in m.get_body((\"html\",)).get_content())' " +
        received.string());
    EXPECT_EQ(check, "Fehlermeldung aus Zettelwerk 6.0.0\nkunde@example.org\nsupport@zettelwerk.example\n"
                     "kunde@example.org\n['text/html']\nTrue\n");
}

} // namespace
} // namespace zw
