#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zw {

// The number conversions of the old run time, fixed to a German locale: a comma is the decimal sign and a
// point the thousands mark. Each function is named after the rule it applies; every conversion that the run
// time could fail throws RunError (13 Typen unverträglich, 6 Überlauf, 11 Division durch Null).

// Text to number (NumberParsing.cpp).

// The locale conversion of a typed amount (CDbl): blanks around, one sign (leading, trailing or parentheses),
// an optional "€", digits with points anywhere before the comma ("1.2.3" is 123), one comma, an exponent (E
// or D), and "&H" / "&O" numbers. Anything else throws RunError 13; a value beyond the double range throws
// RunError 6.
double parseAmount(std::string_view text);

// True when parseAmount would give a value (IsNumeric).
bool isNumeric(std::string_view text);
// parseAmount's value, or nothing where it would throw, for callers that keep a text that is no number.
std::optional<double> amountIfNumeric(std::string_view text);

// The leading-number scan (Val): blanks, tabs and line feeds are dropped everywhere, then an optional sign,
// digits, a point as the only decimal mark and an exponent are read up to the first other character; "&H" /
// "&O" numbers wrap to 16 or 32 bits. Text without a number gives 0. Only an overflow throws (RunError 6).
double leadingNumber(std::string_view text);

// The integer conversion (CLng): the nearest whole number, exact halves to the even neighbour (2.5 -> 2, 3.5
// -> 4). Outside the 32-bit range throws RunError 6.
std::int32_t roundHalfEven(double value);

// A stored switch as the old implicit conversion read it: "1", "0", "-1"; "" or text throws RunError 13.
inline int switchValue(const std::string& text)
{
    return roundHalfEven(parseAmount(text));
}

// Number to text (NumberFormats.cpp).

// The plain number-to-text conversion (CStr): up to 15 significant digits, comma decimal, no thousands mark,
// exponent form "1E+15" / "1E-05" outside the range of ordinary notation. Throws RunError 6 for a non-finite
// value.
std::string formatNumber(double value);

// The same digits with a point as decimal mark, a leading blank for values not below zero and no zero before
// the point (Str): " 1234.5", "-5", " .5".
std::string formatNumberWithPoint(double value);

// Format with a number pattern of the run time: "0" and "#" digit places, "." the decimal sign, "," between
// digit places the thousands mark, "%" scales by 100, "\x" and "..." literals, up to three sections split by
// ";" (positive;negative;zero); every other character stands as it is. Rounding is half away from zero on the
// value's 15-significant-digit decimal form, so 1.995 gives "2,00" with "0.00". An empty pattern gives
// formatNumber.
std::string formatPattern(double value, std::string_view pattern);

// Format applied to a field's text: a text that parseAmount reads is formatted as that number, any other text
// (the empty one too) comes back unchanged, and so does every text under the empty pattern.
std::string formatPatternText(std::string_view text, std::string_view pattern);

// Arithmetic (CheckedArithmetic.cpp).

// Double arithmetic with the run time's faults: a result beyond the double range throws RunError 6; division
// by zero throws RunError 11, and 0 / 0 throws RunError 6.
double checkedSum(double left, double right);
double checkedDifference(double left, double right);
double checkedProduct(double left, double right);
double checkedQuotient(double dividend, double divisor);

} // namespace zw
