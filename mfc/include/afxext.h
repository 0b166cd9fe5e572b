// Extensions of the core. Programs that include this header by custom find the core and the common controls;
// of the control bars only the common base is there, bitmap buttons and splitters are left out.
#pragma once

#include <afxcmn.h>
#include <afxwin.h>

// The base of tool bars, status bars and dialog bars: a window class of its own, with the framework's layout
// of bars left out.
class AFX_SUBSET_API CControlBar : public CWnd
{
    DECLARE_DYNAMIC(CControlBar)

public:
    virtual ~CControlBar();

protected:
    CControlBar() = default;
};
