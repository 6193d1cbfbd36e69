#include "ledger/LedgerOperations.h"

#include <string_view>
#include <unordered_set>

#include "core/FormHost.h"
#include "core/ReceiptForm.h"
#include "core/RunError.h"

namespace zw {

void selectRow(SelectedRowBuffer& buffer, const ReceiptLedger& ledger, long rowNumber)
{
    if (rowNumber <= 0)
        return;
    const auto row = static_cast<std::size_t>(rowNumber - 1);
    for (int column = 0; column < kLedgerColumnCount; ++column) {
        std::string& cell = buffer[static_cast<std::size_t>(column)];
        cell = ledger.cell(row, column);
        for (std::size_t at = cell.find(kLiteralTab); at != std::string::npos; at = cell.find(kLiteralTab, at))
            cell.replace(at, kLiteralTab.size(), "\t");
    }
}

LedgerOperations::LedgerOperations(ReceiptLedger& ledger, ReceiptForm& form, FormHost& host, Update update)
    : m_ledger(ledger), m_form(form), m_host(host), m_update(std::move(update))
{
}

void LedgerOperations::changeRow(std::size_t row, const std::function<void(std::size_t)>& change)
{
    const std::string seenText(m_ledger.rowText(row));
    const bool done = m_update([&](ReceiptLedger& ledger, const std::vector<LedgerRow>* seen) {
        const std::size_t now = seen ? ledger.findRowNear(seenText, row) : row;
        if (now == ReceiptLedger::kNoRow)
            return false;
        change(now);
        return true;
    });
    // Told after the cycle, so that no other program waits on the lock while the message is open.
    if (!done)
        m_host.showMessage("Dieser Eintrag wurde inzwischen von einem anderen Programm geändert oder gelöscht.\r"
                           "Ihre Änderung wurde nicht gespeichert.\r\r"
                           "Die Belegliste zeigt jetzt den gespeicherten Stand.",
                           MessageStyle::Warning, "Achtung!!!");
}

void LedgerOperations::anzeigen()
{
    using F = FormElement;
    const auto& b = m_buffer;
    m_form.setText(F::Text9, b[0]);
    m_form.setText(F::Text1, b[1]);
    const std::size_t current = m_ledger.currentRow();
    auto currentCell = [&](LedgerColumn column) {
        return current == ReceiptLedger::kNoRow || current >= m_ledger.rowCount() ? std::string_view{}
                                                                                   : m_ledger.cell(current, column);
    };
    if (!currentCell(LedgerColumn::einnahme).empty())
        m_form.setText(F::Text12, b[2]);
    if (!currentCell(LedgerColumn::ausgabe).empty())
        m_form.setText(F::Text12, b[3].starts_with('-') ? b[3].substr(1) : b[3]);
    // Net, share and words come after Text12, so they win over what its change handling computed.
    const F rest[] = {F::Text2, F::Text3, F::Text10, F::Text11, F::Text4, F::Text5, F::Text6,
                      F::Text7, F::Text8, F::Text14, F::Label1};
    for (std::size_t i = 0; i < std::size(rest); ++i)
        m_form.setText(rest[i], b[i + 4]);
}

void LedgerOperations::bearbeiten()
{
    m_host.showMessage("Um einen Eintrag zu bearbeiten, klicken Sie diesen bitte 2 Mal an.\r"
                       "Damit der Eintrag später auch gespeichert wird, drücken Sie nach\r"
                       "der Änderung die TAB-Taste, bis das Ende der Zeile erreicht wurde.\r"
                       "\r"
                       "Die Änderung wird dann gespeichert.\r",
                       MessageStyle::Information, "Eintrag bearbeiten");
}

void LedgerOperations::loeschen()
{
    const std::size_t current = m_ledger.currentRow();
    if (current == ReceiptLedger::kNoRow || current >= m_ledger.rowCount())
        throw RunError::subscriptOutOfRange();
    const std::string number(m_ledger.cell(current, LedgerColumn::belegnr));
    const std::string text = "Wollen Sie den Eintrag mit der Belegnummer " + number +
                             "\rwirklich löschen?\r\rWenn Sie jetzt auf JA klicken, wird der Eintrag\r"
                             "unwiderruflich gelöscht.";
    // Asked in the message shape: its "JA" deletes.
    if (m_host.askByMessage(text, MessageStyle::QuestionYesNo, "Achtung!!!") != kAnswerYes)
        return;
    changeRow(current, [this](std::size_t row) { m_ledger.removeRow(row); });
}

void LedgerOperations::loeschen_gesamt()
{
    // Style 276: a yes/no question with the second button as default.
    if (m_host.confirmQuestion("Wollen Sie wirklich die gesamte Belegliste löschen?\r\rWenn Sie jetzt auf JA "
                               "klicken, wird die Belegliste\runwiderruflich gelöscht.",
                               static_cast<MessageStyle>(276), "Achtung!!!") != kAnswerYes)
        return;
    m_update([](ReceiptLedger& ledger, const std::vector<LedgerRow>* seen) {
        if (!seen) {
            ledger.assignRows({}, {});
            return true;
        }
        // Rows another program filed since the grid showed the list were not part of the question: they stay.
        std::unordered_multiset<std::string_view> asked;
        for (const auto& row : *seen)
            asked.insert(row.text());
        std::vector<LedgerRow> kept;
        std::vector<std::uint8_t> colours;
        for (std::size_t row = 0; row < ledger.rowCount(); ++row) {
            const auto found = asked.find(ledger.rowText(row));
            if (found != asked.end()) {
                asked.erase(found);
                continue;
            }
            kept.emplace_back(ledger.rowText(row));
            colours.push_back(loadColours(ledger.rowText(row)));
        }
        ledger.assignRows(std::move(kept), std::move(colours));
        return true;
    });
}

void LedgerOperations::alle_felder()
{
    for (int column = 4; column < kLedgerColumnCount; ++column)
        m_ledger.setColumnVisible(column, !m_ledger.isColumnVisible(column));
}

void LedgerOperations::cellEdited(std::size_t row, int column, const std::string& value)
{
    changeRow(row, [&](std::size_t now) { m_ledger.setCell(now, column, value); });
}

PrintedList ledgerList(const ReceiptLedger& ledger, LedgerList kind)
{
    static constexpr std::string_view kTitles[] = {"Belegliste", "Belegliste nur Einnahmen",
                                                   "Belegliste nur Ausgaben"};
    const std::string hyphens(134, '-');
    PrintedList list;
    auto empty = [&](int points, bool bold, int count) {
        for (int i = 0; i < count; ++i)
            list.lines.push_back({{}, points, bold});
    };
    empty(18, true, 2);
    list.lines.push_back({{{8, std::string(kTitles[static_cast<int>(kind)])}}, 18, true});
    empty(10, false, 4);
    list.lines.push_back({{{15, "Datum:"}, {45, "Beleg-Nr.:"}, {75, "Einnahme:"}, {95, "Ausgabe:"}}, 10, false});
    list.lines.push_back({{{15, hyphens}}, 10, false});
    for (std::size_t row = 0; row < ledger.rowCount(); ++row) {
        PrintedLine line{{{15, std::string(ledger.cell(row, LedgerColumn::datum))},
                          {45, std::string(ledger.cell(row, LedgerColumn::belegnr))}},
                         10, false};
        if (kind != LedgerList::ausgaben_drucken)
            line.pieces.push_back({75, std::string(ledger.cell(row, LedgerColumn::einnahme))});
        if (kind != LedgerList::einnahmen_drucken)
            line.pieces.push_back({95, std::string(ledger.cell(row, LedgerColumn::ausgabe))});
        list.lines.push_back(std::move(line));
        list.lines.push_back({{{15, hyphens}}, 10, false});
    }
    return list;
}

} // namespace zw
