#include "mail/sevSMTP.h"

#include <gtest/gtest.h>

#include <chrono>

#include "app/VendorAddresses.h"
#include "mail/MailDraft.h"
#include "mail/MailMessage.h"
#include "tests/net/Peer.h"

namespace zw {
namespace {

using Clock = std::chrono::steady_clock;

// How fast the abort ends a transfer is measured in bench/transfer.cmake.
TEST(SmtpSession, AbortEndsAConnectToAServerThatNeverAnswers)
{
    test::Peer silent({"silent"});
    net::QueuePoster queue;
    sevSMTP* session = nullptr;
    sevSMTP smtp(queue, [&](const net::Transfer& transfer) {
        const auto start = Clock::now();
        bool aborted = false;
        while (!transfer.isFinished()) {
            queue.pump(std::chrono::milliseconds(20));
            if (!aborted && Clock::now() - start > std::chrono::milliseconds(300)) {
                aborted = true;
                session->Abort();
            }
        }
    });
    session = &smtp;
    smtp.Server = "127.0.0.1:" + std::to_string(silent.port());
    EXPECT_FALSE(smtp.Connect());
    EXPECT_EQ(smtp.LastError(), "Die Übertragung wurde abgebrochen.");
}

TEST(SmtpSession, TypedLineBreaksNeverStartAHeaderLine)
{
    MailContent mail;
    mail.senderAddress = "kasse@example.org";
    mail.recipient = "chef@example.org\r\nBcc: fremd@example.org";
    mail.subject = "Quittung\nX-Evil: 1";
    mail.senderName = "Müller\r\nReply-To: fremd@example.org";
    mail.plainBody = "Text";
    const std::string message = composeMessage(mail, "Tue, 24 Nov 2026 17:00:00 +0100", "<1@example.org>");
    for (const char* injected : {"\r\nBcc:", "\r\nX-Evil:", "\r\nReply-To:"})
        EXPECT_EQ(message.find(injected), std::string::npos) << injected;
    const auto headerEnd = message.find("\r\n\r\n");
    EXPECT_NE(message.substr(0, headerEnd).find("Subject: Quittung X-Evil: 1\r\n"), std::string::npos);
}

TEST(VendorMail, HelpCodeStartTextAndNewsletterSubject)
{
    EXPECT_EQ(helpCode(0.0), "000001");
    EXPECT_EQ(helpCode(0.9999999), "123456");
    EXPECT_EQ(supportStartText("24.11.2026", "000042"),
              "Diese Nachricht wurde am 24.11.2026 erstellt. HelpCode: 000042\r\n" + std::string(104, '-') +
                  "\r\n\r\nBitte geben Sie hier Ihre Nachricht ein:\r\n");
    EXPECT_EQ(supportSubjects().at(1), "Zettelwerk V6.0.0 - Fehler/Bug aufgetaucht");
    net::QueuePoster queue;
    sevSMTP smtp(queue, [](const net::Transfer&) {});
    prepareNewsletter(smtp, "leser@example.org", VendorAddresses{});
    EXPECT_EQ(smtp.Subject, "SUBSCRIBE : leser@example.org");
    EXPECT_EQ(smtp.Recipient, VendorAddresses{}.newsletterAddress);
    EXPECT_EQ(smtp.PlainBody, "In den Newsletter eintragen!");
}

} // namespace
} // namespace zw
