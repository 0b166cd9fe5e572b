// The date and time picker.
//
// Times are exchanged as SYSTEMTIME or CTime; ranges as CTime. Left out are the members that take a
// COleDateTime and the month calendar's own class: its window is reached by DTM_GETMONTHCAL.
#pragma once

#include <afxwin.h>
#include <commctrl.h>

// Lets the user choose a date or a time. Times are local.
class AFX_SUBSET_API CDateTimeCtrl : public CWnd
{
    DECLARE_DYNAMIC(CDateTimeCtrl)

public:
    CDateTimeCtrl() = default;
    ~CDateTimeCtrl() override;
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    // MCSC_ constants.
    COLORREF GetMonthCalColor(int iColor) const;
    COLORREF SetMonthCalColor(int iColor, COLORREF ref);
    CFont* GetMonthCalFont() const;
    // The font stays the caller's.
    void SetMonthCalFont(HFONT hFont, BOOL bRedraw = TRUE);
    DWORD GetMonthCalStyle() const;
    DWORD SetMonthCalStyle(DWORD dwStyle);
    void CloseMonthCal() const;
    // Null restores the format of the style.
    BOOL SetFormat(LPCTSTR pstrFormat);

    // GDTR_MIN and GDTR_MAX in the answer tell which limits are set; only those are written. Null pointers
    // are skipped.
    DWORD GetRange(CTime* pMinRange, CTime* pMaxRange) const;
    // A null pointer removes the limit.
    BOOL SetRange(const CTime* pMinRange, const CTime* pMaxRange);
    // GDT_VALID, or GDT_NONE (nothing chosen) or GDT_ERROR; the time is written only for GDT_VALID.
    DWORD GetTime(CTime& timeDest) const;
    DWORD GetTime(LPSYSTEMTIME pTimeDest) const;
    // Null chooses nothing; needs DTS_SHOWNONE.
    BOOL SetTime(const CTime* pTimeNew);
    BOOL SetTime(LPSYSTEMTIME pTimeNew = nullptr);
};
