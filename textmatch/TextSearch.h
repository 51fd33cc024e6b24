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

    // Where the text first occurs; npos if it does not. The empty one occurs everywhere.
    std::size_t Find(std::string_view where) const
    {
        if (m_text.size() > where.size())
            return std::string_view::npos;
        const char* at = where.data();
        const char* const end = at + (where.size() - m_text.size() + 1); // of where it can begin
        if (m_text.empty())
            return 0;
        for (; end - at >= kStep; at += kStep)
            if (const char* const found = FindWithin(at))
                return static_cast<std::size_t>(found - where.data());
        if (end - where.data() >= kStep) // what is left, and some of what was looked at
        {
            const char* const found = at == end ? nullptr : FindWithin(end - kStep);
            return found ? static_cast<std::size_t>(found - where.data()) : std::string_view::npos;
        }
        while (at != end && !IsAt(at))
            ++at;
        return at != end ? static_cast<std::size_t>(at - where.data()) : std::string_view::npos;
    }
    bool IsIn(std::string_view where) const { return Find(where) != std::string_view::npos; }

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

    // Where it begins within the next bytes; null if it does not. Few places have its first and its last
    // byte.
    const char* FindWithin(const char* at) const
    {
        const __m128i both = _mm_and_si128(Matches(at, m_first), Matches(at + m_text.size() - 1, m_last));
        for (auto found = static_cast<unsigned>(_mm_movemask_epi8(both)); found != 0; found &= found - 1)
            if (IsAt(at + std::countr_zero(found)))
                return at + std::countr_zero(found);
        return nullptr;
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
