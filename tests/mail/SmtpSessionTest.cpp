#include "mail/sevSMTP.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>

#include "mail/MailMessage.h"
#include "tests/app/PeerProgram.h"
#include "tests/app/TempFolder.h"
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

// A session against peer.py's smtp-log server; `during` runs once while the first transfer waits.
struct LoggedSession
{
    explicit LoggedSession(bool mute = false)
        : server(mute ? std::vector<std::string>{"smtp-log", log.string(), "mute"}
                      : std::vector<std::string>{"smtp-log", log.string()})
    {
        smtp.Server = "127.0.0.1:" + std::to_string(server.port());
        smtp.SenderAddress = "kasse@example.org";
        smtp.Recipient = "chef@example.org";
        smtp.Subject = "Quittung";
        smtp.PlainBody = "Anbei.";
    }
    // What the server noted, one entry a line.
    std::string noted() const { return test::readBytes(log); }
    test::TempFolder folder;
    std::filesystem::path log = folder / "smtp.log";
    test::Peer server;
    net::QueuePoster queue;
    std::function<void()> during;
    sevSMTP smtp{queue, [this](const net::Transfer& transfer) {
                     while (!transfer.isFinished()) {
                         if (auto once = std::exchange(during, nullptr))
                             once();
                         queue.pump(std::chrono::milliseconds(20));
                     }
                 }};
};

TEST(SmtpSession, ConnectOpensTheSessionSendUsesAndASecondCallWhileOneRunsIsRefused)
{
    LoggedSession session;
    std::vector<int> nested;
    session.during = [&] {
        nested.push_back(session.smtp.Connect());
        nested.push_back(session.smtp.Send());
    };
    testing::internal::CaptureStdout();
    ASSERT_TRUE(session.smtp.Connect()) << session.smtp.LastError();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "") << "the probe's answer belongs to no one's output";
    EXPECT_EQ(nested, (std::vector<int>{0, 0}));
    EXPECT_EQ(session.smtp.LastError(), "Es wird bereits eine Nachricht übertragen.");
    ASSERT_EQ(session.smtp.Send(), 1) << session.smtp.LastError();
    session.smtp.Disconnect();
    EXPECT_EQ(session.noted(), "connect\nEHLO " + session.noted().substr(13, session.noted().find('\n', 13) - 13) +
                                   "\nNOOP\nMAIL FROM:<kasse@example.org>\nRCPT TO:<chef@example.org>\nDATA\ndata\n"
                                   "QUIT\nclosed\n");
}

// Abort after the whole message went out, while the server keeps silent: no goodbye, the connection closed.
TEST(SmtpSession, AbortAfterTheDataClosesTheConnectionWithoutAGoodbye)
{
    LoggedSession session(/*mute=*/true);
    ASSERT_TRUE(session.smtp.Connect()) << session.smtp.LastError();
    session.during = [&] {
        ASSERT_TRUE(test::waitUntil([&] { return session.noted().find("data\n") != std::string::npos; }));
        session.smtp.Abort();
    };
    EXPECT_EQ(session.smtp.Send(), 0);
    EXPECT_EQ(session.smtp.LastError(), "Die Übertragung wurde abgebrochen.");
    session.smtp.Disconnect();
    ASSERT_TRUE(test::waitUntil([&] { return session.noted().find("closed\n") != std::string::npos; }));
    EXPECT_EQ(session.noted().find("QUIT"), std::string::npos) << session.noted();
    EXPECT_EQ(session.noted().find("connect", 1), std::string::npos) << "one connection only";
}

TEST(SmtpSession, ARefusalIsQuotedAndNoAddressWithABreakOrBracketReachesTheEnvelope)
{
    struct Row
    {
        const char* name;
        std::string sevSMTP::*field;
        std::string value;
        std::string lastError;
    };
    const std::string refusedAddress = "Eine E-Mail-Adresse enthält einen Zeilenumbruch oder spitze Klammern und "
                                       "wird nicht verwendet.";
    const Row rows[] = {
        {"refused recipient", &sevSMTP::Recipient, "niemand@example.org",
         "Der Server hat einen Empfänger oder die Nachricht abgelehnt. Antwort des Servers: 550 5.1.1 Empfaenger "
         "unbekannt"},
        {"second RCPT in To", &sevSMTP::Recipient, "a@example.org>\r\nRCPT TO:<b@example.net", refusedAddress},
        {"second RCPT in Cc", &sevSMTP::CopyRecipient, "a@example.org\nRCPT TO:<b@example.net>", refusedAddress},
        {"bracket in the sender", &sevSMTP::SenderAddress, "kasse@example.org> SIZE=1", refusedAddress},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        LoggedSession session;
        session.smtp.*row.field = row.value;
        ASSERT_TRUE(session.smtp.Connect()) << session.smtp.LastError();
        EXPECT_EQ(session.smtp.Send(), 0);
        EXPECT_EQ(session.smtp.LastError(), row.lastError);
        session.smtp.Disconnect();
        EXPECT_EQ(session.noted().find("example.net"), std::string::npos) << session.noted();
    }
}

