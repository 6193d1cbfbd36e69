#include "mail/MailDraft.h"

#include "app/MailPassword.h"
#include "app/ProgramPaths.h"
#include "app/VendorAddresses.h"
#include "app/Version.h"
#include "core/HtmlText.h"
#include "core/RunError.h"
#include "core/Settings.h"
#include "mail/sevSMTP.h"

namespace zw {
namespace {

constexpr std::string_view kSection = "EMail";

// The vendor's mail host without login, the mailer tag, sender and recipient.
void vendorSession(sevSMTP& smtp, const std::string& from, const std::string& to, const VendorAddresses& vendor)
{
    smtp.Server = vendor.mailHost;
    smtp.MailerTag = mailerTag(vendor);
    smtp.SenderAddress = from;
    smtp.Recipient = to;
}

} // namespace

MailAccount loadMailAccount(const Settings& settings)
{
    const auto get = [&settings](std::string_view key) { return settings.get(kApplicationName, kSection, key, ""); };
    MailAccount account{get("Name"), get("Firma"), get("EMail"), get("SMTP"), 0, get("Benutzername"),
                        mailPassword().read(settings)};
    const std::string auth = get("Auth");
    if (!auth.empty() && auth.find_first_not_of("0123456789-") == std::string::npos && auth.size() < 10)
        account.auth = std::stoi(auth);
    return account;
}

void saveMailAccount(Settings& settings, const MailAccount& account)
{
    const auto save = [&settings](std::string_view key, const std::string& value) {
        settings.save(kApplicationName, kSection, key, value);
    };
    save("Name", account.name);
    save("Firma", account.company);
    save("EMail", account.address);
    save("SMTP", account.server);
    save("Auth", std::to_string(account.auth));
    save("Benutzername", account.user);
    mailPassword().save(settings, account.password); // in the keyring where one takes it
}

std::string mailerTag(const VendorAddresses& vendor)
{
    return "Zettelwerk V" + versionText() + "  (" + vendor.webHome + ")";
}

std::filesystem::path receiptPicturePath(const ProgramPaths& paths, std::string_view number)
{
    const std::string name = std::string(number) + ".bmp";
    if (number.find('/') != std::string_view::npos || number.find('\0') != std::string_view::npos ||
        number == "." || number == "..")
        throw RunError::pathNotFound();
    return paths.home() / "temp" / name;
}

void prepareSession(sevSMTP& smtp, const MailAccount& account, const MailDraft& draft, const std::string& tag)
{
    smtp.HtmlBody = draft.html;
    smtp.Server = account.server;
    smtp.MailerTag = tag;
    smtp.SenderName = account.name;
    smtp.SenderAddress = account.address;
    if (account.auth == 1) {
        smtp.UseAuth = true;
        smtp.UserName = account.user;
        smtp.Password = account.password;
    }
    smtp.ReadReceipt = draft.readReceipt;
    smtp.Priority = draft.priorityRow == 0 ? 1 : draft.priorityRow == 2 ? 5 : 3;
    smtp.Recipient = draft.to;
    smtp.CopyRecipient = draft.cc;
    smtp.Organization = account.company;
    smtp.Subject = draft.subject;
    smtp.PlainBody.clear();
    smtp.PlainBody = draft.plainText;
    smtp.MessageSwitch1 = true;
    smtp.MessageSwitch2 = true;
    smtp.ZipRate = draft.zip ? 10 : 0;
    smtp.ClearAttachments();
    for (const auto& file : draft.attachments)
        smtp.AddAttachment(file);
}

std::string connectAndSend(sevSMTP& smtp)
{
    if (!smtp.Connect())
        return "Fehler beim Verbinden mit dem Mailserver\r\n" + smtp.LastError();
    std::string failure;
    if (smtp.Send() < 1)
        failure = "Fehler beim Versenden der Nachricht\r\n" + smtp.LastError();
    smtp.Disconnect();
    return failure;
}

std::string plainTextHtml(std::string_view text)
{
    return "<!DOCTYPE html>\r\n<html><head><meta charset=\"utf-8\"><title></title></head><body>" +
           htmlEscaped(text, true) + "</body></html>\r\n";
}

void prepareErrorReport(sevSMTP& smtp, const std::string& reportHtml, const std::string& replyAddress,
                        const VendorAddresses& vendor)
{
    smtp.HtmlBody = reportHtml;
    vendorSession(smtp, replyAddress.empty() ? vendor.supportAddress : replyAddress, vendor.supportAddress, vendor);
    if (!replyAddress.empty())
        smtp.CopyRecipient = replyAddress;
    smtp.Subject = "Fehlermeldung aus Zettelwerk " + versionText();
    smtp.PlainBody.clear();
    smtp.HtmlAlone = true; // the report mail has no plain part
    smtp.MessageSwitch1 = true;
    smtp.MessageSwitch2 = true;
    smtp.ClearAttachments();
}

std::vector<std::string> supportSubjects()
{
    std::vector<std::string> subjects;
    for (const char* ending : {" - Anregungen zum Programm", " - Fehler/Bug aufgetaucht", " - Wünsche für weitere Updates",
                               " - Fragen zum Programm", " - Sonstiges"})
        subjects.push_back("Zettelwerk V" + versionText() + ending);
    return subjects;
}

std::string helpCode(double random)
{
    const int code = static_cast<int>(random * 123456) + 1;
    std::string text = std::to_string(code);
    return std::string(6 - std::min<std::size_t>(6, text.size()), '0') + text;
}

std::string supportStartText(const std::string& date, const std::string& code)
{
    return "Diese Nachricht wurde am " + date + " erstellt. HelpCode: " + code + "\r\n" + std::string(104, '-') +
           "\r\n\r\nBitte geben Sie hier Ihre Nachricht ein:\r\n";
}

void prepareSupportMail(sevSMTP& smtp, const std::string& from, const std::string& subject, const std::string& plain,
                        const std::string& html, const VendorAddresses& vendor)
{
    smtp.HtmlBody = html;
    vendorSession(smtp, from, vendor.supportAddress, vendor);
    smtp.Subject = subject;
    smtp.PlainBody.clear();
    smtp.PlainBody = plain;
    smtp.MessageSwitch1 = true;
    smtp.MessageSwitch2 = true;
    smtp.ClearAttachments();
}

void prepareNewsletter(sevSMTP& smtp, const std::string& from, const VendorAddresses& vendor)
{
    vendorSession(smtp, from, vendor.newsletterAddress, vendor);
    smtp.Subject = "SUBSCRIBE : " + from;
    smtp.PlainBody = "In den Newsletter eintragen!";
}

} // namespace zw
