// For tests that nothing is left behind.
#pragma once

#include "tests/support/GuiCounts.h"

#include <gtest/gtest.h>

// Calls `act` again and again; the test fails if that leaves drawing objects or windows. The first rounds may
// make what is kept for all.
template <typename Act> void ExpectNothingLeft(Act act, int rounds = 30)
{
    for (int round = 0; round < 3; ++round)
        act();
    const int objects = GdiObjectCount();
    const int windows = WindowCount();
    for (int round = 3; round < rounds; ++round)
        act();
    EXPECT_EQ(objects, GdiObjectCount());
    EXPECT_EQ(windows, WindowCount());
}
