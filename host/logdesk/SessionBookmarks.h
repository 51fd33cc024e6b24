// The bookmarks of the session in the log folder.
#pragma once

#include "logdesk/Bookmarks.h"

namespace logdesk
{

// Kept in the profile and not in the session's folder. Windows of the same session share them, each as it was
// when it looked last: at first, and at each change.
class SessionBookmarks
{
public:
    // Without `remember` the profile is left alone.
    void Load(const std::string& folder, bool remember);

    const Bookmarks& Get() const { return m_entry.bookmarks; }

    // False if there are too many.
    bool Toggle(std::uint32_t number);

    // Forgets them when another session has begun in the folder; true if so.
    bool ForgetOld();

private:
    void Read();

    bool m_remember = false;
    BookmarkStore::Entry m_entry;
};

} // namespace logdesk
