// The commands of the message viewer: what menus and keys know of them.
#pragma once

#include "qmcommon/QmEntry.h"

#include <string>

namespace logreport
{

enum class ViewCommand
{
    Clear,
    PickColumns,
    Info,
    Configure,
    Copy,
    Export,
    Find,
    Open,
    Refresh,
    SelectAll,
    Follow,
    ShowHeader,
    ShowPreview,
    ShowReport,
    UseVisible
};

// What the commands' marks and their availability depend on.
struct ViewCommandState
{
    bool isDirect = false;
    bool hasService = false;
    bool isServiceBusy = false;
    bool follows = false;
    bool showsHeader = false;
    bool showsPreview = false;
    bool hidesRow = false;
    bool showsReport = false;
    bool usesAllFields = false;
    std::string status; // the caption of Info
};

// What commands act on.
class ViewCommandOwner
{
public:
    virtual ViewCommandState GetCommandState() = 0;
    virtual void Execute(ViewCommand command) = 0;

protected:
    ~ViewCommandOwner() = default;
};

// A command's entry. The owner is not owned.
class ViewEntry : public CQmEntry
{
public:
    ViewEntry(ViewCommandOwner& owner, ViewCommand command);

    void Execute() override;
    const char* GetCaption() override;
    unsigned GetKey() override;
    unsigned GetModifiers() override;
    bool IsEnabled() override;
    bool IsChecked() override;
    const char* GetImage() override;

private:
    ViewCommandOwner& m_owner;
    ViewCommand m_command;
    std::string m_status; // the caption that was handed out last
};

template <ViewCommand command> class ViewEntryOf : public ViewEntry
{
public:
    explicit ViewEntryOf(ViewCommandOwner& owner) : ViewEntry(owner, command) {}
};

using CEntryClear = ViewEntryOf<ViewCommand::Clear>;
using CEntryFieldChooser = ViewEntryOf<ViewCommand::PickColumns>;
using CEntryInfo = ViewEntryOf<ViewCommand::Info>;
using CEntryLogConfigure = ViewEntryOf<ViewCommand::Configure>;
using CEntryLogCopyToClipboard = ViewEntryOf<ViewCommand::Copy>;
using CEntryLogExport = ViewEntryOf<ViewCommand::Export>;
using CEntryLogFind = ViewEntryOf<ViewCommand::Find>;
using CEntryLogFileOpen = ViewEntryOf<ViewCommand::Open>;
using CEntryRefresh = ViewEntryOf<ViewCommand::Refresh>;
using CEntryReportSelectAll = ViewEntryOf<ViewCommand::SelectAll>;
using CEntrySetFollow = ViewEntryOf<ViewCommand::Follow>;
using CEntryShowHeader = ViewEntryOf<ViewCommand::ShowHeader>;
using CEntryShowPreview = ViewEntryOf<ViewCommand::ShowPreview>;
using CEntryShowReport = ViewEntryOf<ViewCommand::ShowReport>;
using CEntryUseAllFields = ViewEntryOf<ViewCommand::UseVisible>;

// All of them in menu order; those for an Edit menu; those for a File menu.
void ScanView(ViewCommandOwner& owner, IQmCommand& collector);
void ScanViewEdit(ViewCommandOwner& owner, IQmCommand& collector);
void ScanViewFile(ViewCommandOwner& owner, IQmCommand& collector);

} // namespace logreport
