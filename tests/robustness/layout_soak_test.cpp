// Layout rules and sizes of any kind; see SoakInputs for how to have more of them.
#include "tests/robustness/random_text.h"
#include "tests/support/census.h"
#include "tests/support/recorder.h"
#include "vgui/dialogs/dlg_resizer.h"
#include "vgui/foundation/window_helpers.h"

#include <limits>

using namespace support;

namespace
{

constexpr UINT kFirst = 1000;
constexpr double kPixel = 1.01; // shares are floats

CRect PlaceIn(const CWnd& parent, UINT id)
{
    CRect place;
    parent.GetDlgItem(static_cast<int>(id))->GetWindowRect(place);
    parent.ScreenToClient(place);
    return place;
}

class LayoutSoakTest : public CensusTest
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(host.Open(kStart));
        for (int i = 0; i < 3; ++i)
            ASSERT_TRUE(controls[i].Create(L"", WS_CHILD | WS_VISIBLE, places[i], &host, kFirst + i));
    }

    const CSize kStart{400, 300};
    const CRect places[3] = {{10, 10, 60, 40}, {70, 50, 300, 200}, {310, 210, 390, 290}};
    HostWnd host;
    CStatic controls[3];
};

// From the whole range of doubles, the strange ones among them.
double AnyShare(RandomText& random)
{
    using Limits = std::numeric_limits<double>;
    const double strange[] = {Limits::quiet_NaN(),
                              Limits::infinity(),
                              -Limits::infinity(),
                              Limits::max(),
                              Limits::denorm_min(),
                              -1e9,
                              1e9,
                              -0.0};
    return strange[random.Below(std::size(strange))];
}

} // namespace

// An edge with a share between nothing and all strays a pixel at most, whatever became of the other controls.
TEST_F(LayoutSoakTest, SharesAreKeptThroughAnySizes)
{
    SoakWithText(60, [&](RandomText& random) {
        VDlgResizerEx resizer;
        resizer.Init(&host);
        double shares[2][4];
        for (UINT i = 0; i < 2; ++i) {
            controls[i].MoveWindow(places[i]);
            // No control is turned inside out.
            for (double* const pair : {shares[i], shares[i] + 2}) {
                pair[0] = static_cast<double>(random.Below(101)) / 100;
                pair[1] = pair[0] + (1 - pair[0]) * static_cast<double>(random.Below(101)) / 100;
            }
            resizer.AddControl(kFirst + i, shares[i][0], shares[i][1], shares[i][2], shares[i][3]);
        }
        resizer.AddControl(kFirst + 2, AnyShare(random), AnyShare(random), AnyShare(random),
                           AnyShare(random));
        for (int step = 0; step < 20; ++step) {
            const CSize grown(static_cast<int>(random.Below(3000)), static_cast<int>(random.Below(3000)));
            resizer.ResizeAll(SIZE_RESTORED, kStart.cx + grown.cx, kStart.cy + grown.cy);
            for (UINT i = 0; i < 2; ++i) {
                const CRect place = PlaceIn(host, kFirst + i);
                EXPECT_NEAR(place.left, places[i].left + shares[i][0] * grown.cx, kPixel);
                EXPECT_NEAR(place.right, places[i].right + shares[i][1] * grown.cx, kPixel);
                EXPECT_NEAR(place.top, places[i].top + shares[i][2] * grown.cy, kPixel);
                EXPECT_NEAR(place.bottom, places[i].bottom + shares[i][3] * grown.cy, kPixel);
            }
        }
    });
}

TEST_F(LayoutSoakTest, AnyFlagsAndSizesAreBorne)
{
    SoakWithText(400, [&](RandomText& random) {
        VDlgResizer resizer;
        resizer.Init(&host);
        for (UINT i = 0; i < 3; ++i)
            resizer.AddControl(kFirst + i, static_cast<UINT>(random.Number()));
        for (int step = 0; step < 5; ++step) {
            resizer.ResizeAll(SIZE_RESTORED, random.Number(), random.Number());
            const UINT id = kFirst + static_cast<UINT>(random.Below(4));
            resizer.SetControl(id, static_cast<UINT>(random.Number()));
            resizer.Resize(id, random.Number(), random.Number(), static_cast<UINT>(random.Number()));
        }
        EXPECT_EQ(resizer.GetSize(), 3);
    });
}

// A record that is out of reach changes nothing, any other one is kept exactly.
TEST_F(LayoutSoakTest, WindowsReturnToWhatTheScreenHolds)
{
    const CSize screen(::GetSystemMetrics(SM_CXFULLSCREEN), ::GetSystemMetrics(SM_CYFULLSCREEN));
    SoakWithText(1000, [&](RandomText& random) {
        const int x = random.Number(), y = random.Number(), cx = random.Number(), cy = random.Number();
        CRect before, after;
        host.GetWindowRect(before);
        const bool restored = VWndPos(&host, x, y, cx, cy).Restore();
        host.GetWindowRect(after);
        if (!restored) {
            EXPECT_EQ(after, before);
            return;
        }
        if (x != VWndPos::Unknown) {
            EXPECT_EQ(after.TopLeft(), CPoint(x, y));
        }
        const bool isSized = cx != VWndPos::Unknown && cy != VWndPos::Unknown;
        EXPECT_EQ(after.Size(), isSized ? CSize(cx, cy) : before.Size());
        EXPECT_TRUE(int64_t{x} + cx <= screen.cx && int64_t{y} + cy <= screen.cy);
    });
}
