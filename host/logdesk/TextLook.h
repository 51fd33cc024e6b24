// How the log text looks to the user of LogDesk: colours, font, zoom.
#pragma once

#include <string>

namespace logdesk
{

enum class ColourChoice
{
    AsSystem,
    Light,
    Dark
};

struct TextLook
{
    ColourChoice colours = ColourChoice::AsSystem;
    std::string font = "Consolas"; // its name; of fixed pitch
    int points = 10;               // without zoom
    int zoom = 0;                  // steps to a larger size, below 0 to a smaller one

    bool operator==(const TextLook&) const = default;
};

// What anybody may have written into a profile, brought within bounds.
TextLook BoundedLook(TextLook look, int colours);

// The points of a font of `points` that is zoomed: a step goes to the next of the usual sizes, 5 to 72.
int ZoomedPoints(int points, int zoom);

// The zoom after so many steps more, no farther than sizes go; 0 steps lead back to the font's own size.
int ChangedZoom(int points, int zoom, int steps);

// Whether the log text is dark. `systemIsDark` is what the system wants programs to be.
bool IsDark(ColourChoice choice, bool systemIsDark);

} // namespace logdesk
