// Turning and mirroring the DIB object's image, and the size of its canvas. Pixels move as they are.
#include "vgui/imaging/dib.h"
#include "vgui/imaging/dib_rows.h"

#include <algorithm>
#include <cstring>

namespace
{

// Columns that are turned together: a source row then gives whole cache lines, and each target row is
// written to in one place at a time. A multiple of 8, so that a band begins with a byte at every depth.
constexpr LONG kBand = 32;

template <size_t N>
using Pixel = std::array<BYTE, N>;

// Puts pixel i of a row to the same place of row i.
template <size_t N>
void ScatterPixels(const BYTE* pixels, size_t count, BYTE* const* rows, size_t place)
{
    for (size_t i = 0; i < count; ++i)
        std::memcpy(rows[i] + place * N, pixels + i * N, N);
}

template <size_t N>
void ReversePixels(BYTE* pixels, size_t count)
{
    auto* const first = reinterpret_cast<Pixel<N>*>(pixels);
    std::reverse(first, first + count);
}

// Indexed by the bytes of a pixel, less one.
constexpr decltype(&ScatterPixels<1>) kScatter[] = {ScatterPixels<1>, ScatterPixels<2>, ScatterPixels<3>,
                                                    ScatterPixels<4>};
constexpr decltype(&ReversePixels<1>) kReverse[] = {ReversePixels<1>, ReversePixels<2>, ReversePixels<3>,
                                                    ReversePixels<4>};

// The image turned by a right angle.
VOwnedGlobal Turned(const VDibView& source, bool clockwise)
{
    const LONG width = source.Width();
    const LONG height = source.Height();
    const WORD bitCount = source.BitCount();
    const auto length = static_cast<size_t>(height); // of a target row, in pixels
    VOwnedGlobal result = NewDibLike(source, height, width);
    const VLockedDib target(result.Get());
    if (!target)
        return {};

    const size_t pixelBytes = UnpackedBytes(bitCount);
    std::vector<BYTE> band(kBand * length * pixelBytes);
    std::vector<BYTE> part(kBand * pixelBytes);
    BYTE* rows[kBand];
    for (size_t i = 0; i < kBand; ++i)
        rows[i] = band.data() + i * length * pixelBytes;
    for (LONG left = 0; left < width; left += kBand) {
        const LONG columns = std::min(kBand, width - left);
        for (LONG y = 0; y < height; ++y) {
            const BYTE* const from = source.Row(y) + static_cast<size_t>(left) * bitCount / 8;
            UnpackPixels(from, bitCount, static_cast<size_t>(columns), part.data());
            kScatter[pixelBytes - 1](part.data(), static_cast<size_t>(columns), rows,
                                     static_cast<size_t>(clockwise ? height - 1 - y : y));
        }
        for (LONG i = 0; i < columns; ++i) {
            const LONG x = left + i;
            PackPixels(rows[i], bitCount, length, target.Row(clockwise ? x : width - 1 - x));
        }
    }
    return result;
}

VOwnedGlobal Mirrored(const VDibView& source, bool horizontally, bool vertically)
{
    const LONG height = source.Height();
    const WORD bitCount = source.BitCount();
    const auto width = static_cast<size_t>(source.Width());
    VOwnedGlobal result = NewDibLike(source, source.Width(), height);
    const VLockedDib target(result.Get());
    if (!target)
        return {};

    std::vector<BYTE> line(width * UnpackedBytes(bitCount));
    for (LONG y = 0; y < height; ++y) {
        const BYTE* const from = source.Row(vertically ? height - 1 - y : y);
        if (horizontally) {
            UnpackPixels(from, bitCount, width, line.data());
            kReverse[UnpackedBytes(bitCount) - 1](line.data(), width);
            PackPixels(line.data(), bitCount, width, target.Row(y));
        } else {
            std::memcpy(target.Row(y), from, target.RowBytes());
        }
    }
    return result;
}

// The index of the colour next to white.
BYTE WhiteIndex(const VDibView& dib)
{
    const auto distance = [&dib](DWORD i) {
        const RGBQUAD color = dib.Color(i);
        const int blue = 255 - color.rgbBlue;
        const int green = 255 - color.rgbGreen;
        const int red = 255 - color.rgbRed;
        return blue * blue + green * green + red * red;
    };
    DWORD best = 0;
    for (DWORD i = 1; i < UsableColors(dib); ++i)
        if (distance(i) < distance(best))
            best = i;
    return static_cast<BYTE>(best);
}

// Where an image of one length lies on a canvas of another, and how much of it is seen.
struct Placement {
    LONG at;    // on the canvas
    LONG from;  // in the image
    LONG count; // pixels, 0 or more
};

// third: 0 begins at the canvas's beginning, 1 lies in the middle, 2 ends at its end.
Placement PlaceOnCanvas(LONG image, LONG canvas, int third)
{
    const LONG spare = canvas - image;
    const LONG offset = third == 0 ? 0 : third == 1 ? spare / 2 : spare;
    const LONG at = std::max(offset, 0L);
    const LONG from = std::max(-offset, 0L);
    return {at, from, std::min(image - from, canvas - at)};
}

VOwnedGlobal OnCanvas(const VDibView& source, LONG cx, LONG cy, int position)
{
    const WORD bitCount = source.BitCount();
    const size_t pixelBytes = UnpackedBytes(bitCount);
    const Placement across = PlaceOnCanvas(source.Width(), cx, position % 3);
    const Placement down = PlaceOnCanvas(source.Height(), cy, position / 3);
    VOwnedGlobal result = NewDibLike(source, cx, cy);
    const VLockedDib target(result.Get());
    if (!target)
        return {};

    const BYTE white = bitCount <= kMaxIndexedBits ? WhiteIndex(source) : BYTE{0xFF};
    std::vector<BYTE> blank(static_cast<size_t>(cx) * pixelBytes, white);
    if (bitCount == 16) // 5 bits per channel; the highest bit means nothing
        for (size_t i = 1; i < blank.size(); i += 2)
            blank[i] = 0x7F;
    std::vector<BYTE> line = blank;
    std::vector<BYTE> pixels(static_cast<size_t>(source.Width()) * pixelBytes);
    for (LONG y = 0; y < cy; ++y) {
        const bool seen = y >= down.at && y < down.at + down.count;
        if (seen) {
            UnpackPixels(source.Row(y - down.at + down.from), bitCount, static_cast<size_t>(source.Width()),
                         pixels.data());
            std::memcpy(line.data() + static_cast<size_t>(across.at) * pixelBytes,
                        pixels.data() + static_cast<size_t>(across.from) * pixelBytes,
                        static_cast<size_t>(across.count) * pixelBytes);
        }
        PackPixels(seen ? line.data() : blank.data(), bitCount, static_cast<size_t>(cx), target.Row(y));
    }
    return result;
}

// With the resolutions of the two directions exchanged.
VOwnedGlobal TurnedSideways(HGLOBAL hDib, bool clockwise)
{
    return ProcessDib(hDib, [clockwise](const VDibView& source) {
        VOwnedGlobal result = Turned(source, clockwise);
        if (const VLockedDib target(result.Get()); target) {
            auto* const header = reinterpret_cast<BITMAPINFOHEADER*>(target.Block());
            std::swap(header->biXPelsPerMeter, header->biYPelsPerMeter);
        }
        return result;
    });
}

VOwnedGlobal MirroredDib(HGLOBAL hDib, bool horizontally, bool vertically)
{
    return ProcessDib(hDib,
                      [=](const VDibView& source) { return Mirrored(source, horizontally, vertically); });
}

} // namespace

int CDib::Rotate90()
{
    return ReplaceDib(TurnedSideways(m_hDib, true).Release());
}

int CDib::Rotate180()
{
    return ReplaceDib(MirroredDib(m_hDib, true, true).Release());
}

int CDib::Rotate270()
{
    return ReplaceDib(TurnedSideways(m_hDib, false).Release());
}

int CDib::FlipHorz()
{
    return ReplaceDib(MirroredDib(m_hDib, true, false).Release());
}

int CDib::FlipVert()
{
    return ReplaceDib(MirroredDib(m_hDib, false, true).Release());
}

int CDib::ChangeCanvasSize(int cx, int cy, int position)
{
    if (cx <= 0 || cy <= 0 || position < CanvasTopLeft || position > CanvasBottomRight)
        return FALSE;
    return ReplaceDib(ProcessDib(m_hDib, [=](const VDibView& source) {
                          return OnCanvas(source, cx, cy, position);
                      }).Release());
}