// Python's email package reads what a hostile name, address, subject, firm or attachment made of the message: typed
// line breaks start no header of their own.
TEST(MailMessage, HostileNamesStayOneMailboxOneParameterAndOneLine)
{
    test::TempFolder folder;
    const std::vector<std::filesystem::path> attachments{folder / "7\"; name=\"evil.exe.bmp",
                                                         folder / "Quittung ä.b\r\nX-Evil: 1"};
    for (const auto& file : attachments)
        std::ofstream(file) << "Bild";
    MailContent mail;
    mail.senderName = "Meier, Hans <evil@example.net>\r\nReply-To: fremd@example.org";
    mail.senderAddress = "kasse@example.org";
    mail.recipient = "chef@example.org\r\nBcc: fremd@example.org";
    mail.subject = "Quittung\nX-Evil: 1";
    mail.organization = std::string(60, '\x96') + "\xE2\x80\x93"; // Windows-1252 dashes that are no UTF-8, then one
    mail.plainBody = "Text";
    mail.attachments = attachments;
    std::ofstream(folder / "mail.eml", std::ios::binary)
        << composeMessage(mail, "Tue, 24 Nov 2026 17:00:00 +0100", "<1@example.org>");
    EXPECT_EQ(test::runPeer("/usr/bin/python3 -c 'import email,email.policy,email.header,sys\n"
                            "m=email.message_from_bytes(open(sys.argv[1],\"rb\").read(),policy=email.policy.default)\n"
                            "print([(a.display_name,a.addr_spec) for a in m[\"From\"].addresses])\n"
                            "print([m[h] for h in (\"Bcc\",\"Reply-To\",\"X-Evil\")])\n"
                            "raw=email.message_from_bytes(open(sys.argv[1],\"rb\").read())\n"
                            "print(raw[\"Subject\"], b\"\".join(w for w,c in email.header.decode_header(raw[\"Organization\"]))"
                            "==b\"\\x96\"*60+\"\u2013\".encode())\n"
                            "for p in m.iter_attachments(): print(p.get_filename(), p.get_params(), p.get(\"X-Evil\"))' " +
                            (folder / "mail.eml").string()),
              "[('Meier, Hans <evil@example.net>  Reply-To: fremd@example.org', 'kasse@example.org')]\n"
              "[None, None, None]\nQuittung X-Evil: 1 True\n"
              "7\"; name=\"evil.exe.bmp [('image/bmp', ''), ('name', '7\"; name=\"evil.exe.bmp')] None\n"
              "Quittung ä.b  X-Evil: 1 [('application/octet-stream', ''), ('name', 'Quittung ä.b  X-Evil: 1')] None\n");
}

// A non-ASCII name arrives whole whether the reader takes RFC 2231 (email's default policy) or the RFC 2047 words
// of the plain parameters (its old policy, as older mail programs read them); a message with nothing typed keeps
// its plain alternative.
TEST(MailMessage, NonAsciiNamesArriveWholeAndAnEmptyMessageKeepsItsPlainPart)
{
    test::TempFolder folder;
    const auto picture = folder / "Quittung März – Nr. 7 für Müller & Söhne, Düsseldorf.bmp";
    std::ofstream(picture) << "Bild";
    MailContent mail;
    mail.senderAddress = "kasse@example.org";
    mail.recipient = "chef@example.org";
    mail.htmlBody = "<html><body></body></html>";
    mail.attachments = {picture};
    std::ofstream(folder / "mail.eml", std::ios::binary)
        << composeMessage(mail, "Tue, 24 Nov 2026 17:00:00 +0100", "<1@example.org>");
    EXPECT_EQ(test::runPeer("/usr/bin/python3 -c 'import email,email.policy,email.header,sys\n"
                            "data=open(sys.argv[1],\"rb\").read()\n"
                            "m=email.message_from_bytes(data,policy=email.policy.default)\n"
                            "print([p.get_content_type() for p in m.walk() if not p.is_multipart()])\n"
                            "old=[p for p in email.message_from_bytes(data).walk() if p.get_filename()][0]\n"
                            "words=lambda v: str(email.header.make_header(email.header.decode_header(v)))\n"
                            "print([a.get_filename() for a in m.iter_attachments()])\n"
                            "print(words(old.get_filename()) == words(old.get_param(\"name\")) == sys.argv[2])' " +
                            (folder / "mail.eml").string() + " '" + picture.filename().string() + "'"),
              "['text/plain', 'text/html', 'image/bmp']\n"
              "['Quittung März – Nr. 7 für Müller & Söhne, Düsseldorf.bmp']\nTrue\n");
}

} // namespace
} // namespace zw
