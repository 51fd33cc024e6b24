// What both walks make of a row that a log has.
#pragma once

#include "msgservice/session/LogStream.h"
#include "sessionwalk/WalkedRow.h"

namespace sessionwalk
{

// Has `open` begin and end what the row does. `before` is the number of the row before it, 0 if that is not
// known; `times` may be null.
inline void TakeBlocks(const msgservice::LogEntry& entry, std::uint32_t before, const CQmLogTimes* times,
                       OpenBlocks& open, std::vector<EndedBlock>& ended)
{
    open.Add(entry.log, entry.row, entry.row.time, [&](const OpenBlocks::Block& block) {
        QmLogTimeValue end = 0;
        const bool isKnown =
            times && before > 0 && times->FindBlockEnd(block.indent, before, entry.row.time, end);
        ended.push_back({block, entry.row.time, isKnown ? std::optional(end) : std::nullopt});
    });
}

inline void PutRow(const msgservice::LogEntry& entry, const std::string& name, WalkedRow& row)
{
    row.log = entry.log;
    row.name = &name;
    row.number = entry.row.time;
    row.depth = entry.row.indent;
    row.kind = entry.row.kind;
    row.isHeader = OpenBlocks::IsHeader(entry.row);
    row.text = entry.text.substr(0, entry.text.size() - (entry.text.ends_with('\n') ? 1 : 0));
}

inline void PutBlock(const OpenBlocks::Block* block, WalkedRow& row)
{
    row.block = block ? block->id : kNoBlock;
    row.parent = block ? block->parent : kNoBlock;
}

// Of a number before the first sample the time is not known.
inline void PutTime(const CQmLogTimes& times, WalkedRow& row)
{
    QmLogTime time;
    row.time = times.TimeOf(row.number, time) ? std::optional(time.time) : std::nullopt;
}

} // namespace sessionwalk
