// The system's code page, for texts that are not UTF-8.
#pragma once

#include "zemacore/WideText.h"

namespace ZEMA
{

// As ToWide, for a text in the code page. Bytes that it does not define become some character, none is left
// out.
void CodePageToWide(const char* text, std::size_t length, WideString& wide);

// How many bytes the character at the beginning of a text has that is not empty: two in some code pages of
// East Asia, else one.
std::size_t CodePageCharacterLength(const char* text, std::size_t length);

} // namespace ZEMA
