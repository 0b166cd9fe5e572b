#include "vgui/controls/hot_tracking.h"

void BeginHot(CWnd& control, BOOL& hot, BOOL isTracked)
{
    if (hot)
        return;
    hot = TRUE;
    control.Invalidate();
    if (isTracked)
        return;
    TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, control.m_hWnd, 0};
    ::TrackMouseEvent(&track);
}

void EndHot(CWnd& control, BOOL& hot)
{
    if (!hot)
        return;
    hot = FALSE;
    control.Invalidate();
}

void SetHot(CWnd& control, BOOL& hot, bool now)
{
    if (now)
        BeginHot(control, hot);
    else
        EndHot(control, hot);
}
