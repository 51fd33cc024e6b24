// The buttons of the tool bar, and what they know of the commands that they stand for.
#pragma once

#include "qmcommon/QmCommand.h"

#include <string>
#include <vector>

namespace logdesk
{

// A button stands for a command by what its caption says without "&"; windows may name it differently.
struct Tool
{
    const char* image; // as QmLoadIcon knows it; null for a gap between buttons, which has no command
    const char* caption;
    const char* otherCaption;
};

const std::vector<Tool>& Tools();

struct ToolState
{
    std::string tip;      // the caption without "&" and "...", and the shortcut: "Open (Ctrl+O)"
    bool enabled = false; // not without a command
    bool checked = false;
    std::size_t handler = 0; // the one whose command it is
    bool operator==(const ToolState&) const = default;
};

// One for each of Tools(). Of several handlers with a command the first one has it, though it may be disabled
// there.
std::vector<ToolState> ReadTools(const std::vector<IQmHandler*>& handlers);

// Executes the command of a tool, unless it is disabled by now. It may destroy the handlers.
void UseTool(std::size_t tool, const std::vector<IQmHandler*>& handlers);

} // namespace logdesk
