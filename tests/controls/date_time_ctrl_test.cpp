#include "vgui/controls/date_time_ctrl.h"

#include "tests/support/host_test.h"
#include "vgui/controls/themed_controls.h"
#include "vgui/foundation/gui_manager.h"

using namespace support;

namespace
{

constexpr UINT kId = 7;

class OpenDateTimeCtrl : public VDateTimeCtrl
{
public:
    using VDateTimeCtrl::m_bHover;
    using VDateTimeCtrl::m_spin;
};

class OpenComboBox : public VComboBox
{
public:
    using VComboBox::m_rcFace;
};

class DateTimeCtrl : public HostTest
{
protected:
    void SetUp() override { ASSERT_TRUE(host.Open()); }
    // A date control and a combo box that is as wide and, its list aside, as high.
    void Create(DWORD style = DTS_SHORTDATEFORMAT)
    {
        ASSERT_TRUE(
            combo.Create(WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST, CRect(20, 80, 180, 200), &host, 8));
        CRect size;
        combo.GetWindowRect(size);
        ASSERT_TRUE(
            date.Create(WS_CHILD | WS_VISIBLE | style, CRect(20, 20, 180, 20 + size.Height()), &host, kId));
        date.SetTime(&kMoment);
        PumpMessages();
    }
    static CRect ButtonStrip(const DibSurface& shown)
    {
        return {shown.Width() - ::GetSystemMetrics(SM_CXVSCROLL) - 2, 0, shown.Width(), shown.Height()};
    }
    void ExpectComboLook()
    {
        PumpMessages();
        const DibSurface mine = CaptureWindow(date.m_hWnd);
        const DibSurface other = CaptureWindow(combo.m_hWnd);
        ASSERT_EQ(mine.Bounds(), other.Bounds());
        const CRect button = ButtonStrip(mine);
        EXPECT_TRUE(AreasEqual(mine, button, other, button.TopLeft()));
        const CRect left(0, 0, 2, mine.Height());
        EXPECT_TRUE(AreasEqual(mine, left, other, left.TopLeft()));
        EXPECT_TRUE(AreasEqual(mine, CRect(0, 0, mine.Width(), 2), other, CPoint(0, 0)));
    }
    [[nodiscard]] CPoint ButtonOf(const CWnd& control) const
    {
        CRect rect;
        control.GetWindowRect(rect);
        return {rect.right - 8, rect.CenterPoint().y};
    }

    const CTime kMoment{2024, 5, 17, 8, 30, 0};
    OpenDateTimeCtrl date;
    OpenComboBox combo;
};

} // namespace

TEST_F(DateTimeCtrl, LooksLikeTheComboBox)
{
    Create();
    ExpectComboLook();
    combo.EnableWindow(FALSE);
    date.EnableWindow(FALSE);
    ExpectComboLook();
    EXPECT_EQ(ClientPixel(date.m_hWnd, {1, 1}), ::GetSysColor(COLOR_BTNFACE));
}

TEST_F(DateTimeCtrl, ButtonTurnsUnderTheMouse)
{
    Create();
    MoveTo(ButtonOf(date));
    EXPECT_TRUE(date.m_bHover);
    PumpMessages();
    const DibSurface hot = CaptureWindow(date.m_hWnd);
    MoveTo(ButtonOf(combo));
    EXPECT_TRUE(PumpUntil([&] { return !date.m_bHover; }));
    PumpMessages();
    const DibSurface hotCombo = CaptureWindow(combo.m_hWnd);
    const CRect button = ButtonStrip(hot);
    EXPECT_TRUE(AreasEqual(hot, button, hotCombo, button.TopLeft()));
    MoveAside();
    EXPECT_TRUE(PumpUntil([&] {
        return ClientPixel(combo.m_hWnd, combo.m_rcFace.TopLeft() + CSize(1, 1)) == VGM.Combo.clrBtnFrom;
    }));
    ExpectComboLook();
}

TEST_F(DateTimeCtrl, OpensTheCalendarAndTakesKeys)
{
    Create();
    Click(ButtonOf(date));
    EXPECT_EQ(host.CountNotify(kId, DTN_DROPDOWN), 1);
    const auto calendar = reinterpret_cast<HWND>(date.SendMessage(DTM_GETMONTHCAL));
    EXPECT_TRUE(::IsWindowVisible(calendar));
    Click(ButtonOf(date));
    EXPECT_TRUE(PumpUntil([&] { return !::IsWindowVisible(calendar); }));
    Click(ClientToScreen(date.m_hWnd, {8, 8})); // selects the first field
    Key(VK_UP);
    EXPECT_GE(host.CountNotify(kId, DTN_DATETIMECHANGE), 1);
    CTime now;
    EXPECT_EQ(date.GetTime(now), DWORD{GDT_VALID});
    EXPECT_NE(now, kMoment);
}

TEST_F(DateTimeCtrl, ArrowsAreTheLibrarysOwn)
{
    Create(DTS_TIMEFORMAT);
    ASSERT_NE(date.m_spin.m_hWnd, nullptr);
    EXPECT_EQ(::GetParent(date.m_spin.m_hWnd), date.m_hWnd);
    EXPECT_GT(CaptureClient(date.m_spin.m_hWnd).Count(VGM.Combo.clrBtnBorder), 20);
    Click(ClientToScreen(date.m_hWnd, {8, 8})); // selects the hours
    const CPoint up = CenterOf(date.m_spin.m_hWnd) - CSize(0, 4);
    Click(up);
    CTime now;
    date.GetTime(now);
    EXPECT_NE(now, kMoment);
    date.EnableWindow(FALSE);
    EXPECT_FALSE(date.m_spin.IsWindowEnabled());
    date.DestroyWindow();
    EXPECT_EQ(date.m_spin.m_hWnd, nullptr);

    // A control that begins disabled has disabled arrows.
    ASSERT_TRUE(date.Create(WS_CHILD | WS_VISIBLE | WS_DISABLED | DTS_TIMEFORMAT, CRect(20, 20, 180, 40),
                            &host, kId));
    EXPECT_FALSE(date.m_spin.IsWindowEnabled());
    date.EnableWindow(TRUE);
    EXPECT_TRUE(date.m_spin.IsWindowEnabled());

    // An object that leaves its window takes the arrows of the next one.
    const HWND former = date.UnsubclassWindow();
    ASSERT_TRUE(date.Create(WS_CHILD | WS_VISIBLE | DTS_TIMEFORMAT, CRect(20, 20, 180, 40), &host, kId));
    EXPECT_EQ(::GetParent(date.m_spin.m_hWnd), date.m_hWnd);
    ::DestroyWindow(former);
    EXPECT_EQ(::GetParent(date.m_spin.m_hWnd), date.m_hWnd);
}
