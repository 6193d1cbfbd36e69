#include "core/GermanNumbers.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "tests/core/RunErrorNumber.h"

#include "core/RunError.h"

namespace zw {
namespace {

using test::errorNumberOf;

// Plain amounts, signs, marks and exponents are compared with the Python oracle over thousands of generated
// texts (AmountOracle); these are the forms it never generates.
TEST(ParseAmount, ReadsTheFormsTheOracleDoesNotGenerate)
{
    struct Row
    {
        const char* text;
        double value;
    };
    const Row rows[] = {
        {"1.234,56", 1234.56}, {"(5)", -5.0},  {"2D2", 200.0}, {"5 \u20AC", 5.0},
        {"\u20AC 5,50", 5.5},  {"&H10", 16.0}, {"&o17", 15.0}, {"01.02.2003", 1022003.0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(parseAmount(row.text), row.value);
    }
    EXPECT_FALSE(std::signbit(parseAmount("-0")));
}

TEST(ParseAmount, RejectsTextThatIsNoNumberWithTypeMismatch)
{
    for (const char* text :
         {"", "12,3,4", "abc", "(5", "(-5)", "1 000", "&HG", "5 \u20AC \u20AC", "\xE4", "1;2"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(errorNumberOf([&] { parseAmount(text); }), 13);
        EXPECT_FALSE(isNumeric(text));
    }
}

TEST(ParseAmount, ValuesBeyondTheDoubleRangeOverflow)
{
    EXPECT_EQ(errorNumberOf([] { parseAmount("1e400"); }), 6);
    EXPECT_EQ(errorNumberOf([] { parseAmount("1e99999999999999999999"); }), 6);
    EXPECT_EQ(errorNumberOf([] { parseAmount("&H1FFFFFFFFFFFFFFFF"); }), 6);
    EXPECT_EQ(parseAmount("1,7976931348623157e308"), std::numeric_limits<double>::max());
    // The text is read whole first: a malformed text stays a type mismatch, however large.
    EXPECT_EQ(errorNumberOf([] { parseAmount("1e400x"); }), 13);
    EXPECT_EQ(errorNumberOf([] { parseAmount("&HFFFFFFFFFFFFFFFFFZ"); }), 13);
}

TEST(FormatNumber, ReadsBackToTheSameText)
{
    for (double value : {84.0336134453782, 0.1, 1234.56, 19.000000000000004, 1e-7, 9.87654321e20}) {
        const std::string text = formatNumber(value);
        SCOPED_TRACE(text);
        EXPECT_EQ(formatNumber(parseAmount(text)), text);
    }
    EXPECT_EQ(errorNumberOf([] { formatNumber(std::numeric_limits<double>::infinity()); }), 6);
}

TEST(LeadingNumber, ScansHexOctalAndSpacesThatTheOracleDoesNotGenerate)
{
    struct Row
    {
        const char* text;
        double value;
    };
    const Row rows[] = {
        {"\t7\n8", 78.0},     {"2d2", 200.0},   {"&HFFFF", -1.0},
        {"&H10000", 65536.0}, {"&O777", 511.0}, {"12a34", 12.0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(leadingNumber(row.text), row.value);
    }
    EXPECT_EQ(errorNumberOf([] { leadingNumber("&H100000000"); }), 6);
}

TEST(RoundHalfEven, OverflowsOutsideTheLongRange)
{
    EXPECT_EQ(roundHalfEven(-2147483648.5), -2147483648);
    for (double outside : {2147483647.5, -2147483648.6, std::nan("")}) {
        SCOPED_TRACE(outside);
        EXPECT_EQ(errorNumberOf([&] { roundHalfEven(outside); }), 6);
    }
}

TEST(FormatPattern, TwoDecimalsRoundHalfAwayFromZeroOnFifteenDigits)
{
    // 1.995 and 1.005 lie just below the half as doubles; the fifteen-digit rounding still goes up.
    EXPECT_EQ(formatPattern(1.995, "0.00"), "2,00");
    EXPECT_EQ(formatPattern(1.005, "0.00"), "1,01");
    EXPECT_EQ(formatPattern(-0.001, "0.00"), "-0,00");
    EXPECT_EQ(formatPattern(1e20, "0.00"), "100000000000000000000,00");
}

// The patterns the program formats with, besides "0.00" above.
TEST(FormatPattern, OtherPatternsOfTheProgram)
{
    struct Row
    {
        double value;
        const char* pattern;
        const char* text;
    };
    const Row rows[] = {
        {12.5, "#####.##", "12,5"},
        {12.0, "#####.##", "12,"},
        {0.5, "#####.##", ",5"},
        {1234.567, "#####.##", "1234,57"},
        {1234567.5, "#,##0.00 €", "1.234.567,50 €"},
        {999.0, "#,##0.00 €", "999,00 €"},
        {15.5, "- 0.00", "- 15,50"},
        {15.5, "-0.00 EUR", "-15,50 EUR"},
        {-15.5, "0.00 EUR", "-15,50 EUR"},
        {1234.5, "", "1234,5"},
        {5.0, "0", "5"},
        {-0.4, "0", "-0"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.pattern) + " " + row.text);
        EXPECT_EQ(formatPattern(row.value, row.pattern), row.text);
    }
}

TEST(FormatPatternText, FormatsNumericTextAndLeavesOtherTextAlone)
{
    EXPECT_EQ(formatPatternText("119", "0.00"), "119,00");
    EXPECT_EQ(formatPatternText("1.234,5", "0.00"), "1234,50");
    EXPECT_EQ(formatPatternText("19,0000000000001", "0.00"), "19,00");
    EXPECT_EQ(formatPatternText("", "0.00"), "");
    EXPECT_EQ(formatPatternText("abc", "0.00"), "abc");
    EXPECT_EQ(formatPatternText("12,3,4", "0.00"), "12,3,4");
    EXPECT_EQ(formatPatternText("1234,50", ""), "1234,50");
    EXPECT_EQ(formatPatternText("  7 ", ""), "  7 ");
}

TEST(CheckedArithmetic, RaisesTheRunTimeFaults)
{
    EXPECT_EQ(errorNumberOf([] { checkedQuotient(5.0, 0.0); }), 11);
    EXPECT_EQ(errorNumberOf([] { checkedQuotient(0.0, 0.0); }), 6);
    EXPECT_EQ(errorNumberOf([] { checkedProduct(1e300, 1e300); }), 6);
    EXPECT_EQ(errorNumberOf([] { checkedSum(1.7e308, 1.7e308); }), 6);
    EXPECT_EQ(errorNumberOf([] { checkedDifference(-1.7e308, 1.7e308); }), 6);
}

} // namespace
} // namespace zw
