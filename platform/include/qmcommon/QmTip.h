// The tip of a window.
#pragma once

#include "zemacore/ZemaApi.h"

#include <windows.h>

// What is shown while the mouse rests on one window. Goes with that window, or with this object.
class QMPLATFORM_API CQmTip
{
public:
    CQmTip() = default;
    ~CQmTip();
    CQmTip(const CQmTip&) = delete;
    CQmTip& operator=(const CQmTip&) = delete;

    // `text` is of any language; null or empty for no tip. "&" is an ordinary character if `width` is given:
    // then lines are ended by CR LF, and broken where they are wider than so many pixels.
    void Show(HWND window, const char* text, int width = 0);

private:
    HWND m_window = nullptr;
    HWND m_tip = nullptr;
};
