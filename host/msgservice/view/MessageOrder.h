// Messages in the order of sort keys.
#pragma once

#include "msgservice/view/Description.h"
#include "msgservice/view/SortColumn.h"
#include "msgservice/view/Work.h"

namespace msgservice
{

// Whether the keys order anything.
bool IsSorted(const SortKeys& keys);

// Sorts message indexes that ascend. Messages that are equal in all keys stay in the order of their arrival.
// The work's progress goes to 1.
void SortMessages(const MessageStore& store, const SortKeys& keys, std::vector<std::uint32_t>& messages,
                  Work& work);

// Whether all of the messages belong after message `last`; true if nothing is sorted.
bool BelongAfter(const MessageStore& store, const SortKeys& keys, std::span<const std::uint32_t> messages,
                 std::uint32_t last);

// Puts messages (ascending indexes, all above those in `order`) where they belong in `order`, which is sorted
// by the keys. Takes a search of the order for each, so is for few.
void InsertMessages(const MessageStore& store, const SortKeys& keys, std::vector<std::uint32_t> added,
                    std::vector<std::uint32_t>& order, Work& work);

} // namespace msgservice
