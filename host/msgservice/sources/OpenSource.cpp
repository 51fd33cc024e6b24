#include "msgservice/sources/OpenSource.h"

#include "msgservice/saved/SavedSource.h"
#include "msgservice/session/SessionSource.h"
#include "msgservice/sources/FileInput.h"
#include "msgservice/sources/TextSource.h"
#include "zemacore/File.h"
#include "zemacore/FileCalls.h"

#include <array>
#include <string_view>
#include <utility>
#include <vector>

namespace msgservice
{

namespace
{

// How an SQLite database begins.
constexpr std::string_view kDatabase("SQLite format 3\0", 16);

bool IsDatabase(const std::string& path)
{
    ZEMA::IFileCalls& files = ZEMA::FileCalls();
    const HANDLE file = ZEMA_CreateFile(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                        nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (!file || file == INVALID_HANDLE_VALUE)
        return false;
    std::array<char, kDatabase.size()> bytes = {};
    DWORD size = 0;
    const bool read = files.Read(file, bytes.data(), bytes.size(), size);
    files.Close(file);
    return read && std::string_view(bytes.data(), size) == kDatabase;
}

// The folder and the name of the log that the path is a file of; an empty name if it is of none.
std::pair<std::string, std::string> LogOf(const std::string& path)
{
    const std::size_t begin = path.find_last_of("\\/") + 1;
    const std::size_t dot = path.find_last_of('.');
    if (dot == std::string::npos || dot < begin ||
        (!IsSameName(path.substr(dot), ".LOG") && !IsSameName(path.substr(dot), ".ROW")))
        return {};
    std::uint64_t size = 0;
    const std::string stem = path.substr(0, dot);
    const bool isPair = ZEMA::FileCalls().GetSize((stem + ".LOG").c_str(), size) &&
                        ZEMA::FileCalls().GetSize((stem + ".ROW").c_str(), size);
    return {path.substr(0, begin), isPair ? stem.substr(begin) : ""};
}

} // namespace

std::unique_ptr<MessageSource> OpenSource(const std::string& path, const OpenOptions& options)
{
    if (IsDatabase(path))
        return std::make_unique<SavedSource>(
            path, options.follow ? SavedSource::AtEnd::Follow : SavedSource::AtEnd::Stop,
            options.readOnly ? MessageFile::Access::ReadOnly : MessageFile::Access::MayRepair);
    if (const auto [folder, log] = LogOf(path); options.useFolder && !log.empty())
    {
        options.useFolder(folder.empty() ? "." : folder);
        return std::make_unique<SessionSource>(
            std::vector{log}, options.follow ? SessionSource::Until::Forever : SessionSource::Until::Now);
    }
    using Until = FileInput::Until;
    TextSourceOptions text;
    text.source = options.named ? path : "";
    text.format = options.format;
    return std::make_unique<TextSource>(
        std::make_unique<FileInput>(path, options.follow ? Until::Forever : Until::End), *options.formats,
        text);
}

} // namespace msgservice
