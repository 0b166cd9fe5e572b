#include "tests/support/host_test.h"
#include "vgui/dialogs/tab_pages.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gui_manager.h"

#include <functional>

using namespace support;

namespace
{

constexpr UINT kTabId = 56;
constexpr int kImageSize = 10;
constexpr COLORREF kImage = RGB(10, 200, 30);

class TabCtrl : public HostTest
{
protected:
    void Open(DWORD style, CSize size = {300, 120})
    {
        ASSERT_TRUE(host.Open({400, 300}));
        ASSERT_TRUE(tabs.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, CRect(CPoint(10, 10), size),
                                &host, kTabId));
        tabs.SetFont(CFont::FromHandle(static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT))));
    }
    void TearDown() override
    {
        tabs.DestroyWindow();
        host.DestroyWindow();
    }

    // A list of one square picture.
    void CreateImages()
    {
        ASSERT_TRUE(images.Create(kImageSize, kImageSize, ILC_COLOR24, 1, 1));
        AddSquare(images, kImageSize, kImage);
    }
    [[nodiscard]] CRect Tab(int item) const
    {
        CRect rect;
        EXPECT_TRUE(tabs.GetItemRect(item, rect));
        return rect;
    }
    // The columns of an area in which there is text: the first and the one after the last.
    [[nodiscard]] static std::pair<int, int> TextColumns(const DibSurface& shown, const CRect& area)
    {
        int first = area.right;
        int end = area.left;
        for (int x = area.left; x < area.right; ++x) {
            if (shown.Count(VGM.Dlg.clrText, CRect(x, area.top, x + 1, area.bottom)) == 0)
                continue;
            first = std::min(first, x);
            end = x + 1;
        }
        return {first, end};
    }

    VTabCtrl tabs;
    CImageList images;
};

} // namespace

TEST_F(TabCtrl, RowsOfTabsLeaveNoGap)
{
    Open(TCS_MULTILINE, {200, 150});
    for (const LPCWSTR caption :
         {L"one", L"two and more", L"three", L"a fourth caption", L"five", L"six six"})
        tabs.InsertItem(tabs.GetItemCount(), caption);
    ASSERT_GE(tabs.GetRowCount(), 2);
    const auto expectNoGap = [&] {
        const DibSurface shown = CaptureClient(tabs.m_hWnd);
        const COLORREF behind = ::GetSysColor(COLOR_BTNFACE);
        for (int item = 0; item < tabs.GetItemCount(); ++item) {
            const CRect tab = Tab(item);
            for (int y = tab.top + 2; y < tab.bottom + 2; ++y)
                EXPECT_NE(shown.Pixel(tab.left + 3, y), behind) << item << ", " << y - tab.top;
            EXPECT_EQ(shown.Pixel(tab.left, tab.CenterPoint().y), VGM.Tab.clrFrame) << item;
        }
        const CRect selected = Tab(tabs.GetCurSel());
        EXPECT_EQ(shown.Pixel(selected.left + 3, selected.bottom), VGM.Tab.clrPageBk);
    };
    tabs.SetCurSel(0);
    expectNoGap();
    // The row with the selected tab comes down to the page.
    tabs.SetCurSel(5);
    expectNoGap();
}

TEST_F(TabCtrl, PageHasBothRingsOfAControlFrame)
{
    Open(0);
    tabs.InsertItem(0, L"one");
    const DibSurface shown = CaptureClient(tabs.m_hWnd);
    const CPoint corner = shown.Bounds().BottomRight() - CSize(1, 1);
    EXPECT_EQ(shown.Pixel(corner), VGM.Tab.clrFrame);
    EXPECT_EQ(shown.Pixel(corner - CSize(1, 1)), VGFadeColor(VGM.Tab.clrFrame, VGM.Common.nCtrlFrameFade));
    EXPECT_EQ(shown.Pixel(corner - CSize(2, 2)), VGM.Tab.clrPageBk);
    EXPECT_EQ(shown.Pixel(1, Tab(0).bottom + 3), RGB(255, 255, 255));
}

