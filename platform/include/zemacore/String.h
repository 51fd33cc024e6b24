// The core library's 8-bit string: what the maker's libraries pass text in.
#pragma once

#include "zemacore/ZemaApi.h"

#include <cstddef>

namespace ZEMA
{

// Owns its characters, which are NUL-terminated. A null pointer counts as the empty text.
class QMPLATFORM_API String
{
public:
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);

    String() = default;
    String(const char* text);
    String(const char* text, std::size_t length); // may hold NULs
    String(const String& other);
    String(String&& other) noexcept;
    ~String();
    String& operator=(const String& other);
    String& operator=(String&& other) noexcept;

    String& operator+=(const char* text);

    // Valid until the string changes; never null.
    const char* c_str() const;

    std::size_t GetLength() const;
    bool IsEmpty() const;

    // The last character; NUL when the string is empty.
    char Last() const;

    // Where `byte` first stands at or after `from`; npos when it does not.
    std::size_t find(char byte, std::size_t from = 0) const;

    // Takes the text over; memory that the string has is used again. The text may lie in this string.
    void assign(const char* text, std::size_t length);

    // Puts text before position `at`, or takes `count` bytes out there. A position beyond the end counts as
    // the end, and no more goes than there is. The text must not lie in this string. insertAt takes no more
    // memory than the text needs, since lists hold such strings by the million; when there is none
    // (std::bad_alloc), nothing has changed. deleteAt gives no memory back.
    void insertAt(std::size_t at, const char* text, std::size_t length);
    void deleteAt(std::size_t at, std::size_t count);

    // Drops white space (blank, tab, line feed, carriage return, vertical tab, form feed) from the end.
    void TrimRight();

private:
    char* Open(std::size_t at, std::size_t length);

    char* m_text = nullptr; // null while no memory has been taken; else with a NUL at its end
    std::size_t m_length = 0;
    std::size_t m_capacity = 0; // characters that m_text has room for, besides the NUL
};

} // namespace ZEMA
