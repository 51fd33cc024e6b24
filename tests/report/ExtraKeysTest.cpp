// The keys that an owner switches on, typing to a row, and rows as a table of text.
#include "report/model/ExtraKeys.h"
#include "report/model/CopyRows.h"
#include "tests/report/InputList.h"
#include "tests/report/ModelControl.h"

#include <climits>
#include <random>

namespace
{

using namespace report;

// Rows 0 to 9: 2 is expanded and has rows 3 and 4 below it, 5 is collapsed. The columns are 50 wide.
class Target : public InputList, public ExtraKeysTarget
{
public:
    Target()
    {
        rows = 10;
        tree = true;
    }
    int RowCount() override { return rows; }
    bool BeginsWith(int row, const ZEMA::WideString& typed) override
    {
        return texts.at(static_cast<std::size_t>(row)).starts_with(std::string(typed.begin(), typed.end()));
    }
    TreeRow TreeRowAt(int row) override
    {
        EXPECT_LT(row, rows);
        return {row == 2 || row == 5, row == 2, row == 3 || row == 4 ? 2 : kNoRow};
    }
    void SelectAll() override { log += " all"; }
    void Copy() override { log += " copy"; }
    int MarkedColumn() override { return mark; }
    void MarkColumn(int column) override { mark = column; }
    void EnsureVisibleColumn(int column) override { log += " show " + std::to_string(column); }
    int WidthOf(int) override { return width; }
    void SetWidth(int column, int to) override
    {
        log += " width " + std::to_string(column) + ' ' + std::to_string(to);
    }
    void FitColumn(int column) override { log += " fit " + std::to_string(column); }
    void MoveColumn(int from, int to) override
    {
        log += " move " + std::to_string(from) + ' ' + std::to_string(to);
    }
    void ClickColumn(int column) override { log += " click " + std::to_string(column); }

