#include "msgservice/view/View.h"

#include "msgservice/view/MessageOrder.h"

#include <algorithm>

namespace msgservice
{

namespace
{

constexpr double kFilterShare = 0.3; // of the progress
constexpr std::int64_t kBlock = 256; // positions with one level to look at first
constexpr std::size_t kFewPart = 64; // so much of a view and less is inserted one by one

} // namespace

View::View(std::shared_ptr<const MessageStore> store, const ViewDescription& description)
    : m_store(std::move(store)), m_description(description), m_filter(*m_store, description),
      m_isPlain(m_filter.PassesAll() && !IsSorted(description.keys) && description.showDuplicates),
      m_end(description.firstIndex)
{
}

std::uint32_t View::Count() const
{
    return IsPlain() ? m_end - m_description.firstIndex : static_cast<std::uint32_t>(m_order.size());
}

std::uint32_t View::MessageAt(std::uint32_t position) const
{
    return IsPlain() ? m_description.firstIndex + position : m_order[position];
}

std::optional<std::uint32_t> View::PositionOf(std::uint32_t message) const
{
    if (message < m_description.firstIndex || message >= m_end)
        return {};
    if (IsPlain())
        return message - m_description.firstIndex;
    MakeIndex();
    const std::uint32_t position = m_positions[message];
    return position > 0 ? std::optional(position - 1) : std::nullopt;
}

// Messages that came to the end since the last time are all that is new: others clear what was made.
void View::MakeIndex() const
{
    if (IsPlain())
        return;
    m_positions.resize(m_end);
    m_levels.resize((m_order.size() + kBlock - 1) / kBlock);
    for (; m_indexed < m_order.size(); ++m_indexed)
    {
        m_positions[m_order[m_indexed]] = static_cast<std::uint32_t>(m_indexed) + 1;
        std::uint8_t& highest = m_levels[m_indexed / kBlock];
        highest = std::max(highest, static_cast<std::uint8_t>(m_store->LevelAt(m_order[m_indexed])));
    }
}

std::optional<std::uint32_t> View::FindLevel(std::int64_t begin, std::int64_t end, std::uint32_t level) const
{
    const std::int64_t step = begin <= end ? 1 : -1;
    if (!IsPlain())
        return FindInOrder(begin, end, step, level);
    // The levels lie side by side, and so each of them can be looked at.
    const MessageStore& store = *m_store;
    const std::uint32_t first = m_description.firstIndex;
    for (std::int64_t position = begin; position != end; position += step)
        if (store.LevelAt(first + static_cast<std::uint32_t>(position)) >= level)
            return static_cast<std::uint32_t>(position);
    return {};
}

// Passes over blocks without such a message.
std::optional<std::uint32_t> View::FindInOrder(std::int64_t begin, std::int64_t end, std::int64_t step,
                                               std::uint32_t level) const
{
    MakeIndex();
    for (std::int64_t position = begin; position != end;)
    {
        const std::int64_t block = position / kBlock;
        if (m_levels[static_cast<std::size_t>(block)] < level)
            position = step > 0 ? std::min(end, (block + 1) * kBlock) : std::max(end, block * kBlock - 1);
        else if (m_store->LevelAt(m_order[static_cast<std::size_t>(position)]) >= level)
            return static_cast<std::uint32_t>(position);
        else
            position += step;
    }
    return {};
}

// Equal but for the time and what the source has counted.
bool View::IsDuplicate(std::uint32_t message, std::uint32_t before) const
{
    Record left = m_store->At(message);
    Record right = m_store->At(before);
    if (left.countsSourceLine && right.countsSourceLine)
        left.numbers[2] = right.numbers[2];
    return left.texts == right.texts && left.numbers == right.numbers && left.level == right.level &&
           left.indent == right.indent && left.body == right.body;
}

std::vector<std::uint32_t> View::PassingMessages(std::uint32_t end, Work& work, double to)
{
    std::vector<std::uint32_t> passing;
    for (std::uint32_t message = m_end; message < end; ++message)
    {
        if (m_filter.Passes(message))
            passing.push_back(message);
        if (message % 4096 == 0)
            work.Check(message - m_end, end - m_end, 0, to);
    }
    return passing;
}

bool View::Append(std::uint32_t end)
{
    end = std::max(end, m_end);
    if (!IsPlain())
    {
        Work unwatched;
        std::vector<std::uint32_t> added = PassingMessages(end, unwatched, 0);
        if (!m_order.empty() && !BelongAfter(*m_store, m_description.keys, added, m_order.back()))
            return false;
        SortMessages(*m_store, m_description.keys, added, unwatched);
        if (!m_description.showDuplicates)
            TakeOutDuplicates(added, m_order.empty() ? std::nullopt : std::optional(m_order.back()));
        m_order.insert(m_order.end(), added.begin(), added.end());
    }
    m_end = end;
    MakeIndex();
    return true;
}

void View::Insert(std::uint32_t end, Work& work)
{
    end = std::max(end, m_end);
    if (!IsPlain())
    {
        m_positions.clear();
        m_levels.clear();
        m_indexed = 0;
        const bool few = end - m_end < m_order.size() / kFewPart && m_description.showDuplicates;
        if (few)
            InsertMessages(*m_store, m_description.keys, PassingMessages(end, work, kFilterShare), m_order,
                           work);
        else
        {
            // A message that comes between two others may bring one back that was left out as their
            // duplicate.
            m_end = m_description.firstIndex;
            m_order = PassingMessages(end, work, kFilterShare);
            SortMessages(*m_store, m_description.keys, m_order, work);
            if (!m_description.showDuplicates)
                TakeOutDuplicates(m_order, {});
        }
    }
    m_end = end;
}

void View::TakeOutDuplicates(std::vector<std::uint32_t>& messages, std::optional<std::uint32_t> before) const
{
    std::erase_if(messages, [&](std::uint32_t message) {
        if (before && IsDuplicate(message, *before))
            return true;
        before = message;
        return false;
    });
}

std::unique_ptr<View> View::Copy() const
{
    auto copy = std::make_unique<View>(m_store, m_description);
    copy->m_end = m_end;
    copy->m_order = m_order;
    return copy;
}

} // namespace msgservice
