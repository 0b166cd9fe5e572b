#include "tests/dialogs/gui_dlg_fixture.h"
#include "tests/support/modal.h"
#include "vgui/foundation/skin_host.h"

#include <climits>

using namespace support;

namespace
{

class GuiDlg : public OpenDlgTest
{
};

// What a dialog answers to a control's request for colours.
struct CtlColors {
    HBRUSH brush;
    COLORREF text;
    COLORREF background;
};

CtlColors AskColors(TestDlg& dlg, UINT message, UINT id)
{
    CClientDC dc(&dlg);
    dc.SetTextColor(RGB(1, 2, 3));
    dc.SetBkColor(RGB(4, 5, 6));
    const HWND control = ::GetDlgItem(dlg.m_hWnd, id);
    const LRESULT brush =
        dlg.SendMessage(message, reinterpret_cast<WPARAM>(dc.m_hDC), reinterpret_cast<LPARAM>(control));
    return {reinterpret_cast<HBRUSH>(brush), dc.GetTextColor(), dc.GetBkColor()};
}

COLORREF BrushColor(HBRUSH brush)
{
    LOGBRUSH log{};
    return ::GetObject(brush, sizeof(log), &log) != 0 ? log.lbColor : CLR_INVALID;
}

CRect SizeBy(TestDlg& dlg, WPARAM edge, CRect rect)
{
    dlg.SendMessage(WM_SIZING, edge, reinterpret_cast<LPARAM>(&rect));
    return rect;
}

} // namespace

TEST_F(GuiDlg, TakesTheCaptionStyleOffAndKeepsTheRest)
{
    EXPECT_EQ(dlg.m_bSkinNc, 1);
    EXPECT_EQ(dlg.GetStyle() & WS_CAPTION, 0u);
    EXPECT_EQ(dlg.GetStyle() & kBothBoxes, kBothBoxes);
    EXPECT_NE(dlg.GetExStyle() & WS_EX_CONTEXTHELP, 0u);
    EXPECT_NE(dlg.m_bmpHelp.m_hObject, nullptr);

    CRect client;
    dlg.GetClientRect(client);
    dlg.ClientToScreen(client);
    EXPECT_EQ(client, gui_dlg::ClientRect(WindowRect(dlg), LiveMetrics()));
}

TEST_F(GuiDlg, PartOfTheCaptionStyleIsEnoughForTheSkin)
{
    for (const DWORD style : {WS_BORDER, WS_DLGFRAME}) {
        OpenAgain(PlainTemplate(WS_POPUP | DS_SETFONT | style));
        EXPECT_EQ(dlg.m_bSkinNc, 1);
        EXPECT_EQ(dlg.GetStyle() & WS_CAPTION, 0u);
    }
}

TEST_F(GuiDlg, WithoutCaptionStyleTheSystemsAreaStays)
{
    OpenAgain(PlainTemplate(WS_POPUP | WS_THICKFRAME | DS_SETFONT));
    EXPECT_EQ(dlg.m_bSkinNc, 0);
    CRgn region;
    region.CreateRectRgn(0, 0, 1, 1);
    EXPECT_EQ(dlg.GetWindowRgn(region), ERROR);
    // No caption button is found or pressed where a skinned dialog would have one.
    const CPoint close = CapBtnCenter(dlg, HTCLOSE);
    EXPECT_EQ(dlg.NcHitTest(close), HTERROR);
    dlg.SendMessage(WM_NCLBUTTONDOWN, HTCLIENT, MAKELPARAM(close.x, close.y));
    EXPECT_EQ(dlg.m_bNcBtnDown, 0);
}

TEST_F(GuiDlg, HelpStyleFollowsTheHelpButton)
{
    dlg.m_bHelpBtn = false;
    OpenAgain();
    EXPECT_EQ(dlg.GetExStyle() & WS_EX_CONTEXTHELP, 0u);
}

