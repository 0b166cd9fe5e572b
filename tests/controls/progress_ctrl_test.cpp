#include "vgui/controls/progress_ctrl.h"

#include "tests/support/host_test.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gui_manager.h"

#include <climits>

using namespace support;

namespace
{

constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr int kPitch = 12;
constexpr int kBlock = 10;

class OpenProgressCtrl : public VProgressCtrl
{
public:
    using VProgressCtrl::m_bMarquee;
    using VProgressCtrl::m_nMarqueeOffset;
};

class ProgressCtrl : public HostTest
{
protected:
    void SetUp() override { ASSERT_TRUE(host.Open()); }
    // A client area of 126 by 20 pixels, or 20 by 126.
    void Create(DWORD style)
    {
        CRect place(10, 10, 136, 30);
        if ((style & PBS_VERTICAL) != 0)
            place.SetRect(10, 10, 30, 136);
        ASSERT_TRUE(bar.Create(WS_CHILD | WS_VISIBLE | style, place, &host, 7));
        bar.ModifyStyleEx(WS_EX_STATICEDGE | WS_EX_CLIENTEDGE, 0, SWP_FRAMECHANGED);
        PumpMessages();
    }
    [[nodiscard]] DibSurface Shown() const
    {
        PumpMessages();
        return CaptureClient(bar.m_hWnd);
    }

    OpenProgressCtrl bar;
};

// The shade of a row (column of an upright bar) of 18 pixels that lies on it.
COLORREF Shade(COLORREF from, COLORREF to, int across)
{
    const auto mix = [&](int c1, int c2) { return ((c1 << 8) + ((c2 - c1) * 256 * across) / 18) >> 8; };
    return RGB(mix(GetRValue(from), GetRValue(to)), mix(GetGValue(from), GetGValue(to)),
               mix(GetBValue(from), GetBValue(to)));
}

bool Near(COLORREF a, COLORREF b)
{
    return abs(GetRValue(a) - GetRValue(b)) <= 1 && abs(GetGValue(a) - GetGValue(b)) <= 1 &&
           abs(GetBValue(a) - GetBValue(b)) <= 1;
}

} // namespace

TEST_F(ProgressCtrl, BarLengthIsBounded)
{
    const struct {
        int length, lower, upper, pos, expected;
    } cases[] = {{200, 0, 100, 50, 100},
                 {200, 0, 100, -5, 0},
                 {200, 0, 100, 101, 200},
                 {200, 50, 150, 75, 50},
                 {200, 10, 10, 10, 0},
                 {200, 100, 0, 50, 0},
                 {0, 0, 100, 50, 0},
                 {-9, 0, 100, 50, 0},
                 {99, INT_MIN, INT_MAX, INT_MAX, 99},
                 {INT_MAX, INT_MIN, INT_MAX, INT_MAX, INT_MAX},
                 {100, INT_MIN, INT_MAX, 0, 50}};
    for (const auto& c : cases)
        EXPECT_EQ(VProgressCtrl::BarLength(c.length, c.lower, c.upper, c.pos), c.expected) << c.pos;
}

TEST_F(ProgressCtrl, BarGrowsWithThePosition)
{
    for (const DWORD style :
         {DWORD{0}, DWORD{PBS_SMOOTH}, DWORD{PBS_VERTICAL}, DWORD{PBS_VERTICAL | PBS_SMOOTH}}) {
        Create(style);
        const bool smooth = (style & PBS_SMOOTH) != 0;
        const bool upright = (style & PBS_VERTICAL) != 0;
        for (const int pos : {0, 1, 50, 100}) {
            bar.SetPos(pos);
            const DibSurface shown = Shown();
            const int filled = 124 * pos / 100;
            ExpectPixels(shown, [&](int x, int y) {
                const int along = upright ? shown.Height() - 2 - y : x - 1;
                const int across = upright ? x - 1 : y - 1;
                if (along < 0 || along >= 124 || across < 0 || across >= 18)
                    return kWhite;
                const int blocks = (filled + kPitch - 1) / kPitch;
                const bool on = smooth ? along < filled : along < blocks * kPitch && along % kPitch < kBlock;
                if (!on)
                    return kWhite;
                const COLORREF shade = Shade(VGM.Progress.clrFrom, VGM.Progress.clrTo, across);
                return Near(shown.Pixel(x, y), shade) ? kAnyColor : shade;
            });
        }
        bar.DestroyWindow();
    }
}

TEST_F(ProgressCtrl, HostColoursAndTheDisabledStateShow)
{
    Create(PBS_SMOOTH);
    bar.SetPos(50);
    bar.SetBarColor(RGB(200, 0, 0));
    bar.SetBkColor(RGB(0, 0, 50));
    DibSurface shown = Shown();
    EXPECT_EQ(shown.Pixel(120, 10), RGB(0, 0, 50));
    EXPECT_GT(GetRValue(shown.Pixel(20, 18)), 190);
    EXPECT_LT(GetGValue(shown.Pixel(20, 18)), 20);
    bar.EnableWindow(FALSE);
    shown = Shown();
    const COLORREF grey = shown.Pixel(20, 18);
    EXPECT_EQ(GetRValue(grey), GetBValue(grey));
}

TEST_F(ProgressCtrl, EdgeIsDrawnInTheSharedColour)
{
    ASSERT_TRUE(bar.CreateEx(WS_EX_STATICEDGE, WS_CHILD | WS_VISIBLE, CRect(10, 10, 110, 30), &host, 7));
    PumpMessages();
    EXPECT_EQ(WindowPixel(bar.m_hWnd, {0, 5}), VGM.Common.clrFrame);
    EXPECT_EQ(WindowPixel(bar.m_hWnd, {99, 19}), VGM.Common.clrFrame);
    bar.EnableWindow(FALSE);
    EXPECT_TRUE(WaitForPixel(bar.m_hWnd, {0, 5}, VGM.Common.clrGray));
}

TEST_F(ProgressCtrl, MarqueeRunsUntilItIsStopped)
{
    Create(PBS_MARQUEE);
    EXPECT_EQ(Shown().Count(kWhite), 126 * 20);
    EXPECT_TRUE(bar.SetMarquee(TRUE, 1));
    const int start = bar.m_nMarqueeOffset;
    EXPECT_LT(Shown().Count(kWhite), 126 * 20);
    EXPECT_TRUE(PumpUntil([&] { return bar.m_nMarqueeOffset > start; }));
    EXPECT_TRUE(PumpUntil([&] { return bar.m_nMarqueeOffset < start; })) << "does not come round";
    bar.SetMarquee(FALSE, 0);
    EXPECT_EQ(Shown().Count(kWhite), 126 * 20);
    bar.DestroyWindow();

    Create(0);
    bar.SetMarquee(TRUE, 1); // not a marquee
    EXPECT_FALSE(bar.m_bMarquee);
}
