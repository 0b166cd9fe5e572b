// Sizes, points and rectangles with arithmetic.
//
// The three classes add operators to the Win32 structures and can stand wherever those are asked for.
// Units and coordinate space are the caller's.
#pragma once

#include "afxver_.h"

#include <windows.h>

class CPoint;
class CRect;

// A width and a height. CSize and CPoint carry no export mark: they are inline throughout.
class CSize : public tagSIZE
{
public:
    CSize() noexcept : tagSIZE{0, 0} {}
    CSize(int initCX, int initCY) noexcept : tagSIZE{initCX, initCY} {}
    CSize(SIZE initSize) noexcept : tagSIZE(initSize) {}
    CSize(POINT initPt) noexcept : tagSIZE{initPt.x, initPt.y} {}
    // The low word is the width, the high word the height, both signed.
    CSize(DWORD dwSize) noexcept
        : tagSIZE{static_cast<short>(LOWORD(dwSize)), static_cast<short>(HIWORD(dwSize))}
    {
    }

    BOOL operator==(SIZE size) const noexcept { return cx == size.cx && cy == size.cy; }
    BOOL operator!=(SIZE size) const noexcept { return cx != size.cx || cy != size.cy; }
    void operator+=(SIZE size) noexcept
    {
        cx += size.cx;
        cy += size.cy;
    }
    void operator-=(SIZE size) noexcept
    {
        cx -= size.cx;
        cy -= size.cy;
    }

    CSize operator+(SIZE size) const noexcept { return CSize(cx + size.cx, cy + size.cy); }
    CSize operator-(SIZE size) const noexcept { return CSize(cx - size.cx, cy - size.cy); }
    CSize operator-() const noexcept { return CSize(-cx, -cy); }
    CPoint operator+(POINT point) const noexcept;
    // The point moved by the negated size.
    CPoint operator-(POINT point) const noexcept;
    // The rectangle moved by the size, or by the negated size.
    CRect operator+(const RECT* lpRect) const noexcept;
    CRect operator-(const RECT* lpRect) const noexcept;
};

// CRect::TopLeft and BottomRight show parts of a rectangle as points, which the aliasing rules of optimising
// compilers forbid unless they are told.
#ifdef __GNUC__
#define AFX_POINT_MAY_ALIAS __attribute__((__may_alias__))
#else
#define AFX_POINT_MAY_ALIAS
#endif

// A position.
class AFX_POINT_MAY_ALIAS CPoint : public tagPOINT
{
public:
    CPoint() noexcept : tagPOINT{0, 0} {}
    CPoint(int initX, int initY) noexcept : tagPOINT{initX, initY} {}
    CPoint(POINT initPt) noexcept : tagPOINT(initPt) {}
    CPoint(SIZE initSize) noexcept : tagPOINT{initSize.cx, initSize.cy} {}
    // The low word is x, the high word y, both signed: the form in which mouse messages carry positions.
    CPoint(LPARAM dwPoint) noexcept
        : tagPOINT{static_cast<short>(LOWORD(dwPoint)), static_cast<short>(HIWORD(dwPoint))}
    {
    }

    void Offset(int xOffset, int yOffset) noexcept
    {
        x += xOffset;
        y += yOffset;
    }
    void Offset(POINT point) noexcept { Offset(point.x, point.y); }
    void Offset(SIZE size) noexcept { Offset(size.cx, size.cy); }

    BOOL operator==(POINT point) const noexcept { return x == point.x && y == point.y; }
    BOOL operator!=(POINT point) const noexcept { return x != point.x || y != point.y; }
    void operator+=(SIZE size) noexcept { Offset(size.cx, size.cy); }
    void operator-=(SIZE size) noexcept { Offset(-size.cx, -size.cy); }
    void operator+=(POINT point) noexcept { Offset(point.x, point.y); }
    void operator-=(POINT point) noexcept { Offset(-point.x, -point.y); }

    CPoint operator+(SIZE size) const noexcept { return CPoint(x + size.cx, y + size.cy); }
    CPoint operator-(SIZE size) const noexcept { return CPoint(x - size.cx, y - size.cy); }
    CPoint operator-() const noexcept { return CPoint(-x, -y); }
    CPoint operator+(POINT point) const noexcept { return CPoint(x + point.x, y + point.y); }
    CSize operator-(POINT point) const noexcept { return CSize(x - point.x, y - point.y); }
    // The rectangle moved by the point, or by the negated point.
    CRect operator+(const RECT* lpRect) const noexcept;
    CRect operator-(const RECT* lpRect) const noexcept;
};

