// Keys that put the cells of a column in order: as text, in natural order, as numbers, as dates.
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

namespace report
{

// What a cell is compared by. Keys are compared field by field, so all keys there are have one order,
// whichever function made them; equal keys may come of texts that differ.
struct CellKey
{
    enum class Kind
    {
        NoText,
        Text,
        Negative,
        Zero,
        Positive,
        Date
    };

    Kind kind = Kind::NoText;
    std::int64_t value = 0;
    std::string text;

    std::strong_ordering operator<=>(const CellKey&) const = default;
};

// A cell without text: by its check state, one without a check box (-1) before all others by its image.
CellKey KeyWithoutText(int check, int image);

// By the values of the bytes.
CellKey TextKey(std::string_view text);

// The letters A to Z count as a to z; all other bytes by their values.
CellKey CaselessTextKey(std::string_view text);

// As CaselessTextKey, but digits that stand together count as one number: "file9" is less than "file10".
// Zeros at their beginning do not count.
CellKey NaturalTextKey(std::string_view text);

// An optional sign, digits with an optional `point`, an optional exponent; blanks around do not count. Digits
// before the point may be grouped in threes, by commas, or by points when `point` is a comma. Numbers are
// compared exactly, whatever their size and number of digits; an exponent beyond 15 digits counts as the
// greatest with 15. For any other text its TextKey, which is less than all numbers.
CellKey NumberKey(std::string_view text, char point);

// What comes first in a date that ends with the year.
enum class DateOrder
{
    MonthFirst,
    DayFirst
};

// A day, and optionally after a blank or 'T' the time of day as hours:minutes[:seconds[.fraction]], and after
// that 'Z' or an offset such as +01:00, +0100 or +01. A day is year-month-day or ends with the year; the year
// has four digits, '-', '/' or '.' stands between. With points the day comes first, else `order` says. A
// time without offset counts as one with 'Z'. Blanks around do not count. For any other text, and days that
// no month has, its TextKey, which is less than all dates.
CellKey DateKey(std::string_view text, DateOrder order);

} // namespace report
