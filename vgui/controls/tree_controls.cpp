#include "vgui/controls/tree_controls.h"

#include "vgui/controls/control_frame.h"
#include "vgui/foundation/buffered_dc.h"
#include "vgui/foundation/gui_manager.h"

IMPLEMENT_DYNAMIC(VTreeCtrl, CTreeCtrl)

BEGIN_MESSAGE_MAP(VTreeCtrl, CTreeCtrl)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_NCPAINT()
    ON_WM_ENABLE()
    ON_WM_MOUSEMOVE()
    ON_WM_MOUSELEAVE()
    ON_NOTIFY_REFLECT(NM_CUSTOMDRAW, &VTreeCtrl::OnCustomDraw)
END_MESSAGE_MAP()

// What the mouse did at the object's former window does not count.
void VTreeCtrl::PreSubclassWindow()
{
    m_hHot = nullptr;
    m_bTracking = false;
    CTreeCtrl::PreSubclassWindow();
}

void VTreeCtrl::OnPaint()
{
    CPaintDC target(this);
    VBufferedDC dc(target, target.m_ps.rcPaint);
    // Not every version of the control fills what lies below its last item.
    DefWindowProc(WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc.m_hDC), 0);
    DefWindowProc(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc.m_hDC), PRF_ERASEBKGND | PRF_CLIENT);
}

// The buffered picture has its background already.
BOOL VTreeCtrl::OnEraseBkgnd(CDC* /*pDC*/)
{
    return TRUE;
}

void VTreeCtrl::OnNcPaint()
{
    Default();
    if ((GetStyle() & WS_BORDER) == 0 && (GetExStyle() & WS_EX_CLIENTEDGE) == 0)
        return;
    CRect rect;
    CRect client;
    GetWindowRect(rect);
    GetClientRect(client);
    ClientToScreen(client);
    client.OffsetRect(-rect.TopLeft());
    rect.MoveToXY(0, 0);

    CWindowDC dc(this);
    dc.ExcludeClipRect(client); // a border of one pixel has no room for the inner ring
    if (IsWindowEnabled())
        DrawControlFrame(dc, rect, VGM.List.clrFrame);
    else
        DrawDisabledFrame(dc, *this, rect);
}

void VTreeCtrl::OnEnable(BOOL bEnable)
{
    CTreeCtrl::OnEnable(bEnable);
    InvalidateFrame(*this);
}

void VTreeCtrl::OnMouseMove(UINT nFlags, CPoint point)
{
    CTreeCtrl::OnMouseMove(nFlags, point);
    UINT flags = 0;
    const HTREEITEM item = HitTest(point, &flags);
    SetHotItem((flags & TVHT_ONITEM) != 0 ? item : nullptr);
    if (!m_bTracking) {
        TRACKMOUSEEVENT leave{sizeof(leave), TME_LEAVE, m_hWnd, 0};
        m_bTracking = ::TrackMouseEvent(&leave) != FALSE;
    }
}

void VTreeCtrl::OnMouseLeave()
{
    m_bTracking = false;
    SetHotItem(nullptr);
    Default();
}

// Before the message maps, where a derived class may have a handler of its own.
BOOL VTreeCtrl::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (message == WM_NOTIFY) {
        const auto& told = *reinterpret_cast<const NMTREEVIEW*>(lParam);
        if (told.hdr.code == TVN_DELETEITEM && told.itemOld.hItem == m_hHot)
            m_hHot = nullptr;
    }
    return CTreeCtrl::OnChildNotify(message, wParam, lParam, pResult);
}

void VTreeCtrl::SetHotItem(HTREEITEM item)
{
    if (item == m_hHot)
        return;
    InvalidateLabel(m_hHot);
    m_hHot = item;
    InvalidateLabel(m_hHot);
}

void VTreeCtrl::InvalidateLabel(HTREEITEM item)
{
    CRect label;
    if (GetItemRect(item, label, TRUE))
        InvalidateRect(label);
}

void VTreeCtrl::OnCustomDraw(NMHDR* pNMHDR, LRESULT* pResult)
{
    auto& draw = *reinterpret_cast<NMTVCUSTOMDRAW*>(pNMHDR);
    const auto item = reinterpret_cast<HTREEITEM>(draw.nmcd.dwItemSpec);
    *pResult = CDRF_DODEFAULT;
    switch (draw.nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
        *pResult = CDRF_NOTIFYITEMDRAW;
        break;
    case CDDS_ITEMPREPAINT:
        // Not every version of the control leaves out what does not need painting.
        if (!::RectVisible(draw.nmcd.hdc, &draw.nmcd.rc)) {
            *pResult = CDRF_SKIPDEFAULT;
            break;
        }
        ChooseColors(draw);
        if (item == m_hHot && IsWindowEnabled())
            *pResult = CDRF_NOTIFYPOSTPAINT;
        break;
    case CDDS_ITEMPOSTPAINT: {
        CRect label;
        if (GetItemRect(item, label, TRUE))
            CDC::FromHandle(draw.nmcd.hdc)->Draw3dRect(label, VGM.Common.clrHot, VGM.Common.clrHot);
        break;
    }
    default:
        break;
    }
}

void VTreeCtrl::ChooseColors(NMTVCUSTOMDRAW& draw) const
{
    const auto item = reinterpret_cast<HTREEITEM>(draw.nmcd.dwItemSpec);
    const UINT state = GetItemState(item, TVIS_SELECTED | TVIS_DROPHILITED);
    const bool enabled = IsWindowEnabled() != FALSE;
    const bool focused = ::GetFocus() == m_hWnd;
    const bool dropTarget = (state & TVIS_DROPHILITED) != 0;
    if (enabled && (dropTarget || ((state & TVIS_SELECTED) != 0 && focused))) {
        draw.clrTextBk = VGM.PropList.clrSelBk;
        draw.clrText = VGM.PropList.clrSelText;
        return;
    }
    if ((state & TVIS_SELECTED) != 0 && (GetStyle() & TVS_SHOWSELALWAYS) != 0) {
        draw.clrTextBk = VGM.Common.clrLight;
        draw.clrText = VGM.Dlg.clrText;
    }
    if (!enabled)
        draw.clrText = VGM.Common.clrGray;
}
