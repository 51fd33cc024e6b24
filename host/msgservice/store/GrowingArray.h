// An array that one thread appends to while others read it.
#pragma once

#include <array>
#include <atomic>
#include <bit>
#include <cstdint>
#include <memory>

namespace msgservice
{

// Elements stay where they are: each piece is twice as long as the one before, and none is ever moved.
template <typename T> class GrowingArray
{
public:
    // Any thread. Elements below it may be read by the thread that asked.
    std::uint32_t Count() const { return m_count.load(std::memory_order_acquire); }

    const T& operator[](std::uint32_t index) const
    {
        const unsigned piece = PieceOf(index);
        return m_pieces[piece][index - FirstOf(piece)];
    }

    // One thread, as Append. After it the next Append takes no memory.
    void MakeRoom()
    {
        const unsigned piece = PieceOf(m_count.load(std::memory_order_relaxed));
        if (!m_pieces[piece])
            m_pieces[piece] = std::make_unique_for_overwrite<T[]>(std::size_t{1} << (piece + kFirstBits));
    }

    // Nothing has changed if memory runs out.
    void Append(const T& element)
    {
        MakeRoom();
        const std::uint32_t index = m_count.load(std::memory_order_relaxed);
        const unsigned piece = PieceOf(index);
        m_pieces[piece][index - FirstOf(piece)] = element;
        m_count.store(index + 1, std::memory_order_release);
    }

private:
    static constexpr unsigned kFirstBits = 8;
    static constexpr unsigned kPieces = 32 - kFirstBits + 1;

    static unsigned PieceOf(std::uint32_t index)
    {
        return static_cast<unsigned>(std::bit_width((std::uint64_t{index} >> kFirstBits) + 1)) - 1;
    }
    static std::uint32_t FirstOf(unsigned piece)
    {
        return static_cast<std::uint32_t>(((std::uint64_t{1} << piece) - 1) << kFirstBits);
    }

    std::array<std::unique_ptr<T[]>, kPieces> m_pieces;
    std::atomic<std::uint32_t> m_count = 0;
};

} // namespace msgservice
