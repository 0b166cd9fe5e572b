#include <afxwin.h>

#include "wnd_access.h"

IMPLEMENT_DYNAMIC(CDialog, CWnd)

BEGIN_MESSAGE_MAP(CDialog, CWnd)
    ON_COMMAND(IDOK, &CDialog::OnOK)
    ON_COMMAND(IDCANCEL, &CDialog::OnCancel)
    ON_MESSAGE(WM_INITDIALOG, &CDialog::HandleInitDialog)
    ON_MESSAGE(WM_SETFONT, &CDialog::HandleSetFont)
END_MESSAGE_MAP()

CDialog::CDialog() = default;

CDialog::CDialog(LPCTSTR lpszTemplateName, CWnd* pParentWnd)
    : m_lpszTemplateName(lpszTemplateName), m_pParentWnd(pParentWnd)
{
    if (IS_INTRESOURCE(lpszTemplateName))
        m_nIDHelp = LOWORD(reinterpret_cast<DWORD_PTR>(lpszTemplateName));
}

CDialog::CDialog(UINT nIDTemplate, CWnd* pParentWnd)
    : m_nIDHelp(nIDTemplate), m_lpszTemplateName(MAKEINTRESOURCE(nIDTemplate)), m_pParentWnd(pParentWnd)
{
}

CDialog::~CDialog()
{
    // Here, while this is still a dialog and its overrides can see their messages' last stage.
    if (m_hWnd != nullptr)
        DestroyWindow();
}

// ---- Creation

namespace
{

// A dialog template found through the chain of resource modules, locked for as long as this lives.
class TemplateResource
{
public:
    explicit TemplateResource(LPCTSTR name) : m_instance(AfxFindResourceHandle(name, RT_DIALOG))
    {
        const HRSRC resource = ::FindResource(m_instance, name, RT_DIALOG);
        if (resource != nullptr)
            m_template = static_cast<LPCDLGTEMPLATE>(::LockResource(::LoadResource(m_instance, resource)));
    }
    LPCDLGTEMPLATE Get() const { return m_template; }
    HINSTANCE Instance() const { return m_instance; }

private:
    HINSTANCE m_instance;
    LPCDLGTEMPLATE m_template = nullptr;
};

// Dialogs get this procedure; what it answers for WM_INITDIALOG decides about the focus.
INT_PTR CALLBACK DialogProcedure(HWND hWnd, UINT message, WPARAM, LPARAM)
{
    if (message != WM_INITDIALOG)
        return 0;
    CDialog* const dialog = DYNAMIC_DOWNCAST(CDialog, CWnd::FromHandlePermanent(hWnd));
    return dialog != nullptr ? dialog->OnInitDialog() : TRUE;
}

} // namespace

BOOL CDialog::Create(LPCTSTR lpszTemplateName, CWnd* pParentWnd)
{
    m_lpszTemplateName = lpszTemplateName;
    if (IS_INTRESOURCE(lpszTemplateName) && m_nIDHelp == 0)
        m_nIDHelp = LOWORD(reinterpret_cast<DWORD_PTR>(lpszTemplateName));
    const TemplateResource resource(lpszTemplateName);
    return CreateDlgIndirect(resource.Get(), pParentWnd, resource.Instance());
}

BOOL CDialog::Create(UINT nIDTemplate, CWnd* pParentWnd)
{
    return Create(MAKEINTRESOURCE(nIDTemplate), pParentWnd);
}

BOOL CDialog::CreateIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd, void*)
{
    return CreateDlgIndirect(lpDialogTemplate, pParentWnd, AfxGetInstanceHandle());
}

BOOL CDialog::CreateIndirect(HGLOBAL hDialogTemplate, CWnd* pParentWnd)
{
    if (hDialogTemplate == nullptr)
        return FALSE;
    const auto* const pTemplate = static_cast<LPCDLGTEMPLATE>(::GlobalLock(hDialogTemplate));
    const BOOL created = CreateIndirect(pTemplate, pParentWnd, nullptr);
    ::GlobalUnlock(hDialogTemplate);
    return created;
}

BOOL CDialog::CreateDlgIndirect(LPCDLGTEMPLATE pTemplate, CWnd* pParentWnd, HINSTANCE hInst)
{
    ASSERT(m_hWnd == nullptr);
    if (pTemplate == nullptr)
        return FALSE;
    if (pParentWnd == nullptr)
        pParentWnd = AfxGetMainWnd();

    HWND hWnd = nullptr;
    bool taken = false;
    m_pCreatedFrom = pTemplate;
    m_nFlags |= WF_CONTINUEMODAL; // EndDialog in OnInitDialog clears it
    {
        const afx_subset::CreationHook hook(this);
        hWnd = ::CreateDialogIndirectParam(hInst, pTemplate, pParentWnd->GetSafeHwnd(), &DialogProcedure, 0);
        taken = hook.Taken();
    }
    if (!taken)
        PostNcDestroy();
    if (hWnd == nullptr)
        return FALSE;
    m_pCreatedFrom = nullptr;
    if ((m_nFlags & WF_CONTINUEMODAL) != 0)
        return TRUE;
    ::DestroyWindow(hWnd);
    return FALSE;
}

