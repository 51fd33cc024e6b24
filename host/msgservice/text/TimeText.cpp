#include "msgservice/text/TimeText.h"

#include "textmatch/ByteSearch.h"

#include <date/date.h>

#include <cstring>

namespace msgservice
{

namespace
{

constexpr std::int64_t kSecond = 1'000'000'000;
constexpr std::size_t kClockLength = 8;         // "hh:mm:ss"
constexpr std::int64_t kDay = 86'400;           // seconds
constexpr std::int64_t kFirst = -9'214'560'000; // 1678-01-01
constexpr std::int64_t kLast = 9'214'646'399;   // 2261-12-31 23:59:59

Time TimeOf(std::int64_t seconds, int nanoseconds)
{
    if (seconds < kFirst)
        return kFirst * kSecond;
    return seconds > kLast ? kLast * kSecond : seconds * kSecond + nanoseconds;
}

bool IsDate(int year, int month, int day)
{
    return date::year_month_day(date::year(year), date::month(static_cast<unsigned>(month)),
                                date::day(static_cast<unsigned>(day)))
        .ok();
}

std::int64_t DaysOf(int year, int month, int day)
{
    const date::sys_days days(date::year(year) / month / day);
    return days.time_since_epoch().count();
}

std::int64_t DayOfTime(Time time)
{
    return date::floor<date::days>(std::chrono::nanoseconds(time)).count();
}

int YearOf(Time time)
{
    const date::sys_days days(date::floor<date::days>(std::chrono::nanoseconds(time)));
    return static_cast<int>(date::year_month_day(days).year());
}

// 0 to 23; `half` is -1 where the day has 24 hours.
int HourOf(int hour, int half)
{
    return half < 0 ? hour : hour % 12 + 12 * half;
}

// The number that two digits write; -1 if they are none.
int TwoDigits(const char* text)
{
    const int tens = text[0] - '0';
    const int ones = text[1] - '0';
    return tens >= 0 && tens <= 9 && ones >= 0 && ones <= 9 ? tens * 10 + ones : -1;
}

} // namespace

void TimeText::Learn(std::string_view text)
{
    ScannedTime scanned;
    if (!ScanTime(text, scanned) || scanned.date != ScannedTime::Date::Numbers)
        return;
    for (int order = 0; order < OrderCount; ++order)
    {
        ScannedTime settled = scanned;
        m_notPossible[static_cast<std::size_t>(order)] +=
            SettleOrder(scanned, static_cast<Order>(order), settled) ? 0 : 1;
    }
}

bool TimeText::Read(std::string_view text, Time& time)
{
    if (m_last.before > 0 && ReadLikeLast(text, time))
        return true;
    ScannedTime scanned;
    if (!ScanTime(text, scanned))
        return false;
    if (scanned.date == ScannedTime::Date::Epoch || scanned.date == ScannedTime::Date::SinceStart)
    {
        time = scanned.epoch;
        return true;
    }
    std::int64_t day = 0;
    const int hour = HourOf(scanned.hour, scanned.half);
    const std::int64_t secondOfDay = hour * 3600 + scanned.minute * 60 + scanned.second;
    const bool hasDate = scanned.date != ScannedTime::Date::None;
    if (hasDate && !DayOf(scanned, day))
        return false;
    if (!hasDate)
        day = SettleDay(secondOfDay);
    m_lacksZone = m_lacksZone || !scanned.zone;
    const std::int64_t midnight = day * kDay - scanned.zone.value_or(0);
    time = TimeOf(midnight + secondOfDay, scanned.nanoseconds);
    if (hasDate)
        Remember(text, scanned, midnight);
    return true;
}

// What surrounds "hh:mm:ss" and its fraction. A time that is written in another way is not remembered.
void TimeText::Remember(std::string_view text, const ScannedTime& scanned, std::int64_t midnight)
{
    m_last.before = 0;
    const std::size_t after = text.size() - scanned.timeEnd;
    const std::size_t second = scanned.timeAt + kClockLength;
    const bool isClock =
        scanned.timeEnd >= second && (second == text.size() || second == scanned.timeEnd ||
                                      text[second] == '.' || text[second] == ',' || text[second] == ':');
    if (scanned.timeAt == 0 || !isClock || second + after > m_last.text.size())
        return;
    m_last.before = scanned.timeAt;
    m_last.after = after;
    m_last.midnight = midnight;
    m_last.half = scanned.half;
    std::memcpy(m_last.text.data(), text.data(), scanned.timeAt);
    std::memcpy(m_last.text.data() + second, text.data() + scanned.timeEnd, after);
    if (!ReadClock(text))
        m_last.before = 0;
}

// Reads "...hh:mm:ss...", with any fraction, in the surroundings of the time stamp before it.
bool TimeText::ReadLikeLast(std::string_view text, Time& time)
{
    const std::size_t second = m_last.before + kClockLength; // where the text after the second begins
    if (text.size() < second + m_last.after)
        return false;
    const char* at = text.data();
    const char* const end = at + text.size() - m_last.after;
    if (m_last.after > 0 && !textmatch::SameBytes(end, m_last.text.data() + second, m_last.after))
        return false;
    if (!textmatch::SameBytes(at, m_last.text.data(), second) && !ReadClock(text))
        return false;
    at += second;
    int nanoseconds = 0;
    if (at != end)
    {
        if ((*at != '.' && *at != ',' && (*at != ':' || end - at != 4)) || ++at == end)
            return false;
        for (int weight = 100'000'000; at != end; ++at, weight /= 10)
        {
            if (*at < '0' || *at > '9')
                return false;
            nanoseconds += (*at - '0') * weight;
        }
    }
    time = TimeOf(m_last.second, nanoseconds);
    return true;
}

// Another time of the same day.
bool TimeText::ReadClock(std::string_view text)
{
    const char* const at = text.data() + m_last.before;
    if (!textmatch::SameBytes(text.data(), m_last.text.data(), m_last.before))
        return false;
    const int hour = TwoDigits(at);
    const int minute = TwoDigits(at + 3);
    const int second = TwoDigits(at + 6);
    if (hour < 0 || minute < 0 || second < 0 || hour > 23 || minute > 59 || second > 60)
        return false;
    if ((at[2] != ':' && at[2] != '.') || at[5] != at[2])
        return false;
    std::memcpy(m_last.text.data() + m_last.before, at, kClockLength);
    m_last.second = m_last.midnight + HourOf(hour, m_last.half) * 3600 + minute * 60 + second;
    return true;
}

bool TimeText::DayOf(ScannedTime& scanned, std::int64_t& day)
{
    if (scanned.date == ScannedTime::Date::Numbers && !SettleNumbers(scanned))
        return false;
    const int year = scanned.year >= 0 ? scanned.year : SettleYear(scanned);
    if (!IsDate(year, scanned.month, scanned.day))
        return false;
    day = DaysOf(year, scanned.month, scanned.day);
    return true;
}

bool TimeText::SettleNumbers(ScannedTime& scanned) const
{
    // The order that is usual comes first.
    std::array<Order, OrderCount> orders = {YearMonthDay, DayMonthYear, MonthDayYear};
    const bool isShort = scanned.numbers[2] < 0;
    const bool isLastYear = scanned.isLastYear;
    if (scanned.separator != '.' && (isShort || (isLastYear && scanned.separator == '/')))
        orders = {MonthDayYear, DayMonthYear, YearMonthDay};
    else if (scanned.separator == '.' || isLastYear)
        orders = {DayMonthYear, MonthDayYear, YearMonthDay};

    const auto fewer = [this](Order a, Order b) { return m_notPossible[a] < m_notPossible[b]; };
    std::stable_sort(orders.begin(), orders.end(), fewer);
    for (const Order order : orders)
        if (ScannedTime settled = scanned; SettleOrder(scanned, order, settled))
        {
            m_usedOrder = order;
            m_hasGuessedOrder = m_notPossible[orders[1]] == m_notPossible[orders[0]];
            scanned = settled;
            return true;
        }
    return false;
}

// False if the numbers are no date in this order.
bool TimeText::SettleOrder(const ScannedTime& scanned, Order order, ScannedTime& settled) const
{
    constexpr std::array<int, 3> kYearAt = {0, 2, 2};
    constexpr std::array<std::size_t, 3> kMonthAt = {1, 1, 0};
    constexpr std::array<std::size_t, 3> kDayAt = {2, 0, 1};
    const bool isShort = scanned.numbers[2] < 0;
    if (order == YearMonthDay && (isShort || scanned.isLastYear))
        return false;
    settled.date = ScannedTime::Date::Known;
    settled.month = scanned.numbers[kMonthAt[order]];
    settled.day = scanned.numbers[kDayAt[order]];
    if (isShort)
        return IsDate(2000, settled.month, settled.day);
    settled.year = scanned.numbers[static_cast<std::size_t>(kYearAt[order])];
    if (!scanned.isLastYear)
        settled.year += settled.year < 70 ? 2000 : 1900;
    return IsDate(settled.year, settled.month, settled.day) && settled.year <= YearOf(m_reference) + 1;
}

int TimeText::SettleYear(const ScannedTime& scanned)
{
    const int month = scanned.month;
    const std::int64_t latest = DayOfTime(m_reference) + 1;
    const auto isTooLate = [&](int year) { return DaysOf(year, month, scanned.day) > latest; };
    if (m_year == 0)
    {
        m_year = YearOf(m_reference);
        m_year -= isTooLate(m_year) ? 1 : 0;
        for (int back = 0; back < 8 && !IsDate(m_year, month, scanned.day); ++back)
            --m_year; // a 29th of February
        m_firstYear = m_year;
    }
    else if (m_month >= 10 && month <= 3 && !isTooLate(m_year + 1))
        ++m_year;
    else if (m_month <= 3 && month >= 10 && isTooLate(m_year))
        return m_year - 1; // a line that comes late
    m_month = month;
    return m_year;
}

std::int64_t TimeText::SettleDay(std::int64_t secondOfDay)
{
    if (m_secondOfDay < 0)
    {
        m_day = DayOfTime(m_reference);
        m_day -= TimeOf(m_day * kDay + secondOfDay, 0) > m_reference ? 1 : 0;
        m_firstDay = m_day;
    }
    else if (secondOfDay < m_secondOfDay - kDay / 2)
        ++m_day;
    m_secondOfDay = secondOfDay;
    return m_day;
}

std::string TimeText::Settlements() const
{
    constexpr std::array<const char*, 3> kOrders = {"year, month, day", "day, month, year",
                                                    "month, day, year"};
    std::string text;
    if (m_lacksZone)
        text += "The time stamps name no time zone and are taken as UTC.\n";
    if (m_firstYear != 0)
        text +=
            "The dates have no year; the first one is taken to be in " + std::to_string(m_firstYear) + ".\n";
    if (m_secondOfDay >= 0)
        text += "The time stamps have no date; the first one is taken to be on " +
                date::format("%F", date::sys_days(date::days(m_firstDay))) + ".\n";
    if (m_usedOrder != OrderCount)
        text += std::string("The numbers of a date are read as ") + kOrders[m_usedOrder] +
                (m_hasGuessedOrder ? ", which is a guess: they could be meant in another way.\n" : ".\n");
    return text;
}

} // namespace msgservice
