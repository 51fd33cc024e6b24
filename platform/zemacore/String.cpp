#include "zemacore/String.h"

namespace ZEMA
{
namespace
{

const char* TextOrEmpty(const char* text)
{
    return text ? text : "";
}

} // namespace

String::String(const char* text) : m_text(TextOrEmpty(text)) {}

String& String::operator+=(const char* text)
{
    m_text += TextOrEmpty(text);
    return *this;
}

const char* String::c_str() const
{
    return m_text.c_str();
}

bool String::IsEmpty() const
{
    return m_text.empty();
}

char String::Last() const
{
    return m_text.empty() ? '\0' : m_text.back();
}

void String::TrimRight()
{
    // The characters are named one by one because isspace depends on the locale the host has set.
    m_text.erase(m_text.find_last_not_of(" \t\n\r\v\f") + 1);
}

} // namespace ZEMA
