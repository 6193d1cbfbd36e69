#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "net/Transfer.h"

namespace zw {

// The SMTP session every mail of the program goes through: properties set before Connect, then Send. Connect
// and Send return when the transfer has ended; while it runs, `wait` keeps the caller's events turning (the
// window's loop, or a queue the command line pumps), so OnProgress, OnLog and a click on Abort get through.
//
// Server is "host" or "host:port": 465 speaks TLS from the start, any other port (587 when none is given) uses
// STARTTLS when the server offers it and insists on it whenever a login is sent. Certificates are checked
// against the system's store; ZETTELWERK_SMTP_CA names a certificate authority to trust instead (tests).
class sevSMTP
{
public:
    using Wait = std::function<void(const net::Transfer&)>;
    sevSMTP(net::EventPoster& poster, Wait wait);
    ~sevSMTP();

    std::string Server;
    std::string MailerTag;
    std::string SenderName;
    std::string SenderAddress;
    bool UseAuth = false;
    std::string UserName;
    std::string Password;
    bool ReadReceipt = false;
    int Priority = 3; // 1 high, 3 normal, 5 low
    std::string Recipient;
    std::string CopyRecipient;
    std::string Organization;
    std::string Subject;
    std::string PlainBody;
    std::string HtmlBody;
    bool HtmlAlone = false; // HtmlBody goes without a plain alternative, as the error report does
    bool MessageSwitch1 = false; // set by every mail; they switch nothing
    bool MessageSwitch2 = false;
    int ZipRate = 0; // above 0: the attachments go as one ZIP archive

    void ClearAttachments() { m_attachments.clear(); }
    void AddAttachment(const std::filesystem::path& file) { m_attachments.push_back(file); }

    // Greeting, STARTTLS and login: true when the account can send. The session stays open for Send.
    bool Connect();
    // The message, over the session Connect opened (or a new one): 1 when the server accepted it, 0 otherwise
    // (LastError says why).
    int Send();
    // Ends the session with a goodbye the server is given a moment for.
    void Disconnect();
    // Ends a running Connect or Send at once and closes its connection without a goodbye; harmless when idle.
    void Abort();
    // While Connect or Send runs, the caller's events turn: a second Connect or Send then is refused.
    bool Busy() const { return m_busy; }
    const std::string& LastError() const { return m_lastError; }

    std::function<void(int percent)> OnProgress;
    std::function<void()> OnMessageStart;
    std::function<void(const std::string& text)> OnLog;

    // For tests: how long a silent server is waited for.
    net::Timeouts timeouts;

private:
    bool run(net::SmtpSend request, std::size_t size);
    std::optional<net::SmtpSend> request();
    bool refuseWhileBusy();

    net::EventPoster& m_poster;
    Wait m_wait;
    std::vector<std::filesystem::path> m_attachments;
    std::unique_ptr<net::Session> m_session;
    std::unique_ptr<net::Transfer> m_transfer;
    bool m_busy = false;
    std::string m_lastError;
};

} // namespace zw
