#include "logview/RowCache.h"

#include "logview/Branch.h"
#include "logview/RecordPages.h"
#include "zemacore/WideText.h"

#include <algorithm>
#include <numeric>

namespace logview
{

namespace
{

constexpr std::uint32_t kRowGap = 16;             // rows read in vain rather than with another read
constexpr std::uint64_t kTextTogether = 64 << 10; // bytes of text worth one read

} // namespace

void RowCache::Clear()
{
    m_rows.clear();
    m_slices.clear();
    m_text.clear();
}

const CachedRow* RowCache::Get(int row) const
{
    const std::int64_t index = std::int64_t{row} - m_first;
    if (index < 0 || index + 1 >= static_cast<std::int64_t>(m_rows.size()))
        return nullptr;
    return &m_rows[static_cast<std::size_t>(index)];
}

void RowCache::Prepare(const DisplayedRows& rows, int first, int count)
{
    Clear();
    m_first = std::max(first, 0);
    count = std::min(count, rows.RowCount() - m_first);
    if (count <= 0)
        return;

    m_rows.resize(static_cast<std::size_t>(count) + 1);
    m_slices.resize(m_rows.size());
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        m_rows[i].place =
            rows.Translate(std::int64_t{m_first} + static_cast<std::int64_t>(i), m_rows[i].depth);

    Order order(m_rows.size());
    std::iota(order.begin(), order.end(), 0u);
    std::sort(order.begin(), order.end(), [this](std::uint32_t a, std::uint32_t b) {
        const RowId& left = m_rows[a].place;
        const RowId& right = m_rows[b].place;
        return left.file != right.file ? left.file < right.file : left.row < right.row;
    });
    for (auto begin = order.cbegin(), end = begin; begin != order.cend(); begin = end)
    {
        do
            ++end;
        while (end != order.cend() && m_rows[*end].place.file == m_rows[*begin].place.file &&
               m_rows[*end].place.row - m_rows[end[-1]].place.row <= kRowGap);
        ReadRecords(begin, end);
        ReadTexts(begin, end);
    }

    for (std::size_t i = 0; i + 1 < m_rows.size(); ++i)
    {
        CachedRow& row = m_rows[i];
        const CachedRow& next = m_rows[i + 1];
        row.text = std::string_view(m_text).substr(m_slices[i].begin, m_slices[i].size);
        if (row.last)
            row.text = LastLine(row.text);
        if (row.length > kLineBytes)
            row.text = row.text.substr(0, ZEMA::WholeCharacters(row.text.data(), row.text.size()));
        row.foldable = row.readable && rows.IsFoldable({row, next.readable ? &next : nullptr,
                                                        row.last ? nullptr : &row.nextOfLog},
                                                       row.expanded);
        row.marked = row.foldable && (row.expanded || row.depth < CQmLogBranch::kMaxDepth);
    }
}

// The records of rows of one log in their order, and the one after them, which ends the last line.
void RowCache::ReadRecords(Order::const_iterator begin, Order::const_iterator end)
{
    const RowId first = m_rows[*begin].place;
    m_records.resize(std::size_t{m_rows[end[-1]].place.row - first.row} + 2);
    const unsigned long wanted = static_cast<unsigned long>(m_records.size());
    const unsigned long count =
        std::min(m_source.ReadRows(first.file, first.row, wanted, m_records.data()), wanted);

    for (auto at = begin; at != end; ++at)
    {
        CachedRow& row = m_rows[*at];
        const std::size_t index = row.place.row - first.row;
        row.readable = index < count;
        if (!row.readable)
            continue;
        row.record = m_records[index];
        row.last = index + 1 >= count;
        if (index + 1 < count)
        {
            row.nextOfLog = m_records[index + 1];
            row.length = LineLength(row.record.offset, row.nextOfLog.offset);
        }
        else if (IsDrawn(*at))
            row.length = LineLength(row.record.offset, std::uint64_t{m_source.TextSize(first.file)} + 1);
    }
}

void RowCache::ReadTexts(Order::const_iterator begin, Order::const_iterator end)
{
    const auto sizeOf = [](const CachedRow& row) { return std::min(row.length, kLineBytes); };
    std::uint64_t from = 0xFFFFFFFF;
    std::uint64_t to = 0;
    for (auto at = begin; at != end; ++at)
    {
        const CachedRow& row = m_rows[*at];
        if (!row.readable || !IsDrawn(*at))
            continue;
        from = std::min<std::uint64_t>(from, row.record.offset);
        to = std::max<std::uint64_t>(to, std::uint64_t{row.record.offset} + sizeOf(row));
    }
    if (to <= from)
        return;

    const bool together = to - from <= kTextTogether;
    const std::uint32_t file = m_rows[*begin].place.file;
    const std::size_t text = m_text.size();
    const std::size_t read =
        together ? AppendText(file, static_cast<std::uint32_t>(from), static_cast<std::uint32_t>(to - from))
                 : 0;
    for (auto at = begin; at != end; ++at)
    {
        const CachedRow& row = m_rows[*at];
        if (!row.readable || !IsDrawn(*at))
            continue;
        Slice& slice = m_slices[*at];
        slice.begin = m_text.size();
        if (together)
        {
            const std::size_t place = row.record.offset - from;
            slice.begin = text + std::min(place, read);
            slice.size = std::min<std::size_t>(sizeOf(row), read - std::min(place, read));
        }
        else
            slice.size = AppendText(file, row.record.offset, sizeOf(row));
    }
}

// Reads after what is there; answers how many bytes came.
std::size_t RowCache::AppendText(std::uint32_t file, std::uint32_t offset, std::uint32_t size)
{
    const std::size_t begin = m_text.size();
    m_text.resize(begin + size);
    const std::size_t read =
        std::min<std::size_t>(m_source.ReadText(file, offset, size, &m_text[begin]), size);
    m_text.resize(begin + read);
    return read;
}

} // namespace logview
