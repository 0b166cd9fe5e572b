// Whether a control survived what it told others.
#pragma once

#include <afxwin.h>

// Whether an object still is attached to the window that it had before it called code of the host, who may
// have closed the window and freed the object. Safe after the object's end, since only the pointer's value is
// used. False for a null window.
inline bool VGIsAttached(const CWnd* object, HWND window)
{
    return window != nullptr && CWnd::FromHandlePermanent(window) == object;
}
