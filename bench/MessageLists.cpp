#include "MessageLists.h"
#include "BenchFiles.h"

#include <cstring>

namespace bench
{

namespace
{

constexpr int kMessages = 1000;
constexpr UINT_PTR kTimer = 9000; // the viewer's

// The service's, with no messages of its own.
class ReadyList : public ILogMsgList
{
public:
    explicit ReadyList(ReadyService& service) : m_service(service) {}

    std::int32_t Add(ILogMsgData*) override { return 0; }
    ILogMsgData* Get(std::uint32_t id) override { return m_service.GetMsg(id); }

private:
    ReadyService& m_service;
};

// Of the font that viewers draw previews in.
int PreviewLineHeight()
{
    CWindowDC dc(nullptr);
    dc.SelectStockObject(ANSI_FIXED_FONT);
    TEXTMETRIC metrics = {};
    dc.GetTextMetrics(&metrics);
    return metrics.tmHeight;
}

void Answer(_RVITEM& item, const char* text)
{
    std::memcpy(item.text, text, std::strlen(text) + 1); // none is longer than what is asked for
    item.mask = RVIM_TEXT;
}

} // namespace

ReadyMessage::ReadyMessage(int number)
    : m_timestamp("2026-11-22 13:10:" + std::to_string(10 + number / 17 % 50)), m_lines(1 + number % 4),
      m_level(number % 20 == 0 ? 4 : 2)
{
    for (int line = 0; line < m_lines; ++line)
        m_body += (line > 0 ? "\r\n" : "") + std::string(MakeText(number, line).data()) + " was answered";
}

ReadyService::ReadyService()
{
    for (int number = 0; number < kMessages; ++number)
        m_messages.emplace_back(number);
}

ILogMsgList* ReadyService::CreateMsgList(std::int32_t, std::int32_t)
{
    return new ReadyList(*this);
}

LogList::LogList(Frame& frame, ReadyService& service, int count, Shown shown)
{
    Check(Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, kWidth, kHeight), &frame, 1) != FALSE, "the viewer");
    SetLogMsgService(&service);
    SetFollow(0);
    if (shown != Shown::Previews)
    {
        SetHideRow(0);
        SetShowReport(1);
        ModifyProperty(RVP_SHOWPREVIEW, shown == Shown::LinesAndPreviews);
    }
    Tell(static_cast<std::uint32_t>(count));
    Tick();
    Check(GetItemCount() == count, "the viewer's rows");
}

LogList::~LogList()
{
    SetLogMsgService(nullptr);
}

void LogList::Tell(std::uint32_t id)
{
    AddMsg(id, nullptr);
}

void LogList::Tick()
{
    SendMessage(WM_TIMER, kTimer);
}

PlainList::PlainList(Frame& frame, ReadyService& service, LogList& like)
    : m_service(service), m_lineHeight(PreviewLineHeight())
{
    Check(Create(WS_CHILD | WS_VISIBLE | RVS_CALLBACK, CRect(0, 0, kWidth, kHeight), &frame, 1) != FALSE,
          "the report control");
    for (int column = 0; column < like.GetActiveSubItemCount(); ++column)
    {
        const int subitem = like.GetSubItemFromColumn(column);
        while (GetSubItemCount() <= subitem)
        {
            _RVSUBITEM definition;
            definition.text = "Column";
            Check(DefineSubItem(GetSubItemCount(), &definition) >= 0, "a subitem");
        }
        Check(ActivateSubItem(subitem, column) == column, "a column");
        SetSubItemWidth(subitem, like.GetSubItemWidth(subitem));
    }
    SetItemHeight(like.GetItemHeight());
    SetShowReport(like.GetShowReport());
    __int64 previews = 0;
    like.GetProperty(RVP_SHOWPREVIEW, &previews);
    ModifyProperty(RVP_SHOWPREVIEW, previews);
    SetItemCount(like.GetItemCount());
}

__int64 PlainList::OnRvnItemCallbackBypass(_NMREPORTVIEW* notification)
{
    _RVITEM& item = reinterpret_cast<_NMRVITEMCALLBACK*>(notification)->item;
    const ReadyMessage& message = m_service.Message(static_cast<std::uint32_t>(item.item) + 1);
    if (item.subitem == kLogMsgTimestamp)
        Answer(item, message.GetTimestamp());
    else if (item.subitem == kLogMsgLevel)
        Answer(item, message.GetLevelText());
    else
        Answer(item, message.GetBody());
    if (item.subitem == kLogMsgNone)
    {
        item.previewHeight = m_lineHeight * message.BodyLines();
        item.mask |= RVIM_PREVIEWHEIGHT;
    }
    return 0;
}

} // namespace bench
