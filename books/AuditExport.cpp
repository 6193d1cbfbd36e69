#include "books/AuditExport.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <system_error>
#include <vector>

#include "app/AtomicFile.h"
#include "app/FileLock.h"
#include "app/ProgramPaths.h"
#include "app/TextFile.h"
#include "app/Version.h"
#include "books/CashBook.h"
#include "books/DailyClose.h"
#include "books/Journal.h"
#include "core/GermanNumbers.h"
#include "core/RunError.h"
#include "ledger/ReceiptLedger.h"

namespace zw {
namespace {

enum class ColumnType
{
    Text,
    Amount,
    Count,
    Date
};

struct Column
{
    std::string_view name;
    ColumnType type;
    std::string_view description;
};

// A table of the export. The first column is its key.
struct Table
{
    std::string_view file;
    std::string_view name;
    std::string_view description;
    std::span<const Column> columns;
};

constexpr std::array kReceiptColumns = {
    Column{"Zeile", ColumnType::Count, "Zeile in belege.dat beim Export, 1 ist die oberste"},
    Column{"Datum", ColumnType::Date, "Datum des Belegs"},
    Column{"Belegnummer", ColumnType::Text, "Beleg-Nr."},
    Column{"Einnahme", ColumnType::Amount, "Bruttobetrag einer Einnahme"},
    Column{"Ausgabe", ColumnType::Amount, "Bruttobetrag einer Ausgabe, negativ"},
    Column{"Waehrung", ColumnType::Text, "Währung"},
    Column{"MwSt_Satz", ColumnType::Text, "Umsatzsteuersatz in Prozent, wie erfasst"},
    Column{"Netto", ColumnType::Amount, "Nettobetrag"},
    Column{"MwSt_Betrag", ColumnType::Amount, "Umsatzsteueranteil"},
    Column{"Betrag_in_Worten", ColumnType::Text, "Betrag in Worten"},
    Column{"Fuer_1", ColumnType::Text, "Für 1"},
    Column{"Fuer_2", ColumnType::Text, "Für 2"},
    Column{"Von", ColumnType::Text, "Von"},
    Column{"Ort", ColumnType::Text, "Ort"},
    Column{"Buchung", ColumnType::Text, "Buchung"},
    Column{"Bezeichnung", ColumnType::Text, "Art des Belegs"},
};

constexpr std::array kJournalColumns = {
    Column{"Nr", ColumnType::Count, "Laufende Nummer des Eintrags"},
    Column{"Datum", ColumnType::Date, "Tag der Änderung (Ortszeit)"},
    Column{"Zeit_UTC", ColumnType::Text, "Zeitpunkt der Änderung, JJJJ-MM-TTTHH:MM:SSZ"},
    Column{"Benutzer", ColumnType::Text, "Anmeldename des Benutzers"},
    Column{"Programmversion", ColumnType::Text, "Version von Zettelwerk"},
    Column{"Vorgang", ColumnType::Text, "Art der Änderung"},
    Column{"Zeile", ColumnType::Count, "Betroffene Zeile der Belegliste, 0 für keine"},
    Column{"Vorher", ColumnType::Text, "Zeile vor der Änderung, Felder durch ; getrennt"},
    Column{"Nachher", ColumnType::Text, "Zeile nach der Änderung, Felder durch ; getrennt"},
    Column{"Belegliste_SHA256", ColumnType::Text, "SHA-256 von belege.dat nach der Änderung"},
    Column{"Dokument", ColumnType::Text, "Archivierte Datei unter daten/"},
    Column{"Dokument_SHA256", ColumnType::Text, "SHA-256 der archivierten Datei"},
    Column{"Vorgaenger_SHA256", ColumnType::Text, "SHA-256 des vorigen Eintrags"},
    Column{"Eintrag_SHA256", ColumnType::Text, "SHA-256 dieses Eintrags"},
};

constexpr std::array kCloseColumns = {
    Column{"Tag", ColumnType::Date, "Abgeschlossener Tag"},
    Column{"Von", ColumnType::Date, "Erster Tag, den der Abschluss umfasst"},
    Column{"Anfangsbestand", ColumnType::Amount, "Anfangsbestand der Kasse"},
    Column{"Einnahmen", ColumnType::Amount, "Einnahmen seit dem letzten Abschluss"},
    Column{"Ausgaben", ColumnType::Amount, "Ausgaben seit dem letzten Abschluss"},
    Column{"Kassensoll", ColumnType::Amount, "Anfangsbestand plus Einnahmen minus Ausgaben"},
    Column{"Gezaehlt", ColumnType::Amount, "Gezählter Kassenbestand"},
    Column{"Differenz", ColumnType::Amount, "Gezählt minus Kassensoll"},
    Column{"Waehrung", ColumnType::Text, "Währung"},
    Column{"Notiz", ColumnType::Text, "Begründung einer Differenz"},
    Column{"Kassenbericht", ColumnType::Text, "Archivierter Kassenbericht unter daten/"},
    Column{"Kassenbericht_SHA256", ColumnType::Text, "SHA-256 des Kassenberichts"},
    Column{"Journal_Nr", ColumnType::Count, "Eintrag des Abschlusses im Änderungsprotokoll"},
};

constexpr std::array kTables = {
    Table{"belege.csv", "Belege", "Belegliste der Kasse (belege.dat)", kReceiptColumns},
    Table{"journal.csv", "Aenderungsprotokoll", "Änderungsprotokoll der Belegliste (journal.dat)",
          kJournalColumns},
    Table{"kassenberichte.csv", "Kassenberichte", "Tagesabschlüsse der Kasse", kCloseColumns},
};

RunError refused(std::string text)
{
    return RunError(5, std::move(text) + " Es wurde nichts exportiert.");
}

// Drops the characters XML 1.0 does not allow and escapes the markup.
std::string xmlText(std::string_view text)
{
    std::string out;
    for (char c : text) {
        if (c == '&')
            out += "&amp;";
        else if (c == '<')
            out += "&lt;";
        else if (c == '>')
            out += "&gt;";
        else if (static_cast<unsigned char>(c) >= 0x20 || c == '\t' || c == '\n' || c == '\r')
            out += c;
    }
    return out;
}

// One CSV record, each field as its column's type asks.
class Record
{
public:
    explicit Record(std::string& out) : m_out(out) {}
    ~Record() { m_out += "\r\n"; }
    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;

