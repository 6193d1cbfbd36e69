#include "lists/ListTable.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>

#include "app/AtomicFile.h"
#include "app/FileLock.h"
#include "app/LineMerge.h"
#include "app/TextFile.h"
#include "core/AmountEntry.h"
#include "core/CodePage.h"
#include "core/GermanNumbers.h"
#include "core/ReceiptForm.h"

namespace zw {
namespace {

constexpr std::string_view kAmountPattern = "#####.##";

bool startsWithNoCase(std::string_view text, std::string_view prefix)
{
    if (text.size() < prefix.size())
        return false;
    return std::equal(prefix.begin(), prefix.end(), text.begin(), [](char a, char b) {
        return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
    });
}

std::size_t columnIndex(const ListKind& kind, std::string_view key)
{
    for (std::size_t i = 0; i < kind.columns.size(); ++i) {
        if (kind.columns[i].key == key)
            return i;
    }
    return kind.columns.size();
}

} // namespace

const ListKind& payerList()
{
    static const ListKind kind{"von_liste",
                               "Von - Liste",
                               "daten/von_liste.txt",
                               {{"von1", "< Von > Zeile 1", 3950}, {"von2", "< Von > Zeile 2", 3950}},
                               false};
    return kind;
}

const ListKind& articleList()
{
    static const ListKind kind{"artikel_fuer",
                               "Für - Liste",
                               "daten/artikel_fuer.txt",
                               {{"fuer", "Für", 4400}, {"betrag", "Betrag €", 1500}, {"mwst", "MwSt.-Satz", 1500}},
                               true};
    return kind;
}

const ListKind* listKindNamed(std::string_view name)
{
    for (const ListKind* kind : {&payerList(), &articleList()}) {
        if (kind->window == name)
            return kind;
    }
    return nullptr;
}

std::span<const ListToolKey> listToolKeys()
{
    static constexpr std::array<ListToolKey, 6> kKeys{{
        {"save_grid", "Datensatz speichern", ""},
        {"neu_grid", "Datensatz hinzufügen", ""},
        {"grid_edit", "Datensatz bearbeiten", ""},
        {"grid_weg", "Datensatz löschen", ""},
        {"hinzu_bar", "Datensatz wird dem Beleg hinzugefügt", "Übernehmen"},
        {"schlie_bar", "Fenster schließen", ""},
    }};
    return kKeys;
}

std::string deleteQuestion(int selectedRows)
{
    if (selectedRows == 1)
        return "Datensatz löschen?";
    return "Achtung!\r\nEs sind " + std::to_string(selectedRows) +
           " Datensätze selektiert.\r\nAlle selektierten Datenzeilen löschen?";
}

std::string gridErrorText(GridOperation operation, int number, std::string_view description)
{
    static constexpr std::array<std::string_view, 3> kLines{"Fehler beim Hinzufügen der neuen Datenzeile",
                                                            "Fehler beim Löschen der Datenzeile",
                                                            "Fehler beim Speichern der Datenzeile"};
    return std::string(kLines[static_cast<std::size_t>(operation)]) + "\r\n" + std::to_string(number) + " " +
           std::string(description);
}

std::string linkHint(std::string_view cell)
{
    while (!cell.empty() && cell.front() == ' ')
        cell.remove_prefix(1);
    if (startsWithNoCase(cell, "http://") || startsWithNoCase(cell, "https://") || startsWithNoCase(cell, "www."))
        return "Linksklick öffnet den Standard-Browser.";
    if (startsWithNoCase(cell, "mailto:") ||
        (cell.find('@') != std::string_view::npos && cell.find(' ') == std::string_view::npos))
        return "Linksklick öffnet das Standard-Mailprogramm.";
    if (startsWithNoCase(cell, "file:") || cell.starts_with('/') || cell.starts_with("~/"))
        return "Linksklick öffnet das Dokument.";
    return {};
}

const std::string& ListTable::cell(int row, std::string_view columnKey) const
{
    static const std::string kNone;
    const std::size_t column = columnIndex(*m_kind, columnKey);
    if (row < 0 || row >= rowCount() || column >= m_kind->columns.size())
        return kNone;
    return m_rows[static_cast<std::size_t>(row)][column];
}

void ListTable::setCell(int row, int column, std::string text)
{
    m_rows.at(static_cast<std::size_t>(row)).at(static_cast<std::size_t>(column)) = std::move(text);
}

void ListTable::insertRow(int at)
{
    at = std::clamp(at, 0, rowCount());
    m_rows.insert(m_rows.begin() + at, std::vector<std::string>(m_kind->columns.size()));
}

void ListTable::removeRows(const std::vector<int>& rows)
{
    std::vector<int> sorted = rows;
    std::sort(sorted.begin(), sorted.end(), std::greater<>());
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    for (int row : sorted) {
        if (row >= 0 && row < rowCount())
            m_rows.erase(m_rows.begin() + row);
    }
}

std::vector<std::string> cellsOfLine(const ListKind& kind, std::string_view line)
{
    std::vector<std::string> cells(kind.columns.size());
    std::size_t column = 0;
    std::size_t start = 0;
    while (true) {
        const std::size_t end = column + 1 < cells.size() ? line.find(';', start) : std::string_view::npos;
        cells[column] = std::string(line.substr(start, end == std::string_view::npos ? end : end - start));
        if (end == std::string_view::npos)
            break;
        start = end + 1;
        ++column;
    }
    if (kind.hasAmounts) {
        std::string& amount = cells[columnIndex(kind, "betrag")];
        amount = formatPatternText(amount, kAmountPattern);
    }
    return cells;
}

namespace {

std::vector<std::vector<std::string>> rowsOfText(const ListKind& kind, const std::string& text)
{
    std::vector<std::vector<std::string>> rows;
    for (const std::string& line : splitLines(text)) {
        if (!line.empty())
            rows.push_back(cellsOfLine(kind, line));
    }
    return rows;
}

bool isUntyped(const std::vector<std::string>& row)
{
    return std::all_of(row.begin(), row.end(), [](const std::string& cell) { return cell.empty(); });
}

std::string lineOf(const std::vector<std::string>& row)
{
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (i > 0)
            line += ';';
        line += row[i];
    }
    return line;
}

std::vector<std::string> linesOf(const std::vector<std::vector<std::string>>& rows)
{
    std::vector<std::string> lines;
    for (const auto& row : rows) {
        // A row added but not typed into yet is no row of the file: it is saved once something was entered.
        if (!isUntyped(row))
            lines.push_back(lineOf(row));
    }
    return lines;
}

} // namespace

