#include "logview/QmLogStrip.h"

#include "QmLogRow.h"
#include "afxcontrolbarutil.h"
#include "logview/RowSource.h"
#include "logview/find/FindColors.h"
#include "vkgrafic/Display.h"

#include <algorithm>

BEGIN_MESSAGE_MAP(CQmLogStrip, CWnd)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_LBUTTONDOWN()
END_MESSAGE_MAP()

namespace
{

constexpr int kLogs = logview::kFileCount;
constexpr int kLanes = kLogs + 2;
constexpr int kLaneWidth = 4; // at 96 dpi
constexpr int kMarkHeight = 3;

} // namespace

BOOL CQmLogStrip::Create(CWnd* parent)
{
    return CWnd::Create(AfxRegisterWndClass(0, ::LoadCursor(nullptr, IDC_ARROW)), "", WS_CHILD | WS_VISIBLE,
                        CRect(0, 0, 0, 0), parent, 0);
}

int CQmLogStrip::GetStripWidth(HWND hwnd)
{
    return ::MulDiv(kLanes * kLaneWidth + 2, VkGrafic::GetResolution(hwnd), 96);
}

int CQmLogStrip::GetHeight() const
{
    CRect client;
    GetClientRect(client);
    return client.Height();
}

void CQmLogStrip::SetMarks(QmLogStripMarks marks)
{
    m_marks = std::move(marks);
    Invalidate(FALSE);
}

BOOL CQmLogStrip::OnEraseBkgnd(CDC*)
{
    return TRUE; // painted as a whole
}

void CQmLogStrip::OnPaint()
{
    CPaintDC paint(this);
    CMemDC memory(paint, this);
    CDC& dc = memory.GetDC();
    CRect client;
    GetClientRect(client);
    const COLORREF text = ::GetSysColor(COLOR_WINDOWTEXT);
    const auto shown = [&](COLORREF color) { return m_marks.highContrast ? text : color; };
    dc.FillSolidRect(client, m_marks.window);
    dc.FillSolidRect(0, m_marks.viewTop, client.Width(), std::max(m_marks.viewBottom - m_marks.viewTop, 1),
                     m_marks.highContrast ? ::GetSysColor(COLOR_HIGHLIGHT) : m_marks.colors.caretMargin);
    dc.FillSolidRect(0, 0, 1, client.Height(), ::GetSysColor(COLOR_3DSHADOW));

    const int lane = std::max((client.Width() - 1) / kLanes, 1);
    const auto mark = [&](int at, int row, COLORREF color) {
        dc.FillSolidRect(1 + at * lane, row, std::max(lane - 1, 1), kMarkHeight, shown(color));
    };
    for (const int row : m_marks.bookmarks)
        mark(0, row, m_marks.colors.mark);
    for (std::size_t row = 0; row < m_marks.errorLogs.size(); ++row)
        for (int file = 0; m_marks.errorLogs[row] != 0 && file < kLogs; ++file)
            if ((m_marks.errorLogs[row] >> file & 1) != 0)
                mark(1 + file, static_cast<int>(row), m_marks.colors.kinds[kErrorKind]);
    for (std::size_t row = 0; row < m_marks.found.size(); ++row)
        if (m_marks.found[row] > 0)
            mark(kLanes - 1, static_cast<int>(row), logview::MatchBackground(m_marks.window));
}

void CQmLogStrip::OnLButtonDown(UINT, CPoint point)
{
    m_clicked(static_cast<int>(point.y));
}
