#include "vgui/controls/tool_bar.h"

#include "tests/controls/skinned_host.h"
#include "tests/support/host_test.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gui_manager.h"

#include <climits>

using namespace support;

namespace
{

constexpr UINT kBarId = 600;
constexpr UINT kFirst = 700; // a plain button
constexpr UINT kCheck = 701;
constexpr UINT kDrop = 702;
constexpr UINT kOff = 703;
constexpr COLORREF kImageColor = RGB(0, 128, 64);
const CRect kPlace(10, 10, 310, 50);

class ToolBar : public HostTest
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(host.Open());
        ASSERT_TRUE(images.Create(16, 16, ILC_COLOR24 | ILC_MASK, 1, 1));
        AddSquare(images, 16, kImageColor);
    }
    void Create(DWORD style = 0)
    {
        ASSERT_TRUE(bar.DlgCreate(&host, kPlace, kBarId, style));
        bar.SetImageList(&images);
        ASSERT_TRUE(bar.SetButton(0, kFirst, 0, BTNS_BUTTON, L"直线", L"画直线"));
        ASSERT_TRUE(bar.SetButton(1, 0, 0, BTNS_SEP));
        ASSERT_TRUE(bar.SetButton(2, kCheck, 0, BTNS_CHECK));
        ASSERT_TRUE(bar.SetButton(3, kDrop, 0, BTNS_DROPDOWN, L"more", L"tip of more"));
        ASSERT_TRUE(bar.SetButton(4, kOff, 0));
        bar.EnableButton(kOff, FALSE);
        PumpMessages();
    }
    [[nodiscard]] CRect RectOf(UINT command) const
    {
        CRect rect;
        bar.GetRect(static_cast<int>(command), rect);
        return rect;
    }
    [[nodiscard]] CPoint MiddleOf(UINT command) const
    {
        return ClientToScreen(bar.m_hWnd, RectOf(command).CenterPoint());
    }
    [[nodiscard]] CString TipOf(UINT command) { return TipText(*bar.GetToolTips(), &bar, command); }
    [[nodiscard]] int Ink(UINT command, COLORREF color) const
    {
        PumpMessages();
        return CaptureClient(bar.m_hWnd).Count(color, RectOf(command));
    }

    CImageList images;
    VToolBar bar;
};

} // namespace

TEST_F(ToolBar, TakesThePlaceOfADialogControl)
{
    SkinnedHost dlg;
    DialogTemplate t(L"tools", 200, 100);
    t.Edit(1, 10, 60, 60, 12).Static(kBarId, L"", 10, 10, 150, 20).Edit(2, 80, 60, 60, 12);
    ASSERT_TRUE(dlg.Open(t));
    const CRect place = PlaceOf(*dlg.GetDlgItem(kBarId));
    EXPECT_FALSE(bar.DlgCreate(&dlg, 4711u));
    EXPECT_FALSE(bar.DlgCreate(nullptr, kBarId));
    EXPECT_FALSE(bar.DlgCreate(nullptr, kPlace, kBarId));
    EXPECT_TRUE(bar.DlgCreate(&dlg, kBarId));
    EXPECT_FALSE(bar.DlgCreate(&dlg, kPlace, kBarId));
    EXPECT_EQ(dlg.GetDlgItem(kBarId), &bar);
    EXPECT_EQ(PlaceOf(bar), place);
    EXPECT_EQ(::GetWindow(bar.m_hWnd, GW_HWNDPREV), dlg.GetDlgItem(1)->m_hWnd);
    EXPECT_EQ(::GetWindow(bar.m_hWnd, GW_HWNDNEXT), dlg.GetDlgItem(2)->m_hWnd);
}

TEST_F(ToolBar, ButtonsAreAddedAndReplaced)
{
    EXPECT_EQ(bar.GetBtnCount(), 0);
    EXPECT_FALSE(bar.SetButton(0, kFirst, 0));
    bar.Reposition();
    bar.Reposition(kPlace);
    Create();
    for (const int index : {-1, 6, INT_MAX, INT_MIN})
        EXPECT_FALSE(bar.SetButton(index, 900, 0)) << index;
    EXPECT_EQ(bar.GetBtnCount(), 5);
    EXPECT_EQ(bar.GetButtonText(kFirst), L"直线");

    bar.CheckButton(kCheck);
    EXPECT_TRUE(bar.SetButton(2, kCheck, I_IMAGENONE, BTNS_CHECK, L"new"));
    EXPECT_EQ(bar.GetBtnCount(), 5);
    EXPECT_TRUE(bar.IsButtonChecked(kCheck));
    EXPECT_EQ(bar.GetButtonText(kCheck), L"new");
    EXPECT_TRUE(bar.SetButton(0, 900, 0));
    EXPECT_EQ(static_cast<int>(bar.CommandToIndex(kFirst)), -1);
    EXPECT_EQ(bar.CommandToIndex(900), 0u);
}

