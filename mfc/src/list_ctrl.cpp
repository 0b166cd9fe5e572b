#include <afxcmn.h>

#include "common_control_classes.h"
#include "control_message.h"
#include "control_text.h"
#include "image_list_traits.h"

using afx_subset::Send;
using afx_subset::WindowOf;

IMPLEMENT_DYNAMIC(CListCtrl, CWnd)

CListCtrl::~CListCtrl()
{
    DestroyWindow();
}

BOOL CListCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateEx(0, dwStyle, rect, pParentWnd, nID);
}

BOOL CListCtrl::CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return afx_subset::InitControlClasses(ICC_LISTVIEW_CLASSES) &&
           CWnd::CreateEx(dwExStyle, WC_LISTVIEW, nullptr, dwStyle, rect, pParentWnd, nID);
}

COLORREF CListCtrl::GetBkColor() const
{
    return Send<COLORREF>(this, LVM_GETBKCOLOR);
}

BOOL CListCtrl::SetBkColor(COLORREF cr)
{
    return Send<BOOL>(this, LVM_SETBKCOLOR, 0, cr);
}

COLORREF CListCtrl::GetTextColor() const
{
    return Send<COLORREF>(this, LVM_GETTEXTCOLOR);
}

BOOL CListCtrl::SetTextColor(COLORREF cr)
{
    return Send<BOOL>(this, LVM_SETTEXTCOLOR, 0, cr);
}

COLORREF CListCtrl::GetTextBkColor() const
{
    return Send<COLORREF>(this, LVM_GETTEXTBKCOLOR);
}

BOOL CListCtrl::SetTextBkColor(COLORREF cr)
{
    return Send<BOOL>(this, LVM_SETTEXTBKCOLOR, 0, cr);
}

CImageList* CListCtrl::GetImageList(int nImageList) const
{
    return CImageList::FromHandle(Send<HIMAGELIST>(this, LVM_GETIMAGELIST, nImageList));
}

int CListCtrl::GetItemCount() const
{
    return Send<int>(this, LVM_GETITEMCOUNT);
}

void CListCtrl::SetItemCount(int nItems)
{
    Send(this, LVM_SETITEMCOUNT, nItems);
}

BOOL CListCtrl::SetItemCountEx(int iCount, DWORD dwFlags)
{
    return Send<BOOL>(this, LVM_SETITEMCOUNT, iCount, dwFlags);
}

BOOL CListCtrl::GetItem(LVITEM* pItem) const
{
    return Send<BOOL>(this, LVM_GETITEM, 0, pItem);
}

BOOL CListCtrl::SetItem(const LVITEM* pItem)
{
    return Send<BOOL>(this, LVM_SETITEM, 0, pItem);
}

BOOL CListCtrl::SetItem(int nItem, int nSubItem, UINT nMask, LPCTSTR lpszItem, int nImage, UINT nState,
                        UINT nStateMask, LPARAM lParam)
{
    return SetItem(nItem, nSubItem, nMask, lpszItem, nImage, nState, nStateMask, lParam, 0);
}

UINT CListCtrl::GetCallbackMask() const
{
    return Send<UINT>(this, LVM_GETCALLBACKMASK);
}

BOOL CListCtrl::SetCallbackMask(UINT nMask)
{
    return Send<BOOL>(this, LVM_SETCALLBACKMASK, nMask);
}

int CListCtrl::GetNextItem(int nItem, int nFlags) const
{
    return Send<int>(this, LVM_GETNEXTITEM, nItem, MAKELPARAM(nFlags, 0));
}

UINT CListCtrl::GetSelectedCount() const
{
    return Send<UINT>(this, LVM_GETSELECTEDCOUNT);
}

int CListCtrl::GetSelectionMark()
{
    return Send<int>(this, LVM_GETSELECTIONMARK);
}

int CListCtrl::SetSelectionMark(int iIndex)
{
    return Send<int>(this, LVM_SETSELECTIONMARK, 0, iIndex);
}

BOOL CListCtrl::GetItemPosition(int nItem, LPPOINT lpPoint) const
{
    return Send<BOOL>(this, LVM_GETITEMPOSITION, nItem, lpPoint);
}

BOOL CListCtrl::SetItemPosition(int nItem, POINT pt)
{
    return Send<BOOL>(this, LVM_SETITEMPOSITION32, nItem, &pt);
}

UINT CListCtrl::GetItemState(int nItem, UINT nMask) const
{
    return Send<UINT>(this, LVM_GETITEMSTATE, nItem, nMask);
}

