// The steps towards a screenshot, by name.
#pragma once

#include <string>

namespace logdesk
{

enum class StepAction
{
    Home,
    End,
    Up,
    Down,
    NextFold,
    Unfold,
    UnfoldAll,
    Fold,
    NextError,
    PreviousError,
    Find,
    Select,
    SelectAll,
    Follow,
    Tab,
    During,
    Message,
    NextMessageError,
    PreviousMessageError,
    FindMessage,
    NextFound,
    PreviousFound,
    Sort,
    Level,
    Report,
    Preview,
    ShowInLog,
    ShowInMessages,
    LogText,
    Messages,
    Split,
    Dark,
    Zoom,
    Size,
    Sample
};

struct Step
{
    StepAction action = StepAction::Home;
    int count = 0;         // rows to go or to select; 1 or 0 for on or off; the width, the field, the level
    int height = 0;        // of Size; 1 for descending
    std::string text = {}; // of Find, FindMessage
};

// Reads one step, such as "down:3". False when there is no such step or its value does not fit.
bool ParseStep(const std::string& word, Step& step);

} // namespace logdesk
