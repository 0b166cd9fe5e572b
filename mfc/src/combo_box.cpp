#include "control_message.h"

#include <iterator>

using afx_subset::Send;

IMPLEMENT_DYNAMIC(CComboBox, CWnd)

CComboBox::~CComboBox()
{
    DestroyWindow();
}

BOOL CComboBox::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create(WC_COMBOBOX, nullptr, dwStyle, rect, pParentWnd, nID);
}

int CComboBox::GetCount() const
{
    return Send<int>(this, CB_GETCOUNT);
}

int CComboBox::GetCurSel() const
{
    return Send<int>(this, CB_GETCURSEL);
}

int CComboBox::SetCurSel(int nSelect)
{
    return Send<int>(this, CB_SETCURSEL, nSelect);
}

LCID CComboBox::GetLocale() const
{
    return Send<LCID>(this, CB_GETLOCALE);
}

LCID CComboBox::SetLocale(LCID nNewLocale)
{
    return Send<LCID>(this, CB_SETLOCALE, nNewLocale);
}

int CComboBox::GetTopIndex() const
{
    return Send<int>(this, CB_GETTOPINDEX);
}

int CComboBox::SetTopIndex(int nIndex)
{
    return Send<int>(this, CB_SETTOPINDEX, nIndex);
}

int CComboBox::InitStorage(int nItems, UINT nBytes)
{
    return Send<int>(this, CB_INITSTORAGE, nItems, nBytes);
}

void CComboBox::SetHorizontalExtent(UINT nExtent)
{
    Send(this, CB_SETHORIZONTALEXTENT, nExtent);
}

UINT CComboBox::GetHorizontalExtent() const
{
    return Send<UINT>(this, CB_GETHORIZONTALEXTENT);
}

int CComboBox::SetDroppedWidth(UINT nWidth)
{
    return Send<int>(this, CB_SETDROPPEDWIDTH, nWidth);
}

int CComboBox::GetDroppedWidth() const
{
    return Send<int>(this, CB_GETDROPPEDWIDTH);
}

DWORD CComboBox::GetEditSel() const
{
    return Send<DWORD>(this, CB_GETEDITSEL);
}

BOOL CComboBox::LimitText(int nMaxChars)
{
    return Send<BOOL>(this, CB_LIMITTEXT, nMaxChars);
}

BOOL CComboBox::SetEditSel(int nStartChar, int nEndChar)
{
    return Send<BOOL>(this, CB_SETEDITSEL, 0, MAKELPARAM(nStartChar, nEndChar));
}

BOOL CComboBox::SetCueBanner(LPCTSTR lpszText)
{
    return Send<BOOL>(this, CB_SETCUEBANNER, 0, lpszText);
}

BOOL CComboBox::GetCueBanner(LPTSTR lpszText, int cchText) const
{
    return Send<BOOL>(this, CB_GETCUEBANNER, lpszText, cchText);
}

DWORD_PTR CComboBox::GetItemData(int nIndex) const
{
    return Send<DWORD_PTR>(this, CB_GETITEMDATA, nIndex);
}

int CComboBox::SetItemData(int nIndex, DWORD_PTR dwItemData)
{
    return Send<int>(this, CB_SETITEMDATA, nIndex, dwItemData);
}

void* CComboBox::GetItemDataPtr(int nIndex) const
{
    return Send<void*>(this, CB_GETITEMDATA, nIndex);
}

int CComboBox::SetItemDataPtr(int nIndex, void* pData)
{
    return Send<int>(this, CB_SETITEMDATA, nIndex, pData);
}

int CComboBox::GetLBText(int nIndex, LPTSTR lpszText) const
{
    return Send<int>(this, CB_GETLBTEXT, nIndex, lpszText);
}

int CComboBox::GetLBTextLen(int nIndex) const
{
    return Send<int>(this, CB_GETLBTEXTLEN, nIndex);
}

int CComboBox::SetItemHeight(int nIndex, UINT cyItemHeight)
{
    return Send<int>(this, CB_SETITEMHEIGHT, nIndex, MAKELPARAM(cyItemHeight, 0));
}

int CComboBox::GetItemHeight(int nIndex) const
{
    return Send<int>(this, CB_GETITEMHEIGHT, nIndex);
}

int CComboBox::FindStringExact(int nIndexStart, LPCTSTR lpszFind) const
{
    return Send<int>(this, CB_FINDSTRINGEXACT, nIndexStart, lpszFind);
}

int CComboBox::SetExtendedUI(BOOL bExtended)
{
    return Send<int>(this, CB_SETEXTENDEDUI, bExtended);
}

