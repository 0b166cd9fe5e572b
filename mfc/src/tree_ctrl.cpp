#include <afxcmn.h>

#include "common_control_classes.h"
#include "control_message.h"
#include "control_text.h"
#include "image_list_traits.h"

#include <cstring>

using afx_subset::Send;
using afx_subset::WindowOf;

IMPLEMENT_DYNAMIC(CTreeCtrl, CWnd)

CTreeCtrl::~CTreeCtrl()
{
    DestroyWindow();
}

BOOL CTreeCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateEx(0, dwStyle, rect, pParentWnd, nID);
}

BOOL CTreeCtrl::CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return afx_subset::InitControlClasses(ICC_TREEVIEW_CLASSES) &&
           CWnd::CreateEx(dwExStyle, WC_TREEVIEW, nullptr, dwStyle, rect, pParentWnd, nID);
}

UINT CTreeCtrl::GetCount() const
{
    return Send<UINT>(this, TVM_GETCOUNT);
}

UINT CTreeCtrl::GetIndent() const
{
    return Send<UINT>(this, TVM_GETINDENT);
}

void CTreeCtrl::SetIndent(UINT nIndent)
{
    Send(this, TVM_SETINDENT, nIndent);
}

CImageList* CTreeCtrl::GetImageList(UINT nImageList) const
{
    return CImageList::FromHandle(Send<HIMAGELIST>(this, TVM_GETIMAGELIST, nImageList));
}

HTREEITEM CTreeCtrl::GetNextItem(HTREEITEM hItem, UINT nCode) const
{
    return Send<HTREEITEM>(this, TVM_GETNEXTITEM, nCode, hItem);
}

HTREEITEM CTreeCtrl::GetChildItem(HTREEITEM hItem) const
{
    return GetNextItem(hItem, TVGN_CHILD);
}

HTREEITEM CTreeCtrl::GetNextSiblingItem(HTREEITEM hItem) const
{
    return GetNextItem(hItem, TVGN_NEXT);
}

HTREEITEM CTreeCtrl::GetPrevSiblingItem(HTREEITEM hItem) const
{
    return GetNextItem(hItem, TVGN_PREVIOUS);
}

HTREEITEM CTreeCtrl::GetParentItem(HTREEITEM hItem) const
{
    return GetNextItem(hItem, TVGN_PARENT);
}

HTREEITEM CTreeCtrl::GetFirstVisibleItem() const
{
    return GetNextItem(nullptr, TVGN_FIRSTVISIBLE);
}

HTREEITEM CTreeCtrl::GetLastVisibleItem() const
{
    return GetNextItem(nullptr, TVGN_LASTVISIBLE);
}

HTREEITEM CTreeCtrl::GetNextVisibleItem(HTREEITEM hItem) const
{
    return GetNextItem(hItem, TVGN_NEXTVISIBLE);
}

HTREEITEM CTreeCtrl::GetPrevVisibleItem(HTREEITEM hItem) const
{
    return GetNextItem(hItem, TVGN_PREVIOUSVISIBLE);
}

HTREEITEM CTreeCtrl::GetSelectedItem() const
{
    return GetNextItem(nullptr, TVGN_CARET);
}

HTREEITEM CTreeCtrl::GetDropHilightItem() const
{
    return GetNextItem(nullptr, TVGN_DROPHILITE);
}

HTREEITEM CTreeCtrl::GetRootItem() const
{
    return GetNextItem(nullptr, TVGN_ROOT);
}

BOOL CTreeCtrl::GetItem(TVITEM* pItem) const
{
    return Send<BOOL>(this, TVM_GETITEM, 0, pItem);
}

BOOL CTreeCtrl::SetItem(TVITEM* pItem)
{
    return Send<BOOL>(this, TVM_SETITEM, 0, pItem);
}

UINT CTreeCtrl::GetItemState(HTREEITEM hItem, UINT nStateMask) const
{
    return Send<UINT>(this, TVM_GETITEMSTATE, hItem, nStateMask);
}

BOOL CTreeCtrl::SetItemState(HTREEITEM hItem, UINT nState, UINT nStateMask)
{
    return SetItem(hItem, TVIF_STATE, nullptr, 0, 0, nState, nStateMask, 0);
}

