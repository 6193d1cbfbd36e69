#include "ledger/ReceiptLedger.h"

#include <algorithm>
#include <cstring>
#include <istream>
#include <stdexcept>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

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

// The bytes that end a plain run of a line as read: the control bytes up to CR, among them the line ends and TAB,
// and anything beyond ASCII. Read as signed, they are exactly the bytes below CR + 1.
constexpr signed char kFirstPlainByte = '\r' + 1;
bool endsPlainRun(char c) { return static_cast<signed char>(c) < kFirstPlainByte; }

// Copies bytes of belege.dat with ";" turned into tab up to the first byte that ends a plain run, and returns how
// many it copied. `out` has room for all bytes up to `end`; those beyond what it copies may be written as well.
std::size_t copyPlainRun(const char* in, const char* end, char* out)
{
    const auto size = static_cast<std::size_t>(end - in);
    std::size_t n = 0;
#if defined(__SSE2__)
    const __m128i semicolon = _mm_set1_epi8(';');
    const __m128i toTab = _mm_set1_epi8(';' - '\t');
    const __m128i firstPlain = _mm_set1_epi8(kFirstPlainByte);
    for (; n + 16 <= size; n += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + n));
        const __m128i swapped = _mm_sub_epi8(bytes, _mm_and_si128(_mm_cmpeq_epi8(bytes, semicolon), toTab));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + n), swapped);
        const int mask = _mm_movemask_epi8(_mm_cmplt_epi8(bytes, firstPlain));
        if (mask != 0)
            return n + static_cast<std::size_t>(__builtin_ctz(static_cast<unsigned>(mask)));
    }
#endif
    for (; n < size; ++n) {
        const char c = in[n];
        if (endsPlainRun(c))
            return n;
        out[n] = c == ';' ? '\t' : c;
    }
    return n;
}

// Steps over the line end at `p`: CR LF, a lone CR or a lone LF. A CR that ends the block may have its LF in the
// next one.
const char* afterLineEnd(const char* p, const char* end, bool& afterCr)
{
    if (*p++ == '\r') {
        if (p == end)
            afterCr = true;
        else if (*p == '\n')
            ++p;
    }
    return p;
}

// Copies a row in memory form as belege.dat holds it, tab turned into ";", and returns false without a result
// when the row holds a byte beyond ASCII (its text needs the code page). Reads and writes whole 16-byte blocks:
// the row lies in a RowArena, and `out` has room for them.
bool copyAsciiRow(std::string_view text, char* out)
{
    const char* in = text.data();
    const std::size_t size = text.size();
    std::size_t n = 0;
#if defined(__SSE2__)
    const __m128i tab = _mm_set1_epi8('\t');
    const __m128i toSemicolon = _mm_set1_epi8(';' - '\t');
    for (; n < size; n += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + n));
        unsigned high = static_cast<unsigned>(_mm_movemask_epi8(bytes));
        if (size - n < 16)
            high &= (1u << (size - n)) - 1;
        if (high != 0)
            return false;
        const __m128i swapped = _mm_add_epi8(bytes, _mm_and_si128(_mm_cmpeq_epi8(bytes, tab), toSemicolon));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + n), swapped);
    }
#endif
    for (; n < size; ++n) {
        const char c = in[n];
        if (static_cast<unsigned char>(c) >= 0x80)
            return false;
        out[n] = c == '\t' ? ';' : c;
    }
    return true;
}

// The memory form of each byte from 0x80 up, taken once from the code page's own conversion.
const std::array<std::string, 128>& memoryFormOfHighBytes()
{
    static const std::array<std::string, 128> forms = [] {
        std::array<std::string, 128> made;
        for (int byte = 0x80; byte <= 0xFF; ++byte)
            made[static_cast<std::size_t>(byte - 0x80)] = cp1252ToUtf8(std::string(1, static_cast<char>(byte)));
        return made;
    }();
    return forms;
}

