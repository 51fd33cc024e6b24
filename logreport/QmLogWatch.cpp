// The watch window.
#include "QmLogWatch.h"

#include "afxcontrolbarutil.h"
#include "logreport/LevelImages.h"
#include "logreport/PresentMessage.h"
#include "logreport/QmLogDlgEdit.h"
#include "logreport/model/Watch.h"
#include "qmcommon/QmMenuDrawer.h"
#include "vkgrafic/Display.h"
#include "vkgrafic/DrawingGuards.h"
#include "vkgrafic/GraphicText.h"
#include "vkgrafic/WindowColors.h"

namespace
{

constexpr char kWindowClass[] = "QmLogWatch";

void RegisterWindowClass()
{
    WNDCLASS windowClass = {};
    if (::GetClassInfo(AfxGetInstanceHandle(), kWindowClass, &windowClass))
        return;
    windowClass = {};
    windowClass.style = CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS;
    windowClass.lpfnWndProc = ::DefWindowProc;
    windowClass.hInstance = AfxGetInstanceHandle();
    windowClass.hCursor = ::LoadCursor(nullptr, IDC_ARROW);
    windowClass.lpszClassName = kWindowClass;
    AfxRegisterClass(&windowClass);
}

} // namespace

struct CQmLogWatch::Data
{
    ILogMsgService* service = nullptr;
    CWnd* owner = nullptr;
    bool isCreating = false;
    logreport::Watch watch;
    logreport::LevelImages images;
    CQmMenuDrawer menuDrawer;
};

BEGIN_MESSAGE_MAP(CQmLogWatch, CWnd)
    ON_WM_ERASEBKGND()
    ON_WM_PAINT()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_KEYDOWN()
    ON_WM_SETFOCUS()
    ON_WM_KILLFOCUS()
    ON_WM_GETDLGCODE()
    ON_MESSAGE(WM_DPICHANGED_AFTERPARENT, &CQmLogWatch::OnDpiChanged)
END_MESSAGE_MAP()

CQmLogWatch::CQmLogWatch() : m_data(std::make_unique<Data>()) {}

CQmLogWatch::~CQmLogWatch()
{
    DestroyWindow();
}

BOOL CQmLogWatch::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id, CCreateContext* context)
{
    RegisterWindowClass();
    m_data->isCreating = true;
    const BOOL isCreated = CWnd::Create(kWindowClass, "", style, rect, parent, id, context);
    m_data->isCreating = false;
    return isCreated && CreateCommon();
}

void CQmLogWatch::PreSubclassWindow()
{
    if (!m_data->isCreating)
        CreateCommon();
}

BOOL CQmLogWatch::CreateCommon()
{
    m_data->menuDrawer.Attach(GetSafeHwnd());
    return m_data->images.Load(VkGrafic::GetResolution(GetSafeHwnd()));
}

// ---- What a host tells

void CQmLogWatch::SetLogMsgService(ILogMsgService* service)
{
    if (service && m_data->service != service)
        Clear();
    m_data->service = service;
}

ILogMsgService* CQmLogWatch::GetLogMsgService()
{
    return m_data->service;
}

void CQmLogWatch::SetOwnerWnd(CWnd* owner)
{
    m_data->owner = owner;
}

void CQmLogWatch::AddMsg(std::uint32_t id, ILogMsgData* message)
{
    m_data->watch.Add(id, message);
    if (m_hWnd)
        Invalidate(FALSE);
}

void CQmLogWatch::SetMsgIdRange(std::uint32_t, std::uint32_t) {}

void CQmLogWatch::Present(std::uint32_t id)
{
    logreport::SendPresentMessage(GetSafeHwnd(), id);
}

CWnd* CQmLogWatch::GetWnd()
{
    return this;
}

void CQmLogWatch::Clear()
{
    m_data->watch.Clear();
    if (m_hWnd)
        RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
}

std::int32_t CQmLogWatch::GetShownMsg() const
{
    return m_data->watch.Id();
}

ZEMA::String CQmLogWatch::GetShownText() const
{
    return m_data->watch.Text().c_str();
}

// ---- The user

void CQmLogWatch::OpenShown()
{
    const std::int32_t id = m_data->watch.Id();
    if (m_data->service && id > 0 && m_data->service->GetMsg(static_cast<std::uint32_t>(id)))
        OnOpenMessage(static_cast<std::uint32_t>(id));
}

void CQmLogWatch::OnOpenMessage(std::uint32_t id)
{
    if (!m_data->service || m_data->service->IsBusy())
        return;
    CWnd* const owner = m_data->owner ? m_data->owner : this;
    CQmLogDlgEdit(logreport::ServiceOf(*this), owner, id).DoModal();
}

void CQmLogWatch::OnLButtonDown(UINT, CPoint)
{
    SetFocus();
}

void CQmLogWatch::OnLButtonDblClk(UINT, CPoint)
{
    OpenShown();
}

void CQmLogWatch::OnKeyDown(UINT key, UINT, UINT)
{
    if (key == VK_RETURN)
        OpenShown();
    else
        Default();
}

// Enter is for the watch and not for a dialog's button.
UINT CQmLogWatch::OnGetDlgCode()
{
    const auto* const message = GetCurrentMessage();
    const auto* const asked = reinterpret_cast<const MSG*>(message->lParam);
    const bool isReturn = asked && asked->message == WM_KEYDOWN && asked->wParam == VK_RETURN;
    return isReturn ? DLGC_WANTMESSAGE : DLGC_STATIC;
}

void CQmLogWatch::OnSetFocus(CWnd*)
{
    Invalidate(FALSE);
}

void CQmLogWatch::OnKillFocus(CWnd*)
{
    Invalidate(FALSE);
}

// ---- Painting

BOOL CQmLogWatch::OnEraseBkgnd(CDC*)
{
    return TRUE; // painting covers everything
}

LRESULT CQmLogWatch::OnDpiChanged(WPARAM, LPARAM)
{
    m_data->images.Load(VkGrafic::GetResolution(m_hWnd));
    Invalidate(FALSE);
    return 0;
}

void CQmLogWatch::OnPaint()
{
    CPaintDC painted(this);
    CMemDC memory(painted, this);
    CDC& dc = memory.GetDC();
    CRect rect;
    GetClientRect(rect);
    const VkGrafic::WindowColors colors(m_hWnd);
    dc.FillSolidRect(rect, colors[VkGrafic::UiColor::Face]);
    const logreport::Watch& watch = m_data->watch;
    ::ImageList_Draw(m_data->images.List()->GetSafeHandle(), watch.Image(), dc, rect.left, rect.top,
                     ILD_NORMAL); // without a message as well
    rect.left += m_data->images.Size();
    const VkGrafic::Selected selected(dc, VkGrafic::GetGuiFont(m_hWnd));
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(colors[VkGrafic::UiColor::FaceText]);
    GraphicText(dc).Draw(watch.Text().data(), static_cast<int>(watch.Text().size()), rect,
                         DT_VCENTER | DT_END_ELLIPSIS);
    if (::GetFocus() == m_hWnd)
        dc.DrawFocusRect(rect);
}
