// Pixel rows of packed DIBs in the forms that image processing works on. For use inside the library.
#pragma once

#include "vgui/foundation/within_memory.h"
#include "vgui/imaging/dib_block.h"

#include <array>
#include <vector>

// ---- Pixels as they stand: below 8 bits one byte per pixel, otherwise the bytes of the row

// The bytes of such a pixel.
constexpr size_t UnpackedBytes(WORD bitCount)
{
    return bitCount <= 8 ? 1 : bitCount / 8;
}
// row begins at a pixel that begins a byte.
void UnpackPixels(const BYTE* row, WORD bitCount, size_t count, BYTE* pixels);
void PackPixels(const BYTE* pixels, WORD bitCount, size_t count, BYTE* row);

// ---- Pixels as colours: blue, green, red and, at 32 bits, the byte that follows, which operations keep

constexpr size_t ColorChannels(WORD bitCount)
{
    return bitCount == 32 ? 4 : 3;
}

// Reads rows of an image of any depth. The image stays its owner's and must outlive the reader.
class VColorReader
{
public:
    explicit VColorReader(const VDibView& dib);

    [[nodiscard]] size_t Channels() const { return m_channels; }
    // Bytes of a row.
    [[nodiscard]] size_t Length() const { return m_width * m_channels; }
    // Row y from the top.
    void Read(LONG y, BYTE* colors);

private:
    void ReadIndexed(const BYTE* row, BYTE* colors);

    const VDibView& m_dib;
    size_t m_width;
    size_t m_channels;
    std::array<RGBQUAD, kMaxDibColors> m_table{}; // black where the image has no colour
    std::vector<BYTE> m_indices;
};

// Sets a row of an image of 16, 24 or 32 bits.
void WriteColors(const VDibView& dib, LONG y, const BYTE* colors);

// Entries of the colour table that pixels can use.
DWORD UsableColors(const VDibView& dib);

// ---- Results

// A blank block for an image of another size, with the source's resolution and depth, or 24 bits where the
// source is indexed.
VOwnedGlobal NewColorDib(const VDibView& source, LONG width, LONG height);

// What make(view of the DIB) answers; empty for a DIB that is none or compressed, and when memory is short.
template <class Make>
VOwnedGlobal ProcessDib(HGLOBAL hDib, Make make)
{
    return VWithinMemory([&] {
        const VLockedDib source(hDib);
        return source && source.Compression() == BI_RGB ? make(source) : VOwnedGlobal();
    });
}
