#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "books/BookDate.h"
#include "books/PrintedPage.h"

namespace zw {

class ReceiptLedger;

using Cents = std::int64_t;

// An amount cell as cents: empty is 0; a cell that is no number throws RunError 13 as the totals do.
Cents centsOf(std::string_view amount);
// "1234,56", "-0,05": the ledger's own way of writing an amount.
std::string centsText(Cents cents);
// A typed amount for the close or a private row; a clear German message for anything else.
Cents parseTypedAmount(std::string_view text);

// Notes and coins from 500 EUR down to 1 cent.
inline constexpr std::array<Cents, 15> kDenominations = {50000, 20000, 10000, 5000, 2000, 1000, 500, 200,
                                                         100,   50,    20,    10,    5,    2,    1};
std::string denominationCaption(Cents denomination);

struct CountSheet
{
    std::array<std::int64_t, kDenominations.size()> counts{};
    Cents total() const;
};
// A count typed into the sheet: whole numbers from 0; empty is 0. Throws RunError 13 with the denomination named.
std::int64_t parseCount(std::string_view text, Cents denomination);

// The count sheet as typed: the sheet, or the first count that is no whole number from 0 as its message.
struct CountEvaluation
{
    CountSheet sheet;
    std::string problem;
};
CountEvaluation evaluateCounts(const std::array<std::string, kDenominations.size()>& typed);

// What a daily close found and decided; kept in the journal's close entry, from which the report is made again.
struct CloseRecord
{
    BookDate from;          // the first day the close covers: the day after the last close
    BookDate to;            // the closed day
    Cents opening = 0;      // the last close's counted cash, else the ledger's balance before the day
    Cents takings = 0;
    Cents payouts = 0;      // positive
    Cents counted = 0;
    std::optional<CountSheet> sheet;
    std::string note;
    std::string journalHash; // the journal's last entry when the report was made
    std::string currency = "EUR";

    Cents expected() const { return opening + takings - payouts; }
    Cents difference() const { return counted - expected(); }
};
std::string closeRecordText(const CloseRecord& record);
std::optional<CloseRecord> parseCloseRecord(std::string_view text);

// The rows a close covers (ledger row numbers from 0, in ledger order) and its figures before counting.
struct CloseFigures
{
    CloseRecord record;
    std::vector<std::size_t> rows;
};
CloseFigures closeFigures(const ReceiptLedger& ledger, const std::optional<CloseRecord>& lastClose,
                          const BookDate& day);

// The balance of all rows: takings minus payouts.
Cents ledgerBalance(const ReceiptLedger& ledger);

// The warning before a payout that would take the cash below zero; nothing when it stays at or above zero.
std::optional<std::string> cashMinusWarning(const ReceiptLedger& ledger, Cents payout);

// The one-page Kassenbericht: the firm's lines (issuer data), the figures, every row, the count sheet and a
// line to sign.
PrintedPage cashReportPage(const CloseRecord& record, const std::vector<std::string>& rows,
                           const std::vector<std::string>& firm);

} // namespace zw
