#include "msgservice/view/MessageOrder.h"

#include "LogMsg.h"

#include <algorithm>
#include <numeric>

namespace msgservice
{

namespace
{

constexpr double kKeysShare = 0.6; // of the progress

// The columns of all keys for some messages.
class KeyTable
{
public:
    struct Entry
    {
        std::uint64_t head; // of the first column, turned round if that one descends
        std::uint32_t slot;
    };

    KeyTable(const MessageStore& store, const SortKeys& keys, std::span<const std::uint32_t> messages,
             Work& work)
    {
        const auto count = static_cast<double>(
            std::count_if(keys.begin(), keys.end(), [](const SortKey& key) { return IsField(key.field); }));
        for (const SortKey& key : keys)
            if (IsField(key.field))
            {
                const double from = kKeysShare * static_cast<double>(m_columns.size()) / count;
                m_columns.push_back(
                    {{store, key.field, messages, work, from, from + kKeysShare / count}, key.ascending});
            }
    }

    static bool IsField(std::int32_t field) { return field >= 0 && field < kLogMsgKindCount; }

    Entry EntryOf(std::uint32_t slot) const
    {
        if (m_columns.empty())
            return {0, slot};
        const std::uint64_t head = m_columns.front().column.Head(slot);
        return {m_columns.front().ascending ? head : ~head, slot};
    }

    bool IsBefore(const Entry& left, const Entry& right) const
    {
        return left.head != right.head ? left.head < right.head : IsBeforeByRest(left.slot, right.slot);
    }

private:
    struct Column
    {
        SortColumn column;
        bool ascending;
    };

    bool IsBeforeByRest(std::uint32_t left, std::uint32_t right) const
    {
        for (const Column& key : m_columns)
        {
            if (key.column.Head(left) != key.column.Head(right))
                return (key.column.Head(left) < key.column.Head(right)) == key.ascending;
            if (const int rests = key.column.CompareRests(left, right); rests != 0)
                return (rests < 0) == key.ascending;
        }
        return false;
    }

    std::vector<Column> m_columns;
};

using Entries = std::vector<KeyTable::Entry>;

// Runs that a breath sorts, merged two by two: between any two of these steps the work can be broken off.
void SortEntries(Entries& entries, const KeyTable& table, Work& work)
{
    const auto before = [&](const auto& left, const auto& right) { return table.IsBefore(left, right); };
    const auto at = [](Entries& from, std::size_t position) {
        return from.begin() + static_cast<std::ptrdiff_t>(std::min(position, from.size()));
    };
    std::size_t run = 32 * 1024;
    std::size_t passes = 1;
    for (std::size_t length = run; length < entries.size(); length *= 2)
        ++passes;
    const std::size_t all = passes * entries.size();
    for (std::size_t i = 0; i < entries.size(); i += run)
    {
        std::stable_sort(at(entries, i), at(entries, i + run), before);
        work.Check(i, all, kKeysShare, 1);
    }
    Entries other(run < entries.size() ? entries.size() : 0);
    for (std::size_t pass = 1; run < entries.size(); run *= 2, ++pass)
    {
        for (std::size_t i = 0; i < entries.size(); i += 2 * run)
        {
            std::merge(at(entries, i), at(entries, i + run), at(entries, i + run), at(entries, i + 2 * run),
                       at(other, i), before);
            work.Check(pass * entries.size() + i, all, kKeysShare, 1);
        }
        entries.swap(other);
    }
}

// Two messages alone, for which keys are made again.
bool IsBefore(const MessageStore& store, const SortKeys& keys, std::uint32_t left, std::uint32_t right)
{
    const std::array<std::uint32_t, 2> both = {left, right};
    Work unwatched;
    const KeyTable table(store, keys, both, unwatched);
    return table.IsBefore(table.EntryOf(0), table.EntryOf(1));
}

} // namespace

bool IsSorted(const SortKeys& keys)
{
    return std::any_of(keys.begin(), keys.end(),
                       [](const SortKey& key) { return KeyTable::IsField(key.field); });
}

void SortMessages(const MessageStore& store, const SortKeys& keys, std::vector<std::uint32_t>& messages,
                  Work& work)
{
    if (!IsSorted(keys))
        return;
    const KeyTable table(store, keys, messages, work);
    Entries entries;
    entries.reserve(messages.size());
    for (std::uint32_t slot = 0; slot < messages.size(); ++slot)
        entries.push_back(table.EntryOf(slot));
    SortEntries(entries, table, work);

    std::vector<std::uint32_t> sorted;
    sorted.reserve(messages.size());
    for (const KeyTable::Entry& entry : entries)
        sorted.push_back(messages[entry.slot]);
    messages.swap(sorted);
}

bool BelongAfter(const MessageStore& store, const SortKeys& keys, std::span<const std::uint32_t> messages,
                 std::uint32_t last)
{
    return !IsSorted(keys) || std::none_of(messages.begin(), messages.end(), [&](std::uint32_t message) {
        return IsBefore(store, keys, message, last);
    });
}

void InsertMessages(const MessageStore& store, const SortKeys& keys, std::vector<std::uint32_t> added,
                    std::vector<std::uint32_t>& order, Work& work)
{
    SortMessages(store, keys, added, work);
    const auto isBefore = [&](std::uint32_t left, std::uint32_t right) {
        return IsBefore(store, keys, left, right);
    };
    std::vector<std::uint32_t> merged;
    merged.reserve(order.size() + added.size());
    auto from = order.begin();
    for (const std::uint32_t message : added)
    {
        work.Check(0, 0, 0, 0);
        const auto to = IsSorted(keys) ? std::upper_bound(from, order.end(), message, isBefore) : order.end();
        merged.insert(merged.end(), from, to);
        merged.push_back(message);
        from = to;
    }
    merged.insert(merged.end(), from, order.end());
    order.swap(merged);
}

} // namespace msgservice
