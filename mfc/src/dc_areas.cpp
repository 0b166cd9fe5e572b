// CDC: filled shapes and parts of the user interface.
#include <afxwin.h>

#include "dc_both.h"

using afx_subset::HandleOf;

namespace
{

// The frame between a rectangle and the same one with its sides moved inwards; all of it when nothing is left
// inside. Logical rectangle and thickness, device region. Owned by the caller.
HRGN CreateFrameRegion(const CDC& dc, LPCRECT rect, SIZE thickness)
{
    CRect outer(rect);
    CRect inner(rect);
    inner.DeflateRect(thickness);
    if (inner.IsRectEmpty())
        inner.SetRectEmpty();
    dc.LPtoDP(&outer);
    dc.LPtoDP(&inner);
    const HRGN frame = ::CreateRectRgnIndirect(&outer);
    const HRGN hole = ::CreateRectRgnIndirect(&inner);
    ::CombineRgn(frame, frame, hole, RGN_DIFF);
    ::DeleteObject(hole);
    return frame;
}

// Inverts with the brush what lies in the region (device units).
void InvertRegion(HDC dc, HRGN region, HBRUSH brush)
{
    const int saved = ::SaveDC(dc);
    RECT box;
    if (::ExtSelectClipRgn(dc, region, RGN_AND) > NULLREGION && ::GetClipBox(dc, &box) > NULLREGION) {
        ::SelectObject(dc, brush);
        ::PatBlt(dc, box.left, box.top, box.right - box.left, box.bottom - box.top, PATINVERT);
    }
    ::RestoreDC(dc, saved);
}

} // namespace

// ---- Shapes

void CDC::FillRect(LPCRECT lpRect, CBrush* pBrush)
{
    ::FillRect(m_hDC, lpRect, HandleOf<HBRUSH>(pBrush));
}

void CDC::FrameRect(LPCRECT lpRect, CBrush* pBrush)
{
    ::FrameRect(m_hDC, lpRect, HandleOf<HBRUSH>(pBrush));
}

void CDC::InvertRect(LPCRECT lpRect)
{
    ::InvertRect(m_hDC, lpRect);
}

void CDC::FillSolidRect(LPCRECT lpRect, COLORREF clr)
{
    // Opaque text output without text fills with the background colour, without a brush to be made.
    SetBkColor(clr);
    ::ExtTextOut(m_hDC, 0, 0, ETO_OPAQUE, lpRect, nullptr, 0, nullptr);
}

void CDC::FillSolidRect(int x, int y, int cx, int cy, COLORREF clr)
{
    const CRect rect(x, y, x + cx, y + cy);
    FillSolidRect(&rect, clr);
}

void CDC::Draw3dRect(LPCRECT lpRect, COLORREF clrTopLeft, COLORREF clrBottomRight)
{
    Draw3dRect(lpRect->left, lpRect->top, lpRect->right - lpRect->left, lpRect->bottom - lpRect->top,
               clrTopLeft, clrBottomRight);
}

void CDC::Draw3dRect(int x, int y, int cx, int cy, COLORREF clrTopLeft, COLORREF clrBottomRight)
{
    // The top right and the bottom left corner belong to the bottom and right sides.
    FillSolidRect(x, y, cx - 1, 1, clrTopLeft);
    FillSolidRect(x, y, 1, cy - 1, clrTopLeft);
    FillSolidRect(x + cx - 1, y, 1, cy, clrBottomRight);
    FillSolidRect(x, y + cy - 1, cx, 1, clrBottomRight);
}

BOOL CDC::Rectangle(int x1, int y1, int x2, int y2)
{
    return ::Rectangle(m_hDC, x1, y1, x2, y2);
}

BOOL CDC::Rectangle(LPCRECT lpRect)
{
    return Rectangle(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom);
}

BOOL CDC::RoundRect(int x1, int y1, int x2, int y2, int x3, int y3)
{
    return ::RoundRect(m_hDC, x1, y1, x2, y2, x3, y3);
}

BOOL CDC::RoundRect(LPCRECT lpRect, POINT point)
{
    return RoundRect(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom, point.x, point.y);
}

BOOL CDC::Ellipse(int x1, int y1, int x2, int y2)
{
    return ::Ellipse(m_hDC, x1, y1, x2, y2);
}

BOOL CDC::Ellipse(LPCRECT lpRect)
{
    return Ellipse(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom);
}

BOOL CDC::Chord(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4)
{
    return ::Chord(m_hDC, x1, y1, x2, y2, x3, y3, x4, y4);
}

BOOL CDC::Chord(LPCRECT lpRect, POINT ptStart, POINT ptEnd)
{
    return Chord(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom, ptStart.x, ptStart.y, ptEnd.x,
                 ptEnd.y);
}

BOOL CDC::Pie(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4)
{
    return ::Pie(m_hDC, x1, y1, x2, y2, x3, y3, x4, y4);
}

BOOL CDC::Pie(LPCRECT lpRect, POINT ptStart, POINT ptEnd)
{
    return Pie(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom, ptStart.x, ptStart.y, ptEnd.x,
               ptEnd.y);
}

BOOL CDC::Polygon(LPPOINT lpPoints, int nCount)
{
    return ::Polygon(m_hDC, lpPoints, nCount);
}

BOOL CDC::PolyPolygon(LPPOINT lpPoints, LPINT lpPolyCounts, int nCount)
{
    return ::PolyPolygon(m_hDC, lpPoints, lpPolyCounts, nCount);
}

