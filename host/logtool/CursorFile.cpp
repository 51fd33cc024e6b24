#include "logtool/CursorFile.h"

#include "logtool/Command.h"
#include "msgservice/SystemPath.h"

#include <cerrno>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace logtool
{

using msgservice::SystemPath;

namespace
{

// Of the last call of the standard library on a file.
std::string Reason()
{
    return std::generic_category().message(errno) + '.';
}

// Takes a number off the front of `line`, and the blank after it.
template <typename Number> bool TakeNumber(std::string_view& line, Number& number)
{
    const std::from_chars_result result = std::from_chars(line.data(), line.data() + line.size(), number);
    if (result.ec != std::errc())
        return false;
    line.remove_prefix(static_cast<std::size_t>(result.ptr - line.data()));
    if (line.empty())
        return true;
    if (line[0] != ' ')
        return false;
    line.remove_prefix(1);
    return true;
}

// Takes the first line off the front of `text`, its line end dropped: editors may have written it.
std::string_view TakeLine(std::string_view& text)
{
    const std::size_t lineFeed = text.find('\n');
    std::string_view line = text.substr(0, lineFeed);
    text.remove_prefix(lineFeed == std::string_view::npos ? text.size() : lineFeed + 1);
    while (line.ends_with('\r') || line.ends_with(' '))
        line.remove_suffix(1);
    return line;
}

} // namespace

bool ParseCursor(std::string_view text, Cursor& cursor)
{
    std::string_view line = TakeLine(text);
    if (!TakeNumber(line, cursor.number) || !line.empty())
        return false;
    while (!text.empty())
    {
        line = TakeLine(text);
        Cursor::Lag lag;
        if (!TakeNumber(line, lag.number) || !TakeNumber(line, lag.shown) || line.empty())
            return false;
        lag.log = line;
        cursor.lags.push_back(lag);
    }
    return true;
}

bool ReadCursorText(const std::string& path, std::string& text)
{
    std::error_code error;
    if (!std::filesystem::exists(SystemPath(path), error) && !error)
        return false;
    std::ifstream file(SystemPath(path), std::ios::binary);
    if (!file)
        throw UsageError(path, "cannot be read: " + Reason());
    text.assign(std::istreambuf_iterator<char>(file), {});
    return true;
}

bool ReadCursor(const std::string& path, Cursor& cursor)
{
    std::string text;
    if (!ReadCursorText(path, text))
        return false;
    if (!ParseCursor(text, cursor))
        throw UsageError(path, "is no cursor file");
    return true;
}

std::string CursorText(const Cursor& cursor)
{
    std::string text = std::to_string(cursor.number) + '\n';
    for (const Cursor::Lag& lag : cursor.lags)
        text += std::to_string(lag.number) + ' ' + std::to_string(lag.shown) + ' ' + lag.log + '\n';
    return text;
}

void WriteCursor(const std::string& path, const Cursor& cursor)
{
    WriteCursorText(path, CursorText(cursor));
}

void WriteCursorText(const std::string& path, const std::string& text)
{
    const std::string temporary = path + ".new";
    {
        std::ofstream file(SystemPath(temporary), std::ios::binary | std::ios::trunc);
        file << text;
        file.close();
        if (!file)
            throw UsageError(temporary, "cannot be written: " + Reason());
    }
    std::error_code error;
    std::filesystem::rename(SystemPath(temporary), SystemPath(path), error);
    if (error)
        throw UsageError(path, "cannot be replaced: " + error.message() + '.');
}

} // namespace logtool
