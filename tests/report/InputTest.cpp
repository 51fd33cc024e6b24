// What each key and click does, row by row; the keys that an owner switches on, and typing to a row.
#include "report/model/ExtraKeys.h"
#include "tests/support/Random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using namespace report;

// 100 rows, 1 high, of which 10 are seen, and columns 50 wide, of which column 1 cannot have the focus. In a
// tree, row 0 is expanded and has row 1 below it, 2 has 3 and 4, and 5 is collapsed. What it is told is
// written down.
class List : public InputTarget, public ExtraKeysTarget
{
public:
    // Numbers by their names, "rows 10 focus 2".
    explicit List(const std::string& scene = {})
    {
        std::istringstream words(scene);
        int value = 0;
        for (std::string word; words >> word >> value;)
        {
            if (word == "hidden")
                hidden.insert(value);
            else if (word == "to") // further hidden ones
                for (int row = *hidden.rbegin(); row <= value; ++row)
                    hidden.insert(row);
            else
                *numbers.at(word) = value;
        }
        toldColumn = selection.focusColumn;
        for (const auto& [name, each] : numbers)
            before[name] = *each;
    }
    // The numbers that have changed, and after a colon what was called.
    std::string State() const
    {
        EXPECT_EQ(toldColumn, selection.focusColumn);
        std::string changes;
        for (const auto& [name, number] : numbers)
            if (*number != before.at(name))
                changes += name + ' ' + std::to_string(*number) + ' ';
        return changes + ':' + log;
    }
    void Log(const std::string& what, const std::vector<int>& with = {})
    {
        log += ' ' + what;
        for (const int number : with)
            log += ' ' + std::to_string(number);
    }

    int RowCount() override { return rows; }
    bool HasHeight(int row) override { return !hidden.contains(row); }
    RowRange WholeRows() override { return {top, std::max(top, std::min(top + page, rows) - 1)}; }
    int ColumnCount() override { return columns; }
    bool CanFocus(int column) override
    {
        EXPECT_LT(column, columns);
        return column != 1;
    }
    bool IsCellFocus() const override { return cellFocus != 0; }
    bool IsFixedRow() const override { return fixedRow != 0; }
    bool IsTree() const override { return tree != 0; }
    void SelectRows(int row, int anchor, SelectMode mode) override
    {
        const char* const modes[] = {"focus", "select", "add", "toggle"};
        Log(modes[static_cast<int>(mode)], {row, anchor});
        selection.Select(row, anchor, mode, false);
    }
    void FocusFixedRow() override
    {
        Log("fixed");
        selection.focusRow = kFixedRow;
    }
    void EnsureVisible(int row) override { top = std::clamp(top, row - page + 1, row); }
    void Scroll(RowScroll how) override
    {
        const int tops[] = {top - page + 1, top + page - 1, 0, rows};
        top = std::clamp(tops[static_cast<int>(how)], 0, std::max(0, rows - page));
    }
    void ScrollColumns(int direction) override { Log("scroll", {direction}); }
    void FocusColumn(int column) override { toldColumn = selection.focusColumn = column; }
    void EnsureVisibleColumn(int column) override { Log("show", {column}); }
    void ChangeTree(int row, TreeAction action) override
    {
        const char* const actions[] = {"expand", "expand all", "collapse"};
        Log(actions[static_cast<int>(action)], {row});
    }
    bool BeginEdit(int row, int column, unsigned key) override
    {
        Log("edit", {row, column, static_cast<int>(key)});
        return edits != 0;
    }

    bool BeginsWith(int row, const ZEMA::WideString& typed) override
    {
        return texts.at(static_cast<std::size_t>(row)).starts_with(std::string(typed.begin(), typed.end()));
    }
    TreeRow TreeRowAt(int row) override
    {
        EXPECT_LT(row, rows);
        const int parents[] = {kNoRow, 0, kNoRow, 2, 2, kNoRow};
        return {row == 0 || row == 2 || row == 5, row < 5, row < 6 ? parents[row] : kNoRow};
    }
    void SelectAll() override { Log("all"); }
    void Copy() override { Log("copy"); }
    int MarkedColumn() override { return mark; }
    void MarkColumn(int column) override { mark = column; }
    int WidthOf(int) override { return width; }
    void SetWidth(int column, int to) override { Log("width", {column, to}); }
    void FitColumn(int column) override { Log("fit", {column}); }
    void MoveColumn(int from, int to) override { Log("move", {from, to}); }
    void ClickColumn(int column) override { Log("click", {column}); }

