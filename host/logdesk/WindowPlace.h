// Where the window goes on the screen.
#pragma once

#include <vector>

namespace logdesk
{

// A rectangle in pixels.
struct Place
{
    int left, top, width, height;
    bool operator==(const Place&) const = default;
};

// The nearest place to `wanted` that lies within `area`, what the screen has free: no larger than it, and no
// smaller than a window that can be used, as far as the area allows.
Place BoundedPlace(const Place& wanted, const Place& area);

// `wanted`, or steps to the right and below of it where `others` do not begin: a window does not cover
// another one that was left at the same place. Within `area` like BoundedPlace.
Place CascadedPlace(const Place& wanted, const std::vector<Place>& others, int step, const Place& area);

// Where the window goes the first time: in the middle. `resolution` is the display's, 96 pixels an inch
// mostly.
Place FirstPlace(const Place& area, int resolution);

} // namespace logdesk
