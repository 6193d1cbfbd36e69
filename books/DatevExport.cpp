#include "books/DatevExport.h"

#include <algorithm>
#include <charconv>
#include <ctime>

#include "app/AtomicFile.h"
#include "app/ProgramPaths.h"
#include "app/TextFile.h"
#include "books/DailyClose.h"
#include "core/CodePage.h"
#include "core/RunError.h"
#include "core/Settings.h"
#include "ledger/ReceiptLedger.h"

namespace zw {
namespace {

// The importer's refusals come back as this, so the user reads the reason before any file is there.
RunError refused(std::string text) { return RunError(5, std::move(text)); }

struct AccountInfo
{
    std::string_view key; // in the settings section, behind "Konto" and "Automatik"
    std::string_view caption;
    std::string_view skr03;
    std::string_view skr03Name;
    std::string_view skr04;
    std::string_view skr04Name;
    bool automatic;
};

// Expenses go to accounts without automatic VAT, so the BU keys 9 and 8 carry the input tax.
constexpr std::array<AccountInfo, kDatevAccountCount> kAccounts = {{
    {"Kasse", "Kasse", "1000", "Kasse", "1600", "Kasse", false},
    {"Erloese19", "Erlöse 19 %", "8400", "Erlöse 19 % USt", "4400", "Erlöse 19 % USt", true},
    {"Erloese7", "Erlöse 7 %", "8300", "Erlöse 7 % USt", "4300", "Erlöse 7 % USt", true},
    {"Erloese0", "Erlöse 0 %", "8200", "Erlöse", "4200", "Erlöse", true},
    {"Aufwand19", "Ausgaben 19 %", "4980", "Sonstiger Betriebsbedarf", "6850", "Sonstiger Betriebsbedarf", false},
    {"Aufwand7", "Ausgaben 7 %", "4940", "Zeitschriften, Bücher", "6820", "Zeitschriften, Bücher", false},
    {"Aufwand0", "Ausgaben 0 %", "4900", "Sonstige betriebliche Aufwendungen", "6300",
     "Sonstige betriebliche Aufwendungen", false},
    {"Privatentnahme", "Privatentnahme", "1800", "Privatentnahmen allgemein", "2100", "Privatentnahmen allgemein",
     false},
    {"Privateinlage", "Privateinlage", "1890", "Privateinlagen", "2180", "Privateinlagen", false},
}};

const AccountInfo& infoOf(DatevAccount which) { return kAccounts[static_cast<std::size_t>(which)]; }

constexpr std::array<std::string_view, 125> kColumns = {
    "Umsatz (ohne Soll/Haben-Kz)", "Soll/Haben-Kennzeichen", "WKZ Umsatz", "Kurs", "Basis-Umsatz",
    "WKZ Basis-Umsatz", "Konto", "Gegenkonto (ohne BU-Schlüssel)", "BU-Schlüssel", "Belegdatum", "Belegfeld 1",
    "Belegfeld 2", "Skonto", "Buchungstext", "Postensperre", "Diverse Adressnummer", "Geschäftspartnerbank",
    "Sachverhalt", "Zinssperre", "Beleglink", "Beleginfo - Art 1", "Beleginfo - Inhalt 1", "Beleginfo - Art 2",
    "Beleginfo - Inhalt 2", "Beleginfo - Art 3", "Beleginfo - Inhalt 3", "Beleginfo - Art 4", "Beleginfo - Inhalt 4",
    "Beleginfo - Art 5", "Beleginfo - Inhalt 5", "Beleginfo - Art 6", "Beleginfo - Inhalt 6", "Beleginfo - Art 7",
    "Beleginfo - Inhalt 7", "Beleginfo - Art 8", "Beleginfo - Inhalt 8", "KOST1 - Kostenstelle",
    "KOST2 - Kostenstelle", "Kost-Menge", "EU-Land u. UStID (Bestimmung)", "EU-Steuersatz (Bestimmung)",
    "Abw. Versteuerungsart", "Sachverhalt L+L", "Funktionsergänzung L+L", "BU 49 Hauptfunktionstyp",
    "BU 49 Hauptfunktionsnummer", "BU 49 Funktionsergänzung", "Zusatzinformation - Art 1",
    "Zusatzinformation- Inhalt 1", "Zusatzinformation - Art 2", "Zusatzinformation- Inhalt 2",
    "Zusatzinformation - Art 3", "Zusatzinformation- Inhalt 3", "Zusatzinformation - Art 4",
    "Zusatzinformation- Inhalt 4", "Zusatzinformation - Art 5", "Zusatzinformation- Inhalt 5",
    "Zusatzinformation - Art 6", "Zusatzinformation- Inhalt 6", "Zusatzinformation - Art 7",
    "Zusatzinformation- Inhalt 7", "Zusatzinformation - Art 8", "Zusatzinformation- Inhalt 8",
    "Zusatzinformation - Art 9", "Zusatzinformation- Inhalt 9", "Zusatzinformation - Art 10",
    "Zusatzinformation- Inhalt 10", "Zusatzinformation - Art 11", "Zusatzinformation- Inhalt 11",
    "Zusatzinformation - Art 12", "Zusatzinformation- Inhalt 12", "Zusatzinformation - Art 13",
    "Zusatzinformation- Inhalt 13", "Zusatzinformation - Art 14", "Zusatzinformation- Inhalt 14",
    "Zusatzinformation - Art 15", "Zusatzinformation- Inhalt 15", "Zusatzinformation - Art 16",
    "Zusatzinformation- Inhalt 16", "Zusatzinformation - Art 17", "Zusatzinformation- Inhalt 17",
    "Zusatzinformation - Art 18", "Zusatzinformation- Inhalt 18", "Zusatzinformation - Art 19",
    "Zusatzinformation- Inhalt 19", "Zusatzinformation - Art 20", "Zusatzinformation- Inhalt 20", "Stück", "Gewicht",
    "Zahlweise", "Forderungsart", "Veranlagungsjahr", "Zugeordnete Fälligkeit", "Skontotyp", "Auftragsnummer",
    "Buchungstyp", "USt-Schlüssel (Anzahlungen)", "EU-Land (Anzahlungen)", "Sachverhalt L+L (Anzahlungen)",
    "EU-Steuersatz (Anzahlungen)", "Erlöskonto (Anzahlungen)", "Herkunft-Kz", "Buchungs GUID", "KOST-Datum",
    "SEPA-Mandatsreferenz", "Skontosperre", "Gesellschaftername", "Beteiligtennummer", "Identifikationsnummer",
    "Zeichnernummer", "Postensperre bis", "Bezeichnung SoBil-Sachverhalt", "Kennzeichen SoBil-Buchung",
    "Festschreibung", "Leistungsdatum", "Datum Zuord. Steuerperiode", "Fälligkeit", "Generalumkehr (GU)",
    "Steuersatz", "Land", "Abrechnungsreferenz", "BVV-Position", "EU-Land u. UStID (Ursprung)",
    "EU-Steuersatz (Ursprung)", "Abw. Skontokonto"
};

bool allDigits(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::optional<long> numberIn(std::string_view text, long low, long high)
{
    long value = 0;
    if (!allDigits(text) || text.size() > 9)
        return std::nullopt;
    std::from_chars(text.data(), text.data() + text.size(), value);
    if (value < low || value > high)
        return std::nullopt;
    return value;
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t'))
        text.remove_suffix(1);
    return text;
}

struct DayOfYear
{
    int day = 0;
    int month = 0;
};

std::optional<DayOfYear> parseDayOfYear(std::string_view text)
{
    text = trimmed(text);
    if (text.ends_with('.'))
        text.remove_suffix(1);
    // 2001 has no 29th of February: a fiscal year cannot start on a day that only leap years have.
    const auto day = parseGermanDate(std::string(text) + ".2001");
    if (!day)
        return std::nullopt;
    return DayOfYear{day->day, day->month};
}

void appendDigits(std::string& out, long value, int width)
{
    char digits[16];
    auto [end, error] = std::to_chars(digits, digits + sizeof digits, value);
    for (int pad = width - static_cast<int>(end - digits); pad > 0; --pad)
        out += '0';
    out.append(digits, end);
}

std::string compactDate(const BookDate& day)
{
    std::string text;
    appendDigits(text, day.year, 4);
    appendDigits(text, day.month, 2);
    appendDigits(text, day.day, 2);
    return text;
}

// Amounts as the ledger writes them ("1.234,56", "-35,50", "119"), read without the general number reader, which
// the million rows of a large ledger would feel; anything else goes to that reader.
std::optional<Cents> amountCents(std::string_view text)
{
    text = trimmed(text);
    bool negative = false;
    if (!text.empty() && text.front() == '-') {
        negative = true;
        text.remove_prefix(1);
    }
    Cents whole = 0;
    std::size_t pos = 0;
    bool digitSeen = false;
    for (; pos < text.size() && text[pos] != ','; ++pos) {
        const char c = text[pos];
        if (c >= '0' && c <= '9') {
            whole = whole * 10 + (c - '0');
            digitSeen = true;
        } else if (c != '.' || whole > 100'000'000'000'000) {
            digitSeen = false;
            break;
        }
    }
    Cents fraction = 0;
    bool simple = digitSeen && pos == text.size();
    if (digitSeen && pos < text.size()) {
        const std::string_view places = text.substr(pos + 1);
        simple = places.size() >= 1 && places.size() <= 2 && allDigits(places);
        if (simple)
            fraction = (places[0] - '0') * 10 + (places.size() == 2 ? places[1] - '0' : 0);
    }
    if (simple) {
        const Cents cents = whole * 100 + fraction;
        return negative ? -cents : cents;
    }
    try {
        const Cents cents = centsOf(text);
        return negative ? -cents : cents;
    } catch (const RunError&) {
        return std::nullopt;
    }
}

void appendAmount(std::string& out, Cents cents)
{
    appendDigits(out, static_cast<long>(cents / 100), 1);
    out += ',';
    appendDigits(out, static_cast<long>(cents % 100), 2);
}

// A text field of the batch: quoted, a quote doubled, no control character and at most `characters` characters,
// in Windows-1252.
void appendTextField(std::string& out, std::string_view text, std::size_t characters)
{
    std::string cut;
    if (text.size() > characters) { // bytes beyond the limit may still be fewer characters
        cut = firstCharacters(text, characters);
        text = cut;
    }
    out += '"';
    std::size_t plain = 0; // bytes since the last one that needed care, copied in one piece
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte >= 0x20 && byte < 0x80 && byte != '"')
            continue;
        out.append(text.data() + plain, i - plain);
        if (byte == '"') {
            out += "\"\"";
        } else if (byte < 0x80) {
            out += ' ';
        } else if (i + 1 < text.size() && (byte == 0xC3 || (byte == 0xC2 && static_cast<unsigned char>(text[i + 1]) >= 0xA0))) {
            // U+00A0 to U+00FF are their own Windows-1252 bytes.
            out += static_cast<char>(((byte & 0x03) << 6) | (static_cast<unsigned char>(text[i + 1]) & 0x3F));
            ++i;
        } else {
            std::size_t length = (byte & 0xE0) == 0xC0 ? 2 : (byte & 0xF0) == 0xE0 ? 3 : (byte & 0xF8) == 0xF0 ? 4 : 1;
            length = std::min(length, text.size() - i);
            const std::string_view character = text.substr(i, length);
            // A TAB of the file is held as a private-use character; it stands for a blank here.
            out += character == kLiteralTab ? std::string(" ") : utf8ToCp1252(character);
            i += length - 1;
        }
        plain = i + 1;
    }
    out.append(text.data() + plain, text.size() - plain);
    out += '"';
}

// Belegfeld 1 takes letters, digits and $ & % * + - / only, twelve of them here.
std::string receiptNumberField(std::string_view number)
{
    std::string cleaned;
    for (char c : number) {
        if (cleaned.size() == 12)
            break;
        const bool allowed = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
                             std::string_view("_$&%*+-/").find(c) != std::string_view::npos;
        if (allowed)
            cleaned += c;
        else if (static_cast<unsigned char>(c) < 0x80 || (static_cast<unsigned char>(c) & 0xC0) == 0xC0)
            cleaned += '-'; // one mark for a character, not for each byte of it
    }
    return cleaned;
}

std::string localCreationStamp(std::chrono::system_clock::time_point moment)
{
    const std::time_t seconds = std::chrono::system_clock::to_time_t(moment);
    std::tm local{};
    localtime_r(&seconds, &local);
    const auto millis =
        std::chrono::duration_cast<std::chrono::milliseconds>(moment.time_since_epoch()).count() % 1000;
    std::string text;
    appendDigits(text, local.tm_year + 1900, 4);
    for (int part : {local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec})
        appendDigits(text, part, 2);
    appendDigits(text, static_cast<long>(millis < 0 ? millis + 1000 : millis), 3);
    return text;
}

} // namespace

