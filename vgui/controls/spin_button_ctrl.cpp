#include "vgui/controls/spin_button_ctrl.h"

#include "vgui/foundation/buffered_dc.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gui_manager.h"

#include <algorithm>

namespace
{

constexpr int kPressedShade = -40; // what is added to a pressed half's colours
constexpr int kMaxArrow = 4;       // rows of an arrow
constexpr int kMinArrow = 2;
constexpr int kArrowMargin = 2; // rows that stay free beside it

struct Face {
    COLORREF from;
    COLORREF to;
    COLORREF border;
    COLORREF arrow;
};

Face FaceOf(bool enabled, bool hot, bool pressed, COLORREF background)
{
    const auto& look = VGM.Combo;
    if (!enabled)
        return {background, background, VGM.Group.clrLine, VGM.Common.clrGray};
    if (pressed)
        return {VGFadeColor(look.clrBtnTo, kPressedShade), look.clrBtnTo, look.clrBtnBorder, look.clrGlyph};
    if (hot)
        return {look.clrBtnTo, look.clrBtnFrom, VGM.Common.clrHot, look.clrGlyph};
    return {look.clrBtnFrom, look.clrBtnTo, look.clrBtnBorder, look.clrGlyph};
}

// How large both arrows are in a control with halves of at least this size.
int ArrowSize(CSize half, bool horizontal)
{
    const int room =
        horizontal ? std::min<int>(half.cx, half.cy / 2 + 1) : std::min<int>(half.cy, half.cx / 2 + 1);
    return std::clamp(room - 2 * kArrowMargin, kMinArrow, kMaxArrow);
}

// An arrow in the middle of a half.
void DrawArrow(CDC& dc, const CRect& half, int size, COLORREF color, int direction)
{
    // The middle of the tip's row; odd halves have an exact one.
    CPoint tip((half.left + half.right - 1) / 2, (half.top + half.bottom - 1) / 2);
    const int back = size / 2;
    switch (direction) {
    case VGTriangleDown:
        tip.y += back;
        break;
    case VGTriangleUp:
        tip.y -= back;
        break;
    case VGTriangleLeft:
        tip.x -= back;
        break;
    case VGTriangleRight:
        tip.x += back;
        break;
    }
    VGDrawSmallSolidTriangle(&dc, tip, size, color, direction);
}

} // namespace

IMPLEMENT_DYNAMIC(VSpinButtonCtrl, CSpinButtonCtrl)

BEGIN_MESSAGE_MAP(VSpinButtonCtrl, CSpinButtonCtrl)
    ON_WM_CREATE()
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_MOUSEMOVE()
    ON_WM_MOUSELEAVE()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_LBUTTONUP()
    ON_WM_CAPTURECHANGED()
    ON_WM_ENABLE()
    ON_MESSAGE(WM_PRINTCLIENT, &VSpinButtonCtrl::OnPrintClient)
END_MESSAGE_MAP()

void VSpinButtonCtrl::PreSubclassWindow()
{
    // The mouse may have been on an arrow when the object's former window went.
    m_nHot = Part::None;
    m_nPressed = Part::None;
    CSpinButtonCtrl::PreSubclassWindow();
    Invalidate(); // see OnCreate
}

// Wine's control makes itself visible while it is created. Unless it then changes its size, as one with
// arrows above each other does, nothing has it painted.
int VSpinButtonCtrl::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    const int result = CSpinButtonCtrl::OnCreate(lpCreateStruct);
    Invalidate();
    return result;
}

CRect VSpinButtonCtrl::PartRect(const CRect& area, bool horizontal, Part part)
{
    CRect rect = area;
    const CPoint middle = area.CenterPoint();
    switch (part) {
    case Part::Up:
        (horizontal ? rect.left : rect.bottom) = horizontal ? middle.x : middle.y;
        return rect;
    case Part::Down:
        (horizontal ? rect.right : rect.top) = horizontal ? middle.x : middle.y;
        return rect;
    case Part::None:
        break;
    }
    return {0, 0, 0, 0};
}

VSpinButtonCtrl::Part VSpinButtonCtrl::PartAt(CPoint point) const
{
    CRect client;
    GetClientRect(client);
    for (const Part part : {Part::Up, Part::Down}) {
        if (PartRect(client, IsHorizontal(), part).PtInRect(point))
            return part;
    }
    return Part::None;
}

