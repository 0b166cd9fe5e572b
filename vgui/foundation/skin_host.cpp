#include "vgui/foundation/skin_host.h"

VSkinHost* VSkinHost::Of(const CWnd* control)
{
    const HWND window = control == nullptr ? nullptr : control->m_hWnd;
    if (!::IsWindow(window))
        return nullptr;
    // Only an object that was attached to its window can be a host, so no temporary is made; and asking
    // the object for the interface keeps the controls free of the dialog's class.
    return dynamic_cast<VSkinHost*>(CWnd::FromHandlePermanent(::GetParent(window)));
}
