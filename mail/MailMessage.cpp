#include "mail/MailMessage.h"

#include <zip.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <ctime>
#include <random>
#include <unistd.h>

#include "app/TextFile.h"
#include "core/RunError.h"

namespace zw {
namespace {

constexpr std::string_view kBase64 = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string base64(std::string_view bytes)
{
    std::string out;
    out.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const auto byte = [&](std::size_t k) { return k < bytes.size() ? static_cast<unsigned char>(bytes[k]) : 0u; };
        const unsigned value = byte(i) << 16 | byte(i + 1) << 8 | byte(i + 2);
        out += kBase64[value >> 18 & 63];
        out += kBase64[value >> 12 & 63];
        out += i + 1 < bytes.size() ? kBase64[value >> 6 & 63] : '=';
        out += i + 2 < bytes.size() ? kBase64[value & 63] : '=';
    }
    return out;
}

// Base64 in lines of 76 characters, as MIME bodies want it.
std::string base64Lines(std::string_view bytes)
{
    const std::string flat = base64(bytes);
    std::string out;
    out.reserve(flat.size() + flat.size() / 76 * 2 + 2);
    for (std::size_t i = 0; i < flat.size(); i += 76) {
        out.append(flat, i, 76);
        out += "\r\n";
    }
    return out;
}

bool isPlainAscii(std::string_view text)
{
    for (char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x7F || (byte < 0x20 && c != '\t'))
            return false;
    }
    return true;
}

std::string withoutLineBreaks(std::string_view text)
{
    std::string out(text);
    for (char& c : out) {
        if (c == '\r' || c == '\n')
            c = ' ';
    }
    return out;
}

// An address as it stands in a header: the typed text, without line breaks and angle brackets of its own.
std::string bareAddress(std::string_view text)
{
    std::string out;
    for (char c : withoutLineBreaks(text)) {
        if (c != '<' && c != '>' && c != '"')
            out += c;
    }
    const auto first = out.find_first_not_of(' ');
    const auto last = out.find_last_not_of(' ');
    return first == std::string::npos ? std::string() : out.substr(first, last - first + 1);
}

// A name in RFC 2231 form for the filename* parameter.
std::string percentEncoded(std::string_view text)
{
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::string out;
    for (char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte < 0x80 && std::isalnum(byte)) || c == '.' || c == '-' || c == '_') {
            out += c;
        } else {
            out += '%';
            out += kHex[byte >> 4];
            out += kHex[byte & 15];
        }
    }
    return out;
}

std::string mimeTypeOf(const std::filesystem::path& file)
{
    std::string extension = file.extension().string();
    for (char& c : extension)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 10> kTypes{{
        {".bmp", "image/bmp"},
        {".jpg", "image/jpeg"},
        {".jpeg", "image/jpeg"},
        {".png", "image/png"},
        {".pdf", "application/pdf"},
        {".xml", "application/xml"},
        {".rtf", "application/rtf"},
        {".zip", "application/zip"},
        {".txt", "text/plain"},
        {".htm", "text/html"},
    }};
    for (const auto& [suffix, type] : kTypes) {
        if (extension == suffix)
            return std::string(type);
    }
    return "application/octet-stream";
}

std::string boundary(std::string_view kind)
{
    static std::atomic<unsigned> counter{0};
    std::random_device random;
    return "=_zw_" + std::string(kind) + "_" + std::to_string(random()) + "_" + std::to_string(++counter);
}

// A quoted-string of RFC 5322: a quote or backslash of the text cannot end it, a line break cannot leave it.
std::string quotedString(std::string_view text)
{
    std::string out = "\"";
    for (char c : withoutLineBreaks(text)) {
        if (c == '"' || c == '\\')
            out += '\\';
        out += c;
    }
    return out + "\"";
}

// The full name in the RFC 2231 filename* for the programs that read it, and as RFC 2047 words in name and filename
// for the others, as mail programs write them.
void appendAttachment(std::string& out, const std::string& name, std::string_view bytes, const std::string& type)
{
    const std::string flat = withoutLineBreaks(name);
    const bool plain = isPlainAscii(flat);
    const std::string shown = quotedString(plain ? flat : encodedWords(flat));
    out += "Content-Type: " + type + "; name=" + shown + "\r\n";
    out += "Content-Transfer-Encoding: base64\r\n";
    out += "Content-Disposition: attachment; ";
    if (!plain)
        out += "filename*=UTF-8''" + percentEncoded(flat) + ";\r\n ";
    out += "filename=" + shown + "\r\n\r\n" + base64Lines(bytes);
}

std::string textPart(std::string_view type, std::string_view text)
{
    std::string normalised;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r'))
            normalised += '\r';
        normalised += text[i];
    }
    return "Content-Type: " + std::string(type) + "; charset=UTF-8\r\nContent-Transfer-Encoding: base64\r\n\r\n" +
           base64Lines(normalised);
}

} // namespace

std::string encodedWords(std::string_view text)
{
    const std::string flat = withoutLineBreaks(text);
    if (isPlainAscii(flat))
        return flat;
    // Words of at most 45 bytes of UTF-8 each (60 of base64), cut only between characters. Text that is no UTF-8
    // (a run of continuation bytes) has no boundary to step back to and is cut at 45 bytes, so every word moves on.
    std::string out;
    std::size_t start = 0;
    while (start < flat.size()) {
        std::size_t end = std::min(flat.size(), start + 45);
        while (end > start && end < flat.size() && (static_cast<unsigned char>(flat[end]) & 0xC0) == 0x80)
            --end;
        if (end == start)
            end = std::min(flat.size(), start + 45);
        if (!out.empty())
            out += "\r\n ";
        out += "=?UTF-8?B?" + base64(std::string_view(flat).substr(start, end - start)) + "?=";
        start = end;
    }
    return out;
}