void VSpinButtonCtrl::OnPaint()
{
    CPaintDC dc(this);
    CRect client;
    GetClientRect(client);
    VBufferedDC buffer(dc, client);
    Draw(buffer);
}

LRESULT VSpinButtonCtrl::OnPrintClient(WPARAM wParam, LPARAM)
{
    if (CDC* const dc = CDC::FromHandle(reinterpret_cast<HDC>(wParam)))
        Draw(*dc);
    return 0;
}

BOOL VSpinButtonCtrl::OnEraseBkgnd(CDC*)
{
    return TRUE;
}

void VSpinButtonCtrl::Draw(CDC& dc)
{
    CRect rect;
    GetClientRect(rect);
    dc.FillSolidRect(rect, VGGetParentBkColor(this));
    // Beside its buddy the control goes on with that one's frame.
    if (GetBuddy() != nullptr) {
        const COLORREF frame = IsWindowEnabled() ? VGM.Edit.clrFrame : VGM.Common.clrGray;
        dc.Draw3dRect(rect, frame, frame);
        rect.DeflateRect(1, 1);
    }
    DrawPart(dc, rect, Part::Up);
    DrawPart(dc, rect, Part::Down);
}

void VSpinButtonCtrl::DrawPart(CDC& dc, const CRect& room, Part part)
{
    const bool horizontal = IsHorizontal();
    CRect rect = PartRect(room, horizontal, part);
    const bool hot = part == m_nHot && (m_nPressed == Part::None || m_nPressed == part);
    const Face face =
        FaceOf(IsWindowEnabled() != FALSE, hot, hot && m_nPressed == part, VGGetParentBkColor(this));
    dc.Draw3dRect(rect, face.border, face.border);
    rect.DeflateRect(1, 1);
    VGGradientFillRect(&dc, rect, face.from, face.to, 0);
    const CSize half(room.Width() / (horizontal ? 2 : 1) - 2, room.Height() / (horizontal ? 1 : 2) - 2);
    const bool up = part == Part::Up;
    DrawArrow(dc, rect, ArrowSize(half, horizontal), face.arrow,
              horizontal ? (up ? VGTriangleRight : VGTriangleLeft) : (up ? VGTriangleUp : VGTriangleDown));
}

void VSpinButtonCtrl::SetState(Part hot, Part pressed)
{
    if (hot == m_nHot && pressed == m_nPressed)
        return;
    m_nHot = hot;
    m_nPressed = pressed;
    Invalidate();
}

void VSpinButtonCtrl::OnMouseMove(UINT nFlags, CPoint point)
{
    CSpinButtonCtrl::OnMouseMove(nFlags, point);
    SetState(PartAt(point), m_nPressed);
    TRACKMOUSEEVENT track{sizeof(track), TME_LEAVE, m_hWnd, 0};
    if (m_nHot != Part::None)
        ::TrackMouseEvent(&track);
}

void VSpinButtonCtrl::OnMouseLeave()
{
    SetState(Part::None, m_nPressed);
    CSpinButtonCtrl::OnMouseLeave();
}

// The parent may destroy the control when it is told of the new position, so the state is set before.
void VSpinButtonCtrl::OnLButtonDown(UINT nFlags, CPoint point)
{
    SetState(PartAt(point), PartAt(point));
    CSpinButtonCtrl::OnLButtonDown(nFlags, point);
}

void VSpinButtonCtrl::OnLButtonDblClk(UINT nFlags, CPoint point)
{
    SetState(PartAt(point), PartAt(point));
    CSpinButtonCtrl::OnLButtonDblClk(nFlags, point);
}

void VSpinButtonCtrl::OnLButtonUp(UINT nFlags, CPoint point)
{
    SetState(PartAt(point), Part::None);
    CSpinButtonCtrl::OnLButtonUp(nFlags, point);
}

void VSpinButtonCtrl::OnCaptureChanged(CWnd* pWnd)
{
    if (pWnd != this)
        SetState(m_nHot, Part::None);
    CSpinButtonCtrl::OnCaptureChanged(pWnd);
}

void VSpinButtonCtrl::OnEnable(BOOL bEnable)
{
    CSpinButtonCtrl::OnEnable(bEnable);
    Invalidate();
}
