// The handler template, through which a window takes part in a host's command routing.
#pragma once

#include "afxwin.h"
#include "qmcommon/QmHandlerWnd.h"

#include <memory>

// A window class `T` (derived from CWnd) whose commands, messages and keys its handler window sees first: it
// looks up shortcuts and commands in what Scan offers. What it does not consume goes on as for any window.
template <typename T> class QmHandler : public T, public virtual IQmHandler
{
public:
    QmHandler() : m_handlerWnd(std::make_unique<CQmHandlerWnd>(static_cast<IQmHandler*>(this))) {}

    BOOL OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info) override
    {
        if (m_handlerWnd->OnCmdMsg(id, code, extra, info))
            return TRUE;
        return CCmdTarget::OnCmdMsg(id, code, extra, info);
    }

    BOOL PreTranslateMessage(MSG* message) override
    {
        if (m_handlerWnd->PreTranslateMessage(message))
            return TRUE;
        return CWnd::PreTranslateMessage(message);
    }

protected:
    BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override
    {
        if (m_handlerWnd->OnWndMsg(this, message, wParam, lParam, result))
            return TRUE;
        return CWnd::OnWndMsg(message, wParam, lParam, result);
    }

private:
    std::unique_ptr<CQmHandlerWnd> m_handlerWnd;
};
