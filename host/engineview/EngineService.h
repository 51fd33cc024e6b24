// A message service over a session that lies in a columnar engine.
#pragma once

#include "LogViewer.h"
#include "engineview/PageCache.h"
#include "engineview/PageReader.h"
#include "engineview/ViewFinder.h"
#include "msgservice/view/Description.h"

namespace engineview
{

// Ids are positions in the present view, from 1 on; a message's tag is its row's number. In the order of
// numbers and without filters the view has an id for each number between the first row and the last, and
// nothing is in memory but the pages that were looked at last, so that a session of a billion rows opens like
// one of a thousand. Else the view has the first ViewFinder::kMostNumbers rows that the engine finds or
// sorts.
//
// No operation waits for the engine, but GetMsg while the view is held: an action such as a copy goes through
// messages that need not be here. A message that is on its way says "...".
//
// All operations are for the thread of the viewer's window. What came is announced by Publish, which that
// thread has to call now and then, and after `wake` was called, on any thread, which must not throw.
class EngineService : public ILogMsgService
{
public:
    EngineService(const engine::EngineUrl& url, Connect connect, std::function<void()> wake,
                  std::chrono::milliseconds poll = std::chrono::seconds(1));
    ~EngineService() override;
    EngineService(const EngineService&) = delete;
    EngineService& operator=(const EngineService&) = delete;

    ILogMsgData* GetMsg(std::uint32_t id) override;
    void GetSortKeys(LogMsgSortKey* keys, std::int32_t count) override;
    void SetSortKeys(const LogMsgSortKey* keys, std::int32_t count) override;
    void GetFilters(LogMsgFilter* filters, std::int32_t count) override;
    void SetFilters(const LogMsgFilter* filters, std::int32_t count) override;
    void GetShowDuplicate(std::int32_t& show) override;
    void SetShowDuplicate(std::int32_t show) override;

    // The present view stays until rows of the new one are known.
    void Apply() override;
    bool IsBusy() override { return m_isApplying; }
    std::uint32_t FindTag(std::int32_t tag) override;
    std::uint32_t GetMsgCount() override { return m_shown.count; }
    ILogMsgList* CreateMsgList(std::int32_t reserve, std::int32_t flags) override;
    void HoldView(std::int32_t hold) override;

    // A least level beside the filters, and the numbers that the view is kept to. Apply makes them hold.
    std::uint32_t GetLeastLevel() const { return m_description.leastLevel; }
    void SetLeastLevel(std::uint32_t level) { m_description.leastLevel = level; }
    const std::optional<engine::RowReader::Span>& GetBounds() const { return m_bounds; }
    void SetBounds(std::optional<engine::RowReader::Span> bounds) { m_bounds = bounds; }

    bool IsSorted() const;
    bool IsFiltered() const; // filters, level, duplicates or bounds leave out rows

    // Gives up what Apply has begun: the present view stays, and so do its keys and filters.
    void CancelApply();

    // The viewer, which is not owned; null for none.
    void SetViewer(ILogViewer* viewer);

    struct News
    {
        bool isOtherView = false;
        bool hasCome = false; // messages that were on their way
    };
    News Publish();

    // The rows that the user sees, counted from 0, whenever they are others: these pages are fetched first,
    // and those around them, more of them in the direction in which the user goes.
    void SetSeen(std::uint32_t first, std::uint32_t last);

    bool IsHere() const; // all that is seen

    // The row of a message; null if it is not here.
    const engine::ShippedRow* RowOf(std::uint32_t id);

    // Asks the engine for numbers, in place of a question that was not answered yet; Publish calls `answered`
    // with them, or with a sentence about what went wrong.
    using Answered =
        std::function<void(const std::optional<engine::RowReader::Span>&, const std::string& failure)>;
    void Ask(Question question, Answered answered);

    // What a status bar tells.
    struct State
    {
        std::uint32_t shown = 0;
        std::optional<engine::RowReader::Span> span; // of the session's rows, as far as looked
        std::uint64_t found = 0;                     // before repeated ones were left out
        std::uint32_t searchedTo = 0;                // of a view that is found; else 0
        bool isCutOff = false;                       // there are more than a view can have
        bool isOld = false;                          // rows have come that the sorted view has not
        bool isBusy = false;
        bool isLost = false;
    };
    State GetState() const;

    // Asks for all pages again, and for a sorted view.
    void Refresh();

    std::string TakeNotices(); // sentences for the user, a line each

private:
    class List;
    struct Shown
    {
        std::uint64_t view = 0;
        ViewQuestion question;
        msgservice::ViewDescription description;
        std::optional<engine::RowReader::Span> bounds;
        std::uint32_t first = 0; // number of the first row, of All
        std::uint32_t count = 0;
        std::vector<std::uint32_t> numbers; // of Found and Sorted
        std::optional<engine::RowReader::Span> span;
        std::uint64_t found = 0;
        std::uint32_t searchedTo = 0;
        bool isCutOff = false;
        bool isOld = false;
    };

    bool IsAll() const { return m_shown.question.kind == ViewQuestion::Kind::All; }
    std::uint32_t NumberAt(std::uint32_t row) const;
    PageRequest RequestOf(std::uint32_t page) const;
    Page* FindPage(std::uint32_t page);
    void TakeNews();
    void ShowNew(ViewNews news);
    void Grow(const ViewNews& news);
    void GiveUp(const std::string& failure);
    bool TakePages();
    void WantPages();
    void Announce();

    std::chrono::milliseconds m_poll;
    msgservice::ViewDescription m_description; // as set
    std::optional<engine::RowReader::Span> m_bounds;
    std::uint64_t m_lastView = 0; // that was asked for
    bool m_isApplying = false;
    Shown m_next; // that is being found
    Shown m_shown;
    PageCache m_pages;
    EngineMessage m_onItsWay;
    std::uint32_t m_seenFirst = 0;
    std::uint32_t m_seenLast = 0;
    bool m_goesUp = false;
    std::chrono::steady_clock::time_point m_lastRefresh; // of pages that lack rows
    int m_holds = 0;
    std::uint32_t m_unread = 0; // messages that an action did not get
    ILogViewer* m_viewer = nullptr;
    Answered m_answered;
    std::string m_notices;
    std::function<void()> m_wake;
    ViewFinder m_finder; // these two last: their threads end first
    PageReader m_reader;
};

} // namespace engineview
