#include "msgservice/SystemPath.h"

#include "zemacore/WideText.h"

namespace msgservice
{

std::filesystem::path SystemPath(const std::string& path, std::string_view suffix)
{
    std::string converted;
    const std::string& utf8 = ZEMA::ToUtf8(path.data(), path.size(), converted) ? converted : path;
    std::u8string name(utf8.begin(), utf8.end());
    return {name.append(suffix.begin(), suffix.end())};
}

} // namespace msgservice
