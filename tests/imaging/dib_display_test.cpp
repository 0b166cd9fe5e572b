// The DIB object on a device context.
#include "tests/imaging/dib_samples.h"
#include "tests/imaging/guarded_library.h"
#include "tests/support/pixels.h"
#include "tests/support/recorder.h"
#include "vgui/foundation/gdi_scope.h"

#include <climits>

namespace
{

using samples::Bytes;
using samples::PackedDib;
using samples::ShownColor;
using support::DibSurface;

const CSize kSize(13, 7);
const CPoint kAt(4, 3);
const CRect kWhole({0, 0}, kSize);
const CRect kArea(kAt, kSize);

class DibDisplay : public samples::DibFixture
{
protected:
    DibSurface m_surface{40, 30};
};

bool IsPaletteScreen()
{
    const CWindowDC screen(nullptr);
    return (screen.GetDeviceCaps(RASTERCAPS) & RC_PALETTE) != 0;
}

} // namespace

TEST_F(DibDisplay, CopiesTheImageOrAPartAtEveryDepth)
{
    for (const WORD bitCount : {WORD{1}, WORD{4}, WORD{8}, WORD{16}, WORD{24}, WORD{32}}) {
        SCOPED_TRACE(bitCount);
        Fill({.bitCount = bitCount});
        m_surface.Fill(DibSurface::kBackground);
        ASSERT_TRUE(m_dib.Display(&m_surface.DC(), kAt.x, kAt.y, SRCCOPY));
        if (!m_dib.IsRequireDither(&m_surface.DC()))
            support::ExpectPixels(m_surface, [&](int x, int y) {
                return kArea.PtInRect(CPoint(x, y)) ? Shown(CPoint(x, y) - kAt) : DibSurface::kBackground;
            });
        m_surface.Fill(DibSurface::kBackground);
        ASSERT_TRUE(m_dib.Display(&m_surface.DC(), 10, 12, 5, 4, 3, 2, NOTSRCCOPY));
        if (!m_dib.IsRequireDither(&m_surface.DC()))
            support::ExpectPixels(m_surface, [&](int x, int y) {
                return CRect(10, 12, 15, 16).PtInRect(CPoint(x, y)) ? ~Shown({x - 7, y - 10}) & 0xFFFFFF
                                                                    : DibSurface::kBackground;
            });
    }
}

TEST_F(DibDisplay, StretchesWithTheContextsOwnMode)
{
    Fill({.bitCount = 8});
    m_surface.DC().SetStretchBltMode(COLORONCOLOR);
    const CRect dest(2, 1, 28, 15);
    const auto isDoubled = [&](int x, int y) {
        return dest.PtInRect(CPoint(x, y)) ? Shown({(x - 2) / 2, (y - 1) / 2}) : DibSurface::kBackground;
    };
    ASSERT_TRUE(m_dib.Display(&m_surface.DC(), dest, kWhole, SRCCOPY));
    support::ExpectPixels(m_surface, isDoubled);
    m_surface.Fill(DibSurface::kBackground);
    ASSERT_TRUE(m_dib.Display(&m_surface.DC(), 2, 1, 26, 14, 0, 0, kSize.cx, kSize.cy, SRCCOPY));
    support::ExpectPixels(m_surface, isDoubled);
    EXPECT_EQ(m_surface.DC().GetStretchBltMode(), COLORONCOLOR);
}

TEST_F(DibDisplay, FillsRectanglesAndWindowsWithTheBitmap)
{
    Fill({.bitCount = 8});
    m_surface.DC().SetStretchBltMode(COLORONCOLOR);
    ASSERT_TRUE(m_dib.Display(&m_surface.DC(), kWhole));
    support::ExpectPixels(m_surface, kWhole, [&](int x, int y) { return Shown(x, y); });

    support::HostWnd window;
    ASSERT_TRUE(window.Open(kSize));
    EXPECT_TRUE(m_dib.Display(&window));
    const COLORREF wanted = Shown(5, 5);
    EXPECT_TRUE(IsPaletteScreen() || support::ClientPixel(window, {5, 5}) == wanted);
    EXPECT_FALSE(CDib().Display(&window));
    EXPECT_FALSE(m_dib.Display(static_cast<CWnd*>(nullptr)));
}

