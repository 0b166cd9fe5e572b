#include "control_message.h"

#include <algorithm>

using afx_subset::Send;

IMPLEMENT_DYNAMIC(CListBox, CWnd)

CListBox::~CListBox()
{
    DestroyWindow();
}

BOOL CListBox::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create(WC_LISTBOX, nullptr, dwStyle, rect, pParentWnd, nID);
}

int CListBox::GetCount() const
{
    return Send<int>(this, LB_GETCOUNT);
}

int CListBox::GetHorizontalExtent() const
{
    return Send<int>(this, LB_GETHORIZONTALEXTENT);
}

void CListBox::SetHorizontalExtent(int cxExtent)
{
    Send(this, LB_SETHORIZONTALEXTENT, cxExtent);
}

int CListBox::GetTopIndex() const
{
    return Send<int>(this, LB_GETTOPINDEX);
}

int CListBox::SetTopIndex(int nIndex)
{
    return Send<int>(this, LB_SETTOPINDEX, nIndex);
}

LCID CListBox::GetLocale() const
{
    return Send<LCID>(this, LB_GETLOCALE);
}

LCID CListBox::SetLocale(LCID nNewLocale)
{
    return Send<LCID>(this, LB_SETLOCALE, nNewLocale);
}

int CListBox::InitStorage(int nItems, UINT nBytes)
{
    return Send<int>(this, LB_INITSTORAGE, nItems, nBytes);
}

DWORD CListBox::GetListBoxInfo() const
{
    return ::GetListBoxInfo(m_hWnd);
}

int CListBox::GetCurSel() const
{
    return Send<int>(this, LB_GETCURSEL);
}

int CListBox::SetCurSel(int nSelect)
{
    return Send<int>(this, LB_SETCURSEL, nSelect);
}

int CListBox::GetSel(int nIndex) const
{
    return Send<int>(this, LB_GETSEL, nIndex);
}

int CListBox::SetSel(int nIndex, BOOL bSelect)
{
    return Send<int>(this, LB_SETSEL, bSelect, nIndex);
}

int CListBox::GetSelCount() const
{
    return Send<int>(this, LB_GETSELCOUNT);
}

int CListBox::GetSelItems(int nMaxItems, LPINT rgIndex) const
{
    return Send<int>(this, LB_GETSELITEMS, nMaxItems, rgIndex);
}

void CListBox::SetAnchorIndex(int nIndex)
{
    Send(this, LB_SETANCHORINDEX, nIndex);
}

int CListBox::GetAnchorIndex() const
{
    return Send<int>(this, LB_GETANCHORINDEX);
}

DWORD_PTR CListBox::GetItemData(int nIndex) const
{
    return Send<DWORD_PTR>(this, LB_GETITEMDATA, nIndex);
}

int CListBox::SetItemData(int nIndex, DWORD_PTR dwItemData)
{
    return Send<int>(this, LB_SETITEMDATA, nIndex, dwItemData);
}

void* CListBox::GetItemDataPtr(int nIndex) const
{
    return Send<void*>(this, LB_GETITEMDATA, nIndex);
}

int CListBox::SetItemDataPtr(int nIndex, void* pData)
{
    return Send<int>(this, LB_SETITEMDATA, nIndex, pData);
}

int CListBox::GetItemRect(int nIndex, LPRECT lpRect) const
{
    return Send<int>(this, LB_GETITEMRECT, nIndex, lpRect);
}

int CListBox::GetText(int nIndex, LPTSTR lpszBuffer) const
{
    return Send<int>(this, LB_GETTEXT, nIndex, lpszBuffer);
}

int CListBox::GetTextLen(int nIndex) const
{
    return Send<int>(this, LB_GETTEXTLEN, nIndex);
}

void CListBox::SetColumnWidth(int cxWidth)
{
    Send(this, LB_SETCOLUMNWIDTH, cxWidth);
}

BOOL CListBox::SetTabStops(int nTabStops, LPINT rgTabStops)
{
    return Send<BOOL>(this, LB_SETTABSTOPS, nTabStops, rgTabStops);
}

void CListBox::SetTabStops()
{
    Send(this, LB_SETTABSTOPS);
}

BOOL CListBox::SetTabStops(const int& cxEachStop)
{
    return Send<BOOL>(this, LB_SETTABSTOPS, 1, &cxEachStop);
}

int CListBox::SetItemHeight(int nIndex, UINT cyItemHeight)
{
    return Send<int>(this, LB_SETITEMHEIGHT, nIndex, MAKELPARAM(cyItemHeight, 0));
}

int CListBox::GetItemHeight(int nIndex) const
{
    return Send<int>(this, LB_GETITEMHEIGHT, nIndex);
}

int CListBox::FindStringExact(int nIndexStart, LPCTSTR lpszFind) const
{
    return Send<int>(this, LB_FINDSTRINGEXACT, nIndexStart, lpszFind);
}

