// What the window of an engine's session says.
#pragma once

#include "engineview/EngineService.h"

#include <string>

namespace logdesk
{

// "Session S of press-7 at http://host:8123".
std::string EngineSessionText(const engine::EngineUrl& url);
std::string EngineTitle(const engine::EngineUrl& url);

// "1,204 rows", "24 rows of 30, searched 42 %", "Only 1,000,000 rows", "The engine is working...".
std::string EngineRowsText(const engineview::EngineService::State& state);

// "Block from number 18300 to 18400"; empty for the whole session.
std::string EngineBoundsText(const std::optional<engine::RowReader::Span>& bounds);

} // namespace logdesk
