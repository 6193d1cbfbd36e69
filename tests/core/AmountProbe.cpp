// Answers one request per input line so that an outside implementation of the number and word rules can be
// compared with this one over many amounts. A request is an operation and its arguments, separated by tabs;
// the answer is one line, "ERR <number>" for a run-time fault.
#include <charconv>
#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include "core/AmountEntry.h"
#include "core/AmountWords.h"
#include "core/GermanNumbers.h"
#include "core/RunError.h"

namespace {

std::vector<std::string> splitTabs(const std::string& line)
{
    std::vector<std::string> parts;
    std::size_t start = 0;
    while (true) {
        const std::size_t tab = line.find('\t', start);
        parts.push_back(line.substr(start, tab == std::string::npos ? std::string::npos : tab - start));
        if (tab == std::string::npos)
            return parts;
        start = tab + 1;
    }
}

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

std::string fields(const zw::EntryOutcome& outcome)
{
    if (outcome.message)
        return "MSG";
    const auto& f = outcome.fields;
    return f.text10 + "\t" + f.text11 + "\t" + f.text12 + "\t" + f.text4;
}

std::string answer(const std::vector<std::string>& request)
{
    const std::string& op = request[0];
    const std::string arg = request.size() > 1 ? request[1] : std::string();
    if (op == "parse")
        return exact(zw::parseAmount(arg));
    if (op == "val")
        return exact(zw::leadingNumber(arg));
    if (op == "cstr")
        return zw::formatNumber(number(arg));
    if (op == "str")
        return zw::formatNumberWithPoint(number(arg));
    if (op == "fmt")
        return zw::formatPattern(number(arg), "0.00");
    if (op == "clng")
        return std::to_string(zw::roundHalfEven(number(arg)));
    if (op == "zahl")
        return zw::getZahl_in_Worten(static_cast<std::int32_t>(std::stol(arg)));
    if (op == "betrag")
        return zw::BetragInWorten(number(arg));
    if (op == "triplet")
        return zw::tripletWords(arg);
    if (op == "words-r")
        return zw::amountWords(arg, zw::WordsRule::Rounding);
    if (op == "words-t")
        return zw::amountWords(arg, zw::WordsRule::Truncation);
    if (op == "gross")
        return fields(zw::grossEntry(
            arg, request.at(2), request.at(3) == "1" ? zw::WordsRule::Rounding : zw::WordsRule::Truncation));
    if (op == "net")
        return fields(zw::netEntry(arg, request.at(2)));
    return "UNKNOWN";
}

} // namespace

int main()
{
    std::string line;
    while (std::getline(std::cin, line)) {
        try {
            std::cout << answer(splitTabs(line)) << '\n';
        } catch (const zw::RunError& error) {
            std::cout << "ERR " << error.number() << '\n';
        }
    }
    return 0;
}
