#include "afxcmn.h"
#include "mfc/MessageLoop.h"
#include "mfc/WndCall.h"

#include <string>

// What there is one of in the process.
namespace
{
struct AppState
{
    CWinApp* app = nullptr;
    HINSTANCE resources = nullptr;
};
} // namespace

static AppState& State()
{
    static AppState state;
    return state;
}

CWinApp::CWinApp() : m_hInstance(::GetModuleHandle(nullptr))
{
    State().app = this;
}

CWinApp::~CWinApp()
{
    if (State().app == this)
        State().app = nullptr;
}

BOOL CWinApp::InitInstance()
{
    return TRUE;
}

int CWinApp::Run()
{
    for (;;)
    {
        LONG count = 0;
        while (!::PeekMessageW(&m_msgCur, nullptr, 0, 0, PM_NOREMOVE) && OnIdle(count))
            ++count;
        if (!PumpMessage(m_msgCur))
            return ExitInstance();
    }
}

int CWinApp::ExitInstance()
{
    return static_cast<int>(m_msgCur.wParam);
}

BOOL CWinApp::PreTranslateMessage(MSG* message)
{
    return CWnd::WalkPreTranslateTree(m_pMainWnd ? m_pMainWnd->m_hWnd : nullptr, message);
}

BOOL CWinApp::OnIdle(LONG)
{
    CWnd::DeleteTempMap();
    CDC::DeleteTempMap();
    CGdiObject::DeleteTempMap();
    CMenu::DeleteTempMap();
    CImageList::DeleteTempMap();
    return FALSE;
}

// Whether the user knows of it.
static bool IsTold(const CException& exception)
{
    return dynamic_cast<const CUserException*>(&exception) != nullptr;
}

LRESULT CWinApp::ProcessWndProcException(CException* exception, const MSG* message)
{
    if (message->message != WM_PAINT && !IsTold(*exception))
        exception->ReportError();
    return message->message == WM_CREATE ? -1 : 0;
}

CWinApp* AfxGetApp()
{
    return State().app;
}

CWnd* AfxGetMainWnd()
{
    CWinApp* const app = AfxGetApp();
    return app ? app->m_pMainWnd : nullptr;
}

HINSTANCE AfxGetInstanceHandle()
{
    return ::GetModuleHandle(nullptr);
}

HINSTANCE AfxGetResourceHandle()
{
    return State().resources ? State().resources : AfxGetInstanceHandle();
}

void AfxSetResourceHandle(HINSTANCE instance)
{
    State().resources = instance;
}

int AfxWinMain(HINSTANCE instance, HINSTANCE, LPSTR commandLine, int show)
{
    CWinApp* const app = AfxGetApp();
    app->m_hInstance = instance;
    app->m_lpCmdLine = commandLine;
    app->m_nCmdShow = show;
    if (app->InitInstance())
        return app->Run();
    if (app->m_pMainWnd)
        app->m_pMainWnd->DestroyWindow();
    return app->ExitInstance();
}

BOOL AfxPreTranslateMessage(MSG* message)
{
    CWinApp* const app = AfxGetApp();
    const MSG offered = *message;
    BOOL consumed = TRUE; // also by what fails
    GuardHandler(offered, [&]() -> LRESULT {
        consumed = app ? app->PreTranslateMessage(message) : CWnd::WalkPreTranslateTree(nullptr, message);
        return 0;
    });
    return consumed;
}

// The messages are those of windows of UTF-16: fetched for others, a typed character has become one of the
// code page before any window gets it. The system converts it when it is dispatched to such a window.
bool PumpMessage(MSG& message)
{
    if (::GetMessageW(&message, nullptr, 0, 0) <= 0)
        return false;
    if (!AfxPreTranslateMessage(&message))
    {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    return true;
}

CWaitCursor::CWaitCursor() : m_before(::SetCursor(::LoadCursor(nullptr, IDC_WAIT))) {}

CWaitCursor::~CWaitCursor()
{
    ::SetCursor(m_before);
}

int AfxMessageBox(LPCSTR text, UINT type, UINT)
{
    char path[MAX_PATH] = {};
    ::GetModuleFileName(nullptr, path, MAX_PATH);
    const std::string name = path;
    const std::string file = name.substr(name.rfind('\\') + 1);
    return ::MessageBox(::GetActiveWindow(), text, file.substr(0, file.rfind('.')).c_str(), type);
}
