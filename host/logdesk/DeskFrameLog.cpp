// What the log text shows: its tabs, chosen logs and kinds, and the time of one block.
#include "QmLogReader.h"
#include "logdesk/DeskFrame.h"

namespace logdesk
{

void DeskFrame::ShowTab(int file)
{
    ShowPane(Pane::LogText, true);
    m_browser.ShowTab(file);
    RefreshNotices();
}

void DeskFrame::ShowRowsAfterMain()
{
    CQmLogReader& main = QmLogReaderDefine(CQmLogTextCtrl::GetFilePath(0));
    CQmLogRow last = {};
    const unsigned long rows = main.GetRowCount();
    if (rows == 0 || !main.ReadStyle(rows - 1, last))
        return;
    int file = 0;
    unsigned long row = 0;
    if (!GetTextCtrl().Find(last.time + 1, true, file, row))
        return;
    ShowTab(CQmLogBrowser::kAllLogsTab);
    Tell(GoToRow(file, row));
    FocusPane(Pane::LogText);
}

void DeskFrame::ShowDuring()
{
    CQmLogTextCtrl& text = GetTextCtrl();
    if (text.IsDuring())
        text.LeaveDuring();
    else if (!text.ShowDuring(text.GetCaretRow()))
        Tell(text.GetIndexProgress() < 100 ? "The logs are still being read" : "This row is in no block");
    RefreshNotices();
}

void DeskFrame::GoToErrorInLogs(bool forward)
{
    if (GetTextCtrl().GoToErrorInLogs(forward))
        Tell("");
    else if (GetTextCtrl().GetIndexProgress() < 100)
        Tell("The logs are still being read");
    else
        Tell(forward ? "There is no error after this row" : "There is no error before this row");
}

// The keys that show a log, whatever has the focus.
void DeskFrame::ScanTabs(IQmCommand& collector)
{
    const int shown = m_browser.GetShownTab();
    const bool isShown = m_split.Shows(Pane::LogText);
    AddCommand(collector, {"&All Logs", [this] { ShowTab(CQmLogBrowser::kAllLogsTab); }, '0', kQmAlt,
                           isShown && shown == CQmLogBrowser::kAllLogsTab});
    for (int file = 0; file < CQmLogTextCtrl::GetFilePathCount(); ++file)
        AddCommand(collector, {CQmLogTextCtrl::GetFilePath(file), [this, file] { ShowTab(file); },
                               static_cast<unsigned>('1' + file), kQmAlt, isShown && shown == file});
}

// Others of its keys.
void DeskFrame::ScanLogMoves(IQmCommand& collector)
{
    CQmLogTextCtrl& text = GetTextCtrl();
    collector.AddSeparator();
    AddCommand(collector, {text.IsDuring() ? "&Back to All Rows" : "During This &Block",
                           [this] { ShowDuring(); }, 'B', kQmControl, false, text.GetRowCount() > 0});
    AddCommand(collector, {"Rows after &Main's Last", [this] { ShowRowsAfterMain(); }, 'M', kQmControl, false,
                           m_folder && RowsAfterMain(*m_folder) > 0});
    AddCommand(collector,
               {"Previous Error of Any Log", [this] { GoToErrorInLogs(false); }, VK_UP, kQmAlt | kQmShift});
    AddCommand(collector,
               {"Next Error of Any Log", [this] { GoToErrorInLogs(true); }, VK_DOWN, kQmAlt | kQmShift});
}

void DeskFrame::ScanLog(IQmCommand& collector)
{
    CQmLogTextCtrl& text = GetTextCtrl();
    ScanTabs(collector);
    collector.AddSeparator();

    const bool isAll = m_browser.GetShownTab() == CQmLogBrowser::kAllLogsTab;
    const unsigned logs = text.GetShownLogs();
    for (int file = 0; file < CQmLogTextCtrl::GetFilePathCount(); ++file)
    {
        const bool isChosen = (logs >> file & 1) != 0;
        const unsigned other = logs ^ 1u << file;
        AddCommand(collector, {std::string("With ") + CQmLogTextCtrl::GetFilePath(file),
                               [&text, other] { text.ShowMerged(other); }, 0, 0, isAll && isChosen,
                               isAll && !text.IsDuring() && other != 0});
    }
    collector.AddSeparator();

    const unsigned kinds = text.GetShownKinds();
    const auto kind = [&](const char* caption, unsigned bit) {
        AddCommand(collector, {caption, [&text, kinds, bit] { text.SetShownKinds(kinds ^ bit); }, 0, 0,
                               (kinds & bit) != 0, text.IsMerged() && (kinds ^ bit) != 0});
    };
    kind("&Plain Rows", CQmLogTextCtrl::kPlainRows);
    kind("&Notices", CQmLogTextCtrl::kNoticeRows);
    kind("&Errors", CQmLogTextCtrl::kErrorRows);
    kind("&Details", CQmLogTextCtrl::kDetailRows);
    collector.AddSeparator();

    AddCommand(collector,
               {"&Fold What All Logs Wrote", [&text] { text.SetFoldsAllLogs(!text.GetFoldsAllLogs()); }, 0, 0,
                text.GetFoldsAllLogs(), text.IsMerged()});
    ScanLogMoves(collector);
}

} // namespace logdesk
