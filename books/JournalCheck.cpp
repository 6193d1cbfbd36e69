#include "books/JournalCheck.h"

#include <algorithm>
#include <deque>
#include <ostream>

#include "app/ProgramPaths.h"
#include "app/TextFile.h"
#include "books/Archive.h"
#include "books/DailyClose.h"
#include "books/Sha256.h"
#include "core/RunError.h"
#include "ledger/ReceiptLedger.h"

namespace zw {
namespace {

std::string asFileText(std::string_view row)
{
    std::string text(row);
    std::replace(text.begin(), text.end(), '\t', ';');
    return text;
}

std::string entryName(std::int64_t number) { return "Eintrag " + std::to_string(number) + ": "; }

std::optional<std::string> readOptional(const std::filesystem::path& file)
{
    try {
        return readFileBytes(file);
    } catch (const RunError& error) {
        if (error.number() == RunError::fileNotFound().number())
            return std::nullopt;
        throw;
    }
}

std::deque<LedgerRow> rowsOfBytes(std::string_view bytes)
{
    LedgerReader reader;
    reader.feed(bytes);
    ReceiptLedger ledger;
    reader.finish(ledger);
    auto rows = ledger.assignRows({}, {});
    return {std::make_move_iterator(rows.begin()), std::make_move_iterator(rows.end())};
}

// The ledger as the journal tells it, entry by entry from the start copy. Rows are a deque, since filing puts
// each new row at the top.
class Replay
{
public:
    explicit Replay(const ProgramPaths& paths) : m_paths(paths) {}

    // The problem an entry shows, or an empty text.
    std::string apply(const JournalEntry& entry)
    {
        std::string problem = checkDocument(entry);
        if (!problem.empty())
            return problem;
        const auto row = static_cast<std::size_t>(entry.row);
        switch (replayStepOf(entry.operation)) {
        case ReplayStep::InsertRow:
            if (row < 1 || row > m_rows.size() + 1)
                return "die Zeile " + std::to_string(row) + " gibt es in der Belegliste nicht.";
            m_rows.insert(m_rows.begin() + static_cast<std::ptrdiff_t>(row - 1), LedgerRow(entry.after));
            return {};
        case ReplayStep::ReplaceRow:
        case ReplayStep::RemoveRow:
            if (row < 1 || row > m_rows.size())
                return "die Zeile " + std::to_string(row) + " gibt es in der Belegliste nicht.";
            if (m_rows[row - 1].text() != entry.before)
                return "Zeile " + std::to_string(row) + " lautet \"" + asFileText(m_rows[row - 1].text()) +
                       "\", der Eintrag nennt vorher \"" + asFileText(entry.before) + "\".";
            if (replayStepOf(entry.operation) == ReplayStep::ReplaceRow)
                m_rows[row - 1] = LedgerRow(entry.after);
            else
                m_rows.erase(m_rows.begin() + static_cast<std::ptrdiff_t>(row - 1));
            return {};
        case ReplayStep::RemoveAll:
            m_rows.clear();
            return {};
        case ReplayStep::ReplaceLedger: {
            if (entry.document.empty()) {
                m_rows.clear();
                return {};
            }
            const auto bytes = readOptional(archivedPath(m_paths, entry.document));
            if (!bytes)
                return "die Archivdatei " + entry.document + " fehlt.";
            if (sha256Hex(*bytes) != entry.ledgerHash)
                return "die Archivdatei " + entry.document + " ist nicht die Belegliste, die der Eintrag nennt.";
            m_rows = rowsOfBytes(*bytes);
            return {};
        }
        case ReplayStep::None:
            return {};
        }
        return {};
    }

    // Ends the replay: the rows go into a ledger, which writes them as belege.dat holds them.
    std::string finishBytes()
    {
        m_final.assignRows({std::make_move_iterator(m_rows.begin()), std::make_move_iterator(m_rows.end())}, {});
        m_rows.clear();
        return ledgerBytes(m_final);
    }

    const ReceiptLedger& finished() const { return m_final; }

private:
    // A receipt's or report's archive copy must be there as it was filed.
    std::string checkDocument(const JournalEntry& entry) const
    {
        if (entry.document.empty() || replayStepOf(entry.operation) == ReplayStep::ReplaceLedger)
            return {};
        const auto bytes = readOptional(archivedPath(m_paths, entry.document));
        if (!bytes)
            return "die Archivdatei " + entry.document + " fehlt.";
        if (sha256Hex(*bytes) != entry.documentHash)
            return "die Archivdatei " + entry.document + " wurde verändert.";
        return {};
    }

