// A service whose view has any ids, with messages that keep their arrival number whatever their id.
#pragma once

#include "tests/logreport/FullMessage.h"

#include <gtest/gtest.h>
#include <map>
#include <string>

struct TaggedMessage : FullMessage
{
    TaggedMessage(std::int32_t number, const std::string& text) : FullMessage(text.c_str()), tag(number) {}
    std::int32_t GetTag() const override { return tag; }
    std::int32_t tag;
};

// `Service` is the service that it otherwise is.
template <typename Service> struct TaggedView : Service
{
    ILogMsgData* GetMsg(std::uint32_t id) override
    {
        EXPECT_NE(kNoLogMsgId, id);
        const auto found = view.find(id);
        return found == view.end() ? nullptr : &found->second;
    }
    std::uint32_t FindTag(std::int32_t tag) override
    {
        for (const auto& [id, message] : view)
            if (message.tag == tag)
                return id;
        return kNoLogMsgId;
    }

    std::map<std::uint32_t, TaggedMessage> view;
};
