// Text for the user outside the window.
#pragma once

#include <string>

namespace logdesk
{

enum class Tone
{
    Answer, // to a question, such as for the help: standard output
    Failure // standard error
};

// Goes to the program's stream where it was started with one, as from a script, else to the console that it
// was started from, else into a message box.
void Tell(const std::string& text, Tone tone);

} // namespace logdesk
