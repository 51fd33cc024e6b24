// The application: its message loop and what there is one of.
#pragma once

#include "mfc/CmdTarget.h"

class CWnd;

// The program derives from it, defines one object of it as a global, and lets WinMain call AfxWinMain.
class QMPLATFORM_API CWinApp : public CCmdTarget
{
public:
    CWinApp();
    ~CWinApp() override;

    // Makes the main window; FALSE ends the program.
    virtual BOOL InitInstance();

    // Dispatches messages until WM_QUIT and calls OnIdle before waiting; ExitInstance's answer.
    virtual int Run();
    virtual int ExitInstance(); // the exit code; WM_QUIT's by default

    // Walks the message's window and its parents up to the main window.
    virtual BOOL PreTranslateMessage(MSG* message);

    // Called with 0, 1, ... while no message waits; FALSE when there is nothing left to do. The default
    // frees temporary objects, so handlers keep none of them.
    virtual BOOL OnIdle(LONG count);

    // An exception left a handler: tells the user, except about a failure to paint, which would repeat
    // itself, and a user exception. Answers the message's result.
    virtual LRESULT ProcessWndProcException(CException* exception, const MSG* message);

    // The program ends when this window is destroyed. Not owned.
    CWnd* m_pMainWnd = nullptr;

    MSG m_msgCur = {}; // the one that Run deals with

    HINSTANCE m_hInstance = nullptr;
    LPSTR m_lpCmdLine = nullptr;
    int m_nCmdShow = SW_SHOWNORMAL;
};

QMPLATFORM_API CWinApp* AfxGetApp();  // null when the program has none
QMPLATFORM_API CWnd* AfxGetMainWnd(); // null when there is none
QMPLATFORM_API HINSTANCE AfxGetInstanceHandle();

// The module that dialogs and other resources come from; the program's at first.
QMPLATFORM_API HINSTANCE AfxGetResourceHandle();
QMPLATFORM_API void AfxSetResourceHandle(HINSTANCE instance);

// Runs the application object: InitInstance, Run, ExitInstance.
QMPLATFORM_API int AfxWinMain(HINSTANCE instance, HINSTANCE previous, LPSTR commandLine, int show);

// What every message loop of the framework offers a message to before it dispatches it; TRUE consumes it. An
// exception ends here as it does in a handler, and the message with it.
QMPLATFORM_API BOOL AfxPreTranslateMessage(MSG* message);

// Shows the wait cursor for as long as it lives.
class QMPLATFORM_API CWaitCursor
{
public:
    CWaitCursor();
    ~CWaitCursor();
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;

private:
    HCURSOR m_before;
};

// A message box over the active window, with the program's name as its title.
QMPLATFORM_API int AfxMessageBox(LPCSTR text, UINT type = MB_OK, UINT helpId = 0);

// Registers a window class; TRUE also when it is there already.
QMPLATFORM_API BOOL AfxRegisterClass(WNDCLASS* windowClass);

// The name of a window class with these properties, registered on first use. Lives as long as the process.
// Raises the resource exception when it cannot be registered.
QMPLATFORM_API LPCSTR AfxRegisterWndClass(UINT classStyle, HCURSOR cursor = nullptr,
                                          HBRUSH background = nullptr, HICON icon = nullptr);