TEST_F(TabCtrl, CaptionsAreCentredAndCutAtTheMargin)
{
    Open(TCS_FIXEDWIDTH);
    tabs.SetItemSize(CSize(60, 20));
    for (const LPCWSTR caption : {L"x", L"图层", L"a caption much too long for its tab", L"&A"})
        tabs.InsertItem(tabs.GetItemCount(), caption);
    const DibSurface shown = CaptureClient(tabs.m_hWnd);
    for (const int item : {1, 3}) {
        const auto [first, end] = TextColumns(shown, Tab(item));
        ASSERT_LT(first, end) << item;
        EXPECT_NEAR(first - Tab(item).left, Tab(item).right - end, 3) << item;
    }
    const CRect cut = Tab(2);
    const auto [first, end] = TextColumns(shown, cut);
    EXPECT_GE(first, cut.left + 4);
    EXPECT_LE(end, cut.right - 4);
    EXPECT_GT(end - first, 35);
    // An ellipsis ends it: what is in its last columns stands on the base line.
    EXPECT_EQ(shown.Count(VGM.Dlg.clrText, CRect(end - 6, cut.top, end, cut.top + 10)), 0);
}

// Whatever changes the picture, the screen shows the new one without a further request to paint.
TEST_F(TabCtrl, EveryChangeIsPainted)
{
    Open(0);
    CreateImages();
    for (const LPCWSTR caption : {L"one", L"two", L"three", L"four"})
        tabs.InsertItem(tabs.GetItemCount(), caption, 0);
    CEdit other;
    ASSERT_TRUE(other.Create(WS_CHILD | WS_VISIBLE, CRect(10, 250, 60, 270), &host, 1));
    other.SetFocus();
    PumpMessages();

    TCITEM item{};
    item.mask = TCIF_TEXT;
    std::wstring text = L"another";
    item.pszText = text.data();
    const std::pair<const char*, std::function<void()>> changes[] = {
        {"focus", [&] { tabs.SetFocus(); }},
        {"arrow key", [&] { Key(VK_RIGHT); }},
        {"images", [&] { tabs.SetImageList(&images); }},
        {"text", [&] { tabs.SetItem(2, &item); }},
        {"selection", [&] { tabs.SetCurSel(3); }},
        {"click",
         [&] {
             Click(ClientToScreen(tabs.m_hWnd, Tab(0).CenterPoint()));
             MoveAside();
         }},
        {"size", [&] { tabs.SetWindowPos(nullptr, 0, 0, 320, 130, SWP_NOMOVE | SWP_NOZORDER); }},
        {"insertion", [&] { tabs.InsertItem(0, L"zero"); }},
        {"deletion", [&] { tabs.DeleteItem(1); }},
        {"focus lost", [&] { other.SetFocus(); }},
        {"disabled", [&] { tabs.EnableWindow(FALSE); }},
        {"no images", [&] { tabs.SetImageList(nullptr); }},
    };
    for (const auto& [name, change] : changes) {
        SCOPED_TRACE(name);
        const DibSurface before = CaptureClient(tabs.m_hWnd);
        change();
        PumpMessages();
        const DibSurface shown = CaptureClient(tabs.m_hWnd);
        tabs.RedrawWindow();
        const DibSurface whole = CaptureClient(tabs.m_hWnd);
        EXPECT_TRUE(AreasEqual(shown, shown.Bounds(), whole, CPoint(0, 0)));
        EXPECT_FALSE(shown.Bounds() == before.Bounds() &&
                     AreasEqual(shown, shown.Bounds(), before, CPoint(0, 0)));
    }
}

TEST_F(TabCtrl, TheFocusIsOnTheSelectedTabOnly)
{
    Open(0);
    for (const LPCWSTR caption : {L"one", L"two"})
        tabs.InsertItem(tabs.GetItemCount(), caption);
    tabs.SetFocus();
    Key(VK_RIGHT);
    EXPECT_EQ(tabs.GetCurSel(), 1);
    const DibSurface focused = CaptureClient(tabs.m_hWnd);
    host.SetFocus();
    PumpMessages();
    const DibSurface bare = CaptureClient(tabs.m_hWnd);
    CRect inside = Tab(1);
    inside.DeflateRect(3, 3, 2, 2);
    int dots = 0;
    for (int y = 0; y < bare.Height(); ++y) {
        for (int x = 0; x < bare.Width(); ++x) {
            if (bare.Pixel(x, y) == focused.Pixel(x, y))
                continue;
            ++dots;
            EXPECT_TRUE(inside.PtInRect(CPoint(x, y))) << x << ' ' << y;
        }
    }
    // Every second pixel of the rectangle's outline.
    EXPECT_NEAR(dots, inside.Width() + inside.Height() - 2, 4);
}

