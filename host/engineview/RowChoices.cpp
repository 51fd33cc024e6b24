#include "engineview/RowChoices.h"

#include "msgservice/session/RowMessage.h"

#include <algorithm>

namespace engineview
{

namespace
{

using engine::RowOrder;
using engine::TextCondition;

constexpr QmLogBlockKind kKinds[] = {kPlainKind, kNoticeKind, kErrorKind, kDetailKind};

bool IsAscii(const std::string& text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// A message has blanks for NULs and no line ends behind its text, so a value with such bytes is left to the
// filter. What must not be there is not in the message if it is not in the row, but for a blank in a NUL's
// place, and the filter looks again.
bool CanAsk(const msgservice::Filter& filter)
{
    const bool isField = filter.field == kLogMsgTopic || filter.field == kLogMsgBody;
    const bool isOperation = filter.operation == kLogMsgContain || filter.operation == kLogMsgNotContain;
    const bool isPlain = std::all_of(filter.value.begin(), filter.value.end(), [&](char c) {
        return static_cast<unsigned char>(c) > (filter.operation == kLogMsgContain ? 0x20 : 0x1F);
    });
    return isField && isOperation && isPlain && !filter.value.empty() &&
           (filter.matchCase || IsAscii(filter.value));
}

// All other kinds are plain ones.
void AddLevel(std::uint32_t least, engine::RowConditions& conditions)
{
    conditions.kindsAreWanted = msgservice::LevelOfKind(kPlainKind) < least;
    for (const QmLogBlockKind kind : kKinds)
        if ((msgservice::LevelOfKind(kind) >= least) == conditions.kindsAreWanted)
            conditions.kinds.push_back(kind);
}

engine::KindMeanings Meanings()
{
    engine::KindMeanings meanings;
    for (const QmLogBlockKind kind : kKinds)
        meanings.kinds.push_back({kind, msgservice::LevelOfKind(kind), msgservice::NameOfKind(kind)});
    meanings.otherLevel = msgservice::LevelOfKind(kPlainKind);
    return meanings;
}

// A field that all rows have alike: a number is 0, a text is empty.
bool PassesConstant(const msgservice::Filter& filter)
{
    const bool isNumber = filter.field == kLogMsgErrorNumber || filter.field == kLogMsgLine ||
                          filter.field == kLogMsgSourceLine || filter.field == kLogMsgSourceColumn;
    if (filter.operation == kLogMsgNotEmpty)
        return isNumber;
    const bool holds = filter.value.empty() || (isNumber && filter.value == "0");
    return holds == (filter.operation != kLogMsgNotContain);
}

// False if the filter leaves out all rows.
bool AddFilter(const msgservice::Filter& filter, DescribedRows& described)
{
    TextCondition condition;
    switch (filter.field)
    {
    case kLogMsgNone:
        return true;
    case kLogMsgTimestamp:
        described.refused += "The engine does not filter by the timestamp: \"Go To\" leads to a time\n";
        return true;
    case kLogMsgLevel:
        condition.column = TextCondition::Column::Level;
        break;
    case kLogMsgTopic:
        condition.column = TextCondition::Column::Log;
        break;
    case kLogMsgBody:
        break;
    default:
        return PassesConstant(filter);
    }
    condition.wanted = filter.operation != kLogMsgNotContain;
    if (filter.operation != kLogMsgNotEmpty)
    {
        if (filter.value.empty()) // which every text contains
            return condition.wanted;
        condition.value = filter.value;
        condition.letters =
            filter.matchCase ? TextCondition::Letters::AsTheyAre : TextCondition::Letters::InEitherCase;
    }
    described.choice.conditions.texts.push_back(std::move(condition));
    return true;
}

void AddKey(const msgservice::SortKey& key, DescribedRows& described)
{
    const struct
    {
        std::int32_t field;
        RowOrder::Column column;
    } columns[] = {{kLogMsgTimestamp, RowOrder::Column::Time},
                   {kLogMsgLevel, RowOrder::Column::Level},
                   {kLogMsgTopic, RowOrder::Column::Log},
                   {kLogMsgBody, RowOrder::Column::Text}};
    for (const auto& [field, column] : columns)
        if (key.field == field)
            described.choice.order.push_back({column, key.ascending});
}

} // namespace

engine::RowConditions ConditionsFor(const msgservice::ViewDescription& description)
{
    engine::RowConditions conditions;
    for (const msgservice::Filter& filter : description.filters)
        if (CanAsk(filter))
            conditions.texts.push_back(
                {filter.field == kLogMsgTopic ? TextCondition::Column::Log : TextCondition::Column::Text,
                 filter.value,
                 filter.matchCase ? TextCondition::Letters::AsTheyAre
                                  : TextCondition::Letters::AsciiInEitherCase,
                 filter.operation == kLogMsgContain});
    AddLevel(description.leastLevel, conditions);
    return conditions;
}

DescribedRows DescribedBy(const msgservice::ViewDescription& description)
{
    DescribedRows described;
    engine::RowConditions& conditions = described.choice.conditions;
    AddLevel(description.leastLevel, conditions);
    for (const msgservice::Filter& filter : description.filters)
        if (!AddFilter(filter, described))
        {
            conditions.kindsAreWanted = true;
            conditions.kinds.clear();
        }
    for (const msgservice::SortKey& key : description.keys)
        AddKey(key, described);
    described.choice.meanings = Meanings();
    described.choice.leavesOutRepeated = !description.showDuplicates;
    return described;
}

} // namespace engineview
