#include "vgui/controls/control_frame.h"

#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gui_manager.h"

void DrawControlFrame(CDC& dc, const CRect& rect, COLORREF frame)
{
    VGDraw3dCtrlFrame(&dc, rect, frame, VGM.Common.nCtrlFrameFade, 0);
}

void DrawDisabledFrame(CDC& dc, CWnd& control, const CRect& rect)
{
    const COLORREF background = VGGetParentBkColor(&control);
    CRect inner = rect;
    inner.DeflateRect(1, 1);
    dc.Draw3dRect(rect, VGM.Common.clrGray, VGM.Common.clrGray);
    dc.Draw3dRect(inner, background, background);
}

void PaintControlFrame(CWnd& control, COLORREF frame, bool enabled)
{
    CWindowDC dc(&control);
    CRect rect;
    control.GetWindowRect(rect);
    rect.OffsetRect(-rect.TopLeft());
    if (enabled)
        DrawControlFrame(dc, rect, frame);
    else
        DrawDisabledFrame(dc, control, rect);
}

void InvalidateFrame(const CWnd& control)
{
    ::RedrawWindow(control.m_hWnd, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME);
}