// The file's byte for each character the reader makes of a byte beyond ASCII, and for kLiteralTab, keyed by the
// character's UTF-8 bytes; taken from the code page's own conversion the other way.
struct FileByte
{
    std::uint32_t utf8;
    char byte;
    bool operator<(const FileByte& other) const { return utf8 < other.utf8; }
};

std::uint32_t packedUtf8(std::string_view bytes)
{
    std::uint32_t packed = 0;
    for (char c : bytes)
        packed = packed << 8 | static_cast<unsigned char>(c);
    return packed;
}

const std::vector<FileByte>& fileBytesOfCharacters()
{
    static const std::vector<FileByte> table = [] {
        std::vector<FileByte> made{{packedUtf8(kLiteralTab), '\t'}};
        for (const std::string& form : memoryFormOfHighBytes()) {
            const std::string back = utf8ToCp1252(form);
            if (back.size() == 1)
                made.push_back({packedUtf8(form), back[0]});
        }
        std::sort(made.begin(), made.end());
        return made;
    }();
    return table;
}

// Writes a row that holds bytes beyond ASCII as belege.dat holds it and returns how many bytes that took, or 0
// when one of its characters is not one the reader makes (then the general conversion takes the row). Never
// writes more bytes than the row has.
std::size_t copyKnownCharacters(std::string_view text, char* out)
{
    const auto& table = fileBytesOfCharacters();
    char* at = out;
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        if (lead < 0x80) {
            *at++ = lead == '\t' ? ';' : static_cast<char>(lead);
            ++i;
            continue;
        }
        const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 0;
        if (length == 0 || i + length > text.size())
            return 0;
        const FileByte key{packedUtf8(text.substr(i, length)), 0};
        const auto found = std::lower_bound(table.begin(), table.end(), key);
        if (found == table.end() || found->utf8 != key.utf8)
            return 0;
        *at++ = found->byte;
        i += length;
    }
    return static_cast<std::size_t>(at - out);
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

std::string_view ReceiptLedger::rowText(std::size_t row) const
{
    if (row >= m_rowCount)
        throw std::out_of_range("ledger row");
    const Place place = placeOf(row);
    const Span& span = m_spans[place.span];
    return arenaOf(span).text(span.first + place.offset);
}

std::string_view ReceiptLedger::cell(std::size_t row, int column) const
{
    if (column < 0 || column >= kLedgerColumnCount)
        throw RunError::invalidCall();
    return field(rowText(row), column);
}

void ReceiptLedger::setCell(std::size_t row, int column, std::string_view value)
{
    if (column < 0 || column >= kLedgerColumnCount)
        throw RunError::invalidCall();
    std::string text(rowText(row));
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
    // The edited row keeps the colours it was loaded with.
    m_sideColours.push_back(coloursOf(row));
    m_side.append(text);
    const Span edited{true, m_side.rowCount() - 1, 1};
    replaceRow(row, &edited);
    tell({LedgerChange::Kind::Cell, row, 1, column}, LedgerPhase::After);
}

int ReceiptLedger::cellColour(std::size_t row, int column) const
{
    if (row >= m_rowCount)
        throw std::out_of_range("ledger row");
    const bool income = column == columnIndex(LedgerColumn::einnahme);
    if (!income && column != columnIndex(LedgerColumn::ausgabe))
        return 0;
    const std::uint8_t bits = coloursOf(row);
    if (income)
        return (bits & kIncomeBit) ? kIncomeColour : 0;
    return (bits & kExpenseBit) ? kExpenseColour : 0;
}

void ReceiptLedger::appendRow(std::string tabJoined) { insertRow(m_rowCount, std::move(tabJoined)); }

void ReceiptLedger::insertRow(std::size_t position, std::string tabJoined)
{
    if (position > m_rowCount)
        throw RunError::invalidCall();
    tell({LedgerChange::Kind::Insert, position, 1, 0}, LedgerPhase::Before);
    m_side.append(tabJoined);
    m_sideColours.push_back(0);
    insertSpan(position, {true, m_side.rowCount() - 1, 1});
    if (m_current != kNoRow && m_current >= position)
        ++m_current;
    tell({LedgerChange::Kind::Insert, position, 1, 0}, LedgerPhase::After);
}