int CListBox::GetCaretIndex() const
{
    return Send<int>(this, LB_GETCARETINDEX);
}

int CListBox::SetCaretIndex(int nIndex, BOOL bScroll)
{
    return Send<int>(this, LB_SETCARETINDEX, nIndex, MAKELPARAM(bScroll, 0));
}

int CListBox::AddString(LPCTSTR lpszItem)
{
    return Send<int>(this, LB_ADDSTRING, 0, lpszItem);
}

int CListBox::DeleteString(UINT nIndex)
{
    return Send<int>(this, LB_DELETESTRING, nIndex);
}

int CListBox::InsertString(int nIndex, LPCTSTR lpszItem)
{
    return Send<int>(this, LB_INSERTSTRING, nIndex, lpszItem);
}

void CListBox::ResetContent()
{
    Send(this, LB_RESETCONTENT);
}

int CListBox::Dir(UINT attr, LPCTSTR lpszWildCard)
{
    return Send<int>(this, LB_DIR, attr, lpszWildCard);
}

int CListBox::FindString(int nStartAfter, LPCTSTR lpszItem) const
{
    return Send<int>(this, LB_FINDSTRING, nStartAfter, lpszItem);
}

int CListBox::SelectString(int nStartAfter, LPCTSTR lpszItem)
{
    return Send<int>(this, LB_SELECTSTRING, nStartAfter, lpszItem);
}

UINT CListBox::ItemFromPoint(CPoint pt, BOOL& bOutside) const
{
    const auto answer = Send<DWORD>(this, LB_ITEMFROMPOINT, 0, MAKELPARAM(pt.x, pt.y));
    bOutside = HIWORD(answer);
    return LOWORD(answer);
}

int CListBox::SelItemRange(BOOL bSelect, int nFirstItem, int nLastItem)
{
    // LB_SELITEMRANGEEX takes whole indices; the order of its two bounds decides between select and clear.
    const int low = std::min(nFirstItem, nLastItem);
    const int high = std::max(nFirstItem, nLastItem);
    if (low < 0)
        return LB_ERR;
    // A range of one item has no order, so it is set on its own.
    if (low == high)
        return SetSel(low, bSelect);
    return Send<int>(this, LB_SELITEMRANGEEX, bSelect ? low : high, bSelect ? high : low);
}

void CListBox::GetText(int nIndex, CString& rString) const
{
    rString.Empty();
    // Without strings LB_GETTEXT would copy the item's data, which is no text.
    const LONG_PTR style = ::GetWindowLongPtr(m_hWnd, GWL_STYLE);
    const bool ownerDrawn = (style & (LBS_OWNERDRAWFIXED | LBS_OWNERDRAWVARIABLE)) != 0;
    if (ownerDrawn && (style & LBS_HASSTRINGS) == 0)
        return;
    const int length = GetTextLen(nIndex);
    if (length == LB_ERR)
        return;
    GetText(nIndex, rString.GetBuffer(length));
    rString.ReleaseBuffer();
}

void CListBox::DrawItem(LPDRAWITEMSTRUCT /*lpDrawItemStruct*/) {}

void CListBox::MeasureItem(LPMEASUREITEMSTRUCT /*lpMeasureItemStruct*/) {}

int CListBox::CompareItem(LPCOMPAREITEMSTRUCT /*lpCompareItemStruct*/)
{
    return 0;
}

void CListBox::DeleteItem(LPDELETEITEMSTRUCT /*lpDeleteItemStruct*/) {}

int CListBox::VKeyToItem(UINT /*nKey*/, UINT /*nIndex*/)
{
    return -1;
}

int CListBox::CharToItem(UINT /*nKey*/, UINT /*nIndex*/)
{
    return -1;
}

BOOL CListBox::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    LRESULT ignored = 0;
    LRESULT& result = pResult != nullptr ? *pResult : ignored;
    switch (message) {
    case WM_DRAWITEM:
        DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
        return TRUE;
    case WM_MEASUREITEM:
        MeasureItem(reinterpret_cast<LPMEASUREITEMSTRUCT>(lParam));
        return TRUE;
    case WM_COMPAREITEM:
        result = CompareItem(reinterpret_cast<LPCOMPAREITEMSTRUCT>(lParam));
        return TRUE;
    case WM_DELETEITEM:
        DeleteItem(reinterpret_cast<LPDELETEITEMSTRUCT>(lParam));
        return TRUE;
    case WM_VKEYTOITEM:
        result = VKeyToItem(LOWORD(wParam), HIWORD(wParam));
        return TRUE;
    case WM_CHARTOITEM:
        result = CharToItem(LOWORD(wParam), HIWORD(wParam));
        return TRUE;
    default:
        return CWnd::OnChildNotify(message, wParam, lParam, pResult);
    }
}
