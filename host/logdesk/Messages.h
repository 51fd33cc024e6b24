// Text for the user outside the window.
#pragma once

#include <string>

namespace logdesk
{

// Goes to standard error where the program was started with one, as from a script, else to the console that
// it was started from, else into a message box.
void Tell(const std::string& text);

} // namespace logdesk
