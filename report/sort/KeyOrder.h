// The order of items by the column that is sorted by, by further ones, and at last by their numbers.
#pragma once

#include "report/sort/CellKey.h"

#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace report
{

// No two items are equal, so that a sort always ends in the same order.
class KeyOrder
{
public:
    using ReadKey = std::function<CellKey(int item, int subitem)>;
    explicit KeyOrder(ReadKey read);

    // What decides between equal cells, after the keys added before.
    void AddFurtherKey(int subitem, bool ascending);
    void RemoveFurtherKeys();

    // Forgets all keys, and from now on reads each cell of items 0 to `itemCount` - 1 only once; 0 keeps
    // none. `ascending`: the direction of the sort, which turns answers round when it is false.
    void Begin(int itemCount, bool ascending);

    // Less than, equal to or greater than 0. Further keys and item numbers have directions of their own: what
    // the sort turns round is turned round here already.
    int Compare(int item1, int subitem1, int item2, int subitem2);

private:
    struct FurtherKey
    {
        int subitem;
        bool ascending;
    };

    const CellKey& Key(int item, int subitem, CellKey& unkept);
    int CompareCells(int item1, int subitem1, int item2, int subitem2);
    int CompareFurther(int item1, int item2);

    ReadKey m_read;
    std::vector<FurtherKey> m_further;
    std::map<int, std::vector<std::optional<CellKey>>> m_keys; // by subitem, then by item
    int m_itemCount = 0;
    bool m_ascending = true;
};

} // namespace report
