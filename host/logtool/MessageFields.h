// The fields of messages by the names that a command line has for them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace logtool
{

// "timestamp", "error-number": the field's (ILogMsgDataKind) display text in lower case, with "-" for blanks.
std::string FieldName(std::int32_t field);

// All of them, with a comma and a blank between.
std::string FieldNames();

// The field of that name. Throws UsageError that begins with `what`.
std::int32_t ParseField(const std::string& what, const std::string& name);

// Names with commas between; "all" stands for all fields. Throws UsageError that begins with `what`.
std::vector<std::int32_t> ParseFields(const std::string& what, const std::string& names);

} // namespace logtool
