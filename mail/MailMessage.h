#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace zw {

// What one mail holds, as the SMTP session's properties give it.
struct MailContent
{
    std::string mailerTag;
    std::string senderName;
    std::string senderAddress;
    std::string recipient;
    std::string copyRecipient;
    std::string organization;
    std::string subject;
    std::string plainBody;
    std::string htmlBody;
    int priority = 3; // 1 high, 3 normal, 5 low
    bool readReceipt = false;
    std::vector<std::filesystem::path> attachments;
    bool zipAttachments = false; // one ZIP of all attachments, named after the first one
    bool htmlAlone = false;      // the HTML body without a plain alternative
};

// The finished RFC 5322 message with CR LF line ends: multipart/mixed holding multipart/alternative (plain and
// HTML; the plain part alone without HTML, the HTML part alone with htmlAlone) and the attachments, base64.
// Non-ASCII header text is encoded as RFC 2047 words, attachment names per RFC 2231 and RFC 2047; CR and LF typed
// into a field never start a header line of their own.
// Throws RunError 53 for an attachment that cannot be read.
std::string composeMessage(const MailContent& mail, std::string_view date, std::string_view messageId);

// "Tue, 24 Nov 2026 17:08:00 +0100": the Date header's form, in C-locale names.
std::string mailDate();
// A fresh "<...@host>" for the Message-ID header.
std::string newMessageId(std::string_view senderAddress);

// One header value with CR and LF turned into blanks, encoded as RFC 2047 words if it is not plain ASCII.
std::string encodedWords(std::string_view text);

// The bytes of a ZIP archive holding the files under their own names (what ZipRate above 0 sends).
std::string zipOfFiles(const std::vector<std::filesystem::path>& files);

} // namespace zw
