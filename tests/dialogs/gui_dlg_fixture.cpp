#include "tests/dialogs/gui_dlg_fixture.h"

#include "tests/support/environment.h"

IMPLEMENT_DYNAMIC(TestDlg, VGuiDlg)

namespace
{

// The system keeps a cached DC for each one that was ever in use at the same time as others.
void FillDCCache()
{
    std::vector<HDC> contexts;
    for (int i = 0; i < 8; ++i)
        contexts.push_back(::GetWindowDC(support::AnchorWindow()));
    for (const HDC context : contexts)
        ::ReleaseDC(support::AnchorWindow(), context);
}

} // namespace

void GuiDlgTest::SetUpTestSuite()
{
    {
        TestDlg dlg;
        Open(dlg);
        dlg.AddToolTips(kEditId, L"tip");
        const auto tipShown = [&] { return dlg.GetToolTipCtrl().IsWindowVisible() != FALSE; };
        support::MoveTo(support::CenterOf(::GetDlgItem(dlg.m_hWnd, kEditId)));
        EXPECT_TRUE(support::PumpUntil(tipShown));
        support::MoveTo(support::CenterOf(::GetDlgItem(dlg.m_hWnd, kCheckId)));
        EXPECT_TRUE(support::PumpUntil([&] { return !tipShown(); }));
        dlg.CheckDlgButton(kCheckId, BST_CHECKED);
        dlg.UpdateWindow();
        // A second window beside it, as the tests have: a frame.
        auto* frame = new CFrameWnd; // deletes itself
        EXPECT_TRUE(frame->Create(nullptr, L"frame", WS_OVERLAPPEDWINDOW, CRect(20, 20, 180, 120)));
        frame->ShowWindow(SW_SHOW);
        support::PumpMessages();
        frame->DestroyWindow();
        dlg.SetForegroundWindow();
        const CPoint corner = WindowRect(dlg).BottomRight() - CSize(2, 2);
        support::Drag({corner, corner + CSize(5, 5), corner});
        support::Click(CapBtnCenter(dlg, HTHELP));
        ::SetForegroundWindow(support::AnchorWindow());
        support::PumpMessages();
    }
    FillDCCache();
    CensusTest::SetUpTestSuite();
}
