// Why a text was refused.
#pragma once

#include <string>
#include <windows.h>

namespace report
{

// A tool tip of the system below the editor. Made when it is first shown; goes with the window that it is
// shown for.
class ReasonTip
{
public:
    ReasonTip() = default;
    ~ReasonTip() { Hide(); }
    ReasonTip(const ReasonTip&) = delete;
    ReasonTip& operator=(const ReasonTip&) = delete;

    // An empty text makes a sound instead.
    void Show(HWND editor, const std::string& text);
    void Hide();

private:
    HWND m_hwnd = nullptr;
};

} // namespace report
