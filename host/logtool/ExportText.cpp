#include "logtool/ExportText.h"

#include "msgservice/session/SessionSource.h"
#include "zemacore/WideText.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cctype>
#include <cstdio>
#include <emmintrin.h>

namespace logtool
{

namespace
{

// How many bytes at the beginning of a text are ASCII that JSON needs no escape for.
std::size_t PlainLength(std::string_view text)
{
    const __m128i quote = _mm_set1_epi8('"');
    const __m128i backslash = _mm_set1_epi8('\\');
    const __m128i blank = _mm_set1_epi8(' ');
    std::size_t done = 0;
    for (; text.size() - done >= 16; done += 16)
    {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + done));
        // As signed numbers bytes from 0x80 on are below a blank, as control characters are.
        const __m128i found =
            _mm_or_si128(_mm_cmplt_epi8(bytes, blank),
                         _mm_or_si128(_mm_cmpeq_epi8(bytes, quote), _mm_cmpeq_epi8(bytes, backslash)));
        const auto mask = static_cast<unsigned>(_mm_movemask_epi8(found));
        if (mask != 0)
            return done + static_cast<std::size_t>(std::countr_zero(mask));
    }
    while (done < text.size() && static_cast<signed char>(text[done]) >= ' ' && text[done] != '"' &&
           text[done] != '\\')
        ++done;
    return done;
}

void AppendJsonCharacter(std::string& to, char character)
{
    static constexpr std::string_view kShort = "\bb\ff\nn\rr\tt\"\"\\\\";
    for (std::size_t i = 0; i < kShort.size(); i += 2)
    {
        if (kShort[i] == character)
        {
            to += '\\';
            to += kShort[i + 1];
            return;
        }
    }
    static constexpr char kDigits[] = "0123456789abcdef";
    const auto code = static_cast<unsigned char>(character);
    to += "\\u00";
    to += kDigits[code >> 4];
    to += kDigits[code & 15];
}

bool IsControlCharacter(char character)
{
    return static_cast<unsigned char>(character) < ' ' || character == '\x7F';
}

} // namespace

std::string KindText(QmLogBlockKind kind)
{
    std::string name = msgservice::NameOfKind(kind);
    name[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(name[0])));
    return name;
}

std::string UtcText(std::int64_t time, int digits)
{
    constexpr std::int64_t kSecond = 10'000'000; // in 100 ns
    constexpr std::int64_t kDay = 86'400 * kSecond;
    // Days are counted from 1600-03-01 on, so that a leap day is the last one of its year, and of 400 years.
    const std::int64_t days = time / kDay + 306;
    const std::int64_t inEra = days % 146'097;
    const std::int64_t yearOfEra = (inEra - inEra / 1'460 + inEra / 36'524 - inEra / 146'096) / 365;
    const std::int64_t dayOfYear = inEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t fromMarch = (5 * dayOfYear + 2) / 153;
    const std::int64_t month = fromMarch < 10 ? fromMarch + 3 : fromMarch - 9;
    const std::int64_t year = 1600 + days / 146'097 * 400 + yearOfEra + (month <= 2 ? 1 : 0);
    const std::int64_t second = time % kDay / kSecond;
    std::int64_t fraction = time % kSecond;
    for (int left = 7; left > digits; --left)
        fraction /= 10;
    std::array<char, 80> text = {};
    const int length =
        std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d.%0*dZ", static_cast<int>(year),
                      static_cast<int>(month), static_cast<int>(dayOfYear - (153 * fromMarch + 2) / 5 + 1),
                      static_cast<int>(second / 3600), static_cast<int>(second / 60 % 60),
                      static_cast<int>(second % 60), digits, static_cast<int>(fraction));
    return {text.data(), static_cast<std::size_t>(length)};
}

std::string_view Utf8Text(std::string_view text, std::string& converted)
{
    return ZEMA::ToUtf8(text.data(), text.size(), converted) ? std::string_view(converted) : text;
}

void AppendJson(std::string& to, std::string_view text)
{
    const std::size_t plain = PlainLength(text);
    to.append(text.data(), plain);
    if (plain == text.size())
        return;
    std::string converted;
    std::string_view rest = Utf8Text(text, converted).substr(plain);
    while (!rest.empty())
    {
        // Characters beyond ASCII are left as they are.
        if (static_cast<unsigned char>(rest[0]) >= 0x80)
            to += rest[0];
        else
            AppendJsonCharacter(to, rest[0]);
        rest.remove_prefix(1);
        const std::size_t next = PlainLength(rest);
        to.append(rest.data(), next);
        rest.remove_prefix(next);
    }
}

void AppendCsv(std::string& to, std::string_view value)
{
    const auto asksQuotes = [](char c) { return c == ',' || c == '"' || c == '\r' || c == '\n'; };
    if (std::none_of(value.begin(), value.end(), asksQuotes))
    {
        to += value;
        return;
    }
    to += '"';
    for (std::size_t quote; (quote = value.find('"')) != std::string_view::npos;
         value.remove_prefix(quote + 1))
        to.append(value.substr(0, quote)).append("\"\"");
    to.append(value) += '"';
}

void AppendSyslog(std::string& to, std::string_view text, std::string_view marked)
{
    std::string converted;
    for (const char character : Utf8Text(text, converted))
    {
        if (IsControlCharacter(character))
        {
            const auto code = static_cast<unsigned char>(character);
            to += '#';
            for (int shift = 6; shift >= 0; shift -= 3)
                to += static_cast<char>('0' + (code >> shift & 7));
            continue;
        }
        if (marked.find(character) != std::string_view::npos)
            to += '\\';
        to += character;
    }
}

} // namespace logtool
