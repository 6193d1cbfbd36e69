#pragma once

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

// The rows of one list file: ";" on disk, one cell per column in memory, Windows-1252 with CR LF.
class ListTable
{
public:
    explicit ListTable(const ListKind& kind) : m_kind(&kind) {}

    const ListKind& kind() const { return *m_kind; }
    const std::vector<std::vector<std::string>>& rows() const { return m_rows; }
    int rowCount() const { return static_cast<int>(m_rows.size()); }
    const std::string& cell(int row, std::string_view columnKey) const;

    void setCell(int row, int column, std::string text);
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
    std::vector<std::string> fileLines() const;

    const ListKind* m_kind;
    std::vector<std::vector<std::string>> m_rows;
    std::vector<std::string> m_loaded; // the file's rows as this table last read or wrote them
};

// Splits one line of the file into the table's cells (see load).
std::vector<std::string> cellsOfLine(const ListKind& kind, std::string_view line);

// hinzu_bar: the current row into the receipt. The article list's betrag goes to Text12 with gross chosen
// (then rechnen1 runs), else to Text10 (then rechnen2 runs), so the other amounts and the words follow; a row
// without an amount empties the amounts and words instead. Throws what the amount computation throws.
void takeOverRow(const ListTable& table, int row, bool gross, ReceiptForm& form);

} // namespace zw
