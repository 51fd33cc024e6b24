#include "report/sort/CellKey.h"
#include "report/sort/TextScanner.h"

#include <charconv>
#include <chrono>
#include <utility>

namespace report
{

namespace
{

bool Parse(std::string_view digits, std::size_t maxDigits, int& number)
{
    const char* const end = digits.data() + digits.size();
    return digits.size() <= maxDigits && std::from_chars(digits.data(), end, number).ec == std::errc();
}

// A number of one or two digits up to `last`.
bool ReadNumber(TextScanner& in, int last, int& number)
{
    return Parse(in.TakeDigits(), 2, number) && number <= last;
}

bool ReadDay(TextScanner& in, DateOrder order, std::int64_t& dayNumber)
{
    std::string_view parts[3];
    parts[0] = in.TakeDigits();
    const char separator = in.TakeOneOf("-/.");
    parts[1] = in.TakeDigits();
    if (separator == '\0' || in.TakeOneOf({&separator, 1}) == '\0')
        return false;
    parts[2] = in.TakeDigits();

    if (parts[0].size() != 4) // then the year is the last: make it year, month, day
    {
        std::swap(parts[0], parts[2]);
        if (separator != '.' && order == DateOrder::MonthFirst)
            std::swap(parts[1], parts[2]);
    }
    int year = 0;
    int month = 0;
    int day = 0;
    if (parts[0].size() != 4 || !Parse(parts[0], 4, year) || !Parse(parts[1], 2, month) ||
        !Parse(parts[2], 2, day))
        return false;
    const std::chrono::year_month_day date(std::chrono::year(year),
                                           std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day)));
    if (!date.ok())
        return false;
    dayNumber = std::chrono::sys_days(date).time_since_epoch().count();
    return true;
}

// Seconds since midnight, and the digits of a fraction. A leap second counts as the one after it.
bool ReadTime(TextScanner& in, std::int64_t& seconds, std::string_view& fraction)
{
    int hour = 0;
    int minute = 0;
    int second = 0;
    if (!ReadNumber(in, 23, hour) || in.TakeOneOf(":") == '\0' || !ReadNumber(in, 59, minute))
        return false;
    if (in.TakeOneOf(":") != '\0')
    {
        if (!ReadNumber(in, 60, second))
            return false;
        if (in.TakeOneOf(".,") != '\0' && (fraction = in.TakeDigits()).empty())
            return false;
    }
    seconds = (hour * 60 + minute) * 60 + second;
    return true;
}

// The seconds by which a local time is ahead.
bool ReadOffset(TextScanner& in, std::int64_t& seconds)
{
    in.TakeOneOf(" ");
    if (in.TakeOneOf("Zz") != '\0')
        return true;
    const char sign = in.TakeOneOf("+-");
    std::string_view hours = in.TakeDigits();
    std::string_view minutes = hours.size() == 4 ? hours.substr(2) : "00";
    if (hours.size() == 4)
        hours.remove_suffix(2);
    else if (in.TakeOneOf(":") != '\0')
        minutes = in.TakeDigits();

    int hour = 0;
    int minute = 0;
    if (sign == '\0' || !Parse(hours, 2, hour) || !Parse(minutes, 2, minute) || hour > 23 || minute > 59)
        return false;
    seconds = (hour * 60 + minute) * 60;
    if (sign == '-')
        seconds = -seconds;
    return true;
}

} // namespace

CellKey DateKey(std::string_view text, DateOrder order)
{
    TextScanner in(text);
    std::int64_t day = 0;
    std::int64_t seconds = 0;
    std::int64_t offset = 0;
    std::string_view fraction;
    const bool isDate = ReadDay(in, order, day) &&
                        (in.AtEnd() || (in.TakeOneOf("Tt ") != '\0' && ReadTime(in, seconds, fraction))) &&
                        (in.AtEnd() || ReadOffset(in, offset)) && in.AtEnd();
    if (!isDate)
        return TextKey(text);
    fraction = fraction.substr(0, fraction.find_last_not_of('0') + 1);
    return {CellKey::Kind::Date, day * 86400 + seconds - offset, std::string(fraction)};
}

} // namespace report
