// The clock of a process: notes the times of numbers in "Log.TIM".
#pragma once

#include <cstdint>

namespace logfiles
{

// Whether the clock is on. All below do nothing while it is off, and are called by whoever holds the lock of
// the counters: that keeps writers of the file apart. The thread's last error stays as it is.
bool AreTimesOn();

// `number` was taken just now, at `depth`. Noted if it is time for it.
void NoteNumber(std::uint32_t number, std::uint8_t depth);

// A block begins: the next number is its header's, and is noted in any case.
void NoteBlockBegin();

// A block has ended after `number`, the last one given out; `depth` is that of the block around it.
void NoteBlockEnd(std::uint32_t number, std::uint8_t depth);

// Closes the file; the next time opens it again.
void CloseTimes();

} // namespace logfiles
