// The file of a table: read as a whole, and replaced as a whole when it is saved.
#pragma once

#include <windows.h>

#include <string>

class TableFile
{
public:
    explicit TableFile(const std::string& path) : m_path(path) {}
    const std::string& Path() const { return m_path; }
    std::string Name() const { return m_path.substr(m_path.find_last_of("\\/:") + 1); }

    // Both throw std::runtime_error with the path and the reason. Saving writes a new file beside the old
    // one, which then takes its place: if it fails, the old one is as it was.
    std::string Read();
    void Save(const std::string& bytes);

    // Returns whether the file holds something else than what was last read or saved. A file that is gone
    // counts as unchanged: saving makes it again.
    bool HasChanged();

    // The same, but quick if nobody has written the file since the last look at it, and false then.
    bool HasChangedSinceLook();

private:
    struct Stamp
    {
        DWORD sizeHigh, sizeLow, timeHigh, timeLow;
        bool operator==(const Stamp&) const = default;
    };
    Stamp GetStamp() const;
    void Remember(const std::string& bytes);

    std::string m_path;
    std::size_t m_hash = 0; // of the contents
    Stamp m_seen = {};
};
