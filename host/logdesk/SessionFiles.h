// Starting a session where there may be one: whose it is, and keeping it before it is deleted.
#pragma once

#include <string>

namespace logdesk
{

// Copies the session's files from `folder`, which ends with a backslash, into a folder of its own below it
// and deletes kept sessions beyond the newest `keep`. Without a session there is nothing to do, nor while
// another process is writing it: then no new one starts. Throws std::runtime_error, telling what could not be
// copied; nothing was deleted then.
void KeepSession(const std::string& folder, int keep);

// The claim of this process to the session in a folder, until it ends.
class FolderClaim
{
public:
    explicit FolderClaim(const std::string& folder);
    ~FolderClaim();
    FolderClaim(const FolderClaim&) = delete;
    FolderClaim& operator=(const FolderClaim&) = delete;

    // False when another LogDesk had it first.
    bool IsFirst() const { return m_isFirst; }

private:
    void* m_mutex;
    bool m_isFirst;
};

} // namespace logdesk
