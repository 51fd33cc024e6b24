#include "QmTextTip.h"

#include "qmtextctrl/TipText.h"
#include "vkgrafic/DrawingGuards.h"
#include "zemacore/WideText.h"

#include <algorithm>

namespace
{
constexpr int kTipPadding = 4;               // pixels around the lines
constexpr std::size_t kTipBytes = 16 * 1024; // more could not be read in a tip
} // namespace

BEGIN_MESSAGE_MAP(CQmTextTip, CWnd)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_MESSAGE(WM_NCHITTEST, &CQmTextTip::OnNcHitTest)
END_MESSAGE_MAP()

CQmTextTip::~CQmTextTip()
{
    DestroyWindow();
}

bool CQmTextTip::Show(CWnd& owner, const std::string& text, const CRect& row, const Look& look)
{
    m_look = look;
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof(monitor);
    ::GetMonitorInfo(::MonitorFromRect(row, MONITOR_DEFAULTTONEAREST), &monitor);
    const CRect screen = monitor.rcWork;

    std::string shown = text.substr(0, kTipBytes);
    if (shown.size() < text.size()) // a part of a character would make another text of it
        shown.resize(ZEMA::WholeCharacters(shown.data(), shown.size()));
    VkGrafic::TextCells cells;
    cells.Take(shown.data(), shown.size());
    const int columns = (screen.Width() * 3 / 4 - 2 * kTipPadding) / look.cellWidth;
    const int mostLines = (screen.Height() / 2 - 2 * kTipPadding) / look.lineHeight;
    const std::vector<textview::TipLine> lines = textview::BreakTip(shown, cells, columns, mostLines);
    m_lines.clear();
    int widest = 0;
    for (const textview::TipLine& line : lines)
    {
        widest = std::max(widest, cells.CellOf(line.end) - cells.CellOf(line.begin));
        m_lines.push_back(shown.substr(static_cast<std::size_t>(line.begin),
                                       static_cast<std::size_t>(line.end - line.begin)));
    }

    const std::size_t told = lines.empty() ? 0 : static_cast<std::size_t>(lines.back().end);
    if (!m_lines.empty() && told < text.size())
    {
        widest += 3;
        m_lines.back() += "...";
    }

    const int width = widest * look.cellWidth + 2 * kTipPadding;
    const int height = static_cast<int>(m_lines.size()) * look.lineHeight + 2 * kTipPadding;
    const textview::Span across = textview::PlaceTipAcross(row.left, width, {screen.left, screen.right});
    const textview::Span down =
        textview::PlaceTipDown({row.top, row.bottom}, height, {screen.top, screen.bottom});
    if (!m_hWnd && !CreateEx(WS_EX_TOPMOST | WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE,
                             AfxRegisterWndClass(CS_SAVEBITS), "", WS_POPUP, 0, 0, 0, 0, owner, nullptr))
        return false;
    SetWindowPos(nullptr, across.begin, down.begin, across.end - across.begin, down.end - down.begin,
                 SWP_NOACTIVATE | SWP_NOZORDER | SWP_SHOWWINDOW);
    Invalidate();
    return true;
}

void CQmTextTip::Hide()
{
    if (m_hWnd)
        ShowWindow(SW_HIDE);
}

bool CQmTextTip::IsShown() const
{
    return m_hWnd && ::IsWindowVisible(m_hWnd);
}

LRESULT CQmTextTip::OnNcHitTest(WPARAM, LPARAM)
{
    return HTTRANSPARENT;
}

BOOL CQmTextTip::OnEraseBkgnd(CDC*)
{
    return TRUE; // OnPaint covers all of it
}

void CQmTextTip::OnPaint()
{
    CPaintDC dc(this);
    CRect client;
    GetClientRect(client);
    dc.FillSolidRect(client, m_look.background);
    dc.Draw3dRect(client, m_look.text, m_look.text);
    const VkGrafic::Selected font(dc, m_look.font);
    dc.SetTextColor(m_look.text);
    dc.SetBkMode(TRANSPARENT);
    int y = kTipPadding;
    for (const std::string& line : m_lines)
    {
        GraphicText(dc, &m_look.graphicFont)
            .DrawCells(line.data(), static_cast<int>(line.size()), kTipPadding, y, m_look.cellWidth);
        y += m_look.lineHeight;
    }
}