BOOL CDialog::InitModalIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd, void*)
{
    m_lpDialogTemplate = lpDialogTemplate;
    if (pParentWnd != nullptr)
        m_pParentWnd = pParentWnd;
    return TRUE;
}

BOOL CDialog::InitModalIndirect(HGLOBAL hDialogTemplate, CWnd* pParentWnd)
{
    m_hDialogTemplate = hDialogTemplate;
    if (pParentWnd != nullptr)
        m_pParentWnd = pParentWnd;
    return TRUE;
}

// ---- Modal

HWND CDialog::PreModal()
{
    CWnd* const parent = m_pParentWnd->GetSafeHwnd() != nullptr ? m_pParentWnd : AfxGetMainWnd();
    HWND owner = parent->GetSafeHwnd();
    while (owner != nullptr && (::GetWindowLong(owner, GWL_STYLE) & WS_CHILD) != 0)
        owner = ::GetParent(owner);
    HWND top = owner;
    for (HWND up = owner; up != nullptr; up = ::GetParent(up))
        top = up;
    // Without a parent the owner is the popup that the user worked in last.
    if (m_pParentWnd == nullptr && owner != nullptr)
        owner = ::GetLastActivePopup(owner);

    if (top != nullptr && top != owner && ::IsWindowEnabled(top)) {
        m_hWndTop = top;
        ::EnableWindow(top, FALSE);
    }
    if (owner != nullptr && owner != ::GetDesktopWindow() && ::IsWindowEnabled(owner)) {
        ::EnableWindow(owner, FALSE);
        m_bOwnerDisabled = TRUE;
    }
    return owner;
}

void CDialog::PostModal(HWND hWndOwner)
{
    if (m_bOwnerDisabled && ::IsWindow(hWndOwner))
        ::EnableWindow(hWndOwner, TRUE);
    m_bOwnerDisabled = FALSE;
    // Before the dialog goes, or another program would be activated in its place.
    if (hWndOwner != nullptr && m_hWnd != nullptr && ::GetActiveWindow() == m_hWnd)
        ::SetActiveWindow(hWndOwner);
    DestroyWindow();
    if (::IsWindow(m_hWndTop))
        ::EnableWindow(m_hWndTop, TRUE);
    m_hWndTop = nullptr;
}

INT_PTR CDialog::RunModal(LPCDLGTEMPLATE pTemplate, HINSTANCE hInst)
{
    if (pTemplate == nullptr)
        return -1;
    m_nModalResult = -1;
    const HWND owner = PreModal();
    try {
        if (CreateDlgIndirect(pTemplate, CWnd::FromHandle(owner), hInst)) {
            RunModalLoop((GetStyle() & DS_NOIDLEMSG) != 0 ? MLF_SHOWONIDLE | MLF_NOIDLEMSG : MLF_SHOWONIDLE);
            if (m_hWnd != nullptr)
                SetWindowPos(nullptr, 0, 0, 0, 0,
                             SWP_HIDEWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE | SWP_NOZORDER);
        }
    } catch (CException* e) {
        e->Delete();
        m_nModalResult = -1;
    }
    PostModal(owner);
    return m_nModalResult;
}

INT_PTR CDialog::DoModal()
{
    if (m_lpDialogTemplate != nullptr)
        return RunModal(m_lpDialogTemplate, AfxGetResourceHandle());
    if (m_hDialogTemplate != nullptr) {
        const auto* const pTemplate = static_cast<LPCDLGTEMPLATE>(::GlobalLock(m_hDialogTemplate));
        const INT_PTR result = RunModal(pTemplate, AfxGetResourceHandle());
        ::GlobalUnlock(m_hDialogTemplate);
        return result;
    }
    const TemplateResource resource(m_lpszTemplateName);
    return RunModal(resource.Get(), resource.Instance());
}

void CDialog::EndDialog(int nResult)
{
    if ((m_nFlags & (WF_MODALLOOP | WF_CONTINUEMODAL)) != 0)
        EndModalLoop(nResult);
    ::EndDialog(m_hWnd, nResult);
}

// ---- Initialisation

namespace
{

struct TemplatePlacement {
    DWORD style;
    short x;
    short y;
};

// Reads the style and position of a plain or an extended template, which differ in their first fields.
TemplatePlacement PlacementOf(LPCDLGTEMPLATE pTemplate)
{
#pragma pack(push, 2)
    struct ExtendedHeader {
        WORD dlgVer;
        WORD signature;
        DWORD helpID;
        DWORD exStyle;
        DWORD style;
        WORD cDlgItems;
        short x;
        short y;
    };
#pragma pack(pop)
    const auto* const extended = reinterpret_cast<const ExtendedHeader*>(pTemplate);
    if (extended->signature == 0xFFFF)
        return {extended->style, extended->x, extended->y};
    return {pTemplate->style, pTemplate->x, pTemplate->y};
}

} // namespace

