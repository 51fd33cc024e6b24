#include "logreport/model/ViewCommands.h"

#include <algorithm>
#include <iterator>

namespace logreport
{

namespace
{

// Virtual key codes.
constexpr unsigned kSpace = 0x20;
constexpr unsigned kDelete = 0x2E;
constexpr unsigned kF5 = 0x74;

struct CommandLook
{
    ViewCommand command;
    const char* caption; // null: the status text
    const char* image;
    unsigned key;
    unsigned modifiers;
};

constexpr CommandLook kLooks[] = {
    {ViewCommand::Clear, "C&lear", "Clear", kDelete, 0},
    {ViewCommand::PickColumns, "Column Picker...", "ReportFieldChooser.ico", 0, 0},
    {ViewCommand::Info, nullptr, "Info", 0, 0},
    {ViewCommand::Configure, "Configure &View...", "Setup", 'C', kQmAlt},
    {ViewCommand::Copy, "Copy", "Copy", 'C', kQmControl},
    {ViewCommand::Export, "&Export Selection...", "FileSave", 'E', kQmAlt},
    {ViewCommand::Find, "&Find...", "Find", 'F', kQmControl},
    {ViewCommand::Open, "&Open...", "FileOpen", 0, 0},
    {ViewCommand::Refresh, "Refresh", "Refresh", kF5, 0},
    {ViewCommand::SelectAll, "Select &All", "SelectAll", 'A', kQmControl},
    {ViewCommand::Follow, "Follow &mode", nullptr, kSpace, 0},
    {ViewCommand::ShowHeader, "Show &Header", nullptr, 'H', kQmAlt},
    {ViewCommand::ShowPreview, "Show &Preview", nullptr, 'P', kQmAlt},
    {ViewCommand::ShowReport, "Show as &Report", nullptr, 'R', kQmAlt},
    {ViewCommand::UseVisible, "Use visible columns only", nullptr, 0, 0}};

const CommandLook& LookOf(ViewCommand command)
{
    return *std::find_if(std::begin(kLooks), std::end(kLooks),
                         [command](const CommandLook& look) { return look.command == command; });
}

void Add(ViewCommandOwner& owner, IQmCommand& collector, std::initializer_list<ViewCommand> commands)
{
    for (const ViewCommand command : commands)
        collector.Add(std::make_unique<ViewEntry>(owner, command));
}

} // namespace

ViewEntry::ViewEntry(ViewCommandOwner& owner, ViewCommand command) : m_owner(owner), m_command(command) {}

void ViewEntry::Execute()
{
    m_owner.Execute(m_command);
}

const char* ViewEntry::GetCaption()
{
    if (const char* const caption = LookOf(m_command).caption)
        return caption;
    m_status = m_owner.GetCommandState().status;
    return m_status.c_str();
}

unsigned ViewEntry::GetKey()
{
    return LookOf(m_command).key;
}

unsigned ViewEntry::GetModifiers()
{
    return LookOf(m_command).modifiers;
}

const char* ViewEntry::GetImage()
{
    return LookOf(m_command).image;
}

bool ViewEntry::IsEnabled()
{
    const ViewCommandState state = m_owner.GetCommandState();
    const bool takesRequests = state.hasService && !state.isServiceBusy;
    switch (m_command)
    {
    case ViewCommand::Clear:
        return !state.isDirect;
    case ViewCommand::Configure:
        return !state.isDirect && takesRequests;
    case ViewCommand::Copy:
    case ViewCommand::Export:
    case ViewCommand::Find:
    case ViewCommand::Open:
        return takesRequests;
    case ViewCommand::ShowPreview:
        return !state.hidesRow;
    default:
        return true;
    }
}

bool ViewEntry::IsChecked()
{
    const ViewCommandState state = m_owner.GetCommandState();
    switch (m_command)
    {
    case ViewCommand::Follow:
        return state.follows;
    case ViewCommand::ShowHeader:
        return state.showsHeader;
    case ViewCommand::ShowPreview:
        return state.showsPreview;
    case ViewCommand::ShowReport:
        return state.showsReport;
    case ViewCommand::UseVisible:
        return !state.usesAllFields;
    default:
        return false;
    }
}

void ScanView(ViewCommandOwner& owner, IQmCommand& collector)
{
    using enum ViewCommand;
    Add(owner, collector,
        {Info, SelectAll, Find, Copy, Export, PickColumns, Configure, Refresh, Clear, Open});
    collector.AddSeparator();
    Add(owner, collector, {Follow, ShowHeader, ShowPreview, ShowReport, UseVisible});
}

void ScanViewEdit(ViewCommandOwner& owner, IQmCommand& collector)
{
    using enum ViewCommand;
    Add(owner, collector, {Copy, SelectAll, Find});
}

void ScanViewFile(ViewCommandOwner& owner, IQmCommand& collector)
{
    using enum ViewCommand;
    Add(owner, collector, {Open, Export});
}

} // namespace logreport
