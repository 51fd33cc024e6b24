// What makes a window take part in command routing: it looks up commands and keys in the window's handler.
#pragma once

#include "afxwin.h"
#include "qmcommon/QmCommand.h"

// Belongs to a handler, usually as a member of the window class that is the handler. The window forwards to
// the three operations before it looks itself; TRUE means consumed. A command that was executed may have
// destroyed the handler, this object and the window: after TRUE the caller touches none of them.
class QMPLATFORM_API CQmHandlerWnd
{
public:
    // `handler` is not owned and not used before the first operation.
    explicit CQmHandlerWnd(IQmHandler* handler);

    // Executes the command whose menu id this is; other codes than CN_COMMAND are left alone. With `info` it
    // only tells whether it would.
    BOOL OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info);

    // Executes the command whose shortcut a key message to the window itself is: so keys work in hosts whose
    // message loop pre-translates nothing. Also takes the character that such a loop sends after the key,
    // which would make a menu beep.
    BOOL OnWndMsg(CWnd* wnd, UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);

    // Executes the command whose shortcut was pressed in the handler's window, or in a window within it that
    // does not want keys for itself, as an edit field does.
    BOOL PreTranslateMessage(MSG* message);

private:
    bool WantsKeys(const MSG& message) const;
    bool ExecuteShortcut(WPARAM key);

    IQmHandler* m_handler;
    bool m_charDue = false; // the next character belongs to a key that was consumed
};
