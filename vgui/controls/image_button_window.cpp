// How VButtonST lives in its window: messages, hovering and what a click does.
#include "vgui/controls/control_tool_tip.h"
#include "vgui/controls/hot_tracking.h"
#include "vgui/controls/image_button.h"
#include "vgui/foundation/attached.h"
#include "vgui/foundation/window_helpers.h"

#include <cwchar>

namespace
{

constexpr UINT kToggleBit = 2;

// Whether a mouse message can only have come because the window lies under the mouse: no mouse button is
// down, with which a window has the capture. The mouse moves often, and searching the screen takes long.
bool IsFreeMoveInside(const CWnd& window, UINT nFlags, CPoint point)
{
    constexpr UINT kMouseButtons = MK_LBUTTON | MK_RBUTTON | MK_MBUTTON | MK_XBUTTON1 | MK_XBUTTON2;
    CRect client;
    window.GetClientRect(client);
    return (nFlags & kMouseButtons) == 0 && client.PtInRect(point);
}

} // namespace

IMPLEMENT_DYNAMIC(VButtonST, CButton)

BEGIN_MESSAGE_MAP(VButtonST, CButton)
    ON_WM_DESTROY()
    ON_WM_SETCURSOR()
    ON_WM_MOUSEMOVE()
    ON_WM_SYSCOLORCHANGE()
    ON_CONTROL_REFLECT_EX(BN_CLICKED, &VButtonST::OnClicked)
    ON_WM_ENABLE()
    ON_WM_KILLFOCUS()
    ON_WM_ACTIVATE()
    ON_WM_CANCELMODE()
    ON_WM_GETDLGCODE()
    ON_WM_CTLCOLOR_REFLECT()
    ON_MESSAGE(BM_SETSTYLE, &VButtonST::OnSetStyle)
    ON_WM_MOUSELEAVE()
    ON_WM_ERASEBKGND()
    ON_MESSAGE(BM_GETCHECK, &VButtonST::OnGetCheckMessage)
    ON_MESSAGE(BM_SETCHECK, &VButtonST::OnSetCheckMessage)
END_MESSAGE_MAP()

void VButtonST::PreSubclassWindow()
{
    const UINT style = LOWORD(GetStyle());
    typeStyle = style & kTypeMask;
    isToggle = (style & kToggleBit) != 0;
    isDefault = typeStyle == BS_DEFPUSHBUTTON;
    if (isDefault)
        typeStyle = 0;
    // What the object's former window left.
    hovering = FALSE;
    menuShown = FALSE;
    DropBackground();
    ModifyStyle(kTypeMask, BS_OWNERDRAW, SWP_FRAMECHANGED);
    CButton::PreSubclassWindow();
    InitToolTip();
}

void VButtonST::OnDestroy()
{
    DestroyControlTip(toolTip);
    CButton::OnDestroy();
}

// A quick second click is a click like any other.
LRESULT VButtonST::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    return CButton::DefWindowProc(message == WM_LBUTTONDBLCLK ? WM_LBUTTONDOWN : message, wParam, lParam);
}

BOOL VButtonST::OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message)
{
    if (cursor == nullptr)
        return CButton::OnSetCursor(pWnd, nHitTest, message);
    ::SetCursor(cursor);
    return TRUE;
}

void VButtonST::OnMouseMove(UINT nFlags, CPoint point)
{
    // The parent is told when the mouse leaves a pressed button, and may destroy it.
    const HWND window = m_hWnd;
    CButton::OnMouseMove(nFlags, point);
    if (!VGIsAttached(this, window) || !flat || ((nFlags & MK_LBUTTON) != 0 && !hovering))
        return;
    const HWND active = alwaysTrack ? m_hWnd : ::GetActiveWindow();
    const auto isUnderMouse = [&] {
        ClientToScreen(&point);
        return ::WindowFromPoint(point) == m_hWnd;
    };
    if (active != nullptr && ((hovering && IsFreeMoveInside(*this, nFlags, point)) || isUnderMouse()))
        BeginHot(*this, hovering);
    else
        CancelHover();
}

void VButtonST::CancelHover()
{
    if (!flat || !hovering)
        return;
    hovering = FALSE;
    Repaint(TRUE);
}

void VButtonST::OnMouseLeave()
{
    CancelHover();
}

