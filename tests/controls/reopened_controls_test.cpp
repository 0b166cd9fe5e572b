// Objects that are attached to a second window, as a dialog's members are when it is opened again: the mouse
// was over the first one when it went, and is elsewhere now.
#include "tests/controls/button_fixture.h"
#include "vgui/controls/date_time_ctrl.h"
#include "vgui/controls/progress_ctrl.h"
#include "vgui/controls/themed_controls.h"
#include "vgui/controls/tree_controls.h"

#include <typeinfo>

using namespace support;

namespace
{

class OpenedButton : public Opened<VButtonST>
{
public:
    [[nodiscard]] bool IsHot() const { return hovering != FALSE; }
};

// Those that have the flag hot.
template <class Button>
class OpenedHot : public Button
{
public:
    [[nodiscard]] bool IsHot() const { return this->hot != FALSE; }
};

// Those whose button at the right edge is hot.
template <class Control>
class OpenedField : public Control
{
public:
    [[nodiscard]] bool IsHot() const { return this->m_bHover != FALSE; }
};

class OpenedTree : public VCheckTreeCtrl
{
public:
    [[nodiscard]] bool IsHot() const { return m_hHot != nullptr || m_bTracking; }
    using VCheckTreeCtrl::checkImages;
};

class OpenedProgress : public VProgressCtrl
{
public:
    using VProgressCtrl::m_bMarquee;
};

class OpenedSpin : public VSpinButtonCtrl
{
public:
    [[nodiscard]] bool IsHot() const { return m_nHot != Part::None; }
};

class ReopenedControls : public HostTest
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(host.Open({300, 200}));
        MoveAside();
    }

    void Open(CWnd& control, LPCWSTR windowClass, DWORD style) const
    {
        const HWND window =
            ::CreateWindowExW(0, windowClass, L"x", WS_CHILD | WS_VISIBLE | style, kPlace.left, kPlace.top,
                              kPlace.Width(), kPlace.Height(), host.m_hWnd, nullptr, nullptr, nullptr);
        ASSERT_TRUE(control.SubclassWindow(window));
    }
    // Where the mouse makes a control hot, in client coordinates.
    template <class Control>
    void ExpectCalmWhenReopened(LPCWSTR windowClass, DWORD style, CPoint hotPoint = {90, 8})
    {
        SCOPED_TRACE(typeid(Control).name());
        Control control;
        Open(control, windowClass, style);
        control.UpdateWindow();
        MoveTo(ClientToScreen(control.m_hWnd, hotPoint));
        EXPECT_TRUE(control.IsHot());
        control.DestroyWindow();
        MoveAside();
        Open(control, windowClass, style);
        EXPECT_FALSE(control.IsHot());
        control.UpdateWindow();
        MoveTo(ClientToScreen(control.m_hWnd, hotPoint));
        EXPECT_TRUE(control.IsHot());
        MoveAside();
        EXPECT_TRUE(PumpUntil([&] { return !control.IsHot(); }));
    }
};

} // namespace

TEST_F(ReopenedControls, AreNotHot)
{
    ExpectCalmWhenReopened<OpenedButton>(L"BUTTON", BS_PUSHBUTTON);
    ExpectCalmWhenReopened<OpenedHot<VCheckBox>>(L"BUTTON", BS_AUTOCHECKBOX);
    ExpectCalmWhenReopened<OpenedHot<VRadioBtn>>(L"BUTTON", BS_AUTORADIOBUTTON);
    ExpectCalmWhenReopened<OpenedHot<VUrlEmailBtn>>(L"BUTTON", BS_PUSHBUTTON);
    ExpectCalmWhenReopened<OpenedField<VComboBox>>(L"COMBOBOX", CBS_DROPDOWNLIST);
    ExpectCalmWhenReopened<OpenedField<VDateTimeCtrl>>(DATETIMEPICK_CLASSW, DTS_SHORTDATEFORMAT);
    ExpectCalmWhenReopened<OpenedTree>(WC_TREEVIEWW, 0);
    ExpectCalmWhenReopened<OpenedSpin>(UPDOWN_CLASSW, 0, {5, 8});
}

TEST_F(ReopenedControls, ButtonsForgetTheirFormerType)
{
    Opened<VButtonST> button;
    const struct {
        DWORD type;
        BOOL toggle, isDefault;
    } cases[] = {
        {BS_AUTOCHECKBOX, TRUE, FALSE}, {BS_DEFPUSHBUTTON, FALSE, TRUE}, {BS_PUSHBUTTON, FALSE, FALSE}};
    for (const auto& c : cases) {
        Open(button, L"BUTTON", c.type);
        EXPECT_EQ(button.isToggle, c.toggle) << c.type;
        EXPECT_EQ(button.isDefault, c.isDefault) << c.type;
        EXPECT_EQ(button.bkDC.m_hDC, nullptr);
        button.DrawTransparent(TRUE);
        button.UpdateWindow();
        EXPECT_NE(button.bkDC.m_hDC, nullptr);
        button.DestroyWindow();
    }
}

TEST_F(ReopenedControls, TreesKeepTheirItemsAndImagesApart)
{
    OpenedTree tree;
    HIMAGELIST images = nullptr;
    for (int i = 0; i < 2; ++i) {
        Open(tree, WC_TREEVIEWW, 0);
        tree.InsertItem(L"item under the mouse");
        MoveTo(ClientToScreen(tree.m_hWnd, {30, 8}));
        EXPECT_EQ(tree.checkImages.GetImageCount(), 3);
        EXPECT_EQ(tree.GetImageList(TVSIL_NORMAL), &tree.checkImages);
        EXPECT_TRUE(images == nullptr || images == tree.checkImages.m_hImageList);
        images = tree.checkImages.m_hImageList;
        tree.DestroyWindow();
        MoveAside();
    }
}

TEST_F(ReopenedControls, MarqueesStandStill)
{
    OpenedProgress bar;
    Open(bar, PROGRESS_CLASSW, PBS_MARQUEE);
    bar.SendMessage(PBM_SETMARQUEE, TRUE, 0);
    EXPECT_TRUE(bar.m_bMarquee);
    bar.DestroyWindow();
    Open(bar, PROGRESS_CLASSW, 0);
    EXPECT_FALSE(bar.m_bMarquee);
}
