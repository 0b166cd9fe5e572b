#include "vgui/composite/tip_window.h"

#include "tests/support/census.h"
#include "tests/support/input.h"
#include "tests/support/lingering.h"
#include "tests/support/pixels.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"
#include "vgui/foundation/gdi_scope.h"

#include <gtest/gtest.h>
#include <memory>

using namespace support;

namespace
{

constexpr UINT kHideTimer = 1;
constexpr UINT kShowTimer = 2;
constexpr UINT kLong = 100000; // a delay that no test waits for

class OpenTip : public CXTTipWindow
{
public:
    using CXTTipWindow::DrawShadowRect;
    using CXTTipWindow::InitializeSize;
    using CXTTipWindow::m_bShowPending;
    using CXTTipWindow::m_dwStyle;
    using CXTTipWindow::m_fontBold;
    using CXTTipWindow::m_fontNormal;
    using CXTTipWindow::m_lines;
    using CXTTipWindow::m_rcClient;
    using CXTTipWindow::m_rcHot;
    using CXTTipWindow::m_rcShadow;
    using CXTTipWindow::m_rcWindow;

    // What the timer would do, without waiting for it.
    void Expire(UINT timer) { SendMessage(WM_TIMER, timer); }
    [[nodiscard]] CRect Place() const
    {
        CRect rect;
        GetWindowRect(rect);
        return rect;
    }
};

class TipWindow : public CensusTest
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(host.Open({300, 200}));
        host.RecordAlso(WM_MOUSEFIRST, WM_MOUSELAST);
        ASSERT_TRUE(tip.Create(&host));
    }
    void TearDown() override
    {
        tip.HideTipWindow();
        EXPECT_EQ(::GetCapture(), nullptr);
    }
    [[nodiscard]] CPoint OnScreen(CPoint client) const { return ClientToScreen(host.m_hWnd, client); }
    [[nodiscard]] CSize Extent(LPCWSTR text, CFont& font)
    {
        CClientDC dc(&tip);
        const VSelectScope selected(dc, font);
        return dc.GetTabbedTextExtent(text, static_cast<int>(wcslen(text)), 0, nullptr);
    }
    [[nodiscard]] CRect WorkArea() const
    {
        CRect area;
        ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
        return area;
    }

    HostWnd host;
    OpenTip tip;
};

} // namespace

TEST_F(TipWindow, RefusesWhatCannotBeShown)
{
    EXPECT_FALSE(tip.ShowTipWindow(CPoint(10, 10))); // no text
    tip.SetTipText(nullptr, nullptr);
    EXPECT_FALSE(tip.ShowTipWindow(CPoint(10, 10)));
    tip.SetTipText(L"t", nullptr);
    EXPECT_TRUE(tip.ShowTipWindow(OnScreen({10, 10})));
    EXPECT_FALSE(tip.ShowTipWindow(OnScreen({10, 10})));
    EXPECT_EQ(::GetCapture(), tip.m_hWnd);
    EXPECT_EQ(::GetActiveWindow(), host.m_hWnd);
    tip.HideTipWindow();
    EXPECT_FALSE(tip.IsWindowVisible());
    EXPECT_EQ(::GetCapture(), nullptr);

    EXPECT_FALSE(tip.Create(&host)); // a second window
    CWnd loose;
    OpenTip none;
    EXPECT_FALSE(none.Create(nullptr));
    EXPECT_FALSE(none.Create(&loose));
    EXPECT_FALSE(static_cast<CWnd&>(none).Create(L"no such class", L"", WS_CHILD, CRect(), &host, 1));
    none.SetTipText(L"t", L"b", TRUE);
    EXPECT_FALSE(none.ShowTipWindow(CPoint(0, 0)));
    EXPECT_FALSE(none.ShowTipWindow(CRect(0, 0, 5, 5), CPoint(0, 0)));
    none.HideTipWindow();
}

