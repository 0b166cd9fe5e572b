// The DIB object: ownership, the palette and bitmap that follow the block, and access to the pixels.
#include "vgui/imaging/dib.h"

#include "vgui/imaging/dib_block.h"

#include <afxext.h>
#include <utility>

IMPLEMENT_SERIAL(CDib, CObject, 0)

namespace
{

// What one measure of the image is; 0 for a handle without an image.
template <class Value, class Measure>
Value MeasureOf(HGLOBAL hDib, Measure measure)
{
    const VLockedDib dib(hDib);
    return dib ? static_cast<Value>(measure(dib)) : Value{};
}

LONGLONG PixelOffset(const VDibView& dib, LONG x, LONG y)
{
    return (LONGLONG{dib.Height()} - y - 1) * static_cast<LONGLONG>(dib.RowBytes()) +
           LONGLONG{x} * dib.BitCount() / 8;
}

// Up to three bytes from a place on, the first one lowest, as far as the block reaches.
DWORD BytesAt(const VDibView& dib, const BYTE* place)
{
    DWORD value = 0;
    for (int i = 0; i < 3 && place + i < dib.Block() + dib.Length(); ++i)
        value |= DWORD{place[i]} << 8 * i;
    return value;
}

// A palette's entry as a colour, black when it is missing.
COLORREF EntryColor(const CPalette* pPalette, UINT i)
{
    PALETTEENTRY entry = {};
    if (pPalette != nullptr)
        pPalette->GetPaletteEntries(i, 1, &entry);
    return RGB(entry.peRed, entry.peGreen, entry.peBlue);
}

} // namespace

CDib::CDib()
    : m_hDib(nullptr), m_hBitmap(nullptr), m_pPalette(nullptr), m_pBitmap(nullptr), m_pMemDC(nullptr),
      m_pBitmapOld(nullptr), m_pPaletteOld(nullptr)
{
}

CDib::~CDib()
{
    Destroy();
    // Selected objects cannot be deleted, so a drawing that was never ended is dropped first.
    delete m_pMemDC;
    delete m_pBitmap;
    delete m_pPalette;
}

// ---- Ownership

int CDib::Attach(HGLOBAL hDib)
{
    return AcceptDib(hDib) ? ReplaceDib(hDib) : FALSE;
}

HGLOBAL CDib::Detach()
{
    if (m_hDib == nullptr)
        return nullptr;
    delete std::exchange(m_pBitmap, nullptr);
    delete std::exchange(m_pPalette, nullptr);
    m_hBitmap = nullptr;
    return std::exchange(m_hDib, nullptr);
}

void CDib::Destroy()
{
    if (m_hDib != nullptr)
        ::GlobalFree(std::exchange(m_hDib, nullptr));
}

int CDib::ReplaceDib(HGLOBAL hDib)
{
    if (hDib == nullptr)
        return FALSE;
    if (hDib != m_hDib)
        Destroy();
    m_hDib = hDib;
    return UpdateInternal();
}

int CDib::UpdateInternal()
{
    BuildPalette();
    return BuildBitmap();
}

int CDib::BuildPalette()
{
    delete std::exchange(m_pPalette, nullptr);
    const VLockedDib dib(m_hDib);
    VOwnedPalette palette = dib ? DibPalette(dib) : VOwnedPalette();
    if (!palette)
        return FALSE;
    m_pPalette = new CPalette;
    return m_pPalette->Attach(palette.Release());
}

int CDib::BuildBitmap()
{
    delete std::exchange(m_pBitmap, nullptr);
    m_hBitmap = nullptr;
    const VLockedDib dib(m_hDib);
    VDibSection section = dib ? VDibSection(dib) : VDibSection();
    if (!section)
        return FALSE;
    ::GdiFlush();
    m_pBitmap = new CBitmap;
    m_hBitmap = section.Release();
    return m_pBitmap->Attach(m_hBitmap);
}

// ---- Access

int CDib::IsEmpty() const
{
    return !VLockedDib(m_hDib);
}

DWORD CDib::GetCompression() const
{
    return MeasureOf<DWORD>(m_hDib, [](const VDibView& dib) { return dib.Compression(); });
}

WORD CDib::GetBitCount() const
{
    return MeasureOf<WORD>(m_hDib, [](const VDibView& dib) { return dib.BitCount(); });
}

LONG CDib::GetWidth() const
{
    return MeasureOf<LONG>(m_hDib, [](const VDibView& dib) { return dib.Width(); });
}

LONG CDib::GetHeight() const
{
    return MeasureOf<LONG>(m_hDib, [](const VDibView& dib) { return dib.Height(); });
}

LONG CDib::GetWidthBytes() const
{
    return MeasureOf<LONG>(m_hDib, [](const VDibView& dib) { return dib.RowBytes(); });
}

WORD CDib::GetColorNumber() const
{
    return MeasureOf<WORD>(m_hDib, [](const VDibView& dib) { return DIBNumColors(dib.Block()); });
}

WORD CDib::GetPaletteSize() const
{
    return MeasureOf<WORD>(m_hDib, [](const VDibView& dib) { return PaletteSize(dib.Block()); });
}

LPBYTE CDib::GetBitsPtr() const
{
    const VLockedDib dib(m_hDib);
    return dib ? dib.Bits() : nullptr;
}

LONG CDib::GetPixelOffset(LONG x, LONG y) const
{
    return MeasureOf<LONG>(m_hDib, [x, y](const VDibView& dib) { return PixelOffset(dib, x, y); });
}

DWORD CDib::GetPixel(LONG x, LONG y) const
{
    const VLockedDib dib(m_hDib);
    if (!dib || !dib.HasRows() || x < 0 || y < 0 || x >= dib.Width() || y >= dib.Height())
        return 0;
    const BYTE* const pixel = dib.Bits() + PixelOffset(dib, x, y);
    switch (dib.BitCount()) {
    case 1:
        return (*pixel >> (7 - x % 8) & 1) != 0 ? RGB(0xFF, 0xFF, 0xFF) : RGB(0, 0, 0);
    case 4:
        return EntryColor(m_pPalette, x % 2 == 0 ? *pixel >> 4 : *pixel & 0x0F);
    case 8:
        return EntryColor(m_pPalette, *pixel);
    default:
        return BytesAt(dib, pixel);
    }
}
