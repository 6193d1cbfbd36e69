#include "books/BookDate.h"

#include <charconv>
#include <cstdio>
#include <ctime>

namespace zw {
namespace {

bool isRealDay(int year, int month, int day)
{
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day))};
    return year >= 1900 && year <= 9999 && date.ok();
}

std::optional<int> number(std::string_view text, std::size_t minDigits, std::size_t maxDigits)
{
    if (text.size() < minDigits || text.size() > maxDigits)
        return std::nullopt;
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

} // namespace

std::string BookDate::german() const
{
    char text[16];
    std::snprintf(text, sizeof text, "%02d.%02d.%04d", day, month, year);
    return text;
}

std::string BookDate::iso() const
{
    char text[16];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", year, month, day);
    return text;
}

BookDate BookDate::next() const
{
    const std::chrono::sys_days days = std::chrono::year_month_day{
        std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
        std::chrono::day(static_cast<unsigned>(day))};
    const std::chrono::year_month_day following{days + std::chrono::days(1)};
    return {static_cast<int>(following.year()), static_cast<int>(static_cast<unsigned>(following.month())),
            static_cast<int>(static_cast<unsigned>(following.day()))};
}

std::optional<BookDate> parseGermanDate(std::string_view text)
{
    const auto firstDot = text.find('.');
    const auto secondDot = firstDot == std::string_view::npos ? firstDot : text.find('.', firstDot + 1);
    if (secondDot == std::string_view::npos)
        return std::nullopt;
    const auto day = number(text.substr(0, firstDot), 1, 2);
    const auto month = number(text.substr(firstDot + 1, secondDot - firstDot - 1), 1, 2);
    const auto year = number(text.substr(secondDot + 1), 4, 4);
    if (!day || !month || !year || !isRealDay(*year, *month, *day))
        return std::nullopt;
    return BookDate{*year, *month, *day};
}

BookDate localDateOf(std::chrono::system_clock::time_point moment)
{
    const std::time_t seconds = std::chrono::system_clock::to_time_t(moment);
    std::tm local{};
    localtime_r(&seconds, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday};
}

std::string utcTimeText(std::chrono::system_clock::time_point moment)
{
    const std::time_t seconds = std::chrono::system_clock::to_time_t(moment);
    std::tm utc{};
    gmtime_r(&seconds, &utc);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &utc);
    return text;
}

std::optional<std::chrono::system_clock::time_point> parseUtcTimeText(std::string_view text)
{
    if (text.size() != 20 || text[10] != 'T' || text[19] != 'Z')
        return std::nullopt;
    const auto year = number(text.substr(0, 4), 4, 4);
    const auto month = number(text.substr(5, 2), 2, 2);
    const auto day = number(text.substr(8, 2), 2, 2);
    const auto hour = number(text.substr(11, 2), 2, 2);
    const auto minute = number(text.substr(14, 2), 2, 2);
    const auto second = number(text.substr(17, 2), 2, 2);
    if (!year || !month || !day || !hour || !minute || !second || !isRealDay(*year, *month, *day))
        return std::nullopt;
    const std::chrono::sys_days days = std::chrono::year_month_day{
        std::chrono::year(*year), std::chrono::month(static_cast<unsigned>(*month)),
        std::chrono::day(static_cast<unsigned>(*day))};
    return days + std::chrono::hours(*hour) + std::chrono::minutes(*minute) + std::chrono::seconds(*second);
}

std::optional<BookDate> localDateOfUtcText(std::string_view text)
{
    const auto moment = parseUtcTimeText(text);
    return moment ? std::optional<BookDate>(localDateOf(*moment)) : std::nullopt;
}

std::string localTimeText(std::chrono::system_clock::time_point moment)
{
    const std::time_t seconds = std::chrono::system_clock::to_time_t(moment);
    std::tm local{};
    localtime_r(&seconds, &local);
    char text[32];
    std::strftime(text, sizeof text, "%d.%m.%Y %H:%M:%S", &local);
    return text;
}

} // namespace zw
