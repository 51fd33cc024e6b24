#include "msgservice/view/MessageOrder.h"

#include "LogMsg.h"

#include <algorithm>
#include <array>
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
    // The first keys lie with what is sorted: the processor finds them there, and not all over the memory.
    template <std::size_t kHeads> struct Entry
    {
        std::array<std::uint64_t, kHeads> heads; // turned round where the column descends
        std::uint32_t slot;
    };

    KeyTable(const MessageStore& store, const SortKeys& keys, std::span<const std::uint32_t> messages,
             Work& work)
    {
        for (const SortKey& key : keys)
            if (IsField(key.field))
                m_columns.push_back({{store, key.field, messages}, key.ascending});
        for (std::size_t i = 0; i < messages.size(); ++i)
        {
            const char* const record = store.BytesAt(messages[i]);
            for (Column& key : m_columns)
                key.column.Add(record);
            if (i % 1024 == 0)
                work.Check(i, messages.size(), 0, kKeysShare);
        }
        for (Column& key : m_columns)
            key.column.Finish();
    }

    static bool IsField(std::int32_t field) { return field >= 0 && field < kLogMsgKindCount; }

    std::size_t Columns() const { return m_columns.size(); }

    // Whether the first keys and the slots decide alone.
    bool AreHeadsAll(std::size_t heads) const
    {
        return m_columns.size() <= heads &&
               std::none_of(m_columns.begin(), m_columns.end(),
                            [](const Column& key) { return key.column.HasRests(); });
    }

    template <std::size_t kHeads> Entry<kHeads> EntryOf(std::uint32_t slot) const
    {
        Entry<kHeads> entry = {{}, slot};
        for (std::size_t i = 0; i < kHeads && i < m_columns.size(); ++i)
            entry.heads[i] = Head(m_columns[i], slot);
        return entry;
    }

    template <std::size_t kHeads> bool IsBefore(const Entry<kHeads>& left, const Entry<kHeads>& right) const
    {
        for (std::size_t i = 0; i < m_columns.size(); ++i)
        {
            const Column& key = m_columns[i];
            const std::uint64_t leftHead = i < kHeads ? left.heads[i] : Head(key, left.slot);
            const std::uint64_t rightHead = i < kHeads ? right.heads[i] : Head(key, right.slot);
            if (leftHead != rightHead)
                return leftHead < rightHead;
            if (const int rests = key.column.CompareRests(left.slot, right.slot); rests != 0)
                return (rests < 0) == key.ascending;
        }
        return false;
    }

private:
    struct Column
    {
        SortColumn column;
        bool ascending;
    };

    static std::uint64_t Head(const Column& key, std::uint32_t slot)
    {
        return key.ascending ? key.column.Head(slot) : ~key.column.Head(slot);
    }

    std::vector<Column> m_columns;
};

// Runs that a breath sorts, merged two by two: between any two of these steps the work can be broken off.
template <typename Entry, typename Before>
void SortEntries(std::vector<Entry>& entries, const Before& before, Work& work)
{
    const auto at = [](std::vector<Entry>& from, std::size_t position) {
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
    std::vector<Entry> other(run < entries.size() ? entries.size() : 0);
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

template <std::size_t kHeads>
void SortByTable(const KeyTable& table, std::vector<std::uint32_t>& messages, Work& work)
{
    std::vector<KeyTable::Entry<kHeads>> entries;
    entries.reserve(messages.size());
    for (std::uint32_t slot = 0; slot < messages.size(); ++slot)
        entries.push_back(table.EntryOf<kHeads>(slot));
    using Entry = KeyTable::Entry<kHeads>;
    if (table.AreHeadsAll(kHeads)) // the compiler makes much less of this
        SortEntries(
            entries, [](const Entry& left, const Entry& right) { return left.heads < right.heads; }, work);
    else
        SortEntries(
            entries, [&](const Entry& left, const Entry& right) { return table.IsBefore(left, right); },
            work);

    std::vector<std::uint32_t> sorted;
    sorted.reserve(messages.size());
    for (const auto& entry : entries)
        sorted.push_back(messages[entry.slot]);
    messages.swap(sorted);
}

// Two messages alone, for which keys are made again.
bool IsBefore(const MessageStore& store, const SortKeys& keys, std::uint32_t left, std::uint32_t right)
{
    const std::array<std::uint32_t, 2> both = {left, right};
    Work unwatched;
    const KeyTable table(store, keys, both, unwatched);
    return table.IsBefore(table.EntryOf<1>(0), table.EntryOf<1>(1));
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
    if (table.Columns() == 1)
        SortByTable<1>(table, messages, work);
    else
        SortByTable<3>(table, messages, work);
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
