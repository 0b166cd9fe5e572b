// CWnd: translation of messages before they are dispatched, and modal loops.
#include <afxocc.h>

BOOL CWnd::PreTranslateMessage(MSG* pMsg)
{
    return m_pCtrlSite != nullptr && m_pCtrlSite->TranslateAccelerator(pMsg);
}

BOOL PASCAL CWnd::WalkPreTranslateTree(HWND hWndStop, MSG* pMsg)
{
    for (HWND hWnd = pMsg->hwnd; hWnd != nullptr; hWnd = ::GetParent(hWnd)) {
        CWnd* const window = FromHandlePermanent(hWnd);
        if (window != nullptr && window->PreTranslateMessage(pMsg))
            return TRUE;
        if (hWnd == hWndStop)
            break;
    }
    return FALSE;
}

BOOL CWnd::PreTranslateInput(LPMSG lpMsg)
{
    const bool key = lpMsg->message >= WM_KEYFIRST && lpMsg->message <= WM_KEYLAST;
    const bool mouse = lpMsg->message >= WM_MOUSEFIRST && lpMsg->message <= WM_MOUSELAST;
    if (key && m_pCtrlCont != nullptr && m_pCtrlCont->OnMnemonic(lpMsg))
        return TRUE;
    return (key || mouse) && ::IsDialogMessage(m_hWnd, lpMsg);
}

BOOL CWnd::ContinueModal()
{
    return (m_nFlags & WF_CONTINUEMODAL) != 0;
}

void CWnd::EndModalLoop(int nResult)
{
    m_nModalResult = nResult;
    if ((m_nFlags & WF_CONTINUEMODAL) == 0)
        return;
    m_nFlags &= ~static_cast<UINT>(WF_CONTINUEMODAL);
    // Wakes the loop, which may be waiting for a message.
    PostMessage(WM_NULL);
}

int CWnd::RunModalLoop(DWORD dwFlags)
{
    const HWND parent = ::GetParent(m_hWnd);
    const bool tellParent =
        (dwFlags & MLF_NOIDLEMSG) == 0 && parent != nullptr && (GetStyle() & DS_NOIDLEMSG) == 0;
    bool showPending = (dwFlags & MLF_SHOWONIDLE) != 0 && (GetStyle() & WS_VISIBLE) == 0;
    bool parentTold = false;
    MSG& msg = AfxGetThreadState()->m_msgCur;

    const auto showNow = [&] {
        if (showPending) {
            showPending = false;
            ShowWindow(SW_SHOWNORMAL);
            UpdateWindow();
        }
    };
    const auto leave = [&] {
        m_nFlags &= ~static_cast<UINT>(WF_MODALLOOP | WF_CONTINUEMODAL);
        return m_nModalResult;
    };

    m_nFlags |= WF_MODALLOOP | WF_CONTINUEMODAL;
    while (ContinueModal()) {
        if (!::PeekMessage(&msg, nullptr, 0, 0, PM_NOREMOVE)) {
            showNow();
            if (tellParent && !parentTold) {
                parentTold = true;
                ::SendMessage(parent, WM_ENTERIDLE, MSGF_DIALOGBOX, reinterpret_cast<LPARAM>(m_hWnd));
                continue;
            }
        }
        if (!AfxPumpMessage()) {
            AfxPostQuitMessage(0);
            leave();
            return -1;
        }
        // A message that makes the window needed at once shows it before the queue runs empty.
        if (showPending && (msg.message == 0x0118 || msg.message == WM_SYSKEYDOWN))
            showNow();
        if (AfxGetThread() == nullptr || AfxGetThread()->IsIdleMessage(&msg))
            parentTold = false;
    }
    return leave();
}
