// What the user can do with a session in an engine.
#include "QmLogRow.h"
#include "engine/LogTable.h"
#include "logdesk/EngineFrame.h"
#include "logdesk/GoToDialog.h"
#include "logdesk/GoToText.h"
#include "logdesk/NumberText.h"
#include "logdesk/SelectMessage.h"
#include "msgservice/session/ClockText.h"
#include "qmcommon/QmCommandMenu.h"
#include "qmcommon/QmHandlerWnd.h"

#include <algorithm>
#include <array>

namespace logdesk
{

namespace
{

// The menus of the menu bar, in its order.
enum EngineMenu
{
    kEngineFileMenu,
    kEngineEditMenu,
    kEngineMessagesMenu,
    kEngineViewMenu
};

} // namespace

// ---- Menus and keys

void EngineFrame::Scan(IQmCommand& collector)
{
    AddCommand(collector, {"&Go To...", [this] { AskWhereToGo(); }, 'G', kQmControl});
    AddCommand(collector, {"Cancel", [this] { PressStatusButton(); }, VK_ESCAPE, 0, false,
                           m_service && (m_service->IsBusy() || m_service->GetBounds())});
}

// The list takes characters for itself; the frame's keys are none.
BOOL EngineFrame::PreTranslateMessage(MSG* message)
{
    MSG ours = *message;
    ours.hwnd = m_hWnd;
    return QmHandler<CWnd>::PreTranslateMessage(&ours);
}

void EngineFrame::ScanMessages(IQmCommand& collector)
{
    if (!m_service)
        return;
    const bool isReady = !m_service->IsBusy();
    const bool hasRow = m_service->RowOf(FocusedId()) != nullptr;
    AddCommand(collector, {"&Next Error", [this] { GoToError(true); }, VK_DOWN, kQmAlt, false,
                           NumberBefore(true).has_value(), "NextError.ico"});
    AddCommand(collector, {"Previo&us Error", [this] { GoToError(false); }, VK_UP, kQmAlt, false,
                           NumberBefore(false).has_value(), "PreviousError.ico"});
    AddCommand(collector, {"&Go To...", [this] { AskWhereToGo(); }, 'G', kQmControl});
    AddCommand(collector, {"&During This Block", [this] { ShowDuring(); }, 'D', kQmControl, false, hasRow});
    AddCommand(collector, {"Show A&mong All Rows", [this] { ShowAllRows(); }, VK_RETURN, kQmControl, false,
                           isReady && (m_service->IsFiltered() || m_service->IsSorted())});
    collector.AddSeparator();
    AddCommand(collector, {"&Find Text...", [this] { m_list.EditFilter(kLogMsgBody, ""); }, 'F', kQmControl,
                           false, isReady, "Find"});
    AddCommand(collector,
               {"F&ilter on This Value...", [this] { FilterOnValue(); }, 0, 0, false, isReady && hasRow});
    const std::uint32_t least = m_service->GetLeastLevel();
    const auto level = [&](const char* caption, std::uint32_t wanted) {
        const bool isOn = least == wanted;
        AddCommand(collector, {caption, [this, wanted, isOn] { SetLeastLevel(isOn ? 0 : wanted); }, 0, 0,
                               isOn, isReady});
    };
    level("Errors Onl&y", msgservice::kErrorLevel);
    level("&Warnings and Errors", msgservice::kWarningLevel);
    AddCommand(collector, {"Remove Fil&ters", [this] { ShowAllRows(); }, 0, 0, false,
                           isReady && m_service->IsFiltered()});
    AddCommand(collector, {"&Refresh", [this] { RefreshAll(); }, VK_F5, 0, false, isReady, "Refresh"});
}

void EngineFrame::ScanView(IQmCommand& collector)
{
    const auto colours = [&](const char* caption, ColourChoice choice) {
        const auto use = [this, choice] {
            m_options.look.colours = choice;
            UseColours();
        };
        AddCommand(collector, {caption, use, 0, 0, m_options.look.colours == choice});
    };
    colours("Colours as the &System", ColourChoice::AsSystem);
    colours("Li&ght Colours", ColourChoice::Light);
    colours("&Dark Colours", ColourChoice::Dark);
    collector.AddSeparator();
    AddCommand(collector, {"&Pause Following When Scrolled Up",
                           [this] { m_list.SetFollowPauses(!m_list.GetFollowPauses()); }, 0, 0,
                           m_list.GetFollowPauses()});
}

IQmHandler& EngineFrame::HandlerOf(UINT menu)
{
    switch (menu)
    {
    case kEngineFileMenu:
        return m_fileCommands;
    case kEngineEditMenu:
        return m_editCommands;
    case kEngineMessagesMenu:
        return m_list;
    case kEngineViewMenu:
        return m_viewCommands;
    default:
        return m_helpCommands;
    }
}

void EngineFrame::OnInitMenuPopup(CMenu* popup, UINT index, BOOL system)
{
    if (system)
        return;
    m_menuHandler = &HandlerOf(index);
    while (popup->GetMenuItemCount() > 0)
        popup->DeleteMenu(0, MF_BYPOSITION);
    CQmCommandDefineMenu menu(*popup);
    m_menuHandler->Scan(menu);
}

BOOL EngineFrame::OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info)
{
    if (m_menuHandler && id >= kQmFirstCommand && id <= kQmLastCommand)
        return CQmHandlerWnd(m_menuHandler).OnCmdMsg(id, code, extra, info);
    return QmHandler<CWnd>::OnCmdMsg(id, code, extra, info);
}

