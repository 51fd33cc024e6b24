// A text with a number in it that is most often a little more than it was before.
#pragma once

#include "logtool/ExportBuffer.h"

#include <cstdint>
#include <utility>

namespace logtool
{

// Fields of a row that seldom change, around the one that always does: of a number that counts on only the
// last digits are written again. It has 18 digits at most.
class CountedText
{
public:
    // Empties the text. What is appended to the answer precedes the number.
    ExportBuffer& Begin()
    {
        m_text.Clear();
        return m_text;
    }

    // What is appended to the text after it follows the number.
    void AppendNumber(std::uint64_t number)
    {
        const std::size_t begin = m_text.Size();
        m_text.AppendNumber(number);
        m_number = number;
        m_end = m_text.Size();
        m_least = m_limit = 1;
        for (std::size_t i = begin; i < m_end; ++i)
        {
            m_least = m_limit;
            m_limit *= 10;
        }
    }

    // Whether PutTo can put that number: one with as many digits as the last.
    bool CanCount(std::uint64_t number) const { return number >= m_least && number < m_limit; }

    // Puts the text with this number into room that was reserved. The digits are written where they are kept
    // and where they go: a copy of bytes that have just been written one by one would wait for them.
    void PutTo(ExportBuffer& to, std::uint64_t number)
    {
        char* put = to.Put(m_text.Bytes()) + m_end;
        char* kept = m_text.Data() + m_end;
        for (std::uint64_t before = std::exchange(m_number, number), left = number; left != before;
             left /= 10, before /= 10)
            *--put = *--kept = static_cast<char>('0' + left % 10);
    }

    std::size_t Size() const { return m_text.Size(); }

private:
    ExportBuffer m_text;
    std::size_t m_end = 0; // of the digits
    std::uint64_t m_number = 0;
    std::uint64_t m_least = 0; // of the numbers with as many digits
    std::uint64_t m_limit = 0; // the first with more
};

} // namespace logtool
