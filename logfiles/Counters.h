// The counters of a log folder: the file "Log.DAT" with the last sequence number and the block depth.
#pragma once

#include <cstdint>

namespace logfiles
{

// Every operation locks the whole file, reads it, writes it back when it changes it, and unlocks. Opening
// and locking are tried until they succeed, without a time limit. The file is open from the first use to
// CloseCounters, through one handle for queries and one for updates.
//
// A failed read or write is reported and the operation goes on: with zeros, and with the value computed. A
// failed seek is reported, answers 0 and leaves the file locked until CloseCounters or the end of the
// process: everyone, this process included, waits meanwhile. All this is deliberate: viewers rely on a lost
// counter being noticed rather than passed over. Messages that name another operation are part of the
// behaviour. Without a path for the file, every operation answers 0 and waits for nothing.

std::int32_t GlobalTimeGet();
std::uint8_t GlobalIndentGet();

// The new depth, modulo 256.
std::uint8_t GlobalIndentIncrement();
std::uint8_t GlobalIndentDecrement();

// Takes `count` (at least 1) consecutive sequence numbers, modulo 2^32, in one lock cycle; `first` receives
// the first. Answers how many were taken: all, or one when a call failed, so that the failure strikes one
// number only, as if each had been taken by itself. After a failed seek that number is 0.
std::uint32_t GlobalTimeTake(std::uint32_t count, std::uint32_t& first);

// Opens the file for updates, without waiting: false where that cannot be done at once, or the lock cannot be
// taken. After true the operations above wait for no other process but one that asks.
bool TryOpenCounters();

// Closes and forgets both handles.
void CloseCounters();

} // namespace logfiles
