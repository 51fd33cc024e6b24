// The strip beside the scroll bar and the pinned headers, compared with plain loops over their rows.
#include "LogRows.h"
#include "logview/merge/PinnedHeaders.h"
#include "logview/merge/StripMarks.h"

#include <gtest/gtest.h>

#include <random>

using namespace logview;

namespace
{

// Rows of which some are headers of errors, over numbers of which some are missing.
void AddRows(LogRows& logs, int rows, std::mt19937& random)
{
    for (int i = 0; i < rows; ++i)
    {
        logs.time += static_cast<std::uint32_t>(random() % 3 == 0 ? random() % 5 : 0);
        const bool isError = random() % 20 == 0;
        logs.Add(static_cast<unsigned>(random() % 5), "x\n", isError ? 1 : 0, isError,
                 isError ? kErrorKind : kPlainKind);
    }
}

StripState StateOf(const MergedRows& merged, int height, const std::vector<std::uint32_t>& bookmarks)
{
    StripState state;
    state.numbers = merged.Numbers();
    state.height = height;
    state.changes = merged.Changes();
    state.bookmarks = bookmarks;
    return state;
}

// An error with a number from `begin` up to `end`, read row by row.
std::optional<std::uint32_t> FirstError(const LogRows& logs, std::uint32_t begin, std::uint32_t end)
{
    std::optional<std::uint32_t> first;
    for (const std::vector<CQmLogRow>& log : logs.rows)
        for (const CQmLogRow& row : log)
            if (row.kind == kErrorKind && row.blockBegin != 0 && row.time >= begin && row.time < end)
                first = std::min(first.value_or(row.time), row.time);
    return first;
}

TEST(StripTest, AClickLeadsToAnErrorABookmarkOrTheRowsThere)
{
    std::mt19937 random(1);
    for (const auto& [rows, height] : {std::pair(40, 400), {400, 300}, {3000, 200}, {1, 50}, {90, 1}})
    {
        LogRows logs;
        AddRows(logs, rows, random);
        MergedRows merged(logs, 64);
        merged.Refresh();
        while (merged.Extend(1000))
        {
        }
        const std::vector<std::uint32_t> bookmarks = {0, logs.time / 3, logs.time / 2, logs.time, 0xFFFFFFFF};
        Strip strip;
        const StripState state = StateOf(merged, height, bookmarks);
        ASSERT_TRUE(strip.Update(merged, state, [](const NumberRange&, std::size_t parts) {
            return std::vector<std::uint32_t>(parts);
        }));
        for (int row = 0; row < height; ++row)
        {
            const std::uint32_t begin = state.NumberAt(row - 3);
            const std::uint32_t end = state.NumberAt(row + 1);
            std::uint32_t wanted = state.NumberAt(row);
            for (auto each = bookmarks.rbegin(); each != bookmarks.rend(); ++each)
                if (*each >= begin && *each < end)
                    wanted = *each;
            const std::optional<std::uint32_t> error = FirstError(logs, begin, end);
            const Strip::Target target = strip.GetTarget(merged, row);
            ASSERT_EQ(error.has_value(), target.error.has_value()) << rows << " " << row;
            ASSERT_EQ(error.value_or(wanted), target.number) << rows << " " << row;
            if (target.error)
                ASSERT_EQ(*error, logs.rows[target.error->file][target.error->row].time);
        }
        std::vector<int> marked; // the first and the last bookmark are outside
        for (std::size_t i = 1; i + 1 < bookmarks.size(); ++i)
            if (bookmarks[i] >= state.numbers.first)
                marked.push_back(state.RowOf(bookmarks[i]));
        EXPECT_EQ(marked, strip.GetMarks().bookmarks);
        EXPECT_EQ(merged.FindErrorParts(state.numbers, static_cast<std::size_t>(height)),
                  strip.GetMarks().errorLogs);
    }
}

TEST(StripTest, CountsAnewOnlyWhatHasChanged)
{
    std::mt19937 random(2);
    LogRows logs;
    AddRows(logs, 200, random);
    MergedRows merged(logs);
    merged.Refresh();
    while (merged.Extend(1000))
    {
    }
    Strip strip;
    std::uint32_t matches = 1;
    int counts = 0;
    const auto count = [&](const NumberRange& range, std::size_t parts) {
        EXPECT_EQ(merged.Numbers().last, range.last);
        ++counts;
        return std::vector<std::uint32_t>(parts, matches);
    };
    StripState state = StateOf(merged, 100, {});
    EXPECT_TRUE(strip.Update(merged, state, count));
    EXPECT_FALSE(strip.Update(merged, state, count));
    const unsigned reads = logs.recordReads;
    state.viewTop = 7;
    EXPECT_TRUE(strip.Update(merged, state, count)) << "scrolled";
    EXPECT_EQ(1, counts);
    EXPECT_EQ(reads, logs.recordReads);
    matches = 5;
    ++state.foundChanges;
    EXPECT_TRUE(strip.Update(merged, state, count));
    EXPECT_EQ(std::vector<std::uint32_t>(100, 5), strip.GetMarks().found);
    state.height = 60;
    EXPECT_TRUE(strip.Update(merged, state, count));
    EXPECT_EQ(60u, strip.GetMarks().found.size());
    EXPECT_EQ(60u, strip.GetMarks().errorLogs.size());

    logs.Add(2, "x\n", 1, true, kErrorKind);
    merged.Refresh();
    while (merged.Extend(1000))
    {
    }
    const unsigned found = state.foundChanges;
    state = StateOf(merged, 60, {});
    state.foundChanges = found;
    EXPECT_TRUE(strip.Update(merged, state, count));
    EXPECT_EQ(1 << 2, strip.GetMarks().errorLogs.back() & 1 << 2) << "more numbers on the same rows";
    EXPECT_EQ(60u, strip.GetMarks().found.size());
    EXPECT_EQ(4, counts);
}

// "Main" has blocks within each other, and "SQL" (3) writes beside them.
TEST(PinnedHeadersTest, AreTheOpenBlocksOfTheFirstRow)
{
    LogRows logs;
    const struct
    {
        unsigned file;
        std::uint8_t indent;
        bool begins;
    } rows[] = {
        {0, 0, false}, {0, 1, true},  {0, 2, true}, {3, 3, true},  {3, 3, false}, {0, 2, false},  // 0
        {0, 3, true},  {0, 4, true},  {0, 5, true}, {0, 6, true},  {0, 6, false}, {0, 6, false},  // 6
        {0, 1, false}, {0, 1, false}, {0, 2, true}, {0, 2, false}, {0, 0, false}, {0, 0, false}}; // 12
    for (const auto& row : rows)
        logs.Add(row.file, "x\n", row.indent, row.begins);
    for (std::uint8_t depth = 1; depth <= 8; ++depth) // 18 to 25
        logs.Add(0, "x\n", depth, true);
    MergedRows merged(logs);
    merged.Refresh();
    while (merged.Extend(1000))
    {
    }
    PinnedHeaders pinned(merged);
    using Rows = std::vector<int>;
    const std::pair<int, Rows> around[] = {
        {0, {}},
        {1, {}},
        {2, {1}},
        {3, {1, 2}},
        {4, {1, 2, 3}},
        {5, {1, 2}},
        {9, {1, 2, 6, 7, 8}},
        {10, {2, 6, 7, 8, 9}}, // the innermost five
        {12, {1}},
        {14, {1}},
        {15, {1, 14}},
        {16, {}},
        {25, {20, 21, 22, 23, 24}},
    };
    for (const auto& [row, headers] : around)
        EXPECT_EQ(headers, pinned.Around(row)) << row;

    const struct
    {
        int top;
        int rows;
        Rows headers;
    } covering[] = {{2, 2, {2, 3}}, {10, 2, {8, 9}},  {11, 1, {1}}, {9, 3, {7, 8, 9}},
                    {13, 1, {1}},   {14, 2, {1, 14}}, {15, 1, {14}}};
    for (const auto& each : covering)
        EXPECT_EQ(each.headers, pinned.Covering(each.top, each.rows)) << each.top << " " << each.rows;

    RowChange change;
    ASSERT_EQ((Rows{1, 2, 3}), pinned.Around(4));
    ASSERT_TRUE(merged.Fold(3, change));
    EXPECT_EQ((Rows{1, 2}), pinned.Around(4)) << "another row is displayed there";
    merged.Choose({1u << 3, merged.GetChoice().classes});
    EXPECT_EQ(Rows{}, pinned.Around(0)) << "headers of a log that is not shown";
}

} // namespace
