#include "msgservice/store/TextPool.h"

#include <algorithm>

namespace msgservice
{

char* Arena::Take(std::size_t size)
{
    if (size > m_room)
    {
        const std::size_t block = std::max(size, kBlock);
        m_blocks.reserve(m_blocks.size() + 1);
        m_blocks.push_back(std::make_unique_for_overwrite<char[]>(block));
        if (block - size < m_room) // a large piece leaves the rest of the block before it in use
            return m_blocks.back().get();
        m_next = m_blocks.back().get();
        m_room = block;
    }
    char* const taken = m_next;
    m_next += size;
    m_room -= size;
    return taken;
}

TextPool::TextPool()
{
    Add("");
}

std::uint32_t TextPool::Add(std::string_view text)
{
    if (const auto found = m_numbers.find(text); found != m_numbers.end())
        return found->second;

    char* const copy = m_arena.Take(text.size() + 1);
    std::copy(text.begin(), text.end(), copy);
    copy[text.size()] = '\0';
    const std::string_view kept(copy, text.size());
    const std::uint32_t number = m_texts.Count();
    const auto entry = m_numbers.emplace(kept, number).first;
    try
    {
        m_texts.Append(kept);
    }
    catch (...)
    {
        m_numbers.erase(entry);
        throw;
    }
    return number;
}

} // namespace msgservice
