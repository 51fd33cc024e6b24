#include "report/sort/CellKey.h"
#include "report/sort/TextScanner.h"

#include <charconv>
#include <optional>
#include <utility>

namespace report
{

namespace
{

constexpr std::int64_t kMaxExponent = 999'999'999'999'999;

// The value is 0.<digits> times ten to the power of `exponent`.
struct Decimal
{
    bool negative = false;
    std::string digits; // neither begins nor ends with a zero; empty for the number 0
    std::int64_t exponent = 0;
};

// The digits before the point; false when they are grouped and a group is not of three.
bool ReadWhole(TextScanner& in, char separator, std::string& digits)
{
    digits = in.TakeDigits();
    if (in.Rest().empty() || in.Rest().front() != separator)
        return true;
    if (digits.empty() || digits.size() > 3)
        return false;
    while (in.TakeOneOf({&separator, 1}) != '\0')
    {
        const std::string_view group = in.TakeDigits();
        if (group.size() != 3)
            return false;
        digits += group;
    }
    return true;
}

// What follows an 'e'.
bool ReadExponent(TextScanner& in, std::int64_t& exponent)
{
    const char sign = in.TakeOneOf("+-");
    const std::string_view digits = in.TakeDigits();
    const char* const end = digits.data() + digits.size();
    if (std::from_chars(digits.data(), end, exponent).ec == std::errc::result_out_of_range)
        exponent = kMaxExponent;
    exponent = std::min(exponent, kMaxExponent);
    if (sign == '-')
        exponent = -exponent;
    return !digits.empty();
}

std::optional<Decimal> ReadDecimal(TextScanner in, char point)
{
    Decimal number;
    number.negative = in.TakeOneOf("+-") == '-';
    if (!ReadWhole(in, point == ',' ? '.' : ',', number.digits))
        return std::nullopt;
    const std::size_t wholeDigits = number.digits.size();
    if (in.TakeOneOf({&point, 1}) != '\0')
        number.digits += in.TakeDigits();
    if (number.digits.empty() || (in.TakeOneOf("eE") != '\0' && !ReadExponent(in, number.exponent)) ||
        !in.AtEnd())
        return std::nullopt;

    const std::size_t zeros = std::min(number.digits.find_first_not_of('0'), number.digits.size());
    number.exponent += static_cast<std::int64_t>(wholeDigits) - static_cast<std::int64_t>(zeros);
    number.digits.erase(0, zeros);
    number.digits.erase(number.digits.find_last_not_of('0') + 1);
    return number;
}

} // namespace

// The exponent decides before the digits. Negative numbers turn both round: nine minus each digit, and at the
// end what is above all digits, because of -1 and -1.5 the longer one is less.
CellKey NumberKey(std::string_view text, char point)
{
    std::optional<Decimal> number = ReadDecimal(TextScanner(text), point);
    if (!number)
        return TextKey(text);
    if (number->digits.empty())
        return {CellKey::Kind::Zero, 0, {}};
    if (!number->negative)
        return {CellKey::Kind::Positive, number->exponent, std::move(number->digits)};
    for (char& digit : number->digits)
        digit = static_cast<char>('0' + ('9' - digit));
    return {CellKey::Kind::Negative, -number->exponent, number->digits + ':'};
}

} // namespace report
