// Fading the DIB object in and out.
#include "vgui/imaging/dib_fade.h"

#include "tests/imaging/dib_samples.h"
#include "tests/support/pixels.h"

#include <climits>
#include <numeric>

namespace
{

using samples::BlockBytes;
using samples::Bytes;
using samples::DibSpec;
using samples::PackedDib;
using support::DibSurface;

const CPoint kAt(4, 3);
constexpr COLORREF kBlack = RGB(0, 0, 0);

class DibFade : public samples::DibFixture
{
protected:
    // The image at kAt on a background, as a plain display draws it.
    [[nodiscard]] DibSurface ShownImage()
    {
        DibSurface surface(30, 20);
        EXPECT_TRUE(m_dib.Display(&surface.DC(), kAt.x, kAt.y, SRCCOPY));
        return surface;
    }
};

const DibSpec kSpecs[] = {
    {.bitCount = 1},
    {.bitCount = 4},
    {.bitCount = 8},
    {.bitCount = 8, .clrUsed = 5},
    {.bitCount = 8, .hasCoreHeader = true},
    {.bitCount = 16},
    {.bitCount = 24},
    {.bitCount = 32},
};

// The rule for one channel: the next value on the way from current to target.
int NextValue(int current, int target, int divisor)
{
    divisor = std::max(divisor, 1);
    int increment = (target - current) / divisor;
    if ((target - current) % divisor != 0)
        increment += target > current ? 1 : -1;
    return current + increment;
}

// How often draw(dc) draws a picture.
template <class Draw>
int CountPictures(Draw draw)
{
    CDC dc;
    dc.Attach(::CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr));
    EXPECT_TRUE(draw(&dc));
    const HENHMETAFILE record = ::CloseEnhMetaFile(dc.Detach());
    int count = 0;
    const auto look = [](HDC, HANDLETABLE*, const ENHMETARECORD* entry, int, LPARAM counter) {
        if (entry->iType == EMR_BITBLT || entry->iType == EMR_STRETCHDIBITS)
            ++*reinterpret_cast<int*>(counter);
        return 1;
    };
    ::EnumEnhMetaFile(nullptr, record, look, &count, nullptr);
    ::DeleteEnhMetaFile(record);
    return count;
}

} // namespace

TEST_F(DibFade, LevelsFollowTheRuleOfTheShrinkingDivisor)
{
    for (const int steps : {INT_MIN, 0, 1, 2, 3, 7, 16, 300, INT_MAX}) {
        VFadeLevels in(VFadeLevels::Kind::In, steps);
        VFadeLevels out(VFadeLevels::Kind::Out, steps);
        int rising[256] = {};
        int falling[256] = {};
        std::iota(std::begin(falling), std::end(falling), 0);
        // Every frame brings at least one level, so no fade takes more than 255.
        for (int frame = 0; frame < 256; ++frame) {
            for (int value = 0; value < 256; ++value) {
                ASSERT_EQ(in[static_cast<BYTE>(value)], rising[value]) << steps << ", " << frame;
                ASSERT_EQ(out[static_cast<BYTE>(value)], falling[value]) << steps << ", " << frame;
                rising[value] = NextValue(rising[value], value, std::max(steps, 1) - frame);
                falling[value] = NextValue(falling[value], 0, std::max(steps, 1) - frame);
            }
            in.Advance();
            out.Advance();
        }
        EXPECT_EQ(in[255], 255);
        EXPECT_EQ(out[255], 0);
        EXPECT_EQ(in[1], 1);
    }
}

