// Random sequences of operations on items, rows, tree and selection, each step compared with a plain model.
#include "tests/report/ModelControl.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <stdexcept>

namespace
{

using report::kNoRow;

using Names = std::vector<int>; // items are told apart by their data
using report::Tree;

struct Node
{
    int name = 0;
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

int IndexOf(const Names& names, int name)
{
    return static_cast<int>(std::find(names.begin(), names.end(), name) - names.begin());
}

int At(const Names& names, int index)
{
    return names.at(static_cast<std::size_t>(index));
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

class ReportModel : public testing::TestWithParam<bool> // whether a subclass answers copies
{
protected:
    ReportModel()
    {
        control.copies = GetParam();
        control.Define(1);
        control.rows.ForgetSelection();
    }

    int Below(std::size_t limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }
    Node& NodeOf(int name) { return nodes.at(name); }
    int NameAt(int item)
    {
        report::FetchedCell fetched;
        EXPECT_TRUE(control.items.Fetch(item, -1, RVIM_ITEMDATA, fetched));
        return static_cast<int>(fetched.item->itemData);
    }

    // An item has been inserted.
    void Name(int item)
    {
        _RVITEM change;
        change.item = item;
        change.mask = RVIM_ITEMDATA;
        change.itemData = ++made;
        ASSERT_TRUE(control.items.Write(change));
        items.insert(items.begin() + item, made);
    }

    // The names by row. What has focus and selection may be hidden by now: then what hides it has them.
    Names Look()
    {
        if (!tree)
            return order;
        std::vector<Node*> visible;
        AddBelow(root, false, visible);
        Names names;
        for (const Node* each : visible)
            names.push_back(each->name);
        for (int* name : {&focus, &first, &last})
        {
            if (*name <= 0)
                continue;
            for (const Node* above = NodeOf(*name).parent; above; above = above->parent)
                *name = above == &root || above->expanded ? *name : above->name;
        }
        if (first > 0 && IndexOf(names, first) > IndexOf(names, last))
            std::swap(first, last);
        return names;
    }

    void ExpectAll()
    {
        const Names names = Look();
        report::Rows& rows = control.rows;
        ASSERT_EQ(static_cast<int>(names.size()), rows.Count());
        for (int row = 0; row < rows.Count(); ++row)
        {
            ASSERT_EQ(At(names, row), NameAt(rows.ItemAt(row)));
            ASSERT_EQ(row, rows.RowOf(rows.ItemAt(row)));
        }
        const int focusRow = rows.FocusedRow();
        ASSERT_EQ(focus, focusRow < 0 ? focusRow : At(names, focusRow));
        ASSERT_EQ(anchor < 0 || tree ? rows.selection.anchor : IndexOf(names, anchor), rows.selection.anchor);
        const report::RowRange selected = rows.SelectedRows();
        const bool none = first == 0;
        ASSERT_EQ(none ? 0 : IndexOf(names, first), selected.first);
        ASSERT_EQ(none ? -1 : IndexOf(names, last), selected.last);
        ASSERT_EQ(static_cast<int>(items.size()), control.items.Count());
        for (int item = 0; item < control.items.Count(); ++item)
        {
            report::Item& stored = control.items.Stored().At(item);
            ASSERT_EQ(At(items, item), static_cast<int>(stored.itemData));
            ASSERT_EQ(At(items, item) == focus, (stored.state & RVIS_FOCUSED) != 0) << item;
            ASSERT_TRUE(!stored.treeItem || stored.treeItem->item == item);
        }
        for (const int name : tree ? names : Names())
            ExpectNode(NodeOf(name));
        std::vector<Node*> all;
        AddBelow(root, true, all);
        for (const Node* each : all)
            ExpectVisibleAncestor(*each);
    }

    // The outermost of those that hide a node, or the node itself.
    void ExpectVisibleAncestor(const Node& node)
    {
        const Node* visible = &node;
        for (const Node* above = node.parent; above != &root; above = above->parent)
            visible = above->expanded ? visible : above;
        bool isHidden = false;
        ASSERT_EQ(visible->handle, control.rows.VisibleAncestor(node.handle, isHidden));
        ASSERT_EQ(visible != &node, isHidden);
    }

    void ExpectNode(const Node& node)
    {
        const report::Item& stored = control.items.Stored().At(node.handle->item);
        const unsigned box = node.expanded ? RVIS_EXPANDED : RVIS_COLLAPSED;
        ASSERT_EQ(node.children.empty() ? 0 : box, stored.state & (RVIS_EXPANDED | RVIS_COLLAPSED));
        int level = 0;
        const Node* top = &node;
        for (const Node* above = node.parent; above; above = above->parent, ++level)
            top = above == &root ? top : above;
        ASSERT_EQ(level, stored.treeLevel);

        // What lies around it.
        const auto& siblings = node.parent->children;
        const auto place = std::find(siblings.begin(), siblings.end(), &node);
        const auto handle = [](const Node* other) { return other ? other->handle : nullptr; };
        report::Rows& rows = control.rows;
        ASSERT_EQ(handle(top), rows.Next(node.handle, RVGN_ROOT));
        ASSERT_EQ(handle(place + 1 == siblings.end() ? nullptr : place[1]),
                  rows.Next(node.handle, RVGN_NEXT));
        ASSERT_EQ(handle(place == siblings.begin() ? nullptr : place[-1]),
                  rows.Next(node.handle, RVGN_PREVIOUS));
        ASSERT_EQ(handle(node.parent == &root ? nullptr : node.parent), rows.Next(node.handle, RVGN_PARENT));
        ASSERT_EQ(handle(node.children.empty() ? nullptr : node.children[0]),
                  rows.Next(node.handle, RVGN_CHILD));
        ASSERT_EQ(focus > 0 ? NodeOf(focus).handle : nullptr, rows.Next(node.handle, RVGN_FOCUSED));
        std::vector<Node*> below;
        AddBelow(node, true, below);
        ASSERT_EQ(static_cast<int>(below.size()), Tree::Count(node.handle, true));
        ASSERT_EQ(static_cast<int>(node.children.size()), Tree::Count(node.handle, false));
        for (const Node* each : below)
            ASSERT_TRUE(rows.GetTree().IsDescendant(node.handle, each->handle));
        ASSERT_FALSE(rows.GetTree().IsDescendant(node.handle, node.handle));
    }

    // A row goes: those who were on it are on the next one, or the last.
    void RemoveRow(Names& names, int name)
    {
        const int row = IndexOf(names, name);
        if (row == static_cast<int>(names.size()))
            return; // it has none
        const int next = row + 1 < static_cast<int>(names.size()) ? At(names, row + 1) : kNoRow;
        const int before = row > 0 ? At(names, row - 1) : kNoRow;
        for (int* each : {&focus, &anchor})
            *each = *each != name ? *each : next != kNoRow ? next : before;
        if (first == name && last == name)
            first = last = 0;
        first = first == name ? next : first;
        last = last == name ? before : last;
        names.erase(names.begin() + row);
    }

    void Select(const Names& names)
    {
        const int row = Below(names.size());
        const int other = Below(names.size());
        const bool single = Below(8) == 0;
        const bool select = Below(4) != 0;
        ASSERT_TRUE(control.rows.Select(
            row, other, select ? report::SelectMode::Alone : report::SelectMode::None, single));
        control.rows.selection.anchor = other;
        focus = At(names, row);
        anchor = At(names, other);
        if (select)
        {
            first = At(names, single ? row : std::min(row, other));
            last = At(names, single ? row : std::max(row, other));
        }
    }

    // Rows have been sorted or put into an order: the selected rows stay where they are.
    void Reorder(const Names& before, const Names& after, bool alone)
    {
        for (int* name : {&first, &last, &anchor})
            if (*name > 0 && (name != &anchor || !tree)) // in a tree, nothing looks after the anchor
                *name = alone ? focus : At(after, IndexOf(before, *name));
    }

    void Forget(Node& top, Names& names)
    {
        while (!top.children.empty())
            Forget(*top.children.back(), names);
        RemoveRow(names, top.name);
        std::erase(items, top.name);
        if (top.parent)
            std::erase(top.parent->children, &top);
    }

    std::mt19937 m_random{11};
    ModelControl control;
    bool tree = false;
    Names items; // by number
    Names order; // of a list, by row
    Node root;
    std::map<int, Node> nodes;
    int focus = kNoRow;
    int anchor = kNoRow;
    int first = 0; // selected, 0 for none
    int last = 0;
    int made = 0;
};

TEST_P(ReportModel, AgreesOnAList)
{
    report::Rows& rows = control.rows;
    for (int step = 0; step < 3000; ++step)
    {
        const int what = Below(14);
        SCOPED_TRACE("step " + std::to_string(step) + ", " + std::to_string(what));
        const int item = Below(items.size() + 1);
        const int name = item < static_cast<int>(items.size()) ? At(items, item) : 0;
        const Names before = order;
        if (what < 5)
        {
            const int row = name == 0 ? static_cast<int>(order.size()) : IndexOf(order, name);
            ASSERT_EQ(item, rows.InsertItem(Below(2) == 0 && name == 0 ? item + 5 : item));
            control.SetText(item, 0, std::string(1, static_cast<char>('a' + Below(5))));
            ASSERT_NO_FATAL_FAILURE(Name(item));
            order.insert(order.begin() + row, made);
        }
        else if (what < 7)
        {
            ASSERT_EQ(name != 0, rows.DeleteItem(item));
            RemoveRow(order, name);
            std::erase(items, name);
        }
        else if (what == 7 && Below(40) == 0)
        {
            ASSERT_TRUE(rows.DeleteAllItems());
            items.clear();
            order.clear();
            focus = kNoRow;
            anchor = -1;
            first = last = 0;
        }
        else if (what == 8 && !order.empty())
        {
            const bool alone = first != 0 && first == focus && last == focus;
            const int ascending = Below(2);
            control.sorting.Sort(0, ascending);
            std::vector<std::string> texts;
            for (std::size_t row = 0; row < order.size(); ++row)
            {
                order[row] = At(items, rows.ItemAt(static_cast<int>(row))); // ExpectAll tells if one is lost
                texts.push_back(control.Text(rows.ItemAt(static_cast<int>(row)), 0));
            }
            if (!ascending)
                std::reverse(texts.begin(), texts.end());
            ASSERT_TRUE(std::is_sorted(texts.begin(), texts.end()));
            Reorder(before, order, alone);
        }
        else if (what == 9)
        {
            std::shuffle(order.begin(), order.end(), m_random);
            Names numbers;
            for (const int each : order)
                numbers.push_back(IndexOf(items, each));
            ASSERT_TRUE(rows.SetOrder(numbers));
            Reorder(before, order, false);
        }
        else if (what == 10 && order.size() > 1)
        {
            const int row = Below(order.size() - 1);
            const int moved = row + Below(2);
            ASSERT_TRUE(rows.MoveDown(row, moved));
            std::swap(order[static_cast<std::size_t>(row)], order[static_cast<std::size_t>(row) + 1]);
            const int focusRow = IndexOf(before, focus);
            Reorder(before, order, false);
            focus = focus > 0 && focusRow != moved ? At(order, focusRow) : focus;
            if (focusRow == row ||
                focusRow == row + 1) // which item says that it has the focus is kept as it is
            {
                for (const int each : items)
                    control.items.SetState(IndexOf(items, each), each == focus ? RVIS_FOCUSED : 0,
                                           RVIS_FOCUSED);
            }
        }
        else if (what > 10 && !order.empty())
            ASSERT_NO_FATAL_FAILURE(Select(order));
        ASSERT_NO_FATAL_FAILURE(ExpectAll());
    }
    EXPECT_THROW(rows.ItemAt(rows.Count()), std::invalid_argument);
    EXPECT_THROW(rows.ItemAt(-3), std::invalid_argument);
    EXPECT_EQ(kNoRow, rows.RowOf(control.items.Count()));
    EXPECT_EQ(-1, rows.InsertItem(-1));
    EXPECT_FALSE(rows.MoveDown(-1, 0) || rows.MoveDown(rows.Count() - 1, 0));
}

TEST_P(ReportModel, AgreesOnATree)
{
    report::Rows& rows = control.rows;
    rows.SetMode(false, tree = true);
    bool ascending = true;
    for (int step = 0; step < 4000; ++step)
    {
        std::vector<Node*> all = {&root};
        AddBelow(root, true, all);
        Node& node = *all[static_cast<std::size_t>(Below(all.size()))];
        const int what = Below(20);
        SCOPED_TRACE("step " + std::to_string(step) + ", " + std::to_string(what));
        if (what < 7 && all.size() < 60)
        {
            Node& child = nodes[made + 1];
            child.name = made + 1;
            child.text = static_cast<char>('a' + Below(5));
            child.parent = &node;
            _TREEITEM* const places[] = {report::kTreeFirst, report::kTreeLast, report::kTreeSort, nullptr};
            _TREEITEM* after = places[Below(4)];
            auto& children = node.children;
            if (after == report::kTreeSort)
                InsertSorted(node, &child, ascending);
            else if (!children.empty() && Below(3) == 0)
            {
                const int sibling = Below(children.size());
                after = children[static_cast<std::size_t>(sibling)]->handle;
                children.insert(children.begin() + sibling + 1, &child);
            }
            else
                children.insert(after == report::kTreeFirst ? children.begin() : children.end(), &child);
            _TREEITEM* const under = &node != &root  ? node.handle
                                     : Below(2) == 0 ? nullptr
                                                     : report::kTreeRoot;
            child.handle = rows.InsertTreeItem(under, after, child.text.c_str(), 0, ascending);
            ASSERT_NE(nullptr, child.handle);
            ASSERT_NO_FATAL_FAILURE(Name(child.handle->item));
        }
        else if (what == 7 && items.size() < 90)
        {
            const int at = Below(items.size() + 1); // an item without a row
            ASSERT_EQ(at, rows.InsertItem(at));
            ASSERT_NO_FATAL_FAILURE(Name(at));
        }
        else if (what < 10 && !items.empty())
        {
            Names names = Look();
            const int item = Below(items.size());
            const int name = At(items, item);
            _TREEITEM* const handle = rows.HandleOf(item);
            ASSERT_TRUE(handle && what == 9 ? rows.DeleteTreeItem(handle) : rows.DeleteItem(item));
            if (handle)
                Forget(NodeOf(name), names);
            else
                std::erase(items, name);
        }
        else if (what == 10 && Below(20) == 0)
        {
            Names names = Look();
            const bool whole = Below(2) == 0;
            ASSERT_TRUE(whole ? rows.DeleteAllItems() : rows.DeleteTreeItem(report::kTreeRoot));
            Forget(root, names);
            if (whole)
                items.clear();
            focus = kNoRow;
        }
        else if (what < 15 && &node != &root)
        {
            const unsigned action = RVE_COLLAPSE + static_cast<unsigned>(Below(3));
            const bool expand = action == RVE_TOGGLE ? !node.expanded : action == RVE_EXPAND;
            const bool changes = !node.children.empty() && expand != node.expanded;
            ASSERT_EQ(changes, rows.Expand(node.handle, action));
            node.expanded = changes ? expand : node.expanded;
        }
        else if (what == 15 && Below(5) == 0)
        {
            const Names before = Look();
            const bool alone = first != 0 && first == focus && last == focus;
            ascending = Below(2) == 0;
            control.sorting.Sort(0, ascending);
            SortBelow(root, ascending);
            const int keptFirst = first;
            const int keptLast = last;
            first = last = 0;
            const Names after = Look();
            first = keptFirst;
            last = keptLast;
            Reorder(before, after, alone);
        }
        else if (what > 15 && Look().size() > 0)
            ASSERT_NO_FATAL_FAILURE(Select(Look()));
        if (Below(3) != 0) // the rows are not asked for after each step
            ASSERT_NO_FATAL_FAILURE(ExpectAll());
    }
}

INSTANTIATE_TEST_SUITE_P(Records, ReportModel, testing::Bool(),
                         [](const auto& info) { return info.param ? "Copied" : "AsTheyAre"; });

} // namespace