std::string zipOfFiles(const std::vector<std::filesystem::path>& files)
{
    std::string pattern = (std::filesystem::temp_directory_path() / "zw-mail-XXXXXX").string();
    const int descriptor = ::mkstemp(pattern.data());
    if (descriptor < 0)
        throw RunError::pathNotFound();
    ::close(descriptor);
    int error = 0;
    zip_t* archive = zip_open(pattern.c_str(), ZIP_TRUNCATE, &error);
    bool ok = archive != nullptr;
    for (const auto& file : files) {
        if (!ok)
            break;
        zip_source_t* source = zip_source_file(archive, file.c_str(), 0, -1);
        const std::string name = file.filename().string();
        ok = source != nullptr && zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8) >= 0;
        if (!ok && source != nullptr)
            zip_source_free(source);
    }
    if (archive != nullptr && (ok ? zip_close(archive) != 0 : (zip_discard(archive), true)))
        ok = false;
    std::string bytes = ok ? readFileBytes(pattern) : std::string();
    std::filesystem::remove(pattern);
    if (!ok)
        throw RunError::fileNotFound();
    return bytes;
}

std::string composeMessage(const MailContent& mail, std::string_view date, std::string_view messageId)
{
    std::string out;
    const auto header = [&out](std::string_view name, std::string_view value) {
        out += name;
        out += ": ";
        out += value;
        out += "\r\n";
    };
    const std::string sender = bareAddress(mail.senderAddress);
    // The display name is one phrase: quoted, or encoded words, so a comma or "<" in it adds no mailbox.
    const std::string displayName = withoutLineBreaks(mail.senderName);
    header("From", displayName.empty() ? "<" + sender + ">"
                                : (isPlainAscii(displayName) ? quotedString(displayName) : encodedWords(displayName)) + " <" + sender + ">");
    header("To", "<" + bareAddress(mail.recipient) + ">");
    if (!bareAddress(mail.copyRecipient).empty())
        header("Cc", "<" + bareAddress(mail.copyRecipient) + ">");
    header("Subject", encodedWords(mail.subject));
    header("Date", date);
    header("Message-ID", withoutLineBreaks(messageId));
    if (!mail.organization.empty())
        header("Organization", encodedWords(mail.organization));
    if (!mail.mailerTag.empty())
        header("X-Mailer", encodedWords(mail.mailerTag));
    const int priority = mail.priority < 3 ? 1 : mail.priority > 3 ? 5 : 3;
    header("X-Priority", std::to_string(priority) + (priority == 1 ? " (Highest)" : priority == 5 ? " (Lowest)" : " (Normal)"));
    header("Importance", priority == 1 ? "High" : priority == 5 ? "Low" : "Normal");
    if (mail.readReceipt)
        header("Disposition-Notification-To", "<" + sender + ">");
    header("MIME-Version", "1.0");

    const std::string mixed = boundary("mixed");
    const std::string alternative = boundary("alt");
    out += "Content-Type: multipart/mixed; boundary=\"" + mixed + "\"\r\n\r\n";
    out += "This is a multi-part message in MIME format.\r\n";
    // An HTML body has its plain alternative, an empty one too, unless the sender wants HTML alone.
    const bool html = !mail.htmlBody.empty();
    const bool plain = !html || !mail.htmlAlone;
    if (plain && html) {
        out += "--" + mixed + "\r\nContent-Type: multipart/alternative; boundary=\"" + alternative + "\"\r\n\r\n";
        out += "--" + alternative + "\r\n" + textPart("text/plain", mail.plainBody);
        out += "--" + alternative + "\r\n" + textPart("text/html", mail.htmlBody);
        out += "--" + alternative + "--\r\n";
    } else if (plain || html) {
        out += "--" + mixed + "\r\n" + textPart(plain ? "text/plain" : "text/html", plain ? mail.plainBody : mail.htmlBody);
    }
    if (mail.zipAttachments && !mail.attachments.empty()) {
        const std::string name = mail.attachments.front().stem().string() + ".zip";
        out += "--" + mixed + "\r\n";
        appendAttachment(out, name, zipOfFiles(mail.attachments), "application/zip");
    } else {
        for (const auto& file : mail.attachments) {
            out += "--" + mixed + "\r\n";
            appendAttachment(out, file.filename().string(), readFileBytes(file), mimeTypeOf(file));
        }
    }
    out += "--" + mixed + "--\r\n";
    return out;
}

std::string mailDate()
{
    static constexpr const char* kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                              "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    const long offset = local.tm_gmtoff / 60;
    char text[64];
    std::snprintf(text, sizeof text, "%s, %02d %s %04d %02d:%02d:%02d %c%02ld%02ld", kDays[local.tm_wday],
                  local.tm_mday, kMonths[local.tm_mon], local.tm_year + 1900, local.tm_hour, local.tm_min,
                  local.tm_sec, offset < 0 ? '-' : '+', std::labs(offset) / 60, std::labs(offset) % 60);
    return text;
}

std::string newMessageId(std::string_view senderAddress)
{
    const auto at = senderAddress.find('@');
    std::string host = at == std::string_view::npos ? "zettelwerk.invalid" : bareAddress(senderAddress.substr(at + 1));
    if (host.empty())
        host = "zettelwerk.invalid";
    std::random_device random;
    const auto ticks = std::chrono::system_clock::now().time_since_epoch().count();
    return "<" + std::to_string(ticks) + "." + std::to_string(random()) + "@" + host + ">";
}

} // namespace zw
