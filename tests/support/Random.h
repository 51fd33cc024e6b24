// Random numbers, the same ones in each run.
#pragma once

#include <random>

class Random
{
public:
    explicit Random(unsigned seed) : engine(seed) {}

    // A number from 0 up to below the limit.
    template <typename Limit> int operator()(Limit limit)
    {
        return static_cast<int>(engine() % static_cast<unsigned>(limit));
    }

    std::mt19937 engine;
};
