// The rows of a report control: which items they show, the tree they come from, and where focus and selection
// are among them. All three are kept in step here.
#pragma once

#include "report/model/Items.h"
#include "report/model/RowMap.h"
#include "report/model/Selection.h"
#include "report/model/Tree.h"

#include <utility>
#include <vector>

namespace report
{

// Whom the rows tell that they were made from the tree: what is scrolled may lie too far now.
class RowsListener
{
public:
    virtual ~RowsListener() = default;
    virtual void RowsMade(int count) = 0;
};

// In callback mode rows are items, and there is no tree. Else a list has a row for each item, and a tree one
// for each item below expanded ones. When a tree changes, its rows are marked invalid and made at the next
// look at them; the items that had focus and selection are remembered meanwhile.
//
// "False" and -1 mean that nothing was done. While something compares (Busy), items stay.
class Rows
{
public:
    Rows(Items& items, Overrides& overrides, RowsListener& listener)
        : m_items(items), m_overrides(overrides), m_listener(listener)
    {
    }
    Rows(const Rows&) = delete;
    Rows& operator=(const Rows&) = delete;

    // Focus and selection, as of the last look at the rows.
    Selection selection;

    bool IsTree() const { return m_isTree && !m_items.IsCallback(); }
    bool IsValid() const { return m_isValid || m_items.IsCallback(); } // no rows are to be made
    Tree& GetTree() { return m_tree; }

    // Items are asked for from now on, or form a tree, or not. If that makes other rows of them, focus and
    // selection go.
    void SetMode(bool isCallback, bool isTree);

    // Nothing has focus or selection any more.
    void ForgetSelection();

    // ---- Rows and items

    int Count();
    int RowOf(int item); // -1 for -1, kNoRow if no row shows the item
    int ItemAt(int row); // -1 for -1, kNoRow for kNoRow; invalid argument outside the rows
    RowMap& Map();       // of stored items

    // Takes any numbers for the items by row, as many as there are rows. The focus stays on its item.
    bool SetOrder(std::vector<int> items);

    // Swaps `row` with the one below. The focus goes along if it is on `moved`, one of the two.
    bool MoveDown(int row, int moved);

    // Changes the state of the item that a row shows; nothing in callback mode.
    void SetState(int row, unsigned bits, unsigned mask);

    // ---- Focus and selection

    int FocusedRow();
    RowRange SelectedRows();

    // As Selection::Select. False for row -1 and without rows; invalid argument outside them.
    bool Select(int row, int anchor, SelectMode mode, bool isSingle);
    bool Focus(int row, int column); // column -1: the whole row

    // The number of items in callback mode. Focus and selection are cut to it.
    void SetCallbackCount(int count);

    // ---- Items come and go

    int InsertItem(int item);  // its number
    bool DeleteItem(int item); // in a tree with all below it
    bool DeleteAllItems();

    // ---- Tree. A handle may be kTreeRoot.

    _TREEITEM* HandleOf(int item); // null below 0; invalid argument past the stored items
    _TREEITEM* Next(_TREEITEM* item, unsigned code);
    _TREEITEM* VisibleAncestor(_TREEITEM* item, bool& isHidden);

    // Links a tree item, and gives it its parent and level. Null parents stand for the root. What the
    // comparison answered if it put the item in front.
    int InsertTree(int subitem, _TREEITEM* parent, _TREEITEM* after, _TREEITEM* item, bool ascending);

    // A new item with a tree item of its own, at the end of the items; null where InsertItem answers -1, and
    // if `after` is not below `parent`. `text` may be null.
    _TREEITEM* InsertTreeItem(_TREEITEM* parent, _TREEITEM* after, const char* text, int subitem,
                              bool ascending);
    bool DeleteTreeItem(_TREEITEM* item);
    bool Expand(_TREEITEM* item, unsigned action); // RVE_*

    // Makes the rows; the second appends those below an item.
    void Build();
    void Build(_TREEITEM* parent);

    // Takes the focus off its row, and answers its tree item; puts it on the row of one or of what hides it.
    _TREEITEM* TakeFocus();
    void PutFocus(_TREEITEM* item);

    // ---- Comparing

    class Busy
    {
    public:
        explicit Busy(Rows& rows) : m_rows(rows), m_before(std::exchange(rows.m_isBusy, true)) {}
        ~Busy() { m_rows.m_isBusy = m_before; }
        Busy(const Busy&) = delete;
        Busy& operator=(const Busy&) = delete;

    private:
        Rows& m_rows;
        bool m_before;
    };
    bool IsBusy() const { return m_isBusy; }

private:
    void Invalidate();
    void MoveFocus(int row);
    void LinkNew(_TREEITEM& made, _TREEITEM* parent, _TREEITEM* after, int subitem, bool ascending);
    void RemoveItems(const std::vector<int>& items);
    std::vector<int> ItemsBelow(_TREEITEM* top);
    void DeleteSubtree(_TREEITEM* top);

    Items& m_items;
    Overrides& m_overrides;
    RowsListener& m_listener;
    RowMap m_map;
    Tree m_tree;
    bool m_isTree = false;
    bool m_isBusy = false;

    // Whether the rows follow the tree. If not, these had the focus and the ends of the selection before.
    bool m_isValid = true;
    _TREEITEM* m_focused = nullptr;
    _TREEITEM* m_firstSelected = nullptr;
    _TREEITEM* m_lastSelected = nullptr;
    _TREEITEM* m_lastInserted = nullptr; // the last child that InsertTreeItem has added
};

} // namespace report
