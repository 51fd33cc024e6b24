#include "engineview/EngineService.h"

#include "engineview/RowChoices.h"

#include <algorithm>
#include <limits>

namespace engineview
{

namespace
{

constexpr std::size_t kKeys = 3;
constexpr std::size_t kFilters = 3;
constexpr std::uint32_t kMostRows = std::numeric_limits<int>::max() - 1; // of a report control
constexpr std::uint32_t kPagesAhead = 4;
constexpr std::uint32_t kPagesBehind = 1;
constexpr std::uint32_t kPagesSeen = 8;              // at most: a window has less
constexpr std::chrono::milliseconds kHeldWait(2000); // for a page that an action needs

bool LeavesOut(const engine::RowChoice& choice)
{
    const engine::RowConditions& conditions = choice.conditions;
    return choice.leavesOutRepeated || conditions.kindsAreWanted || !conditions.kinds.empty() ||
           !conditions.texts.empty();
}

} // namespace

// Ends with its viewer, before or after the service: the viewer is told when the service goes.
class EngineService::List : public ILogMsgList
{
public:
    explicit List(EngineService& service) : m_service(service) {}

    std::int32_t Add(ILogMsgData*) override { return 0; }
    ILogMsgData* Get(std::uint32_t id) override { return m_service.GetMsg(id); }

private:
    EngineService& m_service;
};

EngineService::EngineService(const engine::EngineUrl& url, Connect connect, std::function<void()> wake,
                             std::chrono::milliseconds poll)
    : m_poll(poll), m_onItsWay(0, "..."), m_wake(std::move(wake)), m_finder(url, connect, m_wake, poll),
      m_reader(url, connect, m_wake)
{
    m_description.keys.resize(kKeys);
    m_description.filters.resize(kFilters);
    Apply();
}

EngineService::~EngineService()
{
    SetViewer(nullptr);
}

// ---- Descriptions

void EngineService::GetSortKeys(LogMsgSortKey* keys, std::int32_t count)
{
    for (std::size_t i = 0; i < kKeys && static_cast<std::int32_t>(i) < count; ++i)
        keys[i] = {static_cast<ILogMsgDataKind>(m_description.keys[i].field),
                   m_description.keys[i].ascending ? 1 : 0};
}

void EngineService::SetSortKeys(const LogMsgSortKey* keys, std::int32_t count)
{
    for (std::size_t i = 0; i < kKeys && static_cast<std::int32_t>(i) < count; ++i)
        m_description.keys[i] = {keys[i].field, keys[i].ascending != 0};
}

void EngineService::GetFilters(LogMsgFilter* filters, std::int32_t count)
{
    for (std::size_t i = 0; i < kFilters && static_cast<std::int32_t>(i) < count; ++i)
    {
        const msgservice::Filter& filter = m_description.filters[i];
        filters[i] = {static_cast<ILogMsgDataKind>(filter.field),
                      static_cast<LogMsgFilterOperator>(filter.operation), filter.value.c_str(),
                      filter.matchCase ? 1 : 0};
    }
}

void EngineService::SetFilters(const LogMsgFilter* filters, std::int32_t count)
{
    for (std::size_t i = 0; i < kFilters && static_cast<std::int32_t>(i) < count; ++i)
        m_description.filters[i] = {filters[i].field, filters[i].operation, filters[i].value.c_str(),
                                    filters[i].matchCase != 0};
}

void EngineService::GetShowDuplicate(std::int32_t& show)
{
    show = m_description.showDuplicates ? 1 : 0;
}

void EngineService::SetShowDuplicate(std::int32_t show)
{
    m_description.showDuplicates = show != 0;
}

bool EngineService::IsSorted() const
{
    return m_shown.question.kind == ViewQuestion::Kind::Sorted;
}

bool EngineService::IsFiltered() const
{
    return LeavesOut(m_shown.question.choice) || m_shown.bounds;
}

// ---- Views

void EngineService::Apply()
{
    DescribedRows described = DescribedBy(m_description);
    m_notices += described.refused;
    m_next = {};
    m_next.view = ++m_lastView;
    m_next.description = m_description;
    m_next.bounds = m_bounds;
    ViewQuestion& question = m_next.question;
    question.choice = std::move(described.choice);
    question.choice.from = m_bounds ? m_bounds->first : 0;
    question.choice.to = m_bounds ? m_bounds->last : std::numeric_limits<std::uint32_t>::max();
    if (!question.choice.order.empty())
        question.kind = ViewQuestion::Kind::Sorted;
    else if (LeavesOut(question.choice))
        question.kind = ViewQuestion::Kind::Found;
    m_isApplying = true;
    m_finder.Find(m_next.view, question);
}

// What is shown is found anew, for the finder has left it.
void EngineService::CancelApply()
{
    if (!m_isApplying || m_shown.view == 0)
        return;
    m_description = m_shown.description;
    m_bounds = m_shown.bounds;
    Apply();
    m_isApplying = false;
}

void EngineService::Refresh()
{
    m_pages.Clear();
    if (!m_isApplying)
        Apply();
}

void EngineService::GiveUp(const std::string& failure)
{
    m_notices += "The engine does not show that: " + failure + "\n";
    CancelApply();
}

// While an action goes through the view it stays, and news waits.
EngineService::News EngineService::Publish()
{
    m_notices += m_finder.TakeNotices();
    News news;
    if (m_holds > 0)
        return news;
    const std::uint64_t view = m_shown.view;
    TakeNews();
    news.isOtherView = m_shown.view != view;
    news.hasCome = TakePages();
    WantPages();
    if (const Answer answer = m_finder.TakeAnswer(); answer.isThere && m_answered)
        std::exchange(m_answered, {})(answer.span, answer.failure);
    return news;
}

void EngineService::TakeNews()
{
    ViewNews news = m_finder.Take();
    if (news.view != m_lastView)
        return;
    if (!news.failure.empty())
        return GiveUp(news.failure);
    if (news.view != m_shown.view)
        ShowNew(std::move(news));
    else
        Grow(news);
}

void EngineService::ShowNew(ViewNews news)
{
    Shown next = m_next;
    next.span = news.span;
    if (news.span && next.question.kind == ViewQuestion::Kind::All)
    {
        const std::uint64_t all = std::uint64_t{news.span->last} - news.span->first + 1;
        next.first = news.span->first;
        if (all > kMostRows) // the newest
            next.first = news.span->last - kMostRows + 1;
        next.isCutOff = all > kMostRows;
        next.count = static_cast<std::uint32_t>(std::min<std::uint64_t>(all, kMostRows));
    }
    else
    {
        next.numbers = std::move(news.numbers);
        next.count = static_cast<std::uint32_t>(next.numbers.size());
        next.isCutOff = news.isCutOff;
    }
    next.found = news.found;
    next.searchedTo = news.searchedTo;
    m_shown = std::move(next);
    m_isApplying = false;
    m_pages.Clear();
    m_seenFirst = m_seenLast = 0;
    Announce();
}

void EngineService::Announce()
{
    if (!m_viewer)
        return;
    m_viewer->SetMsgIdRange(1, m_shown.count);
    if (m_viewer && m_shown.count > 0)
        m_viewer->AddMsg(m_shown.count, nullptr);
}

// The last page has more rows then.
void EngineService::Grow(const ViewNews& news)
{
    const std::uint32_t before = m_shown.count;
    const auto last = m_shown.span ? m_shown.span->last : 0;
    if (news.span)
        m_shown.span = m_shown.span
                           ? std::optional(engine::RowReader::Span{m_shown.span->first, news.span->last})
                           : news.span;
    m_shown.found += news.found;
    m_shown.searchedTo = std::max(m_shown.searchedTo, news.searchedTo);
    m_shown.isCutOff = m_shown.isCutOff || news.isCutOff;
    if (IsAll() && m_shown.span)
    {
        if (before == 0)
            m_shown.first = m_shown.span->first;
        const std::uint64_t all = std::uint64_t{m_shown.span->last} - m_shown.first + 1;
        m_shown.count = static_cast<std::uint32_t>(std::min<std::uint64_t>(all, kMostRows));
    }
    else if (IsSorted() && !m_shown.numbers.empty() && news.numbers.empty())
        m_shown.isOld = m_shown.isOld || (m_shown.span && m_shown.span->last > last);
    else
    {
        m_shown.numbers.insert(m_shown.numbers.end(), news.numbers.begin(), news.numbers.end());
        m_shown.count = static_cast<std::uint32_t>(m_shown.numbers.size());
    }
    if (m_viewer && m_shown.count > before)
        m_viewer->AddMsg(m_shown.count, nullptr);
}

// ---- Rows and pages

std::uint32_t EngineService::NumberAt(std::uint32_t row) const
{
    return IsAll() ? m_shown.first + row : m_shown.numbers[row];
}

PageRequest EngineService::RequestOf(std::uint32_t page) const
{
    PageRequest request;
    request.index = page;
    request.choice = m_shown.question.choice;
    request.isStretch = IsAll();
    const std::uint32_t begin = page * Page::kRows;
    const std::uint32_t end = std::min(m_shown.count, begin + Page::kRows);
    for (std::uint32_t row = begin; row < end; ++row)
        request.numbers.push_back(NumberAt(row));
    const auto [least, greatest] = std::minmax_element(request.numbers.begin(), request.numbers.end());
    request.choice.from = *least;
    request.choice.to = *greatest;
    return request;
}

ILogMsgData* EngineService::GetMsg(std::uint32_t id)
{
    if (id == 0 || id > m_shown.count)
        return nullptr;
    const std::uint32_t row = id - 1;
    Page* const page = FindPage(row / Page::kRows);
    if (page && row % Page::kRows < page->Count())
    {
        if (m_holds > 0 && !page->HasRow(row % Page::kRows))
            return nullptr; // nothing to copy
        return &page->Message(row % Page::kRows);
    }
    if (m_holds > 0)
    {
        ++m_unread;
        return nullptr;
    }
    m_onItsWay = EngineMessage(NumberAt(row), "...");
    return &m_onItsWay;
}

// An action needs the page at once, and the next one soon.
Page* EngineService::FindPage(std::uint32_t page)
{
    Page* found = m_pages.Find(page);
    const std::uint32_t rows = std::min(m_shown.count - page * Page::kRows, Page::kRows);
    if (m_holds == 0 || (found && found->Count() == rows))
        return found;
    const auto end = std::chrono::steady_clock::now() + kHeldWait;
    std::vector<PageRequest> wanted = {RequestOf(page)};
    if ((page + 1) * Page::kRows < m_shown.count)
        wanted.push_back(RequestOf(page + 1));
    m_reader.Want(m_shown.view, std::move(wanted));
    do
    {
        m_reader.Wait(kHeldWait);
        TakePages();
        found = m_pages.Find(page);
    } while (!found && !m_reader.IsLost() && std::chrono::steady_clock::now() < end);
    return found;
}

bool EngineService::TakePages()
{
    bool came = false;
    for (PageAnswer& answer : m_reader.Take())
        if (answer.view == m_shown.view)
        {
            m_pages.Add(std::make_unique<Page>(answer.request.index, answer.request.numbers, answer.rows));
            came = true;
        }
    return came;
}

void EngineService::SetSeen(std::uint32_t first, std::uint32_t last)
{
    if (first != m_seenFirst)
        m_goesUp = first < m_seenFirst;
    m_seenFirst = first;
    m_seenLast = std::max(first, last);
    if (m_holds == 0)
        WantPages();
}

// Those that are seen, those towards which the user goes, those behind. A page that lacks rows, as the last
// one may while the session grows and rows of several logs come one log after the other, is asked for again.
void EngineService::WantPages()
{
    if (m_shown.count == 0)
        return;
    const std::uint32_t lastPage = (m_shown.count - 1) / Page::kRows;
    const std::uint32_t first = std::min(m_seenFirst / Page::kRows, lastPage);
    const std::uint32_t last = std::min({m_seenLast / Page::kRows, lastPage, first + kPagesSeen});
    const auto now = std::chrono::steady_clock::now();
    const bool mayRefresh = now - m_lastRefresh >= m_poll;
    std::vector<PageRequest> wanted;
    const auto want = [&](std::uint32_t index, bool isSeen) {
        const Page* const page = m_pages.Find(index);
        const std::uint32_t rows = std::min(m_shown.count - index * Page::kRows, Page::kRows);
        if (page && page->Count() == rows && (page->IsComplete() || !isSeen || !mayRefresh))
            return;
        if (page && page->Count() == rows)
            m_lastRefresh = now;
        wanted.push_back(RequestOf(index));
    };
    for (std::uint32_t index = first; index <= last; ++index)
        want(index, true);
    const std::uint32_t down = m_goesUp ? kPagesBehind : kPagesAhead;
    const std::uint32_t up = m_goesUp ? kPagesAhead : kPagesBehind;
    for (std::uint32_t index = last + 1; index <= lastPage && index <= last + down; ++index)
        want(index, false);
    for (std::uint32_t index = first; index > 0 && first - (index - 1) <= up; --index)
        want(index - 1, false);
    m_reader.Want(m_shown.view, std::move(wanted));
}

bool EngineService::IsHere() const
{
    const std::uint32_t end = std::min(m_seenLast + 1, m_shown.count);
    for (std::uint32_t row = m_seenFirst; row < end; ++row)
        if (const Page* const page = m_pages.Peek(row / Page::kRows);
            !page || row % Page::kRows >= page->Count())
            return false;
    return true;
}

const engine::ShippedRow* EngineService::RowOf(std::uint32_t id)
{
    if (id == 0 || id > m_shown.count)
        return nullptr;
    const std::uint32_t row = (id - 1) % Page::kRows;
    Page* const page = m_pages.Find((id - 1) / Page::kRows);
    return page && row < page->Count() && page->HasRow(row) ? &page->Row(row) : nullptr;
}

std::uint32_t EngineService::FindTag(std::int32_t tag)
{
    const auto number = static_cast<std::uint32_t>(tag);
    if (IsAll())
        return m_shown.count > 0 && number >= m_shown.first && number - m_shown.first < m_shown.count
                   ? number - m_shown.first + 1
                   : kNoLogMsgId;
    const auto found = std::find(m_shown.numbers.begin(), m_shown.numbers.end(), number);
    return found != m_shown.numbers.end() ? static_cast<std::uint32_t>(found - m_shown.numbers.begin()) + 1
                                          : kNoLogMsgId;
}

// ---- Viewers and actions

void EngineService::SetViewer(ILogViewer* viewer)
{
    if (m_viewer)
        m_viewer->SetLogMsgService(nullptr);
    m_viewer = viewer;
    if (!m_viewer)
        return;
    m_viewer->SetLogMsgService(this);
    if (m_shown.view != 0)
        Announce();
}

ILogMsgList* EngineService::CreateMsgList(std::int32_t, std::int32_t)
{
    return new List(*this);
}

void EngineService::HoldView(std::int32_t hold)
{
    m_holds += hold ? 1 : -1;
    if (m_holds > 0)
        return;
    if (const std::uint32_t unread = std::exchange(m_unread, 0); unread > 0)
        m_notices += "The engine did not answer in time: " + std::to_string(unread) +
                     " rows are missing in what was copied or exported\n";
    m_wake();
}

void EngineService::Ask(Question question, Answered answered)
{
    m_answered = std::move(answered);
    m_finder.Ask(std::move(question));
}

EngineService::State EngineService::GetState() const
{
    State state;
    state.shown = m_shown.count;
    state.span = m_shown.span;
    state.found = m_shown.found;
    state.searchedTo = m_shown.question.kind == ViewQuestion::Kind::Found ? m_shown.searchedTo : 0;
    state.isCutOff = m_shown.isCutOff;
    state.isOld = m_shown.isOld;
    state.isBusy = m_isApplying;
    state.isLost = m_finder.IsLost();
    return state;
}

std::string EngineService::TakeNotices()
{
    return std::exchange(m_notices, {});
}

} // namespace engineview
