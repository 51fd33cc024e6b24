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
            unit += unit >= 'A' && unit <= 'Z' ? 'a' - 'A' : 0;
    std::string bytes;
    FromWide(wide.data(), wide.size(), bytes);
    key += bytes;
    key += '\0';
}
