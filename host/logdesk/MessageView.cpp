#include "logdesk/MessageView.h"

#include "logdesk/Profile.h"
#include "logdesk/Traffic.h"
#include "msgservice/sources/OpenSource.h"
#include "msgservice/text/UserFormats.h"
#include "msgservice/view/FieldText.h"
#include "vkgrafic/Display.h"
#include "vkgrafic/WindowColors.h"

#include <algorithm>

namespace logdesk
{

namespace
{

using msgservice::MessageSource;
using msgservice::SessionRows;

constexpr DWORD kSettlePause = 10; // milliseconds
constexpr COLORREF kInactiveHighlight = RGB(200, 220, 240);

} // namespace

// What was cleared in the list alone would hide the first rows of the new view.
void MessageView::ViewWatch::SetMsgIdRange(std::uint32_t, std::uint32_t)
{
    isOther = true;
    m_list.ShowCleared();
}

MessageView::MessageView(MessageList::Commands commands, std::function<void()> cleared)
    : m_list(std::move(commands),
             [this, cleared = std::move(cleared)] {
                 Clear();
                 cleared();
             }),
      m_watch(m_list)
{
    m_service.AddViewer(m_watch);
    m_service.AddViewer(m_list);
    if (const std::string formats = msgservice::ReadUserFormats(); !formats.empty())
        m_notices = m_formats.Add(formats);
    if (!m_notices.empty())
        m_notices.insert(0, "Formats.json: ");
    m_service.SetOpener([this](const std::string& path, bool) { return Open(path); });
}

MessageView::~MessageView()
{
    m_service.SetWake(nullptr);
    m_service.RemoveViewer(m_list);
}

BOOL MessageView::Create(CWnd& parent, UINT id, UINT wake, const MessageOptions& options)
{
    m_options = options;
    if (!m_list.Create(WS_CHILD | WS_VISIBLE, CRect(), &parent, id))
        return FALSE;
    m_list.SetLogMsgService(&m_service); // creating it has taken the service away
    m_parent = parent;
    m_wake = wake;
    m_service.SetWake([this] { Wake(); });
    return TRUE;
}

// A found message is to be seen while the window to find has the focus.
void MessageView::UseColours()
{
    const bool hasOwn = VkGrafic::IsHighContrast() || VkGrafic::WindowColors(m_list).IsDark();
    m_list.ModifyProperty(RVP_INACTIVEHIGHLIGHT, hasOwn ? -1 : std::int64_t{kInactiveHighlight});
}

// On any thread. One message is enough however often it is called.
void MessageView::Wake()
{
    if (!m_isWoken.exchange(true))
        ::PostMessage(m_parent, m_wake, 0, 0);
}

void MessageView::Publish()
{
    m_isWoken = false;
    if (ShowsSession() && m_rows->HasBegunAgain())
        ShowSession(m_findLogs);
    const ListTags place = TagsOf(m_list.Place(), m_list.GetMessageOffset(), m_service);
    m_watch.isOther = false;
    const bool more = m_service.Publish();
    if (m_watch.isOther)
    {
        m_list.SetRedraw(0);
        m_list.TakeOver();
        m_list.RefreshHeader();
        m_list.GoTo(RowsOf(place, m_list.GetMessageOffset(), m_service));
        m_list.SetRedraw(1);
    }
    if (more)
        Wake();
}

void MessageView::ShowSession(msgservice::SessionSource::FindLogs findLogs)
{
    using Until = msgservice::SessionSource::Until;
    auto store = msgservice::MessageStore::Make();
    m_findLogs = std::move(findLogs);
    auto source = std::make_unique<msgservice::SessionSource>(std::vector<std::string>(),
                                                              m_options.follow ? Until::Forever : Until::Now);
    source->SetFindLogs(m_findLogs);
    m_rows = std::make_shared<SessionRows>(store);
    source->SetRows(m_rows);
    m_service.ShowSource(WithTraffic(std::move(source)), "", true, store);
}

bool MessageView::ShowFile(const std::string& path)
{
    const auto before = m_service.Store();
    m_service.OpenFile(path.c_str(), 1);
    return m_service.Store() != before;
}

// Others may have had the service open a file.
bool MessageView::ShowsSession() const
{
    return m_rows && m_rows->Store() == m_service.Store();
}

std::unique_ptr<MessageSource> MessageView::Open(const std::string& path)
{
    msgservice::OpenOptions options;
    options.formats = &m_formats;
    options.follow = m_options.follow;
    options.readOnly = true;
    return WithTraffic(msgservice::OpenSource(path, options));
}

std::unique_ptr<MessageSource> MessageView::WithTraffic(std::unique_ptr<MessageSource> source)
{
    if (m_options.traffic == 0)
        return source;
    return std::make_unique<TrafficSource>(std::move(source), m_options.traffic);
}

std::string MessageView::File()
{
    ZEMA::String path;
    bool unused = false;
    m_service.GetFileInfo(path, unused, unused, unused);
    return path.c_str();
}

std::optional<SessionRows::Row> MessageView::RowOf(std::uint32_t id)
{
    const ILogMsgData* const message = ShowsSession() ? m_service.GetMsg(id) : nullptr;
    return message ? m_rows->RowOf(static_cast<std::uint32_t>(message->GetTag()) - 1) : std::nullopt;
}

std::uint32_t MessageView::IdOf(std::string_view log, std::uint32_t row)
{
    const auto message = ShowsSession() ? m_rows->MessageOf(log, row) : std::nullopt;
    return message ? m_service.FindTag(static_cast<std::int32_t>(*message + 1)) : kNoLogMsgId;
}

std::uint32_t MessageView::FocusedId()
{
    const int row = m_list.GetCurrentFocus();
    return row >= 0 ? m_list.GetMessageOffset() + static_cast<std::uint32_t>(row) : kNoLogMsgId;
}

std::string MessageView::FieldLine(std::uint32_t id, ILogMsgDataKind field)
{
    const ILogMsgData* const message = m_service.GetMsg(id);
    if (!message)
        return "";
    const msgservice::MessageStore& store = *m_service.Store();
    msgservice::FieldText text(store);
    const std::string_view all = text(store.At(static_cast<std::uint32_t>(message->GetTag()) - 1), field);
    return std::string(all.substr(0, all.find_first_of("\r\n")));
}

std::string MessageView::TakeNotices()
{
    return std::exchange(m_notices, {}) + m_service.TakeNotices();
}

MessageState MessageView::State()
{
    LogMsgSortKey key;
    m_service.GetSortKeys(&key, 1);
    std::array<LogMsgFilter, 3> filters;
    m_service.GetFilters(filters.data(), static_cast<std::int32_t>(filters.size()));
    std::int32_t showDuplicates = 1;
    m_service.GetShowDuplicate(showDuplicates);

    MessageState state;
    state.shown = m_service.GetMsgCount();
    state.cleared = m_service.GetClearedCount();
    state.all = m_service.Store()->Count() - state.cleared;
    state.filtered = m_service.GetLeastLevel() > 0 || showDuplicates == 0 ||
                     std::any_of(filters.begin(), filters.end(),
                                 [](const LogMsgFilter& filter) { return filter.field != kLogMsgNone; });
    state.sorted = key.field != kLogMsgNone;
    state.busy = m_service.IsBusy();
    state.progress = state.busy ? m_service.Progress() : 0;
    return state;
}

void MessageView::RemoveFilters()
{
    const std::array<LogMsgFilter, 3> none;
    m_service.SetFilters(none.data(), static_cast<std::int32_t>(none.size()));
    m_service.SetLeastLevel(0);
    m_service.SetShowDuplicate(1);
    m_service.Apply();
}

void MessageView::CancelApply()
{
    m_service.CancelApply();
    m_list.RefreshHeader();
}

// The list hides its rows at once; the service's next view has only what comes later.
void MessageView::Clear()
{
    m_list.Clear();
    m_list.TakeOver();
    m_service.ClearBefore(static_cast<std::int32_t>(m_service.Store()->Count() + 1));
}

void MessageView::ShowCleared()
{
    m_list.ShowCleared();
    m_service.ClearBefore(0);
}

void MessageView::Settle()
{
    ZEMA::String path;
    bool isReading = true;
    for (bool unused = false; isReading && !m_options.follow; ::Sleep(kSettlePause))
        m_service.GetFileInfo(path, isReading, unused, unused);
    m_service.Settle();
    m_list.TakeOver();
    m_list.RefreshHeader();
}

} // namespace logdesk
