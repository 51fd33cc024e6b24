// Looking at bytes, quickly on every system: the run-time library of some looks at them one by one.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include <emmintrin.h>

namespace textmatch
{

// The first `byte` from `at` on; `end` if there is none.
inline const char* FindByte(const char* at, const char* end, char byte)
{
    const __m128i wanted = _mm_set1_epi8(byte);
    for (; end - at >= 16; at += 16)
    {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
        const int found = _mm_movemask_epi8(_mm_cmpeq_epi8(bytes, wanted));
        if (found != 0)
            return at + std::countr_zero(static_cast<unsigned>(found));
    }
    while (at != end && *at != byte)
        ++at;
    return at;
}

// Whether two texts of `size` bytes are the same; for short ones.
inline bool SameBytes(const char* a, const char* b, std::size_t size)
{
    const auto differ = [&](std::size_t at) {
        std::uint64_t first = 0;
        std::uint64_t second = 0;
        std::memcpy(&first, a + at, sizeof(first));
        std::memcpy(&second, b + at, sizeof(second));
        return first != second;
    };
    if (size < sizeof(std::uint64_t))
    {
        while (size > 0 && a[size - 1] == b[size - 1])
            --size;
        return size == 0;
    }
    for (std::size_t at = 0; at + sizeof(std::uint64_t) <= size; at += sizeof(std::uint64_t))
        if (differ(at))
            return false;
    return !differ(size - sizeof(std::uint64_t));
}

} // namespace textmatch
