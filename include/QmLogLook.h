// What a log text window looks like beyond its usual look: a wide margin, and colours of its own.
#pragma once

#include <cstdint>

// Colours, 0x00BBGGRR. In high contrast the system's are used all the same.
struct QmLogColors
{
    std::uint32_t window;
    std::uint32_t kinds[4]; // text of plain, notice, error and detail rows; of any other kind as plain
    std::uint32_t selection;
    std::uint32_t selectionText;
    std::uint32_t inactiveSelection; // with the focus in another window
    std::uint32_t inactiveSelectionText;
    std::uint32_t logs[5];     // stripe and initial of a log, by file index
    std::uint32_t caretMargin; // behind the margin's marks at the caret's row
    std::uint32_t mark;        // fold marks and bookmarks
};

// Sets in which each text has a contrast of at least 4.5 : 1 with all it may stand on.
enum class QmLogTheme
{
    Light,
    Dark
};

struct QmLogLook
{
    // In place of the usual margin, which scrolls with the text, a margin that stays: a bookmark, a stripe
    // and the initial that tell the row's log, the fold mark as a box, and how many errors lie behind it.
    bool wideMargin = false;

    // Null for the system's colours and the usual ones of kinds; of the stripes, those of the set that suits
    // the window's colour. Copied.
    const QmLogColors* colors = nullptr;
};
