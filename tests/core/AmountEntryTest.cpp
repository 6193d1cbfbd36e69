#include "core/AmountEntry.h"

#include <random>
#include <regex>

#include <gtest/gtest.h>

#include "core/ReceiptForm.h"
#include "core/RunError.h"
#include "tests/core/FakeHost.h"

namespace zw {
namespace {

using E = FormElement;

class AmountEntryTest : public ::testing::Test, protected test::FakeFormParts
{
protected:
    // Types text into Text12 as the form does: every change runs the automatic calculation.
    void typeGross(std::string_view text)
    {
        form.setText(E::Text12, "");
        for (std::size_t i = 1; i <= text.size(); ++i)
            form.setText(E::Text12, std::string(text.substr(0, i)));
    }

    bool showedNoRateMessage() const
    {
        return host.messages.size() == 1 && host.messages[0].title == kNoRateTitle &&
               host.messages[0].text == kNoRateText && host.messages[0].style == MessageStyle::Error &&
               host.openedWindows == std::vector<std::string>{"optionen"};
    }
};

// Generated entries and their amounts and words are in the amount table (AmountTableTest); these rows pin worked
// examples by hand through the form: fields, words, beeps and messages.
TEST_F(AmountEntryTest, ReturnSplitsOrAddsTheAmountAndWritesTheWords)
{
    struct Row
    {
        const char* name;
        FormElement field; // Text12: the gross is typed, Text10: the net
        const char* typed;
        const char* rate;
        int betragCheck;
        const char* net;
        const char* share;
        const char* gross;
        const char* words;
        bool beeps;
    };
    const Row rows[] = {
        {"nineteen percent", E::Text12, "119", "19", 0, "100,00", "19,00", "119,00", "einhundertneunzehn", false},
        {"share is gross minus rounded net", E::Text12, "100,00", "19", 0, "84,03", "15,97", "100,00", "einhundert",
         false},
        {"truncated cents", E::Text12, "1,50", "19", 0, "1,26", "0,24", "1,50", "eins", false},
        {"rounded cents", E::Text12, "1,50", "19", 1, "1,26", "0,24", "1,50", "zwei", false},
        {"at the 32-bit limit", E::Text12, "2147483647", "19", 1, "1804608106,72", "342875540,28", "2147483647,00",
         kTooLargeForWords.data(), true},
        // The sign lands in the thousands group of the twelve characters, which then reads "tausend".
        {"negative amount truncated", E::Text12, "-119", "19", 0, "-100,00", "-19,00", "-119,00",
         "tausendeinhundertneunzehn", false},
        // Entering the net always cuts the cents in the words.
        {"net: cents cut despite betrag_check", E::Text10, "1,26", "19", 1, "1,26", "0,24", "1,50", "eins", false},
        {"net: share rounded before adding", E::Text10, "0,03", "19", 0, "0,03", "0,01", "0,04", "null", false},
        {"net: minus one hundred percent", E::Text10, "100", "-100", 0, "100,00", "-100,00", "0,00", "null", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        host = {};
        form.setBetragCheck(row.betragCheck);
        form.setText(E::Text3, row.rate);
        form.setText(E::Text4, "");
        if (row.field == E::Text12)
            typeGross(row.typed);
        else
            form.setText(E::Text10, row.typed);
        EXPECT_EQ(keyPress(form, row.field, kKeyReturn), kKeyReturn);
        EXPECT_EQ(form.text(E::Text10), row.net);
        EXPECT_EQ(form.text(E::Text11), row.share);
        EXPECT_EQ(form.text(E::Text12), row.gross);
        EXPECT_EQ(form.text(E::Text4), row.words);
        EXPECT_TRUE(host.messages.empty());
        // Typing beeps for every too-large prefix as well; a second RETURN on the formatted amount beeps once.
        host.beeps = 0;
        keyPress(form, row.field, kKeyReturn);
        EXPECT_EQ(host.beeps, row.beeps ? 1 : 0);
    }
}

// Fields already written stay written: the other amount starts as "7,77".
TEST_F(AmountEntryTest, ReturnFailuresEndInTheNoRateMessageAndTheSettingsWindow)
{
    struct Row
    {
        const char* name;
        FormElement field;
        const char* typed;
        const char* rate;
        int betragCheck;
        const char* net;
        const char* gross;
    };
    const Row rows[] = {
        {"empty rate", E::Text12, "119", "", 0, "7,77", "119"},
        {"rate of minus one hundred", E::Text12, "119", "-100", 0, "7,77", "119"},
        {"two commas", E::Text12, "12,3,4", "19", 0, "7,77", "12,3,4"},
        // Fifteen digits fill the amounts but are too long for the truncated words.
        {"fifteen digits", E::Text12, "999999999999999", "19", 0, "840336134453781,00", "999999999999999,00"},
        {"below the 32-bit range rounded", E::Text12, "-3000000000", "19", 1, "-2521008403,36", "-3000000000,00"},
        {"net: empty rate", E::Text10, "100", "", 0, "100", "7,77"},
        {"net: too long for the words", E::Text10, "999999999999999", "0", 0, "999999999999999,00",
         "999999999999999,00"},
    };
    settings.set("Options", "Berechnung", "0");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        host = {};
        form.setBetragCheck(row.betragCheck);
        form.setText(row.field == E::Text12 ? E::Text10 : E::Text12, "7,77");
        form.setText(E::Text3, row.rate);
        form.setText(row.field, row.typed);
        keyPress(form, row.field, kKeyReturn);
        EXPECT_TRUE(showedNoRateMessage());
        EXPECT_EQ(form.text(E::Text10), row.net);
        EXPECT_EQ(form.text(E::Text12), row.gross);
    }
}

TEST_F(AmountEntryTest, RechnenAlwaysGivesTheRoundedWordsAndPassesFaultsOn)
{
    form.setBetragCheck(0);
    form.setText(E::Text12, "1,50");
    rechnen1(form);
    EXPECT_EQ(form.text(E::Text10), "1,26");
    EXPECT_EQ(form.text(E::Text4), "zwei");

    form.setText(E::Text10, "1,26");
    form.setText(E::Text4, "");
    rechnen2(form);
    EXPECT_EQ(form.text(E::Text12), "1,50");
    EXPECT_EQ(form.text(E::Text4), "zwei");

    form.setText(E::Text3, "");
    EXPECT_THROW(rechnen1(form), RunError);
    EXPECT_THROW(rechnen2(form), RunError);
    EXPECT_TRUE(host.messages.empty());
    EXPECT_TRUE(host.openedWindows.empty());
}

// Typing never shows a message and leaves the gross as typed; what it cannot compute keeps the last good values.
TEST_F(AmountEntryTest, TypingComputesSilentlyAndKeepsWhatItCannotCompute)
{
    struct Row
    {
        const char* name;
        int betragCheck;
        const char* rate;
        const char* typed;
        const char* net;
        const char* share;
        std::string words;
    };
    const Row rows[] = {
        {"rounded words", 1, "19", "2,5", "2,10", "0,40", "zwei"},
        {"without a rate only the words", 0, "", "119", "0,00", "0,00", "einhundertneunzehn"},
        {"a half-entered number keeps the amounts of \"12,5\"", 0, "19", "12,5,", "10,50", "2,00", "zwölf"},
        {"too long for the words: the words stay", 0, "19", "999999999999999", "840336134453781,00", "159663865546218,00",
         "neunhundertneunundneunzigmilliardenneunhundertneunundneunzigmillionenneunhundertneunundneunzigtausend"
         "neunhundertneunundneunzig"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        form.setBetragCheck(row.betragCheck);
        form.setText(E::Text3, row.rate);
        form.setText(E::Text10, "0,00");
        form.setText(E::Text11, "0,00");
        typeGross(row.typed);
        EXPECT_EQ(form.text(E::Text10), row.net);
        EXPECT_EQ(form.text(E::Text11), row.share);
        EXPECT_EQ(form.text(E::Text12), row.typed);
        EXPECT_EQ(form.text(E::Text4), row.words);
        EXPECT_TRUE(host.messages.empty());
        EXPECT_TRUE(host.openedWindows.empty());
    }
}

TEST_F(AmountEntryTest, TheAutomaticCalculationFollowsTheSetting)
{
    struct Row
    {
        const char* stored;
        bool computes;
    };
    const Row rows[] = {{nullptr, true}, {"", true}, {"1", true}, {"ja", true}, {"0", false}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.stored ? row.stored : "absent");
        settings.values.clear();
        if (row.stored)
            settings.set("Options", "Berechnung", row.stored);
        form.setText(E::Text10, "0,00");
        typeGross("119");
        EXPECT_EQ(form.text(E::Text10), row.computes ? "100,00" : "0,00");
    }
    // Switched off, RETURN still computes.
    returnInGross(form);
    EXPECT_EQ(form.text(E::Text10), "100,00");
    EXPECT_EQ(form.text(E::Text12), "119,00");
}

TEST_F(AmountEntryTest, TheKeyFilterTakesDigitsAndMarksOnlyInTheAmountAndDateFields)
{
    for (FormElement field : {E::Text12, E::Text10, E::Text9}) {
        SCOPED_TRACE(elementName(field));
        for (int key = 44; key <= 57; ++key)
            EXPECT_EQ(keyPress(form, field, key), key);
        EXPECT_EQ(keyPress(form, field, kKeyBackspace), kKeyBackspace);
        EXPECT_EQ(host.beeps, 0);
        EXPECT_TRUE(host.messages.empty());

        for (int key : {97, 69, 32, 43, 58, 0, 9, 22, 127, 0xE4}) {
            SCOPED_TRACE(key);
            host = {};
            EXPECT_EQ(keyPress(form, field, key), 0);
            EXPECT_EQ(host.beeps, 1);
            ASSERT_EQ(host.messages.size(), 1u);
            EXPECT_EQ(host.messages[0].text, kWrongKeyText);
            EXPECT_EQ(host.messages[0].title, kWrongKeyTitle);
            EXPECT_EQ(host.messages[0].style, MessageStyle::Warning);
        }
        host = {};
    }
    EXPECT_EQ(keyPress(form, E::Text5, 'a'), 'a');
    EXPECT_EQ(keyPress(form, E::Text3, 'a'), 'a');
    EXPECT_EQ(host.beeps, 0);
}

TEST_F(AmountEntryTest, ReturnInTheDateFieldExpandsOnlyTheShorthand)
{
    form.setText(E::Datum2, "23.11.2026");
    struct Row
    {
        const char* typed;
        const char* after;
    };
    const Row rows[] = {
        {"0 .  .    ", "23.11.2026"},
        {"", ""},
        {"0", "0"},
        {"0 .  .", "0 .  ."},
        {"12.03.2024", "12.03.2024"},
        {"99.99.9999", "99.99.9999"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.typed);
        form.setText(E::Text9, row.typed);
        EXPECT_EQ(keyPress(form, E::Text9, kKeyReturn), kKeyReturn);
        EXPECT_EQ(form.text(E::Text9), row.after);
    }
    EXPECT_TRUE(host.messages.empty());
}

TEST_F(AmountEntryTest, WordsPathsReadTheGrossTheirOwnWay)
{
    settings.set("Options", "Berechnung", "0");
    form.setText(E::Text3, "");
    form.setText(E::Text12, "1.234,56");
    form.setBetragCheck(0);
    wordsByRounding(form);
    EXPECT_EQ(form.text(E::Text4), "eintausendzweihundertfünfunddreißig");
    // The number scan knows no thousands mark: "1.234,56" is 1.234.
    wordsByTruncation(form);
    EXPECT_EQ(form.text(E::betrag_duplikat), "1.234,56");
    EXPECT_EQ(form.text(E::Text4), "tausendzweihundertvierunddreißig");

    form.setText(E::Text12, "abc");
    EXPECT_THROW(wordsByRounding(form), RunError);
    EXPECT_EQ(form.text(E::Text4), "tausendzweihundertvierunddreißig");
}

// Random text into every entry path: each ends in filled, well-formed amounts or in the one message.
TEST_F(AmountEntryTest, RandomInputEndsInADefinedResult)
{
    const std::vector<std::string> pieces = {"0", "1",  "5",     "9",      "19",       ",",    ".",      "-",
                                             "+", "/",  " ",     "e",      "E",        "D",    "&H",     "&O",
                                             "(", ")",  "a",     "\u20AC", "\xC3\xA4", "\xFF", "999999", "00",
                                             "%", "\t", "1e308", ",5",     "-100"};
    std::mt19937 random(20260123);
    auto randomText = [&](std::size_t maxPieces) {
        std::string text;
        const std::size_t count = std::uniform_int_distribution<std::size_t>(0, maxPieces)(random);
        for (std::size_t i = 0; i < count; ++i)
            text += pieces[std::uniform_int_distribution<std::size_t>(0, pieces.size() - 1)(random)];
        return text;
    };
    const std::regex amount("-?[0-9]+,[0-9][0-9]");
    for (int round = 0; round < 4000; ++round) {
        const std::string rate = round % 3 == 0 ? randomText(3) : "19";
        const std::string typed = randomText(6);
        SCOPED_TRACE("rate '" + rate + "' amount '" + typed + "'");
        host = {};
        form.setBetragCheck(round % 2);
        form.setText(E::Text3, rate);
        typeGross(typed);
        EXPECT_TRUE(host.messages.empty());

        const bool gross = round % 4 != 1;
        const FormElement field = gross ? E::Text12 : E::Text10;
        form.setText(field, typed);
        ASSERT_NO_THROW(keyPress(form, field, kKeyReturn));
        if (typed.empty()) {
            EXPECT_TRUE(host.messages.empty());
            continue;
        }
        if (!host.messages.empty()) {
            EXPECT_TRUE(showedNoRateMessage());
            continue;
        }
        // Without a message every amount field holds a two-decimal amount.
        for (FormElement filled : {E::Text10, E::Text11, E::Text12})
            EXPECT_TRUE(std::regex_match(form.text(filled), amount)) << form.text(filled);
    }
}

} // namespace
} // namespace zw
