#include "vgui/controls/tool_bar.h"

namespace
{

constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS |
                         CCS_NORESIZE | CCS_NODIVIDER | CCS_NOPARENTALIGN;

} // namespace

IMPLEMENT_DYNAMIC(VToolBar, CToolBarCtrl)

BEGIN_MESSAGE_MAP(VToolBar, CToolBarCtrl)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_ENABLE()
    ON_WM_DESTROY()
    ON_MESSAGE(WM_PRINTCLIENT, &VToolBar::OnPrintClient)
    ON_NOTIFY_REFLECT_EX(TBN_GETINFOTIPW, &VToolBar::OnGetInfoTip)
END_MESSAGE_MAP()

BOOL VToolBar::DlgCreate(CWnd* pDlg, const CRect& rect, UINT nID, DWORD dwStyle)
{
    if (pDlg->GetSafeHwnd() == nullptr || m_hWnd != nullptr)
        return FALSE;
    if (!Create(kStyle | dwStyle, rect, pDlg, nID))
        return FALSE;
    SetExtendedStyle(TBSTYLE_EX_DRAWDDARROWS);
    if (CFont* const font = pDlg->GetFont())
        SetFont(font);
    return TRUE;
}

BOOL VToolBar::DlgCreate(CWnd* pDlg, UINT nPlaceID, DWORD dwStyle)
{
    CWnd* const place = pDlg->GetSafeHwnd() != nullptr ? pDlg->GetDlgItem(nPlaceID) : nullptr;
    if (place == nullptr)
        return FALSE;
    CRect rect;
    place->GetWindowRect(rect);
    pDlg->ScreenToClient(rect);
    if (!DlgCreate(pDlg, rect, nPlaceID, dwStyle))
        return FALSE;
    SetWindowPos(place, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    place->DestroyWindow();
    return TRUE;
}

void VToolBar::Reposition(const CRect& rect)
{
    if (m_hWnd == nullptr)
        return;
    MoveWindow(rect);
    Reposition();
}

void VToolBar::Reposition()
{
    if (m_hWnd == nullptr)
        return;
    AutoSize();
    Invalidate();
}

BOOL VToolBar::SetButton(int nIndex, UINT nCommand, int nImage, BYTE fsStyle, const wchar_t* text,
                         const wchar_t* tip)
{
    const int count = GetBtnCount();
    if (m_hWnd == nullptr || nIndex < 0 || nIndex > count)
        return FALSE;
    const bool separator = (fsStyle & BTNS_SEP) != 0;
    TBBUTTON former{};
    const bool replaces = nIndex < count && GetButton(nIndex, &former);
    TBBUTTON button{};
    button.iBitmap = nImage;
    button.idCommand = separator ? 0 : static_cast<int>(nCommand);
    button.fsState = replaces ? former.fsState : TBSTATE_ENABLED;
    button.fsStyle = fsStyle;
    // No string has the index -1.
    const CString label = separator ? CString() : CString(text);
    button.iString = label.IsEmpty() ? -1 : reinterpret_cast<INT_PTR>(label.GetString());
    if (!InsertButton(nIndex, &button))
        return FALSE;
    if (replaces) {
        DeleteButton(nIndex + 1);
        if (static_cast<int>(CommandToIndex(former.idCommand)) < 0) // no other button has it
            m_tips.erase(former.idCommand);
    }
    if (!separator)
        m_tips[nCommand] = tip;
    Reposition();
    return TRUE;
}

int VToolBar::GetBtnCount() const
{
    return m_hWnd != nullptr ? GetButtonCount() : 0;
}

void VToolBar::SetBkColorAsParent(BOOL bAsParent)
{
    m_bBkColorAsParent = bAsParent;
    if (m_hWnd != nullptr)
        Invalidate();
}

BOOL VToolBar::GetBkColorAsParent() const
{
    return m_bBkColorAsParent;
}

// A button without a tip of its own leaves the question to the parent.
BOOL VToolBar::OnGetInfoTip(NMHDR* pNMHDR, LRESULT* pResult)
{
    auto& question = *reinterpret_cast<NMTBGETINFOTIPW*>(pNMHDR);
    const auto found = m_tips.find(question.iItem);
    if (found == m_tips.end() || found->second.IsEmpty() || question.pszText == nullptr ||
        question.cchTextMax <= 0)
        return FALSE;
    ::lstrcpynW(question.pszText, found->second, question.cchTextMax);
    *pResult = 0;
    return TRUE;
}

void VToolBar::OnEnable(BOOL bEnable)
{
    CToolBarCtrl::OnEnable(bEnable);
    Invalidate();
}

void VToolBar::OnDestroy()
{
    m_tips.clear();
    CToolBarCtrl::OnDestroy();
}
