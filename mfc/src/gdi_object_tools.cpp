// Pens, brushes, fonts and palettes.
#include <afxwin.h>

#include <cstdlib>

IMPLEMENT_DYNAMIC(CPen, CGdiObject)
IMPLEMENT_DYNAMIC(CBrush, CGdiObject)
IMPLEMENT_DYNAMIC(CFont, CGdiObject)
IMPLEMENT_DYNAMIC(CPalette, CGdiObject)

namespace
{

void ThrowUnless(BOOL made)
{
    if (!made)
        AfxThrowResourceException();
}

HBITMAP BitmapOf(CBitmap* bitmap)
{
    return bitmap == nullptr ? nullptr : static_cast<HBITMAP>(bitmap->m_hObject);
}

// A height in tenths of a point as a logical height, negative as font heights are when they count characters
// and not cells.
LONG LogicalFontHeight(LONG tenthsOfAPoint, HDC dc)
{
    constexpr int tenthsPerInch = 720;
    POINT point{0, ::MulDiv(::GetDeviceCaps(dc, LOGPIXELSY), tenthsOfAPoint, tenthsPerInch)};
    POINT origin{0, 0};
    ::DPtoLP(dc, &point, 1);
    ::DPtoLP(dc, &origin, 1);
    return -std::abs(point.y - origin.y);
}

} // namespace

// ---- CPen

CPen::CPen() = default;

CPen::CPen(int nPenStyle, int nWidth, COLORREF crColor)
{
    ThrowUnless(CreatePen(nPenStyle, nWidth, crColor));
}

CPen::CPen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount, const DWORD* lpStyle)
{
    ThrowUnless(CreatePen(nPenStyle, nWidth, pLogBrush, nStyleCount, lpStyle));
}

CPen* PASCAL CPen::FromHandle(HPEN hPen)
{
    return static_cast<CPen*>(CGdiObject::FromHandle(hPen));
}

CPen::operator HPEN() const
{
    return static_cast<HPEN>(GetSafeHandle());
}

BOOL CPen::CreatePen(int nPenStyle, int nWidth, COLORREF crColor)
{
    return Attach(::CreatePen(nPenStyle, nWidth, crColor));
}

BOOL CPen::CreatePen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount,
                     const DWORD* lpStyle)
{
    if (pLogBrush == nullptr)
        return FALSE;
    return Attach(::ExtCreatePen(nPenStyle, nWidth, pLogBrush, nStyleCount, lpStyle));
}

BOOL CPen::CreatePenIndirect(LPLOGPEN lpLogPen)
{
    return lpLogPen != nullptr && Attach(::CreatePenIndirect(lpLogPen));
}

int CPen::GetLogPen(LOGPEN* pLogPen)
{
    return GetObject(sizeof(LOGPEN), pLogPen);
}

int CPen::GetExtLogPen(EXTLOGPEN* pLogPen)
{
    return GetObject(sizeof(EXTLOGPEN), pLogPen);
}

// ---- CBrush

CBrush::CBrush() = default;

CBrush::CBrush(COLORREF crColor)
{
    ThrowUnless(CreateSolidBrush(crColor));
}

CBrush::CBrush(int nIndex, COLORREF crColor)
{
    ThrowUnless(CreateHatchBrush(nIndex, crColor));
}

CBrush::CBrush(CBitmap* pBitmap)
{
    ThrowUnless(CreatePatternBrush(pBitmap));
}

CBrush* PASCAL CBrush::FromHandle(HBRUSH hBrush)
{
    return static_cast<CBrush*>(CGdiObject::FromHandle(hBrush));
}

CBrush::operator HBRUSH() const
{
    return static_cast<HBRUSH>(GetSafeHandle());
}

BOOL CBrush::CreateSolidBrush(COLORREF crColor)
{
    return Attach(::CreateSolidBrush(crColor));
}

BOOL CBrush::CreateHatchBrush(int nIndex, COLORREF crColor)
{
    return Attach(::CreateHatchBrush(nIndex, crColor));
}

BOOL CBrush::CreateBrushIndirect(const LOGBRUSH* lpLogBrush)
{
    return lpLogBrush != nullptr && Attach(::CreateBrushIndirect(lpLogBrush));
}

BOOL CBrush::CreatePatternBrush(CBitmap* pBitmap)
{
    return Attach(::CreatePatternBrush(BitmapOf(pBitmap)));
}

BOOL CBrush::CreateDIBPatternBrush(HGLOBAL hPackedDIB, UINT nUsage)
{
    const void* packed = hPackedDIB == nullptr ? nullptr : ::GlobalLock(hPackedDIB);
    if (packed == nullptr)
        return FALSE;
    const BOOL made = CreateDIBPatternBrush(packed, nUsage);
    ::GlobalUnlock(hPackedDIB);
    return made;
}

