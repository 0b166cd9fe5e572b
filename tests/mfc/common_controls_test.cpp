// The wrappers of the common controls at the places where one can go wrong: texts that controls cut,
// parameters that travel in the answer's memory, packed 16-bit values, and reflected drawing.
#include "tests/support/census.h"
#include "tests/support/pixels.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"

#include <afxcmn.h>

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace
{

using support::HostWnd;

constexpr UINT kId = 100;
const CRect kPlace{10, 10, 260, 210};
constexpr COLORREF kInk = RGB(12, 140, 77);
// Around the first buffer that a reader of unknown texts would try, and far beyond it.
constexpr int kTextLengths[] = {0, 1, 126, 127, 128, 129, 255, 256, 1000};

class CommonControls : public support::CensusTest
{
public:
    static void SetUpTestSuite()
    {
        EditALabel(); // the first time, the system makes brushes that it keeps
        CensusTest::SetUpTestSuite();
    }

protected:
    static void EditALabel()
    {
        HostWnd host;
        CTreeCtrl tree;
        if (!host.Open() || !tree.Create(WS_CHILD | WS_VISIBLE | TVS_EDITLABELS, kPlace, &host, kId))
            return;
        tree.SetFocus();
        tree.EditLabel(tree.InsertItem(L"item"));
        support::PumpMessages();
    }

    void SetUp() override { ASSERT_TRUE(host.Open()); }

    HostWnd host;
};

// ---- Tree
// --------------------------------------------------------------------------------------------------

class CommonControlsTree : public CommonControls
{
protected:
    static constexpr DWORD kStyle =
        WS_CHILD | WS_VISIBLE | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_CHECKBOXES;

    void SetUp() override
    {
        CommonControls::SetUp();
        ASSERT_TRUE(tree.Create(kStyle, kPlace, &host, kId));
    }

    // The images of the check boxes are not freed with the tree.
    void TearDown() override
    {
        CImageList* const checks = tree.SetImageList(nullptr, TVSIL_STATE);
        if (checks != nullptr)
            checks->DeleteImageList();
    }

    CTreeCtrl tree;
};

TEST_F(CommonControlsTree, TextsOfAnyLengthComeBackWhole)
{
    for (const int length : kTextLengths) {
        const CString text(L'字', length);
        const HTREEITEM item = tree.InsertItem(text);
        ASSERT_NE(item, nullptr);
        // Some versions keep at most 259 characters for display; the reader must not cut below that.
        const CString answer = tree.GetItemText(item);
        EXPECT_EQ(answer, text.Left(answer.GetLength()));
        EXPECT_GE(answer.GetLength(), std::min(length, 259));
    }
    EXPECT_TRUE(tree.GetItemText(nullptr).IsEmpty());
}

TEST_F(CommonControlsTree, CallbackTextComesFromTheParent)
{
    const std::wstring text(300, L'c');
    host.SetAnswer([&](UINT message, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        auto* const request = reinterpret_cast<NMTVDISPINFO*>(lParam);
        if (message != WM_NOTIFY || request->hdr.code != TVN_GETDISPINFO)
            return std::nullopt;
        request->item.pszText = const_cast<LPWSTR>(text.c_str()); // a pointer of the program's own
        return 0;
    });
    const HTREEITEM item = tree.InsertItem(LPSTR_TEXTCALLBACK);
    EXPECT_EQ(std::wstring(tree.GetItemText(item)).substr(0, 100), text.substr(0, 100));
}

TEST_F(CommonControlsTree, ChecksGoInAndOut)
{
    const HTREEITEM item = tree.InsertItem(L"item");
    EXPECT_FALSE(tree.GetCheck(item));
    EXPECT_TRUE(tree.SetCheck(item));
    EXPECT_TRUE(tree.GetCheck(item));
    EXPECT_TRUE(tree.SetCheck(item, FALSE));
    EXPECT_FALSE(tree.GetCheck(item));
}

TEST_F(CommonControlsTree, DragImageBelongsToTheCaller)
{
    CImageList images;
    ASSERT_TRUE(images.Create(16, 16, ILC_COLOR32 | ILC_MASK, 1, 1));
    EXPECT_EQ(tree.SetImageList(&images, TVSIL_NORMAL), nullptr);
    EXPECT_EQ(tree.GetImageList(TVSIL_NORMAL), &images);
    const HTREEITEM item = tree.InsertItem(L"item", 0, 0);
    support::PumpMessages();
    {
        const std::unique_ptr<CImageList> drag(tree.CreateDragImage(item));
        ASSERT_NE(drag, nullptr);
        EXPECT_EQ(CImageList::FromHandlePermanent(*drag), drag.get());
        int width = 0;
        int height = 0;
        EXPECT_TRUE(::ImageList_GetIconSize(*drag, &width, &height));
        EXPECT_GE(width, 16);
    }
    EXPECT_EQ(tree.CreateDragImage(nullptr), nullptr);
    EXPECT_EQ(tree.SetImageList(nullptr, TVSIL_NORMAL), &images);
}

TEST_F(CommonControlsTree, LabelIsEditedInAControlOfTheTree)
{
    tree.ModifyStyle(0, TVS_EDITLABELS);
    const HTREEITEM item = tree.InsertItem(L"item");
    tree.SetFocus();
    support::PumpMessages();
    CEdit* const edit = tree.EditLabel(item);
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(tree.GetEditControl(), edit);
    edit->SetWindowText(L"changed");
    EXPECT_TRUE(tree.EndEditLabelNow(TRUE));
    EXPECT_EQ(tree.GetEditControl(), nullptr);
    EXPECT_STREQ(tree.GetItemText(item), L"item");
}

// ---- List view
// ---------------------------------------------------------------------------------------------

class CommonControlsList : public CommonControls
{
protected:
    void SetUp() override
    {
        CommonControls::SetUp();
        ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | LVS_REPORT, kPlace, &host, kId));
        EXPECT_EQ(list.InsertColumn(0, L"first", LVCFMT_LEFT, 80), 0);
        EXPECT_EQ(list.InsertColumn(1, L"second", LVCFMT_RIGHT, 60, 1), 1);
        EXPECT_EQ(list.InsertColumn(2, L"third"), 2);
    }

    CListCtrl list;
};

