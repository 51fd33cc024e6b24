#include "logdesk/KeptSessions.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <iterator>
#include <string_view>

namespace logdesk
{

namespace
{

// A zero stands for any digit.
constexpr std::string_view kPattern = "Session 0000-00-00 00-00-00";

std::string Upper(std::string text)
{
    for (char& character : text)
        character = static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
    return text;
}

bool IsDigit(char character)
{
    return character >= '0' && character <= '9';
}

// The number after the date: 1 without one, 0 when `folder` is no name that we give.
int SuffixNumber(const std::string& folder)
{
    if (folder.size() < kPattern.size())
        return 0;
    for (std::size_t i = 0; i < kPattern.size(); ++i)
        if (kPattern[i] == '0' ? !IsDigit(folder[i]) : folder[i] != kPattern[i])
            return 0;

    const std::string suffix = folder.substr(kPattern.size());
    if (suffix.empty())
        return 1;
    int number = 0;
    const bool isWritten = std::sscanf(suffix.c_str(), " (%4d)", &number) == 1 && number > 1;
    return isWritten && suffix == " (" + std::to_string(number) + ")" ? number : 0;
}

bool IsOlder(const std::string& a, const std::string& b)
{
    const int dates = a.compare(0, kPattern.size(), b, 0, kPattern.size());
    return dates != 0 ? dates < 0 : SuffixNumber(a) < SuffixNumber(b);
}

} // namespace

bool IsSessionFile(const std::string& name)
{
    const std::string file = Upper(name);
    if (file == "LOG.DAT" || file == "LOG.TIM")
        return true;
    return file != "QMLOG.LOG" && file.size() > 4 && (file.ends_with(".LOG") || file.ends_with(".ROW"));
}

std::string KeptFolderName(const Moment& moment, const std::vector<std::string>& folders)
{
    char date[100];
    std::snprintf(date, sizeof(date), "Session %04d-%02d-%02d %02d-%02d-%02d", moment.year, moment.month,
                  moment.day, moment.hour, moment.minute, moment.second);
    const std::string plain = date;
    std::string name = plain;
    for (int number = 2; std::find(folders.begin(), folders.end(), name) != folders.end(); ++number)
        name = plain + " (" + std::to_string(number) + ")";
    return name;
}

std::vector<std::string> FoldersToDelete(std::vector<std::string> folders, int keep)
{
    std::erase_if(folders, [](const std::string& folder) { return SuffixNumber(folder) == 0; });
    std::sort(folders.begin(), folders.end(), IsOlder);
    const std::size_t kept = std::min(folders.size(), static_cast<std::size_t>(std::max(keep, 0)));
    folders.resize(folders.size() - kept);
    return folders;
}

} // namespace logdesk
