#include "logdesk/NoticeBar.h"

#include "qmcommon/QmIcon.h"
#include "vkgrafic/Display.h"
#include "vkgrafic/DrawingGuards.h"
#include "vkgrafic/GraphicText.h"
#include "vkgrafic/WindowColors.h"

#include <algorithm>

namespace logdesk
{

namespace
{

constexpr int kPadding = 4; // pixels around the lines
constexpr int kNoticeTipWidth = 900;

// Told apart from everything around; high contrast has colours of its own.
constexpr COLORREF kBackground = RGB(255, 242, 190);

} // namespace

BEGIN_MESSAGE_MAP(NoticeBar, CWnd)
    ON_WM_PAINT()
END_MESSAGE_MAP()

NoticeBar::~NoticeBar()
{
    DestroyWindow();
}

BOOL NoticeBar::Create(CWnd* parent, UINT id)
{
    return CWnd::Create(AfxRegisterWndClass(CS_HREDRAW, ::LoadCursor(nullptr, IDC_ARROW)), "", WS_CHILD,
                        CRect(), parent, id);
}

bool NoticeBar::SetLines(const std::vector<std::string>& lines)
{
    if (lines == m_lines)
        return false;
    const bool isOtherHeight = lines.size() != m_lines.size();
    m_lines = lines;
    m_text.clear();
    for (const std::string& line : lines)
        m_text += (m_text.empty() ? "" : "\r\n") + line;
    SetWindowText(m_text.c_str());
    ShowWindow(lines.empty() ? SW_HIDE : SW_SHOWNA);
    m_tip.Show(m_hWnd, m_text.c_str(), kNoticeTipWidth);
    Invalidate();
    return isOtherHeight;
}

int NoticeBar::GetLineHeight()
{
    CClientDC dc(this);
    const VkGrafic::Selected selected(dc, VkGrafic::GetGuiFont(m_hWnd));
    TEXTMETRIC font = {};
    dc.GetTextMetrics(&font);
    return std::max(static_cast<int>(font.tmHeight), QmIconSize(m_hWnd));
}

int NoticeBar::GetHeight()
{
    return m_lines.empty() ? 0 : 2 * kPadding + static_cast<int>(m_lines.size()) * GetLineHeight();
}

void NoticeBar::OnPaint()
{
    CPaintDC dc(this);
    CRect area;
    GetClientRect(area);
    using VkGrafic::UiColor;
    const VkGrafic::WindowColors colors(m_hWnd);
    const bool isOurs = !colors.IsDark() && !VkGrafic::IsHighContrast();
    dc.FillSolidRect(area, isOurs ? kBackground : colors[UiColor::Notice]);
    dc.FillSolidRect(CRect(area.left, area.bottom - 1, area.right, area.bottom), colors[UiColor::Edge]);

    const VkGrafic::Selected selected(dc, VkGrafic::GetGuiFont(m_hWnd));
    dc.SetTextColor(isOurs ? RGB(0, 0, 0) : colors[UiColor::NoticeText]);
    dc.SetBkMode(TRANSPARENT);
    const GraphicText text(dc);
    const int height = GetLineHeight();
    const int iconSize = QmIconSize(m_hWnd);
    const HANDLE icon = ::LoadImage(nullptr, IDI_INFORMATION, IMAGE_ICON, iconSize, iconSize, LR_SHARED);
    ::DrawIconEx(dc, kPadding, kPadding, static_cast<HICON>(icon), iconSize, iconSize, 0, nullptr, DI_NORMAL);
    CRect line(area.left + 2 * kPadding + iconSize, area.top + kPadding, area.right - kPadding, 0);
    for (const std::string& notice : m_lines)
    {
        line.bottom = line.top + height;
        text.Draw(notice.data(), static_cast<int>(notice.size()), line,
                  DT_LEFT | DT_VCENTER | DT_END_ELLIPSIS);
        line.top = line.bottom;
    }
}

} // namespace logdesk
