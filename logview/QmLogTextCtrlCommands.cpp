// What the log text window offers to menus and keys.
#include "QmLogTextCtrl.h"
#include "logview/SessionStart.h"
#include "qmcommon/QmEntry.h"
#include "qmtextctrl/QmTextCtrlEntries.h"

namespace
{

// "Collapse" or "Expand" for the caret row; hidden where there is nothing to fold.
class CQmLogTextCtrlEntrySwitch : public CQmEntryShortcut
{
public:
    explicit CQmLogTextCtrlEntrySwitch(CQmLogTextCtrl& text) : CQmEntryShortcut(VK_SPACE, 0), m_text(text) {}
    void Execute() override { m_text.Switch(m_text.GetCaretRow()); }
    const char* GetCaption() override { return FoldCaption("Collapse", "Expand"); }

protected:
    CQmLogTextCtrlEntrySwitch(CQmLogTextCtrl& text, unsigned key) : CQmEntryShortcut(key, 0), m_text(text) {}

    const char* FoldCaption(const char* unfolded, const char* folded)
    {
        bool expanded = false;
        if (!m_text.GetExpanded(m_text.GetCaretRow(), expanded))
            return nullptr;
        return expanded ? unfolded : folded;
    }

    CQmLogTextCtrl& m_text;
};

class CQmLogTextCtrlEntrySwitchAll : public CQmLogTextCtrlEntrySwitch
{
public:
    explicit CQmLogTextCtrlEntrySwitchAll(CQmLogTextCtrl& text) : CQmLogTextCtrlEntrySwitch(text, VK_RETURN)
    {
    }
    void Execute() override { m_text.SwitchAll(m_text.GetCaretRow()); }
    const char* GetCaption() override { return FoldCaption("Collapse All", "Expand All"); }
};

class CQmLogTextCtrlEntryFollow : public CQmEntry
{
public:
    explicit CQmLogTextCtrlEntryFollow(CQmLogTextCtrl& text) : m_text(text) {}
    void Execute() override { m_text.SetFollow(!m_text.GetFollow()); }
    const char* GetCaption() override { return "&Follow Mode"; }
    bool IsChecked() override { return m_text.GetFollow(); }

private:
    CQmLogTextCtrl& m_text;
};

class CEntryGoUp : public CQmEntryShortcut
{
public:
    explicit CEntryGoUp(CQmLogTextCtrl& text) : CQmEntryShortcut(VK_UP, kQmAlt), m_text(text) {}
    void Execute() override { m_text.GoToError(false); }
    const char* GetCaption() override { return "Go to Previous Error"; }

private:
    CQmLogTextCtrl& m_text;
};

class CEntryGoDown : public CQmEntryShortcut
{
public:
    explicit CEntryGoDown(CQmLogTextCtrl& text) : CQmEntryShortcut(VK_DOWN, kQmAlt), m_text(text) {}
    void Execute() override { m_text.GoToError(true); }
    const char* GetCaption() override { return "Go to Next Error"; }

private:
    CQmLogTextCtrl& m_text;
};

class CQmLogTextCtrlEntryCopy : public CQmEntryShortcut
{
public:
    explicit CQmLogTextCtrlEntryCopy(CQmLogTextCtrl& text) : CQmEntryShortcut('C', kQmControl), m_text(text)
    {
    }
    void Execute() override { m_text.Copy(); }
    const char* GetCaption() override { return "&Copy"; }
    const char* GetImage() override { return "Copy"; }

private:
    CQmLogTextCtrl& m_text;
};

class CEntryTest : public CQmEntry
{
public:
    explicit CEntryTest(CQmLogTextCtrl& text) : m_text(text) {}
    void Execute() override { m_text.WriteTest(); }
    const char* GetCaption() override { return "Test [DEBUG]"; }

private:
    CQmLogTextCtrl& m_text;
};

// Alt and the digit of a log.
class CQmLogTextCtrlEntryBrowse : public CQmEntryShortcut
{
public:
    CQmLogTextCtrlEntryBrowse(CQmLogTextCtrl& text, int file)
        : CQmEntryShortcut(file < 9 ? static_cast<unsigned>('1' + file) : 0, kQmAlt), m_text(text),
          m_file(file)
    {
    }
    void Execute() override { m_text.Browse(m_file); }
    const char* GetCaption() override { return CQmLogTextCtrl::GetFilePath(m_file); }
    bool IsChecked() override { return m_text.GetFilePathIndex() == m_file; }

private:
    CQmLogTextCtrl& m_text;
    int m_file;
};

} // namespace

void CQmLogTextCtrl::Scan(IQmCommand& collector)
{
    collector.Add(std::make_unique<CQmLogTextCtrlEntrySwitch>(*this));
    collector.Add(std::make_unique<CQmLogTextCtrlEntrySwitchAll>(*this));
    collector.Add(std::make_unique<CQmLogTextCtrlEntryFollow>(*this));
    collector.AddSeparator();
    collector.Add(std::make_unique<CEntryGoUp>(*this));
    collector.Add(std::make_unique<CEntryGoDown>(*this));
    collector.AddSeparator();
    collector.Add(std::make_unique<CQmTextCtrlEntryFindInput>(this));
    collector.Add(std::make_unique<CQmTextCtrlEntryFindNext>(this));
    collector.Add(std::make_unique<CQmTextCtrlEntryFindPrevious>(this));
    collector.AddSeparator();
    collector.Add(std::make_unique<CQmTextCtrlEntrySelectAll>(this));
    collector.Add(std::make_unique<CQmLogTextCtrlEntryCopy>(*this));
    collector.AddSeparator();
    collector.Add(std::make_unique<CEntryTest>(*this));
    if (!m_moreCommands)
        return;
    collector.AddSeparator();
    m_moreCommands->Scan(collector);
}

void CQmLogTextCtrl::SetMoreCommands(IQmHandler* commands)
{
    m_moreCommands = commands;
}

void CQmLogTextCtrl::ScanFilePath(IQmCommand& collector)
{
    for (int file = 0; file < GetFilePathCount(); ++file)
        collector.Add(std::make_unique<CQmLogTextCtrlEntryBrowse>(*this, file));
}

void CQmLogTextCtrl::WriteTest()
{
    logview::WriteSampleSession();
}
