// The frame window: menu bar, notices, log browser, messages, status bar.
#pragma once

#include "QmLogBrowser.h"
#include "QmLogTimes.h"
#include "afxcmn.h"
#include "logdesk/DeskEntry.h"
#include "logdesk/DeskText.h"
#include "logdesk/ErrorWatch.h"
#include "logdesk/MessageView.h"
#include "logdesk/NoticeBar.h"
#include "logdesk/Notices.h"
#include "logdesk/PaneSplit.h"
#include "logdesk/Profile.h"
#include "logdesk/Saving.h"
#include "logdesk/SessionBookmarks.h"
#include "logdesk/SessionFolder.h"
#include "logdesk/SplitterBar.h"
#include "logdesk/StatusBar.h"
#include "logdesk/ToldLines.h"
#include "logdesk/ToolBar.h"
#include "qmcommon/QmMenuDrawer.h"

#include <optional>
#include <string>

namespace logdesk
{

// Its menus are filled when they open: "Edit" with the commands of the window that has the focus, the others
// with its own. Place and options are remembered in the profile's section "LogDesk". Ends the program when it
// is destroyed.
class DeskFrame : public QmHandler<CWnd>
{
public:
    // With kStarted creating the window starts a session; else with the caret on the first row of the log
    // that `place` names. Its folder is the log folder.
    DeskFrame(SessionPlace place, SessionState session);

    // Before the window is made: whether the commands that developers try it with are among the others.
    void OfferForDevelopers(bool offer) { m_forDevelopers = offer; }

    // Makes the hidden window; FALSE when that fails. With a place it goes there and forgets its own: for
    // pictures, which look the same whatever was remembered.
    BOOL CreateFrame(const std::optional<Place>& place, const MessageOptions& messages);

    // Shows it as it was left, or as the system asks, and begins to read messages.
    void ShowFrame(int show);

    CQmLogTextCtrl& GetTextCtrl() { return m_browser.GetTextCtrl(); }
    MessageView& GetMessages() { return m_messages; }

    // Bring status bar and notices up to date at once; else the one is four times a second, the others are
    // once.
    void RefreshStatus();
    void RefreshNotices();

    // ---- What the user can do with the panes and the messages

    void ShowPane(Pane pane, bool show);
    void SetColours(ColourChoice choice);
    void Zoom(int steps); // 0 for the font's own size
    void SetSplit(int share);
    void ShowSessionMessages();
    void SetLeastLevel(std::uint32_t level);
    void GoToMessageError(msgservice::MsgService::Direction direction);
    void ShowInLog(std::uint32_t id);
    void ShowTab(int file);   // of a log, or CQmLogBrowser::kAllLogsTab
    void ShowRowsAfterMain(); // the first row after Main's last, among all logs
    void ShowDuring();        // the block of the log text's caret, or leaves it
    void GoToErrorInLogs(bool forward);
    void ShowInMessages(); // the row of the log text's caret

    // Puts the log text's caret there; each answers why it cannot, and nothing if it did.
    std::string GoTo(const std::string& typed);
    std::string GoToNumber(std::uint32_t number);
    std::string GoToNumberOf(int file, std::uint32_t number); // in one log
    std::string GoToRow(int file, unsigned long row);
    std::string GoToTime(const std::string& typed);
    void GoToPause(msgservice::MsgService::Direction direction);

    void ToggleBookmark(std::uint32_t number);
    void GoToBookmark(msgservice::MsgService::Direction direction);

    // What the frame's keys do, whatever has the focus.
    void Scan(IQmCommand& collector) override;
    BOOL PreTranslateMessage(MSG* message) override;
    BOOL OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info) override;

protected:
    afx_msg int OnCreate(LPCREATESTRUCT create);
    afx_msg void OnClose();
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnActivate(UINT state, CWnd* other, BOOL minimized);
    afx_msg void OnSetFocus(CWnd* old);
    afx_msg void OnSettingChange(UINT flags, LPCSTR section);
    afx_msg LRESULT OnDpiChanged(WPARAM, LPARAM place);
    afx_msg LRESULT OnGetMinMaxInfo(WPARAM, LPARAM sizes);
    afx_msg void OnInitMenuPopup(CMenu* popup, UINT index, BOOL system);
    afx_msg void OnTimer(UINT_PTR timer);
    afx_msg LRESULT OnDropFiles(WPARAM drop, LPARAM);
    afx_msg void OnDrawTools(NMHDR* header, LRESULT* result);
    afx_msg LRESULT OnPublish(WPARAM, LPARAM);
    afx_msg LRESULT OnPresent(WPARAM sender, LPARAM id);
    DECLARE_MESSAGE_MAP()

private:
    static constexpr UINT_PTR kStatusTimer = 1;
    static constexpr UINT kFirstTool = 0xB000; // the command of the tool bar's first button

