// How a skinned dialog steps aside while the host's editor takes input.
#include "vgui/dialogs/gui_dlg.h"

#include "vgui/foundation/attached.h"

namespace
{

constexpr int kHidden = 1;    // the dialog has stepped aside
constexpr int kShowAgain = 2; // and was visible before

// The top-level frame of the host's main window, null when the host has none.
HWND MainFrame()
{
    CWnd* main = AfxGetMainWnd();
    return main != nullptr && main->m_hWnd != nullptr ? main->GetTopLevelFrame()->GetSafeHwnd() : nullptr;
}

void RedrawNow(HWND window)
{
    ::RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
}

void EnableAndFocus(HWND window)
{
    if (window == nullptr)
        return;
    ::EnableWindow(window, TRUE);
    ::SetFocus(window);
}

} // namespace

INT_PTR VGuiDlg::DoModal()
{
    m_bModeless = false;
    const HWND frame = MainFrame();
    const bool enabled = ::IsWindowEnabled(frame) != FALSE;
    const INT_PTR result = CDialog::DoModal();
    // CompleteEditorCommand has disabled it. The framework enables no window again but those above the
    // dialog.
    if (enabled)
        ::EnableWindow(frame, TRUE);
    return result;
}

// Hiding, showing, focusing and enabling tell the host, who may close and free the dialog then. The windows
// are kept as handles, which may be used when they are gone.

void VGuiDlg::BeginEditorCommand()
{
    const HWND self = m_hWnd;
    if (self == nullptr)
        return;
    // A second beginning inside the first finds the dialog hidden; it must still come back at the end.
    if (IsWindowVisible())
        m_nEditorState = kHidden | kShowAgain;
    else if (m_nEditorState == 0)
        m_nEditorState = kHidden;
    ShowWindow(SW_HIDE);
    if (!VGIsAttached(this, self))
        return;

    const HWND parent = ::GetParent(self);
    if (!m_bModeless) {
        EnableAndFocus(parent);
        EnableAndFocus(MainFrame());
    } else if (parent != nullptr) {
        ::SetFocus(parent);
        ::SetActiveWindow(parent);
        RedrawNow(parent);
    }
}

void VGuiDlg::CompleteEditorCommand()
{
    const HWND self = m_hWnd;
    if (m_nEditorState == 0 || self == nullptr)
        return;
    if (m_bModeless)
        ::SetActiveWindow(self);
    if (VGIsAttached(this, self) && (m_nEditorState & kShowAgain) != 0)
        ShowWindow(SW_SHOW);
    if (!VGIsAttached(this, self))
        return;
    if (m_bModeless) {
        RedrawNow(self);
    } else {
        ::EnableWindow(::GetParent(self), FALSE);
        ::EnableWindow(MainFrame(), FALSE);
        ::EnableWindow(self, TRUE);
    }
    ::SetFocus(self);
    if (VGIsAttached(this, self))
        m_nEditorState = 0;
}

VEditorCommand::VEditorCommand(VGuiDlg* pDlg) : m_pDlg(pDlg)
{
    if (m_pDlg == nullptr)
        return;
    m_hDlg = m_pDlg->m_hWnd;
    if (const HWND frame = MainFrame())
        ::SetFocus(frame);
    // A dialog that had the focus may have been closed by losing it.
    if (VGIsAttached(m_pDlg, m_hDlg))
        m_pDlg->BeginEditorCommand();
}

VEditorCommand::~VEditorCommand()
{
    if (!m_bCompleted)
        CompleteEditorCommand();
}

void VEditorCommand::CompleteEditorCommand()
{
    if (VGIsAttached(m_pDlg, m_hDlg))
        m_pDlg->CompleteEditorCommand();
    m_bCompleted = true;
}
