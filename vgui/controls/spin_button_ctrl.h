// The spin button in the shared look.
#pragma once

#include "vgui/export.h"

#include <afxcmn.h>

// A pair of arrows, one above the other or side by side (UDS_HORZ), that draws itself: shaded halves, turned
// round under the mouse, dark while pressed, flat and grey while disabled. What the arrows do, and their
// keys, is the stock control's.
class VGUI_API VSpinButtonCtrl : public CSpinButtonCtrl
{
    DECLARE_DYNAMIC(VSpinButtonCtrl)

public:
    // The arrow that counts up is the upper or the right one.
    enum class Part { None, Up, Down };

    VSpinButtonCtrl() = default;

    // The half of a control's area that belongs to an arrow. Empty for None.
    static CRect PartRect(const CRect& area, bool horizontal, Part part);

protected:
    // Paints the whole client area.
    void Draw(CDC& dc);

    void PreSubclassWindow() override;
    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnMouseLeave();
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnCaptureChanged(CWnd* pWnd);
    afx_msg void OnEnable(BOOL bEnable);
    afx_msg LRESULT OnPrintClient(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

    Part m_nHot = Part::None;     // under the mouse
    Part m_nPressed = Part::None; // on which the mouse button went down

private:
    [[nodiscard]] bool IsHorizontal() const { return (GetStyle() & UDS_HORZ) != 0; }
    [[nodiscard]] Part PartAt(CPoint point) const;
    void DrawPart(CDC& dc, const CRect& room, Part part);
    void SetState(Part hot, Part pressed);
};