void ReceiptLedger::removeRow(std::size_t row)
{
    if (row >= m_rowCount)
        throw RunError::subscriptOutOfRange();
    tell({LedgerChange::Kind::Remove, row, 1, 0}, LedgerPhase::Before);
    replaceRow(row, nullptr);
    // The grid keeps the same position current, or the last row when the bottom one went.
    if (m_rowCount == 0)
        m_current = kNoRow;
    else if (m_current != kNoRow && m_current >= m_rowCount)
        m_current = m_rowCount - 1;
    tell({LedgerChange::Kind::Remove, row, 1, 0}, LedgerPhase::After);
}

std::vector<LedgerRow> ReceiptLedger::assignRows(std::vector<LedgerRow> rows, std::vector<std::uint8_t> colours)
{
    tell({LedgerChange::Kind::Reset}, LedgerPhase::Before);
    std::vector<LedgerRow> before = copyRows();
    RowArena arena;
    for (const auto& row : rows)
        arena.append(row.text());
    rows = {};
    arena.shrinkToFit();
    m_base = std::move(arena);
    m_baseColours = std::move(colours);
    m_baseColours.resize(m_base.rowCount(), 0);
    holdOnlyBase();
    m_current = m_rowCount == 0 ? kNoRow : 0;
    tell({LedgerChange::Kind::Reset}, LedgerPhase::After);
    return before;
}

void ReceiptLedger::takeLoadedRows(RowArena rows)
{
    tell({LedgerChange::Kind::Reset}, LedgerPhase::Before);
    m_base = std::move(rows);
    m_baseColours.clear();
    holdOnlyBase();
    m_current = m_rowCount == 0 ? kNoRow : 0;
    tell({LedgerChange::Kind::Reset}, LedgerPhase::After);
}

std::vector<LedgerRow> ReceiptLedger::copyRows() const
{
    std::vector<LedgerRow> rows;
    rows.reserve(m_rowCount);
    forEachRow([&rows](std::string_view text) { rows.emplace_back(text); });
    return rows;
}

std::size_t ReceiptLedger::findRowNear(std::string_view tabJoined, std::size_t near) const
{
    const std::size_t count = m_rowCount;
    near = std::min(near, count);
    for (std::size_t distance = 0; distance <= std::max(near, count - near); ++distance) {
        if (distance <= near && near - distance < count && rowText(near - distance) == tabJoined)
            return near - distance;
        if (near + distance < count && rowText(near + distance) == tabJoined)
            return near + distance;
    }
    return kNoRow;
}

void ReceiptLedger::setCurrentRow(std::size_t row)
{
    if (row != kNoRow && row >= m_rowCount)
        throw RunError::subscriptOutOfRange();
    m_current = row;
}

void ReceiptLedger::setColumnVisible(int column, bool visible)
{
    m_visible.at(static_cast<std::size_t>(column)) = visible;
    tell({LedgerChange::Kind::Columns, 0, 0, column}, LedgerPhase::After);
}

ReceiptLedger::Place ReceiptLedger::placeOf(std::size_t row) const
{
    if (m_spans.size() == 1)
        return {0, row};
    const auto found = std::upper_bound(m_spanEnds.begin(), m_spanEnds.end(), row);
    const auto span = static_cast<std::size_t>(found - m_spanEnds.begin());
    return {span, row - (span == 0 ? 0 : m_spanEnds[span - 1])};
}

std::uint8_t ReceiptLedger::coloursOf(std::size_t row) const
{
    const Place place = placeOf(row);
    const Span& span = m_spans[place.span];
    const std::size_t at = span.first + place.offset;
    if (span.side)
        return m_sideColours[at];
    return m_baseColours.empty() ? loadColours(m_base.text(at)) : m_baseColours[at];
}

