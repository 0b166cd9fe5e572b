// The skinned dialog's tooltips: those of its controls and those of its caption buttons.
#include "vgui/dialogs/gui_dlg.h"

#include <afxext.h>
#include <algorithm>
#include <span>

namespace
{

constexpr int kTipDelay = 1000; // milliseconds
constexpr int kTipMargin = 1;   // pixels
constexpr int kTipMaxWidth = 400;
constexpr COLORREF kTippedText = RGB(80, 80, 255);

// Whether a window is one of the tooltip's tools. Asked without the tools' texts, whose length has no limit.
bool IsTool(CToolTipCtrl& tips, HWND window)
{
    const int count = tips.GetToolCount();
    for (int i = 0; i < count; ++i) {
        TOOLINFOW tool{};
        tool.cbSize = TTTOOLINFOW_V2_SIZE;
        if (tips.SendMessage(TTM_ENUMTOOLSW, i, reinterpret_cast<LPARAM>(&tool)) != 0 &&
            (tool.uFlags & TTF_IDISHWND) != 0 && reinterpret_cast<HWND>(tool.uId) == window)
            return true;
    }
    return false;
}

// Copies a text into a buffer, cut to its size and terminated.
void CopyText(const CString& text, std::span<wchar_t> buffer)
{
    ::lstrcpynW(buffer.data(), text, static_cast<int>(buffer.size()));
}

// The same in the thread's code page; a character of several bytes is kept whole or left out.
void CopyText(const CString& text, std::span<char> buffer)
{
    const int room = static_cast<int>(buffer.size()) - 1;
    int length = std::min(text.GetLength(), room);
    int bytes = 0;
    while (length > 0) {
        bytes = ::WideCharToMultiByte(CP_THREAD_ACP, 0, text, length, buffer.data(), room, nullptr, nullptr);
        if (bytes != 0)
            break;
        --length;
    }
    buffer[bytes] = '\0';
}

// The id that a tooltip asks about, 0 when it asks about nothing that has a text here.
UINT_PTR ToolId(const NMHDR& header, UINT flags)
{
    if ((flags & TTF_IDISHWND) == 0)
        return header.idFrom;
    CWnd* tool = CWnd::FromHandlePermanent(reinterpret_cast<HWND>(header.idFrom));
    return tool != nullptr && tool->IsKindOf(RUNTIME_CLASS(CControlBar)) ? tool->GetDlgCtrlID() : 0;
}

// Whether the message that is being processed was sent to a frame window, which then routed it on.
bool RoutedByFrame(const MSG* current)
{
    CWnd* receiver = current == nullptr ? nullptr : CWnd::FromHandlePermanent(current->hwnd);
    return receiver != nullptr && receiver->IsKindOf(RUNTIME_CLASS(CFrameWnd));
}

} // namespace

void VGuiDlg::CreateToolTips()
{
    if (m_ToolTip.m_hWnd != nullptr || !m_ToolTip.Create(this, TTS_ALWAYSTIP))
        return;
    m_ToolTip.SetDelayTime(kTipDelay);
    CRect margin(kTipMargin, kTipMargin, kTipMargin, kTipMargin);
    m_ToolTip.SetMargin(margin);
    m_ToolTip.SetMaxTipWidth(kTipMaxWidth);
    m_ToolTip.AddTool(this, LPSTR_TEXTCALLBACK);
}

bool VGuiDlg::AddToolTips(UINT nID, const CString& text)
{
    return m_hWnd != nullptr && AddToolTips(GetDlgItem(nID), text);
}

bool VGuiDlg::AddToolTips(CWnd* pWnd, const CString& text)
{
    if (pWnd == nullptr || !::IsWindow(pWnd->m_hWnd) || m_ToolTip.m_hWnd == nullptr)
        return false;
    SetStaticCtrlFormat(pWnd->GetDlgCtrlID(), kTippedText, 0, nullptr, -1);
    // A second tool for the control would never be shown.
    if (IsTool(m_ToolTip, pWnd->m_hWnd))
        m_ToolTip.DelTool(pWnd);
    return m_ToolTip.AddTool(pWnd, text) != FALSE;
}

