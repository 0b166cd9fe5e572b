#include <afxcmn.h>

#include "common_control_classes.h"
#include "control_message.h"

using afx_subset::Send;
using afx_subset::WindowOf;

IMPLEMENT_DYNAMIC(CSpinButtonCtrl, CWnd)

CSpinButtonCtrl::~CSpinButtonCtrl()
{
    DestroyWindow();
}

BOOL CSpinButtonCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateEx(0, dwStyle, rect, pParentWnd, nID);
}

BOOL CSpinButtonCtrl::CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return afx_subset::InitControlClasses(ICC_UPDOWN_CLASS) &&
           CWnd::CreateEx(dwExStyle, UPDOWN_CLASS, nullptr, dwStyle, rect, pParentWnd, nID);
}

BOOL CSpinButtonCtrl::SetAccel(int nAccel, UDACCEL* pAccel)
{
    return Send<BOOL>(this, UDM_SETACCEL, nAccel, pAccel);
}

UINT CSpinButtonCtrl::GetAccel(int nAccel, UDACCEL* pAccel) const
{
    return Send<UINT>(this, UDM_GETACCEL, nAccel, pAccel);
}

int CSpinButtonCtrl::SetBase(int nBase)
{
    return Send<int>(this, UDM_SETBASE, nBase);
}

UINT CSpinButtonCtrl::GetBase() const
{
    return Send<UINT>(this, UDM_GETBASE);
}

CWnd* CSpinButtonCtrl::SetBuddy(CWnd* pWndBuddy)
{
    return CWnd::FromHandle(Send<HWND>(this, UDM_SETBUDDY, WindowOf(pWndBuddy)));
}

CWnd* CSpinButtonCtrl::GetBuddy() const
{
    return CWnd::FromHandle(Send<HWND>(this, UDM_GETBUDDY));
}

int CSpinButtonCtrl::SetPos(int nPos)
{
    return Send<int>(this, UDM_SETPOS, 0, MAKELPARAM(nPos, 0));
}

int CSpinButtonCtrl::GetPos() const
{
    return Send<int>(this, UDM_GETPOS);
}

int CSpinButtonCtrl::SetPos32(int nPos)
{
    return Send<int>(this, UDM_SETPOS32, 0, nPos);
}

int CSpinButtonCtrl::GetPos32(LPBOOL lpbError) const
{
    return Send<int>(this, UDM_GETPOS32, 0, lpbError);
}

void CSpinButtonCtrl::SetRange(short nLower, short nUpper)
{
    Send(this, UDM_SETRANGE, 0, MAKELPARAM(nUpper, nLower));
}

DWORD CSpinButtonCtrl::GetRange() const
{
    return Send<DWORD>(this, UDM_GETRANGE);
}

void CSpinButtonCtrl::SetRange32(int nLower, int nUpper)
{
    Send(this, UDM_SETRANGE32, nLower, nUpper);
}

void CSpinButtonCtrl::GetRange32(int& lower, int& upper) const
{
    Send(this, UDM_GETRANGE32, &lower, &upper);
}

void CSpinButtonCtrl::GetRange(int& lower, int& upper) const
{
    const DWORD packed = GetRange();
    lower = static_cast<short>(HIWORD(packed));
    upper = static_cast<short>(LOWORD(packed));
}
