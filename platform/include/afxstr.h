// The framework's 8-bit string, as far as window texts need it.
#pragma once

#include "wintypes.h"

#include <string>

// A string value. Its text may hold any byte but NUL.
class CString
{
public:
    CString() = default;
    CString(LPCSTR text) : m_text(text ? text : "") {}

    operator LPCSTR() const { return m_text.c_str(); }
    int GetLength() const { return static_cast<int>(m_text.size()); }
    BOOL IsEmpty() const { return m_text.empty(); }
    void Empty() { m_text.clear(); }

    // Room for `length` bytes and the NUL to write a text into; ReleaseBuffer takes it over up to its NUL.
    LPSTR GetBuffer(int length)
    {
        m_text.resize(static_cast<std::size_t>(length));
        return m_text.data();
    }
    void ReleaseBuffer() { m_text.resize(std::char_traits<char>::length(m_text.c_str())); }

    friend bool operator==(const CString& a, const CString& b) { return a.m_text == b.m_text; }
    friend bool operator==(const CString& a, LPCSTR b) { return a.m_text == b; }

private:
    std::string m_text;
};
