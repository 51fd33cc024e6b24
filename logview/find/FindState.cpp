#include "logview/find/FindState.h"

namespace logview
{

std::string FindStateText(const FindState& state)
{
    if (!state.error.empty())
        return state.error;
    if (state.progress == FindProgress::None)
        return {};

    const std::string found = std::to_string(state.count) + (state.progress == FindProgress::Full ? "+" : "");
    std::string matches;
    if (state.place > 0)
        matches = std::to_string(state.place) + " of " + found +
                  (state.isHidden ? ", whose row cannot be shown" : "");
    else if (state.count > 0)
        matches = found + " found";
    else if (state.progress == FindProgress::Done)
        matches = "nothing found";

    std::string text;
    if (state.progress == FindProgress::Searching)
        text = "searching " + std::to_string(state.percent) + " %";
    else if (state.progress == FindProgress::Cancelled)
        text = "cancelled at " + std::to_string(state.percent) + " %";
    text += (text.empty() || matches.empty() ? "" : ", ") + matches;
    if (state.rowsGivenUp > 0)
        text += ", " + std::to_string(state.rowsGivenUp) +
                (state.rowsGivenUp == 1 ? " row is too costly" : " rows are too costly");
    return text;
}

} // namespace logview
