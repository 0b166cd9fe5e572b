#include "vgui/controls/spin_button_ctrl.h"

#include "tests/support/host_test.h"
#include "vgui/controls/themed_controls.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gui_manager.h"

using namespace support;

namespace
{

using Part = VSpinButtonCtrl::Part;
const CRect kPlace(20, 20, 50, 62);

class OpenSpinButtonCtrl : public VSpinButtonCtrl
{
public:
    using VSpinButtonCtrl::m_nHot;
    using VSpinButtonCtrl::m_nPressed;
};

class SpinButtonCtrl : public HostTest
{
protected:
    void SetUp() override { ASSERT_TRUE(host.Open()); }
    void Create(DWORD style = 0)
    {
        ASSERT_TRUE(spin.Create(WS_CHILD | WS_VISIBLE | style, kPlace, &host, 7));
        spin.SetRange32(0, 100);
        spin.SetPos32(50);
        PumpMessages();
    }
    [[nodiscard]] CRect Half(Part part) const
    {
        CRect client;
        spin.GetClientRect(client);
        return VSpinButtonCtrl::PartRect(client, (spin.GetStyle() & UDS_HORZ) != 0, part);
    }
    [[nodiscard]] CPoint Middle(Part part) const
    {
        return ClientToScreen(spin.m_hWnd, Half(part).CenterPoint());
    }
    // The colours of a half: its border, and the first and last row inside it.
    void ExpectFace(Part part, COLORREF border, COLORREF first, COLORREF last)
    {
        PumpMessages();
        const DibSurface shown = CaptureClient(spin.m_hWnd);
        const CRect half = Half(part);
        EXPECT_EQ(shown.Pixel(half.TopLeft()), border);
        EXPECT_EQ(shown.Pixel(half.left + 1, half.top + 1), first);
        DibSurface model(1, half.Height() - 2);
        VGGradientFillRect(&model.DC(), model.Bounds(), first, last, 0);
        for (int y = 0; y < model.Height(); ++y)
            ASSERT_EQ(shown.Pixel(half.left + 1, half.top + 1 + y), model.Pixel(0, y)) << y;
    }
    void ExpectRest(Part part)
    {
        ExpectFace(part, VGM.Combo.clrBtnBorder, VGM.Combo.clrBtnFrom, VGM.Combo.clrBtnTo);
    }

    OpenSpinButtonCtrl spin;
};

} // namespace

TEST_F(SpinButtonCtrl, HalvesFillTheControl)
{
    const CRect area(3, 4, 24, 41);
    for (const bool horizontal : {false, true}) {
        const CRect up = VSpinButtonCtrl::PartRect(area, horizontal, Part::Up);
        const CRect down = VSpinButtonCtrl::PartRect(area, horizontal, Part::Down);
        CRect both;
        EXPECT_FALSE(both.IntersectRect(up, down));
        both.UnionRect(up, down);
        EXPECT_EQ(both, area);
        EXPECT_EQ(up.Width() * up.Height() + down.Width() * down.Height(), area.Width() * area.Height());
        EXPECT_TRUE(horizontal ? up.left > down.left : up.top < down.top);
    }
    EXPECT_TRUE(VSpinButtonCtrl::PartRect(area, false, Part::None).IsRectEmpty());
}

TEST_F(SpinButtonCtrl, ArrowsCountAndShowTheirState)
{
    for (const DWORD style : {DWORD{0}, DWORD{UDS_HORZ}}) {
        Create(style);
        ExpectRest(Part::Up);
        ExpectRest(Part::Down);
        MoveTo(Middle(Part::Up));
        EXPECT_EQ(spin.m_nHot, Part::Up);
        ExpectFace(Part::Up, VGM.Common.clrHot, VGM.Combo.clrBtnTo, VGM.Combo.clrBtnFrom);
        ExpectRest(Part::Down);

        ResetDoubleClick();
        const int before = spin.GetPos32();
        Press();
        EXPECT_EQ(spin.m_nPressed, Part::Up);
        ExpectFace(Part::Up, VGM.Combo.clrBtnBorder, VGFadeColor(VGM.Combo.clrBtnTo, -40),
                   VGM.Combo.clrBtnTo);
        EXPECT_NE(spin.GetPos32(), before);
        Release();
        EXPECT_EQ(spin.m_nPressed, Part::None);
        const int up = spin.GetPos32() - before;
        Click(Middle(Part::Down));
        EXPECT_LT((spin.GetPos32() - before - up) * up, 0) << "both arrows count the same way";
        EXPECT_GT(host.CountNotify(7, UDN_DELTAPOS), 1);

        MoveAside();
        EXPECT_TRUE(PumpUntil([&] { return spin.m_nHot == Part::None; }));
        ExpectRest(Part::Up);
        spin.DestroyWindow();
    }
}

