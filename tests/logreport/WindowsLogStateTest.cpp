// The layout of a message viewer, kept in a profile from one run to the next.
#include "QmLogState.h"
#include "ReportCtrlLog.h"
#include "tests/support/LogFolder.h"
#include "zemacore/AppDataManager.h"

#include <optional>

namespace
{

// "3:100 1:50 | follow header report | warning error" of a viewer.
std::string Told(CReportCtrlLog& viewer)
{
    CQmLogState state(&viewer);
    state.ReadFromProcess();
    std::string told;
    for (std::int32_t i = 0; i < state.GetColumnCount(); ++i)
        told += std::to_string(state.GetColumn(i).GetField()) + ":" +
                std::to_string(state.GetColumn(i).GetWidth()) + " ";
    told += "|";
    for (const std::int32_t flag : {state.GetFollow(), state.GetHeader(), state.GetReport()})
        told += " " + std::to_string(flag);
    return told + " | " + std::to_string(state.GetWarningColor()) + " " +
           std::to_string(state.GetErrorColor());
}

class LogStateWindow : public LogFolderTest
{
protected:
    LogStateWindow()
    {
        SetVariable("QM_PROFILE", Path("Profile.ini"));
        Open();
    }
    ~LogStateWindow() override { SetVariable("QM_PROFILE", ""); }

    // Another run: the window of the present one goes, with the window around it.
    void Open()
    {
        if (viewer)
            parent.DestroyWindow();
        parent.CreateEx(0, nullptr, "", WS_POPUP | WS_VISIBLE, 0, 0, 600, 200, nullptr, nullptr);
        viewer.emplace();
        viewer->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 600, 200), &parent, 1);
    }
    bool Load() { return CQmLogState(&*viewer).Load(); }

    const std::string first = "0:150 1:100 3:300 | 1 1 0 | 51400 250"; // of a viewer by itself
    CWnd parent;
    std::optional<CReportCtrlLog> viewer;
};

TEST_F(LogStateWindow, IsLeftAndComesBack)
{
    EXPECT_EQ(first, Told(*viewer));
    EXPECT_TRUE(Load());
    EXPECT_EQ(first, Told(*viewer)) << "there is no profile yet";

    viewer->DeactivateSubItem(kLogMsgLevel);
    viewer->ActivateSubItem(kLogMsgWho, 0);
    viewer->ActivateSubItem(kLogMsgLine, 1);
    viewer->SetSubItemWidth(kLogMsgWho, 33);
    viewer->SetSubItemWidth(kLogMsgBody, 0);
    viewer->SetFollow(0);
    viewer->SetShowReport(1);
    viewer->SetShowHeader(0);
    viewer->SetColor(1, RGB(1, 0, 0));
    viewer->SetColor(2, RGB(2, 0, 0));
    const std::string left = "11:33 6:80 0:150 3:0 | 0 0 1 | 1 2";
    EXPECT_EQ(left, Told(*viewer));
    Open();
    EXPECT_EQ(first, Told(*viewer)) << "only its host loads it";
    EXPECT_TRUE(Load());
    EXPECT_EQ(left, Told(*viewer));

    // Fewer columns than were kept before.
    viewer->DeactivateSubItem(kLogMsgTimestamp);
    viewer->DeactivateSubItem(kLogMsgLine);
    Open();
    Load();
    EXPECT_EQ("11:33 3:0 | 0 0 1 | 1 2", Told(*viewer));
    Load();
    EXPECT_EQ("11:33 3:0 | 0 0 1 | 1 2", Told(*viewer)) << "again over itself";

    CQmLogState disabled(&*viewer);
    disabled.SetEnabled(false);
    viewer->SetFollow(1);
    EXPECT_TRUE(disabled.Save());
    EXPECT_EQ(1, disabled.GetFollow()) << "it has not asked the viewer";
    Load();
    EXPECT_EQ(0, viewer->GetFollow());
}

TEST_F(LogStateWindow, ShowsWhatItCanOfAnEditedProfile)
{
    SetContents("Profile.ini", "[Log.Report]\nColumn.0.SubItem=3\nColumn.0.Width=-5\nColumn.1.SubItem=3\n");
    EXPECT_TRUE(Load());
    EXPECT_EQ("3:300 | 1 1 0 | 51400 250", Told(*viewer));
}

TEST_F(LogStateWindow, ShowsSomethingWithoutAProfile)
{
    IAppDataManager* const before = AppDataManager::LoadAppDataManager();
    AppDataManager::SetAppDataManager(nullptr);
    EXPECT_TRUE(Load());
    EXPECT_EQ("0:150 | 0 0 0 | 0 0", Told(*viewer));
    AppDataManager::SetAppDataManager(before);
}

TEST_F(LogStateWindow, RaisesOutsideItsColumns)
{
    CQmLogState state(&*viewer);
    EXPECT_EQ(::GetSysColor(COLOR_WINDOWTEXT), state.GetTextColor());
    EXPECT_EQ(0, state.GetColumnCount());
    state.AddColumn({kLogMsgWho, 5});
    state.SetColumn(0, {kLogMsgBody, 6});
    EXPECT_EQ(kLogMsgBody, state.GetColumn(0).GetField());
    for (const std::int32_t position : {-1, 1})
    {
        EXPECT_THROW(state.GetColumn(position), CInvalidArgException*);
        EXPECT_THROW(state.SetColumn(position, {}), CInvalidArgException*);
    }
}

} // namespace
