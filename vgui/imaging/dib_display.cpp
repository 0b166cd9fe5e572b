// The DIB object on a device context: plain, stretched, dithered and transparent, and drawing into it.
#include "vgui/imaging/dib.h"

#include "vgui/foundation/within_memory.h"
#include "vgui/imaging/dib_block.h"
#include "vgui/imaging/dib_dither.h"
#include "vgui/imaging/dib_draw.h"

#include <cmath>
#include <memory>
#include <utility>

namespace
{

// What SaveDC answers for a new DC.
constexpr int kFirstSavedState = 1;
constexpr int kMaxDitheredDepth = 8; // bits per pixel of the device

CSize SizeOf(HBITMAP hBitmap)
{
    BITMAP record = {};
    ::GetObject(hBitmap, sizeof record, &record);
    return {record.bmWidth, record.bmHeight};
}

VOwnedBitmap TrueColorSection(CSize size)
{
    const BITMAPINFO info = {DIBHeader(size.cx, size.cy, 24), {}};
    void* bits = nullptr;
    return VOwnedBitmap(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
}

int StretchBitmap(CDC& dc, CBitmap* pBitmap, CPalette* pPalette, const CRect& rcDest, const CRect& rcSrc,
                  DWORD rop)
{
    const VBitmapDC source(dc, BitmapHandle(pBitmap));
    if (!source || !AreGdiCoordinates(rcDest) || !AreGdiCoordinates(rcSrc))
        return FALSE;
    const VPaletteScope palette(dc.m_hDC, PaletteHandle(pPalette));
    return ::StretchBlt(dc.m_hDC, rcDest.left, rcDest.top, rcDest.Width(), rcDest.Height(), source.Get(),
                        rcSrc.left, rcSrc.top, rcSrc.Width(), rcSrc.Height(), rop);
}

// Draws the copy that DitherDib made.
int StretchDib(HDC hDC, const VDibView& dib, const CRect& rcDest, const CRect& rcSrc)
{
    const VStretchModeScope mode(hDC, COLORONCOLOR);
    VDibInfo info = DibInfoOf(dib);
    const int lines = ::StretchDIBits(hDC, rcDest.left, rcDest.top, rcDest.Width(), rcDest.Height(),
                                      rcSrc.left, dib.Height() - rcSrc.bottom, rcSrc.Width(), rcSrc.Height(),
                                      dib.Bits(), info.Info(), DIB_RGB_COLORS, SRCCOPY);
    return lines != 0 && lines != static_cast<int>(GDI_ERROR);
}

} // namespace

// ---- Plain

int CDib::Display(CDC* pDC, int x, int y, int w, int h, int xSrc, int ySrc, DWORD rop) const
{
    if (!IsUsable(pDC))
        return FALSE;
    if (IsRequireDither(pDC))
        return Display(pDC, x, y, w, h, xSrc, ySrc, w, h, rop);
    const VBitmapDC source(*pDC, BitmapHandle(m_pBitmap));
    if (!source)
        return FALSE;
    const VPaletteScope palette(pDC->m_hDC, PaletteHandle(m_pPalette));
    return ::BitBlt(pDC->m_hDC, x, y, w, h, source.Get(), xSrc, ySrc, rop);
}

int CDib::Display(CDC* pDC, int x, int y, int w, int h, int xSrc, int ySrc, int wSrc, int hSrc,
                  DWORD rop) const
{
    if (!AreGdiCoordinates({x, y, w, h, xSrc, ySrc, wSrc, hSrc}))
        return FALSE;
    return Display(pDC, CRect(CPoint(x, y), CSize(w, h)), CRect(CPoint(xSrc, ySrc), CSize(wSrc, hSrc)), rop);
}

int CDib::Display(CDC* pDC, int x, int y, DWORD rop) const
{
    return Display(pDC, x, y, GetWidth(), GetHeight(), 0, 0, rop);
}

int CDib::Display(CDC* pDC, CRect rcDest, CRect rcSrc, DWORD rop) const
{
    if (!IsUsable(pDC))
        return FALSE;
    if (IsRequireDither(pDC))
        return DitherDisplay(pDC, rcDest, rcSrc, rop);
    return StretchBitmap(*pDC, m_pBitmap, m_pPalette, rcDest, rcSrc, rop);
}

bool CDib::Display(CWnd* pWnd) const
{
    if (pWnd == nullptr || pWnd->m_hWnd == nullptr)
        return false;
    CRect client;
    pWnd->GetClientRect(client);
    CClientDC dc(pWnd);
    return Display(&dc, client);
}

bool CDib::Display(CDC* pDC, const CRect& rc) const
{
    const HBITMAP hBitmap = BitmapHandle(m_pBitmap);
    if (!IsUsable(pDC) || hBitmap == nullptr || !AreGdiCoordinates(rc))
        return false;
    // The source begins at the rectangle's corner, too; hosts rely on it.
    const CRect source(rc.TopLeft(), SizeOf(hBitmap));
    // A picture that was loaded into the bitmap only has nothing to do with the block.
    if (hBitmap != m_hBitmap)
        return StretchBitmap(*pDC, m_pBitmap, nullptr, rc, source, SRCCOPY) != FALSE;
    return Display(pDC, rc, source, SRCCOPY) != FALSE;
}

// ---- Dithered

int CDib::IsRequireDither(CDC* pDC) const
{
    return IsUsable(pDC) && GetBitCount() == 24 && pDC->GetDeviceCaps(BITSPIXEL) <= kMaxDitheredDepth;
}

int CDib::DitherDisplay(CDC* pDC, CRect rcDest, CRect rcSrc, DWORD) const
{
    if (!IsUsable(pDC) || !AreGdiCoordinates(rcDest) || !AreGdiCoordinates(rcSrc))
        return FALSE;
    return VWithinMemory([&] {
        const VOwnedGlobal copy = DitherDib(m_hDib);
        const VLockedDib dib(copy.Get());
        const VOwnedPalette palette = dib ? DibPalette(dib) : VOwnedPalette();
        if (!palette)
            return FALSE;
        const VPaletteScope realized(pDC->m_hDC, palette.Get(), TRUE, FALSE);
        return StretchDib(pDC->m_hDC, dib, rcDest, rcSrc);
    });
}

// ---- Transparent

int CDib::DisplayTransparent(CDC* pDC, int x, int y, COLORREF key) const
{
    if (!IsUsable(pDC) || m_hBitmap == nullptr)
        return FALSE;
    // GDI would take it for black.
    if (key == CLR_INVALID)
        return Display(pDC, x, y, SRCCOPY);
    const CSize size = SizeOf(m_hBitmap);
    const VOwnedBitmap colorsBitmap = TrueColorSection(size);
    const VOwnedBitmap maskBitmap(::CreateBitmap(size.cx, size.cy, 1, 1, nullptr));
    const VOwnedBitmap inverseBitmap(::CreateBitmap(size.cx, size.cy, 1, 1, nullptr));
    const VOwnedBitmap workBitmap(::CreateCompatibleBitmap(pDC->m_hDC, size.cx, size.cy));
    const VOwnedBitmap imageBitmap(::CreateCompatibleBitmap(pDC->m_hDC, size.cx, size.cy));
    const VBitmapDC source(*pDC, m_hBitmap);
    const VBitmapDC colors(*pDC, colorsBitmap.Get());
    const VBitmapDC mask(*pDC, maskBitmap.Get());
    const VBitmapDC inverse(*pDC, inverseBitmap.Get());
    const VBitmapDC work(*pDC, workBitmap.Get());
    const VBitmapDC image(*pDC, imageBitmap.Get());
    if (!source || !colors || !mask || !inverse || !work || !image)
        return FALSE;

    const auto copy = [size](HDC target, HDC from, DWORD rop) {
        ::BitBlt(target, 0, 0, size.cx, size.cy, from, 0, 0, rop);
    };
    const VPaletteScope palette(pDC->m_hDC, PaletteHandle(m_pPalette));
    // The key is looked for in plain colours: GDI would take the nearest one of a colour table, and compare
    // the unused byte of a 32-bit pixel. The masks are combined with a copy in the display's own format: in
    // the image itself, indices would be combined.
    copy(colors.Get(), source.Get(), SRCCOPY);
    copy(image.Get(), source.Get(), SRCCOPY);
    {
        const VBkColorScope background(colors.Get(), key);
        copy(mask.Get(), colors.Get(), SRCCOPY);
    }
    copy(inverse.Get(), mask.Get(), NOTSRCCOPY);
    ::BitBlt(work.Get(), 0, 0, size.cx, size.cy, pDC->m_hDC, x, y, SRCCOPY);
    copy(work.Get(), mask.Get(), SRCAND);
    copy(image.Get(), inverse.Get(), SRCAND);
    copy(work.Get(), image.Get(), SRCPAINT);
    ::BitBlt(pDC->m_hDC, x, y, size.cx, size.cy, work.Get(), 0, 0, SRCCOPY);
    return TRUE;
}

// ---- The palette's swatches

int CDib::DisplayPalette(CDC* pDC, CRect rc) const
{
    if (!IsUsable(pDC) || m_pPalette == nullptr)
        return FALSE;
    PALETTEENTRY entries[kMaxDibColors] = {};
    const int count = static_cast<int>(m_pPalette->GetPaletteEntries(0, kMaxDibColors, entries));
    const int columns = static_cast<int>(std::sqrt(count));
    if (columns == 0)
        return FALSE;
    const CSize cell(rc.Width() / columns, rc.Height() / columns);
    const VPaletteScope palette(pDC->m_hDC, PaletteHandle(m_pPalette), FALSE, FALSE);
    for (int i = 0; i < count; ++i) {
        const VOwnedBrush brush(
            ::CreateSolidBrush(RGB(entries[i].peRed, entries[i].peGreen, entries[i].peBlue)));
        const VSelectScope selected(pDC->m_hDC, brush.Get());
        // Where the count is no square, the last rows lie below the rectangle.
        const CPoint corner(rc.left + i % columns * cell.cx, rc.top + i / columns * cell.cy);
        pDC->Rectangle(CRect(corner, cell));
    }
    return TRUE;
}

// ---- Drawing into the image

CDC* CDib::BeginPaint(CDC* pDC)
{
    if (m_pMemDC != nullptr || m_pBitmap == nullptr)
        return m_pMemDC;
    auto owned = std::make_unique<CDC>();
    if (!owned->CreateCompatibleDC(pDC))
        return nullptr;
    CDC* const dc = m_pMemDC = owned.release();
    // EndPaint goes back to this: the displaced objects may be temporary ones, which do not last until then.
    dc->SaveDC();
    if (m_pPalette != nullptr) {
        m_pPaletteOld = dc->SelectPalette(m_pPalette, TRUE);
        dc->RealizePalette();
    }
    m_pBitmapOld = dc->SelectObject(static_cast<CGdiObject*>(m_pBitmap));
    return dc;
}

void CDib::EndPaint()
{
    if (m_pMemDC == nullptr)
        return;
    m_pMemDC->RestoreDC(kFirstSavedState);
    m_pBitmapOld = nullptr;
    m_pPaletteOld = nullptr;
    delete std::exchange(m_pMemDC, nullptr);
    ::GdiFlush();
    Create(m_hBitmap);
}