void ReceiptLedger::replaceRow(std::size_t row, const Span* with)
{
    const Place place = placeOf(row);
    const Span old = m_spans[place.span];
    if (old.side)
        ++m_sideDeadRows;
    Span pieces[3];
    std::size_t count = 0;
    if (place.offset > 0)
        pieces[count++] = {old.side, old.first, place.offset};
    if (with != nullptr)
        pieces[count++] = *with;
    if (place.offset + 1 < old.count)
        pieces[count++] = {old.side, old.first + place.offset + 1, old.count - place.offset - 1};
    const auto at = m_spans.begin() + static_cast<std::ptrdiff_t>(place.span);
    if (count == 0) {
        m_spans.erase(at);
    } else {
        *at = pieces[0];
        m_spans.insert(at + 1, pieces + 1, pieces + count);
    }
    spansChanged();
    compactIfScattered();
}

void ReceiptLedger::insertSpan(std::size_t row, const Span& span)
{
    auto joins = [](const Span& before, const Span& after) {
        return before.side == after.side && before.first + before.count == after.first;
    };
    if (row == m_rowCount) {
        if (!m_spans.empty() && joins(m_spans.back(), span))
            m_spans.back().count += span.count;
        else
            m_spans.push_back(span);
    } else {
        const Place place = placeOf(row);
        const auto at = m_spans.begin() + static_cast<std::ptrdiff_t>(place.span);
        if (place.offset == 0) {
            if (place.span > 0 && joins(m_spans[place.span - 1], span))
                m_spans[place.span - 1].count += span.count;
            else
                m_spans.insert(at, span);
        } else {
            const Span old = *at;
            const Span pieces[] = {{old.side, old.first, place.offset},
                                   span,
                                   {old.side, old.first + place.offset, old.count - place.offset}};
            *at = pieces[0];
            m_spans.insert(at + 1, pieces + 1, pieces + 3);
        }
    }
    spansChanged();
    compactIfScattered();
}

void ReceiptLedger::spansChanged()
{
    m_spanEnds.resize(m_spans.size());
    std::size_t rows = 0;
    for (std::size_t i = 0; i < m_spans.size(); ++i) {
        rows += m_spans[i].count;
        m_spanEnds[i] = rows;
    }
    m_rowCount = rows;
}

// Many edits leave many spans and rows nobody shows in the second buffer: then the rows are put into one buffer
// again, which costs about what a save does and happens once in thousands of edits.
void ReceiptLedger::compactIfScattered()
{
    constexpr std::size_t kMaxSpans = 4096;
    constexpr std::size_t kMaxDeadRows = 65536;
    if (m_spans.size() <= kMaxSpans && m_sideDeadRows <= kMaxDeadRows)
        return;
    RowArena arena;
    std::vector<std::uint8_t> colours;
    colours.reserve(m_rowCount);
    bool coloursFromText = true;
    for (std::size_t i = 0; i < m_spans.size(); ++i) {
        const Span& span = m_spans[i];
        arenaOf(span).visit(span.first, span.count, [&](std::string_view text) { arena.append(text); });
        for (std::size_t row = span.first; row < span.first + span.count; ++row) {
            const std::uint8_t bits = span.side                ? m_sideColours[row]
                                      : m_baseColours.empty() ? loadColours(m_base.text(row))
                                                              : m_baseColours[row];
            colours.push_back(bits);
        }
    }
    for (std::size_t row = 0; row < colours.size() && coloursFromText; ++row)
        coloursFromText = colours[row] == loadColours(arena.text(row));
    arena.shrinkToFit();
    m_base = std::move(arena);
    m_baseColours = coloursFromText ? std::vector<std::uint8_t>{} : std::move(colours);
    holdOnlyBase();
}

