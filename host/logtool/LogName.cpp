#include "logtool/LogName.h"

#include "logtool/Command.h"
#include "msgservice/session/LogStream.h"

#include <algorithm>
#include <string_view>

namespace logtool
{

namespace
{

[[noreturn]] void Refuse(const std::string& name, const std::string& why)
{
    throw UsageError("'" + name + "'", why);
}

// Names that the system takes for devices in every folder, with any extension.
bool IsDevice(std::string_view name)
{
    std::string_view stem = name.substr(0, name.find('.'));
    while (stem.ends_with(' '))
        stem.remove_suffix(1);
    for (const char* device : {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$", "CLOCK$"})
        if (msgservice::IsSameName(stem, device))
            return true;
    const bool port = stem.size() > 3 && (msgservice::IsSameName(stem.substr(0, 3), "COM") ||
                                          msgservice::IsSameName(stem.substr(0, 3), "LPT"));
    if (!port)
        return false;
    // The raised digits 1 to 3 count as well, in Latin-1 and in UTF-8.
    const std::string_view digit = stem.substr(3);
    const std::string_view digits[] = {"0", "1", "2",    "3",    "4",    "5",        "6",        "7",
                                       "8", "9", "\xB9", "\xB2", "\xB3", "\xC2\xB9", "\xC2\xB2", "\xC2\xB3"};
    return std::find(std::begin(digits), std::end(digits), digit) != std::end(digits);
}

bool IsControl(char character)
{
    return static_cast<unsigned char>(character) < 0x20;
}

void CheckPart(const std::string& name, const std::string& part)
{
    if (part.empty() || part == "." || part == "..")
        Refuse(name, "would lead out of the log folder, or names no file");
    if (part.ends_with('.') || part.ends_with(' '))
        Refuse(name, "ends with a dot or a blank, which the system drops");
    if (IsDevice(part))
        Refuse(name, "is a device of the system and no file");
}

} // namespace

void CheckLogName(const std::string& name)
{
    if (name.empty())
        Refuse(name, "names no log");
    if (name.find_first_of("<>:\"|?*") != std::string::npos ||
        std::any_of(name.begin(), name.end(), IsControl))
        Refuse(name, "has a character that no file's name can have");
    for (std::size_t begin = 0; begin <= name.size();)
    {
        const std::size_t end = std::min(name.find_first_of("\\/", begin), name.size());
        CheckPart(name, name.substr(begin, end - begin));
        begin = end + 1;
    }
    const std::size_t file = name.find_last_of("\\/") + 1;
    const std::string_view own = std::string_view(name).substr(file);
    if (msgservice::IsSameName(own, "QmLog") || msgservice::IsSameName(own, "QmLog.LOG"))
        Refuse(name, "holds the messages about failures and is no log");
    const std::size_t dot = own.rfind('.');
    if (dot != std::string_view::npos && !msgservice::IsSameName(own.substr(dot), ".LOG"))
        Refuse(name,
               "is the same log as '" + name.substr(0, file + dot) + "', because extensions are dropped");
}

} // namespace logtool