BOOL CDialog::CheckAutoCenter()
{
    if (m_pCreatedFrom == nullptr)
        return FALSE;
    const TemplatePlacement placement = PlacementOf(m_pCreatedFrom);
    return (placement.style & (DS_CENTER | DS_CENTERMOUSE | DS_ABSALIGN)) == 0 && placement.x == 0 &&
           placement.y == 0;
}

LRESULT CDialog::HandleInitDialog(WPARAM, LPARAM)
{
    const HWND hWnd = m_hWnd;
    CRect before;
    GetWindowRect(&before);
    const bool wasHidden = (GetStyle() & (WS_VISIBLE | WS_CHILD)) == 0;

    PreInitDialog();
    const LRESULT result = Default();

    // A dialog that nobody has placed is centred before it is seen.
    if (!::IsWindow(hWnd) || !wasHidden || (GetStyle() & WS_VISIBLE) != 0)
        return result;
    CRect after;
    GetWindowRect(&after);
    if (before.TopLeft() == after.TopLeft() && CheckAutoCenter())
        CenterWindow();
    return result;
}

void CDialog::PreInitDialog() {}

BOOL CDialog::OnInitDialog()
{
    if (!UpdateData(FALSE)) {
        EndDialog(-1);
        return FALSE;
    }
    return TRUE;
}

LRESULT CDialog::HandleSetFont(WPARAM wParam, LPARAM)
{
    OnSetFont(CFont::FromHandle(reinterpret_cast<HFONT>(wParam)));
    return Default();
}

void CDialog::OnSetFont(CFont*) {}

// ---- Commands and keys

void CDialog::OnOK()
{
    if (UpdateData(TRUE))
        EndDialog(IDOK);
}

void CDialog::OnCancel()
{
    EndDialog(IDCANCEL);
}

BOOL CDialog::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo)
{
    constexpr UINT firstCommand = 0x8000;
    constexpr UINT firstSystemCommand = 0xF000;
    if (CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
        return TRUE;
    // Only commands go on; what controls tell their dialog stays with it.
    const bool command = nCode == CN_COMMAND || nCode == static_cast<int>(CN_UPDATE_COMMAND_UI);
    if (!command || nID < firstCommand || nID >= firstSystemCommand)
        return FALSE;
    CWnd* const owner = GetOwner();
    if (owner != nullptr && owner->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
        return TRUE;
    CWinThread* const thread = AfxGetThread();
    return thread != nullptr && thread->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

BOOL CDialog::PreTranslateMessage(MSG* pMsg)
{
    if (CWnd::PreTranslateMessage(pMsg))
        return TRUE;
    // A multi-line edit would close a dialog that has no usable Cancel button when Escape is pressed in it.
    if (pMsg->message == WM_KEYDOWN && (pMsg->wParam == VK_ESCAPE || pMsg->wParam == VK_CANCEL)) {
        WCHAR className[8] = L"";
        ::GetClassName(pMsg->hwnd, className, 8);
        const bool multiLine = ::lstrcmpi(className, WC_EDIT) == 0 &&
                               (::GetWindowLong(pMsg->hwnd, GWL_STYLE) & ES_MULTILINE) != 0;
        const HWND cancel = ::GetDlgItem(m_hWnd, IDCANCEL);
        if (multiLine && (cancel == nullptr || ::IsWindowEnabled(cancel))) {
            SendMessage(WM_COMMAND, IDCANCEL, 0);
            return TRUE;
        }
    }
    return PreTranslateInput(pMsg);
}

// ---- Controls

void CDialog::MapDialogRect(LPRECT lpRect) const
{
    ::MapDialogRect(m_hWnd, lpRect);
}

void CDialog::NextDlgCtrl() const
{
    SendMessage(WM_NEXTDLGCTL, FALSE, FALSE);
}

void CDialog::PrevDlgCtrl() const
{
    SendMessage(WM_NEXTDLGCTL, TRUE, FALSE);
}

void CDialog::GotoDlgCtrl(CWnd* pWndCtrl)
{
    SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(pWndCtrl->GetSafeHwnd()), TRUE);
}

void CDialog::SetDefID(UINT nID)
{
    SendMessage(DM_SETDEFID, nID);
}

DWORD CDialog::GetDefID() const
{
    return static_cast<DWORD>(SendMessage(DM_GETDEFID));
}

void CDialog::SetHelpID(UINT nIDR)
{
    m_nIDHelp = nIDR;
}
