#include "vgui/composite/cell_editor.h"
#include "vgui/composite/property_list.h"
#include "vgui/foundation/attached.h"

#include <algorithm>
#include <utility>

namespace
{

constexpr int kNone = -1;
constexpr UINT kEditId = 1;

// Whether a message moves cells away from under the editor or makes other cells of them.
bool MovesCells(UINT message)
{
    switch (message) {
    case WM_HSCROLL:
    case WM_VSCROLL:
    case WM_MOUSEWHEEL:
    case LVM_SCROLL:
    case LVM_ENSUREVISIBLE:
    case LVM_INSERTITEMA:
    case LVM_INSERTITEMW:
    case LVM_DELETEITEM:
    case LVM_DELETEALLITEMS:
    case LVM_SORTITEMS:
    case LVM_SORTITEMSEX:
    case LVM_INSERTCOLUMNA:
    case LVM_INSERTCOLUMNW:
    case LVM_DELETECOLUMN:
        return true;
    default:
        return false;
    }
}

// Whether a message may leave a cell in another place, with the editor to follow.
bool MayPlaceCells(UINT message)
{
    switch (message) {
    case WM_NOTIFY: // the header tells that columns have another width or order
    case WM_SIZE:
    case WM_SETFONT:
    case WM_KEYDOWN:
    case LVM_SETCOLUMNORDERARRAY: // of which the header tells nothing
    case LVM_SETIMAGELIST:        // rows are as high as its images
        return true;
    default:
        return false;
    }
}

} // namespace

IMPLEMENT_DYNAMIC(VPropertyGrid, VListCtrl)

BEGIN_MESSAGE_MAP(VPropertyGrid, VListCtrl)
    ON_WM_LBUTTONDBLCLK()
    ON_WM_LBUTTONDOWN()
    ON_WM_DESTROY()
    ON_WM_CREATE()
END_MESSAGE_MAP()

VPropertyGrid::VPropertyGrid()
{
    m_editable.fill(true);
}

void VPropertyGrid::SetEditable(int column, bool editable)
{
    if (column >= 0 && column < kMaxEditableColumns && column < GetColumnCount())
        m_editable[column] = editable;
}

void VPropertyGrid::SetSingleClickStartEdit(bool singleClick)
{
    m_bSingleClickStartEdit = singleClick;
}

void VPropertyGrid::PreSubclassWindow()
{
    VListCtrl::PreSubclassWindow();
    PrepareControl();
}

int VPropertyGrid::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    const int result = VListCtrl::OnCreate(lpCreateStruct);
    // A list control that has only begun to exist could not do everything before.
    if (result == 0)
        PrepareControl();
    return result;
}

void VPropertyGrid::PrepareControl()
{
    // Painting the cells leaves the editor alone.
    ModifyStyle(0, WS_CLIPCHILDREN);
    const DWORD style = GetExtendedStyle() | LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT;
    SetExtendedStyle(style & ~static_cast<DWORD>(LVS_EX_CHECKBOXES));
    CreateEditor();
}

// Makes the editor unless it is there. False when there is none.
bool VPropertyGrid::CreateEditor()
{
    if (IsEditorElsewhere(m_edit, m_hWnd)) {
        m_nEditRow = kNone;
        m_nEditColumn = kNone;
        m_edit.DestroyWindow();
    }
    return m_edit.m_hWnd != nullptr ||
           m_edit.Create(kCellEditStyle | static_cast<DWORD>(GetHeaderTextFormat(0)), CRect(0, 0, 1, 1), this,
                         kEditId);
}

int VPropertyGrid::GetColumnCount() const
{
    const HWND header = m_hWnd != nullptr ? ListView_GetHeader(m_hWnd) : nullptr;
    return header != nullptr ? std::max(Header_GetItemCount(header), 0) : 0;
}

int VPropertyGrid::GetHeaderTextFormat(int column) const
{
    const HWND header = ListView_GetHeader(m_hWnd);
    HDITEM item{};
    item.mask = HDI_FORMAT;
    if ((GetStyle() & LVS_NOCOLUMNHEADER) != 0 || header == nullptr || !Header_GetItem(header, column, &item))
        return ES_LEFT;
    switch (item.fmt & HDF_JUSTIFYMASK) {
    case HDF_CENTER:
        return ES_CENTER;
    case HDF_RIGHT:
        return ES_RIGHT;
    default:
        return ES_LEFT;
    }
}

bool VPropertyGrid::IsEditCtrlVisible() const
{
    return IsEditorShown(m_edit);
}

bool VPropertyGrid::IsEditable(int column) const
{
    return column >= 0 && column < std::min(GetColumnCount(), kMaxEditableColumns) && m_editable[column];
}

