// What the user can do with messages.
#include "logdesk/DeskFrame.h"
#include "logdesk/SelectMessage.h"

namespace logdesk
{

namespace
{

using Direction = msgservice::MsgService::Direction;

// The number of a log among those of the log text; -1 if it is none of them.
int FileOfLog(const std::string& log)
{
    for (int file = 0; file < CQmLogTextCtrl::GetFilePathCount(); ++file)
        if (IsSameLog(CQmLogTextCtrl::GetFilePath(file), log))
            return file;
    return -1;
}

} // namespace

void DeskFrame::ScanMessages(IQmCommand& collector)
{
    MessageList& list = m_messages.List();
    const std::uint32_t id = m_messages.FocusedId();
    const bool isPausing = list.GetFollowPauses();
    AddCommand(collector, {"&Next Error", [this] { GoToMessageError(Direction::Forward); }, VK_DOWN, kQmAlt,
                           false, true, "NextError.ico"});
    AddCommand(collector, {"Previo&us Error", [this] { GoToMessageError(Direction::Backward); }, VK_UP,
                           kQmAlt, false, true, "PreviousError.ico"});
    AddCommand(collector, {"F&ilter on This Value...", [this] { FilterOnValue(); }, 0, 0, false,
                           list.CommandCell().row >= 0 && !m_messages.Service().IsBusy()});
    AddCommand(collector, {"Show in Lo&g", [this, id] { ShowInLog(id); }, VK_RETURN, kQmControl, false,
                           m_messages.RowOf(id).has_value()});
    collector.AddSeparator();
    ScanMessageFilters(collector);
    AddCommand(collector, {"Pause Following When S&crolled Up",
                           [&list, isPausing] { list.SetFollowPauses(!isPausing); }, 0, 0, isPausing});
    const bool isGuarding = list.GetGuardsFormulas();
    AddCommand(collector, {"No Formulas in Ta&bles",
                           [&list, isGuarding] { list.SetGuardsFormulas(!isGuarding); }, 0, 0, isGuarding});
}

void DeskFrame::ScanMessageFilters(IQmCommand& collector)
{
    msgservice::MsgService& service = m_messages.Service();
    const bool isReady = !service.IsBusy();
    const std::uint32_t least = service.GetLeastLevel();
    const auto level = [&](const char* caption, std::uint32_t wanted) {
        const bool isOn = least == wanted;
        AddCommand(collector, {caption, [this, wanted, isOn] { SetLeastLevel(isOn ? 0 : wanted); }, 0, 0,
                               isOn, isReady});
    };
    level("Errors Onl&y", msgservice::kErrorLevel);
    level("&Warnings and Errors", msgservice::kWarningLevel);
    AddCommand(collector, {"Remove Fil&ters", [this] { m_messages.RemoveFilters(); }, 0, 0, false,
                           isReady && m_messages.State().filtered});
    AddCommand(collector, {"&Show Cleared Messages Again", [this] { m_messages.ShowCleared(); }, 0, 0, false,
                           isReady && service.GetClearedCount() > 0});
}

void DeskFrame::SetLeastLevel(std::uint32_t level)
{
    m_messages.Service().SetLeastLevel(level);
    m_messages.Service().Apply();
}

// A further filter, with what the cell has; the user may change it before.
void DeskFrame::FilterOnValue()
{
    MessageList& list = m_messages.List();
    const MessageList::Cell cell = list.CommandCell();
    const std::uint32_t id = list.GetMessageOffset() + static_cast<std::uint32_t>(cell.row);
    if (cell.row >= 0)
        list.EditFilter(cell.field, m_messages.FieldLine(id, cell.field).c_str());
}

void DeskFrame::GoToMessageError(Direction direction)
{
    msgservice::MsgService& service = m_messages.Service();
    const std::uint32_t focused = m_messages.FocusedId();
    const bool isForward = direction == Direction::Forward;
    const std::uint32_t begin = isForward ? 0 : service.GetMsgCount() + 1;
    const std::uint32_t id =
        service.FindLevel(focused == kNoLogMsgId ? begin : focused, msgservice::kErrorLevel, direction);
    const char* const none =
        isForward ? "There is no error after this message" : "There is no error before this message";
    Tell(id == kNoLogMsgId ? none : "");
    if (id != kNoLogMsgId)
        SelectMessage(m_messages.List(), id);
}

void DeskFrame::ShowInLog(std::uint32_t id)
{
    const auto row = m_messages.RowOf(id);
    const int file = row ? FileOfLog(row->log) : -1;
    if (!row)
        return Tell("This message is no row of the session's logs");
    if (file < 0)
        return Tell(row->log + " is not shown in the log text, which shows the five logs of a session");
    const std::string error = GoToRow(file, row->index);
    if (error.empty())
        FocusPane(Pane::LogText);
    else
        Tell(error);
}

void DeskFrame::ShowInMessages()
{
    CQmLogTextCtrl& text = GetTextCtrl();
    const int caret = text.GetCaretRow();
    if (caret >= text.GetRowCount())
        return;
    unsigned long row = 0;
    text.DefineReader(caret, row);
    const char* const log = CQmLogTextCtrl::GetFilePath(text.GetRowFile(caret));
    const std::uint32_t id = m_messages.IdOf(log, static_cast<std::uint32_t>(row));
    if (id == kNoLogMsgId)
        return Tell(m_messages.State().filtered ? "Filters leave out the message of this row"
                                                : "This row is not among the messages");
    ShowPane(Pane::Messages, true);
    m_messages.List().TakeOver();
    SelectMessage(m_messages.List(), id);
    FocusPane(Pane::Messages);
}

LRESULT DeskFrame::OnPresent(WPARAM, LPARAM id)
{
    ShowInLog(static_cast<std::uint32_t>(id));
    return 0;
}

} // namespace logdesk
