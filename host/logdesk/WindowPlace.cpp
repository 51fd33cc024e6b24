#include "logdesk/WindowPlace.h"

#include <algorithm>
#include <cstdlib>

namespace logdesk
{

namespace
{

constexpr int kLeastWidth = 320;
constexpr int kLeastHeight = 200;

int BoundedLength(int wanted, int least, int available)
{
    return std::min(std::max(wanted, least), available);
}

int BoundedStart(int wanted, int length, int areaStart, int areaLength)
{
    return std::max(areaStart, std::min(wanted, areaStart + areaLength - length));
}

} // namespace

Place BoundedPlace(const Place& wanted, const Place& area)
{
    Place place = {};
    place.width = BoundedLength(wanted.width, kLeastWidth, area.width);
    place.height = BoundedLength(wanted.height, kLeastHeight, area.height);
    place.left = BoundedStart(wanted.left, place.width, area.left, area.width);
    place.top = BoundedStart(wanted.top, place.height, area.top, area.height);
    return place;
}

Place CascadedPlace(const Place& wanted, const std::vector<Place>& others, int step, const Place& area)
{
    Place place = wanted;
    const auto isTaken = [&](const Place& other) {
        return std::abs(other.left - place.left) < step && std::abs(other.top - place.top) < step;
    };
    for (std::size_t i = 0; i < others.size() && std::any_of(others.begin(), others.end(), isTaken); ++i)
    {
        place.left += step;
        place.top += step;
        if (place.left + place.width > area.left + area.width)
            place.left = area.left;
        if (place.top + place.height > area.top + area.height)
            place.top = area.top;
    }
    return BoundedPlace(place, area);
}

Place FirstPlace(const Place& area, int resolution)
{
    const int width = std::min(900 * resolution / 96, area.width * 9 / 10);
    const int height = std::min(640 * resolution / 96, area.height * 9 / 10);
    return BoundedPlace(
        {area.left + (area.width - width) / 2, area.top + (area.height - height) / 2, width, height}, area);
}

} // namespace logdesk
