#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "books/BookDate.h"

namespace zw {

class ProgramPaths;
class Settings;

// The adviser's booking batch in the DATEV format (EXTF 700, category 21 "Buchungsstapel", format version 13): one
// booking per ledger row, seen from the cash account.

enum class ChartOfAccounts { SKR03, SKR04 };

// The accounts the export books to, in the order the window lists them.
enum class DatevAccount {
    Cash,
    Revenue19,
    Revenue7,
    Revenue0,
    Expense19,
    Expense7,
    Expense0,
    PrivateWithdrawal,
    PrivateDeposit
};
inline constexpr std::size_t kDatevAccountCount = 9;

struct DatevAccountSetting
{
    std::string number;
    bool automatic = false; // "Automatikkonto": the account books its VAT itself, so no BU key may go with it
    bool operator==(const DatevAccountSetting&) const = default;
};

// What the settings section DATEV holds.
struct DatevSettings
{
    std::string consultantNumber;           // Beraternummer
    std::string clientNumber;               // Mandantennummer
    std::string fiscalYearStart = "01.01."; // TT.MM.
    int accountLength = 4;
    ChartOfAccounts chart = ChartOfAccounts::SKR03;
    std::array<DatevAccountSetting, kDatevAccountCount> accounts{};

    DatevAccountSetting& account(DatevAccount which) { return accounts[static_cast<std::size_t>(which)]; }
    const DatevAccountSetting& account(DatevAccount which) const { return accounts[static_cast<std::size_t>(which)]; }
};

// The window's caption of an account and the name of its default in the chart ("Kasse", "Erlöse 19 % USt").
std::string_view datevAccountCaption(DatevAccount which);
std::string_view defaultAccountName(ChartOfAccounts chart, DatevAccount which);
// The default's name while `number` is the chart's default account, else nothing: a number of the user's own has a
// name only the adviser knows.
std::string_view accountNameOf(ChartOfAccounts chart, DatevAccount which, std::string_view number);
// The accounts and automatic switches a chart starts with.
std::array<DatevAccountSetting, kDatevAccountCount> defaultAccounts(ChartOfAccounts chart);
DatevSettings defaultDatevSettings(ChartOfAccounts chart = ChartOfAccounts::SKR03);

inline constexpr std::string_view kDatevSection = "DATEV";
DatevSettings loadDatevSettings(const Settings& settings);
void saveDatevSettings(Settings& settings, const DatevSettings& datev);

// The first thing the adviser's program would refuse in the settings, as a German message; nothing when sound.
std::optional<std::string> datevSettingsProblem(const DatevSettings& datev);
// The fiscal year `day` lies in, by its first day.
std::optional<BookDate> fiscalYearOf(const DatevSettings& datev, const BookDate& day);
// A reversed range, or one that spans two fiscal years (one batch holds one fiscal year): its message.
std::optional<std::string> datevRangeProblem(const DatevSettings& datev, const BookDate& from, const BookDate& to);

// "EXTF_Buchungsstapel_JJJJMMTT_JJJJMMTT.csv": the adviser's batch import lists only files named EXTF_*.csv.
std::string datevFileName(const BookDate& from, const BookDate& to);
// The hint for a file name that import would not list; nothing for a fitting one.
std::optional<std::string> datevFileNameHint(const std::filesystem::path& file);

// The column names of line 2, the 125 fields of format version 13 in their order.
const std::array<std::string_view, 125>& datevColumnNames();

// A batch is at most this many bookings long; the importer refuses longer ones.
inline constexpr std::size_t kDatevBookingLimit = 99999;

struct DatevRequest
{
    DatevSettings settings;
    BookDate from;
    BookDate to;
    std::chrono::system_clock::time_point created; // field 6 of the header, on the local clock
    std::size_t bookingLimit = kDatevBookingLimit;
};

struct DatevSummary
{
    std::size_t bookings = 0;
    std::size_t zeroRows = 0; // rows of 0,00 in the range, which DATEV cannot book and the batch leaves out
};

// Writes the batch as ledger rows come: the header and the column line first, then one booking per row of the
// range. Every fault is a RunError with a German message that names the ledger row; the caller then keeps no file.
class DatevBatchWriter
{
public:
    using Sink = std::function<void(std::string_view bytes)>;
    // Throws for settings or a range the importer would refuse.
    DatevBatchWriter(const DatevRequest& request, Sink sink);

    // One row of belege.dat, tab-joined, in file order.
    void addRow(std::string_view tabJoined);
    // Hands the rest to the sink; throws when the range held no booking.
    DatevSummary finish();

private:
    void flush();

    DatevRequest m_request;
    Sink m_sink;
    std::string m_buffer;
    std::size_t m_rowNumber = 0;
    DatevSummary m_summary;
};

// The batch of belege.dat in `paths` into `target`, replaced whole or not at all.
DatevSummary exportDatev(const ProgramPaths& paths, const DatevRequest& request, const std::filesystem::path& target);

// What the window and the command line tell after an export.
std::string datevSummaryText(const DatevSummary& summary, const std::filesystem::path& target);

} // namespace zw
