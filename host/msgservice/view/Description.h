// What a view shows of the messages, and in which order.
#pragma once

#include "LogMsg.h"

#include <cstdint>
#include <string>
#include <vector>

namespace msgservice
{

struct Filter
{
    std::int32_t field = kLogMsgNone; // none leaves in all
    std::int32_t operation = kLogMsgContain;
    std::string value;
    bool matchCase = false;

    bool operator==(const Filter&) const = default;
};

struct SortKey
{
    std::int32_t field = kLogMsgNone; // none orders nothing
    bool ascending = true;

    bool operator==(const SortKey&) const = default;
};

// The most important first. Messages that are equal in all stay as they arrived.
using SortKeys = std::vector<SortKey>;

struct ViewDescription
{
    SortKeys keys;
    std::vector<Filter> filters; // a message has to pass all
    bool showDuplicates = true;
    std::uint32_t leastLevel = 0;
    std::uint32_t firstIndex = 0; // messages before it are cleared

    bool operator==(const ViewDescription&) const = default;
};

} // namespace msgservice