    Record& text(std::string_view value)
    {
        separate();
        m_out += '"';
        for (std::size_t at = 0; at < value.size(); ++at) {
            // The ledger holds a TAB byte of its file as a private character; the auditor gets the TAB back.
            if (value.substr(at, kLiteralTab.size()) == kLiteralTab) {
                m_out += '\t';
                at += kLiteralTab.size() - 1;
                continue;
            }
            if (value[at] == '"')
                m_out += '"';
            m_out += value[at];
        }
        m_out += '"';
        return *this;
    }
    Record& plain(std::string_view value)
    {
        separate();
        m_out += value;
        return *this;
    }
    Record& number(std::int64_t value) { return plain(std::to_string(value)); }

private:
    void separate()
    {
        if (m_fields++ > 0)
            m_out += ';';
    }

    std::string& m_out;
    int m_fields = 0;
};

void appendHeader(std::string& out, const Table& table)
{
    Record record(out);
    for (const auto& column : table.columns)
        record.plain(column.name);
}

// A row of the ledger as a line of belege.dat, which a person reads in the journal's columns.
std::string fileLine(std::string_view tabJoined)
{
    std::string line(tabJoined);
    std::replace(line.begin(), line.end(), '\t', ';');
    return line;
}

// The progress from `low` to `high` as `done` of `total` bytes pass, told only when the percentage moves.
class ProgressSpan
{
public:
    ProgressSpan(const AuditProgress& progress, int low, int high, std::uintmax_t total)
        : m_progress(progress), m_low(low), m_high(high), m_total(total)
    {
    }
    void advance(std::uintmax_t bytes)
    {
        m_done += bytes;
        if (!m_progress || m_total == 0)
            return;
        const int percent = m_low + static_cast<int>((m_high - m_low) * std::min(m_done, m_total) / m_total);
        if (percent != m_told)
            m_progress(m_told = percent);
    }

private:
    const AuditProgress& m_progress;
    int m_low;
    int m_high;
    std::uintmax_t m_total;
    std::uintmax_t m_done = 0;
    int m_told = -1;
};

std::uintmax_t sizeOf(const std::filesystem::path& file)
{
    std::error_code error;
    const auto size = std::filesystem::file_size(file, error);
    return error ? 0 : size;
}

class ReceiptsWriter
{
public:
    ReceiptsWriter(const AuditPeriod& period, std::string& out) : m_period(period), m_out(out)
    {
        appendHeader(m_out, kTables[0]);
    }