std::string_view datevAccountCaption(DatevAccount which) { return infoOf(which).caption; }

std::string_view defaultAccountName(ChartOfAccounts chart, DatevAccount which)
{
    return chart == ChartOfAccounts::SKR03 ? infoOf(which).skr03Name : infoOf(which).skr04Name;
}

std::string_view accountNameOf(ChartOfAccounts chart, DatevAccount which, std::string_view number)
{
    const auto& info = infoOf(which);
    const std::string_view standard = chart == ChartOfAccounts::SKR03 ? info.skr03 : info.skr04;
    return trimmed(number) == standard ? defaultAccountName(chart, which) : std::string_view();
}

std::array<DatevAccountSetting, kDatevAccountCount> defaultAccounts(ChartOfAccounts chart)
{
    std::array<DatevAccountSetting, kDatevAccountCount> accounts;
    for (std::size_t i = 0; i < kAccounts.size(); ++i)
        accounts[i] = {std::string(chart == ChartOfAccounts::SKR03 ? kAccounts[i].skr03 : kAccounts[i].skr04),
                       kAccounts[i].automatic};
    return accounts;
}

DatevSettings defaultDatevSettings(ChartOfAccounts chart)
{
    DatevSettings datev;
    datev.chart = chart;
    datev.accounts = defaultAccounts(chart);
    return datev;
}

