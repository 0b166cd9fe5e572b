#include "vgui/foundation/draw_helpers.h"

#include "tests/support/pixels.h"
#include "vgui/foundation/gui_manager.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace
{

using support::DibSurface;
using support::ExpectPixels;

constexpr COLORREF kBack = DibSurface::kBackground;
constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kRed = RGB(255, 0, 0);

// How far a pixel lies outside of the rectangle's outermost pixels: 0 on them, negative inside.
int RingOf(const CRect& rect, int x, int y)
{
    return std::max(
        {int(rect.left) - x, x - int(rect.right) + 1, int(rect.top) - y, y - int(rect.bottom) + 1});
}

// The colour number i of n in a gradient: channels have 8 more bits while they are interpolated.
COLORREF Blend(COLORREF from, COLORREF to, int i, int n)
{
    const auto channel = [i, n](int a, int b) { return ((a << 8) + (((b - a) << 8) * i) / n) >> 8; };
    return RGB(channel(GetRValue(from), GetRValue(to)), channel(GetGValue(from), GetGValue(to)),
               channel(GetBValue(from), GetBValue(to)));
}

// A two-ring frame: the colours of the top left and bottom right sides of the outer and the inner ring.
COLORREF FrameModel(const CRect& rect, int x, int y, COLORREF outerTL, COLORREF outerBR, COLORREF innerTL,
                    COLORREF innerBR)
{
    const int depth = -RingOf(rect, x, y);
    if (depth < 0 || depth > 1)
        return kBack;
    CRect ring(rect);
    ring.DeflateRect(depth, depth);
    const bool bottomRight = x == ring.right - 1 || y == ring.bottom - 1;
    if (depth == 0)
        return bottomRight ? outerBR : outerTL;
    return bottomRight ? innerBR : innerTL;
}

} // namespace

TEST(DrawHelpersColor, FadeClampsEachChannel)
{
    EXPECT_EQ(VGFadeColor(RGB(250, 10, 128), 20), RGB(255, 30, 148));
    EXPECT_EQ(VGFadeColor(RGB(250, 10, 128), -20), RGB(230, 0, 108));
    EXPECT_EQ(VGFadeColor(RGB(250, 10, 128), -10, 300, 1), RGB(240, 255, 129));
    EXPECT_EQ(VGFadeColor(RGB(1, 2, 3), INT_MAX), kWhite);
    EXPECT_EQ(VGFadeColor(RGB(1, 2, 3), INT_MIN), kBlack);
}

TEST(DrawHelpersColor, InvertChangesColorsOnly)
{
    EXPECT_EQ(VGInvertColor(RGB(0, 100, 255)), RGB(255, 155, 0));
    EXPECT_EQ(VGInvertColor(VGInvertColor(RGB(12, 34, 56))), RGB(12, 34, 56));
}

TEST(DrawHelpersGradient, DirectionZeroIsVerticalAndEveryOtherHorizontal)
{
    const CRect rect(3, 2, 19, 18);
    const COLORREF from = RGB(10, 200, 0);
    const COLORREF to = RGB(250, 40, 255);
    for (const int direction : {0, 1, -1, 7}) {
        const DibSurface surface(24, 24);
        VGGradientFillRect(&surface.DC(), rect, from, to, direction);
        ExpectPixels(surface, [&](int x, int y) {
            const int step = direction == 0 ? y - int(rect.top) : x - int(rect.left);
            return rect.PtInRect(CPoint(x, y)) ? Blend(from, to, step, 16) : kBack;
        });
    }
}

TEST(DrawHelpersGradient, VerticalBand)
{
    const CRect rect(2, 3, 22, 9);
    const COLORREF band = RGB(255, 128, 0);
    const COLORREF edges = RGB(0, 0, 200);
    for (const double ratio : {0.0, 0.26, 0.5, 1.0}) {
        const DibSurface surface(24, 12);
        VGGradientFillRectEx(&surface.DC(), rect, band, edges, 1, ratio);
        const int split = 2 + static_cast<int>(20 * ratio);
        ExpectPixels(surface, [&](int x, int y) {
            if (!rect.PtInRect(CPoint(x, y)))
                return kBack;
            return x < split ? Blend(edges, band, x - 2, split - 2)
                             : Blend(band, edges, x - split, 22 - split);
        });
    }
}

