#include "tests/support/census.h"
#include "tests/support/input.h"
#include "tests/support/lingering.h"
#include "tests/support/pixels.h"
#include "tests/support/pump.h"
#include "tests/support/recorder.h"
#include "vgui/composite/property_list.h"

#include <functional>
#include <memory>
#include <utility>

using namespace support;

namespace
{

constexpr UINT kId = 720;
constexpr DWORD kGridStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER | LVS_REPORT;
constexpr int kRows = 20;

class OpenGrid : public VPropertyGrid
{
public:
    using VPropertyGrid::EndEdit;
    using VPropertyGrid::GetColumnCount;
    using VPropertyGrid::GetHeaderTextFormat;
    using VPropertyGrid::IsEditCtrlVisible;
    using VPropertyGrid::m_edit;
    using VPropertyGrid::m_nEditColumn;
    using VPropertyGrid::m_nEditRow;
    using VPropertyGrid::StartEdit;
};

class PropertyGrid : public CensusTest
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(host.Open());
        grid.reset(new Lingering<OpenGrid>);
        const HWND window =
            ::CreateWindowExW(0, WC_LISTVIEWW, L"", kGridStyle, 10, 10, 260, 140, host.m_hWnd,
                              reinterpret_cast<HMENU>(UINT_PTR{kId}), ::AfxGetInstanceHandle(), nullptr);
        ListView_SetExtendedListViewStyle(window, LVS_EX_CHECKBOXES);
        ASSERT_TRUE(grid->SubclassWindow(window));
        for (int column = 0; column < 3; ++column)
            grid->InsertColumn(column, L"column", column == 2 ? LVCFMT_RIGHT : LVCFMT_LEFT, 80);
        for (int row = 0; row < kRows; ++row) {
            grid->InsertItem(row, Cell(row, 0));
            for (int column = 1; column < 3; ++column)
                grid->SetItemText(row, column, Cell(row, column));
        }
        PumpMessages();
    }
    void TearDown() override { host.DestroyWindow(); }

    static CString Cell(int row, int column)
    {
        CString text;
        text.Format(L"%d.%d", row, column);
        return text;
    }
    CRect CellRect(int row, int column)
    {
        CRect rect;
        grid->GetSubItemRect(row, column, LVIR_LABEL, rect);
        return rect;
    }
    CPoint Inside(int row, int column)
    {
        return ClientToScreen(grid->m_hWnd, CellRect(row, column).CenterPoint());
    }
    void ExpectEditing(int row, int column)
    {
        EXPECT_EQ(grid->m_nEditRow, row);
        EXPECT_EQ(grid->m_nEditColumn, column);
        EXPECT_EQ(grid->IsEditCtrlVisible(), row >= 0);
        if (row < 0)
            return;
        CRect place;
        grid->m_edit.GetWindowRect(place);
        grid->ScreenToClient(place);
        EXPECT_EQ(place, CellRect(row, column));
        EXPECT_EQ(CWnd::GetFocus(), &grid->m_edit);
    }

    HostWnd host;
    std::unique_ptr<OpenGrid> grid;
};

} // namespace

TEST_F(PropertyGrid, AttachingSetsTheListUp)
{
    constexpr DWORD kMask = LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT | LVS_EX_CHECKBOXES;
    EXPECT_EQ(grid->GetExtendedStyle() & kMask, DWORD{LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT});
    EXPECT_EQ(grid->m_edit.GetStyle() & (WS_VISIBLE | ES_CENTER | ES_RIGHT), 0U);
    EXPECT_EQ(grid->GetColumnCount(), 3);
    LVCOLUMN column{};
    column.mask = LVCF_FMT;
    column.fmt = LVCFMT_CENTER;
    grid->SetColumn(1, &column);
    EXPECT_EQ(grid->GetHeaderTextFormat(0), ES_LEFT);
    EXPECT_EQ(grid->GetHeaderTextFormat(1), ES_CENTER);
    EXPECT_EQ(grid->GetHeaderTextFormat(2), ES_RIGHT);
    EXPECT_EQ(grid->GetHeaderTextFormat(3), ES_LEFT);
    grid->ModifyStyle(0, LVS_NOCOLUMNHEADER);
    EXPECT_EQ(grid->GetHeaderTextFormat(2), ES_LEFT);
}

