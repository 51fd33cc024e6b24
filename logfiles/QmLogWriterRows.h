// The rows of a write, and the limit of a log's files.
#pragma once

#include "QmLogWriter.h"
#include "wintypes.h"

namespace logfiles
{

// Offsets are 32 bits wide, so neither file grows beyond what they reach.
constexpr std::uint64_t kMaxFileSize = 0xFFFFFFFF;

} // namespace logfiles

// What came of the rows of one write.
struct CQmLogWriter::RowsWritten
{
    // What is to be reported: the first failure stands for all of them.
    void Note(const char* message, unsigned long systemError)
    {
        if (!failure)
            error = systemError;
        failure = failure ? failure : message;
    }

    bool any = false;
    std::uint64_t begin = 0;       // where the first of them lies in the index
    unsigned long lost = 0;        // rows that could not be written
    const char* failure = nullptr; // null for none
    unsigned long error = 0;       // the system's, of that failure
};
