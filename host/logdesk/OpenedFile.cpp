#include "logdesk/OpenedFile.h"

#include "logdesk/Notices.h"

namespace logdesk
{

namespace
{

// Backslashes count double before a quote.
std::string Quoted(const std::string& word)
{
    const std::size_t end = word.find_last_not_of('\\') + 1;
    return '"' + word + word.substr(end) + '"';
}

} // namespace

std::string FileName(const std::string& path)
{
    return path.substr(path.find_last_of("\\/") + 1);
}

bool BelongsToSession(const std::string& path, const std::function<bool(const std::string&)>& exists)
{
    const std::string log = LogOfFile(FileName(path));
    if (log.empty())
        return false;
    const std::string stem = path.substr(0, path.size() - 4);
    return !IsSameLog(path.substr(path.size() - 4), ".LOG") || exists(stem + ".ROW");
}

std::string CommandLineOf(const std::string& program, const std::string& word)
{
    return Quoted(program) + " " + Quoted(word);
}

} // namespace logdesk
