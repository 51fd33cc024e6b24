// Random sequences of operations on items, rows, tree and selection, each step compared with a plain model.
#include "tests/report/ModelControl.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <stdexcept>

namespace
{

using report::kNoRow;

using Names = std::vector<int>; // items are told apart by their data, from 1 on

int IndexOf(const Names& names, int name)
{
    return static_cast<int>(std::find(names.begin(), names.end(), name) - names.begin());
}

int At(const Names& names, int index)
{
    return names.at(static_cast<std::size_t>(index));
}

std::set<int> Between(int row, int other)
{
    std::set<int> rows;
    for (int each = std::min(row, other); each <= std::max(row, other); ++each)
        rows.insert(each);
    return rows;
}

std::set<int> RowsOf(const report::Selection& selection)
{
    return selection.first > selection.last ? std::set<int>() : Between(selection.first, selection.last);
}

// The rows that are selected after `row` was taken out: one of the two parts.
std::set<int> Without(const std::set<int>& old, int row, int anchor)
{
    const std::set<int> above(old.begin(), old.find(row));
    const std::set<int> below(old.upper_bound(row), old.end());
    if (above.size() != below.size())
        return above.size() > below.size() ? above : below;
    return below.contains(anchor) ? below : above;
}

// The rows that are selected after it.
std::set<int> Selected(const report::Selection& old, int row, int other, report::SelectMode mode,
                       bool isSingle)
{
    std::set<int> rows = RowsOf(old);
    if (mode == report::SelectMode::None)
        return rows;
    if (mode == report::SelectMode::Toggle && rows.contains(row))
        return isSingle ? std::set<int>() : Without(rows, row, old.anchor);
    const std::set<int> chosen = Between(row, isSingle ? row : other);
    if (mode == report::SelectMode::Alone || isSingle)
        return chosen;
    rows.insert(chosen.begin(), chosen.end());
    const bool hasGap = *rows.rbegin() - *rows.begin() >= static_cast<int>(rows.size());
    return hasGap ? chosen : rows;
}

struct Node
{
    std::string text;
    int parent = 0;
    Names children;
    bool expanded = false;
    _TREEITEM* handle = nullptr; // none in a list
};

// Whether a subclass answers copies, and whether the items form a tree. A list is a tree of one level.
class ReportModel : public testing::TestWithParam<std::tuple<bool, bool>>
{
protected:
    ReportModel()
    {
        control.copies = std::get<0>(GetParam());
        control.Define(1);
        rows.ForgetSelection();
        rows.SetMode(false, tree);
    }
    int Random(std::size_t limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    // ---- The plain model

    Names Below(int name, bool all)
    {
        Names names;
        for (const int child : nodes[name].children)
        {
            names.push_back(child);
            const Names below = all || nodes[child].expanded ? Below(child, all) : Names();
            names.insert(names.end(), below.begin(), below.end());
        }
        return names;
    }
    Names Above(int name) // the root at the end
    {
        Names names;
        while (name != 0)
            names.push_back(name = nodes[name].parent);
        return names;
    }
    // The outermost of those that hide a node, or the node itself.
    int Shown(int name)
    {
        int shown = name;
        for (const int above : Above(name))
            shown = above == 0 || nodes[above].expanded ? shown : above;
        return shown;
    }
    // The names by row. What has focus and selection may be hidden by now: then what hides it has them.
    Names Look()
    {
        const Names names = Below(0, false);
        for (int* each : {&focus, &first, &last})
            *each = *each > 0 ? Shown(*each) : *each;
        if (first > 0 && IndexOf(names, first) > IndexOf(names, last))
            std::swap(first, last);
        return names;
    }
    // In front of the first child that is not less, or not greater.
    void InsertSorted(int parent, int name)
    {
        const auto isAfter = [&](int other) {
            const int result = nodes[name].text.compare(nodes[other].text);
            return ascending ? result > 0 : result < 0;
        };
        Names& children = nodes[parent].children;
        children.insert(std::find_if_not(children.begin(), children.end(), isAfter), name);
    }
    void SortBelow(int parent)
    {
        const Names children = std::exchange(nodes[parent].children, {});
        for (const int child : children)
        {
            SortBelow(child);
            InsertSorted(parent, child);
        }
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
    void Forget(int name, Names& names)
    {
        while (!nodes[name].children.empty())
            Forget(nodes[name].children.back(), names);
        RemoveRow(names, name);
        std::erase(items, name);
        std::erase(nodes[nodes[name].parent].children, name);
    }
    // Rows have another order: the selected rows and the anchor stay where they are, except that in a tree
    // nothing looks after the anchor. Alone, the selected row stays on its item.
    void StayWhere(const Names& before, bool alone)
    {
        const Names after = Below(0, false);
        for (int* name : {&first, &last, &anchor})
            if (*name > 0 && (name != &anchor || !tree))
                *name = alone ? focus : At(after, IndexOf(before, *name));
    }

    // ---- What both are now, in words

    std::string Expected()
    {
        const Names names = Look();
        std::ostringstream text;
        text << "focus " << (focus < 0 ? focus : IndexOf(names, focus)) << " selected "
             << (first == 0 ? 0 : IndexOf(names, first)) << " to "
             << (first == 0 ? -1 : IndexOf(names, last));
        if (anchor >= 0 && !tree)
            text << " anchor " << IndexOf(names, anchor);
        for (const int name : items)
            text << " item " << name << (name == focus ? " focused" : "");
        for (const int name : names)
        {
            const Node& node = nodes[name];
            text << " row " << name << " level " << (tree ? static_cast<int>(Above(name).size()) : -1)
                 << (node.children.empty() ? ""
                     : node.expanded       ? " open"
                                           : " closed");
        }
        return text.str();
    }
    std::string Actual()
    {
        std::ostringstream text;
        rows.Count();
        text << "focus " << rows.FocusedRow() << " selected " << rows.SelectedRows().first << " to "
             << rows.SelectedRows().last;
        if (anchor >= 0 && !tree)
            text << " anchor " << rows.selection.anchor;
        const auto storedAt = [this](int item) -> report::Item& { return control.items.Stored().At(item); };
        for (int item = 0; item < control.items.Count(); ++item)
        {
            const bool isFocused = (storedAt(item).state & RVIS_FOCUSED) != 0;
            text << " item " << NameAt(item) << (isFocused ? " focused" : "");
            EXPECT_TRUE(!storedAt(item).treeItem || storedAt(item).treeItem->item == item);
        }
        for (int row = 0; row < rows.Count(); ++row)
        {
            const int item = rows.ItemAt(row);
            EXPECT_EQ(row, rows.RowOf(item));
            const report::Item& stored = storedAt(item);
            text << " row " << NameAt(item) << " level " << stored.treeLevel
                 << ((stored.state & RVIS_EXPANDED) != 0 ? " open" : "")
                 << ((stored.state & RVIS_COLLAPSED) != 0 ? " closed" : "");
        }
        return text.str();
    }
    int NameAt(int item)
    {
        report::FetchedCell fetched;
        EXPECT_TRUE(control.items.Fetch(item, -1, RVIM_ITEMDATA, fetched));
        return static_cast<int>(fetched.item->itemData);
    }

    // What lies around a tree item.
    void ExpectAround(int name, int other)
    {
        const Names above = Above(name), below = Below(name, true);
        const Names &siblings = nodes[above[0]].children, &children = nodes[name].children;
        const std::size_t place = static_cast<std::size_t>(IndexOf(siblings, name));
        const int around[] = {above.size() > 1 ? above[above.size() - 2] : name,
                              place + 1 < siblings.size() ? siblings[place + 1] : 0,
                              place > 0 ? siblings[place - 1] : 0,
                              above[0],
                              children.empty() ? 0 : children[0],
                              focus};
        _TREEITEM* const handle = nodes[name].handle;
        for (unsigned code = RVGN_ROOT; code <= RVGN_FOCUSED; ++code)
            EXPECT_EQ(around[code] > 0 ? nodes[around[code]].handle : nullptr, rows.Next(handle, code))
                << code;
        bool isHidden = false;
        EXPECT_EQ(nodes[Shown(name)].handle, rows.VisibleAncestor(handle, isHidden));
        EXPECT_EQ(Shown(name) != name, isHidden);
        EXPECT_EQ(static_cast<int>(children.size()), report::Tree::Count(handle, false));
        EXPECT_EQ(static_cast<int>(below.size()), report::Tree::Count(handle, true));
        EXPECT_EQ(IndexOf(below, other) < static_cast<int>(below.size()),
                  rows.GetTree().IsDescendant(handle, nodes[other].handle));
    }

    // ---- Operations, done to both

    // A new item has to be told apart.
    void Name(int item, int name)
    {
        _RVITEM change = {.mask = RVIM_ITEMDATA, .item = item, .itemData = name};
        ASSERT_TRUE(control.items.Write(change));
        items.insert(items.begin() + item, name);
    }
    void InsertItem() // which in a tree has no row
    {
        const int name = ++made;
        Names& order = nodes[0].children;
        const int item = Random(items.size() + 1);
        const bool atEnd = item == static_cast<int>(items.size());
        const int row = atEnd || tree ? static_cast<int>(order.size()) : IndexOf(order, At(items, item));
        ASSERT_EQ(item, rows.InsertItem(atEnd ? item + Random(2) * 5 : item));
        Name(item, name);
        if (tree)
            return;
        nodes[name].text = std::to_string(name * 37 % 1009); // no two are equal
        control.SetText(item, 0, nodes[name].text);
        order.insert(order.begin() + row, name);
    }
    void InsertTreeItem(int parent)
    {
        const int name = ++made;
        Node& node = nodes[name];
        node.text = static_cast<char>('a' + Random(5));
        node.parent = parent;
        Names& children = nodes[parent].children;
        _TREEITEM* const places[] = {report::kTreeFirst, report::kTreeLast, report::kTreeSort, nullptr};
        _TREEITEM* after = places[Random(4)];
        if (after == report::kTreeSort)
            InsertSorted(parent, name);
        else if (!children.empty() && Random(3) == 0)
        {
            const int sibling = Random(children.size());
            after = nodes[At(children, sibling)].handle;
            children.insert(children.begin() + sibling + 1, name);
        }
        else
            children.insert(after == report::kTreeFirst ? children.begin() : children.end(), name);
        _TREEITEM* const under = parent != 0      ? nodes[parent].handle
                                 : Random(2) == 0 ? nullptr
                                                  : report::kTreeRoot;
        node.handle = rows.InsertTreeItem(under, after, node.text.c_str(), 0, ascending);
        ASSERT_NE(nullptr, node.handle);
        if (parent == 0 && Random(2) == 0)
            node.handle->parent = under; // as an owner may know the root, or not at all
        Name(node.handle->item, name);
    }
    void Delete()
    {
        Names names = Look();
        const int item = Random(items.size() + 1);
        const bool isThere = item < static_cast<int>(items.size());
        _TREEITEM* const handle = tree && isThere ? rows.HandleOf(item) : nullptr;
        ASSERT_EQ(isThere, handle && Random(2) == 0 ? rows.DeleteTreeItem(handle) : rows.DeleteItem(item));
        if (isThere)
            Forget(At(items, item), names);
    }
    void DeleteAll()
    {
        Names names = Look();
        const bool whole = !tree || Random(3) == 0;
        ASSERT_TRUE(whole ? rows.DeleteAllItems() : rows.DeleteTreeItem(report::kTreeRoot));
        Forget(0, names);
        items = whole ? Names() : items;
        focus = kNoRow;
        anchor = -1;
        first = last = 0;
    }
    void Expand(int name)
    {
        Node& node = nodes[name];
        const unsigned action = RVE_COLLAPSE + static_cast<unsigned>(Random(3));
        const bool expand = action == RVE_TOGGLE ? !node.expanded : action == RVE_EXPAND;
        const bool changes = !node.children.empty() && expand != node.expanded;
        ASSERT_EQ(changes, rows.Expand(node.handle, action));
        node.expanded = changes ? expand : node.expanded;
    }
    void Sort()
    {
        for (const int above : (tree && focus > 0 && Random(2)) ? Above(focus) : Names())
            if (nodes[above].expanded) // hides what has the focus
                nodes[above].expanded = !rows.Expand(nodes[above].handle, RVE_COLLAPSE);
        const Names before = Look();
        const bool alone = first != 0 && first == focus && last == focus;
        ascending = Random(2) == 0;
        control.sorting.Sort(0, ascending);
        SortBelow(0);
        StayWhere(before, alone);
    }
    void Shuffle()
    {
        Names& order = nodes[0].children;
        const Names before = order;
        std::shuffle(order.begin(), order.end(), m_random);
        Names numbers;
        for (const int name : order)
            numbers.push_back(IndexOf(items, name));
        ASSERT_TRUE(rows.SetOrder(numbers));
        StayWhere(before, false);
    }
    void MoveDown()
    {
        Names& order = nodes[0].children;
        const Names before = order;
        const int row = Random(order.size() - 1);
        const int moved = row + Random(2);
        const int focusRow = IndexOf(before, focus);
        ASSERT_TRUE(rows.MoveDown(row, moved));
        std::swap(order.at(static_cast<std::size_t>(row)), order.at(static_cast<std::size_t>(row) + 1));
        StayWhere(before, false);
        focus = focus > 0 && focusRow != moved ? At(order, focusRow) : focus;
    }
    void Select(const Names& names)
    {
        for (int again = 0; again < 9; ++again)
        {
            rows.Count(); // looks, as the model has
            const report::Selection old = rows.selection;
            const int row = Random(std::min<std::size_t>(names.size(), 9));
            const int other = Random(std::min<std::size_t>(names.size(), again + 1));
            const auto mode = static_cast<report::SelectMode>(Random(4));
            const bool single = Random(9) == 0;
            const std::set<int> selected = Selected(old, row, other, mode, single);
            ASSERT_TRUE(rows.Select(row, other, mode, single));
            ASSERT_EQ(selected, RowsOf(rows.selection));
            focus = At(names, row);
            first = selected.empty() ? 0 : At(names, *selected.begin());
            last = selected.empty() ? 0 : At(names, *selected.rbegin());
            rows.selection.focusColumn = Random(3) - 1;
            ASSERT_NO_FATAL_FAILURE(ExpectChanges(old, rows.selection));
            rows.selection.anchor = Random(names.size());
            anchor = At(names, rows.selection.anchor);
        }
    }
    // The rows that look different now, and no others at the ends.
    static void ExpectChanges(const report::Selection& old, const report::Selection& now)
    {
        std::set<int> changed;
        for (int row = 0; row < 100; ++row)
            if (old.IsSelected(row) != now.IsSelected(row))
                changed.insert(row);
        if (old.focusRow != now.focusRow || old.focusColumn != now.focusColumn)
            changed.insert({old.focusRow, now.focusRow});
        changed.erase(kNoRow);
        const report::RowRange range = ChangedRows(old, now);
        ASSERT_EQ(changed.empty(), range.first > range.last);
        if (!changed.empty())
            ASSERT_EQ((report::RowRange{*changed.begin(), *changed.rbegin()}), range);
    }
    void Step(int what)
    {
        const Names all = Below(0, true);
        const int chosen = Random(all.size() + 1);
        const int name = chosen == 0 ? 0 : At(all, chosen - 1);
        if (what < 7 && all.size() < 60)
            tree ? InsertTreeItem(name) : InsertItem();
        else if (what == 7 && tree && items.size() < 90)
            InsertItem();
        else if (what < 10)
            Delete();
        else if (what == 10 && Random(10) == 0)
            DeleteAll();
        else if (what < 15 && tree && name != 0)
            Expand(name);
        else if (what == 15 && !all.empty() && Random(3) == 0)
            Sort();
        else if (what < 15 && !tree && all.size() > 1)
            what == 14 ? Shuffle() : MoveDown();
        else if (what == 16 && tree && name != 0)
        {
            Look();
            if (Random(2) == 0)
                rows.TakeFocus();
            rows.PutFocus(nodes[name].handle);
            focus = Shown(name);
        }
        else if (what > 15 && !all.empty())
            Select(Look());
    }

    const bool tree = std::get<1>(GetParam());
    std::mt19937 m_random{11};
    ModelControl control;
    report::Rows& rows = control.rows;
    Names items;                           // by number
    std::map<int, Node> nodes = {{0, {}}}; // 0 is the root
    bool ascending = true;
    int focus = kNoRow;
    int anchor = kNoRow;
    int first = 0; // selected, 0 for none
    int last = 0;
    int made = 0;
};

TEST_P(ReportModel, AgreesWithAPlainOne)
{
    for (int step = 0; step < 2000; ++step)
    {
        const int what = Random(20);
        SCOPED_TRACE("step " + std::to_string(step) + ", " + std::to_string(what));
        ASSERT_NO_FATAL_FAILURE(Step(what));
        if (!tree || Random(3) != 0) // the rows are not asked for after each step
        {
            ASSERT_EQ(Expected(), Actual());
            const Names all = Below(0, true);
            if (tree && !all.empty() && Random(3) == 0)
                ExpectAround(At(all, Random(all.size())), At(all, Random(all.size())));
        }
    }
    EXPECT_THROW(rows.ItemAt(rows.Count()), std::invalid_argument);
    EXPECT_THROW(rows.ItemAt(-3), std::invalid_argument);
    for (const int item : {kNoRow, control.items.Count()})
        EXPECT_EQ(kNoRow, rows.RowOf(item));
    EXPECT_EQ(-1, rows.InsertItem(-1));
    EXPECT_FALSE(rows.MoveDown(-1, 0) || rows.MoveDown(rows.Count() - 1, 0));
}

INSTANTIATE_TEST_SUITE_P(Records, ReportModel, testing::Combine(testing::Bool(), testing::Bool()),
                         [](const auto& info) {
                             return std::string(std::get<1>(info.param) ? "Tree" : "List") +
                                    (std::get<0>(info.param) ? "Copied" : "AsItIs");
                         });

} // namespace
