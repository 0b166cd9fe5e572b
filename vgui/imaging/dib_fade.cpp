// Fading the DIB object in and out.
#include "vgui/imaging/dib_fade.h"

#include "vgui/imaging/dib.h"
#include "vgui/imaging/dib_block.h"
#include "vgui/imaging/dib_draw.h"
#include "vgui/imaging/dib_pause.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace
{

// One channel of 16-bit pixels, and its values in the current frame.
class WordChannel
{
public:
    WordChannel(DWORD mask, const VFadeLevels& levels) : m_mask(mask & 0xFFFF)
    {
        while (m_mask != 0 && (m_mask >> m_shift & 1) == 0)
            ++m_shift;
        const DWORD largest = m_mask >> m_shift;
        m_faded.resize(largest + 1);
        // The way to the range of a byte and back again gives the same value.
        for (DWORD value = 1; value <= largest; ++value) {
            const DWORD level = levels[static_cast<BYTE>((value * 255 + largest / 2) / largest)];
            m_faded[value] = static_cast<WORD>((level * largest + 127) / 255 << m_shift & m_mask);
        }
    }

    // The channel's bits of a pixel.
    [[nodiscard]] WORD operator()(WORD pixel) const { return m_faded[(pixel & m_mask) >> m_shift]; }

private:
    DWORD m_mask;
    int m_shift = 0;
    std::vector<WORD> m_faded; // by value
};

// The mask of one of the channels red, green and blue.
DWORD ChannelMask(const VDibView& dib, DWORD channel)
{
    constexpr DWORD kUsualMasks[] = {0x7C00, 0x03E0, 0x001F};
    if (dib.Compression() != BI_BITFIELDS)
        return kUsualMasks[channel];
    const RGBQUAD entry = dib.Color(channel);
    DWORD mask = 0;
    std::memcpy(&mask, &entry, sizeof mask);
    return mask;
}

RGBQUAD Faded(RGBQUAD color, const VFadeLevels& levels)
{
    return {levels[color.rgbBlue], levels[color.rgbGreen], levels[color.rgbRed], color.rgbReserved};
}

void FadeColors(const VDibView& original, const VDibView& live, const VFadeLevels& levels)
{
    for (DWORD i = 0; i < kMaxDibColors; ++i)
        live.SetColor(i, Faded(original.Color(i), levels));
}

void FadeWords(const VDibView& original, const VDibView& live, const VFadeLevels& levels)
{
    const WordChannel red(ChannelMask(original, 0), levels);
    const WordChannel green(ChannelMask(original, 1), levels);
    const WordChannel blue(ChannelMask(original, 2), levels);
    for (LONG y = 0; y < original.Height(); ++y) {
        const BYTE* from = original.Row(y);
        BYTE* to = live.Row(y);
        for (LONG x = original.Width(); x > 0; --x, from += sizeof(WORD), to += sizeof(WORD)) {
            WORD pixel = 0;
            std::memcpy(&pixel, from, sizeof pixel);
            pixel = red(pixel) | green(pixel) | blue(pixel);
            std::memcpy(to, &pixel, sizeof pixel);
        }
    }
}

// For 24 and 32 bits. The fourth byte of a pixel is none of a colour.
template <size_t PixelBytes>
void FadeBytes(const VDibView& original, const VDibView& live, const VFadeLevels& levels)
{
    const size_t rowBytes = static_cast<size_t>(original.Width()) * PixelBytes;
    for (LONG y = 0; y < original.Height(); ++y) {
        const BYTE* const from = original.Row(y);
        BYTE* const to = live.Row(y);
        for (size_t i = 0; i < rowBytes; i += PixelBytes) {
            to[i] = levels[from[i]];
            to[i + 1] = levels[from[i + 1]];
            to[i + 2] = levels[from[i + 2]];
        }
    }
}

// Makes live, a copy of original, show the frame of the levels.
void FadeImage(const VDibView& original, const VDibView& live, const VFadeLevels& levels)
{
    switch (original.BitCount()) {
    case 16:
        FadeWords(original, live, levels);
        break;
    case 24:
        FadeBytes<3>(original, live, levels);
        break;
    case 32:
        FadeBytes<4>(original, live, levels);
        break;
    default:
        FadeColors(original, live, levels);
        break;
    }
    live.RestoreMasks(original);
}

// ---- Whether two frames look the same, told without making them

bool AreSameColors(const VDibView& original, const VFadeLevels& one, const VFadeLevels& other)
{
    const size_t entryBytes = original.HasCoreHeader() ? sizeof(RGBTRIPLE) : sizeof(RGBQUAD);
    const auto colors = std::min<DWORD>(PaletteSize(original.Block()) / entryBytes, kMaxDibColors);
    for (DWORD i = 0; i < colors; ++i) {
        const auto [blue, green, red, reserved] = original.Color(i);
        for (const BYTE value : {blue, green, red})
            if (one[value] != other[value])
                return false;
    }
    return true;
}

// Calls isSame(pixel) for the pixels, until it answers false. Whether it never did. Masks are no pixels.
template <size_t PixelBytes, class IsSame>
bool AllPixels(const VDibView& original, const IsSame& isSame)
{
    const BYTE* const masksEnd = original.Compression() == BI_BITFIELDS
                                     ? original.Block() + sizeof(BITMAPINFOHEADER) + kMaskBytes
                                     : original.Block();
    for (LONG y = 0; y < original.Height(); ++y) {
        const BYTE* pixel = original.Row(y);
        for (LONG x = original.Width(); x > 0; --x, pixel += PixelBytes)
            if (pixel >= masksEnd && !isSame(pixel))
                return false;
    }
    return true;
}

bool AreSameWords(const VDibView& original, const VFadeLevels& one, const VFadeLevels& other)
{
    for (DWORD channel = 0; channel < 3; ++channel) {
        const DWORD mask = ChannelMask(original, channel);
        const auto isSame = [ones = WordChannel(mask, one),
                             others = WordChannel(mask, other)](const BYTE* at) {
            WORD pixel = 0;
            std::memcpy(&pixel, at, sizeof pixel);
            return ones(pixel) == others(pixel);
        };
        if (!AllPixels<sizeof(WORD)>(original, isSame))
            return false;
    }
    return true;
}

template <size_t PixelBytes>
bool AreSameBytes(const VDibView& original, const VFadeLevels& one, const VFadeLevels& other)
{
    return AllPixels<PixelBytes>(original, [&](const BYTE* pixel) {
        return one[pixel[0]] == other[pixel[0]] && one[pixel[1]] == other[pixel[1]] &&
               one[pixel[2]] == other[pixel[2]];
    });
}

bool AreSameFrames(const VDibView& original, const VFadeLevels& one, const VFadeLevels& other)
{
    if (one == other)
        return true;
    switch (original.BitCount()) {
    case 16:
        return AreSameWords(original, one, other);
    case 24:
        return AreSameBytes<3>(original, one, other);
    case 32:
        return AreSameBytes<4>(original, one, other);
    default:
        return AreSameColors(original, one, other);
    }
}

// A copy of a block, locked.
class CopiedDib
{
public:
    explicit CopiedDib(HGLOBAL hDib) : m_block(DuplicateDib(hDib)), m_view(m_block.Get()) {}
    [[nodiscard]] const VDibView& View() const { return m_view; }

private:
    VOwnedGlobal m_block;
    VLockedDib m_view;
};

int Fade(CDib& dib, VFadeLevels::Kind kind, CDC* pDC, int x, int y, int steps, DWORD delay)
{
    if (!IsUsable(pDC) || dib.GetBitmap() == nullptr)
        return FALSE;
    const VLockedDib live(dib.GetHandle());
    const CopiedDib original(dib.GetHandle());
    if (!live || !original.View())
        return FALSE;
    // One step leads from the beginning to the end.
    VFadeLevels ended(kind, 1);
    ended.Advance();

    VFadeLevels levels(kind, steps);
    const auto takeFrame = [&] {
        FadeImage(original.View(), live, levels);
        dib.BuildPalette();
        return dib.BuildBitmap() != FALSE;
    };
    // A fade-out begins with whatever the bitmap shows.
    bool isShown = kind == VFadeLevels::Kind::Out || takeFrame();
    if (isShown)
        dib.Display(pDC, x, y, SRCCOPY);
    do {
        levels.Advance();
        isShown = isShown && takeFrame();
        if (isShown)
            dib.Display(pDC, x, y, SRCCOPY);
        PauseTransition(delay);
    } while (isShown && !AreSameFrames(original.View(), levels, ended));
    // Palette and bitmap keep the last frame; hosts rely on it.
    std::memcpy(live.Block(), original.View().Block(), live.Length());
    return isShown;
}

} // namespace

int CDib::DisplayFadeIn(CDC* pDC, int x, int y, int steps, DWORD delay)
{
    return Fade(*this, VFadeLevels::Kind::In, pDC, x, y, steps, delay);
}

int CDib::DisplayFadeOut(CDC* pDC, int x, int y, int steps, DWORD delay)
{
    return Fade(*this, VFadeLevels::Kind::Out, pDC, x, y, steps, delay);
}
