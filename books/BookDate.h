#pragma once

#include <chrono>
#include <compare>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace zw {

// A calendar day of the cash book.
struct BookDate
{
    int year = 0;
    int month = 0;
    int day = 0;

    auto operator<=>(const BookDate&) const = default;

    std::string german() const; // TT.MM.JJJJ, as the ledger's datum column holds it
    std::string iso() const;    // JJJJ-MM-TT, as archive file names hold it
    BookDate next() const;
};

// "TT.MM.JJJJ" (one-digit day and month too) naming a real day; nothing for anything else.
std::optional<BookDate> parseGermanDate(std::string_view text);

// The journal's clock: the moment of an entry. Tests inject a fixed one.
using BookClock = std::function<std::chrono::system_clock::time_point()>;
inline std::chrono::system_clock::time_point systemNow() { return std::chrono::system_clock::now(); }

// The local calendar day of a moment (the trader's day, not UTC's).
BookDate localDateOf(std::chrono::system_clock::time_point moment);
// "JJJJ-MM-TTTHH:MM:SSZ".
std::string utcTimeText(std::chrono::system_clock::time_point moment);
// The moment such a text names; nothing for a text that is no such time.
std::optional<std::chrono::system_clock::time_point> parseUtcTimeText(std::string_view text);
// The local day of such a text; nothing for a text that is no such time.
std::optional<BookDate> localDateOfUtcText(std::string_view text);
// "TT.MM.JJJJ HH:MM:SS" on the local clock.
std::string localTimeText(std::chrono::system_clock::time_point moment);

} // namespace zw
