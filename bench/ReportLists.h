// The lists that the report control's benchmark compares: the control itself and the system's list and tree
// views, with the same rows of five texts.
#pragma once

#include "ReportCtrl.h"
#include "afxwin.h"

#include <array>
#include <commctrl.h>
#include <string>
#include <vector>

namespace bench
{

constexpr int kColumns = 5;

// Of all lists, in pixels.
constexpr int kWidth = 1000;
constexpr int kHeight = 740;

// The text of a cell: 27 bytes and a NUL, no two alike, in no order.
using CellText = std::array<char, 28>;
CellText MakeText(int row, int column);

// The same number of characters in the script of the column: Latin, Greek, Cyrillic, Chinese, emoji among
// Latin. They need more bytes.
std::string MakeMixedText(int row, int column);

// The parent of all lists. It answers an owner-data list view's questions with the cells' texts.
class Frame : public CWnd
{
public:
    Frame();
    ~Frame() override;

protected:
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

// A report control with five subitems, all shown.
class ReportList : public CReportCtrl
{
public:
    explicit ReportList(Frame& frame, DWORD style = 0);

    // Adds rows at the end, with the texts of their numbers; Fill while nothing is shown.
    void Append(int count);
    void Fill(int count);

    // The items by rows.
    std::vector<int> Order();
    void SetOrder(const std::vector<int>& items);
    void ResetOrder(); // by their numbers
};

// A report control whose cells are asked for.
class CallbackList : public ReportList
{
public:
    CallbackList(Frame& frame, int count);

protected:
    __int64 OnRvnItemCallbackBypass(_NMREPORTVIEW* notification) override;
};

// The system's list view in report mode, five columns.
class ListView
{
public:
    explicit ListView(Frame& frame, DWORD style = 0);
    ~ListView();
    ListView(const ListView&) = delete;
    ListView& operator=(const ListView&) = delete;

    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    HWND Window() const { return m_hwnd; }
    int Count() const { return static_cast<int>(Send(LVM_GETITEMCOUNT)); }

    void SetRedraw(BOOL redraw) const { Send(WM_SETREDRAW, static_cast<WPARAM>(redraw)); }

    // As a ReportList's.
    void Append(int count);
    void Fill(int count);

    // Adds rows without texts to an empty list; their parameters are their numbers.
    void FillWithNumbers(int count);

    void SetText(int row, int column, const CellText& text);
    void GetText(int row, int column, CellText& text) const;

private:
    HWND m_hwnd;
};

} // namespace bench
