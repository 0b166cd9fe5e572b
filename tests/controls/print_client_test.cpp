// WM_PRINTCLIENT gives the picture that the window shows.
#include "tests/support/host_test.h"
#include "vgui/controls/date_time_ctrl.h"
#include "vgui/controls/progress_ctrl.h"
#include "vgui/controls/spin_button_ctrl.h"
#include "vgui/controls/themed_controls.h"
#include "vgui/controls/tool_bar.h"

using namespace support;

namespace
{

const CRect kPlace(20, 20, 140, 60);
constexpr UINT kId = 1000;

class PrintClient : public HostTest
{
protected:
    void SetUp() override { ASSERT_TRUE(host.Open({300, 200})); }

    static void ExpectAsShown(CWnd& control)
    {
        PumpMessages();
        const DibSurface shown = CaptureClient(control.m_hWnd);
        DibSurface printed(shown.Width(), shown.Height(), HostWnd::kBackground);
        control.SendMessage(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(printed.DC().m_hDC), PRF_CLIENT);
        EXPECT_LT(shown.Count(shown.Pixel(shown.Width() / 2, shown.Height() / 2)),
                  shown.Width() * shown.Height());
        EXPECT_TRUE(AreasEqual(printed, printed.Bounds(), shown, CPoint(0, 0)));
        control.SendMessage(WM_PRINTCLIENT, 0, PRF_CLIENT); // nothing to print on
    }
    template <class Control>
    void Check(const char* name, LPCWSTR windowClass, DWORD style,
               const std::function<void(Control&)>& prepare = nullptr)
    {
        SCOPED_TRACE(name);
        Control control;
        ASSERT_TRUE(control.SubclassWindow(
            ::CreateWindowExW(0, windowClass, L"text", WS_CHILD | WS_VISIBLE | style, kPlace.left, kPlace.top,
                              kPlace.Width(), kPlace.Height(), host.m_hWnd,
                              reinterpret_cast<HMENU>(static_cast<UINT_PTR>(kId)), nullptr, nullptr)));
        if (prepare)
            prepare(control);
        ExpectAsShown(control);
    }
};

} // namespace

TEST_F(PrintClient, IsThePictureOnTheScreen)
{
    Check<VProgressCtrl>("progress bar", PROGRESS_CLASS, 0, [](VProgressCtrl& bar) { bar.SetPos(40); });
    Check<VSpinButtonCtrl>("spin button", UPDOWN_CLASS, 0);
    Check<VSpinButtonCtrl>("horizontal spin button", UPDOWN_CLASS, UDS_HORZ);
    Check<VGroup>("group box", L"BUTTON", BS_GROUPBOX);
    Check<VGroup>("group box with a title", L"BUTTON", BS_GROUPBOX | BS_RIGHT,
                  [](VGroup& group) { group.SetUseTitle(TRUE); });
    Check<VDateTimeCtrl>("date field", DATETIMEPICK_CLASS, DTS_SHORTDATEFORMAT);
    Check<VComboBox>("drop-down list", L"COMBOBOX", CBS_DROPDOWNLIST, [](VComboBox& combo) {
        combo.AddString(L"choice");
        combo.SetCurSel(0);
    });
}

TEST_F(PrintClient, OfAToolBarShowsItsButtons)
{
    VToolBar bar;
    ASSERT_TRUE(bar.DlgCreate(&host, kPlace, kId));
    bar.SetButton(0, 1, 0, BTNS_BUTTON, L"text");
    ExpectAsShown(bar);
}