void VPropertyGrid::StartEdit(int row, int column)
{
    if (row < 0 || row >= GetItemCount() || !IsEditable(column))
        return;
    const HWND self = m_hWnd;
    // The host, told of each of these steps, may destroy the grid or take the cell away.
    const auto isThere = [&] {
        return VGIsAttached(this, self) && row < GetItemCount() && IsEditable(column);
    };
    EndEdit(true);
    if (!isThere() || !CreateEditor())
        return;
    EnsureVisible(row, FALSE);
    if (isThere())
        ScrollToColumn(row, column);
    if (isThere())
        SetItemState(-1, 0, LVIS_SELECTED);
    if (!isThere())
        return;
    m_nEditRow = row;
    m_nEditColumn = column;
    m_edit.SetFont(GetFont());
    PlaceEditor();
    if (m_nEditRow == kNone)
        return; // no room for a row below the header
    m_edit.SetWindowText(GetItemText(row, column));
    m_edit.ShowWindow(SW_SHOW);
    m_edit.SetSel(0, -1);
    m_edit.SetFocus();
}

// Scrolls sideways until a cell is in view, its left end at least.
void VPropertyGrid::ScrollToColumn(int row, int column)
{
    CRect cell;
    CRect client;
    GetClientRect(client);
    if (!GetSubItemRect(row, column, LVIR_LABEL, cell))
        return;
    const int left = cell.left - client.left;
    const int distance = left < 0 ? left : std::clamp<int>(cell.right - client.right, 0, left);
    if (distance != 0)
        Scroll(CSize(distance, 0));
}

// Puts the editor on its cell, if it is open. Where rows above the view would be there is the header.
void VPropertyGrid::PlaceEditor()
{
    CRect cell;
    if (m_nEditRow == kNone || m_edit.m_hWnd == nullptr)
        return;
    if (m_nEditRow < GetTopIndex())
        EndEdit(true);
    else if (GetSubItemRect(m_nEditRow, m_nEditColumn, LVIR_LABEL, cell))
        m_edit.MoveWindow(cell);
}

void VPropertyGrid::EndEdit(bool save)
{
    const int row = std::exchange(m_nEditRow, kNone);
    const int column = std::exchange(m_nEditColumn, kNone);
    if (row == kNone || column == kNone || !IsEditCtrlVisible())
        return;
    const HWND self = m_hWnd;
    CString text;
    m_edit.GetWindowText(text);
    m_edit.ShowWindow(SW_HIDE);
    if (save && VGIsAttached(this, self) && row < GetItemCount() && column < GetColumnCount() &&
        text != GetItemText(row, column))
        SetItemText(row, column, text);
}

LRESULT VPropertyGrid::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const HWND self = m_hWnd;
    if (MovesCells(message)) {
        EndEdit(true);
        if (!VGIsAttached(this, self))
            return 0;
    }
    const LRESULT result = VListCtrl::DefWindowProc(message, wParam, lParam);
    if (MayPlaceCells(message) && VGIsAttached(this, self)) {
        if (message == WM_SETFONT && IsEditCtrlVisible())
            m_edit.SetFont(GetFont());
        PlaceEditor();
    }
    return result;
}

void VPropertyGrid::OnLButtonDown(UINT nFlags, CPoint point)
{
    const HWND self = m_hWnd;
    VListCtrl::OnLButtonDown(nFlags, point);
    if (VGIsAttached(this, self))
        EndEdit(true);
    if (VGIsAttached(this, self) && m_bSingleClickStartEdit)
        StartEditAt(point);
}

void VPropertyGrid::OnLButtonDblClk(UINT nFlags, CPoint point)
{
    const HWND self = m_hWnd;
    VListCtrl::OnLButtonDblClk(nFlags, point);
    if (VGIsAttached(this, self))
        EndEdit(true);
    if (VGIsAttached(this, self))
        StartEditAt(point);
}

void VPropertyGrid::StartEditAt(CPoint point)
{
    LVHITTESTINFO hit{};
    hit.pt = point;
    if (SubItemHitTest(&hit) >= 0)
        StartEdit(hit.iItem, hit.iSubItem);
}

void VPropertyGrid::OnDestroy()
{
    VListCtrl::OnDestroy();
    m_nEditRow = kNone;
    m_nEditColumn = kNone;
    m_edit.DestroyWindow();
}

BOOL VPropertyGrid::PreTranslateMessage(MSG* pMsg)
{
    if (pMsg == nullptr || pMsg->message != WM_KEYDOWN)
        return VListCtrl::PreTranslateMessage(pMsg);
    switch (pMsg->wParam) {
    case VK_TAB:
        EditNextColumn();
        return TRUE;
    case VK_RETURN:
    case VK_ESCAPE:
        EndEdit(true);
        return TRUE;
    case VK_UP:
        if (m_nEditRow < 1)
            break;
        StartEdit(m_nEditRow - 1, m_nEditColumn);
        return TRUE;
    case VK_DOWN:
        if (m_nEditRow >= GetItemCount() - 1)
            break;
        StartEdit(m_nEditRow + 1, m_nEditColumn);
        return TRUE;
    default:
        break;
    }
    return VListCtrl::PreTranslateMessage(pMsg);
}

// Goes on to the next editable column, after the last to the first; one round at most.
void VPropertyGrid::EditNextColumn()
{
    const int count = GetColumnCount();
    int column = m_nEditColumn;
    for (int step = 0; step < count; ++step) {
        column = (column + 1) % count;
        if (IsEditable(column)) {
            StartEdit(m_nEditRow, column);
            return;
        }
    }
}
