#include "logview/find/FindMatches.h"

#include <algorithm>
#include <utility>

namespace logview
{

namespace
{

bool ComesBefore(const FoundMatch& left, const FoundMatch& right)
{
    return left.number < right.number;
}

} // namespace

void FindMatches::Clear()
{
    m_before.clear();
    m_after.clear();
}

void FindMatches::Add(Matches& list, const Matches& matches)
{
    const std::size_t count = std::min(matches.size(), kMost - std::min(kMost, Count()));
    const auto old = static_cast<std::ptrdiff_t>(list.size());
    list.insert(list.end(), matches.begin(), matches.begin() + static_cast<std::ptrdiff_t>(count));
    if (old > 0 && count > 0 &&
        ComesBefore(list[static_cast<std::size_t>(old)], list[static_cast<std::size_t>(old) - 1]))
        std::inplace_merge(list.begin(), list.begin() + old, list.end(), ComesBefore);
}

void FindMatches::Remove(std::uint32_t file, std::uint32_t row)
{
    for (Matches* const list : {&m_before, &m_after})
        std::erase_if(*list, [=](const FoundMatch& match) { return match.file == file && match.row >= row; });
}

const FoundMatch& FindMatches::At(std::size_t index) const
{
    return index < m_before.size() ? m_before[index] : m_after[index - m_before.size()];
}

std::size_t FindMatches::CountBefore(std::uint64_t number) const
{
    const auto countIn = [=](const Matches& list) {
        return static_cast<std::size_t>(
            std::partition_point(list.begin(), list.end(),
                                 [=](const FoundMatch& match) { return match.number < number; }) -
            list.begin());
    };
    return countIn(m_before) + countIn(m_after);
}

std::size_t FindMatches::IndexOf(std::uint32_t number, std::uint32_t file, std::uint32_t row) const
{
    for (std::size_t index = CountBefore(number); index < Count() && At(index).number == number; ++index)
        if (At(index).file == file && At(index).row == row)
            return index;
    return Count();
}

std::vector<std::uint32_t> FindMatches::CountStretches(std::uint32_t first, std::uint32_t last,
                                                       std::size_t stretches) const
{
    std::vector<std::uint32_t> counts(stretches);
    const std::uint64_t numbers = std::uint64_t{last} - std::min(first, last) + 1;
    std::size_t before = CountBefore(first);
    for (std::size_t i = 0; i < stretches; ++i)
    {
        const std::size_t behind = CountBefore(first + (numbers * (i + 1) + stretches - 1) / stretches);
        counts[i] = static_cast<std::uint32_t>(behind - before);
        before = behind;
    }
    return counts;
}

} // namespace logview