    int rows = 100;
    int page = 10;
    int top = 0;
    int columns = 4;
    int width = 50;
    int mark = kNoColumn;
    int keys = 0; // switched on
    int cellFocus = 0;
    int fixedRow = 0;
    int tree = 0;
    int edits = 1;
    std::set<int> hidden;
    std::vector<std::string> texts;
    Selection selection{5, kNoColumn, 20};
    int toldColumn = kNoColumn; // that has the focus
    ExtraKeysState state;
    std::string log;

private:
    const std::map<std::string, int*> numbers = {
        {"rows", &rows},           {"top", &top},     {"focus", &selection.focusRow},
        {"cellfocus", &cellFocus}, {"mark", &mark},   {"column", &selection.focusColumn},
        {"fixedrow", &fixedRow},   {"width", &width}, {"anchor", &selection.anchor},
        {"tree", &tree},           {"edits", &edits}, {"keys", &keys}};
    std::map<std::string, int> before;
};

// "Down", "shift+click 7 2", "type x", one after the other. A key or character that is not taken is logged as
// "not".
void Do(const std::string& acts, List& list)
{
    static const std::map<std::string, unsigned> keys = {
        {"F2", 113},  {"Down", 40}, {"Up", 38},    {"PageUp", 33}, {"PageDown", 34}, {"End", 35},
        {"Home", 36}, {"Left", 37}, {"Right", 39}, {"Space", 32},  {"Esc", 27},      {"Ins", 45},
        {"*", 106},   {"+", 107},   {"-", 109},    {"Plus", 0xBB}, {"Minus", 0xBD}};
    list.state.switchedOn = static_cast<unsigned>(list.keys);
    ExtraKeys extraKeys(list.state, list.selection, list, list);
    Input input(list.selection, list);
    std::istringstream words(acts);
    for (std::string word; words >> word;)
    {
        const auto take = [&word](std::string_view prefix) {
            const bool has = word.starts_with(prefix);
            word.erase(0, has ? prefix.size() : 0);
            return has;
        };
        const auto number = [&words] {
            int read = 0;
            words >> read;
            return read;
        };
        const Modifiers modifiers{take("shift+"), take("ctrl+")};
        const unsigned key = keys.contains(word) ? keys.at(word) : static_cast<unsigned char>(word[0]);
        bool isTaken = true;
        if (word == "click")
        {
            const int row = number();
            input.Click(row, number(), modifiers);
        }
        else if (word == "rightclick")
            input.RightClick(number(), modifiers);
        else if (word == "drag")
            input.DragTo(number());
        else if (word == "doubleclick")
            isTaken = extraKeys.DoubleClick(number());
        else if (word == "type")
            isTaken = words >> word && input.Character(static_cast<unsigned char>(word[0]));
        else
            isTaken = list.keys != 0 ? extraKeys.KeyDown(key, modifiers, 0) : input.KeyDown(key, modifiers);
        list.log += isTaken ? "" : " not";
    }
}

