// The tree combo box's edit field, button and hook.
#include "vgui/composite/combo_tree.h"

#include "vgui/foundation/attached.h"

// ---- The edit field

IMPLEMENT_DYNAMIC(ComboTreeEdit, VEdit)

BEGIN_MESSAGE_MAP(ComboTreeEdit, VEdit)
    ON_WM_CHAR()
    ON_WM_GETDLGCODE()
END_MESSAGE_MAP()

void ComboTreeEdit::OnChar(UINT nChar, UINT nRepCnt, UINT nFlags)
{
    const HWND window = m_hWnd;
    VEdit::OnChar(nChar, nRepCnt, nFlags);
    if (!VGIsAttached(this, window))
        return;
    if (auto* combo = DYNAMIC_DOWNCAST(ComboTree, GetParent()))
        combo->SendParentComboMessage(CBN_EDITCHANGE);
}

UINT ComboTreeEdit::OnGetDlgCode()
{
    const UINT code = VEdit::OnGetDlgCode();
    const auto* combo = DYNAMIC_DOWNCAST(ComboTree, GetParent());
    return combo != nullptr && combo->m_takenKey != 0 ? code | DLGC_WANTALLKEYS : code;
}

// ---- The button

IMPLEMENT_DYNAMIC(ComboTreeButton, VButton)

BEGIN_MESSAGE_MAP(ComboTreeButton, VButton)
    ON_WM_ENABLE()
    ON_WM_GETDLGCODE()
END_MESSAGE_MAP()

UINT ComboTreeButton::OnGetDlgCode()
{
    auto* combo = DYNAMIC_DOWNCAST(ComboTree, GetParent());
    return combo != nullptr ? combo->OnGetDlgCode() : VButton::OnGetDlgCode();
}

// The base gives the focus to the parent, whoever has it. That is the combo box, which is being disabled too.
void ComboTreeButton::OnEnable(BOOL bEnable)
{
    CButton::OnEnable(bEnable);
    if (!bEnable)
        CancelHover();
}

// Straight to the screen: the base would prepare a background that cannot be seen.
BOOL ComboTreeButton::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (message != WM_DRAWITEM)
        return VButton::OnChildNotify(message, wParam, lParam, pResult);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    return TRUE;
}

void ComboTreeButton::DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct)
{
    UINT state = DFCS_SCROLLDOWN;
    if ((lpDrawItemStruct->itemState & ODS_SELECTED) != 0)
        state |= DFCS_PUSHED;
    if ((lpDrawItemStruct->itemState & ODS_DISABLED) != 0)
        state |= DFCS_INACTIVE;
    ::DrawFrameControl(lpDrawItemStruct->hDC, &lpDrawItemStruct->rcItem, DFC_SCROLL, state);
}

// ---- The hook on the parent

void ComboTreeHook::Prepare(ComboTree* pCombo, HWND hWatched)
{
    m_pCombo = pCombo;
    m_hWatched = hWatched;
}

bool ComboTreeHook::Cancels(UINT message, WPARAM wParam, LPARAM lParam) const
{
    switch (message) {
    case WM_WINDOWPOSCHANGING:
    case WM_WINDOWPOSCHANGED:
    case WM_NCLBUTTONDOWN:
    case WM_NCRBUTTONDOWN:
    case WM_NCMBUTTONDOWN:
    case WM_SYSKEYDOWN:
    case WM_SYSCOMMAND:
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
        return true;
    case WM_COMMAND:
        return lParam == 0 || LOWORD(wParam) != static_cast<WORD>(m_pCombo->GetDlgCtrlID());
    default:
        return false;
    }
}

LRESULT ComboTreeHook::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (m_pCombo == nullptr)
        return CComboSubclassWnd::WindowProc(message, wParam, lParam);
    if (message == WM_MOUSEWHEEL)
        return m_pCombo->SendTreeMessage(message, wParam, lParam);
    ComboTree* const combo = m_pCombo;
    const HWND window = combo->m_hWnd;
    const bool cancels = Cancels(message, wParam, lParam);
    const LRESULT result = CComboSubclassWnd::WindowProc(message, wParam, lParam);
    // The parent may have destroyed the control, and this hook with it.
    if (cancels && VGIsAttached(combo, window) && combo->GetDroppedState())
        combo->OnCancel();
    return result;
}
