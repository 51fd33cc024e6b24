#include "logdesk/NumberText.h"

#include <charconv>
#include <cstddef>
#include <mutex>

namespace logdesk
{

namespace
{

// What is saved is counted on a thread of its own.
struct UsedGrouping
{
    std::mutex mutex;
    DigitGrouping grouping;
};

UsedGrouping& Used()
{
    static UsedGrouping used;
    return used;
}

// Takes the next size out of "3;2;0": `last` again where it is 0 or no number, 0, which is no group, at the
// end.
std::size_t NextSize(const char*& at, const char* end, std::size_t last)
{
    if (at == end)
        return 0;
    std::size_t size = 0;
    const std::from_chars_result read = std::from_chars(at, end, size);
    if (size == 0)
        return last;
    at = read.ptr;
    if (at != end)
        ++at;
    return size;
}

} // namespace

std::string GroupedText(std::uint64_t number, const DigitGrouping& grouping)
{
    std::string text = std::to_string(number);
    const char* at = grouping.sizes.data();
    const char* const end = at + grouping.sizes.size();
    std::size_t place = text.size();
    for (std::size_t size = NextSize(at, end, 0); size > 0 && place > size; size = NextSize(at, end, size))
    {
        place -= size;
        text.insert(place, grouping.separator);
    }
    return text;
}

void SetDigitGrouping(const DigitGrouping& grouping)
{
    const std::lock_guard lock(Used().mutex);
    Used().grouping = grouping;
}

std::string NumberText(std::uint64_t number)
{
    const std::lock_guard lock(Used().mutex);
    return GroupedText(number, Used().grouping);
}

std::string CountText(std::uint64_t count, const char* what)
{
    return NumberText(count) + " " + what + (count == 1 ? "" : "s");
}

} // namespace logdesk