TEST_F(TabCtrl, ImagesStandBeforeTheCaptions)
{
    Open(0);
    CreateImages();
    tabs.SetImageList(&images);
    tabs.InsertItem(0, L"image", 0);
    tabs.InsertItem(1, L"none");
    tabs.InsertItem(2, L"no such image", 7);
    tabs.SetCurSel(0);
    const DibSurface shown = CaptureClient(tabs.m_hWnd);
    const CRect tab = Tab(0);
    EXPECT_EQ(shown.Count(kImage, CRect(tab.left + 4, tab.top, tab.left + 4 + kImageSize, tab.bottom)),
              kImageSize * kImageSize);
    EXPECT_EQ(shown.Count(kImage), kImageSize * kImageSize);
    EXPECT_GE(TextColumns(shown, tab).first, tab.left + 4 + kImageSize);
    EXPECT_LT(TextColumns(shown, Tab(2)).first, Tab(2).right);

    tabs.EnableWindow(FALSE);
    EXPECT_LE(CaptureClient(tabs.m_hWnd).Count(kImage), kImageSize * kImageSize / 2);
}

TEST_F(TabCtrl, ArrowsForTabsThatDoNotFitAreNotPaintedOver)
{
    Open(0, {120, 80});
    for (int i = 0; i < 6; ++i)
        tabs.InsertItem(i, L"caption");
    const HWND arrows = ::FindWindowEx(tabs.m_hWnd, nullptr, UPDOWN_CLASS, nullptr);
    ASSERT_TRUE(::IsWindowVisible(arrows));
    const DibSurface own = CaptureWindow(arrows);
    tabs.Invalidate();
    tabs.UpdateWindow();
    CRect place;
    ::GetWindowRect(arrows, place);
    tabs.ScreenToClient(place);
    EXPECT_TRUE(AreasEqual(CaptureClient(tabs.m_hWnd), place, own, CPoint(0, 0)));
}

TEST_F(TabCtrl, WhatIsPrintedIsWhatIsShown)
{
    ASSERT_TRUE(host.Open({400, 300}));
    for (const int outDriven : {0, 1}) {
        VTabDlgCtrl pages;
        ASSERT_TRUE(pages.Create(WS_CHILD | WS_VISIBLE, CRect(10, 10, 210, 110), &host, kTabId));
        pages.SetOutDrivenMode(outDriven);
        pages.InsertItem(0, L"A");
        const DibSurface shown = CaptureClient(pages.m_hWnd);
        DibSurface printed(shown.Width(), shown.Height());
        pages.SendMessage(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(printed.DC().m_hDC), PRF_CLIENT);
        EXPECT_TRUE(AreasEqual(printed, printed.Bounds(), shown, CPoint(0, 0))) << outDriven;
    }
}

TEST_F(TabCtrl, ASecondWindowIsNotHot)
{
    const auto openWithTabs = [&] {
        ASSERT_TRUE(tabs.Create(WS_CHILD | WS_VISIBLE, CRect(10, 10, 310, 130), &host, kTabId));
        tabs.InsertItem(0, L"selected");
        tabs.InsertItem(1, L"other");
        PumpMessages();
    };
    const auto hotPixels = [&] { return CaptureClient(tabs.m_hWnd).Count(VGM.Common.clrHot); };
    ASSERT_TRUE(host.Open({400, 300}));
    openWithTabs();
    MoveTo(ClientToScreen(tabs.m_hWnd, Tab(1).CenterPoint()));
    PumpMessages();
    EXPECT_GT(hotPixels(), 0);
    tabs.DestroyWindow();
    MoveTo(ClientToScreen(host.m_hWnd, {350, 250}));
    openWithTabs();
    EXPECT_EQ(hotPixels(), 0);
}
