#include "qmtextctrl/QmTextCtrlEntries.h"

#include "qmtextctrl/QmTextCtrl.h"

CQmTextCtrlEntry::CQmTextCtrlEntry(CQmTextCtrl* textCtrl, unsigned key, unsigned modifiers)
    : CQmEntryShortcut(key, modifiers), m_textCtrl(textCtrl)
{
}

CQmTextCtrlEntryFindInput::CQmTextCtrlEntryFindInput(CQmTextCtrl* textCtrl)
    : CQmTextCtrlEntry(textCtrl, 'F', kQmControl)
{
}

void CQmTextCtrlEntryFindInput::Execute()
{
    m_textCtrl->FindInput();
}

const char* CQmTextCtrlEntryFindInput::GetCaption()
{
    return "&Find...";
}

const char* CQmTextCtrlEntryFindInput::GetImage()
{
    return "Find";
}

CQmTextCtrlEntryFindNext::CQmTextCtrlEntryFindNext(CQmTextCtrl* textCtrl)
    : CQmTextCtrlEntry(textCtrl, VK_F3, 0)
{
}

void CQmTextCtrlEntryFindNext::Execute()
{
    m_textCtrl->FindNext();
}

const char* CQmTextCtrlEntryFindNext::GetCaption()
{
    return "Find &Next";
}

bool CQmTextCtrlEntryFindNext::IsEnabled()
{
    return *m_textCtrl->GetFindText() != '\0';
}

CQmTextCtrlEntryFindPrevious::CQmTextCtrlEntryFindPrevious(CQmTextCtrl* textCtrl)
    : CQmTextCtrlEntry(textCtrl, VK_F3, kQmShift)
{
}

void CQmTextCtrlEntryFindPrevious::Execute()
{
    m_textCtrl->FindPrevious();
}

const char* CQmTextCtrlEntryFindPrevious::GetCaption()
{
    return "Find &Previous";
}

bool CQmTextCtrlEntryFindPrevious::IsEnabled()
{
    return *m_textCtrl->GetFindText() != '\0';
}

CQmTextCtrlEntrySelectAll::CQmTextCtrlEntrySelectAll(CQmTextCtrl* textCtrl)
    : CQmTextCtrlEntry(textCtrl, 'A', kQmControl)
{
}

void CQmTextCtrlEntrySelectAll::Execute()
{
    m_textCtrl->SelectAll();
}

const char* CQmTextCtrlEntrySelectAll::GetCaption()
{
    return "Select &All";
}

const char* CQmTextCtrlEntrySelectAll::GetImage()
{
    return "SelectAll";
}
