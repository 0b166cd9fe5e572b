#include "vgui/imaging/dib_dither.h"

#include "vgui/imaging/dib_block.h"
#include "vgui/imaging/log_palette.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace
{

constexpr BYTE kEighths[] = {0, 36, 73, 109, 146, 182, 219, 255};
constexpr BYTE kThirds[] = {0, 85, 170, 255};

constexpr RGBQUAD DitherColor(DWORD index)
{
    return {kThirds[index & 3], kEighths[(index >> 2) & 7], kEighths[index >> 5], 0};
}

// What a channel's value adds to a pixel's index, and a quarter of the error that is made, rounded down.
struct ChannelStep {
    BYTE index;
    signed char error;
};
using ChannelTable = std::array<ChannelStep, 256>;

template <class Step>
constexpr ChannelTable MakeTable(Step step)
{
    ChannelTable table = {};
    for (int value = 0; value < 256; ++value)
        table[value] = step(value);
    return table;
}

constexpr ChannelTable kBlue = MakeTable([](int value) {
    const int level = value / 85 + (value % 85 > 43 ? 1 : 0);
    return ChannelStep{static_cast<BYTE>(level), static_cast<signed char>((value - kThirds[level]) >> 2)};
});
// Green and red have 8 levels, at different places of the index.
template <int Unit>
constexpr ChannelTable kEighthsTable = MakeTable([](int value) {
    const int level = value >> 5;
    return ChannelStep{static_cast<BYTE>(level * Unit),
                       static_cast<signed char>((value - kEighths[level]) >> 2)};
});
// In the order of the bytes of a pixel: blue, green, red.
constexpr ChannelTable kSteps[] = {kBlue, kEighthsTable<4>, kEighthsTable<32>};

constexpr BYTE Clamped(int value)
{
    return static_cast<BYTE>(std::clamp(value, 0, 255));
}

// Turns a row of pixels into indices. Half of each pixel's error goes to its right neighbour and a quarter to
// the pixel of the next row; on purpose none goes diagonally.
void DitherRow(const BYTE* current, BYTE* next, LONG width, BYTE* indices)
{
    int carried[3] = {};
    for (LONG x = 0; x < width; ++x, current += 3, next += 3) {
        int index = 0;
        for (int channel = 0; channel < 3; ++channel) {
            const ChannelStep step = kSteps[channel][Clamped(current[channel] + carried[channel])];
            index += step.index;
            next[channel] = Clamped(next[channel] + step.error);
            carried[channel] = 2 * step.error;
        }
        indices[x] = static_cast<BYTE>(index);
    }
}

void DitherRows(const VDibView& source, const VDibView& target)
{
    const LONG width = source.Width();
    const size_t bytes = static_cast<size_t>(width) * 3;
    std::vector<BYTE> current(bytes);
    std::vector<BYTE> next(bytes);
    // In the order in which they are stored, which begins with the bottom row. What the last row passes on is
    // lost.
    LONG y = source.Height() - 1;
    std::memcpy(next.data(), source.Row(y), bytes);
    for (; y >= 0; --y) {
        current.swap(next);
        if (y > 0)
            std::memcpy(next.data(), source.Row(y - 1), bytes);
        DitherRow(current.data(), next.data(), width, target.Row(y));
    }
}

// The system palette on a palette screen, else the dither colours.
VLogPalette DisplayPalette()
{
    const VOwnedScreenDC screen(::GetDC(nullptr));
    if (std::optional<VLogPalette> system = SystemIdentityPalette(screen.Get(), nullptr))
        return *std::move(system);
    VLogPalette palette(kMaxDibColors);
    for (DWORD i = 0; i < kMaxDibColors; ++i) {
        const RGBQUAD color = DitherColor(i);
        palette.Entries()[i] = {color.rgbRed, color.rgbGreen, color.rgbBlue, 0};
    }
    return palette;
}

// Replaces the dither colours by those that the display can show.
bool MatchColors(const VDibView& dib)
{
    VLogPalette colors = DisplayPalette();
    const VOwnedPalette palette = colors.Create();
    if (!palette)
        return false;
    BYTE nearest[kMaxDibColors];
    for (DWORD i = 0; i < kMaxDibColors; ++i) {
        const RGBQUAD color = dib.Color(i);
        const COLORREF wanted = RGB(color.rgbRed, color.rgbGreen, color.rgbBlue);
        nearest[i] = static_cast<BYTE>(::GetNearestPaletteIndex(palette.Get(), wanted));
    }
    BYTE* const bits = dib.Bits();
    std::transform(bits, bits + dib.ImageBytes(), bits, [&nearest](BYTE index) { return nearest[index]; });
    for (DWORD i = 0; i < colors.Count(); ++i) {
        const PALETTEENTRY& entry = colors.Entries()[i];
        dib.SetColor(i, {entry.peBlue, entry.peGreen, entry.peRed, 0});
    }
    return true;
}

VOwnedGlobal DitherTrueColor(const VDibView& source)
{
    BITMAPINFOHEADER header = DIBHeader(source.Width(), source.Height(), 8);
    header.biClrUsed = kMaxDibColors;
    VOwnedGlobal block = NewDib(header);
    const VLockedDib target(block.Get());
    if (!target)
        return {};
    for (DWORD i = 0; i < kMaxDibColors; ++i)
        target.SetColor(i, DitherColor(i));
    DitherRows(source, target);
    return MatchColors(target) ? std::move(block) : VOwnedGlobal();
}

} // namespace

VOwnedGlobal DitherDib(HGLOBAL hDib)
{
    const VLockedDib dib(hDib);
    if (!dib)
        return {};
    if (dib.BitCount() <= kMaxIndexedBits)
        return DuplicateDib(hDib);
    const CWaitCursor wait;
    if (dib.BitCount() == 24)
        return DitherTrueColor(dib);
    const VOwnedGlobal converted = ConvertDIBFormat(hDib, 24);
    const VLockedDib trueColor(converted.Get());
    return trueColor ? DitherTrueColor(trueColor) : VOwnedGlobal();
}
