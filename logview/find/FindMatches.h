// The matches that a search has found, in the order of their numbers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace logview
{

// A row with a match; a row with several comes as often.
struct FoundMatch
{
    std::uint32_t number = 0; // the row's
    std::uint32_t file = 0;
    std::uint32_t row = 0;
    bool operator==(const FoundMatch&) const = default;
};
static_assert(sizeof(FoundMatch) == 12);

// Matches from the number on where the search began, and those before it, which were found after them.
class FindMatches
{
public:
    // More are not kept.
    static constexpr std::size_t kMost = 1'000'000;

    std::size_t Count() const { return m_before.size() + m_after.size(); }
    bool IsFull() const { return Count() >= kMost; }
    void Clear();

    // Matches in the order of their numbers. Usually they come after all that are there.
    void AddBefore(const std::vector<FoundMatch>& matches) { Add(m_before, matches); }
    void AddAfter(const std::vector<FoundMatch>& matches) { Add(m_after, matches); }

    // Takes away those of a log's rows from `row` on.
    void Remove(std::uint32_t file, std::uint32_t row);

    const FoundMatch& At(std::size_t index) const;

    // How many matches come before the first one whose number is at least `number`.
    std::size_t CountBefore(std::uint64_t number) const;

    // The index of the first match of a row with this number; Count() if it has none.
    std::size_t IndexOf(std::uint32_t number, std::uint32_t file, std::uint32_t row) const;

    // How many matches each of `stretches` parts of the numbers from `first` to `last` has: a number is in
    // part (number - first) * stretches / (last - first + 1).
    std::vector<std::uint32_t> CountStretches(std::uint32_t first, std::uint32_t last,
                                              std::size_t stretches) const;

private:
    using Matches = std::vector<FoundMatch>;

    void Add(Matches& list, const Matches& matches);

    Matches m_before;
    Matches m_after;
};

} // namespace logview
