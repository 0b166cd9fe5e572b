#include <afxcmn.h>

#include "common_control_classes.h"
#include "control_message.h"
#include "image_list_traits.h"

using afx_subset::Send;

IMPLEMENT_DYNAMIC(CHeaderCtrl, CWnd)

CHeaderCtrl::~CHeaderCtrl()
{
    DestroyWindow();
}

BOOL CHeaderCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateEx(0, dwStyle, rect, pParentWnd, nID);
}

BOOL CHeaderCtrl::CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return afx_subset::InitControlClasses(ICC_LISTVIEW_CLASSES) &&
           CWnd::CreateEx(dwExStyle, WC_HEADER, nullptr, dwStyle, rect, pParentWnd, nID);
}

int CHeaderCtrl::GetItemCount() const
{
    return Send<int>(this, HDM_GETITEMCOUNT);
}

BOOL CHeaderCtrl::GetItem(int nPos, HDITEM* pHeaderItem) const
{
    return Send<BOOL>(this, HDM_GETITEM, nPos, pHeaderItem);
}

BOOL CHeaderCtrl::SetItem(int nPos, HDITEM* pHeaderItem)
{
    return Send<BOOL>(this, HDM_SETITEM, nPos, pHeaderItem);
}

BOOL CHeaderCtrl::GetItemRect(int nIndex, LPRECT lpRect) const
{
    return Send<BOOL>(this, HDM_GETITEMRECT, nIndex, lpRect);
}

BOOL CHeaderCtrl::SetOrderArray(int iCount, LPINT piArray)
{
    return Send<BOOL>(this, HDM_SETORDERARRAY, iCount, piArray);
}

int CHeaderCtrl::OrderToIndex(int nOrder) const
{
    return Send<int>(this, HDM_ORDERTOINDEX, nOrder);
}

CImageList* CHeaderCtrl::GetImageList() const
{
    return CImageList::FromHandle(Send<HIMAGELIST>(this, HDM_GETIMAGELIST));
}

int CHeaderCtrl::GetBitmapMargin() const
{
    return Send<int>(this, HDM_GETBITMAPMARGIN);
}

int CHeaderCtrl::SetBitmapMargin(int nWidth)
{
    return Send<int>(this, HDM_SETBITMAPMARGIN, nWidth);
}

int CHeaderCtrl::SetHotDivider(CPoint pt)
{
    return Send<int>(this, HDM_SETHOTDIVIDER, TRUE, MAKELPARAM(pt.x, pt.y));
}

int CHeaderCtrl::SetHotDivider(int nIndex)
{
    return Send<int>(this, HDM_SETHOTDIVIDER, FALSE, nIndex);
}

int CHeaderCtrl::InsertItem(int nPos, HDITEM* phdi)
{
    return Send<int>(this, HDM_INSERTITEM, nPos, phdi);
}

BOOL CHeaderCtrl::DeleteItem(int nPos)
{
    return Send<BOOL>(this, HDM_DELETEITEM, nPos);
}

BOOL CHeaderCtrl::Layout(HDLAYOUT* pHeaderLayout)
{
    return Send<BOOL>(this, HDM_LAYOUT, 0, pHeaderLayout);
}

int CHeaderCtrl::HitTest(LPHDHITTESTINFO phdhti)
{
    return Send<int>(this, HDM_HITTEST, 0, phdhti);
}

CImageList* CHeaderCtrl::CreateDragImage(int nIndex)
{
    return afx_subset::NewImageList(Send<HIMAGELIST>(this, HDM_CREATEDRAGIMAGE, nIndex));
}

BOOL CHeaderCtrl::GetOrderArray(LPINT piArray, int iCount)
{
    if (piArray == nullptr || iCount < 0 || iCount > GetItemCount())
        return FALSE;
    return Send<BOOL>(this, HDM_GETORDERARRAY, iCount, piArray);
}

CImageList* CHeaderCtrl::SetImageList(CImageList* pImageList)
{
    const HIMAGELIST list = pImageList == nullptr ? nullptr : pImageList->m_hImageList;
    return CImageList::FromHandle(Send<HIMAGELIST>(this, HDM_SETIMAGELIST, 0, list));
}

void CHeaderCtrl::DrawItem(LPDRAWITEMSTRUCT /*lpDrawItemStruct*/) {}

BOOL CHeaderCtrl::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (message != WM_DRAWITEM)
        return CWnd::OnChildNotify(message, wParam, lParam, pResult);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    return TRUE;
}
