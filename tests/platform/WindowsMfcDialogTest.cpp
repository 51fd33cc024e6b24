// Dialogs, the application's loop, arrays and drawing objects.
#include "afxcontrolbarutil.h"
#include "afxtempl.h"
#include "afxwin.h"
#include "tests/support/NothingLeft.h"
#include "tests/support/WindowApp.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace
{
constexpr int kName = 20;

// A dialog template with an edit control.
class Template
{
public:
    Template()
    {
        Add(DLGTEMPLATE{WS_POPUP | WS_CAPTION, 0, 1, 0, 0, 100, 100});
        m_words.insert(m_words.end(), {0, 0, 0}); // menu, class, title
        if (m_words.size() % 2 != 0)
            m_words.push_back(0);
        Add(DLGITEMTEMPLATE{WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 0, 50, 12, kName});
        m_words.insert(m_words.end(), {0xFFFF, 0x0081, 0, 0});
    }
    LPCDLGTEMPLATE Get() const { return reinterpret_cast<LPCDLGTEMPLATE>(m_words.data()); }

private:
    template <typename Record> void Add(const Record& record)
    {
        const std::size_t old = m_words.size();
        m_words.resize(old + sizeof(Record) / sizeof(WORD));
        std::copy_n(reinterpret_cast<const char*>(&record), sizeof(Record),
                    reinterpret_cast<char*>(&m_words[old]));
    }
    std::vector<WORD> m_words;
};

class NameDialog : public CDialog
{
public:
    CString name;
    enum
    {
        kUsed,
        kEndsAtOnce,
        kFails
    } way = kUsed;

protected:
    BOOL OnInitDialog() override
    {
        PostMessage(way == kFails ? WM_CLOSE : WM_APP);
        CDialog::OnInitDialog();
        if (way == kEndsAtOnce)
            EndDialog(9);
        if (way == kFails)
            AfxThrowResourceException();
        return TRUE;
    }
    void OnOK() override
    {
        GetDlgItem(kName)->GetWindowText(name);
        CDialog::OnOK();
    }
    // What a user would do, while the dialog runs.
    LRESULT OnUse(WPARAM, LPARAM)
    {
        SetDlgItemText(kName, "typed");
        ::PostMessage(*GetDlgItem(kName), WM_KEYDOWN, VK_RETURN, 1); // IsDialogMessage makes IDOK of it
        return 0;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(NameDialog, CDialog)
    ON_MESSAGE(WM_APP, &ThisClass::OnUse)
END_MESSAGE_MAP()

TEST(MfcDialog, RunsModallyUntilItIsEnded)
{
    const int windows = WindowCount();
    CWnd owner;
    CWnd other; // would like to be the active one, too
    for (CWnd* const wnd : {&owner, &other})
        ASSERT_TRUE(wnd->CreateEx(0, nullptr, "", WS_POPUP | WS_VISIBLE, CRect(0, 0, 9, 9), nullptr, 0));
    ::SetActiveWindow(owner);
    const Template edit;
    NameDialog dialog;
    ASSERT_TRUE(dialog.InitModalIndirect(edit.Get(), &owner));
    EXPECT_EQ(IDOK, dialog.DoModal());
    EXPECT_EQ(CString("typed"), dialog.name);
    EXPECT_TRUE(owner.IsWindowEnabled());
    EXPECT_EQ(owner.m_hWnd, ::GetActiveWindow());

    dialog.way = NameDialog::kEndsAtOnce;
    EXPECT_EQ(9, dialog.DoModal());
    const SilentApp app;
    dialog.way = NameDialog::kFails;
    EXPECT_EQ(IDCANCEL, dialog.DoModal()) << "an exception ends the initialisation only";
    EXPECT_EQ(-1, CDialog(4711).DoModal()); // no such template
    owner.DestroyWindow();
    other.DestroyWindow();
    EXPECT_EQ(windows, WindowCount());
}

class TestApp : public CWinApp
{
public:
    BOOL InitInstance() override
    {
        m_pMainWnd = &m_wnd;
        m_wnd.CreateEx(0, nullptr, "", WS_POPUP, CRect(), nullptr, 0);
        return m_wnd.PostMessage(WM_CLOSE);
    }
    BOOL OnIdle(LONG count) override
    {
        idle = true;
        return CWinApp::OnIdle(count);
    }
    bool idle = false;

private:
    CWnd m_wnd;
};

TEST(MfcApp, RunsUntilTheMainWindowEnds)
{
    TestApp app;
    EXPECT_EQ(0, AfxWinMain(AfxGetInstanceHandle(), nullptr, nullptr, SW_HIDE));
    EXPECT_EQ(nullptr, AfxGetMainWnd());
}

TEST(MfcArray, AnIndexOutsideRaisesTheInvalidArgumentException)
{
    CArray<int, int> array;
    for (const int value : {10, 11, 12})
        array.Add(value);
    const auto raises = [](auto operation) {
        try
        {
            operation();
            return false;
        }
        catch (CInvalidArgException* exception)
        {
            exception->Delete();
            return true;
        }
    };
    for (const INT_PTR index : {INT_PTR{-1}, INT_PTR{3}})
    {
        EXPECT_TRUE(raises([&] { array.GetAt(index); }));
        EXPECT_TRUE(raises([&] { array.SetAt(index, 1); }));
        EXPECT_TRUE(raises([&] { array[index] = 1; }));
        EXPECT_TRUE(raises([&] { array.RemoveAt(index); }));
    }
    EXPECT_TRUE(raises([&] { array.RemoveAt(1, 3); }));
    EXPECT_TRUE(raises([&] { array.SetSize(-1); }));
    EXPECT_THROW(array.SetSize(INT64_MAX / 8), CMemoryException*);

    array.RemoveAt(0);
    EXPECT_EQ((std::vector{11, 12}), std::vector<int>(array.GetData(), array.GetData() + array.GetSize()));
}

// A device context on a picture in memory.
class Canvas
{
public:
    Canvas()
    {
        CClientDC screen(nullptr);
        m_bitmap.CreateCompatibleBitmap(&screen, 20, 10);
        dc.CreateCompatibleDC(&screen);
        dc.SelectObject(&m_bitmap);
    }

private:
    CBitmap m_bitmap; // goes after the context into which it is selected

public:
    CDC dc;
};

TEST(MfcDrawing, ObjectsAreReleasedAndFoundByTheirHandles)
{
    const auto use = [] {
        Canvas canvas;
        CPen pen(PS_SOLID, 1, RGB(1, 0, 0));
        CBrush brush(RGB(0, 1, 0));
        class NamedFont : public CFont
        {
        } font;
        LOGFONT logFont = {};
        EXPECT_TRUE(font.CreateFontIndirect(&logFont));
        CPen* const oldPen = canvas.dc.SelectObject(&pen);
        CFont* const oldFont = canvas.dc.SelectObject(&font);
        EXPECT_EQ(&pen, canvas.dc.SelectObject(oldPen));
        EXPECT_EQ(&font, canvas.dc.SelectObject(oldFont));
        EXPECT_EQ(&canvas.dc, CDC::FromHandle(canvas.dc));
        CMemDC memory(canvas.dc, CRect(0, 0, 5, 5));
        CMenu menu;
        EXPECT_TRUE(menu.CreatePopupMenu() && menu.AppendMenu(MF_STRING, 1, "x"));
    };
    ExpectNothingLeft([&] {
        use();
        CGdiObject::DeleteTempMap(); // owns nothing: the system's pen and font stay
        CDC::DeleteTempMap();
    });
    EXPECT_GT(GdiObjectCount(), 0);
}

// The picture moves over the canvas in bands of any size, and nothing is painted outside a band.
TEST(MfcDrawing, MemoryPictureMovesOnInBands)
{
    Canvas canvas;
    const CRect all(0, 0, 20, 10);
    canvas.dc.FillSolidRect(all, RGB(9, 9, 9));
    const CRect bands[] = {CRect(2, 1, 6, 3), CRect(2, 3, 20, 9), CRect(0, 9, 5, 10)};
    {
        CMemDC memory(canvas.dc, bands[0]);
        for (const CRect& band : bands)
        {
            if (band != bands[0])
                memory.MoveTo(band);
            memory.GetDC().FillSolidRect(all, RGB(band.top, 0, 0));
        }
    }
    for (int y = 0; y < all.bottom; ++y)
        for (int x = 0; x < all.right; ++x)
        {
            COLORREF expected = RGB(9, 9, 9);
            for (const CRect& band : bands)
                if (band.PtInRect(CPoint(x, y)))
                    expected = RGB(band.top, 0, 0);
            ASSERT_EQ(expected, ::GetPixel(canvas.dc, x, y)) << x << " " << y;
        }
}

// A thread's picture is used again, but nothing that was selected or set. One within another is its own.
TEST(MfcDrawing, MemoryPictureBeginsAfreshEachTime)
{
    Canvas canvas;
    for (const CRect& band : {CRect(0, 0, 4, 4), CRect(0, 0, 18, 9), CRect(1, 2, 3, 4), CRect(0, 0, 20, 10)})
    {
        CMemDC memory(canvas.dc, CRect(0, 0, 2, 2));
        CMemDC inner(canvas.dc, CRect(5, 5, 6, 6));
        memory.MoveTo(band);
        CDC& dc = memory.GetDC();
        EXPECT_NE(static_cast<HDC>(dc), static_cast<HDC>(inner.GetDC()));
        EXPECT_EQ(::GetStockObject(BLACK_PEN), ::GetCurrentObject(dc, OBJ_PEN));
        EXPECT_EQ(COLORREF{0}, dc.GetTextColor());
        CRect clip;
        dc.GetClipBox(&clip);
        EXPECT_EQ(band, clip);
        ::SelectObject(dc, ::GetStockObject(WHITE_PEN));
        dc.SetTextColor(RGB(1, 2, 3));
        dc.IntersectClipRect(CRect(1, 1, 2, 2));
        dc.SetViewportOrg(7, 7);
    }
}
} // namespace
