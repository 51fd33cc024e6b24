// The message-map macros. Each line's handler is known to the compiler: a wrong signature does not compile.
#pragma once

#include "afxwin.h"

#include <type_traits>

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                               \
    const AFX_MSGMAP* theClass::GetMessageMap() const                                                        \
    {                                                                                                        \
        return GetThisMessageMap();                                                                          \
    }                                                                                                        \
    const AFX_MSGMAP* theClass::GetThisMessageMap()                                                          \
    {                                                                                                        \
        using ThisClass [[maybe_unused]] = theClass;                                                         \
        using TheBaseClass = baseClass;                                                                      \
        static const AFX_MSGMAP_ENTRY messageEntries[] = {

#define END_MESSAGE_MAP()                                                                                    \
    {                                                                                                        \
        0, 0, 0, 0, nullptr, nullptr                                                                         \
    }                                                                                                        \
    }                                                                                                        \
    ;                                                                                                        \
    static const AFX_MSGMAP messageMap = {&TheBaseClass::GetThisMessageMap, messageEntries};                 \
    return &messageMap;                                                                                      \
    }

// How handlers are called: one function template a signature. `handler` is a member function; what it
// answers, if anything, becomes the result.
namespace afx
{
template <auto handler> struct Owner;
template <typename Class, typename Result, typename... Arguments, Result (Class::*handler)(Arguments...)>
struct Owner<handler>
{
    using Type = Class;
};

template <auto handler, typename... Arguments>
BOOL Call(CCmdTarget* target, LRESULT* result, Arguments... arguments)
{
    auto* const object = static_cast<typename Owner<handler>::Type*>(target);
    using Result = decltype((object->*handler)(arguments...));
    LRESULT answer = 0;
    if constexpr (std::is_void_v<Result>)
        (object->*handler)(arguments...);
    else if constexpr (std::is_pointer_v<Result>)
        answer = reinterpret_cast<LRESULT>((object->*handler)(arguments...));
    else
        answer = static_cast<LRESULT>((object->*handler)(arguments...));
    if (result) // commands have none
        *result = answer;
    return TRUE;
}

template <typename Record> Record* Pointer(LPARAM lParam)
{
    return reinterpret_cast<Record*>(lParam);
}
inline CWnd* Window(LPARAM hwnd)
{
    return CWnd::FromHandle(reinterpret_cast<HWND>(hwnd));
}
inline CWnd* Window(WPARAM hwnd)
{
    return Window(static_cast<LPARAM>(hwnd));
}
inline CDC* DeviceContext(WPARAM dc)
{
    return CDC::FromHandle(reinterpret_cast<HDC>(dc));
}
inline int SignedLow(LPARAM words)
{
    return static_cast<short>(LOWORD(words));
}
inline int SignedHigh(LPARAM words)
{
    return static_cast<short>(HIWORD(words));
}

template <auto handler> BOOL Plain(CCmdTarget* target, WPARAM, LPARAM, LRESULT* result)
{
    return Call<handler>(target, result);
}
template <auto handler> BOOL Raw(CCmdTarget* target, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    return Call<handler>(target, result, wParam, lParam);
}
template <auto handler> BOOL CommandId(CCmdTarget* target, WPARAM id, LPARAM, LRESULT*)
{
    return Call<handler>(target, nullptr, static_cast<UINT>(id));
}
template <auto handler> BOOL Notify(CCmdTarget* target, WPARAM, LPARAM extra, LRESULT*)
{
    AFX_NOTIFY* const notify = Pointer<AFX_NOTIFY>(extra);
    return Call<handler>(target, nullptr, notify->pNMHDR, notify->pResult);
}
template <auto handler> BOOL Record(CCmdTarget* target, WPARAM, LPARAM lParam, LRESULT* result)
{
    return Call<handler>(target, result, Pointer<CREATESTRUCT>(lParam));
}
template <auto handler> BOOL Size(CCmdTarget* target, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    return Call<handler>(target, result, static_cast<UINT>(wParam), int{LOWORD(lParam)}, int{HIWORD(lParam)});
}
template <auto handler> BOOL Move(CCmdTarget* target, WPARAM, LPARAM lParam, LRESULT* result)
{
    return Call<handler>(target, result, SignedLow(lParam), SignedHigh(lParam));
}
template <auto handler> BOOL Activate(CCmdTarget* target, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    return Call<handler>(target, result, UINT{LOWORD(wParam)}, Window(lParam), BOOL{HIWORD(wParam)});
}
template <auto handler> BOOL Dc(CCmdTarget* target, WPARAM wParam, LPARAM, LRESULT* result)
{
    return Call<handler>(target, result, DeviceContext(wParam));
}
template <auto handler> BOOL Setting(CCmdTarget* target, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    return Call<handler>(target, result, static_cast<UINT>(wParam), Pointer<const char>(lParam));
}
template <auto handler> BOOL OtherWindow(CCmdTarget* target, WPARAM wParam, LPARAM, LRESULT* result)
{
    return Call<handler>(target, result, Window(wParam));
}
template <auto handler> BOOL NewCapture(CCmdTarget* target, WPARAM, LPARAM lParam, LRESULT* result)
{
    return Call<handler>(target, result, Window(lParam));
}
template <auto handler> BOOL Key(CCmdTarget* target, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    return Call<handler>(target, result, static_cast<UINT>(wParam), UINT{LOWORD(lParam)},
                         UINT{HIWORD(lParam)});
}
template <auto handler> BOOL Mouse(CCmdTarget* target, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    return Call<handler>(target, result, static_cast<UINT>(wParam), CPoint(lParam));
}
// A handler that answers FALSE leaves the wheel to the default, which passes it on to the parent.
template <auto handler> BOOL Wheel(CCmdTarget* target, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    const auto delta = static_cast<short>(HIWORD(wParam));
    Call<handler>(target, result, UINT{LOWORD(wParam)}, delta, CPoint(lParam));
    return *result != 0;
}
template <auto handler> BOOL HWheel(CCmdTarget* target, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    const auto delta = static_cast<short>(HIWORD(wParam));
    return Call<handler>(target, result, UINT{LOWORD(wParam)}, delta, CPoint(lParam));
}
template <auto handler> BOOL Cursor(CCmdTarget* target, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    return Call<handler>(target, result, Window(wParam), UINT{LOWORD(lParam)}, UINT{HIWORD(lParam)});
}
template <auto handler> BOOL Context(CCmdTarget* target, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    return Call<handler>(target, result, Window(wParam), CPoint(lParam));
}
template <auto handler> BOOL MenuPopup(CCmdTarget* target, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    CMenu* const menu = CMenu::FromHandle(reinterpret_cast<HMENU>(wParam));
    return Call<handler>(target, result, menu, UINT{LOWORD(lParam)}, BOOL{HIWORD(lParam)});
}
template <auto handler> BOOL Scroll(CCmdTarget* target, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    return Call<handler>(target, result, UINT{LOWORD(wParam)}, UINT{HIWORD(wParam)},
                         dynamic_cast<CScrollBar*>(Window(lParam)));
}
template <auto handler> BOOL Timer(CCmdTarget* target, WPARAM wParam, LPARAM, LRESULT* result)
{
    return Call<handler>(target, result, UINT_PTR{wParam});
}
} // namespace afx