TEST_F(PropertyGrid, EditsOnlyCellsThatThereAre)
{
    grid->SetEditable(1, false);
    grid->SetEditable(-1, false);
    grid->SetEditable(3, false);
    grid->SetEditable(1000000, false);
    const struct {
        int row, column;
    } refused[] = {{-1, 0}, {0, -1}, {0, 1}, {0, 3}, {kRows, 0}, {0, 1000000}};
    for (const auto& cell : refused) {
        grid->StartEdit(cell.row, cell.column);
        ExpectEditing(-1, -1);
    }
    grid->SetItemState(3, LVIS_SELECTED, LVIS_SELECTED);
    grid->StartEdit(1, 2);
    ExpectEditing(1, 2);
    EXPECT_EQ(grid->GetSelectedCount(), 0U);
    EXPECT_EQ(grid->m_edit.GetSel(), static_cast<DWORD>(MAKELONG(0, 3)));
    EXPECT_EQ(grid->m_edit.GetFont()->m_hObject, grid->GetFont()->m_hObject);
    grid->StartEdit(0, 1);
    ExpectEditing(1, 2);

    // Columns without a flag of their own.
    for (int column = 3; column < 30; ++column)
        grid->InsertColumn(column, L"more", LVCFMT_LEFT, 20);
    grid->StartEdit(0, 23);
    ExpectEditing(0, 23);
    grid->StartEdit(0, 24);
    ExpectEditing(0, 23);
}

TEST_F(PropertyGrid, KeysGoFromCellToCell)
{
    grid->SetEditable(1, false);
    const struct {
        int row, column;
        UINT key;
        int toRow, toColumn;
    } cases[] = {
        {3, 0, VK_TAB, 3, 2},      {3, 2, VK_TAB, 3, 0},
        {3, 0, VK_RETURN, -1, -1}, {3, 0, VK_ESCAPE, -1, -1},
        {3, 2, VK_UP, 2, 2},       {3, 2, VK_DOWN, 4, 2},
        {0, 2, VK_UP, 0, 2},       {kRows - 1, 0, VK_DOWN, kRows - 1, 0},
        {-1, -1, VK_TAB, -1, -1},  {-1, -1, VK_DOWN, -1, -1},
    };
    int typed = 0;
    for (const auto& item : cases) {
        SCOPED_TRACE(testing::Message() << item.row << "." << item.column << " key " << item.key);
        grid->SetFocus();
        grid->StartEdit(item.row, item.column);
        CString text;
        text.Format(L"typed %d", ++typed);
        if (item.row >= 0)
            Type(text.GetString());
        Key(item.key);
        ExpectEditing(item.toRow, item.toColumn);
        grid->EndEdit(true);
        if (item.row >= 0) {
            EXPECT_EQ(grid->GetItemText(item.row, item.column), text) << "no key drops what was typed";
        }
    }
    EXPECT_EQ(grid->GetNextItem(-1, LVNI_SELECTED), -1) << "Down was swallowed";

    for (int column = 0; column < 3; ++column)
        grid->SetEditable(column, false);
    Key(VK_TAB);
    ExpectEditing(-1, -1);
    EXPECT_EQ(CWnd::GetFocus(), grid.get()) << "Tab was swallowed";
}

TEST_F(PropertyGrid, ClicksOpenAndCloseCells)
{
    Click(Inside(1, 1));
    ExpectEditing(-1, -1);
    DoubleClick(Inside(1, 1));
    ExpectEditing(1, 1);
    Type(L"one");
    Click(Inside(3, 2));
    ExpectEditing(-1, -1);
    EXPECT_EQ(grid->GetItemText(1, 1), L"one");
    grid->SetSingleClickStartEdit(true);
    Click(Inside(3, 2));
    ExpectEditing(3, 2);
    Type(L"two");
    Click(Inside(2, 0));
    ExpectEditing(2, 0);
    EXPECT_EQ(grid->GetItemText(3, 2), L"two");
    // Beside the columns there is no cell.
    CRect last = CellRect(2, 2);
    Click(ClientToScreen(grid->m_hWnd, {last.right + 8, last.CenterPoint().y}));
    ExpectEditing(-1, -1);

    CButton other;
    ASSERT_TRUE(other.Create(L"other", WS_CHILD | WS_VISIBLE, CRect(280, 10, 360, 40), &host, kId + 1));
    grid->StartEdit(2, 0);
    Click(other.m_hWnd);
    EXPECT_TRUE(grid->IsEditCtrlVisible()) << "losing the focus closes nothing";
}

