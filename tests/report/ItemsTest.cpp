// Items as callers, subclasses and owners see them: the record is what is read.
#include "report/model/CopyRows.h"
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
        control.Define(2);
        control.rows.SetMode(true, false);
        control.rows.SetCallbackCount(10);
        control.answer = [&](_RVITEM& question) {
            if (question.item == 9)
                return false;
            if (question.item == 5)
                EXPECT_EQ("6", control.Text(6, 1).substr(0, 1)); // which leaves this one alone
            const char text[] = {static_cast<char>('0' + question.item), '\x07', 'x', '\0'};
            std::strcpy(question.text, text);
            question.mask = RVIM_TEXT | RVIM_IMAGE | RVIM_TEXTCOLOR;
            question.image = question.subitem;
            question.textColor = 4;
            question.check = 1; // not in the mask
            return true;
        };
        FetchedCell fetched;
        ASSERT_TRUE(control.items.Fetch(5, 1, RVIM_TEXT, fetched));
        EXPECT_EQ("5", fetched.cell.text) << copies; // a text ends at the separator
        EXPECT_EQ(1, fetched.cell.image);
        EXPECT_EQ(-1, fetched.cell.check);
        EXPECT_EQ(4, fetched.cell.textColor);
        EXPECT_STREQ("5\x07x", fetched.item->previewText.c_str());
        ASSERT_TRUE(control.items.Fetch(9, 1, RVIM_TEXT, fetched));
        EXPECT_FALSE(fetched.cell.hasText); // the default item's
        EXPECT_FALSE(control.items.Fetch(10, 1, RVIM_TEXT, fetched));
        control.Define(1);
        ASSERT_TRUE(control.items.Fetch(5, 1, RVIM_TEXT, fetched));
        const std::string cells = fetched.item->cells.c_str();
        EXPECT_EQ(3 + 1, std::count(cells.begin(), cells.end(), report::CellSeparator()))
            << "one is in the text";
        EXPECT_FALSE(control.SetText(0, 0, "x"));
    }
}

// A subclass that loads by itself finds nothing of the item before.
TEST(Items, AreLoadedIntoABlankRecord)
{
    ModelControl control;
    control.Define(1);
    control.rows.SetMode(true, false);
    control.rows.SetCallbackCount(2);
    for (int item = 0; item < 2; ++item)
    {
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
        ASSERT_TRUE(control.items.Fetch(item, 0, 0, fetched));
    }
}

TEST(Items, TakesFromAnAnswerWhatItsMaskNames)
{
    ModelControl control;
    control.Define(1);
    control.rows.SetMode(true, false);
    control.rows.SetCallbackCount(1);
    for (unsigned mask = 1; mask <= RVIM_EXTRA; mask *= 2)
    {
        control.answer = [mask](_RVITEM& question) {
            std::strcpy(question.text, "a");
            question.textColor = question.image = question.check = question.backgroundColor = 1;
            question.previewHeight = question.treeLevel = question.extra = 1;
            question.state = 1;
            question.itemData = 1;
            question.mask = mask;
            return true;
        };
        FetchedCell fetched;
        ASSERT_TRUE(control.items.Fetch(0, 0, 0, fetched));
        const report::Item& item = *fetched.item;
        const report::Cell& cell = fetched.cell;
        const std::pair<unsigned, std::int64_t> taken[] = {
            {RVIM_TEXT, cell.hasText},
            {RVIM_TEXTCOLOR, cell.textColor + 1},
            {RVIM_IMAGE, cell.image + 1},
            {RVIM_CHECK, cell.check + 1},
            {RVIM_EXTRA, cell.extra + 1},
            {RVIM_BACKGROUNDCOLOR, item.backgroundColor + 1},
            {RVIM_PREVIEWHEIGHT, item.previewHeight},
            {RVIM_TREELEVEL, item.treeLevel + 1},
            {RVIM_STATE, item.state},
            {RVIM_ITEMDATA, item.itemData},
        };
        for (const auto& [bit, value] : taken)
            EXPECT_EQ(bit == mask, value != 0) << bit << " of " << mask;
    }
}

