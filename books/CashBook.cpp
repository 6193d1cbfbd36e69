#include "books/CashBook.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

#include "app/AtomicFile.h"
#include "app/FileLock.h"
#include "app/ProgramPaths.h"
#include "app/TextFile.h"
#include <functional>
#include "books/PrintedPage.h"
#include "books/Sha256.h"
#include "core/RunError.h"
#include "ledger/LedgerStore.h"

namespace zw {
namespace {

constexpr std::string_view kStornoPrefix = "Storno zu Beleg ";

// Refusals of the cash book: the user asked for something the books do not allow.
RunError refused(std::string text) { return RunError(5, std::move(text)); }

std::string negated(std::string_view amount)
{
    if (amount.empty())
        return {};
    if (amount.front() == '-')
        return std::string(amount.substr(1));
    return "-" + std::string(amount);
}

std::string joinRow(const std::vector<std::string>& cells)
{
    std::string row;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (i > 0)
            row += '\t';
        row += cells[i];
    }
    return row;
}

std::vector<std::string> cellsOf(const ReceiptLedger& ledger, std::size_t row)
{
    std::vector<std::string> cells;
    for (int column = 0; column < kLedgerColumnCount; ++column)
        cells.emplace_back(ledger.cell(row, column));
    return cells;
}

std::optional<std::int64_t> receiptNumberValue(std::string_view text)
{
    if (text.empty() || text.size() > 15 || text.find_first_not_of("0123456789") != std::string_view::npos)
        return std::nullopt;
    return std::stoll(std::string(text));
}

std::filesystem::path ledgerFile(const ProgramPaths& paths) { return paths.dataFile("belege.dat"); }

} // namespace

std::string nextReceiptNumber(const ReceiptLedger& ledger)
{
    std::int64_t highest = 0;
    for (std::size_t row = 0; row < ledger.rowCount(); ++row)
        if (const auto number = receiptNumberValue(ledger.cell(row, LedgerColumn::belegnr)))
            highest = std::max(highest, *number);
    return std::to_string(highest + 1);
}

std::string stornoRow(const ReceiptLedger& ledger, std::string_view number, const BookDate& today)
{
    std::optional<std::size_t> original;
    const std::string mark = std::string(kStornoPrefix) + std::string(number) + ":";
    for (std::size_t row = 0; row < ledger.rowCount(); ++row) {
        if (ledger.cell(row, LedgerColumn::von).starts_with(mark))
            throw refused("Der Beleg " + std::string(number) + " ist bereits storniert (Beleg " +
                          std::string(ledger.cell(row, LedgerColumn::belegnr)) + ").");
        if (!original && ledger.cell(row, LedgerColumn::belegnr) == number)
            original = row;
    }
    if (!original)
        throw refused("Einen Beleg mit der Nummer " + std::string(number) + " gibt es in der Belegliste nicht.");
    if (ledger.cell(*original, LedgerColumn::von).starts_with(kStornoPrefix))
        throw refused("Der Beleg " + std::string(number) + " ist selbst ein Storno und kann nicht storniert werden.");
    auto cells = cellsOf(ledger, *original);
    auto at = [&cells](LedgerColumn column) -> std::string& { return cells[static_cast<std::size_t>(columnIndex(column))]; };
    at(LedgerColumn::datum) = today.german();
    at(LedgerColumn::belegnr) = nextReceiptNumber(ledger);
    at(LedgerColumn::einnahme) = negated(at(LedgerColumn::einnahme));
    // The expense cell is "-" and the gross amount; the counter row holds "-" and the negated amount, as filing
    // a receipt of that negative amount would.
    if (!at(LedgerColumn::ausgabe).empty()) {
        std::string_view gross = at(LedgerColumn::ausgabe);
        if (gross.front() == '-')
            gross.remove_prefix(1);
        at(LedgerColumn::ausgabe) = "-" + negated(gross);
    }
    at(LedgerColumn::netto) = negated(at(LedgerColumn::netto));
    at(LedgerColumn::anteil) = negated(at(LedgerColumn::anteil));
    at(LedgerColumn::von) = mark + " " + at(LedgerColumn::von);
    return joinRow(cells);
}

