// Memory that runs out at a chosen allocation.
#pragma once

#include <cstdlib>
#include <new>
#include <string>

#include <gtest/gtest.h>

inline thread_local int g_allocationsLeft = -1; // of this thread; below 0: any number

// While it lives, all allocations after so many fail.
class FailingMemory
{
public:
    explicit FailingMemory(int allocations) { g_allocationsLeft = allocations; }
    ~FailingMemory() { g_allocationsLeft = -1; }
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;
};

// Lets memory run out at each allocation of `act` in turn, until it answers true. As long as it answers
// false, what `state` tells has to stay. `make` gives the object that both get.
template <typename Make, typename Act, typename State>
void ExpectAllOrNothing(Make make, Act act, State state)
{
    bool done = false;
    for (int allocations = 0; !done && allocations < 1000; ++allocations)
    {
        const auto object = make();
        const std::string before = state(*object);
        {
            const FailingMemory failing(allocations);
            done = act(*object);
        }
        if (!done)
            ASSERT_EQ(before, state(*object)) << "after " << allocations << " allocations";
    }
    EXPECT_TRUE(done);
}
