#include "vgui/controls/splitter_bar.h"

#include "tests/support/host_test.h"
#include "vgui/foundation/subclass_wnd.h"

#include <climits>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

using namespace support;

namespace
{

constexpr UINT kBarId = 77;
constexpr UINT kMovedVertical = 4345;
constexpr UINT kMovedHorizontal = 4346;
constexpr COLORREF kBarColor = RGB(10, 120, 30);

class OpenBar : public CSplitterBar
{
public:
    using CSplitterBar::CSplitterBar;
    using CSplitterBar::dragging;
    using CSplitterBar::GetMostCoordForPanes;
    using CSplitterBar::minSize1;
    using CSplitterBar::minSize2;
    using CSplitterBar::mostHigh;
    using CSplitterBar::mostLow;
};

// A pane that does something when it is moved.
struct Meddler : CStatic {
    std::function<void()> onMoved;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_WINDOWPOSCHANGED && onMoved)
            std::exchange(onMoved, nullptr)();
        return CStatic::WindowProc(message, wParam, lParam);
    }
};

// The same for the bar.
struct MeddlingHook : CSubclassWnd {
    std::function<void()> onMoved;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_WINDOWPOSCHANGED && onMoved)
            std::exchange(onMoved, nullptr)();
        return CSubclassWnd::WindowProc(message, wParam, lParam);
    }
};

// A host of 300 by 200 with two panes that leave 6 pixels for the bar.
class SplitterBar : public HostTest
{
protected:
    void Open(BOOL horizontal, DWORD color = kBarColor, DWORD hostStyle = WS_POPUP, DWORD hostExStyle = 0)
    {
        ASSERT_TRUE(host.Open({300, 200}, hostStyle, hostExStyle));
        const CRect first = horizontal ? CRect(10, 10, 290, 90) : CRect(10, 10, 140, 190);
        const CRect second = horizontal ? CRect(10, 96, 290, 190) : CRect(146, 10, 290, 190);
        ASSERT_TRUE(pane1.Create(_T(""), WS_CHILD | WS_VISIBLE, first, &host));
        ASSERT_TRUE(pane2.Create(_T(""), WS_CHILD | WS_VISIBLE, second, &host));
        bar = std::make_unique<OpenBar>(color);
        ASSERT_TRUE(bar->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 6, 6), &host, kBarId, horizontal));
        bar->SetPanes(&pane1, &pane2);
        PumpMessages();
    }

    void Close()
    {
        bar.reset();
        pane1.DestroyWindow();
        pane2.DestroyWindow();
        host.DestroyWindow();
    }
    [[nodiscard]] CPoint OnScreen(CPoint client) const { return ClientToScreen(host.m_hWnd, client); }

    // The leading edge jumps to the mouse, so the press is made on it.
    void DragTo(CPoint client)
    {
        Drag({OnScreen(PlaceOf(*bar).TopLeft()), OnScreen(client + CSize(3, 3)), OnScreen(client)});
        PumpMessages();
    }

    CStatic pane1;
    CStatic pane2;
    std::unique_ptr<OpenBar> bar;
};

} // namespace

TEST_F(SplitterBar, FitsBetweenItsPanes)
{
    Open(FALSE);
    EXPECT_EQ(PlaceOf(*bar), CRect(140, 10, 146, 190));
    EXPECT_EQ(bar->mostLow, 10);
    EXPECT_EQ(bar->mostHigh, 284);

    // The first pane's height does not count for the bar's, its top does.
    pane1.MoveWindow(10, 50, 100, 140);
    pane2.MoveWindow(120, 20, 170, 10);
    bar->SetPanes(&pane1, &pane2);
    EXPECT_EQ(PlaceOf(*bar), CRect(110, 20, 120, 50));
}

TEST_F(SplitterBar, DragMovesBarAndPanesAndTellsTheParent)
{
    const struct {
        BOOL horizontal;
        CPoint to;
        CRect bar, pane1, pane2;
        UINT told, other;
        CPoint distance;
    } cases[] = {
        {FALSE,
         {110, 10},
         {110, 10, 116, 190},
         {10, 10, 110, 190},
         {116, 10, 290, 190},
         kMovedHorizontal,
         kMovedVertical,
         {-30, 0}},
        {TRUE,
         {10, 60},
         {10, 60, 290, 66},
         {10, 10, 290, 60},
         {10, 66, 290, 190},
         kMovedVertical,
         kMovedHorizontal,
         {0, -30}},
    };
    for (const auto& c : cases) {
        Open(c.horizontal);
        host.Clear();
        DragTo(c.to);
        EXPECT_EQ(PlaceOf(*bar), c.bar);
        EXPECT_EQ(PlaceOf(pane1), c.pane1);
        EXPECT_EQ(PlaceOf(pane2), c.pane2);
        const RecordedMessages told = host.Messages(c.told);
        ASSERT_EQ(told.size(), 1u);
        EXPECT_EQ(told[0].wParam, kBarId);
        EXPECT_EQ(
            CPoint(static_cast<short>(LOWORD(told[0].lParam)), static_cast<short>(HIWORD(told[0].lParam))),
            c.distance);
        EXPECT_TRUE(host.Messages(c.other).empty());
        EXPECT_EQ(::GetCapture(), nullptr);
        Close();
    }
}

