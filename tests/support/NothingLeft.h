// For tests that nothing is left behind.
#pragma once

#include "tests/support/GuiCounts.h"

#include <cstdlib>
#include <gtest/gtest.h>

// How often to open what is opened again and again in days of work.
inline int LongRounds()
{
    return std::getenv("QM_TEST_LONG") ? 1000 : 20;
}

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
