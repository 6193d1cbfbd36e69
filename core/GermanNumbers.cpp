#include "core/GermanNumbers.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

#include "core/RunError.h"

namespace zw {
namespace {

constexpr std::string_view kEuroSign = "\u20AC";
constexpr int kSignificantDigits = 15;
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

// The 15 significant digits of a value and the position of the decimal point within them.
struct DecimalForm
{
    std::string digits; // 15 digits, the first not zero (or "0" for zero)
    int pointPosition;  // digits before the decimal point; may be negative or beyond the digits
};

DecimalForm decimalForm(double magnitude)
{
    if (magnitude == 0.0)
        return {"0", 1};
    std::array<char, 40> buffer{};
    auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                std::chars_format::scientific, kSignificantDigits - 1);
    const std::string_view text(buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data()));
    const std::size_t e = text.find('e');
    DecimalForm form;
    for (char c : text.substr(0, e)) {
        if (isDigit(c))
            form.digits.push_back(c);
    }
    int exponent = 0;
    std::from_chars(text.data() + e + 2, text.data() + text.size(), exponent);
    if (text[e + 1] == '-')
        exponent = -exponent;
    form.pointPosition = exponent + 1;
    return form;
}

// Rounds half away from zero to `decimals` places; returns the digits of value * 10^decimals.
std::string roundedScaledDigits(const DecimalForm& form, int decimals)
{
    const long cut = static_cast<long>(form.pointPosition) + decimals;
    const long length = static_cast<long>(form.digits.size());
    if (cut < 0)
        return "0";
    if (cut == 0)
        return form.digits[0] >= '5' ? "1" : "0";
    std::string kept = form.digits.substr(0, static_cast<std::size_t>(std::min(cut, length)));
    if (cut > length)
        kept.append(static_cast<std::size_t>(cut - length), '0');
    if (cut < length && form.digits[static_cast<std::size_t>(cut)] >= '5') {
        std::size_t i = kept.size();
        while (i > 0 && kept[i - 1] == '9')
            kept[--i] = '0';
        if (i == 0)
            kept.insert(kept.begin(), '1');
        else
            ++kept[i - 1];
    }
    return kept;
}

std::string groupThousands(const std::string& digits)
{
    std::string grouped;
    const std::size_t count = digits.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0 && (count - i) % 3 == 0)
            grouped.push_back('.');
        grouped.push_back(digits[i]);
    }
    return grouped;
}

std::vector<std::string_view> splitSections(std::string_view pattern)
{
    std::vector<std::string_view> sections;
    std::size_t start = 0;
    bool quoted = false;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const char c = pattern[i];
        if (c == '"')
            quoted = !quoted;
        else if (c == '\\' && !quoted)
            ++i;
        else if (c == ';' && !quoted) {
            sections.push_back(pattern.substr(start, i - start));
            start = i + 1;
        }
    }
    sections.push_back(pattern.substr(start));
    return sections;
}

enum class TokenKind
{
    IntegerPlace,
    FractionPlace,
    DecimalSign,
    Literal
};

struct Token
{
    TokenKind kind;
    char placeholder = 0;
    std::string literal = {};
};

struct SectionLayout
{
    std::vector<Token> tokens;
    int integerZeros = 0;
    int integerPlaces = 0;
    int fractionPlaces = 0;
    int fractionZeros = 0; // places up to the last "0" after the decimal sign are always written
    bool grouping = false;
    bool percent = false;
};

SectionLayout parseSection(std::string_view section)
{
    SectionLayout layout;
    bool afterDecimalSign = false;
    bool commaAfterPlace = false;
    auto literal = [&layout](std::string_view text) {
        if (!layout.tokens.empty() && layout.tokens.back().kind == TokenKind::Literal)
            layout.tokens.back().literal.append(text);
        else
            layout.tokens.push_back({TokenKind::Literal, 0, std::string(text)});
    };
    for (std::size_t i = 0; i < section.size(); ++i) {
        const char c = section[i];
        switch (c) {
        case '0':
        case '#':
            if (afterDecimalSign) {
                ++layout.fractionPlaces;
                if (c == '0')
                    layout.fractionZeros = layout.fractionPlaces;
                layout.tokens.push_back({TokenKind::FractionPlace, c});
            } else {
                if (commaAfterPlace)
                    layout.grouping = true;
                ++layout.integerPlaces;
                if (c == '0')
                    ++layout.integerZeros;
                layout.tokens.push_back({TokenKind::IntegerPlace, c});
            }
            commaAfterPlace = false;
            break;
        case '.':
            if (afterDecimalSign) {
                literal(".");
            } else {
                afterDecimalSign = true;
                layout.tokens.push_back({TokenKind::DecimalSign});
            }
            break;
        case ',':
            // A thousands mark only between digit places; elsewhere it writes nothing.
            if (!afterDecimalSign && !layout.tokens.empty() &&
                layout.tokens.back().kind == TokenKind::IntegerPlace)
                commaAfterPlace = true;
            break;
        case '%':
            layout.percent = true;
            literal("%");
            break;
        case '\\':
            if (i + 1 < section.size())
                literal(section.substr(++i, 1));
            break;
        case '"': {
            const std::size_t close = section.find('"', i + 1);
            const std::size_t end = close == std::string_view::npos ? section.size() : close;
            literal(section.substr(i + 1, end - i - 1));
            i = end;
            break;
        }
        default:
            literal(section.substr(i, 1));
            break;
        }
    }
    return layout;
}

