#include "lists/ListTable.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <iterator>
#include <optional>
#include <stdexcept>

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

ListRowCells::operator std::vector<std::string>() const
{
    std::vector<std::string> cells;
    cells.reserve(size());
    for (std::size_t column = 0; column < size(); ++column)
        cells.emplace_back(m_table->text(m_row, column));
    return cells;
}

ListTable::ListTable(const ListKind& kind)
    : m_kind(&kind), m_amountColumn(kind.hasAmounts ? columnIndex(kind, "betrag") : kind.columns.size())
{
}

std::string ListTable::cell(int row, std::string_view columnKey) const
{
    const std::size_t column = columnIndex(*m_kind, columnKey);
    if (row < 0 || row >= rowCount() || column >= columnCount())
        return {};
    return std::string(text(static_cast<std::size_t>(row), column));
}

void ListTable::setCell(int row, int column, std::string_view text)
{
    if (row < 0 || row >= rowCount() || column < 0 || static_cast<std::size_t>(column) >= columnCount())
        throw std::out_of_range("ListTable::setCell");
    // The old text stays in the buffer until the next save lays it out anew.
    m_cells[static_cast<std::size_t>(row) * columnCount() + static_cast<std::size_t>(column)] =
        spanOf(m_text.size(), m_text.size() + text.size());
    m_text.append(text);
}

void ListTable::insertRow(int at)
{
    at = std::clamp(at, 0, rowCount());
    m_cells.insert(m_cells.begin() + static_cast<std::ptrdiff_t>(static_cast<std::size_t>(at) * columnCount()),
                   columnCount(), Span{});
}

void ListTable::removeRows(const std::vector<int>& rows)
{
    std::vector<bool> removed(static_cast<std::size_t>(rowCount()), false);
    for (int row : rows) {
        if (row >= 0 && row < rowCount())
            removed[static_cast<std::size_t>(row)] = true;
    }
    std::size_t kept = 0;
    for (std::size_t row = 0; row < removed.size(); ++row) {
        if (removed[row])
            continue;
        std::copy_n(m_cells.begin() + static_cast<std::ptrdiff_t>(row * columnCount()), columnCount(),
                    m_cells.begin() + static_cast<std::ptrdiff_t>(kept * columnCount()));
        ++kept;
    }
    m_cells.resize(kept * columnCount());
}

namespace {

// "#####.##" of a plain amount ("12", "12,5", "0,50") without the general number reader, which costs more than
// the rest of a list's load: the whole digits without leading zeros, the comma, up to two decimals without
// trailing zeros. Anything else is Other and goes the general way.
enum class PlainAmount
{
    AsItStands,
    Shortened, // the form is the text without leading and trailing zeros, and the comma added
    Other
};

struct PlainAmountForm
{
    PlainAmount kind;
    std::string_view whole;
    std::string_view decimals;
};

PlainAmountForm plainAmountForm(std::string_view text)
{
    const std::size_t comma = text.find(',');
    std::string_view whole = text.substr(0, comma);
    std::string_view decimals = comma == std::string_view::npos ? std::string_view() : text.substr(comma + 1);
    const auto digits = [](std::string_view part) {
        return std::all_of(part.begin(), part.end(), [](char c) { return c >= '0' && c <= '9'; });
    };
    if ((whole.empty() && decimals.empty()) || decimals.size() > 2 || !digits(whole) || !digits(decimals))
        return {PlainAmount::Other, {}, {}};
    while (!whole.empty() && whole.front() == '0')
        whole.remove_prefix(1);
    while (!decimals.empty() && decimals.back() == '0')
        decimals.remove_suffix(1);
    // Beyond 15 significant digits the general way rounds as the run time did.
    if (whole.size() + decimals.size() > 15)
        return {PlainAmount::Other, {}, {}};
    const bool asItStands = comma != std::string_view::npos && whole.size() + decimals.size() + 1 == text.size();
    return {asItStands ? PlainAmount::AsItStands : PlainAmount::Shortened, whole, decimals};
}

// UTF-8 of each byte 0x80..0xFF, taken from the one conversion table so that both stay the same.
const std::array<std::string, 128>& utf8OfHighBytes()
{
    static const std::array<std::string, 128> table = [] {
        std::array<std::string, 128> result;
        for (std::size_t i = 0; i < result.size(); ++i)
            result[i] = cp1252ToUtf8(std::string(1, static_cast<char>(0x80 + i)));
        return result;
    }();
    return table;
}

bool isLineEnd(char byte) { return byte == '\r' || byte == '\n'; }

constexpr std::uint64_t kOnes = 0x0101010101010101;
constexpr std::uint64_t kHighBits = 0x8080808080808080;

std::uint64_t wordAt(std::string_view text, std::size_t at)
{
    std::uint64_t word = 0;
    std::memcpy(&word, text.data() + at, sizeof word);
    return word;
}

// Nonzero when a byte of the word equals `byte` (or, after such a byte, may falsely say so).
std::uint64_t holds(std::uint64_t word, char byte)
{
    const std::uint64_t matches = word ^ (kOnes * static_cast<unsigned char>(byte));
    return (matches - kOnes) & ~matches & kHighBits;
}

// The first byte from `at` on that ends the line or needs converting; eight bytes at a time while none of them is one.
std::size_t skipPlainBytes(std::string_view text, std::size_t at)
{
    for (; at + 8 <= text.size(); at += 8) {
        const std::uint64_t word = wordAt(text, at);
        if (((word & kHighBits) | holds(word, '\r') | holds(word, '\n')) != 0)
            break;
    }
    while (at < text.size() && !isLineEnd(text[at]) && static_cast<unsigned char>(text[at]) < 0x80)
        ++at;
    return at;
}

// The first ";" from `at` on, or the text's end; cells are short, so this beats a call of memchr.
std::size_t findSeparator(std::string_view text, std::size_t at)
{
    for (; at + 8 <= text.size(); at += 8) {
        if (holds(wordAt(text, at), ';') != 0)
            break;
    }
    while (at < text.size() && text[at] != ';')
        ++at;
    return at;
}

} // namespace

