// The items of a report control as everything else reads and writes them, and the definitions of their cells.
#pragma once

#include "report/model/CallbackItems.h"
#include "report/model/ItemStore.h"
#include "report/model/Overrides.h"
#include "report/model/Record.h"

#include <string>
#include <string_view>
#include <vector>

namespace report
{

// Every look at an item goes through the virtual GetItemStruct, and what its answer holds is what is read:
// a subclass may keep items elsewhere and answer a new copy each time.
class Items
{
public:
    explicit Items(Overrides& overrides) : m_overrides(overrides), m_callback(overrides) {}

    // Whether items are asked for and not stored, and how many there are then.
    bool IsCallback() const { return m_isCallback; }
    void SetCallback(bool isCallback) { m_isCallback = isCallback; }
    void SetCallbackCount(int count) { m_callbackCount = count; }
    int CallbackCount() const { return m_callbackCount; }
    int Count() const { return m_isCallback ? m_callbackCount : m_stored.Count(); }
    ItemStore& Stored() { return m_stored; }

    // ---- Subitems

    int SubItemCount() const { return static_cast<int>(m_subitems.size()); }
    SubItem& SubItemAt(int subitem);      // invalid argument outside the definitions
    unsigned FormatOf(int subitem) const; // 0 outside them

    // Defines a subitem before another one, and gives every item an undefined cell for it; false, and nothing
    // has changed, without memory. Undefining takes the cells away.
    bool Define(int subitem, SubItem definition);
    void Undefine(int subitem);

    // ---- Items

    // A cell and its item. False if there is none: items begin with -1, the default one, and subitems with
    // -1, the preview.
    bool Fetch(int item, int subitem, unsigned mask, FetchedCell& fetched);

    // CReportCtrl::GetItem and SetItem; the former without the bit of selected rows.
    bool Read(_RVITEM& record);
    bool Write(const _RVITEM& change);

    // Whether a record is the default item, which GetItemStruct also answers for one that the owner has not.
    bool IsDefault(const Item& record) { return &record == &m_stored.At(RVI_DEFAULT); }

    // Changes the state of an item; nothing in callback mode.
    void SetState(int item, unsigned bits, unsigned mask);

    // Gives an item a preview; false in callback mode, and if there is no such item.
    bool SetPreview(int item, const char* text, int height, int textColor);

    // The cells of these subitems, with `separator` between them and a line feed after the last. An item of a
    // tree begins with its indentation and a sign.
    struct LineForm
    {
        char separator;
        bool isTree;
        std::string_view indent; // of a level
    };
    std::string Line(int item, const std::vector<int>& subitems, const LineForm& form);

    int Find(const _RVFINDINFO& info, int subitem, int start); // CReportCtrl::FindItem, of stored items

    // ---- What the virtual operations do unless they are overridden

    Item& Record(int item, int subitem, unsigned mask);
    void PutRecord(int item, Item& record);
    bool Load(Item& record, int item, int subitem, unsigned mask)
    {
        return m_callback.Load(record, item, subitem, mask);
    }

private:
    void AppendIndent(std::string& line, const Item& item, const LineForm& form) const;

    Overrides& m_overrides;
    ItemStore m_stored;
    CallbackItems m_callback;
    std::vector<SubItem> m_subitems;
    int m_callbackCount = 0;
    bool m_isCallback = false;
    std::string m_text; // of the cell that is being written
};

} // namespace report
