// Windows.
#pragma once

#include "atltypes.h"
#include "mfc/CmdTarget.h"
#include "mfc/Dc.h"
#include "mfc/Menu.h"

class CDataExchange;
class CScrollBar;
struct CCreateContext; // no one here looks into it

// A window of the system and the object that deals with its messages.
//
// While a window is attached, its messages go through WindowProc: OnWndMsg looks for a handler, and what none
// deals with goes to DefWindowProc, which is the procedure the window had before. A window may be destroyed,
// and its object deleted in PostNcDestroy, in the midst of a handler: nothing touches the object after a
// handler that has dealt with its message. An object that ends before its window destroys the window.
//
// A framework exception that leaves a handler ends there: the message counts as failed (-1 for WM_CREATE,
// else 0) and CWinApp::ProcessWndProcException tells the user. So does the lack of memory of the standard
// library; its other exceptions end the process.
//
// A window and its object belong to the thread that created it: every operation is called there.
class QMPLATFORM_API CWnd : public CCmdTarget
{
public:
    CWnd() = default;
    ~CWnd() override;

    HWND GetSafeHwnd() const { return m_hWnd; }
    operator HWND() const { return m_hWnd; }

    // The object of a window of this thread: FromHandle makes a temporary one, good until the thread is idle,
    // where there is none; null for a null handle. FromHandlePermanent answers null instead.
    static CWnd* FromHandle(HWND hwnd);
    static CWnd* FromHandlePermanent(HWND hwnd);
    static void DeleteTempMap();

    // Ties a window to this object without taking its messages; FALSE for a null handle, one that another
    // object has, or an object that has a window.
    BOOL Attach(HWND hwnd);
    HWND Detach();

    // As Attach, and takes the window's messages from now on; PreSubclassWindow is called first.
    BOOL SubclassWindow(HWND hwnd);

    // The same for a window of UTF-16, which stays one: texts and characters of its messages are UTF-16,
    // here, too.
    BOOL SubclassWideWindow(HWND hwnd);

    // Gives the messages back and detaches.
    HWND UnsubclassWindow();

    // Creates a child window. FALSE when it fails, and PostNcDestroy has been called; FALSE, and nothing
    // else, when the object has a window. A null class name stands for a plain window class.
    virtual BOOL Create(LPCSTR className, LPCSTR windowName, DWORD style, const RECT& rect, CWnd* parent,
                        UINT id, CCreateContext* context = nullptr);
    BOOL CreateEx(DWORD exStyle, LPCSTR className, LPCSTR windowName, DWORD style, const RECT& rect,
                  CWnd* parent, UINT id, LPVOID param = nullptr);
    BOOL CreateEx(DWORD exStyle, LPCSTR className, LPCSTR windowName, DWORD style, int x, int y, int width,
                  int height, HWND parent, HMENU menuOrId, LPVOID param = nullptr);