TEST(DrawHelpersGradient, HorizontalBandHasDifferentEdges)
{
    const CRect rect(2, 3, 10, 23);
    const COLORREF band = RGB(200, 100, 0);
    const COLORREF other = RGB(0, 201, 255);
    const DibSurface surface(12, 26);
    VGGradientFillRectEx(&surface.DC(), rect, band, other, 2, 0.25);
    // A quarter of the way, and three quarters, with channels cut to integers.
    const COLORREF topEdge = RGB(150, 125, 63);
    const COLORREF bottomEdge = RGB(50, 175, 191);
    ExpectPixels(surface, [&](int x, int y) {
        if (!rect.PtInRect(CPoint(x, y)))
            return kBack;
        return y < 8 ? Blend(topEdge, band, y - 3, 5) : Blend(band, bottomEdge, y - 8, 15);
    });
}

TEST(DrawHelpersGradient, HorizontalBandMixWrapsBeyondTheColors)
{
    // At 1.5 the top part reaches beyond the rectangle, and mixes beyond the second colour are masked.
    const DibSurface surface(8, 40);
    VGGradientFillRectEx(&surface.DC(), CRect(0, 0, 8, 20), RGB(0, 0, 0), RGB(200, 100, 10), 2, 1.5);
    EXPECT_EQ(surface.Pixel(0, 0), RGB(300 & 0xFF, 150, 15));
    EXPECT_EQ(surface.Pixel(0, 29), Blend(RGB(44, 150, 15), kBlack, 29, 30));
    EXPECT_EQ(surface.Pixel(0, 30), kBack);
}

TEST(DrawHelpersGradient, PyramidHasItsTipInTheCentre)
{
    const CRect rect(4, 4, 44, 24);
    const DibSurface surface(48, 28);
    VGGradientFillRectEx(&surface.DC(), rect, kWhite, RGB(0, 0, 255), 0, std::nan(""));
    EXPECT_EQ(surface.Pixel(24, 14), kWhite);
    // Half way from the centre to an edge, every direction has half of the red.
    for (const CPoint point : {CPoint(14, 14), CPoint(34, 14), CPoint(24, 9), CPoint(24, 19)})
        EXPECT_NEAR(GetRValue(surface.Pixel(point)), 128, 13) << point.x << "," << point.y;
    for (const CPoint point : {CPoint(4, 4), CPoint(43, 4), CPoint(4, 23), CPoint(43, 23)})
        EXPECT_LE(GetRValue(surface.Pixel(point)), 26) << point.x << "," << point.y;
    EXPECT_EQ(surface.Count(kBack, rect), 0);
    EXPECT_EQ(surface.Count(kBack), 48 * 28 - 40 * 20);
}

TEST(DrawHelpersFrame, BorderRunsThroughRightAndBottom)
{
    const DibSurface surface(14, 12);
    {
        const VPen pen(&surface.DC(), kRed);
        VGDrawBorder(&surface.DC(), CRect(2, 3, 9, 8));
    }
    ExpectPixels(surface, [](int x, int y) { return RingOf(CRect(2, 3, 10, 9), x, y) == 0 ? kRed : kBack; });
}

TEST(DrawHelpersFrame, ControlFrameFlatAndRaised)
{
    const CRect rect(2, 1, 16, 11);
    const COLORREF clr = RGB(47, 95, 179);
    const COLORREF faded = RGB(175, 223, 255);
    const int fade = VGM.Common.nCtrlFrameFade;

    const DibSurface flat(18, 13);
    VGDraw3dCtrlFrame(&flat.DC(), rect, clr, fade, 0);
    ExpectPixels(flat, [&](int x, int y) { return FrameModel(rect, x, y, clr, clr, kWhite, faded); });

    const DibSurface raised(18, 13);
    VGDraw3dCtrlFrame(&raised.DC(), rect, clr, fade, 1);
    ExpectPixels(raised, [&](int x, int y) { return FrameModel(rect, x, y, clr, faded, kWhite, clr); });
}

TEST(DrawHelpersFrame, ControlFrameOfSmallRectanglesStaysInside)
{
    for (const CSize size : {CSize(1, 1), CSize(2, 2), CSize(2, 7), CSize(7, 1)}) {
        const DibSurface surface(12, 12);
        const CRect rect(CPoint(3, 3), size);
        VGDraw3dCtrlFrame(&surface.DC(), rect, kRed, 0, 0);
        ExpectPixels(surface, [&](int x, int y) { return RingOf(rect, x, y) <= 0 ? kRed : kBack; });
    }
}

