#include "report/model/Tree.h"

#include <gtest/gtest.h>

namespace
{

using report::Tree;

// What is below an item, in order.
std::string Below(_TREEITEM* parent, bool expandedOnly)
{
    std::string items;
    Tree::Walk(parent, expandedOnly, [&](_TREEITEM* item) { items += static_cast<char>('0' + item->item); });
    return items;
}

// 1 and 5 in the root, 2 and 3 in 1, which is collapsed, 4 in 3, 6 in 5.
TEST(Tree, AnswersWhatLiesWhere)
{
    Tree tree;
    _TREEITEM items[7];
    _TREEITEM* const root = tree.Root();
    for (const auto& [parent, number] :
         {std::pair(root, 1), {items + 1, 2}, {items + 1, 3}, {items + 3, 4}, {root, 5}, {items + 5, 6}})
    {
        items[number].item = number;
        items[number].parent = parent;
        items[number].expanded = number != 1;
        Tree::Link(parent, report::kTreeLast, &items[number], true, nullptr);
    }
    EXPECT_EQ("123456", Below(root, false));
    EXPECT_EQ("156", Below(root, true));
    EXPECT_EQ(2, Tree::Count(root, false));
    EXPECT_EQ(3, Tree::Count(&items[1], true));

    const struct
    {
        int item, top, parent, previous, next, shown; // 0 for none
    } cases[] = {{1, 1, 0, 0, 5, 1}, {2, 1, 1, 0, 3, 1}, {3, 1, 1, 2, 0, 1},
                 {4, 1, 3, 0, 0, 1}, {5, 5, 0, 1, 0, 5}, {6, 5, 5, 0, 0, 6}};
    for (const auto& each : cases)
    {
        _TREEITEM* const item = &items[each.item];
        const auto is = [&](int number, const _TREEITEM* found) {
            return found == (number == 0 ? nullptr : &items[number]);
        };
        bool found = false;
        EXPECT_TRUE(is(each.top, tree.Next(item, RVGN_ROOT, nullptr))) << each.item;
        EXPECT_TRUE(is(each.parent, tree.Next(item, RVGN_PARENT, nullptr))) << each.item;
        EXPECT_TRUE(is(each.previous, tree.Next(item, RVGN_PREVIOUS, nullptr))) << each.item;
        EXPECT_TRUE(is(each.next, tree.Next(item, RVGN_NEXT, nullptr))) << each.item;
        EXPECT_TRUE(is(each.shown, tree.VisibleAncestor(item, found))) << each.item;
        EXPECT_EQ(each.shown != each.item, found) << each.item;
        EXPECT_EQ(each.top == 1 && each.item != 1, Tree::IsDescendant(&items[1], item)) << each.item;
    }
}

} // namespace
