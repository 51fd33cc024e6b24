#include "report/model/CallbackItems.h"

#include "report/model/CellCodec.h"
#include "report/model/Record.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <emmintrin.h>

namespace report
{

namespace
{

constexpr std::size_t kTextMax = 65536;
constexpr std::size_t kBuffer = kTextMax + 1;
constexpr std::size_t kChunk = 512;

// Four steps at a time, which do not wait for each other.
bool IsZero(const char* chunk)
{
    const auto bytes = [chunk](std::size_t at) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(chunk + at));
    };
    __m128i any = _mm_setzero_si128();
    for (std::size_t i = 0; i < kChunk; i += 64)
        any = _mm_or_si128(any, _mm_or_si128(_mm_or_si128(bytes(i), bytes(i + 16)),
                                             _mm_or_si128(bytes(i + 32), bytes(i + 48))));
    return _mm_movemask_epi8(_mm_cmpeq_epi8(any, _mm_setzero_si128())) == 0xFFFF;
}

// Makes a chunk NUL again. False if nobody has written to it.
bool Clear(char* chunk)
{
    if (IsZero(chunk))
        return false;
    std::memset(chunk, 0, kChunk);
    return true;
}

// Makes the buffer NUL again. Clearing 64 KiB would cost more than the rest of a cell, so it goes from both
// ends to the first chunk that nobody has written to: some put digits or a terminator at the end.
char* ClearedText(std::vector<char>& text)
{
    if (text.empty())
        text.resize(kBuffer);
    char* const begin = text.data();
    char* const end = begin + kBuffer;
    for (char* chunk = begin; chunk + kChunk <= end && Clear(chunk); chunk += kChunk)
    {
    }
    for (char* chunk = end - kChunk; chunk >= begin && Clear(chunk); chunk -= kChunk)
    {
    }
    return begin;
}

// Makes a record one of an item of which nothing is known. Its memory is used again.
void Reset(Item& record, const ZEMA::String& cells)
{
    record.cells.assign(cells.c_str(), cells.GetLength());
    record.backgroundColor = record.treeLevel = record.previewTextColor = -1;
    record.previewHeight = 0;
    record.state = 0;
    record.itemData = 0;
    record.previewText.assign("", 0);
    record.treeItem = nullptr;
}

} // namespace

class CallbackItems::Entered
{
public:
    explicit Entered(std::size_t& depth) : m_depth(depth) { ++m_depth; }
    ~Entered() { --m_depth; }
    Entered(const Entered&) = delete;
    Entered& operator=(const Entered&) = delete;

private:
    std::size_t& m_depth;
};

CallbackItems::Level& CallbackItems::Current()
{
    if (m_levels.size() <= m_depth)
        m_levels.resize(m_depth + 1);
    return m_levels[m_depth];
}

// The cells of an item of which nothing is known, made once for many items.
const ZEMA::String& CallbackItems::UndefinedCells(int fields)
{
    if (m_fields != fields || m_field != UndefinedField())
    {
        ResetCells(m_undefined, fields);
        m_fields = fields;
        m_field = UndefinedField();
    }
    return m_undefined;
}

Item* CallbackItems::Fetch(int item, int subitem, unsigned mask, int fields)
{
    Item& record = Current().item;
    Reset(record, UndefinedCells(fields));
    const Entered entered(m_depth);
    return m_overrides.LoadItemData(record, item, subitem, mask | RVIM_TEXTCOLOR) ? &record : nullptr;
}

bool CallbackItems::Load(Item& record, int item, int subitem, unsigned mask)
{
    _RVITEM question;
    question.item = item;
    question.subitem = subitem;
    question.mask = mask;
    if (subitem >= -1)
    {
        question.mask |= RVIM_TEXT;
        question.text = ClearedText(Current().text);
        question.textMax = static_cast<int>(kTextMax);
    }
    const Entered entered(m_depth);
    if (!m_overrides.AskOwner(question))
        return false;

    const auto value = [&question](unsigned bit, auto field, auto none) {
        return (question.mask & bit) != 0 ? field : none;
    };
    const Cell cell = CellOf(question, kTextMax);
    record.backgroundColor = value(RVIM_BACKGROUNDCOLOR, question.backgroundColor, -1);
    record.previewHeight = value(RVIM_PREVIEWHEIGHT, question.previewHeight, 0);
    record.treeLevel = value(RVIM_TREELEVEL, question.treeLevel, -1);
    record.state = value(RVIM_STATE, question.state, 0u);
    record.itemData = value(RVIM_ITEMDATA, question.itemData, std::int64_t{0});
    record.previewText.assign(cell.text.data(), cell.text.size());
    record.previewTextColor = cell.textColor;
    if (subitem >= 0)
        WriteCell(record.cells, subitem, cell);
    return true;
}

} // namespace report
