// The columns of a list view.
#include <afxcmn.h>

#include "control_message.h"

using afx_subset::Send;

CHeaderCtrl* CListCtrl::GetHeaderCtrl()
{
    return static_cast<CHeaderCtrl*>(CWnd::FromHandle(Send<HWND>(this, LVM_GETHEADER)));
}

BOOL CListCtrl::GetColumn(int nCol, LVCOLUMN* pColumn) const
{
    return Send<BOOL>(this, LVM_GETCOLUMN, nCol, pColumn);
}

BOOL CListCtrl::SetColumn(int nCol, const LVCOLUMN* pColumn)
{
    return Send<BOOL>(this, LVM_SETCOLUMN, nCol, pColumn);
}

int CListCtrl::GetColumnWidth(int nCol) const
{
    return Send<int>(this, LVM_GETCOLUMNWIDTH, nCol);
}

BOOL CListCtrl::SetColumnWidth(int nCol, int cx)
{
    return Send<BOOL>(this, LVM_SETCOLUMNWIDTH, nCol, MAKELPARAM(cx, 0));
}

BOOL CListCtrl::SetColumnOrderArray(int iCount, LPINT piArray)
{
    return Send<BOOL>(this, LVM_SETCOLUMNORDERARRAY, iCount, piArray);
}

int CListCtrl::InsertColumn(int nCol, const LVCOLUMN* pColumn)
{
    return Send<int>(this, LVM_INSERTCOLUMN, nCol, pColumn);
}

BOOL CListCtrl::DeleteColumn(int nCol)
{
    return Send<BOOL>(this, LVM_DELETECOLUMN, nCol);
}

UINT CListCtrl::GetSelectedColumn() const
{
    return Send<UINT>(this, LVM_GETSELECTEDCOLUMN);
}

LRESULT CListCtrl::SetSelectedColumn(int iCol)
{
    return Send<LRESULT>(this, LVM_SETSELECTEDCOLUMN, iCol);
}

BOOL CListCtrl::GetColumnOrderArray(LPINT piArray, int iCount)
{
    // The control writes a number for each column asked for, whether it has so many or not.
    const CHeaderCtrl* const header = GetHeaderCtrl();
    const int columns = header == nullptr ? 0 : header->GetItemCount();
    if (iCount == -1)
        iCount = columns;
    if (piArray == nullptr || iCount < 0 || iCount > columns)
        return FALSE;
    return Send<BOOL>(this, LVM_GETCOLUMNORDERARRAY, iCount, piArray);
}

int CListCtrl::InsertColumn(int nCol, LPCTSTR lpszColumnHeading, int nFormat, int nWidth, int nSubItem)
{
    LVCOLUMN column = {};
    column.mask = LVCF_TEXT | LVCF_FMT;
    column.pszText = const_cast<LPTSTR>(lpszColumnHeading);
    column.fmt = nFormat;
    if (nWidth != -1) {
        column.mask |= LVCF_WIDTH;
        column.cx = nWidth;
    }
    if (nSubItem != -1) {
        column.mask |= LVCF_SUBITEM;
        column.iSubItem = nSubItem;
    }
    return InsertColumn(nCol, &column);
}
