// Where the report control's items come from: the stored ones, or the owner's answer to a callback.
#include "report/ReportCtrlData.h"

#include <cstring>
#include <deque>
#include <string>
#include <utility>
#include <vector>

namespace
{

constexpr int kTextMax = 65536;

// What LoadItemData fills. One for each level of callbacks that ask for items in their turn; the first is
// shared by all controls.
struct Scratch
{
    report::Item item;
    std::string undefined; // the item's cells before LoadItemData,
    std::string field;     // so many of this one
    int fields = -1;
    int subitem = -1;
    report::Cell cell; // the answer for `subitem`, with `cellText`; good when `handedOn`
    std::string cellText;
    bool handOn = false;   // the answer need not be written into the item's cells
    bool handedOn = false; // and was not
    std::vector<char> text;
};

std::deque<Scratch> scratches; // addresses stay good while it grows
std::size_t depth = 0;         // of calls that fill one

bool handOnWanted = false; // by FetchItem of the next GetItemStruct

class HandOn
{
public:
    explicit HandOn(bool wanted) { handOnWanted = wanted; }
    ~HandOn() { handOnWanted = false; }
    HandOn(const HandOn&) = delete;
    HandOn& operator=(const HandOn&) = delete;
};

Scratch& Current()
{
    if (scratches.size() <= depth)
        scratches.resize(depth + 1);
    return scratches[depth];
}

// The scratch item that a record is, if it is the one being filled.
Scratch* ScratchOf(const report::Item* record)
{
    return depth > 0 && record == &scratches[depth - 1].item ? &scratches[depth - 1] : nullptr;
}

class Level
{
public:
    Level() { ++depth; }
    ~Level() { --depth; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;
};

// A buffer for the owner's text, all NUL. Only what the text before has left is cleared: clearing 64 KiB
// would cost more than the rest of a cell.
char* ClearedText(Scratch& scratch)
{
    scratch.text.resize(kTextMax + 1);
    std::memset(scratch.text.data(), 0, std::strlen(scratch.text.data()));
    return scratch.text.data();
}

} // namespace

// An item, and its cell `subitem` in `cell`, whose text is valid until another item is fetched.
CReportCtrl::structITEM& CReportCtrl::FetchItem(int item, int subitem, unsigned int mask, report::Cell& cell)
{
    const Scratch* const scratch = m_data->IsCallback() ? &Current() : nullptr;
    const HandOn handOn(scratch != nullptr);
    structITEM& record = GetItemStruct(item, subitem, mask);
    const std::string_view preview(record.previewText.c_str(), record.previewText.GetLength());
    const bool handedOn =
        scratch && &record == &scratch->item && scratch->handedOn && scratch->subitem == subitem;
    if (subitem < 0)
        cell = {.textColor = record.previewTextColor, .hasText = true, .text = preview};
    else if (!handedOn || scratch->undefined != record.cells.c_str())
        cell = report::ReadCell(record.cells, subitem);
    else
        cell = scratch->cell;
    return record;
}

CReportCtrl::structITEM& CReportCtrl::GetItemStruct(int item, int subitem, unsigned int mask)
{
    if (!m_data->IsCallback())
        return m_data->items.At(item);

    Scratch& scratch = Current();
    scratch.handOn = std::exchange(handOnWanted, false);
    scratch.handedOn = false;
    if (scratch.fields != GetSubItemCount() || scratch.field != report::UndefinedField() ||
        scratch.undefined != scratch.item.cells.c_str())
    {
        scratch.fields = GetSubItemCount();
        scratch.field = report::UndefinedField();
        report::ResetCells(scratch.item.cells, scratch.fields);
        scratch.undefined = scratch.item.cells.c_str();
    }
    const Level level;
    const int loaded = LoadItemData(&scratch.item, item, subitem, mask | RVIM_TEXTCOLOR);
    return loaded ? scratch.item : m_data->items.At(RVI_DEFAULT);
}

void CReportCtrl::SetItemStruct(int item, structITEM& record)
{
    if (m_data->IsCallback())
        return;
    structITEM& stored = m_data->items.At(item);
    if (&stored != &record)
        stored = record;
}

// Who asks; false without a parent. A paint, which asks for hundreds of items, asks the system but once.
bool CReportCtrl::FillCallbackHeader(NMHDR& header)
{
    if (!m_hWnd)
        return false;
    NMHDR* const kept = m_data->painting ? &m_data->painting->rows.callbackHeader : nullptr;
    if (kept && kept->hwndFrom == m_hWnd)
    {
        header = *kept;
        return true;
    }
    if (!::GetParent(m_hWnd))
        return false;
    FillHeader(header, RVN_ITEMCALLBACK);
    if (kept)
        *kept = header;
    return true;
}

int CReportCtrl::LoadItemData(structITEM* record, int item, int subitem, unsigned int mask)
{
    _NMRVITEMCALLBACK callback = {};
    if (!FillCallbackHeader(callback.hdr))
        return 0;
    callback.item.item = item;
    callback.item.subitem = subitem;
    callback.item.mask = mask;
    Scratch* const scratch = ScratchOf(record);
    char* const text = ClearedText(Current());
    if (subitem >= -1)
    {
        callback.item.mask |= RVIM_TEXT;
        callback.item.text = text;
        callback.item.textMax = kTextMax;
    }
    const Level level;
    if (OnRvnItemCallbackBypass(reinterpret_cast<_NMREPORTVIEW*>(&callback)) != 0)
        return 0;

    const _RVITEM& answer = callback.item;
    const auto value = [&answer](unsigned bit, auto field, auto none) {
        return answer.mask & bit ? field : none;
    };
    const bool hasText = (answer.mask & RVIM_TEXT) && answer.text;
    record->previewText.assign(hasText ? answer.text : "", hasText ? ::strnlen(answer.text, kTextMax) : 0);
    record->previewTextColor = value(RVIM_TEXTCOLOR, answer.textColor, -1);
    record->backgroundColor = value(RVIM_BACKGROUNDCOLOR, answer.backgroundColor, -1);
    record->previewHeight = value(RVIM_PREVIEWHEIGHT, answer.previewHeight, 0);
    record->treeLevel = value(RVIM_TREELEVEL, answer.treeLevel, -1);
    record->state = value(RVIM_STATE, answer.state, 0u);
    record->itemData = value(RVIM_ITEMDATA, answer.itemData, std::int64_t{0});

    report::Cell cell;
    cell.image = value(RVIM_IMAGE, answer.image, -1);
    cell.extra = value(RVIM_EXTRA, answer.extra, -1);
    cell.check = value(RVIM_CHECK, answer.check, -1);
    cell.textColor = record->previewTextColor;
    cell.hasText = hasText;
    cell.text = {record->previewText.c_str(), record->previewText.GetLength()};
    if (scratch && scratch->handedOn)
    {
        // An override asks for one cell after another: all go into the item.
        report::WriteCell(record->cells, scratch->subitem, scratch->cell);
        scratch->handOn = scratch->handedOn = false;
    }
    if (subitem < 0)
        return 1;
    if (scratch && scratch->handOn)
    {
        scratch->cellText.assign(cell.text);
        cell.text = scratch->cellText;
        scratch->cell = cell;
        scratch->subitem = subitem;
        scratch->handedOn = true;
    }
    else
        report::WriteCell(record->cells, subitem, cell);
    return 1;
}

__int64 CReportCtrl::OnRvnItemCallbackBypass(_NMREPORTVIEW*)
{
    return 0;
}

__int64 CReportCtrl::OnRvnItemDrawPreviewBypass(_NMREPORTVIEW*)
{
    return 0;
}