BOOL CListCtrl::SetItemState(int nItem, LVITEM* pItem)
{
    return Send<BOOL>(this, LVM_SETITEMSTATE, nItem, pItem);
}

BOOL CListCtrl::SetItemData(int nItem, DWORD_PTR dwData)
{
    return SetItem(nItem, 0, LVIF_PARAM, nullptr, 0, 0, 0, static_cast<LPARAM>(dwData));
}

BOOL CListCtrl::SetCheck(int nItem, BOOL fCheck)
{
    return SetItemState(nItem, INDEXTOSTATEIMAGEMASK(fCheck ? 2 : 1), LVIS_STATEIMAGEMASK);
}

DWORD CListCtrl::GetExtendedStyle()
{
    return Send<DWORD>(this, LVM_GETEXTENDEDLISTVIEWSTYLE);
}

DWORD CListCtrl::SetExtendedStyle(DWORD dwNewStyle)
{
    return Send<DWORD>(this, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, dwNewStyle);
}

DWORD CListCtrl::GetView() const
{
    return Send<DWORD>(this, LVM_GETVIEW);
}

DWORD CListCtrl::SetView(int iView)
{
    return Send<DWORD>(this, LVM_SETVIEW, iView);
}

BOOL CListCtrl::GetViewRect(LPRECT lpRect) const
{
    return Send<BOOL>(this, LVM_GETVIEWRECT, 0, lpRect);
}

BOOL CListCtrl::GetOrigin(LPPOINT lpPoint) const
{
    return Send<BOOL>(this, LVM_GETORIGIN, 0, lpPoint);
}

CSize CListCtrl::SetIconSpacing(CSize size)
{
    return SetIconSpacing(size.cx, size.cy);
}

int CListCtrl::GetHotItem()
{
    return Send<int>(this, LVM_GETHOTITEM);
}

int CListCtrl::SetHotItem(int iIndex)
{
    return Send<int>(this, LVM_SETHOTITEM, iIndex);
}

HCURSOR CListCtrl::GetHotCursor()
{
    return Send<HCURSOR>(this, LVM_GETHOTCURSOR);
}

HCURSOR CListCtrl::SetHotCursor(HCURSOR hc)
{
    return Send<HCURSOR>(this, LVM_SETHOTCURSOR, 0, hc);
}

DWORD CListCtrl::GetHoverTime() const
{
    return Send<DWORD>(this, LVM_GETHOVERTIME);
}

DWORD CListCtrl::SetHoverTime(DWORD dwHoverTime)
{
    return Send<DWORD>(this, LVM_SETHOVERTIME, 0, dwHoverTime);
}

int CListCtrl::GetTopIndex() const
{
    return Send<int>(this, LVM_GETTOPINDEX);
}

int CListCtrl::GetCountPerPage() const
{
    return Send<int>(this, LVM_GETCOUNTPERPAGE);
}

int CListCtrl::GetStringWidth(LPCTSTR lpsz) const
{
    return Send<int>(this, LVM_GETSTRINGWIDTH, 0, lpsz);
}

CEdit* CListCtrl::GetEditControl() const
{
    return static_cast<CEdit*>(CWnd::FromHandle(Send<HWND>(this, LVM_GETEDITCONTROL)));
}

CToolTipCtrl* CListCtrl::GetToolTips() const
{
    return static_cast<CToolTipCtrl*>(CWnd::FromHandle(Send<HWND>(this, LVM_GETTOOLTIPS)));
}

CToolTipCtrl* CListCtrl::SetToolTips(CToolTipCtrl* pWndTip)
{
    return static_cast<CToolTipCtrl*>(CWnd::FromHandle(Send<HWND>(this, LVM_SETTOOLTIPS, WindowOf(pWndTip))));
}

int CListCtrl::InsertItem(const LVITEM* pItem)
{
    return Send<int>(this, LVM_INSERTITEM, 0, pItem);
}

int CListCtrl::InsertItem(int nItem, LPCTSTR lpszItem)
{
    return InsertItem(LVIF_TEXT, nItem, lpszItem, 0, 0, 0, 0);
}

int CListCtrl::InsertItem(int nItem, LPCTSTR lpszItem, int nImage)
{
    return InsertItem(LVIF_TEXT | LVIF_IMAGE, nItem, lpszItem, 0, 0, nImage, 0);
}

BOOL CListCtrl::DeleteItem(int nItem)
{
    return Send<BOOL>(this, LVM_DELETEITEM, nItem);
}

BOOL CListCtrl::DeleteAllItems()
{
    return Send<BOOL>(this, LVM_DELETEALLITEMS);
}