    void add(std::string_view row)
    {
        ++m_row;
        if (row.find_first_not_of('\t') == std::string_view::npos)
            return;
        const auto dateText = rowField(row, LedgerColumn::datum);
        const auto date = parseGermanDate(dateText);
        if (!date)
            throw refused("Zeile " + std::to_string(m_row) + " der Belegliste hat kein lesbares Datum (\"" +
                          std::string(dateText) + "\").");
        if (*date < m_period.from || *date > m_period.to)
            return;
        Record record(m_out);
        record.number(m_row).plain(date->german()).text(rowField(row, LedgerColumn::belegnr));
        record.plain(amount(row, LedgerColumn::einnahme)).plain(amount(row, LedgerColumn::ausgabe));
        record.text(rowField(row, LedgerColumn::waehrung)).text(rowField(row, LedgerColumn::mwst));
        record.plain(amount(row, LedgerColumn::netto)).plain(amount(row, LedgerColumn::anteil));
        for (auto column : {LedgerColumn::biw, LedgerColumn::fuer1, LedgerColumn::fuer2, LedgerColumn::von,
                            LedgerColumn::ort, LedgerColumn::buchung, LedgerColumn::bezeichnung})
            record.text(rowField(row, column));
        ++m_written;
    }

    std::int64_t written() const { return m_written; }

private:
    std::string amount(std::string_view row, LedgerColumn column) const
    {
        const auto cell = rowField(row, column);
        // An expense filed without an amount holds the print command's sign alone.
        if (cell.empty() || cell == "-")
            return {};
        if (!isNumeric(cell))
            throw refused("Zeile " + std::to_string(m_row) + " der Belegliste (Beleg " +
                          std::string(rowField(row, LedgerColumn::belegnr)) + "): \"" + std::string(cell) +
                          "\" in der Spalte " + std::string(ledgerColumns()[columnIndex(column)].caption) +
                          " ist kein Betrag.");
        return centsText(centsOf(cell));
    }

    const AuditPeriod& m_period;
    std::string& m_out;
    std::int64_t m_row = 0;
    std::int64_t m_written = 0;
};

class JournalWriter
{
public:
    JournalWriter(const AuditPeriod& period, std::string& entries, std::string& closes)
        : m_period(period), m_entries(entries), m_closes(closes)
    {
        appendHeader(m_entries, kTables[1]);
        appendHeader(m_closes, kTables[2]);
    }

    void add(std::string_view line, std::int64_t number, bool complete)
    {
        const auto entry = complete ? parseJournalLine(line) : std::nullopt;
        const auto day = entry ? localDateOfUtcText(entry->time) : std::nullopt;
        if (!day)
            throw refused("Zeile " + std::to_string(number) +
                          " des Änderungsprotokolls (journal.dat) ist kein lesbarer Eintrag. Die Prüfung des "
                          "Änderungsprotokolls nennt die Ursache.");
        if (*day >= m_period.from && *day <= m_period.to)
            addEntry(*entry, *day);
        if (entry->operation == JournalOperation::Close)
            addClose(*entry);
    }