TEST_F(CommonControlsList, TextsOfAnyLengthComeBackWhole)
{
    ASSERT_EQ(list.InsertItem(0, L""), 0);
    for (const int length : kTextLengths) {
        const CString text(L'字', length);
        for (const int column : {0, 1}) {
            ASSERT_TRUE(list.SetItemText(0, column, text));
            const CString answer = list.GetItemText(0, column);
            EXPECT_EQ(answer, text.Left(answer.GetLength()));
            EXPECT_GE(answer.GetLength(), std::min(length, 259));
        }
    }
    EXPECT_TRUE(list.GetItemText(5, 0).IsEmpty());

    constexpr TCHAR kUntouched = L'#';
    list.SetItemText(0, 1, L"0123456789");
    std::array<TCHAR, 16> buffer;
    buffer.fill(kUntouched);
    EXPECT_EQ(list.GetItemText(0, 1, buffer.data(), 0), 0);
    EXPECT_EQ(buffer[0], kUntouched);
    EXPECT_EQ(list.GetItemText(0, 1, buffer.data(), 5), 4);
    EXPECT_STREQ(buffer.data(), L"0123");
    EXPECT_EQ(std::count(buffer.begin(), buffer.end(), kUntouched), 11);
}

TEST_F(CommonControlsList, SelectionIsWalkedItemByItem)
{
    for (int item = 0; item < 6; ++item)
        list.InsertItem(item, L"item");
    EXPECT_EQ(list.GetFirstSelectedItemPosition(), nullptr);
    for (const int item : {0, 2, 5})
        EXPECT_TRUE(list.SetItemState(item, LVIS_SELECTED, LVIS_SELECTED));
    std::vector<int> selected;
    POSITION position = list.GetFirstSelectedItemPosition();
    while (position != nullptr)
        selected.push_back(list.GetNextSelectedItem(position));
    EXPECT_EQ(selected, (std::vector{0, 2, 5}));
    EXPECT_EQ(list.GetNextSelectedItem(position), -1);
    EXPECT_TRUE(list.SetItemState(-1, 0, LVIS_SELECTED));
    EXPECT_EQ(list.GetSelectedCount(), 0u);
}

