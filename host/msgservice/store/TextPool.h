// Texts that many messages share, each kept once.
#pragma once

#include "msgservice/store/GrowingArray.h"

#include <cstddef>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace msgservice
{

// Memory that is given out piece by piece and only ever given back as a whole.
class Arena
{
public:
    // Room for `size` bytes, without alignment.
    char* Take(std::size_t size);

private:
    static constexpr std::size_t kBlock = 1024 * 1024;

    std::vector<std::unique_ptr<char[]>> m_blocks;
    char* m_next = nullptr;
    std::size_t m_room = 0;
};

// One thread adds texts while others read them.
class TextPool
{
public:
    TextPool();

    // The number of the text: numbers count up from 0, which is the empty text.
    std::uint32_t Add(std::string_view text);

    // Any thread. A NUL follows the text.
    std::string_view Text(std::uint32_t number) const { return m_texts[number]; }
    std::uint32_t Count() const { return m_texts.Count(); }

private:
    Arena m_arena;
    GrowingArray<std::string_view> m_texts;
    std::unordered_map<std::string_view, std::uint32_t> m_numbers;
};

} // namespace msgservice
