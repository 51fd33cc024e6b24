// The records of "Log.TIM" in pages, and searches in them.
#pragma once

#include "logfiles/TimeRecord.h"
#include "wintypes.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace logfiles
{

// The records of one file, as many as there were when it was opened. Pages of them are kept by their numbers,
// so that searches that go the same way at first read little.
class TimeRecords
{
public:
    // Without records where the file is missing or cannot be opened.
    explicit TimeRecords(const std::string& path);
    ~TimeRecords(); // closes the file
    TimeRecords(const TimeRecords&) = delete;
    TimeRecords& operator=(const TimeRecords&) = delete;

    std::uint64_t Count() const { return m_count; }

    // Null for a record that is damaged or cannot be read. Valid until the next call.
    const TimeRecord* At(std::uint64_t index);

    // The next record from `index` on, or back, that is not damaged, and its index. Null if there is none
    // close to it, so that a file of zeros takes no longer than others.
    const TimeRecord* From(std::uint64_t& index, std::uint64_t end);
    const TimeRecord* Before(std::uint64_t& index);

    // The first record from `low` to below `high` that is not below what is looked for; `high` for none.
    template <typename IsBelow>
    std::uint64_t Search(std::uint64_t low, std::uint64_t high, const IsBelow& isBelow)
    {
        while (low < high)
        {
            const std::uint64_t middle = low + (high - low) / 2;
            std::uint64_t at = middle;
            const TimeRecord* const record = From(at, high);
            if (record && isBelow(*record))
                low = at + 1;
            else
                high = middle;
        }
        return low;
    }

private:
    static constexpr std::size_t kPageRecords = 204; // close to 4 KiB
    static constexpr std::size_t kPages = 128;
    static constexpr int kDamagedTogether = 4096;

    struct Page
    {
        std::uint64_t first = 0;
        std::vector<TimeRecord> records;
    };

    void Read(Page& page, std::uint64_t first);

    HANDLE m_file = nullptr;
    std::uint64_t m_count = 0;
    std::vector<Page> m_pages;
};

} // namespace logfiles