TEST_F(SpinButtonCtrl, BothClicksOfADoubleClickCount)
{
    Create();
    std::vector<Part> pressed;
    host.SetAnswer([&](UINT message, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_NOTIFY && reinterpret_cast<const NMHDR*>(lParam)->code == UDN_DELTAPOS)
            pressed.push_back(spin.m_nPressed);
        return {};
    });
    DoubleClick(Middle(Part::Up));
    EXPECT_EQ(pressed, (std::vector<Part>{Part::Up, Part::Up}));
    // Not every system has double clicks for this class, with which the second one is another message.
    const CPoint down = Half(Part::Down).CenterPoint();
    spin.SendMessage(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(down.x, down.y));
    EXPECT_EQ(spin.m_nPressed, Part::Down);
    spin.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(down.x, down.y));
    EXPECT_EQ(spin.m_nPressed, Part::None);
}

TEST_F(SpinButtonCtrl, DraggingOffAnArrowShowsItAtRest)
{
    Create();
    MoveTo(Middle(Part::Up));
    ResetDoubleClick();
    Press();
    MoveTo(ClientToScreen(host.m_hWnd, {200, 200}));
    ExpectRest(Part::Up);
    Release();
    EXPECT_EQ(spin.m_nPressed, Part::None);
    EXPECT_NE(::GetCapture(), spin.m_hWnd);
}

TEST_F(SpinButtonCtrl, DisabledOnesAreFlat)
{
    Create();
    spin.EnableWindow(FALSE);
    const COLORREF background = ::GetSysColor(COLOR_BTNFACE);
    ExpectFace(Part::Up, VGM.Group.clrLine, background, background);
    EXPECT_EQ(CaptureClient(spin.m_hWnd).Count(VGM.Combo.clrGlyph), 0);
}

TEST_F(SpinButtonCtrl, ArrowsPointTheirWay)
{
    Create();
    PumpMessages();
    const DibSurface shown = CaptureClient(spin.m_hWnd);
    const auto rowInk = [&](int y) {
        return shown.Count(VGM.Combo.clrGlyph, CRect(0, y, shown.Width(), y + 1));
    };
    std::vector<int> rows;
    for (int y = 0; y < shown.Height(); ++y) {
        if (rowInk(y) > 0)
            rows.push_back(rowInk(y));
    }
    EXPECT_EQ(rows, (std::vector<int>{1, 3, 5, 7, 7, 5, 3, 1}));
}

TEST_F(SpinButtonCtrl, BuddyKeepsItsKeysAndOneFrame)
{
    VEdit edit;
    ASSERT_TRUE(edit.CreateEx(WS_EX_CLIENTEDGE, L"EDIT", L"", WS_CHILD | WS_VISIBLE, CRect(20, 100, 100, 124),
                              &host, 8));
    ASSERT_TRUE(spin.Create(WS_CHILD | WS_VISIBLE | UDS_ALIGNRIGHT | UDS_SETBUDDYINT | UDS_ARROWKEYS,
                            CRect(0, 0, 0, 0), &host, 7));
    spin.SetBuddy(&edit);
    spin.SetRange32(0, 100);
    spin.SetPos32(5);
    edit.SetFocus();
    Key(VK_UP);
    EXPECT_EQ(host.GetDlgItemInt(8), 6u);
    PumpMessages();
    CRect client;
    spin.GetClientRect(client);
    EXPECT_EQ(ClientPixel(spin.m_hWnd, {client.right - 1, 4}), VGM.Edit.clrFrame);
}
