// The watch window: one line with the latest error of a log.
#pragma once

#include "LogMsg.h"
#include "LogViewer.h"
#include "QmHandler.h"

// As large as a field of a status bar. It shows the image and the first line of the last message of level 4
// or 5 that it was told of; other messages leave it as it is. A host feeds it like any viewer, or attaches it
// to a CReportCtrlLog. Ids that it keeps mean what its service means by them: let a service feed it whose ids
// stay, such as one that neither sorts nor filters.
class QMLOG_API CQmLogWatch : public QmHandler<CWnd>, public ILogViewer
{
public:
    CQmLogWatch();
    ~CQmLogWatch() override;

    // Registers the window class "QmLogWatch" and makes a window of it; FALSE on failure. SubclassWindow
    // takes over a window instead.
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id, CCreateContext* context = nullptr);

    // Not owned. Another service than before takes the message away that is shown: it was the former one's.
    void SetLogMsgService(ILogMsgService* service) override;
    ILogMsgService* GetLogMsgService();

    // The window over which a message is opened; null for the watch's own.
    void SetOwnerWnd(CWnd* owner);

    void AddMsg(std::uint32_t id, ILogMsgData* message) override;
    void SetMsgIdRange(std::uint32_t first, std::uint32_t last) override; // does nothing

    // Sends the registered message "QmPresentMessageId" to the parent window, with this window's handle and
    // the id.
    void Present(std::uint32_t id) override;
    CWnd* GetWnd() override;

    // Shows no message.
    void Clear();

    // The message that is shown; -1 for none, and an empty text.
    std::int32_t GetShownMsg() const;
    ZEMA::String GetShownText() const;

    // Opens the message that is shown, as a double click and Enter do; nothing happens if the service does
    // not have it any more.
    void OpenShown();

protected:
    // Makes what the window needs; Create and SubclassWindow call it.
    virtual BOOL CreateCommon();
    void PreSubclassWindow() override;

    // Shows a message of the service in full: by default in the dialog "Log Message", over the owner window.
    virtual void OnOpenMessage(std::uint32_t id);

    afx_msg BOOL OnEraseBkgnd(CDC* dc);
    afx_msg void OnPaint();
    afx_msg void OnLButtonDown(UINT flags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT flags, CPoint point);
    afx_msg void OnKeyDown(UINT key, UINT repeat, UINT flags);
    afx_msg void OnSetFocus(CWnd* old);
    afx_msg void OnKillFocus(CWnd* focused);
    afx_msg LRESULT OnDpiChanged(WPARAM, LPARAM);
    afx_msg UINT OnGetDlgCode();
    DECLARE_MESSAGE_MAP()

private:
    struct Data;
    std::unique_ptr<Data> m_data;
};