TEST_F(TipWindow, IsSizedFromItsTexts)
{
    tip.SetMargins(CSize(-3, -1));
    const auto sizeOf = [&](LPCWSTR title, LPCWSTR body) {
        tip.HideTipWindow();
        tip.SetTipText(title, body);
        EXPECT_TRUE(tip.ShowTipWindow(OnScreen({10, 10})));
        return tip.Place().Size();
    };
    const CSize title = Extent(L"Title wide enough", tip.m_fontBold);
    const CSize line = Extent(L"body", tip.m_fontNormal);
    EXPECT_EQ(sizeOf(L"Title wide enough", L""), CSize(title.cx + 2, title.cy));
    EXPECT_EQ(sizeOf(L"", L"body"), CSize(line.cx + 2, line.cy));
    EXPECT_EQ(sizeOf(L"Title wide enough", L"body\r\n\r\nbody"), CSize(title.cx + 2, title.cy + 3 * line.cy));
    EXPECT_EQ(tip.m_lines.GetSize(), 3);
    EXPECT_EQ(sizeOf(L"", L"body\n").cy, 2 * line.cy);
    tip.SetMargins(CSize(5, 7));
    tip.SetLineSpace(4);
    EXPECT_EQ(sizeOf(L"", L"body"), CSize(line.cx + 12, line.cy + 14));
    EXPECT_EQ(sizeOf(L"Title wide enough", L"body"), CSize(title.cx + 12, title.cy + line.cy + 18));
    tip.SetLineSpace(-4);
    int tabs[] = {90};
    tip.SetTextTabStopPositions(tabs, 1);
    EXPECT_EQ(sizeOf(L"", L"\tbody").cx, 90 + line.cx + 12);
    tip.SetTextTabStopPositions(nullptr, 7);
    EXPECT_GT(sizeOf(L"", L"\tbody").cx, line.cx + 12);
    EXPECT_EQ(sizeOf(L"", CString(L'W', 12000)).cx, 0x7FFF);
    tip.SetMargins(CSize(INT_MAX, INT_MAX));
    tip.InitializeSize(CPoint(0, 0), FALSE);
    EXPECT_GT(tip.m_rcClient.Width(), 0);
    LOGFONT bold{};
    tip.m_fontBold.GetLogFont(&bold);
    EXPECT_EQ(bold.lfHeight, 12);
    EXPECT_EQ(bold.lfWeight, FW_BOLD);
}

TEST_F(TipWindow, StaysOnTheWorkArea)
{
    tip.SetTipText(L"A title", L"and a body that is wider");
    tip.InitializeSize(CPoint(100, 100), FALSE);
    const CSize size = tip.m_rcWindow.Size();
    const CRect area = WorkArea();
    struct Case {
        CPoint point;
        BOOL centre;
        CPoint wanted;
    };
    const Case cases[] = {
        {{100, 100}, FALSE, {100, 100}},
        {{100, 100}, TRUE, {100 - size.cx / 2, 100}},
        {{area.right - 5, 100}, FALSE, {area.right - size.cx, 100}},
        {{area.left - 5, 100}, FALSE, {area.left, 100}},
        {{area.left + 1, 100}, TRUE, {area.left, 100}},
        {{100, area.bottom - 5}, FALSE, {100, area.bottom - size.cy}},
        {{100, area.top - 5}, FALSE, {100, area.top - 5}},
    };
    for (const Case& each : cases) {
        tip.InitializeSize(each.point, each.centre);
        EXPECT_EQ(tip.m_rcWindow, CRect(each.wanted, size));
    }
    tip.m_dwStyle = VGTipShadow;
    tip.InitializeSize(CPoint(100, 100), FALSE);
    EXPECT_EQ(tip.m_rcClient, CRect(CPoint(0, 0), size));
    EXPECT_EQ(tip.m_rcShadow, CRect(CPoint(5, 5), size));
    EXPECT_TRUE(tip.ShowTipWindow(OnScreen({10, 10}), VGTipShadow));
    EXPECT_EQ(tip.Place().Size(), size + CSize(5, 5));
}

TEST_F(TipWindow, HotRectanglePlacesTheTip)
{
    tip.SetTipText(L"t", L"");
    const CRect hot(20, 30, 60, 50);
    EXPECT_TRUE(tip.ShowTipWindow(hot, CPoint(25, 33)));
    EXPECT_EQ(tip.Place().TopLeft(), OnScreen({25, 53}));
    EXPECT_EQ(tip.m_rcHot, CRect(OnScreen({20, 30}), hot.Size()));
    tip.SetTipOffsetPos(CPoint(3, -4));
    EXPECT_TRUE(tip.ShowTipWindow(hot, CPoint(25, 33))); // hides the one before
    EXPECT_EQ(tip.Place().TopLeft(), OnScreen({28, 29}));
    EXPECT_TRUE(tip.ShowTipWindow(hot, CPoint(25, 33), 0, 0, 0, FALSE, FALSE));
    EXPECT_EQ(tip.Place().TopLeft(), OnScreen({20, 30}));
    tip.HideTipWindow();
    EXPECT_TRUE(tip.ShowTipWindow(CRect(0, 0, 0, 0), OnScreen({25, 33})));
    EXPECT_EQ(tip.Place().TopLeft(), OnScreen({25, 33}));
}

