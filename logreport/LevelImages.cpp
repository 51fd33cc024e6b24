#include "logreport/LevelImages.h"

#include "logreport/OwnDialog.h"
#include "resources/qmlog_resource.h"

namespace logreport
{

namespace
{

constexpr COLORREF kTransparent = RGB(255, 0, 255);
constexpr int kImages = 5;
constexpr int kLargeFrom = 144; // dots per inch

} // namespace

bool LevelImages::Load(int dpi)
{
    const bool isLarge = dpi >= kLargeFrom;
    const int size = isLarge ? 32 : 16;
    CBitmap bitmap;
    if (!bitmap.Attach(::LoadImage(OwnModule(), MAKEINTRESOURCE(isLarge ? IDB_LEVELS_200 : IDB_LEVELS),
                                   IMAGE_BITMAP, 0, 0, 0)))
        return false;
    CImageList list;
    if (!list.Create(size, size, ILC_COLOR24 | ILC_MASK, kImages, 1) || list.Add(&bitmap, kTransparent) < 0)
        return false;
    m_size = size;
    return m_list.Attach(list.Detach()) != FALSE;
}

} // namespace logreport
