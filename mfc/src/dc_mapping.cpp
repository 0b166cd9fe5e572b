// CDC: mapping between logical and device coordinates.
#include <afxwin.h>

#include "dc_both.h"

#include <cstdlib>

using afx_subset::OnBoth;

namespace
{

constexpr int himetricPerInch = 2540;

// MM_TEXT and the modes with free scales have no inch of their own and go by the device's logical inch.
bool HasPhysicalInch(int mapMode)
{
    return mapMode > MM_TEXT && mapMode < MM_TWIPS;
}

// Lets the mapping mode be one of physical units for the length of a conversion.
class HimetricMode
{
public:
    explicit HimetricMode(HDC dc) : m_dc(dc), m_old(::GetMapMode(dc))
    {
        if (IsPhysical())
            ::SetMapMode(m_dc, MM_HIMETRIC);
    }
    ~HimetricMode()
    {
        if (IsPhysical())
            ::SetMapMode(m_dc, m_old);
    }
    HimetricMode(const HimetricMode&) = delete;
    HimetricMode& operator=(const HimetricMode&) = delete;

    bool IsPhysical() const { return HasPhysicalInch(m_old); }

private:
    HDC m_dc;
    int m_old;
};

// A size converted by its two ends, so that origins cancel out.
SIZE ConvertSize(HDC dc, SIZE size, BOOL(WINAPI* convert)(HDC, LPPOINT, int))
{
    POINT ends[2]{{0, 0}, {size.cx, size.cy}};
    convert(dc, ends, 2);
    return {std::abs(ends[1].x - ends[0].x), std::abs(ends[1].y - ends[0].y)};
}

template <class Call>
CPoint PointBefore(const CDC& dc, Call call)
{
    return OnBoth(dc, CPoint(), [&](HDC handle) {
        CPoint old;
        call(handle, &old);
        return old;
    });
}

template <class Call>
CSize SizeBefore(const CDC& dc, Call call)
{
    return OnBoth(dc, CSize(), [&](HDC handle) {
        CSize old;
        call(handle, &old);
        return old;
    });
}

} // namespace

int CDC::GetMapMode() const
{
    return ::GetMapMode(m_hAttribDC);
}

int CDC::SetMapMode(int nMapMode)
{
    return OnBoth(*this, 0, [=](HDC dc) { return ::SetMapMode(dc, nMapMode); });
}

CPoint CDC::GetViewportOrg() const
{
    CPoint point;
    ::GetViewportOrgEx(m_hAttribDC, &point);
    return point;
}

CPoint CDC::SetViewportOrg(int x, int y)
{
    return PointBefore(*this, [=](HDC dc, POINT* old) { ::SetViewportOrgEx(dc, x, y, old); });
}

CPoint CDC::SetViewportOrg(POINT point)
{
    return SetViewportOrg(point.x, point.y);
}

CPoint CDC::OffsetViewportOrg(int nWidth, int nHeight)
{
    return PointBefore(*this, [=](HDC dc, POINT* old) { ::OffsetViewportOrgEx(dc, nWidth, nHeight, old); });
}

CSize CDC::GetViewportExt() const
{
    CSize size;
    ::GetViewportExtEx(m_hAttribDC, &size);
    return size;
}

CSize CDC::SetViewportExt(int cx, int cy)
{
    return SizeBefore(*this, [=](HDC dc, SIZE* old) { ::SetViewportExtEx(dc, cx, cy, old); });
}

CSize CDC::SetViewportExt(SIZE size)
{
    return SetViewportExt(size.cx, size.cy);
}

CSize CDC::ScaleViewportExt(int xNum, int xDenom, int yNum, int yDenom)
{
    return SizeBefore(*this,
                      [=](HDC dc, SIZE* old) { ::ScaleViewportExtEx(dc, xNum, xDenom, yNum, yDenom, old); });
}

CPoint CDC::GetWindowOrg() const
{
    CPoint point;
    ::GetWindowOrgEx(m_hAttribDC, &point);
    return point;
}

CPoint CDC::SetWindowOrg(int x, int y)
{
    return PointBefore(*this, [=](HDC dc, POINT* old) { ::SetWindowOrgEx(dc, x, y, old); });
}

CPoint CDC::SetWindowOrg(POINT point)
{
    return SetWindowOrg(point.x, point.y);
}

