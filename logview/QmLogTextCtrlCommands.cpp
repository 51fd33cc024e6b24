// What the log text window offers to menus and keys.
#include "QmLogTextCtrl.h"
#include "QmLogTextCtrlEntries.h"
#include "logview/SessionStart.h"
#include "qmtextctrl/QmTextCtrlEntries.h"

CQmLogTextCtrlEntry::CQmLogTextCtrlEntry(CQmLogTextCtrl* textCtrl, unsigned key, unsigned modifiers)
    : CQmEntryShortcut(key, modifiers), m_textCtrl(textCtrl)
{
}

CQmLogTextCtrlEntrySwitch::CQmLogTextCtrlEntrySwitch(CQmLogTextCtrl* textCtrl)
    : CQmLogTextCtrlEntry(textCtrl, VK_SPACE, 0)
{
}

CQmLogTextCtrlEntrySwitch::CQmLogTextCtrlEntrySwitch(CQmLogTextCtrl* textCtrl, unsigned key)
    : CQmLogTextCtrlEntry(textCtrl, key, 0)
{
}

void CQmLogTextCtrlEntrySwitch::Execute()
{
    m_textCtrl->Switch(m_textCtrl->GetCaretRow());
}

const char* CQmLogTextCtrlEntrySwitch::GetCaption()
{
    return FoldCaption("Collapse", "Expand");
}

const char* CQmLogTextCtrlEntrySwitch::FoldCaption(const char* unfolded, const char* folded)
{
    bool expanded = false;
    if (!m_textCtrl->GetExpanded(m_textCtrl->GetCaretRow(), expanded))
        return nullptr;
    return expanded ? unfolded : folded;
}

CQmLogTextCtrlEntrySwitchAll::CQmLogTextCtrlEntrySwitchAll(CQmLogTextCtrl* textCtrl)
    : CQmLogTextCtrlEntrySwitch(textCtrl, VK_RETURN)
{
}

void CQmLogTextCtrlEntrySwitchAll::Execute()
{
    m_textCtrl->SwitchAll(m_textCtrl->GetCaretRow());
}

const char* CQmLogTextCtrlEntrySwitchAll::GetCaption()
{
    return FoldCaption("Collapse All", "Expand All");
}

CQmLogTextCtrlEntryFollow::CQmLogTextCtrlEntryFollow(CQmLogTextCtrl* textCtrl)
    : CQmLogTextCtrlEntry(textCtrl, 0, 0)
{
}

void CQmLogTextCtrlEntryFollow::Execute()
{
    m_textCtrl->SetFollow(!m_textCtrl->GetFollow());
}

const char* CQmLogTextCtrlEntryFollow::GetCaption()
{
    return "&Follow Mode";
}

bool CQmLogTextCtrlEntryFollow::IsChecked()
{
    return m_textCtrl->GetFollow();
}

CEntryGoUp::CEntryGoUp(CQmLogTextCtrl* textCtrl) : CQmLogTextCtrlEntry(textCtrl, VK_UP, kQmAlt) {}

void CEntryGoUp::Execute()
{
    m_textCtrl->GoToError(false);
}

const char* CEntryGoUp::GetCaption()
{
    return "Go to Previous Error";
}

CEntryGoDown::CEntryGoDown(CQmLogTextCtrl* textCtrl) : CQmLogTextCtrlEntry(textCtrl, VK_DOWN, kQmAlt) {}

void CEntryGoDown::Execute()
{
    m_textCtrl->GoToError(true);
}

const char* CEntryGoDown::GetCaption()
{
    return "Go to Next Error";
}

CQmLogTextCtrlEntryCopy::CQmLogTextCtrlEntryCopy(CQmLogTextCtrl* textCtrl)
    : CQmLogTextCtrlEntry(textCtrl, 'C', kQmControl)
{
}

void CQmLogTextCtrlEntryCopy::Execute()
{
    m_textCtrl->Copy();
}