TEST_F(GuiDlg, RegionFollowsEverySize)
{
    for (const CSize size : {CSize(400, 300), CSize(150, 90), CSize(401, 299)}) {
        dlg.SetWindowPos(nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
        PumpMessages();
        CRgn region;
        region.CreateRectRgn(0, 0, 1, 1);
        ASSERT_EQ(dlg.GetWindowRgn(region), SIMPLEREGION);
        CRect box;
        region.GetRgnBox(box);
        EXPECT_EQ(box, CRect(CPoint(0, 0), WindowRect(dlg).Size()));
    }
}

TEST_F(GuiDlg, ControlsGetTheDialogsColours)
{
    const CtlColors text = AskColors(dlg, WM_CTLCOLORSTATIC, kStaticId);
    EXPECT_EQ(text.text, VGM.Dlg.clrText);
    EXPECT_EQ(text.background, VGM.Dlg.clrBk);
    EXPECT_EQ(BrushColor(text.brush), VGM.Dlg.clrBk);

    for (const UINT message : {WM_CTLCOLORBTN, WM_CTLCOLORSCROLLBAR, WM_CTLCOLORDLG})
        EXPECT_EQ(AskColors(dlg, message, kCheckId).brush, text.brush) << message;
    for (const UINT message : {WM_CTLCOLOREDIT, WM_CTLCOLORLISTBOX})
        EXPECT_NE(AskColors(dlg, message, kEditId).brush, text.brush) << message;
}

TEST_F(GuiDlg, ControlColoursCanBeSetAndTakenAway)
{
    const COLORREF red = RGB(200, 10, 20);
    COLORREF color = RGB(9, 9, 9);
    EXPECT_FALSE(dlg.GetSetCtrlClr(kStaticId, color));
    EXPECT_EQ(color, RGB(9, 9, 9));

    dlg.GetDlgItem(kStaticId)->UpdateWindow();
    EXPECT_FALSE(::GetUpdateRect(dlg.GetDlgItem(kStaticId)->m_hWnd, nullptr, FALSE));
    dlg.SetStaticCtrlFormat(kStaticId, red, 0, nullptr, -1);
    EXPECT_TRUE(::GetUpdateRect(dlg.GetDlgItem(kStaticId)->m_hWnd, nullptr, FALSE));
    dlg.SetStaticCtrlFormat(kEditId, red, 7, L"unused", 3);
    dlg.SetStaticCtrlFormat(kMissingId, red, 0, nullptr, -1);
    EXPECT_TRUE(dlg.GetSetCtrlClr(kStaticId, color));
    EXPECT_EQ(color, red);
    EXPECT_FALSE(dlg.GetSetCtrlClr(kMissingId, color));
    EXPECT_EQ(AskColors(dlg, WM_CTLCOLORSTATIC, kStaticId).text, red);
    EXPECT_EQ(AskColors(dlg, WM_CTLCOLORBTN, kStaticId).text, red);
    EXPECT_NE(AskColors(dlg, WM_CTLCOLOREDIT, kEditId).text, red);

    dlg.SetStaticCtrlFormat(kStaticId, 0xFFFFFFFF, 0, nullptr, -1);
    EXPECT_FALSE(dlg.GetSetCtrlClr(kStaticId, color));
    EXPECT_EQ(AskColors(dlg, WM_CTLCOLORSTATIC, kStaticId).text, VGM.Dlg.clrText);

    dlg.SetStaticCtrlFormat(kStaticId, red, 0, nullptr, -1);
    dlg.DestroyWindow();
    EXPECT_FALSE(dlg.GetSetCtrlClr(kStaticId, color));
}

TEST_F(GuiDlg, ControlsFindTheirHost)
{
    EXPECT_EQ(VSkinHost::Of(dlg.GetDlgItem(kStaticId)), static_cast<VSkinHost*>(&dlg));
    EXPECT_EQ(VSkinHost::Of(dlg.GetDlgItem(kStaticId))->GetBkClr(), VGM.Dlg.clrBk);

    EXPECT_EQ(VSkinHost::Of(nullptr), nullptr);
    CStatic loose;
    EXPECT_EQ(VSkinHost::Of(&loose), nullptr);
    EXPECT_EQ(VSkinHost::Of(CWnd::GetDesktopWindow()), nullptr);
    CDialog plain;
    const DialogTemplate t = PlainTemplate();
    ASSERT_TRUE(plain.CreateIndirect(t.Get()));
    EXPECT_EQ(VSkinHost::Of(plain.GetDlgItem(kStaticId)), nullptr);
    plain.DestroyWindow();
}

TEST_F(GuiDlg, ChecksAndUnchecksButtons)
{
    EXPECT_NE(dlg.CheckDlgButton(kCheckId, BST_CHECKED), 0);
    EXPECT_EQ(dlg.IsDlgButtonChecked(kCheckId), BST_CHECKED);
    dlg.CheckDlgButton(kCheckId, BST_UNCHECKED);
    EXPECT_EQ(dlg.IsDlgButtonChecked(kCheckId), BST_UNCHECKED);
    EXPECT_EQ(dlg.IsDlgButtonChecked(kMissingId), 0);
    EXPECT_EQ(dlg.CheckDlgButton(kMissingId, 1), 0);
}

TEST_F(GuiDlg, SizingMessageIsHeldToTheLimits)
{
    const CRect now = WindowRect(dlg);
    CRect wanted = now;
    wanted.DeflateRect(30, 30);

    EXPECT_EQ(SizeBy(dlg, WMSZ_BOTTOMRIGHT, wanted), wanted);
    dlg.SetAllowResize(false, true);
    EXPECT_EQ(SizeBy(dlg, WMSZ_BOTTOMRIGHT, wanted), CRect(wanted.left, now.top, wanted.right, now.bottom));
    dlg.SetAllowResize(true, false);
    EXPECT_EQ(SizeBy(dlg, WMSZ_TOP, wanted), CRect(now.left, wanted.top, now.right, wanted.bottom));
    dlg.SetAllowResize(true, true);
    dlg.SetMinimumSize(now.Width(), 0);
    EXPECT_EQ(SizeBy(dlg, WMSZ_LEFT, wanted), CRect(now.left, wanted.top, now.right, wanted.bottom));
}

TEST_F(GuiDlg, DraggingTheFrameStopsAtTheMinimum)
{
    const CRect now = WindowRect(dlg);
    dlg.SetMinimumSize(now.Width() - 20, 0);
    const CPoint corner(now.right - 2, now.bottom - 2);
    Drag({corner, corner - CSize(50, 30), corner - CSize(100, 40)});
    PumpMessages();
    EXPECT_EQ(WindowRect(dlg).Width(), now.Width() - 20);
    EXPECT_EQ(WindowRect(dlg).Height(), now.Height() - 40);
    EXPECT_EQ(WindowRect(dlg).TopLeft(), now.TopLeft());
}

TEST_F(GuiDlg, MaximisedSizeIsTheSystems)
{
    MINMAXINFO info{};
    dlg.SendMessage(WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(CPoint(info.ptMaxSize),
              CPoint(::GetSystemMetrics(SM_CXMAXIMIZED), ::GetSystemMetrics(SM_CYMAXIMIZED)));
}

TEST_F(GuiDlg, MovesOnlyToUsefulPlaces)
{
    EXPECT_TRUE(dlg.MoveWindowAndCheck(CRect(40, 50, 340, 250)));
    EXPECT_EQ(WindowRect(dlg), CRect(40, 50, 340, 250));
    for (const CRect& useless : {CRect(0, 0, 9, 500), CRect(-50, 0, 200, 200),
                                 CRect(100, 100, INT_MAX, INT_MAX), CRect(300, 300, 100, 100)}) {
        EXPECT_FALSE(dlg.MoveWindowAndCheck(useless));
        EXPECT_EQ(WindowRect(dlg), CRect(40, 50, 340, 250));
    }
}

TEST_F(GuiDlg, HelpMessageAsksForHelpAndFallsBackToTheFramework)
{
    HELPINFO info{
        sizeof(info), HELPINFO_WINDOW, static_cast<int>(kEditId), ::GetDlgItem(dlg.m_hWnd, kEditId), 0,
        {0, 0}};
    dlg.SendMessage(WM_HELP, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(dlg.htmlHelpCalls, 1);
    EXPECT_EQ(dlg.GetAssistantDirName(), L"TestDlg");
}

TEST_F(GuiDlg, MethodsWithoutAWindowAreHarmless)
{
    dlg.DestroyWindow();
    EXPECT_FALSE(dlg.ShowWindow(SW_SHOW));
    EXPECT_FALSE(dlg.MoveWindowAndCheck(CRect(10, 10, 300, 200)));
    EXPECT_EQ(dlg.IsDlgButtonChecked(kCheckId), 0);
    EXPECT_EQ(dlg.CheckDlgButton(kCheckId, 1), 0);
    EXPECT_EQ(dlg.NcHitTest({10, 10}), HTERROR);
    dlg.DrawNcArea();
    dlg.SetStaticCtrlFormat(kStaticId, 0, 0, nullptr, 0);
    MSG message{};
    EXPECT_FALSE(dlg.PreTranslateMessage(&message));
}

TEST_F(GuiDlg, ReplacedControlsGoWithTheDialog)
{
    struct WatchedStatic : CStatic {
        explicit WatchedStatic(int& count) : deleted(count) {}
        ~WatchedStatic() override { ++deleted; }
        int& deleted;
    };
    constexpr UINT kOtherStaticId = 1004;
    DialogTemplate t = PlainTemplate();
    t.Static(kOtherStaticId, L"other", 80, 10, 60, 12);
    int deleted = 0;
    dlg.onInit = [&] {
        for (const UINT id : {kStaticId, kOtherStaticId}) {
            auto control = std::make_unique<WatchedStatic>(deleted);
            ASSERT_TRUE(control->SubclassDlgItem(id, &dlg));
            dlg.m_arrSubclassed.Add(control.release());
        }
        dlg.m_arrSubclassed.Add(nullptr);
    };
    OpenAgain(t);
    // One of them is gone already when the dialog goes.
    dlg.GetDlgItem(kOtherStaticId)->DestroyWindow();
    dlg.DestroyWindow();
    EXPECT_EQ(deleted, 2);
    EXPECT_EQ(dlg.m_arrSubclassed.GetSize(), 0);
}

TEST_F(GuiDlg, ModalDialogEndsWithItsResult)
{
    dlg.DestroyWindow();
    const DialogTemplate t = PlainTemplate();
    ASSERT_TRUE(dlg.InitModalIndirect(t.Get()));
    EXPECT_TRUE(dlg.m_bModeless);
    auto answer = WhenModal([&](HWND) {
        EXPECT_EQ(dlg.m_bSkinNc, 1);
        EXPECT_FALSE(dlg.m_bModeless);
        dlg.EndDialog(77);
    });
    EXPECT_EQ(dlg.DoModal(), 77);
    EXPECT_EQ(dlg.m_hWnd, nullptr);
}

TEST_F(GuiDlg, ObjectCanBeOpenedAgain)
{
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(dlg.AddToolTips(kEditId, L"tip"));
        EXPECT_EQ(BrushColor(AskColors(dlg, WM_CTLCOLORDLG, 0).brush), VGM.Dlg.clrBk);
        OpenAgain();
    }
}