TEST_F(CommonControlsList, ItemsKeepDataAndChecks)
{
    list.SetExtendedStyle(LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT);
    EXPECT_EQ(list.GetExtendedStyle(), static_cast<DWORD>(LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT));
    EXPECT_EQ(list.InsertItem(LVIF_TEXT | LVIF_PARAM, 0, L"item", 0, 0, 0, -9), 0);
    EXPECT_EQ(list.GetItemData(0), static_cast<DWORD_PTR>(-9));
    EXPECT_TRUE(list.SetItemData(0, 0x1122334455));
    EXPECT_EQ(list.GetItemData(0), 0x1122334455u);
    EXPECT_EQ(list.GetItemData(7), 0u);
    EXPECT_TRUE(list.SetCheck(0));
    EXPECT_TRUE(list.GetCheck(0));
    EXPECT_TRUE(list.SetCheck(0, FALSE));
    EXPECT_FALSE(list.GetCheck(0));
    EXPECT_EQ(list.GetItemState(0, LVIS_STATEIMAGEMASK), INDEXTOSTATEIMAGEMASK(1));
}

TEST_F(CommonControlsList, ColumnOrderIsNeverReadPastTheColumns)
{
    CHeaderCtrl* const header = list.GetHeaderCtrl();
    ASSERT_NE(header, nullptr);
    EXPECT_EQ(header->GetItemCount(), 3);
    int order[] = {2, 0, 1};
    EXPECT_TRUE(list.SetColumnOrderArray(3, order));
    std::array answer{-7, -7, -7, -7};
    EXPECT_TRUE(list.GetColumnOrderArray(answer.data()));
    EXPECT_EQ(answer, (std::array{2, 0, 1, -7}));
    answer.fill(-7);
    EXPECT_FALSE(list.GetColumnOrderArray(answer.data(), 4));
    EXPECT_FALSE(header->GetOrderArray(answer.data(), 4));
    EXPECT_EQ(answer, (std::array{-7, -7, -7, -7}));
    EXPECT_TRUE(header->GetOrderArray(answer.data(), 3));
    EXPECT_EQ(header->OrderToIndex(0), 2);

    CListCtrl icons; // a list without columns
    ASSERT_TRUE(icons.Create(WS_CHILD | LVS_ICON, kPlace, &host, kId + 1));
    EXPECT_FALSE(icons.GetColumnOrderArray(answer.data(), 1));

    LVCOLUMN column = {};
    column.mask = LVCF_FMT | LVCF_WIDTH;
    ASSERT_TRUE(list.GetColumn(1, &column));
    EXPECT_EQ(column.fmt & LVCFMT_JUSTIFYMASK, LVCFMT_RIGHT);
    EXPECT_EQ(column.cx, 60);
}

// ---- The smaller controls
// ----------------------------------------------------------------------------------

TEST_F(CommonControls, SpinButtonKeepsSignsAndWidths)
{
    CEdit buddy;
    ASSERT_TRUE(buddy.Create(WS_CHILD | WS_VISIBLE, CRect(10, 10, 60, 30), &host, kId));
    CSpinButtonCtrl spin;
    ASSERT_TRUE(spin.Create(WS_CHILD | WS_VISIBLE | UDS_SETBUDDYINT | UDS_NOTHOUSANDS, CRect(60, 10, 75, 30),
                            &host, kId + 1));
    EXPECT_EQ(spin.SetBuddy(&buddy), nullptr);
    EXPECT_EQ(spin.GetBuddy(), &buddy);
    int lower = 0;
    int upper = 0;
    spin.SetRange(-300, 200);
    spin.GetRange(lower, upper);
    EXPECT_EQ(std::pair(lower, upper), std::pair(-300, 200));
    spin.SetPos(-250);
    EXPECT_EQ(static_cast<short>(LOWORD(spin.GetPos())), -250);
    CString text;
    buddy.GetWindowText(text);
    EXPECT_STREQ(text, L"-250");
    spin.SetRange32(-100000, 100000);
    spin.GetRange32(lower, upper);
    EXPECT_EQ(std::pair(lower, upper), std::pair(-100000, 100000));
    EXPECT_EQ(spin.SetPos32(-90000), -250);
    BOOL error = TRUE;
    EXPECT_EQ(spin.GetPos32(&error), -90000);
    EXPECT_FALSE(error);
}

