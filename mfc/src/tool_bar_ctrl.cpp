#include <afxcmn.h>

#include "common_control_classes.h"
#include "control_message.h"

#include <vector>

using afx_subset::Send;
using afx_subset::WindowOf;

IMPLEMENT_DYNAMIC(CToolBarCtrl, CWnd)

CToolBarCtrl::~CToolBarCtrl()
{
    DestroyWindow();
}

BOOL CToolBarCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateEx(0, dwStyle, rect, pParentWnd, nID);
}

BOOL CToolBarCtrl::IsButtonEnabled(int nID) const
{
    return Send<BOOL>(this, TB_ISBUTTONENABLED, nID);
}

BOOL CToolBarCtrl::IsButtonChecked(int nID) const
{
    return Send<BOOL>(this, TB_ISBUTTONCHECKED, nID);
}

BOOL CToolBarCtrl::IsButtonPressed(int nID) const
{
    return Send<BOOL>(this, TB_ISBUTTONPRESSED, nID);
}

BOOL CToolBarCtrl::IsButtonHidden(int nID) const
{
    return Send<BOOL>(this, TB_ISBUTTONHIDDEN, nID);
}

BOOL CToolBarCtrl::IsButtonIndeterminate(int nID) const
{
    return Send<BOOL>(this, TB_ISBUTTONINDETERMINATE, nID);
}

BOOL CToolBarCtrl::IsButtonHighlighted(int nID) const
{
    return Send<BOOL>(this, TB_ISBUTTONHIGHLIGHTED, nID);
}

int CToolBarCtrl::GetState(int nID) const
{
    return Send<int>(this, TB_GETSTATE, nID);
}

BOOL CToolBarCtrl::SetState(int nID, UINT nState)
{
    return Send<BOOL>(this, TB_SETSTATE, nID, MAKELPARAM(nState, 0));
}

BOOL CToolBarCtrl::GetButton(int nIndex, LPTBBUTTON lpButton) const
{
    return Send<BOOL>(this, TB_GETBUTTON, nIndex, lpButton);
}

int CToolBarCtrl::GetButtonCount() const
{
    return Send<int>(this, TB_BUTTONCOUNT);
}

int CToolBarCtrl::GetButtonInfo(int nID, TBBUTTONINFO* ptbbi) const
{
    return Send<int>(this, TB_GETBUTTONINFO, nID, ptbbi);
}

BOOL CToolBarCtrl::SetButtonInfo(int nID, TBBUTTONINFO* ptbbi)
{
    return Send<BOOL>(this, TB_SETBUTTONINFO, nID, ptbbi);
}

BOOL CToolBarCtrl::GetItemRect(int nIndex, LPRECT lpRect) const
{
    return Send<BOOL>(this, TB_GETITEMRECT, nIndex, lpRect);
}

BOOL CToolBarCtrl::GetRect(int nID, LPRECT lpRect) const
{
    return Send<BOOL>(this, TB_GETRECT, nID, lpRect);
}

UINT CToolBarCtrl::CommandToIndex(UINT nID) const
{
    return Send<UINT>(this, TB_COMMANDTOINDEX, nID);
}

int CToolBarCtrl::GetBitmap(int nID) const
{
    return Send<int>(this, TB_GETBITMAP, nID);
}

DWORD CToolBarCtrl::GetButtonSize() const
{
    return Send<DWORD>(this, TB_GETBUTTONSIZE);
}

BOOL CToolBarCtrl::SetButtonSize(CSize size)
{
    return Send<BOOL>(this, TB_SETBUTTONSIZE, 0, MAKELPARAM(size.cx, size.cy));
}

BOOL CToolBarCtrl::SetBitmapSize(CSize size)
{
    return Send<BOOL>(this, TB_SETBITMAPSIZE, 0, MAKELPARAM(size.cx, size.cy));
}

BOOL CToolBarCtrl::SetButtonWidth(int cxMin, int cxMax)
{
    return Send<BOOL>(this, TB_SETBUTTONWIDTH, 0, MAKELPARAM(cxMin, cxMax));
}

BOOL CToolBarCtrl::GetMaxSize(LPSIZE pSize) const
{
    return Send<BOOL>(this, TB_GETMAXSIZE, 0, pSize);
}

BOOL CToolBarCtrl::SetIndent(int iIndent)
{
    return Send<BOOL>(this, TB_SETINDENT, iIndent);
}

int CToolBarCtrl::GetRows() const
{
    return Send<int>(this, TB_GETROWS);
}

