// The objects that viewers are handed for messages.
#pragma once

#include "msgservice/store/StoredMessage.h"

#include <vector>

namespace msgservice
{

// One object a message, made when it is first asked for, a few hundred at a time; each stays until all are
// dropped.
class HandedOut
{
public:
    StoredMessage* Get(const MessageStore& store, std::uint32_t message)
    {
        if (message / kPiece >= m_pieces.size())
            m_pieces.resize(message / kPiece + 1);
        std::vector<StoredMessage>& piece = m_pieces[message / kPiece];
        if (piece.empty())
        {
            piece.reserve(kPiece);
            for (std::uint32_t i = 0; i < kPiece; ++i)
                piece.emplace_back(store, message / kPiece * kPiece + i);
        }
        return &piece[message % kPiece];
    }

    void Drop() { m_pieces.clear(); }

private:
    static constexpr std::uint32_t kPiece = 512;

    std::vector<std::vector<StoredMessage>> m_pieces;
};

} // namespace msgservice