TEST_F(CommonControls, SliderAndProgressTakeWholeIntegers)
{
    CSliderCtrl slider;
    ASSERT_TRUE(slider.Create(WS_CHILD | WS_VISIBLE | TBS_ENABLESELRANGE, kPlace, &host, kId));
    slider.SetRange(-70000, 90000);
    slider.SetSelection(-60000, 80000);
    slider.SetPos(75000);
    int low = 0;
    int high = 0;
    slider.GetRange(low, high);
    EXPECT_EQ(std::pair(low, high), std::pair(-70000, 90000));
    slider.GetSelection(low, high);
    EXPECT_EQ(std::pair(low, high), std::pair(-60000, 80000));
    EXPECT_EQ(slider.GetPos(), 75000);

    CProgressCtrl progress;
    ASSERT_TRUE(progress.Create(WS_CHILD | WS_VISIBLE, kPlace, &host, kId + 1));
    progress.SetRange(5, 200);
    progress.GetRange(low, high);
    EXPECT_EQ(std::pair(low, high), std::pair(5, 200));
    progress.SetRange32(0, 1000000);
    EXPECT_EQ(progress.SetPos(70000), 5);
    EXPECT_EQ(progress.OffsetPos(5), 70000);
    EXPECT_EQ(progress.SetStep(20), 10);
    EXPECT_EQ(progress.StepIt(), 70005);
    EXPECT_EQ(progress.GetPos(), 70025);
}

TEST_F(CommonControls, ToolBarKnowsItsButtonsByCommand)
{
    CToolBarCtrl bar;
    ASSERT_TRUE(bar.Create(WS_CHILD | WS_VISIBLE, kPlace, &host, kId));
    EXPECT_EQ(bar.AddStrings(L"alpha\0beta\0"), 0);
    const CString text(L't', 300);
    TBBUTTON buttons[2] = {};
    buttons[0] = {I_IMAGENONE, 500, TBSTATE_ENABLED, BTNS_CHECK, {}, 0, 1};
    buttons[1] = {I_IMAGENONE, 501, 0, BTNS_BUTTON, {}, 0, reinterpret_cast<INT_PTR>(text.GetString())};
    ASSERT_TRUE(bar.AddButtons(2, buttons));
    EXPECT_STREQ(bar.GetButtonText(500), L"beta");
    EXPECT_STREQ(bar.GetButtonText(501), text);
    EXPECT_TRUE(bar.GetButtonText(77).IsEmpty());
    EXPECT_TRUE(bar.CheckButton(500));
    EXPECT_TRUE(bar.IsButtonChecked(500));
    EXPECT_FALSE(bar.IsButtonEnabled(501));
    EXPECT_TRUE(bar.EnableButton(501));
    EXPECT_EQ(bar.GetState(501), TBSTATE_ENABLED);
    EXPECT_EQ(bar.CommandToIndex(501), 1u);
    CRect rect;
    ASSERT_TRUE(bar.GetItemRect(0, rect));
    CPoint point = rect.CenterPoint();
    EXPECT_EQ(bar.HitTest(&point), 0);
    EXPECT_EQ(bar.AddBitmap(1, static_cast<CBitmap*>(nullptr)), -1);
}

// ---- Controls that draw themselves
// -------------------------------------------------------------------------

template <class Base>
class Ink : public Base
{
protected:
    void DrawItem(LPDRAWITEMSTRUCT item) override
    {
        CDC::FromHandle(item->hDC)->FillSolidRect(&item->rcItem, kInk);
    }
};

TEST_F(CommonControls, OwnerDrawnItemsDrawThemselves)
{
    Ink<CListCtrl> list;
    ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_OWNERDRAWFIXED | LVS_NOCOLUMNHEADER,
                            CRect(0, 0, 100, 100), &host, kId));
    list.InsertColumn(0, L"", LVCFMT_LEFT, 90);
    list.InsertItem(0, L"item");
    EXPECT_TRUE(support::WaitForPixel(list, {10, 5}, kInk));

    Ink<CTabCtrl> tabs;
    ASSERT_TRUE(
        tabs.Create(WS_CHILD | WS_VISIBLE | TCS_OWNERDRAWFIXED, CRect(0, 100, 100, 200), &host, kId + 1));
    tabs.InsertItem(0, L"tab with text");
    EXPECT_TRUE(support::WaitForPixel(tabs, {15, 10}, kInk));

    Ink<CHeaderCtrl> header;
    ASSERT_TRUE(header.Create(WS_CHILD | WS_VISIBLE, CRect(100, 0, 300, 30), &host, kId + 2));
    HDITEM heading = {};
    heading.mask = HDI_FORMAT | HDI_WIDTH;
    heading.fmt = HDF_OWNERDRAW;
    heading.cxy = 100;
    ASSERT_EQ(header.InsertItem(0, &heading), 0);
    EXPECT_TRUE(support::WaitForPixel(header, {50, 15}, kInk));
}

} // namespace
