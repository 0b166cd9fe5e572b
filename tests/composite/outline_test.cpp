#include "vgui/composite/outline.h"

#include "tests/support/census.h"
#include "tests/support/input.h"
#include "tests/support/pixels.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gui_manager.h"

#include <gtest/gtest.h>
#include <string>

using namespace support;

namespace
{

constexpr UINT kSelected = WM_USER + 525;
constexpr UINT kHelpGlyph = 5016; // a bitmap that the library has

class OpenOutline : public VOutlineEx
{
public:
    using VOutlineEx::GetItemRect;
    using VOutlineEx::IsIndexInRange;
    using VOutlineEx::m_items;
    using VOutlineEx::m_nHot;
    using VOutlineEx::PointToItem;

    void DrawOutlineItem(CDC* pDC, const CRect& rect, const Item& item, ItemStatus status) override
    {
        drawn += std::to_string(status);
        VOutlineEx::DrawOutlineItem(pDC, rect, item, status);
    }
    // The states of the items in the next picture.
    std::string Draw()
    {
        drawn.clear();
        Invalidate(FALSE);
        UpdateWindow();
        return drawn;
    }

    std::string drawn;
};

class Outline : public CensusTest
{
protected:
    void Open(LPCWSTR title = L"", LPCWSTR text = L"", int height = 151)
    {
        ASSERT_TRUE(host.Open({200, 200}));
        ASSERT_TRUE(outline.Create(L"", WS_CHILD | WS_VISIBLE, CRect(10, 10, 110, 10 + height), &host));
        outline.SetTitle(title);
        for (int i = 0; i < 3; ++i)
            outline.AddItem(text, kHelpGlyph);
        PumpMessages();
    }
    [[nodiscard]] CPoint OnScreen(CPoint client) const { return ClientToScreen(outline.m_hWnd, client); }

    HostWnd host;
    OpenOutline outline;
};

} // namespace

TEST_F(Outline, PlacesItemsBelowTheMarginAndTheTitle)
{
    Open();
    const CRect client(0, 0, 100, 151);
    EXPECT_EQ(outline.GetItemRect(0, client), CRect(2, 12, 98, 42));
    EXPECT_EQ(outline.GetItemRect(2, client), CRect(2, 74, 98, 104));
    EXPECT_EQ(outline.GetItemRect(1, CRect(5, 7, 50, 90)), CRect(7, 50, 48, 80));
    struct Place {
        int y, item;
    };
    for (const Place place : {Place{-20, -1}, {-18, 0}, {0, 0}, {12, 0}, {42, 0}, {43, 1}, {105, 3}})
        EXPECT_EQ(outline.PointToItem({50, place.y}), place.item) << place.y;
    outline.SetTitle(L"t");
    EXPECT_EQ(outline.GetItemRect(0, client).top, 32);
    EXPECT_EQ(outline.PointToItem({50, 62}), 0);
    EXPECT_EQ(outline.PointToItem({50, 63}), 1);
    EXPECT_FALSE(outline.IsIndexInRange(-1));
    EXPECT_TRUE(outline.IsIndexInRange(2));
    EXPECT_FALSE(outline.IsIndexInRange(3));
}

TEST_F(Outline, SelectsByIndexAndTextWithoutTelling)
{
    EXPECT_EQ(outline.GetSelected(), -1);
    for (const LPCWSTR text : {L"a", L"b", L"B", L"b"})
        outline.AddItem(text, 0);
    EXPECT_EQ(outline.m_items[0].bitmap, nullptr);
    outline.SetSelected(L"B");
    EXPECT_EQ(outline.GetSelected(), 2);
    outline.SetSelected(L"b");
    EXPECT_EQ(outline.GetSelected(), 1);
    outline.SetSelected(L"c");
    outline.SetSelected(4);
    outline.SetSelected(-1);
    EXPECT_EQ(outline.GetSelected(), 1);
}

TEST_F(Outline, ClickSelectsAndTellsTheParent)
{
    Open();
    Click(OnScreen({50, 3})); // in the margin
    EXPECT_EQ(outline.GetSelected(), 0);
    Click(OnScreen({50, 80}));
    Click(OnScreen({50, 90}));
    Click(OnScreen({50, 140})); // below the items
    EXPECT_EQ(outline.GetSelected(), 2);
    const RecordedMessages told = host.Messages(kSelected);
    ASSERT_EQ(told.size(), 2u);
    EXPECT_EQ(told[0].wParam, 0u);
    EXPECT_EQ(told[0].lParam, -1);
    EXPECT_EQ(told[1].wParam, 2u);
    EXPECT_EQ(told[1].lParam, 0);
}

TEST_F(Outline, HighlightFollowsTheMouse)
{
    Open();
    outline.SetSelected(1);
    MoveTo(OnScreen({50, 20}));
    EXPECT_EQ(outline.Draw(), "120");
    MoveTo(OnScreen({50, 50}));
    EXPECT_EQ(outline.Draw(), "020");
    MoveTo(OnScreen({50, 80}));
    EXPECT_EQ(outline.Draw(), "021");
    MoveTo(OnScreen({50, 140}));
    EXPECT_EQ(outline.Draw(), "020");
    for (int round = 0; round < 2; ++round) {
        MoveTo(OnScreen({50, 80}));
        EXPECT_EQ(outline.m_nHot, 2);
        MoveTo(ClientToScreen(host.m_hWnd, {180, 180}));
        EXPECT_TRUE(PumpUntil([&] { return outline.m_nHot == -1; }));
    }
}