#undef AFX_POINT_MAY_ALIAS

// A rectangle; the right and bottom edges lie outside. Most members expect it normalised: left <= right,
// top <= bottom.
class CRect : public tagRECT
{
public:
    CRect() noexcept : tagRECT{0, 0, 0, 0} {}
    CRect(int l, int t, int r, int b) noexcept : tagRECT{l, t, r, b} {}
    CRect(const RECT& srcRect) noexcept : tagRECT(srcRect) {}
    CRect(LPCRECT lpSrcRect) noexcept : tagRECT{0, 0, 0, 0} { ::CopyRect(this, lpSrcRect); }
    CRect(POINT point, SIZE size) noexcept : tagRECT{point.x, point.y, point.x + size.cx, point.y + size.cy}
    {
    }
    CRect(POINT topLeft, POINT bottomRight) noexcept
        : tagRECT{topLeft.x, topLeft.y, bottomRight.x, bottomRight.y}
    {
    }

    int Width() const noexcept { return right - left; }
    int Height() const noexcept { return bottom - top; }
    CSize Size() const noexcept { return CSize(right - left, bottom - top); }
    // The corners themselves, not copies: assigning to one changes the rectangle.
    CPoint& TopLeft() noexcept { return *reinterpret_cast<CPoint*>(&left); }
    CPoint& BottomRight() noexcept { return *reinterpret_cast<CPoint*>(&right); }
    const CPoint& TopLeft() const noexcept { return *reinterpret_cast<const CPoint*>(&left); }
    const CPoint& BottomRight() const noexcept { return *reinterpret_cast<const CPoint*>(&right); }
    // Division rounds towards zero.
    CPoint CenterPoint() const noexcept { return CPoint((left + right) / 2, (top + bottom) / 2); }

    operator LPRECT() noexcept { return this; }
    operator LPCRECT() const noexcept { return this; }

    // Empty: no width or no height, or a negative one. Null: all four coordinates are 0.
    BOOL IsRectEmpty() const noexcept { return ::IsRectEmpty(this); }
    BOOL IsRectNull() const noexcept { return left == 0 && right == 0 && top == 0 && bottom == 0; }
    // A point on the left or top edge is inside, one on the right or bottom edge is not.
    BOOL PtInRect(POINT point) const noexcept { return ::PtInRect(this, point); }

    void SetRect(int x1, int y1, int x2, int y2) noexcept { ::SetRect(this, x1, y1, x2, y2); }
    void SetRectEmpty() noexcept { ::SetRectEmpty(this); }
    void CopyRect(LPCRECT lpSrcRect) noexcept { ::CopyRect(this, lpSrcRect); }
    BOOL EqualRect(LPCRECT lpRect) const noexcept { return ::EqualRect(this, lpRect); }

    // Moves each side outwards by its own amount; negative amounts move it inwards.
    void InflateRect(int x, int y) noexcept { ::InflateRect(this, x, y); }
    void InflateRect(SIZE size) noexcept { ::InflateRect(this, size.cx, size.cy); }
    void InflateRect(LPCRECT lpRect) noexcept
    {
        InflateRect(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom);
    }
    void InflateRect(int l, int t, int r, int b) noexcept
    {
        left -= l;
        top -= t;
        right += r;
        bottom += b;
    }

    // The opposite of InflateRect.
    void DeflateRect(int x, int y) noexcept { ::InflateRect(this, -x, -y); }
    void DeflateRect(SIZE size) noexcept { ::InflateRect(this, -size.cx, -size.cy); }
    void DeflateRect(LPCRECT lpRect) noexcept
    {
        DeflateRect(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom);
    }
    void DeflateRect(int l, int t, int r, int b) noexcept { InflateRect(-l, -t, -r, -b); }

    void OffsetRect(int x, int y) noexcept { ::OffsetRect(this, x, y); }
    void OffsetRect(POINT point) noexcept { ::OffsetRect(this, point.x, point.y); }
    void OffsetRect(SIZE size) noexcept { ::OffsetRect(this, size.cx, size.cy); }
    // Swaps sides that are the wrong way round.
    void NormalizeRect() noexcept
    {
        if (left > right)
            SetRect(right, top, left, bottom);
        if (top > bottom)
            SetRect(left, bottom, right, top);
    }