TEST(Input, MovesFocusAndSelection)
{
    const std::tuple<const char*, const char*, const char*> cases[] = {
        // the focus is on row 5, the anchor on 20
        {"", "Down", "anchor 6 focus 6 : select 6 6"},
        {"focus 9", "Down", "anchor 10 focus 10 top 1 : select 10 10"},
        {"", "ctrl+Down", "anchor 6 focus 6 : focus 6 6"},
        {"", "shift+Down", "focus 6 : select 6 20"},
        {"", "shift+ctrl+Down", "focus 6 : select 6 20"},
        {"focus 99 top 90", "Down", ":"},
        {"focus -2", "Down", "anchor 0 focus 0 : select 0 0"},
        {"focus -2 fixedrow 1", "Down", "anchor 0 focus 0 : select 0 0"},
        {"focus -2 rows 0", "Down PageUp PageDown End Home Up Space", ":"},
        {"top 5", "Up", "anchor 4 focus 4 top 4 : select 4 4"},
        {"focus 0", "Up", ":"},
        {"focus 0 fixedrow 1", "Up", "anchor 0 : select 0 0"},
        {"focus -2", "Up Space Home", ":"},
        {"focus -1 fixedrow 1", "Up Space Home", ":"},
        {"focus 55 top 50", "PageUp", "anchor 49 focus 49 top 49 : select 49 49"},
        {"focus 50 top 50", "PageUp", "anchor 40 focus 40 top 40 : select 40 40"},
        {"focus 50 top 50", "shift+PageUp", "focus 40 top 40 : select 40 20"},
        {"focus 3", "PageUp", "anchor 0 focus 0 : select 0 0"},
        {"focus 55 top 50", "PageDown", "anchor 60 focus 60 top 51 : select 60 60"},
        {"focus 59 top 50", "PageDown", "anchor 69 focus 69 top 60 : select 69 69"},
        {"focus 59 top 50", "shift+PageDown", "focus 69 top 60 : select 69 20"},
        {"", "End", "anchor 99 focus 99 top 90 : select 99 99"},
        {"", "ctrl+End", "anchor 99 focus 99 top 90 : focus 99 99"},
        {"focus 99", "End", ":"},
        {"focus 50 top 45", "shift+Home", "focus 0 top 0 : select 0 20"},
        {"focus 0 top 45", "Home", ":"},
        {"", "Space ctrl+Space", ": add 5 5 toggle 5 5"},
        {"rows 10", "shift+Down", "focus 6 : select 6 9"}, // the anchor's row has gone
        {"rows 10 focus 12", "Down", ":"},
        {"rows 10 focus 12", "Up", "anchor 9 focus 9 : select 9 9"},
        {"focus 0 hidden 1 hidden 2", "Down Up", "anchor 0 : select 3 3 select 0 0"},
        {"rows 3000 hidden 6 to 1005", "Down", "anchor 1006 focus 1006 top 997 : select 1006 1006"},
        {"rows 3000 hidden 6 to 1006", "Down", "anchor 5 : select 5 5"}, // no further look
        {"focus -2 hidden 0", "Down", "anchor 1 focus 1 : select 1 1"},
        {"hidden 98 hidden 99", "End Down", "anchor 97 focus 97 top 90 : select 97 97 select 97 97"},
        {"top 45 hidden 0 hidden 1", "Home", "anchor 2 focus 2 top 0 : select 2 2"},
        {"", "Left shift+Right", ": scroll -1 scroll 1"},
        // Among columns; left of the first lies the whole row.
        {"cellfocus 1", "Right Right", "column 2 : show 0 show 2"},
        {"cellfocus 1 column 3", "Right Left", "column 2 : show 2"},
        {"cellfocus 1 column 2", "Left Left Left", "column -1 : show 0 show -1"},
        // With the mouse, where -2 is no row and -1 the fixed one.
        {"anchor 3", "click 7 2", "anchor 7 focus 7 : select 7 7"},
        {"anchor 3", "click 5 2", "anchor 5 : select 5 5"},
        {"anchor 3", "shift+click 7 2", "focus 7 : select 7 3"},
        {"anchor 3", "ctrl+click 7 2", "anchor 7 focus 7 : toggle 7 7"},
        {"anchor 3", "shift+ctrl+click 7 2", "anchor 7 focus 7 : add 7 3"},
        {"", "click -2 2", ":"},
        {"", "click -1 2 click -1 2", "column 2 focus -1 : fixed fixed edit -1 2 1"},
        {"cellfocus 1 column 2", "click -2 -1", "column -1 :"},
        {"cellfocus 1 column 2", "click 7 2", "anchor 7 focus 7 : select 7 7"},
        {"cellfocus 1 column 2", "click 5 1", "anchor 5 column -1 : select 5 5"}, // which takes no focus
        {"cellfocus 1 column 2", "click 5 3", "anchor 5 column 3 : select 5 5"},
        {"cellfocus 1 column 2", "click 5 4", "anchor 5 column -1 : select 5 5"}, // gone since the click
        {"cellfocus 1 column 2", "click 5 2", "anchor 5 : select 5 5 edit 5 2 1"},
        {"cellfocus 1 column 2", "ctrl+click 5 2", "anchor 5 : toggle 5 5"},
        {"", "rightclick 4 shift+rightclick 6 ctrl+rightclick 6 rightclick -2",
         "anchor 4 focus 4 : select 4 4"},
        {"anchor 4", "drag 6 drag 6 drag 3 drag -2 drag 100", "focus 3 : select 6 4 select 3 4"},
        // The keypad changes a tree, unless it begins to edit a cell.
        {"tree 1", "+ type + - type + * type +", ": expand 5 not collapse 5 not expand all 5 not"},
        {"tree 1 cellfocus 1 column 2", "- type -", ": edit 5 2 45 not"},
        {"tree 1 cellfocus 1 column 2 edits 0", "- type -", ": edit 5 2 45 collapse 5 not"},
        {"cellfocus 1 column 2", "- type -", ": not edit 5 2 45"},
        {"cellfocus 1 column 2", "X type x shift+X type x", ": not edit 5 2 120 not edit 5 2 120"},
        {"cellfocus 1 column 2", "ctrl+X type x Esc type x \x1e type x", ": not not not not not not"},
    };
    for (const auto& [scene, acts, expected] : cases)
    {
        List list(scene);
        Do(acts, list);
        EXPECT_EQ(expected, list.State()) << scene << ": " << acts;
    }
}

