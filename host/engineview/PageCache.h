// The pages of a view that are in memory.
#pragma once

#include "engineview/EngineMessage.h"

#include <cstdint>
#include <list>
#include <memory>
#include <vector>

namespace engineview
{

// Rows of a view are counted from 0, and kRows of them are a page.
class Page
{
public:
    static constexpr std::uint32_t kRows = 100;

    // `numbers` are those of the page's rows in the view's order. A number that no row has gets a message
    // that says so. Of several rows with one number, which only damaged sessions have, the view counts each
    // for itself if it names the number as often, else the first is taken.
    Page(std::uint32_t index, const std::vector<std::uint32_t>& numbers,
         const std::vector<engine::ShippedRow>& rows);

    std::uint32_t Index() const { return m_index; }
    std::size_t Bytes() const { return m_bytes; }
    std::size_t Count() const { return m_messages.size(); }
    bool IsComplete() const { return m_missing == 0; }
    bool HasRow(std::uint32_t row) const { return !m_rows[row].log.empty(); } // else nobody has its number

    EngineMessage& Message(std::uint32_t row) { return m_messages[row]; }
    const engine::ShippedRow& Row(std::uint32_t row) const { return m_rows[row]; } // without its text

private:
    std::uint32_t m_index;
    std::vector<EngineMessage> m_messages;
    std::vector<engine::ShippedRow> m_rows;
    std::size_t m_missing = 0;
    std::size_t m_bytes = 0;
};

// Keeps the pages that were asked for last, as many as fit into a bound of bytes, and a few in any case.
class PageCache
{
public:
    explicit PageCache(std::size_t mostBytes = 64 << 20) : m_mostBytes(mostBytes) {}

    // Stays until Add has taken kFew others.
    Page* Find(std::uint32_t index);
    const Page* Peek(std::uint32_t index) const; // without asking for it
    void Add(std::unique_ptr<Page> page);        // in place of one with its index
    void Clear();
    std::size_t Count() const { return m_pages.size(); }

    static constexpr std::size_t kFew = 8;

private:
    void Drop(std::list<std::unique_ptr<Page>>::iterator page);

    std::size_t m_mostBytes;
    std::size_t m_bytes = 0;
    std::list<std::unique_ptr<Page>> m_pages; // the one that was asked for last comes first
};

} // namespace engineview
