// CWnd: styles, relations, text, dialog items, messages, menus, timers.
#include <afxocc.h>

CWnd::operator HWND() const
{
    return GetSafeHwnd();
}

HWND CWnd::GetSafeHwnd() const
{
    // Called on null pointers by design of this interface; this DLL is compiled so that the test stays.
    return this == nullptr ? nullptr : m_hWnd;
}

BOOL CWnd::operator==(const CWnd& wnd) const
{
    return wnd.GetSafeHwnd() == GetSafeHwnd();
}

BOOL CWnd::operator!=(const CWnd& wnd) const
{
    return !(*this == wnd);
}

DWORD CWnd::GetStyle() const
{
    return static_cast<DWORD>(::GetWindowLong(m_hWnd, GWL_STYLE));
}

DWORD CWnd::GetExStyle() const
{
    return static_cast<DWORD>(::GetWindowLong(m_hWnd, GWL_EXSTYLE));
}

namespace
{

BOOL ModifyWindowStyle(HWND hWnd, int index, DWORD dwRemove, DWORD dwAdd, UINT nFlags)
{
    const auto before = static_cast<DWORD>(::GetWindowLong(hWnd, index));
    const DWORD after = (before & ~dwRemove) | dwAdd;
    if (before == after)
        return FALSE;
    ::SetWindowLong(hWnd, index, static_cast<LONG>(after));
    if (nFlags != 0)
        ::SetWindowPos(hWnd, nullptr, 0, 0, 0, 0,
                       SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | nFlags);
    return TRUE;
}

} // namespace

BOOL CWnd::ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags)
{
    return ModifyWindowStyle(m_hWnd, GWL_STYLE, dwRemove, dwAdd, nFlags);
}

BOOL CWnd::ModifyStyleEx(DWORD dwRemove, DWORD dwAdd, UINT nFlags)
{
    return ModifyWindowStyle(m_hWnd, GWL_EXSTYLE, dwRemove, dwAdd, nFlags);
}

CWnd* CWnd::GetOwner() const
{
    return m_hWndOwner != nullptr ? FromHandle(m_hWndOwner) : GetParent();
}

void CWnd::SetOwner(CWnd* pOwnerWnd)
{
    m_hWndOwner = pOwnerWnd->GetSafeHwnd();
}

CWnd* CWnd::GetParent() const
{
    return FromHandle(::GetParent(m_hWnd));
}

CWnd* CWnd::SetParent(CWnd* pWndNewParent)
{
    return FromHandle(::SetParent(m_hWnd, pWndNewParent->GetSafeHwnd()));
}

namespace
{

HWND ParentOrOwner(HWND hWnd)
{
    return (::GetWindowLong(hWnd, GWL_STYLE) & WS_CHILD) != 0 ? ::GetParent(hWnd)
                                                              : ::GetWindow(hWnd, GW_OWNER);
}

} // namespace

CWnd* CWnd::GetParentOwner() const
{
    HWND hWnd = GetSafeHwnd();
    while (hWnd != nullptr && (::GetWindowLong(hWnd, GWL_STYLE) & WS_CHILD) != 0)
        hWnd = ::GetParent(hWnd);
    return FromHandle(hWnd);
}

CWnd* CWnd::GetTopLevelParent() const
{
    HWND hWnd = GetSafeHwnd();
    if (hWnd == nullptr)
        return nullptr;
    while (const HWND parent = ParentOrOwner(hWnd))
        hWnd = parent;
    return FromHandle(hWnd);
}

CWnd* CWnd::GetTopLevelOwner() const
{
    HWND hWnd = GetSafeHwnd();
    if (hWnd == nullptr)
        return nullptr;
    while (const HWND owner = ::GetWindow(hWnd, GW_OWNER))
        hWnd = owner;
    return FromHandle(hWnd);
}

BOOL CWnd::IsFrameWnd() const
{
    return FALSE;
}

