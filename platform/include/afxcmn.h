// The common controls.
#pragma once

#include "afxwin.h"

#include <commctrl.h>

// A status bar at the bottom of its parent, in one or several panes counted from 0.
class QMPLATFORM_API CStatusBarCtrl : public CWnd
{
public:
    using CWnd::Create;
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    // `rights` are the panes' right edges in client pixels; -1 reaches to the window's.
    BOOL SetParts(int count, int* rights)
    {
        return static_cast<BOOL>(
            SendMessage(SB_SETPARTS, static_cast<WPARAM>(count), reinterpret_cast<LPARAM>(rights)));
    }

    // `type` is 0 or one of the SBT flags.
    BOOL SetText(LPCSTR text, int pane, int type)
    {
        return static_cast<BOOL>(
            SendMessage(SB_SETTEXTA, static_cast<WPARAM>(pane | type), reinterpret_cast<LPARAM>(text)));
    }
};

// Column headers. Items are counted by index, in the order of their insertion; `order` is the place where an
// item is shown, from the left. BOOL operations answer FALSE when there is no such item.
class QMPLATFORM_API CHeaderCtrl : public CWnd
{
public:
    using CWnd::Create;
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    int GetItemCount() const { return static_cast<int>(Send(HDM_GETITEMCOUNT)); }

    // Inserts before `index`, at the end when there are fewer items; the new item's index, -1 on failure.
    int InsertItem(int index, HDITEM* item) { return static_cast<int>(Send(HDM_INSERTITEMA, index, item)); }
    BOOL DeleteItem(int index) { return static_cast<BOOL>(Send(HDM_DELETEITEM, index)); }

    // `mask` of the item says what is read or changed.
    BOOL GetItem(int index, HDITEM* item) const { return static_cast<BOOL>(Send(HDM_GETITEMA, index, item)); }
    BOOL SetItem(int index, HDITEM* item) { return static_cast<BOOL>(Send(HDM_SETITEMA, index, item)); }

    // Takes the header's place out of the rectangle that `layout` points to, and says in its WINDOWPOS where
    // the header belongs.
    BOOL Layout(HDLAYOUT* layout) { return static_cast<BOOL>(Send(HDM_LAYOUT, 0, layout)); }

    int OrderToIndex(int order) const { return static_cast<int>(Send(HDM_ORDERTOINDEX, order)); }

    // Indexes from left to right. `count` is that of the items, which -1 stands for.
    BOOL GetOrderArray(LPINT indexes, int count = -1) const
    {
        return static_cast<BOOL>(Send(HDM_GETORDERARRAY, count < 0 ? GetItemCount() : count, indexes));
    }
    BOOL SetOrderArray(int count, LPINT indexes)
    {
        return static_cast<BOOL>(Send(HDM_SETORDERARRAY, count, indexes));
    }

    // In the header's client coordinates.
    BOOL GetItemRect(int index, LPRECT rect) const
    {
        return static_cast<BOOL>(Send(HDM_GETITEMRECT, index, rect));
    }

    // The index of the item at the record's point, which also learns what lies there (HHT flags); -1 for
    // none.
    int HitTest(LPHDHITTESTINFO info) const { return static_cast<int>(Send(HDM_HITTEST, 0, info)); }

private:
    LRESULT Send(UINT message, int number = 0, void* record = nullptr) const
    {
        return ::SendMessage(m_hWnd, message, static_cast<WPARAM>(number), reinterpret_cast<LPARAM>(record));
    }
};

// Owns a list of images of one size: it is deleted with this object unless detached.
class QMPLATFORM_API CImageList : public CObject
{
public:
    CImageList() = default;
    ~CImageList() override;

    // Room for `initial` images of `cx` by `cy` pixels, grown by `grow`; `flags` are ILC flags.
    BOOL Create(int cx, int cy, UINT flags, int initial, int grow);

    // Takes `list` over; FALSE when it is null. Detach gives it up without deleting it.
    BOOL Attach(HIMAGELIST list);
    HIMAGELIST Detach();
    BOOL DeleteImageList();

    // Null for a null handle; else the object that owns it, or a temporary one, good until the thread is
    // idle.
    static CImageList* FromHandle(HIMAGELIST list);
    static void DeleteTempMap();

    HIMAGELIST GetSafeHandle() const { return m_hImageList; }
    int GetImageCount() const;

    // Copies the images that lie side by side in `image`; the number of the first, -1 on failure. What is
    // transparent is white in `mask`, or has the colour `transparent`; that colour in `image` turns black.
    int Add(CBitmap* image, CBitmap* mask);
    int Add(CBitmap* image, COLORREF transparent);

    // Copies an icon; its number, -1 on failure.
    int Add(HICON icon);

    // `drawing` says which image, where and how; the list is this one.
    BOOL DrawIndirect(IMAGELISTDRAWPARAMS* drawing);

    HIMAGELIST m_hImageList = nullptr;
};
