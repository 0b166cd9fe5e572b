// What the owner-drawn buttons share: painting on the screen without flicker and with the parent's background
// where they paint nothing themselves, and following the mouse.
#pragma once

#include <afxwin.h>
#include <functional>

// Paints what the control's parent has below the control on dc, whose origin is the control's client area's.
void PaintParentBackground(CWnd& control, CDC& dc);

// Calls draw with an item whose device context is an off-screen picture of the parent's background, and shows
// the result.
void DrawItemOverParent(CWnd& control, const DRAWITEMSTRUCT& item,
                        const std::function<void(DRAWITEMSTRUCT&)>& draw);

// Sets hot, repaints the control and asks for WM_MOUSELEAVE; nothing while it is hot.
void BeginHot(CWnd& control, BOOL& hot);
// Clears hot and repaints the control; nothing unless it is hot.
void EndHot(CWnd& control, BOOL& hot);
