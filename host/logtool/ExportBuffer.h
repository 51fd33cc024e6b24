// What an export has put together and not written yet.
#pragma once

#include "logtool/TextOutput.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <emmintrin.h>
#include <string_view>
#include <vector>

namespace logtool
{

// To append to a string costs a call for each piece, and a row has many: Reserve makes room for all of them,
// and Put only copies.
class ExportBuffer
{
public:
    // Makes room for so many bytes more.
    void Reserve(std::size_t most)
    {
        if (m_bytes.size() - m_size < most)
            m_bytes.resize(2 * (m_size + most));
    }

    // In room that was reserved. Answers where, until there is more room.
    char* Put(std::string_view text)
    {
        char* const to = m_bytes.data() + m_size;
        Copy(to, text.data(), text.size());
        m_size += text.size();
        return to;
    }

    // In room that was reserved, puts a text that is ASCII and has nothing that JSON escapes. False, with
    // nothing put, for any other.
    bool PutPlain(std::string_view text)
    {
        __m128i found = _mm_setzero_si128();
        const std::size_t size = text.size();
        if (size < 16)
        {
            std::array<char, 16> bytes;
            bytes.fill(' ');
            Copy(bytes.data(), text.data(), size);
            found = CopyStep(bytes.data(), bytes.data());
        }
        else
        {
            char* const to = m_bytes.data() + m_size;
            for (std::size_t i = 0; i + 16 <= size; i += 16)
                found = _mm_or_si128(found, CopyStep(to + i, text.data() + i));
            found = _mm_or_si128(found, CopyStep(to + size - 16, text.data() + size - 16));
        }
        if (_mm_movemask_epi8(found) != 0)
            return false;
        if (size < 16)
            Copy(m_bytes.data() + m_size, text.data(), size);
        m_size += size;
        return true;
    }

    void Append(std::string_view text)
    {
        Reserve(text.size());
        Put(text);
    }

    void AppendNumber(std::uint64_t number)
    {
        constexpr std::size_t kMostDigits = 20;
        Reserve(kMostDigits);
        char* const to = m_bytes.data() + m_size;
        m_size += static_cast<std::size_t>(std::to_chars(to, to + kMostDigits, number).ptr - to);
    }

    std::string_view Bytes() const { return {m_bytes.data(), m_size}; }
    char* Data() { return m_bytes.data(); }
    std::size_t Size() const { return m_size; }
    void Clear() { m_size = 0; }

private:
    // Copies 16 bytes and answers which of them JSON escapes or are beyond ASCII: as signed numbers those are
    // below a blank, as control characters are.
    static __m128i CopyStep(char* to, const char* from)
    {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to), bytes);
        return _mm_or_si128(_mm_cmplt_epi8(bytes, _mm_set1_epi8(' ')),
                            _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('"')),
                                         _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\\'))));
    }

    std::vector<char> m_bytes; // m_size of them, then room
    std::size_t m_size = 0;
};

} // namespace logtool
