#include "msgservice/MsgService.h"

#include "msgservice/view/HandedOut.h"
#include "msgservice/view/MessageOrder.h"
#include "msgservice/view/TextSkip.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <utility>

namespace msgservice
{

namespace
{

constexpr std::uint32_t kMostRows = std::numeric_limits<std::int32_t>::max(); // that a viewer can count
constexpr std::size_t kKeys = 3;
constexpr std::size_t kFilters = 3;
constexpr std::uint32_t kFewArrivals = 1000;      // announced one by one; put into a sorted view at once
constexpr std::uint32_t kArrivalsAtOnce = 20'000; // looked at by filters within a breath

} // namespace

// What is shown at the moment.
struct MsgService::Shown
{
    std::shared_ptr<MessageStore> store;
    std::unique_ptr<View> view;
    HandedOut handedOut;
    std::unique_ptr<TextSkip> skip; // for the text that was last asked for
    std::uint64_t number = 0;       // of the view, counting up

    std::uint32_t Count() const { return std::min(view->Count(), kMostRows); }

    ILogMsgData* Get(std::uint32_t id)
    {
        return id >= 1 && id <= Count() ? handedOut.Get(*store, view->MessageAt(id - 1)) : nullptr;
    }

    void Show(std::unique_ptr<View> next)
    {
        handedOut.Drop();
        view = std::move(next);
        ++number;
    }
};

// Knows the messages by itself.
class MsgService::List : public ILogMsgList
{
public:
    explicit List(std::shared_ptr<Shown> shown) : m_shown(std::move(shown)) {}

