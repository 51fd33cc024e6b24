#include "report/Tree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace
{

using report::Tree;
using Items = std::vector<_TREEITEM*>;

Items Children(const _TREEITEM* parent)
{
    Items children;
    for (_TREEITEM* child = parent->firstChild; child != nullptr; child = child->nextSibling)
        children.push_back(child);
    return children;
}

void AppendBelow(Items& items, const _TREEITEM* parent, bool expandedOnly)
{
    for (_TREEITEM* child : Children(parent))
    {
        items.push_back(child);
        if (!expandedOnly || child->expanded != 0)
            AppendBelow(items, child, expandedOnly);
    }
}

Items Walked(_TREEITEM* parent, bool expandedOnly)
{
    Items items;
    Tree::Walk(parent, expandedOnly, [&](_TREEITEM* item) { items.push_back(item); });
    return items;
}

void ExpectQuestionsAnswered(Tree& tree, const Items& all)
{
    for (_TREEITEM* item : all)
    {
        Items above; // from the parent up to the root, which is not among them
        for (_TREEITEM* up = item->parent; up != tree.Root(); up = up->parent)
            above.push_back(up);
        _TREEITEM* visible = item;
        for (_TREEITEM* up : above)
            visible = up->expanded == 0 ? up : visible;
        bool found = false;
        ASSERT_EQ(visible, tree.VisibleAncestor(item, found));
        ASSERT_EQ(visible != item, found);

        Items below;
        AppendBelow(below, item, false);
        ASSERT_EQ(static_cast<int>(below.size()), Tree::Count(item, true));
        for (_TREEITEM* other : all)
        {
            ASSERT_EQ(std::count(above.begin(), above.end(), other) > 0, Tree::IsDescendant(other, item));
        }

        const Items siblings = Children(item->parent);
        const auto place = std::find(siblings.begin(), siblings.end(), item);
        ASSERT_EQ(above.empty() ? item : above.back(), tree.Next(item, RVGN_ROOT, nullptr));
        ASSERT_EQ(above.empty() ? nullptr : above.front(), tree.Next(item, RVGN_PARENT, nullptr));
        ASSERT_EQ(place == siblings.begin() ? nullptr : place[-1], tree.Next(item, RVGN_PREVIOUS, nullptr));
        ASSERT_EQ(place + 1 == siblings.end() ? nullptr : place[1], tree.Next(item, RVGN_NEXT, nullptr));
    }
}

// Items are linked at every kind of place and unlinked again; lists of children tell where each should be.
TEST(Tree, LinksAndAnswersAsListsOfChildrenSay)
{
    std::mt19937 random(3);
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    // Only the low 32 bits of a place count.
    _TREEITEM* const places[] = {report::kTreeFirst, report::kTreeLast,
                                 reinterpret_cast<_TREEITEM*>(std::uintptr_t{0xFFFF0001}),
                                 reinterpret_cast<_TREEITEM*>(std::uintptr_t{0xFFFF0002})};
    const auto compare = [](_TREEITEM* item1, _TREEITEM* item2) { return 7 * (item1->item - item2->item); };
    Tree tree;
    std::vector<_TREEITEM> pool(24);
    Items all;
    for (int step = 0; step < 3000; ++step)
    {
        _TREEITEM* item = &pool[below(pool.size())];
        if (std::count(all.begin(), all.end(), item) > 0)
        {
            Items siblings = Children(item->parent);
            siblings.erase(std::find(siblings.begin(), siblings.end(), item));
            const Items gone = Walked(item, false);
            Tree::Unlink(item);
            ASSERT_EQ(siblings, Children(item->parent));
            ASSERT_EQ(nullptr, item->nextSibling);
            ASSERT_EQ(gone, Walked(item, false)) << "what is below stays with it";
            item->firstChild = nullptr;
        }
        else
        {
            _TREEITEM* parent = all.empty() || below(5) == 0 ? tree.Root() : all[below(all.size())];
            Items siblings = Children(parent);
            const bool ascending = below(2) == 0;
            *item = {};
            item->parent = parent;
            item->item = static_cast<int>(below(6));
            item->expanded = below(3) != 0;
            _TREEITEM* after = places[below(4)];
            auto place = after == places[0] || after == places[2] ? siblings.begin() : siblings.end();
            int expected = 0;
            if (below(3) == 0)
            {
                after = report::kTreeSort;
                place = std::find_if(siblings.begin(), siblings.end(), [&](_TREEITEM* sibling) {
                    return ascending ? item->item <= sibling->item : item->item >= sibling->item;
                });
                if (place != siblings.end() && place == siblings.begin())
                    expected = compare(item, siblings.front());
            }
            else if (!siblings.empty() && below(3) == 0)
            {
                place = siblings.begin() + static_cast<std::ptrdiff_t>(below(siblings.size()));
                after = *place++;
            }
            ASSERT_EQ(expected, Tree::Link(parent, after, item, ascending, compare)) << "step " << step;
            siblings.insert(place, item);
            ASSERT_EQ(siblings, Children(parent)) << "step " << step;
        }
        all.clear();
        AppendBelow(all, tree.Root(), false);
        Items shown;
        AppendBelow(shown, tree.Root(), true);
        ASSERT_EQ(all, Walked(tree.Root(), false));
        ASSERT_EQ(shown, Walked(tree.Root(), true));
        ExpectQuestionsAnswered(tree, all);
    }
}

TEST(Tree, IsAsDeepAsItMayBe)
{
    Tree tree;
    std::vector<_TREEITEM> items(100000);
    _TREEITEM* parent = tree.Root();
    for (_TREEITEM& item : items)
    {
        item.parent = parent;
        item.expanded = &item != &items[5];
        Tree::Link(parent, report::kTreeLast, &item, true, nullptr);
        parent = &item;
    }
    bool found = false;
    EXPECT_EQ(&items[5], tree.VisibleAncestor(&items.back(), found));
    EXPECT_EQ(&items[0], tree.Next(&items.back(), RVGN_ROOT, nullptr));
    EXPECT_TRUE(Tree::IsDescendant(&items[0], &items.back()));
    EXPECT_EQ(100000, Tree::Count(tree.Root(), true));
    EXPECT_EQ(6u, Walked(tree.Root(), true).size());
}

} // namespace
