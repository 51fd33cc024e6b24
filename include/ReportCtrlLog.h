// The message viewer: a report control that shows the messages of a service as they arrive.
#pragma once

#include "LogMsg.h"
#include "LogViewer.h"
#include "QmHandler.h"
#include "ReportCtrl.h"

class CQmLogState;

// Shows a row for each message of its service, whose id is that of row 0 plus the row. It stores no rows:
// each cell is asked for when it is painted. Subitems are numbered as the fields of messages
// (ILogMsgDataKind). At first Timestamp, Level and Body have columns, rows are hidden and the bodies alone
// are shown. Warnings have colour 1 of the colour table, errors have colour 2. Rows are as high as font and
// images need (RVP_FITITEMHEIGHT).
//
// What the service tells is shown within half a second, however much it is: a timer takes it over. Sorting
// and filtering are the service's; a click on a column's header asks it to sort.
//
// Whoever ends a service calls SetLogMsgService(null) on its viewers before. A host that routes messages by
// their ids has to know that the report control's row numbers are of type int: of longer ranges the first
// 2,147,483,647 messages are shown.
class QMLOG_API CReportCtrlLog : public QmHandler<CReportCtrl>, public ILogViewer
{
public:
    CReportCtrlLog();
    ~CReportCtrlLog() override;

    // ---- What a host tells (ILogViewer)

    // Not owned. Another service than before takes the list away that the former one has made.
    void SetLogMsgService(ILogMsgService* service) override;
    ILogMsgService* GetLogMsgService();

    std::int32_t GetMaxLogSize() override; // 65,536

    // Take note of what there is to show; the timer shows it. AddMsg also asks the service for a list, if
    // there is none yet, and gives it a clone of the message.
    void AddMsg(std::uint32_t id, ILogMsgData* message) override;
    void SetMsgIdRange(std::uint32_t first, std::uint32_t last) override;

    // Sends the registered message "QmPresentMessageId" to the parent window, with this window's handle and
    // the id: the parent decides what it means to present a message.
    void Present(std::uint32_t id) override;
    CWnd* GetWnd() override;

    // A second viewer, which is told of every message and range first; null for none. Not owned.
    void SetAttachedViewer(ILogViewer* viewer);

    // Shows what was announced at once. The timer calls it.
    void TakeOver();

    // ---- Rows

    // Hides all rows that there are. Messages that arrive later are shown.
    void Clear();

    // Shows what Clear has hidden, as soon as the service next announces something. To have it announce at
    // once, call its ClearBefore(0).
    void ShowCleared();

    // While following, the last row is scrolled into view whenever messages arrive. On at first.
    void SetFollow(int follow);
    int GetFollow();

    // Following pauses while the user has scrolled away from the last row; off at first.
    void SetFollowPauses(bool pauses);
    bool GetFollowPauses();
    bool IsFollowPaused();

    // The id of row 0.
    std::uint32_t GetMessageOffset();

    // The id of the newest message; 0 if none was announced.
    std::uint32_t GetLastMessage();

    // Selects the message's row alone and scrolls it into view; does nothing if there is no such row.
    void SelectMsg(std::uint32_t id);

    // Selects from row `first`, from which Shift extends the selection then, to row `last`, which gets the
    // focus. Raises outside the rows.
    void SetSelection(int first, int last);

    // The message, or null. It is valid until another message is asked for or the messages change.
    const ILogMsgData* FindCacheMsgData(std::uint32_t id);

    // Forgets what was remembered of messages, so that all is asked for again.
    void FlushCacheMsgData();

    // "Rows:1200 | Selected:2 | Current:7": the counts, and the focused row if it is not the first.
    ZEMA::String GetStatusText();

    // At most so many lines of a body are shown as its preview, and "..." after them; 0 for all, as at first.
    void SetPreviewLines(int lines);
    int GetPreviewLines();

    // ---- What is shown

    // Opens "Log Configuration", which edits the service's sort keys and filters; without a service it shows
    // nothing and changes nothing.
    void ConfigureView();

    // Opens "Edit Filter" with a field and a value. What the user makes of them becomes a further filter of
    // the service, in place of the last one if there are three.
    void EditFilter(ILogMsgDataKind field, const char* value);

    // Opens "Column Picker", from which columns are dragged to the header. There is one for the process,
    // which stays with the control that first opened it as long as that control has its window.
    void PickColumns();

    // What the commands do. They go through the selected messages with the fields of the columns, or all
    // fields, or the bodies alone while the lines are hidden. An action that takes long shows how far it is
    // and can be given up; the service holds its view meanwhile.

    // Asks for a file and writes the selected messages to it, as text, CSV or XML by its extension.
    void ExportSelection();

