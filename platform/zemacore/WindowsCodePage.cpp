#include "zemacore/CodePage.h"

#include <algorithm>
#include <limits>
#include <windows.h>

namespace ZEMA
{
namespace
{

constexpr UINT kWesternCodePage = 1252;

UINT FindCodePage()
{
    UINT codePage = ::GetACP();
    if (codePage == CP_UTF8)
        ::GetLocaleInfoW(LOCALE_SYSTEM_DEFAULT, LOCALE_IDEFAULTANSICODEPAGE | LOCALE_RETURN_NUMBER,
                         reinterpret_cast<wchar_t*>(&codePage), sizeof(codePage) / sizeof(wchar_t));
    // Languages without a code page of their own answer with that of the process, 0.
    return codePage == CP_UTF8 || codePage == CP_ACP ? kWesternCodePage : codePage;
}

UINT TheCodePage()
{
    static const UINT codePage = FindCodePage();
    return codePage;
}

} // namespace

void CodePageToWide(const char* text, std::size_t length, WideString& wide)
{
    const UINT codePage = TheCodePage();
    const int size = static_cast<int>(std::min<std::size_t>(length, std::numeric_limits<int>::max()));
    const int needed = ::MultiByteToWideChar(codePage, 0, text, size, nullptr, 0);
    wide.resize(static_cast<std::size_t>(needed));
    ::MultiByteToWideChar(codePage, 0, text, size, wide.data(), needed);
}

std::size_t CodePageCharacterLength(const char* text, std::size_t length)
{
    return length > 1 && ::IsDBCSLeadByteEx(TheCodePage(), static_cast<BYTE>(text[0])) ? 2 : 1;
}

} // namespace ZEMA
