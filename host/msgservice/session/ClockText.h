// Times of rows in words: local time with milliseconds, and how long something took.
#pragma once

#include "QmLogTimes.h"

#include <optional>
#include <string>
#include <string_view>

namespace msgservice
{

// Of a time as LocalTime writes it.
constexpr std::size_t kLocalTimeWidth = 23;

// "2026-11-23 14:03:10.123"; empty for a time that no calendar has.
std::string LocalTime(QmLogTimeValue time);

// "0.004 s", "12.5 s", "3 min 5 s", "2 h 3 min", "4 d 5 h".
std::string DurationText(QmLogTimeValue time);

// The local time that `text` names: "14:03", "14:03:10", "14:03:10.5", with a date before it or not. Without
// one the day of `day` is meant.
std::optional<QmLogTimeValue> ReadLocalTime(std::string_view text, QmLogTimeValue day);

// Nanoseconds since 1970, UTC.
std::int64_t NanosecondsSince1970(QmLogTimeValue time);

} // namespace msgservice