TEST(ExtraKeys, EachDoesOneThingWhenItIsSwitchedOn)
{
    const std::tuple<int, const char*, const char*, const char*> cases[] = {
        {kFoldKeys, "", "Right", ": expand 5"},
        {kFoldKeys, "focus 2", "Right", "anchor 3 focus 3 : select 3 3"},
        {kFoldKeys, "focus 2", "shift+Right", "focus 3 : select 3 9"},
        {kFoldKeys, "focus 3", "Right Space", ": not not"},
        {kFoldKeys, "focus 2", "Left", ": collapse 2"},
        {kFoldKeys, "focus 4", "Left", "anchor 2 focus 2 : select 2 2"},
        {kFoldKeys, "focus 1", "Left", "anchor 0 focus 0 : select 0 0"},
        {kFoldKeys, "", "Left", ": not"},
        {kFoldKeys, "focus 2", "ctrl+Left", ": not"},
        {kFoldKeys, "focus 2 tree 0", "Left", ": not"},
        {kFoldKeys, "focus -2", "Left", ": not"},
        {kFoldKeys, "focus 10", "Right", ": not"},
        {kFoldKeys, "cellfocus 1", "Right", ": expand 5"},
        {kFoldKeys, "cellfocus 1 column 0", "Right", ": not"},
        {kFoldKeys, "cellfocus 1 focus 2", "Right", ": not"}, // to its first cell
        {kDoubleClickToggles, "", "doubleclick 2 doubleclick 5", ": collapse 2 expand 5"},
        {kDoubleClickToggles, "", "doubleclick 3 doubleclick 10 doubleclick -2", ": not not not"},
        {kDoubleClickToggles, "tree 0", "doubleclick 2", ": not"},
        {kSelectAllKey, "", "ctrl+A", ": all"},
        {kSelectAllKey, "", "A shift+ctrl+A", ": not not"},
        {kCopyKeys, "", "ctrl+C ctrl+Ins", ": copy copy"},
        {kCopyKeys, "", "shift+Ins", ": not"},
        {kColumnKeys, "", "ctrl+Right", "mark 0 : show 0"},
        {kColumnKeys, "", "ctrl+Left ctrl+Right ctrl+Left", "mark 2 : show 3 show 3 show 2"},
        {kColumnKeys, "mark 9", "ctrl+Left", "mark 3 : show 3"},
        {kColumnKeys, "mark 2 cellfocus 1 column 1", "ctrl+Left", ": not"}, // the focus moves
        {kColumnKeys, "mark 2", "shift+ctrl+Right shift+ctrl+Right", "mark 3 : move 2 3 show 3"},
        {kColumnKeys, "mark 0", "shift+ctrl+Left", ":"},
        {kColumnKeys, "mark 2 cellfocus 1 column 1", "shift+ctrl+Left", "column 0 : move 1 0 show 0"},
        {kColumnKeys, "", "shift+ctrl+Left", ": not"},
        {kColumnKeys, "mark 2", "shift+ctrl+Space ctrl++ ctrl+*", ": click 2 width 2 58 fit 2"},
        {kColumnKeys, "mark 2", "Right ctrl+Space *", ": not not not"},
        {kColumnKeys, "mark 2 cellfocus 1 column 1", "shift+ctrl+Plus", ": width 1 58"},
        {kColumnKeys, "mark 0", "ctrl+- ctrl+Minus", ": width 0 42 width 0 42"},
        {kColumnKeys, "mark 0 width 2147483644", "ctrl++", ": width 0 2147483647"},
        {kColumnKeys, "mark 0 width 2147483647", "ctrl++", ": width 0 2147483647"},
        {kColumnKeys, "mark 0 width 12", "ctrl+-", ": width 0 8"},
        {kColumnKeys, "mark 0 width 3", "ctrl+-", ": width 0 3"},
        {kEditKey, "edits 1 cellfocus 1 column 2", "F2", ": edit 5 2 9"},
        {kEditKey, "edits 1 column 2", "F2", ": not"}, // no cell has the focus
        {kColumnKeys, "mark 4", "ctrl+*", ": not"},    // there is no such column any more
    };
    for (const auto& [keys, what, acts, expected] : cases)
    {
        const std::string scene = std::string("tree 1 rows 10 ") + what + " keys ";
        List on(scene + std::to_string(keys));
        Do(acts, on);
        EXPECT_EQ(expected, on.State()) << what << ": " << acts;
        if (on.log.ends_with(" not"))
            continue;
        List others(scene + std::to_string(kAllExtraKeys & ~keys));
        Do(acts, others);
        EXPECT_EQ(0u, others.State().find(": not")) << what << ": " << acts;
        EXPECT_EQ(std::string::npos, others.log.find_first_not_of(" not")) << others.log;
    }
}

