#include <afxcmn.h>

#include "common_control_classes.h"
#include "control_message.h"

using afx_subset::Send;

IMPLEMENT_DYNAMIC(CProgressCtrl, CWnd)

CProgressCtrl::~CProgressCtrl()
{
    DestroyWindow();
}

BOOL CProgressCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateEx(0, dwStyle, rect, pParentWnd, nID);
}

BOOL CProgressCtrl::CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return afx_subset::InitControlClasses(ICC_PROGRESS_CLASS) &&
           CWnd::CreateEx(dwExStyle, PROGRESS_CLASS, nullptr, dwStyle, rect, pParentWnd, nID);
}

void CProgressCtrl::SetRange(short nLower, short nUpper)
{
    Send(this, PBM_SETRANGE, 0, MAKELPARAM(nLower, nUpper));
}

void CProgressCtrl::SetRange32(int nLower, int nUpper)
{
    Send(this, PBM_SETRANGE32, nLower, nUpper);
}

int CProgressCtrl::GetPos()
{
    return Send<int>(this, PBM_GETPOS);
}

int CProgressCtrl::SetPos(int nPos)
{
    return Send<int>(this, PBM_SETPOS, nPos);
}

int CProgressCtrl::OffsetPos(int nPos)
{
    return Send<int>(this, PBM_DELTAPOS, nPos);
}

int CProgressCtrl::SetStep(int nStep)
{
    return Send<int>(this, PBM_SETSTEP, nStep);
}

int CProgressCtrl::StepIt()
{
    return Send<int>(this, PBM_STEPIT);
}

int CProgressCtrl::GetStep() const
{
    return Send<int>(this, PBM_GETSTEP);
}

COLORREF CProgressCtrl::SetBkColor(COLORREF clrNew)
{
    return Send<COLORREF>(this, PBM_SETBKCOLOR, 0, clrNew);
}

COLORREF CProgressCtrl::GetBkColor() const
{
    return Send<COLORREF>(this, PBM_GETBKCOLOR);
}

COLORREF CProgressCtrl::SetBarColor(COLORREF clrBar)
{
    return Send<COLORREF>(this, PBM_SETBARCOLOR, 0, clrBar);
}

COLORREF CProgressCtrl::GetBarColor() const
{
    return Send<COLORREF>(this, PBM_GETBARCOLOR);
}

BOOL CProgressCtrl::SetMarquee(BOOL fMarqueeMode, int nInterval)
{
    return Send<BOOL>(this, PBM_SETMARQUEE, fMarqueeMode, nInterval);
}

int CProgressCtrl::GetState() const
{
    return Send<int>(this, PBM_GETSTATE);
}

int CProgressCtrl::SetState(int iState)
{
    return Send<int>(this, PBM_SETSTATE, iState);
}

void CProgressCtrl::GetRange(int& nLower, int& nUpper)
{
    PBRANGE range = {};
    Send(this, PBM_GETRANGE, TRUE, &range);
    nLower = range.iLow;
    nUpper = range.iHigh;
}
