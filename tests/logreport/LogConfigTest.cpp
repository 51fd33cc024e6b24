// The contents of the dialogs that edit sort keys and filters, and what they do to a service.
#include "logreport/model/LogConfig.h"

#include <gtest/gtest.h>

namespace
{

using namespace logreport;

struct DescribedService : ILogMsgService
{
    ILogMsgData* GetMsg(std::uint32_t) override { return nullptr; }
    ILogMsgList* CreateMsgList(std::int32_t, std::int32_t) override { return nullptr; }
    void GetSortKeys(LogMsgSortKey* given, std::int32_t count) override
    {
        EXPECT_EQ(3, count);
        std::copy(keys.begin(), keys.end(), given);
    }
    void SetSortKeys(const LogMsgSortKey* wanted, std::int32_t count) override
    {
        EXPECT_EQ(3, count);
        std::copy_n(wanted, 3, keys.begin());
        told += "keys ";
    }
    void GetFilters(LogMsgFilter* given, std::int32_t count) override
    {
        EXPECT_EQ(3, count);
        std::copy(filters.begin(), filters.end(), given);
    }
    void SetFilters(const LogMsgFilter* wanted, std::int32_t count) override
    {
        EXPECT_EQ(3, count);
        std::copy_n(wanted, 3, filters.begin());
        told += "filters ";
    }
    void GetShowDuplicate(std::int32_t& show) override
    {
        EXPECT_EQ(1, show);
        show = duplicates;
    }
    void SetShowDuplicate(std::int32_t show) override
    {
        duplicates = show;
        told += "duplicates ";
    }
    void Apply() override { told += "apply"; }

    std::string Line(std::size_t i) const
    {
        const LogMsgFilter& filter = filters[i];
        return std::to_string(keys[i].field) + (keys[i].ascending ? " up " : " down ") +
               std::to_string(filter.field) + " " + std::to_string(filter.operation) + " " +
               filter.value.c_str() + (filter.matchCase ? " case" : "");
    }

    std::array<LogMsgSortKey, 3> keys;
    std::array<LogMsgFilter, 3> filters;
    std::int32_t duplicates = 1;
    std::string told;
};

TEST(LogConfig, TextsAreFieldsAndOperators)
{
    EXPECT_EQ(kLogMsgNone, FieldOf("<Empty>"));
    EXPECT_EQ(kLogMsgSourceColumn, FieldOf("Source Column"));
    for (std::int32_t kind = kLogMsgNone; kind < kLogMsgKindCount; ++kind)
        EXPECT_EQ(kind, FieldOf(LogMsgDataKindText(kind)));
    for (const char* const text : {"", "timestamp", "Time", "Timestamp "})
        EXPECT_EQ(kLogMsgNone, FieldOf(text)) << text;
    const std::pair<std::int32_t, const char*> operators[] = {{0, "Contain"},   {1, "Not contain"},
                                                              {2, "Not empty"}, {3, "Contain"},
                                                              {5, "Contain"},   {-1, "Contain"}};
    for (const auto& [operation, text] : operators)
        EXPECT_STREQ(text, OperatorText(operation));
    EXPECT_EQ(kLogMsgContain, OperatorOf("contain"));
    EXPECT_EQ(kLogMsgContain, OperatorOf(""));
    EXPECT_EQ(kLogMsgNotContain, OperatorOf("Not contain"));
    EXPECT_EQ(kLogMsgNotEmpty, OperatorOf("Not empty"));
}

TEST(LogConfig, GoesFromTheServiceAndBack)
{
    LogConfig config = ReadLogConfig(nullptr);
    EXPECT_EQ("<Empty>", config.sorts[2].field + config.filters[1].operation);
    EXPECT_EQ("<Empty>", config.filters[2].field);
    EXPECT_EQ(-1, config.sorts[0].direction);
    EXPECT_FALSE(config.showDuplicate);
    WriteLogConfig(config, nullptr);

    DescribedService service;
    service.keys = {{{kLogMsgWho, 0}, {kLogMsgNone, 1}, {kLogMsgLevel, 7}}};
    service.filters[0] = {kLogMsgBody, static_cast<LogMsgFilterOperator>(5), "x\xFCy", 1};
    service.filters[2] = {kLogMsgTopic, kLogMsgNotEmpty, "", 0};
    service.duplicates = 0;
    config = ReadLogConfig(&service);
    EXPECT_EQ("Who", config.sorts[0].field);
    EXPECT_EQ(1, config.sorts[0].direction);
    EXPECT_EQ(0, config.sorts[2].direction);
    EXPECT_EQ("Contain", config.filters[0].operation);
    EXPECT_FALSE(config.showDuplicate);
    config.sorts[1] = {"Error Number", 0};
    config.sorts[2] = {"<Empty>", -1};
    config.filters[1] = {"Body", "Not contain", "no", true};
    config.showDuplicate = true;
    WriteLogConfig(config, &service);
    EXPECT_EQ("11 down 3 0 x\xFCy case", service.Line(0));
    EXPECT_EQ("4 up 3 1 no case", service.Line(1));
    EXPECT_EQ("-1 down 2 2 ", service.Line(2));
    EXPECT_EQ(1, service.duplicates);
    EXPECT_EQ("keys filters duplicates apply", service.told);
}

TEST(LogConfig, AFurtherFilterTakesTheFirstFreePlace)
{
    DescribedService service;
    service.filters[1] = {kLogMsgTopic, kLogMsgNotEmpty, "", 0};
    const char* const values[] = {"a", "b", "c"};
    const std::size_t places[] = {0, 2, 2};
    for (std::size_t i = 0; i < 3; ++i)
    {
        service.told.clear();
        AddFilter(kLogMsgBody, values[i], service);
        EXPECT_EQ("-1 up 3 0 " + std::string(values[i]), service.Line(places[i]));
        EXPECT_EQ("filters apply", service.told);
    }
    EXPECT_EQ("-1 up 2 2 ", service.Line(1));
}

} // namespace
