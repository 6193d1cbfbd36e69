#include "books/Journal.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "app/AtomicFile.h"
#include "app/TextFile.h"
#include "app/Version.h"
#include "books/Sha256.h"
#include "core/CodePage.h"
#include "core/RunError.h"
#include "ledger/ReceiptLedger.h"

namespace zw {
namespace {

struct OperationName
{
    JournalOperation operation;
    std::string_view key;
    std::string_view caption;
    ReplayStep step;
};

constexpr std::array kOperations = {
    OperationName{JournalOperation::Filing, "ablage", "Beleg abgelegt", ReplayStep::InsertRow},
    OperationName{JournalOperation::Edit, "bearbeitung", "Eintrag bearbeitet", ReplayStep::ReplaceRow},
    OperationName{JournalOperation::Delete, "loeschung", "Eintrag gelöscht", ReplayStep::RemoveRow},
    OperationName{JournalOperation::DeleteAll, "alles_geloescht", "Gesamte Belegliste gelöscht",
                  ReplayStep::RemoveAll},
    OperationName{JournalOperation::Storno, "storno", "Beleg storniert", ReplayStep::InsertRow},
    OperationName{JournalOperation::CashDifference, "kassendifferenz", "Kassendifferenz gebucht",
                  ReplayStep::InsertRow},
    OperationName{JournalOperation::PrivateWithdrawal, "privatentnahme", "Privatentnahme", ReplayStep::InsertRow},
    OperationName{JournalOperation::PrivateDeposit, "privateinlage", "Privateinlage", ReplayStep::InsertRow},
    OperationName{JournalOperation::Start, "beginn", "Journal begonnen", ReplayStep::ReplaceLedger},
    OperationName{JournalOperation::Restore, "ruecksicherung", "Belegliste aus Datensicherung",
                  ReplayStep::ReplaceLedger},
    OperationName{JournalOperation::OutsideChange, "aussen", "Außerhalb von Zettelwerk geändert",
                  ReplayStep::ReplaceLedger},
    OperationName{JournalOperation::Close, "abschluss", "Tagesabschluss", ReplayStep::None},
};

const OperationName& nameOf(JournalOperation operation)
{
    for (const auto& name : kOperations)
        if (name.operation == operation)
            return name;
    return kOperations.front();
}

constexpr int kFieldCount = 13;

// Escapes are ASCII, so they are made on the UTF-8 text and survive the code page on either side. A TAB byte of
// belege.dat, held in a row as kLiteralTab, has an escape of its own, since Windows-1252 has no such character.
std::string escaped(std::string_view field)
{
    std::string text;
    text.reserve(field.size());
    for (std::size_t i = 0; i < field.size(); ++i) {
        if (field.substr(i).starts_with(kLiteralTab)) {
            text += "\\T";
            i += kLiteralTab.size() - 1;
            continue;
        }
        switch (field[i]) {
        case '\\': text += "\\\\"; break;
        case ';': text += "\\s"; break;
        case '\t': text += "\\t"; break;
        case '\r': text += "\\r"; break;
        case '\n': text += "\\n"; break;
        default: text += field[i];
        }
    }
    return text;
}

std::optional<std::string> unescaped(std::string_view field)
{
    // Most fields are plain ASCII without escapes and are taken as they stand.
    if (std::all_of(field.begin(), field.end(), [](char c) { return c != '\\' && static_cast<unsigned char>(c) < 0x80; }))
        return std::string(field);
    const std::string utf8 = cp1252ToUtf8(field);
    std::string text;
    text.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        if (utf8[i] != '\\') {
            text += utf8[i];
            continue;
        }
        if (++i == utf8.size())
            return std::nullopt;
        switch (utf8[i]) {
        case '\\': text += '\\'; break;
        case 's': text += ';'; break;
        case 't': text += '\t'; break;
        case 'r': text += '\r'; break;
        case 'n': text += '\n'; break;
        case 'T': text += kLiteralTab; break;
        default: return std::nullopt;
        }
    }
    return text;
}

std::optional<std::int64_t> integerOf(std::string_view text)
{
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc() || end != text.data() + text.size() || value < 0)
        return std::nullopt;
    return value;
}

