#include "host/engineview/PageCache.h"

#include <gtest/gtest.h>

namespace
{

using engineview::Page;
using engineview::PageCache;

std::vector<engine::ShippedRow> MakeShippedRows(
    const std::vector<std::pair<std::uint32_t, std::string>>& rows)
{
    std::vector<engine::ShippedRow> made;
    for (const auto& [number, text] : rows)
    {
        made.emplace_back().number = number;
        made.back().log = "Main";
        made.back().text = text;
        made.back().depth = 7;
    }
    return made;
}

std::unique_ptr<Page> OnePage(std::uint32_t index, std::size_t bytes)
{
    return std::make_unique<Page>(index, std::vector<std::uint32_t>{index},
                                  MakeShippedRows({{index, std::string(bytes, 'x')}}));
}

} // namespace

TEST(Page, HasTheRowsInTheViewsOrderAndTellsWhichAreMissing)
{
    Page page(3, {9, 5, 5, 7, 5}, MakeShippedRows({{5, "a"}, {5, "b"}, {9, "c"}}));
    const char* const bodies[] = {"c", "a", "b", "(no row has this number)", "(no row has this number)"};
    const std::uint32_t numbers[] = {9, 5, 5, 7, 5};
    ASSERT_EQ(5u, page.Count());
    EXPECT_FALSE(page.IsComplete());
    for (std::uint32_t row = 0; row < page.Count(); ++row)
    {
        EXPECT_STREQ(bodies[row], page.Message(row).GetBody()) << row;
        EXPECT_EQ(numbers[row], static_cast<std::uint32_t>(page.Message(row).GetTag())) << row;
        EXPECT_EQ(row < 3, page.HasRow(row)) << row;
        EXPECT_EQ(numbers[row], page.Row(row).number) << row;
    }
    EXPECT_EQ(7u, page.Message(0).GetIndent(9));
    EXPECT_EQ(4u, page.Message(0).GetIndent(4));
    EXPECT_TRUE(Page(0, {5}, MakeShippedRows({{5, "a"}})).IsComplete());
}

TEST(PageCache, KeepsWhatWasAskedForLastWithinItsBound)
{
    constexpr std::size_t kText = 10'000;
    PageCache cache(20 * OnePage(1, kText)->Bytes());
    for (std::uint32_t index = 0; index < 20; ++index)
        cache.Add(OnePage(index, kText));
    EXPECT_EQ(20u, cache.Count());
    EXPECT_NE(nullptr, cache.Find(0));
    cache.Add(OnePage(20, kText));
    EXPECT_EQ(20u, cache.Count());
    EXPECT_NE(nullptr, cache.Peek(0));
    EXPECT_EQ(nullptr, cache.Peek(1));
    for (int i = 0; i < 100; ++i) // again and again the same one
        cache.Add(OnePage(20, kText));
    EXPECT_EQ(20u, cache.Count());
    EXPECT_NE(nullptr, cache.Peek(2));
    cache.Add(OnePage(21, 100 * kText)); // more than all may have
    EXPECT_EQ(PageCache::kFew, cache.Count());
    cache.Clear();
    for (std::uint32_t index = 0; index < 20; ++index)
        cache.Add(OnePage(index, kText));
    EXPECT_EQ(20u, cache.Count());
}
