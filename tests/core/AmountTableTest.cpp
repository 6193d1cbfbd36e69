#include <charconv>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/AmountEntry.h"
#include "core/AmountWords.h"
#include "core/GermanNumbers.h"
#include "core/RunError.h"

namespace zw {
namespace {

double number(const std::string& text)
{
    double value = 0.0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

std::string exact(double value)
{
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.17g", value);
    return buffer;
}

std::string fields(const EntryOutcome& outcome)
{
    const auto& f = outcome.fields;
    return outcome.message ? "MSG" : f.text10 + "\t" + f.text11 + "\t" + f.text12 + "\t" + f.text4;
}

std::string answer(const std::vector<std::string>& row)
{
    const std::string& rule = row[0];
    const std::string& text = row[1];
    try {
        if (rule == "parse")
            return exact(parseAmount(text));
        if (rule == "val")
            return exact(leadingNumber(text));
        if (rule == "cstr")
            return formatNumber(number(text));
        if (rule == "str")
            return formatNumberWithPoint(number(text));
        if (rule == "fmt")
            return formatPattern(number(text), "0.00");
        if (rule == "clng")
            return std::to_string(roundHalfEven(number(text)));
        if (rule == "zahl")
            return getZahl_in_Worten(static_cast<std::int32_t>(std::stol(text)));
        if (rule == "betrag")
            return BetragInWorten(number(text));
        if (rule == "triplet")
            return tripletWords(text);
        if (rule == "words-r" || rule == "words-t")
            return amountWords(text, rule == "words-r" ? WordsRule::Rounding : WordsRule::Truncation);
        if (rule == "gross")
            return fields(grossEntry(text, row[2], row[3] == "1" ? WordsRule::Rounding : WordsRule::Truncation));
        if (rule == "net")
            return fields(netEntry(text, row[2]));
    } catch (const RunError& error) {
        return "ERR " + std::to_string(error.number());
    }
    return "unknown rule " + rule;
}

// A row of amount_table.tsv is a rule, its arguments and the answer, separated by tabs. The answers were worked
// out by a second implementation of the rules, written in Python from the rules alone, over thousands of
// generated amounts; the table keeps a sample of them and every row that a changed comparison, digit, limit or
// spelling in these rules was seen to break.
TEST(AmountTable, EveryRuleGivesTheAnswerOfTheSecondImplementation)
{
    std::ifstream table(ZW_AMOUNT_TABLE);
    ASSERT_TRUE(table) << ZW_AMOUNT_TABLE;
    int lineNumber = 0;
    for (std::string line; std::getline(table, line);) {
        ++lineNumber;
        std::vector<std::string> row;
        std::istringstream fields(line);
        for (std::string field; std::getline(fields, field, '\t');)
            row.push_back(field);
        const std::size_t arguments = row[0] == "gross" ? 4 : row[0] == "net" ? 3 : 2;
        ASSERT_GE(row.size(), arguments) << "line " << lineNumber;
        std::size_t answerStart = arguments;
        for (std::size_t i = 0; i < arguments; ++i)
            answerStart += row[i].size();
        EXPECT_EQ(answer(row), line.substr(answerStart)) << "line " << lineNumber << ": " << line;
    }
    EXPECT_GT(lineNumber, 400);
}

} // namespace
} // namespace zw
