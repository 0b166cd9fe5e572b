// How dialogs enter the help.
#include "tests/assist/assist_host.h"
#include "tests/support/census.h"
#include "tests/support/dialog_template.h"
#include "vgui/assist/assist_system_dlg.h"
#include "vgui/dialogs/gui_dlg.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace support;

namespace
{

std::vector<std::wstring> s_hostHelp; // what the host's own help was called with

class HelpedDlg : public VGuiDlg
{
    DECLARE_DYNAMIC(HelpedDlg)

public:
    HelpedDlg() : VGuiDlg(0) {}

    using VGuiDlg::OnHtmlHelp;
};

IMPLEMENT_DYNAMIC(HelpedDlg, VGuiDlg)

class HelpEntry : public CensusTest
{
protected:
    HelpEntry()
    {
        DialogTemplate t(L"Helped", 100, 50);
        dialog.CreateIndirect(t.Get());
        s_hostHelp.clear();
    }
    ~HelpEntry() override { dialog.DestroyWindow(); }

    static CWnd* Help() { return CWnd::FindWindow(nullptr, L"帮助系统 - 对话框"); }

    AssistHost host;
    HelpedDlg dialog;
};

} // namespace

// The function by which a host shows its help file.
extern "C" __declspec(dllexport) int acedHelp(const wchar_t* file, const wchar_t* topic, int command)
{
    s_hostHelp = {file, topic, std::to_wstring(command)};
    return 7;
}

TEST_F(HelpEntry, IsTheAssistSystemForDialogsWithATopic)
{
    EXPECT_EQ(dialog.GetAssistantDirName(), L"HelpedDlg");
    AssistHost::Write(host.Sys(L"AssistSystem.ini"),
                      L"[HelpedDlg]\r\nHtmlFile=1\r\nCaption=对话框\r\nDirectory=dialogs\r\n");
    EXPECT_EQ(dialog.OnHtmlHelp(), 0);
    ASSERT_NE(Help(), nullptr);
    Help()->DestroyWindow();
    dialog.PromptHelp();
    ASSERT_NE(Help(), nullptr);
    Help()->DestroyWindow();
    EXPECT_TRUE(s_hostHelp.empty());
}

TEST_F(HelpEntry, IsTheHostsHelpFileForOthers)
{
    AssistHost::Write(host.Sys(L"product.ini"), L"[产品信息]\r\n帮助文件=C:\\帮助 文件.chm\r\n");
    HELPINFO info{};
    info.cbSize = sizeof info;
    EXPECT_EQ(dialog.SendMessage(WM_HELP, 0, reinterpret_cast<LPARAM>(&info)), TRUE);
    EXPECT_EQ(s_hostHelp, (std::vector<std::wstring>{L"C:\\帮助 文件.chm", L"", L"0"}));
}
