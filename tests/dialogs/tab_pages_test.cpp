#include "vgui/dialogs/tab_pages.h"

#include "tests/support/host_test.h"
#include "tests/support/lingering.h"
#include "vgui/foundation/gui_manager.h"

#include <array>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

using namespace support;

namespace
{

constexpr UINT kTemplate = 7301;
constexpr UINT kTabId = 55;

std::vector<int> g_changes;

class TestPage : public VTabPage
{
public:
    explicit TestPage(UINT id = kTemplate) : VTabPage(id) {}
    using VTabPage::m_clrBk;
    void OnActivate() override
    {
        log += 'a';
        if (onActivate)
            onActivate();
    }
    int OnDeactive() override
    {
        log += 'd';
        if (onDeactive)
            onDeactive();
        return mayLeave;
    }
    void OnDestroyP() override
    {
        log += m_hWnd != nullptr ? 'x' : '!';
        if (onDestroy)
            onDestroy();
    }

    std::function<void()> onActivate;
    std::function<void()> onDeactive;
    std::function<void()> onDestroy;
    std::string log;
    int mayLeave = 1;
};

class TestTabs : public VTabDlgCtrl
{
public:
    using VTabDlgCtrl::GetTitleRect;
    using VTabDlgCtrl::MapPageToTabItem;
    using VTabDlgCtrl::MapTabItemToPage;
};

class TabPages : public HostTest
{
protected:
    void SetUp() override
    {
        g_changes.clear();
        ASSERT_TRUE(host.Open());
        Create(tabs);
        tabs.SetFont(CFont::FromHandle(static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT))));
    }
    void TearDown() override
    {
        tabs.DestroyWindow();
        host.DestroyWindow();
    }
    void Create(TestTabs& control)
    {
        ASSERT_TRUE(control.Create(WS_CHILD | WS_VISIBLE, CRect(10, 10, 310, 210), &host, kTabId));
    }
    TestPage& Add(const wchar_t* title, int enabled = 1, UINT id = kTemplate, int createNow = 0)
    {
        pages.push_back(std::make_unique<TestPage>(id));
        tabs.AddPage(title, pages.back().get(), enabled, 0, createNow);
        return *pages.back();
    }
    void AddThree(int second = 1)
    {
        Add(L"常规设置");
        Add(L"B", second);
        Add(L"C");
    }
    void ClickTab(int item)
    {
        CRect rect;
        ASSERT_TRUE(tabs.GetItemRect(item, rect));
        Click(ClientToScreen(tabs.m_hWnd, rect.CenterPoint()));
    }
    // The page that is visible, -1 for none, -2 for several.
    [[nodiscard]] int Shown() const
    {
        int shown = -1;
        for (size_t i = 0; i < pages.size(); ++i) {
            if (pages[i]->m_hWnd != nullptr && pages[i]->IsWindowVisible())
                shown = shown == -1 ? static_cast<int>(i) : -2;
        }
        return shown;
    }

    std::vector<std::unique_ptr<TestPage>> pages;
    TestTabs tabs;
};

} // namespace

TEST_F(TabPages, ClicksShowPagesAndTellCallbackAndParent)
{
    AddThree(0);
    tabs.SetFunction([](int item) { g_changes.push_back(item); });
    EXPECT_EQ(tabs.GetItemCount(), 2);
    EXPECT_EQ(tabs.MapTabItemToPage(1), 2);
    EXPECT_EQ(tabs.MapPageToTabItem(2), 1);
    EXPECT_EQ(tabs.MapTabItemToPage(2), 3);
    EXPECT_EQ(tabs.GetActive(), -1);
    tabs.SetActive(0);
    ASSERT_EQ(Shown(), 0);
    EXPECT_EQ(pages[2]->m_hWnd, nullptr);
    EXPECT_EQ(pages[0]->m_clrBk, RGB(250, 250, 251));

    ClickTab(1);
    EXPECT_EQ(Shown(), 2);
    EXPECT_EQ(tabs.GetActive(), 2);
    EXPECT_EQ(pages[0]->log, "ad");
    EXPECT_EQ(g_changes, std::vector<int>{1});
    EXPECT_EQ(host.CountNotify(kTabId, TCN_SELCHANGE), 1);

    CRect tab;
    tabs.GetItemRect(0, tab);
    EXPECT_EQ(PlaceOf(*pages[2]), CRect(4, tab.Height() + 4, 296, 196));
}

