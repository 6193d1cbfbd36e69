#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <tuple>

#include "books/DatevExport.h"
#include "core/CodePage.h"
#include "ledger/ReceiptLedger.h"
#include "tests/app/ProgramFolder.h"
#include "tests/books/BooksFixture.h"
#include "tests/core/FakeHost.h"

namespace zw {
namespace {

using ::testing::HasSubstr;

// A reader written from the format's description: CR LF lines in Windows-1252, ';' between fields, a text field
// in quotes with a quote doubled inside.
struct Field
{
    std::string text;
    bool quoted = false;
};
using Line = std::vector<Field>;

Line parseLine(std::string_view line)
{
    Line fields(1);
    bool inQuotes = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (inQuotes && c == '"' && i + 1 < line.size() && line[i + 1] == '"') {
            fields.back().text += '"';
            ++i;
        } else if (c == '"') {
            inQuotes = !inQuotes;
            fields.back().quoted = true;
        } else if (c == ';' && !inQuotes) {
            fields.emplace_back();
        } else {
            fields.back().text += c;
        }
    }
    return fields;
}

std::vector<Line> readBatch(const std::string& bytes)
{
    std::vector<Line> lines;
    EXPECT_TRUE(bytes.ends_with("\r\n"));
    for (std::size_t start = 0; start < bytes.size();) {
        const std::size_t end = bytes.find("\r\n", start);
        const std::string_view line = std::string_view(bytes).substr(start, end - start);
        EXPECT_EQ(line.find_first_of("\r\n"), std::string_view::npos) << "a line break inside a line";
        lines.push_back(parseLine(cp1252ToUtf8(line)));
        start = end + 2;
    }
    return lines;
}

// The texts of the fields at `positions` (from 1, as the format counts them).
std::vector<std::string> fieldsAt(const Line& line, std::initializer_list<std::size_t> positions)
{
    std::vector<std::string> texts;
    for (std::size_t position : positions)
        texts.push_back(position <= line.size() ? line[position - 1].text : "<missing>");
    return texts;
}

std::string row(std::string date, std::string number, std::string income, std::string expense, std::string rate,
                std::string payer, std::string purpose, std::string kind = "Quittung", std::string currency = "EUR")
{
    return date + "\t" + number + "\t" + income + "\t" + expense + "\t" + currency + "\t" + rate +
           "\t\t\t\t" + payer + "\t\t" + purpose + "\tBonn\t\t" + kind;
}

DatevRequest januaryRequest()
{
    DatevRequest request{defaultDatevSettings(ChartOfAccounts::SKR03), {2026, 1, 1}, {2026, 1, 31}, test::bookNoon()};
    request.settings.consultantNumber = "29098";
    request.settings.clientNumber = "55003";
    return request;
}

struct Exported
{
    std::vector<Line> lines;
    DatevSummary summary;
};

Exported exportRows(const DatevRequest& request, const std::vector<std::string>& rows)
{
    std::string bytes;
    DatevBatchWriter writer(request, [&bytes](std::string_view piece) { bytes += piece; });
    for (const auto& text : rows)
        writer.addRow(text);
    const auto summary = writer.finish();
    return {readBatch(bytes), summary};
}

// The header's and the bookings' fields of a plain batch are read by Python's csv reader in datev_cli_check.py.
TEST(DatevExport, TheHeaderCountsTheFiscalYearFromItsStartAndQuotesItsTexts)
{
    auto request = januaryRequest();
    request.settings.fiscalYearStart = "01.07.";
    const auto batch = exportRows(request, {row("15.01.2026", "1", "119,00", "", "19", "A", "B")});
    ASSERT_EQ(batch.lines.size(), 3u);
    const Line& header = batch.lines[0];
    EXPECT_EQ(fieldsAt(header, {13, 14}), std::vector<std::string>({"20250701", "4"}));
    EXPECT_TRUE(header[0].quoted && header[3].quoted && header[26].quoted && !header[1].quoted);
    EXPECT_EQ(header[5].text.size(), 17u); // created, to the millisecond
    EXPECT_EQ(header[5].text.find_first_not_of("0123456789"), std::string::npos);
    EXPECT_EQ(fieldsAt(batch.lines[1], {1, 8, 114, 125}),
              std::vector<std::string>({"Umsatz (ohne Soll/Haben-Kz)", "Gegenkonto (ohne BU-Schlüssel)",
                                        "Festschreibung", "Abw. Skontokonto"}));
}

TEST(DatevExport, EachKindOfRowBooksFromTheCashAccount)
{
    auto request = januaryRequest();
    request.settings.account(DatevAccount::Revenue7).automatic = false;
    const std::string longPurpose = "Miete; Strom \"Januar\"\r\nund Wasser für das ganze Haus in der Hauptstraße 12";
    struct Case
    {
        std::string name;
        std::string row;
        std::vector<std::string> expected; // fields 1, 2, 7, 8, 9, 10, 11, 14
    };
    const std::vector<Case> cases = {
        {"taking on an automatic account",
         row("02.01.2026", "1047", "119,00", "", "19", "Max Muster", "Beratung"),
         {"119,00", "S", "1000", "8400", "", "0201", "1047", "Max Muster, Beratung"}},
        {"taking at 7 % without automatic", row("03.01.2026", "1048", "1.070,00", "", "7", "", "Bücher"),
         {"1070,00", "S", "1000", "8300", "2", "0301", "1048", "Bücher"}},
        {"payout at 19 %", row("04.01.2026", "1049", "", "-23,80", "19", "Bürohaus", "Papier"),
         {"23,80", "H", "1000", "4980", "9", "0401", "1049", "Bürohaus, Papier"}},
        {"payout at 7 %", row("05.01.2026", "1050", "", "-10,70", "7", "Kiosk", "Zeitung"),
         {"10,70", "H", "1000", "4940", "8", "0501", "1050", "Kiosk, Zeitung"}},
        {"payout at 0 %", row("06.01.2026", "1051", "", "-0,85", "0", "Post", "Marke"),
         {"0,85", "H", "1000", "4900", "", "0601", "1051", "Post, Marke"}},
        {"Storno of a taking", row("07.01.2026", "1052", "-119,00", "", "19", "Max Muster", "Storno zu Beleg 1047: Beratung"),
         {"119,00", "H", "1000", "8400", "", "0701", "1052", "Max Muster, Storno zu Beleg 1047: Beratung"}},
        {"Storno of a payout", row("08.01.2026", "1053", "", "--23,80", "19", "Bürohaus", "Storno zu Beleg 1049: Papier"),
         {"23,80", "S", "1000", "4980", "9", "0801", "1053", "Bürohaus, Storno zu Beleg 1049: Papier"}},
        {"Privatentnahme", row("09.01.2026", "1054", "", "-50,00", "0", "", "Taschengeld", "Privatentnahme"),
         {"50,00", "H", "1000", "1800", "", "0901", "1054", "Taschengeld"}},
        {"Privateinlage", row("10.01.2026", "1055", "200,00", "", "0", "", "Wechselgeld", "Privateinlage"),
         {"200,00", "S", "1000", "1890", "", "1001", "1055", "Wechselgeld"}},
        {"long number and a purpose with quotes, ';' and a line break",
         row("31.01.2026", "RE 2026/000000012", "5,00", "", "0", "Jürgen", longPurpose),
         {"5,00", "S", "1000", "8200", "", "3101", "RE-2026/0000",
          "Jürgen, Miete; Strom \"Januar\"  und Wasser für das ganze Haus"}},
    };
    std::vector<std::string> rows;
    for (const auto& each : cases)
        rows.push_back(each.row);
    rows.push_back(row("01.02.2026", "1056", "99,00", "", "19", "", "Februar"));
    rows.push_back(row("11.01.2026", "1057", "0,00", "", "19", "", "Muster"));
    rows.push_back("");
    const auto batch = exportRows(request, rows);
    EXPECT_EQ(batch.summary.bookings, cases.size());
    EXPECT_EQ(batch.summary.zeroRows, 1u);
    ASSERT_EQ(batch.lines.size(), cases.size() + 2);
    for (std::size_t i = 0; i < cases.size(); ++i) {
        SCOPED_TRACE(cases[i].name);
        const Line& booking = batch.lines[i + 2];
        ASSERT_EQ(booking.size(), 125u);
        EXPECT_EQ(fieldsAt(booking, {1, 2, 7, 8, 9, 10, 11, 14}), cases[i].expected);
        for (std::size_t text : {1, 8, 10, 13})
            EXPECT_TRUE(booking[text].quoted) << "field " << text + 1;
        for (std::size_t number : {0, 6, 7, 9})
            EXPECT_FALSE(booking[number].quoted) << "field " << number + 1;
    }
}

TEST(DatevExport, BadInputGivesItsMessageAndNoFile)
{
    struct Case
    {
        std::string name;
        std::function<void(DatevRequest&)> change;
        std::string row;
        std::string message;
    };
    const std::string good = row("15.01.2026", "7", "10,00", "", "19", "A", "B");
    const std::vector<Case> cases = {
        {"no Beraternummer", [](DatevRequest& r) { r.settings.consultantNumber = ""; }, good,
         "Bitte tragen Sie die Beraternummer ein"},
        {"Beraternummer too small", [](DatevRequest& r) { r.settings.consultantNumber = "999"; }, good,
         "Die Beraternummer \"999\" ist keine Zahl von 1001 bis 9999999."},
        {"no Mandantennummer", [](DatevRequest& r) { r.settings.clientNumber = " "; }, good,
         "Bitte tragen Sie die Mandantennummer ein"},
        {"Mandantennummer not a number", [](DatevRequest& r) { r.settings.clientNumber = "12a"; }, good,
         "Die Mandantennummer \"12a\" ist keine Zahl von 1 bis 99999."},
        {"account of another length", [](DatevRequest& r) { r.settings.account(DatevAccount::Expense7).number = "49400"; },
         good, "Das Konto \"Ausgaben 7 %\" (\"49400\") ist keine Kontonummer mit 4 Stellen."},
        {"account length changed alone", [](DatevRequest& r) { r.settings.accountLength = 5; }, good,
         "Das Konto \"Kasse\" (\"1000\") ist keine Kontonummer mit 5 Stellen."},
        {"fiscal year start no day", [](DatevRequest& r) { r.settings.fiscalYearStart = "30.02."; }, good,
         "Der Beginn des Wirtschaftsjahres \"30.02.\" ist kein Tag der Form TT.MM."},
        {"reversed range", [](DatevRequest& r) { std::swap(r.from, r.to); }, good,
         "Der Zeitraum ist verkehrt herum: \"von\" (31.01.2026) liegt nach \"bis\" (01.01.2026)."},
        {"two fiscal years", [](DatevRequest& r) { r.settings.fiscalYearStart = "01.07."; r.from = {2025, 6, 1}; },
         good, "bitte exportieren Sie bis zum 30.06.2025 und ab dem 01.07.2025 getrennt."},
        {"unreadable date", [](DatevRequest&) {}, row("32.01.2026", "8", "1,00", "", "19", "", ""),
         "Zeile 1 der Belegliste (Beleg 8) hat kein lesbares Datum (\"32.01.2026\")."},
        {"unreadable amount", [](DatevRequest&) {}, row("02.01.2026", "8", "zwölf", "", "19", "", ""),
         "hat keinen lesbaren Betrag (\"zwölf\")"},
        {"no amount", [](DatevRequest&) {}, row("02.01.2026", "8", "", "", "19", "", ""), "hat keinen Betrag."},
        {"an old rate", [](DatevRequest&) {}, row("02.01.2026", "8", "1,16", "", "16", "", ""),
         "hat den Steuersatz \"16\"; der Export kennt 19 %, 7 % und 0 %"},
        {"another currency", [](DatevRequest&) {}, row("02.01.2026", "8", "1,00", "", "19", "", "", "Quittung", "USD"),
         "ist in \"USD\" ausgestellt"},
        {"nothing in the range", [](DatevRequest&) {}, row("02.02.2026", "8", "1,00", "", "19", "", ""),
         "Im Zeitraum vom 01.01.2026 bis 31.01.2026 gibt es keine Belege mit einem Betrag"},
        {"more bookings than a batch takes", [](DatevRequest& r) { r.bookingLimit = 0; }, good,
         "Im Zeitraum liegen mehr als 0 Buchungen"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        test::ProgramFolder folder;
        std::string file;
        appendLedgerLine(file, each.row);
        folder.writeBytes("belege.dat", file);
        auto request = januaryRequest();
        each.change(request);
        const auto target = folder.folder / "EXTF_Stapel.csv";
        EXPECT_THAT(test::messageOf([&] { exportDatev(folder.paths, request, target); }), HasSubstr(each.message));
        EXPECT_FALSE(std::filesystem::exists(target));
    }
}

TEST(DatevExport, SettingsComeBackAsSaved)
{
    test::MemorySettings settings;
    auto datev = defaultDatevSettings(ChartOfAccounts::SKR04);
    datev.consultantNumber = "1234567";
    datev.account(DatevAccount::Expense0).automatic = true;
    datev.accountLength = 5;
    saveDatevSettings(settings, datev);
    const auto again = loadDatevSettings(settings);
    EXPECT_EQ(std::tie(again.chart, again.consultantNumber, again.accountLength, again.accounts),
              std::tie(datev.chart, datev.consultantNumber, datev.accountLength, datev.accounts));
}

// DATEV's own sample reads with the same reader, and its cash payout looks like ours: H on the cash account, BU 9
// on an expense account without automatic.
TEST(DatevExport, TheReaderReadsDatevsSampleOfTheSameShape)
{
    const auto sample = readBatch(test::readBytes(std::filesystem::path(ZW_TEST_DATA_DIR) / "EXTF_Buchungsstapel_Muster.csv"));
    ASSERT_EQ(sample.size(), 6u);
    EXPECT_EQ(sample[0].size(), 31u);
    EXPECT_EQ(sample[0][0].text, "EXTF");
    EXPECT_EQ(sample[1][0].text, "Umsatz (ohne Soll/Haben-Kz)");
    for (std::size_t i = 2; i < sample.size(); ++i)
        EXPECT_EQ(sample[i].size(), sample[1].size());
    EXPECT_EQ(sample[3][13].text, "Normalabschreibung Gebäude");
    EXPECT_EQ(fieldsAt(sample[4], {1, 2, 7, 8, 9, 10}), std::vector<std::string>({"26,87", "H", "1000", "4930", "9", "0102"}));
}

} // namespace
} // namespace zw
