// The picture that a thread paints into before it goes to a window.
#pragma once

#include "afxwin.h"

#include <memory>

// A device context in memory with a bitmap. A thread keeps one from paint to paint, as selecting a bitmap
// into another device context costs as much as drawing some rows of text.
class PaintPicture
{
public:
    // Of at least this size. Begin must have answered true before anything else is asked.
    bool Begin(CDC& like, CSize size);
    ~PaintPicture();

    CDC& GetDC() { return m_dc; }

    // Makes it larger if it must be; what is selected and set stays. False when there is no memory.
    bool Enlarge(CDC& like, CSize size);

    // Gives up what has been selected and set since Begin.
    void End();

private:
    bool Covers(CSize size) const;

    CDC m_dc;
    std::unique_ptr<CBitmap> m_bitmap;
    std::unique_ptr<CBitmap> m_begun; // was selected at Begin, if another one is now
    HGDIOBJ m_oldBitmap = nullptr;
    int m_saved = 0;
};
