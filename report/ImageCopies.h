// Pictures of the images of a list that stays as it is.
#pragma once

#include "afxcmn.h"
#include "afxwin.h"

#include <cstdint>
#include <vector>

namespace report
{

// The system's image lists make several bitmaps for each image that they draw, which takes longer than
// drawing the texts of its row. A copy is made when an image is first drawn, and is drawn in one call.
class ImageCopies
{
public:
    ~ImageCopies() { Forget(); }

    // To be called when there is another list, and when the present one has changed.
    void Forget();

    // Draws the left `width` pixels of an image. False, and nothing is drawn, if its list is to draw it: on
    // devices with few colours, without memory, and for what is neither opaque nor transparent.
    bool Draw(CDC& dc, CPoint place, int width, CImageList& list, int image);

private:
    enum class State : std::uint8_t
    {
        Unknown,
        Copied,
        Refused
    };

    void Begin(HDC dc, const CImageList& list);
    State Copy(CImageList& list, int image);
    void DrawFrom(CImageList& list, int image, std::uint32_t background, std::vector<std::uint32_t>& pixels);

    CDC m_dc;
    CBitmap m_strip;                   // all images side by side, with alpha
    std::uint32_t* m_pixels = nullptr; // of the strip, row by row from the top
    CSize m_size;
    std::vector<State> m_states; // by image; none if the list draws them all
    bool m_isBegun = false;
};

} // namespace report