// ---- Filters and views

void EngineFrame::PressStatusButton()
{
    if (m_service->IsBusy())
    {
        m_service->CancelApply();
        m_list.RefreshHeader();
    }
    else
        ShowAllRows();
    m_list.SetFocus();
    Refresh();
}

void EngineFrame::SetLeastLevel(std::uint32_t level)
{
    m_service->SetLeastLevel(level);
    m_service->Apply();
}

// A further filter, with what the cell has; the user may change it before.
void EngineFrame::FilterOnValue()
{
    const MessageList::Cell cell = m_list.CommandCell();
    const engine::ShippedRow* const row =
        m_service->RowOf(m_list.GetMessageOffset() + static_cast<std::uint32_t>(std::max(0, cell.row)));
    if (!row)
        return;
    const ILogMsgData* const message =
        m_service->GetMsg(m_list.GetMessageOffset() + static_cast<std::uint32_t>(cell.row));
    std::string value = cell.field == kLogMsgTopic   ? row->log
                        : cell.field == kLogMsgLevel ? message->GetLevelText()
                                                     : message->GetBody();
    value.resize(std::min(value.size(), value.find_first_of("\r\n")));
    const bool hasText = cell.field == kLogMsgTopic || cell.field == kLogMsgLevel;
    m_list.EditFilter(hasText ? cell.field : kLogMsgBody, value.c_str());
}

// A filter in place of all others.
void EngineFrame::FindText(const std::string& text)
{
    std::array<LogMsgFilter, 3> filters;
    filters[0].field = kLogMsgBody;
    filters[0].value = text.c_str();
    m_service->SetFilters(filters.data(), static_cast<std::int32_t>(filters.size()));
    m_service->Apply();
}

// The focus stays on its row.
void EngineFrame::ShowAllRows()
{
    const std::array<LogMsgFilter, 3> noFilters;
    const std::array<LogMsgSortKey, 3> noKeys;
    m_service->SetFilters(noFilters.data(), static_cast<std::int32_t>(noFilters.size()));
    m_service->SetSortKeys(noKeys.data(), static_cast<std::int32_t>(noKeys.size()));
    m_service->SetShowDuplicate(1);
    m_service->SetLeastLevel(0);
    m_service->SetBounds({});
    m_service->Apply();
}

void EngineFrame::RefreshAll()
{
    m_service->Refresh();
    m_list.Refresh();
}

// All rows from the block's header to its end, whatever was filtered.
void EngineFrame::ShowDuring()
{
    const engine::ShippedRow* const row = m_service->RowOf(FocusedId());
    if (!row)
        return;
    m_service->Ask([row = *row](engine::RowReader& reader) { return reader.ReadBlock(row); },
                   [this](const std::optional<engine::RowReader::Span>& block, const std::string& failure) {
                       if (!failure.empty())
                           return Tell(failure);
                       if (!block)
                           return Tell("This row belongs to no block");
                       const std::array<LogMsgFilter, 3> noFilters;
                       const std::array<LogMsgSortKey, 3> noKeys;
                       m_service->SetFilters(noFilters.data(), static_cast<std::int32_t>(noFilters.size()));
                       m_service->SetSortKeys(noKeys.data(), static_cast<std::int32_t>(noKeys.size()));
                       m_service->SetLeastLevel(0);
                       m_service->SetBounds(block);
                       m_service->Apply();
                       Tell("");
                   });
}

// ---- Places

std::uint32_t EngineFrame::FocusedId()
{
    const int row = m_list.GetCurrentFocus();
    return row >= 0 ? m_list.GetMessageOffset() + static_cast<std::uint32_t>(row) : kNoLogMsgId;
}

