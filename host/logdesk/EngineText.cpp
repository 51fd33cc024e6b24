#include "logdesk/EngineText.h"

#include "logdesk/NumberText.h"

#include <limits>

namespace logdesk
{

std::string EngineSessionText(const engine::EngineUrl& url)
{
    return "Session " + url.session + (url.machine.empty() ? "" : " of " + url.machine) + " at " +
           url.Shown();
}

std::string EngineTitle(const engine::EngineUrl& url)
{
    return EngineSessionText(url) + " - LogDesk";
}

std::string EngineRowsText(const engineview::EngineService::State& state)
{
    if (state.isLost)
        return "The server does not answer";
    if (state.isBusy)
        return "The engine is working...";
    if (!state.span)
        return "No rows yet";
    std::string text = CountText(state.shown, "row");
    if (state.isCutOff)
        text = "Only " + text;
    if (state.found > state.shown && !state.isCutOff)
        text += " of " + NumberText(state.found);
    if (state.searchedTo > 0 && !state.isCutOff && state.searchedTo < state.span->last)
    {
        const std::uint64_t all = std::uint64_t{state.span->last} - state.span->first + 1;
        const std::uint64_t searched = state.searchedTo < state.span->first
                                           ? 0
                                           : std::uint64_t{state.searchedTo} - state.span->first + 1;
        text += ", searched " + std::to_string(searched * 100 / all) + " %";
    }
    if (state.isOld)
        text += ", newer ones: F5";
    return text;
}

std::string EngineBoundsText(const std::optional<engine::RowReader::Span>& bounds)
{
    if (!bounds)
        return "";
    const std::string first = "Block from number " + std::to_string(bounds->first);
    return bounds->last == std::numeric_limits<std::uint32_t>::max()
               ? first + " on"
               : first + " to " + std::to_string(bounds->last);
}

} // namespace logdesk
