// For tests that nothing is left behind.
#pragma once

#include "afxwin.h"
#include "tests/support/GuiCounts.h"
#include "tests/support/LongRun.h"

#include <algorithm>
#include <gtest/gtest.h>

// How often to open what is opened again and again in days of work.
inline int LeakRounds()
{
    return Rounds(20, 300);
}

// As the framework does when it is idle.
inline void DeleteTempMaps()
{
    CWnd::DeleteTempMap();
    CDC::DeleteTempMap();
    CGdiObject::DeleteTempMap();
    CMenu::DeleteTempMap();
}

// Calls `act` again and again; the test fails if that leaves drawing objects, windows or blocks of memory.
// The first rounds may make what is kept for all.
template <typename Act> void ExpectNothingLeft(Act act, int rounds = 30)
{
    const auto run = [&act](int times) {
        for (int round = 0; round < times; ++round)
            act();
        DeleteTempMaps();
    };
    run(3);
    const int objects = GdiObjectCount();
    const int windows = WindowCount();
    const int blocks = HeapBlockCount();
    run(rounds - 3);
    EXPECT_EQ(objects, GdiObjectCount());
    EXPECT_EQ(windows, WindowCount());
    EXPECT_LT(HeapBlockCount() - blocks, std::max(10, rounds / 4)) << "blocks of memory, of " << blocks;
}
