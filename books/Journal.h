#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "books/BookDate.h"

namespace zw {

// What an entry of the change journal records. The first group changes rows, the second replaces the whole
// ledger by a copy kept in the archive, a close changes no row.
enum class JournalOperation
{
    Filing,            // a receipt filed at the top
    Edit,              // a cell edited in place
    Delete,            // one row deleted
    DeleteAll,         // the whole list deleted
    Storno,            // a counter row filed
    CashDifference,    // the difference of a daily close, filed as a row
    PrivateWithdrawal, // Privatentnahme
    PrivateDeposit,    // Privateinlage
    Start,             // the journal begins beside the ledger as it is
    Restore,           // the ledger came back from a backup
    OutsideChange,     // the ledger was changed outside the program
    Close,             // a daily close
};

// How an operation changes the rows when the journal is replayed.
enum class ReplayStep { InsertRow, ReplaceRow, RemoveRow, RemoveAll, ReplaceLedger, None };
ReplayStep replayStepOf(JournalOperation operation);

std::string_view operationKey(JournalOperation operation);   // the word on disk
std::string_view operationCaption(JournalOperation operation); // what a person reads
std::optional<JournalOperation> operationOfKey(std::string_view key);

// One entry. Row texts are the ledger's tab-joined rows in UTF-8; `row` counts from 1 as the grid does, 0 for
// none. `document` is a file below the data folder (an archived receipt, cash report or ledger copy) with its
// hash. Each entry's hash covers all its fields and the previous entry's hash, so changing, inserting,
// reordering or removing an entry breaks the chain.
struct JournalEntry
{
    std::int64_t sequence = 0;
    std::string time; // UTC, JJJJ-MM-TTTHH:MM:SSZ
    std::string user;
    std::string version;
    JournalOperation operation = JournalOperation::Filing;
    std::int64_t row = 0;
    std::string before;
    std::string after;
    std::string ledgerHash; // SHA-256 of belege.dat after the change
    std::string document;
    std::string documentHash;
    std::string previousHash;
    std::string hash;
};

// One line of journal.dat without its CR LF (Windows-1252, fields joined by ";", the separator, backslash and
// line ends escaped), and the part of it the entry's hash covers.
std::string journalLine(const JournalEntry& entry);
std::string_view hashedPart(std::string_view line);
// Nothing for a line that is no entry.
std::optional<JournalEntry> parseJournalLine(std::string_view line);

// Hands every line of a journal file to `consume` with its number (from 1) as it is read; `complete` is false
// for a last line without its CR LF, a journal cut off. Throws RunError 53 for a missing file.
using JournalLineConsumer = std::function<void(std::string_view line, std::int64_t number, bool complete)>;
void readJournalLines(const std::filesystem::path& file, const JournalLineConsumer& consume);

// The login name of the user running the program.
std::string currentUserName();

// daten/journal.dat: appended to, never rewritten. Callers hold belege.dat's lock, so the entries of two
// programs on one folder follow each other.
class Journal
{
public:
    explicit Journal(std::filesystem::path file, BookClock clock = systemNow);

    const std::filesystem::path& file() const { return m_file; }
    bool exists() const;

    // The newest entry, read from the file's end. Nothing for an empty or missing journal; RunError for a journal
    // whose end is cut off or no entry, since nothing may be chained to it.
    std::optional<JournalEntry> lastEntry() const;

    // Fills sequence, time, user, version and the chain, writes the line with O_APPEND and fsync and returns the
    // entry as written. Throws RunError (76, 70, 61, 75) and then nothing was added.
    JournalEntry append(JournalEntry entry);

private:
    std::filesystem::path m_file;
    BookClock m_clock;
};

} // namespace zw