BOOL CComboBox::GetExtendedUI() const
{
    return Send<BOOL>(this, CB_GETEXTENDEDUI);
}

void CComboBox::GetDroppedControlRect(LPRECT lprect) const
{
    Send(this, CB_GETDROPPEDCONTROLRECT, 0, lprect);
}

BOOL CComboBox::GetDroppedState() const
{
    return Send<BOOL>(this, CB_GETDROPPEDSTATE);
}

int CComboBox::GetMinVisible() const
{
    return Send<int>(this, CB_GETMINVISIBLE);
}

BOOL CComboBox::SetMinVisibleItems(int iMinVisible)
{
    return Send<BOOL>(this, CB_SETMINVISIBLE, iMinVisible);
}

void CComboBox::ShowDropDown(BOOL bShowIt)
{
    Send(this, CB_SHOWDROPDOWN, bShowIt);
}

int CComboBox::AddString(LPCTSTR lpszString)
{
    return Send<int>(this, CB_ADDSTRING, 0, lpszString);
}

int CComboBox::DeleteString(UINT nIndex)
{
    return Send<int>(this, CB_DELETESTRING, nIndex);
}

int CComboBox::InsertString(int nIndex, LPCTSTR lpszString)
{
    return Send<int>(this, CB_INSERTSTRING, nIndex, lpszString);
}

void CComboBox::ResetContent()
{
    Send(this, CB_RESETCONTENT);
}

int CComboBox::Dir(UINT attr, LPCTSTR lpszWildCard)
{
    return Send<int>(this, CB_DIR, attr, lpszWildCard);
}

int CComboBox::FindString(int nStartAfter, LPCTSTR lpszString) const
{
    return Send<int>(this, CB_FINDSTRING, nStartAfter, lpszString);
}

int CComboBox::SelectString(int nStartAfter, LPCTSTR lpszString)
{
    return Send<int>(this, CB_SELECTSTRING, nStartAfter, lpszString);
}

void CComboBox::Clear()
{
    Send(this, WM_CLEAR);
}

void CComboBox::Copy()
{
    Send(this, WM_COPY);
}

void CComboBox::Cut()
{
    Send(this, WM_CUT);
}

void CComboBox::Paste()
{
    Send(this, WM_PASTE);
}

BOOL CComboBox::GetComboBoxInfo(PCOMBOBOXINFO pcbi) const
{
    if (pcbi == nullptr)
        return FALSE;
    pcbi->cbSize = sizeof(*pcbi);
    return ::GetComboBoxInfo(m_hWnd, pcbi);
}

CString CComboBox::GetCueBanner() const
{
    TCHAR text[256] = {};
    GetCueBanner(text, static_cast<int>(std::size(text)));
    return text;
}

void CComboBox::GetLBText(int nIndex, CString& rString) const
{
    rString.Empty();
    // Without strings CB_GETLBTEXT would copy the item's data, which is no text.
    const LONG_PTR style = ::GetWindowLongPtr(m_hWnd, GWL_STYLE);
    const bool ownerDrawn = (style & (CBS_OWNERDRAWFIXED | CBS_OWNERDRAWVARIABLE)) != 0;
    if (ownerDrawn && (style & CBS_HASSTRINGS) == 0)
        return;
    const int length = GetLBTextLen(nIndex);
    if (length == CB_ERR)
        return;
    GetLBText(nIndex, rString.GetBuffer(length));
    rString.ReleaseBuffer();
}

void CComboBox::DrawItem(LPDRAWITEMSTRUCT /*lpDrawItemStruct*/) {}

void CComboBox::MeasureItem(LPMEASUREITEMSTRUCT /*lpMeasureItemStruct*/) {}

int CComboBox::CompareItem(LPCOMPAREITEMSTRUCT /*lpCompareItemStruct*/)
{
    return 0;
}

void CComboBox::DeleteItem(LPDELETEITEMSTRUCT /*lpDeleteItemStruct*/) {}

BOOL CComboBox::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    switch (message) {
    case WM_DRAWITEM:
        DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
        return TRUE;
    case WM_MEASUREITEM:
        MeasureItem(reinterpret_cast<LPMEASUREITEMSTRUCT>(lParam));
        return TRUE;
    case WM_COMPAREITEM: {
        const int order = CompareItem(reinterpret_cast<LPCOMPAREITEMSTRUCT>(lParam));
        if (pResult != nullptr)
            *pResult = order;
        return TRUE;
    }
    case WM_DELETEITEM:
        DeleteItem(reinterpret_cast<LPDELETEITEMSTRUCT>(lParam));
        return TRUE;
    default:
        return CWnd::OnChildNotify(message, wParam, lParam, pResult);
    }
}
