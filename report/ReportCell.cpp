#include "ReportCell.h"

#include "report/model/Record.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace
{

constexpr std::size_t kMaxText = 65535;

} // namespace

int CReportCell::Read(const ZEMA::String& cells, _RVITEM* cell)
{
    const report::Cell read = cell->subitem >= 0 ? report::ReadCell(cells, cell->subitem) : report::Cell();
    if (!(cell->mask & RVIM_TEXT))
        cell->text = nullptr;
    if (read.hasText && cell->text && cell->textMax > 0)
    {
        const std::size_t room = static_cast<std::size_t>(cell->textMax) - 1;
        const std::size_t length = std::min(read.text.size(), room);
        std::memcpy(cell->text, read.text.data(), length);
        cell->text[length] = '\0';
    }
    report::Item none;
    report::FillRecord(*cell, {&none, read});
    cell->mask &= RVIM_TEXT | RVIM_TEXTCOLOR | RVIM_IMAGE | RVIM_CHECK | RVIM_EXTRA;
    return read.hasText ? static_cast<int>(read.text.size()) : -1;
}

int CReportCell::Write(ZEMA::String& cells, const _RVITEM* cell)
{
    if (cell->subitem < 0)
        return 0;
    report::Cell changed = report::ReadCell(cells, cell->subitem);
    const std::string text(changed.text); // what is written must not lie in what changes
    changed.text = text;
    report::ChangeCell(changed, *cell, kMaxText);
    report::WriteCell(cells, cell->subitem, changed);
    return 1;
}

void CReportCell::Reset(ZEMA::String& cells, int count)
{
    report::ResetCells(cells, std::max(0, count));
}

int CReportCell::Insert(ZEMA::String& cells, int subitem)
{
    if (subitem < 0)
        return 0;
    report::InsertCell(cells, subitem);
    return 1;
}

int CReportCell::Remove(ZEMA::String& cells, int subitem)
{
    if (subitem < 0)
        return 0;
    report::RemoveCell(cells, subitem);
    return 1;
}
