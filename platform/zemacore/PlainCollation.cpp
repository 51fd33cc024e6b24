// The order of texts where there is no system to ask.
#include "zemacore/Collation.h"
#include "zemacore/WideText.h"

// UTF-8 orders bytes as characters.
void ZEMA::AppendSortKey(const char* text, std::size_t length, LetterCase letterCase, std::string& key)
{
    WideString wide;
    ToWide(text, length, wide);
    std::erase(wide, WideChar{0});
    if (letterCase == LetterCase::Ignored)
        for (WideChar& unit : wide)
            unit = static_cast<WideChar>(unit >= 'A' && unit <= 'Z' ? unit + ('a' - 'A') : unit);
    std::string bytes;
    FromWide(wide.data(), wide.size(), bytes);
    key += bytes;
    key += '\0';
}