int CListCtrl::FindItem(LVFINDINFO* pFindInfo, int nStart) const
{
    return Send<int>(this, LVM_FINDITEM, nStart, pFindInfo);
}

int CListCtrl::HitTest(LVHITTESTINFO* pHitTestInfo) const
{
    return Send<int>(this, LVM_HITTEST, 0, pHitTestInfo);
}

int CListCtrl::SubItemHitTest(LPLVHITTESTINFO pInfo)
{
    return Send<int>(this, LVM_SUBITEMHITTEST, 0, pInfo);
}

BOOL CListCtrl::EnsureVisible(int nItem, BOOL bPartialOK)
{
    return Send<BOOL>(this, LVM_ENSUREVISIBLE, nItem, MAKELPARAM(bPartialOK, 0));
}

BOOL CListCtrl::IsItemVisible(int index) const
{
    return Send<BOOL>(this, LVM_ISITEMVISIBLE, index);
}

BOOL CListCtrl::Scroll(CSize size)
{
    return Send<BOOL>(this, LVM_SCROLL, size.cx, size.cy);
}

BOOL CListCtrl::RedrawItems(int nFirst, int nLast)
{
    return Send<BOOL>(this, LVM_REDRAWITEMS, nFirst, nLast);
}

BOOL CListCtrl::Arrange(UINT nCode)
{
    return Send<BOOL>(this, LVM_ARRANGE, nCode);
}

CEdit* CListCtrl::EditLabel(int nItem)
{
    return static_cast<CEdit*>(CWnd::FromHandle(Send<HWND>(this, LVM_EDITLABEL, nItem)));
}

void CListCtrl::CancelEditLabel()
{
    Send(this, LVM_CANCELEDITLABEL);
}

CImageList* CListCtrl::CreateDragImage(int nItem, LPPOINT lpPoint)
{
    return afx_subset::NewImageList(Send<HIMAGELIST>(this, LVM_CREATEDRAGIMAGE, nItem, lpPoint));
}

BOOL CListCtrl::Update(int nItem)
{
    return Send<BOOL>(this, LVM_UPDATE, nItem);
}

BOOL CListCtrl::SortItems(PFNLVCOMPARE pfnCompare, DWORD_PTR dwData)
{
    return Send<BOOL>(this, LVM_SORTITEMS, dwData, pfnCompare);
}

BOOL CListCtrl::SortItemsEx(PFNLVCOMPARE pfnCompare, DWORD_PTR dwData)
{
    return Send<BOOL>(this, LVM_SORTITEMSEX, dwData, pfnCompare);
}

CImageList* CListCtrl::SetImageList(CImageList* pImageList, int nImageListType)
{
    const HIMAGELIST list = pImageList == nullptr ? nullptr : pImageList->m_hImageList;
    return CImageList::FromHandle(Send<HIMAGELIST>(this, LVM_SETIMAGELIST, nImageListType, list));
}

BOOL CListCtrl::SetItem(int nItem, int nSubItem, UINT nMask, LPCTSTR lpszItem, int nImage, UINT nState,
                        UINT nStateMask, LPARAM lParam, int nIndent)
{
    LVITEM item = {};
    item.mask = nMask;
    item.iItem = nItem;
    item.iSubItem = nSubItem;
    item.pszText = const_cast<LPTSTR>(lpszItem);
    item.iImage = nImage;
    item.state = nState;
    item.stateMask = nStateMask;
    item.lParam = lParam;
    item.iIndent = nIndent;
    return SetItem(&item);
}

int CListCtrl::InsertItem(UINT nMask, int nItem, LPCTSTR lpszItem, UINT nState, UINT nStateMask, int nImage,
                          LPARAM lParam)
{
    LVITEM item = {};
    item.mask = nMask;
    item.iItem = nItem;
    item.pszText = const_cast<LPTSTR>(lpszItem);
    item.state = nState;
    item.stateMask = nStateMask;
    item.iImage = nImage;
    item.lParam = lParam;
    return InsertItem(&item);
}

// A position is the item's index plus 1, so that item 0 has one that is not null.
POSITION CListCtrl::GetFirstSelectedItemPosition() const
{
    return reinterpret_cast<POSITION>(static_cast<INT_PTR>(GetNextItem(-1, LVNI_SELECTED)) + 1);
}

int CListCtrl::GetNextSelectedItem(POSITION& pos) const
{
    const int item = static_cast<int>(reinterpret_cast<INT_PTR>(pos)) - 1;
    if (item < 0)
        return -1;
    pos = reinterpret_cast<POSITION>(static_cast<INT_PTR>(GetNextItem(item, LVNI_SELECTED)) + 1);
    return item;
}

