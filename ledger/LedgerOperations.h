#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "ledger/ReceiptLedger.h"

namespace zw {

class FormHost;
class ReceiptForm;

// The 15 cells of the row the grid last reported as selected, in column order.
using SelectedRowBuffer = std::array<std::string, kLedgerColumnCount>;

// The grid's selection event: a row number above 0 (counted from 1) copies that row's cells; others leave it.
void selectRow(SelectedRowBuffer& buffer, const ReceiptLedger& ledger, long rowNumber);

// The commands of the ledger toolbar. `update` runs a change as one locked cycle on what is on disk and saves it
// (updateLedger); every failure is thrown as RunError. A row that another program changed or deleted since the
// grid showed it is neither deleted nor edited: the grid shows what is on disk and the user is told.
class LedgerOperations
{
public:
    using Update = std::function<bool(const LedgerChangeRoutine&)>;
    LedgerOperations(ReceiptLedger& ledger, ReceiptForm& form, FormHost& host, Update update);

    SelectedRowBuffer& buffer() { return m_buffer; }

    // The form's side of `anzeigen`; the caller switches to the form's tab.
    void anzeigen();
    void bearbeiten();
    void loeschen();
    void loeschen_gesamt();
    void alle_felder();
    // The end of an in-place edit.
    void cellEdited(std::size_t row, int column, const std::string& value);

private:
    // Runs a change of the row the grid showed with this text at `row`, wherever that row stands now.
    void changeRow(std::size_t row, const std::function<void(std::size_t)>& change);

    ReceiptLedger& m_ledger;
    ReceiptForm& m_form;
    FormHost& m_host;
    Update m_update;
    SelectedRowBuffer m_buffer;
};

// The three text lists printed on the default printer.
enum class LedgerList { drucken, einnahmen_drucken, ausgaben_drucken };

// One printed line: pieces of text at tab columns (columns of the font's average character width).
struct PrintedPiece
{
    int tabColumn;
    std::string text;
};
struct PrintedLine
{
    std::vector<PrintedPiece> pieces; // empty: an empty line
    int pointSize = 10;
    bool bold = false;
};
struct PrintedList
{
    std::string fontFamily = "Arial";
    std::vector<PrintedLine> lines;
};

PrintedList ledgerList(const ReceiptLedger& ledger, LedgerList kind);

} // namespace zw
