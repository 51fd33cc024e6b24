#include "msgservice/view/SortColumn.h"

#include "LogMsg.h"
#include "msgservice/view/FieldText.h"
#include "zemacore/Collation.h"

#include <algorithm>
#include <limits>

namespace msgservice
{

namespace
{

constexpr std::size_t kRestMemory = 1024 * 1024 * 1024; // for the rests of all keys of a column
constexpr std::size_t kLeastRest = 56;
constexpr std::size_t kMostRest = 1024;
constexpr std::uint64_t kLastHead = std::numeric_limits<std::uint64_t>::max();

std::string TextKey(std::string_view text)
{
    std::string key;
    ZEMA::AppendSortKey(text.data(), text.size(), ZEMA::LetterCase::Ignored, key);
    return key;
}

// The first eight bytes as a number that compares as they do.
std::uint64_t HeadOf(std::string_view key)
{
    std::uint64_t head = 0;
    for (std::size_t i = 0; i < sizeof(head); ++i)
        head = head << 8 | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0u);
    return head;
}

// Numbers with a sign as numbers without one, in the same order.
std::uint64_t HeadOf(std::int64_t number)
{
    return static_cast<std::uint64_t>(number) ^ std::uint64_t{1} << 63;
}

} // namespace

SortColumn::SortColumn(const MessageStore& store, std::int32_t field, std::span<const std::uint32_t> messages)
    : m_store(store), m_field(field), m_messages(messages),
      m_shared(field == kLogMsgLevel ? std::nullopt : SharedTextOf(field)),
      m_keptRest(std::clamp(kRestMemory / std::max<std::size_t>(messages.size(), 1), kLeastRest, kMostRest))
{
    m_heads.reserve(messages.size());
}

void SortColumn::Add(const char* record)
{
    if (m_shared)
        AddShared(DecodeText(record, *m_shared));
    else if (m_field == kLogMsgLevel)
        m_heads.push_back(HeadOf(std::int64_t{DecodeLevel(record)}));
    else if (m_field == kLogMsgTimestamp && m_restEnds.empty() && DecodeTime(record) != kNoTime)
        m_heads.push_back(HeadOf(DecodeTime(record))); // as most are
    else if (m_field == kLogMsgTimestamp || m_field == kLogMsgBody)
        AddText(DecodeRecord(record));
    else
        m_heads.push_back(HeadOf(std::int64_t{NumberOf(DecodeRecord(record), m_field).value_or(0)}));
}

void SortColumn::AddText(const Record& record)
{
    m_restEnds.resize(m_heads.size()); // without a rest so far
    if (m_field == kLogMsgTimestamp && record.time != kNoTime)
        m_heads.push_back(HeadOf(record.time));
    else if (m_field == kLogMsgTimestamp)
    {
        m_heads.push_back(kLastHead);
        m_rests += TextKey(record.timestamp).substr(0, m_keptRest);
    }
    else
    {
        const std::string key = TextKey(record.body);
        m_heads.push_back(HeadOf(key));
        m_rests += std::string_view(key).substr(std::min(key.size(), sizeof(std::uint64_t)), m_keptRest);
    }
    m_restEnds.push_back(m_rests.size());
}

// Few texts stand for many messages: those are put in order, and a message's key is the place of its text.
void SortColumn::AddShared(std::uint32_t text)
{
    if (text >= m_ranks.size())
        m_ranks.resize(text + 1);
    if (m_ranks[text]++ == 0)
        m_sharedKeys.emplace_back(TextKey(m_store.Texts().Text(text)), text);
    m_heads.push_back(text);
}

void SortColumn::Finish()
{
    m_hasRests = !m_rests.empty();
    if (!m_shared)
        return;
    std::sort(m_sharedKeys.begin(), m_sharedKeys.end());
    std::uint64_t rank = 0;
    for (std::size_t i = 0; i < m_sharedKeys.size(); ++i)
    {
        rank += i > 0 && m_sharedKeys[i].first != m_sharedKeys[i - 1].first ? 1 : 0;
        m_ranks[m_sharedKeys[i].second] = rank;
    }
    for (std::uint64_t& head : m_heads)
        head = m_ranks[head];
}

std::string_view SortColumn::KeptRest(std::uint32_t slot) const
{
    const std::uint64_t begin = slot > 0 ? m_restEnds[slot - 1] : 0;
    return std::string_view(m_rests).substr(begin, m_restEnds[slot] - begin);
}

std::string SortColumn::WholeKey(std::uint32_t slot) const
{
    const Record record = m_store.At(m_messages[slot]);
    return TextKey(m_field == kLogMsgBody ? record.body : record.timestamp);
}

int SortColumn::Rests(std::uint32_t left, std::uint32_t right) const
{
    const std::string_view leftRest = KeptRest(left);
    const int kept = leftRest.compare(KeptRest(right));
    return kept == 0 && leftRest.size() == m_keptRest ? WholeKey(left).compare(WholeKey(right)) : kept;
}

} // namespace msgservice
