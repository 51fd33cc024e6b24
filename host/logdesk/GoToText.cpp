#include "logdesk/GoToText.h"

#include "logdesk/Notices.h"

#include <algorithm>
#include <limits>
#include <string_view>

namespace logdesk
{

namespace
{

constexpr std::string_view kBlanks = " \t\r\n";

bool IsDecimal(char character)
{
    return character >= '0' && character <= '9';
}

std::string Trimmed(const std::string& text)
{
    const std::size_t begin = text.find_first_not_of(kBlanks);
    return begin == std::string::npos ? "" : text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

// Bytes of what separates groups of digits; 0 where nothing does.
std::size_t SeparatorSize(std::string_view text)
{
    for (const std::string_view separator : {",", ".", "'", " ", "\u00A0", "\u202F", "\u2019"})
        if (text.starts_with(separator))
            return separator.size();
    return 0;
}

// The digits without what separates groups of two or three; empty for anything else.
std::string Digits(std::string_view text)
{
    std::string digits;
    std::size_t group = std::string::npos; // the digits since a separator
    while (!text.empty())
    {
        if (IsDecimal(text.front()))
        {
            digits += text.front();
            text.remove_prefix(1);
            group += group == std::string::npos ? 0 : 1;
            continue;
        }
        const std::size_t separator = SeparatorSize(text);
        const bool isWhole = group == std::string::npos || group == 2 || group == 3;
        if (separator == 0 || digits.empty() || !isWhole)
            return "";
        text.remove_prefix(separator);
        group = 0;
    }
    return group == std::string::npos || group == 3 ? digits : "";
}

// What comes before two blanks or a tab. In a line of an excerpt, the row's text follows these.
std::string BeforeGap(const std::string& text)
{
    return text.substr(0, std::min(text.find("  "), text.find('\t')));
}

std::optional<std::uint32_t> Value(const std::string& digits)
{
    std::uint64_t value = 0;
    for (const char digit : digits)
    {
        value = value * 10 + static_cast<std::uint64_t>(digit - '0');
        if (value > std::numeric_limits<std::uint32_t>::max())
            return {};
    }
    return static_cast<std::uint32_t>(value);
}

std::string Names(const std::vector<std::string>& logs)
{
    std::string names;
    for (const std::string& log : logs)
        names += (names.empty() ? "" : ", ") + log;
    return names;
}

// "14:03" begins with a digit, other than "SQL:120", and "2026-11-23" with four.
bool IsTime(const std::string& text)
{
    const std::size_t digits = text.find_first_not_of("0123456789");
    return digits != std::string::npos &&
           ((text[digits] == ':' && digits > 0) || (text[digits] == '-' && digits == 4));
}

} // namespace

GoToAnswer ParseGoTo(const std::string& text, const std::vector<std::string>& logs)
{
    const auto fails = [](const std::string& error) { return GoToAnswer{{}, error}; };
    std::string typed = Trimmed(text);
    if (typed.starts_with("* ")) // as an excerpt marks its rows
        typed = Trimmed(typed.substr(1));
    if (typed.empty())
        return fails("Type a number, a log and its row, or a row: 18342, SQL 120, row 500");

    if (IsTime(typed))
    {
        GoToTarget target;
        target.kind = GoToTarget::Kind::Time;
        target.time = typed;
        return {target, ""};
    }

    // A word, and what comes after it.
    const bool isWord = !IsDecimal(typed.front()) && typed.front() != '#';
    const std::size_t end = isWord ? std::min(typed.find_first_of("0123456789#:"), typed.size()) : 0;
    const std::string word = Trimmed(typed.substr(0, end));
    const std::size_t begin = std::min(typed.find_first_not_of("#: \t", end), typed.size());
    const bool isNumber = typed.find('#') < begin;
    const std::string count = isNumber ? BeforeGap(typed.substr(begin)) : typed.substr(begin);

    GoToTarget target;
    if (IsSameLog(word, "row"))
        target.kind = GoToTarget::Kind::ShownRow;
    else if (!word.empty())
    {
        target.kind = isNumber ? GoToTarget::Kind::Number : GoToTarget::Kind::LogRow;
        const auto log = std::find_if(logs.begin(), logs.end(),
                                      [&](const std::string& name) { return IsSameLog(name, word); });
        if (log == logs.end())
            return fails("There is no log \"" + word + "\" here, but " + Names(logs));
        target.log = *log;
    }
    const std::string digits = Digits(count);
    if (count.empty())
        return fails("Type a number after \"" + typed + "\"");
    if (digits.empty())
        return fails("\"" + count + "\" is no number");
    const std::optional<std::uint32_t> value = Value(digits);
    if (!value)
        return fails(count + " is more than any log has");
    if (*value == 0)
        return fails(target.kind == GoToTarget::Kind::Number ? "Numbers begin with 1"
                                                             : "Rows are counted from 1");
    target.value = *value;
    return {target, ""};
}

} // namespace logdesk
