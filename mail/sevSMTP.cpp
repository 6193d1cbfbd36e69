#include "mail/sevSMTP.h"

#include <cstdlib>

#include "core/RunError.h"
#include "mail/MailMessage.h"

namespace zw {

sevSMTP::sevSMTP(net::EventPoster& poster, Wait wait) : m_poster(poster), m_wait(std::move(wait)) {}

sevSMTP::~sevSMTP() = default;

std::optional<net::SmtpSend> sevSMTP::request()
{
    std::string host = Server;
    while (!host.empty() && host.back() == ' ')
        host.pop_back();
    while (!host.empty() && host.front() == ' ')
        host.erase(0, 1);
    std::string port = "587";
    if (const auto colon = host.rfind(':'); colon != std::string::npos) {
        port = host.substr(colon + 1);
        host.resize(colon);
    }
    const bool valid = !host.empty() && !port.empty() && port.size() <= 5 &&
                       port.find_first_not_of("0123456789") == std::string::npos &&
                       host.find_first_of("/@ \t\r\n") == std::string::npos;
    if (!valid) {
        m_lastError = Server.empty() ? "Es ist kein SMTP-Server eingetragen."
                                     : "Der SMTP-Server \"" + Server + "\" ist keine gültige Angabe (Name[:Port]).";
        return std::nullopt;
    }
    net::SmtpSend send;
    const bool implicitTls = port == "465";
    send.url = (implicitTls ? "smtps://" : "smtp://") + host + ":" + port;
    send.tls = implicitTls ? net::SmtpSend::Tls::Implicit
               : UseAuth   ? net::SmtpSend::Tls::Required
                           : net::SmtpSend::Tls::Opportunistic;
    if (const char* ca = std::getenv("ZETTELWERK_SMTP_CA"))
        send.caFile = ca;
    if (UseAuth) {
        send.user = UserName;
        send.password = Password;
    }
    send.timeouts = timeouts;
    return send;
}

bool sevSMTP::refuseWhileBusy()
{
    if (!m_busy)
        return false;
    m_lastError = "Es wird bereits eine Nachricht übertragen.";
    return true;
}

bool sevSMTP::run(net::SmtpSend request, std::size_t size)
{
    net::TransferEvents events;
    events.progress = [this, size](std::int64_t now, std::int64_t) {
        if (OnProgress && size > 0)
            OnProgress(static_cast<int>(std::min<std::int64_t>(100, now * 100 / static_cast<std::int64_t>(size))));
    };
    events.transcript = [this](const std::string& line) {
        if (OnLog)
            OnLog(line + "\r\n");
    };
    if (!m_session)
        m_session = std::make_unique<net::Session>();
    m_busy = true;
    m_transfer = std::make_unique<net::Transfer>(m_poster, events, m_session.get());
    m_transfer->start(std::move(request));
    m_wait(*m_transfer);
    const net::TransferResult result = m_transfer->result();
    m_transfer.reset();
    m_busy = false;
    if (result.ok())
        return true;
    // A connection that failed or was cut is not used again.
    m_session.reset();
    m_lastError = result.description;
    if (!result.serverReply.empty())
        m_lastError += " Antwort des Servers: " + result.serverReply;
    return false;
}

bool sevSMTP::Connect()
{
    if (refuseWhileBusy())
        return false;
    auto send = request();
    if (!send)
        return false;
    send->probeOnly = true;
    m_session.reset();
    return run(std::move(*send), 0);
}

int sevSMTP::Send()
{
    if (refuseWhileBusy())
        return 0;
    auto send = request();
    if (!send)
        return 0;
    const auto badEnvelope = [](const std::string& address) {
        return address.find_first_of("\r\n<>") != std::string::npos;
    };
    if (badEnvelope(SenderAddress) || badEnvelope(Recipient) || badEnvelope(CopyRecipient)) {
        m_lastError = "Eine E-Mail-Adresse enthält einen Zeilenumbruch oder spitze Klammern und wird nicht "
                      "verwendet.";
        return 0;
    }
    MailContent mail{MailerTag,    SenderName, SenderAddress, Recipient, CopyRecipient, Organization, Subject,
                     PlainBody,    HtmlBody,   Priority,      ReadReceipt, m_attachments, ZipRate > 0, HtmlAlone};
    try {
        send->message = composeMessage(mail, mailDate(), newMessageId(SenderAddress));
    } catch (const RunError&) {
        m_lastError = "Ein Anhang konnte nicht gelesen werden.";
        return 0;
    }
    send->from = SenderAddress;
    for (const std::string* address : {&Recipient, &CopyRecipient}) {
        if (address->find_first_not_of(' ') != std::string::npos)
            send->recipients.push_back(*address);
    }
    if (OnMessageStart)
        OnMessageStart();
    const std::size_t size = send->message.size();
    return run(std::move(*send), size) ? 1 : 0;
}

void sevSMTP::Disconnect()
{
    if (!m_busy)
        m_session.reset();
}

void sevSMTP::Abort()
{
    if (m_transfer)
        m_transfer->abort();
}

} // namespace zw
