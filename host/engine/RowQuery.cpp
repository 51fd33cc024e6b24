#include "engine/RowQuery.h"

#include "engine/SqlText.h"

namespace engine
{

namespace
{

std::string OfSession(const ShippedRows& rows)
{
    return " FROM " + SqlTable(rows.table) + " WHERE machine = " + SqlValue(rows.machine) +
           " AND session = " + SqlValue(rows.session);
}

std::string Condition(const TextCondition& condition)
{
    return std::string(condition.matchCase ? "position(" : "positionCaseInsensitive(") +
           (condition.column == TextCondition::Column::Log ? "log" : "text") + ", " +
           SqlValue(condition.value) + (condition.wanted ? ") > 0" : ") = 0");
}

std::string KindCondition(const RowConditions& conditions)
{
    std::string list;
    for (const std::uint32_t kind : conditions.kinds)
        list += (list.empty() ? "" : ", ") + std::to_string(kind);
    return "kind " + std::string(conditions.kindsAreWanted ? "IN (" : "NOT IN (") + list + ")";
}

} // namespace

std::string MachinesSql(const ShippedRows& rows)
{
    return "SELECT DISTINCT machine FROM " + SqlTable(rows.table) +
           " WHERE session = " + SqlValue(rows.session) + " ORDER BY machine LIMIT 2";
}

std::string LastNumberSql(const ShippedRows& rows, std::uint64_t from)
{
    return "SELECT max(number), count()" + OfSession(rows) + " AND number >= " + std::to_string(from);
}

// The longest is chosen first: a condition may hold for what a line was before it has grown.
std::string RowsSql(const ShippedRows& rows, std::uint64_t from, std::uint64_t to,
                    const RowConditions& conditions)
{
    std::string where;
    const auto add = [&](const std::string& condition) {
        where += (where.empty() ? " WHERE " : " AND ") + condition;
    };
    for (const TextCondition& condition : conditions.texts)
        add(Condition(condition));
    if (conditions.kindsAreWanted || !conditions.kinds.empty())
        add(conditions.kinds.empty() ? "0" : KindCondition(conditions));
    return "SELECT number, log, time, depth, kind, text FROM (SELECT number, log, time, depth, kind, text" +
           OfSession(rows) + " AND number BETWEEN " + std::to_string(from) + " AND " + std::to_string(to) +
           " ORDER BY number, log, length DESC LIMIT 1 BY number, log)" + where + " ORDER BY number, log";
}

} // namespace engine
