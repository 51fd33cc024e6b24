#include "logtool/MessageFields.h"

#include "LogMsg.h"
#include "logtool/Command.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace logtool
{

std::string FieldName(std::int32_t field)
{
    std::string name = LogMsgDataKindText(field);
    for (char& character : name)
        character =
            character == ' ' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    return name;
}

std::string FieldNames()
{
    std::string names;
    for (std::int32_t field = 0; field < kLogMsgKindCount; ++field)
        names += (field > 0 ? ", " : "") + FieldName(field);
    return names;
}

std::int32_t ParseField(const std::string& what, const std::string& name)
{
    for (std::int32_t field = 0; field < kLogMsgKindCount; ++field)
        if (name == FieldName(field))
            return field;
    throw UsageError(what, "'" + name + "' is no field: " + FieldNames());
}

std::vector<std::int32_t> ParseFields(const std::string& what, const std::string& names)
{
    std::vector<std::int32_t> fields;
    if (names == "all")
        for (std::int32_t field = 0; field < kLogMsgKindCount; ++field)
            fields.push_back(field);
    std::istringstream list(names == "all" ? "" : names);
    for (std::string name; std::getline(list, name, ',');)
        fields.push_back(ParseField(what, name));
    if (fields.empty())
        throw UsageError(what, "names no field");
    return fields;
}

} // namespace logtool