TEST_F(SplitterBar, LimitsHoldAndTheUpperOneWinsWhenTheyCross)
{
    Open(FALSE);
    bar->SetPanesMiniSize(-5, 10);
    EXPECT_EQ(bar->minSize1, 0);
    EXPECT_EQ(bar->minSize2, 10);

    bar->SetPanesMiniSize(40, 50);
    DragTo({2, 10});
    EXPECT_EQ(PlaceOf(*bar).left, 50);
    DragTo({295, 10});
    EXPECT_EQ(PlaceOf(*bar).left, 234);
    bar->SetPanesMiniSize(200, 200);
    DragTo({150, 10});
    EXPECT_EQ(bar->mostLow, 210);
    EXPECT_EQ(bar->mostHigh, 84);
    EXPECT_EQ(PlaceOf(*bar).left, 84);
    bar->SetPanesMiniSize(INT_MAX, INT_MAX);
    bar->SetPanes(&pane1, &pane2);
    EXPECT_LT(bar->mostHigh, 0);
    EXPECT_GT(bar->mostLow, 0);
}

TEST_F(SplitterBar, OutDriveModeLeavesThePanesAndTheLimitsAlone)
{
    Open(FALSE);
    bar->SetOutDriveMode(TRUE);
    bar->SetPanesMiniSize(100, 100);
    DragTo({4, 10});
    EXPECT_EQ(PlaceOf(*bar).left, 4);
    EXPECT_EQ(PlaceOf(pane1), CRect(10, 10, 140, 190));
    EXPECT_EQ(PlaceOf(pane2), CRect(146, 10, 290, 190));
    const RecordedMessages told = host.Messages(kMovedHorizontal);
    ASSERT_EQ(told.size(), 1u);
    EXPECT_EQ(static_cast<short>(LOWORD(told[0].lParam)), 4 - 140);
}

TEST_F(SplitterBar, DragPictureFollowsTheMouseAndGoesWithTheCapture)
{
    // With a caption, so that the window's corner is not that of the client area.
    Open(FALSE, kBarColor, WS_POPUP | WS_CAPTION);
    const DibSurface before = CaptureClient(host.m_hWnd);
    MoveTo(OnScreen({140, 50}));
    Press();
    MoveTo(OnScreen({200, 50}));
    EXPECT_TRUE(bar->dragging);
    const DibSurface during = CaptureClient(host.m_hWnd);
    const CRect picture(200, 10, 206, 190);
    int changed = 0;
    for (int y = 0; y < during.Height(); ++y) {
        for (int x = 0; x < during.Width(); ++x) {
            if (during.Pixel(x, y) == before.Pixel(x, y))
                continue;
            ++changed;
            EXPECT_TRUE(picture.PtInRect(CPoint(x, y))) << x << ' ' << y;
        }
    }
    EXPECT_EQ(changed, picture.Width() * picture.Height() / 2);

    ::ReleaseCapture();
    EXPECT_FALSE(bar->dragging);
    ExpectPixels(CaptureClient(host.m_hWnd), [&](int x, int y) { return before.Pixel(x, y); });
    Release();
    EXPECT_EQ(PlaceOf(*bar).left, 140);
    EXPECT_TRUE(host.Messages(kMovedHorizontal).empty());
}

TEST_F(SplitterBar, ReleaseWithoutAMoveBeforeItLeavesNoPicture)
{
    Open(FALSE);
    bar->SetOutDriveMode(TRUE);
    const DibSurface before = CaptureClient(host.m_hWnd);
    bar->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(0, 20));
    bar->SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(50, 20));
    bar->SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(90, 20));
    PumpMessages();
    const DibSurface after = CaptureClient(host.m_hWnd);
    EXPECT_TRUE(AreasEqual(after, CRect(146, 10, 228, 190), before, CPoint(146, 10)));
    EXPECT_EQ(PlaceOf(*bar).left, 230);
}

