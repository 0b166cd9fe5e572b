// The date and time control in the shared look.
#pragma once

#include "vgui/controls/spin_button_ctrl.h"
#include "vgui/export.h"

#include <afxdtctl.h>

// A date and time control with the frame and the drop-down button of the combo box: the button turns round
// under the mouse and while the calendar is open, and is not shown while the control is disabled. With
// arrows instead of a calendar (DTS_UPDOWN) the arrows are those of VSpinButtonCtrl.
class VGUI_API VDateTimeCtrl : public CDateTimeCtrl
{
    DECLARE_DYNAMIC(VDateTimeCtrl)

public:
    VDateTimeCtrl() = default;

protected:
    // Paints the whole client area.
    void Draw(CDC& dc);
    // The outer edge of the frame, client coordinates.
    CRect GetFrameRect() const;

    void PreSubclassWindow() override;
    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg void OnStyleChanged(int nStyleType, LPSTYLESTRUCT lpStyleStruct);
    afx_msg void OnNcPaint();
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg void OnEnable(BOOL bEnable);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnMouseLeave();
    afx_msg LRESULT OnPrintClient(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

    BOOL m_bHover = FALSE;  // the mouse is on the button
    VSpinButtonCtrl m_spin; // the arrows, if there are any

private:
    [[nodiscard]] bool HasButton() const { return (GetStyle() & DTS_UPDOWN) == 0; }
    [[nodiscard]] bool IsOpen() const;
    void AttachArrows();
};
