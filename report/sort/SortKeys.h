// The cells of a sort.
#pragma once

#include "report/model/CellCodec.h"

#include <cstddef>
#include <string>
#include <vector>

namespace report
{

// Cells read once, and compared thereafter without touching the items.
class SortKeys
{
public:
    // Takes the key of an item from its cell `subitem`. Items come in any order, each once.
    void Add(int item, int subitem, const Cell& cell);

    // CompareCells of the two cells; false when one of them was not added with this subitem.
    bool Compare(int item1, int subitem1, int item2, int subitem2, int& result) const;

    // Whether the keys have one order whatever is compared with what. Not so when there are empty texts and
    // cells without text among them: those equal each other, but the latter differ by check and image.
    bool IsOrdered() const { return !m_emptyText || !m_noText; }

private:
    static constexpr int kNotAdded = -2;

    struct Key
    {
        int subitem = kNotAdded;
        int check = -1;
        int image = -1;
        int length = -1;      // of the text; -1 none
        std::size_t text = 0; // offset in m_texts
    };

    const Key* Find(int item, int subitem) const;
    Cell CellOf(const Key& key) const;

    std::vector<Key> m_keys; // by item
    std::string m_texts;
    bool m_emptyText = false;
    bool m_noText = false;
};

} // namespace report
