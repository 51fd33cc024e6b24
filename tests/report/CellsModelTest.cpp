// Random definitions, writes and readings of cells, each answer compared with a plain table.
#include "tests/report/ModelControl.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <optional>
#include <random>

namespace
{

struct PlainCell
{
    std::optional<std::string> text;
    int textColor = -1;
    int image = -1;
    int check = -1;
    int extra = -1;
};

struct PlainItem
{
    std::vector<PlainCell> cells;
    int backgroundColor = -1;
    int previewHeight = 0;
    int treeLevel = -1;
    unsigned state = 0;
    int itemData = 0;
    PlainCell preview{"", -1, -1, -1, -1}; // always has a text
};

class CellsModel : public testing::TestWithParam<bool> // whether a subclass answers copies
{
protected:
    CellsModel() { control.copies = GetParam(); }

    int Below(std::size_t limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }
    int Number() { return Below(8) - 1; }
    int ItemCount() const { return static_cast<int>(table.size()) - 1; }
    PlainItem& Plain(int item) { return table[static_cast<std::size_t>(item + 1)]; }
    PlainCell& Plain(int item, int subitem)
    {
        return subitem < 0 ? Plain(item).preview : Plain(item).cells[static_cast<std::size_t>(subitem)];
    }

    std::string Text()
    {
        std::string text(static_cast<std::size_t>(Below(4) == 0 ? Below(60) : Below(4)), '\0');
        std::generate(text.begin(), text.end(), [this] { return ",-07\tab\xC3"[Below(8)]; });
        return text;
    }

    void Write()
    {
        _RVITEM change;
        change.item = Below(table.size() + 1) - 1;
        change.subitem = Below(static_cast<std::size_t>(columns) + 2) - 1;
        std::string text = Text();
        change.text = Below(6) == 0 ? nullptr : text.data();
        for (int* each : {&change.textColor, &change.image, &change.check, &change.extra,
                          &change.backgroundColor, &change.previewHeight, &change.treeLevel})
            *each = Number();
        change.state = static_cast<unsigned>(Below(256));
        change.itemData = Below(1000);
        change.mask = static_cast<unsigned>(Below(1 << 12));
        const bool there = change.item < ItemCount() && change.subitem < columns;
        ASSERT_EQ(there, control.items.Write(change));
        if (!there)
            return;
        const auto take = [&change](unsigned bit, auto& field, const auto& value) {
            if ((change.mask & bit) != 0)
                field = value;
        };
        PlainItem& item = Plain(change.item);
        if (change.subitem >= 0)
        {
            PlainCell& cell = Plain(change.item, change.subitem);
            take(RVIM_TEXT, cell.text, change.text ? std::optional(text) : std::nullopt);
            take(RVIM_TEXTCOLOR, cell.textColor, change.textColor);
            take(RVIM_IMAGE, cell.image, change.image);
            take(RVIM_CHECK, cell.check, change.check);
            take(RVIM_EXTRA, cell.extra, change.extra);
        }
        take(RVIM_BACKGROUNDCOLOR, item.backgroundColor, change.backgroundColor);
        take(RVIM_PREVIEWHEIGHT, item.previewHeight, change.previewHeight);
        take(RVIM_TREELEVEL, item.treeLevel, change.treeLevel);
        take(RVIM_ITEMDATA, item.itemData, static_cast<int>(change.itemData));
        constexpr unsigned kTaken = RVIS_FOCUSED | RVIS_COLLAPSED | RVIS_EXPANDED;
        take(RVIM_STATE, item.state, (item.state & ~kTaken) | (change.state & kTaken));
    }

    void Read(int itemNumber, int subitem)
    {
        std::array<char, 64> room = {};
        room.fill('#');
        const int size = Below(room.size());
        _RVITEM record;
        record.item = itemNumber;
        record.subitem = subitem;
        record.mask = Below(4) == 0 ? 0u : RVIM_TEXT;
        record.text = subitem < 0 || Below(4) != 0 ? room.data() : nullptr;
        record.textMax = subitem < 0 ? static_cast<int>(room.size()) : size;
        const bool wanted = record.mask != 0 && record.text;
        ASSERT_TRUE(control.items.Read(record));

        const PlainItem& item = Plain(itemNumber);
        const PlainCell& cell = Plain(itemNumber, subitem);
        ASSERT_EQ(cell.textColor, record.textColor);
        ASSERT_EQ(cell.image, record.image);
        ASSERT_EQ(cell.check, record.check);
        ASSERT_EQ(cell.extra, record.extra);
        ASSERT_EQ(item.backgroundColor, record.backgroundColor);
        ASSERT_EQ(item.previewHeight, record.previewHeight);
        ASSERT_EQ(item.treeLevel, record.treeLevel);
        ASSERT_EQ(item.state, record.state);
        ASSERT_EQ(item.itemData, record.itemData);
        const auto bit = [](unsigned value, bool has) { return has ? value : 0; };
        const unsigned mask = RVIM_STATE | RVIM_ITEMDATA | bit(RVIM_TEXT, wanted && cell.text) |
                              bit(RVIM_TEXTCOLOR, cell.textColor >= 0) | bit(RVIM_IMAGE, cell.image >= 0) |
                              bit(RVIM_CHECK, cell.check >= 0) | bit(RVIM_EXTRA, cell.extra >= 0) |
                              bit(RVIM_BACKGROUNDCOLOR, item.backgroundColor >= 0) |
                              bit(RVIM_PREVIEWHEIGHT, item.previewHeight != 0) |
                              bit(RVIM_TREELEVEL, item.treeLevel >= 0);
        ASSERT_EQ(mask, record.mask);
        ASSERT_EQ(wanted, record.text != nullptr);
        std::string expected(room.size(), '#');
        if (!cell.text)
            ASSERT_EQ(-1, record.textMax);
        else if (wanted && record.textMax > 0)
        {
            const std::string text = cell.text->substr(0, static_cast<std::size_t>(record.textMax) - 1);
            expected.replace(0, text.size() + 1, text + '\0');
        }
        ASSERT_EQ(expected, std::string(room.begin(), room.end())) << "the room is " << size;
    }