TEST_F(TipWindow, GoesWhenTheMouseLeavesTheHotRectangle)
{
    tip.SetTipText(L"t", L"");
    MoveTo(OnScreen({30, 40}));
    ASSERT_TRUE(tip.ShowTipWindow(CRect(20, 30, 60, 50), CPoint(25, 33)));
    MoveTo(OnScreen({59, 49}));
    EXPECT_TRUE(tip.IsWindowVisible());
    MoveTo(OnScreen({60, 49}));
    EXPECT_FALSE(tip.IsWindowVisible());
    EXPECT_TRUE(tip.m_rcHot.IsRectEmpty());
}

TEST_F(TipWindow, AppearsAndGoesByItsTimers)
{
    tip.SetTipText(L"t", L"");
    ASSERT_TRUE(tip.ShowTipWindow(OnScreen({10, 10}), 0, 20));
    EXPECT_FALSE(tip.IsWindowVisible());
    EXPECT_FALSE(tip.ShowTipWindow(OnScreen({10, 10})));
    EXPECT_TRUE(PumpUntil([&] { return tip.IsWindowVisible() != FALSE; }));
    EXPECT_EQ(::GetCapture(), tip.m_hWnd);
    EXPECT_FALSE(tip.m_bShowPending);
    tip.HideTipWindow();
    ASSERT_TRUE(tip.ShowTipWindow(OnScreen({10, 10}), 0, 0, 20));
    EXPECT_TRUE(tip.IsWindowVisible());
    EXPECT_TRUE(PumpUntil([&] { return tip.IsWindowVisible() == FALSE; }));

    ASSERT_TRUE(tip.ShowTipWindow(OnScreen({10, 10}), 0, kLong, UINT_MAX));
    tip.Expire(kHideTimer);
    EXPECT_FALSE(tip.m_bShowPending);
    EXPECT_TRUE(tip.ShowTipWindow(OnScreen({10, 10})));
}

TEST_F(TipWindow, DelayedTipIsDroppedWhenTheMouseHasLeft)
{
    tip.SetTipText(L"t", L"");
    const CRect hot(20, 30, 60, 50);
    MoveTo(OnScreen({30, 40}));
    ASSERT_TRUE(tip.ShowTipWindow(hot, CPoint(25, 33), 0, kLong));
    MoveTo(OnScreen({100, 100}));
    tip.Expire(kShowTimer);
    EXPECT_FALSE(tip.IsWindowVisible());
    EXPECT_FALSE(tip.ShowTipWindow(OnScreen({10, 10})));
    tip.HideTipWindow();
    EXPECT_TRUE(tip.ShowTipWindow(OnScreen({10, 10})));
    tip.HideTipWindow();

    MoveTo(OnScreen({30, 40}));
    ASSERT_TRUE(tip.ShowTipWindow(hot, CPoint(25, 33), 0, kLong));
    tip.Expire(kShowTimer);
    EXPECT_TRUE(tip.IsWindowVisible());
}

TEST_F(TipWindow, ClickHidesItAndReachesTheWindowBelow)
{
    MainWndScope mainWindow(&host);
    tip.SetTipText(L"a title to click", L"");
    struct Case {
        MouseButton button;
        UINT message;
        WPARAM flags;
    };
    for (const Case each : {Case{MouseButton::Left, WM_LBUTTONDOWN, MK_LBUTTON},
                            Case{MouseButton::Right, WM_RBUTTONDOWN, MK_RBUTTON},
                            Case{MouseButton::Middle, WM_MBUTTONDOWN, MK_MBUTTON}}) {
        ASSERT_TRUE(tip.ShowTipWindow(OnScreen({40, 50})));
        host.Clear();
        MessageSpy spy(host.m_hWnd);
        Click(OnScreen({45, 55}), each.button);
        EXPECT_FALSE(tip.IsWindowVisible());
        const RecordedMessages told = host.Messages(each.message);
        ASSERT_EQ(told.size(), 1u);
        EXPECT_EQ(told[0].wParam, each.flags);
        EXPECT_EQ(told[0].lParam, MAKELPARAM(45, 55));
        const RecordedMessages activated = spy.Messages(WM_MOUSEACTIVATE);
        ASSERT_FALSE(activated.empty());
        EXPECT_EQ(reinterpret_cast<HWND>(activated[0].wParam), host.m_hWnd);
        EXPECT_EQ(activated[0].lParam, MAKELPARAM(HTCLIENT, each.message));
    }
}