// Commands: void handler(), with a range void handler(UINT id).
#define ON_COMMAND(id, handler) AFX_COMMAND_ENTRY_(CN_COMMAND, id, id, &afx::Plain<handler>)
#define ON_COMMAND_RANGE(id, idLast, handler)                                                                \
    AFX_COMMAND_ENTRY_(CN_COMMAND, id, idLast, &afx::CommandId<handler>)

// What controls tell by WM_COMMAND: void handler().
#define ON_CONTROL(code, id, handler) AFX_COMMAND_ENTRY_(code, id, id, &afx::Plain<handler>)
#define ON_BN_CLICKED(id, handler) ON_CONTROL(BN_CLICKED, id, handler)
#define ON_EN_CHANGE(id, handler) ON_CONTROL(EN_CHANGE, id, handler)

// What controls tell by WM_NOTIFY: void handler(NMHDR* header, LRESULT* result).
#define ON_NOTIFY(code, id, handler)                                                                         \
    {WM_NOTIFY, static_cast<WORD>(code), id, id, &afx::Notify<handler>, nullptr},

#define AFX_COMMAND_ENTRY_(code, id, idLast, call)                                                           \
    {WM_COMMAND, static_cast<WORD>(code), static_cast<UINT>(id), static_cast<UINT>(idLast), call, nullptr},
