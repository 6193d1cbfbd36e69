#include "core/GermanNumbers.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string>

#include "core/RunError.h"

namespace zw {
namespace {

constexpr std::string_view kEuroSign = "\u20AC";
// Exponents beyond this cannot change the outcome (overflow or zero) and would only lengthen the text.
constexpr long kExponentClamp = 100000;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}
bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}

// The value of the digits times ten to the exponent: RunError 6 beyond the double range, 0 below it.
double decimalToDouble(std::string_view integerDigits, std::string_view fractionDigits, long exponent)
{
    while (!integerDigits.empty() && integerDigits.front() == '0')
        integerDigits.remove_prefix(1);
    std::size_t leadingFractionZeros = 0;
    while (leadingFractionZeros < fractionDigits.size() && fractionDigits[leadingFractionZeros] == '0')
        ++leadingFractionZeros;
    if (integerDigits.empty() && leadingFractionZeros == fractionDigits.size())
        return 0.0;

    std::string text;
    text.reserve(integerDigits.size() + fractionDigits.size() + 12);
    text.append(integerDigits.empty() ? std::string_view("0") : integerDigits);
    text.push_back('.');
    text.append(fractionDigits);
    text.push_back('e');
    text.append(std::to_string(exponent));

    double value = 0.0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    (void)end;
    if (error == std::errc::result_out_of_range) {
        // Decimal magnitude of the first significant digit decides between overflow and underflow.
        const long magnitude = integerDigits.empty() ? -static_cast<long>(leadingFractionZeros) + exponent
                                                     : static_cast<long>(integerDigits.size()) + exponent;
        if (magnitude > 0)
            throw RunError::overflow();
        return 0.0;
    }
    if (error != std::errc() || !std::isfinite(value))
        throw RunError::overflow();
    return value;
}

int hexDigitValue(char c)
{
    if (isDigit(c))
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// Reads "&H..." or "&O..." at pos (the "&" itself) with all its digits; returns the unsigned value, or sets
// tooLarge beyond 64 bits.
std::uint64_t scanBasedNumber(std::string_view text, std::size_t& pos, bool& tooLarge)
{
    const char marker = text[pos + 1];
    const int shift = (marker == 'H' || marker == 'h') ? 4 : 3;
    const int base = 1 << shift;
    pos += 2;
    std::uint64_t value = 0;
    while (pos < text.size()) {
        const int digit = hexDigitValue(text[pos]);
        if (digit < 0 || digit >= base)
            break;
        if (value > (std::numeric_limits<std::uint64_t>::max() >> shift))
            tooLarge = true;
        value = (value << shift) | static_cast<std::uint64_t>(digit);
        ++pos;
    }
    return value;
}

bool startsBasedNumber(std::string_view text, std::size_t pos)
{
    if (pos + 1 >= text.size() || text[pos] != '&')
        return false;
    const char marker = text[pos + 1];
    return marker == 'H' || marker == 'h' || marker == 'O' || marker == 'o';
}

// Reads an exponent "E12", "d-3" at pos; leaves pos unchanged when no digit follows the letter.
bool scanExponent(std::string_view text, std::size_t& pos, long& exponent)
{
    if (pos >= text.size())
        return false;
    const char letter = text[pos];
    if (letter != 'e' && letter != 'E' && letter != 'd' && letter != 'D')
        return false;
    std::size_t at = pos + 1;
    bool negative = false;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
        negative = text[at] == '-';
        ++at;
    }
    if (at >= text.size() || !isDigit(text[at]))
        return false;
    long value = 0;
    while (at < text.size() && isDigit(text[at])) {
        if (value < kExponentClamp)
            value = value * 10 + (text[at] - '0');
        ++at;
    }
    exponent = negative ? -value : value;
    pos = at;
    return true;
}