void ReceiptLedger::holdOnlyBase()
{
    m_side = RowArena();
    m_sideColours.clear();
    m_sideDeadRows = 0;
    m_spans.clear();
    if (m_base.rowCount() > 0)
        m_spans.push_back({false, 0, m_base.rowCount()});
    spansChanged();
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

void LedgerReader::reserve(std::size_t fileBytes)
{
    if (m_sink)
        return;
    m_rows.reserveTail(m_pending, fileBytes);
    m_rows.reserveRows(fileBytes / 64 + 64);
}

// Rows come in runs of plain bytes: the fast path copies them to the arena with the separator swapped and stops
// at a line end, a TAB or a byte beyond ASCII, which is written in its memory form before the run goes on.
void LedgerReader::feed(std::string_view block)
{
    const char* p = block.data();
    const char* end = p + block.size();
    if (p == end)
        return;
    if (m_afterCr && *p == '\n')
        ++p;
    m_afterCr = false;
    const auto& wide = memoryFormOfHighBytes();
    while (p < end) {
        // Room for the rest of the block, and for one character that grows.
        char* row = m_rows.reserveTail(m_pending, static_cast<std::size_t>(end - p) + kLiteralTab.size());
        const std::size_t copied = copyPlainRun(p, end, row + m_pending);
        p += copied;
        m_pending += copied;
        if (p == end)
            break;
        const auto c = static_cast<unsigned char>(*p);
        if (c == '\r' || c == '\n') {
            m_rows.endRow(m_pending);
            m_pending = 0;
            p = afterLineEnd(p, end, m_afterCr);
            continue;
        }
        const std::string_view form = c == '\t'  ? kLiteralTab
                                      : c < 0x80 ? std::string_view(p, 1)
                                                 : std::string_view(wide[c - 0x80]);
        std::memcpy(row + m_pending, form.data(), form.size());
        m_pending += form.size();
        ++p;
    }
    if (m_sink)
        handRowsToSink();
}

void LedgerReader::handRowsToSink()
{
    m_rows.visit(0, m_rows.rowCount(), m_sink);
    m_rows.keepOnlyTail(m_pending);
}

void LedgerReader::finish()
{
    if (m_pending > 0) {
        m_rows.endRow(m_pending);
        m_pending = 0;
    }
    if (m_sink)
        handRowsToSink();
}

std::vector<LedgerRow> LedgerReader::finish(ReceiptLedger& ledger)
{
    std::vector<LedgerRow> before = ledger.copyRows();
    finishInto(ledger);
    return before;
}

void LedgerReader::finishInto(ReceiptLedger& ledger)
{
    finish();
    m_rows.shrinkToFit();
    ledger.takeLoadedRows(std::move(m_rows));
    m_rows = RowArena();
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
    reader.finishInto(ledger);
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
    std::string piece(kPiece + 4096, '\0');
    std::size_t used = 0;
    std::string line;
    ledger.forEachRow([&](std::string_view text) {
        // Room for the row, its line end and the whole blocks the copy stores.
        const std::size_t room = text.size() + 2 + RowArena::kSlack;
        if (used + room > piece.size()) {
            write({piece.data(), used});
            used = 0;
            if (room > piece.size())
                piece.resize(room);
        }
        char* out = piece.data() + used;
        if (copyAsciiRow(text, out)) {
            used += text.size();
        } else if (const std::size_t written = copyKnownCharacters(text, out)) {
            used += written;
        } else {
            line.clear();
            appendLedgerLine(line, text);
            line.resize(line.size() - 2);
            std::memcpy(out, line.data(), line.size()); // never longer than its text
            used += line.size();
        }
        piece[used++] = '\r';
        piece[used++] = '\n';
        if (used >= kPiece) {
            write({piece.data(), used});
            used = 0;
        }
    });
    write({piece.data(), used});
}

std::string ledgerBytes(const ReceiptLedger& ledger)
{
    std::string bytes;
    writeLedgerBytes(ledger, [&bytes](std::string_view piece) { bytes += piece; });
    return bytes;
}

} // namespace zw
