// Dialog data exchange that knows the library's check boxes and radio buttons as well as the standard ones.
#pragma once

#include "vgui/export.h"

#include <afxwin.h>

// Exchanges a check box's state: 0 or 1, for a standard one also 2. As DDX_Check, throws when the dialog has
// no such control.
VGUI_API void VGDDX_Check(CDataExchange* pDX, int nIDC, int& value);

// Exchanges the index of the checked radio button in the group that begins with the control nIDC and ends
// before the next one with WS_GROUP; -1 for none. Library and standard radio buttons count alike, other
// controls do not. As DDX_Radio, throws when the dialog has no such control.
VGUI_API void VGDDX_Radio(CDataExchange* pDX, int nIDC, int& value);

// Checks the library radio button nCheckID, which unchecks the rest of its group. Nothing happens when the id
// does not lie in the range (both ends belong to it) or is not such a button's, or without a parent.
VGUI_API void VGCheckRB(CWnd* parent, UINT nFirstID, UINT nLastID, UINT nCheckID);

// The lowest id in the range whose control is a checked library radio button; 0 for none or no parent.
VGUI_API int VGGetCRB(CWnd* parent, UINT nFirstID, UINT nLastID);