TEST_F(TabPages, RefusingPageStaysShown)
{
    AddThree();
    tabs.SetActive(L"B");
    pages[1]->mayLeave = 0;
    ClickTab(2);
    EXPECT_EQ(Shown(), 1);
    EXPECT_EQ(tabs.GetActive(), 1);
    EXPECT_EQ(tabs.GetCurSel(), 2);
    tabs.SetActive(L"b");
    tabs.SetActive(7);
    tabs.SetActive(-1);
    EXPECT_EQ(Shown(), 1);
}

TEST_F(TabPages, TheTwentyFirstPageIsRefused)
{
    for (int i = 0; i < 20; ++i)
        Add(L"p");
    TestPage& last = Add(L"one too many");
    tabs.AddPage(L"none", nullptr, 1, 0, 1);
    EXPECT_EQ(tabs.GetPageNum(), 20);
    EXPECT_EQ(tabs.GetItemCount(), 20);
    tabs.SetActive(20);
    tabs.SetActive(L"one too many");
    EXPECT_EQ(last.m_hWnd, nullptr);
    EXPECT_EQ(tabs.GetInnerPageData(20).pPage, nullptr);
    EXPECT_EQ(tabs.GetInnerPageData(19).pPage, pages[19].get());
}

TEST_F(TabPages, PagesAreCreatedAgainAndDestroyedWithTheControl)
{
    AddThree();
    TestPage& broken = Add(L"broken", 1, 4712);
    tabs.SetActive(0);
    tabs.EnsureInitialized(1);
    constexpr LPCWSTR kMark = L"the first window";
    for (const int page : {0, 1})
        ::SetPropW(pages[page]->m_hWnd, kMark, pages[page]->m_hWnd);
    EXPECT_FALSE(pages[1]->IsWindowVisible());
    pages[0]->log.clear();
    pages[0]->mayLeave = 0; // has no say in it
    tabs.ReInitAllPages();
    EXPECT_EQ(pages[0]->log, "xa");
    EXPECT_EQ(pages[1]->log, "x");
    EXPECT_EQ(pages[2]->m_hWnd, nullptr);
    for (const int page : {0, 1})
        EXPECT_EQ(::GetPropW(pages[page]->m_hWnd, kMark), nullptr) << page;
    EXPECT_EQ(Shown(), 0);
    pages[0]->mayLeave = 1;

    tabs.SetActive(3);
    EXPECT_EQ(broken.m_hWnd, nullptr);
    EXPECT_EQ(tabs.GetActive(), -1);
    tabs.SetActive(1);
    pages[0]->DestroyWindow();
    tabs.DestroyWindow();
    EXPECT_EQ(pages[1]->log.back(), 'x');
    EXPECT_EQ(pages[1]->m_hWnd, nullptr);
    EXPECT_EQ(tabs.GetPageNum(), 0);
}

TEST_F(TabPages, APageMayShowAnotherOneWhenItIsDestroyed)
{
    AddThree();
    tabs.SetActive(0);
    pages[0]->onDestroy = [&] { tabs.SetActive(2); };
    tabs.ReInitPage(0);
    EXPECT_EQ(Shown(), 2);
    EXPECT_EQ(tabs.GetActive(), 2);
    EXPECT_NE(pages[0]->m_hWnd, nullptr);
    tabs.DestroyWindow();
    EXPECT_EQ(tabs.GetActive(), -1);
}

TEST_F(TabPages, AControlWithAWindowLeavesNothingWhenItsObjectGoes)
{
    TestPage page;
    HWND window = nullptr;
    {
        TestTabs brief;
        Create(brief);
        brief.AddPage(L"A", &page, 1, 0, 1);
        window = brief.m_hWnd;
    }
    EXPECT_EQ(page.log, "x");
    EXPECT_FALSE(::IsWindow(window));
}

