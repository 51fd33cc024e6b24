#include "logdesk/TextLook.h"

#include <gtest/gtest.h>

using namespace logdesk;

namespace
{

TEST(TextLook, ZoomGoesThroughTheSizesAndBack)
{
    const int cases[][3] = {
        // points, zoom, zoomed points
        {10, 0, 10}, {10, 1, 11}, {10, 3, 14},  {10, -1, 9}, {10, -5, 5}, {10, -6, 5},   {10, 99, 72},
        {13, 0, 13}, {13, 1, 14}, {13, -1, 12}, {72, 1, 72}, {5, -1, 5},  {100, 1, 100}, {1, -1, 1},
    };
    for (const auto& [points, zoom, zoomed] : cases)
        EXPECT_EQ(zoomed, ZoomedPoints(points, zoom)) << points << " " << zoom;

    for (const int points : {5, 10, 13, 72})
    {
        int zoom = 0;
        for (int step = 0; step < 50; ++step)
            zoom = ChangedZoom(points, zoom, 1);
        EXPECT_EQ(72, ZoomedPoints(points, zoom));
        zoom = ChangedZoom(points, zoom, -1);
        EXPECT_EQ(56, ZoomedPoints(points, zoom)) << "the first step back is seen";
        EXPECT_EQ(5, ZoomedPoints(points, ChangedZoom(points, zoom, -1000000000)));
        EXPECT_EQ(0, ChangedZoom(points, zoom, 0));
    }
}

TEST(TextLook, ReadsAnyProfile)
{
    TextLook odd;
    odd.font = "";
    odd.points = -32768;
    odd.zoom = 32767;
    const TextLook mended = BoundedLook(odd, 3);
    EXPECT_EQ(TextLook().font, mended.font);
    EXPECT_EQ(ColourChoice::AsSystem, mended.colours);
    EXPECT_EQ(72, ZoomedPoints(mended.points, mended.zoom));
    EXPECT_EQ(56, ZoomedPoints(mended.points, ChangedZoom(mended.points, mended.zoom, -1)));
    EXPECT_EQ(ColourChoice::Dark, BoundedLook({}, 2).colours);
    EXPECT_EQ(ColourChoice::AsSystem, BoundedLook({}, -1).colours);
    EXPECT_EQ(TextLook(), BoundedLook({}, 0));

    const ColourChoice all[] = {ColourChoice::AsSystem, ColourChoice::Light, ColourChoice::Dark};
    const bool dark[][2] = {{false, true}, {false, false}, {true, true}};
    for (int i = 0; i < 3; ++i)
        for (const bool system : {false, true})
            EXPECT_EQ(dark[i][system], IsDark(all[i], system)) << i << " " << system;
}

} // namespace