TEST_F(DibDisplay, CoordinatesThatGdiDoesNotHaveDrawNothing)
{
    CDC* const pDC = &m_surface.DC();
    for (const WORD bitCount : {WORD{8}, WORD{24}}) {
        Fill({.bitCount = bitCount});
        for (const LONG beyond : {LONG{0x8000000}, LONG{0x40000000}, LONG_MAX, LONG_MIN}) {
            SCOPED_TRACE(beyond);
            for (const CRect& rect :
                 {CRect(beyond, 0, 13, 7), CRect(0, 0, beyond, 7), CRect(0, 0, 13, beyond)}) {
                EXPECT_FALSE(m_dib.Display(pDC, rect, kWhole, SRCCOPY));
                EXPECT_FALSE(m_dib.Display(pDC, kWhole, rect, SRCCOPY));
                EXPECT_FALSE(m_dib.Display(pDC, rect));
                EXPECT_FALSE(m_dib.DitherDisplay(pDC, rect, kWhole, SRCCOPY));
                EXPECT_FALSE(m_dib.DitherDisplay(pDC, kWhole, rect, SRCCOPY));
            }
            EXPECT_FALSE(m_dib.Display(pDC, 1, 1, beyond, 7, 1, 1, 13, beyond, SRCCOPY));
        }
    }
    EXPECT_EQ(m_surface.Count(DibSurface::kBackground), 40 * 30);
}

TEST_F(DibDisplay, AnEmptyObjectOrNoContextDrawsNothing)
{
    CDib empty;
    CDC noDC;
    EXPECT_FALSE(empty.Display(&m_surface.DC(), 0, 0, SRCCOPY));
    EXPECT_FALSE(empty.Display(&m_surface.DC(), 0, 0, 5, 5, 0, 0, SRCCOPY));
    EXPECT_FALSE(empty.Display(&m_surface.DC(), kWhole, kWhole, SRCCOPY));
    EXPECT_FALSE(empty.Display(&m_surface.DC(), kWhole));
    EXPECT_FALSE(empty.DisplayTransparent(&m_surface.DC(), 0, 0, 0));
    EXPECT_FALSE(empty.DisplayPalette(&m_surface.DC(), kWhole));
    EXPECT_EQ(empty.BeginPaint(nullptr), nullptr);
    Fill({.bitCount = 24});
    EXPECT_FALSE(m_dib.DisplayPalette(&m_surface.DC(), kWhole)) << "no colour table";
    for (CDC* const pDC : {static_cast<CDC*>(nullptr), &noDC}) {
        EXPECT_FALSE(m_dib.Display(pDC, 0, 0, SRCCOPY));
        EXPECT_FALSE(m_dib.Display(pDC, kWhole, kWhole, SRCCOPY));
        EXPECT_FALSE(m_dib.Display(pDC, kWhole));
        EXPECT_FALSE(m_dib.DisplayTransparent(pDC, 0, 0, 0));
        EXPECT_FALSE(m_dib.DisplayPalette(pDC, kWhole));
    }
    EXPECT_EQ(m_surface.Count(DibSurface::kBackground), 40 * 30);
}

TEST_F(DibDisplay, TransparentLeavesOutTheKeyColour)
{
    for (const WORD bitCount : {WORD{1}, WORD{4}, WORD{8}, WORD{24}, WORD{32}}) {
        SCOPED_TRACE(bitCount);
        Fill({.bitCount = bitCount});
        const Bytes block = samples::BlockBytes(m_dib.GetHandle());
        const COLORREF key = Shown(2, 3);
        m_surface.Fill(DibSurface::kBackground);
        ASSERT_TRUE(m_dib.DisplayTransparent(&m_surface.DC(), kAt.x, kAt.y, key));
        if (!IsPaletteScreen())
            support::ExpectPixels(m_surface, [&](int x, int y) {
                if (!kArea.PtInRect(CPoint(x, y)))
                    return DibSurface::kBackground;
                const COLORREF color = Shown(CPoint(x, y) - kAt);
                return color == key ? DibSurface::kBackground : color;
            });
        EXPECT_EQ(samples::BlockBytes(m_dib.GetHandle()), block);
        EXPECT_EQ(Shown(2, 3), key) << "the image stays as it was";
    }
    ASSERT_TRUE(m_dib.Create(DWORD{4}, DWORD{4}, WORD{24}));
    ASSERT_TRUE(m_dib.DisplayTransparent(&m_surface.DC(), kAt.x, kAt.y, CLR_INVALID));
    EXPECT_EQ(m_surface.Pixel(kAt), RGB(0, 0, 0)) << "black is not the key when there is none";
}

