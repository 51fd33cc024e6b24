// How windows come and go.
#include "mfc/ThreadState.h"
#include "mfc/WndCall.h"

namespace
{

// A window's handle as the map has it. Of a handle 32 bits count: where the highest of them is set, as after
// some 30,000 windows in one place of the system's table, the system fills those above with ones or with
// zeros.
HWND KeyOf(HWND hwnd)
{
    return static_cast<HWND>(LongToHandle(HandleToLong(hwnd)));
}

} // namespace

CWnd::~CWnd()
{
    CWnd::DestroyWindow();
}

BOOL CWnd::Attach(HWND hwnd)
{
    if (!hwnd || m_hWnd || FromHandlePermanent(hwnd))
        return FALSE;
    m_hWnd = hwnd;
    GetThreadState().windows.Add(KeyOf(hwnd), this);
    return TRUE;
}

HWND CWnd::Detach()
{
    if (m_hWnd)
        GetThreadState().windows.Remove(KeyOf(m_hWnd), this);
    m_pfnSuper = nullptr;
    m_isWide = false;
    return std::exchange(m_hWnd, nullptr);
}

CWnd* CWnd::FromHandle(HWND hwnd)
{
    if (!hwnd)
        return nullptr;
    HandleMap<CWnd>& map = GetThreadState().windows;
    if (CWnd* const found = map.Find(KeyOf(hwnd)))
        return found;
    auto made = std::make_unique<CWnd>();
    made->m_hWnd = hwnd;
    return map.AddTemporary(KeyOf(hwnd), std::move(made));
}

CWnd* CWnd::FromHandlePermanent(HWND hwnd)
{
    return GetThreadState().windows.FindPermanent(KeyOf(hwnd));
}

void CWnd::DeleteTempMap()
{
    GetThreadState().windows.DeleteTemporary();
}

BOOL CWnd::SubclassWindow(HWND hwnd)
{
    return CWndCall::Subclass(*this, hwnd, IsWide());
}

BOOL CWnd::SubclassWideWindow(HWND hwnd)
{
    return CWndCall::Subclass(*this, hwnd, true);
}

HWND CWnd::UnsubclassWindow()
{
    const auto setProcedure = m_isWide ? ::SetWindowLongPtrW : ::SetWindowLongPtrA;
    if (m_pfnSuper)
        setProcedure(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_pfnSuper));
    return Detach();
}

void CWnd::PreSubclassWindow() {}

BOOL CWnd::PreCreateWindow(CREATESTRUCT& create)
{
    if (!create.lpszClass)
        create.lpszClass = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursor(nullptr, IDC_ARROW),
                                               reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1));
    return TRUE;
}

BOOL CWnd::Create(LPCSTR className, LPCSTR windowName, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                  CCreateContext* context)
{
    return CreateEx(0, className, windowName, style | WS_CHILD, rect, parent, id, context);
}

BOOL CWnd::CreateEx(DWORD exStyle, LPCSTR className, LPCSTR windowName, DWORD style, const RECT& rect,
                    CWnd* parent, UINT id, LPVOID param)
{
    return CreateEx(exStyle, className, windowName, style, rect.left, rect.top, rect.right - rect.left,
                    rect.bottom - rect.top, parent ? parent->m_hWnd : nullptr,
                    reinterpret_cast<HMENU>(UINT_PTR{id}), param);
}

BOOL CWnd::CreateEx(DWORD exStyle, LPCSTR className, LPCSTR windowName, DWORD style, int x, int y, int width,
                    int height, HWND parent, HMENU menuOrId, LPVOID param)
{
    CREATESTRUCT create = {param, AfxGetInstanceHandle(),   menuOrId,   parent,    height, width, y,
                           x,     static_cast<LONG>(style), windowName, className, exStyle};
    if (m_hWnd)
        return FALSE; // and lives on
    if (!PreCreateWindow(create))
    {
        PostNcDestroy();
        return FALSE;
    }

    HWND hwnd = nullptr;
    bool hasSeenWindow = false;
    {
        const CreationHook hook(*this);
        hwnd = ::CreateWindowEx(create.dwExStyle, create.lpszClass, create.lpszName,
                                static_cast<DWORD>(create.style), create.x, create.y, create.cx, create.cy,
                                create.hwndParent, create.hMenu, create.hInstance, create.lpCreateParams);
        hasSeenWindow = hook.HasSeenWindow();
    }
    if (!hasSeenWindow)
        PostNcDestroy();
    return hwnd != nullptr;
}

BOOL CWnd::DestroyWindow()
{
    if (!m_hWnd)
        return FALSE;
    const HWND hwnd = m_hWnd;
    if (!m_pfnSuper)
        Detach(); // WM_NCDESTROY does not come here
    return ::DestroyWindow(hwnd);
}

void CWnd::OnNcDestroy()
{
    CWinApp* const app = AfxGetApp();
    if (app && app->m_pMainWnd == this)
    {
        app->m_pMainWnd = nullptr;
        ::PostQuitMessage(0);
    }
    Default();
    Detach();
    PostNcDestroy();
}

void CWnd::PostNcDestroy() {}
