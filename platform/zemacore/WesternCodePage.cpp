// The code page where there is no system to ask: windows-1252.
#include "zemacore/CodePage.h"

#include <algorithm>

namespace ZEMA
{
namespace
{

// What differs from Latin-1: the bytes from 0x80 on. The five that are not defined stay control characters.
constexpr WideChar kFrom80[] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

WideChar FromByte(char byte)
{
    const unsigned char value = static_cast<unsigned char>(byte);
    return value >= 0x80 && value < 0xA0 ? kFrom80[value - 0x80] : WideChar{value};
}

} // namespace

void CodePageToWide(const char* text, std::size_t length, WideString& wide)
{
    wide.resize(length);
    std::transform(text, text + length, wide.begin(), FromByte);
}

std::size_t CodePageCharacterLength(const char*, std::size_t)
{
    return 1;
}

} // namespace ZEMA
