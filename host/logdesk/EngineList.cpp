#include "logdesk/EngineList.h"

#include "qmcommon/QmCommand.h"

#include <algorithm>
#include <string_view>

namespace logdesk
{

namespace
{

class WithoutWalks : public IQmCommand
{
public:
    explicit WithoutWalks(IQmCommand& collector) : m_collector(collector) {}

    void Add(std::unique_ptr<IQmEntry> entry) override
    {
        constexpr std::string_view kLeftOut[] = {"&Find...", "C&lear", "Refresh"};
        const char* const caption = entry->GetCaption();
        if (!caption || std::find(std::begin(kLeftOut), std::end(kLeftOut), caption) == std::end(kLeftOut))
            m_collector.Add(std::move(entry));
    }
    void AddSeparator() override { m_collector.AddSeparator(); }

private:
    IQmCommand& m_collector;
};

} // namespace

BEGIN_MESSAGE_MAP(EngineList, MessageList)
    ON_WM_KEYDOWN()
END_MESSAGE_MAP()

void EngineList::Scan(IQmCommand& collector)
{
    WithoutWalks own(collector);
    MessageList::Scan(own);
}

void EngineList::DrawCtrl(CDC* dc)
{
    MessageList::DrawCtrl(dc);
    const int top = GetTopIndex();
    const int visible = GetVisibleCount(TRUE);
    const bool isOther = std::exchange(m_top, top) != top;
    if (std::exchange(m_visible, visible) != visible || isOther)
        m_scrolled();
}

// The base's "Find Next" would go through all rows.
void EngineList::OnKeyDown(UINT key, UINT repeat, UINT flags)
{
    if (key != VK_F3)
        MessageList::OnKeyDown(key, repeat, flags);
}

} // namespace logdesk
