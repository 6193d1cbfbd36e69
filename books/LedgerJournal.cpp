#include "books/LedgerJournal.h"

#include "app/FileLock.h"
#include "app/ProgramPaths.h"
#include "core/RunError.h"

#include <utility>

namespace zw {

LedgerJournal::LedgerJournal(CashBook& book, ReceiptLedger& ledger) : m_book(book)
{
    ledger.addListener([this, &ledger](const LedgerChange& change, LedgerPhase phase) { heard(ledger, change, phase); });
}

void LedgerJournal::labelNextFiling(JournalOperation operation, std::optional<ArchivedFile> document)
{
    m_nextFiling = operation;
    m_nextDocument = std::move(document);
}

bool LedgerJournal::takeOutsideChange() { return std::exchange(m_outside, false); }

void LedgerJournal::begin(const ReceiptLedger& ledger)
{
    m_edits.clear();
    m_rowsBefore = ledger.rowCount();
    const auto file = m_book.paths().dataFile("belege.dat");
    const FileStamp stamp = stampOf(file);
    std::optional<std::string> hash;
    if (m_writtenHash && !m_reloaded && stamp == ledger.diskStamp() && ledger.diskStamp() != m_stampBeforeWrite)
        hash = m_writtenHash;
    else if (stamp.exists)
        hash = sha256OfFile(file);
    m_writtenHash.reset();
    m_reloaded = false;
    if (m_book.catchUpWithHash(hash))
        m_outside = true;
    m_hash.finishHex(); // a fresh start for the new file's bytes
    m_armed = true;
}

void LedgerJournal::piece(std::string_view bytes)
{
    if (m_armed)
        m_hash.update(bytes);
}

void LedgerJournal::end(const ReceiptLedger& ledger)
{
    if (!m_armed)
        return;
    m_armed = false;
    const std::string hash = m_hash.finishHex();
    // The whole list deleted row by row is one entry, as the user gave one command.
    if (m_edits.size() > 1 && ledger.rowCount() == 0 && m_rowsBefore == m_edits.size()) {
        m_edits.clear();
        m_edits.push_back({JournalOperation::DeleteAll, 0, {}, {}, std::nullopt});
    }
    for (const auto& edit : m_edits)
        m_book.recordWithHash(edit, hash);
    m_edits.clear();
    m_writtenHash = hash;
    m_stampBeforeWrite = ledger.diskStamp();
}

void LedgerJournal::heard(const ReceiptLedger& ledger, const LedgerChange& change, LedgerPhase phase)
{
    if (change.kind == LedgerChange::Kind::Reset)
        m_reloaded = true;
    if (!m_armed)
        return;
    const auto rowNumber = static_cast<std::int64_t>(change.row + 1);
    switch (change.kind) {
    case LedgerChange::Kind::Cell:
        if (phase == LedgerPhase::Before) {
            m_editing = ledger.rowText(change.row);
            if (const auto refusal = m_book.refusalForRow(m_editing))
                throw RunError(5, *refusal);
        } else {
            m_edits.push_back({JournalOperation::Edit, rowNumber, m_editing, std::string(ledger.rowText(change.row)),
                               std::nullopt});
        }
        break;
    case LedgerChange::Kind::Remove:
        if (phase == LedgerPhase::Before) {
            m_removing.clear();
            for (std::size_t row = change.row; row < change.row + change.count && row < ledger.rowCount(); ++row) {
                m_removing.emplace_back(ledger.rowText(row));
                if (const auto refusal = m_book.refusalForRow(m_removing.back()))
                    throw RunError(5, *refusal);
            }
        } else {
            for (auto& text : m_removing)
                m_edits.push_back({JournalOperation::Delete, rowNumber, std::move(text), {}, std::nullopt});
            m_removing.clear();
        }
        break;
    case LedgerChange::Kind::Insert:
        if (phase == LedgerPhase::After) {
            for (std::size_t row = change.row; row < change.row + std::max<std::size_t>(change.count, 1); ++row)
                m_edits.push_back({std::exchange(m_nextFiling, JournalOperation::Filing),
                                   static_cast<std::int64_t>(row + 1), {}, std::string(ledger.rowText(row)),
                                   std::exchange(m_nextDocument, std::nullopt)});
        }
        break;
    case LedgerChange::Kind::Reset:
    case LedgerChange::Kind::Columns:
        break;
    }
}

} // namespace zw
