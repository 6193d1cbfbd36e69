#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace zw {

class ProgramPaths;
class Settings;
class sevSMTP;
struct VendorAddresses;

// The mail account of the settings store, section EMail.
struct MailAccount
{
    std::string name;     // Name
    std::string company;  // Firma
    std::string address;  // EMail
    std::string server;   // SMTP
    int auth = 0;         // Auth, 1 when the login is used
    std::string user;     // Benutzername
    std::string password; // Passwort
};
// Empty defaults; an Auth that is no number (the first use's empty one) leaves the box clear.
MailAccount loadMailAccount(const Settings& settings);
// The seven keys in their order: Name, Firma, EMail, SMTP, Auth, Benutzername, Passwort. The password goes
// through the installed keeper (app/MailPassword): into the keyring where one takes it, Passwort left empty.
void saveMailAccount(Settings& settings, const MailAccount& account);

// What the mail window holds of one message.
struct MailDraft
{
    std::string to;
    std::string cc;
    std::string subject;
    std::string plainText;
    std::string html;
    int priorityRow = 1; // "Hoch", "Normal", "Niedrig"
    bool readReceipt = false;
    bool zip = false;
    std::vector<std::filesystem::path> attachments; // the receipt's picture first
};

// "Zettelwerk V6.0.0  (https://www.zettelwerk.example/)".
std::string mailerTag(const VendorAddresses& vendor);

// temp/<number>.bmp, the receipt picture the mail carries. The number is the file name as it stands; one that
// cannot be a file name of that folder ("/" in it, "." or "..") throws RunError 76, so nothing is written
// outside temp.
std::filesystem::path receiptPicturePath(const ProgramPaths& paths, std::string_view number);

// The session's properties from the account and the draft, in the order of the send routine. Credentials are
// only set with Auth 1; left alone otherwise, so what an earlier send set stays.
void prepareSession(sevSMTP& smtp, const MailAccount& account, const MailDraft& draft, const std::string& tag);

// Connect, Send, Disconnect: the empty text when the server took the mail, else the box's text ("Fehler beim
// Verbinden mit dem Mailserver" or "Fehler beim Versenden der Nachricht", CR LF, LastError).
std::string connectAndSend(sevSMTP& smtp);

// The message editor's plain text as HTML for the alternative part: escaped, line breaks kept.
std::string plainTextHtml(std::string_view text);


// The error report to the vendor's support address over the vendor's mail host, without login: HTML alone,
// the user's address as sender and copy when given, else the support address as both sender and recipient.
void prepareErrorReport(sevSMTP& smtp, const std::string& reportHtml, const std::string& replyAddress,
                        const VendorAddresses& vendor);


// The support wizard's subject list: "Zettelwerk V6.0.0 - Anregungen zum Programm" and the four others.
std::vector<std::string> supportSubjects();
// A HelpCode from "000001" to "123456" for a random number in [0, 1).
std::string helpCode(double random);
// The start text of a support message: date, HelpCode, 104 hyphens and the request to write.
std::string supportStartText(const std::string& date, const std::string& code);
// The support message: plain and HTML to the vendor's support address from the address typed.
void prepareSupportMail(sevSMTP& smtp, const std::string& from, const std::string& subject, const std::string& plain,
                        const std::string& html, const VendorAddresses& vendor);
// The newsletter sign-up: subject "SUBSCRIBE : " + address, a fixed plain body.
void prepareNewsletter(sevSMTP& smtp, const std::string& from, const VendorAddresses& vendor);

} // namespace zw
