#include "core/AmountWords.h"

#include <gtest/gtest.h>

#include "core/RunError.h"

namespace zw {
namespace {

// Generated numbers and amounts are in the amount table (AmountTableTest); these rows pin the result tables and
// the quirks by hand, so that the table cannot carry a misreading of the rules.
TEST(GetZahlInWorten, WritesTheRowsOfItsResultTable)
{
    struct Row
    {
        std::int32_t number;
        const char* words;
    };
    const Row rows[] = {
        {0, ""},
        {101000, "einhunderteintausend"},
        {1000000, "einhunderttausend"},
        {1000001, "einemilliontausendeins"},
        {2000000, "zweimillionentausend"},
        {101000000, "einhunderteinemilliontausend"},
        {999999999,
         "neunhundertneunundneunzigmillionenneunhundertneunundneunzigtausendneunhundertneunundneunzig"},
        {1000000000, "<Zahl ist zu groß>"},
        {30, "dreißig"},
        {3001000, "dreimillioneneintausend"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.number);
        EXPECT_EQ(getZahl_in_Worten(row.number), row.words);
    }
}

TEST(BetragInWorten, WritesTheRowsOfItsResultTableAndReadsSignsAndPointsAsZeroDigits)
{
    struct Row
    {
        double value;
        const char* words;
    };
    const Row rows[] = {
        {0, "null"},
        {101000, "einhunderteinstausend"},
        {1000000, "einemillion"},
        {1000000000, "einemilliarde"},
        {-21, "einundzwanzig"}, // the sign stands where the hundreds are
        {0.5, "fünf"},          // " .5": the point reads as zero
        {1234.56, "einemillionzweihundertvierunddreißigtausendsechsundfünfzig"}, // "000001234.56"
        {1000000000000.0, nullptr}, // more than twelve characters: a run-time fault
        {-99999999999999.0, nullptr},
        {0.123456789012345, nullptr},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        if (row.words)
            EXPECT_EQ(BetragInWorten(row.value), row.words);
        else
            EXPECT_THROW(BetragInWorten(row.value), RunError);
    }
}

} // namespace
} // namespace zw
