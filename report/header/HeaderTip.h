// The tip over a header item.
#pragma once

#include <string>
#include <windows.h>

// A tool tip of the system, made when the first item has one. Its owner is the header's top-level window.
class HeaderTip
{
public:
    HeaderTip() = default;
    ~HeaderTip() { End(); }
    HeaderTip(const HeaderTip&) = delete;
    HeaderTip& operator=(const HeaderTip&) = delete;

    // What the mouse does over an item; `message` is the header's, and so is `rect`. No tip for an empty
    // text.
    void Follow(const MSG& message, int headerItem, const RECT& rect, const std::string& text);

    void Hide();
    void End();

private:
    HWND m_hwnd = nullptr;
    HWND m_header = nullptr;
    int m_headerItem = -1; // that has the tip
    std::string m_text;
    RECT m_rect = {};
};