std::string cashRow(const BookDate& date, std::string_view number, Cents amount, std::string_view kind,
                    std::string_view purpose, std::string_view currency)
{
    std::vector<std::string> cells(kLedgerColumnCount);
    auto at = [&cells](LedgerColumn column) -> std::string& { return cells[static_cast<std::size_t>(columnIndex(column))]; };
    at(LedgerColumn::datum) = date.german();
    at(LedgerColumn::belegnr) = number;
    const Cents magnitude = amount < 0 ? -amount : amount;
    if (amount >= 0)
        at(LedgerColumn::einnahme) = centsText(magnitude);
    else
        at(LedgerColumn::ausgabe) = "-" + centsText(magnitude);
    at(LedgerColumn::waehrung) = currency;
    at(LedgerColumn::mwst) = "0";
    at(LedgerColumn::netto) = centsText(magnitude);
    at(LedgerColumn::anteil) = "0,00";
    // A typed note becomes one cell: its separators and line breaks would split the ledger's row.
    std::string cell(purpose);
    for (char& c : cell)
        c = c == ';' ? ',' : c == '\r' || c == '\n' || c == '\t' ? ' ' : c;
    at(LedgerColumn::von) = cell;
    at(LedgerColumn::bezeichnung) = kind;
    return joinRow(cells);
}

std::string closedRowMessage(const BookDate& day)
{
    return "Der " + day.german() +
           " ist abgeschlossen: Einträge abgeschlossener Tage können nicht mehr geändert oder gelöscht werden. "
           "Bitte stornieren Sie den Beleg stattdessen (\"Beleg stornieren\").";
}

std::string closedFilingMessage(const BookDate& day)
{
    return "Der " + day.german() + " ist abgeschlossen; auf diesen Tag kann kein Beleg mehr abgelegt werden.";
}

std::string closedFilingQuestion(const BookDate& day, const BookDate& today)
{
    return closedFilingMessage(day) + "\r\rSoll der Beleg mit dem heutigen Datum " + today.german() + " abgelegt werden?";
}

CashBook::CashBook(const ProgramPaths& paths, BookClock clock)
    : m_paths(paths), m_clock(std::move(clock)), m_journal(paths.dataFile("journal.dat"), m_clock)
{
}

std::string CashBook::ledgerHashOnDisk(const std::optional<std::string>& bytes) const
{
    return sha256Hex(bytes ? *bytes : std::string());
}

bool CashBook::catchUp(const std::optional<std::string>& ledgerOnDisk)
{
    return catchUpWithHash(ledgerOnDisk ? std::optional<std::string>(sha256Hex(*ledgerOnDisk)) : std::nullopt);
}

bool CashBook::catchUpWithHash(const std::optional<std::string>& ledgerHash)
{
    const auto last = m_journal.lastEntry();
    const std::string hash = ledgerHash.value_or(sha256Hex(""));
    if (last && last->ledgerHash == hash)
        return false;
    LedgerEdit edit;
    edit.operation = last ? JournalOperation::OutsideChange : JournalOperation::Start;
    if (last) {
        edit.before = "SHA-256 vorher " + last->ledgerHash;
        edit.after = "SHA-256 nachher " + hash;
    }
    // The ledger as it stands goes to the archive, so the journal can be replayed from it.
    std::string bytes;
    if (ledgerHash) {
        bytes = readFileBytes(ledgerFile(m_paths));
        const BookDate day = today();
        const std::string stem = (last ? "belege-aussen-" : "belege-beginn-") + day.iso();
        edit.document = archiveFile(m_paths, day.year, stem, ".dat", bytes);
        if (edit.document->hash != hash)
            throw RunError(75, "Die Belegliste hat sich während des Lesens geändert; bitte versuchen Sie es noch einmal.");
    }
    record(edit, bytes);
    return last.has_value();
}

