// The edit field and the list control, which only have a frame of their own.
#include "vgui/controls/control_frame.h"
#include "vgui/controls/themed_controls.h"
#include "vgui/foundation/gui_manager.h"

IMPLEMENT_DYNAMIC(VEdit, CEdit)

BEGIN_MESSAGE_MAP(VEdit, CEdit)
    ON_WM_NCPAINT()
    ON_WM_ENABLE()
END_MESSAGE_MAP()

void VEdit::OnNcPaint()
{
    CEdit::OnNcPaint();
    if ((GetExStyle() & WS_EX_CLIENTEDGE) != 0)
        PaintControlFrame(*this, VGM.Edit.clrFrame, IsWindowEnabled() != FALSE);
}

void VEdit::OnEnable(BOOL bEnable)
{
    CEdit::OnEnable(bEnable);
    InvalidateFrame(*this);
}

IMPLEMENT_DYNAMIC(VListCtrl, CListCtrl)

BEGIN_MESSAGE_MAP(VListCtrl, CListCtrl)
    ON_WM_NCPAINT()
END_MESSAGE_MAP()

void VListCtrl::OnNcPaint()
{
    CListCtrl::OnNcPaint();
    PaintControlFrame(*this, VGM.List.clrFrame, true);
}
