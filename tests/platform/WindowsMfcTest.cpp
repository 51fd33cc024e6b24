#include "afxcmn.h"
#include "afxcontrolbarutil.h"
#include "afxtempl.h"

#include <gtest/gtest.h>

TEST(Mfc, Compiles)
{
    CWnd wnd;
    EXPECT_TRUE(wnd.CreateEx(0, nullptr, "x", WS_POPUP, CRect(0, 0, 10, 10), nullptr, 0));
}
