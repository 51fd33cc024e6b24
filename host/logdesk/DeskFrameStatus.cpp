// The frame's status bar, notices and title, and what its timer does.
#include "QmLogRow.h"
#include "logdesk/DeskFrame.h"

namespace logdesk
{

namespace
{

constexpr unsigned kNoticeTicks = 4; // of the timer

} // namespace

void DeskFrame::OnTimer(UINT_PTR timer)
{
    if (timer != kStatusTimer)
    {
        Default();
        return;
    }
    m_messages.Publish();
    TellSaved();
    if (++m_ticks % kNoticeTicks == 0)
        RefreshNotices();
    RefreshTimes();
    RefreshStatus();
}

LRESULT DeskFrame::OnPublish(WPARAM, LPARAM)
{
    m_messages.Publish();
    return 0;
}

// Of the folder only while its logs are seen.
void DeskFrame::RefreshNotices()
{
    if (m_bookmarks.ForgetOld())
        GetTextCtrl().Invalidate();
    FolderState state = ReadFolderState(GetTextCtrl(), m_place);
    state.clockSteps = m_times.GetStepCount();
    if (QmLogTimeSample before, after; m_times.ReadStep(0, before, after))
        state.firstStep = after.number;
    m_told.Add(m_messages.TakeNotices(), m_ticks, kServiceTicks);
    std::vector<std::string> lines = m_answer.Lines(m_ticks);
    for (const std::string& told : m_told.Lines(m_ticks))
        lines.push_back(told);
    if (m_split.Shows(Pane::LogText))
    {
        const std::vector<std::string> notices = Notices(state);
        lines.insert(lines.end(), notices.begin(), notices.end());
    }
    m_folder = state;
    if (m_notices.SetLines(lines))
        LayOut();
}

void DeskFrame::Tell(const std::string& text)
{
    m_answer.Clear();
    m_answer.Add(text, m_ticks, kTellTicks);
    RefreshNotices();
}

void DeskFrame::ShowTitle()
{
    const std::string file = m_messages.File();
    const std::string title = file.empty() ? TitleText(m_place.folder, m_session) : FileTitleText(file);
    if (title != m_title)
        SetWindowText(title.c_str());
    m_title = title;
}

ViewState DeskFrame::ReadView()
{
    CQmLogTextCtrl& text = GetTextCtrl();
    ViewState view;
    view.rows = text.GetRowCount();
    view.caretRow = text.GetCaretRow();
    CQmLogRow row = {};
    if (view.caretRow < view.rows && text.ReadStyle(view.caretRow, row))
    {
        view.log = CQmLogTextCtrl::GetFilePath(text.GetRowFile(view.caretRow));
        view.number = row.time;
    }
    if (!text.GetFollow())
        view.follow = FollowState::Off;
    else if (text.IsFollowPaused())
        view.follow = FollowState::Paused;
    return view;
}

// The pane with the focus tells its place; the messages tell how many they are in any case.
StatusTexts DeskFrame::ReadStatus()
{
    StatusTexts texts;
    if (!m_messages.File().empty())
        texts.session = "File opened";
    else if (m_folder)
    {
        texts.session = SessionText(m_session, *m_folder);
        texts.link = SessionLinkText(m_session, *m_folder);
    }
    MessageList& list = m_messages.List();
    ViewState view;
    if (ActivePane() == Pane::LogText)
    {
        view = ReadView();
        texts.place = CaretText(view);
        if (const std::string time = LongTimeText(view.number); !time.empty())
            texts.place += ", " + time;
        if (const int folded = GetTextCtrl().GetLeftFolded(); folded > 0)
        {
            texts.session = LeftFoldedText(folded);
            texts.link.clear();
        }
        texts.rows = RowsText(view);
    }
    else
    {
        texts.place = list.GetStatusText().c_str();
        view.follow = list.IsFollowing()      ? FollowState::On
                      : list.GetFollow() != 0 ? FollowState::Paused
                                              : FollowState::Off;
    }
    texts.follow = FollowText(view);
    texts.errors = ErrorsText(m_errors.Count());
    MessageState messages = m_messages.State();
    messages.saving = m_saving != nullptr;
    messages.saved = m_saving ? m_saving->Progress() : 0;
    texts.messages = MessagesText(messages);
    texts.button = MessagesButton(messages);
    return texts;
}

void DeskFrame::RefreshStatus()
{
    ShowTitle();
    m_errors.Take(m_messages.Service().Store());
    m_status.SetTexts(ReadStatus());
    if (m_tools.IsShown())
        m_tools.SetStates(ReadTools(ToolHandlers()));
}

// Whoever clears the list has seen its errors, too.
void DeskFrame::ClearErrors()
{
    const bool hadFocus = ::GetFocus() == m_status.Watch().m_hWnd;
    m_errors.Take(m_messages.Service().Store());
    m_errors.Clear();
    if (hadFocus)
        FocusPane(ActivePane());
    RefreshStatus();
}

void DeskFrame::PressStatusButton()
{
    if (m_messages.Service().IsBusy())
        m_messages.CancelApply();
    else if (m_saving)
        m_saving->Cancel();
    else
        m_messages.RemoveFilters();
    FocusPane(Pane::Messages);
    RefreshStatus();
}

} // namespace logdesk
