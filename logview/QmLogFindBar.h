// The bar at the bottom edge of a log text window in which the user enters what to find in all logs.
#pragma once

#include "afxwin.h"
#include "logview/find/FindText.h"
#include "qmcommon/QmButtonXP.h"
#include "qmcommon/QmTip.h"

#include <array>
#include <string>
#include <vector>

class CQmLogFinder;

// A child dialog of the text window. Enter finds the next match, Shift+Enter the previous one, F3 and
// Shift+F3 likewise; Esc ends a search in progress, and else closes the bar.
class CQmLogFindBar : public CDialog
{
public:
    explicit CQmLogFindBar(CQmLogFinder& finder) : m_finder(finder) {}
    ~CQmLogFindBar() override;

    // Makes the window when there is none, and shows it. False when that fails.
    bool Open(CWnd& text);

    // With a text, puts it into the field.
    void TakeFocus(const std::string& text);
    void SetText(const std::string& text);

    // Pixels: the state comes into a second line where the first has no room for it.
    int GetHeight(int width) const;

    void ShowState(const std::string& state);

    BOOL PreTranslateMessage(MSG* message) override;

protected:
    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    afx_msg void OnSize(UINT type, int width, int height);
    afx_msg LRESULT OnCtlColor(WPARAM dc, LPARAM control);
    DECLARE_MESSAGE_MAP()

private:
    void FillHistory();
    void Change(int entry = -1);
    std::string TextOf(int entry);

    CQmLogFinder& m_finder;
    std::array<CQmButtonXP, 2> m_buttons;
    std::array<CQmTip, 5> m_tips;
    CQmTip m_stateTip;
    std::string m_state;
    int m_lineHeight = 0;
    int m_stateLeft = 0;
    int m_stateHeight = 0;
    bool m_isFilling = false;
};
