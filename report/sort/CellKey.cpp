#include "report/sort/CellKey.h"

#include "report/sort/TextScanner.h"

#include <algorithm>

namespace report
{

namespace
{

char Lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Of two numbers the one with more digits is greater, so the count of digits goes before them: four bytes,
// the highest first, after a '0', which gives numbers their place among the other characters.
void AppendNumber(std::string& key, std::string_view digits)
{
    key += '0';
    for (int shift = 24; shift >= 0; shift -= 8)
        key += static_cast<char>(digits.size() >> shift & 0xFF);
    key += digits;
}

} // namespace

CellKey KeyWithoutText(int check, int image)
{
    constexpr std::int64_t kChecks = std::int64_t{1} << 32; // above all images
    return {CellKey::Kind::NoText, check >= 0 ? kChecks + check : image, {}};
}

CellKey TextKey(std::string_view text)
{
    return {CellKey::Kind::Text, 0, std::string(text)};
}

CellKey CaselessTextKey(std::string_view text)
{
    CellKey key = TextKey(text);
    std::transform(key.text.begin(), key.text.end(), key.text.begin(), Lower);
    return key;
}

CellKey NaturalTextKey(std::string_view text)
{
    CellKey key = TextKey({});
    while (!text.empty())
    {
        const std::size_t length = std::min(text.find_first_not_of("0123456789"), text.size());
        if (length == 0)
        {
            key.text += Lower(text.front());
            text.remove_prefix(1);
            continue;
        }
        const std::string_view digits = text.substr(0, length);
        AppendNumber(key.text, digits.substr(std::min(digits.find_first_not_of('0'), length)));
        text.remove_prefix(length);
    }
    return key;
}

} // namespace report