BOOL CDC::FloodFill(int x, int y, COLORREF crColor)
{
    return ::FloodFill(m_hDC, x, y, crColor);
}

BOOL CDC::ExtFloodFill(int x, int y, COLORREF crColor, UINT nFillType)
{
    return ::ExtFloodFill(m_hDC, x, y, crColor, nFillType);
}

BOOL CDC::GradientFill(TRIVERTEX* pVertices, ULONG nVertices, void* pMesh, ULONG nMeshElements, DWORD dwMode)
{
    return ::GradientFill(m_hDC, pVertices, nVertices, pMesh, nMeshElements, dwMode);
}

// ---- Parts of the user interface

void CDC::DrawFocusRect(LPCRECT lpRect)
{
    ::DrawFocusRect(m_hDC, lpRect);
}

BOOL CDC::DrawEdge(LPRECT lpRect, UINT nEdge, UINT nFlags)
{
    return ::DrawEdge(m_hDC, lpRect, nEdge, nFlags);
}

BOOL CDC::DrawFrameControl(LPRECT lpRect, UINT nType, UINT nState)
{
    return ::DrawFrameControl(m_hDC, lpRect, nType, nState);
}

BOOL CDC::DrawIcon(int x, int y, HICON hIcon)
{
    return ::DrawIcon(m_hDC, x, y, hIcon);
}

BOOL CDC::DrawIcon(POINT point, HICON hIcon)
{
    return DrawIcon(point.x, point.y, hIcon);
}

BOOL CDC::DrawState(CPoint pt, CSize size, HBITMAP hBitmap, UINT nFlags, HBRUSH hBrush)
{
    return ::DrawState(m_hDC, hBrush, nullptr, reinterpret_cast<LPARAM>(hBitmap), 0, pt.x, pt.y, size.cx,
                       size.cy, nFlags | DST_BITMAP);
}

BOOL CDC::DrawState(CPoint pt, CSize size, CBitmap* pBitmap, UINT nFlags, CBrush* pBrush)
{
    return DrawState(pt, size, HandleOf<HBITMAP>(pBitmap), nFlags, HandleOf<HBRUSH>(pBrush));
}

BOOL CDC::DrawState(CPoint pt, CSize size, HICON hIcon, UINT nFlags, HBRUSH hBrush)
{
    return ::DrawState(m_hDC, hBrush, nullptr, reinterpret_cast<LPARAM>(hIcon), 0, pt.x, pt.y, size.cx,
                       size.cy, nFlags | DST_ICON);
}

BOOL CDC::DrawState(CPoint pt, CSize size, HICON hIcon, UINT nFlags, CBrush* pBrush)
{
    return DrawState(pt, size, hIcon, nFlags, HandleOf<HBRUSH>(pBrush));
}

BOOL CDC::DrawState(CPoint pt, CSize size, LPCTSTR lpszText, UINT nFlags, BOOL bPrefixText, int nTextLen,
                    HBRUSH hBrush)
{
    return ::DrawState(m_hDC, hBrush, nullptr, reinterpret_cast<LPARAM>(lpszText), nTextLen, pt.x, pt.y,
                       size.cx, size.cy, nFlags | (bPrefixText ? DST_PREFIXTEXT : DST_TEXT));
}

BOOL CDC::DrawState(CPoint pt, CSize size, LPCTSTR lpszText, UINT nFlags, BOOL bPrefixText, int nTextLen,
                    CBrush* pBrush)
{
    return DrawState(pt, size, lpszText, nFlags, bPrefixText, nTextLen, HandleOf<HBRUSH>(pBrush));
}

BOOL CDC::DrawState(CPoint pt, CSize size, DRAWSTATEPROC lpDrawProc, LPARAM lData, UINT nFlags, HBRUSH hBrush)
{
    return ::DrawState(m_hDC, hBrush, lpDrawProc, lData, 0, pt.x, pt.y, size.cx, size.cy,
                       nFlags | DST_COMPLEX);
}

BOOL CDC::DrawState(CPoint pt, CSize size, DRAWSTATEPROC lpDrawProc, LPARAM lData, UINT nFlags,
                    CBrush* pBrush)
{
    return DrawState(pt, size, lpDrawProc, lData, nFlags, HandleOf<HBRUSH>(pBrush));
}

void CDC::DrawDragRect(LPCRECT lpRect, SIZE size, LPCRECT lpRectLast, SIZE sizeLast, CBrush* pBrush,
                       CBrush* pBrushLast)
{
    const auto brush = HandleOf<HBRUSH>(pBrush != nullptr ? pBrush : GetHalftoneBrush());
    const auto brushLast = HandleOf<HBRUSH>(pBrushLast != nullptr ? pBrushLast : GetHalftoneBrush());
    const HRGN frame = CreateFrameRegion(*this, lpRect, size);
    if (lpRectLast != nullptr) {
        const HRGN last = CreateFrameRegion(*this, lpRectLast, sizeLast);
        // What both frames share would be inverted twice, so with one brush it is left alone: no flicker.
        if (brush == brushLast)
            ::CombineRgn(frame, frame, last, RGN_XOR);
        else
            InvertRegion(m_hDC, last, brushLast);
        ::DeleteObject(last);
    }
    InvertRegion(m_hDC, frame, brush);
    ::DeleteObject(frame);
}