void VButtonST::ReleaseCapture()
{
    if (::GetCapture() == m_hWnd)
        ::ReleaseCapture();
}

void VButtonST::OnSysColorChange()
{
    CButton::OnSysColorChange();
    DropBackground();
}

BOOL VButtonST::OnClicked()
{
    // What a click sets off may destroy the button, and the parent with it.
    const HWND window = m_hWnd;
    const HWND parentWindow = ::GetParent(window);
    const CWnd* const parent = CWnd::FromHandlePermanent(parentWindow);
    if (isToggle) {
        checked = !checked;
        Invalidate();
    } else if (menu != nullptr) {
        DropDownMenu();
    } else if (url[0] != L'\0') {
        const CString link(url, static_cast<int>(::wcsnlen(url, kMaxUrl)));
        VGShellExecute(L"open", link, SW_SHOWMAXIMIZED, SEE_MASK_FLAG_NO_UI);
    }
    if (VGIsAttached(this, window))
        ReleaseCapture();
    return parent != nullptr && !VGIsAttached(parent, parentWindow);
}

void VButtonST::DropDownMenu()
{
    const HWND window = m_hWnd;
    CRect place;
    GetWindowRect(place);
    menuShown = TRUE;
    Invalidate();
    const HWND owner = ::IsWindow(menuOwner) ? menuOwner : ::GetParent(m_hWnd);
    ::TrackPopupMenuEx(::GetSubMenu(menu, 0), 0, place.left, place.bottom, owner, nullptr);
    if (!VGIsAttached(this, window))
        return;
    menuShown = FALSE;
    Invalidate();
}

void VButtonST::OnEnable(BOOL bEnable)
{
    // Whoever is told, of this or of the focus, may destroy the button.
    const HWND window = m_hWnd;
    CButton::OnEnable(bEnable);
    if (bEnable || !VGIsAttached(this, window))
        return;
    if (CWnd* parent = GetParent()) {
        CWnd* next = parent->GetNextDlgTabItem(this);
        (next != nullptr && next != this ? next : parent)->SetFocus();
    }
    if (VGIsAttached(this, window))
        CancelHover();
}

void VButtonST::OnKillFocus(CWnd* pNewWnd)
{
    // The parent is told and may destroy the button.
    const HWND window = m_hWnd;
    CButton::OnKillFocus(pNewWnd);
    if (VGIsAttached(this, window))
        CancelHover();
}

void VButtonST::OnActivate(UINT nState, CWnd* pWndOther, BOOL bMinimized)
{
    CButton::OnActivate(nState, pWndOther, bMinimized);
    if (nState == WA_INACTIVE)
        CancelHover();
}

void VButtonST::OnCancelMode()
{
    // The parent is told that the button is not pressed any more, and may destroy it.
    const HWND window = m_hWnd;
    CButton::OnCancelMode();
    if (VGIsAttached(this, window))
        CancelHover();
}

// The dialog manager makes the focused push button the default one, which it could not do with a button whose
// style only says owner-drawn.
UINT VButtonST::OnGetDlgCode()
{
    return CButton::OnGetDlgCode() | (isDefault ? DLGC_DEFPUSHBUTTON : DLGC_UNDEFPUSHBUTTON);
}

HBRUSH VButtonST::CtlColor(CDC*, UINT)
{
    return static_cast<HBRUSH>(::GetStockObject(NULL_BRUSH));
}

LRESULT VButtonST::OnSetStyle(WPARAM wParam, LPARAM lParam)
{
    const WPARAM type = wParam & kTypeMask;
    if (type == BS_DEFPUSHBUTTON)
        isDefault = TRUE;
    else if (type == BS_PUSHBUTTON)
        isDefault = FALSE;
    return DefWindowProc(BM_SETSTYLE, (wParam & ~static_cast<WPARAM>(kTypeMask)) | BS_OWNERDRAW, lParam);
}

LRESULT VButtonST::OnGetCheckMessage(WPARAM, LPARAM)
{
    return isToggle ? checked : Default();
}

LRESULT VButtonST::OnSetCheckMessage(WPARAM wParam, LPARAM)
{
    return isToggle ? static_cast<LRESULT>(SetCheck(static_cast<int>(wParam), TRUE)) : Default();
}
