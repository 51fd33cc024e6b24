// Text of any language in 8-bit strings, and the way from them to UTF-16 and back.
//
// The rule for all that we show, measure, search by character, copy and export: a text is UTF-8 if all of it
// is valid UTF-8, else all of it is in the system's code page. The text as a whole decides and not each
// character, so a text in the code page shows the same characters whatever bytes come together in it. Valid
// UTF-8 is what Unicode calls so: the shortest form of each character, no surrogates, nothing above U+10FFFF,
// no character cut off at the end. NUL is a character like others.
//
// The system's code page is that of the process. In a process whose code page is UTF-8 (by its manifest) it
// is the one that the system's language has otherwise, and windows-1252 where that has none, so that every
// byte shows something. Outside Windows it is windows-1252.
#pragma once

#include "zemacore/ZemaApi.h"

#include <cstddef>
#include <string>

namespace ZEMA
{

// 16 bits: what the system's wide calls take.
#ifdef _WIN32
using WideChar = wchar_t;
#else
using WideChar = char16_t;
#endif
using WideString = std::basic_string<WideChar>;

enum class TextKind
{
    Ascii, // both of the others
    Utf8,
    CodePage
};

QMPLATFORM_API TextKind GetTextKind(const char* text, std::size_t length);

// Quicker than GetTextKind: a text that is ASCII needs no conversion at all.
QMPLATFORM_API bool IsAscii(const char* text, std::size_t length);

// Puts the text into `wide` in place of what is there. Memory that the string has is used again: a caller who
// converts many texts keeps one string. A character beyond U+FFFF becomes a pair of surrogates.
QMPLATFORM_API void ToWide(const char* text, std::size_t length, WideString& wide);

// Puts UTF-16 into `text` as UTF-8, which ToWide reads back as the same. A surrogate without its other half
// becomes U+FFFD.
QMPLATFORM_API void FromWide(const WideChar* wide, std::size_t length, std::string& text);

// Puts a text in the code page into `utf8` as UTF-8. Answers false, and leaves `utf8` alone, if the text is
// UTF-8 as it stands.
QMPLATFORM_API bool ToUtf8(const char* text, std::size_t length, std::string& utf8);

// Puts each small letter's capital in its place, as Unicode's tables for single characters have it, whatever
// the language. The text keeps its length.
QMPLATFORM_API void ToCapitals(WideString& text);

// How many bytes of a text that goes on behind `length` are whole characters, if it is UTF-8.
QMPLATFORM_API std::size_t WholeCharacters(const char* text, std::size_t length);

} // namespace ZEMA
