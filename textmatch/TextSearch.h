// Looking for one text in many, quickly on every system.
#pragma once

#include <bit>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include <emmintrin.h>

namespace textmatch
{

// Looks for it byte by byte, without regard to the case of ASCII letters if that is wanted.
class TextSearch
{
public:
    enum class Case
    {
        Kept,
        Ignored
    };

    TextSearch(std::string text, Case letterCase) : m_text(std::move(text)), m_case(letterCase)
    {
        if (m_case == Case::Ignored)
            for (char& byte : m_text)
                byte = Lower(byte);
        if (!m_text.empty())
        {
            m_first = Wanted(m_text.front());
            m_last = Wanted(m_text.back());
        }
    }

    // Whether the text occurs in `where`; the empty one does everywhere.
    bool IsIn(std::string_view where) const
    {
        if (m_text.size() > where.size())
            return false;
        if (m_text.empty())
            return true;
        const char* at = where.data();
        const char* const end = at + (where.size() - m_text.size() + 1); // of where it can begin
        for (; end - at >= kStep; at += kStep)
            if (IsWithin(at))
                return true;
        if (end - where.data() >= kStep)
            return at != end && IsWithin(end - kStep);
        while (at != end && !IsAt(at))
            ++at;
        return at != end;
    }

private:
    static constexpr std::ptrdiff_t kStep = 16;

    // A byte to look for: what other bytes are set to before they are compared with it.
    struct Byte
    {
        char byte = 0;
        char setBits = 0;
    };

    static bool IsLetter(char byte) { return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z'); }
    static char Lower(char byte) { return IsLetter(byte) ? static_cast<char>(byte | 0x20) : byte; }

    // The bit alone tells the cases of a letter apart.
    Byte Wanted(char byte) const
    {
        const bool isBoth = m_case == Case::Ignored && IsLetter(byte);
        return {byte, static_cast<char>(isBoth ? 0x20 : 0)};
    }

    static __m128i Matches(const char* bytes, Byte wanted)
    {
        const __m128i found = _mm_or_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes)),
                                           _mm_set1_epi8(wanted.setBits));
        return _mm_cmpeq_epi8(found, _mm_set1_epi8(wanted.byte));
    }

    // Whether it begins with one of the next bytes. Few places have its first and its last byte.
    bool IsWithin(const char* at) const
    {
        const __m128i both = _mm_and_si128(Matches(at, m_first), Matches(at + m_text.size() - 1, m_last));
        for (auto found = static_cast<unsigned>(_mm_movemask_epi8(both)); found != 0; found &= found - 1)
            if (IsAt(at + std::countr_zero(found)))
                return true;
        return false;
    }

    bool IsAt(const char* at) const
    {
        if (m_case == Case::Kept)
            return std::memcmp(at, m_text.data(), m_text.size()) == 0;
        for (std::size_t i = 0; i < m_text.size(); ++i)
            if (Lower(at[i]) != m_text[i])
                return false;
        return true;
    }

    std::string m_text;
    Case m_case;
    Byte m_first;
    Byte m_last;
};

} // namespace textmatch
