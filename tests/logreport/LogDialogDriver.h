// Drives a modal dialog.
#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <windows.h>

// Acts on a dialog as soon as it is there: it runs modally, so nobody else can.
class Driver
{
public:
    Driver(const char* title, std::function<void(HWND)> act)
    {
        s_title = title;
        s_act = std::move(act);
        m_timer = ::SetTimer(nullptr, 0, 10, &OnTimer);
    }
    ~Driver()
    {
        ::KillTimer(nullptr, m_timer);
        EXPECT_FALSE(s_act) << "no dialog " << s_title;
    }
    Driver(const Driver&) = delete;
    Driver& operator=(const Driver&) = delete;

private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD)
    {
        const HWND dialog = ::FindWindow("#32770", s_title);
        if (dialog && ::IsWindowVisible(dialog))
            if (const auto act = std::exchange(s_act, nullptr))
                act(dialog);
    }

    inline static const char* s_title;
    inline static std::function<void(HWND)> s_act;
    UINT_PTR m_timer;
};

// The size that a dialog's template gives, in dialog units.
inline std::string SizeOf(HWND dialog)
{
    RECT unit = {0, 0, 400, 800};
    ::MapDialogRect(dialog, &unit);
    RECT client = {};
    ::GetClientRect(dialog, &client);
    return std::to_string((client.right * 400 + unit.right / 2) / unit.right) + " " +
           std::to_string((client.bottom * 800 + unit.bottom / 2) / unit.bottom);
}

inline std::string TextOf(HWND dialog, int id)
{
    char text[300] = "";
    ::GetDlgItemText(dialog, id, text, sizeof(text));
    return text;
}
