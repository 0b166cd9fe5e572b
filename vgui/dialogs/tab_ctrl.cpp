// The painting of the tab control.
#include "vgui/controls/control_frame.h"
#include "vgui/dialogs/tab_pages.h"
#include "vgui/foundation/attached.h"
#include "vgui/foundation/buffered_dc.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gdi_scope.h"
#include "vgui/foundation/gui_manager.h"

#include <algorithm>

namespace
{

constexpr int kMaxCaption = 1024;
constexpr int kCaptionMargin = 4; // pixels left and right of a caption
constexpr int kImageGap = 4;
constexpr int kRaise = 2;     // how far the selected tab stands above the others
constexpr int kHotStripe = 2; // height of the stripe on the tab under the mouse

// Whether a message changes what the control shows. The system's part invalidates no more than the tabs as it
// would draw them, and for some of these nothing.
bool ChangesTabs(UINT message)
{
    switch (message) {
    case TCM_SETIMAGELIST:
    case TCM_REMOVEIMAGE:
    case TCM_SETITEM:
    case TCM_INSERTITEM:
    case TCM_DELETEITEM:
    case TCM_DELETEALLITEMS:
    case TCM_SETCURSEL:
    case TCM_SETCURFOCUS:
    case TCM_SETITEMSIZE:
    case TCM_SETPADDING:
    case TCM_SETMINTABWIDTH:
    case WM_KEYDOWN:
    case WM_LBUTTONDOWN:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE:
    case WM_SETFONT:
    case WM_SIZE:
        return true;
    default:
        return false;
    }
}

} // namespace

IMPLEMENT_DYNAMIC(VTabCtrl, CTabCtrl)

BEGIN_MESSAGE_MAP(VTabCtrl, CTabCtrl)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_MOUSEMOVE()
    ON_WM_MOUSELEAVE()
    ON_MESSAGE(WM_PRINTCLIENT, &VTabCtrl::OnPrintClient)
END_MESSAGE_MAP()

void VTabCtrl::SetDrawingStyle(int Style)
{
    m_nDrawingStyle = Style;
    if (m_hWnd != nullptr)
        Invalidate();
}

void VTabCtrl::PreSubclassWindow()
{
    m_nHot = -1; // the mouse may have been on a tab when the object's former window went
    // The control is painted in one piece, around its page or its arrows for tabs that do not fit.
    ModifyStyle(0, TCS_HOTTRACK | WS_CLIPCHILDREN);
    CTabCtrl::PreSubclassWindow();
}

LRESULT VTabCtrl::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const HWND hWnd = m_hWnd;
    const LRESULT result = CTabCtrl::WindowProc(message, wParam, lParam);
    // What was told of the change may have destroyed the control.
    if (ChangesTabs(message) && VGIsAttached(this, hWnd))
        OnTabsChanged();
    return result;
}

void VTabCtrl::OnTabsChanged()
{
    Invalidate(FALSE);
}

BOOL VTabCtrl::OnEraseBkgnd(CDC*)
{
    return TRUE;
}

void VTabCtrl::OnPaint()
{
    CPaintDC dc(this);
    CRect client;
    GetClientRect(client);
    VBufferedDC buffer(dc, client);
    Draw(buffer);
}

LRESULT VTabCtrl::OnPrintClient(WPARAM wParam, LPARAM)
{
    if (CDC* const dc = CDC::FromHandle(reinterpret_cast<HDC>(wParam)))
        Draw(*dc);
    return 0;
}

CRect VTabCtrl::GetBodyRect() const
{
    CRect body;
    GetClientRect(body);
    LONG bottom = body.top;
    for (int item = 0; item < GetItemCount(); ++item) {
        CRect tab;
        if (GetItemRect(item, tab))
            bottom = std::max(bottom, tab.bottom);
    }
    body.top = std::min(bottom, body.bottom);
    return body;
}

void VTabCtrl::Draw(CDC& dc)
{
    const CFont* const font = GetFont();
    const VSelectScope selectedFont(dc.m_hDC, font != nullptr ? font->m_hObject : nullptr);
    const VBkModeScope transparent(dc.m_hDC, TRANSPARENT);
    CRect client;
    GetClientRect(client);
    dc.FillSolidRect(client, VGGetParentBkColor(this));
    const CRect body = GetBodyRect();
    dc.FillSolidRect(body, VGM.Tab.clrPageBk);
    DrawControlFrame(dc, body, VGM.Tab.clrFrame);

    const int selected = GetCurSel();
    for (int item = 0; item < GetItemCount(); ++item) {
        if (item != selected)
            DrawTab(dc, item, false, body.top);
    }
    if (selected >= 0)
        DrawTab(dc, selected, true, body.top);
}

