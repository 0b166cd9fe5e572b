#include "vgui/controls/date_time_ctrl.h"

#include "vgui/controls/combo_button.h"
#include "vgui/controls/control_frame.h"
#include "vgui/controls/hot_tracking.h"
#include "vgui/foundation/buffered_dc.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gui_manager.h"

IMPLEMENT_DYNAMIC(VDateTimeCtrl, CDateTimeCtrl)

BEGIN_MESSAGE_MAP(VDateTimeCtrl, CDateTimeCtrl)
    ON_WM_CREATE()
    ON_WM_STYLECHANGED()
    ON_WM_NCPAINT()
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_ENABLE()
    ON_WM_MOUSEMOVE()
    ON_WM_MOUSELEAVE()
    ON_MESSAGE(WM_PRINTCLIENT, &VDateTimeCtrl::OnPrintClient)
END_MESSAGE_MAP()

void VDateTimeCtrl::PreSubclassWindow()
{
    m_bHover = FALSE;          // it may have been on when the object's former window went
    m_spin.UnsubclassWindow(); // or has stayed without this object
    CDateTimeCtrl::PreSubclassWindow();
    AttachArrows();
}

int VDateTimeCtrl::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    const int result = CDateTimeCtrl::OnCreate(lpCreateStruct);
    AttachArrows();
    return result;
}

void VDateTimeCtrl::OnStyleChanged(int nStyleType, LPSTYLESTRUCT lpStyleStruct)
{
    CDateTimeCtrl::OnStyleChanged(nStyleType, lpStyleStruct);
    AttachArrows();
}

// The stock control makes the arrows, as a child, when it is created or gets the style. They are enabled
// then, whatever the control is.
void VDateTimeCtrl::AttachArrows()
{
    const HWND arrows = ::FindWindowExW(m_hWnd, nullptr, UPDOWN_CLASSW, nullptr);
    if (arrows != nullptr && CWnd::FromHandlePermanent(arrows) == nullptr && m_spin.SubclassWindow(arrows))
        m_spin.EnableWindow(IsWindowEnabled());
}

CRect VDateTimeCtrl::GetFrameRect() const
{
    CRect frame;
    GetWindowRect(frame);
    ScreenToClient(frame);
    return frame;
}

void VDateTimeCtrl::OnNcPaint()
{
    CDateTimeCtrl::OnNcPaint();
    if ((GetExStyle() & WS_EX_CLIENTEDGE) != 0)
        PaintControlFrame(*this, VGM.Combo.clrFrame, IsWindowEnabled() != FALSE);
}

BOOL VDateTimeCtrl::OnEraseBkgnd(CDC*)
{
    return TRUE;
}

void VDateTimeCtrl::OnPaint()
{
    CPaintDC dc(this);
    CRect client;
    GetClientRect(client);
    VBufferedDC buffer(dc, client, VBufferedDC::Start::Target);
    Draw(buffer);
}

LRESULT VDateTimeCtrl::OnPrintClient(WPARAM wParam, LPARAM)
{
    if (CDC* const dc = CDC::FromHandle(reinterpret_cast<HDC>(wParam)))
        Draw(*dc);
    return 0;
}

// The stock control paints first; a disabled one's field is to look like the dialog.
void VDateTimeCtrl::Draw(CDC& dc)
{
    const bool enabled = IsWindowEnabled() != FALSE;
    const auto target = reinterpret_cast<WPARAM>(dc.m_hDC);
    if (enabled) {
        DefWindowProc(WM_ERASEBKGND, target, 0);
    } else {
        CRect client;
        GetClientRect(client);
        dc.FillSolidRect(client, VGGetParentBkColor(this));
    }
    DefWindowProc(WM_PAINT, target, 0);
    if (!HasButton())
        return;
    if (enabled)
        DrawComboFace(dc, GetFrameRect(), m_bHover || IsOpen(), VGM.Combo.clrGlyph);
    else
        DrawDisabledComboFace(dc, *this, GetFrameRect());
}

bool VDateTimeCtrl::IsOpen() const
{
    return ::IsWindowVisible(reinterpret_cast<HWND>(SendMessage(DTM_GETMONTHCAL))) != FALSE;
}

void VDateTimeCtrl::OnEnable(BOOL bEnable)
{
    CDateTimeCtrl::OnEnable(bEnable);
    if (m_spin.m_hWnd != nullptr)
        m_spin.EnableWindow(bEnable);
    InvalidateFrame(*this);
}

void VDateTimeCtrl::OnMouseMove(UINT nFlags, CPoint point)
{
    CDateTimeCtrl::OnMouseMove(nFlags, point);
    SetHot(*this, m_bHover, HasButton() && ComboFaceRect(GetFrameRect()).PtInRect(point));
}

void VDateTimeCtrl::OnMouseLeave()
{
    EndHot(*this, m_bHover);
    CDateTimeCtrl::OnMouseLeave();
}
