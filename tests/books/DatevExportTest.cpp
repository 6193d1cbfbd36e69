#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
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
    std::vector<std::string> lines; // in UTF-8, without their CR LF
    DatevSummary summary;
};

// The batch is Windows-1252 in CR LF lines, ';' between fields and a text field in quotes with a quote doubled
// inside; Python's csv reader reads a whole batch in datev_cli_check.py.
Exported exportRows(const DatevRequest& request, const std::vector<std::string>& rows)
{
    std::string bytes;
    DatevBatchWriter writer(request, [&bytes](std::string_view piece) { bytes += piece; });
    for (const auto& text : rows)
        writer.addRow(text);
    Exported batch{{}, writer.finish()};
    // The callers' exact lines see a missing last CR LF and a line break inside a line.
    for (std::size_t start = 0, end; (end = bytes.find("\r\n", start)) != std::string::npos; start = end + 2)
        batch.lines.push_back(cp1252ToUtf8(std::string_view(bytes).substr(start, end - start)));
    return batch;
}

// Fields 15 to 125 of a booking: all empty but Festschreibung (114), 0.
const std::string kRestOfBooking = std::string(100, ';') + "0" + std::string(11, ';');

TEST(DatevExport, TheHeaderCountsTheFiscalYearFromItsStartAndQuotesItsTexts)
{
    auto request = januaryRequest();
    request.settings.fiscalYearStart = "01.07.";
    const auto batch = exportRows(request, {row("15.01.2026", "1", "119,00", "", "19", "A", "B")});
    ASSERT_EQ(batch.lines.size(), 3u);
    // Field 6, the time of writing on the local clock to the millisecond, stands between the two parts.
    const std::string& header = batch.lines[0];
    ASSERT_GT(header.size(), 51u);
    EXPECT_EQ(header.substr(0, 34), R"("EXTF";700;21;"Buchungsstapel";13;)");
    EXPECT_EQ(header.substr(34, 17).find_first_not_of("0123456789"), std::string::npos);
    EXPECT_EQ(header.substr(51), R"(;;"ZW";"Zettelwerk";"";29098;55003;20250701;4;20260101;20260131;)"
                                 R"("Kasse 01.01.2026-31.01.2026";"";1;0;0;"EUR";;"";;;"03";;;"";"")");
    const std::string& columns = batch.lines[1];
    EXPECT_EQ(std::count(columns.begin(), columns.end(), ';'), 124);
    EXPECT_TRUE(columns.starts_with("Umsatz (ohne Soll/Haben-Kz);Soll/Haben-Kennzeichen;WKZ Umsatz;Kurs;Basis-Umsatz;"
                                    "WKZ Basis-Umsatz;Konto;Gegenkonto (ohne BU-Schlüssel);"));
    EXPECT_TRUE(columns.ends_with(";Festschreibung;Leistungsdatum;Datum Zuord. Steuerperiode;Fälligkeit;"
                                  "Generalumkehr (GU);Steuersatz;Land;Abrechnungsreferenz;BVV-Position;"
                                  "EU-Land u. UStID (Ursprung);EU-Steuersatz (Ursprung);Abw. Skontokonto"));
    EXPECT_EQ(batch.lines[2], R"(119,00;"S";"EUR";;;;1000;8400;"";1501;"1";;;"A, B")" + kRestOfBooking);
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
        std::string expected; // fields 1 to 14: amount, S or H, currency, cash account, account, BU, date, number, text
    };
    const std::vector<Case> cases = {
        {"taking on an automatic account", row("02.01.2026", "1047", "119,00", "", "19", "Max Muster", "Beratung"),
         R"(119,00;"S";"EUR";;;;1000;8400;"";0201;"1047";;;"Max Muster, Beratung")"},
        {"taking at 7 % without automatic", row("03.01.2026", "1048", "1.070,00", "", "7", "", "Bücher"),
         R"(1070,00;"S";"EUR";;;;1000;8300;"2";0301;"1048";;;"Bücher")"},
        {"payout at 19 %", row("04.01.2026", "1049", "", "-23,80", "19", "Bürohaus", "Papier"),
         R"(23,80;"H";"EUR";;;;1000;4980;"9";0401;"1049";;;"Bürohaus, Papier")"},
        {"payout at 7 %", row("05.01.2026", "1050", "", "-10,70", "7", "Kiosk", "Zeitung"),
         R"(10,70;"H";"EUR";;;;1000;4940;"8";0501;"1050";;;"Kiosk, Zeitung")"},
        {"payout at 0 %", row("06.01.2026", "1051", "", "-0,85", "0", "Post", "Marke"),
         R"(0,85;"H";"EUR";;;;1000;4900;"";0601;"1051";;;"Post, Marke")"},
        {"Storno of a taking", row("07.01.2026", "1052", "-119,00", "", "19", "Max Muster", "Storno zu Beleg 1047: Beratung"),
         R"(119,00;"H";"EUR";;;;1000;8400;"";0701;"1052";;;"Max Muster, Storno zu Beleg 1047: Beratung")"},
        {"Storno of a payout", row("08.01.2026", "1053", "", "--23,80", "19", "Bürohaus", "Storno zu Beleg 1049: Papier"),
         R"(23,80;"S";"EUR";;;;1000;4980;"9";0801;"1053";;;"Bürohaus, Storno zu Beleg 1049: Papier")"},
        {"Privatentnahme", row("09.01.2026", "1054", "", "-50,00", "0", "", "Taschengeld", "Privatentnahme"),
         R"(50,00;"H";"EUR";;;;1000;1800;"";0901;"1054";;;"Taschengeld")"},
        {"Privateinlage", row("10.01.2026", "1055", "200,00", "", "0", "", "Wechselgeld", "Privateinlage"),
         R"(200,00;"S";"EUR";;;;1000;1890;"";1001;"1055";;;"Wechselgeld")"},
        {"long number and a purpose with quotes, ';' and a line break",
         row("31.01.2026", "RE 2026/000000012", "5,00", "", "0", "Jürgen", longPurpose),
         R"(5,00;"S";"EUR";;;;1000;8200;"";3101;"RE-2026/0000";;;"Jürgen, Miete; Strom ""Januar""  und Wasser für das ganze Haus")"},
    };
    std::vector<std::string> rows;
    for (const auto& each : cases)
        rows.push_back(each.row);
    rows.push_back(row("01.02.2026", "1056", "99,00", "", "19", "", "Februar"));
    rows.push_back(row("11.01.2026", "1057", "0,00", "", "19", "", "Muster"));
    rows.push_back("");
    const auto batch = exportRows(request, rows);
    EXPECT_EQ(batch.summary.zeroRows, 1u);
    ASSERT_EQ(batch.lines.size(), cases.size() + 2);
    for (std::size_t i = 0; i < cases.size(); ++i) {
        SCOPED_TRACE(cases[i].name);
        EXPECT_EQ(batch.lines[i + 2], cases[i].expected + kRestOfBooking);
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

} // namespace
} // namespace zw