std::string renderSection(double magnitude, const SectionLayout& layout)
{
    if (layout.percent)
        magnitude = checkedProduct(magnitude, 100.0);
    const std::string scaled = roundedScaledDigits(decimalForm(magnitude), layout.fractionPlaces);
    const std::size_t fractionLength = static_cast<std::size_t>(layout.fractionPlaces);

    std::string integerDigits;
    std::string fractionDigits;
    if (scaled.size() > fractionLength) {
        integerDigits = scaled.substr(0, scaled.size() - fractionLength);
        fractionDigits = scaled.substr(scaled.size() - fractionLength);
    } else {
        fractionDigits = std::string(fractionLength - scaled.size(), '0') + scaled;
    }
    const std::size_t firstNonZero = integerDigits.find_first_not_of('0');
    integerDigits = firstNonZero == std::string::npos ? std::string() : integerDigits.substr(firstNonZero);
    if (integerDigits.size() < static_cast<std::size_t>(layout.integerZeros))
        integerDigits.insert(0, static_cast<std::size_t>(layout.integerZeros) - integerDigits.size(), '0');
    while (fractionDigits.size() > static_cast<std::size_t>(layout.fractionZeros) &&
           fractionDigits.back() == '0')
        fractionDigits.pop_back();

    // The rightmost integer places take one digit each, the leftmost takes all that remain.
    std::vector<std::string> integerParts(static_cast<std::size_t>(layout.integerPlaces));
    if (!integerParts.empty()) {
        if (layout.grouping) {
            integerParts.front() = groupThousands(integerDigits);
        } else {
            std::size_t remaining = integerDigits.size();
            for (std::size_t k = integerParts.size() - 1; k > 0 && remaining > 0; --k)
                integerParts[k] = integerDigits.substr(--remaining, 1);
            integerParts.front() = integerDigits.substr(0, remaining);
        }
    }

    std::string out;
    std::size_t integerIndex = 0;
    std::size_t fractionIndex = 0;
    for (const Token& token : layout.tokens) {
        switch (token.kind) {
        case TokenKind::IntegerPlace:
            out.append(integerParts[integerIndex++]);
            break;
        case TokenKind::FractionPlace:
            if (fractionIndex < fractionDigits.size())
                out.push_back(fractionDigits[fractionIndex]);
            ++fractionIndex;
            break;
        case TokenKind::DecimalSign:
            out.push_back(',');
            break;
        case TokenKind::Literal:
            out.append(token.literal);
            break;
        }
    }
    return out;
}

std::string generalDigits(double value)
{
    if (!std::isfinite(value))
        throw RunError::overflow();
    if (value == 0.0)
        return "0";
    std::array<char, 40> buffer{};
    auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                std::chars_format::general, kSignificantDigits);
    std::string text(buffer.data(), result.ptr);
    for (char& c : text) {
        if (c == 'e')
            c = 'E';
    }
    return text;
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

std::string formatNumber(double value)
{
    std::string text = generalDigits(value);
    for (char& c : text) {
        if (c == '.')
            c = ',';
    }
    return text;
}

std::string formatNumberWithPoint(double value)
{
    std::string text = generalDigits(value);
    const bool negative = text.front() == '-';
    const std::size_t digitsStart = negative ? 1 : 0;
    if (text.size() > digitsStart + 1 && text[digitsStart] == '0' && text[digitsStart + 1] == '.')
        text.erase(digitsStart, 1);
    return negative ? text : " " + text;
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

std::string formatPattern(double value, std::string_view pattern)
{
    if (pattern.empty())
        return formatNumber(value);
    if (!std::isfinite(value))
        throw RunError::overflow();
    const auto sections = splitSections(pattern);
    std::string_view section = sections[0];
    bool writeMinus = value < 0.0;
    if (value < 0.0 && sections.size() >= 2 && !sections[1].empty()) {
        section = sections[1];
        writeMinus = false;
    } else if (value == 0.0 && sections.size() >= 3 && !sections[2].empty()) {
        section = sections[2];
    }
    const std::string body = renderSection(std::fabs(value), parseSection(section));
    // The run time keeps the minus of a value that rounds to zero ("-0,00").
    return writeMinus ? "-" + body : body;
}

std::string formatPatternText(std::string_view text, std::string_view pattern)
{
    if (pattern.empty())
        return std::string(text);
    bool overflow = false;
    const auto value = tryParseAmount(text, overflow);
    if (!value)
        return std::string(text);
    return formatPattern(*value, pattern);
}

double checkedSum(double left, double right)
{
    const double result = left + right;
    if (!std::isfinite(result))
        throw RunError::overflow();
    return result;
}

double checkedDifference(double left, double right)
{
    const double result = left - right;
    if (!std::isfinite(result))
        throw RunError::overflow();
    return result;
}

double checkedProduct(double left, double right)
{
    const double result = left * right;
    if (!std::isfinite(result))
        throw RunError::overflow();
    return result;
}

double checkedQuotient(double dividend, double divisor)
{
    if (divisor == 0.0) {
        if (dividend == 0.0)
            throw RunError::overflow();
        throw RunError::divisionByZero();
    }
    const double result = dividend / divisor;
    if (!std::isfinite(result))
        throw RunError::overflow();
    return result;
}

} // namespace zw
