// The long version of tests, which `./test.sh --long` runs: how much they do, their seeds, and what they did.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>
#include <string>

inline bool IsLongRun()
{
    return std::getenv("QM_TEST_LONG") != nullptr;
}

// How often to do it.
template <typename Count> Count Rounds(Count shortRun, Count longRun)
{
    return IsLongRun() ? longRun : shortRun;
}

// What a test that draws random numbers begins with: QM_TEST_SEED if it is set; else `fixed` in the short
// run, where each machine is to see the same, and a new one in the long run, which tells it at once: a crash
// could not. Round by round, a test counts it up, and traces SeedText of each round.
inline unsigned FirstSeed(unsigned fixed = 1)
{
    if (const char* const given = std::getenv("QM_TEST_SEED"))
        return static_cast<unsigned>(std::strtoul(given, nullptr, 10));
    if (!IsLongRun())
        return fixed;
    const unsigned seed = std::random_device()() % 1'000'000;
    std::printf("seed: QM_TEST_SEED=%u\n", seed);
    std::fflush(stdout);
    return seed;
}

// For SCOPED_TRACE: a run that is given this seed begins with the round that failed.
inline std::string SeedText(unsigned seed)
{
    return "QM_TEST_SEED=" + std::to_string(seed) + " repeats it";
}

// Something that the test has done or measured, as ("kills", 500). `./test.sh --long` prints it at its end.
inline void Figure(const char* what, long long value)
{
    const testing::TestInfo* const test = testing::UnitTest::GetInstance()->current_test_info();
    std::printf("figure: %s.%s: %lld %s\n", test->test_suite_name(), test->name(), value, what);
    std::fflush(stdout);
}
