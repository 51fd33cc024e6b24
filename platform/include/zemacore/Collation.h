// The order of texts in the user's language.
#pragma once

#include "zemacore/ZemaApi.h"

#include <cstddef>
#include <string>

namespace ZEMA
{

enum class LetterCase
{
    Kept,
    Ignored
};

// Appends bytes to `key` that compare (as std::string does) as the texts do in the user's language; they end
// with their only NUL. Texts that are the same to the user have the same bytes. Which characters a text has
// is told by the rule of WideText.h. Outside Windows texts compare by the numbers of their characters.
QMPLATFORM_API void AppendSortKey(const char* text, std::size_t length, LetterCase letterCase,
                                  std::string& key);

} // namespace ZEMA