TEST_F(TipWindow, SurvivesWhatTheClickedWindowDoes)
{
    auto other = std::make_unique<OpenTip>();
    ASSERT_TRUE(other->Create(&host));
    other->SetTipText(L"a title to click", L"");
    ASSERT_TRUE(other->ShowTipWindow(OnScreen({40, 50})));
    host.SetAnswer([&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_LBUTTONDOWN)
            other.reset();
        return {};
    });
    Click(OnScreen({45, 55}));
    EXPECT_EQ(other, nullptr);
    host.SetAnswer({});
}

// The host loses the mouse capture when a tip appears, and is activated when an active one goes.
TEST_F(TipWindow, TheHostMayDestroyItWhenItIsTold)
{
    const struct {
        UINT told;
        void (*act)(OpenTip&, CPoint);
    } occasions[] = {
        {WM_CAPTURECHANGED, [](OpenTip& shown, CPoint at) { shown.ShowTipWindow(at, 0, 0, kLong); }},
        {WM_CAPTURECHANGED,
         [](OpenTip& shown, CPoint at) {
             shown.ShowTipWindow(at, 0, kLong);
             shown.Expire(kShowTimer);
         }},
        {WM_ACTIVATE, [](OpenTip& shown, CPoint) { shown.HideTipWindow(); }},
        {WM_ACTIVATE, [](OpenTip& shown, CPoint) { shown.SendMessage(WM_KILLFOCUS); }},
        {WM_ACTIVATE, [](OpenTip& shown, CPoint) { shown.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(-9, 0)); }},
        {WM_ACTIVATE, [](OpenTip& shown, CPoint) { shown.ShowTipWindow(CRect(0, 0, 9, 9), CPoint(0, 0)); }}};
    for (const auto& occasion : occasions) {
        std::unique_ptr<OpenTip> other(new Lingering<OpenTip>);
        ASSERT_TRUE(other->Create(&host));
        other->SetTipText(L"t", L"b");
        if (occasion.told == WM_ACTIVATE) {
            other->ShowTipWindow(CRect(10, 10, 50, 50), CPoint(10, 10), VGTipShadow);
            other->SetActiveWindow();
        } else {
            host.SetCapture();
        }
        host.SetAnswer([&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message == occasion.told)
                other.reset();
            return {};
        });
        occasion.act(*other, OnScreen({10, 10}));
        host.SetAnswer({});
        EXPECT_EQ(other, nullptr);
        EXPECT_TRUE(Lingering<OpenTip>::IsUntouched());
        ::ReleaseCapture();
    }
}

TEST_F(TipWindow, GoesWithTheFocusAndItsParent)
{
    tip.SetTipText(L"t", L"");
    ASSERT_TRUE(tip.ShowTipWindow(OnScreen({10, 10}), VGTipShadow));
    tip.SendMessage(WM_KILLFOCUS);
    EXPECT_FALSE(tip.IsWindowVisible());
    ASSERT_TRUE(tip.ShowTipWindow(OnScreen({10, 10})));
    host.DestroyWindow();
    EXPECT_EQ(tip.m_hWnd, nullptr);
    EXPECT_FALSE(tip.ShowTipWindow(CRect(0, 0, 9, 9), CPoint(0, 0)));
    tip.HideTipWindow();
}