bool isHash(std::string_view text)
{
    return text.size() == 64 && text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

RunError cutOffJournal(const std::filesystem::path& file)
{
    return RunError(75, "Das Änderungsprotokoll " + file.string() +
                            " ist beschädigt: sein letzter Eintrag ist abgeschnitten oder kein Eintrag. Es wird "
                            "nichts daran angehängt; bitte prüfen Sie es mit \"zettelwerk-cli journal verify\".");
}

} // namespace

ReplayStep replayStepOf(JournalOperation operation) { return nameOf(operation).step; }
std::string_view operationKey(JournalOperation operation) { return nameOf(operation).key; }
std::string_view operationCaption(JournalOperation operation) { return nameOf(operation).caption; }

std::optional<JournalOperation> operationOfKey(std::string_view key)
{
    for (const auto& name : kOperations)
        if (name.key == key)
            return name.operation;
    return std::nullopt;
}


std::string journalLine(const JournalEntry& entry)
{
    std::string line;
    auto field = [&line](std::string_view text) {
        line += utf8ToCp1252(escaped(text));
        line += ';';
    };
    field(std::to_string(entry.sequence));
    field(entry.time);
    field(entry.user);
    field(entry.version);
    field(operationKey(entry.operation));
    field(std::to_string(entry.row));
    field(entry.before);
    field(entry.after);
    field(entry.ledgerHash);
    field(entry.document);
    field(entry.documentHash);
    field(entry.previousHash);
    line += entry.hash;
    return line;
}

std::string_view hashedPart(std::string_view line)
{
    const auto lastSeparator = line.rfind(';');
    return lastSeparator == std::string_view::npos ? std::string_view() : line.substr(0, lastSeparator + 1);
}

std::optional<JournalEntry> parseJournalLine(std::string_view line)
{
    std::array<std::string_view, kFieldCount> fields;
    std::size_t count = 0;
    std::size_t start = 0;
    while (true) {
        const auto end = line.find(';', start);
        if (count == kFieldCount)
            return std::nullopt;
        fields[count++] = line.substr(start, end == std::string_view::npos ? end : end - start);
        if (end == std::string_view::npos)
            break;
        start = end + 1;
    }
    if (count != kFieldCount)
        return std::nullopt;
    JournalEntry entry;
    const auto sequence = integerOf(fields[0]);
    const auto operation = operationOfKey(fields[4]);
    const auto row = integerOf(fields[5]);
    auto user = unescaped(fields[2]);
    auto before = unescaped(fields[6]);
    auto after = unescaped(fields[7]);
    auto document = unescaped(fields[9]);
    if (!sequence || !operation || !row || !user || !before || !after || !document || !isHash(fields[8]) ||
        !(fields[10].empty() || isHash(fields[10])) || !isHash(fields[11]) || !isHash(fields[12]))
        return std::nullopt;
    entry.sequence = *sequence;
    entry.time = fields[1];
    entry.user = std::move(*user);
    entry.version = fields[3];
    entry.operation = *operation;
    entry.row = *row;
    entry.before = std::move(*before);
    entry.after = std::move(*after);
    entry.ledgerHash = fields[8];
    entry.document = std::move(*document);
    entry.documentHash = fields[10];
    entry.previousHash = fields[11];
    entry.hash = fields[12];
    return entry;
}

void readJournalLines(const std::filesystem::path& file, const JournalLineConsumer& consume)
{
    std::string pending;
    std::int64_t number = 0;
    readFileInBlocks(file, [&](std::string_view block) {
        // Whole lines are handed on straight from the block; only a line that spans two blocks is copied.
        std::size_t start = 0;
        if (!pending.empty()) {
            const auto end = block.find('\n');
            if (end == std::string_view::npos) {
                pending += block;
                return;
            }
            pending += block.substr(0, end + 1);
            start = end + 1;
            std::string_view line(pending);
            const bool complete = line.size() >= 2 && line[line.size() - 2] == '\r';
            consume(line.substr(0, line.size() - (complete ? 2 : 1)), ++number, complete);
            pending.clear();
        }
        while (start < block.size()) {
            const auto end = block.find('\n', start);
            if (end == std::string_view::npos) {
                pending.assign(block.substr(start));
                return;
            }
            std::string_view line = block.substr(start, end - start);
            const bool complete = !line.empty() && line.back() == '\r';
            consume(complete ? line.substr(0, line.size() - 1) : line, ++number, complete);
            start = end + 1;
        }
    });
    if (!pending.empty())
        consume(pending, ++number, false);
}

