// The scroll bars of a report control's window.
#pragma once

#include "afxwin.h"

namespace report
{

// Drawing a scroll bar costs as much as painting all rows, and among many rows the thumb mostly stays where
// it is: a bar is told what has changed, and drawn only when that has moved something.
class ScrollBars
{
public:
    // Those of another window.
    void Forget() { *this = ScrollBars(); }

    // Whether the rows seen whole from `topRow` on may be others than those told last. Asked once for each
    // update, with the height of the rows' area.
    bool IsPageStale(int topRow, int rowCount, int height);
    int Page() const { return static_cast<int>(m_shown[SB_VERT].nPage); }
    void MarkPageStale() { m_height = -1; } // rows may have another height

    // SB_VERT or SB_HORZ: what its thumb stands for, of `count`.
    void Update(HWND hwnd, int bar, int count, int page, int position);

private:
    SCROLLINFO m_shown[2] = {};
    int m_height = -1; // of the rows' area when the vertical one was told
};

} // namespace report
