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
        ASSERT_TRUE(control.items.Fetch(5, 1, RVIM_TEXT, fetched));
        EXPECT_EQ((report::Cell{1, -1, -1, -1, true, "5"}), fetched.cell) << "a text ends at the separator";
        EXPECT_STREQ("5\x07x", fetched.item->previewText.c_str());
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

// A subclass that loads by itself finds nothing of the item before.
TEST(Items, AreLoadedIntoABlankRecord)
{
    ModelControl control;
    control.AskFor(2);
    control.load = [](report::Item& record) {
        EXPECT_EQ(report::UndefinedField(), record.cells.c_str());
        EXPECT_STREQ("", record.previewText.c_str());
        const int numbers[] = {record.backgroundColor, record.treeLevel, record.previewTextColor};
        EXPECT_EQ(3, std::count(std::begin(numbers), std::end(numbers), -1));
        EXPECT_TRUE(record.previewHeight == 0 && record.state == 0 && record.itemData == 0);
        record.cells = record.previewText = "x";
        record.backgroundColor = record.treeLevel = record.previewTextColor = record.previewHeight = 1;
        record.state = 1;
        record.itemData = 1;
        return true;
    };
    FetchedCell fetched;
    for (const int item : {0, 1})
        EXPECT_TRUE(control.items.Fetch(item, 0, 0, fetched));
}