BOOL CBrush::CreateDIBPatternBrush(const void* lpPackedDIB, UINT nUsage)
{
    return lpPackedDIB != nullptr && Attach(::CreateDIBPatternBrushPt(lpPackedDIB, nUsage));
}

BOOL CBrush::CreateSysColorBrush(int nIndex)
{
    return Attach(::GetSysColorBrush(nIndex));
}

int CBrush::GetLogBrush(LOGBRUSH* pLogBrush)
{
    return GetObject(sizeof(LOGBRUSH), pLogBrush);
}

// ---- CFont

CFont::CFont() = default;

CFont* PASCAL CFont::FromHandle(HFONT hFont)
{
    return static_cast<CFont*>(CGdiObject::FromHandle(hFont));
}

CFont::operator HFONT() const
{
    return static_cast<HFONT>(GetSafeHandle());
}

BOOL CFont::CreateFontIndirect(const LOGFONT* lpLogFont)
{
    return lpLogFont != nullptr && Attach(::CreateFontIndirect(lpLogFont));
}

BOOL CFont::CreateFont(int nHeight, int nWidth, int nEscapement, int nOrientation, int nWeight, BYTE bItalic,
                       BYTE bUnderline, BYTE cStrikeOut, BYTE nCharSet, BYTE nOutPrecision,
                       BYTE nClipPrecision, BYTE nQuality, BYTE nPitchAndFamily, LPCTSTR lpszFacename)
{
    return Attach(::CreateFont(nHeight, nWidth, nEscapement, nOrientation, nWeight, bItalic, bUnderline,
                               cStrikeOut, nCharSet, nOutPrecision, nClipPrecision, nQuality, nPitchAndFamily,
                               lpszFacename));
}

BOOL CFont::CreatePointFont(int nPointSize, LPCTSTR lpszFaceName, CDC* pDC)
{
    LOGFONT font{};
    font.lfHeight = nPointSize;
    font.lfCharSet = DEFAULT_CHARSET;
    if (lpszFaceName != nullptr)
        ::lstrcpyn(font.lfFaceName, lpszFaceName, LF_FACESIZE);
    return CreatePointFontIndirect(&font, pDC);
}

BOOL CFont::CreatePointFontIndirect(const LOGFONT* lpLogFont, CDC* pDC)
{
    if (lpLogFont == nullptr)
        return FALSE;
    LOGFONT font = *lpLogFont;
    if (pDC != nullptr) {
        font.lfHeight = LogicalFontHeight(lpLogFont->lfHeight, pDC->m_hAttribDC);
    } else {
        const HDC screen = ::GetDC(nullptr);
        font.lfHeight = LogicalFontHeight(lpLogFont->lfHeight, screen);
        ::ReleaseDC(nullptr, screen);
    }
    return CreateFontIndirect(&font);
}

int CFont::GetLogFont(LOGFONT* pLogFont)
{
    return GetObject(sizeof(LOGFONT), pLogFont);
}

// ---- CPalette

CPalette::CPalette() = default;

CPalette* PASCAL CPalette::FromHandle(HPALETTE hPalette)
{
    return static_cast<CPalette*>(CGdiObject::FromHandle(hPalette));
}

CPalette::operator HPALETTE() const
{
    return static_cast<HPALETTE>(GetSafeHandle());
}

BOOL CPalette::CreatePalette(LPLOGPALETTE lpLogPalette)
{
    return lpLogPalette != nullptr && Attach(::CreatePalette(lpLogPalette));
}

BOOL CPalette::CreateHalftonePalette(CDC* pDC)
{
    return Attach(::CreateHalftonePalette(pDC == nullptr ? nullptr : pDC->m_hDC));
}

int CPalette::GetEntryCount()
{
    WORD count = 0;
    GetObject(sizeof(count), &count);
    return count;
}

UINT CPalette::GetPaletteEntries(UINT nStartIndex, UINT nNumEntries, LPPALETTEENTRY lpPaletteColors) const
{
    return ::GetPaletteEntries(*this, nStartIndex, nNumEntries, lpPaletteColors);
}

UINT CPalette::SetPaletteEntries(UINT nStartIndex, UINT nNumEntries, LPPALETTEENTRY lpPaletteColors)
{
    return ::SetPaletteEntries(*this, nStartIndex, nNumEntries, lpPaletteColors);
}

void CPalette::AnimatePalette(UINT nStartIndex, UINT nNumEntries, LPPALETTEENTRY lpPaletteColors)
{
    ::AnimatePalette(*this, nStartIndex, nNumEntries, lpPaletteColors);
}

UINT CPalette::GetNearestPaletteIndex(COLORREF crColor) const
{
    return ::GetNearestPaletteIndex(*this, crColor);
}

BOOL CPalette::ResizePalette(UINT nNumEntries)
{
    return ::ResizePalette(*this, nNumEntries);
}
