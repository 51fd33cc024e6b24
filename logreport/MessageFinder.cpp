#include "logreport/MessageFinder.h"

#include "logreport/model/Export.h"

#include <algorithm>

namespace logreport
{

namespace
{

constexpr UINT kWorking = USER_TIMER_MINIMUM; // milliseconds between two slices of work
constexpr UINT kWatching = 250;               // while there is nothing but to see whether there is more
constexpr ULONGLONG kFindSlice = 30;          // of work

std::vector<std::string> Places()
{
    std::vector<std::string> places = {"Shown columns"};
    for (std::int32_t field = 0; field < kLogMsgKindCount; ++field)
        places.emplace_back(LogMsgDataKindText(field));
    return places;
}

} // namespace

void MessageFinder::Open(const char* text)
{
    if (!m_viewer || !m_viewer->m_hWnd)
        return;
    if (text && text != m_settings.text)
    {
        m_settings.text = text;
        m_dialog.DestroyWindow(); // which has the former text
    }
    if (m_dialog.Open(*m_viewer, Places(), m_settings))
        OnFindChange(m_settings);
}

void MessageFinder::Next(FindMessages::Direction direction)
{
    if (m_settings.text.empty())
        Open(nullptr);
    else
        Begin(direction);
}

// ---- What the window tells

void MessageFinder::OnFindChange(const QmFindSettings& settings)
{
    m_settings = settings;
    TakeView();
    ShowState();
    Plan();
}

void MessageFinder::OnFindNext(const QmFindSettings& settings)
{
    m_settings = settings;
    Begin(settings.isUp ? FindMessages::Direction::Up : FindMessages::Direction::Down);
}

void MessageFinder::OnFindClose()
{
    m_find.StopJump();
    Hold(nullptr); // the timer, which else lets go of it, may have nothing more to do
    Plan();
}

// ---- What happens to the viewer

void MessageFinder::OnServiceChange()
{
    Hold(nullptr);
    m_find.Restart();
}

void MessageFinder::OnDestroy()
{
    Hold(nullptr);
    m_find.Restart();
    m_dialog.DestroyWindow();
}

void MessageFinder::Detach()
{
    OnDestroy();
    m_viewer = nullptr;
}

// ---- What is searched

// Null while nothing can be asked.
ILogMsgService* MessageFinder::ReadyService()
{
    ILogMsgService* const service = m_viewer ? m_viewer->GetLogMsgService() : nullptr;
    const bool isReady = service && !m_isActing && !service->IsBusy();
    return isReady && m_viewer ? service : nullptr;
}

// What the user sees: the columns, or the bodies alone, or both.
std::vector<std::int32_t> MessageFinder::Fields()
{
    if (m_settings.place > 0)
        return {m_settings.place - 1};
    std::vector<std::int32_t> columns;
    columns.reserve(kLogMsgKindCount + 1);
    for (int column = 0; column < m_viewer->GetActiveSubItemCount(); ++column)
        columns.push_back(m_viewer->GetSubItemFromColumn(column));
    __int64 showsPreview = 0;
    m_viewer->GetProperty(RVP_SHOWPREVIEW, &showsPreview);
    if (showsPreview && std::find(columns.begin(), columns.end(), kLogMsgBody) == columns.end())
        columns.push_back(kLogMsgBody);
    return ExportFields(m_viewer->GetHideRow() != 0, false, columns);
}

std::optional<std::uint32_t> MessageFinder::FocusedId()
{
    const int row = m_viewer->GetCurrentFocus();
    return row >= 0 && row < m_viewer->GetRowCount()
               ? std::optional(m_viewer->GetMessageOffset() + static_cast<std::uint32_t>(row))
               : std::nullopt;
}

// What is wanted, and the rows that there are: as far as they have been announced.
void MessageFinder::TakeView()
{
    m_find.SetWish(
        {m_settings.text, Fields(), m_settings.matchesCase, m_settings.isWholeWord, m_settings.isExpression});
    const std::uint32_t first = m_viewer->GetMessageOffset();
    const auto rows = static_cast<std::uint32_t>(m_viewer->GetRowCount());
    const std::uint32_t announced = m_viewer->GetLastMessage();
    if (rows == 0)
        m_find.SetRange(1, 0);
    else
        m_find.SetRange(first, announced > 0 ? std::min(first + rows - 1, announced) : first + rows - 1);
}

// ---- Finding

void MessageFinder::Begin(FindMessages::Direction direction)
{
    if (!ReadyService() || !m_viewer->m_hWnd)
        return ShowState();
    TakeView();
    // What is new may be where the user is; a further one is elsewhere.
    const bool isNew = !(m_find.GetWish() == m_jumpedWith);
    m_jumpedWith = m_find.GetWish();
    m_direction = direction;
    m_wrappedId = kNoLogMsgId;
    m_find.Jump(FocusedId(), direction, isNew);
    if (m_find.IsJumping())
        Hold(m_viewer->GetLogMsgService());
    ShowState();
    Plan();
}

void MessageFinder::OnTimer()
{
    if (ILogMsgService* const service = ReadyService())
    {
        TakeView();
        Work(*service);
    }
    else
        m_find.StopJump();
    if (!m_viewer)
        return;
    if (!m_find.IsJumping())
        Hold(nullptr);
    if (const std::optional<FindMessages::Hit> hit = m_find.TakeHit())
        Arrive(*hit);
    if (!m_viewer)
        return;
    ShowState();
    Plan();
}

void MessageFinder::Work(ILogMsgService& service)
{
    if (!m_find.IsJumping() && !m_dialog.m_hWnd)
        return;
    const ULONGLONG begin = ::GetTickCount64();
    const bool wasJumping = m_find.IsJumping();
    while (m_find.Step(service) && ::GetTickCount64() - begin < kFindSlice)
        if (!m_viewer || m_viewer->GetLogMsgService() != &service || wasJumping != m_find.IsJumping())
            return;
}

void MessageFinder::Arrive(const FindMessages::Hit& hit)
{
    if (hit.id == kNoLogMsgId && !m_dialog.m_hWnd)
        Open(nullptr); // it tells so
    if (hit.id == kNoLogMsgId)
        return;
    m_wrappedId = hit.isWrapped ? hit.id : kNoLogMsgId;
    m_viewer->SelectMsg(hit.id);
    CRect row;
    if (m_viewer && m_dialog.m_hWnd && m_viewer->GetRowRect(m_viewer->GetCurrentFocus(), -1, row, RVRC_WHOLE))
    {
        m_viewer->ClientToScreen(row);
        m_dialog.Uncover(row);
    }
}

// One service at a time; null lets go of the one that is held.
void MessageFinder::Hold(ILogMsgService* service)
{
    if (service == m_held)
        return;
    if (ILogMsgService* const held = std::exchange(m_held, nullptr))
        held->HoldView(0);
    if (service)
        service->HoldView(1);
    m_held = service;
}

void MessageFinder::Plan()
{
    if (!m_viewer || !m_viewer->m_hWnd)
        return;
    const bool isOpen = m_dialog.m_hWnd != nullptr;
    const bool isWorking = IsJumping() || (isOpen && m_find.HasWish() && !m_find.IsCounted());
    if (isWorking || isOpen)
        m_viewer->SetTimer(kTimer, isWorking ? kWorking : kWatching, nullptr);
    else
        m_viewer->KillTimer(kTimer);
}

void MessageFinder::ShowState()
{
    if (!m_dialog.m_hWnd)
        return;
    if (!ReadyService())
        return m_dialog.SetState("No messages can be found at the moment.", false);
    std::string state;
    if (!m_find.GetFault().empty())
        state = m_find.GetFault();
    else if (m_find.HasWish())
    {
        const std::optional<std::uint32_t> id = FocusedId();
        state = FoundText(m_find, id ? m_find.NumberOf(*id) : 0);
        if (id && *id == m_wrappedId)
            state = (m_direction == FindMessages::Direction::Down ? "Wrapped at the end. "
                                                                  : "Wrapped at the beginning. ") +
                    state;
    }
    m_dialog.SetState(state, m_find.HasWish());
}

} // namespace logreport