bool CashBook::catchUpNow()
{
    const auto file = ledgerFile(m_paths);
    FileLock lock(file);
    const FileStamp stamp = stampOf(file);
    return catchUpWithHash(stamp.exists ? std::optional<std::string>(sha256OfFile(file)) : std::nullopt);
}

JournalEntry CashBook::record(const LedgerEdit& edit, std::string_view newLedgerBytes)
{
    return recordWithHash(edit, sha256Hex(newLedgerBytes));
}

JournalEntry CashBook::recordWithHash(const LedgerEdit& edit, const std::string& newLedgerHash)
{
    JournalEntry entry;
    entry.operation = edit.operation;
    entry.row = edit.row;
    entry.before = edit.before;
    entry.after = edit.after;
    entry.ledgerHash = newLedgerHash;
    if (edit.document) {
        entry.document = edit.document->name;
        entry.documentHash = edit.document->hash;
    }
    return m_journal.append(std::move(entry));
}

CashBook::Outcome CashBook::change(ReceiptLedger& ledger, const Change& change)
{
    Outcome outcome;
    const auto file = ledgerFile(m_paths);
    std::string savedHash;
    const bool saved = updateLedger(ledger, m_paths, [&](ReceiptLedger& current, const std::vector<LedgerRow>*) {
        std::optional<std::string> hashOnDisk;
        const FileStamp stamp = stampOf(file);
        if (stamp.exists)
            hashOnDisk = stamp == m_savedStamp ? m_savedHash : sha256OfFile(file);
        outcome.changedOutside = catchUpWithHash(hashOnDisk);
        auto edit = change(current);
        if (!edit)
            return false;
        outcome.entry = record(*edit, ledgerBytes(current));
        savedHash = outcome.entry->ledgerHash;
        return true;
    });
    if (saved) {
        m_savedStamp = ledger.diskStamp();
        m_savedHash = savedHash;
    }
    return outcome;
}

CashBook::Outcome CashBook::fileOnTop(const std::string& rowText,
                                      const std::function<std::optional<ArchivedFile>()>& archive)
{
    const auto file = ledgerFile(m_paths);
    if (isUnreadable(file))
        throw unreadableError(file);
    Outcome outcome;
    FileLock lock(file);
    if (const auto day = parseGermanDate(rowText.substr(0, rowText.find('\t'))))
        if (const auto close = lastClose(); close && *day <= close->to)
            throw refused(closedFilingMessage(*day));
    const FileStamp stamp = stampOf(file);
    std::optional<std::string> oldHash;
    if (stamp.exists)
        oldHash = stamp == m_savedStamp ? m_savedHash : sha256OfFile(file);
    outcome.changedOutside = catchUpWithHash(oldHash);
    auto document = archive();
    std::string line;
    appendLedgerLine(line, rowText);
    Sha256 newHash;
    writeFileAtomicallyInPieces(file, [&](const std::function<void(std::string_view)>& write) {
        write(line);
        newHash.update(line);
        if (stamp.exists) {
            try {
                readFileInBlocks(file, [&](std::string_view block) {
                    write(block);
                    newHash.update(block);
                });
            } catch (const RunError&) {
                throw unreadableError(file);
            }
        }
        outcome.entry = recordWithHash({JournalOperation::Filing, 1, {}, rowText, std::move(document)}, newHash.finishHex());
    });
    m_savedStamp = stampOf(file);
    m_savedHash = outcome.entry->ledgerHash;
    return outcome;
}

