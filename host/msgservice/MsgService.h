// The message service of our programs: messages of a store in the order and choice of a description.
#pragma once

#include "LogMsg.h"
#include "LogViewer.h"
#include "msgservice/sources/SourceReader.h"
#include "msgservice/view/ViewWorker.h"

#include <functional>
#include <string>
#include <vector>

namespace msgservice
{

// Ids are positions in the present view, from 1 on; a message's tag is the number of its arrival, from 1 on.
//
// The store may be filled by any thread and serve several services. All operations are for the thread of the
// viewers' windows. What came to the store and views that were finished are announced by Publish, which that
// thread has to call now and then, and after the function given to SetWake was called.
//
// Where a format leaves it open: texts are sorted in the user's language without case, timestamps by what
// they mean and those that mean nothing last, numbers and the level as numbers. A filter of the level looks
// at its text. A message is a duplicate if it equals the one shown before it in all fields but the timestamp
// and a source line that its source has counted.
class MsgService : public ILogMsgService
{
public:
    explicit MsgService(std::shared_ptr<MessageStore> store = MessageStore::Make());
    ~MsgService() override;
    MsgService(const MsgService&) = delete;
    MsgService& operator=(const MsgService&) = delete;

    // What the objects show that GetMsg and lists hand out lives until the messages next change. Lists and
    // clones may outlive the service.
    ILogMsgData* GetMsg(std::uint32_t id) override;
    void GetSortKeys(LogMsgSortKey* keys, std::int32_t count) override;
    void SetSortKeys(const LogMsgSortKey* keys, std::int32_t count) override;
    void GetFilters(LogMsgFilter* filters, std::int32_t count) override;
    void SetFilters(const LogMsgFilter* filters, std::int32_t count) override;
    void GetShowDuplicate(std::int32_t& show) override;
    void SetShowDuplicate(std::int32_t show) override;

    // Begins to make the view on a thread of its own; the present view stays meanwhile, messages that arrive
    // come to its end, and another Apply begins again.
    void Apply() override;
    bool IsBusy() override; // from Apply until its view is announced

    // Shows what the opener finds there, in a new store; what cannot be opened is told by TakeNotices, and
    // the present messages stay.
    void OpenFile(const char* path, std::int32_t readOnly) override;
    std::uint32_t FindTag(std::int32_t tag) override;
    void ClearBefore(std::int32_t tag) override;
    std::uint32_t GetMsgCount() override;
    std::uint32_t GetClearedCount() const { return m_description.firstIndex; } // left out by ClearBefore
    // A file is followed as long as its source may bring more; it is damaged if there were notices about it.
    void GetFileInfo(ZEMA::String& path, bool& followed, bool& damaged, bool& readOnly) override;

    // `reserve` is no limit: the list knows every message of the view.
    ILogMsgList* CreateMsgList(std::int32_t reserve, std::int32_t flags) override;
    void HoldView(std::int32_t hold) override;
    std::uint32_t SkipWithout(const char* text, std::int32_t matchCase, std::uint32_t id,
                              std::uint32_t end) override;

    // A least level beside the filters, 0 at first. Apply makes it hold.
    std::uint32_t GetLeastLevel() const { return m_description.leastLevel; }
    void SetLeastLevel(std::uint32_t level) { m_description.leastLevel = level; }

    // The nearest message after `id`, or before it, that has at least this level; kNoLogMsgId if there is
    // none. 0 stands before all messages, GetMsgCount() + 1 after them.
    enum class Direction
    {
        Forward,
        Backward
    };
    std::uint32_t FindLevel(std::uint32_t id, std::uint32_t level, Direction direction) const;

    // Gives up what Apply has begun: the present view stays, and so do its keys and filters.
    void CancelApply();
    double Progress() const { return m_worker.Progress(); } // of what Apply has begun, 0 to 1

    // Tells the viewer of the service and announces the present view to it. The viewer is not owned.
    void AddViewer(ILogViewer& viewer);
    void RemoveViewer(ILogViewer& viewer);

    // Shows what the source brings, in a store that nothing else fills. `path` is what GetFileInfo answers.
    // Neither this nor OpenFile waits for the source that was read before.
    void ShowSource(std::unique_ptr<MessageSource> source, const std::string& path, bool readOnly,
                    std::shared_ptr<MessageStore> store = MessageStore::Make());

    // How files are opened: answers their source, or throws with a sentence for the user.
    using Opener = std::function<std::unique_ptr<MessageSource>(const std::string& path, bool readOnly)>;
    void SetOpener(Opener opener) { m_opener = std::move(opener); }

    // `wake` is called, on any thread, when there is something to publish. It must not throw.
    void SetWake(std::function<void()> wake);

    // Announces what is new: a message at the end by AddMsg, a new view by SetMsgIdRange(1, count) and, if it
    // has messages, AddMsg(count, null). Answers true if more is waiting.
    bool Publish();

    // Publishes until no view is being made and all messages of the store are in the view. Not for viewers
    // that are just being told something, to whom nothing is published, and not while the view is held.
    void Settle();

    const std::shared_ptr<MessageStore>& Store() const { return m_store; }
    // Shows another store from its beginning with the same keys and filters, and leaves the file that is
    // open.
    void SetStore(std::shared_ptr<MessageStore> store);

    // Sentences for the user, one a line, since the last call.
    std::string TakeNotices();

private:
    struct Shown;
    class List;

    void Show(std::shared_ptr<MessageStore> store);
    void Wake();
    void CollectNotices();
    bool TakeArrivals();
    template <typename Tell> void ToViewers(Tell tell);
    void AnnounceTo(ILogViewer& viewer);
    void AnnounceView();
    void AnnounceArrivals(std::uint32_t before);
    bool IsToldOf(const ILogViewer& viewer, std::uint64_t view) const;

    std::shared_ptr<MessageStore> m_store;
    std::shared_ptr<Shown> m_shown; // shared with the lists
    ViewDescription m_description;  // as set
    bool m_applying = false;
    bool m_publishing = false;
    int m_holds = 0; // of the present view
    std::optional<std::uint32_t>
        m_failedWith; // so many messages a view could not be made of: not tried again
    std::vector<ILogViewer*> m_viewers;
    std::string m_notices;
    Opener m_opener;
    std::string m_path; // of the file that is shown
    bool m_readOnly = false;
    bool m_damaged = false;
    std::mutex m_wakeMutex;
    std::function<void()> m_wake;
    std::jthread m_ending;                  // ends what was shown before
    std::unique_ptr<SourceReader> m_reader; // these two last: their threads end first
    ViewWorker m_worker;
};

} // namespace msgservice