#define AFX_MESSAGE_ENTRY_(message, call) {message, 0, 0, 0, call, nullptr},

// Any message, and one whose number a variable holds: LRESULT handler(WPARAM, LPARAM).
#define ON_MESSAGE(message, handler) AFX_MESSAGE_ENTRY_(message, &afx::Raw<handler>)
#define ON_REGISTERED_MESSAGE(variable, handler) {0xC000, 0, 0, 0, &afx::Raw<handler>, &(variable)},

// The system's messages: the handlers of CWnd, by their names.
#define ON_WM_CREATE() AFX_MESSAGE_ENTRY_(WM_CREATE, &afx::Record<&ThisClass::OnCreate>)
#define ON_WM_DESTROY() AFX_MESSAGE_ENTRY_(WM_DESTROY, &afx::Plain<&ThisClass::OnDestroy>)
#define ON_WM_NCDESTROY() AFX_MESSAGE_ENTRY_(WM_NCDESTROY, &afx::Plain<&ThisClass::OnNcDestroy>)
#define ON_WM_CLOSE() AFX_MESSAGE_ENTRY_(WM_CLOSE, &afx::Plain<&ThisClass::OnClose>)
#define ON_WM_SIZE() AFX_MESSAGE_ENTRY_(WM_SIZE, &afx::Size<&ThisClass::OnSize>)
#define ON_WM_MOVE() AFX_MESSAGE_ENTRY_(WM_MOVE, &afx::Move<&ThisClass::OnMove>)
#define ON_WM_ACTIVATE() AFX_MESSAGE_ENTRY_(WM_ACTIVATE, &afx::Activate<&ThisClass::OnActivate>)
#define ON_WM_PAINT() AFX_MESSAGE_ENTRY_(WM_PAINT, &afx::Plain<&ThisClass::OnPaint>)
#define ON_WM_ERASEBKGND() AFX_MESSAGE_ENTRY_(WM_ERASEBKGND, &afx::Dc<&ThisClass::OnEraseBkgnd>)
#define ON_WM_SYSCOLORCHANGE()                                                                               \
    AFX_MESSAGE_ENTRY_(WM_SYSCOLORCHANGE, &afx::Plain<&ThisClass::OnSysColorChange>)
