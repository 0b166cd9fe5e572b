// The help of a dialog whose host has none; tests/assist has the rest.
#include "tests/dialogs/gui_dlg_fixture.h"
#include "tests/support/modal.h"
#include "vgui/assist/host_paths.h"

using namespace support;

namespace
{

class UnhelpedDlg : public TestDlg
{
public:
    int CallHelp() { return VGuiDlg::OnHtmlHelp(); }
};

// Gone when its help is.
class VanishingDlg : public TestDlg
{
public:
    VanishingDlg() { deleteWithWindow = true; }

    int OnHtmlHelp() override
    {
        DestroyWindow();
        return 0;
    }
};

class GuiDlgHelp : public GuiDlgTest
{
protected:
    GuiDlgHelp() { VGSetHostRoot(L"C:\\no such host"); }
    ~GuiDlgHelp() override { VGSetHostRoot(nullptr); }
};

} // namespace

TEST_F(GuiDlgHelp, SaysThatTheHostHasNoHelp)
{
    UnhelpedDlg dlg;
    Open(dlg);
    const auto answer = AnswerMessageBox(IDOK);
    EXPECT_EQ(dlg.CallHelp(), 0);
    EXPECT_EQ(answer.Text(), L"acedHelp失败:");
    EXPECT_EQ(answer.Caption(), L"温馨提示");
    dlg.DestroyWindow();
}

TEST_F(GuiDlgHelp, MayEndTheDialog)
{
    auto* const dlg = new VanishingDlg;
    Open(*dlg);
    HELPINFO info{};
    info.cbSize = sizeof info;
    EXPECT_EQ(dlg->SendMessage(WM_HELP, 0, reinterpret_cast<LPARAM>(&info)), TRUE);
}
