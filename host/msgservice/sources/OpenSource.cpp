#include "msgservice/sources/OpenSource.h"

#include "msgservice/saved/SavedSource.h"
#include "msgservice/sources/FileInput.h"
#include "msgservice/sources/TextSource.h"
#include "zemacore/File.h"
#include "zemacore/FileCalls.h"

#include <array>
#include <string_view>

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

} // namespace

std::unique_ptr<MessageSource> OpenSource(const std::string& path, const OpenOptions& options)
{
    if (IsDatabase(path))
        return std::make_unique<SavedSource>(
            path, options.follow ? SavedSource::AtEnd::Follow : SavedSource::AtEnd::Stop,
            options.readOnly ? MessageFile::Access::ReadOnly : MessageFile::Access::MayRepair);
    using Until = FileInput::Until;
    TextSourceOptions text;
    text.source = options.named ? path : "";
    text.format = options.format;
    return std::make_unique<TextSource>(
        std::make_unique<FileInput>(path, options.follow ? Until::Forever : Until::End), *options.formats,
        text);
}

} // namespace msgservice