TEST(DrawHelpersFade, ChannelsFollowRedOutwards)
{
    const CRect rect(8, 9, 14, 13);
    const DibSurface surface(26, 24);
    VGDrawFadeRect(&surface.DC(), rect, kBlack, kRed, 4, 0);
    ExpectPixels(surface, [&](int x, int y) {
        const int ring = RingOf(rect, x, y);
        return ring >= 0 && ring <= 4 ? RGB(51 * ring, 51 * ring, 51 * ring) : kBack;
    });
}

TEST(DrawHelpersFade, ShrinksInwardsUntilNothingIsLeft)
{
    const CRect rect(2, 3, 17, 12);
    for (const int steps : {2, 20}) {
        const DibSurface surface(20, 15);
        // Steps are cut towards zero: (10 - 250) / 3 = -80 and / 21 = -11.
        VGDrawFadeRect(&surface.DC(), rect, RGB(250, 10, 100), RGB(10, 77, 99), steps, 1);
        const int stepR = steps == 2 ? -80 : -11;
        const int stepB = steps == 2 ? -30 : -4;
        ExpectPixels(surface, [&](int x, int y) {
            const int depth = -RingOf(rect, x, y);
            if (depth < 0 || depth > steps)
                return kBack;
            return RGB((250 + stepR * depth) & 0xFF, 10, (100 + stepB * depth) & 0xFF);
        });
    }
}

TEST(DrawHelpersFade, AnEmptyRectangleGrows)
{
    const DibSurface surface(12, 12);
    VGDrawFadeRect(&surface.DC(), CRect(6, 6, 6, 6), RGB(30, 30, 30), RGB(60, 0, 0), 2, 0);
    ExpectPixels(surface, [](int x, int y) {
        const int ring = RingOf(CRect(6, 6, 6, 6), x, y);
        return ring == 1 ? RGB(40, 40, 40) : ring == 2 ? RGB(50, 50, 50) : kBack;
    });
}

TEST(DrawHelpersFade, HugeCountsAndFarRectanglesDrawWhatCanBeSeen)
{
    const CRect rect(3, 3, 9, 9);
    const DibSurface surface(12, 12);
    VGDrawFadeRect(&surface.DC(), rect, kRed, kWhite, INT_MAX, 0);
    ExpectPixels(surface, [&](int x, int y) { return RingOf(rect, x, y) >= 0 ? kRed : kBack; });

    const DibSurface remote(12, 12);
    const int distance = 1000000000;
    VGDrawFadeRect(&remote.DC(), CRect(distance, 0, distance + 5, 12), RGB(1, 1, 1), RGB(1, 0, 0), INT_MAX,
                   0);
    EXPECT_EQ(remote.Count(RGB(1, 1, 1)), 144);

    // The rectangle shrinks onto the surface: ring `distance` is the surface's outline.
    const DibSurface wide(12, 12);
    const CRect around(-distance, -distance, distance + 12, distance + 12);
    VGDrawFadeRect(&wide.DC(), around, kBlack, RGB(0, 0, 0), INT_MAX, 1);
    EXPECT_EQ(wide.Count(kBlack), 144);
}

TEST(DrawHelpersTriangle, FillsARectangleDownwards)
{
    for (const CSize size : {CSize(9, 5), CSize(8, 4), CSize(9, 3), CSize(6, 12), CSize(1, 1)}) {
        const DibSurface surface(20, 20);
        const CRect rect(CPoint(4, 3), size);
        VGDrawSmallSolidTriangle(&surface.DC(), rect, kRed, 0);
        ExpectPixels(surface, [&](int x, int y) {
            const int row = y - int(rect.top);
            const bool inside =
                row >= 0 && row < size.cy && x >= rect.left + row && x <= rect.right - row - 1;
            return inside ? kRed : kBack;
        });
    }
}

