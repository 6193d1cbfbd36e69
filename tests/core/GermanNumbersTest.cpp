#include "core/GermanNumbers.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "tests/core/RunErrorNumber.h"

#include "core/RunError.h"

namespace zw {
namespace {

using test::errorNumberOf;

TEST(ParseAmount, ReadsTypedAmountsTheGermanWay)
{
    struct Row
    {
        const char* text;
        double value;
    };
    const Row rows[] = {
        {"119", 119.0},
        {"119,00", 119.0},
        {"1234,56", 1234.56},
        {"1.234,56", 1234.56},
        {"1.2.3", 123.0},
        {"1.5", 15.0},
        {".5", 5.0},
        {",5", 0.5},
        {"5,", 5.0},
        {"  42  ", 42.0},
        {"-5", -5.0},
        {"5-", -5.0},
        {"+5", 5.0},
        {"(5)", -5.0},
        {"- 5", -5.0},
        {"1,5E2", 150.0},
        {"1e3", 1000.0},
        {"2D2", 200.0},
        {"1e-400", 0.0},
        {"5 \u20AC", 5.0},
        {"\u20AC 5,50", 5.5},
        {"&H10", 16.0},
        {"&o17", 15.0},
        {"0,1", 0.1},
        {"999999999999999", 999999999999999.0},
        {"01.02.2003", 1022003.0},
        {"-0", 0.0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(parseAmount(row.text), row.value);
    }
    EXPECT_FALSE(std::signbit(parseAmount("-0")));
}

TEST(ParseAmount, RejectsTextThatIsNoNumberWithTypeMismatch)
{
    for (const char* text : {"",
                             " ",
                             "-",
                             ",",
                             ".",
                             "12,3,4",
                             "1,2.3",
                             "abc",
                             "12a",
                             "--5",
                             "-5-",
                             "(5",
                             "5)",
                             "(-5)",
                             "1e",
                             "1 000",
                             "&H",
                             "&HG",
                             "5 \u20AC \u20AC",
                             "\xE4",
                             "1;2",
                             "1\xC2\xA0"
                             "000"}) {
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

TEST(FormatNumber, WritesFifteenSignificantDigitsWithAComma)
{
    struct Row
    {
        double value;
        const char* text;
    };
    const Row rows[] = {
        {0.0, "0"},
        {-0.0, "0"},
        {1234.5, "1234,5"},
        {-5.0, "-5"},
        {0.5, "0,5"},
        {0.1 + 0.2, "0,3"},
        {119.0 - 100.0, "19"},
        {100.0 / 1.19, "84,0336134453782"},
        {123456789012345.0, "123456789012345"},
        {1e15, "1E+15"},
        {1e-5, "1E-05"},
        {0.0001, "0,0001"},
        {2147483647.0, "2147483647"},
        {1.0 / 3.0, "0,333333333333333"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(formatNumber(row.value), row.text);
    }
    EXPECT_EQ(errorNumberOf([] { formatNumber(std::numeric_limits<double>::infinity()); }), 6);
}

TEST(FormatNumber, ReadsBackToTheSameText)
{
    for (double value : {84.0336134453782, 0.1, 1234.56, 19.000000000000004, 1e-7, 9.87654321e20}) {
        const std::string text = formatNumber(value);
        SCOPED_TRACE(text);
        EXPECT_EQ(formatNumber(parseAmount(text)), text);
    }
}

TEST(FormatNumberWithPoint, WritesTheNumberScanText)
{
    EXPECT_EQ(formatNumberWithPoint(1234.0), " 1234");
    EXPECT_EQ(formatNumberWithPoint(-5.0), "-5");
    EXPECT_EQ(formatNumberWithPoint(0.5), " .5");
    EXPECT_EQ(formatNumberWithPoint(-0.25), "-.25");
    EXPECT_EQ(formatNumberWithPoint(1234.56), " 1234.56");
    EXPECT_EQ(formatNumberWithPoint(1e15), " 1E+15");
    EXPECT_EQ(formatNumberWithPoint(999999999999.0), " 999999999999");
}

TEST(LeadingNumber, ScansDigitsWithAPointAsTheOnlyDecimalMark)
{
    struct Row
    {
        const char* text;
        double value;
    };
    const Row rows[] = {
        {"1234,56", 1234.0}, {"1234.56", 1234.56}, {"1.234,56", 1.234},  {"", 0.0},         {"-", 0.0},
        {"abc", 0.0},        {"-5", -5.0},         {"5-", 5.0},          {" 1 2 3", 123.0}, {"\t7\n8", 78.0},
        {".5", 0.5},         {"1e3x", 1000.0},     {"1e", 1.0},          {"1E+", 1.0},      {"2d2", 200.0},
        {"&HFFFF", -1.0},    {"&H10000", 65536.0}, {"&HFFFFFFFF", -1.0}, {"&O777", 511.0},  {"0,40", 0.0},
        {"+3.5.6", 3.5},     {"12a34", 12.0},      {"--5", 0.0},         {"1,5E3", 1.0},    {"1.", 1.0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(leadingNumber(row.text), row.value);
    }
    EXPECT_EQ(errorNumberOf([] { leadingNumber("1e400"); }), 6);
    EXPECT_EQ(errorNumberOf([] { leadingNumber("&H100000000"); }), 6);
}

TEST(RoundHalfEven, SendsExactHalvesToTheEvenNeighbour)
{
    struct Row
    {
        double value;
        std::int32_t rounded;
    };
    const Row rows[] = {
        {1.5, 2},
        {2.5, 2},
        {3.5, 4},
        {0.5, 0},
        {-0.5, 0},
        {-1.5, -2},
        {-2.5, -2},
        {0.4, 0},
        {0.6, 1},
        {2.51, 3},
        {2147483646.5, 2147483646},
        {-2147483648.5, -2147483648},
        {2147483647.4, 2147483647},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(roundHalfEven(row.value), row.rounded);
    }
    for (double outside : {2147483647.5, 2147483648.0, -2147483648.6, 1e20, std::nan("")}) {
        SCOPED_TRACE(outside);
        EXPECT_EQ(errorNumberOf([&] { roundHalfEven(outside); }), 6);
    }
}

TEST(FormatPattern, TwoDecimalsRoundHalfAwayFromZeroOnFifteenDigits)
{
    struct Row
    {
        double value;
        const char* text;
    };
    const Row rows[] = {
        {1.995, "2,00"}, // 1.99499999999999988... as a double
        {1.005, "1,01"}, // 1.00499999999999989... as a double
        {2.675, "2,68"},
        {-1.995, "-2,00"},
        {0.125, "0,13"},
        {-0.125, "-0,13"},
        {100.0 / 1.19, "84,03"},
        {119.0 / 1.19, "100,00"},
        {0.0, "0,00"},
        {-0.001, "-0,00"},
        {1234567.891, "1234567,89"},
        {1e20, "100000000000000000000,00"},
        {999999999999999.0, "999999999999999,00"},
        {0.004999, "0,00"},
        {0.005, "0,01"},
        {9.995, "10,00"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(formatPattern(row.value, "0.00"), row.text);
    }
}

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
        {1234567.5, "#,##0.00 KB/s", "1.234.567,50 KB/s"},
        {999.0, "#,##0.00 KB/s", "999,00 KB/s"},
        {0.1234, "0.0%", "12,3%"},
        {1.0, "0.0%", "100,0%"},
        {42.0, "000000", "000042"},
        {123456.0, "000000", "123456"},
        {15.5, "- 0.00", "- 15,50"},
        {15.5, "-0.00 EUR", "-15,50 EUR"},
        {-15.5, "0.00 EUR", "-15,50 EUR"},
        {-3.0, "0.00;(0.00)", "(3,00)"},
        {0.0, "0.00;(0.00);\"nichts\"", "nichts"},
        {7.0, "\\#0", "#7"},
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
    EXPECT_EQ(checkedQuotient(119.0, 1.19), 119.0 / 1.19);
    EXPECT_EQ(errorNumberOf([] { checkedQuotient(5.0, 0.0); }), 11);
    EXPECT_EQ(errorNumberOf([] { checkedQuotient(0.0, 0.0); }), 6);
    EXPECT_EQ(errorNumberOf([] { checkedProduct(1e300, 1e300); }), 6);
    EXPECT_EQ(errorNumberOf([] { checkedSum(1.7e308, 1.7e308); }), 6);
    EXPECT_EQ(errorNumberOf([] { checkedDifference(-1.7e308, 1.7e308); }), 6);
}

} // namespace
} // namespace zw
