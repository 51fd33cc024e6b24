#include "logview/merge/RowTally.h"

#include <algorithm>
#include <emmintrin.h>
#include <numeric>

namespace logview
{

namespace
{

// The words of four rows behind their offsets, as they lie in a file, each in a register of its own.
struct FourRows
{
    __m128i indents, kinds, blockBegins, numbers;

    explicit FourRows(const CQmLogRow* rows)
    {
        const __m128i low = _mm_unpacklo_epi32(Words(rows[0]), Words(rows[1])); // indents and kinds
        const __m128i high = _mm_unpackhi_epi32(Words(rows[0]), Words(rows[1]));
        const __m128i nextLow = _mm_unpacklo_epi32(Words(rows[2]), Words(rows[3]));
        const __m128i nextHigh = _mm_unpackhi_epi32(Words(rows[2]), Words(rows[3]));
        indents = _mm_unpacklo_epi64(low, nextLow);
        kinds = _mm_unpackhi_epi64(low, nextLow);
        blockBegins = _mm_unpacklo_epi64(high, nextHigh);
        numbers = _mm_unpackhi_epi64(high, nextHigh);
    }

    static __m128i Words(const CQmLogRow& row)
    {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(&row.indent));
    }
};

__m128i All(std::uint32_t word)
{
    return _mm_set1_epi32(static_cast<int>(word));
}

// Counts four rows in each step: their classes in four words, and the lowest depths in the first byte of each
// word. The other bytes stay 0, whatever the padding holds.
class FourTallies
{
public:
    void Add(const FourRows& rows)
    {
        const __m128i inner =
            _mm_cmpeq_epi32(_mm_and_si128(rows.blockBegins, All(0xFF)), All(0)); // no headers
        const __m128i errors = _mm_cmpeq_epi32(rows.kinds, All(kErrorKind));
        m_notices = _mm_sub_epi32(m_notices, _mm_cmpeq_epi32(rows.kinds, All(kNoticeKind)));
        m_details = _mm_sub_epi32(m_details, _mm_cmpeq_epi32(rows.kinds, All(kDetailKind)));
        m_errors = _mm_sub_epi32(m_errors, _mm_and_si128(errors, inner));
        m_errorHeaders = _mm_sub_epi32(m_errorHeaders, _mm_andnot_si128(inner, errors));
        m_lowest = _mm_min_epu8(m_lowest, rows.indents);
        const __m128i above = _mm_sub_epi8(rows.indents, All(1)); // depth 0 becomes the greatest
        m_lowestHeader = _mm_min_epu8(m_lowestHeader, _mm_or_si128(above, inner));
    }

    void AddTo(RowTally& tally, std::uint32_t rows) const
    {
        const std::uint32_t notices = Sum(m_notices);
        const std::uint32_t errorHeaders = Sum(m_errorHeaders);
        const std::uint32_t errors = Sum(m_errors);
        const std::uint32_t details = Sum(m_details);
        tally.counts[kPlainRow] += rows - notices - errorHeaders - errors - details;
        tally.counts[kNoticeRow] += notices;
        tally.counts[kErrorHeader] += errorHeaders;
        tally.counts[kErrorRow] += errors;
        tally.counts[kDetailRow] += details;
        tally.lowest = std::min(tally.lowest, Lowest(m_lowest));
        const std::uint8_t above = Lowest(m_lowestHeader);
        if (above != 0xFF)
            tally.lowestHeader = std::min(tally.lowestHeader, static_cast<std::uint8_t>(above + 1));
    }

private:
    struct Words
    {
        std::uint32_t words[4];

        explicit Words(__m128i from) { _mm_storeu_si128(reinterpret_cast<__m128i*>(words), from); }
    };

    static std::uint32_t Sum(__m128i counts)
    {
        const Words all(counts);
        return std::accumulate(std::begin(all.words), std::end(all.words), 0u);
    }

    static std::uint8_t Lowest(__m128i depths)
    {
        std::uint32_t lowest = 0xFF;
        for (const std::uint32_t word : Words(depths).words)
            lowest = std::min(lowest, word);
        return static_cast<std::uint8_t>(lowest);
    }

    __m128i m_notices = _mm_setzero_si128();
    __m128i m_details = _mm_setzero_si128();
    __m128i m_errors = _mm_setzero_si128();
    __m128i m_errorHeaders = _mm_setzero_si128();
    __m128i m_lowest = All(0xFF);
    __m128i m_lowestHeader = All(0xFF);
};

} // namespace

RowClass ClassOf(const CQmLogRow& row)
{
    switch (row.kind)
    {
    case kNoticeKind:
        return kNoticeRow;
    case kErrorKind:
        return row.blockBegin != 0 ? kErrorHeader : kErrorRow;
    case kDetailKind:
        return kDetailRow;
    default:
        return kPlainRow;
    }
}

void RowTally::Add(const CQmLogRow& row)
{
    ++counts[ClassOf(row)];
    lowest = std::min(lowest, row.indent);
    if (row.blockBegin != 0 && row.indent > 0)
        lowestHeader = std::min(lowestHeader, row.indent);
}

const CQmLogRow* RowTally::AddBelow(const CQmLogRow* row, const CQmLogRow* end, std::uint64_t number)
{
    if (number == 0)
        return row;
    // Compared as signed words, which these instructions know, with the range moved down.
    constexpr std::uint32_t kLeast = 0x80000000;
    const std::uint32_t greatest =
        static_cast<std::uint32_t>(std::min<std::uint64_t>(number - 1, 0xFFFFFFFF));
    const __m128i limit = All(greatest ^ kLeast);
    FourTallies four;
    const CQmLogRow* const first = row;
    for (; end - row >= 4; row += 4)
    {
        const FourRows rows(row);
        if (_mm_movemask_epi8(_mm_cmpgt_epi32(_mm_xor_si128(rows.numbers, All(kLeast)), limit)) != 0)
            break;
        four.Add(rows);
    }
    four.AddTo(*this, static_cast<std::uint32_t>(row - first));
    for (; row != end && row->time <= greatest; ++row)
        Add(*row);
    return row;
}

} // namespace logview
