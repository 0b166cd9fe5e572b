#include "vgui/dialogs/gui_dlg_geometry.h"

#include <climits>
#include <gtest/gtest.h>
#include <vector>

using namespace gui_dlg;

namespace
{

constexpr NcMetrics kLow{4, 19};  // the close button is held at its least size
constexpr NcMetrics kHigh{5, 30}; // the caption has room for more

struct Button {
    LRESULT hit;
    CRect rect;
};

std::vector<Button> Buttons(const CRect& window, const NcMetrics& nc, const CapBtns& present)
{
    std::vector<Button> buttons;
    ForEachCapBtn(window, nc, present, [&](LRESULT hit, const CRect& rect) {
        buttons.push_back({hit, rect});
    });
    return buttons;
}

} // namespace

TEST(GuiDlgGeometry, ClientAndRegionAndCaptionFitTogether)
{
    const CRect window(100, 50, 400, 250);
    EXPECT_EQ(ClientRect(window, kHigh), CRect(105, 85, 395, 245));
    EXPECT_EQ(RegionSize(ClientRect(window, kHigh).Size(), kHigh), window.Size());
    EXPECT_EQ(CaptionRect(window, kHigh), CRect(5, 5, 295, 34));
}

TEST(GuiDlgGeometry, TooSmallWindowHasAnEmptyClientArea)
{
    for (const CRect& window : {CRect(10, 10, 14, 14), CRect(10, 10, 10, 10), CRect(20, 20, 0, 0)}) {
        const CRect client = ClientRect(window, kHigh);
        EXPECT_EQ(client.Width(), 0);
        EXPECT_EQ(client.Height(), 0);
    }
}

TEST(GuiDlgGeometry, CloseButtonFollowsTheCaptionHeightDownToTwentyPixels)
{
    const CRect window(0, 0, 300, 200);
    EXPECT_EQ(CloseBtnRect(window, kHigh), CRect(263, 6, 290, 33));
    // 23 is the first height at which the button is 20 pixels by itself.
    EXPECT_EQ(CloseBtnRect(window, {4, 23}), CRect(272, 5, 292, 25));
    for (int caption = 0; caption < 23; ++caption) {
        const CRect button = CloseBtnRect(window, {4, caption});
        EXPECT_EQ(button.Size(), CSize(20, 20)) << caption;
        EXPECT_EQ(button.right, 292) << caption;
        const int middle = (5 + 5 + caption - 3) / 2;
        EXPECT_EQ(button.top, middle - 10) << caption;
    }
}

TEST(GuiDlgGeometry, PresentButtonsStandSideBySide)
{
    const CRect window(1000, 500, 1300, 700);
    const LRESULT order[] = {HTMAXBUTTON, HTMINBUTTON, HTHELP};
    for (const NcMetrics& nc : {kLow, kHigh}) {
        for (int mask = 0; mask < 8; ++mask) {
            const CapBtns present{(mask & 1) != 0, (mask & 2) != 0, (mask & 4) != 0};
            const std::vector<Button> buttons = Buttons(window, nc, present);
            ASSERT_FALSE(buttons.empty());
            EXPECT_EQ(buttons[0].hit, HTCLOSE);
            EXPECT_EQ(buttons[0].rect, CloseBtnRect(window, nc));
            size_t next = 1;
            for (int i = 0; i < 3; ++i) {
                if ((mask & (1 << i)) == 0)
                    continue;
                ASSERT_LT(next, buttons.size());
                EXPECT_EQ(buttons[next].hit, order[i]);
                EXPECT_EQ(buttons[next].rect.right, buttons[next - 1].rect.left);
                EXPECT_EQ(buttons[next].rect.Size(), buttons[0].rect.Size());
                EXPECT_EQ(buttons[next].rect.top, buttons[0].rect.top);
                ++next;
            }
            EXPECT_EQ(next, buttons.size());
        }
    }
}

TEST(GuiDlgGeometry, HitTestKnowsEachButtonsEdges)
{
    const CRect window(1000, 500, 1300, 700);
    const CapBtns present{true, false, true};
    const std::vector<Button> buttons = Buttons(window, kLow, present);
    for (const Button& button : buttons) {
        EXPECT_EQ(CapBtnAt(button.rect.TopLeft(), window, kLow, present), button.hit);
        EXPECT_EQ(CapBtnAt(button.rect.BottomRight() - CSize(1, 1), window, kLow, present), button.hit);
        EXPECT_EQ(CapBtnAt({button.rect.left, button.rect.bottom}, window, kLow, present), HTERROR);
        EXPECT_EQ(CapBtnAt({button.rect.left, button.rect.top - 1}, window, kLow, present), HTERROR);
    }
    EXPECT_EQ(CapBtnAt({buttons[0].rect.right, buttons[0].rect.top}, window, kLow, present), HTERROR);
    EXPECT_EQ(CapBtnAt({buttons.back().rect.left - 1, buttons[0].rect.top}, window, kLow, present), HTERROR);
}

TEST(GuiDlgGeometry, DragAreaIsTheCaption)
{
    const CRect window(1000, 500, 1300, 700);
    const auto drags = [&](int x, int y) {
        // Window coordinates to client coordinates.
        return IsDragPoint({x - kHigh.frame, y - kHigh.frame - kHigh.caption}, window, kHigh);
    };
    EXPECT_TRUE(drags(150, 20));
    EXPECT_FALSE(drags(150, kHigh.frame - 2)); // the frame above the caption
    EXPECT_TRUE(drags(150, kHigh.frame - 1));
    EXPECT_TRUE(drags(150, kHigh.frame + kHigh.caption - 3));
    EXPECT_FALSE(drags(150, kHigh.frame + kHigh.caption - 2));
    EXPECT_FALSE(drags(150, 100)); // the client area
    EXPECT_FALSE(drags(2 * kHigh.frame - 1, 20));
    EXPECT_TRUE(drags(2 * kHigh.frame, 20));
    EXPECT_TRUE(drags(299, 20));
    EXPECT_FALSE(drags(300, 20));
}

TEST(GuiDlgGeometry, SizingIsHeldToTheLimits)
{
    const CRect current(100, 100, 300, 250);
    const struct {
        SizingLimits limits;
        CRect dragged, expected;
    } cases[] = {
        {{true, false, 0, 0}, {90, 80, 320, 270}, {90, 100, 320, 250}},
        // A lock comes before a minimum.
        {{false, true, 1000, 0}, {90, 80, 320, 270}, {100, 80, 300, 270}},
        // The minimum is anchored at the top left, whichever edge is dragged.
        {{true, true, 180, 120}, {200, 200, 300, 250}, {100, 100, 280, 220}},
        {{true, true, 180, 120}, {100, 100, 150, 150}, {100, 100, 280, 220}},
        {{true, true, 180, 120}, {250, 240, 100, 50}, {100, 100, 280, 220}},
        {{true, true, 180, 120}, {50, 60, 230, 180}, {50, 60, 230, 180}},
        {{true, true, 300, 0}, {100, 100, 110, 110}, {100, 100, 400, 110}},
    };
    for (const auto& c : cases) {
        RECT dragged = c.dragged;
        LimitSizing(dragged, current, c.limits);
        EXPECT_EQ(CRect(dragged), c.expected);
    }
}

TEST(GuiDlgGeometry, HugeMinimumDoesNotWrap)
{
    RECT dragged{0, 0, 50, 50};
    LimitSizing(dragged, CRect(100, 100, 200, 200), {true, true, UINT_MAX, UINT_MAX});
    EXPECT_GT(dragged.right, 100000);
    EXPECT_GT(dragged.bottom, 100000);
}
