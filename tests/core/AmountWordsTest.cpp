#include "core/AmountWords.h"

#include <gtest/gtest.h>

#include "core/RunError.h"

namespace zw {
namespace {

TEST(GetZahlInWorten, WritesEveryRowOfItsResultTable)
{
    struct Row
    {
        std::int32_t number;
        const char* words;
    };
    const Row rows[] = {
        {1, "eins"},
        {100, "einhundert"},
        {101, "einhunderteins"},
        {121, "einhunderteinundzwanzig"},
        {1000, "eintausend"},
        {2000, "zweitausend"},
        {101000, "einhunderteintausend"},
        {1000000, "einhunderttausend"},
        {1000001, "einemilliontausendeins"},
        {2000000, "zweimillionentausend"},
        {5000123, "fünfmillionentausendeinhundertdreiundzwanzig"},
        {101000000, "einhunderteinemilliontausend"},
        {999999999,
         "neunhundertneunundneunzigmillionenneunhundertneunundneunzigtausendneunhundertneunundneunzig"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.number);
        EXPECT_EQ(getZahl_in_Worten(row.number), row.words);
    }
}

TEST(GetZahlInWorten, GivesNothingBelowOneAndItsMessageAboveTheLimit)
{
    struct Row
    {
        std::int32_t number;
        const char* words;
    };
    const Row rows[] = {
        {0, ""},
        {-1, ""},
        {-2147483647 - 1, ""},
        {1000000000, "<Zahl ist zu groß>"},
        {2147483646, "<Zahl ist zu groß>"},
        {2147483647, "<Zahl ist zu groß>"},
        // Hand-checked spellings of the shorter groups.
        {11, "elf"},
        {17, "siebzehn"},
        {30, "dreißig"},
        {71, "einundsiebzig"},
        {99, "neunundneunzig"},
        {210, "zweihundertzehn"},
        {1001, "eintausendeins"},
        {21000, "einundzwanzigtausend"},
        {999999, "neunhundertneunundneunzigtausendneunhundertneunundneunzig"},
        {1000100, "einemilliontausendeinhundert"},
        {3001000, "dreimillioneneintausend"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.number);
        EXPECT_EQ(getZahl_in_Worten(row.number), row.words);
    }
}

TEST(BetragInWorten, WritesEveryRowOfItsResultTable)
{
    struct Row
    {
        double value;
        const char* words;
    };
    const Row rows[] = {
        {0, "null"},
        {1, "eins"},
        {21, "einundzwanzig"},
        {119, "einhundertneunzehn"},
        {1000, "eintausend"},
        {1001, "eintausendeins"},
        {2000, "zweitausend"},
        {21000, "einundzwanzigtausend"},
        {101000, "einhunderteinstausend"},
        {1000000, "einemillion"},
        {2000000, "zweimillionen"},
        {1000000000, "einemilliarde"},
        {999999999999.0,
         "neunhundertneunundneunzigmilliardenneunhundertneunundneunzigmillionenneunhundertneunundneu"
         "nzigtausendneunhundertneunundneunzig"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(BetragInWorten(row.value), row.words);
    }
}

TEST(BetragInWorten, SignsAndPointsCountAsZeroDigits)
{
    struct Row
    {
        double value;
        const char* words;
    };
    const Row rows[] = {
        {-5, "fünf"},           // "0000000000-5"
        {-15, "fünfzehn"},      // "000000000-15"
        {-21, "einundzwanzig"}, // the sign stands where the hundreds are
        {-0.0, "null"},
        {0.5, "fünf"}, // " .5": the point reads as zero
        {2000001, "zweimillioneneins"},
        {1000000001, "einemilliardeeins"},
        {2002002002, "zweimilliardenzweimillionenzweitausendzwei"},
        {1234.56, "einemillionzweihundertvierunddreißigtausendsechsundfünfzig"}, // "000001234.56"
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(BetragInWorten(row.value), row.words);
    }
}

TEST(BetragInWorten, MoreThanTwelveCharactersIsARunTimeFault)
{
    for (double value : {1000000000000.0, 999999999999999.0, -99999999999999.0, 0.123456789012345}) {
        SCOPED_TRACE(value);
        EXPECT_THROW(BetragInWorten(value), RunError);
    }
    // Twelve characters with the sign still pass; the sign takes the place of a hundreds digit.
    EXPECT_EQ(BetragInWorten(-99999999999.0), "neunundneunzigmilliardenneunhundertneunundneunzigmillionen"
                                              "neunhundertneunundneunzigtausendneunhundertneunundneunzig");
}

TEST(SuchenUndErsetzen, ReplacesOnlyTheFirstOccurrence)
{
    EXPECT_EQ(SuchenUndErsetzen("eins und eins", "eins", "zwei"), "zwei und eins");
    EXPECT_EQ(SuchenUndErsetzen("Betrag", "x", "y"), "Betrag");
    EXPECT_EQ(SuchenUndErsetzen("Größe", "ö", "oe"), "Groeße");
    EXPECT_EQ(SuchenUndErsetzen("abc", "", "-"), "-abc");
    EXPECT_EQ(SuchenUndErsetzen("", "", "-"), "");
    EXPECT_EQ(SuchenUndErsetzen("aaa", "aa", "b"), "ba");
}

} // namespace
} // namespace zw
