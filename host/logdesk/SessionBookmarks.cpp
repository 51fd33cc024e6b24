#include "logdesk/SessionBookmarks.h"

#include "QmLogReader.h"
#include "QmLogTextCtrl.h"
#include "logdesk/Profile.h"

namespace logdesk
{

namespace
{

std::string ReadBeginning(std::size_t log, std::size_t size)
{
    CQmLogReader& reader = QmLogReaderDefine(CQmLogTextCtrl::GetFilePath(static_cast<int>(log)));
    std::string text(std::min<std::size_t>(size, reader.GetLogFileSize()), '\0');
    if (!text.empty()) // else there may be no file
        text.resize(reader.ReadText(0, static_cast<unsigned long>(text.size()), text.data()));
    return text;
}

} // namespace

void SessionBookmarks::Load(const std::string& folder, bool remember)
{
    m_remember = remember;
    m_entry.folder = folder;
    Read();
}

// Another window of the session may have changed them.
void SessionBookmarks::Read()
{
    if (!m_remember)
        return;
    const BookmarkStore store = ReadBookmarks();
    const BookmarkStore::Entry* const known = store.Find(m_entry.folder);
    m_entry.bookmarks = known && known->mark.IsOf(ReadBeginning) ? known->bookmarks : Bookmarks();
    m_entry.mark = SessionMark::Of(ReadBeginning);
}

bool SessionBookmarks::Toggle(std::uint32_t number)
{
    const bool wasSet = m_entry.bookmarks.Has(number);
    Read();
    m_entry.mark = SessionMark::Of(ReadBeginning);
    const bool isDone = m_entry.bookmarks.Has(number) != wasSet || m_entry.bookmarks.Toggle(number);
    if (m_remember)
    {
        BookmarkStore store = ReadBookmarks();
        store.Put(m_entry);
        WriteBookmarks(store);
    }
    return isDone;
}

bool SessionBookmarks::ForgetOld()
{
    if (m_entry.bookmarks.Numbers().empty() || m_entry.mark.IsOf(ReadBeginning))
        return false;
    m_entry.bookmarks = Bookmarks();
    return true;
}

} // namespace logdesk
