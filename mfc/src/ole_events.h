#pragma once

#include <afxdisp.h>

namespace afx_subset
{

// Calls the first handler of the map and its bases that fits: among the reflected entries, or among those for
// the control's id. S_FALSE when there is none or it declines.
HRESULT DispatchEvent(CCmdTarget* target, const AFX_EVENTSINKMAP* map, BOOL reflected, UINT idCtrl,
                      DISPID dispid, const DISPPARAMS& params);

} // namespace afx_subset
