#include "logtool/ExportCursor.h"

#include "logtool/Command.h"

#include "QmLogReader.h"

#include <sstream>

namespace logtool
{

namespace
{

constexpr char kHead[] = "export 1";

std::uint32_t Checksum(std::string_view text)
{
    std::uint32_t hash = 2166136261;
    for (const char character : text)
        hash = (hash ^ static_cast<unsigned char>(character)) * 16777619;
    return hash;
}

// The text of the row with that number, without its line feed.
bool FindText(CQmLogReader& reader, std::uint32_t number, std::string_view& text)
{
    unsigned long found = 0;
    unsigned long index = 0;
    unsigned long length = 0;
    const char* bytes = nullptr;
    CQmLogRow row;
    if (reader.GetRowCount() == 0 || !reader.Find(number, false, found, index) ||
        !reader.Read(index, bytes, length, row) || row.time != number)
        return false;
    text = {bytes, length};
    if (text.ends_with('\n'))
        text.remove_suffix(1);
    return true;
}

// The log that has the row with `number`; empty if none has.
std::string FindLog(const std::vector<std::string>& logs, std::uint32_t number, std::string& text)
{
    for (const std::string& log : logs)
    {
        CQmLogReader reader;
        reader.SetFilePath(log.c_str());
        std::string_view found;
        if (!FindText(reader, number, found))
            continue;
        text = found;
        return log;
    }
    return {};
}

} // namespace

std::string SessionMark(const std::vector<std::string>& logs, std::uint32_t number)
{
    std::string text;
    const std::string log = FindLog(logs, number, text);
    if (log.empty())
        return {};
    return std::to_string(text.size()) + ' ' + std::to_string(Checksum(text)) + ' ' + log;
}

bool IsOtherSession(const std::string& mark, const std::vector<std::string>& logs, std::uint32_t number)
{
    std::istringstream words(mark);
    std::size_t size = 0;
    std::uint32_t checksum = 0;
    std::string log;
    std::string text;
    if (!(words >> size >> checksum) || !std::getline(words >> std::ws, log))
        return false;
    const std::string found = FindLog(logs, number, text);
    return !found.empty() && (found != log || text.size() < size ||
                              Checksum(std::string_view(text).substr(0, size)) != checksum);
}

bool ReadExportCursor(const std::string& path, ExportCursor& cursor)
{
    std::string text;
    if (!ReadCursorText(path, text))
        return false;
    std::istringstream lines(text);
    std::string line;
    std::getline(lines, line);
    bool valid = line == kHead;
    while (valid && std::getline(lines, line) && !line.empty())
    {
        const std::size_t blank = line.find(' ');
        const std::string name = line.substr(0, blank);
        const std::string value = blank == std::string::npos ? "" : line.substr(blank + 1);
        std::istringstream number(value);
        if (name == "length")
            valid = static_cast<bool>(number >> cursor.length);
        else if (name == "session")
            valid = static_cast<bool>(number >> cursor.ordinal);
        else if (name == "mark")
            cursor.mark = value;
        else if (name == "form")
            cursor.state += value + '\n';
        else
            valid = false;
    }
    const std::string rest{std::istreambuf_iterator<char>(lines), {}};
    if (!valid || !ParseCursor(rest, cursor.position))
        throw UsageError(path, "is no cursor file of an export");
    cursor.begun = true;
    return true;
}

void WriteExportCursor(const std::string& path, const ExportCursor& cursor)
{
    std::ostringstream text;
    text << kHead << "\nlength " << cursor.length << "\nsession " << cursor.ordinal << "\nmark "
         << cursor.mark << '\n';
    std::istringstream state(cursor.state);
    for (std::string line; std::getline(state, line);)
        text << "form " << line << '\n';
    text << '\n' << CursorText(cursor.position);
    WriteCursorText(path, text.str());
}

} // namespace logtool
