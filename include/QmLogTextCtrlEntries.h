// The commands of the log text window, for a host that makes a list of its own of them.
#pragma once

#include "QmLogApi.h"
#include "qmcommon/QmEntry.h"

class CQmLogTextCtrl;

// What they have in common: the log text window, which outlives the entry and is not owned. In a menu the
// commands act on that window, whatever has the focus.
class QMLOG_API CQmLogTextCtrlEntry : public CQmEntryShortcut
{
public:
    CQmLogTextCtrlEntry(CQmLogTextCtrl* textCtrl, unsigned key, unsigned modifiers);

protected:
    CQmLogTextCtrl* m_textCtrl;
};

// "Collapse" or "Expand", Space: the caret's row. Hidden if there is nothing to fold.
class QMLOG_API CQmLogTextCtrlEntrySwitch : public CQmLogTextCtrlEntry
{
public:
    explicit CQmLogTextCtrlEntrySwitch(CQmLogTextCtrl* textCtrl);
    void Execute() override;
    const char* GetCaption() override;

protected:
    CQmLogTextCtrlEntrySwitch(CQmLogTextCtrl* textCtrl, unsigned key);
    const char* FoldCaption(const char* unfolded, const char* folded);
};

// "Collapse All" or "Expand All", Enter: the caret's row with all that lies within.
class QMLOG_API CQmLogTextCtrlEntrySwitchAll : public CQmLogTextCtrlEntrySwitch
{
public:
    explicit CQmLogTextCtrlEntrySwitchAll(CQmLogTextCtrl* textCtrl);
    void Execute() override;
    const char* GetCaption() override;
};

// "&Follow Mode", checked while it is on.
class QMLOG_API CQmLogTextCtrlEntryFollow : public CQmLogTextCtrlEntry
{
public:
    explicit CQmLogTextCtrlEntryFollow(CQmLogTextCtrl* textCtrl);
    void Execute() override;
    const char* GetCaption() override;
    bool IsChecked() override;
};

// "Go to Previous Error", Alt+Up: among the displayed rows.
class QMLOG_API CEntryGoUp : public CQmLogTextCtrlEntry
{
public:
    explicit CEntryGoUp(CQmLogTextCtrl* textCtrl);
    void Execute() override;
    const char* GetCaption() override;
};

// "Go to Next Error", Alt+Down: among the displayed rows.
class QMLOG_API CEntryGoDown : public CQmLogTextCtrlEntry
{
public:
    explicit CEntryGoDown(CQmLogTextCtrl* textCtrl);
    void Execute() override;
    const char* GetCaption() override;
};

// "&Copy", Ctrl+C: the selection into the clipboard.
class QMLOG_API CQmLogTextCtrlEntryCopy : public CQmLogTextCtrlEntry
{
public:
    explicit CQmLogTextCtrlEntryCopy(CQmLogTextCtrl* textCtrl);
    void Execute() override;
    const char* GetCaption() override;
    const char* GetImage() override;
};

// "Copy as E&xcerpt", Ctrl+Shift+C: the selected rows, or the caret's, with their logs and numbers.
class QMLOG_API CQmLogTextCtrlEntryCopyExcerpt : public CQmLogTextCtrlEntry
{
public:
    explicit CQmLogTextCtrlEntryCopyExcerpt(CQmLogTextCtrl* textCtrl);
    void Execute() override;
    const char* GetCaption() override;
};

// "Test [DEBUG]": writes a sample session into the logs.
class QMLOG_API CEntryTest : public CQmLogTextCtrlEntry
{
public:
    explicit CEntryTest(CQmLogTextCtrl* textCtrl);
    void Execute() override;
    const char* GetCaption() override;
};

// A log's name, Alt and the digit after its index: looks at once what has been written. Checked for the
// current log.
class QMLOG_API CQmLogTextCtrlEntryBrowse : public CQmLogTextCtrlEntry
{
public:
    // An index of 9 or more has no key.
    CQmLogTextCtrlEntryBrowse(CQmLogTextCtrl* textCtrl, int file);
    void Execute() override;
    const char* GetCaption() override;
    bool IsChecked() override;

private:
    int m_file;
};
