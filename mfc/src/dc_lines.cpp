// CDC: lines and curves. The attribute device context follows the current position.
#include <afxwin.h>

#include "dc_both.h"

using afx_subset::HasOwnOutput;
using afx_subset::OnBoth;

namespace
{

// Ends a drawing step that moved the output's current position.
BOOL FollowPosition(const CDC& dc, BOOL drawn)
{
    POINT position;
    if (drawn && HasOwnOutput(dc) && dc.m_hAttribDC != nullptr && ::GetCurrentPositionEx(dc.m_hDC, &position))
        ::MoveToEx(dc.m_hAttribDC, position.x, position.y, nullptr);
    return drawn;
}

} // namespace

CPoint CDC::GetCurrentPosition() const
{
    CPoint position;
    ::GetCurrentPositionEx(m_hAttribDC, &position);
    return position;
}

CPoint CDC::MoveTo(int x, int y)
{
    return OnBoth(*this, CPoint(), [=](HDC dc) {
        CPoint old;
        ::MoveToEx(dc, x, y, &old);
        return old;
    });
}

CPoint CDC::MoveTo(POINT point)
{
    return MoveTo(point.x, point.y);
}

BOOL CDC::LineTo(int x, int y)
{
    return FollowPosition(*this, ::LineTo(m_hDC, x, y));
}

BOOL CDC::LineTo(POINT point)
{
    return LineTo(point.x, point.y);
}

BOOL CDC::Arc(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4)
{
    return ::Arc(m_hDC, x1, y1, x2, y2, x3, y3, x4, y4);
}

BOOL CDC::Arc(LPCRECT lpRect, POINT ptStart, POINT ptEnd)
{
    return Arc(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom, ptStart.x, ptStart.y, ptEnd.x,
               ptEnd.y);
}

BOOL CDC::ArcTo(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4)
{
    return FollowPosition(*this, ::ArcTo(m_hDC, x1, y1, x2, y2, x3, y3, x4, y4));
}

BOOL CDC::ArcTo(LPCRECT lpRect, POINT ptStart, POINT ptEnd)
{
    return ArcTo(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom, ptStart.x, ptStart.y, ptEnd.x,
                 ptEnd.y);
}

BOOL CDC::AngleArc(int x, int y, int nRadius, float fStartAngle, float fSweepAngle)
{
    return FollowPosition(*this, ::AngleArc(m_hDC, x, y, nRadius, fStartAngle, fSweepAngle));
}

BOOL CDC::Polyline(LPPOINT lpPoints, int nCount)
{
    return ::Polyline(m_hDC, lpPoints, nCount);
}

BOOL CDC::PolylineTo(const POINT* lpPoints, int nCount)
{
    return FollowPosition(*this, ::PolylineTo(m_hDC, lpPoints, nCount));
}

BOOL CDC::PolyPolyline(const POINT* lpPoints, const DWORD* lpPolyPoints, int nCount)
{
    return ::PolyPolyline(m_hDC, lpPoints, lpPolyPoints, nCount);
}

BOOL CDC::PolyBezier(const POINT* lpPoints, int nCount)
{
    return ::PolyBezier(m_hDC, lpPoints, nCount);
}

BOOL CDC::PolyBezierTo(const POINT* lpPoints, int nCount)
{
    return FollowPosition(*this, ::PolyBezierTo(m_hDC, lpPoints, nCount));
}

BOOL CDC::PolyDraw(const POINT* lpPoints, const BYTE* lpTypes, int nCount)
{
    return FollowPosition(*this, ::PolyDraw(m_hDC, lpPoints, lpTypes, nCount));
}
