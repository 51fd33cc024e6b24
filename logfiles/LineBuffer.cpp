#include "logfiles/LineBuffer.h"

#include <cstdio>
#include <cstring>
#include <new>

namespace logfiles
{

bool LineBuffer::Assign(const char* text, std::size_t length)
{
    if (!Reserve(length))
        return false;
    std::memcpy(Text(), text, length);
    Text()[length] = '\0';
    return true;
}

bool LineBuffer::Format(const char* format, std::va_list arguments)
{
    std::va_list again;
    va_copy(again, arguments);
    const std::size_t room = sizeof(m_few) - 1;
    const int length = std::vsnprintf(Text(), room, format, arguments);
    bool done = length >= 0 && Reserve(static_cast<std::size_t>(length));
    if (done && m_length >= room)
        done = std::vsnprintf(Text(), m_length + 1, format, again) == length;
    va_end(again);
    return done;
}

bool LineBuffer::Reserve(std::size_t length)
{
    const std::size_t size = length + 2; // the line feed and the NUL
    if (size > sizeof(m_few))
    {
        m_many.reset(new (std::nothrow) char[size]);
        if (!m_many)
            return false;
        m_buffer = m_many.get();
    }
    m_length = length;
    return true;
}

} // namespace logfiles