TEST_F(SplitterBar, PaintsALineInTheMiddleOrNothing)
{
    Open(FALSE);
    pane1.MoveWindow(10, 10, 130, 180);
    pane2.MoveWindow(147, 10, 143, 180);
    bar->SetPanes(&pane1, &pane2);
    bar->Invalidate();
    const DibSurface shown = CaptureClient(bar->m_hWnd);
    ASSERT_EQ(shown.Width(), 7);
    EXPECT_EQ(shown.Pixel(2, 90), ::GetSysColor(COLOR_BTNHIGHLIGHT));
    EXPECT_EQ(shown.Pixel(3, 90), kBarColor);
    EXPECT_EQ(shown.Pixel(4, 90), ::GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(shown.Count(kBarColor), 180 - 2);
}

TEST_F(SplitterBar, ColourZeroPaintsNothingAndStillDrags)
{
    Open(FALSE, 0);
    CClientDC dc(bar.get());
    dc.FillSolidRect(0, 0, 6, 180, RGB(1, 2, 3));
    bar->Invalidate(FALSE);
    bar->UpdateWindow();
    EXPECT_EQ(CaptureClient(bar->m_hWnd).Count(RGB(1, 2, 3)), 6 * 180);
    DragTo({100, 10});
    EXPECT_EQ(PlaceOf(*bar).left, 100);
}

TEST_F(SplitterBar, ShowsTheSplitCursorsOverTheBar)
{
    for (const BOOL horizontal : {FALSE, TRUE}) {
        Open(horizontal);
        const LPCTSTR name = MAKEINTRESOURCE(horizontal ? 30981 : 30980);
        const HINSTANCE module = AfxFindResourceHandle(name, RT_GROUP_CURSOR);
        ASSERT_NE(::FindResource(module, name, RT_GROUP_CURSOR), nullptr);
        MoveTo(CenterOf(bar->m_hWnd));
        EXPECT_EQ(::GetCursor(), ::LoadCursor(module, name));
        MoveTo(OnScreen({5, 5}));
        ::SetCursor(nullptr);
        bar->SendMessage(WM_SETCURSOR, reinterpret_cast<WPARAM>(bar->m_hWnd),
                         MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
        EXPECT_NE(::GetCursor(), ::LoadCursor(module, name));
        Close();
    }
}

// Both panes go to their places in one batch: what the first does when it is moved does not lead the second
// astray.
TEST_F(SplitterBar, BothPanesAreMeasuredBeforeEitherIsMoved)
{
    Open(FALSE);
    Meddler first;
    ASSERT_TRUE(first.Create(_T(""), WS_CHILD | WS_VISIBLE, PlaceOf(pane1), &host));
    bar->SetPanes(&first, &pane2);
    const auto moveBar = [&](int left) { bar->MoveWindow(left, 10, 6, 180); };
    moveBar(100);
    first.onMoved = [&] { pane2.MoveWindow(146, 100, 50, 20); };
    bar->MovePanes();
    EXPECT_EQ(PlaceOf(first), CRect(10, 10, 100, 190));
    EXPECT_EQ(PlaceOf(pane2), CRect(106, 10, 290, 190));

    PumpMessages();
    host.UpdateWindow();
    MessageSpy spy(host.m_hWnd);
    moveBar(120);
    bar->MovePanes();
    PumpMessages();
    EXPECT_LE(spy.Count(WM_PAINT), 1);
    EXPECT_EQ(PlaceOf(pane2).left, 126);

    moveBar(90);
    first.onMoved = [&] { pane2.DestroyWindow(); };
    bar->MovePanes();
    EXPECT_EQ(PlaceOf(first).right, 90);
}

TEST_F(SplitterBar, SurvivesWhatTheParentDoesWhenTold)
{
    Open(FALSE);
    host.SetAnswer([&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == kMovedHorizontal)
            bar.reset();
        return {};
    });
    DragTo({100, 10});
    EXPECT_EQ(bar, nullptr);
    EXPECT_EQ(PlaceOf(pane2).left, 106);
    host.SetAnswer({});
}

TEST_F(SplitterBar, APaneMayDestroyTheBarWhenItIsMoved)
{
    Open(FALSE);
    Meddler first;
    ASSERT_TRUE(first.Create(_T(""), WS_CHILD | WS_VISIBLE, PlaceOf(pane1), &host));
    bar->SetPanes(&first, &pane2);
    first.onMoved = [&] { bar.reset(); };
    DragTo({100, 10});
    EXPECT_EQ(bar, nullptr);
    EXPECT_EQ(PlaceOf(pane2).left, 106);
    const RecordedMessages told = host.Messages(kMovedHorizontal);
    ASSERT_EQ(told.size(), 1u);
    EXPECT_EQ(told[0].wParam, kBarId);
}

TEST_F(SplitterBar, ItsOwnMoveMayDestroyTheBarOrTakeTheCapture)
{
    MeddlingHook hook;
    Open(FALSE);
    ASSERT_TRUE(hook.HookWindow(bar.get()));
    hook.onMoved = [&] { bar.reset(); };
    DragTo({100, 10});
    EXPECT_EQ(bar, nullptr);
    EXPECT_EQ(host.Messages(kMovedHorizontal).size(), 1u);
    EXPECT_EQ(::GetCapture(), nullptr);
    Close();

    Open(FALSE);
    pane1.MoveWindow(10, 10, 100, 180);
    ASSERT_TRUE(hook.HookWindow(bar.get()));
    hook.onMoved = [&] { bar.reset(); };
    bar->SetPanes(&pane1, &pane2);
    EXPECT_EQ(bar, nullptr);
    Close();

    // The picture is off by then, so there is none to take off. The drop is a place that the limits do not
    // allow.
    Open(FALSE);
    pane2.ShowWindow(SW_HIDE);
    PumpMessages();
    const DibSurface before = CaptureClient(host.m_hWnd);
    ASSERT_TRUE(hook.HookWindow(bar.get()));
    hook.onMoved = [] { ::ReleaseCapture(); };
    bar->SetPanesMiniSize(0, 100);
    DragTo({250, 10});
    EXPECT_EQ(PlaceOf(*bar).left, 184);
    const CRect picture(250, 10, 256, 190);
    EXPECT_TRUE(AreasEqual(CaptureClient(host.m_hWnd), picture, before, picture.TopLeft()));
    hook.Unhook();
}

TEST_F(SplitterBar, LimitsHoldInAMirroredParent)
{
    Open(FALSE, kBarColor, WS_POPUP | WS_BORDER, WS_EX_LAYOUTRTL);
    const DibSurface before = CaptureClient(host.m_hWnd);
    DibSurface during(1, 1);
    const auto dropAt = [&](int left) {
        CRect place(left, 30, left + 6, 36);
        host.ClientToScreen(place);
        CPoint point = place.TopLeft();
        bar->ScreenToClient(&point);
        bar->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 20));
        bar->SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(point.x, point.y));
        during = CaptureClient(host.m_hWnd);
        bar->SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(point.x, point.y));
        PumpMessages();
        return PlaceOf(*bar).left;
    };
    EXPECT_EQ(dropAt(110), 110);
    for (int x = 100; x < 126; ++x) { // the picture was where the bar was dropped
        const CRect column(x, 20, x + 1, 180);
        EXPECT_EQ(static_cast<bool>(AreasEqual(during, column, before, column.TopLeft())),
                  x < 110 || x >= 116)
            << x;
    }
    EXPECT_EQ(PlaceOf(pane1), CRect(10, 10, 110, 190));
    EXPECT_EQ(PlaceOf(pane2), CRect(116, 10, 290, 190));
    const RecordedMessages told = host.Messages(kMovedHorizontal);
    ASSERT_EQ(told.size(), 1u);
    EXPECT_EQ(static_cast<short>(LOWORD(told[0].lParam)), 30) << "to the right on the screen";
    EXPECT_EQ(dropAt(2), 10);
    EXPECT_EQ(dropAt(295), 284);
}

