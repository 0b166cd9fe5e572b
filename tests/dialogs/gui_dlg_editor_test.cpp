#include "tests/dialogs/gui_dlg_fixture.h"
#include "tests/support/environment.h"
#include "tests/support/lingering.h"
#include "tests/support/modal.h"
#include "tests/support/recorder.h"

using namespace support;

namespace
{

// A frame window as the host's main window, for the time of one test.
class GuiDlgEditor : public GuiDlgTest
{
protected:
    void SetUp() override
    {
        m_frame = new CFrameWnd; // deletes itself
        ASSERT_TRUE(m_frame->Create(nullptr, L"host", WS_OVERLAPPEDWINDOW, CRect(20, 20, 180, 120)));
        m_frame->ShowWindow(SW_SHOW);
        m_main.emplace(m_frame);
        PumpMessages();
    }
    void TearDown() override
    {
        m_main.reset();
        dlg.DestroyWindow();
        m_frame->DestroyWindow();
    }

    void OpenOwned(TestDlg& owned) const
    {
        const DialogTemplate t = PlainTemplate();
        ASSERT_TRUE(owned.CreateIndirect(t.Get(), m_frame));
        owned.ShowWindow(SW_SHOW);
        owned.SetForegroundWindow();
        PumpMessages();
    }

    CFrameWnd* m_frame = nullptr;
    std::optional<MainWndScope> m_main;
    TestDlg dlg;
};

// Closes itself when it is told of something, as a host may do, and is freed with its window.
class ClosingDlg : public TestDlg
{
public:
    ClosingDlg() { deleteWithWindow = true; }

    UINT closesAt = WM_NULL;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message != closesAt)
            return TestDlg::WindowProc(message, wParam, lParam);
        closesAt = WM_NULL;
        DestroyWindow();
        return 0;
    }
};

} // namespace

TEST_F(GuiDlgEditor, ModelessDialogGivesWayToItsParentAndComesBack)
{
    OpenOwned(dlg);
    {
        const VEditorCommand command(&dlg);
        EXPECT_EQ(dlg.m_nEditorState, 3);
        EXPECT_FALSE(dlg.IsWindowVisible());
        EXPECT_EQ(CWnd::GetActiveWindow(), m_frame);
        EXPECT_EQ(CWnd::GetFocus(), m_frame);
    }
    EXPECT_EQ(dlg.m_nEditorState, 0);
    EXPECT_TRUE(dlg.IsWindowVisible());
    EXPECT_EQ(CWnd::GetActiveWindow(), &dlg);
    EXPECT_TRUE(m_frame->IsWindowEnabled());
}

TEST_F(GuiDlgEditor, HiddenDialogStaysHidden)
{
    OpenOwned(dlg);
    dlg.ShowWindow(SW_HIDE);
    dlg.BeginEditorCommand();
    EXPECT_EQ(dlg.m_nEditorState, 1);
    dlg.CompleteEditorCommand();
    EXPECT_EQ(dlg.m_nEditorState, 0);
    EXPECT_FALSE(dlg.IsWindowVisible());
}

TEST_F(GuiDlgEditor, ModalDialogEnablesItsOwnersMeanwhile)
{
    const DialogTemplate t = PlainTemplate();
    ASSERT_TRUE(dlg.InitModalIndirect(t.Get(), m_frame));
    auto answer = WhenModal([&](HWND) {
        EXPECT_FALSE(m_frame->IsWindowEnabled());
        VEditorCommand command(&dlg);
        EXPECT_EQ(dlg.m_nEditorState, 3);
        EXPECT_FALSE(dlg.IsWindowVisible());
        EXPECT_TRUE(m_frame->IsWindowEnabled());
        EXPECT_EQ(CWnd::GetFocus(), m_frame);
        command.CompleteEditorCommand();
        EXPECT_TRUE(dlg.IsWindowVisible());
        EXPECT_FALSE(m_frame->IsWindowEnabled());
        EXPECT_TRUE(dlg.IsWindowEnabled());
        EXPECT_EQ(dlg.m_nEditorState, 0);
        dlg.EndDialog(IDOK);
    });
    EXPECT_EQ(dlg.DoModal(), IDOK);
    EXPECT_TRUE(m_frame->IsWindowEnabled());
}

TEST_F(GuiDlgEditor, CommandCompletesOnce)
{
    OpenOwned(dlg);
    {
        VEditorCommand command(&dlg);
        command.CompleteEditorCommand();
        dlg.ShowWindow(SW_HIDE);
    }
    EXPECT_FALSE(dlg.IsWindowVisible());
    dlg.CompleteEditorCommand(); // nothing was begun
    EXPECT_FALSE(dlg.IsWindowVisible());
}

TEST_F(GuiDlgEditor, CommandInsideACommandDoesNotLoseTheDialog)
{
    OpenOwned(dlg);
    {
        const VEditorCommand outer(&dlg);
        const VEditorCommand inner(&dlg);
        EXPECT_EQ(dlg.m_nEditorState, 3);
    }
    EXPECT_TRUE(dlg.IsWindowVisible());
    EXPECT_EQ(dlg.m_nEditorState, 0);
}

TEST_F(GuiDlgEditor, CommandOutlivesItsDialog)
{
    VEditorCommand nothing(nullptr);
    nothing.CompleteEditorCommand();

    auto brief = std::make_unique<TestDlg>();
    const VEditorCommand unborn(brief.get());
    EXPECT_EQ(brief->m_nEditorState, 0);
    OpenOwned(*brief);
    const VEditorCommand command(brief.get());
    brief->DestroyWindow();
    EXPECT_EQ(brief->m_nEditorState, 0);
    brief.reset();
}

TEST_F(GuiDlgEditor, CommandMayCloseAndFreeTheDialog)
{
    const struct {
        UINT begins, completes; // the message that closes it
    } cases[] = {
        {WM_ACTIVATE, WM_NULL}, {WM_SHOWWINDOW, WM_NULL}, {WM_NULL, WM_SHOWWINDOW},
        {WM_NULL, WM_ACTIVATE}, {WM_NULL, WM_SETFOCUS},
    };
    for (const auto& item : cases) {
        SCOPED_TRACE(item.begins + item.completes);
        auto* const closing = new Lingering<ClosingDlg>;
        OpenOwned(*closing);
        const HWND window = closing->m_hWnd;
        {
            closing->closesAt = item.begins;
            const VEditorCommand command(closing);
            if (::IsWindow(window))
                closing->closesAt = item.completes;
        }
        EXPECT_FALSE(::IsWindow(window));
        EXPECT_TRUE(Lingering<ClosingDlg>::IsUntouched());
    }
}

TEST_F(GuiDlgEditor, MainFrameIsUsableAfterAModalDialogOfAnotherWindow)
{
    HostWnd other;
    ASSERT_TRUE(other.Open());
    const DialogTemplate t = PlainTemplate();
    ASSERT_TRUE(dlg.InitModalIndirect(t.Get(), &other));
    auto answer = WhenModal([&](HWND) {
        {
            const VEditorCommand command(&dlg);
        }
        EXPECT_FALSE(m_frame->IsWindowEnabled());
        dlg.EndDialog(IDOK);
    });
    EXPECT_EQ(dlg.DoModal(), IDOK);
    EXPECT_TRUE(m_frame->IsWindowEnabled());
    EXPECT_TRUE(other.IsWindowEnabled());
}
