#include "zemacore/File.h"

#include "zemacore/FileCalls.h"

#include <algorithm>
#include <cassert>
#include <cstddef>

namespace
{

// Collects a path of at most MAX_PATH - 1 characters. Parts may come from the caller's own buffer,
// so the path is composed here and copied out at the end.
class PathBuffer
{
public:
    void Add(char character)
    {
        if (m_length + 1 < MAX_PATH)
            m_text[m_length++] = character;
        else
            m_fits = false;
    }

    // A part that is too long is read no further than the buffer reaches.
    void Add(const char* part)
    {
        for (; part && *part && m_fits; ++part)
            Add(*part);
    }

    bool CopyTo(char* path) const
    {
        *path = '\0';
        if (!m_fits)
            return false;

        *std::copy_n(m_text, m_length, path) = '\0';
        return true;
    }

    std::size_t Length() const { return m_length; }

    char Last() const { return m_length == 0 ? '\0' : m_text[m_length - 1]; }

private:
    char m_text[MAX_PATH];
    std::size_t m_length = 0;
    bool m_fits = true;
};

} // namespace

HANDLE ZEMA_CreateFile(const char* path, DWORD access, DWORD share, [[maybe_unused]] const void* security,
                       DWORD disposition, DWORD flags, [[maybe_unused]] HANDLE templateFile)
{
    assert(!security && !templateFile);
    if (!path || !*path)
        return nullptr;

    return ZEMA::FileCalls().Create(path, access, share, disposition, flags);
}

bool ZEMA_DeleteFile(const char* path)
{
    return path && *path && ZEMA::FileCalls().Delete(path);
}

bool ZEMA_makepath(char* path, const char* drive, const char* directory, const char* name,
                   const char* extension)
{
    if (!path)
        return false;

    PathBuffer buffer;
    buffer.Add(drive);
    if (buffer.Length() > 0 && buffer.Last() != ':')
        buffer.Add(':');

    const std::size_t directoryStart = buffer.Length();
    buffer.Add(directory);
    if (buffer.Length() > directoryStart && buffer.Last() != '\\' && buffer.Last() != '/')
        buffer.Add('\\');

    buffer.Add(name);
    if (extension && *extension && *extension != '.')
        buffer.Add('.');
    buffer.Add(extension);

    return buffer.CopyTo(path);
}
