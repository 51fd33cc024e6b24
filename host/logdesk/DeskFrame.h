// The frame window: menu bar, notices, log browser, status bar.
#pragma once

#include "QmLogBrowser.h"
#include "afxcmn.h"
#include "logdesk/DeskEntry.h"
#include "logdesk/DeskText.h"
#include "logdesk/NoticeBar.h"
#include "logdesk/Notices.h"
#include "logdesk/SessionFolder.h"
#include "logdesk/WindowPlace.h"

#include <optional>
#include <string>

namespace logdesk
{

// Its menus are filled when they open: "Edit" with the commands of the window that has the focus, "Log" with
// the logs, which are also the frame's shortcuts. Place and options are remembered in the profile's section
// "LogDesk". Ends the program when it is destroyed.
class DeskFrame : public QmHandler<CWnd>
{
public:
    // With kStarted creating the window starts a session; else with the caret on the first row of the log
    // that `place` names. Its folder is the log folder.
    DeskFrame(SessionPlace place, SessionState session);

    // Makes the hidden window; FALSE when that fails. With a place it goes there and forgets its own: for
    // pictures, which look the same whatever was remembered.
    BOOL CreateFrame(const std::optional<Place>& place);

    // Shows it as it was left, or as the system asks.
    void ShowFrame(int show);

    CQmLogTextCtrl& GetTextCtrl() { return m_browser.GetTextCtrl(); }

    // Brings status bar and notices up to date at once; else the one is four times a second, the others are
    // once.
    void RefreshStatus();
    void RefreshNotices();

    // The logs of the menu "Log".
    void Scan(IQmCommand& collector) override;
    BOOL OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info) override;

protected:
    afx_msg int OnCreate(LPCREATESTRUCT create);
    afx_msg void OnClose();
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnActivate(UINT state, CWnd* other, BOOL minimized);
    afx_msg void OnSetFocus(CWnd* old);
    afx_msg void OnSettingChange(UINT flags, LPCSTR section);
    afx_msg void OnInitMenuPopup(CMenu* popup, UINT index, BOOL system);
    afx_msg void OnTimer(UINT_PTR timer);
    DECLARE_MESSAGE_MAP()

private:
    ViewState ReadView();
    void LayOut();
    void SetPanes(int width);
    void ShowWantedLog();
    static void MakeMenus(CMenu& bar);
    IQmHandler& FocusHandler();
    void ScanFile(IQmCommand& collector);
    void ScanView(IQmCommand& collector);
    void ScanHelp(IQmCommand& collector);

    SessionPlace m_place;
    SessionState m_session;
    bool m_remember = true; // place and options
    bool m_maximised = false;
    NoticeBar m_notices;
    CQmLogBrowser m_browser;
    CStatusBarCtrl m_status;
    std::optional<ViewState> m_shown;    // by the status bar
    std::optional<FolderState> m_folder; // that the notices tell of
    unsigned m_ticks = 0;
    HWND m_focus = nullptr; // the window within that has, or will get back, the focus
    DeskCommands m_fileCommands;
    DeskCommands m_viewCommands;
    DeskCommands m_helpCommands;
    IQmHandler* m_menuHandler = nullptr; // of the menu that opened last, whose item a command is
};

} // namespace logdesk