DatevSettings loadDatevSettings(const Settings& settings)
{
    auto get = [&settings](std::string_view key, std::string_view fallback) {
        return settings.get(kApplicationName, kDatevSection, key, fallback);
    };
    const auto chart = get("Kontenrahmen", "SKR03") == "SKR04" ? ChartOfAccounts::SKR04 : ChartOfAccounts::SKR03;
    DatevSettings datev = defaultDatevSettings(chart);
    datev.consultantNumber = get("Beraternummer", "");
    datev.clientNumber = get("Mandantennummer", "");
    datev.fiscalYearStart = get("WJBeginn", datev.fiscalYearStart);
    const std::string length = get("Sachkontenlaenge", "4");
    datev.accountLength = numberIn(length, 0, 99).value_or(0);
    for (std::size_t i = 0; i < kAccounts.size(); ++i) {
        auto& account = datev.accounts[i];
        const std::string key(kAccounts[i].key);
        account.number = get("Konto" + key, account.number);
        account.automatic = get("Automatik" + key, account.automatic ? "1" : "0") == "1";
    }
    return datev;
}

void saveDatevSettings(Settings& settings, const DatevSettings& datev)
{
    auto save = [&settings](std::string_view key, std::string_view value) {
        settings.save(kApplicationName, kDatevSection, key, value);
    };
    save("Beraternummer", datev.consultantNumber);
    save("Mandantennummer", datev.clientNumber);
    save("WJBeginn", datev.fiscalYearStart);
    save("Sachkontenlaenge", std::to_string(datev.accountLength));
    save("Kontenrahmen", datev.chart == ChartOfAccounts::SKR04 ? "SKR04" : "SKR03");
    for (std::size_t i = 0; i < kAccounts.size(); ++i) {
        const std::string key(kAccounts[i].key);
        save("Konto" + key, datev.accounts[i].number);
        save("Automatik" + key, datev.accounts[i].automatic ? "1" : "0");
    }
}

