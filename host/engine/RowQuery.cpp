#include "engine/RowQuery.h"

#include "engine/SqlText.h"

#include <algorithm>

namespace engine
{

namespace
{

std::string OfSession(const ShippedRows& rows, const std::string& prewhere = "")
{
    return " FROM " + SqlTable(rows.table) + prewhere + " WHERE machine = " + SqlValue(rows.machine) +
           " AND session = " + SqlValue(rows.session);
}

std::string Between(std::uint64_t from, std::uint64_t to)
{
    return " AND number BETWEEN " + std::to_string(from) + " AND " + std::to_string(to);
}

std::string Expression(TextCondition::Column column, const KindMeanings& meanings)
{
    if (column != TextCondition::Column::Level)
        return column == TextCondition::Column::Log ? "log" : "text";
    std::string names;
    for (const KindMeaning& meaning : meanings.kinds)
        names += "kind = " + std::to_string(meaning.kind) + ", " + SqlValue(meaning.name) + ", ";
    return names.empty() ? "toString(kind)" : "multiIf(" + names + "toString(kind))";
}

std::string Condition(const TextCondition& condition, const KindMeanings& meanings)
{
    using Letters = TextCondition::Letters;
    const std::string text = Expression(condition.column, meanings);
    if (condition.value.empty())
        return text + (condition.wanted ? " != ''" : " = ''");
    const std::string position = condition.letters == Letters::AsTheyAre ? "position("
                                 : condition.letters == Letters::AsciiInEitherCase
                                     ? "positionCaseInsensitive("
                                     : "positionCaseInsensitiveUTF8(";
    return position + text + ", " + SqlValue(condition.value) + (condition.wanted ? ") > 0" : ") = 0");
}

std::string KindCondition(const RowConditions& conditions)
{
    std::string list;
    for (const std::uint32_t kind : conditions.kinds)
        list += (list.empty() ? "" : ", ") + std::to_string(kind);
    return "kind " + std::string(conditions.kindsAreWanted ? "IN (" : "NOT IN (") + list + ")";
}

std::string Where(const RowConditions& conditions, const KindMeanings& meanings)
{
    std::string where;
    const auto add = [&](const std::string& condition) {
        where += (where.empty() ? "" : " AND ") + condition;
    };
    for (const TextCondition& condition : conditions.texts)
        add(Condition(condition, meanings));
    if (conditions.kindsAreWanted || !conditions.kinds.empty())
        add(conditions.kinds.empty() ? "0" : KindCondition(conditions));
    return where;
}

// Of a row that has arrived more than once the longest, and that before any condition is looked at: one may
// hold for what a line was before it has grown.
std::string Longest(const ShippedRows& rows, const std::string& columns, const std::string& stretch,
                    const std::string& prewhere = "")
{
    return "(SELECT " + columns + OfSession(rows, prewhere) + stretch +
           " ORDER BY number, log, length DESC LIMIT 1 BY number, log)";
}

// Numbers of rows of which some form meets the conditions: the engine reads and sorts the other columns of
// these alone then. Left out where almost all rows meet them, because it holds the numbers in memory.
std::string Candidates(const ShippedRows& rows, const RowChoice& choice, const std::string& where)
{
    const RowConditions& conditions = choice.conditions;
    const bool isForFew =
        conditions.kindsAreWanted || std::any_of(conditions.texts.begin(), conditions.texts.end(),
                                                 [](const TextCondition& text) { return text.wanted; });
    if (!isForFew)
        return "";
    return " PREWHERE number GLOBAL IN (SELECT number" + OfSession(rows) + Between(choice.from, choice.to) +
           " AND " + where + ")";
}

bool SortsBy(const RowChoice& choice, RowOrder::Column column)
{
    return std::any_of(choice.order.begin(), choice.order.end(),
                       [column](const RowOrder& key) { return key.column == column; });
}

// Those that the question needs: each is read for all rows.
std::string NeededColumns(const RowChoice& choice)
{
    const RowConditions& conditions = choice.conditions;
    const bool hasLevel =
        std::any_of(conditions.texts.begin(), conditions.texts.end(),
                    [](const TextCondition& text) { return text.column == TextCondition::Column::Level; });
    std::string columns = "number, log";
    if (choice.leavesOutRepeated || hasLevel || conditions.kindsAreWanted || !conditions.kinds.empty() ||
        SortsBy(choice, RowOrder::Column::Level))
        columns += ", kind";
    if (choice.leavesOutRepeated)
        columns += ", depth";
    if (SortsBy(choice, RowOrder::Column::Time))
        columns += ", time";
    if (choice.leavesOutRepeated || !conditions.texts.empty() || SortsBy(choice, RowOrder::Column::Text))
        columns += ", text";
    return columns;
}

std::string OrderBy(const RowChoice& choice)
{
    std::string order;
    for (const RowOrder& key : choice.order)
    {
        std::string expression;
        switch (key.column)
        {
        case RowOrder::Column::Time:
            expression = "if(time = 0, toInt64(number), time)";
            break;
        case RowOrder::Column::Level:
            expression = "multiIf(";
            for (const KindMeaning& meaning : choice.meanings.kinds)
                expression +=
                    "kind = " + std::to_string(meaning.kind) + ", " + std::to_string(meaning.level) + ", ";
            expression += std::to_string(choice.meanings.otherLevel) + ")";
            break;
        case RowOrder::Column::Log:
            expression = "lowerUTF8(log)";
            break;
        case RowOrder::Column::Text:
            expression = "lowerUTF8(text)";
            break;
        }
        order += expression + (key.ascending ? ", " : " DESC, ");
    }
    return " ORDER BY " + order + "number, log";
}

} // namespace

std::string SessionsSql(const ShippedRows& rows)
{
    return "SELECT machine, session, count(), max(time) FROM " + SqlTable(rows.table) +
           (rows.machine.empty() ? "" : " WHERE machine = " + SqlValue(rows.machine)) +
           " GROUP BY machine, session ORDER BY machine, session";
}

std::string MachinesSql(const ShippedRows& rows)
{
    return "SELECT DISTINCT machine FROM " + SqlTable(rows.table) +
           " WHERE session = " + SqlValue(rows.session) + " ORDER BY machine LIMIT 2";
}

std::string SomeSql(const ShippedRows& rows, std::uint64_t from)
{
    return "SELECT number" + OfSession(rows) + " AND number >= " + std::to_string(from) + " LIMIT 1";
}

std::string SpanSql(const ShippedRows& rows, std::uint64_t from, std::uint64_t to)
{
    return "SELECT min(number), max(number)" + OfSession(rows) + Between(from, to);
}

std::string NumbersSql(const ShippedRows& rows, const RowChoice& choice, std::uint64_t most)
{
    const std::string where = Where(choice.conditions, choice.meanings);
    const std::string hash = choice.leavesOutRepeated ? "cityHash64(log, kind, depth, text)" : "0";
    const std::string found = "(SELECT number, " + hash + " AS hash FROM " +
                              Longest(rows, NeededColumns(choice), Between(choice.from, choice.to),
                                      Candidates(rows, choice, where)) +
                              (where.empty() ? "" : " WHERE " + where) + OrderBy(choice) + " LIMIT " +
                              std::to_string(most) + ")";
    const std::string arrays =
        "(SELECT groupArray(number) AS numbers, groupArray(hash) AS hashes FROM " + found + ")";
    const std::string kept = choice.leavesOutRepeated
                                 ? "arrayFilter((number, hash, before) -> hash != before, numbers, hashes, "
                                   "arraySlice(arrayConcat([toUInt64(" +
                                       std::to_string(choice.before) + ")], hashes), 1, length(hashes)))"
                                 : "numbers";
    return "SELECT arrayStringConcat(arrayMap(number -> toString(number), " + kept +
           "), ' '), length(numbers), toString(hashes[length(hashes)]) FROM " + arrays;
}

std::string RowsSql(const ShippedRows& rows, const RowChoice& choice,
                    const std::vector<std::uint32_t>& numbers, std::optional<std::uint32_t> mostText)
{
    std::string stretch = Between(choice.from, choice.to);
    for (const std::uint32_t number : numbers)
        stretch += (number == numbers.front() ? " AND number IN (" : ", ") + std::to_string(number);
    stretch += numbers.empty() ? "" : ")";
    const std::string columns = "number, log, time, depth, kind, header, block, ";
    const std::string where = Where(choice.conditions, choice.meanings);
    const std::string most = std::to_string(mostText.value_or(0));
    const std::string text = mostText ? "if(lengthUTF8(text) > " + most + ", concat(substringUTF8(text, 1, " +
                                            most + "), ' ...'), text)"
                                      : "text";
    return "SELECT " + columns + text + " FROM " + Longest(rows, columns + "text", stretch) +
           (where.empty() ? "" : " WHERE " + where) + " ORDER BY number, log";
}

std::string BlockEndSql(const ShippedRows& rows, std::uint64_t from, std::uint64_t to, const std::string& log,
                        std::uint32_t depth)
{
    const std::string limit = std::to_string(depth);
    return "SELECT min(number)" + OfSession(rows) + Between(from, to) + " AND ((log = " + SqlValue(log) +
           " AND depth < " + limit + ") OR (header != 0 AND depth <= " + limit + "))";
}

std::string NearestSql(const ShippedRows& rows, std::uint64_t from, std::uint64_t to, std::uint32_t kind,
                       bool least)
{
    return std::string("SELECT ") + (least ? "min" : "max") + "(number)" + OfSession(rows) +
           Between(from, to) + " AND kind = " + std::to_string(kind);
}

std::string TimeSql(const ShippedRows& rows, std::int64_t time)
{
    return "SELECT min(number)" + OfSession(rows) + " AND time >= " + std::to_string(time);
}

} // namespace engine
