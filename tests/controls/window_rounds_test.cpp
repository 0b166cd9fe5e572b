// Each class of the controls many times.
#include "tests/support/window_rounds.h"

#include "tests/support/census.h"
#include "vgui/controls/bmp_static.h"
#include "vgui/controls/buttons.h"
#include "vgui/controls/date_time_ctrl.h"
#include "vgui/controls/progress_ctrl.h"
#include "vgui/controls/spin_button_ctrl.h"
#include "vgui/controls/splitter_bar.h"
#include "vgui/controls/themed_controls.h"
#include "vgui/controls/tool_bar.h"
#include "vgui/controls/tree_controls.h"

using namespace support;

namespace
{

constexpr DWORD kChild = WS_CHILD | WS_VISIBLE;
constexpr UINT kId = 1000;
const CRect kPlace(10, 10, 130, 40);

void MarqueeRound(HostWnd& host, int index)
{
    VProgressCtrl bar;
    ASSERT_TRUE(bar.Create(kChild | (index % 2 != 0 ? PBS_MARQUEE : 0), kPlace, &host, kId));
    bar.SetMarquee(TRUE, 1);
    bar.UpdateWindow();
}

void ToolBarRound(HostWnd& host, int)
{
    CImageList images;
    ASSERT_TRUE(images.Create(16, 16, ILC_COLOR24 | ILC_MASK, 1, 1));
    CBitmap picture;
    ASSERT_TRUE(picture.CreateBitmap(16, 16, 1, 32, nullptr));
    images.Add(&picture, RGB(255, 0, 255));
    VToolBar bar;
    ASSERT_TRUE(bar.DlgCreate(&host, kPlace, kId));
    bar.SetImageList(&images);
    bar.SetButton(0, 1, 0, BTNS_BUTTON, L"text", L"tip");
    bar.SetButton(1, 2, 0);
    bar.EnableButton(2, FALSE);
    bar.UpdateWindow();
}

void SplitterRound(HostWnd& host, int index)
{
    CStatic first, second;
    ASSERT_TRUE(first.Create(L"", kChild, CRect(0, 0, 50, 50), &host));
    ASSERT_TRUE(second.Create(L"", kChild, CRect(60, 0, 110, 50), &host));
    CSplitterBar bar;
    ASSERT_TRUE(bar.Create(kChild, CRect(50, 0, 60, 50), &host, kId, index % 2));
    bar.SetPanes(&first, &second);
    bar.UpdateWindow();
}

void PictureRound(HostWnd& host, int)
{
    CBitmap picture;
    ASSERT_TRUE(picture.CreateBitmap(16, 16, 1, 32, nullptr));
    VBmpStatic shown;
    ASSERT_TRUE(shown.Create(L"", kChild, kPlace, &host, kId));
    ASSERT_TRUE(shown.SetBmp(static_cast<HBITMAP>(picture)));
    shown.UpdateWindow();
}

void TitledGroupRound(HostWnd& host, int)
{
    VGroup group;
    ASSERT_TRUE(group.Create(L"group", kChild | BS_GROUPBOX, kPlace, &host, kId));
    group.SetUseTitle(TRUE);
    group.UpdateWindow();
}

void ComboTipRound(HostWnd& host, int)
{
    VComboBox combo;
    ASSERT_TRUE(combo.Create(kChild | CBS_DROPDOWNLIST, kPlace, &host, kId));
    combo.SetTooltipText(L"tip", TRUE);
    combo.UpdateWindow();
}

class WindowRounds : public CensusTest
{
};

} // namespace

TEST_F(WindowRounds, ManyOfEachControlLeaveNothing)
{
    HostWnd host;
    ASSERT_TRUE(host.Open({300, 200}));
    ExpectNothingLeft(host, {
                                DressedRound<VButtonST>("image button", L"BUTTON"),
                                DressedRound<VButton>("button", L"BUTTON", BS_DEFPUSHBUTTON),
                                DressedRound<VFlatButton>("flat button", L"BUTTON"),
                                DressedRound<VCheckBox>("check box", L"BUTTON", BS_AUTOCHECKBOX),
                                DressedRound<VRadioBtn>("radio button", L"BUTTON", BS_AUTORADIOBUTTON),
                                DressedRound<VHotTrackBtn>("hot-track button", L"BUTTON"),
                                DressedRound<VUrlEmailBtn>("link", L"BUTTON"),
                                DressedRound<VGroup>("group box", L"BUTTON", BS_GROUPBOX),
                                DressedRound<VEdit>("edit field", L"EDIT", WS_BORDER),
                                DressedRound<VListBox>("list box", L"LISTBOX", WS_BORDER),
                                DressedRound<VComboBox>("combo box", L"COMBOBOX", CBS_DROPDOWN),
                                DressedRound<VListCtrl>("list", WC_LISTVIEW, LVS_REPORT),
                                DressedRound<VTreeCtrl>("tree", WC_TREEVIEW, TVS_HASBUTTONS),
                                DressedRound<VCheckTreeCtrl>("check tree", WC_TREEVIEW),
                                DressedRound<VProgressCtrl>("progress bar", PROGRESS_CLASS),
                                DressedRound<VSpinButtonCtrl>("spin button", UPDOWN_CLASS, UDS_HORZ),
                                DressedRound<VDateTimeCtrl>("date field", DATETIMEPICK_CLASS),
                                DressedRound<VDateTimeCtrl>("time field", DATETIMEPICK_CLASS, DTS_UPDOWN),
                                DressedRound<VBmpStatic>("picture", L"STATIC"),
                                {"picture with a bitmap", PictureRound},
                                {"marquee", MarqueeRound},
                                {"tool bar", ToolBarRound},
                                {"splitter bar", SplitterRound},
                                {"group box with a title", TitledGroupRound},
                                {"combo box with a tip", ComboTipRound},
                            });
}