std::optional<CloseRecord> CashBook::lastClose()
{
    const int fd = ::open(m_journal.file().c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return std::nullopt;
    const off_t size = ::lseek(fd, 0, SEEK_END);
    if (size < 0 || static_cast<std::uintmax_t>(size) < m_scannedSize) {
        // A journal that shrank is not the one read before: read it from its start.
        m_scannedSize = 0;
        m_lastClose.reset();
    }
    std::string rest;
    std::uintmax_t at = m_scannedSize;
    std::string block(1 << 16, '\0');
    while (true) {
        const ssize_t got = ::pread(fd, block.data(), block.size(), static_cast<off_t>(at));
        if (got <= 0)
            break;
        at += static_cast<std::uintmax_t>(got);
        rest.append(block.data(), static_cast<std::size_t>(got));
        std::size_t start = 0;
        for (auto end = rest.find("\r\n"); end != std::string::npos; end = rest.find("\r\n", start)) {
            const std::string_view line = std::string_view(rest).substr(start, end - start);
            if (line.find(";abschluss;") != std::string_view::npos) {
                const auto entry = parseJournalLine(line);
                if (entry && entry->operation == JournalOperation::Close)
                    if (auto closeRecord = parseCloseRecord(entry->after))
                        m_lastClose = closeRecord;
            }
            start = end + 2;
            m_scannedSize += line.size() + 2;
        }
        rest.erase(0, start);
    }
    ::close(fd);
    return m_lastClose;
}

std::optional<std::string> CashBook::refusalForRow(std::string_view rowText)
{
    const auto close = lastClose();
    if (!close)
        return std::nullopt;
    const auto date = parseGermanDate(rowText.substr(0, rowText.find('\t')));
    if (!date || *date > close->to)
        return std::nullopt;
    return closedRowMessage(*date);
}

CashBook::Outcome CashBook::storno(ReceiptLedger& ledger, std::string_view number)
{
    const BookDate day = today();
    // The counter row is dated today, so today must still be open.
    if (const auto close = lastClose(); close && day <= close->to)
        throw refused(closedFilingMessage(day));
    return change(ledger, [&](ReceiptLedger& current) -> std::optional<LedgerEdit> {
        LedgerEdit edit{JournalOperation::Storno, 1, {}, stornoRow(current, number, day), std::nullopt};
        current.insertRow(0, edit.after);
        current.setCurrentRow(0);
        return edit;
    });
}

CashBook::Outcome CashBook::privateRow(ReceiptLedger& ledger, JournalOperation operation, const BookDate& day,
                                       Cents amount, std::string_view note)
{
    if (amount <= 0)
        throw refused("Bitte geben Sie einen Betrag über 0 ein.");
    if (const auto close = lastClose(); close && day <= close->to)
        throw refused(closedRowMessage(day));
    const bool withdrawal = operation == JournalOperation::PrivateWithdrawal;
    const std::string kind = withdrawal ? "Privatentnahme" : "Privateinlage";
    return change(ledger, [&](ReceiptLedger& current) -> std::optional<LedgerEdit> {
        LedgerEdit edit{operation, 1, {},
                        cashRow(day, nextReceiptNumber(current), withdrawal ? -amount : amount, kind, note, "EUR"),
                        std::nullopt};
        current.insertRow(0, edit.after);
        current.setCurrentRow(0);
        return edit;
    });
}

CloseFigures CashBook::preview(const ReceiptLedger& ledger, const BookDate& day)
{
    return closeFigures(ledger, lastClose(), day);
}

std::optional<std::string> CashBook::closeRefusal(const BookDate& day)
{
    if (day > today())
        return "Der " + day.german() + " liegt in der Zukunft und kann noch nicht abgeschlossen werden.";
    if (const auto close = lastClose(); close && day <= close->to)
        return "Der " + day.german() + " ist bereits abgeschlossen (Abschluss bis " + close->to.german() + ").";
    return std::nullopt;
}

CashBook::CloseResult CashBook::close(ReceiptLedger& ledger, const CloseRequest& request,
                                      const DocumentWriter& writer)
{
    if (auto refusal = closeRefusal(request.day))
        throw refused(std::move(*refusal));
    if (request.sheet && request.sheet->total() != request.counted)
        throw refused("Der gezählte Betrag stimmt nicht mit der Summe des Zählprotokolls überein.");
    CloseResult result;
    // The difference's row and the close are two entries, both under one lock of the ledger.
    const auto outcome = change(ledger, [&](ReceiptLedger& current) -> std::optional<LedgerEdit> {
        auto figures = closeFigures(current, lastClose(), request.day);
        CloseRecord& summary = figures.record;
        summary.counted = request.counted;
        summary.sheet = request.sheet;
        summary.note = request.note;
        const Cents difference = summary.difference();
        if (difference != 0 && request.note.empty())
            throw refused("Der gezählte Kassenbestand weicht um " + centsText(difference) +
                          " EUR vom Kassensoll ab. Bitte begründen Sie die Differenz in einer Notiz.");
        if (difference != 0) {
            const LedgerEdit booking{JournalOperation::CashDifference, 1, {},
                                     cashRow(request.day, nextReceiptNumber(current), difference, "Kassendifferenz",
                                             request.note, summary.currency),
                                     std::nullopt};
            current.insertRow(0, booking.after);
            // The figures stay those before the count; the row of the difference is listed with the others.
            for (auto& row : figures.rows)
                ++row;
            figures.rows.insert(figures.rows.begin(), 0);
            record(booking, ledgerBytes(current));
        }
        const auto last = m_journal.lastEntry();
        summary.journalHash = last ? last->hash : std::string(kNoHash);
        std::vector<std::string> rows;
        for (std::size_t row : figures.rows)
            rows.emplace_back(current.rowText(row));
        const std::string pdf = writer.pagePdf(cashReportPage(summary, rows, request.firm));
        result.report = archiveFile(m_paths, request.day.year, "kassenbericht-" + request.day.iso(), ".pdf", pdf);
        result.record = summary;
        return LedgerEdit{JournalOperation::Close, 0, {}, closeRecordText(summary), result.report};
    });
    result.entry = *outcome.entry;
    result.changedOutside = outcome.changedOutside;
    return result;
}

std::string CashBook::reportAgain(const BookDate& day, const std::vector<std::string>& firm,
                                  const DocumentWriter& writer)
{
    std::optional<CloseRecord> found;
    if (m_journal.exists()) {
        readJournalLines(m_journal.file(), [&](std::string_view line, std::int64_t, bool) {
            if (line.find(";abschluss;") == std::string_view::npos)
                return;
            const auto entry = parseJournalLine(line);
            if (!entry || entry->operation != JournalOperation::Close)
                return;
            if (auto summary = parseCloseRecord(entry->after); summary && summary->to == day)
                found = summary;
        });
    }
    if (!found)
        throw refused("Für den " + day.german() + " gibt es keinen Tagesabschluss.");
    ReceiptLedger ledger;
    try {
        loadLedger(ledger, m_paths);
    } catch (const RunError& error) {
        if (error.number() != RunError::fileNotFound().number())
            throw;
    }
    std::vector<std::string> rows;
    for (std::size_t row = 0; row < ledger.rowCount(); ++row) {
        const auto date = parseGermanDate(ledger.cell(row, LedgerColumn::datum));
        if (date && *date >= found->from && *date <= found->to)
            rows.emplace_back(ledger.rowText(row));
    }
    return writer.pagePdf(cashReportPage(*found, rows, firm));
}

std::vector<std::string> firmLines(const ProgramPaths& paths)
{
    std::vector<std::string> lines;
    try {
        for (auto& line : readTextLines(paths.dataFile("aussteller.dat")))
            if (line.find_first_not_of(' ') != std::string::npos)
                lines.push_back(std::move(line));
    } catch (const RunError&) {
        // A report without the firm's lines is still a report; the issuer is filled in by hand then.
    }
    if (lines.size() > 6)
        lines.resize(6);
    return lines;
}

} // namespace zw
