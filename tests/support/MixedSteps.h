// What a child writes and its parent expects: a step follows from its seed and its index alone.
#pragma once

#include <random>
#include <string>
#include <vector>

inline const std::vector<std::string> kMixedLogs = {"Main", "Run", "SQL"};

struct MixedStep
{
    enum class Kind
    {
        kText,
        kBlockBegin,
        kBlockEnd
    };

    // Single lines and parts of lines, texts of several lines, and now and then a long line or text.
    MixedStep(unsigned seed, unsigned index)
    {
        std::mt19937 random(seed * 65536 + index);
        const auto below = [&random](unsigned limit) { return static_cast<unsigned>(random() % limit); };
        log = kMixedLogs[below(static_cast<unsigned>(kMixedLogs.size()))];
        const unsigned choice = below(100);
        if (choice < 10)
            kind = choice < 5 ? Kind::kBlockBegin : Kind::kBlockEnd;
        text = (choice >= 95 ? "\n" : "") + std::to_string(seed) + "." + std::to_string(index) + " ";
        unsigned lines = choice < 80 ? 1 : 2 + below(40);
        unsigned width = 80;
        if (below(25) == 0)
        {
            width = choice < 80 ? 60000 : 1000;
            lines = choice < 80 ? 1 : 20 + below(40);
        }
        for (unsigned line = 0; line < lines; ++line)
            text += std::string(below(width), static_cast<char>('a' + line % 26)) + "\n";
        if (choice < 25)
            text.pop_back();
    }

    Kind kind = Kind::kText;
    std::string log;
    std::string text; // unlike that of any other step
};