TEST(DrawHelpersTriangle, PointsInFourDirections)
{
    const CPoint apex(10, 9);
    const int size = 5;
    for (const int direction : {0, 1, 2, 3}) {
        const DibSurface surface(20, 20);
        VGDrawSmallSolidTriangle(&surface.DC(), apex, size, kRed, direction);
        ExpectPixels(surface, [&](int x, int y) {
            const int dx = x - int(apex.x);
            const int dy = y - int(apex.y);
            // Away from the tip, and across.
            const int away = direction == 0 ? -dy : direction == 1 ? dy : direction == 2 ? dx : -dx;
            const int across = std::abs(direction < 2 ? dx : dy);
            return away >= 0 && away < size && across <= away ? kRed : kBack;
        });
    }
}

TEST(DrawHelpersTriangle, HugeTrianglesDrawWhatCanBeSeen)
{
    const DibSurface tip(9, 9);
    VGDrawSmallSolidTriangle(&tip.DC(), CPoint(4, 4), INT_MAX, kRed, 1);
    ExpectPixels(tip, [](int x, int y) { return y >= 4 && std::abs(x - 4) <= y - 4 ? kRed : kBack; });

    const DibSurface remote(9, 9);
    VGDrawSmallSolidTriangle(&remote.DC(), CPoint(-1000000000, 4), INT_MAX, kRed, 2);
    EXPECT_EQ(remote.Count(kRed), 81);

    const DibSurface wide(9, 9);
    VGDrawSmallSolidTriangle(&wide.DC(), CRect(-1000000000, 3, 1000000000, 2000000000), kRed, 0);
    EXPECT_EQ(wide.Count(kRed), 9 * 6);
}

TEST(DrawHelpersShading, RibsAreCountedFromTheTopOfTheContext)
{
    const COLORREF clr = RGB(100, 15, 200);
    const COLORREF shade = RGB(80, 0, 180);
    const CRect rect(4, 10, 24, 30);
    const DibSurface surface(28, 34);
    VGFillShadingRect(&surface.DC(), rect, clr, 8);
    // Height 20 with ribs at 8 and 16: the first one lies above the rectangle.
    ExpectPixels(surface, [&](int x, int y) {
        for (const int base : {8, 16}) {
            if (y == base - 3 && x >= 7 && x <= 21)
                return shade;
            // The left slope; its end is the beginning of the ridge.
            if (y <= base && y > base - 3 && x - 5 >= 0 && x - 5 <= 2)
                return support::kAnyColor;
            if (y <= base && y > base - 3 && x >= 22 && x <= 23)
                return support::kAnyColor;
        }
        return rect.PtInRect(CPoint(x, y)) ? clr : kBack;
    });
    for (const int base : {8, 16})
        EXPECT_EQ(surface.Pixel(5, base), shade);
    EXPECT_EQ(surface.Count(clr) + surface.Count(shade) + surface.Count(kBack), 28 * 34);
}

TEST(DrawHelpersShading, SpacingBelowOneGivesNoRibs)
{
    for (const int spacing : {0, -1, INT_MIN}) {
        const DibSurface surface(20, 20);
        VGFillShadingRect(&surface.DC(), CRect(0, 0, 20, 20), kRed, spacing);
        EXPECT_EQ(surface.Count(kRed), 400);
    }
    // Ribs far below what can be seen cost nothing.
    const DibSurface deep(20, 20);
    VGFillShadingRect(&deep.DC(), CRect(0, 0, 20, INT_MAX), kRed, 1);
    VGFillShadingRect(&deep.DC(), CRect(0, INT_MIN + 10, 20, 0), kRed, INT_MAX);
    EXPECT_EQ(deep.Count(kBack), 0);
}

TEST(DrawHelpersBlend, SourceOriginIsAlwaysItsCorner)
{
    DibSurface source(8, 8, kRed);
    source.SetPixel(0, 0, RGB(0, 0, 255));
    const DibSurface surface(10, 10, kWhite);
    VGAlphaBlend(&surface.DC(), CRect(2, 2, 6, 6), &source.DC(), CRect(3, 3, 7, 7), 128);
    EXPECT_EQ(surface.Pixel(2, 2), RGB(127, 127, 255));
    EXPECT_EQ(surface.Count(RGB(255, 127, 127), CRect(2, 2, 6, 6)), 15);
    EXPECT_EQ(surface.Count(kWhite), 84);
}

