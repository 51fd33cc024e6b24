#include "msgservice/text/TimeScanner.h"

#include <algorithm>

namespace msgservice
{

namespace
{

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

char Lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

// Whether `word` is the first letters of `name`, at least three of them, in any case.
bool Abbreviates(std::string_view word, std::string_view name)
{
    if (word.size() < 3 || word.size() > name.size())
        return false;
    return std::equal(word.begin(), word.end(), name.begin(),
                      [](char a, char b) { return Lower(a) == Lower(b); });
}

template <std::size_t Count>
int IndexOf(std::string_view word, const std::array<std::string_view, Count>& names)
{
    for (std::size_t index = 0; index < Count; ++index)
        if (Abbreviates(word, names[index]))
            return static_cast<int>(index);
    return -1;
}

constexpr std::array<std::string_view, 12> kMonths = {"january",   "february", "march",    "april",
                                                      "may",       "june",     "july",     "august",
                                                      "september", "october",  "november", "december"};
constexpr std::array<std::string_view, 7> kWeekdays = {"monday", "tuesday",  "wednesday", "thursday",
                                                       "friday", "saturday", "sunday"};

struct Zone
{
    std::string_view name;
    int hours;
};
constexpr Zone kZones[] = {{"utc", 0},   {"gmt", 0},   {"z", 0},    {"wet", 0},   {"west", 1},
                           {"bst", 1},   {"cet", 1},   {"cest", 2}, {"eet", 2},   {"eest", 3},
                           {"msk", 3},   {"jst", 9},   {"kst", 9},  {"aest", 10}, {"aedt", 11},
                           {"nzst", 12}, {"nzdt", 13}, {"est", -5}, {"edt", -4},  {"cst", -6},
                           {"cdt", -5},  {"mst", -7},  {"mdt", -6}, {"pst", -8},  {"pdt", -7}};

// Walks through one text. Each operation takes what it can from where it is.
class TimeScan
{
public:
    TimeScan(std::string_view text, ScannedTime& time) : m_text(text), m_time(time) {}

    bool Run()
    {
        SkipBlanks();
        if (!ScanDate())
            return false;
        if (IsNumberOfSeconds())
            return AtEnd();
        if (m_time.date != ScannedTime::Date::None)
        {
            SkipDateEnd();
            if (AtEnd())
                return IsDay();
        }
        return ScanTimeOfDay() && ScanRest() && IsDay();
    }

private:
    bool AtEnd() const { return m_at == m_text.size(); }
    char Next(std::size_t ahead = 0) const
    {
        return m_at + ahead < m_text.size() ? m_text[m_at + ahead] : '\0';
    }
    void SkipBlanks()
    {
        while (Next() == ' ' || Next() == '\t')
            ++m_at;
    }

    std::size_t DigitsAhead() const
    {
        std::size_t count = 0;
        while (IsDigit(Next(count)))
            ++count;
        return count;
    }

    // The number that the next `count` digits write, which are there.
    std::int64_t Number(std::size_t count)
    {
        std::int64_t number = 0;
        for (; count > 0; --count)
            number = number * 10 + (m_text[m_at++] - '0');
        return number;
    }
    int Small(std::size_t count) { return static_cast<int>(Number(count)); }

    std::string_view Word()
    {
        const std::size_t begin = m_at;
        while (IsLetter(Next()))
            ++m_at;
        return m_text.substr(begin, m_at - begin);
    }

    bool IsNumberOfSeconds() const
    {
        return m_time.date == ScannedTime::Date::Epoch || m_time.date == ScannedTime::Date::SinceStart;
    }

    bool ScanDate()
    {
        if (IsLetter(Next()))
            return ScanNamedDate();
        const std::size_t digits = DigitsAhead();
        if (digits > 0 && Next(digits) == '.' && IsFractionToEnd(digits + 1))
            return ScanSeconds(digits);
        switch (digits)
        {
        case 0:
            return false;
        case 1:
        case 2:
            return Next(digits) == ':' || ScanShortDate(digits);
        case 4:
            return IsMonthAndDay() ? ScanMonthAndDay() : ScanYearFirst();
        case 6:
            return ScanCompactDate(2);
        case 8:
        case 14:
            return ScanCompactDate(4);
        default:
            return ScanSeconds(digits);
        }
    }

