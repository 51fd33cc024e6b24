// Random sequences of operations on a report control, each step compared with a plain model.
#include "tests/report/ReportFixture.h"

#include "report/Tree.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <random>

namespace
{

class RandomReport : public ReportTest
{
protected:
    int Below(std::size_t limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    template <typename T> T& Any(std::vector<T>& from)
    {
        return from[static_cast<std::size_t>(Below(from.size()))];
    }

    // Items are told apart by their data.
    int IdOf(int item) { return static_cast<int>(report.GetItemData(item)); }

    // Rows and focus; that only the focused item says so, and that the selected rows are rows.
    void ExpectRows(const std::vector<int>& rows, const std::vector<int>& items, int focus)
    {
        std::vector<int> shown;
        for (int row = 0; row < report.GetRowCount(); ++row)
        {
            const int item = report.GetItemFromRow(row);
            ASSERT_EQ(row, report.GetRowFromItem(item));
            shown.push_back(IdOf(item));
        }
        ASSERT_EQ(rows, shown);

        const int row = report.GetFocusRow();
        ASSERT_EQ(focus, row < 0 ? row : shown.at(static_cast<std::size_t>(row)));
        ASSERT_EQ(static_cast<int>(items.size()), report.GetItemCount());
        for (int item = 0; item < report.GetItemCount(); ++item)
        {
            ASSERT_EQ(items[static_cast<std::size_t>(item)], IdOf(item));
            ASSERT_EQ(IdOf(item) == focus, (report.Struct(item).state & RVIS_FOCUSED) != 0) << item;
        }
        int first = 0;
        int last = 0;
        report.GetSelectedRows(&first, &last);
        ASSERT_TRUE((first == 0 && last == -1) ||
                    (0 <= first && first <= last && last < report.GetRowCount()));
    }

    // The focus after the focused item may have gone: on the row in its place.
    int FocusAfter(int focus, int row, const std::vector<int>& rows)
    {
        if (focus == RVI_NONE || std::find(rows.begin(), rows.end(), focus) != rows.end())
            return focus;
        return rows.empty() ? RVI_NONE : rows[std::min(static_cast<std::size_t>(row), rows.size() - 1)];
    }

    int SelectAny(const std::vector<int>& rows)
    {
        const int row = Below(rows.size());
        report.SelectRows(row, Below(rows.size()), Below(4), 0, Below(2), 0);
        return rows[static_cast<std::size_t>(row)];
    }

    std::mt19937 m_random{11};
};

TEST_F(RandomReport, AgreesWithAModelOfCells)
{
    using Value = std::tuple<std::string, int, int>;       // text ("-" for none), image, check
    std::map<int, std::map<int, Value>> cells;             // by item, by subitem
    std::vector<int> items, rows, subitems = {0}, columns; // subitems are told apart by these numbers
    int focus = RVI_NONE, made = 0;
    Define({"a"});
    columns = {0};
    const auto place = [](const auto& in, int id) {
        return static_cast<int>(std::find(in.begin(), in.end(), id) - in.begin());
    };

    for (int step = 0; step < 3000; ++step)
    {
        const int what = Below(20);
        const int subitem = subitems.empty() ? -1 : Below(subitems.size());
        const int subitemId = subitem < 0 ? -1 : subitems[static_cast<std::size_t>(subitem)];
        const bool shown = std::count(columns.begin(), columns.end(), subitemId) != 0;
        const int item = items.empty() ? -1 : Below(items.size());
        const int id = item < 0 ? -1 : items[static_cast<std::size_t>(item)];
        const auto row = std::find(rows.begin(), rows.end(), id);
        SCOPED_TRACE("step " + std::to_string(step) + ", " + std::to_string(what));
        if (what == 0 && subitems.size() < 6)
        {
            const _RVSUBITEM definition;
            const int at = Below(subitems.size() + 1);
            ASSERT_EQ(at, report.DefineSubItem(at, const_cast<_RVSUBITEM*>(&definition)));
            subitems.insert(subitems.begin() + at, ++made);
        }
        else if (what == 1 && Below(2) == 0)
        {
            ASSERT_EQ(subitem >= 0, report.UndefineSubItem(subitem) == 1);
            std::erase(columns, subitemId);
            std::erase(subitems, subitemId);
        }
        else if (what < 5 && subitem >= 0 && !shown)
        {
            const int column = Below(columns.size() + 2);
            const int at = std::min(column, static_cast<int>(columns.size()));
            ASSERT_EQ(at, report.ActivateSubItem(subitem, column));
            columns.insert(columns.begin() + at, subitemId);
        }
        else if (what == 5)
        {
            ASSERT_EQ(shown, report.DeactivateSubItem(subitem) == 1);
            std::erase(columns, subitemId);
        }
        else if (what < 10 && subitem >= 0 && item >= 0)
        {
            auto& [written, image, check] = cells[id].try_emplace(subitemId, "-", -1, -1).first->second;
            const int value = Below(5) - 1;
            if (what < 8)
                written = value < 0 ? "-" : std::string(static_cast<std::size_t>(value), 'x');
            image = what == 8 ? value : image;
            check = what == 9 ? value : check;
            ASSERT_EQ(1, what < 8 ? report.SetItemText(item, subitem, value < 0 ? nullptr : written.c_str())
                         : what == 8 ? report.SetItemImage(item, subitem, value)
                                     : report.SetItemCheck(item, subitem, value));
        }
        else if (what < 13)
        {
            const int at = Below(items.size() + 1);
            const int newRow = at < static_cast<int>(items.size())
                                   ? place(rows, items[static_cast<std::size_t>(at)])
                                   : static_cast<int>(rows.size());
            ASSERT_EQ(at, report.InsertItem(at));
            ASSERT_EQ(1, report.SetItemData(at, static_cast<unsigned long>(++made)));
            items.insert(items.begin() + at, made);
            rows.insert(rows.begin() + newRow, made);
        }
        else if (what < 15 && item >= 0)
        {
            const int focusRow = report.GetFocusRow();
            ASSERT_EQ(1, report.DeleteItem(item));
            rows.erase(row);
            items.erase(items.begin() + item);
            focus = FocusAfter(focus, focusRow, rows);
        }
        else if (what == 15 && Below(10) == 0)
        {
            ASSERT_EQ(1, report.DeleteAllItems());
            items.clear();
            rows.clear();
            focus = RVI_NONE;
        }
        else if (what == 16)
        {
            const int ascending = Below(2);
            ASSERT_EQ(shown && !rows.empty(), report.SortItems(subitem, ascending) == 1);
            for (std::size_t i = 0; shown && i < rows.size(); ++i)
                rows[i] = IdOf(report.GetItemFromRow(static_cast<int>(i))); // ExpectRows tells if one is lost
        }
        else if (what == 17)
        {
            CArray<int, int> order;
            order.SetSize(static_cast<INT_PTR>(rows.size()));
            std::shuffle(rows.begin(), rows.end(), m_random);
            for (std::size_t i = 0; i < rows.size(); ++i)
                order[static_cast<INT_PTR>(i)] = place(items, rows[i]);
            ASSERT_EQ(1, report.SetItemRowArray(order));
        }
        else if (what > 17 && !rows.empty())
            focus = SelectAny(rows);

        ASSERT_NO_FATAL_FAILURE(ExpectRows(rows, items, focus));
        std::vector<int> found;
        for (int column = 0; column < report.GetActiveSubItemCount(); ++column)
            found.push_back(subitems.at(static_cast<std::size_t>(report.GetSubItemFromColumn(column))));
        ASSERT_EQ(columns, found);
        for (int at = 0; at < report.GetItemCount(); ++at)
        {
            for (std::size_t i = 0; i < subitems.size(); ++i)
            {
                const auto& ofItem = cells[items[static_cast<std::size_t>(at)]];
                const auto cell = ofItem.find(subitems[i]);
                const _RVITEM read = Read(at, static_cast<int>(i));
                ASSERT_EQ(cell == ofItem.end() ? Value("-", -1, -1) : cell->second,
                          Value(read.mask & RVIM_TEXT ? text : "-", read.image, read.check));
            }
        }
    }
}

struct Node
{
    int id = 0;
    std::string text;
    _TREEITEM* handle = nullptr;
    Node* parent = nullptr;
    std::vector<Node*> children;
    bool expanded = false;
};

void AddBelow(const Node& parent, bool all, std::vector<Node*>& to)
{
    for (Node* child : parent.children)
    {
        to.push_back(child);
        if (all || child->expanded)
            AddBelow(*child, all, to);
    }
}

// In front of the first child that is not less, or not greater.
void InsertSorted(Node& parent, Node* child, bool ascending)
{
    const auto after = [&](const Node* other) {
        return ascending ? child->text > other->text : child->text < other->text;
    };
    auto& children = parent.children;
    children.insert(std::find_if_not(children.begin(), children.end(), after), child);
}

void SortBelow(Node& parent, bool ascending)
{
    std::vector<Node*> children;
    children.swap(parent.children);
    for (Node* child : children)
    {
        SortBelow(*child, ascending);
        InsertSorted(parent, child, ascending);
    }
}

TEST_F(RandomReport, AgreesWithAModelOfATree)
{
    Create(RVS_TREE);
    Define({"a"});
    Node root;
    std::map<int, Node> nodes;
    std::vector<int> items;
    int focus = RVI_NONE, made = 0;
    bool ascending = true;
    for (int step = 0; step < 4000; ++step)
    {
        std::vector<Node*> all = {&root}, visible;
        AddBelow(root, true, all);
        AddBelow(root, false, visible);
        Node& node = *Any(all);
        const int what = Below(20);
        int goneRow = 0;
        SCOPED_TRACE("step " + std::to_string(step) + ", " + std::to_string(what));
        const auto remove = [&](Node& top) {
            goneRow = static_cast<int>(std::find(visible.begin(), visible.end(), &top) - visible.begin());
            std::vector<Node*> gone = {&top};
            AddBelow(top, true, gone);
            std::erase(top.parent->children, &top);
            for (const Node* each : gone)
                std::erase(items, each->id);
        };
        if (what < 7 && all.size() < 60)
        {
            Node& child = nodes[++made];
            child = {made, std::string(1, static_cast<char>('a' + Below(5))), nullptr, &node, {}, false};
            _TREEITEM* const places[] = {report::kTreeFirst, report::kTreeLast, report::kTreeSort};
            const std::size_t place = static_cast<std::size_t>(Below(4));
            const int sibling = node.children.empty() ? -1 : Below(node.children.size());
            auto& children = node.children;
            _TREEITEM* after = place < 3 ? places[place] : nullptr;
            if (place == 2)
                InsertSorted(node, &child, ascending);
            else if (place == 3 && sibling >= 0)
            {
                after = children[static_cast<std::size_t>(sibling)]->handle;
                children.insert(children.begin() + sibling + 1, &child);
            }
            else
                children.insert(place == 0 ? children.begin() : children.end(), &child);
            child.handle = report.InsertTreeItem(&node == &root ? report::kTreeRoot : node.handle, after,
                                                 child.text.c_str());
            ASSERT_NE(nullptr, child.handle);
            ASSERT_EQ(1, report.SetItemData(child.handle->item, static_cast<unsigned long>(made)));
            items.push_back(made);
        }
        else if (what == 7 && items.size() < 90)
        {
            const int at = Below(items.size() + 1); // an item without a row
            ASSERT_EQ(at, report.InsertItem(at));
            ASSERT_EQ(1, report.SetItemData(at, static_cast<unsigned long>(++made)));
            items.insert(items.begin() + at, made);
        }
        else if (what < 9 && !items.empty())
        {
            const int item = Below(items.size());
            const int id = items[static_cast<std::size_t>(item)];
            const auto found = nodes.find(id);
            ASSERT_EQ(1, report.DeleteItem(item));
            if (found != nodes.end())
                remove(found->second);
            else
                std::erase(items, id);
        }
        else if (what == 9 && &node != &root)
        {
            ASSERT_EQ(1, report.DeleteTreeItem(node.handle));
            remove(node);
        }
        else if (what == 10 && Below(20) == 0)
        {
            const bool whole = Below(2) == 0;
            ASSERT_EQ(1, whole ? report.DeleteAllItems() : report.DeleteTreeItem(report::kTreeRoot));
            while (!root.children.empty())
                remove(*root.children.back());
            if (whole)
                items.clear();
        }
        else if (what < 15 && &node != &root)
        {
            const unsigned action = RVE_COLLAPSE + static_cast<unsigned>(Below(3));
            const bool expand = action == RVE_TOGGLE ? !node.expanded : action == RVE_EXPAND;
            const bool changes = !node.children.empty() && expand != node.expanded;
            ASSERT_EQ(changes, report.Expand(node.handle, action) == 1);
            if (changes)
                node.expanded = expand;
        }
        else if (what == 15 && Below(5) == 0)
        {
            ascending = Below(2) == 0;
            ASSERT_EQ(1, report.SortItems(0, ascending));
            SortBelow(root, ascending);
        }
        else if (what > 15 && !visible.empty())
        {
            std::vector<int> ids;
            for (const Node* each : visible)
                ids.push_back(each->id);
            focus = SelectAny(ids);
        }

        visible.clear();
        AddBelow(root, false, visible);
        std::vector<int> ids;
        for (const Node* each : visible)
            ids.push_back(each->id);
        if (std::count(items.begin(), items.end(), focus) != 0)
        {
            for (const Node* each = nodes[focus].parent; each != &root; each = each->parent)
                focus = each->expanded ? focus : each->id; // hidden
        }
        focus = FocusAfter(focus, goneRow, ids);
        if (Below(3) == 0)
            continue; // the rows are not asked for after each step
        ASSERT_NO_FATAL_FAILURE(ExpectRows(ids, items, focus));
        for (const Node* each : visible)
        {
            const auto& stored = report.Struct(each->handle->item);
            ASSERT_EQ(each->id, stored.itemData);
            const unsigned box = each->expanded ? RVIS_EXPANDED : RVIS_COLLAPSED;
            ASSERT_EQ(each->children.empty() ? 0 : box, stored.state & (RVIS_EXPANDED | RVIS_COLLAPSED));
            ASSERT_EQ(stored.treeLevel,
                      each->parent == &root ? 1 : report.Struct(each->parent->handle->item).treeLevel + 1);
        }
        all = {&root};
        AddBelow(root, true, all);
        for (const Node* each : all)
        {
            const _TREEITEM* link =
                report.GetNextItem(each->handle ? each->handle : report::kTreeRoot, RVGN_CHILD);
            for (const Node* child : each->children)
            {
                ASSERT_EQ(child->handle, link);
                ASSERT_EQ(link, report.GetItemHandle(link->item));
                link = link->nextSibling;
            }
            ASSERT_EQ(nullptr, link);
        }
    }
}

} // namespace
