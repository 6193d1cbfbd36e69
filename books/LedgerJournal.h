#pragma once

#include <optional>
#include <string>
#include <vector>

#include "books/CashBook.h"
#include "books/Sha256.h"
#include "app/FileLock.h"
#include "ledger/LedgerWatcher.h"

namespace zw {

// The journal of a ledger that the window or the command line changes: it watches the ledger's changes (which row,
// its text before and after) and belege.dat's writes under the file's lock, and journals each change before the new
// file replaces the old. Rows of closed days are refused before they change.
class LedgerJournal : public LedgerWatcher
{
public:
    // Listens to `ledger` from now on; the ledger's store calls the watcher's three steps.
    LedgerJournal(CashBook& book, ReceiptLedger& ledger);

    // The next row filed is of this kind (Storno, Privatentnahme, ...) and has this archived document; both are
    // used once.
    void labelNextFiling(JournalOperation operation, std::optional<ArchivedFile> document = std::nullopt);
    // True once after a change found belege.dat changed outside the program, for the window to tell the user.
    bool takeOutsideChange();

    void begin(const ReceiptLedger& ledger) override;
    void piece(std::string_view bytes) override;
    void end(const ReceiptLedger& ledger) override;

private:
    void heard(const ReceiptLedger& ledger, const LedgerChange& change, LedgerPhase phase);

    CashBook& m_book;
    Sha256 m_hash;
    bool m_armed = false;
    bool m_outside = false;
    std::size_t m_rowsBefore = 0;
    std::vector<LedgerEdit> m_edits;
    // The hash of the file this journal last saw written, and the ledger's stamp before that write: while the
    // ledger holds the written file and read nothing since, the file need not be read to be known.
    std::optional<std::string> m_writtenHash;
    FileStamp m_stampBeforeWrite;
    bool m_reloaded = false;
    std::vector<std::string> m_removing; // texts of rows about to go
    std::string m_editing;               // a cell's row before the edit
    JournalOperation m_nextFiling = JournalOperation::Filing;
    std::optional<ArchivedFile> m_nextDocument;
};

} // namespace zw
