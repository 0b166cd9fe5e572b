// A skinned dialog to test with, and the window state that the tests of it share.
#pragma once

#include "tests/support/dialog_template.h"
#include "tests/support/host_test.h"
#include "vgui/dialogs/gui_dlg.h"
#include "vgui/dialogs/gui_dlg_geometry.h"
#include "vgui/foundation/gui_manager.h"

#include <functional>
#include <memory>
#include <vector>

constexpr DWORD kCaptionStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | DS_SETFONT;
constexpr DWORD kBothBoxes = WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
constexpr UINT kStaticId = 1001;
constexpr UINT kCheckId = 1002;
constexpr UINT kEditId = 1003;
constexpr UINT kMissingId = 4711;

// Opens what is protected and counts what the dialog is asked to do.
class TestDlg : public VGuiDlg
{
    DECLARE_DYNAMIC(TestDlg)

public:
    explicit TestDlg(CWnd* parent = nullptr) : VGuiDlg(0, parent) {}

    using VGuiDlg::BeginEditorCommand;
    using VGuiDlg::CompleteEditorCommand;
    using VGuiDlg::DrawNcArea;
    using VGuiDlg::LoadStringW;
    using VGuiDlg::m_arrSubclassed;
    using VGuiDlg::m_bHelpBtn;
    using VGuiDlg::m_bModeless;
    using VGuiDlg::m_bmpHelp;
    using VGuiDlg::m_bNcBtnDown;
    using VGuiDlg::m_bSkinNc;
    using VGuiDlg::m_nEditorState;
    using VGuiDlg::NcHitTest;
    using VGuiDlg::OnToolTipText;

    void PromptHelp() override
    {
        ++helpCalls;
        if (onHelp)
            onHelp();
    }
    int OnHtmlHelp() override
    {
        ++htmlHelpCalls;
        return htmlHelpResult;
    }

    int helpCalls = 0;
    int htmlHelpCalls = 0;
    int htmlHelpResult = 1;
    int closeCalls = 0;
    std::function<void()> onHelp;
    std::function<void()> onInit;
    bool deleteWithWindow = false;

protected:
    BOOL OnInitDialog() override
    {
        const BOOL result = VGuiDlg::OnInitDialog();
        if (onInit)
            onInit();
        return result;
    }
    // A modeless dialog is closed by destroying its window.
    void OnCancel() override
    {
        ++closeCalls;
        if (m_bModeless)
            DestroyWindow();
        else
            VGuiDlg::OnCancel();
    }
    void PostNcDestroy() override
    {
        if (deleteWithWindow)
            delete this;
    }
};

inline support::DialogTemplate PlainTemplate(DWORD style = kCaptionStyle | kBothBoxes)
{
    support::DialogTemplate t(L"Skinned", 200, 100, style);
    t.Static(kStaticId, L"text", 10, 10, 60, 12);
    t.Item(L"BUTTON", L"check", kCheckId, 10, 30, 60, 12, BS_AUTOCHECKBOX | WS_TABSTOP);
    t.Edit(kEditId, 10, 50, 60, 12);
    return t;
}

// Creates the dialog modeless, wholly on the screen and away from its corners, active and painted.
inline void Open(TestDlg& dlg, const support::DialogTemplate& t = PlainTemplate())
{
    ASSERT_TRUE(dlg.CreateIndirect(t.Get(), dlg.GetParent()));
    dlg.SetWindowPos(nullptr, 200, 150, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    dlg.ShowWindow(SW_SHOW);
    dlg.SetForegroundWindow();
    dlg.UpdateWindow();
    support::PumpMessages();
}

// The base of the dialog's suites: what the system keeps after the first opening, tooltip and sizing of a
// dialog is there before the census begins.
class GuiDlgTest : public support::CensusTest
{
public:
    static void SetUpTestSuite();
};

// The base of suites whose dialog is open.
class OpenDlgTest : public GuiDlgTest
{
protected:
    void SetUp() override { Open(dlg); }
    void OpenAgain(const support::DialogTemplate& t = PlainTemplate())
    {
        dlg.DestroyWindow();
        Open(dlg, t);
    }

    TestDlg dlg;
};

inline gui_dlg::NcMetrics LiveMetrics()
{
    return {VGM.Dlg.nFrameWidth, VGM.Dlg.nCaptionHeight};
}

inline CRect WindowRect(const CWnd& window)
{
    CRect rect;
    window.GetWindowRect(rect);
    return rect;
}

// The middle of a caption button in screen coordinates.
inline CPoint CapBtnCenter(TestDlg& dlg, LRESULT wanted)
{
    const DWORD style = dlg.GetStyle();
    const gui_dlg::CapBtns present{(style & WS_MAXIMIZEBOX) != 0, (style & WS_MINIMIZEBOX) != 0,
                                   dlg.m_bHelpBtn};
    CPoint center(-1, -1);
    gui_dlg::ForEachCapBtn(WindowRect(dlg), LiveMetrics(), present, [&](LRESULT hit, const CRect& button) {
        if (hit == wanted)
            center = button.CenterPoint();
    });
    return center;
}
