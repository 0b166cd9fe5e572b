#include <afxwin.h>

#include "dispatch.h"

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

const AFX_MSGMAP* PASCAL CCmdTarget::GetThisMessageMap()
{
    static const AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, nullptr, nullptr}};
    static const AFX_MSGMAP messageMap = {nullptr, &entries[0]};
    return &messageMap;
}

const AFX_MSGMAP* CCmdTarget::GetMessageMap() const
{
    return GetThisMessageMap();
}

BOOL CCmdTarget::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo)
{
    UINT message = 0;
    if (nCode != static_cast<int>(CN_UPDATE_COMMAND_UI)) {
        message = HIWORD(nCode);
        nCode = LOWORD(nCode);
    }
    if (message == 0)
        message = WM_COMMAND;

    AFX_MSG_DISPATCH dispatch{};
    dispatch.message = message;
    dispatch.nID = nID;
    if (message == WM_NOTIFY || message == WM_REFLECT_BASE + WM_NOTIFY)
        dispatch.notify = static_cast<AFX_NOTIFY*>(pExtra);
    else if (nCode == static_cast<int>(CN_UPDATE_COMMAND_UI))
        dispatch.pCmdUI = static_cast<CCmdUI*>(pExtra);

    for (const AFX_MSGMAP* map = GetMessageMap(); map != nullptr; map = afx_subset::BaseMap(map)) {
        const AFX_MSGMAP_ENTRY* const entry =
            afx_subset::FindEntry(map->lpEntries, message, static_cast<UINT>(nCode), nID);
        if (entry == nullptr)
            continue;
        if (pHandlerInfo != nullptr) {
            pHandlerInfo->pTarget = this;
            pHandlerInfo->pmf = entry->pfn;
            return TRUE;
        }
        if (dispatch.pCmdUI != nullptr)
            dispatch.pCmdUI->m_bContinueRouting = FALSE;
        const BOOL handled = entry->pfn(this, dispatch);
        return handled && !(dispatch.pCmdUI != nullptr && dispatch.pCmdUI->m_bContinueRouting);
    }
    return FALSE;
}

void CCmdTarget::BeginWaitCursor()
{
    if (CWinApp* app = AfxGetApp())
        app->DoWaitCursor(1);
}

void CCmdTarget::EndWaitCursor()
{
    if (CWinApp* app = AfxGetApp())
        app->DoWaitCursor(-1);
}

void CCmdTarget::RestoreWaitCursor()
{
    if (CWinApp* app = AfxGetApp())
        app->DoWaitCursor(0);
}

CWaitCursor::CWaitCursor()
{
    if (CWinApp* app = AfxGetApp())
        app->DoWaitCursor(1);
}

CWaitCursor::~CWaitCursor()
{
    if (CWinApp* app = AfxGetApp())
        app->DoWaitCursor(-1);
}

void CWaitCursor::Restore()
{
    if (CWinApp* app = AfxGetApp())
        app->DoWaitCursor(0);
}

// ---- Updating user-interface items

void CCmdUI::Enable(BOOL bOn)
{
    if (m_pMenu != nullptr) {
        if (m_pSubMenu == nullptr)
            m_pMenu->EnableMenuItem(m_nIndex, MF_BYPOSITION | (bOn ? MF_ENABLED : MF_DISABLED | MF_GRAYED));
    } else if (m_pOther != nullptr) {
        // A disabled control cannot keep the focus, or the keyboard would be lost.
        if (!bOn && ::GetFocus() == m_pOther->GetSafeHwnd())
            m_pOther->GetParent()->SendMessage(WM_NEXTDLGCTL, 0, FALSE);
        m_pOther->EnableWindow(bOn);
    }
    m_bEnableChanged = TRUE;
}

void CCmdUI::SetCheck(int nCheck)
{
    if (m_pMenu != nullptr) {
        if (m_pSubMenu == nullptr)
            m_pMenu->CheckMenuItem(m_nIndex, MF_BYPOSITION | (nCheck ? MF_CHECKED : MF_UNCHECKED));
    } else if (m_pOther != nullptr && (m_pOther->SendMessage(WM_GETDLGCODE) & DLGC_BUTTON) != 0) {
        m_pOther->SendMessage(BM_SETCHECK, nCheck);
    }
}

void CCmdUI::SetRadio(BOOL bOn)
{
    SetCheck(bOn ? 1 : 0);
}

void CCmdUI::SetText(LPCTSTR lpszText)
{
    if (m_pMenu != nullptr) {
        if (m_pSubMenu != nullptr)
            return;
        const UINT state =
            m_pMenu->GetMenuState(m_nIndex, MF_BYPOSITION) & ~(MF_BITMAP | MF_OWNERDRAW | MF_SEPARATOR);
        m_pMenu->ModifyMenu(m_nIndex, MF_BYPOSITION | MF_STRING | state, m_nID, lpszText);
    } else if (m_pOther != nullptr) {
        m_pOther->SetWindowText(lpszText);
    }
}

BOOL CCmdUI::DoUpdate(CCmdTarget* pTarget, BOOL bDisableIfNoHndler)
{
    if (pTarget == nullptr || m_nID == 0 || LOWORD(m_nID) == 0xFFFF)
        return TRUE;
    m_bEnableChanged = FALSE;
    const BOOL updated = pTarget->OnCmdMsg(m_nID, static_cast<int>(CN_UPDATE_COMMAND_UI), this, nullptr);
    if (bDisableIfNoHndler && !m_bEnableChanged) {
        AFX_CMDHANDLERINFO info{};
        Enable(pTarget->OnCmdMsg(m_nID, CN_COMMAND, this, &info));
    }
    return updated;
}
