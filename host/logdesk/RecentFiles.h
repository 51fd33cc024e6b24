// The files, or sessions, that were opened last.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace logdesk
{

// Most recent first, each once: paths that differ in case only are one.
class RecentFiles
{
public:
    static constexpr std::size_t kMost = 10;

    RecentFiles() = default;
    // Empty paths and those after the tenth are left out.
    explicit RecentFiles(const std::vector<std::string>& paths);

    const std::vector<std::string>& Paths() const { return m_paths; }
    void Add(const std::string& path);
    void Remove(const std::string& path);

private:
    std::vector<std::string> m_paths;
};

// The menu's text for the file at `index`, "&1 C:\app.log" for 0, whose access keys go up to "1&0". A path
// that is too long for a menu loses its middle.
std::string RecentCaption(std::size_t index, const std::string& path);

// The same without an access key.
std::string RecentSessionCaption(const std::string& path);

} // namespace logdesk