CFrameWnd* CWnd::GetParentFrame() const
{
    if (GetSafeHwnd() == nullptr)
        return nullptr;
    for (HWND hWnd = ParentOrOwner(m_hWnd); hWnd != nullptr; hWnd = ParentOrOwner(hWnd)) {
        CWnd* const window = FromHandlePermanent(hWnd);
        if (window != nullptr && window->IsFrameWnd())
            return static_cast<CFrameWnd*>(window);
    }
    return nullptr;
}

CFrameWnd* CWnd::GetTopLevelFrame() const
{
    if (GetSafeHwnd() == nullptr)
        return nullptr;
    CFrameWnd* frame = IsFrameWnd() ? static_cast<CFrameWnd*>(const_cast<CWnd*>(this)) : GetParentFrame();
    while (frame != nullptr) {
        CFrameWnd* const outer = frame->GetParentFrame();
        if (outer == nullptr)
            break;
        frame = outer;
    }
    return frame;
}

CWnd* CWnd::GetWindow(UINT nCmd) const
{
    return FromHandle(::GetWindow(m_hWnd, nCmd));
}

CWnd* CWnd::GetTopWindow() const
{
    return FromHandle(::GetTopWindow(m_hWnd));
}

CWnd* CWnd::GetNextWindow(UINT nFlag) const
{
    return FromHandle(::GetWindow(m_hWnd, nFlag));
}

CWnd* CWnd::GetLastActivePopup() const
{
    return FromHandle(::GetLastActivePopup(m_hWnd));
}

BOOL CWnd::IsChild(const CWnd* pWnd) const
{
    return ::IsChild(m_hWnd, pWnd->GetSafeHwnd());
}

CWnd* PASCAL CWnd::FindWindow(LPCTSTR lpszClassName, LPCTSTR lpszWindowName)
{
    return FromHandle(::FindWindow(lpszClassName, lpszWindowName));
}

CWnd* CWnd::ChildWindowFromPoint(POINT point) const
{
    return FromHandle(::ChildWindowFromPoint(m_hWnd, point));
}

CWnd* CWnd::ChildWindowFromPoint(POINT point, UINT nFlags) const
{
    return FromHandle(::ChildWindowFromPointEx(m_hWnd, point, nFlags));
}

CWnd* PASCAL CWnd::WindowFromPoint(POINT point)
{
    return FromHandle(::WindowFromPoint(point));
}

CWnd* PASCAL CWnd::GetDesktopWindow()
{
    return FromHandle(::GetDesktopWindow());
}

CWnd* PASCAL CWnd::GetActiveWindow()
{
    return FromHandle(::GetActiveWindow());
}

CWnd* PASCAL CWnd::GetFocus()
{
    return FromHandle(::GetFocus());
}

CWnd* PASCAL CWnd::GetCapture()
{
    return FromHandle(::GetCapture());
}

CWnd* PASCAL CWnd::GetForegroundWindow()
{
    return FromHandle(::GetForegroundWindow());
}

void CWnd::SetWindowText(LPCTSTR lpszString)
{
    if (m_pCtrlSite != nullptr)
        m_pCtrlSite->SetWindowText(lpszString);
    else
        ::SetWindowText(m_hWnd, lpszString);
}

int CWnd::GetWindowText(LPTSTR lpszStringBuf, int nMaxCount) const
{
    if (m_pCtrlSite == nullptr)
        return ::GetWindowText(m_hWnd, lpszStringBuf, nMaxCount);
    if (lpszStringBuf == nullptr || nMaxCount <= 0)
        return 0;
    CString text;
    m_pCtrlSite->GetWindowText(text);
    ::lstrcpyn(lpszStringBuf, text, nMaxCount);
    return ::lstrlen(lpszStringBuf);
}

void CWnd::GetWindowText(CString& rString) const
{
    if (m_pCtrlSite != nullptr) {
        m_pCtrlSite->GetWindowText(rString);
        return;
    }
    const int length = ::GetWindowTextLength(m_hWnd);
    ::GetWindowText(m_hWnd, rString.GetBufferSetLength(length), length + 1);
    rString.ReleaseBuffer();
}

