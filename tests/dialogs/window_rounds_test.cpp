// Each dialog class many times.
#include "tests/support/window_rounds.h"

#include "tests/dialogs/gui_dlg_fixture.h"
#include "vgui/dialogs/tab_pages.h"

using namespace support;

namespace
{

constexpr UINT kPageTemplate = 7301;

void DialogRound(HostWnd&, int)
{
    static const DialogTemplate plain = PlainTemplate();
    TestDlg dialog;
    ASSERT_TRUE(dialog.CreateIndirect(plain.Get()));
    dialog.AddToolTips(kEditId, L"tip");
    dialog.ShowWindow(SW_SHOW);
    dialog.UpdateWindow();
}

void PagesRound(HostWnd& host, int)
{
    VTabPage first(kPageTemplate), second(kPageTemplate);
    VTabDlgCtrl tabs;
    ASSERT_TRUE(tabs.Create(WS_CHILD | WS_VISIBLE, CRect(10, 10, 290, 190), &host, 1000));
    tabs.AddPage(L"first", &first, TRUE, 0, TRUE);
    tabs.AddPage(L"second", &second, TRUE, 0, FALSE);
    tabs.SetActive(1);
    tabs.UpdateWindow();
}

class WindowRounds : public CensusTest
{
};

} // namespace

TEST_F(WindowRounds, ManyOfEachDialogLeaveNothing)
{
    HostWnd host;
    ASSERT_TRUE(host.Open({300, 200}));
    ExpectNothingLeft(host, {
                                {"dialog", DialogRound},
                                {"tabbed pages", PagesRound},
                                DressedRound<VTabCtrl>("tabs", WC_TABCONTROL),
                            });
}
