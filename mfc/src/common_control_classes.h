// Registration of the common controls' window classes.
#pragma once

#include <afxwin.h>
#include <commctrl.h>

namespace afx_subset
{

// Makes sure that the window classes of one family (one ICC_ flag) are there. FALSE when they cannot be had.
inline BOOL InitControlClasses(DWORD family)
{
    // Asking again for what is registered costs next to nothing, so no state is kept.
    const INITCOMMONCONTROLSEX request = {sizeof(request), family};
    return ::InitCommonControlsEx(&request);
}

} // namespace afx_subset