TEST_F(TipWindow, DrawsBordersTextsAndShadow)
{
    const COLORREF back = RGB(255, 250, 200);
    const COLORREF ink = RGB(120, 0, 0);
    const COLORREF edge = ::GetSysColor(COLOR_3DDKSHADOW);
    tip.SetTipText(L"Title 标题", L"first\nsecond line");
    tip.SetTipColors(back, ink);
    tip.SetMargins(CSize(6, 6));
    // Each shadow falls on the host, not on the shadow before, which the screen may still show.
    for (const DWORD style : {DWORD{0}, VGTipDoubleBorder, VGTipShadow, VGTipShadow | VGTipGradedShadow}) {
        tip.HideTipWindow();
        ASSERT_TRUE(tip.ShowTipWindow(OnScreen({40, 50}), style));
        // Painting it again must not darken the shadow again.
        for (int i = 0; i < 2; ++i)
            tip.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        const DibSurface shown = CaptureWindow(tip.m_hWnd);
        const CRect face = tip.m_rcClient;
        EXPECT_EQ(shown.Pixel(0, 0), edge);
        EXPECT_EQ(shown.Pixel(face.right - 1, face.bottom - 1), edge);
        EXPECT_EQ(shown.Pixel(1, 1), style == VGTipDoubleBorder ? edge : back);
        EXPECT_EQ(shown.Pixel(2, 2), back);
        EXPECT_GT(shown.Count(ink), 20);
        EXPECT_EQ(shown.Count(ink, CRect(0, 0, 7, face.bottom)), 0);
        if ((style & VGTipGradedShadow) == 0)
            continue;
        const COLORREF ground = HostWnd::kBackground;
        EXPECT_EQ(shown.Pixel(face.right + 2, 2), ground);
        EXPECT_EQ(shown.Pixel(face.right + 4, 30), RGB(185, 195, 205));
        EXPECT_EQ(shown.Pixel(face.right, 30), RGB(125, 135, 145));
        EXPECT_EQ(shown.Pixel(30, face.bottom + 3), RGB(170, 180, 190));
    }
}

TEST_F(TipWindow, TextsMayChangeWhileItIsShownOrWaits)
{
    tip.SetTipText(L"", L"old");
    ASSERT_TRUE(tip.ShowTipWindow(OnScreen({40, 50}), 0, kLong));
    tip.SetTipText(L"", L"the first line\nthe second");
    tip.Expire(kShowTimer);
    const int line = Extent(L"the", tip.m_fontNormal).cy;
    EXPECT_EQ(tip.m_rcClient.Height(), 2 * line);

    // A title that comes now pushes the body down.
    const COLORREF ink = RGB(120, 0, 0);
    tip.SetTipColors(RGB(255, 250, 200), ink);
    tip.SetTipText(L"Title", L"body", TRUE);
    const CRect below(2, Extent(L"Title", tip.m_fontBold).cy, tip.m_rcClient.right - 2, 2 * line - 1);
    EXPECT_GT(CaptureWindow(tip.m_hWnd).Count(ink, below), 10);
    tip.SendMessage(WM_PRINTCLIENT, 0, 0); // nothing to print on
}

TEST_F(TipWindow, ShadowsOnASurface)
{
    const COLORREF ground = RGB(70, 100, 200);
    DibSurface graded(30, 24, ground);
    tip.m_dwStyle = VGTipGradedShadow;
    const CRect rect(2, 3, 26, 20);
    tip.DrawShadowRect(&graded.DC(), rect);
    ExpectPixels(graded, [&](int x, int y) {
        const int ring = std::min({x - rect.left, y - rect.top, rect.right - 1 - x, rect.bottom - 1 - y});
        const int dark = ring < 0 || ring > 4 ? 0 : 15 * (ring + 1);
        return RGB(std::max(70 - dark, 0), 100 - dark, 200 - dark);
    });

    DibSurface dithered(30, 24, ground);
    tip.m_dwStyle = 0;
    tip.DrawShadowRect(&dithered.DC(), rect);
    const bool odd = dithered.Pixel(rect.left, rect.top) == ground;
    ExpectPixels(dithered, [&](int x, int y) {
        const bool kept = !rect.PtInRect(CPoint(x, y)) || ((x - rect.left + y - rect.top) % 2 == 0) == odd;
        return kept ? ground : RGB(0, 0, 0);
    });
}

TEST_F(TipWindow, TakesTheParentsTypeface)
{
    CFont font;
    font.CreatePointFont(200, L"Courier New");
    host.SetAnswer([&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_GETFONT)
            return reinterpret_cast<LRESULT>(font.m_hObject);
        return {};
    });
    OpenTip other;
    EXPECT_TRUE(other.Create(&host));
    host.SetAnswer({});
    LOGFONT face{};
    other.m_fontNormal.GetLogFont(&face);
    EXPECT_STREQ(face.lfFaceName, L"Courier New");
    EXPECT_EQ(face.lfHeight, 12);
    EXPECT_EQ(face.lfWeight, FW_NORMAL);
    tip.m_fontNormal.GetLogFont(&face);
    EXPECT_STREQ(face.lfFaceName, L"宋体");
}