void CToolBarCtrl::SetRows(int nRows, BOOL bLarger, LPRECT lpRect)
{
    Send(this, TB_SETROWS, MAKEWPARAM(nRows, bLarger), lpRect);
}

BOOL CToolBarCtrl::SetMaxTextRows(int iMaxRows)
{
    return Send<BOOL>(this, TB_SETMAXTEXTROWS, iMaxRows);
}

int CToolBarCtrl::GetMaxTextRows() const
{
    return Send<int>(this, TB_GETTEXTROWS);
}

DWORD CToolBarCtrl::GetStyle() const
{
    return Send<DWORD>(this, TB_GETSTYLE);
}

void CToolBarCtrl::SetStyle(DWORD dwStyle)
{
    Send(this, TB_SETSTYLE, 0, dwStyle);
}

DWORD CToolBarCtrl::GetExtendedStyle() const
{
    return Send<DWORD>(this, TB_GETEXTENDEDSTYLE);
}

DWORD CToolBarCtrl::SetExtendedStyle(DWORD dwExStyle)
{
    return Send<DWORD>(this, TB_SETEXTENDEDSTYLE, 0, dwExStyle);
}

CImageList* CToolBarCtrl::GetImageList() const
{
    return CImageList::FromHandle(Send<HIMAGELIST>(this, TB_GETIMAGELIST));
}

CImageList* CToolBarCtrl::SetImageList(CImageList* pImageList)
{
    return ExchangeImages(TB_SETIMAGELIST, pImageList);
}

CImageList* CToolBarCtrl::GetHotImageList() const
{
    return CImageList::FromHandle(Send<HIMAGELIST>(this, TB_GETHOTIMAGELIST));
}

CImageList* CToolBarCtrl::SetHotImageList(CImageList* pImageList)
{
    return ExchangeImages(TB_SETHOTIMAGELIST, pImageList);
}

CImageList* CToolBarCtrl::GetDisabledImageList() const
{
    return CImageList::FromHandle(Send<HIMAGELIST>(this, TB_GETDISABLEDIMAGELIST));
}

CImageList* CToolBarCtrl::SetDisabledImageList(CImageList* pImageList)
{
    return ExchangeImages(TB_SETDISABLEDIMAGELIST, pImageList);
}

CToolTipCtrl* CToolBarCtrl::GetToolTips() const
{
    return static_cast<CToolTipCtrl*>(CWnd::FromHandle(Send<HWND>(this, TB_GETTOOLTIPS)));
}

void CToolBarCtrl::SetToolTips(CToolTipCtrl* pTip)
{
    Send(this, TB_SETTOOLTIPS, WindowOf(pTip));
}

void CToolBarCtrl::SetOwner(CWnd* pWnd)
{
    Send(this, TB_SETPARENT, WindowOf(pWnd));
}

int CToolBarCtrl::GetHotItem() const
{
    return Send<int>(this, TB_GETHOTITEM);
}

int CToolBarCtrl::SetHotItem(int nHot)
{
    return Send<int>(this, TB_SETHOTITEM, nHot);
}

BOOL CToolBarCtrl::GetAnchorHighlight() const
{
    return Send<BOOL>(this, TB_GETANCHORHIGHLIGHT);
}

BOOL CToolBarCtrl::SetAnchorHighlight(BOOL fAnchor)
{
    return Send<BOOL>(this, TB_SETANCHORHIGHLIGHT, fAnchor);
}

BOOL CToolBarCtrl::SetCmdID(int nIndex, UINT nID)
{
    return Send<BOOL>(this, TB_SETCMDID, nIndex, nID);
}

void CToolBarCtrl::SetButtonStructSize(int nSize)
{
    Send(this, TB_BUTTONSTRUCTSIZE, nSize);
}

DWORD CToolBarCtrl::SetDrawTextFlags(DWORD dwMask, DWORD dwDTFlags)
{
    return Send<DWORD>(this, TB_SETDRAWTEXTFLAGS, dwMask, dwDTFlags);
}

BOOL CToolBarCtrl::EnableButton(int nID, BOOL bEnable)
{
    return Send<BOOL>(this, TB_ENABLEBUTTON, nID, MAKELPARAM(bEnable, 0));
}

BOOL CToolBarCtrl::CheckButton(int nID, BOOL bCheck)
{
    return Send<BOOL>(this, TB_CHECKBUTTON, nID, MAKELPARAM(bCheck, 0));
}

