#include "logdesk/DeskFrame.h"

#include "logdesk/Resource.h"
#include "qmcommon/QmCommandMenu.h"
#include "qmcommon/QmHandlerWnd.h"

#include <algorithm>

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
    kMessagesMenu,
    kViewMenu,
    kHelpMenu
};

constexpr std::size_t kSessionsInMenu = 5;

} // namespace

// The menus are empty until they open. Their access keys are none of the list's shortcuts.
void DeskFrame::MakeMenus(CMenu& bar)
{
    bar.CreateMenu();
    for (const char* caption : {"&File", "Ed&it", "Lo&g", "&Messages", "&View", "He&lp"})
    {
        CMenu popup;
        popup.CreatePopupMenu();
        bar.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(popup.Detach()), caption);
    }
}

void DeskFrame::Scan(IQmCommand& collector)
{
    ScanTabs(collector);
    ScanLogMoves(collector);
    AddCommand(collector, {"&Open...", [this] { AskForFiles(); }, 'O', kQmControl});
    AddCommand(collector, {"&New Window", [this] { OpenNewWindow(); }, 'N', kQmControl});
    AddCommand(collector, {"&Go To...", [this] { AskWhereToGo(); }, 'G', kQmControl});
    ScanZoom(collector);
    AddCommand(collector, {"Other Pane", [this] { ChangePane(true); }, VK_F6});
    AddCommand(collector, {"Pane Before", [this] { ChangePane(false); }, VK_F6, kQmShift});
    AddCommand(collector, {"Cancel", [this] { PressStatusButton(); }, VK_ESCAPE, 0, false,
                           m_messages.Service().IsBusy() || m_saving});
}

// Text window and list take characters for themselves; the frame's keys are none.
BOOL DeskFrame::PreTranslateMessage(MSG* message)
{
    MSG ours = *message;
    ours.hwnd = m_hWnd;
    return QmHandler<CWnd>::PreTranslateMessage(&ours);
}

void DeskFrame::ScanFile(IQmCommand& collector)
{
    AddCommand(collector, {"&New Window", [this] { OpenNewWindow(); }, 'N', kQmControl});
    AddCommand(collector, {"&Open...", [this] { AskForFiles(); }, 'O', kQmControl, false, true, "FileOpen"});
    AddCommand(collector, {"Open &Folder...", [this] { AskForFolder(); }});
    AddCommand(collector, {"Open Sessions in This &Window",
                           [this] { m_options.openHere = !m_options.openHere; }, 0, 0, m_options.openHere});
    AddCommand(collector, {"Messages of the &Session", [this] { ShowSessionMessages(); }, 0, 0,
                           m_messages.File().empty(), !m_messages.File().empty()});
    AddCommand(collector, {"Save &As...", [this] { SaveMessages(); }, 0, 0, false,
                           m_messages.State().all > 0 && !m_saving, "FileSave"});
    m_messages.List().ScanForFile(collector);
    collector.AddSeparator();
    m_recent = m_remember ? ReadRecentFiles() : m_recent;
    for (std::size_t i = 0; i < m_recent.Paths().size(); ++i)
        AddCommand(collector, {RecentCaption(i, m_recent.Paths()[i]),
                               [this, path = m_recent.Paths()[i]] { Open({path}); }});
    collector.AddSeparator();
    m_recentSessions = m_remember ? ReadRecentSessions() : m_recentSessions;
    for (std::size_t i = 0; i < std::min(kSessionsInMenu, m_recentSessions.Paths().size()); ++i)
        AddCommand(collector, {RecentSessionCaption(m_recentSessions.Paths()[i]),
                               [this, path = m_recentSessions.Paths()[i]] { Open({path}); }});
    collector.AddSeparator();
    AddCommand(collector, {"E&xit", [this] { PostMessage(WM_CLOSE); }, VK_F4, kQmAlt});
}

