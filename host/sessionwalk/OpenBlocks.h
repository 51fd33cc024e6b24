// Which blocks are open while the rows of several logs go by in the order of their sequence numbers.
#pragma once

#include "QmLogRow.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace sessionwalk
{

// A block begins with a header: a row with a block mark and a depth above 0. It ends when its own log has a
// row of lower depth, or any log a header of its depth or a lower one, because depth counts over all logs.
// Its parent is the block opened last, in whichever log, that is still open and of lower depth. So the open
// blocks in the order in which they were opened have ascending depths: there is one of each depth at most.
//
// Takes any rows, damaged ones as well.
class OpenBlocks
{
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    struct Block
    {
        std::uint32_t id = kNone;     // as the caller has it
        std::uint32_t parent = kNone; // the id of the block that it was opened in
        std::uint32_t log = 0;
        std::uint8_t indent = 0;
        bool operator==(const Block&) const = default;
    };

    explicit OpenBlocks(std::size_t logs) { SetLogCount(logs); }
    void SetLogCount(std::size_t logs); // only ever more

    static bool IsHeader(const CQmLogRow& row) { return row.blockBegin != 0 && row.indent > 0; }

    // Whether `row` begins or ends blocks; few do.
    bool IsEdge(std::size_t log, const CQmLogRow& row) const
    {
        const std::size_t own = m_innermost[log];
        return row.blockBegin != 0 || (own > 0 && row.indent < m_open[own - 1].indent);
    }

    // Ends what `row` of `log` ends, and if it is a header opens its block, which gets `id`. `ended` is
    // called with each block that has ended, inner ones first.
    template <class Ended>
    void Add(std::size_t log, const CQmLogRow& row, std::uint32_t id, const Ended& ended)
    {
        if (!IsEdge(log, row))
            return;
        EndIf([&](const Block& block) { return EndsOwn(log, row, block) || EndsAny(row, block); }, ended);
        if (IsHeader(row))
            Open(
                {id, m_open.empty() ? kNone : m_open.back().id, static_cast<std::uint32_t>(log), row.indent});
    }

    // Ends blocks of the row's own log only.
    template <class Ended> void EndOwn(std::size_t log, const CQmLogRow& row, const Ended& ended)
    {
        EndIf([&](const Block& block) { return EndsOwn(log, row, block); }, ended);
    }

    // The block that a row of `log` belongs to, if it came now: the innermost one of its own log, or if there
    // is none, of all. Null when none is open.
    const Block* Innermost(std::size_t log) const
    {
        if (m_open.empty())
            return nullptr;
        return m_innermost[log] > 0 ? &m_open[m_innermost[log] - 1] : &m_open.back();
    }

    // In the order in which they were opened.
    const std::vector<Block>& All() const { return m_open; }
    bool IsOpen(std::uint32_t id) const;

    // Opens a block in all that are open; its depth must be above theirs.
    void Open(const Block& block);

private:
    static bool EndsOwn(std::size_t log, const CQmLogRow& row, const Block& block)
    {
        return block.log == log &&
               (row.indent < block.indent || (row.indent == block.indent && row.blockBegin != 0));
    }
    static bool EndsAny(const CQmLogRow& row, const Block& block)
    {
        return IsHeader(row) && row.indent <= block.indent;
    }

    template <class Condition, class Ended> void EndIf(const Condition& condition, const Ended& ended)
    {
        bool any = false;
        for (std::size_t i = m_open.size(); i > 0; --i)
        {
            if (!condition(m_open[i - 1]))
                continue;
            const Block block = m_open[i - 1];
            m_open.erase(m_open.begin() + static_cast<std::ptrdiff_t>(i - 1));
            any = true;
            ended(block);
        }
        if (any)
            FindInnermost();
    }

    void FindInnermost();

    std::vector<Block> m_open;
    std::vector<std::size_t> m_innermost; // of each log, counted from 1; 0 when it has none
};

// The blocks that are open after the rows of `logs` with numbers up to `number`, their ids being the numbers
// of their headers. Reads the indexes backwards from there, and only as far as an open block may have begun:
// to the header of the outermost one, or to where each log has a row outside of all blocks.
OpenBlocks FindOpenBlocks(const std::vector<std::string>& logs, std::uint32_t number);

} // namespace sessionwalk
