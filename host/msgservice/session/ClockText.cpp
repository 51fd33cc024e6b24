#include "msgservice/session/ClockText.h"

#include <cstdio>
#include <ctime>

namespace msgservice
{

namespace
{

constexpr QmLogTimeValue kSecond = 1000 * kQmLogMillisecond;
constexpr QmLogTimeValue k1970 = 116444736000000000;

std::optional<std::tm> CalendarOf(QmLogTimeValue time)
{
    // Rounded down, before 1970 too.
    const QmLogTimeValue since = time - k1970;
    const auto seconds = static_cast<std::time_t>(since / kSecond - (since % kSecond < 0 ? 1 : 0));
    const std::tm* const local = std::localtime(&seconds);
    return local ? std::optional(*local) : std::nullopt;
}

// Digits at the beginning of `text`, which are taken off; -1 if there are none or more than `most`.
int TakeNumber(std::string_view& text, std::size_t most)
{
    std::size_t digits = 0;
    int number = 0;
    for (; digits < text.size() && digits <= most && text[digits] >= '0' && text[digits] <= '9'; ++digits)
        number = 10 * number + (text[digits] - '0');
    text.remove_prefix(digits);
    return digits > 0 && digits <= most ? number : -1;
}

bool Take(std::string_view& text, char character)
{
    if (!text.starts_with(character))
        return false;
    text.remove_prefix(1);
    return true;
}

// A date and the blank or "T" behind it.
bool TakeDate(std::string_view& text, std::tm& calendar)
{
    calendar.tm_year = TakeNumber(text, 4) - 1900;
    const bool hasMonth = Take(text, '-');
    calendar.tm_mon = hasMonth ? TakeNumber(text, 2) - 1 : -1;
    const bool hasDay = Take(text, '-');
    calendar.tm_mday = hasDay ? TakeNumber(text, 2) : -1;
    return calendar.tm_year >= -299 && calendar.tm_mon >= 0 && calendar.tm_mon < 12 && calendar.tm_mday > 0 &&
           calendar.tm_mday < 32 && (text.empty() || Take(text, ' ') || Take(text, 'T'));
}

// "14:03", and seconds with up to seven digits of their fraction, which `fraction` receives.
bool TakeClock(std::string_view& text, std::tm& calendar, QmLogTimeValue& fraction)
{
    calendar.tm_hour = TakeNumber(text, 2);
    const bool hasMinute = Take(text, ':');
    calendar.tm_min = hasMinute ? TakeNumber(text, 2) : -1;
    calendar.tm_sec = Take(text, ':') ? TakeNumber(text, 2) : 0;
    if (Take(text, '.'))
    {
        const std::size_t digits = text.size();
        fraction = TakeNumber(text, 7);
        for (std::size_t i = digits; i < 7; ++i)
            fraction *= 10;
    }
    return calendar.tm_hour >= 0 && calendar.tm_hour < 24 && calendar.tm_min >= 0 && calendar.tm_min < 60 &&
           calendar.tm_sec >= 0 && calendar.tm_sec < 60 && fraction >= 0 && text.empty();
}

} // namespace

std::string LocalTime(QmLogTimeValue time)
{
    const std::optional<std::tm> calendar = CalendarOf(time);
    if (!calendar)
        return {};
    char text[64] = {};
    const std::size_t length = std::strftime(text, sizeof(text), "%Y-%m-%d %H:%M:%S", &*calendar);
    const auto milliseconds = static_cast<int>((time % kSecond + kSecond) % kSecond / kQmLogMillisecond);
    std::snprintf(text + length, sizeof(text) - length, ".%03d", milliseconds);
    return text;
}

std::string DurationText(QmLogTimeValue time)
{
    const long long seconds = time / kSecond;
    const long long tenths = time % kSecond * 10 / kSecond;
    char text[64] = {};
    if (seconds < 10)
        std::snprintf(text, sizeof(text), "%.3f s", static_cast<double>(time / kQmLogMillisecond) / 1000);
    else if (seconds < 60)
        std::snprintf(text, sizeof(text), "%lld.%lld s", seconds, tenths);
    else if (seconds < 3600)
        std::snprintf(text, sizeof(text), "%lld min %lld s", seconds / 60, seconds % 60);
    else if (seconds < 24 * 3600)
        std::snprintf(text, sizeof(text), "%lld h %lld min", seconds / 3600, seconds / 60 % 60);
    else
        std::snprintf(text, sizeof(text), "%lld d %lld h", seconds / 24 / 3600, seconds / 3600 % 24);
    return text;
}

std::optional<QmLogTimeValue> ReadLocalTime(std::string_view text, QmLogTimeValue day)
{
    std::optional<std::tm> calendar = CalendarOf(day);
    if (!calendar)
        return std::nullopt;
    const bool hasDate = text.find('-') != std::string_view::npos;
    if (hasDate && !TakeDate(text, *calendar))
        return std::nullopt;
    QmLogTimeValue fraction = 0;
    calendar->tm_hour = calendar->tm_min = calendar->tm_sec = 0;
    if (!(hasDate && text.empty()) && !TakeClock(text, *calendar, fraction))
        return std::nullopt;
    calendar->tm_isdst = -1;
    const std::time_t seconds = std::mktime(&*calendar);
    if (seconds == static_cast<std::time_t>(-1))
        return std::nullopt;
    return static_cast<QmLogTimeValue>(seconds) * kSecond + fraction + k1970;
}

std::int64_t NanosecondsSince1970(QmLogTimeValue time)
{
    return (time - k1970) * 100;
}

} // namespace msgservice
