#include "zemacore/String.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace ZEMA
{
namespace
{

const char* TextOrEmpty(const char* text)
{
    return text ? text : "";
}

} // namespace

// The DLL has its constants too, for callers that take one by reference: importing turns inline off.
constexpr std::size_t String::npos;

String::String(const char* text) : String(TextOrEmpty(text), std::strlen(TextOrEmpty(text))) {}

String::String(const char* text, std::size_t length)
{
    insertAt(0, text, length);
}

String::String(const String& other) : String(other.c_str(), other.m_length) {}

String::String(String&& other) noexcept
    : m_text(std::exchange(other.m_text, nullptr)), m_length(std::exchange(other.m_length, 0)),
      m_capacity(std::exchange(other.m_capacity, 0))
{
}

String::~String()
{
    delete[] m_text;
}

String& String::operator=(const String& other)
{
    assign(other.c_str(), other.m_length);
    return *this;
}

String& String::operator=(String&& other) noexcept
{
    std::swap(m_text, other.m_text);
    std::swap(m_length, other.m_length);
    std::swap(m_capacity, other.m_capacity);
    return *this;
}

String& String::operator+=(const char* text)
{
    const String added(text); // which may lie in this string
    if (m_capacity - m_length < added.m_length)
    {
        String grown;
        grown.m_text = new char[2 * m_capacity + added.m_length + 1];
        grown.m_capacity = 2 * m_capacity + added.m_length;
        grown.assign(c_str(), m_length);
        *this = std::move(grown);
    }
    insertAt(m_length, added.c_str(), added.m_length);
    return *this;
}

const char* String::c_str() const
{
    return TextOrEmpty(m_text);
}

std::size_t String::GetLength() const
{
    return m_length;
}

bool String::IsEmpty() const
{
    return m_length == 0;
}

char String::Last() const
{
    return m_length == 0 ? '\0' : m_text[m_length - 1];
}

std::size_t String::find(char byte, std::size_t from) const
{
    if (from >= m_length)
        return npos;
    const void* const found = std::memchr(m_text + from, byte, m_length - from);
    return found ? static_cast<std::size_t>(static_cast<const char*>(found) - m_text) : npos;
}

void String::assign(const char* text, std::size_t length)
{
    if (length > m_capacity)
    {
        *this = String(text, length);
        return;
    }
    if (!m_text)
        return; // the empty text is what it holds
    if (length > 0)
        std::memmove(m_text, text, length);
    m_text[length] = '\0';
    m_length = length;
}

// Opens a gap of `length` characters at `at`; moves to new memory if the old has no room.
char* String::Open(std::size_t at, std::size_t length)
{
    if (m_capacity - m_length < length)
    {
        String grown;
        grown.m_text = new char[m_length + length + 1];
        grown.m_capacity = m_length + length;
        grown.assign(c_str(), m_length);
        *this = std::move(grown);
    }
    std::memmove(m_text + at + length, m_text + at, m_length - at + 1); // with the NUL
    m_length += length;
    return m_text + at;
}

void String::insertAt(std::size_t at, const char* text, std::size_t length)
{
    if (length > 0)
        std::memcpy(Open(std::min(at, m_length), length), text, length);
}

void String::deleteAt(std::size_t at, std::size_t count)
{
    if (at >= m_length || count == 0)
        return;
    count = std::min(count, m_length - at);
    std::memmove(m_text + at, m_text + at + count, m_length - at - count + 1); // with the NUL
    m_length -= count;
}

void String::TrimRight()
{
    // The characters are named one by one because isspace depends on the locale the host has set.
    while (m_length > 0 && std::memchr(" \t\n\r\v\f", Last(), 6))
        deleteAt(m_length - 1, 1);
}

} // namespace ZEMA