BOOL CTreeCtrl::SetItemImage(HTREEITEM hItem, int nImage, int nSelectedImage)
{
    return SetItem(hItem, TVIF_IMAGE | TVIF_SELECTEDIMAGE, nullptr, nImage, nSelectedImage, 0, 0, 0);
}

BOOL CTreeCtrl::SetItemText(HTREEITEM hItem, LPCTSTR lpszItem)
{
    return SetItem(hItem, TVIF_TEXT, lpszItem, 0, 0, 0, 0, 0);
}

BOOL CTreeCtrl::SetItemData(HTREEITEM hItem, DWORD_PTR dwData)
{
    return SetItem(hItem, TVIF_PARAM, nullptr, 0, 0, 0, 0, static_cast<LPARAM>(dwData));
}

BOOL CTreeCtrl::SetCheck(HTREEITEM hItem, BOOL fCheck)
{
    return SetItemState(hItem, INDEXTOSTATEIMAGEMASK(fCheck ? 2 : 1), TVIS_STATEIMAGEMASK);
}

CEdit* CTreeCtrl::GetEditControl() const
{
    return static_cast<CEdit*>(CWnd::FromHandle(Send<HWND>(this, TVM_GETEDITCONTROL)));
}

UINT CTreeCtrl::GetVisibleCount() const
{
    return Send<UINT>(this, TVM_GETVISIBLECOUNT);
}

CToolTipCtrl* CTreeCtrl::GetToolTips() const
{
    return static_cast<CToolTipCtrl*>(CWnd::FromHandle(Send<HWND>(this, TVM_GETTOOLTIPS)));
}

CToolTipCtrl* CTreeCtrl::SetToolTips(CToolTipCtrl* pWndTip)
{
    return static_cast<CToolTipCtrl*>(CWnd::FromHandle(Send<HWND>(this, TVM_SETTOOLTIPS, WindowOf(pWndTip))));
}

COLORREF CTreeCtrl::GetBkColor() const
{
    return Send<COLORREF>(this, TVM_GETBKCOLOR);
}

COLORREF CTreeCtrl::SetBkColor(COLORREF clr)
{
    return Send<COLORREF>(this, TVM_SETBKCOLOR, 0, clr);
}

SHORT CTreeCtrl::GetItemHeight() const
{
    return Send<SHORT>(this, TVM_GETITEMHEIGHT);
}

SHORT CTreeCtrl::SetItemHeight(SHORT cyHeight)
{
    return Send<SHORT>(this, TVM_SETITEMHEIGHT, cyHeight);
}

COLORREF CTreeCtrl::GetTextColor() const
{
    return Send<COLORREF>(this, TVM_GETTEXTCOLOR);
}

COLORREF CTreeCtrl::SetTextColor(COLORREF clr)
{
    return Send<COLORREF>(this, TVM_SETTEXTCOLOR, 0, clr);
}

COLORREF CTreeCtrl::GetLineColor() const
{
    return Send<COLORREF>(this, TVM_GETLINECOLOR);
}

COLORREF CTreeCtrl::SetLineColor(COLORREF clrNew)
{
    return Send<COLORREF>(this, TVM_SETLINECOLOR, 0, clrNew);
}

COLORREF CTreeCtrl::GetInsertMarkColor() const
{
    return Send<COLORREF>(this, TVM_GETINSERTMARKCOLOR);
}

COLORREF CTreeCtrl::SetInsertMarkColor(COLORREF clrNew)
{
    return Send<COLORREF>(this, TVM_SETINSERTMARKCOLOR, 0, clrNew);
}

BOOL CTreeCtrl::SetInsertMark(HTREEITEM hItem, BOOL fAfter)
{
    return Send<BOOL>(this, TVM_SETINSERTMARK, fAfter, hItem);
}

UINT CTreeCtrl::GetScrollTime() const
{
    return Send<UINT>(this, TVM_GETSCROLLTIME);
}

UINT CTreeCtrl::SetScrollTime(UINT uScrollTime)
{
    return Send<UINT>(this, TVM_SETSCROLLTIME, uScrollTime);
}

