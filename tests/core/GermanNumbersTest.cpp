#include "core/GermanNumbers.h"

#include <cmath>
#include <functional>
#include <limits>

#include <gtest/gtest.h>

#include "tests/core/RunErrorNumber.h"

#include "core/RunError.h"

namespace zw {
namespace {

using test::errorNumberOf;

// Plain amounts, signs, marks and exponents are in the amount table (AmountTableTest); these are the forms it does
// not hold, with the value or the run-time fault each gives (0: none).
TEST(ParseAmount, ReadsTheFormsTheAmountTableDoesNotHoldOrRaisesTheirFault)
{
    struct Row
    {
        const char* text;
        double value;
        int error;
    };
    const Row rows[] = {
        {"1.234,56", 1234.56, 0}, {"(5)", -5.0, 0}, {"2D2", 200.0, 0}, {"5 \u20AC", 5.0, 0}, {"\u20AC 5,50", 5.5, 0},
        {"&H10", 16.0, 0}, {"&o17", 15.0, 0}, {"01.02.2003", 1022003.0, 0},
        {"1,7976931348623157e308", std::numeric_limits<double>::max(), 0},
        {"", 0, 13}, {"12,3,4", 0, 13}, {"abc", 0, 13}, {"(5", 0, 13}, {"(-5)", 0, 13}, {"1 000", 0, 13},
        {"&HG", 0, 13}, {"5 \u20AC \u20AC", 0, 13}, {"\xE4", 0, 13}, {"1;2", 0, 13},
        {"1e400", 0, 6}, {"1e99999999999999999999", 0, 6}, {"&H1FFFFFFFFFFFFFFFF", 0, 6},
        // The text is read whole first: a malformed text stays a type mismatch, however large.
        {"1e400x", 0, 13}, {"&HFFFFFFFFFFFFFFFFFZ", 0, 13},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        double value = 0;
        EXPECT_EQ(errorNumberOf([&] { value = parseAmount(row.text); }), row.error);
        EXPECT_EQ(value, row.value);
        EXPECT_EQ(isNumeric(row.text), row.error == 0);
    }
    EXPECT_FALSE(std::signbit(parseAmount("-0")));
}

TEST(LeadingNumber, ScansHexOctalAndSpacesThatTheAmountTableDoesNotHold)
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
}

TEST(RunTimeFaults, OverflowAndDivisionByZeroRaiseTheirNumbers)
{
    const std::pair<const char*, std::function<void()>> calls[] = {
        {"rounding above the long range", [] { roundHalfEven(2147483647.5); }},
        {"rounding below the long range", [] { roundHalfEven(-2147483648.6); }},
        {"rounding no number", [] { roundHalfEven(std::nan("")); }},
        {"hexadecimal beyond 32 bits", [] { leadingNumber("&H100000000"); }},
        {"text of infinity", [] { formatNumber(std::numeric_limits<double>::infinity()); }},
        {"zero by zero", [] { checkedQuotient(0.0, 0.0); }},
        {"product", [] { checkedProduct(1e300, 1e300); }},
        {"sum", [] { checkedSum(1.7e308, 1.7e308); }},
        {"difference", [] { checkedDifference(-1.7e308, 1.7e308); }},
    };
    for (const auto& [name, call] : calls)
        EXPECT_EQ(errorNumberOf(call), 6) << name;
    EXPECT_EQ(errorNumberOf([] { checkedQuotient(5.0, 0.0); }), 11);
    EXPECT_EQ(roundHalfEven(-2147483648.5), -2147483648);
}

// "0.00" rounds half away from zero on fifteen digits: 1.995 and 1.005 lie just below the half as doubles and
// still go up. The other rows are the patterns the program formats with.
TEST(FormatPattern, PatternsOfTheProgram)
{
    struct Row
    {
        double value;
        const char* pattern;
        const char* text;
    };
    const Row rows[] = {
        {1.995, "0.00", "2,00"},
        {1.005, "0.00", "1,01"},
        {-0.001, "0.00", "-0,00"},
        {1e20, "0.00", "100000000000000000000,00"},
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

} // namespace
} // namespace zw