std::optional<std::string> datevSettingsProblem(const DatevSettings& datev)
{
    const std::string_view consultant = trimmed(datev.consultantNumber);
    if (consultant.empty())
        return "Bitte tragen Sie die Beraternummer ein, die Ihnen Ihr Steuerberater nennt (1001 bis 9999999).";
    if (!numberIn(consultant, 1001, 9'999'999))
        return "Die Beraternummer \"" + std::string(consultant) + "\" ist keine Zahl von 1001 bis 9999999.";
    const std::string_view client = trimmed(datev.clientNumber);
    if (client.empty())
        return "Bitte tragen Sie die Mandantennummer ein, die Ihnen Ihr Steuerberater nennt (1 bis 99999).";
    if (!numberIn(client, 1, 99'999))
        return "Die Mandantennummer \"" + std::string(client) + "\" ist keine Zahl von 1 bis 99999.";
    if (!parseDayOfYear(datev.fiscalYearStart))
        return "Der Beginn des Wirtschaftsjahres \"" + datev.fiscalYearStart + "\" ist kein Tag der Form TT.MM.";
    if (datev.accountLength < 4 || datev.accountLength > 8)
        return std::string("Die Sachkontenlänge muss zwischen 4 und 8 liegen.");
    for (std::size_t i = 0; i < kAccounts.size(); ++i) {
        const std::string_view number = trimmed(datev.accounts[i].number);
        if (!allDigits(number) || number.size() != static_cast<std::size_t>(datev.accountLength))
            return "Das Konto \"" + std::string(kAccounts[i].caption) + "\" (\"" + std::string(number) +
                   "\") ist keine Kontonummer mit " + std::to_string(datev.accountLength) + " Stellen.";
    }
    return std::nullopt;
}

std::optional<BookDate> fiscalYearOf(const DatevSettings& datev, const BookDate& day)
{
    const auto start = parseDayOfYear(datev.fiscalYearStart);
    if (!start)
        return std::nullopt;
    const bool beforeStart = day.month < start->month || (day.month == start->month && day.day < start->day);
    return BookDate{beforeStart ? day.year - 1 : day.year, start->month, start->day};
}

std::optional<std::string> datevRangeProblem(const DatevSettings& datev, const BookDate& from, const BookDate& to)
{
    if (to < from)
        return "Der Zeitraum ist verkehrt herum: \"von\" (" + from.german() + ") liegt nach \"bis\" (" + to.german() +
               ").";
    const auto first = fiscalYearOf(datev, from);
    const auto last = fiscalYearOf(datev, to);
    if (first && last && *first != *last) {
        BookDate end = *last;
        // The day before the next fiscal year starts.
        for (BookDate day = *first; day < *last; day = day.next())
            end = day;
        return "Der Zeitraum vom " + from.german() + " bis " + to.german() +
               " reicht über zwei Wirtschaftsjahre. DATEV nimmt je Wirtschaftsjahr einen eigenen Stapel: bitte "
               "exportieren Sie bis zum " + end.german() + " und ab dem " + last->german() + " getrennt.";
    }
    return std::nullopt;
}

std::string datevFileName(const BookDate& from, const BookDate& to)
{
    return "EXTF_Buchungsstapel_" + compactDate(from) + "_" + compactDate(to) + ".csv";
}

std::optional<std::string> datevFileNameHint(const std::filesystem::path& file)
{
    const std::string name = file.filename().string();
    if (name.starts_with("EXTF_") && name.ends_with(".csv"))
        return std::nullopt;
    return "Hinweis: Die Stapelverarbeitung von DATEV zeigt nur Dateien, deren Name mit EXTF_ beginnt und auf .csv "
           "endet. Bitte benennen Sie \"" + name + "\" vor der Übergabe entsprechend um.";
}

const std::array<std::string_view, 125>& datevColumnNames() { return kColumns; }

DatevBatchWriter::DatevBatchWriter(const DatevRequest& request, Sink sink)
    : m_request(request), m_sink(std::move(sink))
{
    const DatevSettings& datev = m_request.settings;
    if (auto problem = datevSettingsProblem(datev))
        throw refused(*problem);
    if (auto problem = datevRangeProblem(datev, m_request.from, m_request.to))
        throw refused(*problem);
    const std::string quoted = "\"" + std::string(datev.chart == ChartOfAccounts::SKR04 ? "04" : "03") + "\"";
    std::string& out = m_buffer;
    out = "\"EXTF\";700;21;\"Buchungsstapel\";13;" + localCreationStamp(m_request.created) + ";;\"ZW\";\"Zettelwerk\";\"\";";
    out += std::string(trimmed(datev.consultantNumber)) + ";" + std::string(trimmed(datev.clientNumber)) + ";";
    out += compactDate(*fiscalYearOf(datev, m_request.from)) + ";" + std::to_string(datev.accountLength) + ";";
    out += compactDate(m_request.from) + ";" + compactDate(m_request.to) + ";";
    out += "\"Kasse " + m_request.from.german() + "-" + m_request.to.german() + "\";\"\";";
    // Booking type 1 (Finanzbuchführung), purpose 0, not locked: the adviser checks and locks the batch.
    out += "1;0;0;\"EUR\";;\"\";;;" + quoted + ";;;\"\";\"\"\r\n";
    for (std::size_t i = 0; i < kColumns.size(); ++i) {
        if (i > 0)
            out += ';';
        out += utf8ToCp1252(kColumns[i]);
    }
    out += "\r\n";
}

void DatevBatchWriter::addRow(std::string_view row)
{
    ++m_rowNumber;
    if (row.empty())
        return;
    std::array<std::string_view, kLedgerColumnCount> cells{};
    std::size_t start = 0;
    for (std::size_t column = 0; column < cells.size() && start <= row.size(); ++column) {
        const std::size_t tab = row.find('\t', start);
        cells[column] = row.substr(start, tab == std::string_view::npos ? std::string_view::npos : tab - start);
        start = tab == std::string_view::npos ? row.size() + 1 : tab + 1;
    }
    auto cell = [&cells](LedgerColumn column) { return cells[static_cast<std::size_t>(columnIndex(column))]; };
    auto problem = [this, &cell](const std::string& what) {
        std::string where = "Zeile " + std::to_string(m_rowNumber) + " der Belegliste";
        if (!cell(LedgerColumn::belegnr).empty())
            where += " (Beleg " + std::string(cell(LedgerColumn::belegnr)) + ")";
        return refused(where + " " + what + ". Bitte berichtigen Sie die Zeile; es wurde keine Datei geschrieben.");
    };

    const auto day = parseGermanDate(trimmed(cell(LedgerColumn::datum)));
    if (!day)
        throw problem("hat kein lesbares Datum (\"" + std::string(cell(LedgerColumn::datum)) + "\")");
    if (*day < m_request.from || m_request.to < *day)
        return;

    const std::string_view income = trimmed(cell(LedgerColumn::einnahme));
    std::string_view expense = trimmed(cell(LedgerColumn::ausgabe));
    if (!income.empty() && !expense.empty())
        throw problem("hat einen Betrag unter Einnahme und unter Ausgabe");
    if (income.empty() && expense.empty())
        throw problem("hat keinen Betrag");
    const bool taking = !income.empty();
    // The expense cell is "-" and the gross amount, a Storno's "-" and the negated amount.
    if (!taking && expense.front() == '-')
        expense.remove_prefix(1);
    const auto amount = amountCents(taking ? income : expense);
    if (!amount)
        throw problem("hat keinen lesbaren Betrag (\"" + std::string(taking ? income : cell(LedgerColumn::ausgabe)) +
                      "\")");
    const Cents intoCash = taking ? *amount : -*amount;
    if (intoCash == 0) {
        ++m_summary.zeroRows;
        return;
    }
    constexpr Cents kTenBillionEuros = 1'000'000'000'000;
    if (intoCash >= kTenBillionEuros || intoCash <= -kTenBillionEuros)
        throw problem("hat einen Betrag über 9.999.999.999,99, mehr als DATEV in einer Buchung nimmt");

    const std::string_view currency = trimmed(cell(LedgerColumn::waehrung));
    if (!currency.empty() && currency != "EUR" && currency != "€" && currency != "Euro")
        throw problem("ist in \"" + std::string(currency) + "\" ausgestellt; der Stapel nimmt nur Euro-Beträge");

    std::string_view rateText = trimmed(cell(LedgerColumn::mwst));
    if (rateText.ends_with('%'))
        rateText = trimmed(rateText.substr(0, rateText.size() - 1));
    const auto rate = rateText.empty() ? std::optional<Cents>(0) : amountCents(rateText);
    if (!rate || (*rate != 1900 && *rate != 700 && *rate != 0))
        throw problem("hat den Steuersatz \"" + std::string(cell(LedgerColumn::mwst)) +
                      "\"; der Export kennt 19 %, 7 % und 0 %");

    const std::string_view kind = trimmed(cell(LedgerColumn::bezeichnung));
    DatevAccount counter;
    if (kind == "Privatentnahme")
        counter = DatevAccount::PrivateWithdrawal;
    else if (kind == "Privateinlage")
        counter = DatevAccount::PrivateDeposit;
    else if (taking)
        counter = *rate == 1900 ? DatevAccount::Revenue19 : *rate == 700 ? DatevAccount::Revenue7 : DatevAccount::Revenue0;
    else
        counter = *rate == 1900 ? DatevAccount::Expense19 : *rate == 700 ? DatevAccount::Expense7 : DatevAccount::Expense0;
    const bool privateRow = counter == DatevAccount::PrivateWithdrawal || counter == DatevAccount::PrivateDeposit;
    std::string_view key;
    if (!privateRow && !m_request.settings.account(counter).automatic && *rate != 0)
        key = taking ? (*rate == 1900 ? "3" : "2") : (*rate == 1900 ? "9" : "8");

    if (++m_summary.bookings > m_request.bookingLimit)
        throw refused("Im Zeitraum liegen mehr als " + std::to_string(m_request.bookingLimit) +
                      " Buchungen; so große Stapel nimmt DATEV nicht an. Bitte teilen Sie den Zeitraum; es wurde "
                      "keine Datei geschrieben.");

    std::string& out = m_buffer;
    appendAmount(out, intoCash < 0 ? -intoCash : intoCash);
    out += intoCash > 0 ? ";\"S\";\"EUR\";;;;" : ";\"H\";\"EUR\";;;;";
    out += trimmed(m_request.settings.account(DatevAccount::Cash).number);
    out += ';';
    out += trimmed(m_request.settings.account(counter).number);
    out += ";\"";
    out += key;
    out += "\";";
    appendDigits(out, day->day, 2);
    appendDigits(out, day->month, 2);
    out += ';';
    appendTextField(out, receiptNumberField(cell(LedgerColumn::belegnr)), 12);
    out += ";;;";
    // fuer1 and fuer2 hold the payer's lines, von the purpose (the ledger's columns are crossed against the form).
    std::string_view payer = trimmed(cell(LedgerColumn::fuer1));
    if (payer.empty())
        payer = trimmed(cell(LedgerColumn::fuer2));
    const std::string_view purpose = trimmed(cell(LedgerColumn::von));
    std::string text(payer);
    if (!payer.empty() && !purpose.empty())
        text += ", ";
    text += purpose;
    appendTextField(out, text, 60);
    // Fields 15 to 125 are empty but for 114, Festschreibung, which is never left open: an open one locks the
    // batch for good at the import.
    out.append(100, ';');
    out += '0';
    out.append(11, ';');
    out += "\r\n";
    if (out.size() >= 1 << 20)
        flush();
}

void DatevBatchWriter::flush()
{
    if (!m_buffer.empty())
        m_sink(m_buffer);
    m_buffer.clear();
}

DatevSummary DatevBatchWriter::finish()
{
    if (m_summary.bookings == 0)
        throw refused("Im Zeitraum vom " + m_request.from.german() + " bis " + m_request.to.german() +
                      " gibt es keine Belege mit einem Betrag; es wurde keine Datei geschrieben.");
    flush();
    return m_summary;
}

DatevSummary exportDatev(const ProgramPaths& paths, const DatevRequest& request, const std::filesystem::path& target)
{
    const auto ledger = paths.dataFile("belege.dat");
    std::error_code error;
    if (!std::filesystem::exists(ledger, error))
        throw refused("Es gibt noch keine Belegliste (" + ledger.string() + "); es wurde keine Datei geschrieben.");
    DatevSummary summary;
    writeFileAtomicallyInPieces(target, [&](const std::function<void(std::string_view)>& write) {
        DatevBatchWriter writer(request, write);
        LedgerReader reader([&writer](std::string_view row) { writer.addRow(row); });
        readFileInBlocks(ledger, [&reader](std::string_view block) { reader.feed(block); });
        reader.finish();
        summary = writer.finish();
    });
    return summary;
}

std::string datevSummaryText(const DatevSummary& summary, const std::filesystem::path& target)
{
    std::string text = std::to_string(summary.bookings) + (summary.bookings == 1 ? " Buchung" : " Buchungen") +
                       " nach " + target.string() + " geschrieben.";
    if (summary.zeroRows > 0)
        text += " " + std::to_string(summary.zeroRows) +
                (summary.zeroRows == 1 ? " Beleg über 0,00 bleibt" : " Belege über 0,00 bleiben") +
                " draußen, da DATEV keine Buchung ohne Betrag nimmt.";
    if (auto hint = datevFileNameHint(target))
        text += " " + *hint;
    return text;
}

} // namespace zw