TEST_F(DibDisplay, PaletteSwatchesStandInASquare)
{
    const CRect rect(3, 2, 3 + 4 * 5 + 3, 2 + 4 * 6 + 1);
    const auto swatch = [&](int i) {
        PALETTEENTRY entry = {};
        m_dib.GetPalette()->GetPaletteEntries(i, 1, &entry);
        return RGB(entry.peRed, entry.peGreen, entry.peBlue);
    };
    Fill({.bitCount = 4});
    m_surface.DC().SelectStockObject(BLACK_PEN);
    ASSERT_TRUE(m_dib.DisplayPalette(&m_surface.DC(), rect));
    support::ExpectPixels(m_surface, [&](int x, int y) {
        const CPoint cell((x - 3) / 5, (y - 2) / 6);
        if (x < 3 || y < 2 || cell.x > 3 || cell.y > 3)
            return DibSurface::kBackground;
        const CPoint inner((x - 3) % 5, (y - 2) % 6);
        const bool isEdge = inner.x == 0 || inner.y == 0 || inner.x == 4 || inner.y == 5;
        return isEdge ? RGB(0, 0, 0) : swatch(cell.y * 4 + cell.x);
    });

    // 7 entries make two columns; the last rows lie below the rectangle.
    Fill({.bitCount = 8, .clrUsed = 7});
    m_surface.Fill(DibSurface::kBackground);
    ASSERT_TRUE(m_dib.DisplayPalette(&m_surface.DC(), CRect(0, 0, 10, 10)));
    for (int i = 0; i < 7; ++i)
        EXPECT_EQ(m_surface.Pixel(i % 2 * 5 + 2, i / 2 * 5 + 2), swatch(i)) << i;
    EXPECT_EQ(m_surface.Pixel(7, 17), DibSurface::kBackground);
}

TEST_F(DibDisplay, DrawingBetweenBeginAndEndPaintGetsIntoTheImage)
{
    m_dib.EndPaint(); // without a beginning nothing happens
    for (const WORD bitCount : {WORD{1}, WORD{4}, WORD{8}, WORD{16}, WORD{24}, WORD{32}}) {
        SCOPED_TRACE(bitCount);
        Fill({.bitCount = bitCount});
        const COLORREF kept = Shown(0, 0);
        const COLORREF drawn = bitCount <= 8 ? Shown(7, 3) : RGB(255, 0, 0);
        CDC* const pDC = m_dib.BeginPaint(bitCount == 8 ? &m_surface.DC() : nullptr);
        ASSERT_NE(pDC, nullptr);
        EXPECT_EQ(m_dib.BeginPaint(nullptr), pDC) << "one drawing at a time";
        pDC->FillSolidRect(CRect(2, 1, 6, 4), drawn);
        m_dib.EndPaint();
        m_dib.EndPaint();
        EXPECT_EQ(m_dib.GetBitCount(), bitCount);
        EXPECT_EQ(Shown(3, 2), drawn);
        EXPECT_EQ(Shown(0, 0), kept);
        EXPECT_TRUE(m_dib.BuildBitmap());
        EXPECT_EQ(Shown(3, 2), drawn) << "in the block";
    }
    // A drawing that is never ended must not leak.
    CDib open;
    Bytes bytes = PackedDib({});
    ASSERT_TRUE(open.Create(bytes.data()));
    EXPECT_NE(open.BeginPaint(nullptr), nullptr);
}

// What BeginPaint displaced has wrappers that live until the next idle time only.
TEST_F(DibDisplay, IdleProcessingDuringADrawingDoesNoHarm)
{
    const support::GuardedLibrary library; // keeps what is deleted out of reach
    ASSERT_TRUE(library.IsGuarded());
    CDib dib;
    Bytes bytes = PackedDib({.bitCount = 8});
    ASSERT_TRUE(dib.Create(bytes.data()));
    const COLORREF drawn = ShownColor(dib.GetBitmap(), 7, 3);
    CDC* const pDC = dib.BeginPaint(nullptr);
    ASSERT_NE(pDC, nullptr);
    for (LONG count = 0; AfxGetApp()->OnIdle(count); ++count) {
    }
    pDC->FillSolidRect(CRect(2, 1, 6, 4), drawn);
    dib.EndPaint();
    EXPECT_EQ(ShownColor(dib.GetBitmap(), 3, 2), drawn);
}