// Random typing, and the row that a plain search finds.
TEST(ExtraKeys, TypingGoesToTheNextRowThatBeginsSo)
{
    Random below(23);
    for (int round = 0; round < 300; ++round)
    {
        List list("rows " + std::to_string(below(8)));
        for (int row = 0; row < list.rows; ++row)
            list.texts.push_back(std::string("aa b ab bba a b").substr(below(12), below(4)));
        const auto search = [&list](int after, const std::string& text) {
            for (int row = after + 1; row <= after + list.rows; ++row)
                if (list.texts[static_cast<std::size_t>(row % list.rows)].starts_with(text))
                    return row % list.rows;
            return kNoRow;
        };
        int& focus = list.selection.focusRow = below(list.rows + 1) - 1;
        list.state.switchedOn = kTypeAheadKeys;
        ExtraKeys keys(list.state, list.selection, list, list);
        std::string typed;
        int start = 0;
        std::uint32_t time = UINT32_MAX - 2000;
        for (int step = 0; step < 12; ++step)
        {
            const bool goesOn = below(4) != 0 && step > 0;
            time += goesOn ? TypeAhead::kPause : TypeAhead::kPause + 1;
            start = goesOn ? start : focus;
            typed = goesOn ? typed : "";
            const char character = "ab "[below(typed.empty() ? 2 : 3)];
            typed += character;
            int expected = search(start, typed);
            if (expected == kNoRow && typed == std::string(typed.size(), character))
                expected = search(focus, std::string(1, character));
            expected = expected == kNoRow ? focus : expected;

            list.selection.typingMayEdit = character != ' ';
            EXPECT_EQ(character == ' ', keys.KeyDown(static_cast<unsigned char>(character), {}, time));
            EXPECT_TRUE(keys.Character(static_cast<unsigned char>(character), time));
            ASSERT_EQ(expected, focus) << "round " << round << ", typed '" << typed << "' from " << start;
        }
    }
}

TEST(ExtraKeys, TypingEndsAfterManyRowsAndAfterAPause)
{
    List list("focus 0 rows " + std::to_string(INT_MAX));
    list.texts.assign(TypeAhead::kMaxRows + 2, "b");
    list.texts.back() = "a";
    EXPECT_EQ(kNoRow, list.state.typing.Type('a', 0, 0, list)) << "so many rows are not looked at";
    EXPECT_EQ(TypeAhead::kMaxRows + 1, list.state.typing.Type('a', 5000, 1, list));
    list.state.switchedOn = kTypeAheadKeys;
    ExtraKeys keys(list.state, list.selection, list, list);
    EXPECT_FALSE(keys.KeyDown(' ', {}, 20000)) << "which begins no text";
    list.selection.typingMayEdit = true;
    EXPECT_FALSE(keys.Character(8, 20000));
    list.selection.typingMayEdit = false;
    EXPECT_FALSE(keys.Character('a', 20000)) << "the key was a command";
}

} // namespace
