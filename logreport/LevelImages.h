// The images of the five levels.
#pragma once

#include "afxcmn.h"

namespace logreport
{

// Image 0 is that of level 1 (LevelMap.h).
class LevelImages
{
public:
    // Loads the images for a resolution in dots per inch: of 16 pixels, or of 32 from 144 on. False, and
    // nothing has changed, if that fails.
    bool Load(int dpi);

    CImageList* List() { return &m_list; }
    int Size() const { return m_size; } // pixels of a side; 0 before they are loaded

private:
    CImageList m_list;
    int m_size = 0;
};

} // namespace logreport