ListTable::Span ListTable::spanOf(std::size_t begin, std::size_t end)
{
    if (end > std::numeric_limits<std::uint32_t>::max())
        throw std::bad_alloc(); // a list of over 4 GiB of text is beyond what the grid holds
    return {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end - begin)};
}

std::size_t ListTable::appendRow(std::string_view text, std::size_t at, Encoding encoding, LineEnds lineEnds)
{
    // The line goes into the buffer as it stands, in UTF-8, in one pass; the cells are then found in it, so a
    // line whose amount needs no new form is copied once.
    const std::size_t lineBegin = m_text.size();
    std::size_t end = at;
    for (std::size_t run = at;; ++end) {
        end = skipPlainBytes(text, end);
        const bool lineEnd = end == text.size() || (isLineEnd(text[end]) && lineEnds == LineEnds::EndTheRow);
        if (lineEnd || (encoding == Encoding::Windows1252 && !isLineEnd(text[end]))) {
            m_text.append(text.substr(run, end - run));
            if (lineEnd)
                break;
            m_text.append(utf8OfHighBytes()[static_cast<unsigned char>(text[end]) - 0x80]);
            run = end + 1;
        }
    }
    std::size_t cellBegin = lineBegin;
    for (std::size_t column = 0; column < columnCount(); ++column) {
        std::size_t cellEnd = m_text.size();
        if (cellBegin > m_text.size()) {
            // A missing field: empty, with the separator the saved line will have.
            m_text += ';';
            cellEnd = cellBegin = m_text.size();
        } else if (column + 1 < columnCount()) {
            // Fields beyond the columns stay in the last cell with their ";".
            cellEnd = findSeparator(m_text, cellBegin);
        }
        if (column == m_amountColumn) {
            const std::string_view amount = std::string_view(m_text).substr(cellBegin, cellEnd - cellBegin);
            const PlainAmountForm plain = plainAmountForm(amount);
            if (plain.kind != PlainAmount::AsItStands) {
                const std::string formatted =
                    plain.kind == PlainAmount::Shortened
                        ? std::string(plain.whole).append(",").append(plain.decimals)
                        : formatPatternText(amount, kAmountPattern);
                m_text.replace(cellBegin, cellEnd - cellBegin, formatted);
                cellEnd = cellBegin + formatted.size();
            }
        }
        m_cells.push_back(spanOf(cellBegin, cellEnd));
        cellBegin = cellEnd + 1;
    }
    // A line whose cells are all empty (";" alone) is no row of the file, as a row not typed into yet.
    if (m_text.size() - lineBegin > columnCount() - 1)
        m_loaded.push_back(spanOf(lineBegin, m_text.size()));
    return end;
}

void ListTable::appendLines(std::string_view text, Encoding encoding)
{
    // CR LF, a lone CR and LF all end a line, and empty lines are passed over: so every run of other bytes is a
    // row, whichever line end stands between.
    std::size_t at = 0;
    while (at < text.size()) {
        if (isLineEnd(text[at]))
            ++at;
        else
            at = appendRow(text, at, encoding, LineEnds::EndTheRow);
    }
}

std::vector<std::string> cellsOfLine(const ListKind& kind, std::string_view line)
{
    ListTable table(kind);
    table.appendRow(line, 0, ListTable::Encoding::Utf8, ListTable::LineEnds::InCell);
    return table.rows()[0];
}

bool ListTable::isUntyped(std::size_t row) const
{
    const auto first = m_cells.begin() + static_cast<std::ptrdiff_t>(row * columnCount());
    return std::all_of(first, first + static_cast<std::ptrdiff_t>(columnCount()),
                       [](const Span& cell) { return cell.size == 0; });
}