    // Absolute moves; the size stays.
    void MoveToX(int x) noexcept { OffsetRect(x - left, 0); }
    void MoveToY(int y) noexcept { OffsetRect(0, y - top); }
    void MoveToXY(int x, int y) noexcept { OffsetRect(x - left, y - top); }
    void MoveToXY(POINT point) noexcept { MoveToXY(point.x, point.y); }

    // Each sets this rectangle to the combination of two others. IntersectRect and UnionRect answer FALSE and
    // an empty rectangle when nothing is left.
    BOOL IntersectRect(LPCRECT lpRect1, LPCRECT lpRect2) noexcept
    {
        return ::IntersectRect(this, lpRect1, lpRect2);
    }
    BOOL UnionRect(LPCRECT lpRect1, LPCRECT lpRect2) noexcept { return ::UnionRect(this, lpRect1, lpRect2); }
    // The first rectangle without the second, as far as the rest is a rectangle.
    BOOL SubtractRect(LPCRECT lpRectSrc1, LPCRECT lpRectSrc2) noexcept
    {
        return ::SubtractRect(this, lpRectSrc1, lpRectSrc2);
    }

    void operator=(const RECT& srcRect) noexcept { ::CopyRect(this, &srcRect); }
    BOOL operator==(const RECT& rect) const noexcept { return ::EqualRect(this, &rect); }
    BOOL operator!=(const RECT& rect) const noexcept { return !::EqualRect(this, &rect); }

    // A point or a size moves the rectangle, a rectangle moves each side: + inflates, - deflates.
    void operator+=(POINT point) noexcept { OffsetRect(point); }
    void operator+=(SIZE size) noexcept { OffsetRect(size); }
    void operator+=(LPCRECT lpRect) noexcept { InflateRect(lpRect); }
    void operator-=(POINT point) noexcept { OffsetRect(-point.x, -point.y); }
    void operator-=(SIZE size) noexcept { OffsetRect(-size.cx, -size.cy); }
    void operator-=(LPCRECT lpRect) noexcept { DeflateRect(lpRect); }
    void operator&=(const RECT& rect) noexcept { ::IntersectRect(this, this, &rect); }
    void operator|=(const RECT& rect) noexcept { ::UnionRect(this, this, &rect); }

    CRect operator+(POINT point) const noexcept
    {
        return Changed([&](CRect& r) { r += point; });
    }
    CRect operator+(LPCRECT lpRect) const noexcept
    {
        return Changed([&](CRect& r) { r += lpRect; });
    }
    CRect operator+(SIZE size) const noexcept
    {
        return Changed([&](CRect& r) { r += size; });
    }
    CRect operator-(POINT point) const noexcept
    {
        return Changed([&](CRect& r) { r -= point; });
    }
    CRect operator-(SIZE size) const noexcept
    {
        return Changed([&](CRect& r) { r -= size; });
    }
    CRect operator-(LPCRECT lpRect) const noexcept
    {
        return Changed([&](CRect& r) { r -= lpRect; });
    }
    CRect operator&(const RECT& rect2) const noexcept
    {
        return Changed([&](CRect& r) { r &= rect2; });
    }
    CRect operator|(const RECT& rect2) const noexcept
    {
        return Changed([&](CRect& r) { r |= rect2; });
    }

private:
    template <class Change>
    CRect Changed(Change change) const noexcept
    {
        CRect copy(*this);
        change(copy);
        return copy;
    }
};

inline CPoint CSize::operator+(POINT point) const noexcept
{
    return CPoint(cx + point.x, cy + point.y);
}

inline CPoint CSize::operator-(POINT point) const noexcept
{
    return CPoint(point.x - cx, point.y - cy);
}

inline CRect CSize::operator+(const RECT* lpRect) const noexcept
{
    return CRect(lpRect) + *this;
}

inline CRect CSize::operator-(const RECT* lpRect) const noexcept
{
    return CRect(lpRect) - *this;
}

inline CRect CPoint::operator+(const RECT* lpRect) const noexcept
{
    return CRect(lpRect) + *this;
}

inline CRect CPoint::operator-(const RECT* lpRect) const noexcept
{
    return CRect(lpRect) - *this;
}