int CWnd::GetWindowTextLength() const
{
    if (m_pCtrlSite == nullptr)
        return ::GetWindowTextLength(m_hWnd);
    CString text;
    m_pCtrlSite->GetWindowText(text);
    return text.GetLength();
}

void CWnd::SetFont(CFont* pFont, BOOL bRedraw)
{
    const HGDIOBJ font = pFont != nullptr ? pFont->GetSafeHandle() : nullptr;
    ::SendMessage(m_hWnd, WM_SETFONT, reinterpret_cast<WPARAM>(font), bRedraw);
}

CFont* CWnd::GetFont() const
{
    return CFont::FromHandle(reinterpret_cast<HFONT>(::SendMessage(m_hWnd, WM_GETFONT, 0, 0)));
}

HICON CWnd::SetIcon(HICON hIcon, BOOL bBigIcon)
{
    return reinterpret_cast<HICON>(
        ::SendMessage(m_hWnd, WM_SETICON, bBigIcon, reinterpret_cast<LPARAM>(hIcon)));
}

HICON CWnd::GetIcon(BOOL bBigIcon) const
{
    return reinterpret_cast<HICON>(::SendMessage(m_hWnd, WM_GETICON, bBigIcon, 0));
}

CWnd* CWnd::GetDlgItem(int nID) const
{
    return FromHandle(::GetDlgItem(m_hWnd, nID));
}

void CWnd::GetDlgItem(int nID, HWND* phWnd) const
{
    *phWnd = ::GetDlgItem(m_hWnd, nID);
}

CWnd* CWnd::GetDescendantWindow(int nID, BOOL bOnlyPerm) const
{
    const HWND direct = ::GetDlgItem(m_hWnd, nID);
    if (direct != nullptr) {
        CWnd* const window = bOnlyPerm ? FromHandlePermanent(direct) : FromHandle(direct);
        if (window != nullptr)
            return window;
    }
    for (HWND child = ::GetTopWindow(m_hWnd); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        CWnd* const window = FromHandle(child)->GetDescendantWindow(nID, bOnlyPerm);
        if (window != nullptr)
            return window;
    }
    return nullptr;
}

void CWnd::SendMessageToDescendants(UINT message, WPARAM wParam, LPARAM lParam, BOOL bDeep, BOOL bOnlyPerm)
{
    HWND next = nullptr;
    for (HWND child = ::GetTopWindow(m_hWnd); child != nullptr; child = next) {
        // Found beforehand: the message may destroy the window.
        next = ::GetWindow(child, GW_HWNDNEXT);
        if (!bOnlyPerm)
            ::SendMessage(child, message, wParam, lParam);
        else if (FromHandlePermanent(child) != nullptr)
            ::SendMessage(child, message, wParam, lParam);
        if (bDeep && ::IsWindow(child) && ::GetTopWindow(child) != nullptr)
            FromHandle(child)->SendMessageToDescendants(message, wParam, lParam, bDeep, bOnlyPerm);
    }
}

int CWnd::GetDlgCtrlID() const
{
    return ::GetDlgCtrlID(m_hWnd);
}

int CWnd::SetDlgCtrlID(int nID)
{
    return static_cast<int>(::SetWindowLongPtr(m_hWnd, GWLP_ID, nID));
}

int CWnd::GetDlgItemText(int nID, LPTSTR lpStr, int nMaxCount) const
{
    return static_cast<int>(::GetDlgItemText(m_hWnd, nID, lpStr, nMaxCount));
}

int CWnd::GetDlgItemText(int nID, CString& rString) const
{
    rString.Empty();
    const HWND item = ::GetDlgItem(m_hWnd, nID);
    if (item != nullptr)
        FromHandle(item)->GetWindowText(rString);
    return rString.GetLength();
}

void CWnd::SetDlgItemText(int nID, LPCTSTR lpszString)
{
    ::SetDlgItemText(m_hWnd, nID, lpszString);
}

UINT CWnd::GetDlgItemInt(int nID, BOOL* lpTrans, BOOL bSigned) const
{
    return ::GetDlgItemInt(m_hWnd, nID, lpTrans, bSigned);
}

