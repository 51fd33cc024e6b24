#include "zemacore/Collation.h"
#include "zemacore/WideText.h"

#include <algorithm>
#include <limits>
#include <windows.h>

void ZEMA::AppendSortKey(const char* text, std::size_t length, LetterCase letterCase, std::string& key)
{
    WideString wide;
    ToWide(text, length, wide);
    const int size =
        static_cast<int>(std::min<std::size_t>(wide.size(), std::numeric_limits<int>::max() / 8));
    const DWORD flags = LCMAP_SORTKEY | (letterCase == LetterCase::Ignored ? NORM_IGNORECASE : 0u);
    const std::size_t before = key.size();
    const auto map = [&](std::size_t room) {
        key.resize(before + room);
        return size == 0 ? 0
                         : ::LCMapStringEx(LOCALE_NAME_USER_DEFAULT, flags, wide.data(), size,
                                           reinterpret_cast<wchar_t*>(key.data() + before),
                                           static_cast<int>(room), nullptr, nullptr, 0);
    };
    // Most keys take two or three bytes a character.
    int used = map(4 * static_cast<std::size_t>(size) + 32);
    if (used == 0 && size > 0)
    {
        const int needed = ::LCMapStringEx(LOCALE_NAME_USER_DEFAULT, flags, wide.data(), size, nullptr, 0,
                                           nullptr, nullptr, 0);
        used = map(static_cast<std::size_t>(needed));
    }
    key.resize(before + static_cast<std::size_t>(used));
    if (used == 0)
        key += '\0';
}