TEST_F(ToolBar, MouseSendsCommandsAndDropDowns)
{
    Create();
    host.Clear();
    Click(MiddleOf(kFirst));
    Click(MiddleOf(kCheck));
    Click(MiddleOf(kOff));
    std::vector<UINT> commands;
    for (const RecordedMessage& message : host.Messages(WM_COMMAND))
        commands.push_back(message.Id());
    EXPECT_EQ(commands, (std::vector<UINT>{kFirst, kCheck}));
    EXPECT_TRUE(bar.IsButtonChecked(kCheck));
    Click(ClientToScreen(bar.m_hWnd, {RectOf(kDrop).right - 4, RectOf(kDrop).CenterPoint().y}));
    EXPECT_EQ(host.CountNotify(kBarId, TBN_DROPDOWN), 1);
}

TEST_F(ToolBar, StatesAreDrawn)
{
    for (const DWORD style : {DWORD{0}, DWORD{TBSTYLE_LIST}}) {
        Create(style);
        EXPECT_EQ(Ink(kFirst, kImageColor), 256);
        EXPECT_EQ(Ink(kFirst, VGM.Common.clrHot), 0);
        EXPECT_EQ(Ink(kOff, kImageColor), 0);
        EXPECT_GT(Ink(kDrop, VGM.Combo.clrGlyph), 5);
        MoveTo(MiddleOf(kFirst));
        const CRect rect = RectOf(kFirst);
        const int outline = 2 * (rect.Width() + rect.Height()) - 4;
        EXPECT_EQ(Ink(kFirst, VGM.Common.clrHot), outline);
        const COLORREF inner = VGFadeColor(VGM.Common.clrHot, VGM.Common.nCtrlFrameFade);
        EXPECT_EQ(Ink(kFirst, inner),
                  rect.Width() + rect.Height() - 5); // the right and lower side of its ring
        ResetDoubleClick();
        Press();
        EXPECT_EQ(Ink(kFirst, VGM.Common.clrFrame), outline);
        Release();
        MoveTo(MiddleOf(kOff));
        EXPECT_EQ(Ink(kOff, VGM.Common.clrHot), 0);
        MoveAside();
        EXPECT_TRUE(PumpUntil([&] { return bar.GetHotItem() < 0; }));
        EXPECT_EQ(Ink(kFirst, VGM.Common.clrFrame), 0);
        bar.CheckButton(kCheck);
        EXPECT_GE(Ink(kCheck, VGM.Common.clrFrame), 50);
        bar.EnableWindow(FALSE);
        EXPECT_EQ(Ink(kFirst, kImageColor), 0);
        bar.DestroyWindow();
    }
}

TEST_F(ToolBar, BackgroundIsTheParentsOrItsOwn)
{
    Create();
    CRect client;
    bar.GetClientRect(client);
    const CPoint corner(client.right - 1, client.bottom - 1);
    EXPECT_TRUE(bar.GetBkColorAsParent());
    EXPECT_EQ(ClientPixel(bar.m_hWnd, corner), ::GetSysColor(COLOR_BTNFACE));
    bar.SetBkColorAsParent(FALSE);
    EXPECT_FALSE(bar.GetBkColorAsParent());
    EXPECT_TRUE(WaitForPixel(bar.m_hWnd, corner, VGM.Group.clrLine));
    EXPECT_EQ(ClientPixel(bar.m_hWnd, {client.right - 1, 0}), VGM.Common.clrWhite);
}

TEST_F(ToolBar, ButtonsHaveTips)
{
    Create();
    EXPECT_EQ(TipOf(kFirst), L"画直线");
    EXPECT_EQ(TipOf(kDrop), L"tip of more");
    EXPECT_EQ(TipOf(kCheck), L"");
    MoveTo(MiddleOf(kFirst));
    EXPECT_TRUE(PumpUntil([&] { return bar.GetToolTips()->IsWindowVisible() != FALSE; }));
}

TEST_F(ToolBar, ButtonsWithOneCommandKeepTheirTextsAndItsTip)
{
    ASSERT_TRUE(bar.DlgCreate(&host, kPlace, kBarId));
    bar.SetButton(0, kFirst, I_IMAGENONE);
    bar.SetButton(1, kFirst, I_IMAGENONE, BTNS_BUTTON, L"MMM", L"shared");
    const auto shownText = [&](int index) {
        PumpMessages();
        CRect rect;
        bar.GetItemRect(index, rect);
        return CaptureClient(bar.m_hWnd).Count(VGM.Dlg.clrText, rect);
    };
    EXPECT_EQ(shownText(0), 0);
    EXPECT_GT(shownText(1), 20);

    bar.SetButton(0, kCheck, I_IMAGENONE);
    EXPECT_EQ(TipOf(kFirst), L"shared");
    bar.SetButton(1, kCheck, I_IMAGENONE);
    bar.SetButton(2, kFirst, I_IMAGENONE);
    EXPECT_EQ(TipOf(kFirst), L"");
}

TEST_F(ToolBar, RepositionWrapsTheButtons)
{
    Create(TBSTYLE_WRAPABLE);
    const int top = RectOf(kDrop).top;
    bar.Reposition(CRect(10, 10, 80, 200));
    EXPECT_EQ(PlaceOf(bar), CRect(10, 10, 80, 200));
    EXPECT_GT(RectOf(kDrop).top, top);
    bar.Reposition(kPlace);
    EXPECT_EQ(RectOf(kDrop).top, top);
}
