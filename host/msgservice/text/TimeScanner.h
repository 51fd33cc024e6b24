// What a time stamp's text says, field by field.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace msgservice
{

// A time stamp taken apart. What it does not tell is -1.
struct ScannedTime
{
    enum class Date
    {
        None,      // a time of day only
        Known,     // year (or -1), month, day
        Numbers,   // two or three numbers whose order the log decides
        Epoch,     // nanoseconds since 1970 UTC, in `epoch`
        SinceStart // likewise, since something began
    };

    Date date = Date::None;
    int year = -1;
    int month = -1;
    int day = -1;
    std::array<int, 3> numbers = {-1, -1, -1}; // the third is -1 if there are only two
    bool isLastYear = false;                   // the third number has four digits
    char separator = 0;                        // between the numbers
    std::int64_t epoch = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int nanoseconds = 0;
    int half = -1;           // 0 a.m., 1 p.m.
    std::optional<int> zone; // seconds east of UTC
    std::size_t timeAt = 0;  // where the time of day begins in the text
    std::size_t timeEnd = 0; // and where it ends, fraction included
};

// Reads a whole text in any of the usual layouts: dates as numbers with '-', '.', '/' or nothing between them
// and with names of months, with or without weekday, year, fraction and zone, and seconds since 1970. False
// if the text is something else, or names no day or time that exists. An unknown name of a zone is none.
bool ScanTime(std::string_view text, ScannedTime& time);

} // namespace msgservice
