// A control's persistent state when it is created.
#pragma once

#include <afxdisp.h>

namespace afx_subset
{

// Lets a control begin without a state. A control that keeps none is content with that.
HRESULT InitControlState(IUnknown* control);
// Loads what the control saved into a stream; the file's position is behind it afterwards.
HRESULT LoadControlStream(IUnknown* control, CFile& file);
// Loads what the control saved into a storage, which is the rest of the file. The control gets a copy.
HRESULT LoadControlStorage(IUnknown* control, CFile& file);

} // namespace afx_subset
