// The bar at the bottom of the window.
#pragma once

#include "afxcmn.h"

#include <array>
#include <functional>
#include <string>

namespace logdesk
{

// What its panes say, from left to right, and its button, which is hidden without a text.
struct StatusTexts
{
    std::string session;
    std::string place; // in the window that has the focus
    std::string rows;
    std::string messages;
    std::string button; // at the end of that pane
    std::string follow;
    bool operator==(const StatusTexts&) const = default;
};

// The session has what the others leave, which is enough for its long text in a window of usual width.
class StatusBar : public CStatusBarCtrl
{
public:
    explicit StatusBar(std::function<void()> pressed) : m_pressed(std::move(pressed)) {}
    ~StatusBar() override;

    BOOL Create(CWnd* parent, UINT id);

    // Paints only what is another text than before.
    void SetTexts(const StatusTexts& texts);

    // After the parent's size has changed.
    void LayOut();

protected:
    afx_msg void OnButton();
    DECLARE_MESSAGE_MAP()

private:
    int GetColumnWidth();

    std::function<void()> m_pressed;
    StatusTexts m_texts;
    CWnd m_button;
};

} // namespace logdesk
