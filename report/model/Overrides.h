// What of the control a subclass may override, as the models call it.
#pragma once

#include "ReportItem.h"

namespace report
{

// The one way from the models back to the control. Any of these may lead into a subclass or to the owner, and
// from there into the control again.
class Overrides
{
public:
    virtual ~Overrides() = default;

    // The record of an item; -1 is the default item. It may be a copy, which lasts until the next call.
    virtual Item& GetItemStruct(int item, int subitem, unsigned mask) = 0;
    virtual void SetItemStruct(int item, Item& record) = 0;

    // Fills a record in callback mode; false if the item is not available.
    virtual bool LoadItemData(Item& record, int item, int subitem, unsigned mask) = 0;

    // Has the owner answer a question; false if the item is not available, or nobody is there to ask.
    virtual bool AskOwner(_RVITEM& question) = 0;

    virtual int CompareItems(int item1, int subitem1, int item2, int subitem2) = 0;
    virtual void QuickSort(int subitem, int ascending, int low, int high) = 0;
    virtual void TreeSort(int subitem, _TREEITEM* parent, int ascending, int recursive) = 0;
};

} // namespace report