    // Layout and focus
    void PrepareMessages();
    void UseResolution();
    void UseColours();
    void UseTextFont();
    void AskForTextFont();
    static void UseSystemNumbers();
    void LayOut();
    int GetPanesTop();
    void MoveSplitter(int top);
    void ChangePane(bool forward); // the watch is one of them while it shows something
    void FocusPane(Pane pane);
    bool IsInMessages(HWND hwnd);
    Pane ActivePane();
    void ShowWantedLog();
    void RememberOptions();

    // Status and notices
    ViewState ReadView();
    StatusTexts ReadStatus();
    void PressStatusButton();
    void ClearErrors();
    void Tell(const std::string& text); // in place of what was told before
    void ShowTitle();

    // Times
    bool HasTimes() const { return m_times.GetSampleCount() > 0; }
    std::string TimeText(std::uint32_t number);
    std::string LongTimeText(std::uint32_t number);
    void OpenTimes();
    void RefreshTimes();
    void UseTimes();

    // Tool bar
    std::vector<IQmHandler*> ToolHandlers();
    void ShowToolBar(bool show);

    // Menus
    static void MakeMenus(CMenu& bar);
    IQmHandler& FocusHandler();
    IQmHandler& HandlerOf(UINT menu);
    void ScanFile(IQmCommand& collector);
    void ScanTabs(IQmCommand& collector);
    void ScanLog(IQmCommand& collector);
    void ScanLogMoves(IQmCommand& collector);
    void ScanView(IQmCommand& collector);
    void ScanZoom(IQmCommand& collector);
    void ScanLook(IQmCommand& collector);
    void ScanMessages(IQmCommand& collector); // beside the list's own
    void ScanMessageFilters(IQmCommand& collector);
    void FilterOnValue();
    void ScanLogText(IQmCommand& collector);
    void ScanPlaces(IQmCommand& collector);
    void AskWhereToGo();
    void ScanTimes(IQmCommand& collector);
    void ShowBookmarks();
    std::string BookmarkText(std::uint32_t number);
    std::uint32_t CaretNumber();
    void ScanHelp(IQmCommand& collector);

    // Files
    void AskForFiles();
    void AskForFolder();
    void Open(const std::vector<std::string>& paths);
    bool OpenOne(const std::string& path, bool mayShowHere);
    bool ShowFile(const std::string& file);
    void SaveMessages();
    bool MayLeave(); // the user may want to wait for what is being saved
    void TellSaved();
    void OpenNewWindow();
    bool StartAnother(const std::string& path);
    void LeaveFor(const std::string& session);
    void Remember(const std::string& path, bool isThere);
    void RememberSession(const std::string& folder, bool isThere);

    SessionPlace m_place;
    SessionState m_session;
    bool m_remember = true; // place and options
    WindowOptions m_options;
    MessageOptions m_messageOptions;
    PaneSplit m_split;
    RecentFiles m_recent;
    RecentFiles m_recentSessions;
    bool m_forDevelopers = false;
    SessionBookmarks m_bookmarks;
    CQmLogTimes m_times;
    ToolBar m_tools;
    NoticeBar m_notices;
    CFont m_textFont; // of the log text, as high as the display wants it
    CQmLogBrowser m_browser;
    SplitterBar m_splitter;
    StatusBar m_status;
    ErrorWatch m_errors;
    std::optional<FolderState> m_folder; // that the notices tell of
    ToldLines m_told;                    // by the service
    ToldLines m_answer;                  // to the last command
    std::string m_title;
    unsigned m_ticks = 0;
    HWND m_focus = nullptr;          // the window within that has, or will get back, the focus
    Pane m_lastPane = Pane::LogText; // that had the focus
    CQmMenuDrawer m_menuDrawer;
    std::unique_ptr<Saving> m_saving; // null while nothing is being saved
    DeskCommands m_fileCommands;
    DeskCommands m_logCommands;
    DeskCommands m_editCommands; // of the list
    DeskCommands m_viewCommands;
    DeskCommands m_helpCommands;
    DeskCommands m_logTextCommands;
    IQmHandler* m_menuHandler = nullptr; // of the menu that opened last, whose item a command is
    MessageView m_messages;              // last: it is told of the windows
};

} // namespace logdesk
