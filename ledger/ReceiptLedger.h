#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/FileLock.h"
#include "ledger/RowArena.h"

namespace zw {

class LedgerWatcher;

// The fifteen columns of the ledger, in file order.
enum class LedgerColumn : int {
    datum, belegnr, einnahme, ausgabe, waehrung, mwst, netto, anteil, biw, fuer1, fuer2, von, ort, buchung,
    bezeichnung
};
inline constexpr int kLedgerColumnCount = 15;

// Alignment codes handed to the grid: 0 text, 1 the amounts, 2 the number.
struct LedgerColumnInfo
{
    std::string_view key;
    std::string_view caption;
    int widthTwips;
    int alignment;
};
const std::array<LedgerColumnInfo, kLedgerColumnCount>& ledgerColumns();

constexpr int columnIndex(LedgerColumn column) { return static_cast<int>(column); }

// In memory a tab separates the cells of a row, so a TAB byte that stands in a line of belege.dat is held as this
// private-use character (no Windows-1252 byte reads as it) and written back as a TAB.
inline constexpr std::string_view kLiteralTab = "\uE009";

// Colours given to amount cells while loading: income green, expense red (the grid's colour values).
inline constexpr int kIncomeColour = 65280;
inline constexpr int kExpenseColour = 255;

// What changed in the ledger, told before and after so that a table model can follow.
enum class LedgerPhase { Before, After };
struct LedgerChange
{
    enum class Kind { Reset, Insert, Remove, Cell, Columns } kind;
    std::size_t row = 0;
    std::size_t count = 0;
    int column = 0;
};

// One row's tab-joined text in a single heap block, none for an empty row, for callers that keep rows apart from
// a ledger (the rows a ledger showed before the file was read again, a journal's replay).
class LedgerRow
{
public:
    LedgerRow() = default;
    explicit LedgerRow(std::string_view text);
    LedgerRow(const LedgerRow& other) : LedgerRow(other.text()) {}
    LedgerRow& operator=(const LedgerRow& other);
    LedgerRow(LedgerRow&&) noexcept = default;
    LedgerRow& operator=(LedgerRow&&) noexcept = default;
    ~LedgerRow() = default;

    std::string_view text() const;

private:
    std::unique_ptr<char[]> m_block; // the length, then the bytes
};

// The ReceiptLedger as the grid holds it: rows of tab-joined text, numbered from 0 here (row 1 of the grid is 0),
// the cell colours given at load, the current row and the visibility of the columns.
// The rows read from the file stay in one buffer as they were read; a row filed or edited since lives in a
// second buffer, and a short list of spans puts the rows of both in order.
class ReceiptLedger
{
public:
    static constexpr std::size_t kNoRow = static_cast<std::size_t>(-1);

    ReceiptLedger() { m_visible.fill(true); }

    std::size_t rowCount() const { return m_rowCount; }
    std::string_view rowText(std::size_t row) const;
    // A line with fewer fields shows empty cells; fields beyond the fifteenth are not shown.
    std::string_view cell(std::size_t row, int column) const;
    std::string_view cell(std::size_t row, LedgerColumn column) const { return cell(row, columnIndex(column)); }
    void setCell(std::size_t row, int column, std::string_view value);

    // Colour of an amount cell as loaded (0 for none); filed rows stay uncoloured until the next load.
    int cellColour(std::size_t row, int column) const;

    void appendRow(std::string tabJoined);
    void insertRow(std::size_t position, std::string tabJoined);
    void removeRow(std::size_t row);
    // Fills the ledger at once from lines of the file's text (";" already replaced by tab); returns the rows it
    // held before.
    std::vector<LedgerRow> assignRows(std::vector<LedgerRow> rows, std::vector<std::uint8_t> colours);
    // A copy of every row, for a change that must know what the grid showed.
    std::vector<LedgerRow> copyRows() const;
    // The row holding exactly this text nearest to `near`, or kNoRow: where a row the user saw stands after
    // another program changed the file.
    std::size_t findRowNear(std::string_view tabJoined, std::size_t near) const;
    void reserve(std::size_t rows) { m_side.reserveRows(rows); }

    // Calls visit(tabJoined) for every row in order, without looking each row up.
    template <typename Visit>
    void forEachRow(Visit&& visit) const
    {
        for (const Span& span : m_spans)
            (span.side ? m_side : m_base).visit(span.first, span.count, visit);
    }

    std::size_t currentRow() const { return m_current; }
    void setCurrentRow(std::size_t row);

    bool isColumnVisible(int column) const { return m_visible.at(static_cast<std::size_t>(column)); }
    void setColumnVisible(int column, bool visible);

