// Pictures of the window, and the steps that lead to one.
#pragma once

#include "logdesk/DeskFrame.h"
#include "logdesk/Steps.h"

#include <string>

namespace logdesk
{

// Takes a step as the user would; what it looks for and does not find leaves the view as it is.
void TakeStep(DeskFrame& frame, const Step& step);

// Until the rows of all logs are known, as the marks beside the scroll bar need them.
void WaitForIndex(const CQmLogTextCtrl& text);

// Writes the whole visible window, with its frame, as a bitmap of 32 bits a pixel. False when the file, or
// the picture, cannot be made.
bool WriteScreenshot(CWnd& wnd, const std::string& path);

} // namespace logdesk
