#include "ledger/ReceiptLedger.h"

#include <algorithm>
#include <cstring>
#include <istream>

#include "core/CodePage.h"
#include "core/RunError.h"

namespace zw {
namespace {

constexpr std::uint8_t kIncomeBit = 1;
constexpr std::uint8_t kExpenseBit = 2;

// The field of a tab-joined row by number; a missing one is empty.
std::string_view field(std::string_view row, int column)
{
    std::size_t start = 0;
    for (int i = 0; i < column; ++i) {
        std::size_t tab = row.find('\t', start);
        if (tab == std::string_view::npos)
            return {};
        start = tab + 1;
    }
    std::size_t end = row.find('\t', start);
    return row.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start);
}

bool isAscii(std::string_view bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

} // namespace

const std::array<LedgerColumnInfo, kLedgerColumnCount>& ledgerColumns()
{
    static const std::array<LedgerColumnInfo, kLedgerColumnCount> kColumns = {{
        {"datum", "Datum", 2000, 0},
        {"belegnr", "Beleg-Nr.:", 1200, 2},
        {"einnahme", "Einnahme", 2650, 1},
        {"ausgabe", "Ausgabe", 2650, 1},
        {"waehrung", "Währung", 1715, 0},
        {"mwst", "MwSt.", 1715, 0},
        {"netto", "Netto", 1715, 0},
        {"anteil", "Anteil", 1715, 0},
        {"biw", "Biw", 1715, 0},
        {"fuer1", "Für 1", 1715, 0},
        {"fuer2", "Für 2", 1715, 0},
        {"von", "Von", 1715, 0},
        {"ort", "Ort", 1715, 0},
        {"buchung", "Buchung", 1715, 0},
        {"bezeichnung", "Bezeichnung", 1715, 0},
    }};
    return kColumns;
}

LedgerRow::LedgerRow(std::string_view text)
{
    if (text.empty())
        return;
    const std::size_t size = text.size();
    m_block = std::make_unique_for_overwrite<char[]>(sizeof size + size);
    std::memcpy(m_block.get(), &size, sizeof size);
    std::memcpy(m_block.get() + sizeof size, text.data(), size);
}

LedgerRow& LedgerRow::operator=(const LedgerRow& other)
{
    if (this != &other)
        *this = LedgerRow(other.text());
    return *this;
}

std::string_view LedgerRow::text() const
{
    if (!m_block)
        return {};
    std::size_t size = 0;
    std::memcpy(&size, m_block.get(), sizeof size);
    return {m_block.get() + sizeof size, size};
}

std::string_view ReceiptLedger::cell(std::size_t row, int column) const
{
    if (column < 0 || column >= kLedgerColumnCount)
        throw RunError::invalidCall();
    return field(m_rows.at(row).text(), column);
}

void ReceiptLedger::setCell(std::size_t row, int column, std::string_view value)
{
    if (column < 0 || column >= kLedgerColumnCount)
        throw RunError::invalidCall();
    std::string text(m_rows.at(row).text());
    tell({LedgerChange::Kind::Cell, row, 1, column}, LedgerPhase::Before);
    std::size_t start = 0;
    for (int i = 0; i < column; ++i) {
        std::size_t tab = text.find('\t', start);
        if (tab == std::string::npos) {
            // A short row gets the missing cells before the edited one.
            text.append(static_cast<std::size_t>(column - i), '\t');
            start = text.size();
            break;
        }
        start = tab + 1;
    }
    std::size_t end = text.find('\t', start);
    text.replace(start, end == std::string::npos ? std::string::npos : end - start, value);
    m_rows[row] = LedgerRow(text);
    tell({LedgerChange::Kind::Cell, row, 1, column}, LedgerPhase::After);
}

int ReceiptLedger::cellColour(std::size_t row, int column) const
{
    std::uint8_t bits = m_colours.at(row);
    if (column == columnIndex(LedgerColumn::einnahme) && (bits & kIncomeBit))
        return kIncomeColour;
    if (column == columnIndex(LedgerColumn::ausgabe) && (bits & kExpenseBit))
        return kExpenseColour;
    return 0;
}

void ReceiptLedger::appendRow(std::string tabJoined) { insertRow(m_rows.size(), std::move(tabJoined)); }

void ReceiptLedger::insertRow(std::size_t position, std::string tabJoined)
{
    if (position > m_rows.size())
        throw RunError::invalidCall();
    tell({LedgerChange::Kind::Insert, position, 1, 0}, LedgerPhase::Before);
    auto offset = static_cast<std::ptrdiff_t>(position);
    m_rows.insert(m_rows.begin() + offset, LedgerRow(tabJoined));
    m_colours.insert(m_colours.begin() + offset, std::uint8_t{0});
    if (m_current != kNoRow && m_current >= position)
        ++m_current;
    tell({LedgerChange::Kind::Insert, position, 1, 0}, LedgerPhase::After);
}

void ReceiptLedger::removeRow(std::size_t row)
{
    if (row >= m_rows.size())
        throw RunError::subscriptOutOfRange();
    tell({LedgerChange::Kind::Remove, row, 1, 0}, LedgerPhase::Before);
    auto offset = static_cast<std::ptrdiff_t>(row);
    m_rows.erase(m_rows.begin() + offset);
    m_colours.erase(m_colours.begin() + offset);
    // The grid keeps the same position current, or the last row when the bottom one went.
    if (m_rows.empty())
        m_current = kNoRow;
    else if (m_current != kNoRow && m_current >= m_rows.size())
        m_current = m_rows.size() - 1;
    tell({LedgerChange::Kind::Remove, row, 1, 0}, LedgerPhase::After);
}

std::vector<LedgerRow> ReceiptLedger::assignRows(std::vector<LedgerRow> rows, std::vector<std::uint8_t> colours)
{
    tell({LedgerChange::Kind::Reset}, LedgerPhase::Before);
    std::swap(m_rows, rows);
    m_colours = std::move(colours);
    m_colours.resize(m_rows.size(), 0);
    m_current = m_rows.empty() ? kNoRow : 0;
    tell({LedgerChange::Kind::Reset}, LedgerPhase::After);
    return rows;
}

std::size_t ReceiptLedger::findRowNear(std::string_view tabJoined, std::size_t near) const
{
    const std::size_t count = m_rows.size();
    near = std::min(near, count);
    for (std::size_t distance = 0; distance <= std::max(near, count - near); ++distance) {
        if (distance <= near && near - distance < count && m_rows[near - distance].text() == tabJoined)
            return near - distance;
        if (near + distance < count && m_rows[near + distance].text() == tabJoined)
            return near + distance;
    }
    return kNoRow;
}

void ReceiptLedger::setCurrentRow(std::size_t row)
{
    if (row != kNoRow && row >= m_rows.size())
        throw RunError::subscriptOutOfRange();
    m_current = row;
}

void ReceiptLedger::setColumnVisible(int column, bool visible)
{
    m_visible.at(static_cast<std::size_t>(column)) = visible;
    tell({LedgerChange::Kind::Columns, 0, 0, column}, LedgerPhase::After);
}

void ReceiptLedger::tell(const LedgerChange& change, LedgerPhase phase)
{
    for (const auto& listener : m_listeners)
        listener(change, phase);
}

std::uint8_t loadColours(std::string_view tabJoined)
{
    std::uint8_t bits = 0;
    if (!field(tabJoined, columnIndex(LedgerColumn::einnahme)).empty())
        bits |= kIncomeBit;
    if (!field(tabJoined, columnIndex(LedgerColumn::ausgabe)).empty())
        bits |= kExpenseBit;
    return bits;
}

std::string_view rowField(std::string_view tabJoined, LedgerColumn column)
{
    return field(tabJoined, columnIndex(column));
}

void LedgerReader::finishLine()
{
    if (!isAscii(m_line))
        m_line = cp1252ToUtf8(m_line);
    if (m_line.find('\t') != std::string::npos) {
        std::string text;
        for (char c : m_line) {
            if (c == '\t')
                text += kLiteralTab;
            else
                text += c;
        }
        m_line = std::move(text);
    }
    std::replace(m_line.begin(), m_line.end(), ';', '\t');
    if (m_sink) {
        m_sink(m_line);
    } else {
        LedgerRow row(m_line);
        m_colours.push_back(loadColours(row.text()));
        m_rows.push_back(std::move(row));
    }
    m_line.clear();
    m_inLine = false;
}

void LedgerReader::feed(std::string_view block)
{
    const char* p = block.data();
    const char* end = p + block.size();
    if (p == end)
        return;
    if (m_afterCr && *p == '\n')
        ++p;
    m_afterCr = false;
    while (p < end) {
        const char* stop = std::find_if(p, end, [](char c) { return c == '\r' || c == '\n'; });
        m_line.append(p, stop);
        m_inLine = m_inLine || stop != p;
        if (stop == end)
            break;
        finishLine();
        p = stop + 1;
        if (*stop == '\r') {
            if (p == end)
                m_afterCr = true;
            else if (*p == '\n')
                ++p;
        }
    }
}

void LedgerReader::finish()
{
    if (m_inLine)
        finishLine();
}

std::vector<LedgerRow> LedgerReader::finish(ReceiptLedger& ledger)
{
    finish();
    auto before = ledger.assignRows(std::move(m_rows), std::move(m_colours));
    m_rows = {};
    m_colours = {};
    return before;
}

void readLedger(std::istream& in, ReceiptLedger& ledger)
{
    LedgerReader reader;
    std::vector<char> chunk(1 << 20);
    while (in) {
        in.read(chunk.data(), static_cast<std::streamsize>(chunk.size()));
        const auto got = static_cast<std::size_t>(in.gcount());
        if (got == 0)
            break;
        reader.feed({chunk.data(), got});
    }
    reader.finish(ledger);
}

void appendLedgerLine(std::string& bytes, std::string_view text)
{
    const std::size_t start = bytes.size();
    bytes += text;
    // One pass turns tabs into separators and finds whether the row needs the code page at all.
    bool ascii = true;
    for (std::size_t i = start; i < bytes.size(); ++i) {
        char& c = bytes[i];
        if (c == '\t') {
            c = ';';
        } else if (static_cast<unsigned char>(c) >= 0x80) {
            ascii = false;
            break;
        }
    }
    if (!ascii) {
        bytes.resize(start);
        std::string joined(text);
        std::replace(joined.begin(), joined.end(), '\t', ';');
        for (std::size_t at = joined.find(kLiteralTab); at != std::string::npos; at = joined.find(kLiteralTab, at + 1))
            joined.replace(at, kLiteralTab.size(), "\t");
        bytes += utf8ToCp1252(joined);
    }
    bytes += "\r\n";
}

void writeLedgerBytes(const ReceiptLedger& ledger, const std::function<void(std::string_view)>& write)
{
    constexpr std::size_t kPiece = 1 << 20;
    std::string bytes;
    bytes.reserve(kPiece + 4096);
    for (std::size_t row = 0; row < ledger.rowCount(); ++row) {
        appendLedgerLine(bytes, ledger.rowText(row));
        if (bytes.size() >= kPiece) {
            write(bytes);
            bytes.clear();
        }
    }
    write(bytes);
}

std::string ledgerBytes(const ReceiptLedger& ledger)
{
    std::string bytes;
    writeLedgerBytes(ledger, [&bytes](std::string_view piece) { bytes += piece; });
    return bytes;
}

} // namespace zw