DWORD CTreeCtrl::GetExtendedStyle() const
{
    return Send<DWORD>(this, TVM_GETEXTENDEDSTYLE);
}

DWORD CTreeCtrl::SetExtendedStyle(DWORD dwExMask, DWORD dwExStyles)
{
    return Send<DWORD>(this, TVM_SETEXTENDEDSTYLE, dwExMask, dwExStyles);
}

HTREEITEM CTreeCtrl::InsertItem(LPTVINSERTSTRUCT lpInsertStruct)
{
    return Send<HTREEITEM>(this, TVM_INSERTITEM, 0, lpInsertStruct);
}

HTREEITEM CTreeCtrl::InsertItem(LPCTSTR lpszItem, HTREEITEM hParent, HTREEITEM hInsertAfter)
{
    return InsertItem(TVIF_TEXT, lpszItem, 0, 0, 0, 0, 0, hParent, hInsertAfter);
}

HTREEITEM CTreeCtrl::InsertItem(LPCTSTR lpszItem, int nImage, int nSelectedImage, HTREEITEM hParent,
                                HTREEITEM hInsertAfter)
{
    return InsertItem(TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE, lpszItem, nImage, nSelectedImage, 0, 0, 0,
                      hParent, hInsertAfter);
}

BOOL CTreeCtrl::DeleteItem(HTREEITEM hItem)
{
    return Send<BOOL>(this, TVM_DELETEITEM, 0, hItem);
}

BOOL CTreeCtrl::DeleteAllItems()
{
    return Send<BOOL>(this, TVM_DELETEITEM, 0, TVI_ROOT);
}

BOOL CTreeCtrl::Expand(HTREEITEM hItem, UINT nCode)
{
    return Send<BOOL>(this, TVM_EXPAND, nCode, hItem);
}

BOOL CTreeCtrl::Select(HTREEITEM hItem, UINT nCode)
{
    return Send<BOOL>(this, TVM_SELECTITEM, nCode, hItem);
}

BOOL CTreeCtrl::SelectItem(HTREEITEM hItem)
{
    return Select(hItem, TVGN_CARET);
}

BOOL CTreeCtrl::SelectDropTarget(HTREEITEM hItem)
{
    return Select(hItem, TVGN_DROPHILITE);
}

BOOL CTreeCtrl::SelectSetFirstVisible(HTREEITEM hItem)
{
    return Select(hItem, TVGN_FIRSTVISIBLE);
}

CEdit* CTreeCtrl::EditLabel(HTREEITEM hItem)
{
    return static_cast<CEdit*>(CWnd::FromHandle(Send<HWND>(this, TVM_EDITLABEL, 0, hItem)));
}

BOOL CTreeCtrl::EndEditLabelNow(BOOL fCancelWithoutSave)
{
    return Send<BOOL>(this, TVM_ENDEDITLABELNOW, fCancelWithoutSave);
}

HTREEITEM CTreeCtrl::HitTest(TVHITTESTINFO* pHitTestInfo) const
{
    return Send<HTREEITEM>(this, TVM_HITTEST, 0, pHitTestInfo);
}

CImageList* CTreeCtrl::CreateDragImage(HTREEITEM hItem)
{
    return afx_subset::NewImageList(Send<HIMAGELIST>(this, TVM_CREATEDRAGIMAGE, 0, hItem));
}

BOOL CTreeCtrl::SortChildren(HTREEITEM hItem)
{
    return Send<BOOL>(this, TVM_SORTCHILDREN, 0, hItem);
}

BOOL CTreeCtrl::EnsureVisible(HTREEITEM hItem)
{
    return Send<BOOL>(this, TVM_ENSUREVISIBLE, 0, hItem);
}

BOOL CTreeCtrl::SortChildrenCB(LPTVSORTCB pSort)
{
    return Send<BOOL>(this, TVM_SORTCHILDRENCB, 0, pSort);
}

void CTreeCtrl::ShowInfoTip(HTREEITEM hItem)
{
    Send(this, TVM_SHOWINFOTIP, 0, hItem);
}