const char* CQmLogTextCtrlEntryCopy::GetCaption()
{
    return "&Copy";
}

const char* CQmLogTextCtrlEntryCopy::GetImage()
{
    return "Copy";
}

CQmLogTextCtrlEntryCopyExcerpt::CQmLogTextCtrlEntryCopyExcerpt(CQmLogTextCtrl* textCtrl)
    : CQmLogTextCtrlEntry(textCtrl, 'C', kQmControl | kQmShift)
{
}

void CQmLogTextCtrlEntryCopyExcerpt::Execute()
{
    m_textCtrl->CopyExcerpt();
}

const char* CQmLogTextCtrlEntryCopyExcerpt::GetCaption()
{
    return "Copy as E&xcerpt";
}

CEntryTest::CEntryTest(CQmLogTextCtrl* textCtrl) : CQmLogTextCtrlEntry(textCtrl, 0, 0) {}

void CEntryTest::Execute()
{
    m_textCtrl->WriteTest();
}

const char* CEntryTest::GetCaption()
{
    return "Test [DEBUG]";
}

CQmLogTextCtrlEntryBrowse::CQmLogTextCtrlEntryBrowse(CQmLogTextCtrl* textCtrl, int file)
    : CQmLogTextCtrlEntry(textCtrl, file < 9 ? static_cast<unsigned>('1' + file) : 0, kQmAlt), m_file(file)
{
}

void CQmLogTextCtrlEntryBrowse::Execute()
{
    m_textCtrl->Browse(m_file);
}

const char* CQmLogTextCtrlEntryBrowse::GetCaption()
{
    return CQmLogTextCtrl::GetFilePath(m_file);
}

bool CQmLogTextCtrlEntryBrowse::IsChecked()
{
    return m_textCtrl->GetFilePathIndex() == m_file;
}

void CQmLogTextCtrl::Scan(IQmCommand& collector)
{
    if (m_commands)
        m_commands->Scan(collector);
    else
        ScanOwn(collector);
    if (!m_moreCommands)
        return;
    collector.AddSeparator();
    m_moreCommands->Scan(collector);
}

void CQmLogTextCtrl::ScanOwn(IQmCommand& collector)
{
    collector.Add(std::make_unique<CQmLogTextCtrlEntrySwitch>(this));
    collector.Add(std::make_unique<CQmLogTextCtrlEntrySwitchAll>(this));
    collector.Add(std::make_unique<CQmLogTextCtrlEntryFollow>(this));
    collector.AddSeparator();
    collector.Add(std::make_unique<CEntryGoUp>(this));
    collector.Add(std::make_unique<CEntryGoDown>(this));
    collector.AddSeparator();
    collector.Add(std::make_unique<CQmTextCtrlEntryFindInput>(this));
    collector.Add(std::make_unique<CQmTextCtrlEntryFindNext>(this));
    collector.Add(std::make_unique<CQmTextCtrlEntryFindPrevious>(this));
    collector.AddSeparator();
    collector.Add(std::make_unique<CQmTextCtrlEntrySelectAll>(this));
    collector.Add(std::make_unique<CQmLogTextCtrlEntryCopy>(this));
    collector.AddSeparator();
    collector.Add(std::make_unique<CEntryTest>(this));
}

void CQmLogTextCtrl::SetCommands(IQmHandler* commands)
{
    m_commands = commands;
}

void CQmLogTextCtrl::SetMoreCommands(IQmHandler* commands)
{
    m_moreCommands = commands;
}

void CQmLogTextCtrl::ScanFilePath(IQmCommand& collector)
{
    for (int file = 0; file < GetFilePathCount(); ++file)
        collector.Add(std::make_unique<CQmLogTextCtrlEntryBrowse>(this, file));
}

void CQmLogTextCtrl::WriteTest()
{
    logview::WriteSampleSession();
}