TEST_F(PropertyGrid, WhatMovesCellsStoresTheTextFirst)
{
    const struct {
        const char* name;
        void (*act)(OpenGrid& grid);
        int row; // where the cell is then
    } cases[] = {
        {"scrolling", [](OpenGrid& grid) { grid.SendMessage(WM_VSCROLL, SB_LINEDOWN); }, 1},
        {"wheel", [](OpenGrid& grid) { grid.SendMessage(WM_MOUSEWHEEL, MAKELONG(0, 120)); }, 1},
        {"scrolling by the host",
         [](OpenGrid& grid) {
             grid.Scroll({0, 100});
         },
         1},
        {"scrolling up to a row", [](OpenGrid& grid) { grid.EnsureVisible(kRows - 1, FALSE); }, 1},
        {"inserting", [](OpenGrid& grid) { grid.InsertItem(0, L"new"); }, 2},
        {"deleting", [](OpenGrid& grid) { grid.DeleteItem(0); }, 0},
    };
    for (const auto& item : cases) {
        SCOPED_TRACE(item.name);
        grid->StartEdit(1, 1);
        grid->m_edit.SetWindowText(CString(item.name));
        item.act(*grid);
        ExpectEditing(-1, -1);
        EXPECT_EQ(grid->GetItemText(item.row, 1), CString(item.name));
    }
    grid->StartEdit(2, 1);
    grid->SetColumnWidth(0, 50);
    PumpMessages();
    ExpectEditing(2, 1);
    grid->m_edit.SetWindowText(L"dropped");
    grid->EndEdit(false);
    ExpectEditing(-1, -1);
    EXPECT_NE(grid->GetItemText(2, 1), L"dropped");
    grid->StartEdit(2, 1);
    grid->DeleteAllItems();
    ExpectEditing(-1, -1);
}

TEST_F(PropertyGrid, TheEditorFollowsItsCell)
{
    grid->StartEdit(2, 1);
    CFont font;
    font.CreatePointFont(160, L"宋体");
    const int before = CellRect(2, 1).top;
    grid->SetFont(&font);
    ASSERT_NE(CellRect(2, 1).top, before);
    ExpectEditing(2, 1);
    EXPECT_EQ(grid->m_edit.GetFont()->m_hObject, font.m_hObject);
    grid->SetFont(nullptr);

    int order[] = {1, 2, 0};
    grid->SetColumnOrderArray(3, order);
    ASSERT_EQ(CellRect(2, 1).left, 0);
    ExpectEditing(2, 1);

    // A key that scrolls the list as far as its last row, with which the first ones go.
    const auto scrollBy = [&](UINT key) { grid->SendMessage(WM_KEYDOWN, key, 0); };
    grid->StartEdit(kRows - 2, 1);
    const int shown = CellRect(kRows - 2, 1).top;
    scrollBy(VK_END);
    ASSERT_NE(CellRect(kRows - 2, 1).top, shown);
    ExpectEditing(kRows - 2, 1);
    grid->m_edit.SetWindowText(L"stored");
    scrollBy(VK_HOME);
    ASSERT_EQ(grid->GetTopIndex(), 0);
    ExpectEditing(kRows - 2, 1);
    grid->StartEdit(0, 1);
    EXPECT_EQ(grid->GetItemText(kRows - 2, 1), L"stored");
    grid->m_edit.SetWindowText(L"stored, too");
    scrollBy(VK_END);
    ExpectEditing(-1, -1); // and not on the header
    EXPECT_EQ(grid->GetItemText(0, 1), L"stored, too");
}

TEST_F(PropertyGrid, TheHostMayDestroyItWhenItIsTold)
{
    host.SetAnswer([&](UINT message, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        if (message == WM_NOTIFY && reinterpret_cast<NMHDR*>(lParam)->code == NM_DBLCLK)
            grid.reset();
        return {};
    });
    DoubleClick(Inside(1, 1));
    EXPECT_EQ(grid, nullptr);
    EXPECT_TRUE(Lingering<OpenGrid>::IsUntouched());
    host.SetAnswer({});
}