CImageList* CTreeCtrl::SetImageList(CImageList* pImageList, int nImageListType)
{
    const HIMAGELIST list = pImageList == nullptr ? nullptr : pImageList->m_hImageList;
    return CImageList::FromHandle(Send<HIMAGELIST>(this, TVM_SETIMAGELIST, nImageListType, list));
}

BOOL CTreeCtrl::SetItem(HTREEITEM hItem, UINT nMask, LPCTSTR lpszItem, int nImage, int nSelectedImage,
                        UINT nState, UINT nStateMask, LPARAM lParam)
{
    TVITEM item = {};
    item.mask = nMask;
    item.hItem = hItem;
    item.pszText = const_cast<LPTSTR>(lpszItem);
    item.iImage = nImage;
    item.iSelectedImage = nSelectedImage;
    item.state = nState;
    item.stateMask = nStateMask;
    item.lParam = lParam;
    return SetItem(&item);
}

HTREEITEM CTreeCtrl::InsertItem(UINT nMask, LPCTSTR lpszItem, int nImage, int nSelectedImage, UINT nState,
                                UINT nStateMask, LPARAM lParam, HTREEITEM hParent, HTREEITEM hInsertAfter)
{
    TVINSERTSTRUCT insertion = {};
    insertion.hParent = hParent;
    insertion.hInsertAfter = hInsertAfter;
    insertion.item.mask = nMask;
    insertion.item.pszText = const_cast<LPTSTR>(lpszItem);
    insertion.item.iImage = nImage;
    insertion.item.iSelectedImage = nSelectedImage;
    insertion.item.state = nState;
    insertion.item.stateMask = nStateMask;
    insertion.item.lParam = lParam;
    return InsertItem(&insertion);
}

BOOL CTreeCtrl::GetItemImage(HTREEITEM hItem, int& nImage, int& nSelectedImage) const
{
    TVITEM item = {};
    item.mask = TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    item.hItem = hItem;
    const BOOL found = GetItem(&item);
    nImage = item.iImage;
    nSelectedImage = item.iSelectedImage;
    return found;
}

CString CTreeCtrl::GetItemText(HTREEITEM hItem) const
{
    return afx_subset::TextOfAnyLength([&](LPTSTR buffer, int capacity) -> LPCTSTR {
        TVITEM item = {};
        item.mask = TVIF_TEXT;
        item.hItem = hItem;
        item.pszText = buffer;
        item.cchTextMax = capacity;
        return GetItem(&item) ? item.pszText : nullptr;
    });
}

DWORD_PTR CTreeCtrl::GetItemData(HTREEITEM hItem) const
{
    TVITEM item = {};
    item.mask = TVIF_PARAM;
    item.hItem = hItem;
    return GetItem(&item) ? static_cast<DWORD_PTR>(item.lParam) : 0;
}

BOOL CTreeCtrl::ItemHasChildren(HTREEITEM hItem) const
{
    TVITEM item = {};
    item.mask = TVIF_CHILDREN;
    item.hItem = hItem;
    return GetItem(&item) && item.cChildren != 0;
}

BOOL CTreeCtrl::GetCheck(HTREEITEM hItem) const
{
    constexpr UINT kChecked = 2;
    return GetItemState(hItem, TVIS_STATEIMAGEMASK) == INDEXTOSTATEIMAGEMASK(kChecked);
}

BOOL CTreeCtrl::GetItemRect(HTREEITEM hItem, LPRECT lpRect, BOOL bTextOnly) const
{
    if (lpRect == nullptr || hItem == nullptr)
        return FALSE;
    // The message takes the item in the rectangle that it fills.
    std::memcpy(lpRect, &hItem, sizeof(hItem));
    return Send<BOOL>(this, TVM_GETITEMRECT, bTextOnly, lpRect);
}

HTREEITEM CTreeCtrl::HitTest(CPoint pt, UINT* pFlags) const
{
    TVHITTESTINFO info = {};
    info.pt = pt;
    const HTREEITEM item = HitTest(&info);
    if (pFlags != nullptr)
        *pFlags = info.flags;
    return item;
}
