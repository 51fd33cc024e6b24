#include "report/model/DirtyRows.h"

namespace report
{

DirtyRows::Request DirtyRows::Add(RowRange rows, const View& view)
{
    const int line = view.LineHeight(); // the least height of a row
    const bool above = rows.last < view.topRow;
    const bool below = line > 0 && rows.first - view.topRow > view.report.Height() / line;
    const bool invalidAlready = m_all || (m_last.first <= rows.first && rows.last <= m_last.last);
    if (above || below || invalidAlready)
        return Request::Nothing;
    if (++m_ranges > kMaxRanges)
        return AddAll();
    m_last = rows;
    return Request::Rows;
}

DirtyRows::Request DirtyRows::AddAll()
{
    if (m_all)
        return Request::Nothing;
    m_all = true;
    return Request::All;
}

} // namespace report
