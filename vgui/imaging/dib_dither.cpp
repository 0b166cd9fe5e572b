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

// A pixel's channel with what its left neighbour passed on is this much below 0 or above 255 at most.
constexpr int kMostCarried = 24;
constexpr int kValues = kMostCarried + 256 + kMostCarried;

constexpr int Clamped(int value)
{
    return std::clamp(value, 0, 255);
}

// What a channel's value adds to a pixel's index, and a quarter of the error that is made, rounded down.
struct ChannelStep {
    BYTE index;
    signed char error;
};
// Begins at the value -kMostCarried; values beyond a channel's count as the nearest one.
using ChannelTable = std::array<ChannelStep, kValues>;

template <class Step>
constexpr ChannelTable MakeTable(Step step)
{
    ChannelTable table = {};
    for (int i = 0; i < kValues; ++i)
        table[i] = step(Clamped(i - kMostCarried));
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

constexpr bool HasRoom(const ChannelTable& table)
{
    return std::ranges::all_of(table, [](const ChannelStep& step) {
        return 2 * step.error >= -kMostCarried && 2 * step.error <= kMostCarried;
    });
}
static_assert(HasRoom(kBlue) && HasRoom(kEighthsTable<4>));

// One channel of a row: the pixel's index is what its channels add up to.
class ChannelDither
{
public:
    explicit ChannelDither(const ChannelTable& table) : m_steps(table.data() + kMostCarried) {}

    // Passes on half of the error to the right neighbour, and a quarter to the pixel of the next row.
    BYTE operator()(BYTE current, BYTE& next)
    {
        const ChannelStep step = m_steps[current + 2 * m_error];
        m_error = step.error;
        next = static_cast<BYTE>(Clamped(next + step.error));
        return step.index;
    }

private:
    const ChannelStep* m_steps; // by value
    int m_error = 0;
};

// Turns a row of pixels into indices. On purpose nothing of an error goes diagonally.
void DitherRow(const BYTE* current, BYTE* next, LONG width, BYTE* indices)
{
    ChannelDither blue(kBlue);
    ChannelDither green(kEighthsTable<4>);
    ChannelDither red(kEighthsTable<32>);
    for (LONG x = 0; x < width; ++x, current += 3, next += 3)
        indices[x] = static_cast<BYTE>(blue(current[0], next[0]) + green(current[1], next[1]) +
                                       red(current[2], next[2]));
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

// Replaces the dither colours by those that a palette screen can show; others show them all.
bool MatchColors(const VDibView& dib)
{
    const VOwnedScreenDC screen(::GetDC(nullptr));
    std::optional<VLogPalette> system = SystemIdentityPalette(screen.Get(), nullptr);
    if (!system)
        return true;
    VLogPalette& colors = *system;
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
