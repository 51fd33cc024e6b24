// The row record of a log: one line's place, depth, kind and sequence number.
#pragma once

#include <cstddef>
#include <cstdint>

// What a block holds; a viewer colours lines by it. Any other value below kEnclosingKind is a host's own.
enum QmLogBlockKind : std::uint32_t
{
    kPlainKind = 0,
    kNoticeKind = 1,
    kErrorKind = 2, // what "next error" seeks
    kDetailKind = 3,
    kEnclosingKind = 0xFFFFFFFF, // only when a block is opened: the kind of the enclosing block; never stored
};

// One record of a "ROW" file, in memory and on disk alike: little-endian, 20 bytes, no header.
// Record i lies at byte i * 20 and describes line i; docs/file-format.md has the whole format.
struct CQmLogRow
{
    std::uint32_t offset = 0;         // bytes from the beginning of the "LOG" file to the line
    std::uint8_t indent = 0;          // depth of the enclosing block
    std::uint8_t padding[3] = {};     // readers ignore it
    QmLogBlockKind kind = kPlainKind; // of the block the line belongs to
    std::uint8_t blockBegin = 1;      // 1: the line is the header of a block; 0: it is not
    std::uint8_t morePadding[3] = {}; // readers ignore it
    std::uint32_t time = 0;           // sequence number, increasing over all logs of a folder
};

static_assert(sizeof(CQmLogRow) == 20 && offsetof(CQmLogRow, indent) == 4 && offsetof(CQmLogRow, kind) == 8 &&
                  offsetof(CQmLogRow, blockBegin) == 12 && offsetof(CQmLogRow, time) == 16,
              "CQmLogRow must lie in memory as it does in files");
