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