    std::string Line(int item, const std::vector<int>& order, char separator)
    {
        std::string line;
        for (std::size_t column = 0; column < order.size(); ++column)
        {
            const PlainCell cell = order[column] < columns ? Plain(item, order[column]) : PlainCell();
            const PlainItem& plain = Plain(item);
            if (column == 0 && order[column] < columns && plain.treeLevel >= 0)
            {
                for (int level = 1; level < plain.treeLevel; ++level)
                    line += "..";
                line += ' '; // the mark of an item without children
            }
            std::string text = cell.text.value_or(cell.image >= 0   ? std::to_string(cell.image)
                                                  : cell.check >= 0 ? std::to_string(cell.check)
                                                                    : "");
            std::replace(text.begin(), text.end(), separator, ' ');
            line += text + (column + 1 < order.size() ? separator : '\n');
        }
        return line;
    }

    std::mt19937 m_random{5};
    ModelControl control;
    std::vector<PlainItem> table{PlainItem()}; // the default item in front
    int columns = 0;
};

TEST_P(CellsModel, AgreesWithATable)
{
    for (int step = 0; step < 4000; ++step)
    {
        const int what = Below(20);
        SCOPED_TRACE("step " + std::to_string(step) + ", " + std::to_string(what));
        const int item = Below(table.size());
        if (what == 0 && columns < 6)
        {
            const int subitem = Below(static_cast<std::size_t>(columns) + 1);
            report::SubItem definition;
            definition.format = static_cast<unsigned>(columns);
            ASSERT_TRUE(control.items.Define(subitem, definition));
            ASSERT_EQ(static_cast<unsigned>(columns), control.items.FormatOf(subitem));
            ++columns;
            for (PlainItem& each : table)
                each.cells.insert(each.cells.begin() + subitem, PlainCell());
        }
        else if (what == 1 && columns > 1)
        {
            const int subitem = Below(static_cast<std::size_t>(columns));
            control.items.Undefine(subitem);
            --columns;
            for (PlainItem& each : table)
                each.cells.erase(each.cells.begin() + subitem);
        }
        else if (what == 2 && table.size() < 12)
        {
            ASSERT_EQ(item, control.rows.InsertItem(item));
            table.insert(table.begin() + item + 1, PlainItem());
            Plain(item).cells.resize(static_cast<std::size_t>(columns));
        }
        else if (what == 3 && item < ItemCount())
        {
            ASSERT_TRUE(control.rows.DeleteItem(item));
            table.erase(table.begin() + item + 1);
        }
        else if (what == 4)
        {
            const std::string text = Text();
            PlainItem& plain = Plain(item - 1);
            plain.preview.text = text;
            plain.preview.textColor = Number();
            plain.previewHeight = Number();
            const auto bits = static_cast<unsigned>(Below(256));
            const unsigned mask = static_cast<unsigned>(Below(256)) & ~unsigned{RVIS_SELECTED};
            plain.state = (plain.state & ~mask) | (bits & mask);
            control.items.SetState(item - 1, bits, mask);
            ASSERT_TRUE(control.items.SetPreview(item - 1, text.c_str(), plain.previewHeight,
                                                 plain.preview.textColor));
        }
        else if (what == 5)
        {
            std::vector<int> order;
            for (int subitem = 0; subitem <= columns; ++subitem) // one of them is not there
                order.push_back(subitem);
            std::shuffle(order.begin(), order.end(), m_random);
            const char separator = "\ta"[Below(2)];
            ASSERT_EQ(Line(item - 1, order, separator),
                      control.items.Line(item - 1, order, {separator, true, ".."}));
        }
        else if (what < 12)
            ASSERT_NO_FATAL_FAILURE(Write());
        else
            ASSERT_NO_FATAL_FAILURE(Read(item - 1, Below(static_cast<std::size_t>(columns) + 1) - 1));
    }
    _RVITEM record;
    record.item = ItemCount();
    EXPECT_FALSE(control.items.Read(record));
    record.item = record.subitem = -2;
    EXPECT_FALSE(control.items.Read(record));
    EXPECT_FALSE(control.items.Write(record));
    for (const int subitem : {-1, columns})
        EXPECT_THROW(control.items.SubItemAt(subitem), std::invalid_argument);
    for (const int subitem : {-1, columns + 1})
        EXPECT_THROW(control.items.Define(subitem, {}), std::invalid_argument);
    ASSERT_TRUE(control.SetText(-1, 0, std::string(70000, 'x')));
    EXPECT_EQ(65535u, control.Text(-1, 0).size()) << "a longer text is cut";
    for (const int item : {-2, ItemCount()})
    {
        EXPECT_THROW(control.items.Stored().At(item), std::invalid_argument);
        EXPECT_FALSE(control.items.SetPreview(item, "", 0, -1));
    }
    control.items.SetCallback(true);
    EXPECT_FALSE(control.items.SetPreview(-1, "", 0, -1)) << "nothing is stored";
}

INSTANTIATE_TEST_SUITE_P(Records, CellsModel, testing::Bool(),
                         [](const auto& param) { return param.param ? "Copied" : "AsTheyAre"; });

} // namespace
