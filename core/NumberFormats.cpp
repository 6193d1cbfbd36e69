#include "core/GermanNumbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <vector>

#include "core/RunError.h"

namespace zw {
namespace {

constexpr int kSignificantDigits = 15;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
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

} // namespace

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
    const auto value = amountIfNumeric(text);
    if (!value)
        return std::string(text);
    return formatPattern(*value, pattern);
}

} // namespace zw
