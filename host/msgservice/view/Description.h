// What a view shows of the messages, and in which order.
#pragma once

#include "LogMsg.h"

#include <array>
#include <cstdint>
#include <string>

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

struct ViewDescription
{
    std::array<SortKey, 3> keys;   // the most important first; messages equal in all stay as they arrived
    std::array<Filter, 3> filters; // a message has to pass all
    bool showDuplicates = true;
    std::uint32_t leastLevel = 0;
    std::uint32_t firstIndex = 0; // messages before it are cleared

    bool operator==(const ViewDescription&) const = default;
};

} // namespace msgservice
