// Following the mouse: a flag that is set while it is over a control or one of its parts.
#pragma once

#include <afxwin.h>

// Sets hot, repaints the control and asks for WM_MOUSELEAVE, unless it isTracked: the message has been asked
// for already. Nothing while it is hot.
void BeginHot(CWnd& control, BOOL& hot, BOOL isTracked = FALSE);
// Clears hot and repaints the control; nothing unless it is hot.
void EndHot(CWnd& control, BOOL& hot);
// The one or the other.
void SetHot(CWnd& control, BOOL& hot, bool now);
