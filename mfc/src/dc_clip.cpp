// CDC: regions, clipping and paths.
#include <afxwin.h>

#include "dc_both.h"

using afx_subset::HandleOf;
using afx_subset::HasOwnOutput;
using afx_subset::OnBoth;

// ---- Regions

BOOL CDC::FillRgn(CRgn* pRgn, CBrush* pBrush)
{
    return ::FillRgn(m_hDC, HandleOf<HRGN>(pRgn), HandleOf<HBRUSH>(pBrush));
}

BOOL CDC::FrameRgn(CRgn* pRgn, CBrush* pBrush, int nWidth, int nHeight)
{
    return ::FrameRgn(m_hDC, HandleOf<HRGN>(pRgn), HandleOf<HBRUSH>(pBrush), nWidth, nHeight);
}

BOOL CDC::InvertRgn(CRgn* pRgn)
{
    return ::InvertRgn(m_hDC, HandleOf<HRGN>(pRgn));
}

BOOL CDC::PaintRgn(CRgn* pRgn)
{
    return ::PaintRgn(m_hDC, HandleOf<HRGN>(pRgn));
}

// ---- Clipping

int CDC::GetClipBox(LPRECT lpRect) const
{
    return ::GetClipBox(m_hAttribDC, lpRect);
}

BOOL CDC::PtVisible(int x, int y) const
{
    // The system says -1 for a device context that is none.
    return ::PtVisible(m_hAttribDC, x, y) == TRUE;
}

BOOL CDC::PtVisible(POINT point) const
{
    return PtVisible(point.x, point.y);
}

BOOL CDC::RectVisible(LPCRECT lpRect) const
{
    return ::RectVisible(m_hAttribDC, lpRect);
}

int CDC::SelectClipRgn(CRgn* pRgn)
{
    const auto region = HandleOf<HRGN>(pRgn);
    return OnBoth(*this, ERROR, [=](HDC dc) { return ::SelectClipRgn(dc, region); });
}

int CDC::SelectClipRgn(CRgn* pRgn, int nMode)
{
    const auto region = HandleOf<HRGN>(pRgn);
    return OnBoth(*this, ERROR, [=](HDC dc) { return ::ExtSelectClipRgn(dc, region, nMode); });
}

int CDC::ExcludeClipRect(int x1, int y1, int x2, int y2)
{
    return OnBoth(*this, ERROR, [=](HDC dc) { return ::ExcludeClipRect(dc, x1, y1, x2, y2); });
}

int CDC::ExcludeClipRect(LPCRECT lpRect)
{
    return ExcludeClipRect(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom);
}

int CDC::ExcludeUpdateRgn(CWnd* pWnd)
{
    return ::ExcludeUpdateRgn(m_hDC, pWnd->GetSafeHwnd());
}

int CDC::IntersectClipRect(int x1, int y1, int x2, int y2)
{
    return OnBoth(*this, ERROR, [=](HDC dc) { return ::IntersectClipRect(dc, x1, y1, x2, y2); });
}

int CDC::IntersectClipRect(LPCRECT lpRect)
{
    return IntersectClipRect(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom);
}

int CDC::OffsetClipRgn(int x, int y)
{
    return OnBoth(*this, ERROR, [=](HDC dc) { return ::OffsetClipRgn(dc, x, y); });
}

int CDC::OffsetClipRgn(SIZE size)
{
    return OffsetClipRgn(size.cx, size.cy);
}

UINT CDC::GetBoundsRect(LPRECT lpRectBounds, UINT flags)
{
    return ::GetBoundsRect(m_hDC, lpRectBounds, flags);
}

UINT CDC::SetBoundsRect(LPCRECT lpRectBounds, UINT flags)
{
    return ::SetBoundsRect(m_hDC, lpRectBounds, flags);
}

// ---- Paths live in the output device context, where the lines and curves go.

BOOL CDC::BeginPath()
{
    return ::BeginPath(m_hDC);
}

BOOL CDC::EndPath()
{
    return ::EndPath(m_hDC);
}

BOOL CDC::AbortPath()
{
    return ::AbortPath(m_hDC);
}

BOOL CDC::CloseFigure()
{
    return ::CloseFigure(m_hDC);
}

BOOL CDC::FillPath()
{
    return ::FillPath(m_hDC);
}

BOOL CDC::StrokePath()
{
    return ::StrokePath(m_hDC);
}

BOOL CDC::StrokeAndFillPath()
{
    return ::StrokeAndFillPath(m_hDC);
}

BOOL CDC::FlattenPath()
{
    return ::FlattenPath(m_hDC);
}

BOOL CDC::WidenPath()
{
    return ::WidenPath(m_hDC);
}

BOOL CDC::SelectClipPath(int nMode)
{
    if (!::SelectClipPath(m_hDC, nMode))
        return FALSE;
    if (!HasOwnOutput(*this) || m_hAttribDC == nullptr)
        return TRUE;
    // The path is used up; the attribute device context gets what came of it.
    const HRGN clip = ::CreateRectRgn(0, 0, 0, 0);
    const BOOL copied = ::GetClipRgn(m_hDC, clip) == 1 && ::SelectClipRgn(m_hAttribDC, clip) != ERROR;
    ::DeleteObject(clip);
    return copied;
}

int CDC::GetPath(LPPOINT lpPoints, LPBYTE lpTypes, int nCount) const
{
    return ::GetPath(m_hDC, lpPoints, lpTypes, nCount);
}