    int mark = kNoColumn;
    int width = 50;
    std::vector<std::string> texts;
    ExtraKeysState state;
};

std::string Press(Target& target, unsigned keys, unsigned key, Modifiers modifiers)
{
    target.log.clear();
    target.state.switchedOn = keys;
    const bool done = ExtraKeys(target.state, target.selection, target, target).KeyDown(key, modifiers, 0);
    return done ? target.log : target.log + " not";
}

TEST(ExtraKeys, EachDoesOneThingWhenItIsSwitchedOn)
{
    const Modifiers none, shift{true, false}, control{false, true}, both{true, true};
    const auto left = static_cast<unsigned>(Key::Left);
    const auto right = static_cast<unsigned>(Key::Right);
    const auto space = static_cast<unsigned>(Key::Space);
    const auto add = static_cast<unsigned>(Key::Add);
    const auto subtract = static_cast<unsigned>(Key::Subtract);
    const auto multiply = static_cast<unsigned>(Key::Multiply);
    const struct
    {
        int line;
        unsigned keys, key;
        Modifiers modifiers;
        const char* expected;
        int focus = 5;
        int mark = kNoColumn;
        int focusColumn = kNoColumn;
        bool cellFocus = false;
    } cases[] = {
        {__LINE__, kFoldKeys, right, none, " tree 5+"},
        {__LINE__, kFoldKeys, right, none, " select 3..3", 2},
        {__LINE__, kFoldKeys, right, shift, " select 3..0", 2},
        {__LINE__, kFoldKeys, right, none, " not", 3},
        {__LINE__, kFoldKeys, left, none, " tree 2-", 2},
        {__LINE__, kFoldKeys, left, none, " select 2..2", 4},
        {__LINE__, kFoldKeys, left, none, " not"},
        {__LINE__, kFoldKeys, left, control, " not", 2},
        {__LINE__, kFoldKeys, left, none, " not", kNoRow},
        {__LINE__, kFoldKeys, right, none, " not", kFixedRow},
        {__LINE__, kFoldKeys, right, none, " not", 10},
        {__LINE__, kFoldKeys, right, none, " tree 5+", 5, kNoColumn, kNoColumn, true},
        {__LINE__, kFoldKeys, right, none, " not", 5, kNoColumn, 0, true},
        {__LINE__, kFoldKeys, right, none, " not", 2, kNoColumn, kNoColumn, true}, // to its first cell
        {__LINE__, kSelectAllKey, 'A', control, " all"},
        {__LINE__, kSelectAllKey, 'A', none, " not"},
        {__LINE__, kSelectAllKey, 'A', both, " not"},
        {__LINE__, kCopyKeys, 'C', control, " copy"},
        {__LINE__, kCopyKeys, 45, control, " copy"},
        {__LINE__, kCopyKeys, 45, shift, " not"},
        {__LINE__, kColumnKeys, right, control, " show 0"},
        {__LINE__, kColumnKeys, left, control, " show 3"},
        {__LINE__, kColumnKeys, left, control, " show 3", 5, 9},
        {__LINE__, kColumnKeys, right, control, " show 3", 5, 3},
        {__LINE__, kColumnKeys, left, control, " show 1", 5, 2},
        {__LINE__, kColumnKeys, left, control, " not", 5, 2, 1, true}, // the focus moves
        {__LINE__, kColumnKeys, right, none, " not", 5, 2},
        {__LINE__, kColumnKeys, right, both, " move 2 3 show 3", 5, 2},
        {__LINE__, kColumnKeys, right, both, "", 5, 3},
        {__LINE__, kColumnKeys, left, both, "", 5, 0},
        {__LINE__, kColumnKeys, left, both, " move 1 0 show 0", 5, 2, 1, true},
        {__LINE__, kColumnKeys, left, both, " not"},
        {__LINE__, kColumnKeys, space, both, " click 2", 5, 2},
        {__LINE__, kColumnKeys, space, control, " not", 5, 2},
        {__LINE__, kColumnKeys, add, control, " width 2 58", 5, 2},
        {__LINE__, kColumnKeys, 0xBB, both, " width 1 58", 5, 2, 1, true},
        {__LINE__, kColumnKeys, subtract, control, " width 0 42", 5, 0},
        {__LINE__, kColumnKeys, 0xBD, control, " width 0 42", 5, 0},
        {__LINE__, kColumnKeys, multiply, control, " fit 0", 5, 0},
        {__LINE__, kColumnKeys, multiply, none, " not", 5, 0},
        {__LINE__, kColumnKeys, multiply, control, " not", 5, 4}, // there is no such column any more
    };
    for (const auto& each : cases)
    {
        Target target;
        target.cellFocus = each.cellFocus;
        target.mark = each.mark;
        target.selection.focusRow = each.focus;
        target.selection.focusColumn = each.focusColumn;
        target.selection.anchor = 0;
        EXPECT_EQ(each.expected, Press(target, each.keys, each.key, each.modifiers)) << "line " << each.line;
        const bool isShown = target.log.find("show") != std::string::npos;
        const int current = each.cellFocus ? target.selection.focusColumn : target.mark;
        EXPECT_TRUE(!isShown || target.log.back() == '0' + current) << "line " << each.line;
        if (std::string(each.expected) == " not")
            continue;
        target.selection.focusRow = each.focus;
        EXPECT_EQ(" not", Press(target, kAllExtraKeys & ~each.keys, each.key, each.modifiers));
    }
    Target target;
    target.mark = 0;
    target.selection.focusRow = 2;
    for (unsigned key = 0; key < 256; ++key)
        for (const Modifiers& modifiers : {none, shift, control, both})
            EXPECT_EQ(" not", Press(target, 0, key, modifiers)) << key;
    for (const auto& [width, key, expected] : {std::tuple(INT_MAX - 3, add, INT_MAX),
                                               {INT_MAX, add, INT_MAX},
                                               {12, subtract, 8},
                                               {3, subtract, 3}})
    {
        target.width = width;
        EXPECT_EQ(" width 0 " + std::to_string(expected), Press(target, kColumnKeys, key, control));
    }
}

TEST(ExtraKeys, ADoubleClickTogglesATreeItem)
{
    Target target;
    const auto click = [&target](unsigned keys, int row) {
        target.state.switchedOn = keys;
        return ExtraKeys(target.state, target.selection, target, target).DoubleClick(row);
    };
    for (const int row : {2, 5, 3, 10, kNoRow, kFixedRow})
        EXPECT_EQ(row == 2 || row == 5, click(kDoubleClickToggles, row)) << row;
    EXPECT_FALSE(click(kAllExtraKeys & ~kDoubleClickToggles, 2));
    target.tree = false;
    EXPECT_FALSE(click(kDoubleClickToggles, 2));
    EXPECT_EQ(" tree 2- tree 5+", target.log);
}

// Random typing, and the row that a plain search finds.
TEST(ExtraKeys, TypingGoesToTheNextRowThatBeginsSo)
{
    std::mt19937 random(23);
    const auto below = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    for (int round = 0; round < 300; ++round)
    {
        Target target;
        target.rows = below(8);
        for (int row = 0; row < target.rows; ++row)
        {
            target.texts.emplace_back();
            for (int length = below(4); length > 0; --length)
                target.texts.back() += static_cast<char>("ab "[below(3)]);
        }
        target.selection.focusRow = below(target.rows + 1) - 1;
        std::string typed;
        int start = 0;
        std::uint32_t time = UINT32_MAX - 2000;
        for (int step = 0; step < 12; ++step)
        {
            const bool goesOn = below(4) != 0 && step > 0;
            time += goesOn ? TypeAhead::kPause : TypeAhead::kPause + 1;
            const int focus = target.selection.focusRow;
            start = goesOn ? start : focus;
            typed = goesOn ? typed : "";
            const char character = "ab "[below(typed.empty() ? 2 : 3)];
            typed += character;
            const auto search = [&](int from, const std::string& text) {
                for (int i = 1; i <= target.rows; ++i)
                    if (target.BeginsWith((from + i) % target.rows, {text.begin(), text.end()}))
                        return (from + i) % target.rows;
                return kNoRow;
            };
            int expected = search(start, typed);
            if (expected == kNoRow && typed == std::string(typed.size(), character))
                expected = search(focus, std::string(1, character));

            target.state.switchedOn = kTypeAheadKeys;
            ExtraKeys keys(target.state, target.selection, target, target);
            target.selection.typingMayEdit = character != ' ';
            EXPECT_EQ(character == ' ', keys.KeyDown(static_cast<unsigned char>(character), {}, time));
            EXPECT_TRUE(keys.Character(static_cast<unsigned char>(character), time));
            ASSERT_EQ(expected == kNoRow ? focus : expected, target.selection.focusRow)
                << "round " << round << ", typed '" << typed << "' from " << start;
        }
    }
    Target target;
    target.rows = INT_MAX;
    target.texts.assign(TypeAhead::kMaxRows + 2, "b");
    target.texts.back() = "a";
    target.selection.focusRow = 0;
    EXPECT_EQ(kNoRow, target.state.typing.Type('a', 0, 0, target)) << "so many rows are not looked at";
    EXPECT_EQ(TypeAhead::kMaxRows + 1, target.state.typing.Type('a', 5000, 1, target));
    target.state.switchedOn = kTypeAheadKeys;
    ExtraKeys keys(target.state, target.selection, target, target);
    EXPECT_FALSE(keys.KeyDown(' ', {}, 20000)) << "which begins no text";
    target.selection.typingMayEdit = true;
    EXPECT_FALSE(keys.Character(8, 20000));
    target.selection.typingMayEdit = false;
    EXPECT_FALSE(keys.Character('a', 20000)) << "the key was a command";
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
    const auto copy = [&](RowRange range) {
        const ZEMA::WideString wide = CopyRows(control.items, control.rows, range, {2, 0});
        ZEMA::FromWide(wide.data(), wide.size(), text);
        return text;
    };
    EXPECT_EQ("\xC3\xA4\xE2\x82\xAC\t\xC3\xA4\xE2\x82\xAC\r\n\ta b  c\r\n", copy({1, 2}));
    EXPECT_EQ("\t\r\n", copy({0, 0}));
    EXPECT_EQ("\ta b  c\r\n", copy({2, 9})) << "rows that have gone";
    EXPECT_EQ("", copy({0, -1}));
}

} // namespace
