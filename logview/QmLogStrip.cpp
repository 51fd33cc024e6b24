#include "logview/QmLogStrip.h"

#include "QmLogRow.h"
#include "afxcontrolbarutil.h"
#include "logview/RowSource.h"
#include "logview/find/FindColors.h"
#include "vkgrafic/Display.h"
#include "vkgrafic/WindowColors.h"

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

// A lane's marks, from the top down. Those that touch each other become one rectangle: a session may have one
// in each pixel row, and a rectangle costs nearly the same whatever its size.
class LaneMarks
{
public:
    LaneMarks(CDC& dc, int left, int width, COLORREF color)
        : m_dc(dc), m_left(left), m_width(width), m_color(color)
    {
    }
    ~LaneMarks() { Fill(); }
    LaneMarks(const LaneMarks&) = delete;
    LaneMarks& operator=(const LaneMarks&) = delete;

    void Add(int row)
    {
        if (row > m_end)
        {
            Fill();
            m_begin = row;
        }
        m_end = row + kMarkHeight;
    }

private:
    void Fill()
    {
        if (m_end > m_begin)
            m_dc.FillSolidRect(m_left, m_begin, m_width, m_end - m_begin, m_color);
    }

    CDC& m_dc;
    int m_left;
    int m_width;
    COLORREF m_color;
    int m_begin = 0;
    int m_end = 0;
};

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

void CQmLogStrip::Show(const logview::StripMarks& marks, const QmLogStripLook& look)
{
    m_marks = marks;
    m_look = look;
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
    const auto shown = [&](COLORREF color) { return m_look.highContrast ? text : color; };
    dc.FillSolidRect(client, m_look.window);
    dc.FillSolidRect(0, m_look.viewTop, client.Width(), std::max(m_look.viewBottom - m_look.viewTop, 1),
                     m_look.highContrast ? ::GetSysColor(COLOR_HIGHLIGHT) : m_look.colors.caretMargin);
    dc.FillSolidRect(0, 0, 1, client.Height(), VkGrafic::WindowColors(m_hWnd)[VkGrafic::UiColor::Edge]);

    const int lane = std::max((client.Width() - 1) / kLanes, 1);
    const auto marksOf = [&](int at, COLORREF color) {
        return LaneMarks(dc, 1 + at * lane, std::max(lane - 1, 1), shown(color));
    };
    {
        LaneMarks bookmarks = marksOf(0, m_look.colors.mark);
        for (const int row : m_marks.bookmarks)
            bookmarks.Add(row);
    }
    for (int file = 0; file < kLogs; ++file)
    {
        LaneMarks errors = marksOf(1 + file, m_look.colors.kinds[kErrorKind]);
        for (std::size_t row = 0; row < m_marks.errorLogs.size(); ++row)
            if ((m_marks.errorLogs[row] >> file & 1) != 0)
                errors.Add(static_cast<int>(row));
    }
    LaneMarks found = marksOf(kLanes - 1, logview::MatchBackground(m_look.window));
    for (std::size_t row = 0; row < m_marks.found.size(); ++row)
        if (m_marks.found[row] > 0)
            found.Add(static_cast<int>(row));
}

void CQmLogStrip::OnLButtonDown(UINT, CPoint point)
{
    m_clicked(static_cast<int>(point.y));
}