    // FALSE when there is no window. The object is detached afterwards, and may be gone.
    virtual BOOL DestroyWindow();

    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
    {
        return ::SendMessage(m_hWnd, message, wParam, lParam);
    }
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
    {
        return ::PostMessage(m_hWnd, message, wParam, lParam);
    }
    // To all windows within this one, the deep ones too.
    void SendMessageToDescendants(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

    // Sees a message before it is dispatched, first in its own window, then in each parent; TRUE consumes it.
    virtual BOOL PreTranslateMessage(MSG* message);

    // Lets the message's window and its parents pre-translate it, up to and with `stop`.
    static BOOL WalkPreTranslateTree(HWND stop, MSG* message);

    // Dispatches messages until EndModalLoop or the end of the thread; the result of EndModalLoop, -1 when
    // the thread ends.
    int RunModalLoop();
    virtual void EndModalLoop(int result);

    DWORD GetStyle() const { return static_cast<DWORD>(::GetWindowLong(m_hWnd, GWL_STYLE)); }

    // Takes styles away and adds others; FALSE when that changes nothing. Flags of SetWindowPos other than 0
    // have the window laid out again, as SWP_FRAMECHANGED does, where it is.
    BOOL ModifyStyle(DWORD remove, DWORD add, UINT flags = 0);

    // Place and visibility
    BOOL ShowWindow(int show) { return ::ShowWindow(m_hWnd, show); }
    BOOL IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
    BOOL EnableWindow(BOOL enable = TRUE) { return ::EnableWindow(m_hWnd, enable); }
    BOOL IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
    void MoveWindow(int x, int y, int width, int height, BOOL repaint = TRUE)
    {
        ::MoveWindow(m_hWnd, x, y, width, height, repaint);
    }
    void MoveWindow(LPCRECT rect, BOOL repaint = TRUE)
    {
        MoveWindow(rect->left, rect->top, rect->right - rect->left, rect->bottom - rect->top, repaint);
    }
    BOOL SetWindowPos(const CWnd* after, int x, int y, int width, int height, UINT flags)
    {
        return ::SetWindowPos(m_hWnd, after ? after->m_hWnd : nullptr, x, y, width, height, flags);
    }
    // Only what lies in the region is seen; the system owns it from now on.
    int SetWindowRgn(HRGN region, BOOL redraw) { return ::SetWindowRgn(m_hWnd, region, redraw); }
    void GetClientRect(LPRECT rect) const { ::GetClientRect(m_hWnd, rect); }
    void GetWindowRect(LPRECT rect) const { ::GetWindowRect(m_hWnd, rect); }
    void ClientToScreen(LPPOINT point) const { ::ClientToScreen(m_hWnd, point); }
    void ClientToScreen(LPRECT rect) const;
    void ScreenToClient(LPPOINT point) const { ::ScreenToClient(m_hWnd, point); }
    void ScreenToClient(LPRECT rect) const;

    // Painting
    void UpdateWindow() { ::UpdateWindow(m_hWnd); }
    void Invalidate(BOOL erase = TRUE) { ::InvalidateRect(m_hWnd, nullptr, erase); }
    void InvalidateRect(LPCRECT rect, BOOL erase = TRUE) { ::InvalidateRect(m_hWnd, rect, erase); }
    BOOL RedrawWindow(LPCRECT rect = nullptr, HRGN region = nullptr,
                      UINT flags = RDW_INVALIDATE | RDW_UPDATENOW | RDW_ERASE)
    {
        return ::RedrawWindow(m_hWnd, rect, region, flags);
    }
    CDC* GetDC() { return CDC::FromHandle(::GetDC(m_hWnd)); }
    int ReleaseDC(CDC* dc) { return ::ReleaseDC(m_hWnd, dc->m_hDC); }
    void SetFont(CFont* font, BOOL redraw = TRUE)
    {
        SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(static_cast<HFONT>(*font)), redraw);
    }
    CFont* GetFont() { return CFont::FromHandle(reinterpret_cast<HFONT>(SendMessage(WM_GETFONT))); }

