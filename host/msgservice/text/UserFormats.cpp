#include "msgservice/text/UserFormats.h"

#include "msgservice/SystemPath.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace msgservice
{

std::string ReadUserFormats()
{
    const char* const profile = std::getenv("QM_PROFILE");
    const char* const appData = std::getenv("APPDATA");
    std::string path = profile ? profile : appData ? std::string(appData) + "\\QmLog\\Profile.ini" : "";
    path = path.substr(0, path.find_last_of("\\/") + 1) + "Formats.json";
    std::ifstream file(SystemPath(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace msgservice
