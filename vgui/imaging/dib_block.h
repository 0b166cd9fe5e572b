// Packed DIBs in memory: measures, checked access, and new blocks. For use inside the library.
#pragma once

#include "vgui/foundation/gdi_scope.h"

#include <afxwin.h>
#include <cstddef>
#include <cstdint>

// No image has more bytes of pixels than this, whatever its depth becomes.
constexpr size_t kMaxDibImageBytes = 0x7FFFFFFF;
// The longest colour table that a depth of at most 8 bits can use.
constexpr DWORD kMaxDibColors = 256;
// The depth above which pixels hold colours instead of indices.
constexpr WORD kMaxIndexedBits = 8;
// The masks behind the header of a BI_BITFIELDS image.
constexpr size_t kMaskBytes = 3 * sizeof(DWORD);

// ---- Measures of a block whose header is known to make sense (see VDibView)

// Entries of the colour table: biClrUsed when it is set, else 2, 16 or 256 by the bit count, none above 8.
DWORD DIBNumColors(const BYTE* block);
// The colour table's bytes. 16 bits are kept, on purpose: 65536 entries count as none.
WORD PaletteSize(const BYTE* block);
// The bottom pixel row, directly behind the colour table.
BYTE* FindDIBBits(BYTE* block);
LONG DIBWidth(const BYTE* block);
LONG DIBHeight(const BYTE* block);
// The length of a pixel row, padded to 4 bytes.
size_t BytesPerLine(const BYTE* block);
// Header, colour table and biSizeImage together; a biSizeImage of 0 is first set, inside the block.
size_t DIBBlockSize(BYTE* block);

// Whether images of that depth are known: 1, 4, 8, 16, 24 and 32.
bool IsKnownDepth(WORD bitCount);

// Whether an image of that size can be held and shown. GDI brings what it draws to the depth of the device;
// there are GDIs that then count a row's bits and the image's bytes in 32 bits, and write beyond their memory
// when the count overflows. A compressed image of such a size need not be long. So there must be room for the
// image at 32 bits per pixel, whatever its own depth.
bool IsSaneDibSize(LONG width, LONG height);

// The bytes of one row of so many pixels, padded to 4.
constexpr size_t DIBRowBytes(size_t width, size_t bitCount)
{
    return (width * bitCount + 31) / 32 * 4;
}

// ---- Checked access

// A packed DIB in memory, which stays its owner's. A view is empty unless the memory holds a DIB of a known
// header and depth and all its pixel rows, bottom row first, so every access below stays inside the memory.
// Rows are counted from the top.
class VDibView
{
public:
    VDibView() = default;
    VDibView(BYTE* block, size_t length);

    explicit operator bool() const { return m_block != nullptr; }

    [[nodiscard]] BYTE* Block() const { return m_block; }
    // Bytes of the memory, at least those of the DIB.
    [[nodiscard]] size_t Length() const { return m_length; }

    [[nodiscard]] LONG Width() const { return DIBWidth(m_block); }
    [[nodiscard]] LONG Height() const { return DIBHeight(m_block); }
    [[nodiscard]] WORD BitCount() const;
    [[nodiscard]] DWORD Compression() const;
    [[nodiscard]] bool HasCoreHeader() const;
    // The image's values in a 40-byte header, also when the block has the other kind.
    [[nodiscard]] BITMAPINFOHEADER Header() const;

    // Whether there are pixel rows (BI_RGB or BI_BITFIELDS) rather than a compressed stream. The rows below
    // need it.
    [[nodiscard]] bool HasRows() const;
    [[nodiscard]] size_t RowBytes() const { return BytesPerLine(m_block); }
    // The bytes of all rows together; of the stream when there are no rows.
    [[nodiscard]] size_t ImageBytes() const;
    // The bottom row, with which the pixels begin.
    [[nodiscard]] BYTE* Bits() const { return FindDIBBits(m_block); }
    [[nodiscard]] BYTE* Row(LONG y) const
    {
        return Bits() + static_cast<size_t>(Height() - 1 - y) * RowBytes();
    }

    // Brings biSizeImage, where the header has one, up to date.
    void UpdateSizeImage() const;

    // Entry i of what follows the header; it may lie beyond the colour table, and is zero beyond the memory.
    [[nodiscard]] RGBQUAD Color(DWORD i) const;
    // Sets an entry of the colour table; beyond it nothing happens.
    void SetColor(DWORD i, RGBQUAD color) const;
    // Puts back the masks of a BI_BITFIELDS image, of which this one is a copy: where the block has no colour
    // table they lie among the pixels, and whoever writes all pixels writes over them.
    void RestoreMasks(const VDibView& original) const;

private:
    BYTE* m_block = nullptr;
    size_t m_length = 0;
};

