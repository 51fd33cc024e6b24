#include "logreport/model/FindMessages.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace logreport
{

namespace
{

constexpr std::uint32_t kWordBits = 64;

// Beside the bytes of texts.
constexpr int kMessageCost = 256;
constexpr int kSkipCost = 64;

bool IsSet(std::uint64_t word, std::uint32_t bit)
{
    return (word >> bit & 1) != 0;
}

} // namespace

// ---- What is looked for, and where

bool FindMessages::SetWish(const FindWish& wish)
{
    if (wish == m_wish)
        return m_fault.empty();
    m_wish = wish;
    m_match.reset();
    m_fault.clear();
    try
    {
        if (!wish.text.empty())
            m_match = std::make_shared<MessageMatch>(wish);
    }
    catch (const textmatch::ExpressionError& error)
    {
        m_fault = std::string("At character ") + std::to_string(error.Position() + 1) + ": " + error.what();
    }
    Restart();
    return m_fault.empty();
}

void FindMessages::SetRange(std::uint32_t first, std::uint32_t last)
{
    last = std::min(last, kNoLogMsgId - 1);
    if (first == m_first && last == m_last)
        return;
    const std::uint64_t before = IdCount();
    const bool isMore = first == m_first && last > m_last;
    m_first = first;
    m_last = last;
    if (!isMore)
        return Restart();
    if (before % kWordBits != 0 && !m_hits.empty())
        Forget(m_hits.size() - 1);
    if (m_jump && !m_jump->isWrapped)
        m_jump->left += IdCount() - before;
    Resize();
}

void FindMessages::Restart()
{
    ++m_generation;
    m_jump.reset();
    m_hit.reset();
    m_hits.clear();
    m_givenUp.clear();
    m_known.clear();
    m_counted = m_learning = 0;
    m_learned = m_count = m_givenUpCount = 0;
    Resize();
}

void FindMessages::Resize()
{
    if (!m_match)
        return;
    const auto words = static_cast<std::size_t>((IdCount() + kWordBits - 1) / kWordBits);
    m_hits.resize(words);
    m_givenUp.resize(words);
    m_known.resize(words);
}

// ---- Looking at messages

bool FindMessages::Step(ILogMsgService& service, int budget)
{
    if (!m_match)
        return false;
    const std::uint32_t generation = m_generation;
    if (m_jump)
        GoOn(service, budget);
    while (budget > 0 && generation == m_generation && !IsCounted())
        Learn(m_counted, service, budget);
    return m_jump || !IsCounted();
}

void FindMessages::Forget(std::size_t word)
{
    m_count -= static_cast<std::uint32_t>(std::popcount(m_hits[word]));
    m_givenUpCount -= static_cast<std::uint32_t>(std::popcount(m_givenUp[word]));
    m_hits[word] = m_givenUp[word] = 0;
    m_known[word] = false;
    m_counted = std::min(m_counted, word);
    if (word == m_learning)
        m_learned = 0;
}

// Looks at the messages of a word that is not known. False if it is not known afterwards, because that was
// enough for this step, or the messages are others now.
bool FindMessages::Learn(std::size_t word, ILogMsgService& service, int& budget)
{
    if (word != m_learning && m_learned > 0)
        Forget(m_learning);
    m_learning = word;
    const std::uint64_t before = std::uint64_t{word} * kWordBits;
    const auto size = static_cast<std::uint32_t>(std::min<std::uint64_t>(kWordBits, IdCount() - before));
    while (m_learned < size)
        if (budget <= 0 || !LearnNext(size, service, budget))
            return false;
    m_learned = 0;
    m_known[word] = true;
    while (m_counted < m_known.size() && m_known[m_counted])
        ++m_counted;
    return true;
}

// Looks at the next message of the word that is in part, which has `size` of them, after leaving out those
// that cannot match. False if the messages are others now.
bool FindMessages::LearnNext(std::uint32_t size, ILogMsgService& service, int& budget)
{
    const std::uint32_t generation = m_generation;
    const std::shared_ptr<MessageMatch> match = m_match; // the service may bring about another one
    const std::uint32_t begin = m_first + static_cast<std::uint32_t>(m_learning * kWordBits);
    const std::uint32_t id = match->Skip(service, begin + m_learned, begin + size);
    if (generation != m_generation)
        return false;
    budget -= static_cast<int>(id - begin - m_learned) * kSkipCost;
    m_learned = id - begin;
    if (m_learned == size)
        return true;
    const ILogMsgData* const message = service.GetMsg(id);
    if (generation != m_generation)
        return false;
    const MessageMatch::Outcome outcome = message ? (*match)(*message) : MessageMatch::Outcome::No;
    if (generation != m_generation)
        return false;
    const Word bit = Word{1} << m_learned++;
    if (outcome == MessageMatch::Outcome::Yes)
        m_hits[m_learning] |= bit, ++m_count;
    if (outcome == MessageMatch::Outcome::GivenUp)
        m_givenUp[m_learning] |= bit, ++m_givenUpCount;
    const bool isCostly = outcome == MessageMatch::Outcome::GivenUp || match->LastSize() > kStepCost;
    budget -= isCostly ? kStepCost : kMessageCost + static_cast<int>(match->LastSize());
    return true;
}

// ---- Jumps

void FindMessages::Jump(std::optional<std::uint32_t> id, Direction direction, bool includesId)
{
    const bool isDown = direction == Direction::Down;
    JumpState jump = {isDown ? m_first : m_last, IdCount(), direction, false};
    if (id && *id >= m_first && *id <= m_last)
    {
        jump.at = *id;
        if (!includesId)
            Advance(jump, 1);
        jump.left = IdCount();
    }
    m_hit.reset();
    if (m_match && jump.left > 0)
        m_jump = jump;
    else
        End(kNoLogMsgId);
}

// Goes on by as many ids as are left on this side of the end, at most.
void FindMessages::Advance(JumpState& jump, std::uint64_t ids) const
{
    jump.left -= ids;
    const bool isDown = jump.direction == Direction::Down;
    const std::uint64_t toEnd = isDown ? m_last - jump.at : jump.at - m_first;
    if (ids > toEnd)
    {
        jump.at = isDown ? m_first : m_last;
        jump.isWrapped = true;
    }
    else
        jump.at = static_cast<std::uint32_t>(isDown ? jump.at + ids : jump.at - ids);
}

void FindMessages::GoOn(ILogMsgService& service, int& budget)
{
    while (m_jump && m_jump->left > 0)
    {
        const std::size_t word = (m_jump->at - m_first) / kWordBits;
        if (!m_known[word] && !Learn(word, service, budget))
            return;
        if (LookInWord(word))
            return;
        --budget;
    }
    if (m_jump)
        End(kNoLogMsgId);
}

// Whether the jump ends in this word; else goes on after it. What it began at may be in the word again, and
// has no hit then.
bool FindMessages::LookInWord(std::size_t word)
{
    const std::uint32_t bit = (m_jump->at - m_first) % kWordBits;
    const bool isDown = m_jump->direction == Direction::Down;
    const Word ahead = m_hits[word] & (isDown ? ~Word{0} << bit : ~Word{0} >> (kWordBits - 1 - bit));
    if (ahead != 0)
    {
        const int hit = isDown ? std::countr_zero(ahead) : 63 - std::countl_zero(ahead);
        End(m_first + static_cast<std::uint32_t>(word * kWordBits) + static_cast<std::uint32_t>(hit));
        return true;
    }
    const std::uint64_t toEnd = isDown ? std::uint64_t{m_last} - m_jump->at : m_jump->at - m_first;
    const std::uint32_t inWord = isDown ? kWordBits - bit : bit + 1;
    Advance(*m_jump, std::min({std::uint64_t{inWord}, toEnd + 1, m_jump->left}));
    return false;
}

void FindMessages::End(std::uint32_t id)
{
    m_hit = Hit{id, m_jump && m_jump->isWrapped};
    m_jump.reset();
}

std::optional<FindMessages::Hit> FindMessages::TakeHit()
{
    return std::exchange(m_hit, std::nullopt);
}

// ---- Numbers

std::uint32_t FindMessages::NumberOf(std::uint32_t id) const
{
    const std::uint32_t index = id - m_first; // of an earlier one beyond all
    const std::size_t word = index / kWordBits;
    if (word >= m_counted || !IsSet(m_hits[word], index % kWordBits))
        return 0;
    int number = std::popcount(m_hits[word] << (kWordBits - 1 - index % kWordBits));
    for (std::size_t i = 0; i < word; ++i)
        number += std::popcount(m_hits[i]);
    return static_cast<std::uint32_t>(number);
}

std::string WithThousands(std::uint32_t number)
{
    std::string text = std::to_string(number);
    for (std::size_t at = text.size(); at > 3; at -= 3)
        text.insert(at - 3, 1, ',');
    return text;
}

std::string FoundText(const FindMessages& find, std::uint32_t number)
{
    const std::uint32_t count = find.GetCount();
    std::string text = WithThousands(count) + (find.IsCounted() ? "" : "+");
    if (number > 0)
        text = WithThousands(number) + " of " + text;
    else if (count > 0)
        text += " found";
    else
        text = find.IsCounted() ? "Not found" : "Searching...";
    if (find.GetGivenUpCount() > 0)
        text += ", " + WithThousands(find.GetGivenUpCount()) + " too costly";
    return text;
}

} // namespace logreport
