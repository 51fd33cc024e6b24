// A row of a session with all that other tools may want to know of it.
#pragma once

#include "QmLogTimes.h"
#include "sessionwalk/OpenBlocks.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sessionwalk
{

constexpr std::uint32_t kNoBlock = OpenBlocks::kNone;

// A block that has ended, its id being the number of its header.
struct EndedBlock
{
    OpenBlocks::Block block;
    std::uint32_t number = 0;           // of the row that has ended it
    std::optional<QmLogTimeValue> time; // when it ended, where its writer noted that after the row before
};

// Valid until the next row.
struct WalkedRow
{
    std::size_t log = 0;               // position of its log among all
    const std::string* name = nullptr; // of that log
    std::uint32_t number = 0;
    std::optional<QmLogTimeValue>
        time; // when the number was taken, or up to 10 ms before; none without a clock
    std::uint8_t depth = 0;
    QmLogBlockKind kind = kPlainKind;
    bool isHeader = false;           // of a block
    std::uint32_t block = kNoBlock;  // number of its block's header, which may be itself
    std::uint32_t parent = kNoBlock; // number of the header of the block around that block
    std::string_view text;           // all of it, any bytes; without the line feed that ends it
    std::size_t skip = 0;            // bytes of it that were told before: the line has grown since
    const std::vector<EndedBlock>* ended = nullptr; // blocks that have ended since the row before
};

} // namespace sessionwalk
