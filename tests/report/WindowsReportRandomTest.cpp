// Random sequences of operations on a report control, each step compared with a plain model.
#include "tests/report/ReportFixture.h"

#include "report/model/Tree.h"

#include <algorithm>
#include <map>
#include <random>

namespace
{

using Numbers = std::vector<int>;

class RandomReport : public ReportTest
{
protected:
    int Below(std::size_t limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    // Items are told apart by their data. This one has been inserted.
    void Name(int item)
    {
        ASSERT_EQ(1, report.SetItemData(item, static_cast<unsigned long>(++made)));
        items.insert(items.begin() + item, made);
    }

    // The rows; that only the focused item says so, and that the selected rows are rows.
    void ExpectRows(const Numbers& rows)
    {
        const auto nameOf = [this](int item) { return static_cast<int>(report.GetItemData(item)); };
        Numbers shown;
        for (int row = 0; row < report.GetRowCount(); ++row)
        {
            const int item = report.GetItemFromRow(row);
            ASSERT_EQ(row, report.GetRowFromItem(item));
            shown.push_back(nameOf(item));
        }
        ASSERT_EQ(rows, shown);

        const int row = report.GetCurrentFocus();
        ASSERT_EQ(focus, row < 0 ? row : shown.at(static_cast<std::size_t>(row)));
        ASSERT_EQ(static_cast<int>(items.size()), report.GetItemCount());
        for (int item = 0; item < report.GetItemCount(); ++item)
        {
            ASSERT_EQ(items[static_cast<std::size_t>(item)], nameOf(item));
            ASSERT_EQ(nameOf(item) == focus, (report.Struct(item).state & RVIS_FOCUSED) != 0) << item;
        }
        int first = 0;
        int last = 0;
        report.GetSelectedRows(&first, &last);
        ASSERT_TRUE((first == 0 && last == -1) ||
                    (0 <= first && first <= last && last < report.GetRowCount()));
    }

    // The focused item may have gone: the focus is on the row in its place then.
    void MoveFocus(int row, const Numbers& rows)
    {
        if (focus != RVI_NONE && std::find(rows.begin(), rows.end(), focus) == rows.end())
            focus = rows.empty() ? RVI_NONE : rows[std::min(static_cast<std::size_t>(row), rows.size() - 1)];
    }

    void SelectAny(const Numbers& rows)
    {
        const int row = Below(rows.size());
        report.SelectRows(row, Below(rows.size()), Below(4), 0, Below(2), 0);
        focus = rows[static_cast<std::size_t>(row)];
    }

    std::mt19937 m_random{11};
    Numbers items; // their names
    int focus = RVI_NONE;
    int made = 0;
};

TEST_F(RandomReport, AgreesWithAModelOfAList)
{
    Define({"a"});
    Numbers rows;
    for (int step = 0; step < 2000; ++step)
    {
        const int what = Below(12);
        SCOPED_TRACE("step " + std::to_string(step) + ", " + std::to_string(what));
        const int item = Below(items.size() + 1);
        const bool last = item == static_cast<int>(items.size());
        const int name = last ? 0 : items[static_cast<std::size_t>(item)];
        const int focusRow = report.GetCurrentFocus();
        if (what < 4)
        {
            const auto row = last ? rows.end() : std::find(rows.begin(), rows.end(), name);
            ASSERT_EQ(item, report.InsertItem(item, &"xxxx"[Below(5)]));
            Name(item);
            rows.insert(row, made);
        }
        else if (what < 6 && !last)
        {
            ASSERT_EQ(1, report.DeleteItem(item));
            std::erase(rows, name);
            std::erase(items, name);
        }
        else if (what == 6 && Below(20) == 0)
        {
            ASSERT_EQ(1, report.DeleteAllItems());
            items.clear();
            rows.clear();
        }
        else if (what == 7)
        {
            ASSERT_EQ(!rows.empty(), report.SortItems(0, Below(2)) == 1);
            for (std::size_t i = 0; i < rows.size(); ++i) // ExpectRows tells if one is lost
                rows[i] = items.at(static_cast<std::size_t>(report.GetItemFromRow(static_cast<int>(i))));
        }
        else if (what == 8)
        {
            CArray<int, int> order;
            std::shuffle(rows.begin(), rows.end(), m_random);
            for (const int each : rows)
                order.Add(static_cast<int>(std::find(items.begin(), items.end(), each) - items.begin()));
            ASSERT_EQ(1, report.SetItemRowArray(order));
        }
        else if (what > 8 && !rows.empty())
            SelectAny(rows);
        MoveFocus(focusRow, rows);
        ASSERT_NO_FATAL_FAILURE(ExpectRows(rows));
    }
}

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

Numbers Visible(const Node& root)
{
    std::vector<Node*> visible;
    AddBelow(root, false, visible);
    Numbers names;
    for (const Node* each : visible)
        names.push_back(each->name);
    return names;
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

class RandomTree : public RandomReport
{
protected:
    void InsertBelow(Node& under)
    {
        Node& child = nodes[made + 1];
        child = {made + 1, std::string(1, static_cast<char>('a' + Below(5))), nullptr, &under, {}, false};
        _TREEITEM* const places[] = {report::kTreeFirst, report::kTreeLast, report::kTreeSort, nullptr};
        _TREEITEM* after = places[Below(4)];
        auto& children = under.children;
        if (after == report::kTreeSort)
            InsertSorted(under, &child, ascending);
        else if (!children.empty() && Below(3) == 0)
        {
            const int sibling = Below(children.size());
            after = children[static_cast<std::size_t>(sibling)]->handle;
            children.insert(children.begin() + sibling + 1, &child);
        }
        else
            children.insert(after == report::kTreeFirst ? children.begin() : children.end(), &child);
        child.handle = report.InsertTreeItem(under.handle, after, child.text.c_str());
        ASSERT_NE(nullptr, child.handle);
        Name(child.handle->item);
    }

    void Delete(int item, bool byHandle)
    {
        const int name = items[static_cast<std::size_t>(item)];
        _TREEITEM* const handle = report.GetItemHandle(item);
        ASSERT_EQ(1, handle && byHandle ? report.DeleteTreeItem(handle) : report.DeleteItem(item));
        if (handle)
            Forget(nodes.at(name));
        else
            std::erase(items, name);
    }

    void Forget(Node& top)
    {
        while (!top.children.empty())
            Forget(*top.children.back());
        std::erase(items, top.name);
        if (top.parent)
            std::erase(top.parent->children, &top);
    }

    void Expand(Node& node, unsigned action)
    {
        const bool expand = action == RVE_TOGGLE ? !node.expanded : action == RVE_EXPAND;
        const bool changes = !node.children.empty() && expand != node.expanded;
        ASSERT_EQ(changes, report.Expand(node.handle, action) == 1);
        node.expanded = changes ? expand : node.expanded;
    }

    // The focus of an item that is no longer visible is on the collapsed one.
    void RaiseFocus()
    {
        if (std::count(items.begin(), items.end(), focus) == 0)
            return;
        for (const Node* above = nodes[focus].parent; above; above = above->parent)
            focus = above == &root || above->expanded ? focus : above->name;
    }

    void ExpectStates()
    {
        std::vector<Node*> visible;
        AddBelow(root, false, visible);
        for (const Node* each : visible)
        {
            const auto& stored = report.Struct(each->handle->item);
            const unsigned box = each->expanded ? RVIS_EXPANDED : RVIS_COLLAPSED;
            ASSERT_EQ(each->children.empty() ? 0 : box, stored.state & (RVIS_EXPANDED | RVIS_COLLAPSED));
            int level = 0;
            for (const Node* above = each->parent; above; above = above->parent)
                ++level;
            ASSERT_EQ(level, stored.treeLevel);
        }
    }

    Node root;
    std::map<int, Node> nodes;
    bool ascending = true;
};

TEST_F(RandomTree, AgreesWithAModelOfATree)
{
    Create(RVS_TREE);
    Define({"a"});
    for (int step = 0; step < 3000; ++step)
    {
        std::vector<Node*> all = {&root};
        AddBelow(root, true, all);
        Node& node = *all[static_cast<std::size_t>(Below(all.size()))];
        const Numbers before = Visible(root);
        int goneRow = 0;
        const int what = Below(20);
        SCOPED_TRACE("step " + std::to_string(step) + ", " + std::to_string(what));
        if (what < 7 && all.size() < 60)
            InsertBelow(node);
        else if (what == 7 && items.size() < 90)
        {
            const int at = Below(items.size() + 1); // an item without a row
            ASSERT_EQ(at, report.InsertItem(at));
            Name(at);
        }
        else if (what < 10 && !items.empty())
        {
            const int item = Below(items.size());
            const int name = items[static_cast<std::size_t>(item)];
            goneRow = static_cast<int>(std::find(before.begin(), before.end(), name) - before.begin());
            Delete(item, what == 9);
        }
        else if (what == 10 && Below(20) == 0)
        {
            const bool whole = Below(2) == 0;
            ASSERT_EQ(1, whole ? report.DeleteAllItems() : report.DeleteTreeItem(report::kTreeRoot));
            Forget(root);
            if (whole)
                items.clear();
        }
        else if (what < 15 && &node != &root)
            Expand(node, RVE_COLLAPSE + static_cast<unsigned>(Below(3)));
        else if (what == 15 && Below(5) == 0)
        {
            ascending = Below(2) == 0;
            ASSERT_EQ(1, report.SortItems(0, ascending));
            SortBelow(root, ascending);
        }
        else if (what > 15 && !before.empty())
            SelectAny(before);

        RaiseFocus();
        MoveFocus(goneRow, Visible(root));
        if (Below(3) == 0)
            continue; // the rows are not asked for after each step
        ASSERT_NO_FATAL_FAILURE(ExpectRows(Visible(root)));
        ASSERT_NO_FATAL_FAILURE(ExpectStates());
    }
}

} // namespace
