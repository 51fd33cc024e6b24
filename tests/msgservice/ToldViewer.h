// A viewer that knows what it was told.
#pragma once

#include "msgservice/MsgService.h"

#include <functional>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

namespace msgservice
{

// Knows what it was told, and complains of what a service must not tell.
class ToldViewer : public ILogViewer
{
public:
    void SetLogMsgService(ILogMsgService* given) override { service = given; }
    void AddMsg(std::uint32_t id, ILogMsgData* message) override
    {
        EXPECT_GE(id, count) << "ids grow";
        ASSERT_NE(nullptr, service) << "told although it was removed";
        EXPECT_TRUE(!message || message->GetTag() == service->GetMsg(id)->GetTag());
        count = id;
        if (!list)
            list.reset(service->CreateMsgList(500, 0));
        if (onTold)
            onTold();
    }
    void SetMsgIdRange(std::uint32_t first, std::uint32_t last) override
    {
        EXPECT_EQ(1u, first);
        EXPECT_NE(nullptr, service) << "told although it was removed";
        count = last;
        ++ranges;
        if (onTold)
            onTold();
    }
    void Present(std::uint32_t) override {}
    CWnd* GetWnd() override { return nullptr; }

    // The tags of all rows, as the list has them.
    std::vector<std::int32_t> Tags() const
    {
        std::vector<std::int32_t> tags;
        for (std::uint32_t id = 1; id <= count; ++id)
            tags.push_back(list->Get(id)->GetTag());
        return tags;
    }

    ILogMsgService* service = nullptr;
    std::unique_ptr<ILogMsgList> list;
    std::uint32_t count = 0;
    int ranges = 0;
    std::function<void()> onTold;
};

} // namespace msgservice
