#include "commandline/ConsoleText.h"

#include "zemacore/WideText.h"

#include <algorithm>
#include <windows.h>

namespace commandline
{

bool WriteConsoleText(void* console, std::string_view utf8, std::size_t& written)
{
    constexpr std::size_t kTogether = 16 * 1024; // bytes: consoles refuse very long texts
    written = 0;
    for (ZEMA::WideString wide; written < utf8.size();)
    {
        const std::string_view rest = utf8.substr(written, kTogether);
        const std::size_t size = ZEMA::WholeCharacters(rest.data(), rest.size());
        if (size == 0)
            return true;
        ZEMA::ToWide(rest.data(), size, wide);
        DWORD units = 0;
        if (!::WriteConsoleW(console, wide.data(), static_cast<DWORD>(wide.size()), &units, nullptr))
            return false;
        written += size;
    }
    return true;
}

} // namespace commandline
