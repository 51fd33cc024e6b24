#include "mfc/PaintPicture.h"

#include <utility>

PaintPicture::~PaintPicture()
{
    if (m_oldBitmap)
        ::SelectObject(m_dc, m_oldBitmap);
}

bool PaintPicture::Covers(CSize size) const
{
    BITMAP description = {};
    return m_bitmap && ::GetObject(*m_bitmap, sizeof(description), &description) != 0 &&
           description.bmWidth >= size.cx && description.bmHeight >= size.cy;
}

bool PaintPicture::Begin(CDC& like, CSize size)
{
    if ((!m_dc.GetSafeHdc() && !m_dc.CreateCompatibleDC(&like)) || !Enlarge(like, size))
        return false;
    m_begun.reset(); // nothing is saved
    m_saved = ::SaveDC(m_dc);
    return m_saved != 0;
}

bool PaintPicture::Enlarge(CDC& like, CSize size)
{
    if (Covers(size))
        return true;
    auto bitmap = std::make_unique<CBitmap>();
    if (!bitmap->CreateCompatibleBitmap(&like, size.cx, size.cy))
        return false;
    const HGDIOBJ old = ::SelectObject(m_dc, *bitmap);
    if (!old)
        return false;
    if (!m_oldBitmap)
        m_oldBitmap = old;
    std::swap(m_bitmap, bitmap);
    if (!m_begun)
        m_begun = std::move(bitmap);
    return true;
}

void PaintPicture::End()
{
    ::RestoreDC(m_dc, m_saved);
    ::SelectObject(m_dc, *m_bitmap);
    m_begun.reset();
}