BOOL CToolBarCtrl::PressButton(int nID, BOOL bPress)
{
    return Send<BOOL>(this, TB_PRESSBUTTON, nID, MAKELPARAM(bPress, 0));
}

BOOL CToolBarCtrl::HideButton(int nID, BOOL bHide)
{
    return Send<BOOL>(this, TB_HIDEBUTTON, nID, MAKELPARAM(bHide, 0));
}

BOOL CToolBarCtrl::Indeterminate(int nID, BOOL bIndeterminate)
{
    return Send<BOOL>(this, TB_INDETERMINATE, nID, MAKELPARAM(bIndeterminate, 0));
}

BOOL CToolBarCtrl::MarkButton(int nID, BOOL fHighlight)
{
    return Send<BOOL>(this, TB_MARKBUTTON, nID, MAKELPARAM(fHighlight, 0));
}

BOOL CToolBarCtrl::ChangeBitmap(int idButton, int iBitmap)
{
    return Send<BOOL>(this, TB_CHANGEBITMAP, idButton, MAKELPARAM(iBitmap, 0));
}

BOOL CToolBarCtrl::AddButtons(int nNumButtons, LPTBBUTTON lpButtons)
{
    return Send<BOOL>(this, TB_ADDBUTTONS, nNumButtons, lpButtons);
}

BOOL CToolBarCtrl::InsertButton(int nIndex, LPTBBUTTON lpButton)
{
    return Send<BOOL>(this, TB_INSERTBUTTON, nIndex, lpButton);
}

BOOL CToolBarCtrl::DeleteButton(int nIndex)
{
    return Send<BOOL>(this, TB_DELETEBUTTON, nIndex);
}

BOOL CToolBarCtrl::MoveButton(UINT nOldPos, UINT nNewPos)
{
    return Send<BOOL>(this, TB_MOVEBUTTON, nOldPos, nNewPos);
}

int CToolBarCtrl::AddStrings(LPCTSTR lpszStrings)
{
    return Send<int>(this, TB_ADDSTRING, 0, lpszStrings);
}

void CToolBarCtrl::AutoSize()
{
    Send(this, TB_AUTOSIZE);
}

int CToolBarCtrl::HitTest(LPPOINT ppt) const
{
    return Send<int>(this, TB_HITTEST, 0, ppt);
}

BOOL CToolBarCtrl::MapAccelerator(TCHAR chAccel, UINT* pIDBtn)
{
    return Send<BOOL>(this, TB_MAPACCELERATOR, chAccel, pIDBtn);
}

BOOL CToolBarCtrl::CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    if (!afx_subset::InitControlClasses(ICC_BAR_CLASSES) ||
        !CWnd::CreateEx(dwExStyle, TOOLBARCLASSNAME, nullptr, dwStyle, rect, pParentWnd, nID))
        return FALSE;
    SetButtonStructSize(sizeof(TBBUTTON));
    return TRUE;
}

CString CToolBarCtrl::GetButtonText(int idButton) const
{
    // Without a buffer the control answers the length.
    const auto length = Send<int>(this, TB_GETBUTTONTEXT, idButton);
    if (length <= 0)
        return CString();
    std::vector<TCHAR> text(static_cast<size_t>(length) + 1);
    Send(this, TB_GETBUTTONTEXT, idButton, text.data());
    return text.data();
}

CImageList* CToolBarCtrl::ExchangeImages(UINT message, CImageList* images)
{
    const HIMAGELIST list = images == nullptr ? nullptr : images->m_hImageList;
    return CImageList::FromHandle(Send<HIMAGELIST>(this, message, 0, list));
}

int CToolBarCtrl::AddBitmap(int nNumButtons, UINT nBitmapID)
{
    TBADDBITMAP addition = {AfxFindResourceHandle(MAKEINTRESOURCE(nBitmapID), RT_BITMAP), nBitmapID};
    return Send<int>(this, TB_ADDBITMAP, nNumButtons, &addition);
}

int CToolBarCtrl::AddBitmap(int nNumButtons, CBitmap* pBitmap)
{
    if (pBitmap == nullptr)
        return -1;
    TBADDBITMAP addition = {nullptr, reinterpret_cast<UINT_PTR>(pBitmap->m_hObject)};
    return Send<int>(this, TB_ADDBITMAP, nNumButtons, &addition);
}

int CToolBarCtrl::AddString(UINT nStringID)
{
    CString text;
    if (!text.LoadString(nStringID))
        return -1;
    // The list of strings ends with a terminator of its own.
    text.AppendChar(_T('\0'));
    return AddStrings(text);
}