void CWnd::SetDlgItemInt(int nID, UINT nValue, BOOL bSigned)
{
    ::SetDlgItemInt(m_hWnd, nID, nValue, bSigned);
}

LRESULT CWnd::SendDlgItemMessage(int nID, UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::SendDlgItemMessage(m_hWnd, nID, message, wParam, lParam);
}

UINT CWnd::IsDlgButtonChecked(int nIDButton) const
{
    return ::IsDlgButtonChecked(m_hWnd, nIDButton);
}

void CWnd::CheckDlgButton(int nIDButton, UINT nCheck)
{
    ::CheckDlgButton(m_hWnd, nIDButton, nCheck);
}

void CWnd::CheckRadioButton(int nIDFirstButton, int nIDLastButton, int nIDCheckButton)
{
    ::CheckRadioButton(m_hWnd, nIDFirstButton, nIDLastButton, nIDCheckButton);
}

int CWnd::GetCheckedRadioButton(int nIDFirstButton, int nIDLastButton) const
{
    for (int id = nIDFirstButton; id <= nIDLastButton; ++id) {
        if (IsDlgButtonChecked(id))
            return id;
    }
    return 0;
}

CWnd* CWnd::GetNextDlgGroupItem(CWnd* pWndCtl, BOOL bPrevious) const
{
    return FromHandle(::GetNextDlgGroupItem(m_hWnd, pWndCtl->GetSafeHwnd(), bPrevious));
}

CWnd* CWnd::GetNextDlgTabItem(CWnd* pWndCtl, BOOL bPrevious) const
{
    return FromHandle(::GetNextDlgTabItem(m_hWnd, pWndCtl->GetSafeHwnd(), bPrevious));
}

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return ::SendMessage(m_hWnd, message, wParam, lParam);
}

BOOL CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::PostMessage(m_hWnd, message, wParam, lParam);
}

BOOL CWnd::SendNotifyMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::SendNotifyMessage(m_hWnd, message, wParam, lParam);
}

int CWnd::MessageBox(LPCTSTR lpszText, LPCTSTR lpszCaption, UINT nType)
{
    return ::MessageBox(GetSafeHwnd(), lpszText, lpszCaption != nullptr ? lpszCaption : AfxGetAppName(),
                        nType);
}

BOOL CWnd::OpenClipboard()
{
    return ::OpenClipboard(m_hWnd);
}

CMenu* CWnd::GetMenu() const
{
    return CMenu::FromHandle(::GetMenu(m_hWnd));
}

BOOL CWnd::SetMenu(CMenu* pMenu)
{
    return ::SetMenu(m_hWnd, pMenu != nullptr ? pMenu->GetSafeHmenu() : nullptr);
}

void CWnd::DrawMenuBar()
{
    ::DrawMenuBar(m_hWnd);
}

CMenu* CWnd::GetSystemMenu(BOOL bRevert) const
{
    return CMenu::FromHandle(::GetSystemMenu(m_hWnd, bRevert));
}

UINT_PTR CWnd::SetTimer(UINT_PTR nIDEvent, UINT nElapse,
                        void(CALLBACK* lpfnTimer)(HWND, UINT, UINT_PTR, DWORD))
{
    return ::SetTimer(m_hWnd, nIDEvent, nElapse, lpfnTimer);
}

BOOL CWnd::KillTimer(UINT_PTR nIDEvent)
{
    return ::KillTimer(m_hWnd, nIDEvent);
}

void CWnd::CreateSolidCaret(int nWidth, int nHeight)
{
    ::CreateCaret(m_hWnd, nullptr, nWidth, nHeight);
}

CPoint PASCAL CWnd::GetCaretPos()
{
    CPoint point;
    ::GetCaretPos(&point);
    return point;
}

void PASCAL CWnd::SetCaretPos(POINT point)
{
    ::SetCaretPos(point.x, point.y);
}

void CWnd::HideCaret()
{
    ::HideCaret(m_hWnd);
}

void CWnd::ShowCaret()
{
    ::ShowCaret(m_hWnd);
}
