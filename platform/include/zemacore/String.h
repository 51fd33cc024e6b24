// The core library's 8-bit string: what the maker's libraries pass text in.
#pragma once

#include "zemacore/ZemaApi.h"

#include <string>

namespace ZEMA
{

// Owns its characters, which are NUL-terminated. A null pointer counts as the empty text.
class QMPLATFORM_API String
{
public:
    String() = default;
    String(const char* text);

    String& operator+=(const char* text);

    // Valid until the string changes; never null.
    const char* c_str() const;

    bool IsEmpty() const;

    // The last character; NUL when the string is empty.
    char Last() const;

    // Drops white space (blank, tab, line feed, carriage return, vertical tab, form feed) from the end.
    void TrimRight();

private:
    std::string m_text;
};

} // namespace ZEMA
