// Names of files on their way to the standard library.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace msgservice
{

// A name that is UTF-8 or in the system's code page, with something behind it. Given as it is, the standard
// library would take it for a text of its locale.
std::filesystem::path SystemPath(const std::string& path, std::string_view suffix = {});

} // namespace msgservice