TEST_F(PropertyGrid, TheHostMayTakeTheCellOrTheGridOnTheWay)
{
    const auto moveEditorWhile = [&](const std::function<void()>& act) {
        grid->StartEdit(0, 1);
        grid->SetItemState(1, LVIS_SELECTED, LVIS_SELECTED);
        bool isTold = false;
        host.SetAnswer([&](UINT message, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
            if (message == WM_NOTIFY && reinterpret_cast<NMHDR*>(lParam)->code == LVN_ITEMCHANGED &&
                !std::exchange(isTold, true))
                act();
            return {};
        });
        grid->StartEdit(kRows - 1, 2);
        host.SetAnswer({});
        EXPECT_TRUE(isTold);
    };
    moveEditorWhile([&] { grid->DeleteItem(kRows - 1); });
    ExpectEditing(-1, -1);
    grid->InsertItem(kRows - 1, L"last");
    moveEditorWhile([&] { grid->SetEditable(2, false); });
    ExpectEditing(-1, -1);
    grid->SetEditable(2, true);
    moveEditorWhile([&] { grid.reset(); });
    EXPECT_EQ(grid, nullptr);
    EXPECT_TRUE(Lingering<OpenGrid>::IsUntouched());
}

TEST_F(PropertyGrid, AnEditorNeverStaysWithoutItsCellInAGridTooLowForARow)
{
    CRect header;
    grid->GetHeaderCtrl()->GetWindowRect(header);
    for (const int room : {-4, 0, 3, 8}) {
        grid->SetWindowPos(nullptr, 0, 0, 260, header.Height() + room, SWP_NOMOVE | SWP_NOZORDER);
        grid->StartEdit(kRows / 2, 1);
        EXPECT_EQ(grid->IsEditCtrlVisible(), grid->m_nEditRow >= 0) << room;
        grid->EndEdit(true);
        ExpectEditing(-1, -1);
    }
}

TEST_F(PropertyGrid, CellsScrollIntoView)
{
    grid->SetColumnWidth(1, 400);
    CRect client;
    grid->GetClientRect(client);
    grid->StartEdit(kRows - 1, 2);
    ExpectEditing(kRows - 1, 2);
    EXPECT_LE(CellRect(kRows - 1, 2).right, client.right);
    EXPECT_LE(CellRect(kRows - 1, 2).bottom, client.bottom);
    grid->StartEdit(0, 1);
    ExpectEditing(0, 1);
    EXPECT_EQ(CellRect(0, 1).left, client.left) << "wider than the view: its left end";
    grid->StartEdit(0, 0);
    ExpectEditing(0, 0);
    EXPECT_GE(CellRect(0, 0).left, client.left);
}

TEST_F(PropertyGrid, ALostEditorStoresNothingAndIsMadeAgain)
{
    grid->StartEdit(1, 1);
    ::DestroyWindow(grid->m_edit.m_hWnd);
    EXPECT_FALSE(grid->IsEditCtrlVisible());
    grid->EndEdit(true);
    EXPECT_EQ(grid->GetItemText(1, 1), L"1.1");
    grid->StartEdit(2, 2);
    ExpectEditing(2, 2);
    host.DestroyWindow();
    EXPECT_EQ(grid->m_edit.m_hWnd, nullptr);
    EXPECT_EQ(grid->m_nEditRow, -1);
    grid->SetEditable(0, false);
    EXPECT_EQ(grid->GetColumnCount(), 0);
}

TEST_F(PropertyGrid, AnotherWindowHasItsOwnEditor)
{
    grid->StartEdit(1, 1);
    const HWND former = grid->UnsubclassWindow();
    const HWND edit = grid->m_edit.m_hWnd;
    const HWND window = ::CreateWindowExW(0, WC_LISTVIEWW, L"", kGridStyle, 10, 160, 260, 100, host.m_hWnd,
                                          nullptr, ::AfxGetInstanceHandle(), nullptr);
    ASSERT_TRUE(grid->SubclassWindow(window));
    EXPECT_FALSE(::IsWindow(edit));
    EXPECT_TRUE(::IsWindow(former));
    grid->InsertColumn(0, L"column", LVCFMT_LEFT, 80);
    grid->InsertItem(0, L"text");
    grid->StartEdit(0, 0);
    ExpectEditing(0, 0);
    EXPECT_EQ(grid->m_edit.GetParent(), grid.get());
}