std::optional<double> tryParseAmount(std::string_view text, bool& overflow)
{
    overflow = false;
    std::size_t pos = 0;
    const std::size_t size = text.size();
    bool negative = false;
    bool signSeen = false;
    bool parenthesis = false;
    bool currencySeen = false;
    bool tooLarge = false;

    auto takeCurrency = [&]() {
        if (!currencySeen && text.substr(pos, kEuroSign.size()) == kEuroSign) {
            currencySeen = true;
            pos += kEuroSign.size();
            return true;
        }
        return false;
    };

    // Blanks, a currency sign and one plus or minus may stand before and after the number.
    auto takeBlankSignOrCurrency = [&](char c) {
        if (isBlank(c)) {
            ++pos;
            return true;
        }
        if ((c == '+' || c == '-') && !signSeen && !parenthesis) {
            signSeen = true;
            negative = c == '-';
            ++pos;
            return true;
        }
        return takeCurrency();
    };

    while (pos < size) {
        const char c = text[pos];
        if (takeBlankSignOrCurrency(c))
            continue;
        if (c != '(' || signSeen || parenthesis)
            break;
        parenthesis = true;
        negative = true;
        ++pos;
    }

    double magnitude = 0.0;
    if (startsBasedNumber(text, pos)) {
        const std::size_t digitsStart = pos + 2;
        const std::uint64_t value = scanBasedNumber(text, pos, tooLarge);
        if (pos == digitsStart)
            return std::nullopt;
        magnitude = static_cast<double>(value);
    } else {
        std::string integerDigits;
        std::string fractionDigits;
        bool decimalSeen = false;
        while (pos < size) {
            const char c = text[pos];
            if (isDigit(c)) {
                (decimalSeen ? fractionDigits : integerDigits).push_back(c);
            } else if (c == '.' && !decimalSeen) {
                // The thousands mark is accepted anywhere before the decimal comma, grouped or not.
            } else if (c == ',' && !decimalSeen) {
                decimalSeen = true;
            } else {
                break;
            }
            ++pos;
        }
        if (integerDigits.empty() && fractionDigits.empty())
            return std::nullopt;
        long exponent = 0;
        scanExponent(text, pos, exponent);
        try {
            magnitude = decimalToDouble(integerDigits, fractionDigits, exponent);
        } catch (const RunError&) {
            tooLarge = true;
        }
    }

    while (pos < size) {
        const char c = text[pos];
        if (takeBlankSignOrCurrency(c))
            continue;
        if (c != ')' || !parenthesis)
            return std::nullopt;
        parenthesis = false;
        signSeen = true;
        ++pos;
    }
    if (parenthesis)
        return std::nullopt;
    // The text is read whole before its value counts: a malformed text is a type mismatch even when too
    // large.
    if (tooLarge) {
        overflow = true;
        return std::nullopt;
    }
    // A zero keeps no sign, as the run time's own zero has none.
    if (magnitude == 0.0)
        return 0.0;
    return negative ? -magnitude : magnitude;
}

} // namespace

double parseAmount(std::string_view text)
{
    bool overflow = false;
    const auto value = tryParseAmount(text, overflow);
    if (overflow)
        throw RunError::overflow();
    if (!value)
        throw RunError::typeMismatch();
    return *value;
}

bool isNumeric(std::string_view text)
{
    bool overflow = false;
    return tryParseAmount(text, overflow).has_value();
}

std::optional<double> amountIfNumeric(std::string_view text)
{
    bool overflow = false;
    return tryParseAmount(text, overflow);
}

double leadingNumber(std::string_view text)
{
    std::string compact;
    compact.reserve(text.size());
    for (char c : text) {
        if (c != ' ' && c != '\t' && c != '\n')
            compact.push_back(c);
    }
    std::size_t pos = 0;
    if (startsBasedNumber(compact, pos)) {
        bool tooLarge = false;
        const std::uint64_t value = scanBasedNumber(compact, pos, tooLarge);
        if (tooLarge)
            throw RunError::overflow();
        if (value <= 0xFFFF)
            return static_cast<double>(static_cast<std::int16_t>(static_cast<std::uint16_t>(value)));
        if (value <= 0xFFFFFFFF)
            return static_cast<double>(static_cast<std::int32_t>(static_cast<std::uint32_t>(value)));
        throw RunError::overflow();
    }
    bool negative = false;
    if (pos < compact.size() && (compact[pos] == '+' || compact[pos] == '-')) {
        negative = compact[pos] == '-';
        ++pos;
    }
    std::string integerDigits;
    std::string fractionDigits;
    while (pos < compact.size() && isDigit(compact[pos]))
        integerDigits.push_back(compact[pos++]);
    if (pos < compact.size() && compact[pos] == '.') {
        ++pos;
        while (pos < compact.size() && isDigit(compact[pos]))
            fractionDigits.push_back(compact[pos++]);
    }
    if (integerDigits.empty() && fractionDigits.empty())
        return 0.0;
    long exponent = 0;
    scanExponent(compact, pos, exponent);
    const double magnitude = decimalToDouble(integerDigits, fractionDigits, exponent);
    return negative ? -magnitude : magnitude;
}

std::int32_t roundHalfEven(double value)
{
    if (!std::isfinite(value))
        throw RunError::overflow();
    const double lower = std::floor(value);
    const double rest = value - lower;
    double rounded = lower;
    if (rest > 0.5 || (rest == 0.5 && std::fmod(lower, 2.0) != 0.0))
        rounded = lower + 1.0;
    if (rounded < static_cast<double>(std::numeric_limits<std::int32_t>::min()) ||
        rounded > static_cast<double>(std::numeric_limits<std::int32_t>::max()))
        throw RunError::overflow();
    return static_cast<std::int32_t>(rounded);
}

} // namespace zw
