// A host's own messages, and a viewer that prints them instead of showing them in a window.
#include <LogMsg.h>
#include <LogViewer.h>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace
{

// Fields that the host has no use for stay empty.
struct Event : CCacheMsgData
{
    Event(const char* timestamp, std::uint32_t level, const char* body)
    {
        m_timestamp = timestamp;
        m_level = level;
        m_levelText = level >= 4 ? "Error" : level == 3 ? "Warning" : "Info";
        m_body = body;
    }
};

// Ids are positions, from 1 on. Puts errors first when it is asked to sort by the level, and filters nothing.
class Events : public ILogMsgService
{
public:
    explicit Events(ILogViewer& viewer) : m_viewer(viewer) { viewer.SetLogMsgService(this); }

    void Add(const char* timestamp, std::uint32_t level, const char* body)
    {
        m_events.emplace_back(timestamp, level, body);
        m_viewer.AddMsg(Count(), &m_events.back());
    }
    ILogMsgData* GetMsg(std::uint32_t id) override { return id - 1 < Count() ? &m_events[id - 1] : nullptr; }
    void GetSortKeys(LogMsgSortKey* keys, std::int32_t) override { keys[0] = m_key; }
    void SetSortKeys(const LogMsgSortKey* keys, std::int32_t) override { m_key = keys[0]; }
    void Apply() override
    {
        const auto isGraver = [](const Event& left, const Event& right) {
            return left.GetLevel() > right.GetLevel();
        };
        if (m_key.field == kLogMsgLevel)
            std::stable_sort(m_events.begin(), m_events.end(), isGraver);
        m_viewer.SetMsgIdRange(1, Count()); // the view is another one
        m_viewer.AddMsg(Count(), nullptr);
    }
    ILogMsgList* CreateMsgList(std::int32_t, std::int32_t) override { return new List(*this); }

private:
    // Knows the messages by itself and needs no clones. It must not outlive the service.
    struct List : ILogMsgList
    {
        explicit List(Events& theEvents) : events(theEvents) {}
        std::int32_t Add(ILogMsgData*) override { return 0; }
        ILogMsgData* Get(std::uint32_t id) override { return events.GetMsg(id); }
        Events& events;
    };

    std::uint32_t Count() const { return static_cast<std::uint32_t>(m_events.size()); }

    ILogViewer& m_viewer;
    std::vector<Event> m_events;
    LogMsgSortKey m_key;
};

class Printer : public ILogViewer
{
public:
    void SetLogMsgService(ILogMsgService* service) override { m_service = service; }
    void AddMsg(std::uint32_t id, ILogMsgData* message) override
    {
        for (std::uint32_t each = message ? id : 1; each <= id; ++each)
        {
            const ILogMsgData& told = *m_service->GetMsg(each);
            std::printf("%s  %-7s  %s\n", told.GetTimestamp(), told.GetLevelText(), told.GetBody());
        }
    }
    void SetMsgIdRange(std::uint32_t, std::uint32_t last) override { std::printf("-- %u messages\n", last); }
    void Present(std::uint32_t) override {}
    CWnd* GetWnd() override { return nullptr; }

private:
    ILogMsgService* m_service = nullptr;
};

} // namespace

int main()
{
    Printer viewer;
    Events events(viewer);
    events.Add("08:00", 2, "Pump 1 started");
    events.Add("08:07", 4, "Pump 2 does not start");
    events.Add("08:09", 3, "Level above 2.10 m");
    const LogMsgSortKey key = {kLogMsgLevel, 0};
    events.SetSortKeys(&key, 1);
    events.Apply();
}
