// CDC: colours, modes and other drawing attributes.
#include <afxwin.h>

#include "dc_both.h"

using afx_subset::OnBoth;

COLORREF CDC::GetBkColor() const
{
    return ::GetBkColor(m_hAttribDC);
}

COLORREF CDC::SetBkColor(COLORREF crColor)
{
    return OnBoth(*this, COLORREF{CLR_INVALID}, [=](HDC dc) { return ::SetBkColor(dc, crColor); });
}

int CDC::GetBkMode() const
{
    return ::GetBkMode(m_hAttribDC);
}

int CDC::SetBkMode(int nBkMode)
{
    return OnBoth(*this, 0, [=](HDC dc) { return ::SetBkMode(dc, nBkMode); });
}

COLORREF CDC::GetTextColor() const
{
    return ::GetTextColor(m_hAttribDC);
}

COLORREF CDC::SetTextColor(COLORREF crColor)
{
    return OnBoth(*this, COLORREF{CLR_INVALID}, [=](HDC dc) { return ::SetTextColor(dc, crColor); });
}

COLORREF CDC::GetDCBrushColor() const
{
    return ::GetDCBrushColor(m_hDC);
}

COLORREF CDC::SetDCBrushColor(COLORREF crColor)
{
    return ::SetDCBrushColor(m_hDC, crColor);
}

COLORREF CDC::GetDCPenColor() const
{
    return ::GetDCPenColor(m_hDC);
}

COLORREF CDC::SetDCPenColor(COLORREF crColor)
{
    return ::SetDCPenColor(m_hDC, crColor);
}

COLORREF CDC::GetNearestColor(COLORREF crColor) const
{
    return ::GetNearestColor(m_hAttribDC, crColor);
}

int CDC::GetPolyFillMode() const
{
    return ::GetPolyFillMode(m_hAttribDC);
}

int CDC::SetPolyFillMode(int nPolyFillMode)
{
    return OnBoth(*this, 0, [=](HDC dc) { return ::SetPolyFillMode(dc, nPolyFillMode); });
}

int CDC::GetROP2() const
{
    return ::GetROP2(m_hAttribDC);
}

int CDC::SetROP2(int nDrawMode)
{
    return OnBoth(*this, 0, [=](HDC dc) { return ::SetROP2(dc, nDrawMode); });
}

int CDC::GetStretchBltMode() const
{
    return ::GetStretchBltMode(m_hAttribDC);
}

int CDC::SetStretchBltMode(int nStretchMode)
{
    return OnBoth(*this, 0, [=](HDC dc) { return ::SetStretchBltMode(dc, nStretchMode); });
}

BOOL CDC::GetColorAdjustment(LPCOLORADJUSTMENT lpColorAdjust) const
{
    return ::GetColorAdjustment(m_hAttribDC, lpColorAdjust);
}

BOOL CDC::SetColorAdjustment(const COLORADJUSTMENT* lpColorAdjust)
{
    return OnBoth(*this, BOOL{FALSE}, [=](HDC dc) { return ::SetColorAdjustment(dc, lpColorAdjust); });
}

int CDC::GetArcDirection() const
{
    return ::GetArcDirection(m_hAttribDC);
}

int CDC::SetArcDirection(int nArcDirection)
{
    return OnBoth(*this, 0, [=](HDC dc) { return ::SetArcDirection(dc, nArcDirection); });
}

float CDC::GetMiterLimit() const
{
    float limit = 0.0F;
    ::GetMiterLimit(m_hAttribDC, &limit);
    return limit;
}

BOOL CDC::SetMiterLimit(float fMiterLimit)
{
    return OnBoth(*this, BOOL{FALSE}, [=](HDC dc) { return ::SetMiterLimit(dc, fMiterLimit, nullptr); });
}

CPoint CDC::GetBrushOrg() const
{
    CPoint origin;
    ::GetBrushOrgEx(m_hDC, &origin);
    return origin;
}

CPoint CDC::SetBrushOrg(int x, int y)
{
    CPoint old;
    ::SetBrushOrgEx(m_hDC, x, y, &old);
    return old;
}

CPoint CDC::SetBrushOrg(POINT point)
{
    return SetBrushOrg(point.x, point.y);
}
