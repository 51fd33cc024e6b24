#include "logreport/model/LogConfig.h"

#include <algorithm>

namespace logreport
{

namespace
{

constexpr std::array<const char*, 3> kOperators = {"Contain", "Not contain", "Not empty"};
constexpr std::int32_t kCount = 3; // of keys, and of filters

} // namespace

ILogMsgDataKind FieldOf(std::string_view name)
{
    for (std::int32_t kind = kLogMsgNone; kind < kLogMsgKindCount; ++kind)
        if (name == LogMsgDataKindText(kind))
            return static_cast<ILogMsgDataKind>(kind);
    return kLogMsgNone;
}

const char* OperatorText(std::int32_t operation)
{
    return kOperators[operation >= 0 && operation < kCount ? static_cast<std::size_t>(operation) : 0];
}

LogMsgFilterOperator OperatorOf(std::string_view text)
{
    const auto found = std::find(kOperators.begin(), kOperators.end(), text);
    return found == kOperators.end() ? kLogMsgContain
                                     : static_cast<LogMsgFilterOperator>(found - kOperators.begin());
}

LogConfig ReadLogConfig(ILogMsgService* service)
{
    LogConfig config;
    for (LogConfig::Sort& sort : config.sorts)
        sort.field = LogMsgDataKindText(kLogMsgNone);
    for (LogConfig::Filter& filter : config.filters)
        filter.field = LogMsgDataKindText(kLogMsgNone);
    if (!service)
        return config;

    std::int32_t showDuplicate = 1;
    service->GetShowDuplicate(showDuplicate);
    config.showDuplicate = showDuplicate != 0;
    std::array<LogMsgSortKey, kCount> keys;
    service->GetSortKeys(keys.data(), kCount);
    std::array<LogMsgFilter, kCount> filters;
    service->GetFilters(filters.data(), kCount);
    for (std::size_t i = 0; i < keys.size(); ++i)
    {
        config.sorts[i] = {LogMsgDataKindText(keys[i].field), keys[i].ascending ? 0 : 1};
        config.filters[i] = {LogMsgDataKindText(filters[i].field), OperatorText(filters[i].operation),
                             std::string(filters[i].value.c_str(), filters[i].value.GetLength()),
                             filters[i].matchCase != 0};
    }
    return config;
}

void WriteLogConfig(const LogConfig& config, ILogMsgService* service)
{
    if (!service)
        return;
    std::array<LogMsgSortKey, kCount> keys;
    std::array<LogMsgFilter, kCount> filters;
    for (std::size_t i = 0; i < keys.size(); ++i)
    {
        keys[i] = {FieldOf(config.sorts[i].field), config.sorts[i].direction == 0 ? 1 : 0};
        const LogConfig::Filter& filter = config.filters[i];
        filters[i] = {FieldOf(filter.field), OperatorOf(filter.operation),
                      ZEMA::String(filter.value.data(), filter.value.size()), filter.matchCase ? 1 : 0};
    }
    service->SetSortKeys(keys.data(), kCount);
    service->SetFilters(filters.data(), kCount);
    service->SetShowDuplicate(config.showDuplicate ? 1 : 0);
    service->Apply();
}

void AddFilter(ILogMsgDataKind field, const std::string& value, ILogMsgService& service)
{
    std::array<LogMsgFilter, kCount> filters;
    service.GetFilters(filters.data(), kCount);
    const auto isFree = [](const LogMsgFilter& filter) { return filter.field == kLogMsgNone; };
    const auto place = std::find_if(filters.begin(), filters.end() - 1, isFree);
    *place = {field, kLogMsgContain, ZEMA::String(value.data(), value.size()), 0};
    service.SetFilters(filters.data(), kCount);
    service.Apply();
}

} // namespace logreport