BOOL CListCtrl::GetItemRect(int nItem, LPRECT lpRect, UINT nCode) const
{
    if (lpRect == nullptr)
        return FALSE;
    // The message takes the code in the rectangle that it fills.
    *lpRect = CRect(static_cast<int>(nCode), 0, 0, 0);
    const BOOL found = Send<BOOL>(this, LVM_GETITEMRECT, nItem, lpRect);
    if (!found)
        ::SetRectEmpty(lpRect);
    return found;
}

BOOL CListCtrl::GetSubItemRect(int iItem, int iSubItem, int nArea, CRect& ref)
{
    // The message takes the area and the sub-item in the rectangle that it fills.
    RECT rect = {nArea, iSubItem, 0, 0};
    const BOOL found = Send<BOOL>(this, LVM_GETSUBITEMRECT, iItem, &rect);
    ref = found ? rect : RECT{};
    return found;
}

BOOL CListCtrl::SetItemState(int nItem, UINT nState, UINT nMask)
{
    LVITEM item = {};
    item.state = nState;
    item.stateMask = nMask;
    return SetItemState(nItem, &item);
}

CString CListCtrl::GetItemText(int nItem, int nSubItem) const
{
    return afx_subset::TextOfAnyLength([&](LPTSTR buffer, int capacity) -> LPCTSTR {
        LVITEM item = {};
        item.iSubItem = nSubItem;
        item.pszText = buffer;
        item.cchTextMax = capacity;
        Send(this, LVM_GETITEMTEXT, nItem, &item);
        return item.pszText;
    });
}

int CListCtrl::GetItemText(int nItem, int nSubItem, LPTSTR lpszText, int nLen) const
{
    if (lpszText == nullptr || nLen < 1)
        return 0;
    lpszText[0] = _T('\0');
    LVITEM item = {};
    item.iSubItem = nSubItem;
    item.pszText = lpszText;
    item.cchTextMax = nLen;
    return Send<int>(this, LVM_GETITEMTEXT, nItem, &item);
}

BOOL CListCtrl::SetItemText(int nItem, int nSubItem, LPCTSTR lpszText)
{
    LVITEM item = {};
    item.iSubItem = nSubItem;
    item.pszText = const_cast<LPTSTR>(lpszText);
    return Send<BOOL>(this, LVM_SETITEMTEXT, nItem, &item);
}

DWORD_PTR CListCtrl::GetItemData(int nItem) const
{
    LVITEM item = {};
    item.mask = LVIF_PARAM;
    item.iItem = nItem;
    return GetItem(&item) ? static_cast<DWORD_PTR>(item.lParam) : 0;
}

BOOL CListCtrl::GetCheck(int nItem) const
{
    constexpr UINT kChecked = 2;
    return GetItemState(nItem, LVIS_STATEIMAGEMASK) == INDEXTOSTATEIMAGEMASK(kChecked);
}

BOOL CListCtrl::GetItemSpacing(BOOL fSmall, int* pnHorzSpacing, int* pnVertSpacing) const
{
    const auto packed = Send<DWORD>(this, LVM_GETITEMSPACING, fSmall);
    if (pnHorzSpacing != nullptr)
        *pnHorzSpacing = LOWORD(packed);
    if (pnVertSpacing != nullptr)
        *pnVertSpacing = HIWORD(packed);
    return packed != 0;
}

CSize CListCtrl::SetIconSpacing(int cx, int cy)
{
    const auto packed = Send<DWORD>(this, LVM_SETICONSPACING, 0, MAKELPARAM(cx, cy));
    return CSize(LOWORD(packed), HIWORD(packed));
}

CSize CListCtrl::ApproximateViewRect(CSize sz, int iCount) const
{
    const auto packed = Send<DWORD>(this, LVM_APPROXIMATEVIEWRECT, iCount, MAKELPARAM(sz.cx, sz.cy));
    return CSize(LOWORD(packed), HIWORD(packed));
}

int CListCtrl::HitTest(CPoint pt, UINT* pFlags) const
{
    LVHITTESTINFO info = {};
    info.pt = pt;
    const int item = HitTest(&info);
    if (pFlags != nullptr)
        *pFlags = info.flags;
    return item;
}

void CListCtrl::DrawItem(LPDRAWITEMSTRUCT /*lpDrawItemStruct*/) {}

BOOL CListCtrl::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (message != WM_DRAWITEM)
        return CWnd::OnChildNotify(message, wParam, lParam, pResult);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    return TRUE;
}
