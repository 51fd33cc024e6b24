// The commands that every text window offers; a derived class adds them in its Scan.
#pragma once

#include "qmcommon/QmEntry.h"

class CQmTextCtrl;

// What the four have in common: the text window, which outlives the entry and is not owned.
class QMPLATFORM_API CQmTextCtrlEntry : public CQmEntryShortcut
{
public:
    CQmTextCtrlEntry(CQmTextCtrl* textCtrl, unsigned key, unsigned modifiers);

protected:
    CQmTextCtrl* m_textCtrl;
};

// "&Find...", Ctrl+F
class QMPLATFORM_API CQmTextCtrlEntryFindInput : public CQmTextCtrlEntry
{
public:
    explicit CQmTextCtrlEntryFindInput(CQmTextCtrl* textCtrl);
    void Execute() override;
    const char* GetCaption() override;
    const char* GetImage() override;
};

// "Find &Next", F3; disabled without a text to find.
class QMPLATFORM_API CQmTextCtrlEntryFindNext : public CQmTextCtrlEntry
{
public:
    explicit CQmTextCtrlEntryFindNext(CQmTextCtrl* textCtrl);
    void Execute() override;
    const char* GetCaption() override;
    bool IsEnabled() override;
};

// "Find &Previous", Shift+F3; disabled without a text to find.
class QMPLATFORM_API CQmTextCtrlEntryFindPrevious : public CQmTextCtrlEntry
{
public:
    explicit CQmTextCtrlEntryFindPrevious(CQmTextCtrl* textCtrl);
    void Execute() override;
    const char* GetCaption() override;
    bool IsEnabled() override;
};

// "Select &All", Ctrl+A
class QMPLATFORM_API CQmTextCtrlEntrySelectAll : public CQmTextCtrlEntry
{
public:
    explicit CQmTextCtrlEntrySelectAll(CQmTextCtrl* textCtrl);
    void Execute() override;
    const char* GetCaption() override;
    const char* GetImage() override;
};
