// The drop-down button of combo boxes and of the date and time control.
//
// All rectangles are in the coordinates of frame, the outer edge of the control's two-pixel frame: the client
// area of a combo box, the window of a date and time control.
#pragma once

#include <afxwin.h>

// The button itself, which is also where the mouse makes it hot.
CRect ComboFaceRect(const CRect& frame);
// The strip inside the outer ring on which the button lies.
CRect ComboStripRect(const CRect& frame);
// Where the arrow is drawn on a button.
CRect ComboArrowRect(const CRect& face);

// Fills the strip in white and draws the frame around all, then the button: hot turns its gradient round.
void DrawComboFace(CDC& dc, const CRect& frame, bool hot, COLORREF arrow);
// The same for a disabled control: no button.
void DrawDisabledComboFace(CDC& dc, CWnd& control, const CRect& frame);
