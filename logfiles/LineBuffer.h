// Text on its way into a log, with room for a line feed before it.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <memory>

namespace logfiles
{

// Short texts need no memory of their own. NUL-terminated; there is room for one character at Text() - 1.
class LineBuffer
{
public:
    // Copies `length` characters. False without memory for them.
    bool Assign(const char* text, std::size_t length);

    // Formats as vprintf does. False when that fails, or without memory.
    bool Format(const char* format, std::va_list arguments);

    char* Text() { return m_buffer + 1; }
    std::size_t Length() const { return m_length; }

private:
    bool Reserve(std::size_t length);

    char m_few[512];
    std::unique_ptr<char[]> m_many;
    char* m_buffer = m_few;
    std::size_t m_length = 0;
};

} // namespace logfiles