namespace
{

// A modeless dialog whose object goes with its window.
struct GoingHost : CWnd {
    TestTabs tabs;
    void PostNcDestroy() override { delete this; }
};

} // namespace

TEST_F(TabPages, APageMayCloseAHostThatDeletesItself)
{
    using Hook = std::function<void()> TestPage::*;
    const auto select = [](TestTabs& control) {
        NMHDR header{control.m_hWnd, kTabId, TCN_SELCHANGE};
        control.GetParent()->SendMessage(WM_NOTIFY, kTabId, reinterpret_cast<LPARAM>(&header));
    };
    const auto size = [](TestTabs& control) {
        control.SetWindowPos(nullptr, 0, 0, 280, 180, SWP_NOMOVE | SWP_NOZORDER);
    };
    const struct {
        const char* name;
        Hook hook;
        std::function<void(TestTabs&)> act;
    } cases[] = {
        {"left for another page", &TestPage::onDeactive, [](TestTabs& control) { control.SetActive(1); }},
        {"left when disabled", &TestPage::onDeactive, [](TestTabs& control) { control.EnablePage(0, 0); }},
        {"left when sized", &TestPage::onDeactive, size},
        {"left by a click", &TestPage::onDeactive, select},
        {"shown when sized", &TestPage::onActivate, size},
        {"shown by a click", &TestPage::onActivate, select},
        {"shown anew", &TestPage::onActivate, [](TestTabs& control) { control.ReInitAllPages(); }},
        {"destroyed", &TestPage::onDestroy, [](TestTabs& control) { control.ReInitPage(0); }},
        {"destroyed with all", &TestPage::onDestroy, [](TestTabs& control) { control.ReInitAllPages(); }},
        {"destroyed with the control", &TestPage::onDestroy,
         [](TestTabs& control) { control.DestroyWindow(); }},
    };
    for (const auto& item : cases) {
        SCOPED_TRACE(item.name);
        TestPage first, second;
        auto* const going = new Lingering<GoingHost>;
        ASSERT_TRUE(going->CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP | WS_VISIBLE,
                                    CRect(0, 0, 400, 300), nullptr, 0));
        ASSERT_TRUE(going->tabs.Create(WS_CHILD | WS_VISIBLE, CRect(10, 10, 310, 210), going, kTabId));
        for (TestPage* const page : {&first, &second})
            going->tabs.AddPage(L"page", page, 1, 0, 1);
        going->tabs.SetActive(0);
        going->tabs.SetFunction([](int tab) { g_changes.push_back(tab); });
        const HWND window = going->m_hWnd;
        first.*item.hook = [window] { ::DestroyWindow(window); };
        item.act(going->tabs);
        EXPECT_FALSE(::IsWindow(window));
        EXPECT_TRUE(g_changes.empty());
        if (item.hook == &TestPage::onDestroy) {
            EXPECT_EQ(first.log, "ax") << "told once";
        }
        EXPECT_TRUE(Lingering<GoingHost>::IsUntouched());
    }
}

