// What drawing an image on a device context takes. For use inside the library.
#pragma once

#include "vgui/foundation/gdi_scope.h"

#include <afxwin.h>
#include <algorithm>
#include <initializer_list>

// Coordinates beyond this are none to GDI, which may divide by zero when it stretches by them.
inline constexpr LONG kMaxGdiCoordinate = (1 << 27) - 1;

inline bool AreGdiCoordinates(std::initializer_list<LONG> values)
{
    return std::ranges::all_of(
        values, [](LONG value) { return value >= -kMaxGdiCoordinate && value <= kMaxGdiCoordinate; });
}

inline bool AreGdiCoordinates(const CRect& rect)
{
    return AreGdiCoordinates({rect.left, rect.top, rect.right, rect.bottom});
}

inline bool IsUsable(const CDC* pDC)
{
    return pDC != nullptr && pDC->m_hDC != nullptr;
}

// Null for null.
inline HBITMAP BitmapHandle(const CBitmap* pBitmap)
{
    return pBitmap != nullptr ? static_cast<HBITMAP>(pBitmap->m_hObject) : nullptr;
}

// Null for null.
inline HPALETTE PaletteHandle(const CPalette* pPalette)
{
    return pPalette != nullptr ? static_cast<HPALETTE>(pPalette->m_hObject) : nullptr;
}

// Selects a palette, forced to the background or not, and realises it; puts the old one back, forced to the
// background or not, at the end of the block. With a null palette nothing happens. DC and palette outlive the
// scope.
class VPaletteScope
{
public:
    VPaletteScope(HDC hDC, HPALETTE hPalette, BOOL background = TRUE, BOOL backgroundAfter = TRUE)
        : m_hDC(hDC), m_backgroundAfter(backgroundAfter),
          m_hOldPalette(hPalette != nullptr ? ::SelectPalette(hDC, hPalette, background) : nullptr)
    {
        if (m_hOldPalette != nullptr)
            ::RealizePalette(hDC);
    }
    VPaletteScope(const VPaletteScope&) = delete;
    VPaletteScope& operator=(const VPaletteScope&) = delete;
    ~VPaletteScope()
    {
        if (m_hOldPalette != nullptr)
            ::SelectPalette(m_hDC, m_hOldPalette, m_backgroundAfter);
    }

private:
    HDC m_hDC;
    BOOL m_backgroundAfter;
    HPALETTE m_hOldPalette;
};

// A memory DC with a bitmap in it. Empty when the bitmap is null or in use in another DC.
class VBitmapDC
{
public:
    VBitmapDC(const CDC& likeDC, HBITMAP hBitmap) : m_dc(::CreateCompatibleDC(likeDC.m_hDC))
    {
        if (m_dc && hBitmap != nullptr)
            m_hOldBitmap = ::SelectObject(m_dc.Get(), hBitmap);
    }
    VBitmapDC(const VBitmapDC&) = delete;
    VBitmapDC& operator=(const VBitmapDC&) = delete;
    ~VBitmapDC()
    {
        if (m_hOldBitmap != nullptr)
            ::SelectObject(m_dc.Get(), m_hOldBitmap);
    }

    explicit operator bool() const { return m_hOldBitmap != nullptr; }
    [[nodiscard]] HDC Get() const { return m_dc.Get(); }

private:
    VOwnedMemoryDC m_dc;
    HGDIOBJ m_hOldBitmap = nullptr;
};
