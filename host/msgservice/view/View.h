// The messages of a store that a description leaves in, in its order.
#pragma once

#include "msgservice/view/MessageFilter.h"
#include "msgservice/view/Work.h"

#include <optional>

namespace msgservice
{

// Positions count from 0. Takes 4 bytes a message, or none if it shows all messages as they arrive. One
// thread at a time; messages may arrive meanwhile, which it does not show until it is told.
class View
{
public:
    // Shows no message yet.
    View(std::shared_ptr<const MessageStore> store, const ViewDescription& description);

    const ViewDescription& Description() const { return m_description; }
    const MessageStore& Store() const { return *m_store; }

    bool IsPlain() const { return m_isPlain; } // shows all messages as they arrived
    std::uint32_t Count() const;
    std::uint32_t MessageAt(std::uint32_t position) const;
    std::optional<std::uint32_t> PositionOf(std::uint32_t message) const;

    // Makes ready what PositionOf and FindLevel look up, which they else do by themselves when they are first
    // asked.
    void MakeIndex() const;

    // The first position with a message of at least this level on the way from `begin` to before `end`, in
    // either direction: `end` is -1 or more, and Count() or less.
    std::optional<std::uint32_t> FindLevel(std::int64_t begin, std::int64_t end, std::uint32_t level) const;

    // Messages before it have been looked at: they are shown or left out.
    std::uint32_t End() const { return m_end; }

    // Looks at messages up to `end` and shows those that belong to the end of the view. False if one belongs
    // before it: then the view is as it was. For few at a time if it is sorted.
    bool Append(std::uint32_t end);

    // Looks at messages up to `end` and puts each where it belongs. Broken off, the view is of no use any
    // more.
    void Insert(std::uint32_t end, Work& work);

    // A view of the same messages for another thread.
    std::unique_ptr<View> Copy() const;

private:
    bool IsDuplicate(std::uint32_t message, std::uint32_t before) const;
    std::optional<std::uint32_t> FindInOrder(std::int64_t begin, std::int64_t end, std::int64_t step,
                                             std::uint32_t level) const;
    std::vector<std::uint32_t> PassingMessages(std::uint32_t end, Work& work, double to);
    void TakeOutDuplicates(std::vector<std::uint32_t>& messages, std::optional<std::uint32_t> before) const;

    std::shared_ptr<const MessageStore> m_store;
    ViewDescription m_description;
    MessageFilter m_filter;
    bool m_isPlain;
    std::uint32_t m_end = 0;
    std::vector<std::uint32_t> m_order;             // empty for a plain view
    mutable std::vector<std::uint32_t> m_positions; // by message, from 1 on; 0 for those left out
    mutable std::vector<std::uint8_t> m_levels;     // the highest of each block of m_order
    mutable std::size_t m_indexed = 0;              // of m_order, positions that are in these two
};

} // namespace msgservice
