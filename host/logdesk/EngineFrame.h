// The frame window of a session that lies in an engine.
#pragma once

#include "engineview/EngineService.h"
#include "logdesk/DeskEntry.h"
#include "logdesk/EngineList.h"
#include "logdesk/NoticeBar.h"
#include "logdesk/Profile.h"
#include "logdesk/StatusBar.h"
#include "logdesk/Steps.h"
#include "logdesk/ToldLines.h"
#include "qmcommon/QmMenuDrawer.h"

#include <atomic>

namespace logdesk
{

// A list of all rows, whose pages come from the engine as they are looked at, below its notices. The window
// never waits for the server. Ends the program when it is destroyed.
class EngineFrame : public QmHandler<CWnd>
{
public:
    explicit EngineFrame(engine::EngineUrl url);
    ~EngineFrame() override;

    // Makes the hidden window; FALSE when that fails. With a place it goes there and forgets its own: for
    // pictures.
    BOOL CreateFrame(const std::optional<Place>& place);

    // Shows it as it was left, or as the system asks.
    void ShowFrame(int show);

    // Takes a step towards a picture as the user would, once what was asked for before is here.
    void TakeStep(const Step& step);

    // Until all that is seen is here, for a while.
    void Settle();

    // What the frame's keys do.
    void Scan(IQmCommand& collector) override;
    BOOL PreTranslateMessage(MSG* message) override;
    BOOL OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info) override;

protected:
    afx_msg int OnCreate(LPCREATESTRUCT create);
    afx_msg void OnDestroy();
    afx_msg void OnClose();
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg void OnSetFocus(CWnd* old);
    afx_msg void OnSettingChange(UINT flags, LPCSTR section);
    afx_msg LRESULT OnDpiChanged(WPARAM, LPARAM place);
    afx_msg void OnInitMenuPopup(CMenu* popup, UINT index, BOOL system);
    afx_msg void OnTimer(UINT_PTR timer);
    afx_msg LRESULT OnPublish(WPARAM, LPARAM);
    DECLARE_MESSAGE_MAP()

private:
    void LayOut();
    void UseColours();
    void UseResolution();
    void Wake();
    void Publish();
    void Refresh(); // status and notices
    void Tell(const std::string& text);

    // The user's commands
    void ScanMessages(IQmCommand& collector); // beside the list's own
    void ScanView(IQmCommand& collector);
    IQmHandler& HandlerOf(UINT menu);
    void PressStatusButton();
    void SetLeastLevel(std::uint32_t level);
    void FilterOnValue();
    void FindText(const std::string& text);
    void ShowAllRows();
    void ShowDuring();
    std::optional<std::uint32_t> NumberBefore(bool forward);
    void GoToError(bool forward);
    void AskWhereToGo();
    std::string GoTo(const std::string& typed);
    void GoToNumber(std::uint32_t number);
    void ShowAnswer(const std::optional<engine::RowReader::Span>& row, const std::string& failure,
                    const char* none);
    std::uint32_t FocusedId();
    void RefreshAll();

    engine::EngineUrl m_url;
    bool m_remember = true; // place and options
    WindowOptions m_options;
    std::string m_goTo; // typed last
    std::atomic<bool> m_isWoken = false;
    HWND m_hwnd = nullptr; // for Wake
    ToldLines m_told;
    ToldLines m_answer; // to the last command
    unsigned m_ticks = 0;
    NoticeBar m_notices;
    EngineList m_list;
    StatusBar m_status;
    CQmMenuDrawer m_menuDrawer;
    DeskCommands m_fileCommands;
    DeskCommands m_editCommands; // of the list
    DeskCommands m_viewCommands;
    DeskCommands m_helpCommands;
    IQmHandler* m_menuHandler = nullptr; // of the menu that opened last, whose item a command is
    std::unique_ptr<engineview::EngineService> m_service; // as long as the window
};

} // namespace logdesk
