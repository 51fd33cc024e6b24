// Which messages hold a text: found one after the other, and counted.
#pragma once

#include "logreport/model/MessageMatch.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace logreport
{

// Goes through the messages of a view by their ids, a bit at a time, and remembers which of them match. A
// jump looks for the next one up or down and goes on at the other end; all that it leaves out is looked at
// afterwards, to be counted. Ids that the service does not know match nothing.
//
// The service may do what it likes while it is asked: whoever learns that its messages are others calls
// Restart.
class FindMessages
{
public:
    enum class Direction
    {
        Down,
        Up
    };
    struct Hit
    {
        std::uint32_t id = kNoLogMsgId; // if there is none
        bool isWrapped = false;
    };

    // Begins again, unless it is what is looked for already. False if the expression is none: GetFault tells
    // why. Nothing holds an empty text.
    bool SetWish(const FindWish& wish);
    const FindWish& GetWish() const { return m_wish; }
    const std::string& GetFault() const { return m_fault; }
    bool HasWish() const { return m_match != nullptr; }

    // The ids to look at; none if `last` is below `first`. More of them at the end are looked at besides,
    // any other change begins again.
    void SetRange(std::uint32_t first, std::uint32_t last);

    // The ids are those of other messages now. A jump is given up.
    void Restart();

    // Looks for the next hit after `id`, or for that one as well; without an id from the first or the last
    // on.
    void Jump(std::optional<std::uint32_t> id, Direction direction, bool includesId);
    bool IsJumping() const { return m_jump.has_value(); }
    void StopJump() { m_jump.reset(); }

    // What a call of Step costs at most, in bytes that are looked at: some thousandths of a second.
    static constexpr int kStepCost = 1024 * 1024;

    // Looks at some more messages; one that costs an expression much is the last. False if nothing is left to
    // do; a jump that has ended is handed out by TakeHit.
    bool Step(ILogMsgService& service, int budget = kStepCost);
    bool HasHit() const { return m_hit.has_value(); }
    std::optional<Hit> TakeHit();

    // How many match of those that were looked at.
    std::uint32_t GetCount() const { return m_count; }
    std::uint32_t GetGivenUpCount() const { return m_givenUpCount; }
    bool IsCounted() const { return m_counted == WordCount(); }

    // The number of a hit among all, from 1 on; 0 if the id is none, or not all before it are counted.
    std::uint32_t NumberOf(std::uint32_t id) const;

private:
    using Word = std::uint64_t; // a bit a message
    struct JumpState
    {
        std::uint32_t at;   // the next id
        std::uint64_t left; // how many ids
        Direction direction;
        bool isWrapped;
    };

    std::size_t WordCount() const { return m_hits.size(); }
    std::uint64_t IdCount() const { return m_last < m_first ? 0 : std::uint64_t{m_last} - m_first + 1; }
    void Resize();
    void Forget(std::size_t word);
    bool Learn(std::size_t word, ILogMsgService& service, int& budget);
    bool LearnNext(std::uint32_t size, ILogMsgService& service, int& budget);
    void Advance(JumpState& jump, std::uint64_t ids) const;
    void GoOn(ILogMsgService& service, int& budget);
    bool LookInWord(std::size_t word);
    void End(std::uint32_t id);

    FindWish m_wish;
    std::shared_ptr<MessageMatch> m_match;
    std::string m_fault;
    std::uint32_t m_first = 1;
    std::uint32_t m_last = 0;
    std::vector<Word> m_hits;
    std::vector<Word> m_givenUp;
    std::vector<bool> m_known;   // by word: all its messages were looked at
    std::size_t m_counted = 0;   // words before it are known
    std::size_t m_learning = 0;  // the word that is in part
    std::uint32_t m_learned = 0; // of its messages
    std::uint32_t m_count = 0;
    std::uint32_t m_givenUpCount = 0;
    std::optional<JumpState> m_jump;
    std::optional<Hit> m_hit;
    std::uint32_t m_generation = 0; // of what the bits are about
};

// "3 of 1,204", "812+ found" and the like: the hits, the focused one among them (0 for none), and whether
// there are messages that an expression could not be looked for in.
std::string FoundText(const FindMessages& find, std::uint32_t number);

// "1,204".
std::string WithThousands(std::uint32_t number);

} // namespace logreport
