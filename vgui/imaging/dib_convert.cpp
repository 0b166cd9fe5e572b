// Packed DIBs and GDI: DIB sections, palettes, the change of depth, and DIBs made from bitmaps.
#include "vgui/foundation/within_memory.h"
#include "vgui/imaging/dib_block.h"
#include "vgui/imaging/dib_draw.h"
#include "vgui/imaging/dib_rows.h"
#include "vgui/imaging/log_palette.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace
{

enum class Flags { Drop, Keep };

// Copies the first count entries of a palette; those that it lacks become black. An entry's flags go into the
// reserved byte or are dropped.
void SetColors(const VDibView& dib, HPALETTE hPalette, DWORD count, Flags flags)
{
    PALETTEENTRY entries[kMaxDibColors] = {};
    ::GetPaletteEntries(hPalette, 0, count, entries);
    for (DWORD i = 0; i < count; ++i) {
        const auto& [red, green, blue, entryFlags] = entries[i];
        dib.SetColor(i, {blue, green, red, flags == Flags::Keep ? entryFlags : BYTE{0}});
    }
}

void ChooseColors(const VDibView& target, HPALETTE hPalette)
{
    const WORD bitCount = target.BitCount();
    const DWORD count = 1U << bitCount;
    if (bitCount == 1) {
        target.SetColor(1, {0xFF, 0xFF, 0xFF, 0});
    } else if (hPalette != nullptr) {
        SetColors(target, hPalette, count, Flags::Drop);
    } else if (bitCount == 4) {
        SetColors(target, static_cast<HPALETTE>(::GetStockObject(DEFAULT_PALETTE)), count, Flags::Keep);
    } else {
        const VOwnedScreenDC screen(::GetDC(nullptr));
        const VOwnedPalette halftone(::CreateHalftonePalette(screen.Get()));
        SetColors(target, halftone.Get(), count, Flags::Keep);
    }
}

// Whether a change of depth keeps every colour as it is, so that GDI is not needed, which takes its time to
// make what it draws with.
bool KeepsColors(const VDibView& source, WORD bitCount)
{
    return source.Compression() == BI_RGB && source.BitCount() != 16 && bitCount != source.BitCount() &&
           (bitCount == 24 || bitCount == 32);
}

// False when memory is short.
bool CopyColors(const VDibView& source, const VDibView& target)
{
    return VWithinMemory([&] {
        VColorReader reader(source);
        std::vector<BYTE> row(reader.Length());
        const size_t pixelBytes = target.BitCount() / 8;
        for (LONG y = 0; y < source.Height(); ++y) {
            reader.Read(y, row.data());
            BYTE* to = target.Row(y);
            for (const BYTE* from = row.data(); from != row.data() + row.size(); from += reader.Channels()) {
                to[0] = from[0];
                to[1] = from[1];
                to[2] = from[2];
                to += pixelBytes;
            }
        }
        return true;
    });
}

WORD DepthBucket(const BITMAP& bitmap)
{
    const int bits = bitmap.bmPlanes * bitmap.bmBitsPixel;
    return bits <= 1 ? 1 : bits <= 4 ? 4 : bits <= 8 ? 8 : 24;
}

// Fills a new block with a bitmap's pixels in the form that the header says.
VOwnedGlobal FetchPixels(HDC hDC, HBITMAP hBitmap, VDibInfo& info)
{
    VOwnedGlobal block = NewDib(info.header);
    const VLockedDib dib(block.Get());
    if (!dib)
        return {};
    const auto height = static_cast<UINT>(dib.Height());
    if (::GetDIBits(hDC, hBitmap, 0, height, dib.Bits(), info.Info(), DIB_RGB_COLORS) <= 0)
        return {};
    for (DWORD i = 0; dib.BitCount() <= kMaxIndexedBits && i < kMaxDibColors; ++i)
        dib.SetColor(i, info.colors[i]);
    dib.UpdateSizeImage();
    return block;
}

} // namespace

VDibInfo DibInfoOf(const VDibView& dib)
{
    VDibInfo info = {dib.Header(), {}};
    // Above 8 bits the count only tells where the pixels begin; GDI has no use for it.
    if (info.header.biBitCount > kMaxIndexedBits)
        info.header.biClrUsed = 0;
    info.header.biClrUsed = std::min(info.header.biClrUsed, kMaxDibColors);
    for (DWORD i = 0; i < kMaxDibColors; ++i)
        info.colors[i] = dib.Color(i);
    return info;
}

// ---- VDibSection

VDibSection::VDibSection(const VDibView& dib) : VDibSection(dib, dib.Width(), dib.Height())
{
    if (m_bitmap)
        CopyFrom(dib);
}