    // 1704164645, 1704164645.123, 1704164645123 and on to nanoseconds; with fewer digits and a fraction, what
    // has passed since a start.
    bool ScanSeconds(std::size_t digits)
    {
        if (digits > 19 || (digits == 19 && Next() == '9'))
            return false; // such a number has no room
        m_time.date = digits >= 9 ? ScannedTime::Date::Epoch : ScannedTime::Date::SinceStart;
        if (digits < 9 && Next(digits) != '.')
            return false;
        std::int64_t scale = 1'000'000'000;
        for (std::size_t unit = 11; unit <= digits; unit += 3)
            scale /= 1000; // milliseconds have 12 digits and more, ...
        if (digits == 11)
            scale = 1'000'000'000;
        const std::int64_t whole = Number(digits);
        constexpr std::int64_t kMost = 9'200'000'000; // seconds: the year 2261
        const bool fits = whole / (1'000'000'000 / scale) <= kMost;
        m_time.epoch = fits ? whole * scale : kMost * 1'000'000'000;
        if ((Next() == '.' || Next() == ',') && IsDigit(Next(1)))
            m_time.epoch += ScanFraction() * scale / 1'000'000'000;
        return true;
    }

    // 2024-01-31, 2024/1/31, 2024.01.31, 2024-Jan-31.
    bool ScanYearFirst()
    {
        m_time.date = ScannedTime::Date::Known;
        m_time.year = Small(4);
        const char separator = Next();
        if (separator != '-' && separator != '/' && separator != '.' && separator != ' ')
            return false;
        ++m_at;
        if (IsLetter(Next()))
            m_time.month = IndexOf(Word(), kMonths) + 1;
        else if (!TakeOneOrTwo(m_time.month))
            return false;
        return Next() == separator && (++m_at, TakeOneOrTwo(m_time.day));
    }

    // In front of a time such as 10:00:00 or 100000.
    bool IsMonthAndDay() const
    {
        if (Next(4) == '/')
            return IsDigit(Next(5)) && IsDigit(Next(6)) && IsDigit(Next(7));
        return Next(4) == ' ' && IsDigit(Next(5));
    }

    // 0131.
    bool ScanMonthAndDay()
    {
        m_time.date = ScannedTime::Date::Known;
        m_time.month = Small(2);
        m_time.day = Small(2);
        return true;
    }

    // 20240131 or 240131.
    bool ScanCompactDate(std::size_t yearDigits)
    {
        m_time.date = ScannedTime::Date::Known;
        m_time.year = Small(yearDigits);
        if (yearDigits == 2)
            m_time.year += m_time.year < 70 ? 2000 : 1900;
        return ScanMonthAndDay();
    }

    bool TakeOneOrTwo(int& number)
    {
        const std::size_t digits = DigitsAhead();
        if (digits != 1 && digits != 2)
            return false;
        number = Small(digits);
        return true;
    }

    // What begins with one or two digits: 31.01., 31.01.2024, 01/31/24, 31/Jan/2024, 31 Jan 2024; or seconds.
    bool ScanShortDate(std::size_t digits)
    {
        const char separator = Next(digits);
        if (separator != '-' && separator != '/' && separator != '.' && separator != ' ')
            return false;
        const int first = Small(digits);
        ++m_at;
        if (IsLetter(Next()))
            return ScanDayFirst(first);
        m_time.date = ScannedTime::Date::Numbers;
        m_time.numbers[0] = first;
        m_time.separator = separator;
        if (separator == ' ' || !TakeOneOrTwo(m_time.numbers[1]))
            return false;
        const bool hasThird = Next() == separator && IsDigit(Next(1)) && separator != '-';
        if (hasThird || IsThirdAfterDash(separator))
            return ScanThird();
        m_at += Next() == '.' && separator == '.' ? 1 : 0;
        return true;
    }

    // In "01-31-10:00:00" the third number is an hour.
    bool IsThirdAfterDash(char separator) const
    {
        return separator == '-' && Next() == '-' && IsDigit(Next(1)) && IsDigit(Next(2)) && Next(3) != ':';
    }

    bool ScanThird()
    {
        ++m_at;
        const std::size_t count = DigitsAhead();
        if (count != 2 && count != 4)
            return false;
        m_time.isLastYear = count == 4;
        m_time.numbers[2] = Small(count);
        return true;
    }

    bool IsFractionToEnd(std::size_t from) const
    {
        std::size_t count = 0;
        while (IsDigit(Next(from + count)))
            ++count;
        return count >= 3 && m_at + from + count == m_text.size();
    }

    // The day is read, and the month's name comes.
    bool ScanDayFirst(int day)
    {
        m_time.date = ScannedTime::Date::Known;
        m_time.day = day;
        m_time.month = IndexOf(Word(), kMonths) + 1;
        SkipDateEnd();
        const std::size_t digits = DigitsAhead();
        if (digits == 4)
            m_time.year = Small(4);
        else if (digits == 2 && Next(2) != ':')
            m_time.year = 2000 + Small(2);
        return true;
    }

    // Sun Jan 31, Sunday, 31 Jan 2024, Sun 2024-01-31, January 31, 2024.
    bool ScanNamedDate()
    {
        std::string_view word = Word();
        if (IndexOf(word, kWeekdays) >= 0)
        {
            SkipDateEnd();
            if (IsDigit(Next()))
                return ScanDate();
            word = Word();
        }
        m_time.date = ScannedTime::Date::Known;
        m_time.month = IndexOf(word, kMonths) + 1;
        SkipDateEnd();
        if (m_time.month < 1 || !TakeOneOrTwo(m_time.day))
            return false;
        const std::size_t digits = (SkipDateEnd(), DigitsAhead());
        if (digits == 4 && Next(4) != ':')
            m_time.year = Small(4);
        return true;
    }

    // What separates the parts of a date from each other and from the time.
    void SkipDateEnd()
    {
        for (int count = 0; count < 8 && !AtEnd(); ++count, ++m_at)
        {
            const char c = Next();
            const bool isT = (c == 'T' || c == 't') && IsDigit(Next(1));
            if (c != ' ' && c != '\t' && c != ',' && c != '-' && c != '/' && c != ':' && c != '.' &&
                c != '_' && c != '@' && c != '|' && !isT)
                return;
        }
    }

    bool ScanTimeOfDay()
    {
        m_time.timeAt = m_at;
        const std::size_t digits = DigitsAhead();
        if (digits == 6)
        {
            m_time.hour = Small(2);
            m_time.minute = Small(2);
            m_time.second = Small(2);
        }
        else if (digits == 1 || digits == 2)
        {
            m_time.hour = Small(digits);
            const char separator = Next();
            if (separator != ':' && separator != '.')
                return false;
            ++m_at;
            if (!TakeOneOrTwo(m_time.minute))
                return false;
            if (Next() == separator && IsDigit(Next(1)))
            {
                ++m_at;
                if (!TakeOneOrTwo(m_time.second))
                    return false;
            }
        }
        else
            return false;
        if (Next() == ':' && IsDigit(Next(1)))
            m_time.nanoseconds = ScanMilliseconds();
        else if ((Next() == '.' || Next() == ',') && IsDigit(Next(1)))
            m_time.nanoseconds = static_cast<int>(ScanFraction());
        m_time.timeEnd = m_at;
        return m_time.hour < 24 && m_time.minute < 60 && m_time.second <= 60;
    }

    // The point and the digits after it, as billionths.
    std::int64_t ScanFraction()
    {
        ++m_at;
        std::int64_t fraction = 0;
        std::int64_t weight = 100'000'000;
        for (; IsDigit(Next()); ++m_at, weight /= 10)
            fraction += (Next() - '0') * weight;
        return fraction;
    }

    // After a colon there is a number, and zeros in front may be missing: ":7" are 7 milliseconds.
    int ScanMilliseconds()
    {
        ++m_at;
        const std::size_t digits = DigitsAhead();
        if (digits <= 3)
            return Small(digits) * 1'000'000;
        --m_at;
        return static_cast<int>(ScanFraction());
    }

    // What follows a time: a.m. or p.m., a zone, the year.
    bool ScanRest()
    {
        while (!AtEnd())
        {
            SkipBlanks();
            if (m_text.substr(m_at).starts_with("\xE2\x80\xAF")) // a narrow blank
                m_at += 3;
            if (AtEnd())
                return true;
            const bool isOffset = Next() == '+' || Next() == '-';
            if (isOffset ? !ScanOffset() : IsDigit(Next()) ? !ScanLateYear() : !ScanName())
                return false;
        }
        return true;
    }

    // +01:00, -0700, +01.
    bool ScanOffset()
    {
        const int sign = Next() == '-' ? -1 : 1;
        ++m_at;
        const std::size_t digits = DigitsAhead();
        if (digits != 2 && digits != 4)
            return false;
        int seconds = Small(2) * 3600;
        if (digits == 4)
            seconds += Small(2) * 60;
        else if (Next() == ':' && IsDigit(Next(1)) && IsDigit(Next(2)))
        {
            ++m_at;
            seconds += Small(2) * 60;
        }
        m_time.zone = sign * seconds;
        return true;
    }

    bool ScanLateYear()
    {
        if (m_time.year >= 0 || m_time.date != ScannedTime::Date::Known || DigitsAhead() != 4)
            return false;
        m_time.year = Small(4);
        return true;
    }

    bool ScanName()
    {
        const std::size_t begin = m_at;
        while (IsLetter(Next()) || ((Next() == '/' || Next() == '_') && m_at > begin))
            ++m_at;
        const std::string_view name = m_text.substr(begin, m_at - begin);
        if (Same(name, "am") || Same(name, "pm"))
            m_time.half = Lower(name[0]) == 'p' ? 1 : 0;
        const auto zone = std::find_if(std::begin(kZones), std::end(kZones),
                                       [&](const Zone& z) { return Same(name, z.name); });
        if (zone != std::end(kZones))
            m_time.zone = zone->hours * 3600;
        return !name.empty();
    }

    static bool Same(std::string_view word, std::string_view lower)
    {
        return word.size() == lower.size() && std::equal(word.begin(), word.end(), lower.begin(),
                                                         [](char a, char b) { return Lower(a) == b; });
    }

    bool IsDay() const
    {
        if (m_time.date != ScannedTime::Date::Known)
            return true;
        return m_time.month >= 1 && m_time.month <= 12 && m_time.day >= 1 && m_time.day <= 31;
    }

    std::string_view m_text;
    ScannedTime& m_time;
    std::size_t m_at = 0;
};

} // namespace

bool ScanTime(std::string_view text, ScannedTime& time)
{
    time = {};
    return TimeScan(text, time).Run();
}

} // namespace msgservice
