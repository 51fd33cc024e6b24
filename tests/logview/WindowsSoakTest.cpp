// Hours of work in minutes: sessions written, read, followed and listed, one after the other, and nothing
// grows.

#include "QmLogReader.h"
#include "QmLogTextCtrl.h"
#include "QmLogWriter.h"
#include "ReportCtrl.h"
#include "tests/support/GuiCounts.h"
#include "tests/support/LogFolder.h"
#include "tests/support/LongRun.h"
#include "tests/support/MixedSteps.h"
#include "tests/support/NothingLeft.h"
#include "tests/support/Process.h"
#include "tests/support/Random.h"

#include <psapi.h>

namespace
{

class FollowingText : public CQmLogTextCtrl
{
public:
    void OnRowsChanged() override
    {
        CQmLogTextCtrl::OnRowsChanged();
        ++refreshes;
    }
    int refreshes = 0;
};

// What the process holds at one moment.
struct Holding
{
    int handles;
    int drawingObjects;
    int windows;
    int blocks;
    int kilobytes; // of the working set

    static Holding Now()
    {
        DeleteTempMaps();
        PROCESS_MEMORY_COUNTERS memory = {};
        ::K32GetProcessMemoryInfo(::GetCurrentProcess(), &memory, sizeof(memory));
        return {HandleCount(), GdiObjectCount(), WindowCount(), HeapBlockCount(),
                static_cast<int>(memory.WorkingSetSize / 1024)};
    }
};

// Its windows are shown without being activated, so that tests of other windows may run meanwhile.
class Soak : public LogFolderTest
{
protected:
    const unsigned long sessionRows = Rounds(800ul, 3000ul); // of "Main"

    Soak()
    {
        frame.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP, 0, 0, 600, 400, nullptr, nullptr);
        frame.ShowWindow(SW_SHOWNOACTIVATE);
        report.Create(WS_CHILD | WS_VISIBLE, CRect(300, 0, 600, 400), &frame, 2);
        for (const char* const caption : {"row", "text"})
        {
            _RVSUBITEM definition;
            definition.width = 140;
            definition.text = caption;
            report.ActivateSubItem(report.DefineSubItem(report.GetSubItemCount(), &definition), -1);
        }
        reader.SetFilePath("Main");
    }

    ~Soak() override
    {
        EndSession();
        frame.DestroyWindow();
    }

    // A session that another process writes, until it has all its rows.
    void RunSession(unsigned seed)
    {
        Random random(seed);
        ASSERT_TRUE(text.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 300, 400), &frame, 1));
        ASSERT_TRUE(text.IsSessionStarted());
        QmLogWriterCloseAll();
        Child writer;
        writer.Send("share " + std::to_string(seed));
        const ULONGLONG begin = ::GetTickCount64();
        for (unsigned long next = 0; reader.GetRowCount() < sessionRows;)
        {
            ASSERT_LT(::GetTickCount64() - begin, 60'000u) << "the writer does not go on";
            while (!writer.Answer(0).empty())
                ;
            next = ReadRows(next, random);
            if (random(20) == 0)
                UseText(random);
            DispatchMessages();
            ::Sleep(1);
        }
        writer.Kill();
        EXPECT_EQ("", Damage(kMixedLogs));
        text.Reload();
        EXPECT_LT(0, text.GetRowCount());
        for (const std::string& log : kMixedLogs)
            linesWritten += static_cast<long long>(Rows(log).size());
        EndSession();
    }

    void EndSession()
    {
        text.DestroyWindow();
        for (int file = 0; file < CQmLogTextCtrl::GetFilePathCount(); ++file)
            QmLogReaderDefine(CQmLogTextCtrl::GetFilePath(file)).Close();
        reader.Close();
        QmLogWriterCloseAll();
        report.DeleteAllItems();
    }

    CWnd frame;
    FollowingText text;
    CReportCtrl report;
    CQmLogReader reader;
    long long linesWritten = 0;
    long long rowsRead = 0;
    long long itemsSorted = 0;

private:
    // Those that have come, from `next` on, into the report control; answers the one to be read next.
    unsigned long ReadRows(unsigned long next, Random& random)
    {
        const char* line = nullptr;
        unsigned long length = 0;
        CQmLogRow row;
        for (; next + 1 < reader.GetRowCount() && reader.Read(next, line, length, row); ++next, ++rowsRead)
        {
            const int item = report.InsertItem(report.GetItemCount(), std::to_string(next).c_str());
            report.SetItemText(item, 1, std::string(line, std::min<std::size_t>(length, 200)).c_str());
        }
        if (report.GetItemCount() > 0 && random(20) == 0)
        {
            EXPECT_TRUE(report.SortItems(random(2), random(2)));
            itemsSorted += report.GetItemCount();
        }
        if (report.GetItemCount() > 1000)
            report.DeleteAllItems();
        return next;
    }

    void UseText(Random& random)
    {
        const int row = random(std::max(1, text.GetRowCount()));
        if (random(2))
            text.Switch(row);
        else
            text.SendMessage(WM_KEYDOWN, random(2) ? VK_PRIOR : VK_END);
        if (text.GetRowCount() > 20'000)
            text.CollapseAll(0);
    }

    static void DispatchMessages()
    {
        MSG message = {};
        while (::PeekMessage(&message, nullptr, 0, 0, PM_REMOVE))
            ::DispatchMessage(&message);
    }
};

// The most that the process holds after a session of the last third is what it holds in the first.
TEST_F(Soak, HoldsNoMoreAtTheEndThanAtTheBeginning)
{
    const ULONGLONG end = ::GetTickCount64() + Rounds(3'000u, 600'000u);
    const unsigned seed = FirstSeed();
    SCOPED_TRACE(SeedText(seed));
    RunSession(seed); // which makes what is kept for all
    std::vector<Holding> holdings;
    while ((holdings.size() < 6 || ::GetTickCount64() < end) && !HasFailure())
    {
        RunSession(seed + static_cast<unsigned>(holdings.size()) + 1);
        holdings.push_back(Holding::Now());
    }

    ASSERT_FALSE(HasFailure());
    const std::size_t third = holdings.size() / 3;
    const auto most = [&](int Holding::*what, bool last) {
        const auto begin = last ? holdings.end() - static_cast<std::ptrdiff_t>(third) : holdings.begin();
        int value = 0;
        for (auto each = begin; each != begin + static_cast<std::ptrdiff_t>(third); ++each)
            value = std::max(value, (*each).*what);
        return value;
    };
    const struct
    {
        const char* name;
        int Holding::*what;
        int room;
    } kinds[] = {{"handles", &Holding::handles, 2},
                 {"drawing objects", &Holding::drawingObjects, 0},
                 {"windows", &Holding::windows, 0},
                 {"blocks of memory", &Holding::blocks, 30},
                 {"KiB of working set", &Holding::kilobytes, most(&Holding::kilobytes, false) / 8}};
    for (const auto& [name, what, room] : kinds)
    {
        EXPECT_LT(0, most(what, false)) << name;
        EXPECT_LE(most(what, true), most(what, false) + room) << name;
        Figure((std::string(name) + " at most in the first third").c_str(), most(what, false));
        Figure((std::string(name) + " at most in the last third").c_str(), most(what, true));
    }
    Figure("sessions", static_cast<long long>(holdings.size()) + 1);
    Figure("lines written", linesWritten);
    Figure("rows read", rowsRead);
    Figure("refreshes", text.refreshes);
    Figure("items sorted", itemsSorted);
}

} // namespace