BOOL VGuiDlg::PreTranslateMessage(MSG* pMsg)
{
    if (m_ToolTip.m_hWnd != nullptr && pMsg != nullptr) {
        m_ToolTip.RelayEvent(pMsg);
        const HWND under = ::WindowFromPoint(pMsg->pt);
        // Over the dialog itself the non-client area decides, see OnNcMouseMove.
        if (under != m_hWnd)
            m_ToolTip.Activate(IsTool(m_ToolTip, under));
    }
    return CDialog::PreTranslateMessage(pMsg);
}

BOOL VGuiDlg::OnToolTipText(UINT, NMHDR* pNMHDR, LRESULT* pResult)
{
    // A frame that routes the question here has its own answer to it.
    if (pNMHDR == nullptr || RoutedByFrame(GetCurrentMessage()))
        return FALSE;
    const bool wide = pNMHDR->code == TTN_NEEDTEXTW;
    auto* const wideTip = reinterpret_cast<NMTTDISPINFOW*>(pNMHDR);
    auto* const narrowTip = reinterpret_cast<NMTTDISPINFOA*>(pNMHDR);
    const UINT_PTR id = ToolId(*pNMHDR, wide ? wideTip->uFlags : narrowTip->uFlags);
    if (id == 0)
        return FALSE;

    CString text;
    LoadStringW(text, id);
    text = GetFormatString(text);
    if (wide)
        CopyText(text, std::span<wchar_t>(wideTip->szText));
    else
        CopyText(text, std::span<char>(narrowTip->szText));
    if (pResult != nullptr)
        *pResult = 0;
    ::SetWindowPos(pNMHDR->hwndFrom, HWND_TOP, 0, 0, 0, 0,
                   SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
    return TRUE;
}

bool VGuiDlg::LoadStringW(CString& text, UINT_PTR nID) const
{
    // String resources have ids of 16 bits; a larger number would be taken for a pointer further down.
    if (nID <= 0xFFFF && text.LoadString(static_cast<UINT>(nID)))
        return true;
    text.Empty();
    return false;
}

CString VGuiDlg::GetFormatString(const CString& text)
{
    return text;
}

// The tip of a caption button, empty for none.
CString VGuiDlg::GetCapBtnTip(LRESULT nHit) const
{
    switch (nHit) {
    case HTCLOSE:
        return L"关闭";
    case HTMAXBUTTON:
        return IsZoomed() ? L"还原" : L"最大化";
    case HTMINBUTTON:
        return IsIconic() ? L"" : L"最小化";
    case HTHELP:
        return L"点击进入视频帮助系统";
    default:
        return L"";
    }
}

void VGuiDlg::ShowCapBtnTip(CPoint point)
{
    if (m_ToolTip.m_hWnd == nullptr)
        return;
    const CString tip = GetCapBtnTip(NcHitTest(point));
    if (!tip.IsEmpty()) {
        CString current;
        m_ToolTip.GetText(current, this);
        if (current != tip) {
            // Away with the tip of the button before; this one's appears beside this button.
            m_ToolTip.Pop();
            m_ToolTip.UpdateTipText(tip, this);
        }
    }
    // The bare caption shows no tip: the last button's text would be wrong there.
    m_ToolTip.Activate(!tip.IsEmpty());
    if (!tip.IsEmpty()) {
        // Tooltip controls follow the mouse by its client-area messages only.
        CPoint client = point;
        ScreenToClient(&client);
        MSG move{m_hWnd, WM_MOUSEMOVE, 0, MAKELPARAM(client.x, client.y), ::GetTickCount(), point};
        m_ToolTip.RelayEvent(&move);
    }
}