void ListTable::load(const std::filesystem::path& file)
{
    ListTable loaded(*m_kind);
    std::error_code error;
    const auto size = static_cast<std::size_t>(std::filesystem::file_size(file, error));
    if (!error)
        loaded.m_text.reserve(size + size / 8);
    std::string unfinished; // a line cut by the end of a block
    readFileInBlocks(file, [&](std::string_view block) {
        if (loaded.m_cells.capacity() == 0 && !error) {
            // Room for the rows, judged by the line ends of the file's first 64 KiB, so the cells seldom move;
            // past 64 MiB of cells the vector grows as it needs.
            const std::string_view sample = block.substr(0, std::size_t{1} << 16);
            const auto lineEnds = static_cast<std::size_t>(
                std::max(std::count(sample.begin(), sample.end(), '\n'), std::count(sample.begin(), sample.end(), '\r')));
            const std::size_t rows = (lineEnds + 1) * (size / std::max<std::size_t>(sample.size(), 1) + 1);
            loaded.m_cells.reserve(std::min(rows * columnCount(), (std::size_t{64} << 20) / sizeof(Span)));
        }
        const std::size_t lastEnd = block.find_last_of("\r\n");
        if (lastEnd == std::string_view::npos) {
            unfinished.append(block);
            return;
        }
        std::size_t from = 0;
        if (!unfinished.empty()) {
            from = block.find_first_of("\r\n");
            unfinished.append(block.substr(0, from));
            loaded.appendLines(unfinished, Encoding::Windows1252);
            unfinished.clear();
        }
        loaded.appendLines(block.substr(from, lastEnd - from), Encoding::Windows1252);
        unfinished.assign(block.substr(lastEnd + 1));
    });
    if (!unfinished.empty())
        loaded.appendLines(unfinished, Encoding::Windows1252);
    *this = std::move(loaded);
}

std::vector<std::string> ListTable::loadedLines() const
{
    std::vector<std::string> lines;
    lines.reserve(m_loaded.size());
    for (const Span line : m_loaded)
        lines.emplace_back(lineText(line));
    return lines;
}

std::vector<std::string> ListTable::fileLines() const
{
    std::vector<std::string> lines;
    for (std::size_t row = 0; row < static_cast<std::size_t>(rowCount()); ++row) {
        // A row added but not typed into yet is no row of the file: it is saved once something was entered.
        if (isUntyped(row))
            continue;
        std::string& line = lines.emplace_back();
        for (std::size_t column = 0; column < columnCount(); ++column) {
            if (column > 0)
                line += ';';
            line.append(text(row, column));
        }
    }
    return lines;
}

std::string ListTable::fileBytes() const
{
    std::string text;
    for (const auto& line : fileLines()) {
        text += line;
        text += "\r\n";
    }
    return utf8ToCp1252(text);
}

bool ListTable::sameCells(const ListTable& other) const
{
    if (other.m_cells.size() != m_cells.size())
        return false;
    for (std::size_t row = 0; row < static_cast<std::size_t>(rowCount()); ++row) {
        for (std::size_t column = 0; column < columnCount(); ++column) {
            if (text(row, column) != other.text(row, column))
                return false;
        }
    }
    return true;
}

void ListTable::layOutAfterSave()
{
    ListTable laidOut(*m_kind);
    laidOut.m_text.reserve(m_text.size());
    laidOut.m_cells.reserve(m_cells.size());
    for (std::size_t row = 0; row < static_cast<std::size_t>(rowCount()); ++row) {
        const std::size_t lineBegin = laidOut.m_text.size();
        for (std::size_t column = 0; column < columnCount(); ++column) {
            if (column > 0)
                laidOut.m_text += ';';
            laidOut.m_cells.push_back(spanOf(laidOut.m_text.size(), laidOut.m_text.size() + text(row, column).size()));
            laidOut.m_text.append(text(row, column));
        }
        if (!isUntyped(row))
            laidOut.m_loaded.push_back(spanOf(lineBegin, laidOut.m_text.size()));
    }
    *this = std::move(laidOut);
}

bool ListTable::save(const std::filesystem::path& file)
{
    bool merged = false;
    updateFileLocked(file, [&](const FileOnDisk& onDisk) -> std::optional<std::string> {
        ListTable disk(*m_kind);
        disk.appendLines(onDisk.bytes, Encoding::Windows1252);
        const bool changedOutside =
            disk.m_loaded.size() != m_loaded.size() ||
            !std::equal(m_loaded.begin(), m_loaded.end(), disk.m_loaded.begin(),
                        [&](Span mine, Span theirs) { return lineText(mine) == disk.lineText(theirs); });
        if (onDisk.exists && changedOutside) {
            ListTable result(*m_kind);
            for (const auto& line : mergeLineChanges(loadedLines(), fileLines(), disk.loadedLines()))
                result.appendRow(line, 0, Encoding::Utf8, LineEnds::InCell);
            for (std::size_t row = 0; row < static_cast<std::size_t>(rowCount()); ++row) {
                if (isUntyped(row))
                    result.m_cells.resize(result.m_cells.size() + columnCount());
            }
            merged = !sameCells(result);
            *this = std::move(result);
        }
        return fileBytes();
    });
    layOutAfterSave();
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
