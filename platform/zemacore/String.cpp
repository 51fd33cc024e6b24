#include "zemacore/String.h"

#include <algorithm>

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

String::String(const char* text) : m_text(TextOrEmpty(text)) {}

String::String(const char* text, std::size_t length) : m_text(text, length) {}

String& String::operator+=(const char* text)
{
    m_text += TextOrEmpty(text);
    return *this;
}

const char* String::c_str() const
{
    return m_text.c_str();
}

std::size_t String::GetLength() const
{
    return m_text.size();
}

bool String::IsEmpty() const
{
    return m_text.empty();
}

char String::Last() const
{
    return m_text.empty() ? '\0' : m_text.back();
}

std::size_t String::find(char byte, std::size_t from) const
{
    return m_text.find(byte, from);
}

void String::assign(const char* text, std::size_t length)
{
    m_text.assign(text, length);
}

void String::insertAt(std::size_t at, const char* text, std::size_t length)
{
    if (m_text.capacity() - m_text.size() < length)
    {
        std::string grown;
        grown.reserve(m_text.size() + length);
        grown = m_text; // keeps the memory
        m_text.swap(grown);
    }
    m_text.insert(std::min(at, m_text.size()), text, length);
}

void String::deleteAt(std::size_t at, std::size_t count)
{
    m_text.erase(std::min(at, m_text.size()), count);
}

void String::TrimRight()
{
    // The characters are named one by one because isspace depends on the locale the host has set.
    m_text.erase(m_text.find_last_not_of(" \t\n\r\v\f") + 1);
}

} // namespace ZEMA
