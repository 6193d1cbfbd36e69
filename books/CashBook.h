#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "books/Archive.h"
#include "books/BookDate.h"
#include "books/DailyClose.h"
#include "books/Journal.h"
#include "app/FileLock.h"
#include "ledger/ReceiptLedger.h"

namespace zw {

class DocumentWriter;
class ProgramPaths;

// One change of the ledger as the journal records it.
struct LedgerEdit
{
    JournalOperation operation = JournalOperation::Filing;
    std::int64_t row = 0; // from 1
    std::string before;
    std::string after;
    std::optional<ArchivedFile> document;
};

// The counter row of a Storno: the row of receipt `number` with its amounts negated, the next number, today's
// date and "Storno zu Beleg NUMMER: <purpose>". Throws RunError with a German message for a number that does not
// exist, a row that is itself a Storno, and one already reversed.
std::string stornoRow(const ReceiptLedger& ledger, std::string_view number, const BookDate& today);
// The ledger's highest receipt number plus one ("1" for a ledger without numbers).
std::string nextReceiptNumber(const ReceiptLedger& ledger);
// A row of the cash book's own kinds (Kassendifferenz, Privatentnahme, Privateinlage): a positive amount is a
// taking, a negative one a payout.
std::string cashRow(const BookDate& date, std::string_view number, Cents amount, std::string_view kind,
                    std::string_view purpose, std::string_view currency);

// The messages of closed days.
std::string closedRowMessage(const BookDate& day);
std::string closedFilingMessage(const BookDate& day);
std::string closedFilingQuestion(const BookDate& day, const BookDate& today);

// The cash book beside one program folder: the journal of belege.dat, the archive and the closes. Every change
// goes through `change`, which runs under belege.dat's lock: it first starts the journal beside the ledger as it
// stands or journals a change made outside the program, then changes the ledger, journals it and saves it.
class CashBook
{
public:
    explicit CashBook(const ProgramPaths& paths, BookClock clock = systemNow);

    const ProgramPaths& paths() const { return m_paths; }
    Journal& journal() { return m_journal; }
    BookDate today() const { return localDateOf(m_clock()); }

    // Under belege.dat's lock with the file's bytes as they are (nothing for a missing file): starts the journal
    // (its first entry keeps a copy of an existing ledger in the archive) or journals the file as changed
    // outside when its hash is not the journal's. True in the second case, for the caller to tell the user.
    bool catchUp(const std::optional<std::string>& ledgerOnDisk);
    // The same when only the file's hash is known (nothing for a missing file); the bytes are read only for
    // the archive copy of a start or of a change made outside.
    bool catchUpWithHash(const std::optional<std::string>& ledgerHash);
    // At the program's start: the same under belege.dat's own lock, reading the file.
    bool catchUpNow();
    // Journals one change; `newLedgerBytes` is what replaces belege.dat next.
    JournalEntry record(const LedgerEdit& edit, std::string_view newLedgerBytes);
    // The same with the new file's hash, made while the file was written.
    JournalEntry recordWithHash(const LedgerEdit& edit, const std::string& newLedgerHash);

    struct Outcome
    {
        std::optional<JournalEntry> entry; // nothing when the change was refused
        bool changedOutside = false;
    };
    using Change = std::function<std::optional<LedgerEdit>(ReceiptLedger& ledger)>;
    // Reads belege.dat under its lock into `ledger`, catches up, runs `change`, journals and saves.
    Outcome change(ReceiptLedger& ledger, const Change& change);

    // The newest close, found by reading the journal from where the last look ended.
    std::optional<CloseRecord> lastClose();
    // The row's day is closed: its message, else nothing.
    std::optional<std::string> refusalForRow(std::string_view rowText);

    // Files a row on top without holding the ledger (the command line's filing): under the lock the row's line and
    // then the file's bytes go to the new file, hashed as they are written, and the entry is journaled before the
    // new file replaces the old. `archive` makes the receipt's archive copy once the filing is allowed.
    Outcome fileOnTop(const std::string& rowText, const std::function<std::optional<ArchivedFile>()>& archive);

    // `ledger storno NUMMER`.
    Outcome storno(ReceiptLedger& ledger, std::string_view number);
    // Privatentnahme (a payout) and Privateinlage (a taking) on `day`.
    Outcome privateRow(ReceiptLedger& ledger, JournalOperation operation, const BookDate& day, Cents amount,
                       std::string_view note);

    // The daily close of `day` with the counted cash: refuses a day in the future and a closed one, and a
    // difference without a note; books the difference as a row "Kassendifferenz", writes the Kassenbericht into
    // the archive and journals the close with its hash.
    struct CloseRequest
    {
        BookDate day;
        Cents counted = 0;
        std::optional<CountSheet> sheet;
        std::string note;
        std::vector<std::string> firm;
    };
    struct CloseResult
    {
        CloseRecord record;
        ArchivedFile report;
        JournalEntry entry;
        bool changedOutside = false;
    };
    CloseResult close(ReceiptLedger& ledger, const CloseRequest& request, const DocumentWriter& writer);
    // Why `day` cannot be closed (a day in the future, a day closed already), or nothing.
    std::optional<std::string> closeRefusal(const BookDate& day);
    // The figures a close of `day` would show now (the window fills them before the count).
    CloseFigures preview(const ReceiptLedger& ledger, const BookDate& day);
    // The Kassenbericht of a closed day made again from its close entry; RunError for a day not closed.
    std::string reportAgain(const BookDate& day, const std::vector<std::string>& firm, const DocumentWriter& writer);

private:
    std::string ledgerHashOnDisk(const std::optional<std::string>& bytes) const;

    const ProgramPaths& m_paths;
    BookClock m_clock;
    Journal m_journal;
    // belege.dat as this cash book last saved it: while the file keeps that stamp its hash is known, so a
    // change need not read the ledger again to see whether someone else changed it.
    FileStamp m_savedStamp;
    std::string m_savedHash;
    // What the journal held when it was last read through for closes.
    std::uintmax_t m_scannedSize = 0;
    std::optional<CloseRecord> m_lastClose;
};

// The firm's lines for the report: the active issuer's text (aussteller.dat), without empty lines.
std::vector<std::string> firmLines(const ProgramPaths& paths);

} // namespace zw
