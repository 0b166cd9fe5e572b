// Each composite control many times.
#include "tests/support/window_rounds.h"

#include "tests/support/census.h"
#include "vgui/composite/combo_tree.h"
#include "vgui/composite/outline.h"
#include "vgui/composite/property_list.h"
#include "vgui/composite/tip_window.h"

using namespace support;

namespace
{

constexpr DWORD kChild = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
constexpr UINT kId = 1000;
const CRect kPlace(10, 10, 230, 130);

class OpenList : public VPropertyList
{
public:
    using VPropertyList::StartEdit;
};

class OpenGrid : public VPropertyGrid
{
public:
    using VPropertyGrid::StartEdit;
};

void ListRound(HostWnd& host, int index)
{
    constexpr DWORD kStyle = WS_VSCROLL | LBS_NOTIFY | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS;
    OpenList list;
    list.AddItem(L"early", L"bird", L"bird|worm", static_cast<VPropertyList::PIET>(index % 3));
    ASSERT_TRUE(list.Create(kChild | kStyle, kPlace, &host, kId));
    list.StartEdit(0);
    list.UpdateWindow();
}

void GridRound(HostWnd& host, int)
{
    OpenGrid grid;
    ASSERT_TRUE(grid.Create(kChild | LVS_REPORT, kPlace, &host, kId));
    grid.InsertColumn(0, L"column", LVCFMT_LEFT, 80);
    grid.InsertItem(0, L"cell");
    grid.StartEdit(0, 0);
    grid.UpdateWindow();
}

void ComboTreeRound(HostWnd& host, int index)
{
    ComboTree combo;
    combo.SetHasCheckboxes(index % 2);
    ASSERT_TRUE(combo.Create(CRect(10, 10, 170, 34), 180, 160, &host, kId));
    ASSERT_NE(combo.AddString(L"root/leaf"), nullptr);
    combo.ShowDropDown(TRUE);
    combo.GetTree().UpdateWindow();
    combo.UpdateWindow();
}

void TipRound(HostWnd& host, int)
{
    CXTTipWindow tip;
    ASSERT_TRUE(tip.Create(&host));
    tip.SetTipText(L"title", L"body");
    ASSERT_TRUE(tip.ShowTipWindow(CPoint(40, 40), VGTipShadow));
    tip.UpdateWindow();
}

class WindowRounds : public CensusTest
{
};

} // namespace

TEST_F(WindowRounds, ManyOfEachCompositeLeaveNothing)
{
    HostWnd host;
    ASSERT_TRUE(host.Open({300, 200}));
    ExpectNothingLeft(host, {
                                {"property list", ListRound},
                                {"property grid", GridRound},
                                {"combo tree", ComboTreeRound},
                                {"tip", TipRound},
                                DressedRound<VOutlineEx>("outline", L"STATIC"),
                            });
}
