// How a skinned dialog steps aside while the host's editor takes input.
#include "vgui/dialogs/gui_dlg.h"

#include "vgui/foundation/attached.h"

namespace
{

constexpr int kHidden = 1;    // the dialog has stepped aside
constexpr int kShowAgain = 2; // and was visible before

// The top-level frame of the host's main window, null when the host has none.
CFrameWnd* MainFrame()
{
    CWnd* main = AfxGetMainWnd();
    return main != nullptr && main->m_hWnd != nullptr ? main->GetTopLevelFrame() : nullptr;
}

void RedrawNow(CWnd& window)
{
    window.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
}

void EnableAndFocus(CWnd* window)
{
    if (window == nullptr)
        return;
    window->EnableWindow(TRUE);
    window->SetFocus();
}

void Disable(CWnd* window)
{
    if (window != nullptr)
        window->EnableWindow(FALSE);
}

} // namespace

void VGuiDlg::BeginEditorCommand()
{
    if (m_hWnd == nullptr)
        return;
    // A second beginning inside the first finds the dialog hidden; it must still come back at the end.
    if (IsWindowVisible())
        m_nEditorState = kHidden | kShowAgain;
    else if (m_nEditorState == 0)
        m_nEditorState = kHidden;
    ShowWindow(SW_HIDE);

    CWnd* parent = GetParent();
    if (!m_bModeless) {
        EnableAndFocus(parent);
        EnableAndFocus(MainFrame());
    } else if (parent != nullptr) {
        parent->SetFocus();
        parent->SetActiveWindow();
        RedrawNow(*parent);
    }
}

void VGuiDlg::CompleteEditorCommand()
{
    if (m_nEditorState == 0 || m_hWnd == nullptr)
        return;
    const bool show = (m_nEditorState & kShowAgain) != 0;
    if (m_bModeless) {
        SetActiveWindow();
        if (show)
            ShowWindow(SW_SHOW);
        RedrawNow(*this);
    } else {
        if (show)
            ShowWindow(SW_SHOW);
        Disable(GetParent());
        Disable(MainFrame());
        EnableWindow(TRUE);
    }
    SetFocus();
    m_nEditorState = 0;
}

VEditorCommand::VEditorCommand(VGuiDlg* pDlg) : m_pDlg(pDlg)
{
    if (m_pDlg == nullptr)
        return;
    m_hDlg = m_pDlg->m_hWnd;
    if (CFrameWnd* frame = MainFrame())
        frame->SetFocus();
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
