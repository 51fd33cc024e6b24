#include "qmcommon/QmHandlerWnd.h"

#include "qmcommon/QmCommandMenu.h"
#include "qmcommon/QmCommandShortcut.h"

#include <utility>

namespace
{

unsigned PressedModifiers()
{
    unsigned modifiers = 0;
    if (::GetKeyState(VK_SHIFT) < 0)
        modifiers |= kQmShift;
    if (::GetKeyState(VK_CONTROL) < 0)
        modifiers |= kQmControl;
    if (::GetKeyState(VK_MENU) < 0)
        modifiers |= kQmAlt;
    return modifiers;
}

// A shortcut was executed while Alt is down. The system has not seen its key, takes Alt for pressed alone and
// would go into the menu bar when it is released.
thread_local bool altReleaseDue = false;

// Executes the command whose shortcut `key` is. Handler and windows may be gone afterwards.
bool Execute(IQmHandler& handler, WPARAM key)
{
    const unsigned modifiers = PressedModifiers();
    CQmCommandShortcut record(static_cast<unsigned>(key), modifiers);
    if (handler.Dispatch(record) == 0)
        return false;
    altReleaseDue = (modifiers & kQmAlt) != 0;
    return true;
}

// Whether the message is the release that nobody shall see.
bool TakeAltRelease(UINT message, WPARAM key)
{
    if (key != VK_MENU || (message != WM_SYSKEYUP && message != WM_KEYUP))
        return false;
    return std::exchange(altReleaseDue, false);
}

// Tells whether a command could be executed, and leaves it alone.
class FindCommand : public CQmCommandExecute
{
public:
    using CQmCommandExecute::CQmCommandExecute;
    void Finish() override { SetResult(IsFound()); }
};

} // namespace

CQmHandlerWnd::CQmHandlerWnd(IQmHandler* handler) : m_handler(handler) {}

BOOL CQmHandlerWnd::OnCmdMsg(UINT id, int code, void*, AFX_CMDHANDLERINFO* info)
{
    if (code != CN_COMMAND || id < kQmFirstCommand || id > kQmLastCommand)
        return FALSE;
    const int index = static_cast<int>(id - kQmFirstCommand);
    if (info)
    {
        FindCommand record(index);
        return m_handler->Dispatch(record);
    }
    CQmCommandExecute record(index);
    return m_handler->Dispatch(record);
}

BOOL CQmHandlerWnd::OnWndMsg(CWnd*, UINT message, WPARAM wParam, LPARAM, LRESULT* result)
{
    *result = 0;
    if (message == WM_KEYDOWN || message == WM_SYSKEYDOWN)
        return ExecuteShortcut(wParam);
    if (TakeAltRelease(message, wParam))
        return TRUE;
    if ((message == WM_CHAR || message == WM_SYSCHAR) && m_charDue)
    {
        m_charDue = false;
        return TRUE;
    }
    return FALSE;
}

BOOL CQmHandlerWnd::PreTranslateMessage(MSG* message)
{
    if (TakeAltRelease(message->message, message->wParam))
        return TRUE;
    if (message->message != WM_KEYDOWN && message->message != WM_SYSKEYDOWN)
        return FALSE;
    if (!m_handler->GetShortcuts() || WantsKeys(*message))
        return FALSE;
    return Execute(*m_handler, message->wParam);
}

// Whether the message is for a window that has its own use for it, or for one out of the handler's reach.
bool CQmHandlerWnd::WantsKeys(const MSG& message) const
{
    const CWnd* const wnd = dynamic_cast<const CWnd*>(m_handler);
    if (!wnd || message.hwnd == wnd->GetSafeHwnd())
        return false;
    if (!::IsChild(wnd->GetSafeHwnd(), message.hwnd))
        return true;
    const LRESULT code =
        ::SendMessage(message.hwnd, WM_GETDLGCODE, message.wParam, reinterpret_cast<LPARAM>(&message));
    return (code & (DLGC_WANTALLKEYS | DLGC_WANTCHARS | DLGC_HASSETSEL)) != 0;
}

// The character, if there is one, has been posted already or follows at once; a later key forgets it.
bool CQmHandlerWnd::ExecuteShortcut(WPARAM key)
{
    m_charDue = m_handler->GetShortcuts();
    if (!m_charDue)
        return false;
    if (Execute(*m_handler, key))
        return true; // this object may be gone
    m_charDue = false;
    return false;
}
