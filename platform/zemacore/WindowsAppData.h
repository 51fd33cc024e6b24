// The platform's own application-data manager, and the INI file that keeps its profile.
#pragma once

#include "zemacore/AppDataManager.h"

#include <optional>
#include <string>

namespace ZEMA
{

// The manager in use until a host sets another. It lives as long as the process.
IAppDataManager& WindowsAppDataManager();

// A variable of the environment as it is at this moment; empty when missing.
std::string EnvironmentValue(const char* name);

// The value of a key in the profile's INI file, whatever its length, without surrounding quotes and blanks;
// nothing when it is absent.
std::optional<std::string> ReadProfileText(const char* section, const char* key);

} // namespace ZEMA