TEST(Items, HandsTheOwnerAnEmptyTextBufferEachTime)
{
    const std::pair<int, int> written[] = {{0, 3}, {0, 65536}, {100, 200}, {65535, 65537}, {900, 5000}};
    ModelControl control;
    control.AskFor(1);
    for (const auto& [begin, end] : written)
    {
        control.answer = [first = begin, last = end](_RVITEM& question) {
            EXPECT_EQ(65536, question.textMax);
            EXPECT_EQ(65537, std::count(question.text, question.text + 65537, '\0')) << first;
            std::fill(question.text + first, question.text + last, 'x');
            question.text[1] = '\0'; // what is behind it stays there
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
    const struct
    {
        std::uint32_t flags;
        int start, count;
        const char* looked;
    } cases[] = {
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
    for (const auto& each : cases)
    {
        std::string looked;
        int last = RVI_NONE;
        const auto look = [&](int item) {
            looked += std::to_string(last = item) + ' ';
            return false;
        };
        EXPECT_EQ(RVI_NONE, report::FindItem(each.flags, each.start, each.count, look));
        EXPECT_EQ(each.looked, looked) << each.flags << " from " << each.start << " of " << each.count;
        const auto match = [&](int item) { return item == last; };
        EXPECT_EQ(last, report::FindItem(each.flags, each.start, each.count, match));
    }
}

TEST(FindItem, MatchesWhenEachCriterionHolds)
{
    const report::Cell cell{3, -1, 0, -1, true, "Text"};
    constexpr std::uint32_t kAll = RVFI_TEXT | RVFI_IMAGE | RVFI_CHECK | RVFI_ITEMDATA;
    const struct
    {
        _RVFINDINFO info;
        bool full, bare; // on the cell, and on one that has nothing
    } cases[] = {
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
    for (const auto& each : cases)
    {
        EXPECT_EQ(each.full, report::Matches(each.info, cell, 7)) << &each - cases;
        EXPECT_EQ(each.bare, report::Matches(each.info, {}, 7)) << &each - cases;
    }
}

TEST(FindItem, AsksWithAllThatItMayCompare)
{
    ModelControl control;
    control.Define(1);
    control.rows.InsertItem(0);
    EXPECT_EQ(0, control.items.Find({RVFI_ITEMDATA, nullptr, 0, 0, 0}, 0, -1));
    EXPECT_EQ(RVIM_TEXT | RVIM_IMAGE | RVIM_CHECK | RVIM_ITEMDATA, control.mask);
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
        control.compare = [](int, int) { return -7; };
        rows.InsertTree(0, parent, report::kTreeLast, &own[0], true);
        rows.InsertTree(0, &own[0], nullptr, &own[1], true); // as at the end
        rows.InsertTree(0, parent, report::kTreeLast, &own[2], true);
        EXPECT_EQ(-7, rows.InsertTree(0, parent, report::kTreeSort, &own[3], true)) << "in front";
        EXPECT_EQ(1, own[2].level);
        EXPECT_EQ(2, own[1].level);
        for (const int topLevel : {0, 2, 3})
            own[topLevel].parent = parent; // as an owner may say afterwards
        rows.Build();
        EXPECT_EQ((std::vector<int>{3, 0, 1, 2}), rows.Map().Items());

        report::Tree& tree = rows.GetTree();
        bool isHidden = true;
        EXPECT_EQ(&own[0], rows.Next(&own[1], RVGN_ROOT));
        EXPECT_EQ(&own[3], rows.Next(&own[0], RVGN_PREVIOUS));
        EXPECT_EQ(nullptr, rows.Next(&own[2], RVGN_PARENT));
        EXPECT_EQ(&own[1], rows.VisibleAncestor(&own[1], isHidden));
        EXPECT_TRUE(tree.IsDescendant(tree.Root(), &own[2]));

        EXPECT_TRUE(rows.DeleteItem(3)); // the first child of the root
        EXPECT_EQ(nullptr, own[3].nextSibling);
        EXPECT_TRUE(rows.DeleteTreeItem(&own[0]));
        EXPECT_EQ(1, rows.Count());
        EXPECT_EQ(&own[2], tree.Root()->firstChild);
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

// Tree items a, with b and c below it, and e; below c is d, and below that f.
TEST(Rows, TellWhatLiesAroundATreeItem)
{
    ModelControl control;
    report::Rows& rows = control.rows;
    rows.SetMode(false, true);
    _TREEITEM* handles[] = {report::kTreeRoot, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr};
    for (const auto& [item, parent] : {std::pair(1, 0), {2, 1}, {3, 1}, {4, 3}, {5, 0}, {6, 4}})
        handles[item] = rows.InsertTreeItem(handles[parent], report::kTreeLast, nullptr, 0, true);
    rows.Expand(handles[1], RVE_EXPAND);
    rows.Focus(2, -1);
    // Top, next, previous, parent, first child and focus; what shows it; how many are below it, and in all.
    const char* const around[] = {"ae--bca24", "ac-a-cb00", "a-badcc12",
                                  "a--cfcc11", "e-a--ce00", "a--d-cc00"};
    const auto nameOf = [](const _TREEITEM* item) {
        return item ? static_cast<char>('a' + item->item) : '-';
    };
    for (int item = 0; item < 6; ++item)
    {
        _TREEITEM* const handle = handles[item + 1];
        std::string text;
        for (unsigned code = RVGN_ROOT; code <= RVGN_FOCUSED; ++code)
            text += nameOf(rows.Next(handle, code));
        bool isHidden = false;
        text += nameOf(rows.VisibleAncestor(handle, isHidden));
        text += std::to_string(report::Tree::Count(handle, false));
        text += std::to_string(report::Tree::Count(handle, true));
        EXPECT_EQ(around[item], text);
        EXPECT_EQ(item == 3 || item == 5, isHidden) << item;
        EXPECT_EQ(item == 0 || item == 2, rows.GetTree().IsDescendant(handle, handles[4])) << item;
    }
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
    EXPECT_TRUE(rows.Focus(0, -1));
    rows.SetMode(true, false);
    EXPECT_EQ(report::kNoRow, rows.FocusedRow()) << "of other items";
}

// Everything there is, in words.
std::string Describe(ModelControl& control)
{
    std::string all = std::to_string(control.items.SubItemCount());
    for (int item = -1; item < control.items.Count(); ++item)
        all += std::string("|") + control.items.Stored().At(item).cells.c_str();
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
            control->rows.SetMode(false, isTree);
            for (int item = 0; item < 4; ++item)
            {
                if (isTree)
                    control->rows.InsertTreeItem(nullptr, nullptr, "x", 0, true);
                else
                    control->rows.InsertItem(item);
            }
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