CPoint CDC::OffsetWindowOrg(int nWidth, int nHeight)
{
    return PointBefore(*this, [=](HDC dc, POINT* old) { ::OffsetWindowOrgEx(dc, nWidth, nHeight, old); });
}

CSize CDC::GetWindowExt() const
{
    CSize size;
    ::GetWindowExtEx(m_hAttribDC, &size);
    return size;
}

CSize CDC::SetWindowExt(int cx, int cy)
{
    return SizeBefore(*this, [=](HDC dc, SIZE* old) { ::SetWindowExtEx(dc, cx, cy, old); });
}

CSize CDC::SetWindowExt(SIZE size)
{
    return SetWindowExt(size.cx, size.cy);
}

CSize CDC::ScaleWindowExt(int xNum, int xDenom, int yNum, int yDenom)
{
    return SizeBefore(*this,
                      [=](HDC dc, SIZE* old) { ::ScaleWindowExtEx(dc, xNum, xDenom, yNum, yDenom, old); });
}

int CDC::GetGraphicsMode() const
{
    return ::GetGraphicsMode(m_hDC);
}

int CDC::SetGraphicsMode(int iMode)
{
    return OnBoth(*this, 0, [=](HDC dc) { return ::SetGraphicsMode(dc, iMode); });
}

BOOL CDC::GetWorldTransform(XFORM& rXform) const
{
    return ::GetWorldTransform(m_hDC, &rXform);
}

BOOL CDC::SetWorldTransform(const XFORM& rXform)
{
    return OnBoth(*this, BOOL{FALSE}, [&](HDC dc) { return ::SetWorldTransform(dc, &rXform); });
}

BOOL CDC::ModifyWorldTransform(const XFORM& rXform, DWORD iMode)
{
    return OnBoth(*this, BOOL{FALSE}, [&](HDC dc) { return ::ModifyWorldTransform(dc, &rXform, iMode); });
}

void CDC::DPtoLP(LPPOINT lpPoints, int nCount) const
{
    ::DPtoLP(m_hAttribDC, lpPoints, nCount);
}

void CDC::DPtoLP(LPRECT lpRect) const
{
    ::DPtoLP(m_hAttribDC, reinterpret_cast<LPPOINT>(lpRect), 2);
}

void CDC::DPtoLP(LPSIZE lpSize) const
{
    *lpSize = ConvertSize(m_hAttribDC, *lpSize, ::DPtoLP);
}

void CDC::LPtoDP(LPPOINT lpPoints, int nCount) const
{
    ::LPtoDP(m_hAttribDC, lpPoints, nCount);
}

void CDC::LPtoDP(LPRECT lpRect) const
{
    ::LPtoDP(m_hAttribDC, reinterpret_cast<LPPOINT>(lpRect), 2);
}

void CDC::LPtoDP(LPSIZE lpSize) const
{
    *lpSize = ConvertSize(m_hAttribDC, *lpSize, ::LPtoDP);
}

void CDC::DPtoHIMETRIC(LPSIZE lpSize) const
{
    const HimetricMode mode(m_hAttribDC);
    if (mode.IsPhysical()) {
        DPtoLP(lpSize);
        return;
    }
    lpSize->cx = ::MulDiv(lpSize->cx, himetricPerInch, ::GetDeviceCaps(m_hAttribDC, LOGPIXELSX));
    lpSize->cy = ::MulDiv(lpSize->cy, himetricPerInch, ::GetDeviceCaps(m_hAttribDC, LOGPIXELSY));
}

void CDC::HIMETRICtoDP(LPSIZE lpSize) const
{
    const HimetricMode mode(m_hAttribDC);
    if (mode.IsPhysical()) {
        LPtoDP(lpSize);
        return;
    }
    lpSize->cx = ::MulDiv(lpSize->cx, ::GetDeviceCaps(m_hAttribDC, LOGPIXELSX), himetricPerInch);
    lpSize->cy = ::MulDiv(lpSize->cy, ::GetDeviceCaps(m_hAttribDC, LOGPIXELSY), himetricPerInch);
}

void CDC::LPtoHIMETRIC(LPSIZE lpSize) const
{
    LPtoDP(lpSize);
    DPtoHIMETRIC(lpSize);
}

void CDC::HIMETRICtoLP(LPSIZE lpSize) const
{
    HIMETRICtoDP(lpSize);
    DPtoLP(lpSize);
}
