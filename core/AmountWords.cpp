#include "core/AmountWords.h"

#include <array>
#include <string>

#include "core/GermanNumbers.h"
#include "core/RunError.h"

namespace zw {
namespace {

// Index 0 is unused in both unit tables.
constexpr std::array<std::string_view, 10> kDigitWords = {"",     "ein",   "zwei",   "drei", "vier",
                                                          "fünf", "sechs", "sieben", "acht", "neun"};
constexpr std::array<std::string_view, 10> kUnitWords = {"",     "eins",  "zwei",   "drei", "vier",
                                                         "fünf", "sechs", "sieben", "acht", "neun"};
constexpr std::array<std::string_view, 10> kTeenWords = {"zehn",     "elf",      "zwölf",    "dreizehn",
                                                         "vierzehn", "fünfzehn", "sechzehn", "siebzehn",
                                                         "achtzehn", "neunzehn"};
// Index is the tens digit; 0 and 1 have no word of their own.
constexpr std::array<std::string_view, 10> kTensWords = {
    "", "", "zwanzig", "dreißig", "vierzig", "fünfzig", "sechzig", "siebzig", "achtzig", "neunzig"};

constexpr std::size_t kGroupedTextLength = 12;

// One group of up to three digits for getZahl_in_Worten: hundreds from DigitWords, the rest from PairWords.
std::string hundredsAndPair(int group, const std::string& pair)
{
    if (group > 99)
        return std::string(digitWords(group / 100)) + "hundert" + pair;
    return pair;
}

// A character of a TripletWords group read as a number; anything but a digit reads as 0.
int characterValue(char c)
{
    return c >= '0' && c <= '9' ? c - '0' : 0;
}

} // namespace

std::string_view digitWords(int digit)
{
    if (digit < 1 || digit > 9)
        return {};
    return kDigitWords[static_cast<std::size_t>(digit)];
}

std::string pairWords(int value)
{
    if (value < 20) {
        if (value < 1)
            return {};
        if (value < 10)
            return std::string(kUnitWords[static_cast<std::size_t>(value)]);
        return std::string(kTeenWords[static_cast<std::size_t>(value - 10)]);
    }
    std::string words(digitWords(value % 10));
    if (!words.empty())
        words += "und";
    const int tens = value / 10 % 10;
    return words + std::string(kTensWords[static_cast<std::size_t>(tens)]);
}

std::string getZahl_in_Worten(std::int32_t number)
{
    if (number > 999999999)
        return "<Zahl ist zu groß>";
    if (number < 1)
        return {};

    const int rest = number % 1000;
    std::string words = hundredsAndPair(rest, pairWords(rest % 100));

    // The millions branch starts at 1000001, not 1000000: one million goes through the thousands branch.
    if (number >= 1000001) {
        const int millions = number / 1000000;
        const int thousands = number / 1000 % 1000;
        std::string millionWords = pairWords(millions % 100);
        millionWords = millionWords == "eins" ? "einemillion" : millionWords + "millionen";
        std::string thousandWords = pairWords(thousands % 100);
        thousandWords = thousandWords == "eins" ? "eintausend" : thousandWords + "tausend";
        return hundredsAndPair(millions, millionWords) + hundredsAndPair(thousands, thousandWords) + words;
    }
    if (number >= 1000) {
        // Here the thousands are all digits before the last three, so 1000000 gives 1000 thousands: its first
        // digit makes "einhundert".
        const int thousands = number / 1000;
        std::string thousandWords = pairWords(thousands % 100);
        thousandWords = thousandWords == "eins" ? "eintausend" : thousandWords + "tausend";
        std::string leading = thousandWords;
        if (thousands > 99) {
            std::string digits = std::to_string(thousands);
            leading = std::string(digitWords(digits.front() - '0')) + "hundert" + thousandWords;
        }
        return leading + words;
    }
    return words;
}

std::string tripletWords(std::string_view group)
{
    std::string hundreds;
    std::string units;
    std::string tens;
    const int first = characterValue(group[0]);
    if (first > 0)
        hundreds = group[0] == '1' ? std::string("einhundert")
                                   : std::string(kUnitWords[static_cast<std::size_t>(first)]) + "hundert";

    // The last two characters read as one number by the leading-number scan, so "-5" is -5 and "1." is 1.
    const double lastTwo = leadingNumber(group.substr(1, 2));
    if (lastTwo >= 10 && lastTwo < 20) {
        units = kTeenWords[static_cast<std::size_t>(lastTwo) - 10];
    } else {
        const int second = characterValue(group[1]);
        const int third = characterValue(group[2]);
        if (second > 1)
            tens = kTensWords[static_cast<std::size_t>(second)];
        if (third > 0) {
            if (!tens.empty())
                units = group[2] == '1' ? std::string("einund")
                                        : std::string(kUnitWords[static_cast<std::size_t>(third)]) + "und";
            else
                units = kUnitWords[static_cast<std::size_t>(third)];
        }
    }
    return hundreds + units + tens;
}

std::string BetragInWorten(double value)
{
    if (value == 0.0)
        return "null";
    std::string text = formatNumberWithPoint(value);
    if (text.front() == ' ')
        text.erase(0, 1);
    if (text.size() > kGroupedTextLength)
        throw RunError::invalidCall();
    text.insert(0, kGroupedTextLength - text.size(), '0');

    constexpr std::array<std::string_view, 3> kSingular = {"einemilliarde", "einemillion", "eintausend"};
    constexpr std::array<std::string_view, 3> kPlural = {"milliarden", "millionen", "tausend"};
    std::string words;
    for (std::size_t i = 0; i < 4; ++i) {
        const std::string_view group = std::string_view(text).substr(i * 3, 3);
        if (group == "000")
            continue;
        if (i < 3 && group == "001")
            words += kSingular[i];
        else if (i < 3)
            words += tripletWords(group) + std::string(kPlural[i]);
        else
            words += tripletWords(group);
    }
    return words;
}

} // namespace zw
