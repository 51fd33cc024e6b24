// Where the window goes on the screen.
#pragma once

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

// Where the window goes the first time: in the middle.
Place FirstPlace(const Place& area);

} // namespace logdesk