TEST(Items, HandsTheOwnerAnEmptyTextBufferEachTime)
{
    const std::pair<int, int> written[] = {{0, 3}, {0, 65536}, {100, 200}, {65535, 65537}, {900, 5000}};
    ModelControl control;
    control.Define(1);
    control.rows.SetMode(true, false);
    control.rows.SetCallbackCount(1);
    for (const auto& [begin, end] : written)
    {
        control.answer = [&, first = begin, last = end](_RVITEM& question) {
            EXPECT_EQ(65536, question.textMax);
            EXPECT_EQ(65537, std::count(question.text, question.text + 65537, '\0')) << first;
            std::fill(question.text + first, question.text + last, 'x');
            question.text[1] = '\0'; // what is behind it stays there
            return true;
        };
        control.Text(0, 0);
    }
}

TEST(Items, FindsWithAllThatItMayCompare)
{
    ModelControl control;
    control.Define(1);
    control.rows.InsertItem(0);
    _RVFINDINFO info = {RVFI_ITEMDATA, nullptr, 0, 0, 0};
    EXPECT_EQ(0, control.items.Find(info, 0, -1));
    EXPECT_EQ(RVIM_TEXT | RVIM_IMAGE | RVIM_CHECK | RVIM_ITEMDATA, control.mask);
}

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
        rows.InsertTree(0, parent, report::kTreeLast, &own[0], true);
        rows.InsertTree(0, &own[0], nullptr, &own[1], true); // as at the end
        rows.InsertTree(0, parent, report::kTreeLast, &own[2], true);
        rows.InsertTree(0, parent, report::kTreeFirst, &own[3], true);
        EXPECT_EQ(1, own[2].level);
        EXPECT_EQ(2, own[1].level);
        EXPECT_EQ(0, rows.InsertTree(0, parent, nullptr, nullptr, true));
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
        EXPECT_EQ(nullptr, rows.Next(nullptr, RVGN_ROOT));
        EXPECT_EQ(nullptr, rows.VisibleAncestor(nullptr, isHidden));
        EXPECT_FALSE(tree.IsDescendant(nullptr, &own[2]));
        EXPECT_FALSE(tree.IsDescendant(tree.Root(), nullptr));
        EXPECT_EQ(0, report::Tree::Count(nullptr, true));
        rows.Build(nullptr); // appends nothing
        EXPECT_FALSE(rows.DeleteTreeItem(nullptr));

        EXPECT_TRUE(rows.DeleteItem(3)); // the first child of the root
        EXPECT_TRUE(rows.DeleteTreeItem(&own[0]));
        EXPECT_EQ(1, rows.Count());
        EXPECT_EQ(&own[2], tree.Root()->firstChild);
        EXPECT_EQ(0, own[2].item);
    }
}

TEST(Rows, FormNoTreeInCallbackMode)
{
    ModelControl control;
    control.Define(1);
    control.rows.SetMode(true, true);
    control.rows.SetCallbackCount(3);
    EXPECT_FALSE(control.rows.IsTree());
    EXPECT_EQ(3, control.rows.Count());
    EXPECT_EQ(nullptr, control.rows.InsertTreeItem(nullptr, nullptr, "x", 0, true));
    EXPECT_TRUE(control.rows.Select(2, 1, report::SelectMode::Alone, false));
    control.rows.SetCallbackCount(2);
    EXPECT_EQ(1, control.rows.FocusedRow());
    EXPECT_EQ((report::RowRange{1, 2}), control.rows.SelectedRows()); // the next new row is selected

    // Of the same stored items there are a list and a tree.
    control.rows.SetMode(false, false);
    EXPECT_EQ(report::kNoRow, control.rows.FocusedRow());
    control.rows.InsertItem(0);
    EXPECT_EQ(1, control.rows.Count());
    control.rows.SetMode(false, true);
    EXPECT_EQ(0, control.rows.Count());
    control.rows.SetMode(false, false);
    EXPECT_EQ(1, control.rows.Count());
    EXPECT_TRUE(control.rows.Focus(0, -1));
    control.rows.SetMode(true, false);
    EXPECT_EQ(report::kNoRow, control.rows.FocusedRow()) << "of other items";
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
