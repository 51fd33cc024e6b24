// Texts and numbers of rows as the forms of an export write them.
#pragma once

#include "QmLogRow.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace logtool
{

// "plain", "notice", "error", "detail" or a number.
std::string KindText(QmLogBlockKind kind);

// 100 ns since the beginning of 1601 as "2026-11-23T14:03:10.1234567Z", or with fewer digits.
std::string UtcText(std::int64_t time, int digits);

// The text as UTF-8: itself, or the one in `converted`.
std::string_view Utf8Text(std::string_view text, std::string& converted);

// A text of any bytes as JSON has it, without quotes.
void AppendJson(std::string& to, std::string_view text);

// A value of CSV as RFC 4180 has it, in quotes where it needs them.
void AppendCsv(std::string& to, std::string_view value);

// A text of any bytes as UTF-8 in which "#000" to "#037" and "#177" stand for control characters. A backslash
// precedes characters that are in `marked`.
void AppendSyslog(std::string& to, std::string_view text, std::string_view marked = {});

} // namespace logtool
