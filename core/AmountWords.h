#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zw {

// Two independent routines write an amount in German words, one unbroken lower-case word without cents. They
// differ in limits, spelling and faults on purpose, so they stay two: getZahl_in_Worten serves the rounded
// words, BetragInWorten the truncated ones.

// Whole numbers 1 to 999999999; "<Zahl ist zu groß>" above that, "" for 0 and below. Its quirks are wanted:
// one million reads "einhunderttausend", and an empty thousands group still writes "tausend".
std::string getZahl_in_Worten(std::int32_t number);

// Any value whose number text (point decimal, no leading blank) has at most twelve characters; 0 gives
// "null". A longer text throws RunError 5. Its quirks are wanted too: 101000 reads "einhunderteinstausend",
// and signs or points in the text count as zero digits.
std::string BetragInWorten(double value);

// The helpers, open for tests.
std::string_view digitWords(int digit);           // "ein" ... "neun", "" otherwise
std::string pairWords(int value);                 // below 100
std::string tripletWords(std::string_view group); // three characters

} // namespace zw
