#include "commandline/Printable.h"

namespace commandline
{

namespace
{

bool IsHarmless(unsigned char byte)
{
    return byte == '\t' || (byte >= 0x20 && byte < 0x7F) || byte >= 0xA0;
}

} // namespace

std::string Printable(std::string_view text)
{
    static constexpr char digits[] = "0123456789abcdef";
    std::string result;
    result.reserve(text.size());
    for (const char character : text)
    {
        const auto byte = static_cast<unsigned char>(character);
        if (IsHarmless(byte))
            result += character;
        else
            result.append({'\\', 'x', digits[byte >> 4], digits[byte & 15]});
    }
    return result;
}

} // namespace commandline