    // Writes them to this file. Returns false, after telling the user why, if it cannot be written, and if
    // the user has given it up.
    bool ExportTo(const char* path);

    // Puts them on the clipboard as text and as CSV. Returns false, and leaves the clipboard alone, if no
    // message is selected, it is too much for the user, or the clipboard cannot be had.
    bool CopyMessages();

    // Opens "Find", which looks in the columns that are shown or in one field and goes from one message that
    // holds the text to the next, with this text if it is not null. It stays open beside the control and ends
    // with it.
    void OpenFind(const char* text = nullptr);

    // Select the next message that holds what was found last, as F3 and Shift+F3 do, and go on at the other
    // end. It takes a while: the service holds its view meanwhile. Before anything was found they open
    // "Find".
    void FindNext();
    void FindPrevious();
    bool IsFinding(); // has not arrived yet

    // Asks for a file and has the service open it.
    void OpenLogFile();

    // Asks for everything again and paints it; nothing is sorted.
    void Refresh();

    // Whether actions use all fields; off at first.
    void SetUseAllFields(bool all);
    bool GetUseAllFields();

    // Whether values of CSV that begin with "=", "+", "-" or "@", and are no numbers, get an apostrophe in
    // front, so that a spreadsheet that opens messages of strangers calculates nothing; off at first.
    void SetGuardsFormulas(bool guards);
    bool GetGuardsFormulas();

    // The commands of a menu of the view; those for an Edit menu and for a File menu.
    void Scan(IQmCommand& collector) override;
    void ScanEdit(IQmCommand& collector);
    void ScanFile(IQmCommand& collector);

    // ---- Layout

    // Has the header show the service's sort key and which columns it filters.
    void RefreshHeader();

    // Take over a saved layout, and fill it in (QmLogState.h).
    void ReadState(CQmLogState* state);
    void WriteState(CQmLogState* state);

    // Whether the layout is saved when the window goes; on at first.
    void SetSavesState(bool saves);

    // The control that was made last and still has its window; null if there is none.
    static CReportCtrlLog* GetCurrent();

protected:
    BOOL CreateCommon() override;
    void PreSubclassWindow() override;

    // Before the window is created: the control then takes messages from the service alone, asks it again
    // for each row that is painted, and has no timer. Rows are what SetItemCount is given.
    void SetDirectMode(bool direct);

    // The user wants to see a message in full, or the menu of the control at a point of the screen. The
    // parent has been told of the click and has not cancelled it. By default the message is shown in the
    // dialog "Log Message", which runs until the user closes it: the control may be gone then. Nothing is
    // shown while the service is busy.
    virtual void OnOpenMessage(std::uint32_t id);
    virtual void OnMessageMenu(CPoint point);

    // The command "C&lear".
    virtual void OnClear();

    LRESULT Notify(_NMREPORTVIEW* notification) override;
    using CReportCtrl::Notify;
    int LoadItemData(structITEM* record, int item, int subitem, unsigned int mask) override;
    __int64 OnRvnItemCallbackBypass(_NMREPORTVIEW* notification) override;
    __int64 OnRvnItemDrawPreviewBypass(_NMREPORTVIEW* notification) override;

    // With RVS_TIPS: a body of several lines shows all of them, unless previews do.
    void AdjustTip(_RVITEM* item) override;

    afx_msg void OnDestroy();
    afx_msg void OnTimer(UINT_PTR id);
    afx_msg void OnSize(UINT type, int cx, int cy);
    afx_msg void OnVScroll(UINT code, UINT position, CScrollBar* bar);
    afx_msg void OnKeyDown(UINT key, UINT repeat, UINT flags);
    afx_msg void OnLButtonDown(UINT flags, CPoint point);
    afx_msg void OnContextMenu(CWnd* wnd, CPoint point);
    afx_msg void OnHdnItemClick(NMHDR* header, LRESULT* result);
    afx_msg LRESULT OnDpiChanged(WPARAM, LPARAM);
    afx_msg LRESULT OnPreviewWidened(WPARAM, LPARAM);
    DECLARE_MESSAGE_MAP()

private:
    void DefineColumns();
    void UseResolution();
    void SaveState();
    void MakeList();
    std::vector<std::int32_t> GetActionFields();
    bool GetSelectedIds(std::uint32_t& first, std::uint32_t& last);
    void LookWhetherFollowing();
    void OpenMessageOf(int row);
    void SelectForMenu(int row);
    int GetVirtualWidth();
    int GetPreviewLeft(const ILogMsgData& message);
    int GetPreviewHeight(std::uint32_t id, const ILogMsgData& message);
    void ForgetPreviews();

    struct Data;
    std::unique_ptr<Data> m_data;
};
