// Looking for bytes, 16 at a time: a loop over each of them is what writing a table would mostly consist of.
#pragma once

#include <cstddef>

#include <emmintrin.h>

namespace ZEMA
{

// The first byte of [at, end) that is one of `kBytes` or below `kBelow`; `end` if there is none.
template <unsigned char kBelow, char... kBytes> const char* FindBytes(const char* at, const char* end)
{
    for (; end - at >= 16; at += 16)
    {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
        __m128i found = _mm_setzero_si128();
        ((found = _mm_or_si128(found, _mm_cmpeq_epi8(bytes, _mm_set1_epi8(kBytes)))), ...);
        if constexpr (kBelow > 0)
        {
            const __m128i most = _mm_set1_epi8(static_cast<char>(kBelow - 1));
            found = _mm_or_si128(found, _mm_cmpeq_epi8(_mm_min_epu8(bytes, most), bytes));
        }
        if (_mm_movemask_epi8(found) != 0)
            break; // among these
    }
    const auto isWanted = [](char byte) {
        return static_cast<unsigned char>(byte) < kBelow || ((byte == kBytes) || ...);
    };
    while (at != end && !isWanted(*at))
        ++at;
    return at;
}

} // namespace ZEMA
