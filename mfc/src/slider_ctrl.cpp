#include <afxcmn.h>

#include "common_control_classes.h"
#include "control_message.h"

using afx_subset::Send;
using afx_subset::WindowOf;

IMPLEMENT_DYNAMIC(CSliderCtrl, CWnd)

CSliderCtrl::~CSliderCtrl()
{
    DestroyWindow();
}

BOOL CSliderCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateEx(0, dwStyle, rect, pParentWnd, nID);
}

BOOL CSliderCtrl::CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return afx_subset::InitControlClasses(ICC_BAR_CLASSES) &&
           CWnd::CreateEx(dwExStyle, TRACKBAR_CLASS, nullptr, dwStyle, rect, pParentWnd, nID);
}

int CSliderCtrl::GetLineSize() const
{
    return Send<int>(this, TBM_GETLINESIZE);
}

int CSliderCtrl::SetLineSize(int nSize)
{
    return Send<int>(this, TBM_SETLINESIZE, 0, nSize);
}

int CSliderCtrl::GetPageSize() const
{
    return Send<int>(this, TBM_GETPAGESIZE);
}

int CSliderCtrl::SetPageSize(int nSize)
{
    return Send<int>(this, TBM_SETPAGESIZE, 0, nSize);
}

int CSliderCtrl::GetRangeMax() const
{
    return Send<int>(this, TBM_GETRANGEMAX);
}

int CSliderCtrl::GetRangeMin() const
{
    return Send<int>(this, TBM_GETRANGEMIN);
}

void CSliderCtrl::SetRangeMin(int nMin, BOOL bRedraw)
{
    Send(this, TBM_SETRANGEMIN, bRedraw, nMin);
}

void CSliderCtrl::SetRangeMax(int nMax, BOOL bRedraw)
{
    Send(this, TBM_SETRANGEMAX, bRedraw, nMax);
}

void CSliderCtrl::GetChannelRect(LPRECT lprc) const
{
    Send(this, TBM_GETCHANNELRECT, 0, lprc);
}

void CSliderCtrl::GetThumbRect(LPRECT lprc) const
{
    Send(this, TBM_GETTHUMBRECT, 0, lprc);
}

int CSliderCtrl::GetPos() const
{
    return Send<int>(this, TBM_GETPOS);
}

void CSliderCtrl::SetPos(int nPos)
{
    Send(this, TBM_SETPOS, TRUE, nPos);
}

UINT CSliderCtrl::GetNumTics() const
{
    return Send<UINT>(this, TBM_GETNUMTICS);
}

DWORD* CSliderCtrl::GetTicArray() const
{
    return Send<DWORD*>(this, TBM_GETPTICS);
}

int CSliderCtrl::GetTic(int nTic) const
{
    return Send<int>(this, TBM_GETTIC, nTic);
}

int CSliderCtrl::GetTicPos(int nTic) const
{
    return Send<int>(this, TBM_GETTICPOS, nTic);
}

BOOL CSliderCtrl::SetTic(int nTic)
{
    return Send<BOOL>(this, TBM_SETTIC, 0, nTic);
}

void CSliderCtrl::SetTicFreq(int nFreq)
{
    Send(this, TBM_SETTICFREQ, nFreq);
}

int CSliderCtrl::GetThumbLength() const
{
    return Send<int>(this, TBM_GETTHUMBLENGTH);
}

void CSliderCtrl::SetThumbLength(int nLength)
{
    Send(this, TBM_SETTHUMBLENGTH, nLength);
}

CWnd* CSliderCtrl::GetBuddy(BOOL fLocation) const
{
    return CWnd::FromHandle(Send<HWND>(this, TBM_GETBUDDY, fLocation));
}

CWnd* CSliderCtrl::SetBuddy(CWnd* pWndBuddy, BOOL fLocation)
{
    return CWnd::FromHandle(Send<HWND>(this, TBM_SETBUDDY, fLocation, WindowOf(pWndBuddy)));
}

CToolTipCtrl* CSliderCtrl::GetToolTips() const
{
    return static_cast<CToolTipCtrl*>(CWnd::FromHandle(Send<HWND>(this, TBM_GETTOOLTIPS)));
}

void CSliderCtrl::SetToolTips(CToolTipCtrl* pWndTip)
{
    Send(this, TBM_SETTOOLTIPS, WindowOf(pWndTip));
}

int CSliderCtrl::SetTipSide(int nLocation)
{
    return Send<int>(this, TBM_SETTIPSIDE, nLocation);
}

void CSliderCtrl::ClearSel(BOOL bRedraw)
{
    Send(this, TBM_CLEARSEL, bRedraw);
}

void CSliderCtrl::ClearTics(BOOL bRedraw)
{
    Send(this, TBM_CLEARTICS, bRedraw);
}

void CSliderCtrl::GetRange(int& nMin, int& nMax) const
{
    nMin = GetRangeMin();
    nMax = GetRangeMax();
}

void CSliderCtrl::SetRange(int nMin, int nMax, BOOL bRedraw)
{
    // TBM_SETRANGE would cut the limits to 16 bits.
    SetRangeMin(nMin, FALSE);
    SetRangeMax(nMax, bRedraw);
}

void CSliderCtrl::GetSelection(int& nMin, int& nMax) const
{
    nMin = Send<int>(this, TBM_GETSELSTART);
    nMax = Send<int>(this, TBM_GETSELEND);
}

void CSliderCtrl::SetSelection(int nMin, int nMax)
{
    // TBM_SETSEL would cut the limits to 16 bits.
    Send(this, TBM_SETSELSTART, FALSE, nMin);
    Send(this, TBM_SETSELEND, TRUE, nMax);
}
