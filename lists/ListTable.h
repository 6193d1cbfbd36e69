#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zw {

class ReceiptForm;

// The two reference lists, one design: what differs between the payer list and the article list is this table.
struct ListColumn
{
    std::string_view key;
    std::string_view heading;
    int widthTwips;
};

struct ListKind
{
    std::string_view window; // von_liste, artikel_fuer
    std::string_view caption;
    std::string_view file; // below the program folder
    std::vector<ListColumn> columns;
    bool hasAmounts; // artikel_fuer: betrag shown as "#####.##", Netto/Brutto choice, sums in the report footer
};

const ListKind& payerList();
const ListKind& articleList();
// By window name or file stem ("von_liste", "artikel_fuer"); nullptr for anything else.
const ListKind* listKindNamed(std::string_view name);

// The toolbar Coolbar1 in its order: key, tool tip, caption (only hinzu_bar has one).
struct ListToolKey
{
    std::string_view key;
    std::string_view toolTip;
    std::string_view caption;
};
std::span<const ListToolKey> listToolKeys();

// The window's own texts.
inline constexpr std::string_view kEditTitle = "Editieren";
inline constexpr std::string_view kEditText = "Um einen Eintrag zu editieren, klicken Sie mit der Maus\r2 Mal in das "
                                              "entsprechende Feld.";
inline constexpr std::string_view kDeleteTitle = "Löschen";
inline constexpr std::string_view kErrorTitle = "Fehler!";
enum class GridOperation
{
    Add,
    Delete,
    Save
};
// "Datensatz löschen?" for one row, the warning with the count for several.
std::string deleteQuestion(int selectedRows);
// The error box's text: the operation's line, CR LF, the number, a blank and the description.
std::string gridErrorText(GridOperation operation, int number, std::string_view description);
// The hint over a cell: web, mail or file link; empty for plain text.
std::string linkHint(std::string_view cell);

class ListTable;

// One row of a ListTable: each cell reads as a copy of its text, so callers hold strings, not the table's bytes.
class ListRowCells
{
public:
    class Iterator
    {
    public:
        Iterator(const ListRowCells& row, std::size_t column) : m_row(&row), m_column(column) {}
        std::string operator*() const { return (*m_row)[m_column]; }
        Iterator& operator++()
        {
            ++m_column;
            return *this;
        }
        bool operator==(const Iterator& other) const { return m_column == other.m_column; }

    private:
        const ListRowCells* m_row;
        std::size_t m_column;
    };

    ListRowCells(const ListTable& table, std::size_t row) : m_table(&table), m_row(row) {}
    std::size_t size() const;
    std::string operator[](std::size_t column) const;
    Iterator begin() const { return {*this, 0}; }
    Iterator end() const { return {*this, size()}; }
    // Implicit, so a row passes wherever a row of strings is taken.
    operator std::vector<std::string>() const;

private:
    const ListTable* m_table;
    std::size_t m_row;
};

// The rows of a ListTable, indexed as the grid indexes them.
class ListRows
{
public:
    explicit ListRows(const ListTable& table) : m_table(&table) {}
    std::size_t size() const;
    ListRowCells operator[](std::size_t row) const { return {*m_table, row}; }

private:
    const ListTable* m_table;
};

// The rows of one list file: ";" on disk, one cell per column in memory, Windows-1252 with CR LF.
// The cells' UTF-8 text lies in one buffer, row after row, each cell found by its offset and size; a cell
// typed into is appended to the buffer, which a save lays out anew.
class ListTable
{
public:
    explicit ListTable(const ListKind& kind);

    const ListKind& kind() const { return *m_kind; }
    ListRows rows() const { return ListRows(*this); }
    int rowCount() const { return static_cast<int>(m_cells.size() / columnCount()); }
    std::string cell(int row, std::string_view columnKey) const;
    // The cell's text without a copy; valid until the table changes. The row and column must exist.
    std::string_view text(std::size_t row, std::size_t column) const
    {
        const Span span = m_cells[row * columnCount() + column];
        return std::string_view(m_text).substr(span.begin, span.size);
    }

    void setCell(int row, int column, std::string_view text);
    void insertRow(int at);
    void removeRows(const std::vector<int>& rows); // any order, duplicates ignored

    // Each line becomes a row: fields beyond the columns stay in the last cell with their ";" so that nothing
    // is lost on saving; missing fields are empty; empty lines are passed over. In the article list betrag is
    // reformatted with "#####.##". Throws RunError 53 for a missing file and the unreadable-file error when
    // it cannot be read (which also keeps it from ever being written over).
    void load(const std::filesystem::path& file);
    // The file's bytes: each row's cells joined by ";", CR LF after each, Windows-1252. A row whose cells are all
    // empty is left out until something is typed into it.
    std::string fileBytes() const;
    // Replaces the file whole through the atomic replacement, holding the file's lock for the whole cycle.
    // When another program changed the file since it was loaded here, the rows this table added, changed or
    // removed are laid onto what is on disk (mergeLineChanges) and the table takes the result; rows not typed
    // into yet stay at its end. Returns true if the rows changed so. Throws RunError on failure.
    bool save(const std::filesystem::path& file);

private:
    friend std::vector<std::string> cellsOfLine(const ListKind& kind, std::string_view line);
    enum class Encoding
    {
        Windows1252,
        Utf8
    };
    // Appends the rows of the lines of `text`, by the rules of load.
    void appendLines(std::string_view text, Encoding encoding);
    // 32 bits, so the cells take less room than their text: a buffer beyond 4 GiB is refused as out of memory.
    struct Span
    {
        std::uint32_t begin = 0;
        std::uint32_t size = 0;
    };

    static Span spanOf(std::size_t begin, std::size_t end);
    std::size_t columnCount() const { return m_kind->columns.size(); }
    enum class LineEnds
    {
        EndTheRow,
        InCell // a line handed over whole, as the merge does: a line end typed into a cell stays there
    };
    // Appends the row of the line starting at `at`; returns where its line end is (or the text's end).
    std::size_t appendRow(std::string_view text, std::size_t at, Encoding encoding, LineEnds lineEnds);
    bool isUntyped(std::size_t row) const;
    std::string_view lineText(Span line) const { return std::string_view(m_text).substr(line.begin, line.size); }
    std::vector<std::string> loadedLines() const;
    std::vector<std::string> fileLines() const;
    bool sameCells(const ListTable& other) const;
    // Writes the buffer anew, each row's cells joined by ";", and takes those lines as the ones last written.
    void layOutAfterSave();

    const ListKind* m_kind;
    std::size_t m_amountColumn; // betrag of the article list, else past the last column
    std::string m_text;
    std::vector<Span> m_cells;  // columnCount() a row
    std::vector<Span> m_loaded; // the file's lines (rows typed into) as this table last read or wrote them
};

inline std::size_t ListRowCells::size() const { return m_table->kind().columns.size(); }
inline std::string ListRowCells::operator[](std::size_t column) const
{
    return std::string(m_table->text(m_row, column));
}
inline std::size_t ListRows::size() const { return static_cast<std::size_t>(m_table->rowCount()); }

// Splits one line of the file into the table's cells (see load).
std::vector<std::string> cellsOfLine(const ListKind& kind, std::string_view line);

// hinzu_bar: the current row into the receipt. The article list's betrag goes to Text12 with gross chosen
// (then rechnen1 runs), else to Text10 (then rechnen2 runs), so the other amounts and the words follow; a row
// without an amount empties the amounts and words instead. Throws what the amount computation throws.
void takeOverRow(const ListTable& table, int row, bool gross, ReceiptForm& form);

} // namespace zw
