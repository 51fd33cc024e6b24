// Time stamps of a log as times.
#pragma once

#include "msgservice/Message.h"
#include "msgservice/text/TimeScanner.h"

#include <array>
#include <string>
#include <string_view>

namespace msgservice
{

// Reads the time stamps of one log, in the order of its lines, and settles what they leave out:
//
// - A time without a zone is UTC. The zone of the machine that reads the log plays no part.
// - A date without a year is in the year of the reference, or in the one before if it would lie more than a
// day after
//   the reference; from there, a step back from the last months of a year to the first ones begins another
//   year.
// - A time without a date is on the day of the reference, or on the one before if it would lie after the
// reference;
//   from there, a step back by more than 12 hours begins another day.
// - Dates of numbers alone whose year has two digits or is last can be meant in several ways. All that Learn
// has seen
//   decides: an order in which some of it would be no date is out. If more than one is left, two digits mean
//   year/month/day, day.month.year or month-day, and a year at the end means month/day, day.month or
//   day-month.
// - Years of two digits are 1970 to 2069.
class TimeText
{
public:
    explicit TimeText(Time reference) : m_reference(reference) {}

    // For a log that is followed: what is read from now on was written up to now.
    void SetReference(Time reference) { m_reference = reference; }

    // Looks at a time stamp of the log, for the order of its numbers. Any order, before the first Read.
    void Learn(std::string_view text);

    // False if the text is no time stamp.
    bool Read(std::string_view text, Time& time);

    // What was left out, and how it was settled: sentences on what has been learned and read, for people.
    std::string Settlements() const;

private:
    enum Order
    {
        YearMonthDay,
        DayMonthYear,
        MonthDayYear,
        OrderCount
    };

    // The time stamp before this one without its fraction, and what it means: in most lines it is the same
    // but for the time of day.
    struct LastText
    {
        std::array<char, 48> text = {};
        std::size_t before = 0;    // bytes in front of the time of day; 0 if nothing is remembered
        std::size_t after = 0;     // bytes after the fraction
        std::int64_t midnight = 0; // of the day, in seconds since 1970 UTC
        std::int64_t second = 0;   // likewise, of the time stamp
        int half = -1;
    };

    bool ReadLikeLast(std::string_view text, Time& time);
    bool ReadClock(std::string_view text);
    void Remember(std::string_view text, const ScannedTime& scanned, std::int64_t midnight);
    bool DayOf(ScannedTime& scanned, std::int64_t& day);
    bool SettleNumbers(ScannedTime& scanned) const;
    bool SettleOrder(const ScannedTime& scanned, Order order, ScannedTime& settled) const;
    int SettleYear(const ScannedTime& scanned);
    std::int64_t SettleDay(std::int64_t secondOfDay);

    Time m_reference;
    std::array<std::uint32_t, OrderCount> m_notPossible = {}; // time stamps that an order made no date of
    LastText m_last;
    int m_year = 0; // of the last date without one; 0 before the first
    int m_month = 0;
    std::int64_t m_day = 0; // of the last time without a date, since 1970
    std::int64_t m_secondOfDay = -1;

    mutable bool m_hasGuessedOrder = false;
    mutable Order m_usedOrder = OrderCount;
    bool m_lacksZone = false;
    int m_firstYear = 0;
    std::int64_t m_firstDay = 0;
};

} // namespace msgservice
