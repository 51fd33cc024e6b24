// What the user can do with the log text.
#include "QmLogReader.h"
#include "QmLogTextCtrlEntries.h"
#include "logdesk/BookmarksDialog.h"
#include "logdesk/DeskFrame.h"
#include "logdesk/GoToDialog.h"
#include "logdesk/GoToText.h"
#include "logdesk/NumberText.h"
#include "qmtextctrl/QmTextCtrlEntries.h"
#include "zemacore/WideText.h"

#include <algorithm>

namespace logdesk
{

namespace
{

using Direction = msgservice::MsgService::Direction;

constexpr std::size_t kBookmarkBytes = 200; // of a row's text in the list

std::vector<std::string> LogNames()
{
    std::vector<std::string> names(static_cast<std::size_t>(CQmLogTextCtrl::GetFilePathCount()));
    for (std::size_t file = 0; file < names.size(); ++file)
        names[file] = CQmLogTextCtrl::GetFilePath(static_cast<int>(file));
    return names;
}

std::string NoRowText(std::uint32_t number)
{
    return "No row of the logs has the number " + std::to_string(number);
}

} // namespace

// The log text's own commands among LogDesk's. What writes into the logs is for developers only.
void DeskFrame::ScanLogText(IQmCommand& collector)
{
    CQmLogTextCtrl* const text = &GetTextCtrl();
    collector.Add(std::make_unique<CQmLogTextCtrlEntrySwitch>(text));
    collector.Add(std::make_unique<CQmLogTextCtrlEntrySwitchAll>(text));
    collector.Add(std::make_unique<CQmLogTextCtrlEntryFollow>(text));
    collector.AddSeparator();
    collector.Add(std::make_unique<CEntryGoUp>(text));
    collector.Add(std::make_unique<CEntryGoDown>(text));
    ScanPlaces(collector);
    collector.AddSeparator();
    collector.Add(std::make_unique<CQmTextCtrlEntryFindInput>(text));
    collector.Add(std::make_unique<CQmTextCtrlEntryFindNext>(text));
    collector.Add(std::make_unique<CQmTextCtrlEntryFindPrevious>(text));
    collector.AddSeparator();
    collector.Add(std::make_unique<CQmTextCtrlEntrySelectAll>(text));
    collector.Add(std::make_unique<CQmLogTextCtrlEntryCopy>(text));
    collector.Add(std::make_unique<CQmLogTextCtrlEntryCopyExcerpt>(text));
    collector.AddSeparator();
    AddCommand(collector, {"Show in &Messages", [this] { ShowInMessages(); }, VK_RETURN, kQmControl, false,
                           m_messages.File().empty() && text->GetRowCount() > 0});
    if (!m_forDevelopers)
        return;
    collector.AddSeparator();
    collector.Add(std::make_unique<CEntryTest>(text));
}

// Getting about in the log text.
void DeskFrame::ScanPlaces(IQmCommand& collector)
{
    const std::uint32_t number = CaretNumber();
    const bool isAny = !m_bookmarks.Get().Numbers().empty();
    AddCommand(collector, {"Go To...", [this] { AskWhereToGo(); }, 'G', kQmControl});
    AddCommand(collector,
               {m_bookmarks.Get().Has(number) ? "Remove &Bookmark" : "Set &Bookmark",
                [this, number] { ToggleBookmark(number); }, VK_F2, kQmControl, false, number != 0});
    AddCommand(collector,
               {"Next Bookmark", [this] { GoToBookmark(Direction::Forward); }, VK_F2, 0, false, isAny});
    AddCommand(collector, {"Previous Bookmark", [this] { GoToBookmark(Direction::Backward); }, VK_F2,
                           kQmShift, false, isAny});
    AddCommand(collector, {"Boo&kmarks...", [this] { ShowBookmarks(); }, 0, 0, false, isAny});
    ScanTimes(collector);
}

void DeskFrame::AskWhereToGo()
{
    GoToDialog dialog(this, m_options.goTo, [this](const std::string& text) { return GoTo(text); });
    if (dialog.DoModal() == IDOK)
    {
        Tell(""); // what was told of another row
        FocusPane(Pane::LogText);
    }
    RefreshStatus();
}

std::string DeskFrame::GoTo(const std::string& typed)
{
    const GoToAnswer answer = ParseGoTo(typed, LogNames());
    if (!answer.target)
        return answer.error;
    const GoToTarget& target = *answer.target;
    CQmLogTextCtrl& text = GetTextCtrl();
    if (target.kind == GoToTarget::Kind::Number && target.log.empty())
        return GoToNumber(target.value);
    if (target.kind == GoToTarget::Kind::Time)
        return GoToTime(target.time);
    if (!target.log.empty())
    {
        const std::vector<std::string> logs = LogNames();
        const int log = static_cast<int>(std::find(logs.begin(), logs.end(), target.log) - logs.begin());
        if (target.kind == GoToTarget::Kind::Number)
            return GoToNumberOf(log, target.value);
        const unsigned long rows = QmLogReaderDefine(target.log.c_str()).GetRowCount();
        return target.value > rows ? target.log + " has " + CountText(rows, "row")
                                   : GoToRow(log, target.value - 1);
    }
    const int rows = text.GetRowCount();
    if (target.value > static_cast<std::uint32_t>(rows))
        return "The log text has " + CountText(static_cast<std::uint64_t>(rows), "row");
    ShowPane(Pane::LogText, true);
    text.Focus(static_cast<int>(target.value) - 1, 0, false);
    return "";
}

std::string DeskFrame::GoToNumber(std::uint32_t number)
{
    int file = 0;
    unsigned long row = 0;
    CQmLogRow record = {};
    if (!GetTextCtrl().Find(number, true, file, row) ||
        !QmLogReaderDefine(CQmLogTextCtrl::GetFilePath(file)).ReadStyle(row, record) || record.time != number)
        return NoRowText(number);
    return GoToRow(file, row);
}

std::string DeskFrame::GoToNumberOf(int file, std::uint32_t number)
{
    const char* const log = CQmLogTextCtrl::GetFilePath(file);
    CQmLogReader& reader = QmLogReaderDefine(log);
    unsigned long found = 0;
    unsigned long row = 0;
    CQmLogRow record = {};
    if (reader.GetRowCount() == 0 || !reader.Find(number, true, found, row) ||
        !reader.ReadStyle(row, record) || record.time != number)
        return std::string("No row of ") + log + " has the number " + std::to_string(number);
    return GoToRow(file, row);
}

std::string DeskFrame::GoToRow(int file, unsigned long row)
{
    CQmLogTextCtrl& text = GetTextCtrl();
    ShowPane(Pane::LogText, true);
    if (!text.GetFollowPauses())
        text.SetFollow(false); // or the next row would take it out of sight
    if (text.GoTo(file, row))
        return "";
    return "Row " + NumberText(row + 1) + " of " + CQmLogTextCtrl::GetFilePath(file) +
           " is not there any more";
}

// 0 without a row.
std::uint32_t DeskFrame::CaretNumber()
{
    CQmLogTextCtrl& text = GetTextCtrl();
    CQmLogRow record = {};
    const int row = text.GetCaretRow();
    return row < text.GetRowCount() && text.ReadStyle(row, record) ? record.time : 0;
}

void DeskFrame::ToggleBookmark(std::uint32_t number)
{
    if (number != 0 && !m_bookmarks.Toggle(number))
        Tell("There is no room for more than " + CountText(Bookmarks::kMost, "bookmark"));
    GetTextCtrl().Invalidate();
}

void DeskFrame::GoToBookmark(Direction direction)
{
    const Bookmarks& bookmarks = m_bookmarks.Get();
    const std::uint32_t caret = CaretNumber();
    const std::optional<std::uint32_t> number =
        direction == Direction::Forward ? bookmarks.Next(caret) : bookmarks.Previous(caret);
    Tell(number ? GoToNumber(*number) : "");
}

void DeskFrame::ShowBookmarks()
{
    std::vector<BookmarksDialog::Line> lines;
    for (const std::uint32_t number : m_bookmarks.Get().Numbers())
        lines.push_back({number, BookmarkText(number)});
    BookmarksDialog dialog(this, lines, [this](std::uint32_t number) {
        if (m_bookmarks.Get().Has(number))
            m_bookmarks.Toggle(number);
    });
    dialog.DoModal();
    GetTextCtrl().Invalidate();
    if (!dialog.Chosen())
        return;
    Tell(GoToNumber(*dialog.Chosen()));
    FocusPane(Pane::LogText);
}

// "18342  SQL: select * from table"
std::string DeskFrame::BookmarkText(std::uint32_t number)
{
    int file = 0;
    unsigned long row = 0;
    const char* line = nullptr;
    unsigned long length = 0;
    CQmLogRow record = {};
    if (!GetTextCtrl().Find(number, true, file, row))
        return NoRowText(number);
    const char* const log = CQmLogTextCtrl::GetFilePath(file);
    if (!QmLogReaderDefine(log).Read(row, line, length, record) || record.time != number)
        return NoRowText(number);
    std::string text(line, ZEMA::WholeCharacters(line, std::min<std::size_t>(length, kBookmarkBytes)));
    std::replace_if(
        text.begin(), text.end(), [](char character) { return static_cast<unsigned char>(character) < ' '; },
        ' ');
    return std::to_string(number) + "  " + log + ": " + text;
}

} // namespace logdesk
