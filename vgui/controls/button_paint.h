// What the self-drawn buttons share: painting on the screen without flicker and with the parent's background
// where they paint nothing themselves.
#pragma once

#include <afxwin.h>
#include <functional>

// Paints what the control's parent has below the control on dc, whose origin is the control's client area's.
void PaintParentBackground(CWnd& control, CDC& dc);

// Calls draw with an item whose device context is an off-screen picture of the parent's background, and shows
// the result.
void DrawItemOverParent(CWnd& control, const DRAWITEMSTRUCT& item,
                        const std::function<void(DRAWITEMSTRUCT&)>& draw);

// A window's text, whole.
CString TextOf(const CWnd& window);