TEST_F(TabPages, SizingShowsThePageAgainUnlessItRefuses)
{
    AddThree();
    tabs.SetActive(0);
    pages[0]->GetDlgItem(1001)->SetFocus();
    tabs.SetWindowPos(nullptr, 0, 0, 280, 180, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(pages[0]->log, "ada");
    EXPECT_EQ(::GetFocus(), pages[0]->GetDlgItem(1001)->m_hWnd);
    const CRect kept = PlaceOf(*pages[0]);
    EXPECT_EQ(kept.Width(), 272);
    pages[0]->mayLeave = 0;
    tabs.SetWindowPos(nullptr, 0, 0, 200, 100, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(PlaceOf(*pages[0]), kept);
}

TEST_F(TabPages, OutDrivenModeShowsTheTitleBandAndIgnoresClicks)
{
    AddThree();
    tabs.SetFunction([](int item) { g_changes.push_back(item); });
    tabs.SetActive(0);
    CRect tab;
    tabs.GetItemRect(1, tab);
    tabs.SetOutDrivenMode(1);
    tabs.SetActive(0);
    Click(ClientToScreen(tabs.m_hWnd, tab.CenterPoint()));
    EXPECT_EQ(Shown(), 0);
    EXPECT_TRUE(g_changes.empty());
    EXPECT_EQ(tabs.GetTitleRect(), CRect(0, 0, 300, 25));

    const DibSurface shown = CaptureClient(tabs.m_hWnd);
    EXPECT_EQ(shown.Pixel(150, 0), RGB(66, 145, 220));
    EXPECT_EQ(shown.Pixel(150, 24), RGB(66, 145, 220));
    EXPECT_EQ(shown.Pixel(150, 1), RGB(217, 234, 252));
    EXPECT_EQ(shown.Pixel(290, 2), RGB(208, 228, 247));
    EXPECT_GT(shown.Count(VGM.Outline.clrTitleText, CRect(2, 2, 100, 23)), 10);
    EXPECT_EQ(PlaceOf(*pages[0]), CRect(1, 25, 299, 199));

    // The other mode takes the shown page along.
    tabs.SetCurSel(2);
    tabs.SetOutDrivenMode(0);
    EXPECT_EQ(tabs.GetCurSel(), 0);
    EXPECT_EQ(PlaceOf(*pages[0]), CRect(4, tab.Height() + 4, 296, 196));
    tabs.SetOutDrivenMode(1);
    EXPECT_EQ(PlaceOf(*pages[0]), CRect(1, 25, 299, 199));
}

TEST_F(TabPages, PagesAddedBeforeThereIsAWindowGetTheirTabs)
{
    for (const bool subclassed : {false, true}) {
        SCOPED_TRACE(subclassed);
        tabs.DestroyWindow();
        pages.clear();
        Add(L"A", 1, kTemplate, 1);
        Add(L"B", 0);
        Add(L"C");
        EXPECT_EQ(pages[0]->m_hWnd, nullptr);
        if (!subclassed)
            Create(tabs);
        else
            ASSERT_TRUE(
                tabs.SubclassWindow(::CreateWindow(WC_TABCONTROL, nullptr, WS_CHILD | WS_VISIBLE, 10, 10, 300,
                                                   200, host.m_hWnd, nullptr, nullptr, nullptr)));
        EXPECT_EQ(tabs.GetItemCount(), 2);
        ClickTab(1);
        EXPECT_EQ(Shown(), 2);
        tabs.EnablePage(L"B", 1);
        EXPECT_EQ(tabs.GetItemCount(), 3);
        EXPECT_EQ(tabs.GetCurSel(), 2);
    }
}

TEST_F(TabPages, PagesMayShowOthersFromTheirOwnCode)
{
    AddThree();
    pages[1]->onActivate = [&] { tabs.SetActive(2); };
    tabs.SetActive(0);
    tabs.SetActive(1);
    EXPECT_EQ(Shown(), 2);
    EXPECT_EQ(tabs.GetCurSel(), 2);
    tabs.SetActive(0);
    ClickTab(1);
    EXPECT_EQ(Shown(), 2);
    EXPECT_EQ(tabs.GetCurSel(), 2);

    // Two that pass on to each other come to an end.
    pages[2]->onActivate = [&] { tabs.SetActive(1); };
    tabs.SetActive(0);
    tabs.SetActive(1);
    EXPECT_EQ(Shown(), tabs.GetActive());
    EXPECT_EQ(tabs.GetCurSel(), tabs.GetActive());

    // While a page is asked, no other is shown.
    pages[2]->onActivate = nullptr;
    tabs.SetActive(0);
    pages[0]->onDeactive = [&] { tabs.SetActive(2); };
    pages[0]->mayLeave = 0;
    tabs.SetActive(1);
    EXPECT_EQ(Shown(), 0);

    // And it may close everything.
    pages[0]->onDeactive = [&] { host.DestroyWindow(); };
    pages[0]->mayLeave = 1;
    tabs.SetActive(1);
    EXPECT_EQ(tabs.m_hWnd, nullptr);
    EXPECT_EQ(tabs.GetActive(), -1);
}

namespace
{

// What the control must do, written down page by page.
struct PageModel {
    struct Page {
        bool enabled, created, mayLeave;
    };
    std::vector<Page> pages;
    int active = -1;

    int Count() const { return static_cast<int>(pages.size()); }
    bool Leave()
    {
        if (active >= 0 && !pages[active].mayLeave)
            return false;
        active = -1;
        return true;
    }
    void Show(int page)
    {
        if (!Leave())
            return;
        pages[page].created = true;
        active = page;
    }
    void Enable(int page, bool enable, int next)
    {
        if (pages[page].enabled == enable)
            return;
        pages[page].enabled = enable;
        if (enable || page != active)
            return;
        if (next == page || next < 0 || next >= Count() || !pages[next].enabled) {
            next = page;
            do
                next = next + 1 == Count() ? 0 : next + 1;
            while (next != page && !pages[next].enabled);
        }
        if (next == page)
            Leave();
        else
            Show(next);
    }
};

} // namespace

TEST_F(TabPages, AnyOrderOfChangesAgreesWithTheModel)
{
    std::mt19937 random(23);
    const auto draw = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
    for (int series = 0; series < 3; ++series) {
        PageModel model;
        for (int step = 0; step < 150; ++step) {
            if (model.pages.empty() || (step % 6 == 0 && model.Count() < 20)) {
                const bool enabled = draw(3) != 0;
                const bool now = draw(2) != 0;
                Add((L"page " + std::to_wstring(model.Count())).c_str(), enabled, kTemplate, now);
                model.pages.push_back({enabled, now, true});
            }
            const int page = draw(model.Count());
            const int action = draw(7);
            const bool wasSelected =
                model.active >= 0 && tabs.GetCurSel() == tabs.MapPageToTabItem(model.active);
            switch (action) {
            case 0:
            case 1:
                tabs.SetActive(page);
                model.Enable(page, true, -1);
                model.Show(page);
                break;
            case 2: {
                int next = draw(model.Count() + 2) - 1;
                const bool enable = draw(2) != 0;
                tabs.EnablePage(page, enable, draw(2) != 0 ? &next : &(next = -1));
                model.Enable(page, enable, next);
                break;
            }
            case 3:
                tabs.EnsureInitialized(page);
                model.pages[page].created = true;
                break;
            case 4:
                tabs.ReInitPage(page);
                break;
            case 5:
                model.pages[page].mayLeave = !model.pages[page].mayLeave;
                pages[page]->mayLeave = model.pages[page].mayLeave;
                break;
            default:
                tabs.SetWindowPos(nullptr, 0, 0, 250 + draw(50), 150 + draw(50), SWP_NOMOVE | SWP_NOZORDER);
            }

            SCOPED_TRACE("series " + std::to_string(series) + ", step " + std::to_string(step) + ", action " +
                         std::to_string(action) + " on page " + std::to_string(page));
            ASSERT_EQ(tabs.GetActive(), model.active);
            ASSERT_EQ(Shown(), model.active);
            // A tab that comes or goes in front of the active one does not take the selection.
            if (action == 2 && wasSelected && model.active >= 0 && model.pages[model.active].enabled) {
                ASSERT_EQ(tabs.GetCurSel(), tabs.MapPageToTabItem(model.active));
            }
            int items = 0;
            for (int i = 0; i < model.Count(); ++i) {
                ASSERT_EQ(pages[i]->m_hWnd != nullptr, model.pages[i].created) << i;
                ASSERT_EQ(tabs.IsPageEnabled(i) != 0, model.pages[i].enabled) << i;
                if (!model.pages[i].enabled)
                    continue;
                ASSERT_EQ(tabs.MapPageToTabItem(i), items);
                ASSERT_EQ(tabs.MapTabItemToPage(items), i);
                std::array<wchar_t, 32> text{};
                TCITEM item{};
                item.mask = TCIF_TEXT;
                item.pszText = text.data();
                item.cchTextMax = static_cast<int>(text.size());
                ASSERT_TRUE(tabs.GetItem(items++, &item));
                ASSERT_EQ(item.pszText, L"page " + std::to_wstring(i));
            }
            ASSERT_EQ(tabs.GetItemCount(), items);
        }
        tabs.DestroyWindow();
        for (const auto& page : pages)
            EXPECT_EQ(page->m_hWnd, nullptr);
        pages.clear();
        Create(tabs);
    }
}

TEST_F(TabPages, TheTitleBandHasThePagesBitmapAndNoArrows)
{
    constexpr UINT kGlyph = 5016;
    pages.push_back(std::make_unique<TestPage>());
    tabs.AddPage(L"with a bitmap", pages.back().get(), 1, kGlyph, 0);
    for (int i = 0; i < 8; ++i)
        Add(L"a caption that takes room");
    const auto arrows = [&] {
        const HWND window = ::FindWindowEx(tabs.m_hWnd, nullptr, UPDOWN_CLASS, nullptr);
        return window != nullptr && ::IsWindowVisible(window);
    };
    EXPECT_TRUE(arrows());
    tabs.SetOutDrivenMode(1);
    EXPECT_FALSE(arrows());
    Add(L"one more");
    tabs.SetWindowPos(nullptr, 0, 0, 280, 180, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_FALSE(arrows());
    tabs.SetActive(0);

    const DibSurface shown = CaptureClient(tabs.m_hWnd);
    BITMAP size{};
    const HBITMAP bitmap = tabs.GetInnerPageData(0).hBitmap;
    ASSERT_NE(::GetObject(bitmap, sizeof(size), &size), 0);
    DibSurface glyph(size.bmWidth, size.bmHeight);
    CDC source;
    source.CreateCompatibleDC(nullptr);
    const HGDIOBJ old = ::SelectObject(source.m_hDC, bitmap);
    glyph.DC().BitBlt(0, 0, size.bmWidth, size.bmHeight, &source, 0, 0, SRCCOPY);
    ::SelectObject(source.m_hDC, old);
    const CPoint at(10, 2);
    EXPECT_TRUE(AreasEqual(shown, CRect(at, CSize(size.bmWidth, size.bmHeight)), glyph, CPoint(0, 0)));

    tabs.SetActive(1);
    EXPECT_FALSE(AreasEqual(CaptureClient(tabs.m_hWnd), CRect(at, CSize(size.bmWidth, size.bmHeight)), glyph,
                            CPoint(0, 0)));
    tabs.SetOutDrivenMode(0);
    EXPECT_TRUE(arrows());
}

TEST_F(TabPages, TabsArePaintedByStateAndStyle)
{
    AddThree();
    tabs.SetActive(0);
    CRect selected, other;
    tabs.GetItemRect(0, selected);
    tabs.GetItemRect(1, other);
    EXPECT_NE(tabs.GetStyle() & TCS_HOTTRACK, 0u);
    DibSurface shown = CaptureClient(tabs.m_hWnd);
    // The selected tab is open towards the page, the other one is not.
    EXPECT_EQ(shown.Pixel(selected.left + 3, selected.bottom), VGM.Tab.clrPageBk);
    EXPECT_EQ(shown.Pixel(other.left + 3, other.bottom), VGM.Tab.clrFrame);
    EXPECT_EQ(shown.Pixel(other.left + 2, other.top + 3), VGM.Tab.clrFrom);

    tabs.SetDrawingStyle(0);
    EXPECT_EQ(CaptureClient(tabs.m_hWnd).Pixel(other.left + 2, other.top + 5), VGM.Tab.clrTo);
    MoveTo(ClientToScreen(tabs.m_hWnd, other.CenterPoint()));
    shown = CaptureClient(tabs.m_hWnd);
    EXPECT_EQ(shown.Pixel(other.left + 5, other.top + 3), VGM.Common.clrHot);
    MoveAside();
    EXPECT_TRUE(
        PumpUntil([&] { return ClientPixel(tabs.m_hWnd, other.TopLeft() + CSize(5, 3)) == VGM.Tab.clrTo; }));

    tabs.EnableWindow(FALSE);
    shown = CaptureClient(tabs.m_hWnd);
    EXPECT_EQ(shown.Count(VGM.Dlg.clrText, selected), 0);
    EXPECT_GT(shown.Count(::GetSysColor(COLOR_GRAYTEXT), selected), 5);
}
