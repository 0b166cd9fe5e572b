// The frames around edit fields, lists and similar controls.
#pragma once

#include <afxwin.h>

// Both rings of an enabled control's frame, along the inside of rect.
void DrawControlFrame(CDC& dc, const CRect& rect, COLORREF frame);
// The same for a disabled control: a grey ring and one in the colour of the parent's background.
void DrawDisabledFrame(CDC& dc, CWnd& control, const CRect& rect);

// For WM_NCPAINT, after the default handling: paints a control's frame over the outermost two pixels of its
// window.
void PaintControlFrame(CWnd& control, COLORREF frame, bool enabled);

// Has the frame of a control painted again, as after a change of its state.
void InvalidateFrame(const CWnd& control);
