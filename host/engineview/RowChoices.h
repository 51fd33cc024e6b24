// What a view describes, as a choice of rows that the engine makes.
#pragma once

#include "engine/RowQuery.h"
#include "msgservice/view/Description.h"

#include <string>

namespace engineview
{

// What the engine may leave out because no message of it passes the least level and the filters: less than
// these leave out, never more. For readers that look at each message again.
engine::RowConditions ConditionsFor(const msgservice::ViewDescription& description);

// All of a description but its first index. The engine folds letters in its own way and sorts texts by their
// bytes in lower case, not in the user's language.
struct DescribedRows
{
    engine::RowChoice choice; // without bounds
    std::string refused;      // sentences for the user about what the engine cannot do, a line each
};
DescribedRows DescribedBy(const msgservice::ViewDescription& description);

} // namespace engineview
