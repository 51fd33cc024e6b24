#include "logdesk/RecentFiles.h"

#include <algorithm>

namespace logdesk
{

namespace
{

constexpr std::size_t kLongestPath = 80; // bytes in a menu
constexpr std::size_t kBeginning = 20;   // of these, before what is left out

char Lower(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 'a' - 'A') : letter;
}

bool IsSamePath(const std::string& left, const std::string& right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return Lower(a) == Lower(b); });
}

// Neither part begins or ends within a character.
std::string WithoutMiddle(const std::string& path)
{
    if (path.size() <= kLongestPath)
        return path;
    const auto isInside = [&](std::size_t at) {
        return (static_cast<unsigned char>(path[at]) & 0xC0) == 0x80;
    };
    std::size_t begin = kBeginning;
    while (begin > 0 && isInside(begin))
        --begin;
    std::size_t end = path.size() - (kLongestPath - kBeginning);
    while (end < path.size() && isInside(end))
        ++end;
    return path.substr(0, begin) + "..." + path.substr(end);
}

} // namespace

RecentFiles::RecentFiles(const std::vector<std::string>& paths)
{
    std::for_each(paths.rbegin(), paths.rend(), [this](const std::string& path) { Add(path); });
}

void RecentFiles::Add(const std::string& path)
{
    if (path.empty())
        return;
    Remove(path);
    m_paths.insert(m_paths.begin(), path);
    if (m_paths.size() > kMost)
        m_paths.resize(kMost);
}

void RecentFiles::Remove(const std::string& path)
{
    std::erase_if(m_paths, [&](const std::string& known) { return IsSamePath(known, path); });
}

std::string RecentCaption(std::size_t index, const std::string& path)
{
    const std::string number = index < 9 ? "&" + std::to_string(index + 1) : "1&0";
    return number + " " + RecentSessionCaption(path);
}

std::string RecentSessionCaption(const std::string& path)
{
    std::string caption;
    for (const char letter : WithoutMiddle(path))
        caption += letter == '&' ? std::string("&&") : std::string(1, letter);
    return caption;
}

} // namespace logdesk