void EngineFrame::GoToNumber(std::uint32_t number)
{
    const std::uint32_t id = m_service->FindTag(static_cast<std::int32_t>(number));
    if (id == kNoLogMsgId)
        return Tell("Number " + std::to_string(number) + " is not among the rows that are shown");
    SelectMessage(m_list, id);
    Tell("");
    Publish();
}

void EngineFrame::ShowAnswer(const std::optional<engine::RowReader::Span>& row, const std::string& failure,
                             const char* none)
{
    if (!failure.empty())
        Tell(failure);
    else if (!row)
        Tell(none);
    else
        GoToNumber(row->first);
}

// The number that a search starts from: the focused row's, or if none has the focus, one beyond the session's
// first or last row.
std::optional<std::uint32_t> EngineFrame::NumberBefore(bool forward)
{
    const std::uint32_t focused = FocusedId();
    if (const engine::ShippedRow* const row = m_service->RowOf(focused))
        return row->number;
    const auto span = m_service->GetState().span;
    if (focused != kNoLogMsgId || !span)
        return {};
    return forward ? span->first - 1 : std::max(span->last + 1, span->last);
}

void EngineFrame::GoToError(bool forward)
{
    const std::optional<std::uint32_t> number = NumberBefore(forward);
    if (!number)
        return;
    m_service->Ask(
        [number = *number, forward](engine::RowReader& reader) {
            return reader.ReadNearest(number, kErrorKind, forward);
        },
        [this, forward](const std::optional<engine::RowReader::Span>& found, const std::string& failure) {
            ShowAnswer(found, failure,
                       forward ? "There is no error after this row" : "There is no error before this row");
        });
}

void EngineFrame::AskWhereToGo()
{
    GoToDialog(this, m_goTo, [this](const std::string& text) { return GoTo(text); }).DoModal();
}

// A time without a date is one of the focused row's day.
std::string EngineFrame::GoTo(const std::string& typed)
{
    const GoToAnswer answer = ParseGoTo(typed, {});
    if (!answer.target)
        return answer.error;
    const GoToTarget& target = *answer.target;
    if (target.kind == GoToTarget::Kind::ShownRow)
    {
        if (const std::uint32_t shown = m_service->GetState().shown; target.value > shown)
            return "There is no row " + NumberText(target.value) + ": " + CountText(shown, "row") +
                   (shown == 1 ? " is shown" : " are shown");
        SelectMessage(m_list, target.value);
        return "";
    }
    if (target.kind == GoToTarget::Kind::Number)
    {
        GoToNumber(target.value);
        return "";
    }
    const engine::ShippedRow* const row = m_service->RowOf(FocusedId());
    const bool hasDay = row && row->time != 0;
    if (!hasDay && target.time.find('-') == std::string::npos)
        return "No selected row tells the day: type it before the time, as in 2026-11-23 14:03";
    const auto time = msgservice::ReadLocalTime(target.time, hasDay ? row->time + engine::kStartOf1970 : 0);
    if (!time)
        return "\"" + typed + "\" is no time such as 14:03, 14:03:10.5 or 2026-11-23 14:03";
    m_service->Ask(
        [time = *time - engine::kStartOf1970](engine::RowReader& reader) { return reader.ReadTime(time); },
        [this](const std::optional<engine::RowReader::Span>& found, const std::string& failure) {
            ShowAnswer(found, failure, "No row is as late as that");
        });
    return "";
}

// ---- Pictures

void EngineFrame::TakeStep(const Step& step)
{
    Settle();
    switch (step.action)
    {
    case StepAction::Size:
        SetWindowPos(nullptr, 0, 0, step.count, step.height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        break;
    case StepAction::Dark:
        m_options.look.colours = step.count != 0 ? ColourChoice::Dark : ColourChoice::Light;
        UseColours();
        break;
    case StepAction::Message:
        SelectMessage(m_list, static_cast<std::uint32_t>(step.count));
        break;
    case StepAction::FindMessage:
        FindText(step.text);
        break;
    case StepAction::NextMessageError:
    case StepAction::PreviousMessageError:
        GoToError(step.action == StepAction::NextMessageError);
        break;
    case StepAction::During:
        ShowDuring();
        break;
    case StepAction::Sort: {
        const LogMsgSortKey key = {static_cast<ILogMsgDataKind>(step.count), step.height == 0};
        m_service->SetSortKeys(&key, 1);
        m_service->Apply();
        break;
    }
    case StepAction::Level:
        SetLeastLevel(static_cast<std::uint32_t>(step.count));
        break;
    case StepAction::Report:
        m_list.ShowReport(step.count != 0);
        break;
    case StepAction::Preview:
        m_list.SetShowPreview(step.count != 0);
        break;
    default:
        break;
    }
    Settle();
}

} // namespace logdesk
