#include "tests/support/dialog_template.h"
#include "tests/support/host_test.h"
#include "vgui/dialogs/tab_pages.h"

#include <vector>

using namespace support;

namespace
{

constexpr UINT kTemplate = 7302;
constexpr int kBefore = 1;
constexpr int kTabs = 2;
constexpr int kAfter = 3;
constexpr int kFirst = 1001; // on the page
constexpr int kLast = 1002;

class TabsDlg : public CDialog
{
public:
    VTabPage page{kTemplate};
    VTabDlgCtrl tabs;
    std::vector<UINT> ended;

    ~TabsDlg() override { DestroyWindow(); }

protected:
    BOOL OnInitDialog() override
    {
        CDialog::OnInitDialog();
        tabs.SubclassDlgItem(kTabs, this);
        tabs.AddPage(L"page", &page, 1, 0, 0);
        tabs.SetActive(0);
        return TRUE;
    }
    void OnOK() override { ended.push_back(IDOK); }
    void OnCancel() override { ended.push_back(IDCANCEL); }
};

class TabPageKeys : public CensusTest
{
protected:
    void SetUp() override
    {
        DialogTemplate t(L"keys", 150, 120);
        t.Edit(kBefore, 5, 5, 50, 12).Item(WC_TABCONTROL, L"", kTabs, 5, 20, 140, 70, WS_TABSTOP);
        t.Button(kAfter, L"after", 5, 100, 50, 14);
        ASSERT_TRUE(dlg.CreateIndirect(t));
        dlg.ShowWindow(SW_SHOW);
        dlg.SetForegroundWindow();
        PumpMessages();
    }
    // The ids of the controls that the focus visits, beginning with the one after the key's first stroke.
    std::vector<int> Visit(int from, int strokes, const std::vector<UINT>& modifiers = {})
    {
        dlg.GetDlgItem(from)->SetFocus();
        std::vector<int> ids;
        for (int stroke = 0; stroke < strokes; ++stroke) {
            Key(VK_TAB, modifiers);
            ids.push_back(::GetDlgCtrlID(::GetFocus()));
        }
        return ids;
    }

    TabsDlg dlg;
};

using Ids = std::vector<int>;

} // namespace

TEST_F(TabPageKeys, TabGoesThroughThePage)
{
    EXPECT_EQ(Visit(kBefore, 5), (Ids{kTabs, kFirst, kLast, kAfter, kBefore}));
    EXPECT_EQ(Visit(kAfter, 3, {VK_SHIFT}), (Ids{kTabs, kBefore, kAfter}));
    ASSERT_EQ(Visit(kTabs, 2), (Ids{kFirst, kLast}));
    Key(VK_TAB, {VK_SHIFT});
    Key(VK_TAB, {VK_SHIFT});
    EXPECT_EQ(::GetFocus(), dlg.tabs.m_hWnd);
}

TEST_F(TabPageKeys, TabPassesByTheTitleBand)
{
    dlg.tabs.SetOutDrivenMode(1);
    EXPECT_EQ(Visit(kBefore, 4), (Ids{kFirst, kLast, kAfter, kBefore}));
    EXPECT_EQ(Visit(kAfter, 4, {VK_SHIFT}), (Ids{kLast, kFirst, kBefore, kAfter}));
}

TEST_F(TabPageKeys, EnterAndEscapeReachTheDialog)
{
    dlg.page.GetDlgItem(kFirst)->SetFocus();
    Key(VK_RETURN);
    Key(VK_ESCAPE);
    EXPECT_EQ(dlg.ended, (std::vector<UINT>{IDOK, IDCANCEL}));
    EXPECT_TRUE(dlg.page.IsWindowVisible());
}