// The view of a global block, locked as long as this lives. Empty for null and for a block that holds no DIB.
class VLockedDib : public VDibView
{
public:
    explicit VLockedDib(HGLOBAL hDib);
    VLockedDib(const VLockedDib&) = delete;
    VLockedDib& operator=(const VLockedDib&) = delete;
    ~VLockedDib();

private:
    HGLOBAL m_hDib; // null when not locked
};

// ---- New blocks: movable and zeroed. Empty when memory is short or the size makes no sense.

// A block of so many bytes.
VOwnedGlobal NewGlobalBlock(size_t bytes);
// A block for a 40-byte header, which is copied into it with a biSizeImage of 0, its colour table and its
// rows, which are zero. spare bytes follow the rows.
VOwnedGlobal NewDib(const BITMAPINFOHEADER& header, size_t spare = 0);
// A 40-byte header for an uncompressed image, biSizeImage zero.
BITMAPINFOHEADER DIBHeader(LONG width, LONG height, WORD bitCount);
// A block for an uncompressed image of another size with the depth and colour table of a given one. The
// pixels are zero.
VOwnedGlobal NewDibLike(const VDibView& dib, LONG width, LONG height);
// A copy of the whole block.
VOwnedGlobal DuplicateDib(HGLOBAL hDib);
// The bytes of a packed DIB, told by its header alone: header, colour table, and the larger of biSizeImage
// and the pixel rows. 0 for a header that makes no sense.
size_t PackedDibBytes(const BYTE* memory);
// A copy of the packed DIB in so many bytes of memory. A top-down image is turned over, and a biSizeImage
// that cannot be true is put right. Empty when the header makes no sense or the image is not all there.
VOwnedGlobal CopyPackedDib(const BYTE* memory, size_t length);
// The same without a copy where the block holds nothing else: the DIB is in the first bytes of the block, so
// many of them, at least a header's 40.
VOwnedGlobal TakePackedDib(VOwnedGlobal block, size_t length);
// Whether a global block holds a packed DIB. A top-down image is then turned over in its place, and a
// biSizeImage that cannot be true is put right.
bool AcceptDib(HGLOBAL hDib);

// A new 40-byte-header block with the image in another depth (1, 4, 8, 16, 24 or 32) than it has. GDI matches
// the colours. The colour table of an image of 4 or 8 bits is the palette's, else the default or halftone
// palette's; at 1 bit it is black and white.
VOwnedGlobal ConvertDIBFormat(HGLOBAL hDib, WORD bitCount, HPALETTE hPalette = nullptr);

// The image of a DIB section, in a new block.
VOwnedGlobal DibFromSection(HBITMAP hBitmap);
// The image of any bitmap, in a new block of 1, 4, 8 or 24 bits.
VOwnedGlobal DibFromBitmap(HBITMAP hBitmap, HPALETTE hPalette);

// ---- GDI objects of packed DIBs

// Header and colour table in the form that GDI asks for, with room for every table.
struct VDibInfo {
    BITMAPINFOHEADER header;
    RGBQUAD colors[kMaxDibColors];

    BITMAPINFO* Info() { return reinterpret_cast<BITMAPINFO*>(this); }
};
static_assert(offsetof(VDibInfo, colors) == offsetof(BITMAPINFO, bmiColors));
// What GDI is told about a packed DIB instead of its own header, whose number of colours may be any.
VDibInfo DibInfoOf(const VDibView& dib);

// A DIB section with a packed DIB's depth, masks and colours. Empty when GDI refuses, as for a compressed
// image.
class VDibSection
{
public:
    VDibSection() = default;
    // With the image in it.
    explicit VDibSection(const VDibView& dib);
    // Zeroed, in another size.
    VDibSection(const VDibView& dib, LONG width, LONG height);

    explicit operator bool() const { return static_cast<bool>(m_bitmap); }
    [[nodiscard]] HBITMAP Bitmap() const { return m_bitmap.Get(); }
    // Gives the bitmap to the caller, who deletes it.
    [[nodiscard]] HBITMAP Release() { return m_bitmap.Release(); }
    // Draws a part of another section, its top left corner at a point, letting GDI match the colours.
    bool Draw(CPoint at, const VDibSection& source, CRect part) const;
    // Copy the pixels from and to an image of the same size and depth.
    void CopyFrom(const VDibView& dib) const;
    void CopyTo(const VDibView& dib) const;

private:
    VOwnedBitmap m_bitmap;
    BYTE* m_bits = nullptr; // the bottom row
};

// The logical palette of a DIB's colour table; empty without one.
VOwnedPalette DibPalette(const VDibView& dib);