TEST_F(Outline, DrawsRibsTitleAndItems)
{
    // One row more than a multiple of the ribs' distance: the last rib starts on the frame.
    Open(L"  ");
    outline.SetSelected(0);
    outline.Invalidate();
    MoveTo(OnScreen({50, 70}));
    const DibSurface shown = CaptureClient(outline.m_hWnd);
    const COLORREF frame = VGM.Outline.clrFrame;
    const COLORREF back = VGM.Outline.clrBk;
    const COLORREF rib = VGFadeColor(back, -20);
    EXPECT_EQ(shown.Pixel(0, 100), frame);
    EXPECT_EQ(shown.Pixel(99, 100), frame);
    EXPECT_EQ(shown.Pixel(50, 150), frame);
    EXPECT_EQ(shown.Pixel(1, 150), rib);
    for (int y = 130; y < 150; ++y)
        EXPECT_EQ(shown.Pixel(50, y), y % 5 == 2 ? rib : back) << y;

    const auto half = [](COLORREF over, COLORREF under) {
        const auto channel = [](int a, int b) { return (a * 128 + b * 127 + 127) / 255; };
        return RGB(channel(GetRValue(over), GetRValue(under)), channel(GetGValue(over), GetGValue(under)),
                   channel(GetBValue(over), GetBValue(under)));
    };
    const auto isNear = [](COLORREF a, COLORREF b) {
        return std::abs(GetRValue(a) - GetRValue(b)) <= 5 && std::abs(GetGValue(a) - GetGValue(b)) <= 5 &&
               std::abs(GetBValue(a) - GetBValue(b)) <= 5;
    };
    // Title, selected item and hot item: their frames, and the first row of their gradients.
    EXPECT_EQ(shown.Pixel(50, 19), frame);
    EXPECT_PRED2(isNear, shown.Pixel(50, 1), half(VGM.Outline.clrTitleFrom, back));
    EXPECT_PRED2(isNear, shown.Pixel(50, 33), half(VGM.Outline.clrSelFrom, back));
    EXPECT_PRED2(isNear, shown.Pixel(50, 32), half(frame, rib));
    EXPECT_PRED2(isNear, shown.Pixel(97, 45), half(VGFadeColor(frame, -30), back));
    EXPECT_PRED2(isNear, shown.Pixel(50, 64), half(back, back));
    EXPECT_PRED2(isNear, shown.Pixel(50, 91), half(frame, back));
    EXPECT_EQ(shown.Pixel(50, 93), back); // between the items, and the third one is bare
    EXPECT_EQ(shown.Pixel(50, 96), back);
}

TEST_F(Outline, TitleIsBoldAndTextsAreDrawn)
{
    Open(L"title 标题", L"item 项");
    const DibSurface shown = CaptureClient(outline.m_hWnd);
    EXPECT_GT(shown.Count(VGM.Outline.clrTitleText, CRect(12, 1, 98, 19)), 10);
    EXPECT_EQ(shown.Count(VGM.Outline.clrTitleText, CRect(1, 1, 12, 19)), 0);
    EXPECT_GT(shown.Count(RGB(0, 0, 0), CRect(2, 32, 98, 62)), 10);
    outline.SendMessage(WM_PRINTCLIENT, 0, 0); // nothing to print on
}

TEST_F(Outline, BitmapsGoWithTheWindow)
{
    Open();
    const HBITMAP bitmap = outline.m_items[0].bitmap;
    EXPECT_EQ(::GetObjectType(bitmap), static_cast<DWORD>(OBJ_BITMAP));
    outline.DestroyWindow();
    EXPECT_EQ(::GetObjectType(bitmap), 0u);
    // One added without a window goes with the object; the census would see it.
    outline.AddItem(L"late", kHelpGlyph);
}

TEST_F(Outline, LooksTheSameWhateverTheStaticIsTold)
{
    Open(L"title", L"text");
    const DibSurface before = CaptureClient(outline.m_hWnd);
    const auto expectUnchanged = [&](LPCSTR what) {
        outline.UpdateWindow();
        const DibSurface after = CaptureClient(outline.m_hWnd);
        EXPECT_TRUE(AreasEqual(after, after.Bounds(), before, CPoint(0, 0))) << what;
    };
    outline.EnableWindow(FALSE);
    expectUnchanged("disabled");
    outline.SetWindowText(L"a static's text");
    expectUnchanged("named");
    outline.SendMessage(WM_SETFONT, 0, TRUE);
    expectUnchanged("with a font");
    CString text;
    outline.GetWindowText(text);
    EXPECT_EQ(text, L"a static's text");
}

TEST_F(Outline, AnotherWindowStartsWithoutHighlight)
{
    Open();
    MoveTo(OnScreen({50, 50}));
    EXPECT_EQ(outline.m_nHot, 1);
    outline.DestroyWindow();
    EXPECT_EQ(outline.m_nHot, -1);
    MoveTo(ClientToScreen(host.m_hWnd, {180, 180}));
    ASSERT_TRUE(outline.Create(L"", WS_CHILD | WS_VISIBLE, CRect(10, 10, 110, 161), &host));
    MoveTo(OnScreen({50, 50}));
    EXPECT_EQ(outline.m_nHot, 1);
    MoveTo(ClientToScreen(host.m_hWnd, {180, 180}));
    EXPECT_TRUE(PumpUntil([&] { return outline.m_nHot == -1; })) << "is told when the mouse leaves";
}
