#include "logdesk/DeskFrame.h"

#include "logdesk/Resource.h"
#include "qmcommon/QmCommandMenu.h"
#include "qmcommon/QmHandlerWnd.h"

namespace logdesk
{

namespace
{

// The menus of the menu bar, in its order.
enum Menu
{
    kFileMenu,
    kEditMenu,
    kLogMenu,
    kViewMenu,
    kHelpMenu
};

} // namespace

// The menus are empty until they open.
void DeskFrame::MakeMenus(CMenu& bar)
{
    bar.CreateMenu();
    for (const char* caption : {"&File", "&Edit", "&Log", "&View", "&Help"})
    {
        CMenu popup;
        popup.CreatePopupMenu();
        bar.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(popup.Detach()), caption);
    }
}

void DeskFrame::Scan(IQmCommand& collector)
{
    GetTextCtrl().ScanFilePath(collector);
}

void DeskFrame::ScanFile(IQmCommand& collector)
{
    collector.Add(std::make_unique<DeskEntry>("E&xit", [this] { PostMessage(WM_CLOSE); }));
}

void DeskFrame::ScanView(IQmCommand& collector)
{
    CQmLogTextCtrl& text = GetTextCtrl();
    collector.Add(std::make_unique<DeskEntry>(
        "&Pause Following When Scrolled Up", [&text] { text.SetFollowPauses(!text.GetFollowPauses()); },
        text.GetFollowPauses()));
}

void DeskFrame::ScanHelp(IQmCommand& collector)
{
    collector.Add(
        std::make_unique<DeskEntry>("&About LogDesk...", [this] { CDialog(IDD_ABOUT, this).DoModal(); }));
}

// The innermost window around the focus that offers commands; the browser where there is none.
IQmHandler& DeskFrame::FocusHandler()
{
    for (HWND hwnd = ::GetFocus(); hwnd && hwnd != m_hWnd; hwnd = ::GetParent(hwnd))
        if (auto* const handler = dynamic_cast<IQmHandler*>(CWnd::FromHandlePermanent(hwnd)))
            return *handler;
    return m_browser;
}

void DeskFrame::OnInitMenuPopup(CMenu* popup, UINT index, BOOL system)
{
    if (system)
        return;
    switch (index)
    {
    case kFileMenu:
        m_menuHandler = &m_fileCommands;
        break;
    case kEditMenu:
        m_menuHandler = &FocusHandler();
        break;
    case kLogMenu:
        m_menuHandler = this;
        break;
    case kViewMenu:
        m_menuHandler = &m_viewCommands;
        break;
    default:
        m_menuHandler = &m_helpCommands;
    }
    while (popup->GetMenuItemCount() > 0)
        popup->DeleteMenu(0, MF_BYPOSITION);
    CQmCommandDefineMenu menu(*popup);
    m_menuHandler->Scan(menu);
}

// All menus number their items alike; the one that opened last is the one that was chosen from.
BOOL DeskFrame::OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info)
{
    if (m_menuHandler && id >= kQmFirstCommand && id <= kQmLastCommand)
        return CQmHandlerWnd(m_menuHandler).OnCmdMsg(id, code, extra, info);
    return QmHandler<CWnd>::OnCmdMsg(id, code, extra, info);
}

} // namespace logdesk
