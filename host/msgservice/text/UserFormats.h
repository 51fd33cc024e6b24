// The formats of text logs that a user has added.
#pragma once

#include <string>

namespace msgservice
{

// The text of "Formats.json" beside the profile (the file QM_PROFILE, else %APPDATA%\\QmLog\\Profile.ini), as
// TextFormats::Add takes it; empty if there is none.
std::string ReadUserFormats();

} // namespace msgservice