    AuditCounts counts;

private:
    void addEntry(const JournalEntry& entry, const BookDate& day)
    {
        Record record(m_entries);
        record.number(entry.sequence)
            .plain(day.german())
            .text(entry.time)
            .text(entry.user)
            .text(entry.version);
        record.text(operationCaption(entry.operation)).number(entry.row);
        record.text(fileLine(entry.before)).text(fileLine(entry.after)).text(entry.ledgerHash);
        record.text(entry.document).text(entry.documentHash).text(entry.previousHash).text(entry.hash);
        ++counts.entries;
    }

    void addClose(const JournalEntry& entry)
    {
        const auto close = parseCloseRecord(entry.after);
        if (!close)
            throw refused("Der Tagesabschluss in Eintrag " + std::to_string(entry.sequence) +
                          " des Änderungsprotokolls ist nicht lesbar.");
        if (close->to < m_period.from || close->to > m_period.to)
            return;
        Record record(m_closes);
        record.plain(close->to.german()).plain(close->from.german());
        for (Cents figure : {close->opening, close->takings, close->payouts, close->expected(),
                             close->counted, close->difference()})
            record.plain(centsText(figure));
        record.text(close->currency).text(close->note).text(entry.document).text(entry.documentHash);
        record.number(entry.sequence);
        ++counts.closes;
    }

