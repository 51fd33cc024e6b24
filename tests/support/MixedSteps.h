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
        Text,
        BlockBegin,
        BlockEnd
    };

    // Single lines and parts of lines, texts of several lines, and now and then a long line or text.
    MixedStep(unsigned seed, unsigned index)
    {
        std::mt19937 random(seed * 65536 + index);
        const auto below = [&random](unsigned limit) { return static_cast<unsigned>(random() % limit); };
        log = kMixedLogs[below(3)];
        const unsigned choice = below(100);
        if (choice < 10)
            kind = choice < 5 ? Kind::BlockBegin : Kind::BlockEnd;
        const bool isLong = below(25) == 0;
        const unsigned lines = choice < 80 ? 1 : isLong ? 60 : 2 + below(40);
        const unsigned width = !isLong ? 80 : lines == 1 ? 60000 : 1000;
        text = (choice >= 95 ? "\n" : "") + std::to_string(seed) + "." + std::to_string(index) + " ";
        for (unsigned line = 0; line < lines; ++line)
            text += std::string(below(width), static_cast<char>('a' + line % 26)) + "\n";
        if (choice < 25)
            text.pop_back();
    }

    Kind kind = Kind::Text;
    std::string log;
    std::string text; // unlike that of any other step
};
