#include "logdesk/ToldLines.h"

#include <sstream>

namespace logdesk
{

void ToldLines::Add(const std::string& text, unsigned now, unsigned ticks)
{
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
    {
        if (line.empty())
            continue;
        std::erase_if(m_lines, [&](const Line& told) { return told.text == line; });
        m_lines.push_back({line, now + ticks});
    }
    if (m_lines.size() > kMost)
        m_lines.erase(m_lines.begin(), m_lines.end() - kMost);
}

std::vector<std::string> ToldLines::Lines(unsigned now)
{
    std::erase_if(m_lines, [now](const Line& line) { return line.end <= now; });
    std::vector<std::string> lines;
    for (const Line& line : m_lines)
        lines.push_back(line.text);
    return lines;
}

} // namespace logdesk
