// What a control may ask of the dialog it stands on, without knowing the dialog's class.
#pragma once

#include "vgui/export.h"

#include <afxwin.h>

class CToolTipCtrl;

// Implemented by VGuiDlg. Lives in the dialog object; nobody owns it through this interface.
class VGUI_API VSkinHost
{
public:
    // The dialog's background colour.
    virtual COLORREF GetBkClr() const = 0;

    // The text colour set for the control with this id. False, and clr untouched, when there is none.
    virtual bool GetSetCtrlClr(UINT nID, COLORREF& clr) = 0;

    // The dialog's tooltip control; it has no window before the dialog's OnInitDialog and after its
    // WM_DESTROY.
    virtual CToolTipCtrl& GetToolTipCtrl() = 0;

    // Gives a control of the dialog a tooltip and marks it by the tip's text colour. False when there is
    // no such control, or no tooltip control yet.
    virtual bool AddToolTips(UINT nID, const CString& text) = 0;
    virtual bool AddToolTips(CWnd* pWnd, const CString& text) = 0;

    // The dialog that is the control's parent (for a popup window: its owner). Null when control is null
    // or has no window, or when the parent is no VGuiDlg. The answer is good as long as the parent lives.
    static VSkinHost* Of(const CWnd* control);

protected:
    VSkinHost() = default;
    VSkinHost(const VSkinHost&) = default;
    VSkinHost& operator=(const VSkinHost&) = default;
    ~VSkinHost() = default;
};
