// A long text that grows piece by piece.
#pragma once

#include <algorithm>
#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

namespace logview
{

// Growing moves nothing that is there, so that adding to a text of any length takes no time to speak of; nor
// does writing it elsewhere, a piece at a time.
template <typename Char> class TextPieces
{
public:
    static constexpr std::size_t kPieceSize = 128 * 1024; // characters; a longer text is a piece of its own

    void Append(std::basic_string_view<Char> text)
    {
        if (text.empty())
            return;
        if (m_pieces.empty() || m_pieces.back().size() + text.size() > kPieceSize)
            m_pieces.emplace_back().reserve(std::max(kPieceSize, text.size()));
        m_pieces.back() += text;
        m_size += text.size();
    }

    std::size_t Size() const { return m_size; } // of all that was appended

    // Writes the first piece that is left to `room`, which moves on, and lets go of it. False if none is
    // left.
    bool WriteNext(Char*& room)
    {
        if (m_pieces.empty())
            return false;
        room = std::copy(m_pieces.front().begin(), m_pieces.front().end(), room);
        m_pieces.pop_front();
        return true;
    }

private:
    std::deque<std::basic_string<Char>> m_pieces;
    std::size_t m_size = 0;
};

} // namespace logview
