// CRgn.
#include <afxwin.h>

IMPLEMENT_DYNAMIC(CRgn, CGdiObject)

namespace
{

HRGN RegionOf(CRgn* region)
{
    return region == nullptr ? nullptr : static_cast<HRGN>(region->m_hObject);
}

} // namespace

CRgn::CRgn() = default;

CRgn* PASCAL CRgn::FromHandle(HRGN hRgn)
{
    return static_cast<CRgn*>(CGdiObject::FromHandle(hRgn));
}

CRgn::operator HRGN() const
{
    return static_cast<HRGN>(GetSafeHandle());
}

BOOL CRgn::CreateRectRgn(int x1, int y1, int x2, int y2)
{
    return Attach(::CreateRectRgn(x1, y1, x2, y2));
}

BOOL CRgn::CreateRectRgnIndirect(LPCRECT lpRect)
{
    return lpRect != nullptr && Attach(::CreateRectRgnIndirect(lpRect));
}

BOOL CRgn::CreateEllipticRgn(int x1, int y1, int x2, int y2)
{
    return Attach(::CreateEllipticRgn(x1, y1, x2, y2));
}

BOOL CRgn::CreateEllipticRgnIndirect(LPCRECT lpRect)
{
    return lpRect != nullptr && Attach(::CreateEllipticRgnIndirect(lpRect));
}

BOOL CRgn::CreatePolygonRgn(LPPOINT lpPoints, int nCount, int nMode)
{
    return Attach(::CreatePolygonRgn(lpPoints, nCount, nMode));
}

BOOL CRgn::CreatePolyPolygonRgn(LPPOINT lpPoints, LPINT lpPolyCounts, int nCount, int nPolyFillMode)
{
    return Attach(::CreatePolyPolygonRgn(lpPoints, lpPolyCounts, nCount, nPolyFillMode));
}

BOOL CRgn::CreateRoundRectRgn(int x1, int y1, int x2, int y2, int x3, int y3)
{
    return Attach(::CreateRoundRectRgn(x1, y1, x2, y2, x3, y3));
}

BOOL CRgn::CreateFromPath(CDC* pDC)
{
    return pDC != nullptr && Attach(::PathToRegion(pDC->m_hDC));
}

BOOL CRgn::CreateFromData(const XFORM* lpXForm, int nCount, const RGNDATA* pRgnData)
{
    return Attach(::ExtCreateRegion(lpXForm, nCount, pRgnData));
}

void CRgn::SetRectRgn(int x1, int y1, int x2, int y2)
{
    ::SetRectRgn(*this, x1, y1, x2, y2);
}

void CRgn::SetRectRgn(LPCRECT lpRect)
{
    ::SetRectRgn(*this, lpRect->left, lpRect->top, lpRect->right, lpRect->bottom);
}

int CRgn::CombineRgn(CRgn* pRgn1, CRgn* pRgn2, int nCombineMode)
{
    return ::CombineRgn(*this, RegionOf(pRgn1), RegionOf(pRgn2), nCombineMode);
}

int CRgn::CopyRgn(CRgn* pRgnSrc)
{
    return ::CombineRgn(*this, RegionOf(pRgnSrc), nullptr, RGN_COPY);
}

BOOL CRgn::EqualRgn(CRgn* pRgn) const
{
    // The system answers ERROR, which is not 0 everywhere, when one of the regions is missing.
    return RegionOf(pRgn) != nullptr && m_hObject != nullptr && ::EqualRgn(*this, RegionOf(pRgn)) == TRUE;
}

int CRgn::OffsetRgn(int x, int y)
{
    return ::OffsetRgn(*this, x, y);
}

int CRgn::OffsetRgn(POINT point)
{
    return ::OffsetRgn(*this, point.x, point.y);
}

int CRgn::GetRgnBox(LPRECT lpRect) const
{
    return ::GetRgnBox(*this, lpRect);
}

BOOL CRgn::PtInRegion(int x, int y) const
{
    return ::PtInRegion(*this, x, y);
}

BOOL CRgn::PtInRegion(POINT point) const
{
    return ::PtInRegion(*this, point.x, point.y);
}

BOOL CRgn::RectInRegion(LPCRECT lpRect) const
{
    return ::RectInRegion(*this, lpRect);
}

int CRgn::GetRegionData(LPRGNDATA lpRgnData, int nCount) const
{
    return static_cast<int>(::GetRegionData(*this, nCount, lpRgnData));
}
