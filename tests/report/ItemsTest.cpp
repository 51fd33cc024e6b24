// Items as callers, subclasses and owners see them: the record is what is read. Rows as they are seen.
#include "report/model/CopyRows.h"
#include "report/model/FindItem.h"
#include "tests/report/ModelControl.h"
#include "tests/support/FailingMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>

namespace
{

using report::FetchedCell;

// Whatever a subclass answers, its record or a copy, is what is read and written.
TEST(Items, ReadsWhatTheOwnerAnswersInCallbackMode)
{
    for (const bool copies : {false, true})
    {
        ModelControl control;
        control.copies = copies;
        control.AskFor(10);
        control.Define(1);
        control.answer = [&](_RVITEM& question) {
            EXPECT_EQ(RVIM_TEXT | RVIM_TEXTCOLOR, question.mask & ~RVIM_STATE) << "whatever is wanted";
            if (question.item == 9)
                return false;
            if (question.item == 5)
                EXPECT_EQ("6", control.Text(6, 1)); // which leaves this one alone
            const char text[] = {static_cast<char>('0' + question.item), '\x07', 'x', '\0'};
            std::strcpy(question.text, text);
            question.mask = RVIM_TEXT | RVIM_IMAGE;
            question.image = question.subitem;
            return true;
        };
        FetchedCell fetched;
        ASSERT_TRUE(control.items.Fetch(5, -1, RVIM_TEXT, fetched));
        EXPECT_EQ("5\x07x", fetched.cell.text) << "all of a preview";
        ASSERT_TRUE(control.items.Fetch(5, 1, RVIM_STATE, fetched));
        EXPECT_EQ((report::Cell{1, -1, -1, -1, true, "5"}), fetched.cell) << "a text ends at the separator";
        ASSERT_TRUE(control.items.Fetch(9, 1, RVIM_TEXT, fetched));
        EXPECT_FALSE(fetched.cell.hasText) << "the default item's";
        EXPECT_FALSE(control.items.Fetch(10, 1, RVIM_TEXT, fetched));
        control.Define(1);
        ASSERT_TRUE(control.items.Fetch(5, 1, RVIM_TEXT, fetched));
        const std::string cells = fetched.item->cells.c_str();
        EXPECT_EQ(3 + 1, std::count(cells.begin(), cells.end(), '\x07')) << "one is in the text";
        EXPECT_FALSE(control.SetText(0, 0, "x"));
    }
}

// A subclass that loads by itself finds nothing of the item before, and the owner an empty text buffer.
TEST(Items, AreAskedForWithNothingOfTheItemBefore)
{
    const std::pair<int, int> written[] = {{0, 3},         {0, 65536},     {100, 200}, {65535, 65537},
                                           {65000, 65537}, {64000, 65030}, {0, 65537}, {0, 0}};
    ModelControl control;
    control.AskFor(1);
    control.load = [](report::Item& record) {
        EXPECT_EQ(report::UndefinedField(), record.cells.c_str());
        EXPECT_STREQ("", record.previewText.c_str());
        const int numbers[] = {record.backgroundColor, record.treeLevel, record.previewTextColor};
        EXPECT_EQ(3, std::count(std::begin(numbers), std::end(numbers), -1));
        EXPECT_TRUE(record.previewHeight == 0 && record.state == 0 && record.itemData == 0);
    };
    for (const auto& [begin, end] : written)
    {
        control.answer = [first = begin, last = end](_RVITEM& question) {
            EXPECT_EQ(65536, question.textMax);
            EXPECT_EQ(65537, std::count(question.text, question.text + 65537, '\0')) << first;
            std::fill(question.text + first, question.text + last, 'x');
            question.text[1] = '\0'; // what is behind it stays there
            question.mask = ~0u;
            question.textColor = question.backgroundColor = question.treeLevel = question.previewHeight = 1;
            question.itemData = question.state = 1;
            return true;
        };
        control.Text(0, 0);
    }
}

// ---- Finding

// The items that are looked at, in their order.
TEST(FindItem, LooksAtEachItemOnceFromTheNextOneOn)
{
    constexpr std::uint32_t kWrapBack = RVFI_WRAP | RVFI_BACKWARD;
    const std::tuple<std::uint32_t, int, int, const char*> cases[] = {
        {0, -1, 3, "0 1 2 "},
        {0, 1, 4, "2 3 "},
        {0, -2, 2, "-1 0 1 "},
        {RVFI_WRAP, 1, 4, "2 3 -1 0 "},
        {RVFI_WRAP, -1, 2, "0 1 -1 "},
        {RVFI_WRAP, -1, 0, "-1 "},
        {RVFI_WRAP, -5, 2, "1 -1 0 "},
        {RVFI_WRAP, INT_MAX, 1, "-1 0 "},
        {RVFI_BACKWARD, 2, 4, "1 0 -1 "},
        {RVFI_BACKWARD, -1, 4, ""},
        {RVFI_BACKWARD, INT_MIN, 4, ""},
        {kWrapBack, 1, 4, "0 -1 3 2 "},
        {kWrapBack, -1, 2, "1 0 "},
        {kWrapBack, 7, 2, "-1 1 0 "},
        {kWrapBack, INT_MIN, 2, "1 0 -1 "},
        {kWrapBack, 0, 0, "-1 "},
    };
    for (const auto& [flags, start, count, expected] : cases)
    {
        std::string looked;
        int last = RVI_NONE;
        const auto look = [&](int item) { return looked += std::to_string(last = item) + ' ', false; };
        EXPECT_EQ(RVI_NONE, report::FindItem(flags, start, count, look));
        EXPECT_EQ(expected, looked) << flags << " from " << start << " of " << count;
        EXPECT_EQ(last, report::FindItem(flags, start, count, [&](int item) { return item == last; }));
    }
}

TEST(FindItem, MatchesWhenEachCriterionHolds)
{
    const report::Cell cell{3, -1, 0, -1, true, "Text"};
    constexpr std::uint32_t kAll = RVFI_TEXT | RVFI_IMAGE | RVFI_CHECK | RVFI_ITEMDATA;
    const std::tuple<_RVFINDINFO, bool, bool> cases[] = {
        // on the cell, and on one that has nothing
        {{0, "x", 9, 9, 9}, true, true},
        {{kAll, "Text", 3, 0, 7}, true, false},
        {{kAll, "Text", 3, 1, 7}, false, false},
        {{kAll, "Text", 4, 0, 7}, false, false},
        {{RVFI_TEXT, "text"}, false, false},
        {{RVFI_TEXT, "Tex"}, false, false},
        {{RVFI_TEXT | RVFI_PREFIX, "Tex"}, true, false},
        {{RVFI_TEXT | RVFI_PREFIX, "Texts"}, false, false},
        {{RVFI_TEXT | RVFI_PREFIX, nullptr}, true, false},
        {{RVFI_IMAGE, nullptr, -1}, false, false},
        {{RVFI_CHECK, nullptr, -1, -1}, false, false},
        {{RVFI_ITEMDATA, nullptr, -1, -1, 7}, true, true},
    };
    for (const auto& [info, full, bare] : cases)
        EXPECT_EQ(std::pair(full, bare),
                  std::pair(report::Matches(info, cell, 7), report::Matches(info, {}, 7)))
            << info.flags;
}

// What a subclass that keeps records by itself is asked for.
TEST(Items, AskWithAllThatIsNeeded)
{
    ModelControl control;
    control.Define(1);
    control.rows.InsertItem(0);
    const std::pair<std::function<void()>, std::vector<unsigned>> acts[] = {
        {[&] { control.items.Find({}, 0, -1); }, {RVIM_TEXT | RVIM_IMAGE | RVIM_CHECK | RVIM_ITEMDATA}},
        {[&] { control.SetText(0, 0, "x"); }, {RVIM_TEXT | RVIM_STATE, 0}},
        {[&] { control.items.SetState(0, 4, 4); }, {RVIM_STATE}},
        {[&] { control.items.SetPreview(0, "", 0, -1); }, {RVIM_TEXT | RVIM_PREVIEWHEIGHT}},
    };
    for (const auto& [act, masks] : acts)
    {
        control.masks.clear();
        act();
        EXPECT_EQ(masks, control.masks);
    }
}

// ---- Rows

// A tree item of an owner knows the root only as a handle, or not at all.
TEST(Rows, LinkAnOwnersTreeItems)
{
    for (_TREEITEM* const parent : {report::kTreeRoot, static_cast<_TREEITEM*>(nullptr)})
    {
        _TREEITEM own[4];
        ModelControl control;
        control.Define(1);
        report::Rows& rows = control.rows;
        rows.SetMode(false, true);
        for (int item = 0; item < 4; ++item)
        {
            rows.InsertItem(item);
            own[item].item = item;
            control.items.Stored().At(item).treeItem = &own[item];
        }
        own[0].expanded = 1;
        control.compare = [&rows](int, int) { return rows.InsertItem(0) < 0 ? -7 : 7; }; // items stay
        rows.InsertTree(0, parent, report::kTreeLast, &own[0], true);
        rows.InsertTree(0, &own[0], nullptr, &own[1], true); // as at the end
        rows.InsertTree(0, parent, report::kTreeLast, &own[2], true);
        EXPECT_EQ(-7, rows.InsertTree(0, parent, report::kTreeSort, &own[3], true)) << "in front";
        EXPECT_EQ(1, own[2].level);
        EXPECT_EQ(2, own[1].level);
        rows.Build();
        EXPECT_EQ((std::vector<int>{3, 0, 1, 2}), rows.Map().Items());
        EXPECT_TRUE(rows.DeleteItem(3)); // the first child of the root
        EXPECT_EQ(nullptr, own[3].nextSibling);
        EXPECT_TRUE(rows.DeleteTreeItem(&own[0]));
        EXPECT_EQ(1, rows.Count());
        EXPECT_EQ(&own[2], rows.GetTree().Root()->firstChild);
        EXPECT_EQ(0, own[2].item);
    }
}

TEST(Rows, FindNothingAtNoTreeItem)
{
    ModelControl control;
    report::Rows& rows = control.rows;
    rows.SetMode(false, true);
    bool isHidden = true;
    EXPECT_EQ(0, rows.InsertTree(0, nullptr, nullptr, nullptr, true));
    EXPECT_EQ(nullptr, rows.Next(nullptr, RVGN_ROOT));
    EXPECT_EQ(nullptr, rows.VisibleAncestor(nullptr, isHidden));
    EXPECT_FALSE(rows.GetTree().IsDescendant(nullptr, rows.GetTree().Root()));
    EXPECT_FALSE(rows.GetTree().IsDescendant(rows.GetTree().Root(), nullptr));
    EXPECT_EQ(0, report::Tree::Count(nullptr, true));
    rows.Build(nullptr); // appends nothing
    EXPECT_EQ(0, rows.Count());
    EXPECT_FALSE(rows.DeleteTreeItem(nullptr));
}

TEST(Rows, FormNoTreeInCallbackMode)
{
    ModelControl control;
    report::Rows& rows = control.rows;
    rows.SetMode(true, true);
    rows.SetCallbackCount(3);
    EXPECT_FALSE(rows.IsTree());
    EXPECT_EQ(3, rows.Count());
    EXPECT_EQ(nullptr, rows.InsertTreeItem(nullptr, nullptr, "x", 0, true));
    EXPECT_THROW(rows.Select(2, 3, report::SelectMode::Alone, false), std::invalid_argument);
    EXPECT_TRUE(rows.Select(2, 1, report::SelectMode::Alone, false));
    rows.selection.anchor = 2;
    rows.SetCallbackCount(2);
    EXPECT_EQ(1, rows.FocusedRow());
    EXPECT_EQ(1, rows.selection.anchor);
    EXPECT_EQ((report::RowRange{1, 2}), rows.SelectedRows()); // the next new row is selected
    rows.SetCallbackCount(1);
    EXPECT_EQ((report::RowRange{1, 1}), rows.SelectedRows());

    // Of the same stored items there are a list and a tree.
    rows.SetMode(false, false);
    EXPECT_EQ(report::kNoRow, rows.FocusedRow());
    rows.InsertItem(0);
    EXPECT_EQ(1, rows.Count());
    rows.SetMode(false, true);
    EXPECT_EQ(0, rows.Count());
    rows.SetMode(false, false);
    EXPECT_EQ(1, rows.Count());
    for (const bool isList : {true, false})
    {
        EXPECT_TRUE(rows.SetOrder({0}) && rows.Focus(0, -1));
        isList ? static_cast<void>(rows.SetOrder({9})) : rows.SetMode(true, false);
        EXPECT_EQ(report::kNoRow, rows.FocusedRow()) << "of other items";
        EXPECT_EQ(0u, control.items.Stored().At(0).state);
    }
}

// Everything there is, in words.
std::string Describe(ModelControl& control)
{
    std::string all = std::to_string(control.items.SubItemCount());
    for (int item = -1; item < control.items.Count(); ++item)
    {
        const report::Item& stored = control.items.Stored().At(item);
        all += std::string("|") + stored.cells.c_str();
        all += stored.treeItem ? std::to_string(stored.treeItem->item) : "";
    }
    for (int row = 0; row < control.rows.Count(); ++row)
        all += ' ' + std::to_string(control.rows.ItemAt(row));
    return all + " focus " + std::to_string(control.rows.FocusedRow());
}

TEST(Items, ComeWholeOrNotAtAllWhenMemoryRunsOut)
{
    const std::function<bool(ModelControl&)> acts[] = {
        [](ModelControl& control) { return control.items.Define(1, {}); },
        [](ModelControl& control) { return control.rows.InsertItem(1) == 1; },
        [](ModelControl& control) { return control.rows.InsertItem(control.items.Count()) >= 0; },
        [](ModelControl& control) {
            return control.rows.InsertTreeItem(nullptr, nullptr, "a text of some length", 0, true) != nullptr;
        }};
    for (const auto& act : acts)
    {
        const bool isTree = &act == &acts[3];
        const auto make = [isTree] {
            auto control = std::make_unique<ModelControl>();
            control->Define(2);
            control->SetText(RVI_DEFAULT, 1, std::string(40, 'x')); // items are copies without room for more
            control->rows.SetMode(false, true);
            for (int item = 0; item < 4; ++item)
                control->rows.InsertTreeItem(nullptr, nullptr, "x", 0, true);
            control->rows.SetMode(false, isTree); // a list that has been a tree
            control->rows.Focus(2, -1);
            return control;
        };
        ExpectAllOrNothing(make, act, Describe);
    }
}

TEST(CopyRows, GivesALineForEachRowAndATabBetweenCells)
{
    ModelControl control;
    control.Define(3);
    for (int item = 0; item < 3; ++item)
        control.rows.InsertItem(item);
    control.SetText(0, 0, "a\tb\r\nc");
    control.SetText(1, 0, "\xC3\xA4\xE2\x82\xAC"); // UTF-8
    control.SetText(1, 2, "\xE4\x80");             // the code page
    control.rows.SetOrder({2, 1, 0});
    std::string text;
    const auto copy = [&](report::RowRange range) {
        const ZEMA::WideString wide = report::CopyRows(control.items, control.rows, range, {2, 0});
        ZEMA::FromWide(wide.data(), wide.size(), text);
        return text;
    };
    EXPECT_EQ("\xC3\xA4\xE2\x82\xAC\t\xC3\xA4\xE2\x82\xAC\r\n\ta b  c\r\n", copy({1, 2}));
    EXPECT_EQ("\t\r\n", copy({0, 0}));
    EXPECT_EQ("\ta b  c\r\n", copy({2, 9})) << "rows that have gone";
    EXPECT_EQ("", copy({0, -1}));
}

} // namespace
