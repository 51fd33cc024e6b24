// What libFuzzer calls; each fuzzer is built with its own target.
#include "tests/fuzz/Fuzz.h"

#include <gtest/gtest.h>

// What helpers of tests expect ends the process too.
extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    GTEST_FLAG_SET(break_on_failure, true);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::QM_FUZZ_TARGET({reinterpret_cast<const char*>(data), size});
    return 0;
}
