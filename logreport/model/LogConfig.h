// What the dialogs show of sort keys and filters, and make of what the user chooses.
#pragma once

#include "LogMsg.h"

#include <array>
#include <string>
#include <string_view>

namespace logreport
{

// The field of its name (LogMsgDataKindText); none for any other text. Capitals matter.
ILogMsgDataKind FieldOf(std::string_view name);

// "Contain", "Not contain" and "Not empty"; a number or text that is no operator is the first one.
const char* OperatorText(std::int32_t operation);
LogMsgFilterOperator OperatorOf(std::string_view text);

// The contents of "Log Configuration".
struct LogConfig
{
    struct Sort
    {
        std::string field;
        int direction = -1; // 0 is ascending, 1 descending, -1 not chosen
    };
    struct Filter
    {
        std::string field;
        std::string operation;
        std::string value;
        bool matchCase = false;
    };

    std::array<Sort, 3> sorts;
    std::array<Filter, 3> filters;
    bool showDuplicate = false;
};

// Without a service no field is chosen, and nothing else either.
LogConfig ReadLogConfig(ILogMsgService* service);

// Gives it to the service, which then applies it; nothing without one.
void WriteLogConfig(const LogConfig& config, ILogMsgService* service);

// Lets the service filter by what a field contains, in place of the first filter that is none, or else of the
// last one.
void AddFilter(ILogMsgDataKind field, const std::string& value, ILogMsgService& service);

} // namespace logreport
