// The report control's models, put together as the control has them but without a window.
#pragma once

#include "report/sort/Sorting.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

// A subclass that answers a new copy of each record, if wanted, compares by itself, if wanted, and notes the
// masks it is asked with.
class ModelControl : public report::Overrides, public report::RowsListener
{
public:
    bool copies = false;
    std::function<int(int item1, int item2)> compare;
    std::function<bool(_RVITEM&)> answer;    // of the owner, in callback mode
    std::function<void(report::Item&)> load; // what a subclass looks at before the owner is asked
    std::vector<unsigned> masks;             // of the looks at records

    report::Items items{*this};
    report::Rows rows{items, *this, *this};
    report::Sorting sorting{items, rows, *this};

    report::Item& GetItemStruct(int item, int subitem, unsigned asked) override
    {
        masks.push_back(asked);
        report::Item& record = items.Record(item, subitem, asked);
        return copies ? *(m_copy = std::make_unique<report::Item>(record)) : record; // the last one goes
    }
    void SetItemStruct(int item, report::Item& record) override { items.PutRecord(item, record); }
    bool LoadItemData(report::Item& record, int item, int subitem, unsigned asked) override
    {
        if (load)
            load(record);
        report::Item own = record;
        const bool loaded = items.Load(copies ? own : record, item, subitem, asked);
        if (copies)
            record = own;
        return loaded;
    }
    bool AskOwner(_RVITEM& question) override { return answer && answer(question); }
    int CompareItems(int item1, int subitem1, int item2, int subitem2) override
    {
        return compare ? compare(item1, item2) : sorting.Compare(item1, subitem1, item2, subitem2);
    }
    void QuickSort(int subitem, int ascending, int low, int high) override
    {
        sorting.QuickSort(subitem, ascending, low, high);
    }
    void TreeSort(int subitem, _TREEITEM* parent, int ascending, int recursive) override
    {
        sorting.TreeSort(subitem, parent, ascending, recursive);
    }
    void RowsMade(int) override {}

    void Define(int count)
    {
        while (--count >= 0)
            items.Define(items.SubItemCount(), {});
    }
    void AskFor(int count) // items in callback mode, of one subitem
    {
        Define(1);
        rows.SetMode(true, false);
        rows.SetCallbackCount(count);
    }
    bool SetText(int item, int subitem, std::string text)
    {
        _RVITEM change = {.mask = RVIM_TEXT, .item = item, .subitem = subitem, .text = text.data()};
        return items.Write(change);
    }
    std::string Text(int item, int subitem)
    {
        report::FetchedCell fetched;
        return items.Fetch(item, subitem, RVIM_TEXT, fetched) ? std::string(fetched.cell.text)
                                                              : "no such cell";
    }

private:
    std::unique_ptr<report::Item> m_copy;
};