TEST(DrawHelpersBlend, ColorAndGradientOverARectangle)
{
    const CRect rect(2, 3, 8, 19);
    const DibSurface plain(10, 22, kWhite);
    VGAlphaBlendColorToRect(&plain.DC(), rect, 0x1280, kRed, VGNoColor); // only the low byte counts
    EXPECT_EQ(plain.Count(RGB(255, 127, 127), rect), 6 * 16);
    EXPECT_EQ(plain.Count(kWhite), 220 - 6 * 16);

    const DibSurface gradient(10, 22, kWhite);
    VGAlphaBlendColorToRect(&gradient.DC(), rect, 255, kBlack, RGB(240, 0, 160));
    ExpectPixels(gradient, [&](int x, int y) {
        return rect.PtInRect(CPoint(x, y)) ? Blend(kBlack, RGB(240, 0, 160), y - 3, 16) : kWhite;
    });
}

TEST(DrawHelpersBadInput, EmptyRectanglesAndMissingContextsDrawNothing)
{
    const DibSurface surface(10, 10);
    const CString text(L"Text");
    const auto drawAll = [&](CDC* pDC, const CRect& rect) {
        VGGradientFillRect(pDC, rect, kRed, kBlack, 0);
        for (const int mode : {0, 1, 2})
            VGGradientFillRectEx(pDC, rect, kRed, kBlack, mode, 0.5);
        VGFillShadingRect(pDC, rect, kRed, 2);
        VGAlphaBlendColorToRect(pDC, rect, 255, kRed, kBlack);
        VGAlphaBlend(pDC, rect, pDC, rect, 255);
        VGDrawBorder(pDC, rect);
        for (const int style : {0, 1})
            VGDraw3dCtrlFrame(pDC, rect, kRed, 0, style);
        VGDrawFadeRect(pDC, rect, kRed, kBlack, 3, 1);
        VGDrawSmallSolidTriangle(pDC, rect, kRed, 0);
        VGDrawFashionText(pDC, text, rect, DT_LEFT, kRed, kBlack, 2);
    };
    for (const CRect& rect :
         {CRect(5, 5, 5, 5), CRect(5, 2, 5, 8), CRect(2, 5, 8, 5), CRect(8, 8, 2, 2),
          CRect(INT_MAX, INT_MAX, INT_MIN, INT_MIN), CRect(INT_MIN, INT_MIN, INT_MAX, INT_MAX)})
        drawAll(&surface.DC(), rect);
    EXPECT_EQ(surface.Count(kBack), 100);

    CDC closed;
    for (CDC* none : {static_cast<CDC*>(nullptr), &closed}) {
        drawAll(none, CRect(1, 1, 9, 9));
        VGDrawSmallSolidTriangle(none, CPoint(4, 4), 4, kRed, 0);
        VGAlphaBlend(&surface.DC(), CRect(1, 1, 9, 9), none, CRect(0, 0, 8, 8), 255);
    }
    EXPECT_EQ(surface.Count(kBack), 100);
}

TEST(DrawHelpersBadInput, ValuesWithoutAMeaningDrawNothing)
{
    const DibSurface surface(20, 20);
    CDC* const dc = &surface.DC();
    const CRect rect(3, 3, 13, 8);
    for (const int value : {INT_MIN, -2, -1, 4, 99, INT_MAX}) {
        VGGradientFillRectEx(dc, rect, kRed, kBlack, value, 0.5);
        VGDraw3dCtrlFrame(dc, rect, kRed, 0, value);
        VGDrawFadeRect(dc, rect, kBlack, kRed, 4, value);
        VGDrawFadeRect(dc, rect, kBlack, kRed, std::min(value, -1), 0);
        VGDrawSmallSolidTriangle(dc, rect, kRed, value);
        VGDrawSmallSolidTriangle(dc, CPoint(10, 9), 5, kRed, value);
        VGDrawSmallSolidTriangle(dc, CPoint(10, 9), std::min(value, 0), kRed, 1);
    }
    VGGradientFillRectEx(dc, rect, kRed, kBlack, 3, 0.5);
    VGDraw3dCtrlFrame(dc, rect, kRed, 0, 2);
    VGDrawFadeRect(dc, rect, kBlack, kRed, 4, 2);
    for (const int direction : {1, 2, 3})
        VGDrawSmallSolidTriangle(dc, rect, kRed, direction);
    for (const double ratio : {std::nan(""), std::numeric_limits<double>::infinity(), -1e300, 1e18})
        for (const int mode : {1, 2})
            VGGradientFillRectEx(dc, rect, kRed, kBlack, mode, ratio);
    EXPECT_EQ(surface.Count(kBack), 400);
}
