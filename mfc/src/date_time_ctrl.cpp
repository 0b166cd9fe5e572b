#include <afxdtctl.h>

#include "common_control_classes.h"
#include "control_message.h"

using afx_subset::Send;

IMPLEMENT_DYNAMIC(CDateTimeCtrl, CWnd)

CDateTimeCtrl::~CDateTimeCtrl()
{
    DestroyWindow();
}

BOOL CDateTimeCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return afx_subset::InitControlClasses(ICC_DATE_CLASSES) &&
           CWnd::Create(DATETIMEPICK_CLASS, nullptr, dwStyle, rect, pParentWnd, nID);
}

COLORREF CDateTimeCtrl::GetMonthCalColor(int iColor) const
{
    return Send<COLORREF>(this, DTM_GETMCCOLOR, iColor);
}

COLORREF CDateTimeCtrl::SetMonthCalColor(int iColor, COLORREF ref)
{
    return Send<COLORREF>(this, DTM_SETMCCOLOR, iColor, ref);
}

CFont* CDateTimeCtrl::GetMonthCalFont() const
{
    return CFont::FromHandle(Send<HFONT>(this, DTM_GETMCFONT));
}

void CDateTimeCtrl::SetMonthCalFont(HFONT hFont, BOOL bRedraw)
{
    Send(this, DTM_SETMCFONT, hFont, bRedraw);
}

DWORD CDateTimeCtrl::GetMonthCalStyle() const
{
    return Send<DWORD>(this, DTM_GETMCSTYLE);
}

DWORD CDateTimeCtrl::SetMonthCalStyle(DWORD dwStyle)
{
    return Send<DWORD>(this, DTM_SETMCSTYLE, 0, dwStyle);
}

void CDateTimeCtrl::CloseMonthCal() const
{
    Send(this, DTM_CLOSEMONTHCAL);
}

BOOL CDateTimeCtrl::SetFormat(LPCTSTR pstrFormat)
{
    return Send<BOOL>(this, DTM_SETFORMAT, 0, pstrFormat);
}

BOOL CDateTimeCtrl::SetTime(LPSYSTEMTIME pTimeNew)
{
    // Some versions of the control want memory behind the pointer also when nothing is chosen.
    SYSTEMTIME none = {};
    const DWORD choice = pTimeNew == nullptr ? GDT_NONE : GDT_VALID;
    return Send<BOOL>(this, DTM_SETSYSTEMTIME, choice, pTimeNew == nullptr ? &none : pTimeNew);
}

DWORD CDateTimeCtrl::GetRange(CTime* pMinRange, CTime* pMaxRange) const
{
    SYSTEMTIME limits[2] = {};
    const auto set = Send<DWORD>(this, DTM_GETRANGE, 0, limits);
    if ((set & GDTR_MIN) != 0 && pMinRange != nullptr)
        *pMinRange = CTime(limits[0]);
    if ((set & GDTR_MAX) != 0 && pMaxRange != nullptr)
        *pMaxRange = CTime(limits[1]);
    return set;
}

BOOL CDateTimeCtrl::SetRange(const CTime* pMinRange, const CTime* pMaxRange)
{
    SYSTEMTIME limits[2] = {};
    DWORD set = 0;
    if (pMinRange != nullptr && pMinRange->GetAsSystemTime(limits[0]))
        set |= GDTR_MIN;
    if (pMaxRange != nullptr && pMaxRange->GetAsSystemTime(limits[1]))
        set |= GDTR_MAX;
    return Send<BOOL>(this, DTM_SETRANGE, set, limits);
}

DWORD CDateTimeCtrl::GetTime(CTime& timeDest) const
{
    SYSTEMTIME time = {};
    const DWORD result = GetTime(&time);
    if (result == GDT_VALID)
        timeDest = CTime(time);
    return result;
}

DWORD CDateTimeCtrl::GetTime(LPSYSTEMTIME pTimeDest) const
{
    // The control writes also when nothing is chosen.
    SYSTEMTIME time = {};
    const auto result = Send<DWORD>(this, DTM_GETSYSTEMTIME, 0, &time);
    if (result == GDT_VALID && pTimeDest != nullptr)
        *pTimeDest = time;
    return result;
}

BOOL CDateTimeCtrl::SetTime(const CTime* pTimeNew)
{
    if (pTimeNew == nullptr)
        return SetTime(static_cast<LPSYSTEMTIME>(nullptr));
    SYSTEMTIME time = {};
    return pTimeNew->GetAsSystemTime(time) && SetTime(&time);
}
