#include "books/DailyClose.h"

#include <cmath>
#include <charconv>

#include "core/GermanNumbers.h"
#include "core/RunError.h"
#include "ledger/ReceiptLedger.h"

namespace zw {
namespace {

Cents payoutOf(std::string_view cell)
{
    // An expense cell holds "-" and the gross amount; the sum drops that one "-" as the totals do.
    if (!cell.empty() && cell.front() == '-')
        cell.remove_prefix(1);
    return centsOf(cell);
}

std::vector<std::string> splitOn(std::string_view text, char separator)
{
    std::vector<std::string> parts;
    std::size_t start = 0;
    while (true) {
        const auto end = text.find(separator, start);
        parts.emplace_back(text.substr(start, end == std::string_view::npos ? end : end - start));
        if (end == std::string_view::npos)
            return parts;
        start = end + 1;
    }
}

std::optional<Cents> integerOf(std::string_view text)
{
    Cents value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

std::string oneLine(std::string_view text)
{
    std::string line(text);
    for (char& c : line)
        if (c == '\t' || c == '\r' || c == '\n')
            c = ' ';
    return line;
}

} // namespace

Cents centsOf(std::string_view amount)
{
    if (amount.empty())
        return 0;
    // Half a cent away from zero: the amounts were typed with two places, the rule only guards stray digits.
    return std::llround(parseAmount(amount) * 100.0);
}

std::string centsText(Cents cents)
{
    const Cents magnitude = cents < 0 ? -cents : cents;
    std::string text = std::to_string(magnitude / 100) + "," + (magnitude % 100 < 10 ? "0" : "") +
                       std::to_string(magnitude % 100);
    return cents < 0 ? "-" + text : text;
}

Cents parseTypedAmount(std::string_view text)
{
    if (!isNumeric(text))
        throw RunError(13, "\"" + std::string(text) + "\" ist kein Betrag. Bitte geben Sie einen Betrag wie 125,50 ein.");
    return centsOf(text);
}

std::string denominationCaption(Cents denomination)
{
    return denomination >= 100 ? std::to_string(denomination / 100) + " EUR" : std::to_string(denomination) + " Cent";
}

Cents CountSheet::total() const
{
    Cents sum = 0;
    for (std::size_t i = 0; i < counts.size(); ++i)
        sum += counts[i] * kDenominations[i];
    return sum;
}

std::int64_t parseCount(std::string_view text, Cents denomination)
{
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    if (text.empty())
        return 0;
    const auto count = integerOf(text);
    if (!count || text.front() == '-' || text.front() == '+' || *count > 10'000'000)
        throw RunError(13, "Die Anzahl \"" + std::string(text) + "\" bei " + denominationCaption(denomination) +
                               " ist keine ganze Zahl ab 0.");
    return *count;
}

CountEvaluation evaluateCounts(const std::array<std::string, kDenominations.size()>& typed)
{
    CountEvaluation evaluation;
    for (std::size_t i = 0; i < typed.size(); ++i) {
        try {
            evaluation.sheet.counts[i] = parseCount(typed[i], kDenominations[i]);
        } catch (const RunError& error) {
            if (evaluation.problem.empty())
                evaluation.problem = error.description();
        }
    }
    return evaluation;
}

std::string closeRecordText(const CloseRecord& record)
{
    std::string sheet;
    if (record.sheet) {
        for (std::size_t i = 0; i < record.sheet->counts.size(); ++i)
            sheet += (i > 0 ? "," : "") + std::to_string(record.sheet->counts[i]);
    }
    return "von=" + record.from.german() + "\tbis=" + record.to.german() + "\tanfang=" +
           std::to_string(record.opening) + "\teinnahmen=" + std::to_string(record.takings) + "\tausgaben=" +
           std::to_string(record.payouts) + "\tgezaehlt=" + std::to_string(record.counted) + "\tzaehlung=" + sheet +
           "\tnotiz=" + oneLine(record.note) + "\tjournal=" + record.journalHash + "\twaehrung=" +
           oneLine(record.currency);
}

std::optional<CloseRecord> parseCloseRecord(std::string_view text)
{
    CloseRecord record;
    int found = 0;
    for (const auto& field : splitOn(text, '\t')) {
        const auto equals = field.find('=');
        if (equals == std::string::npos)
            return std::nullopt;
        const std::string_view key = std::string_view(field).substr(0, equals);
        const std::string_view value = std::string_view(field).substr(equals + 1);
        auto cents = [&](Cents& target) {
            const auto number = integerOf(value);
            if (!number)
                return false;
            target = *number;
            return true;
        };
        bool ok = true;
        if (key == "von" || key == "bis") {
            const auto date = parseGermanDate(value);
            ok = date.has_value();
            if (ok)
                (key == "von" ? record.from : record.to) = *date;
        } else if (key == "anfang") {
            ok = cents(record.opening);
        } else if (key == "einnahmen") {
            ok = cents(record.takings);
        } else if (key == "ausgaben") {
            ok = cents(record.payouts);
        } else if (key == "gezaehlt") {
            ok = cents(record.counted);
        } else if (key == "zaehlung" && !value.empty()) {
            const auto counts = splitOn(value, ',');
            ok = counts.size() == kDenominations.size();
            CountSheet sheet;
            for (std::size_t i = 0; ok && i < counts.size(); ++i) {
                const auto count = integerOf(counts[i]);
                ok = count.has_value();
                if (ok)
                    sheet.counts[i] = *count;
            }
            if (ok)
                record.sheet = sheet;
        } else if (key == "notiz") {
            record.note = value;
        } else if (key == "journal") {
            record.journalHash = value;
        } else if (key == "waehrung") {
            record.currency = value;
        }
        if (!ok)
            return std::nullopt;
        ++found;
    }
    if (found < 6)
        return std::nullopt;
    return record;
}

CloseFigures closeFigures(const ReceiptLedger& ledger, const std::optional<CloseRecord>& lastClose,
                          const BookDate& day)
{
    CloseFigures figures;
    CloseRecord& record = figures.record;
    record.to = day;
    record.from = lastClose ? lastClose->to.next() : day;
    record.opening = lastClose ? lastClose->counted : 0;
    for (std::size_t row = 0; row < ledger.rowCount(); ++row) {
        const auto date = parseGermanDate(ledger.cell(row, LedgerColumn::datum));
        if (!date || *date > day)
            continue;
        const Cents taking = centsOf(ledger.cell(row, LedgerColumn::einnahme));
        const Cents payout = payoutOf(ledger.cell(row, LedgerColumn::ausgabe));
        if (*date >= record.from) {
            record.takings += taking;
            record.payouts += payout;
            figures.rows.push_back(row);
        } else if (!lastClose) {
            record.opening += taking - payout;
        }
    }
    return figures;
}

Cents ledgerBalance(const ReceiptLedger& ledger)
{
    Cents balance = 0;
    for (std::size_t row = 0; row < ledger.rowCount(); ++row)
        balance += centsOf(ledger.cell(row, LedgerColumn::einnahme)) - payoutOf(ledger.cell(row, LedgerColumn::ausgabe));
    return balance;
}

std::optional<std::string> cashMinusWarning(const ReceiptLedger& ledger, Cents payout)
{
    const Cents after = ledgerBalance(ledger) - payout;
    if (after >= 0)
        return std::nullopt;
    return "Kassenminus: Nach dieser Ausgabe stünde die Kasse bei " + centsText(after) +
           ". Ein Kassenbestand kann nie unter null fallen; wahrscheinlich fehlt eine Einnahme oder eine "
           "Privateinlage.";
}

PrintedPage cashReportPage(const CloseRecord& record, const std::vector<std::string>& rows,
                           const std::vector<std::string>& firm)
{
    PrintedPage page;
    page.title = "Kassenbericht " + record.to.german();
    const std::string currency = " " + record.currency;
    constexpr double kLeft = 20;
    constexpr double kRight = 190;
    double top = 15;
    auto text = [&page](double left, double at, std::string value, double points, bool bold = false,
                        PageText::Align align = PageText::Align::Left) {
        page.texts.push_back({left, at, std::move(value), points, bold, align});
    };
    for (const auto& line : firm) {
        text(kLeft, top, line, 9);
        top += 4;
    }
    top += 3;
    text(kLeft, top, "Kassenbericht", 16, true);
    const std::string period = record.from == record.to
                                   ? record.to.german()
                                   : record.from.german() + " bis " + record.to.german();
    text(kRight, top + 2, period, 11, true, PageText::Align::Right);
    top += 10;
    page.rules.push_back({kLeft, top, kRight});
    top += 3;

    // Every row of the period, in a font that shrinks so that the page holds them all.
    const double rowPoints = rows.size() <= 30 ? 8 : rows.size() <= 60 ? 6 : 5;
    const double rowStep = rowPoints * 0.45;
    text(kLeft, top, "Datum", 8, true);
    text(kLeft + 22, top, "Beleg-Nr.", 8, true);
    text(kLeft + 42, top, "Bezeichnung / Zweck", 8, true);
    text(kLeft + 145, top, "Einnahme", 8, true, PageText::Align::Right);
    text(kRight, top, "Ausgabe", 8, true, PageText::Align::Right);
    top += 4.5;
    constexpr std::size_t kMostRows = 90;
    for (std::size_t i = 0; i < rows.size() && i < kMostRows; ++i) {
        const auto cells = splitOn(rows[i], '\t');
        auto cell = [&cells](LedgerColumn column) {
            const auto index = static_cast<std::size_t>(columnIndex(column));
            return index < cells.size() ? cells[index] : std::string();
        };
        std::string purpose = cell(LedgerColumn::bezeichnung);
        if (!cell(LedgerColumn::von).empty())
            purpose += (purpose.empty() ? "" : ": ") + cell(LedgerColumn::von);
        if (purpose.size() > 70)
            purpose = purpose.substr(0, 67) + "...";
        text(kLeft, top, cell(LedgerColumn::datum), rowPoints);
        text(kLeft + 22, top, cell(LedgerColumn::belegnr), rowPoints);
        text(kLeft + 42, top, purpose, rowPoints);
        text(kLeft + 145, top, cell(LedgerColumn::einnahme), rowPoints, false, PageText::Align::Right);
        text(kRight, top, cell(LedgerColumn::ausgabe), rowPoints, false, PageText::Align::Right);
        top += rowStep;
    }
    if (rows.size() > kMostRows) {
        text(kLeft, top, "... und " + std::to_string(rows.size() - kMostRows) +
                             " weitere Zeilen dieses Zeitraums (siehe Belegliste)", rowPoints);
        top += rowStep;
    }
    if (rows.empty()) {
        text(kLeft, top, "Keine Buchungen an diesem Tag.", 8);
        top += 4;
    }
    top += 2;
    page.rules.push_back({kLeft, top, kRight});
    top += 3;

    const std::vector<std::pair<std::string, Cents>> figures = {
        {"Anfangsbestand", record.opening},       {"+ Einnahmen", record.takings},
        {"- Ausgaben", record.payouts},           {"= Kassensoll", record.expected()},
        {"Gezählter Kassenbestand", record.counted}, {"Differenz", record.difference()},
    };
    for (const auto& [caption, cents] : figures) {
        const bool bold = caption == "= Kassensoll" || caption == "Differenz";
        text(kLeft, top, caption, 10, bold);
        text(kLeft + 90, top, centsText(cents) + currency, 10, bold, PageText::Align::Right);
        top += 5;
    }
    if (!record.note.empty()) {
        text(kLeft, top, "Begründung der Differenz: " + record.note, 9);
        top += 5;
    }
    if (record.sheet) {
        // The count sheet stands beside the figures.
        double sheetTop = top - 5.0 * static_cast<double>(figures.size()) - (record.note.empty() ? 0 : 5);
        text(kLeft + 105, sheetTop, "Zählprotokoll", 9, true);
        sheetTop += 4.2;
        for (std::size_t i = 0; i < kDenominations.size(); ++i) {
            if (record.sheet->counts[i] == 0)
                continue;
            text(kLeft + 105, sheetTop, std::to_string(record.sheet->counts[i]) + " x " +
                                            denominationCaption(kDenominations[i]), 8);
            text(kRight, sheetTop, centsText(record.sheet->counts[i] * kDenominations[i]) + currency, 8, false,
                 PageText::Align::Right);
            sheetTop += 3.6;
        }
        text(kLeft + 105, sheetTop, "Summe", 8, true);
        text(kRight, sheetTop, centsText(record.sheet->total()) + currency, 8, true, PageText::Align::Right);
        top = std::max(top, sheetTop + 5);
    }
    top += 4;
    text(kLeft, top, "Journal (SHA-256 des letzten Eintrags vor dem Abschluss):", 7);
    text(kLeft, top + 3.5, record.journalHash, 7);
    top = std::max(top + 20, 262.0);
    page.rules.push_back({kLeft, top, kLeft + 70});
    page.rules.push_back({kLeft + 100, top, kRight});
    text(kLeft, top + 1.5, "Ort, Datum", 8);
    text(kLeft + 100, top + 1.5, "Unterschrift", 8);
    return page;
}

} // namespace zw
