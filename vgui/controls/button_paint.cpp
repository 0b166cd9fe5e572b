#include "vgui/controls/button_paint.h"

#include "vgui/foundation/buffered_dc.h"
#include "vgui/foundation/draw_helpers.h"

void PaintParentBackground(CWnd& control, CDC& dc)
{
    const HWND parent = ::GetParent(control.GetSafeHwnd());
    if (parent == nullptr)
        return;
    CRect client;
    control.GetClientRect(client);
    CPoint origin;
    ::MapWindowPoints(control.m_hWnd, parent, &origin, 1);

    // The parent paints as if on its own client area, patterns included.
    const auto wParam = reinterpret_cast<WPARAM>(dc.m_hDC);
    const int saved = dc.SaveDC();
    dc.OffsetViewportOrg(-origin.x, -origin.y);
    CPoint parentOrigin(0, 0);
    dc.LPtoDP(&parentOrigin);
    dc.SetBrushOrg(parentOrigin);
    const bool erased = ::SendMessage(parent, WM_ERASEBKGND, wParam, 0) != 0;
    if (!erased)
        dc.FillSolidRect(CRect(origin, client.Size()), VGGetParentBkColor(&control));
    ::SendMessage(parent, WM_PRINTCLIENT, wParam, PRF_CLIENT);
    dc.RestoreDC(saved);
}

void DrawItemOverParent(CWnd& control, const DRAWITEMSTRUCT& item,
                        const std::function<void(DRAWITEMSTRUCT&)>& draw)
{
    VBufferedDC dc(*CDC::FromHandle(item.hDC), item.rcItem, VBufferedDC::Start::Target);
    PaintParentBackground(control, dc);
    DRAWITEMSTRUCT buffered = item;
    buffered.hDC = dc.m_hDC;
    draw(buffered);
}

CString TextOf(const CWnd& window)
{
    CString text;
    window.GetWindowText(text);
    return text;
}
