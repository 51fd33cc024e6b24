// What the user can do with the log text.
#include "QmLogTextCtrlEntries.h"
#include "logdesk/DeskFrame.h"
#include "qmtextctrl/QmTextCtrlEntries.h"

namespace logdesk
{

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
    collector.AddSeparator();
    collector.Add(std::make_unique<CQmTextCtrlEntryFindInput>(text));
    collector.Add(std::make_unique<CQmTextCtrlEntryFindNext>(text));
    collector.Add(std::make_unique<CQmTextCtrlEntryFindPrevious>(text));
    collector.AddSeparator();
    collector.Add(std::make_unique<CQmTextCtrlEntrySelectAll>(text));
    collector.Add(std::make_unique<CQmLogTextCtrlEntryCopy>(text));
    collector.AddSeparator();
    AddCommand(collector, {"Show in &Messages", [this] { ShowInMessages(); }, VK_RETURN, kQmControl, false,
                           m_messages.File().empty() && text->GetRowCount() > 0});
    if (!m_forDevelopers)
        return;
    collector.AddSeparator();
    collector.Add(std::make_unique<CEntryTest>(text));
}

} // namespace logdesk