    // Relations
    CWnd* GetParent() const { return FromHandle(::GetParent(m_hWnd)); }
    CWnd* GetDlgItem(int id) const { return FromHandle(::GetDlgItem(m_hWnd, id)); }
    int GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }
    BOOL IsChild(const CWnd* wnd) const { return ::IsChild(m_hWnd, wnd->m_hWnd); }

    // Texts
    void SetWindowText(LPCSTR text) { ::SetWindowText(m_hWnd, text); }
    int GetWindowText(LPSTR text, int size) const { return ::GetWindowText(m_hWnd, text, size); }
    void GetWindowText(CString& text) const;
    int GetWindowTextLength() const { return ::GetWindowTextLength(m_hWnd); }
    LRESULT SendDlgItemMessage(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
    {
        return ::SendDlgItemMessage(m_hWnd, id, message, wParam, lParam);
    }
    int MessageBox(LPCSTR text, LPCSTR caption = nullptr, UINT type = MB_OK)
    {
        return ::MessageBox(m_hWnd, text, caption, type);
    }
    void SetDlgItemText(int id, LPCSTR text) { ::SetDlgItemText(m_hWnd, id, text); }
    int GetDlgItemText(int id, LPSTR text, int size) const
    {
        return static_cast<int>(::GetDlgItemText(m_hWnd, id, text, size));
    }

    // Input. These answer null where no window, or none of this thread, has it.
    CWnd* SetFocus() { return FromHandle(::SetFocus(m_hWnd)); }
    static CWnd* GetFocus() { return FromHandle(::GetFocus()); }
    UINT_PTR SetTimer(UINT_PTR id, UINT milliseconds, TIMERPROC procedure)
    {
        return ::SetTimer(m_hWnd, id, milliseconds, procedure);
    }
    BOOL KillTimer(UINT_PTR id) { return ::KillTimer(m_hWnd, id); }

    // Scroll bars. The size of the record need not be set, nor its mask for reading.
    int GetScrollPos(int bar) const { return ::GetScrollPos(m_hWnd, bar); }
    BOOL GetScrollInfo(int bar, LPSCROLLINFO info, UINT mask = SIF_ALL);
    BOOL SetScrollInfo(int bar, LPSCROLLINFO info, BOOL redraw = TRUE);

    // The caret; there is one for each thread.
    void CreateSolidCaret(int width, int height) { ::CreateCaret(m_hWnd, nullptr, width, height); }
    static void SetCaretPos(POINT point) { ::SetCaretPos(point.x, point.y); }
    void ShowCaret() { ::ShowCaret(m_hWnd); }

    BOOL OpenClipboard() { return ::OpenClipboard(m_hWnd); }

    CMenu* GetMenu() const { return CMenu::FromHandle(::GetMenu(m_hWnd)); }

    // Moves data between the dialog's controls and its members, by DoDataExchange; FALSE when a value in a
    // control is not valid, and the user has been told.
    BOOL UpdateData(BOOL saveAndValidate = TRUE);

    HWND m_hWnd = nullptr;

protected:
    // Extension points, in the order a window meets them.
    virtual BOOL PreCreateWindow(CREATESTRUCT& create); // FALSE gives the creation up
    virtual void PreSubclassWindow();
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result);
    virtual void DoDataExchange(CDataExchange* exchange);
    virtual void PostNcDestroy(); // the last call; may delete the object

    // Hands the message being dealt with, as it arrived, to DefWindowProc.
    LRESULT Default();
    static const MSG* GetCurrentMessage();

    // The handlers of the system's messages; each does what the system does by default.
    afx_msg int OnCreate(LPCREATESTRUCT) { return static_cast<int>(Default()); }
    afx_msg void OnDestroy() { Default(); }
    afx_msg void OnNcDestroy(); // ends with PostNcDestroy
    afx_msg void OnClose() { Default(); }
    afx_msg void OnSize(UINT, int, int) { Default(); }
    afx_msg void OnMove(int, int) { Default(); }
    afx_msg void OnActivate(UINT, CWnd*, BOOL) { Default(); }
    afx_msg void OnPaint() { Default(); }
    afx_msg BOOL OnEraseBkgnd(CDC*) { return static_cast<BOOL>(Default()); }
    afx_msg void OnSysColorChange(); // these two tell the windows within a top-level window
    afx_msg void OnSettingChange(UINT, LPCSTR);
    afx_msg void OnSetFocus(CWnd*) { Default(); }
    afx_msg void OnKillFocus(CWnd*) { Default(); }
    afx_msg UINT OnGetDlgCode() { return static_cast<UINT>(Default()); }
    afx_msg void OnKeyDown(UINT, UINT, UINT) { Default(); }
    afx_msg void OnChar(UINT, UINT, UINT) { Default(); }
    afx_msg void OnSysKeyDown(UINT, UINT, UINT) { Default(); }
    afx_msg void OnLButtonDown(UINT, CPoint) { Default(); }
    afx_msg void OnLButtonUp(UINT, CPoint) { Default(); }
    afx_msg void OnLButtonDblClk(UINT, CPoint) { Default(); }
    afx_msg void OnRButtonDown(UINT, CPoint) { Default(); }
    afx_msg void OnRButtonUp(UINT, CPoint) { Default(); }
    afx_msg void OnMouseMove(UINT, CPoint) { Default(); }
    afx_msg BOOL OnMouseWheel(UINT, short, CPoint) { return static_cast<BOOL>(Default()); }
    afx_msg void OnMouseHWheel(UINT, short, CPoint) { Default(); }
    afx_msg BOOL OnSetCursor(CWnd*, UINT, UINT) { return static_cast<BOOL>(Default()); }
    afx_msg void OnCaptureChanged(CWnd*) { Default(); }
    afx_msg void OnContextMenu(CWnd*, CPoint) { Default(); }
    afx_msg void OnInitMenuPopup(CMenu*, UINT, BOOL) { Default(); }
    afx_msg void OnHScroll(UINT, UINT, CScrollBar*) { Default(); }
    afx_msg void OnVScroll(UINT, UINT, CScrollBar*) { Default(); }
    afx_msg void OnTimer(UINT_PTR) { Default(); }
    afx_msg BOOL OnQueryNewPalette() { return static_cast<BOOL>(Default()); }
    afx_msg void OnPaletteChanged(CWnd*) { Default(); }
    DECLARE_MESSAGE_MAP()

    // Whether the window that this object creates or subclasses is one of UTF-16: WM_CHAR and the texts of
    // all messages are UTF-16 then. The system converts for whoever sends them otherwise.
    virtual bool IsWide() const { return false; }

private:
    friend class CWndCall; // the window procedure and the creation hook

    void TellDescendants();

    WNDPROC m_pfnSuper = nullptr; // what the window did before its messages came here
    bool m_isWide = false;        // in which texts and characters are UTF-16
    bool m_modalRunning = false;
    int m_modalResult = 0;
};
