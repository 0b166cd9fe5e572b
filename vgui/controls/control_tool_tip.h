// The tooltip that a control keeps for itself where its dialog has none to lend.
#pragma once

#include <afxcmn.h>

// Gives tip its window unless it has one: deactivated, at most 400 pixels wide. False when there is none
// afterwards, as for a control without a window.
bool CreateControlTip(CToolTipCtrl& tip, CWnd& control);

// For the control's WM_DESTROY: the tip belongs to the control's top-level window and would outlive it.
void DestroyControlTip(CToolTipCtrl& tip);

// Sets the text that the tip shows over the whole control, creating the tip if need be, and activates or
// deactivates it.
void SetControlTip(CToolTipCtrl& tip, CWnd& control, LPCWSTR text, BOOL activate);

// Activates or deactivates a tip that has a text; nothing otherwise.
void ActivateControlTip(CToolTipCtrl& tip, BOOL activate);

// For the control's PreTranslateMessage: shows the tip the message and activates it while the message's point
// lies in the control's client area, deactivates it elsewhere.
void RelayToControlTip(CToolTipCtrl& tip, const CWnd& control, MSG& message);