VDibSection::VDibSection(const VDibView& dib, LONG width, LONG height)
{
    if (!dib.HasRows())
        return;
    VDibInfo info = DibInfoOf(dib);
    info.header.biWidth = width;
    info.header.biHeight = height;
    info.header.biSizeImage = 0;
    void* bits = nullptr;
    m_bitmap.Reset(::CreateDIBSection(nullptr, info.Info(), DIB_RGB_COLORS, &bits, nullptr, 0));
    m_bits = static_cast<BYTE*>(bits);
}

void VDibSection::CopyFrom(const VDibView& dib) const
{
    std::memcpy(m_bits, dib.Bits(), dib.ImageBytes());
}

void VDibSection::CopyTo(const VDibView& dib) const
{
    ::GdiFlush();
    std::memcpy(dib.Bits(), m_bits, dib.ImageBytes());
}

bool VDibSection::Draw(CPoint at, const VDibSection& source, CRect part) const
{
    const VOwnedMemoryDC sourceDC(::CreateCompatibleDC(nullptr));
    const VOwnedMemoryDC targetDC(::CreateCompatibleDC(nullptr));
    if (!*this || !source || !sourceDC || !targetDC)
        return false;
    const VSelectScope sourceBitmap(sourceDC.Get(), source.Bitmap());
    const VSelectScope targetBitmap(targetDC.Get(), Bitmap());
    return ::BitBlt(targetDC.Get(), at.x, at.y, part.Width(), part.Height(), sourceDC.Get(), part.left,
                    part.top, SRCCOPY) != FALSE;
}

// ---- Palettes and conversion

VOwnedPalette DibPalette(const VDibView& dib)
{
    const auto count = static_cast<WORD>(DIBNumColors(dib.Block()));
    if (count == 0)
        return {};
    VLogPalette palette(count);
    for (WORD i = 0; i < count; ++i) {
        const RGBQUAD color = dib.Color(i);
        palette.Entries()[i] = {color.rgbRed, color.rgbGreen, color.rgbBlue, 0};
    }
    return palette.Create();
}

VOwnedGlobal ConvertDIBFormat(HGLOBAL hDib, WORD bitCount, HPALETTE hPalette)
{
    const VLockedDib source(hDib);
    if (!source)
        return {};
    // Other readers of the format look a little beyond the last row: the block ends 4 bytes later.
    constexpr size_t kSpareBytes = 4;
    VOwnedGlobal block = NewDib(DIBHeader(source.Width(), source.Height(), bitCount), kSpareBytes);
    const VLockedDib target(block.Get());
    if (!target)
        return {};
    if (bitCount <= kMaxIndexedBits)
        ChooseColors(target, hPalette);
    target.UpdateSizeImage();
    if (KeepsColors(source, bitCount))
        return CopyColors(source, target) ? std::move(block) : VOwnedGlobal();

    const VDibSection from(source);
    const VDibSection to(target);
    if (!to.Draw({0, 0}, from, {0, 0, source.Width(), source.Height()}))
        return {};
    to.CopyTo(target);
    return block;
}

// ---- DIBs made from bitmaps

VOwnedGlobal DibFromSection(HBITMAP hBitmap)
{
    DIBSECTION section = {};
    if (::GetObject(hBitmap, sizeof section, &section) != sizeof section)
        return {};
    VDibInfo info = {section.dsBmih, {}};
    info.header.biSize = sizeof info.header;
    info.header.biHeight = std::abs(section.dsBmih.biHeight);
    // A block has no room for masks; GDI brings the pixels into the standard form.
    info.header.biCompression = BI_RGB;

    const VOwnedScreenDC screen(::GetDC(nullptr));
    return FetchPixels(screen.Get(), hBitmap, info);
}

VOwnedGlobal DibFromBitmap(HBITMAP hBitmap, HPALETTE hPalette)
{
    BITMAP bitmap = {};
    if (::GetObject(hBitmap, sizeof bitmap, &bitmap) == 0)
        return {};
    if (hPalette == nullptr)
        hPalette = static_cast<HPALETTE>(::GetStockObject(DEFAULT_PALETTE));
    const VOwnedScreenDC screen(::GetDC(nullptr));
    VDibInfo info = {DIBHeader(bitmap.bmWidth, bitmap.bmHeight, DepthBucket(bitmap)), {}};
    VOwnedGlobal block;
    {
        const VPaletteScope palette(screen.Get(), hPalette, FALSE);
        block = FetchPixels(screen.Get(), hBitmap, info);
    }
    ::RealizePalette(screen.Get());
    return block;
}
