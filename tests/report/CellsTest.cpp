// Cells: their encoding, and how items keep them.
#include "report/model/CellCodec.h"
#include "tests/report/ModelControl.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <tuple>

namespace
{

using report::Cell;

// ---- The encoding

const std::string undefinedAtFirst(report::UndefinedField()); // before any test sets the separator

// Here [ and ] stand around the numbers of a field, and | is the separator.
std::string Bytes(std::string text)
{
    for (const auto& [sign, byte] : {std::pair('[', '\x01'), {']', '\x02'}, {'|', '\x07'}})
        std::replace(text.begin(), text.end(), sign, byte);
    return text;
}

ZEMA::String CellsOf(const std::string& text)
{
    return {Bytes(text).c_str(), text.size()};
}

TEST(CellCodec, ReadsNumbersUntilOneIsMissing)
{
    const std::pair<std::string, Cell> cases[] = {
        {"", {}},
        {"|", {}},
        {"[|", {}},
        {"1,2,3,4,4]text|", {}},
        {"[1,2,3,4,4]text|", {1, 2, 3, 4, true, "text"}},
        {"[1,2,3,4,99]text", {1, 2, 3, 4, true, "text"}},
        {"[1,2,3,4,0]|", {1, 2, 3, 4, true, ""}},
        {"[1,2,3,4,-1]text|", {1, 2, 3, 4, false, ""}},
        {"[1,2,3,4,x]text|", {1, 2, 3, 4, false, ""}},
        {"[1,2,3,4,4text|", {1, 2, 3, 4, false, ""}},
        {"[1,2,3,4]text|", {1, 2, 3, 4, false, ""}},
        {"[1,2,x,4,4]text|", {1, 2, -1, -1, false, ""}},
        {"[1,2,|3,4,4]text|", {1, 2, -1, -1, false, ""}},
        {"[ +1,\t-2,+-3,4,4]text|", {1, -2, -1, -1, false, ""}},
        {"[-12,2,3,4,4]text|", {-12, 2, 3, 4, true, "text"}},
        {"[-1x,2,3,4,4]text|", {}},
        {"[\b1,2,3,4,4]text|", {}},
        {"[\x0E 1,2,3,4,4]text|", {}},
        {"[-2147483648,2147483648,-99999999999999999999,4,4][]|", {INT_MIN, -1, -1, 4, true, "\x01\x02"}},
    };
    for (const auto& [text, cell] : cases)
        for (const int field : {-1, 0, 1})
        {
            const ZEMA::String cells = CellsOf((field == 1 ? "a|" : "") + text);
            EXPECT_EQ(cell, report::ReadCell(cells, field)) << text;
        }
}

// C is a cell that is written, and U an undefined one.
TEST(CellCodec, ChangesFieldByField)
{
    const std::tuple<const char*, int, const char*, const char*, const char*> cases[] = {
        {"", 0, "C|", "U|", ""},
        {"", 2, "U|U|C|", "U|U|U|", ""},
        {"a", 0, "C|", "U|a", ""},
        {"a", 1, "a|C|", "a|U|", "a"},
        {"a|", 1, "a|C|", "a|U|", "a|"},
        {"a|b", 0, "C|b", "U|a|b", "b"},
        {"a|b", 1, "a|C|", "a|U|b", "a|"},
        {"a|b", 3, "a|b|U|C|", "a|b|U|U|", "a|b"},
        {"a|b|c|", -1, "C|b|c|", "U|a|b|c|", "b|c|"},
        {"||", 1, "|C|", "|U||", "|"},
    };
    std::string undefined(report::UndefinedField()); // whatever the separator was before
    undefined.pop_back();
    for (const std::size_t length : {0, 1, 600})
        for (const auto& [before, field, written, inserted, removed] : cases)
        {
            const std::string text(length, 'x');
            const std::string cell = "[7,-2147483648,0,-1," + std::to_string(length) + ']' + text;
            const auto expect = [&, before = before, field = field](const char* wanted, const auto& act) {
                std::string expected;
                for (const char c : std::string(wanted))
                    expected += c == 'C' ? cell : c == 'U' ? undefined : std::string(1, c);
                ZEMA::String cells = CellsOf(before);
                act(cells, field);
                EXPECT_EQ(Bytes(expected), cells.c_str()) << before << ' ' << field;
            };
            expect(written, [&](ZEMA::String& cells, int at) {
                report::WriteCell(cells, at, {7, INT_MIN, 0, -1, true, text});
            });
            expect(inserted, report::InsertCell);
            expect(removed, report::RemoveCell);
        }
    ZEMA::String cells;
    report::WriteCell(cells, 1, {-1, -1, -1, -1, true, "within \x07 the cells"});
    report::WriteCell(cells, 0, report::ReadCell(cells, 1));
    EXPECT_EQ("within ", report::ReadCell(cells, 0).text);
}

TEST(CellCodec, TheUndefinedFieldLosesANumberWithTheSeparator)
{
    EXPECT_EQ(Bytes("[-1,-1,-1,-1,-1]|"), undefinedAtFirst);
    struct Restore
    {
        ~Restore() { report::SetCellSeparator('\x07'); }
    } const restore;
    for (const char byte : {'\0', '\x01', '\x02', ',', '-', '0', '9'})
        EXPECT_FALSE(report::SetCellSeparator(byte)) << int{byte};
    EXPECT_EQ('\x07', report::CellSeparator());

    EXPECT_TRUE(report::SetCellSeparator('\xA7'));
    ZEMA::String cells;
    report::ResetCells(cells, 2);
    report::WriteCell(cells, 1, {-1, -1, -1, -1, true, "\x07"});
    EXPECT_STREQ("\x01-1,-1,-1,-1\x02\xA7\x01-1,-1,-1,-1,1\x02\x07\xA7", cells.c_str());
    EXPECT_EQ((Cell{-1, -1, -1, -1, true, "\x07"}), report::ReadCell(cells, 1));
}

TEST(CellCodec, CellsSortByTextThenCheckThenImage)
{
    const Cell sorted[] = {{1, -1, -1, -1, false, {}}, {9, -1, -1, -1, false, {}}, {1, 0, 0, 0, false, {}},
                           {0, 0, 0, 0, true, "A"},    {0, 0, 0, 0, true, "AB"},   {0, 0, 0, 0, true, "a"},
                           {0, 0, 0, 0, true, "\xE4"}};
    for (std::size_t i = 0; i + 1 < std::size(sorted); ++i)
    {
        EXPECT_LT(report::CompareCells(sorted[i], sorted[i + 1]), 0) << i;
        EXPECT_GT(report::CompareCells(sorted[i + 1], sorted[i]), 0) << i;
    }
    EXPECT_EQ(report::CompareCells({9, 0, 5, 0, false, {}}, {1, 0, 5, 0, false, {}}), 0);
}

// ---- The cells of items

// Each field on its own, with a value that counts as one and with 0: as stored, when a subclass answers
// copies, and as an owner answers it.
TEST(Cells, TakeWhatTheMaskNames)
{
    const std::pair<unsigned, int _RVITEM::*> numbers[] = {{RVIM_TEXTCOLOR, &_RVITEM::textColor},
                                                           {RVIM_IMAGE, &_RVITEM::image},
                                                           {RVIM_CHECK, &_RVITEM::check},
                                                           {RVIM_EXTRA, &_RVITEM::extra},
                                                           {RVIM_BACKGROUNDCOLOR, &_RVITEM::backgroundColor},
                                                           {RVIM_PREVIEWHEIGHT, &_RVITEM::previewHeight},
                                                           {RVIM_TREELEVEL, &_RVITEM::treeLevel}};
    constexpr unsigned kOfItem =
        RVIM_BACKGROUNDCOLOR | RVIM_PREVIEWHEIGHT | RVIM_TREELEVEL | RVIM_STATE | RVIM_ITEMDATA;
    for (unsigned round = 0; round < 60; ++round)
    {
        const unsigned bit = 1u << round / 6; // to RVIM_EXTRA
        const int value = round % 6 < 3 ? 1 : 0;
        const bool isAsked = round % 3 == 2;
        char text[] = "text";
        _RVITEM change;
        change.item = change.subitem = 0;
        for (const auto& [mask, number] : numbers)
            change.*number = value;
        change.state = 0xFF;
        change.itemData = 6;
        change.text = text;
        change.mask = bit;

        ModelControl control;
        control.copies = round % 3 == 1;
        control.Define(2);
        control.rows.InsertItem(0);
        control.items.SetState(0, RVIS_BOLD, RVIS_BOLD);
        EXPECT_TRUE(control.items.Write(change));
        control.rows.SetMode(isAsked, false);
        control.rows.SetCallbackCount(1);
        control.answer = [&change](_RVITEM& question) {
            _RVITEM own = change;
            own.text = std::strcpy(question.text, change.text);
            own.subitem = question.subitem;
            question = own;
            return true;
        };
        for (const int subitem : {0, isAsked ? 0 : 1})
        {
            SCOPED_TRACE(testing::Message() << bit << ' ' << value << ' ' << subitem << ' ' << isAsked);
            const unsigned taken = subitem == 0 ? bit : bit & kOfItem;
            char room[8] = "";
            _RVITEM record = {.mask = RVIM_TEXT, .subitem = subitem, .text = room, .textMax = sizeof(room)};
            ASSERT_TRUE(control.items.Read(record));
            const bool isNone = value == 0 && taken == RVIM_PREVIEWHEIGHT;
            EXPECT_EQ(RVIM_STATE | RVIM_ITEMDATA | (isNone ? 0 : taken), record.mask);
            for (const auto& [mask, number] : numbers)
                EXPECT_EQ(mask == taken ? value : _RVITEM().*number, record.*number) << mask;
            const unsigned stored = RVIS_FOCUSED | RVIS_COLLAPSED | RVIS_EXPANDED;
            EXPECT_EQ((taken == RVIM_STATE ? isAsked ? change.state : stored : 0) | (isAsked ? 0 : RVIS_BOLD),
                      record.state);
            EXPECT_EQ(taken == RVIM_ITEMDATA ? 6 : 0, record.itemData);
            EXPECT_STREQ(taken == RVIM_TEXT ? "text" : "", room);
            EXPECT_EQ(taken == RVIM_TEXT ? 8 : -1, record.textMax);
        }
    }
}

TEST(Cells, GiveAsMuchOfATextAsThereIsRoomFor)
{
    const std::tuple<unsigned, int, int, const char*> cases[] =
        {
            {RVIM_TEXT, 0, 0, "####"}, {RVIM_TEXT, 0, 1, ""},     {RVIM_TEXT, 0, 3, "ce"},
            {RVIM_TEXT, 0, 4, "cel"},  {RVIM_TEXT, 0, 5, "cell"}, {0, 0, 5, "####"},
            {RVIM_TEXT, -1, 1, "pre"}, // whole: callers bring room for it
        };
    ModelControl control;
    control.Define(1);
    control.rows.InsertItem(0);
    control.SetText(0, 0, "cell");
    EXPECT_TRUE(control.items.SetPreview(0, "pre", 7, 3));
    for (const auto& [mask, subitem, textMax, text] : cases)
    {
        char room[] = "####";
        _RVITEM record = {.mask = mask, .subitem = subitem, .text = room, .textMax = textMax};
        EXPECT_TRUE(control.items.Read(record));
        EXPECT_STREQ(text, room) << textMax;
        EXPECT_EQ(mask != 0, record.text != nullptr) << "it is wanted";
        EXPECT_EQ(subitem < 0 ? 3 : -1, record.textColor);
        EXPECT_EQ(7, record.previewHeight);
    }
    char empty[] = "";
    _RVITEM change = {.mask = RVIM_TEXT | RVIM_TEXTCOLOR, .subitem = -1, .text = empty, .textColor = 5};
    EXPECT_TRUE(control.items.Write(change)); // which changes no preview
    EXPECT_EQ("pre", control.Text(0, -1));
    change.subitem = 0;
    change.text = nullptr;
    EXPECT_TRUE(control.items.Write(change));
    report::FetchedCell fetched;
    EXPECT_TRUE(control.items.Fetch(0, 0, 0, fetched));
    EXPECT_EQ((Cell{-1, -1, -1, 5, false, ""}), fetched.cell);
    ASSERT_TRUE(control.SetText(0, 0, std::string(70000, 'x')));
    EXPECT_EQ(65535u, control.Text(0, 0).size()) << "a longer text is cut";
}

TEST(Cells, MoveWithTheirSubitemsAndMakeALine)
{
    for (const bool copies : {false, true})
    {
        ModelControl control;
        control.copies = copies;
        control.Define(2);
        control.rows.InsertItem(0);
        control.items.SubItemAt(1).format = 7;
        for (const int item : {RVI_DEFAULT, 0})
        {
            control.SetText(item, 0, "\tb");
            control.SetText(item, 1, "c");
        }
        const auto line = [&](const std::vector<int>& order) {
            return control.items.Line(RVI_DEFAULT, order, {'\t', true, ".."}) +
                   control.items.Line(0, order, {'\t', true, ".."});
        };
        EXPECT_TRUE(control.items.Define(1, {}));
        EXPECT_EQ(7u, control.items.FormatOf(2));
        EXPECT_EQ(0u, control.items.FormatOf(1));
        EXPECT_EQ(" b\t\tc\n b\t\tc\n", line({0, 1, 2}));
        EXPECT_TRUE(control.items.Define(3, {}));
        control.items.Undefine(0);
        EXPECT_EQ("c\t\t\t\nc\t\t\t\n", line({1, 0, 2, 3})) << "the last is not there";

        _RVITEM change;
        change.mask = RVIM_IMAGE | RVIM_CHECK | RVIM_TREELEVEL;
        for (const auto& [level, image, expected] : {std::tuple(-1, 0, "0\t\tc\n"),
                                                     {0, -1, " 2\t\tc\n"},
                                                     {1, 3, " 3\t\tc\n"},
                                                     {3, -1, ".... 2\t\tc\n"}})
        {
            change.treeLevel = level;
            change.image = image;
            change.check = 2;
            EXPECT_TRUE(control.items.Write(change));
            EXPECT_EQ(expected, control.items.Line(0, {0, 2, 1}, {'\t', true, ".."}));
        }
    }
}

TEST(Cells, AreOfItemsAndSubitemsThatThereAre)
{
    ModelControl control;
    control.Define(2);
    control.rows.InsertItem(0);
    for (const auto& [item, subitem] : {std::pair(1, 0), {-2, -2}, {-2, 0}, {0, 2}})
    {
        _RVITEM record = {.item = item, .subitem = subitem};
        EXPECT_FALSE(control.items.Read(record)) << item << ' ' << subitem;
        EXPECT_FALSE(control.items.Write(record)) << item << ' ' << subitem;
    }
    for (const int subitem : {-1, 2})
        EXPECT_THROW(control.items.SubItemAt(subitem), std::invalid_argument);
    for (const int subitem : {-1, 3})
        EXPECT_THROW(control.items.Define(subitem, {}), std::invalid_argument);
    for (const int item : {-2, 1})
    {
        EXPECT_THROW(control.items.Stored().At(item), std::invalid_argument);
        EXPECT_FALSE(control.items.SetPreview(item, "", 0, -1));
    }
    control.items.SetCallback(true);
    EXPECT_FALSE(control.items.SetPreview(-1, "", 0, -1)) << "nothing is stored";
}

} // namespace
