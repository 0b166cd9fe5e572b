// CDC: block transfers and pixels.
#include <afxwin.h>

#include "dc_both.h"

using afx_subset::HandleOf;
using afx_subset::OutputOf;

BOOL CDC::PatBlt(int x, int y, int nWidth, int nHeight, DWORD dwRop)
{
    return ::PatBlt(m_hDC, x, y, nWidth, nHeight, dwRop);
}

BOOL CDC::BitBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, DWORD dwRop)
{
    return ::BitBlt(m_hDC, x, y, nWidth, nHeight, OutputOf(pSrcDC), xSrc, ySrc, dwRop);
}

BOOL CDC::StretchBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, int nSrcWidth,
                     int nSrcHeight, DWORD dwRop)
{
    return ::StretchBlt(m_hDC, x, y, nWidth, nHeight, OutputOf(pSrcDC), xSrc, ySrc, nSrcWidth, nSrcHeight,
                        dwRop);
}

BOOL CDC::MaskBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, CBitmap& maskBitmap,
                  int xMask, int yMask, DWORD dwRop)
{
    return ::MaskBlt(m_hDC, x, y, nWidth, nHeight, OutputOf(pSrcDC), xSrc, ySrc, maskBitmap, xMask, yMask,
                     dwRop);
}

BOOL CDC::PlgBlt(LPPOINT lpPoint, CDC* pSrcDC, int xSrc, int ySrc, int nWidth, int nHeight,
                 CBitmap& maskBitmap, int xMask, int yMask)
{
    return ::PlgBlt(m_hDC, lpPoint, OutputOf(pSrcDC), xSrc, ySrc, nWidth, nHeight, maskBitmap, xMask, yMask);
}

BOOL CDC::TransparentBlt(int xDest, int yDest, int nDestWidth, int nDestHeight, CDC* pSrcDC, int xSrc,
                         int ySrc, int nSrcWidth, int nSrcHeight, UINT clrTransparent)
{
    return ::TransparentBlt(m_hDC, xDest, yDest, nDestWidth, nDestHeight, OutputOf(pSrcDC), xSrc, ySrc,
                            nSrcWidth, nSrcHeight, clrTransparent);
}

BOOL CDC::AlphaBlend(int xDest, int yDest, int nDestWidth, int nDestHeight, CDC* pSrcDC, int xSrc, int ySrc,
                     int nSrcWidth, int nSrcHeight, BLENDFUNCTION blend)
{
    return ::AlphaBlend(m_hDC, xDest, yDest, nDestWidth, nDestHeight, OutputOf(pSrcDC), xSrc, ySrc, nSrcWidth,
                        nSrcHeight, blend);
}

COLORREF CDC::GetPixel(int x, int y) const
{
    return ::GetPixel(m_hDC, x, y);
}

COLORREF CDC::GetPixel(POINT point) const
{
    return ::GetPixel(m_hDC, point.x, point.y);
}

COLORREF CDC::SetPixel(int x, int y, COLORREF crColor)
{
    return ::SetPixel(m_hDC, x, y, crColor);
}

COLORREF CDC::SetPixel(POINT point, COLORREF crColor)
{
    return ::SetPixel(m_hDC, point.x, point.y, crColor);
}

BOOL CDC::SetPixelV(int x, int y, COLORREF crColor)
{
    return ::SetPixelV(m_hDC, x, y, crColor);
}

BOOL CDC::SetPixelV(POINT point, COLORREF crColor)
{
    return ::SetPixelV(m_hDC, point.x, point.y, crColor);
}

BOOL CDC::ScrollDC(int dx, int dy, LPCRECT lpRectScroll, LPCRECT lpRectClip, CRgn* pRgnUpdate,
                   LPRECT lpRectUpdate)
{
    return ::ScrollDC(m_hDC, dx, dy, lpRectScroll, lpRectClip, HandleOf<HRGN>(pRgnUpdate), lpRectUpdate);
}
