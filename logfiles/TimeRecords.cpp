#include "logfiles/TimeRecords.h"

#include "zemacore/File.h"
#include "zemacore/FileCalls.h"

#include <algorithm>

namespace logfiles
{

TimeRecords::TimeRecords(const std::string& path) : m_pages(kPages)
{
    std::uint64_t size = 0;
    if (!ZEMA::FileCalls().GetSize(path.c_str(), size))
        return;
    const HANDLE file =
        ZEMA_CreateFile(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                        nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (!file || file == INVALID_HANDLE_VALUE)
        return;
    m_file = file;
    m_count = size / sizeof(TimeRecord);
}

TimeRecords::~TimeRecords()
{
    if (m_file)
        ZEMA::FileCalls().Close(m_file);
}

const TimeRecord* TimeRecords::At(std::uint64_t index)
{
    if (index >= m_count)
        return nullptr;
    Page& page = m_pages[index / kPageRecords % kPages];
    const std::uint64_t first = index - index % kPageRecords;
    if (page.records.empty() || page.first != first)
        Read(page, first);
    const auto at = static_cast<std::size_t>(index - first);
    return at < page.records.size() && page.records[at].IsValid() ? &page.records[at] : nullptr;
}

const TimeRecord* TimeRecords::From(std::uint64_t& index, std::uint64_t end)
{
    for (int tries = 0; tries < kDamagedTogether && index < end; ++tries, ++index)
        if (const TimeRecord* const record = At(index))
            return record;
    return nullptr;
}

const TimeRecord* TimeRecords::Before(std::uint64_t& index)
{
    for (int tries = 0; tries < kDamagedTogether && index > 0; ++tries)
        if (const TimeRecord* const record = At(--index))
            return record;
    return nullptr;
}

// What cannot be read is not there.
void TimeRecords::Read(Page& page, std::uint64_t first)
{
    ZEMA::IFileCalls& files = ZEMA::FileCalls();
    page.first = first;
    page.records.resize(static_cast<std::size_t>(std::min<std::uint64_t>(kPageRecords, m_count - first)));
    std::uint64_t position = 0;
    DWORD bytes = 0;
    if (!files.Seek(m_file, static_cast<std::int64_t>(first * sizeof(TimeRecord)), FILE_BEGIN, position) ||
        !files.Read(m_file, page.records.data(), static_cast<DWORD>(page.records.size() * sizeof(TimeRecord)),
                    bytes))
        bytes = 0;
    page.records.resize(bytes / sizeof(TimeRecord));
}

} // namespace logfiles
