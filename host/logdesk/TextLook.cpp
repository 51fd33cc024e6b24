#include "logdesk/TextLook.h"

#include <algorithm>
#include <iterator>

namespace logdesk
{

namespace
{

constexpr int kSizes[] = {5, 6, 7, 8, 9, 10, 11, 12, 14, 16, 18, 20, 22, 24, 26, 28, 32, 36, 40, 48, 56, 72};

int SmallerSizes(int points)
{
    return static_cast<int>(std::lower_bound(std::begin(kSizes), std::end(kSizes), points) -
                            std::begin(kSizes));
}

int LargerSizes(int points)
{
    return static_cast<int>(std::end(kSizes) -
                            std::upper_bound(std::begin(kSizes), std::end(kSizes), points));
}

int BoundedZoom(int points, int zoom)
{
    return std::clamp(zoom, -SmallerSizes(points), LargerSizes(points));
}

} // namespace

TextLook BoundedLook(TextLook look, int colours)
{
    const bool isChoice = colours >= 0 && colours <= static_cast<int>(ColourChoice::Dark);
    look.colours = isChoice ? static_cast<ColourChoice>(colours) : ColourChoice::AsSystem;
    if (look.font.empty())
        look.font = TextLook().font;
    look.points = std::clamp(look.points, kSizes[0], *std::prev(std::end(kSizes)));
    look.zoom = BoundedZoom(look.points, look.zoom);
    return look;
}

int ZoomedPoints(int points, int zoom)
{
    const int bounded = BoundedZoom(points, zoom);
    if (bounded > 0)
        return *(std::end(kSizes) - LargerSizes(points) + bounded - 1);
    return bounded < 0 ? kSizes[SmallerSizes(points) + bounded] : points;
}

int ChangedZoom(int points, int zoom, int steps)
{
    return steps == 0 ? 0 : BoundedZoom(points, BoundedZoom(points, zoom) + std::clamp(steps, -100, 100));
}

bool IsDark(ColourChoice choice, bool systemIsDark)
{
    return choice == ColourChoice::Dark || (choice == ColourChoice::AsSystem && systemIsDark);
}

} // namespace logdesk