void ListTable::load(const std::filesystem::path& file)
{
    m_rows = rowsOfText(*m_kind, cp1252ToUtf8(readFileBytes(file)));
    m_loaded = linesOf(m_rows);
}

std::vector<std::string> ListTable::fileLines() const { return linesOf(m_rows); }

std::string ListTable::fileBytes() const
{
    std::string text;
    for (const auto& line : fileLines())
        text += line + "\r\n";
    return utf8ToCp1252(text);
}

bool ListTable::save(const std::filesystem::path& file)
{
    bool merged = false;
    updateFileLocked(file, [&](const FileOnDisk& onDisk) -> std::optional<std::string> {
        const auto onDiskLines = linesOf(rowsOfText(*m_kind, cp1252ToUtf8(onDisk.bytes)));
        if (onDisk.exists && onDiskLines != m_loaded) {
            std::vector<std::vector<std::string>> rows;
            for (const auto& line : mergeLineChanges(m_loaded, fileLines(), onDiskLines))
                rows.push_back(cellsOfLine(*m_kind, line));
            std::copy_if(m_rows.begin(), m_rows.end(), std::back_inserter(rows), isUntyped);
            merged = rows != m_rows;
            m_rows = std::move(rows);
        }
        return fileBytes();
    });
    m_loaded = fileLines();
    return merged;
}

void takeOverRow(const ListTable& table, int row, bool gross, ReceiptForm& form)
{
    if (row < 0 || row >= table.rowCount())
        return;
    if (!table.kind().hasAmounts) {
        form.setText(FormElement::Text5, table.cell(row, "von1"));
        form.setText(FormElement::Text6, table.cell(row, "von2"));
        return;
    }
    form.setText(FormElement::Text7, table.cell(row, "fuer"));
    form.setText(FormElement::Text3, table.cell(row, "mwst"));
    if (table.cell(row, "betrag").empty()) {
        // A row without an amount has nothing to compute, as RETURN in an empty amount field; the amounts of
        // the receipt before are not left standing beside the new purpose.
        for (FormElement amount : {FormElement::Text10, FormElement::Text11, FormElement::Text12, FormElement::Text4})
            form.setText(amount, "");
        return;
    }
    if (gross) {
        form.setText(FormElement::Text12, table.cell(row, "betrag"));
        rechnen1(form);
    } else {
        form.setText(FormElement::Text10, table.cell(row, "betrag"));
        rechnen2(form);
    }
}

} // namespace zw
