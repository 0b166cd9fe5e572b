#include "control_message.h"

using afx_subset::Send;

IMPLEMENT_DYNAMIC(CButton, CWnd)

CButton::~CButton()
{
    DestroyWindow();
}

BOOL CButton::Create(LPCTSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create(WC_BUTTON, lpszCaption, dwStyle, rect, pParentWnd, nID);
}

UINT CButton::GetState() const
{
    return Send<UINT>(this, BM_GETSTATE);
}

void CButton::SetState(BOOL bHighlight)
{
    Send(this, BM_SETSTATE, bHighlight);
}

int CButton::GetCheck() const
{
    return Send<int>(this, BM_GETCHECK);
}

void CButton::SetCheck(int nCheck)
{
    Send(this, BM_SETCHECK, nCheck);
}

UINT CButton::GetButtonStyle() const
{
    return static_cast<UINT>(::GetWindowLongPtr(m_hWnd, GWL_STYLE)) & BS_TYPEMASK;
}

void CButton::SetButtonStyle(UINT nStyle, BOOL bRedraw)
{
    Send(this, BM_SETSTYLE, nStyle, bRedraw);
}

HICON CButton::SetIcon(HICON hIcon)
{
    return Send<HICON>(this, BM_SETIMAGE, IMAGE_ICON, hIcon);
}

HICON CButton::GetIcon() const
{
    return Send<HICON>(this, BM_GETIMAGE, IMAGE_ICON);
}

HBITMAP CButton::SetBitmap(HBITMAP hBitmap)
{
    return Send<HBITMAP>(this, BM_SETIMAGE, IMAGE_BITMAP, hBitmap);
}

HBITMAP CButton::GetBitmap() const
{
    return Send<HBITMAP>(this, BM_GETIMAGE, IMAGE_BITMAP);
}

HCURSOR CButton::SetCursor(HCURSOR hCursor)
{
    return Send<HCURSOR>(this, BM_SETIMAGE, IMAGE_CURSOR, hCursor);
}

HCURSOR CButton::GetCursor()
{
    return Send<HCURSOR>(this, BM_GETIMAGE, IMAGE_CURSOR);
}

BOOL CButton::GetIdealSize(SIZE* psize)
{
    return Send<BOOL>(this, BCM_GETIDEALSIZE, 0, psize);
}

BOOL CButton::SetImageList(PBUTTON_IMAGELIST pbuttonImagelist)
{
    return Send<BOOL>(this, BCM_SETIMAGELIST, 0, pbuttonImagelist);
}

BOOL CButton::GetImageList(PBUTTON_IMAGELIST pbuttonImagelist)
{
    return Send<BOOL>(this, BCM_GETIMAGELIST, 0, pbuttonImagelist);
}

BOOL CButton::SetTextMargin(RECT* pmargin)
{
    return Send<BOOL>(this, BCM_SETTEXTMARGIN, 0, pmargin);
}

BOOL CButton::GetTextMargin(RECT* pmargin)
{
    return Send<BOOL>(this, BCM_GETTEXTMARGIN, 0, pmargin);
}

BOOL CButton::SetElevationRequired(BOOL fElevationRequired)
{
    return Send<BOOL>(this, BCM_SETSHIELD, 0, fElevationRequired);
}

void CButton::DrawItem(LPDRAWITEMSTRUCT /*lpDrawItemStruct*/) {}

BOOL CButton::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (message != WM_DRAWITEM)
        return CWnd::OnChildNotify(message, wParam, lParam, pResult);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    return TRUE;
}
