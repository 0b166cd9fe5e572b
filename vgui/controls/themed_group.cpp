#include "vgui/controls/button_paint.h"
#include "vgui/controls/themed_controls.h"
#include "vgui/foundation/attached.h"
#include "vgui/foundation/buffered_dc.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gdi_scope.h"
#include "vgui/foundation/gui_manager.h"
#include "vgui/foundation/skin_host.h"

#include <algorithm>
#include <array>
#include <utility>

namespace
{

constexpr int kCorner = 6;        // diameter of the frame's round corners, pixels
constexpr int kCaptionIndent = 8; // from the box's edge to the caption
constexpr int kCaptionGap = 3;    // between the caption and the frame's line
constexpr int kOverhang = 4;      // by which letters may reach beyond their measured width
constexpr int kTitlePad = 6;      // from the band's edge to the caption
constexpr UINT kCaptionFormat = DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS;

CRect ClientRect(const CWnd& window)
{
    CRect client;
    window.GetClientRect(client);
    return client;
}

// DT_ flags for the side on which a box with this style has its caption.
UINT Alignment(DWORD style)
{
    switch (style & BS_CENTER) {
    case BS_CENTER:
        return DT_CENTER;
    case BS_RIGHT:
        return DT_RIGHT;
    default:
        return DT_LEFT;
    }
}

bool IsGroupBox(HWND window)
{
    std::array<wchar_t, 16> name{};
    ::GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return ::lstrcmpiW(name.data(), L"Button") == 0 &&
           (::GetWindowLongPtrW(window, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX;
}

// Where a caption of this size stands on the line along the top of a box.
CRect CaptionRect(const CRect& client, CSize size, UINT alignment)
{
    CRect room(client.left + kCaptionIndent, client.top, client.right - kCaptionIndent, client.top + size.cy);
    const int spare = room.Width() - static_cast<int>(size.cx);
    if (spare <= 0)
        return room;
    const int left = alignment == DT_RIGHT ? spare : alignment == DT_CENTER ? spare / 2 : 0;
    return {room.left + left, room.top, room.left + left + size.cx, room.bottom};
}

// A frame with round corners that leaves out a gap.
void DrawRoundFrame(CDC& dc, const CRect& frame, const CRect& gap)
{
    const int saved = dc.SaveDC();
    dc.ExcludeClipRect(gap);
    dc.SelectObject(&VGM.Group.penLine);
    dc.SelectStockObject(NULL_BRUSH);
    dc.RoundRect(frame, CPoint(kCorner, kCorner));
    dc.RestoreDC(saved);
}

// Whether a message may have changed what is to be seen of a box.
bool ChangesLook(UINT message, LPARAM lParam)
{
    switch (message) {
    case WM_SIZE: // the lines of the former size are inside or outside now
    case WM_MOVE:
    case WM_SETTEXT:
    case WM_ENABLE:
    case WM_UPDATEUISTATE:
    case BM_SETSTYLE:
        return true;
    case WM_SETFONT:
        return lParam != 0;
    default:
        return false;
    }
}

} // namespace

IMPLEMENT_DYNAMIC(VGroup, CButton)

BEGIN_MESSAGE_MAP(VGroup, CButton)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_MESSAGE(WM_PRINTCLIENT, &VGroup::OnPrintClient)
END_MESSAGE_MAP()

int VGroup::SetTitleHeight(int height)
{
    const int former = std::exchange(m_nTitleHeight, height);
    Repaint();
    return former;
}

int VGroup::SetUseTitle(int useTitle)
{
    const int former = std::exchange(m_bUseTitle, useTitle);
    Repaint();
    return former;
}

// Transparent, so that the parent paints what lies behind the box even when it leaves out its children. A
// window that is being created takes its styles from the structure only.
BOOL VGroup::PreCreateWindow(CREATESTRUCT& cs)
{
    cs.dwExStyle |= WS_EX_TRANSPARENT;
    return CButton::PreCreateWindow(cs);
}

void VGroup::PreSubclassWindow()
{
    ModifyStyleEx(0, WS_EX_TRANSPARENT);
    CButton::PreSubclassWindow();
}

LRESULT VGroup::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const HWND window = m_hWnd;
    const LRESULT result = CButton::WindowProc(message, wParam, lParam);
    // A handler of a derived class may have destroyed the box.
    if (ChangesLook(message, lParam) && VGIsAttached(this, window))
        Repaint();
    return result;
}

// What was painted before is the parent's to wipe off.
void VGroup::Repaint()
{
    CWnd* const parent = m_hWnd != nullptr ? GetParent() : nullptr;
    if (parent == nullptr || !IsWindowVisible())
        return;
    CRect rect;
    GetWindowRect(rect);
    parent->ScreenToClient(rect);
    parent->RedrawWindow(rect, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

BOOL VGroup::OnEraseBkgnd(CDC*)
{
    return TRUE;
}

void VGroup::OnPaint()
{
    CPaintDC dc(this);
    Draw(dc);
}

LRESULT VGroup::OnPrintClient(WPARAM wParam, LPARAM)
{
    if (CDC* const dc = CDC::FromHandle(reinterpret_cast<HDC>(wParam)))
        Draw(*dc);
    return 0;
}

void VGroup::Draw(CDC& dc)
{
    const int saved = dc.SaveDC();
    if (const CFont* const font = GetFont())
        ::SelectObject(dc.m_hDC, font->m_hObject);
    ExcludeControls(dc);
    if (m_bUseTitle)
        DrawTitleStyle(&dc);
    else
        DrawNormalStyle(&dc);
    dc.RestoreDC(saved);
}

// Other boxes are left in: their frames may share a line with this one's.
void VGroup::ExcludeControls(CDC& dc) const
{
    const CRect client = ClientRect(*this);
    for (HWND sibling = ::GetWindow(m_hWnd, GW_HWNDFIRST); sibling != nullptr;
         sibling = ::GetWindow(sibling, GW_HWNDNEXT)) {
        CRect rect;
        ::GetWindowRect(sibling, rect);
        ScreenToClient(rect);
        CRect common;
        if (sibling != m_hWnd && ::IsWindowVisible(sibling) && common.IntersectRect(rect, client) &&
            common != client && !IsGroupBox(sibling))
            dc.ExcludeClipRect(rect);
    }
}

void VGroup::DrawNormalStyle(CDC* pDC)
{
    const CRect client = ClientRect(*this);
    const CString caption = TextOf(*this);
    if (caption.IsEmpty()) {
        DrawRoundFrame(*pDC, client, CRect(0, 0, 0, 0));
        return;
    }
    CRect size(0, 0, 0, 0);
    ::DrawText(pDC->m_hDC, caption, -1, size, DT_SINGLELINE | DT_CALCRECT);
    size.right += kOverhang;
    const CRect place = CaptionRect(client, size.Size(), Alignment(GetStyle()));
    CRect frame = client;
    frame.top += place.Height() / 2;
    CRect gap = place;
    gap.InflateRect(kCaptionGap, 0);
    DrawRoundFrame(*pDC, frame, gap);
    DrawCaption(*pDC, caption, place, VGGetParentBkColor(this));
}

void VGroup::DrawTitleStyle(CDC* pDC)
{
    const CRect client = ClientRect(*this);
    const VSelectScope pen(*pDC, VGM.Group.penLine);
    const VSelectScope brush(pDC->m_hDC, ::GetStockObject(NULL_BRUSH));
    pDC->Rectangle(client);
    CRect band = client;
    band.DeflateRect(1, 1);
    band.bottom = band.top + std::min(band.Height(), std::max(m_nTitleHeight, 0));
    if (band.IsRectEmpty())
        return;

    VBufferedDC buffer(*pDC, band);
    CRect fill = band;
    --fill.bottom;
    VGGradientFillRect(&buffer, fill, VGM.Group.clrFrom, VGM.Group.clrTo, 0);
    buffer.FillSolidRect(band.left, band.bottom - 1, band.Width(), 1, VGM.Group.clrLine);
    fill.DeflateRect(kTitlePad, 0);
    DrawCaption(buffer, TextOf(*this), fill, VGNoColor);
}

// background: VGNoColor to draw on what is there.
void VGroup::DrawCaption(CDC& dc, const CString& caption, CRect rect, COLORREF background)
{
    const bool opaque = background != VGNoColor;
    const VBkModeScope mode(dc.m_hDC, opaque ? OPAQUE : TRANSPARENT);
    const VBkColorScope backColor(dc.m_hDC, opaque ? background : dc.GetBkColor());
    const VTextColorScope color(dc.m_hDC, GetCaptionColor());
    const bool hidePrefix = (::SendMessage(m_hWnd, WM_QUERYUISTATE, 0, 0) & UISF_HIDEACCEL) != 0;
    ::DrawText(dc.m_hDC, caption, -1, rect,
               kCaptionFormat | Alignment(GetStyle()) | (hidePrefix ? DT_HIDEPREFIX : 0));
}

COLORREF VGroup::GetCaptionColor() const
{
    if (!IsWindowEnabled())
        return VGM.Common.clrGray;
    COLORREF color = VGM.Group.clrTitleText;
    if (VSkinHost* const host = VSkinHost::Of(this))
        host->GetSetCtrlClr(GetDlgCtrlID(), color);
    return color;
}