    // The version of belege.dat the rows were last read from or written to.
    const FileStamp& diskStamp() const { return m_diskStamp; }
    void setDiskStamp(const FileStamp& stamp) { m_diskStamp = stamp; }

    // The journal of the ledger's changes, told by the store under belege.dat's lock; none by default.
    LedgerWatcher* watcher() const { return m_watcher; }
    void setWatcher(LedgerWatcher* watcher) { m_watcher = watcher; }

    using Listener = std::function<void(const LedgerChange&, LedgerPhase)>;
    void addListener(Listener listener) { m_listeners.push_back(std::move(listener)); }

private:
    friend class LedgerReader;

    // A run of rows that stand one after another in one of the two buffers.
    struct Span
    {
        bool side;
        std::size_t first;
        std::size_t count;
    };
    struct Place
    {
        std::size_t span;
        std::size_t offset; // within the span
    };

    Place placeOf(std::size_t row) const;
    const RowArena& arenaOf(const Span& span) const { return span.side ? m_side : m_base; }
    std::uint8_t coloursOf(std::size_t row) const;
    // Puts `count` rows of a span at the place of the ledger's row `row` (count 0 removes the row there).
    void replaceRow(std::size_t row, const Span* with);
    void insertSpan(std::size_t row, const Span& span);
    void spansChanged();
    void compactIfScattered();
    // Takes rows read from the file; their colours come from their text.
    void takeLoadedRows(RowArena rows);
    // The rows of m_base, in order, become the whole ledger; the side buffer goes.
    void holdOnlyBase();
    void tell(const LedgerChange& change, LedgerPhase phase);

    RowArena m_base;
    // Per row of m_base: bit 0 income coloured, bit 1 expense coloured; empty while the colours are those of the
    // rows' text, as for every ledger read from a file.
    std::vector<std::uint8_t> m_baseColours;
    RowArena m_side;
    std::vector<std::uint8_t> m_sideColours;
    std::size_t m_sideDeadRows = 0;
    std::vector<Span> m_spans;
    std::vector<std::size_t> m_spanEnds; // rows up to the end of each span
    std::size_t m_rowCount = 0;
    std::size_t m_current = kNoRow;
    std::array<bool, kLedgerColumnCount> m_visible{};
    std::vector<Listener> m_listeners;
    FileStamp m_diskStamp;
    LedgerWatcher* m_watcher = nullptr;
};

// One change of the ledger as it is applied to what is on disk. `seen` holds the rows the ledger showed before the
// file was read again, and is null when the file had not changed. Returning false refuses the change: nothing is
// saved.
using LedgerChangeRoutine = std::function<bool(ReceiptLedger& ledger, const std::vector<LedgerRow>* seen)>;

// The colour bits of a freshly read row.
std::uint8_t loadColours(std::string_view tabJoined);

// The field of a tab-joined row by column; a missing one is empty.
std::string_view rowField(std::string_view tabJoined, LedgerColumn column);

// Reads belege.dat in blocks of any size: rows are split as the bytes come, so the file is never held whole.
class LedgerReader
{
public:
    // Without a sink the reader keeps the rows for a ledger; with one it hands each row's text to the sink as soon
    // as the row is complete and keeps none, for callers that only pass over the rows.
    using RowSink = std::function<void(std::string_view tabJoined)>;
    LedgerReader() = default;
    explicit LedgerReader(RowSink sink) : m_sink(std::move(sink)) {}

    // Room for a file of this size at once, when it is known.
    void reserve(std::size_t fileBytes);
    void feed(std::string_view block);
    // Ends the last row, for a reader with a sink.
    void finish();
    // Ends the last row and hands the rows to the ledger, replacing what it held; returns the rows it held.
    std::vector<LedgerRow> finish(ReceiptLedger& ledger);
    // The same without the rows held before.
    void finishInto(ReceiptLedger& ledger);

private:
    void handRowsToSink();

    RowSink m_sink;
    RowArena m_rows;
    std::size_t m_pending = 0; // bytes of the unfinished row at the arena's tail, already in memory form
    bool m_afterCr = false;    // the last block ended in CR, so a leading LF belongs to it
};

// Reads belege.dat bytes from a stream into the ledger, replacing what it held.
void readLedger(std::istream& in, ReceiptLedger& ledger);
// The bytes of belege.dat: every row with ";" for tab, Windows-1252, CR LF.
std::string ledgerBytes(const ReceiptLedger& ledger);
// The same bytes handed to `write` in pieces of about a megabyte, so a save never holds the file whole.
void writeLedgerBytes(const ReceiptLedger& ledger, const std::function<void(std::string_view)>& write);
// Appends one row's line of belege.dat.
void appendLedgerLine(std::string& bytes, std::string_view tabJoined);

} // namespace zw