void DeskFrame::ScanView(IQmCommand& collector)
{
    CQmLogTextCtrl& text = GetTextCtrl();
    const auto pane = [&](const char* caption, Pane which) {
        const bool shows = m_split.Shows(which);
        AddCommand(collector, {caption, [this, which, shows] { ShowPane(which, !shows); }, 0, 0, shows});
    };
    pane("&Log Text", Pane::LogText);
    pane("&Messages", Pane::Messages);
    AddCommand(collector, {"&Other Pane", [this] { ChangePane(true); }, VK_F6});
    AddCommand(collector, {"&Toolbar", [this] { ShowToolBar(!m_tools.IsShown()); }, 0, 0, m_tools.IsShown()});
    const auto showTimes = [this] {
        m_options.showTimes = !m_options.showTimes;
        UseTimes();
    };
    AddCommand(collector, {"T&imes", showTimes, 0, 0, m_options.showTimes && HasTimes(), HasTimes()});
    collector.AddSeparator();
    ScanLook(collector);
    collector.AddSeparator();
    AddCommand(collector,
               {"&Pause Following When Scrolled Up",
                [&text] { text.SetFollowPauses(!text.GetFollowPauses()); }, 0, 0, text.GetFollowPauses()});
}

void DeskFrame::ScanHelp(IQmCommand& collector)
{
    AddCommand(collector, {"&About LogDesk...", [this] { CDialog(IDD_ABOUT, this).DoModal(); }});
}

// The innermost window around the focus that offers commands; the browser where there is none, and for the
// status bar.
IQmHandler& DeskFrame::FocusHandler()
{
    if (::IsChild(m_status, ::GetFocus()))
        return m_browser;
    for (HWND hwnd = ::GetFocus(); hwnd && hwnd != m_hWnd; hwnd = ::GetParent(hwnd))
        if (auto* const handler = dynamic_cast<IQmHandler*>(CWnd::FromHandlePermanent(hwnd)))
            return *handler;
    return m_browser;
}

IQmHandler& DeskFrame::HandlerOf(UINT menu)
{
    switch (menu)
    {
    case kFileMenu:
        return m_fileCommands;
    case kEditMenu:
        return ActivePane() == Pane::Messages ? m_editCommands : FocusHandler();
    case kLogMenu:
        return m_logCommands;
    case kMessagesMenu:
        return m_messages.List();
    case kViewMenu:
        return m_viewCommands;
    default:
        return m_helpCommands;
    }
}

void DeskFrame::OnInitMenuPopup(CMenu* popup, UINT index, BOOL system)
{
    if (system)
        return;
    m_menuHandler = &HandlerOf(index);
    while (popup->GetMenuItemCount() > 0)
        popup->DeleteMenu(0, MF_BYPOSITION);
    CQmCommandDefineMenu menu(*popup);
    m_menuHandler->Scan(menu);
}

// Whose commands the tool bar's are: those of the pane that has the focus come first.
std::vector<IQmHandler*> DeskFrame::ToolHandlers()
{
    IQmHandler& list = m_messages.List();
    if (ActivePane() == Pane::Messages)
        return {&list, &m_fileCommands};
    if (!m_split.Shows(Pane::Messages))
        return {&GetTextCtrl(), &m_fileCommands};
    return {&GetTextCtrl(), &m_fileCommands, &list};
}

void DeskFrame::ShowToolBar(bool show)
{
    m_tools.ShowWindow(show ? SW_SHOWNA : SW_HIDE);
    LayOut();
}

// All menus number their items alike; the one that opened last is the one that was chosen from.
BOOL DeskFrame::OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info)
{
    if (code == CN_COMMAND && !info && id >= kFirstTool && id < kFirstTool + Tools().size())
    {
        UseTool(id - kFirstTool, ToolHandlers());
        return TRUE;
    }
    if (m_menuHandler && id >= kQmFirstCommand && id <= kQmLastCommand)
        return CQmHandlerWnd(m_menuHandler).OnCmdMsg(id, code, extra, info);
    return QmHandler<CWnd>::OnCmdMsg(id, code, extra, info);
}

} // namespace logdesk