void VTabCtrl::DrawTab(CDC& dc, int item, bool selected, LONG bodyTop)
{
    CRect tab;
    if (!GetItemRect(item, tab))
        return;
    if (!selected)
        tab.top += kRaise;
    if (tab.bottom < bodyTop)
        tab.bottom += kRaise; // down to the next row
    else if (selected)
        ++tab.bottom; // the tab is open towards its page
    FillTab(dc, tab, selected);
    if (!selected && item == m_nHot && IsWindowEnabled())
        dc.FillSolidRect(tab.left + 1, tab.top + 1, tab.Width() - 1, kHotStripe, VGM.Common.clrHot);
    DrawCaption(dc, item, tab);
}

void VTabCtrl::FillTab(CDC& dc, const CRect& tab, bool selected) const
{
    if (selected)
        dc.FillSolidRect(tab, VGM.Tab.clrPageBk);
    else if (m_nDrawingStyle == VGTabFlat)
        dc.FillSolidRect(tab, VGM.Tab.clrTo);
    else // below the line along the top
        VGGradientFillRect(&dc, CRect(tab.left, tab.top + 1, tab.right, tab.bottom), VGM.Tab.clrFrom,
                           VGM.Tab.clrTo, 0);
    // Three sides; neighbours share a line, and the page's frame is the fourth.
    dc.FillSolidRect(tab.left, tab.top, 1, tab.Height(), VGM.Tab.clrFrame);
    dc.FillSolidRect(tab.left, tab.top, tab.Width() + 1, 1, VGM.Tab.clrFrame);
    dc.FillSolidRect(tab.right, tab.top, 1, tab.Height(), VGM.Tab.clrFrame);
}

void VTabCtrl::DrawCaption(CDC& dc, int item, const CRect& tab)
{
    std::array<wchar_t, kMaxCaption> text{};
    TCITEM info{};
    info.mask = TCIF_TEXT | TCIF_IMAGE;
    info.pszText = text.data();
    info.cchTextMax = static_cast<int>(text.size()) - 1;
    if (!GetItem(item, &info))
        return;
    CRect room = tab;
    room.DeflateRect(kCaptionMargin, 1);
    room.left = DrawItemImage(dc, info.iImage, room);
    const bool enabled = IsWindowEnabled() != FALSE;
    const VTextColorScope color(dc.m_hDC, enabled ? VGM.Dlg.clrText : ::GetSysColor(COLOR_GRAYTEXT));
    // The control may answer with a pointer to its own text.
    ::DrawText(dc.m_hDC, info.pszText, -1, room,
               DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | DT_HIDEPREFIX);
    if (enabled && ::GetFocus() == m_hWnd && GetCurFocus() == item) {
        const VTextColorScope black(dc.m_hDC, RGB(0, 0, 0));
        const VBkColorScope white(dc.m_hDC, RGB(255, 255, 255));
        CRect focus = tab;
        focus.DeflateRect(3, 3, 2, 3);
        dc.DrawFocusRect(focus);
    }
}

// Draws a tab's image at the left end of its room and answers where the rest of the room begins.
LONG VTabCtrl::DrawItemImage(CDC& dc, int image, const CRect& room) const
{
    const auto images = reinterpret_cast<HIMAGELIST>(::SendMessage(m_hWnd, TCM_GETIMAGELIST, 0, 0));
    int cx = 0;
    int cy = 0;
    if (images == nullptr || image < 0 || image >= ::ImageList_GetImageCount(images) ||
        !::ImageList_GetIconSize(images, &cx, &cy))
        return room.left;
    const UINT style = IsWindowEnabled() ? ILD_TRANSPARENT : ILD_TRANSPARENT | ILD_BLEND50;
    ::ImageList_DrawEx(images, image, dc.m_hDC, room.left, room.CenterPoint().y - cy / 2, 0, 0, CLR_NONE,
                       VGM.Tab.clrPageBk, style);
    return room.left + cx + kImageGap;
}

void VTabCtrl::SetHot(int item)
{
    if (item == m_nHot)
        return;
    m_nHot = item;
    Invalidate();
}

void VTabCtrl::OnMouseMove(UINT nFlags, CPoint point)
{
    TCHITTESTINFO hit{};
    hit.pt = point;
    SetHot(HitTest(&hit));
    TRACKMOUSEEVENT track{sizeof(track), TME_LEAVE, m_hWnd, 0};
    if (m_nHot >= 0)
        ::TrackMouseEvent(&track);
    CTabCtrl::OnMouseMove(nFlags, point);
}

void VTabCtrl::OnMouseLeave()
{
    SetHot(-1);
    CTabCtrl::OnMouseLeave();
}