    std::uint32_t GetCount() const override { return m_shown->Count(); }
    std::uint32_t GetCapacity() const override { return kMostRows; }
    std::uint32_t GetFirstId() const override { return GetCount() > 0 ? 1 : kNoLogMsgId; }
    std::uint32_t GetLastId() const override { return GetCount() > 0 ? GetCount() : kNoLogMsgId; }
    std::int32_t Add(ILogMsgData*) override { return 0; }
    ILogMsgData* Get(std::uint32_t id) override { return m_shown->Get(id); }

private:
    std::shared_ptr<Shown> m_shown;
};

MsgService::MsgService(std::shared_ptr<MessageStore> store)
    : m_store(std::move(store)), m_shown(std::make_shared<Shown>()), m_worker([this] { Wake(); })
{
    m_description.keys.resize(kKeys);
    m_description.filters.resize(kFilters);
    m_shown->store = m_store;
    m_shown->view = std::make_unique<View>(m_store, m_description);
}

MsgService::~MsgService() = default;

ILogMsgData* MsgService::GetMsg(std::uint32_t id)
{
    return m_shown->Get(id);
}

void MsgService::GetSortKeys(LogMsgSortKey* keys, std::int32_t count)
{
    for (std::size_t i = 0; i < m_description.keys.size() && static_cast<std::int32_t>(i) < count; ++i)
        keys[i] = {static_cast<ILogMsgDataKind>(m_description.keys[i].field),
                   m_description.keys[i].ascending ? 1 : 0};
}

void MsgService::SetSortKeys(const LogMsgSortKey* keys, std::int32_t count)
{
    for (std::size_t i = 0; i < m_description.keys.size() && static_cast<std::int32_t>(i) < count; ++i)
        m_description.keys[i] = {keys[i].field, keys[i].ascending != 0};
}

void MsgService::GetFilters(LogMsgFilter* filters, std::int32_t count)
{
    for (std::size_t i = 0; i < m_description.filters.size() && static_cast<std::int32_t>(i) < count; ++i)
    {
        const Filter& filter = m_description.filters[i];
        filters[i].field = static_cast<ILogMsgDataKind>(filter.field);
        filters[i].operation = static_cast<LogMsgFilterOperator>(filter.operation);
        filters[i].value = filter.value.c_str();
        filters[i].matchCase = filter.matchCase ? 1 : 0;
    }
}

void MsgService::SetFilters(const LogMsgFilter* filters, std::int32_t count)
{
    for (std::size_t i = 0; i < m_description.filters.size() && static_cast<std::int32_t>(i) < count; ++i)
        m_description.filters[i] = {filters[i].field, filters[i].operation, filters[i].value.c_str(),
                                    filters[i].matchCase != 0};
}

void MsgService::GetShowDuplicate(std::int32_t& show)
{
    show = m_description.showDuplicates ? 1 : 0;
}

void MsgService::SetShowDuplicate(std::int32_t show)
{
    m_description.showDuplicates = show != 0;
}

void MsgService::Apply()
{
    m_applying = true;
    m_worker.Start([store = m_store, description = m_description](Work& work) {
        auto view = std::make_unique<View>(store, description);
        view->Insert(store->Count(), work);
        view->MakeIndex(); // here, where nobody waits for it
        return view;
    });
}

bool MsgService::IsBusy()
{
    return m_applying;
}

void MsgService::CancelApply()
{
    if (m_applying)
        m_worker.Cancel();
    m_applying = false;
    m_description = m_shown->view->Description();
}

void MsgService::OpenFile(const char* path, std::int32_t readOnly)
{
    const std::string wanted = path ? path : "";
    try
    {
        if (!m_opener)
            throw std::runtime_error(wanted + ": files cannot be opened here");
        ShowSource(m_opener(wanted, readOnly != 0), wanted, readOnly != 0);
    }
    catch (const std::exception& exception)
    {
        m_notices += std::string(exception.what()) + "\n";
    }
}

// The reader before may be in the midst of a piece, and its store may be large: another thread waits for the
// one and frees the other. Its notices are about another file.
void MsgService::ShowSource(std::unique_ptr<MessageSource> source, const std::string& path, bool readOnly,
                            std::shared_ptr<MessageStore> store)
{
    auto reader = std::make_unique<SourceReader>(std::move(source), store, [this] { Wake(); });
    m_reader.swap(reader);
    std::shared_ptr<MessageStore> oldStore = m_store;
    m_path = path;
    m_readOnly = readOnly;
    m_damaged = false;
    Show(std::move(store));
    m_ending = std::jthread([reader = std::move(reader), oldStore = std::move(oldStore)] {});
}

void MsgService::GetFileInfo(ZEMA::String& path, bool& followed, bool& damaged, bool& readOnly)
{
    CollectNotices();
    path = m_path.c_str();
    followed = m_reader && m_reader->IsReading();
    damaged = m_damaged;
    readOnly = m_readOnly;
}

std::uint32_t MsgService::FindTag(std::int32_t tag)
{
    const auto arrival = static_cast<std::uint32_t>(tag);
    const auto position = arrival > 0 ? m_shown->view->PositionOf(arrival - 1) : std::nullopt;
    return position && *position < kMostRows ? *position + 1 : kNoLogMsgId;
}

void MsgService::ClearBefore(std::int32_t tag)
{
    const auto arrival = static_cast<std::uint32_t>(tag);
    m_description.firstIndex = arrival > 0 ? std::min(arrival - 1, m_store->Count()) : 0;
    Apply();
}

std::uint32_t MsgService::FindLevel(std::uint32_t id, std::uint32_t level, Direction direction) const
{
    const std::int64_t count = m_shown->Count();
    const std::int64_t position = std::min<std::int64_t>(id, count + 1) - 1;
    const auto found = direction == Direction::Forward
                           ? m_shown->view->FindLevel(std::min(position + 1, count), count, level)
                           : m_shown->view->FindLevel(std::max<std::int64_t>(position - 1, -1), -1, level);
    return found ? *found + 1 : kNoLogMsgId;
}

std::uint32_t MsgService::GetMsgCount()
{
    return m_shown->Count();
}

ILogMsgList* MsgService::CreateMsgList(std::int32_t, std::int32_t)
{
    return new List(m_shown);
}

std::uint32_t MsgService::SkipWithout(const char* text, std::int32_t matchCase, std::uint32_t id,
                                      std::uint32_t end)
{
    std::unique_ptr<TextSkip>& skip = m_shown->skip;
    if (!skip || !skip->IsOf(*m_shown->store, text, matchCase != 0))
        skip = std::make_unique<TextSkip>(m_shown->store, text, matchCase != 0);
    const std::uint32_t known = std::min(end, m_shown->Count() + 1);
    if (id < 1 || id >= known)
        return id;
    const View& view = *m_shown->view;
    const std::uint32_t first = view.MessageAt(id - 1);
    if (view.IsPlain())
        return id + (skip->Next(first, first + (known - id)) - first);
    while (id < known && !skip->MayHold(view.MessageAt(id - 1)))
        ++id;
    return id;
}

void MsgService::AddViewer(ILogViewer& viewer)
{
    m_viewers.push_back(&viewer);
    viewer.SetLogMsgService(this);
    AnnounceTo(viewer);
}

void MsgService::RemoveViewer(ILogViewer& viewer)
{
    std::erase(m_viewers, &viewer);
    viewer.SetLogMsgService(nullptr);
}

void MsgService::SetWake(std::function<void()> wake)
{
    const std::lock_guard lock(m_wakeMutex);
    m_wake = std::move(wake);
}

void MsgService::Wake()
{
    const std::lock_guard lock(m_wakeMutex);
    if (m_wake)
        m_wake();
}

void MsgService::SetStore(std::shared_ptr<MessageStore> store)
{
    m_reader.reset();
    m_path.clear();
    m_readOnly = m_damaged = false;
    Show(std::move(store));
}

void MsgService::Show(std::shared_ptr<MessageStore> store)
{
    m_worker.Cancel();
    m_applying = false;
    m_store = std::move(store);
    m_description.firstIndex = 0;
    auto view = std::make_unique<View>(m_store, m_description);
    m_shown->Show(std::move(view));
    m_shown->store = m_store;
    AnnounceView();
}

void MsgService::HoldView(std::int32_t hold)
{
    m_holds += hold ? 1 : -1;
    if (m_holds == 0)
        Wake(); // for what has been waiting
}

bool MsgService::Publish()
{
    if (m_publishing)
        return true; // a viewer asks for it when it is told something
    m_publishing = true;
    const auto finished =
        std::unique_ptr<bool, void (*)(bool*)>(&m_publishing, [](bool* flag) { *flag = false; });
    if (m_holds > 0)
        return TakeArrivals();
    std::string fault;
    const bool running = m_worker.IsRunning();
    if (auto view = m_worker.TakeResult(fault))
    {
        m_applying = false;
        m_shown->Show(std::move(view));
        AnnounceView();
    }
    else if (running && !m_worker.IsRunning())
    {
        CancelApply();
        m_failedWith = m_store->Count();
        m_notices += "The view cannot be made: " + fault + "\n";
    }
    return TakeArrivals();
}

// Answers true if some are left for the next call.
bool MsgService::TakeArrivals()
{
    View& view = *m_shown->view;
    const std::uint32_t before = m_shown->Count();
    const std::uint32_t count = m_store->Count();
    if (view.End() >= count)
        return false;
    const std::uint32_t arrivals = count - view.End();
    const bool sorted = IsSorted(view.Description().keys);
    const std::uint32_t end =
        sorted || view.IsPlain() ? count : view.End() + std::min(arrivals, kArrivalsAtOnce);
    if ((!sorted || arrivals <= kFewArrivals) && view.Append(end))
        AnnounceArrivals(before);
    else if (m_holds == 0 && !m_worker.IsRunning() && count != m_failedWith)
        m_worker.Start([copy = std::make_shared<std::unique_ptr<View>>(view.Copy()), end](Work& work) {
            (*copy)->Insert(end, work);
            (*copy)->MakeIndex();
            return std::move(*copy);
        });
    return end < count;
}

// Viewers may add and remove viewers, or show another store, when they are told something. Who does that has
// been told of the newer view, and the older one is no longer announced.
template <typename Tell> void MsgService::ToViewers(Tell tell)
{
    const std::uint64_t number = m_shown->number;
    const std::vector<ILogViewer*> viewers = m_viewers;
    for (ILogViewer* const viewer : viewers)
        if (IsToldOf(*viewer, number))
            tell(*viewer);
}

// Viewers make their lists in AddMsg only.
void MsgService::AnnounceTo(ILogViewer& viewer)
{
    const std::uint64_t number = m_shown->number;
    const std::uint32_t count = m_shown->Count();
    viewer.SetMsgIdRange(1, count);
    if (count > 0 && IsToldOf(viewer, number))
        viewer.AddMsg(count, nullptr);
}

void MsgService::AnnounceView()
{
    ToViewers([this](ILogViewer& viewer) { AnnounceTo(viewer); });
}

void MsgService::AnnounceArrivals(std::uint32_t before)
{
    const std::uint32_t count = m_shown->Count();
    const std::uint32_t first = count - before <= kFewArrivals ? before + 1 : count;
    const std::uint64_t number = m_shown->number;
    if (before < count)
        ToViewers([this, first, count, number](ILogViewer& viewer) {
            for (std::uint32_t id = first; id <= count && IsToldOf(viewer, number); ++id)
                viewer.AddMsg(id, GetMsg(id));
        });
}

bool MsgService::IsToldOf(const ILogViewer& viewer, std::uint64_t view) const
{
    return m_shown->number == view &&
           std::find(m_viewers.begin(), m_viewers.end(), &viewer) != m_viewers.end();
}

void MsgService::Settle()
{
    do
    {
        if (m_worker.IsRunning())
            m_worker.Wait();
    } while (Publish() || m_worker.IsRunning());
}

void MsgService::CollectNotices()
{
    const std::string notices = m_reader ? m_reader->TakeNotices() : "";
    m_damaged = m_damaged || !notices.empty();
    m_notices += notices;
}

std::string MsgService::TakeNotices()
{
    CollectNotices();
    return std::exchange(m_notices, {});
}

} // namespace msgservice
