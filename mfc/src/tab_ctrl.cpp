#include <afxcmn.h>

#include "common_control_classes.h"
#include "control_message.h"

using afx_subset::Send;
using afx_subset::WindowOf;

IMPLEMENT_DYNAMIC(CTabCtrl, CWnd)

CTabCtrl::~CTabCtrl()
{
    DestroyWindow();
}

BOOL CTabCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateEx(0, dwStyle, rect, pParentWnd, nID);
}

BOOL CTabCtrl::CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return afx_subset::InitControlClasses(ICC_TAB_CLASSES) &&
           CWnd::CreateEx(dwExStyle, WC_TABCONTROL, nullptr, dwStyle, rect, pParentWnd, nID);
}

CImageList* CTabCtrl::GetImageList() const
{
    return CImageList::FromHandle(Send<HIMAGELIST>(this, TCM_GETIMAGELIST));
}

int CTabCtrl::GetItemCount() const
{
    return Send<int>(this, TCM_GETITEMCOUNT);
}

BOOL CTabCtrl::GetItem(int nItem, TCITEM* pTabCtrlItem) const
{
    return Send<BOOL>(this, TCM_GETITEM, nItem, pTabCtrlItem);
}

BOOL CTabCtrl::SetItem(int nItem, TCITEM* pTabCtrlItem)
{
    return Send<BOOL>(this, TCM_SETITEM, nItem, pTabCtrlItem);
}

BOOL CTabCtrl::SetItemExtra(int nBytes)
{
    return Send<BOOL>(this, TCM_SETITEMEXTRA, nBytes);
}

BOOL CTabCtrl::GetItemRect(int nItem, LPRECT lpRect) const
{
    return Send<BOOL>(this, TCM_GETITEMRECT, nItem, lpRect);
}

int CTabCtrl::GetCurSel() const
{
    return Send<int>(this, TCM_GETCURSEL);
}

int CTabCtrl::SetCurSel(int nItem)
{
    return Send<int>(this, TCM_SETCURSEL, nItem);
}

int CTabCtrl::GetCurFocus() const
{
    return Send<int>(this, TCM_GETCURFOCUS);
}

void CTabCtrl::SetCurFocus(int nItem)
{
    Send(this, TCM_SETCURFOCUS, nItem);
}

void CTabCtrl::SetPadding(CSize size)
{
    Send(this, TCM_SETPADDING, 0, MAKELPARAM(size.cx, size.cy));
}

int CTabCtrl::GetRowCount() const
{
    return Send<int>(this, TCM_GETROWCOUNT);
}

CToolTipCtrl* CTabCtrl::GetToolTips() const
{
    return static_cast<CToolTipCtrl*>(CWnd::FromHandle(Send<HWND>(this, TCM_GETTOOLTIPS)));
}

void CTabCtrl::SetToolTips(CToolTipCtrl* pWndTip)
{
    Send(this, TCM_SETTOOLTIPS, WindowOf(pWndTip));
}

DWORD CTabCtrl::GetExtendedStyle()
{
    return Send<DWORD>(this, TCM_GETEXTENDEDSTYLE);
}

DWORD CTabCtrl::SetExtendedStyle(DWORD dwNewStyle, DWORD dwExMask)
{
    return Send<DWORD>(this, TCM_SETEXTENDEDSTYLE, dwExMask, dwNewStyle);
}

int CTabCtrl::SetMinTabWidth(int cx)
{
    return Send<int>(this, TCM_SETMINTABWIDTH, 0, cx);
}

LONG CTabCtrl::InsertItem(int nItem, TCITEM* pTabCtrlItem)
{
    return Send<LONG>(this, TCM_INSERTITEM, nItem, pTabCtrlItem);
}

LONG CTabCtrl::InsertItem(int nItem, LPCTSTR lpszItem)
{
    return InsertItem(TCIF_TEXT, nItem, lpszItem, 0, 0);
}

LONG CTabCtrl::InsertItem(int nItem, LPCTSTR lpszItem, int nImage)
{
    return InsertItem(TCIF_TEXT | TCIF_IMAGE, nItem, lpszItem, nImage, 0);
}

LONG CTabCtrl::InsertItem(UINT nMask, int nItem, LPCTSTR lpszItem, int nImage, LPARAM lParam)
{
    return InsertItem(nMask, nItem, lpszItem, nImage, lParam, 0, 0);
}

BOOL CTabCtrl::DeleteItem(int nItem)
{
    return Send<BOOL>(this, TCM_DELETEITEM, nItem);
}

BOOL CTabCtrl::DeleteAllItems()
{
    return Send<BOOL>(this, TCM_DELETEALLITEMS);
}

void CTabCtrl::AdjustRect(BOOL bLarger, LPRECT lpRect)
{
    Send(this, TCM_ADJUSTRECT, bLarger, lpRect);
}

void CTabCtrl::RemoveImage(int nImage)
{
    Send(this, TCM_REMOVEIMAGE, nImage);
}

int CTabCtrl::HitTest(TCHITTESTINFO* pHitTestInfo) const
{
    return Send<int>(this, TCM_HITTEST, 0, pHitTestInfo);
}

void CTabCtrl::DeselectAll(BOOL fExcludeFocus)
{
    Send(this, TCM_DESELECTALL, fExcludeFocus);
}

BOOL CTabCtrl::HighlightItem(int idItem, BOOL fHighlight)
{
    return Send<BOOL>(this, TCM_HIGHLIGHTITEM, idItem, MAKELPARAM(fHighlight, 0));
}

CImageList* CTabCtrl::SetImageList(CImageList* pImageList)
{
    const HIMAGELIST list = pImageList == nullptr ? nullptr : pImageList->m_hImageList;
    return CImageList::FromHandle(Send<HIMAGELIST>(this, TCM_SETIMAGELIST, 0, list));
}

CSize CTabCtrl::SetItemSize(CSize size)
{
    const auto packed = Send<DWORD>(this, TCM_SETITEMSIZE, 0, MAKELPARAM(size.cx, size.cy));
    return CSize(LOWORD(packed), HIWORD(packed));
}

DWORD CTabCtrl::GetItemState(int nItem, DWORD dwMask) const
{
    TCITEM item = {};
    item.mask = TCIF_STATE;
    item.dwStateMask = dwMask;
    return GetItem(nItem, &item) ? item.dwState & dwMask : 0;
}

BOOL CTabCtrl::SetItemState(int nItem, DWORD dwMask, DWORD dwState)
{
    TCITEM item = {};
    item.mask = TCIF_STATE;
    item.dwStateMask = dwMask;
    item.dwState = dwState;
    return SetItem(nItem, &item);
}

LONG CTabCtrl::InsertItem(UINT nMask, int nItem, LPCTSTR lpszItem, int nImage, LPARAM lParam, DWORD dwState,
                          DWORD dwStateMask)
{
    TCITEM item = {};
    item.mask = nMask;
    item.pszText = const_cast<LPTSTR>(lpszItem);
    item.iImage = nImage;
    item.lParam = lParam;
    item.dwState = dwState;
    item.dwStateMask = dwStateMask;
    return InsertItem(nItem, &item);
}

void CTabCtrl::DrawItem(LPDRAWITEMSTRUCT /*lpDrawItemStruct*/) {}

BOOL CTabCtrl::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (message != WM_DRAWITEM)
        return CWnd::OnChildNotify(message, wParam, lParam, pResult);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    return TRUE;
}
