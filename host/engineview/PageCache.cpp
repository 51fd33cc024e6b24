#include "engineview/PageCache.h"

#include <algorithm>

namespace engineview
{

namespace
{

constexpr char kNoRow[] = "(no row has this number)";
constexpr std::size_t kMessageBytes = 600; // of a message beside its text

} // namespace

Page::Page(std::uint32_t index, const std::vector<std::uint32_t>& numbers,
           const std::vector<engine::ShippedRow>& rows)
    : m_index(index)
{
    m_messages.reserve(numbers.size());
    m_rows.reserve(numbers.size());
    std::vector<bool> isTaken(rows.size());
    for (const std::uint32_t number : numbers)
    {
        std::size_t place = static_cast<std::size_t>(
            std::lower_bound(
                rows.begin(), rows.end(), number,
                [](const engine::ShippedRow& row, std::uint32_t wanted) { return row.number < wanted; }) -
            rows.begin());
        while (place < rows.size() && rows[place].number == number && isTaken[place])
            ++place;
        const bool isThere = place < rows.size() && rows[place].number == number;
        if (!isThere)
        {
            ++m_missing;
            m_messages.emplace_back(number, kNoRow);
            m_rows.emplace_back().number = number;
            continue;
        }
        isTaken[place] = true;
        m_messages.emplace_back(rows[place]);
        m_rows.push_back(rows[place]);
        m_rows.back().text.clear();
        m_rows.back().text.shrink_to_fit();
        m_bytes += rows[place].text.size();
    }
    m_bytes += kMessageBytes * numbers.size();
}

Page* PageCache::Find(std::uint32_t index)
{
    const auto page = std::find_if(m_pages.begin(), m_pages.end(),
                                   [&](const auto& each) { return each->Index() == index; });
    if (page == m_pages.end())
        return nullptr;
    m_pages.splice(m_pages.begin(), m_pages, page);
    return page->get();
}

const Page* PageCache::Peek(std::uint32_t index) const
{
    const auto page = std::find_if(m_pages.begin(), m_pages.end(),
                                   [&](const auto& each) { return each->Index() == index; });
    return page == m_pages.end() ? nullptr : page->get();
}

void PageCache::Add(std::unique_ptr<Page> page)
{
    if (Find(page->Index()))
        Drop(m_pages.begin());
    m_bytes += page->Bytes();
    m_pages.push_front(std::move(page));
    while (m_bytes > m_mostBytes && m_pages.size() > kFew)
        Drop(std::prev(m_pages.end()));
}

void PageCache::Clear()
{
    m_pages.clear();
    m_bytes = 0;
}

void PageCache::Drop(std::list<std::unique_ptr<Page>>::iterator page)
{
    m_bytes -= (*page)->Bytes();
    m_pages.erase(page);
}

} // namespace engineview