TEST_F(DibFade, InEndsWithTheImageAndOutEndsBlack)
{
    const CRect area(kAt, CSize(13, 7));
    const auto isBlack = [area](int x, int y) {
        return area.PtInRect(CPoint(x, y)) ? kBlack : DibSurface::kBackground;
    };
    for (const DibSpec& spec : kSpecs) {
        for (const int steps : {0, 1, 3, 50}) {
            SCOPED_TRACE(testing::Message() << spec.bitCount << " bits, " << steps << " steps");
            Fill(spec);
            const Bytes block = BlockBytes(m_dib.GetHandle());
            const DibSurface wanted = ShownImage();
            DibSurface surface(30, 20);
            EXPECT_TRUE(m_dib.Display(20, &surface.DC(), kAt.x, kAt.y, steps, 0, NOTSRCCOPY));
            EXPECT_TRUE(support::AreasEqual(surface, surface.Bounds(), wanted, {0, 0}));
            EXPECT_EQ(BlockBytes(m_dib.GetHandle()), block);
            EXPECT_TRUE(support::AreasEqual(ShownImage(), surface.Bounds(), wanted, {0, 0}));

            EXPECT_TRUE(m_dib.Clear(20, &surface.DC(), kAt.x, kAt.y, steps, 0));
            EXPECT_TRUE(support::PixelsMatch(surface, isBlack));
            EXPECT_EQ(BlockBytes(m_dib.GetHandle()), block);
            // Bitmap and palette keep the last frame until the image changes. A dithered copy is made of the
            // block.
            EXPECT_TRUE(m_dib.IsRequireDither(&surface.DC()) || support::PixelsMatch(ShownImage(), isBlack));
            if (spec.bitCount <= 8) {
                PALETTEENTRY entry = {1, 1, 1, 0};
                m_dib.GetPalette()->GetPaletteEntries(1, 1, &entry);
                EXPECT_EQ(RGB(entry.peRed, entry.peGreen, entry.peBlue), kBlack);
            }
            EXPECT_TRUE(m_dib.BuildBitmap());
            EXPECT_NE(ShownImage().Count(kBlack), 13 * 7);
        }
    }
}

TEST_F(DibFade, EndsWithTheFrameThatLeavesNothingToChange)
{
    constexpr int kSteps = 20;
    for (const DibSpec& spec : kSpecs) {
        SCOPED_TRACE(testing::Message() << spec.bitCount << " bits");
        Fill(spec);
        const auto fadeIn = [this](CDC* dc) { return m_dib.Display(20, dc, 0, 0, kSteps, 0, SRCCOPY); };
        const auto fadeOut = [this](CDC* dc) { return m_dib.Clear(20, dc, 0, 0, kSteps, 0); };
        EXPECT_EQ(CountPictures(fadeIn), 1 + kSteps);
        EXPECT_EQ(CountPictures(fadeOut), 1 + kSteps);
        // Of a black image the beginning, and one frame.
        ASSERT_TRUE(m_dib.AdjustBrightness(-255));
        EXPECT_EQ(CountPictures(fadeIn), 2);
        EXPECT_EQ(CountPictures(fadeOut), 2);
    }
}

// The masks of such a block lie where the pixels do; a fade must not spoil them.
TEST_F(DibFade, MasksOfABitFieldImageSurvive)
{
    Bytes bytes = PackedDib({.bitCount = 16, .compression = BI_BITFIELDS});
    constexpr DWORD kMasks[] = {0xF800, 0x07E0, 0x001F};
    std::copy_n(reinterpret_cast<const BYTE*>(kMasks), sizeof kMasks,
                bytes.begin() + sizeof(BITMAPINFOHEADER));
    ASSERT_TRUE(m_dib.Create(bytes.data()));
    const Bytes block = BlockBytes(m_dib.GetHandle());
    const DibSurface wanted = ShownImage();
    DibSurface surface(30, 20);
    EXPECT_TRUE(m_dib.Clear(20, &surface.DC(), kAt.x, kAt.y, 2, 0));
    EXPECT_EQ(surface.Pixel(kAt + CSize(5, 2)), kBlack);
    EXPECT_TRUE(m_dib.Display(20, &surface.DC(), kAt.x, kAt.y, 2, 0, SRCCOPY));
    EXPECT_TRUE(support::AreasEqual(surface, surface.Bounds(), wanted, {0, 0}));
    EXPECT_EQ(BlockBytes(m_dib.GetHandle()), block);
}
