// The Tab key between a page, its tab control and the dialog around them. The page answers for its own keys,
// so that by itself the key would go round inside it and never get into it.
#include "vgui/dialogs/tab_pages.h"
#include "vgui/foundation/attached.h"

namespace
{

bool IsTabKey(const MSG& msg)
{
    return msg.message == WM_KEYDOWN && msg.wParam == VK_TAB && ::GetKeyState(VK_CONTROL) >= 0;
}

bool IsBackward()
{
    return ::GetKeyState(VK_SHIFT) < 0;
}

// Whether the control with the focus keeps the key for itself.
bool WantsTab(const MSG& msg)
{
    const LRESULT code = ::SendMessage(msg.hwnd, WM_GETDLGCODE, msg.wParam, reinterpret_cast<LPARAM>(&msg));
    return (code & (DLGC_WANTTAB | DLGC_WANTALLKEYS)) != 0;
}

// The page's control that a window is or is part of; null outside the page.
HWND ControlOf(HWND page, HWND window)
{
    while (window != nullptr && ::GetParent(window) != page)
        window = ::GetParent(window);
    return window;
}

} // namespace

BOOL VTabPage::PreTranslateMessage(MSG* pMsg)
{
    auto* const tabs = DYNAMIC_DOWNCAST(VTabDlgCtrl, GetParent());
    if (tabs != nullptr && IsTabKey(*pMsg) && tabs->TabOutOfPage(*this, *pMsg))
        return TRUE;
    return VGuiDlg::PreTranslateMessage(pMsg);
}

BOOL VTabDlgCtrl::PreTranslateMessage(MSG* pMsg)
{
    if (pMsg->hwnd == m_hWnd && IsTabKey(*pMsg) && !IsBackward() && TabIntoPage(false))
        return TRUE;
    return VTabCtrl::PreTranslateMessage(pMsg);
}

// The title band has nothing to be chosen by keys.
void VTabDlgCtrl::OnSetFocus(CWnd* pOldWnd)
{
    const HWND self = m_hWnd;
    VTabCtrl::OnSetFocus(pOldWnd);
    if (VGIsAttached(this, self) && m_bOutDriven)
        TabIntoPage(IsBackward());
}

bool VTabDlgCtrl::TabIntoPage(bool backward)
{
    if (!HasWindow(m_nActive) || !m_pages[m_nActive]->pPage->IsWindowVisible())
        return false;
    VTabPage& page = *m_pages[m_nActive]->pPage;
    CWnd* const first = page.GetNextDlgTabItem(nullptr);
    if (first == nullptr)
        return false;
    page.GotoDlgCtrl(backward ? page.GetNextDlgTabItem(first, TRUE) : first);
    return true;
}

bool VTabDlgCtrl::TabOutOfPage(const VTabPage& page, const MSG& msg)
{
    auto* const dialog = DYNAMIC_DOWNCAST(CDialog, GetParent());
    const HWND control = ControlOf(page.m_hWnd, msg.hwnd);
    if (dialog == nullptr || control == nullptr || WantsTab(msg))
        return false;
    const bool backward = IsBackward();
    const HWND first = ::GetNextDlgTabItem(page.m_hWnd, nullptr, FALSE);
    const bool atTheEnd = (backward ? control : ::GetNextDlgTabItem(page.m_hWnd, control, FALSE)) == first;
    if (!atTheEnd)
        return false;
    const bool stopHere = backward && !m_bOutDriven && (GetStyle() & WS_TABSTOP) != 0;
    CWnd* const next = stopHere ? this : dialog->GetNextDlgTabItem(this, backward);
    if (next == nullptr || (next == this && !stopHere))
        return false;
    dialog->GotoDlgCtrl(next);
    return true;
}