TEST_F(SplitterBar, ABarThatGoesInADragTakesItsPictureAlong)
{
    Open(FALSE);
    const DibSurface before = CaptureClient(host.m_hWnd);
    MoveTo(OnScreen({140, 50}));
    Press();
    MoveTo(OnScreen({200, 50}));
    const CRect picture(200, 10, 206, 190);
    ASSERT_FALSE(AreasEqual(CaptureClient(host.m_hWnd), picture, before, picture.TopLeft()));
    bar.reset();
    EXPECT_TRUE(AreasEqual(CaptureClient(host.m_hWnd), picture, before, picture.TopLeft()));
    Release();
}

TEST_F(SplitterBar, WorksWithoutPanesParentOrWindow)
{
    OpenBar loose;
    EXPECT_FALSE(loose.Create(WS_CHILD, CRect(0, 0, 5, 5), nullptr, 1, FALSE));
    loose.SetPanes(nullptr, nullptr);
    loose.MovePanes();
    loose.GetMostCoordForPanes();
    EXPECT_FALSE(loose.IsCursorOverSplitter(CPoint(0, 0)));

    Open(FALSE);
    pane2.DestroyWindow();
    DragTo({400, 10});
    EXPECT_EQ(PlaceOf(*bar).left, 294);
    EXPECT_EQ(PlaceOf(pane1), CRect(10, 10, 294, 190));
}
