#include "logdesk/DeskWatch.h"

#include "logdesk/DeskEntry.h"
#include "qmcommon/QmCommandMenu.h"

namespace logdesk
{

namespace
{

constexpr int kTipWidth = 600; // pixels

} // namespace

BEGIN_MESSAGE_MAP(DeskWatch, CQmLogWatch)
    ON_WM_CONTEXTMENU()
END_MESSAGE_MAP()

void DeskWatch::UpdateTip()
{
    const std::string text = GetShownText().c_str();
    if (text != m_tipText)
        m_tip.Show(m_hWnd, text.c_str(), kTipWidth);
    m_tipText = text;
}

void DeskWatch::ScanMenu(IQmCommand& collector)
{
    AddCommand(collector, {"&Open", [this] { OpenShown(); }, VK_RETURN, 0, false, IsShowing(), "Info"});
    AddCommand(collector, {"C&lear", m_clear, VK_DELETE, 0, false, true, "Clear"});
}

void DeskWatch::Scan(IQmCommand& collector)
{
    ScanMenu(collector);
    AddCommand(collector, {"Back", m_leave, VK_ESCAPE});
    AddCommand(collector, {"Back", m_leave, VK_TAB});
}

void DeskWatch::OnContextMenu(CWnd*, CPoint point)
{
    if (point.x == -1 && point.y == -1) // by the keyboard
    {
        point = CPoint(0, 0);
        ClientToScreen(&point);
    }
    DeskCommands commands([this](IQmCommand& collector) { ScanMenu(collector); });
    CQmCommandDefinePopupMenu(&commands).Show(point, this);
}

} // namespace logdesk
