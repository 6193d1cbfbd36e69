// libFuzzer target over composeMessage with hostile field text: the input is split at NUL bytes into sender name,
// subject, organisation, recipient and an attachment name. Nothing may crash or run away, and no field may start
// a header line of its own.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>
#include <vector>

#include "mail/MailMessage.h"

namespace fs = std::filesystem;

namespace {

const fs::path& workFolder()
{
    static const fs::path folder = [] {
        fs::path made = fs::temp_directory_path() / ("zw-mail-fuzz-" + std::to_string(::getpid()));
        fs::create_directories(made);
        return made;
    }();
    return folder;
}

std::vector<std::string> fields(const std::uint8_t* data, std::size_t size)
{
    std::vector<std::string> parts(1);
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == 0 && parts.size() < 5)
            parts.emplace_back();
        else
            parts.back() += static_cast<char>(data[i]);
    }
    parts.resize(5);
    return parts;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto parts = fields(data, size);
    zw::MailContent mail;
    mail.senderName = parts[0];
    mail.subject = parts[1];
    mail.organization = parts[2];
    mail.recipient = parts[3];
    mail.senderAddress = "kasse@example.org";
    mail.plainBody = "Text";
    // A file name holds neither "/" nor NUL; everything else may come.
    std::string name = parts[4];
    for (char& c : name) {
        if (c == '/' || c == '\0')
            c = '_';
    }
    if (!name.empty() && name != "." && name != ".." && name.size() < 200) {
        const fs::path attachment = workFolder() / name;
        std::ofstream(attachment, std::ios::binary | std::ios::trunc) << "Bild";
        mail.attachments.push_back(attachment);
    }
    const std::string message = zw::composeMessage(mail, "Tue, 24 Nov 2026 17:00:00 +0100", "<1@example.org>");
    for (const auto& file : mail.attachments)
        fs::remove(file);

    // Every line ends in CR LF, and every header line is a known header or a folded continuation.
    std::size_t start = 0;
    bool inHeader = true;
    while (start < message.size()) {
        const std::size_t end = message.find("\r\n", start);
        if (end == std::string::npos || message.find_first_of("\r\n", start) != end)
            std::abort(); // a bare CR or LF
        const std::string line = message.substr(start, end - start);
        if (line.empty())
            inHeader = false;
        if (inHeader && line[0] != ' ' && line.find(':') == std::string::npos)
            std::abort();
        start = end + 2;
    }
    return 0;
}
