// What the window of an engine's session says.
#pragma once

#include "engineview/EngineService.h"

#include <string>

namespace logdesk
{

// "Session S of press-7 at http://host:8123".
std::string EngineSessionText(const engine::EngineUrl& url);
std::string EngineTitle(const engine::EngineUrl& url);

// "1,204 rows", "24 rows, searched 42 %", "the first 1,000,000 rows", "Sorting...", "Server lost".
std::string EngineRowsText(const engineview::EngineService::State& state);

// "Number 18,342, Block 18,300 to 18,400"; empty parts are left out.
std::string EngineBoundsText(const std::optional<engine::RowReader::Span>& bounds);

} // namespace logdesk
