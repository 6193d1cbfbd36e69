#include "ledger/LedgerReport.h"

#include "app/ProgramPaths.h"
#include "app/TextFile.h"
#include "ledger/ReceiptLedger.h"

namespace zw {
namespace {

std::string sentence(std::string_view date, std::string_view amount, std::string_view word)
{
    // The font and bold tags close in the wrong order; browsers accept it and the page keeps it.
    std::string text = "Am <b><font color=\"#FF0000\">";
    text += date;
    text += "</b></font> wurde eine Quittung über <b><font color=\"#FF0000\">";
    text += amount;
    text += "</b></font> Euro (";
    text += word;
    text += ") ausgestellt.</font><br>";
    return text;
}

} // namespace

std::string reportHtml(const ReceiptLedger& ledger)
{
    std::string html;
    for (std::size_t row = 0; row < ledger.rowCount(); ++row) {
        auto cell = [&](LedgerColumn column) { return ledger.cell(row, column); };
        html += "<font face=\"Arial\"size=\"4\">";
        html += cell(LedgerColumn::bezeichnung);
        html += ": </font><b><font face=\"Courier New\"size=\"4\">";
        html += cell(LedgerColumn::belegnr);
        html += "</font></b><br>";
        html += "<font face=\"Arial\"size=\"2\">";
        if (!cell(LedgerColumn::einnahme).empty())
            html += sentence(cell(LedgerColumn::datum), cell(LedgerColumn::einnahme), "Einnahmen");
        if (!cell(LedgerColumn::ausgabe).empty())
            html += sentence(cell(LedgerColumn::datum), cell(LedgerColumn::ausgabe), "Ausgaben");
        html += "<font face=\"Courier New\"size=\"2\">";
        // The labels undo the crossing of the ledger's keys: fuer1 and fuer2 are the "von" lines.
        html += "Von : <b>";
        html += cell(LedgerColumn::fuer1);
        html += "</b><br>Von2: <b>";
        html += cell(LedgerColumn::fuer2);
        html += "</b><br>Für : <b>";
        html += cell(LedgerColumn::von);
        html += "</b></font>";
        html += "<hr>";
    }
    return html;
}

std::string writeReport(const ProgramPaths& paths, const std::string& html)
{
    writeTextLines(paths.dataFile("last.html"), {html});
    writeTextLines(paths.dataFile("last.rep"), {html});
    return paths.dataFile("last.html").string();
}

std::string clearReport(const ProgramPaths& paths) { return writeReport(paths, ""); }

} // namespace zw