    const ProgramPaths& m_paths;
    std::deque<LedgerRow> m_rows;
    ReceiptLedger m_final;
};

// The first entry after which the replayed ledger is not the one the entry records; the journal's chain is
// sound when this runs, so each entry is read as written. Halving keeps it to a few replays of the journal.
std::int64_t firstDisagreeingEntry(const ProgramPaths& paths, std::int64_t count)
{
    auto agreesAfter = [&paths](std::int64_t limit) {
        Replay replay(paths);
        std::string recorded;
        readJournalLines(paths.dataFile("journal.dat"), [&](std::string_view line, std::int64_t number, bool) {
            if (number > limit)
                return;
            const auto entry = parseJournalLine(line);
            replay.apply(*entry);
            if (number == limit)
                recorded = entry->ledgerHash;
        });
        return sha256Hex(replay.finishBytes()) == recorded;
    };
    std::int64_t low = 1;
    std::int64_t high = count;
    while (low < high) {
        const std::int64_t middle = low + (high - low) / 2;
        if (agreesAfter(middle))
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

std::string handEditMessage(const ReceiptLedger& expected, std::string_view onDisk, std::int64_t last)
{
    const auto rows = rowsOfBytes(onDisk);
    std::string message = "Die Belegliste wurde nach Eintrag " + std::to_string(last) +
                          " außerhalb von Zettelwerk geändert: ";
    const std::size_t common = std::min(expected.rowCount(), rows.size());
    for (std::size_t row = 0; row < common; ++row) {
        if (expected.rowText(row) != rows[row].text())
            return message + "Zeile " + std::to_string(row + 1) + ": das Journal erwartet \"" +
                   asFileText(expected.rowText(row)) + "\", die Datei enthält \"" + asFileText(rows[row].text()) + "\".";
    }
    if (expected.rowCount() > rows.size())
        return message + "Zeile " + std::to_string(common + 1) + ": das Journal erwartet \"" +
               asFileText(expected.rowText(common)) + "\", die Datei endet vorher.";
    if (rows.size() > expected.rowCount())
        return message + "Zeile " + std::to_string(common + 1) + ": das Journal erwartet keine Zeile mehr, die Datei enthält \"" +
               asFileText(rows[common].text()) + "\".";
    return message + "die Zeilen sind dieselben, aber die Bytes der Datei nicht (Zeilenenden oder Zeichensatz).";
}

std::string entryTime(const JournalEntry& entry)
{
    const auto moment = parseUtcTimeText(entry.time);
    return moment ? localTimeText(*moment) : entry.time;
}

bool withinBounds(const JournalEntry& entry, const std::optional<BookDate>& from, const std::optional<BookDate>& to)
{
    if (!from && !to)
        return true;
    const auto day = localDateOfUtcText(entry.time);
    return day && (!from || *day >= *from) && (!to || *day <= *to);
}

} // namespace

JournalVerdict verifyJournal(const ProgramPaths& paths)
{
    JournalVerdict verdict;
    const auto journalFile = paths.dataFile("journal.dat");
    const auto ledgerOnDisk = readOptional(paths.dataFile("belege.dat"));
    std::error_code error;
    if (!std::filesystem::exists(journalFile, error)) {
        verdict.sound = !ledgerOnDisk || ledgerOnDisk->empty();
        verdict.message = verdict.sound ? "Journal in Ordnung: 0 Einträge"
                                        : "Es gibt kein Änderungsprotokoll (daten/journal.dat), aber eine Belegliste: "
                                          "ihre Änderungen sind nicht nachvollziehbar.";
        return verdict;
    }

    Replay replay(paths);
    Sha256 lineHash;
    std::string problem;
    std::string previousHash(kNoHash);
    std::string lastLedgerHash = sha256Hex("");
    readJournalLines(journalFile, [&](std::string_view line, std::int64_t number, bool complete) {
        if (!problem.empty())
            return;
        const auto entry = complete ? parseJournalLine(line) : std::nullopt;
        if (!complete)
            problem = "das Journal endet mitten in diesem Eintrag: es wurde abgeschnitten.";
        else if (!entry)
            problem = "die Zeile ist kein lesbarer Eintrag.";
        else if (entry->sequence != number)
            problem = "hier steht der Eintrag mit der Nummer " + std::to_string(entry->sequence) +
                      ": Einträge fehlen, wurden eingefügt oder umgestellt.";
        else if ((lineHash.update(hashedPart(line)), lineHash.finishHex()) != entry->hash)
            problem = "der Eintrag wurde nach dem Schreiben verändert (sein SHA-256 stimmt nicht).";
        else if (entry->previousHash != previousHash)
            problem = "die Kette ist unterbrochen: der Eintrag davor wurde verändert, entfernt oder umgestellt.";
        else if (number == 1 && replayStepOf(entry->operation) != ReplayStep::ReplaceLedger)
            problem = "das Journal beginnt nicht mit der Kopie der Belegliste.";
        else
            problem = replay.apply(*entry);
        if (!problem.empty()) {
            problem.insert(0, entryName(number));
            return;
        }
        previousHash = entry->hash;
        lastLedgerHash = entry->ledgerHash;
        verdict.entries = number;
    });
    if (!problem.empty()) {
        verdict.message = problem;
        return verdict;
    }
    const std::string replayed = replay.finishBytes();
    if (sha256Hex(replayed) != lastLedgerHash) {
        const auto first = firstDisagreeingEntry(paths, verdict.entries);
        verdict.message = entryName(first) +
                          "die Belegliste, die dieser Eintrag nennt, folgt nicht aus den Einträgen davor.";
        return verdict;
    }
    const std::string onDisk = ledgerOnDisk.value_or(std::string());
    if (sha256Hex(onDisk) != lastLedgerHash) {
        verdict.message = handEditMessage(replay.finished(), onDisk, verdict.entries);
        return verdict;
    }
    verdict.sound = true;
    verdict.message = "Journal in Ordnung: " + std::to_string(verdict.entries) + " Einträge";
    return verdict;
}

std::vector<JournalEntry> journalEntries(const ProgramPaths& paths, std::optional<BookDate> from,
                                         std::optional<BookDate> to)
{
    std::vector<JournalEntry> entries;
    const auto file = paths.dataFile("journal.dat");
    std::error_code error;
    if (!std::filesystem::exists(file, error))
        return entries;
    readJournalLines(file, [&](std::string_view line, std::int64_t, bool) {
        auto entry = parseJournalLine(line);
        if (entry && withinBounds(*entry, from, to))
            entries.push_back(std::move(*entry));
    });
    return entries;
}

JournalListing listJournal(const ProgramPaths& paths, std::string_view fromText, std::string_view toText)
{
    JournalListing listing;
    auto bound = [&listing](std::string_view text) -> std::optional<BookDate> {
        if (text.find_first_not_of(' ') == std::string_view::npos)
            return std::nullopt;
        const auto date = parseGermanDate(text);
        if (!date && listing.problem.empty())
            listing.problem = "\"" + std::string(text) + "\" ist kein Datum der Form TT.MM.JJJJ.";
        return date;
    };
    const auto from = bound(fromText);
    const auto to = bound(toText);
    if (listing.problem.empty())
        listing.entries = journalEntries(paths, from, to);
    return listing;
}


// What a close decided, as a person reads it.
std::string closeSummary(const JournalEntry& entry)
{
    const auto record = parseCloseRecord(entry.after);
    if (!record)
        return asFileText(entry.after);
    return "Abschluss " + record->from.german() + " bis " + record->to.german() + ": Soll " +
           centsText(record->expected()) + ", gezählt " + centsText(record->counted) + ", Differenz " +
           centsText(record->difference()) + (record->note.empty() ? "" : " (" + record->note + ")");
}

std::vector<std::string> entryCells(const JournalEntry& entry)
{
    std::string after = entry.operation == JournalOperation::Close ? closeSummary(entry) : asFileText(entry.after);
    if (!entry.document.empty())
        after += (after.empty() ? "" : "  ") + entry.document;
    return {std::to_string(entry.sequence), entryTime(entry), entry.user,
            std::string(operationCaption(entry.operation)), entry.row > 0 ? std::to_string(entry.row) : std::string(),
            asFileText(entry.before), after};
}

std::string readableEntry(const JournalEntry& entry)
{
    std::string text = std::to_string(entry.sequence) + "  " + entryTime(entry) + "  " + entry.user + "  " +
                       std::string(operationCaption(entry.operation));
    if (entry.row > 0)
        text += " (Zeile " + std::to_string(entry.row) + ")";
    text += "\n";
    if (!entry.before.empty())
        text += "    vorher:  " + asFileText(entry.before) + "\n";
    if (entry.operation == JournalOperation::Close)
        text += "    " + closeSummary(entry) + "\n";
    else if (!entry.after.empty())
        text += "    nachher: " + asFileText(entry.after) + "\n";
    if (!entry.document.empty())
        text += "    Datei:   " + entry.document + " (SHA-256 " + entry.documentHash + ")\n";
    text += "    Belegliste danach: SHA-256 " + entry.ledgerHash + "\n";
    return text;
}

std::int64_t showJournal(const ProgramPaths& paths, std::optional<BookDate> from, std::optional<BookDate> to,
                         std::ostream& out)
{
    std::int64_t shown = 0;
    const auto file = paths.dataFile("journal.dat");
    std::error_code error;
    if (!std::filesystem::exists(file, error))
        return 0;
    readJournalLines(file, [&](std::string_view line, std::int64_t, bool) {
        const auto entry = parseJournalLine(line);
        if (entry && withinBounds(*entry, from, to)) {
            out << readableEntry(*entry);
            ++shown;
        }
    });
    return shown;
}

} // namespace zw
