// The commands of the message viewer, as menus and keys meet them.
#include "logreport/model/ViewCommands.h"
#include "qmcommon/QmCommandList.h"

#include <gtest/gtest.h>

namespace
{

using namespace logreport;
using enum ViewCommand;

struct Owner : ViewCommandOwner
{
    ViewCommandState GetCommandState() override { return state; }
    void Execute(ViewCommand command) override { done = command; }

    ViewCommandState state;
    ViewCommand done = Info;
};

TEST(ViewCommands, LookAndActAsTheyAre)
{
    constexpr bool ViewCommandState::*kNone = nullptr;
    struct
    {
        ViewCommand command;
        const char* caption;
        const char* image;
        unsigned key;
        unsigned modifiers;
        bool ViewCommandState::*checked;
        const char* needs; // direct mode off, a service that takes requests, lines
    } const cases[] = {
        {Clear, "C&lear", "Clear", 0x2E, 0, kNone, "d"},
        {PickColumns, "Column Picker...", "ReportFieldChooser.ico", 0, 0, kNone, ""},
        {Info, "Rows:3", "Info", 0, 0, kNone, ""},
        {Configure, "Configure &View...", "Setup", 'C', 16, kNone, "ds"},
        {Copy, "Copy", "Copy", 'C', 8, kNone, "s"},
        {Export, "&Export Selection...", "FileSave", 'E', 16, kNone, "s"},
        {Find, "&Find...", "Find", 'F', 8, kNone, "s"},
        {Open, "&Open...", "FileOpen", 0, 0, kNone, "s"},
        {Refresh, "Refresh", "Refresh", 0x74, 0, kNone, ""},
        {SelectAll, "Select &All", "SelectAll", 'A', 8, kNone, ""},
        {Follow, "Follow &mode", nullptr, 0x20, 0, &ViewCommandState::follows, ""},
        {ShowHeader, "Show &Header", nullptr, 'H', 16, &ViewCommandState::showsHeader, ""},
        {ShowPreview, "Show &Preview", nullptr, 'P', 16, &ViewCommandState::showsPreview, "l"},
        {ShowReport, "Show as &Report", nullptr, 'R', 16, &ViewCommandState::showsReport, ""},
        {UseVisible, "Use visible columns only", nullptr, 0, 0, &ViewCommandState::usesAllFields, ""}};
    for (const auto& each : cases)
    {
        SCOPED_TRACE(each.caption);
        Owner owner;
        owner.state.status = "Rows:3";
        owner.state.hasService = true;
        ViewEntry entry(owner, each.command);
        EXPECT_STREQ(each.caption, entry.GetCaption());
        EXPECT_STREQ(each.image, entry.GetImage());
        EXPECT_EQ(each.key, entry.GetKey());
        EXPECT_EQ(each.modifiers, entry.GetModifiers());
        owner.done = each.command == Info ? Clear : Info;
        entry.Execute();
        EXPECT_EQ(each.command, owner.done);

        const auto isChecked = [&](bool ViewCommandState::*flag) {
            owner.state = {};
            if (flag)
                owner.state.*flag = true;
            return entry.IsChecked();
        };
        const bool isInverse = each.command == UseVisible;
        for (const auto flag : {kNone, &ViewCommandState::follows, &ViewCommandState::showsHeader,
                                &ViewCommandState::showsPreview, &ViewCommandState::showsReport,
                                &ViewCommandState::usesAllFields})
            EXPECT_EQ((each.checked && flag == each.checked) != isInverse, isChecked(flag));

        const std::string needs = each.needs;
        for (unsigned bits = 0; bits < 16; ++bits)
        {
            owner.state.isDirect = bits & 1;
            owner.state.hasService = bits & 2;
            owner.state.isServiceBusy = bits & 4;
            owner.state.hidesRow = bits & 8;
            const bool isRefused = (needs.find('d') != std::string::npos && owner.state.isDirect) ||
                                   (needs.find('s') != std::string::npos &&
                                    (!owner.state.hasService || owner.state.isServiceBusy)) ||
                                   (needs.find('l') != std::string::npos && owner.state.hidesRow);
            EXPECT_EQ(!isRefused, entry.IsEnabled()) << bits;
        }
    }
}

TEST(ViewCommands, AreOfferedInTheirOrder)
{
    Owner owner;
    owner.state.status = "Info";
    const auto scan = [&](void (*offer)(ViewCommandOwner&, IQmCommand&)) {
        CQmCommandList list;
        offer(owner, list);
        std::string captions;
        for (const auto& entry : list.GetEntries())
            captions += (entry ? entry->GetCaption() : "-") + std::string("|");
        return captions;
    };
    EXPECT_EQ("Info|Select &All|&Find...|Copy|&Export Selection...|Column Picker...|Configure "
              "&View...|Refresh|C&lear|&Open...|-|"
              "Follow &mode|Show &Header|Show &Preview|Show as &Report|Use visible columns only|",
              scan(&ScanView));
    EXPECT_EQ("Copy|Select &All|&Find...|", scan(&ScanViewEdit));
    EXPECT_EQ("&Open...|&Export Selection...|", scan(&ScanViewFile));
    EXPECT_STREQ("C&lear", CEntryClear(owner).GetCaption());
    EXPECT_STREQ("Use visible columns only", CEntryUseAllFields(owner).GetCaption());
}

} // namespace