    const AuditPeriod& m_period;
    std::string& m_entries;
    std::string& m_closes;
};

void appendColumn(std::string& xml, const Column& column, bool key)
{
    const std::string_view element = key ? "VariablePrimaryKey" : "VariableColumn";
    xml += "        <" + std::string(element) + ">\n          <Name>" + std::string(column.name) +
           "</Name>\n          <Description>" + xmlText(column.description) + "</Description>\n          ";
    switch (column.type) {
    case ColumnType::Text:
        xml += "<AlphaNumeric/>";
        break;
    case ColumnType::Amount:
        xml += "<Numeric><Accuracy>2</Accuracy></Numeric>";
        break;
    case ColumnType::Count:
        xml += "<Numeric><Accuracy>0</Accuracy></Numeric>";
        break;
    case ColumnType::Date:
        xml += "<Date><Format>DD.MM.YYYY</Format></Date>";
        break;
    }
    xml += "\n        </" + std::string(element) + ">\n";
}

std::string indexXml(const AuditPeriod& period, const std::vector<std::string>& firm)
{
    const std::string span = period.from.german() + " bis " + period.to.german();
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE DataSet SYSTEM \"" +
                      std::string(kGdpduDtdName) + "\">\n<DataSet>\n  <Version>1.0</Version>\n";
    if (!firm.empty()) {
        std::string location;
        for (std::size_t line = 1; line < firm.size(); ++line)
            location += (line > 1 ? ", " : "") + firm[line];
        xml += "  <DataSupplier>\n    <Name>" + xmlText(firm.front()) + "</Name>\n    <Location>" +
               xmlText(location) + "</Location>\n    <Comment>Kassenbuch aus Zettelwerk " + versionText() +
               ", Zeitraum " + span + "</Comment>\n  </DataSupplier>\n";
    }
    xml += "  <Media>\n    <Name>Daten für die Betriebsprüfung " + span + "</Name>\n";
    for (const auto& table : kTables) {
        xml += "    <Table>\n      <URL>" + std::string(table.file) + "</URL>\n      <Name>" +
               std::string(table.name) + "</Name>\n      <Description>" + xmlText(table.description) +
               "</Description>\n" + "      <Validity>\n        <Range><From>" + period.from.german() +
               "</From><To>" + period.to.german() +
               "</To></Range>\n        <Format>DD.MM.YYYY</Format>\n      </Validity>\n"
               "      <UTF8/>\n      <DecimalSymbol>,</DecimalSymbol>\n      "
               "<DigitGroupingSymbol>.</DigitGroupingSymbol>\n"
               // The first record holds the column names.
               "      <Range><From>2</From></Range>\n"
               "      <VariableLength>\n        <ColumnDelimiter>;</ColumnDelimiter>\n"
               "        <RecordDelimiter>&#13;&#10;</RecordDelimiter>\n        "
               "<TextEncapsulator>\"</TextEncapsulator>\n";
        for (std::size_t column = 0; column < table.columns.size(); ++column)
            appendColumn(xml, table.columns[column], column == 0);
        xml += "      </VariableLength>\n    </Table>\n";
    }
    xml += "  </Media>\n</DataSet>\n";
    return xml;
}

} // namespace

AuditPeriod auditPeriod(std::string_view fromText, std::string_view toText)
{
    auto day = [](std::string_view text) {
        const auto first = text.find_first_not_of(' ');
        if (first == std::string_view::npos)
            throw RunError(5,
                           "Bitte geben Sie den ersten und den letzten Tag des Zeitraums ein (TT.MM.JJJJ).");
        text = text.substr(first, text.find_last_not_of(' ') - first + 1);
        const auto date = parseGermanDate(text);
        if (!date)
            throw RunError(5, "\"" + std::string(text) + "\" ist kein Datum der Form TT.MM.JJJJ.");
        return *date;
    };
    const AuditPeriod period{day(fromText), day(toText)};
    if (period.to < period.from)
        throw RunError(5, "Der Zeitraum endet vor seinem Beginn: der " + period.to.german() +
                              " liegt vor dem " + period.from.german() + ".");
    return period;
}

std::string auditSummary(const AuditCounts& counts, const std::filesystem::path& folder)
{
    auto counted = [](std::int64_t count, const char* one, const char* many) {
        return std::to_string(count) + " " + (count == 1 ? one : many);
    };
    return "Exportiert: " + counted(counts.receipts, "Beleg", "Belege") + ", " +
           counted(counts.entries, "Eintrag", "Einträge") + " des Änderungsprotokolls und " +
           counted(counts.closes, "Tagesabschluss", "Tagesabschlüsse") + " nach " + folder.string() + ".";
}

AuditCounts exportAuditData(const ProgramPaths& paths, const AuditPeriod& period,
                            const std::filesystem::path& folder, const AuditProgress& progress)
{
    if (folder.empty())
        throw RunError(5, "Bitte wählen Sie einen Ordner für die Daten.");
    const auto ledgerPath = paths.dataFile("belege.dat");
    const auto journalPath = paths.dataFile("journal.dat");
    std::string receipts;
    std::string entries;
    std::string closes;
    AuditCounts counts;
    {
        FileLock lock(ledgerPath);
        ReceiptsWriter receiptsWriter(period, receipts);
        ProgressSpan ledgerProgress(progress, 0, 60, sizeOf(ledgerPath));
        LedgerReader reader([&receiptsWriter](std::string_view row) { receiptsWriter.add(row); });
        if (std::filesystem::exists(ledgerPath))
            readFileInBlocks(ledgerPath, [&](std::string_view block) {
                reader.feed(block);
                ledgerProgress.advance(block.size());
            });
        reader.finish();
        JournalWriter journalWriter(period, entries, closes);
        ProgressSpan journalProgress(progress, 60, 90, sizeOf(journalPath));
        if (std::filesystem::exists(journalPath))
            readJournalLines(journalPath, [&](std::string_view line, std::int64_t number, bool complete) {
                journalWriter.add(line, number, complete);
                journalProgress.advance(line.size() + 2);
            });
        counts = journalWriter.counts;
        counts.receipts = receiptsWriter.written();
    }
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error)
        throw fileSystemError(error.value(), folder);
    writeFileAtomically(folder / kTables[0].file, receipts);
    writeFileAtomically(folder / kTables[1].file, entries);
    writeFileAtomically(folder / kTables[2].file, closes);
    writeFileAtomically(folder / kGdpduDtdName, gdpduDtd());
    // The index last: it names the tables beside it, which are whole by now.
    writeFileAtomically(folder / "index.xml", indexXml(period, firmLines(paths)));
    if (progress)
        progress(100);
    return counts;
}

} // namespace zw
