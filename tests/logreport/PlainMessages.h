// A message service of plain vectors, and a viewer in a window that a test looks at.
#pragma once

#include "ReportCtrlLog.h"
#include "tests/report/ReportPicture.h"
#include "tests/report/TestReport.h"

#include <array>
#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>

class PlainMessage : public CCacheMsgData
{
public:
    explicit PlainMessage(const std::string& body = "", std::uint32_t level = 1, std::uint32_t indent = 0)
    {
        m_body = body.c_str();
        m_level = level;
        m_indent = indent;
        m_timestamp = "10:00";
        m_levelText = std::to_string(level).c_str();
    }
    ILogMsgData* Clone() const override { return new PlainMessage(*this); }
};

// Counts what it is asked, and calls `moment` first, from every operation.
class PlainService : public ILogMsgService
{
public:
    class List : public ILogMsgList
    {
    public:
        explicit List(PlainService& service) : m_service(service) { ++service.lists; }
        ~List() override { --m_service.lists; }
        std::int32_t Add(ILogMsgData* message) override
        {
            m_service.moment("add");
            if (!m_service.takesClones)
                return 0;
            m_owned.emplace_back(message);
            return 1;
        }
        ILogMsgData* Get(std::uint32_t id) override
        {
            m_service.moment("list");
            ++m_service.asked;
            return m_service.Find(id);
        }

    private:
        PlainService& m_service;
        std::deque<std::unique_ptr<ILogMsgData>> m_owned;
    };

    ILogMsgData* Find(std::uint32_t id)
    {
        return id >= 1 && id <= messages.size() ? &messages[id - 1] : nullptr;
    }
    ILogMsgData* GetMsg(std::uint32_t id) override
    {
        moment("get");
        return Find(id);
    }
    void GetSortKeys(LogMsgSortKey* given, std::int32_t) override
    {
        moment("keys");
        *given = key;
    }
    void SetSortKeys(const LogMsgSortKey* wanted, std::int32_t count) override
    {
        moment("set keys");
        EXPECT_EQ(1, count);
        key = *wanted;
    }
    void GetFilters(LogMsgFilter* given, std::int32_t count) override
    {
        moment("filters");
        EXPECT_EQ(3, count);
        std::copy(filters.begin(), filters.end(), given);
    }
    void Apply() override
    {
        moment("apply");
        ++applied;
    }
    bool IsBusy() override
    {
        moment("busy");
        return busy;
    }
    void HoldView(std::int32_t hold) override
    {
        holds += hold ? 1 : -1;
        mostHolds = std::max(mostHolds, holds);
    }
    ILogMsgList* CreateMsgList(std::int32_t reserve, std::int32_t flags) override
    {
        EXPECT_EQ("500 0", Line(reserve, flags));
        moment("create");
        return makesList ? new List(*this) : nullptr;
    }

    std::deque<PlainMessage> messages; // the first has id 1
    LogMsgSortKey key;
    std::array<LogMsgFilter, 3> filters;
    bool busy = false;
    bool makesList = true;
    bool takesClones = true;
    int lists = 0; // that there are
    int asked = 0; // lists, for messages
    int applied = 0;
    int holds = 0; // of the view, at present
    int mostHolds = 0;
    std::function<void(std::string_view)> moment = [](std::string_view) {};
};

// One message under each id up to a last one.
class OneMessageService : public PlainService
{
public:
    OneMessageService(ILogMsgData& message, std::uint32_t last) : m_message(message), m_last(last) {}
    ILogMsgList* CreateMsgList(std::int32_t, std::int32_t) override { return new OneMessageList(*this); }

private:
    struct OneMessageList : ILogMsgList
    {
        explicit OneMessageList(OneMessageService& of) : service(of) {}
        std::int32_t Add(ILogMsgData*) override { return 0; }
        ILogMsgData* Get(std::uint32_t id) override
        {
            return id <= service.m_last ? &service.m_message : nullptr;
        }
        OneMessageService& service;
    };

    ILogMsgData& m_message;
    std::uint32_t m_last;
};

class TestViewer : public CReportCtrlLog
{
public:
    using CReportCtrlLog::SetDirectMode;
    std::string told;
    int dpi = 0;

    int GetResolution() override { return dpi ? dpi : CReportCtrlLog::GetResolution(); }

protected:
    void OnOpenMessage(std::uint32_t id) override { told += "open " + std::to_string(id) + " "; }
    void OnMessageMenu(CPoint) override { told += "menu "; }
};

class MessageViewerTest : public testing::Test
{
protected:
    MessageViewerTest()
    {
        parent.ShowWindow(SW_SHOWNOACTIVATE);
        Create();
    }

    void Create()
    {
        ASSERT_TRUE(viewer.Create(WS_CHILD, CRect(0, 0, 300, 200), &parent, 7));
        viewer.SetLogMsgService(&service);
    }

    // A message at the end, as a service tells of it.
    void Add(const PlainMessage& message)
    {
        service.messages.push_back(message);
        viewer.AddMsg(static_cast<std::uint32_t>(service.messages.size()), &service.messages.back());
    }

    void Tick() { viewer.SendMessage(WM_TIMER, 9000); }
    void Paint() { viewer.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW); }

    std::string Text(int row, int subitem) { return viewer.GetItemText(row, subitem).c_str(); }

    ReportParent parent;
    PlainService service;
    TestViewer viewer;
};
