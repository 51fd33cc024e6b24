// The state of a device context, changed for as long as a guard lives.
#pragma once

#include <windows.h>

namespace VkGrafic
{

// Selects a drawing object; null for none.
class Selected
{
public:
    Selected(HDC dc, HGDIOBJ object) : m_dc(dc), m_old(object ? ::SelectObject(dc, object) : nullptr) {}
    ~Selected()
    {
        if (m_old)
            ::SelectObject(m_dc, m_old);
    }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

private:
    HDC m_dc;
    HGDIOBJ m_old;
};

// Restores everything that has been selected or set in between.
class SavedState
{
public:
    explicit SavedState(HDC dc) : m_dc(dc), m_saved(::SaveDC(dc)) {}
    ~SavedState() { ::RestoreDC(m_dc, m_saved); }
    SavedState(const SavedState&) = delete;
    SavedState& operator=(const SavedState&) = delete;

private:
    HDC m_dc;
    int m_saved;
};

} // namespace VkGrafic