std::string currentUserName()
{
    std::vector<char> buffer(4096);
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found != nullptr &&
        found->pw_name != nullptr && *found->pw_name != '\0')
        return found->pw_name;
    if (const char* user = std::getenv("USER"); user != nullptr && *user != '\0')
        return user;
    return "uid " + std::to_string(geteuid());
}

Journal::Journal(std::filesystem::path file, BookClock clock) : m_file(std::move(file)), m_clock(std::move(clock)) {}

bool Journal::exists() const
{
    std::error_code error;
    return std::filesystem::exists(m_file, error);
}

std::optional<JournalEntry> Journal::lastEntry() const
{
    const int fd = ::open(m_file.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        if (errno == ENOENT)
            return std::nullopt;
        throw fileSystemError(errno);
    }
    struct stat status{};
    if (::fstat(fd, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(fd);
        throw cutOffJournal(m_file);
    }
    // Blocks are read from the end backwards until the line before the last one ends.
    std::string tail;
    off_t end = status.st_size;
    constexpr off_t kBlock = 16384;
    bool found = false;
    while (end > 0 && !found) {
        const off_t start = end > kBlock ? end - kBlock : 0;
        std::string block(static_cast<std::size_t>(end - start), '\0');
        if (::pread(fd, block.data(), block.size(), start) != static_cast<ssize_t>(block.size())) {
            ::close(fd);
            throw fileSystemError(errno);
        }
        tail.insert(0, block);
        end = start;
        found = tail.size() > 2 && tail.find('\n') < tail.size() - 1;
    }
    ::close(fd);
    if (tail.empty())
        return std::nullopt;
    if (tail.size() < 2 || tail.compare(tail.size() - 2, 2, "\r\n") != 0)
        throw cutOffJournal(m_file);
    tail.resize(tail.size() - 2);
    const auto lineStart = tail.rfind('\n');
    auto entry = parseJournalLine(std::string_view(tail).substr(lineStart == std::string::npos ? 0 : lineStart + 1));
    if (!entry)
        throw cutOffJournal(m_file);
    return entry;
}

JournalEntry Journal::append(JournalEntry entry)
{
    const auto last = lastEntry();
    entry.sequence = last ? last->sequence + 1 : 1;
    entry.previousHash = last ? last->hash : std::string(kNoHash);
    entry.time = utcTimeText(m_clock());
    entry.user = currentUserName();
    entry.version = versionText();
    entry.hash.clear();
    std::string line = journalLine(entry);
    entry.hash = sha256Hex(line);
    line += entry.hash;
    line += "\r\n";

    const int fd = ::open(m_file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0)
        throw fileSystemError(errno);
    const struct stat before = [fd] {
        struct stat status{};
        ::fstat(fd, &status);
        return status;
    }();
    std::string_view rest(line);
    while (!rest.empty()) {
        const ssize_t written = ::write(fd, rest.data(), rest.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0) {
            const int code = written < 0 ? errno : ENOSPC;
            // A half line would cut the chain for every later entry: it is taken back.
            [[maybe_unused]] const int undone = ::ftruncate(fd, before.st_size);
            ::close(fd);
            throw fileSystemError(code);
        }
        rest.remove_prefix(static_cast<std::size_t>(written));
    }
    if (::fsync(fd) != 0) {
        const int code = errno;
        ::close(fd);
        throw fileSystemError(code);
    }
    ::close(fd);
    // A journal just made needs its name on disk too.
    if (before.st_size == 0) {
        const int folder = ::open(m_file.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (folder >= 0) {
            ::fsync(folder);
            ::close(folder);
        }
    }
    return entry;
}

} // namespace zw
