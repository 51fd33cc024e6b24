// What the program tells the user for a while.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace logdesk
{

// Ticks of a window's timer, four a second.
constexpr unsigned kServiceTicks = 240; // for what a service tells: a minute
constexpr unsigned kTellTicks = 32;     // for an answer to a command

// Lines leave when their time is over or newer ones need their room. Time is counted in ticks.
class ToldLines
{
public:
    static constexpr std::size_t kMost = 3;

    // Adds each line of `text`; one that is there already begins its time again.
    void Add(const std::string& text, unsigned now, unsigned ticks);
    void Clear() { m_lines.clear(); }

    // The oldest first.
    std::vector<std::string> Lines(unsigned now);

private:
    struct Line
    {
        std::string text;
        unsigned end;
    };
    std::vector<Line> m_lines;
};

} // namespace logdesk
