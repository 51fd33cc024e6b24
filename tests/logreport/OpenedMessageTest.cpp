// The message of a dialog: stepping, following it through views, and what is shown of it.
#include "logreport/model/OpenedMessage.h"
#include "tests/logreport/TaggedView.h"

namespace
{

using namespace logreport;
using Direction = OpenedMessage::Direction;

struct BusyService : ILogMsgService
{
    bool IsBusy() override { return busy; }
    ILogMsgList* CreateMsgList(std::int32_t, std::int32_t) override { return nullptr; }
    bool busy = false;
};

// Nobody asks it while it is busy.
struct ViewService : TaggedView<BusyService>
{
    ILogMsgData* GetMsg(std::uint32_t id) override
    {
        EXPECT_FALSE(busy);
        return TaggedView::GetMsg(id);
    }
};

std::string Steps(const OpenedMessage& message, ILogMsgService* service)
{
    const auto text = [](std::optional<std::uint32_t> id) { return id ? std::to_string(*id) : "none"; };
    return text(message.Neighbour(service, Direction::Previous)) + " " +
           text(message.Neighbour(service, Direction::Next));
}

TEST(OpenedMessage, StepsOverIdsThatAreUnknown)
{
    constexpr std::uint32_t kFar = 20 + OpenedMessage::kMostUnknown;
    ViewService service;
    for (const std::uint32_t id : {0u, 3u, 4u, 20u, kFar + 1, 2 * kFar, kNoLogMsgId - 1})
        service.view.emplace(id, TaggedMessage(0, "body"));
    const std::pair<std::uint32_t, std::string> cases[] = {
        {0, "none 3"},
        {3, "0 4"},
        {20, "4 " + std::to_string(kFar + 1)},
        {kFar + 1, "20 none"},
        {2 * kFar, "none none"},
        {kNoLogMsgId - 1, "none none"},
    };
    OpenedMessage message;
    EXPECT_EQ("none none", Steps(message, &service));
    for (const auto& [id, steps] : cases)
    {
        EXPECT_TRUE(message.Show(&service, id));
        EXPECT_EQ(steps, Steps(message, &service)) << id;
    }
    EXPECT_FALSE(message.Show(&service, 7));
    EXPECT_EQ(kNoLogMsgId - 1, message.Id());
    EXPECT_EQ("none none", Steps(message, nullptr));
    service.busy = true;
    EXPECT_EQ("none none", Steps(message, &service));
    EXPECT_FALSE(message.Show(&service, 3));
}

TEST(OpenedMessage, IsFollowedByItsArrivalNumber)
{
    ViewService service;
    service.view = {{1, {11, "one"}}, {2, {12, "two"}}};
    OpenedMessage message;
    ASSERT_TRUE(message.Show(&service, 2));
    const auto state = [&](ILogMsgService* present) {
        const bool isOther = message.Refresh(present);
        return std::string(isOther ? "other " : "same ") + std::to_string(message.Id()) + " " +
               message.Text(kLogMsgBody) + (message.IsInView() ? "" : " gone");
    };
    EXPECT_EQ("same 2 two", state(&service));
    service.view = {{1, {12, "two"}}, {2, {11, "one"}}};
    EXPECT_EQ("same 1 two", state(&service)) << "sorted";
    service.view = {{1, {12, "two and more"}}};
    EXPECT_EQ("other 1 two and more", state(&service));
    service.view.at(1).m_level = 5;
    EXPECT_EQ("other 1 two and more", state(&service));
    EXPECT_EQ(4, message.Image());
    service.view = {{1, {11, "one"}}};
    EXPECT_EQ("other 1 two and more gone", state(&service)) << "filtered";
    EXPECT_EQ("same 1 two and more gone", state(&service));
    service.busy = true;
    service.view = {{5, {12, "two"}}};
    EXPECT_EQ("same 1 two and more gone", state(&service));
    service.busy = false;
    EXPECT_EQ("other 5 two", state(&service)) << "back again";
    EXPECT_EQ("other 5 two gone", state(nullptr));
}

TEST(OpenedMessage, WithoutAnArrivalNumberItIsKnownByItsId)
{
    ViewService service;
    service.view = {{1, {0, "one"}}, {2, {0, "two"}}};
    OpenedMessage message;
    ASSERT_TRUE(message.Show(&service, 2));
    service.view.at(2).m_body = "2";
    EXPECT_TRUE(message.Refresh(&service));
    EXPECT_EQ("2", message.Text(kLogMsgBody));
    service.view.erase(2);
    EXPECT_TRUE(message.Refresh(&service));
    EXPECT_FALSE(message.IsInView());
}

TEST(OpenedMessage, TextsAreFitForEditFields)
{
    using namespace std::string_literals;
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},         {"a\r\nb\r\n", "a\r\nb\r\n"}, {"a\nb\rc", "a\r\nb\r\nc"}, {"\n\r", "\r\n\r\n"},
        {"a\0b"s, "a b"}, {"\r\r\n", "\r\n\r\n"},
    };
    for (const auto& [text, shown] : cases)
        EXPECT_EQ(shown, TextForEdit(text));
}

} // namespace