#define ON_WM_SETTINGCHANGE() AFX_MESSAGE_ENTRY_(WM_SETTINGCHANGE, &afx::Setting<&ThisClass::OnSettingChange>)
#define ON_WM_SETFOCUS() AFX_MESSAGE_ENTRY_(WM_SETFOCUS, &afx::OtherWindow<&ThisClass::OnSetFocus>)
#define ON_WM_KILLFOCUS() AFX_MESSAGE_ENTRY_(WM_KILLFOCUS, &afx::OtherWindow<&ThisClass::OnKillFocus>)
#define ON_WM_GETDLGCODE() AFX_MESSAGE_ENTRY_(WM_GETDLGCODE, &afx::Plain<&ThisClass::OnGetDlgCode>)
#define ON_WM_KEYDOWN() AFX_MESSAGE_ENTRY_(WM_KEYDOWN, &afx::Key<&ThisClass::OnKeyDown>)
#define ON_WM_CHAR() AFX_MESSAGE_ENTRY_(WM_CHAR, &afx::Key<&ThisClass::OnChar>)
#define ON_WM_SYSKEYDOWN() AFX_MESSAGE_ENTRY_(WM_SYSKEYDOWN, &afx::Key<&ThisClass::OnSysKeyDown>)
#define ON_WM_LBUTTONDOWN() AFX_MESSAGE_ENTRY_(WM_LBUTTONDOWN, &afx::Mouse<&ThisClass::OnLButtonDown>)
#define ON_WM_LBUTTONUP() AFX_MESSAGE_ENTRY_(WM_LBUTTONUP, &afx::Mouse<&ThisClass::OnLButtonUp>)
#define ON_WM_LBUTTONDBLCLK() AFX_MESSAGE_ENTRY_(WM_LBUTTONDBLCLK, &afx::Mouse<&ThisClass::OnLButtonDblClk>)
#define ON_WM_RBUTTONDOWN() AFX_MESSAGE_ENTRY_(WM_RBUTTONDOWN, &afx::Mouse<&ThisClass::OnRButtonDown>)
#define ON_WM_RBUTTONUP() AFX_MESSAGE_ENTRY_(WM_RBUTTONUP, &afx::Mouse<&ThisClass::OnRButtonUp>)
#define ON_WM_MOUSEMOVE() AFX_MESSAGE_ENTRY_(WM_MOUSEMOVE, &afx::Mouse<&ThisClass::OnMouseMove>)
#define ON_WM_MOUSEWHEEL() AFX_MESSAGE_ENTRY_(WM_MOUSEWHEEL, &afx::Wheel<&ThisClass::OnMouseWheel>)
#define ON_WM_MOUSEHWHEEL() AFX_MESSAGE_ENTRY_(WM_MOUSEHWHEEL, &afx::HWheel<&ThisClass::OnMouseHWheel>)
#define ON_WM_SETCURSOR() AFX_MESSAGE_ENTRY_(WM_SETCURSOR, &afx::Cursor<&ThisClass::OnSetCursor>)
#define ON_WM_CAPTURECHANGED()                                                                               \
    AFX_MESSAGE_ENTRY_(WM_CAPTURECHANGED, &afx::NewCapture<&ThisClass::OnCaptureChanged>)
#define ON_WM_CONTEXTMENU() AFX_MESSAGE_ENTRY_(WM_CONTEXTMENU, &afx::Context<&ThisClass::OnContextMenu>)
#define ON_WM_INITMENUPOPUP()                                                                                \
    AFX_MESSAGE_ENTRY_(WM_INITMENUPOPUP, &afx::MenuPopup<&ThisClass::OnInitMenuPopup>)
#define ON_WM_HSCROLL() AFX_MESSAGE_ENTRY_(WM_HSCROLL, &afx::Scroll<&ThisClass::OnHScroll>)
#define ON_WM_VSCROLL() AFX_MESSAGE_ENTRY_(WM_VSCROLL, &afx::Scroll<&ThisClass::OnVScroll>)
#define ON_WM_TIMER() AFX_MESSAGE_ENTRY_(WM_TIMER, &afx::Timer<&ThisClass::OnTimer>)
#define ON_WM_QUERYNEWPALETTE()                                                                              \
    AFX_MESSAGE_ENTRY_(WM_QUERYNEWPALETTE, &afx::Plain<&ThisClass::OnQueryNewPalette>)
#define ON_WM_PALETTECHANGED()                                                                               \
    AFX_MESSAGE_ENTRY_(WM_PALETTECHANGED, &afx::OtherWindow<&ThisClass::OnPaletteChanged>)
