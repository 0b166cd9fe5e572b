// Drawing the DIB object through a dithered copy.
#include "tests/imaging/dib_samples.h"
#include "tests/support/pixels.h"

#include <algorithm>
#include <set>

namespace
{

using samples::Bytes;
using samples::PackedDib;
using support::DibSurface;

constexpr LONG kWidth = 29;
constexpr LONG kHeight = 17;

// The colours of a palette screen, none for another one.
std::set<COLORREF> SystemColors()
{
    const CWindowDC screen(nullptr);
    if ((screen.GetDeviceCaps(RASTERCAPS) & RC_PALETTE) == 0)
        return {};
    PALETTEENTRY entries[256] = {};
    const UINT count = ::GetSystemPaletteEntries(screen.m_hDC, 0, 256, entries);
    std::set<COLORREF> colors;
    for (UINT i = 0; i < count; ++i)
        colors.insert(RGB(entries[i].peRed, entries[i].peGreen, entries[i].peBlue));
    return colors;
}

// The dithered picture by the definition, pixel by pixel, rows from the bottom one up.
class Dithered
{
public:
    explicit Dithered(const CDib& dib)
    {
        struct Pixel {
            int channels[3]; // blue, green, red
        };
        const LONG rowBytes = dib.GetWidthBytes();
        const BYTE* const bits = dib.GetBitsPtr();
        std::vector<Pixel> pixels(kWidth * kHeight);
        for (LONG row = 0; row < kHeight; ++row)
            for (LONG x = 0; x < kWidth; ++x)
                for (int i = 0; i < 3; ++i)
                    pixels[row * kWidth + x].channels[i] = bits[row * rowBytes + x * 3 + i];

        for (LONG row = 0; row < kHeight; ++row) {
            for (LONG x = 0; x < kWidth; ++x) {
                const auto [blue, green, red] = pixels[row * kWidth + x].channels;
                const int index = blue / 85 + (blue % 85 > 43 ? 1 : 0) + (red & 0xE0) + (green >> 5) * 4;
                m_indices.push_back(static_cast<BYTE>(index));
                const int entry[] = {(index & 3) * 85, Eighth(index >> 2 & 7), Eighth(index >> 5)};
                for (int i = 0; i < 3; ++i) {
                    const int error = (pixels[row * kWidth + x].channels[i] - entry[i]) >> 2;
                    const auto receive = [&](LONG toX, LONG toRow, int amount) {
                        if (toX >= kWidth || toRow >= kHeight)
                            return;
                        int& channel = pixels[toRow * kWidth + toX].channels[i];
                        channel = std::clamp(channel + amount, 0, 255);
                    };
                    receive(x, row + 1, error);
                    receive(x + 1, row, 2 * error);
                }
            }
        }
    }

    // Counted from the top row.
    [[nodiscard]] COLORREF Color(int x, int y) const
    {
        const int index = m_indices[(kHeight - 1 - y) * kWidth + x];
        return RGB(Eighth(index >> 5), Eighth(index >> 2 & 7), (index & 3) * 85);
    }

private:
    static int Eighth(int level) { return (level * 255 * 2 + 7) / 14; }

    std::vector<BYTE> m_indices;
};

class DibDither : public samples::DibFixture
{
protected:
    void Fill(WORD bitCount) { DibFixture::Fill({.bitCount = bitCount, .width = kWidth, .height = kHeight}); }
};

const CRect kWhole(0, 0, kWidth, kHeight);

} // namespace

TEST_F(DibDither, DrawsTheExactDither)
{
    Fill(24);
    const Dithered wanted(m_dib);
    DibSurface surface(kWidth, kHeight);
    surface.DC().SetStretchBltMode(BLACKONWHITE);
    const HGDIOBJ palette = ::GetCurrentObject(surface.DC().m_hDC, OBJ_PAL);
    // Whatever the raster operation, the picture is copied.
    ASSERT_TRUE(m_dib.DitherDisplay(&surface.DC(), kWhole, kWhole, SRCINVERT));
    EXPECT_EQ(surface.DC().GetStretchBltMode(), BLACKONWHITE);
    EXPECT_EQ(::GetCurrentObject(surface.DC().m_hDC, OBJ_PAL), palette);
    const std::set<COLORREF> systemColors = SystemColors();
    if (!systemColors.empty()) {
        // The dither's colours are matched to those of the screen.
        for (int i = 0; i < kWidth * kHeight; ++i)
            ASSERT_TRUE(systemColors.contains(surface.Pixel(i % kWidth, i / kWidth))) << i;
        return;
    }
    support::ExpectPixels(surface, [&](int x, int y) { return wanted.Color(x, y); });

    // A part, twice as large: no other pixels and none in between.
    const CRect part(3, 2, 11, 9);
    surface.Fill(DibSurface::kBackground);
    ASSERT_TRUE(m_dib.DitherDisplay(&surface.DC(), CRect(CPoint(1, 1), CSize(16, 14)), part, SRCCOPY));
    support::ExpectPixels(surface, [&](int x, int y) {
        const CPoint from(part.left + (x - 1) / 2, part.top + (y - 1) / 2);
        return CRect(1, 1, 17, 15).PtInRect(CPoint(x, y)) ? wanted.Color(from.x, from.y)
                                                          : DibSurface::kBackground;
    });
}

TEST_F(DibDither, OtherTrueColorImagesAreDitheredLike24Bits)
{
    for (const WORD bitCount : {WORD{16}, WORD{32}}) {
        Fill(bitCount);
        DibSurface surface(kWidth, kHeight);
        ASSERT_TRUE(m_dib.DitherDisplay(&surface.DC(), kWhole, kWhole, SRCCOPY));
        ASSERT_TRUE(m_dib.ConvertFormat(24));
        DibSurface wanted(kWidth, kHeight);
        ASSERT_TRUE(m_dib.DitherDisplay(&wanted.DC(), kWhole, kWhole, SRCCOPY));
        EXPECT_TRUE(support::AreasEqual(surface, surface.Bounds(), wanted, {0, 0})) << bitCount;
    }
}

TEST_F(DibDither, IndexedImagesAreDrawnAsTheyAre)
{
    for (const WORD bitCount : {WORD{1}, WORD{4}, WORD{8}}) {
        Fill(bitCount);
        DibSurface surface(kWidth, kHeight);
        DibSurface wanted(kWidth, kHeight);
        EXPECT_TRUE(m_dib.DitherDisplay(&surface.DC(), kWhole, kWhole, SRCCOPY));
        EXPECT_TRUE(m_dib.Display(&wanted.DC(), 0, 0, SRCCOPY));
        EXPECT_TRUE(support::AreasEqual(surface, surface.Bounds(), wanted, {0, 0})) << bitCount;
    }
}

TEST_F(DibDither, OnlyTrueColorOnAPaletteDeviceAsksForIt)
{
    CWindowDC screen(nullptr);
    EXPECT_FALSE(m_dib.IsRequireDither(&screen));
    for (const WORD bitCount : {WORD{8}, WORD{16}, WORD{24}, WORD{32}}) {
        Fill(bitCount);
        EXPECT_EQ(m_dib.IsRequireDither(&screen), bitCount == 24 && screen.GetDeviceCaps(BITSPIXEL) < 9);
        EXPECT_FALSE(m_dib.IsRequireDither(nullptr));
    }
    DibSurface surface(kWidth, kHeight);
    EXPECT_FALSE(CDib().DitherDisplay(&surface.DC(), kWhole, kWhole, SRCCOPY));
    EXPECT_FALSE(m_dib.DitherDisplay(nullptr, kWhole, kWhole, SRCCOPY));
}
