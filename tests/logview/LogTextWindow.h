// A log text window in its browser, over a session of its own.
#pragma once

#include "QmLogBrowser.h"
#include "QmLogReader.h"
#include "QmLogWriter.h"
#include "tests/support/Keys.h"
#include "tests/support/LogFolder.h"

#include <set>

constexpr UINT_PTR kLogRefreshTimer = 9504;

// A frame for log windows. Afterwards all logs are closed.
class LogFrameTest : public LogFolderTest
{
protected:
    LogFrameTest(int width, int height)
    {
        frame.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, 0, 0, width, height, nullptr,
                       nullptr);
    }

    ~LogFrameTest() override
    {
        frame.DestroyWindow();
        for (int file = 0; file < CQmLogTextCtrl::GetFilePathCount(); ++file)
            QmLogReaderDefine(CQmLogTextCtrl::GetFilePath(file)).Close();
        QmLogWriterCloseAll();
    }

    CWnd frame;
};

class LogTextWindowTest : public LogFrameTest
{
protected:
    LogTextWindowTest() : LogFrameTest(600, 400) {}
    ~LogTextWindowTest() override { frame.DestroyWindow(); }

    void Open(bool start = true)
    {
        browser.GetTextCtrl().SetStartSession(start);
        ASSERT_TRUE(browser.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 600, 400), &frame, 7));
        text.SetFocus();
    }

    // A session with an error and unfoldable rows, shown from its first row.
    void OpenSample()
    {
        Open();
        text.SetFollow(false);
        text.WriteTest();
        Tick();
        text.Focus(0, 0, false);
    }

    void Tick() { text.SendMessage(WM_TIMER, kLogRefreshTimer); }

    // As the message loop does with a pressed key, `modifier` held.
    void Press(UINT key, int modifier = 0)
    {
        const HeldKey held(modifier);
        MSG message = KeyMessage(text, key, modifier);
        if (!CWnd::WalkPreTranslateTree(frame.GetSafeHwnd(), &message))
            ::DispatchMessage(&message);
    }

    // From the row's top and the unscrolled left edge.
    CPoint PointIn(int row, int x, int dy)
    {
        return CPoint(x, (row - text.GetTopRow()) * text.GetRowHeight() + dy);
    }

    void Click(UINT message, CPoint point)
    {
        text.SendMessage(message, MK_LBUTTON, MAKELPARAM(point.x, point.y));
        text.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(point.x, point.y));
    }

    // The first row from `row` on that is folded.
    int FoldedRow(int row = 0)
    {
        bool expanded = false;
        while (row < text.GetRowCount() && (!text.GetExpanded(row, expanded) || expanded))
            ++row;
        return row;
    }

    CQmLogRow Style(int row)
    {
        unsigned long fileRow = 0;
        CQmLogRow record;
        text.DefineReader(row, fileRow).ReadStyle(fileRow, record);
        return record;
    }

    // The colours painted in a row, from pixel `left` up to `right`.
    std::set<COLORREF> Colors(int row, int left, int right)
    {
        text.UpdateWindow();
        CClientDC dc(&text);
        std::set<COLORREF> colors;
        const CPoint top = PointIn(row, 0, 0);
        for (int x = left; x < right; ++x)
            for (int y = 0; y < text.GetRowHeight(); ++y)
                colors.insert(dc.GetPixel(x, static_cast<int>(top.y) + y));
        return colors;
    }

    CQmLogBrowser browser;
    CQmLogTextCtrl& text = browser.GetTextCtrl();
};
