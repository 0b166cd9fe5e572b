// CDC: the objects selected into it.
#include <afxwin.h>

#include "dc_both.h"

using afx_subset::HandleOf;
using afx_subset::HasOwnOutput;
using afx_subset::OnBoth;

namespace
{

HGDIOBJ SelectIntoBoth(const CDC& dc, HGDIOBJ object)
{
    if (object == nullptr)
        return nullptr;
    return OnBoth(dc, HGDIOBJ{}, [=](HDC handle) { return ::SelectObject(handle, object); });
}

HBRUSH MakeHalftoneBrush()
{
    WORD pattern[8];
    for (int row = 0; row < 8; ++row)
        pattern[row] = row % 2 == 0 ? 0x5555 : 0xAAAA;
    const HBITMAP bitmap = ::CreateBitmap(8, 8, 1, 1, pattern);
    const HBRUSH brush = bitmap == nullptr ? nullptr : ::CreatePatternBrush(bitmap);
    ::DeleteObject(bitmap);
    return brush;
}

} // namespace

CGdiObject* CDC::SelectStockObject(int nIndex)
{
    const HGDIOBJ object = ::GetStockObject(nIndex);
    if (nIndex == DEFAULT_PALETTE)
        return SelectPalette(CPalette::FromHandle(static_cast<HPALETTE>(object)), FALSE);
    return CGdiObject::FromHandle(SelectIntoBoth(*this, object));
}

CPen* CDC::SelectObject(CPen* pPen)
{
    return static_cast<CPen*>(CGdiObject::FromHandle(SelectIntoBoth(*this, HandleOf<HGDIOBJ>(pPen))));
}

CBrush* CDC::SelectObject(CBrush* pBrush)
{
    return static_cast<CBrush*>(CGdiObject::FromHandle(SelectIntoBoth(*this, HandleOf<HGDIOBJ>(pBrush))));
}

CFont* CDC::SelectObject(CFont* pFont)
{
    return static_cast<CFont*>(CGdiObject::FromHandle(SelectIntoBoth(*this, HandleOf<HGDIOBJ>(pFont))));
}

CBitmap* CDC::SelectObject(CBitmap* pBitmap)
{
    // A bitmap can be in one device context at a time: the one that is drawn to.
    const HGDIOBJ bitmap = HandleOf<HGDIOBJ>(pBitmap);
    if (bitmap == nullptr)
        return nullptr;
    return static_cast<CBitmap*>(CGdiObject::FromHandle(::SelectObject(m_hDC, bitmap)));
}

int CDC::SelectObject(CRgn* pRgn)
{
    return SelectClipRgn(pRgn);
}

CGdiObject* CDC::SelectObject(CGdiObject* pObject)
{
    const HGDIOBJ object = HandleOf<HGDIOBJ>(pObject);
    switch (object == nullptr ? 0 : ::GetObjectType(object)) {
    case 0:
        return nullptr;
    case OBJ_BITMAP:
        return CGdiObject::FromHandle(::SelectObject(m_hDC, object));
    case OBJ_PAL:
        return SelectPalette(static_cast<CPalette*>(pObject), FALSE);
    case OBJ_REGION:
        // The clip region is copied, so no object is replaced.
        SelectClipRgn(static_cast<CRgn*>(pObject));
        return nullptr;
    default:
        return CGdiObject::FromHandle(SelectIntoBoth(*this, object));
    }
}

CPalette* CDC::SelectPalette(CPalette* pPalette, BOOL bForceBackground)
{
    const auto palette = HandleOf<HPALETTE>(pPalette);
    if (palette == nullptr)
        return nullptr;
    return CPalette::FromHandle(
        OnBoth(*this, HPALETTE{}, [=](HDC dc) { return ::SelectPalette(dc, palette, bForceBackground); }));
}

UINT CDC::RealizePalette()
{
    return ::RealizePalette(m_hDC);
}

void CDC::UpdateColors()
{
    ::UpdateColors(m_hDC);
}

CPen* CDC::GetCurrentPen() const
{
    return CPen::FromHandle(static_cast<HPEN>(::GetCurrentObject(m_hAttribDC, OBJ_PEN)));
}

CBrush* CDC::GetCurrentBrush() const
{
    return CBrush::FromHandle(static_cast<HBRUSH>(::GetCurrentObject(m_hAttribDC, OBJ_BRUSH)));
}

CPalette* CDC::GetCurrentPalette() const
{
    return CPalette::FromHandle(static_cast<HPALETTE>(::GetCurrentObject(m_hAttribDC, OBJ_PAL)));
}

CFont* CDC::GetCurrentFont() const
{
    return CFont::FromHandle(static_cast<HFONT>(::GetCurrentObject(m_hAttribDC, OBJ_FONT)));
}

CBitmap* CDC::GetCurrentBitmap() const
{
    return CBitmap::FromHandle(static_cast<HBITMAP>(::GetCurrentObject(m_hAttribDC, OBJ_BITMAP)));
}

int CDC::EnumObjects(int nObjectType, int(CALLBACK* lpfn)(LPVOID, LPARAM), LPARAM lpData)
{
    return ::EnumObjects(m_hAttribDC, nObjectType, lpfn, lpData);
}

CBrush* PASCAL CDC::GetHalftoneBrush()
{
    static const HBRUSH brush = MakeHalftoneBrush();
    return CBrush::FromHandle(brush);
}
