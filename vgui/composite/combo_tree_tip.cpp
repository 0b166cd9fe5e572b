#include "vgui/composite/combo_tree_tip.h"

#include "vgui/foundation/gdi_scope.h"

#include <algorithm>

namespace
{

constexpr UINT_PTR kShowTimer = 1;
constexpr UINT_PTR kLeaveTimer = 2;
constexpr UINT kShowDelay = 200; // milliseconds
constexpr UINT kLeavePeriod = 200;
constexpr int kLabelMargin = 3; // pixels by which the tip is wider than the label, on each side

CSize MeasureText(CWnd& window, HFONT font, const CString& text)
{
    CRect rect(0, 0, 0, 0);
    CClientDC dc(&window);
    const VSelectScope selected(dc.m_hDC, font);
    dc.DrawText(text, rect, DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
    return rect.Size();
}

} // namespace

BEGIN_MESSAGE_MAP(CComboPopupText, CWnd)
    ON_WM_PAINT()
    ON_MESSAGE(WM_SETTEXT, &CComboPopupText::OnSetText)
    ON_WM_TIMER()
    ON_WM_LBUTTONDOWN()
    ON_WM_RBUTTONDOWN()
    ON_WM_MBUTTONDOWN()
    ON_WM_MOUSEACTIVATE()
    ON_WM_DESTROY()
END_MESSAGE_MAP()

CComboPopupText::CComboPopupText()
{
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof(metrics);
    if (::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0))
        m_font.CreateFontIndirect(&metrics.lfStatusFont);
}

CComboPopupText& CComboPopupText::Instance()
{
    static CComboPopupText tip;
    return tip;
}

bool CComboPopupText::BelongTo(CWnd& tree)
{
    if (m_hWnd == nullptr)
        return CreateEx(WS_EX_TOOLWINDOW | WS_EX_TOPMOST, AfxRegisterWndClass(0), nullptr,
                        WS_POPUP | WS_BORDER, 0, 0, 0, 0, tree.m_hWnd, nullptr) != FALSE;
    if (GetTree() != tree.m_hWnd)
        SetTree(tree.m_hWnd);
    return true;
}

void CComboPopupText::Leave(const CWnd& tree)
{
    if (m_hWnd != nullptr && GetTree() == tree.m_hWnd)
        SetTree(nullptr);
}

void CComboPopupText::SetTree(HWND tree)
{
    Hide();
    ::SetWindowLongPtrW(m_hWnd, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(tree));
}

HWND CComboPopupText::GetTree() const
{
    return m_hWnd != nullptr ? ::GetWindow(m_hWnd, GW_OWNER) : nullptr;
}

void CComboPopupText::Show(UINT delay)
{
    if (m_hWnd == nullptr)
        return;
    StopTimers();
    m_nLeaveTimer = SetTimer(kLeaveTimer, kLeavePeriod, nullptr);
    m_bMouseLeft = FALSE;
    if (delay != 0)
        m_nShowTimer = SetTimer(kShowTimer, delay, nullptr);
    else
        Appear();
}

void CComboPopupText::Appear()
{
    SetWindowPos(&wndTopMost, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

void CComboPopupText::Hide()
{
    StopTimers();
    if (m_hWnd != nullptr)
        ShowWindow(SW_HIDE);
}

void CComboPopupText::StopTimer(UINT_PTR& timer)
{
    if (timer != 0)
        KillTimer(timer);
    timer = 0;
}

void CComboPopupText::StopTimers()
{
    StopTimer(m_nShowTimer);
    StopTimer(m_nLeaveTimer);
}

bool CComboPopupText::IsMouseAway() const
{
    CPoint cursor;
    ::GetCursorPos(&cursor);
    const HWND under = ::WindowFromPoint(cursor);
    return under != m_hWnd && under != GetTree();
}

// The message of a timer that has been stopped may still come.
void CComboPopupText::OnTimer(UINT_PTR nIDEvent)
{
    if (nIDEvent == kShowTimer && m_nShowTimer != 0) {
        StopTimer(m_nShowTimer);
        Appear();
    } else if (nIDEvent == kLeaveTimer && m_nLeaveTimer != 0 && IsMouseAway()) {
        Hide();
        m_bMouseLeft = TRUE;
    } else {
        CWnd::OnTimer(nIDEvent);
    }
}

void CComboPopupText::OnDestroy()
{
    StopTimers();
    CWnd::OnDestroy();
}

LRESULT CComboPopupText::OnSetText(WPARAM /*wParam*/, LPARAM lParam)
{
    CRect rect;
    GetWindowRect(rect);
    const CSize size = MeasureText(*this, m_font, reinterpret_cast<LPCWSTR>(lParam)) +
                       CSize(2 * m_margins.cx, 2 * m_margins.cy);
    const int left = (m_dwAlign & kGrowLeft) != 0 ? rect.right - size.cx : rect.left;
    SetWindowPos(nullptr, left, rect.top, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    return Default();
}

void CComboPopupText::OnPaint()
{
    CPaintDC dc(this);
    CRect client;
    GetClientRect(client);
    CString text;
    GetWindowText(text);
    dc.FillSolidRect(client, ::GetSysColor(COLOR_INFOBK));
    const VBkModeScope transparent(dc.m_hDC, TRANSPARENT);
    const VTextColorScope color(dc.m_hDC, ::GetSysColor(COLOR_INFOTEXT));
    const VSelectScope font(dc, m_font);
    dc.DrawText(text, client, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

void CComboPopupText::OnLButtonDown(UINT nFlags, CPoint point)
{
    Hide();
    CWnd::OnLButtonDown(nFlags, point);
}

void CComboPopupText::OnRButtonDown(UINT nFlags, CPoint point)
{
    Hide();
    CWnd::OnRButtonDown(nFlags, point);
}

void CComboPopupText::OnMButtonDown(UINT nFlags, CPoint point)
{
    Hide();
    CWnd::OnMButtonDown(nFlags, point);
}

int CComboPopupText::OnMouseActivate(CWnd* /*pDesktopWnd*/, UINT /*nHitTest*/, UINT /*message*/)
{
    return MA_NOACTIVATE;
}

// ---- The hook on the tree

BOOL ComboTreeTip::Watch(CTreeCtrl& tree)
{
    m_nTreeId = static_cast<UINT>(tree.GetDlgCtrlID());
    m_hLast = nullptr;
    return HookWindow(tree.m_hWnd);
}

// Only while one is hooked.
CTreeCtrl& ComboTreeTip::Tree() const
{
    return *static_cast<CTreeCtrl*>(CWnd::FromHandle(m_hWnd));
}

HTREEITEM ComboTreeTip::ItemAt(CPoint point) const
{
    UINT flags = 0;
    const HTREEITEM item = m_hWnd != nullptr ? Tree().HitTest(point, &flags) : nullptr;
    return (flags & TVHT_ONITEM) != 0 ? item : nullptr;
}

// Only of this tree: the tip may be another one's by now.
void ComboTreeTip::HideTip()
{
    if (CComboPopupText& tip = CComboPopupText::Instance(); tip.GetTree() == m_hWnd)
        tip.Hide();
}

void ComboTreeTip::ForgetItem()
{
    HideTip();
    m_hLast = nullptr;
}

LRESULT ComboTreeTip::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_MOUSEMOVE:
        OnHoverMove(CPoint(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))));
        break;
    case WM_LBUTTONDOWN:
        HideTip();
        break;
    case WM_MOUSEWHEEL: // the label moves away under the tip
    case WM_VSCROLL:
    case WM_HSCROLL:
    case WM_KEYDOWN:
    case TVM_DELETEITEM: // a later item may get the same handle
        ForgetItem();
        break;
    case WM_WINDOWPOSCHANGED:
        if ((reinterpret_cast<const WINDOWPOS*>(lParam)->flags & SWP_HIDEWINDOW) != 0)
            ForgetItem();
        break;
    default:
        break;
    }
    return CComboSubclassWnd::WindowProc(message, wParam, lParam);
}

void ComboTreeTip::OnHoverMove(CPoint point)
{
    if (m_hWnd == nullptr)
        return;
    CComboPopupText& tip = CComboPopupText::Instance();
    const HTREEITEM item = ItemAt(point);
    if (item == m_hLast && !tip.HasMouseLeft())
        return;
    HideTip();
    m_hLast = item;
    CRect label;
    CString text;
    CTreeCtrl& tree = Tree();
    if (HitTestLabel(point, label, text) == nullptr || IsLabelVisible(label) || !tip.BelongTo(tree))
        return;
    tree.ClientToScreen(label);
    tip.SetWindowText(text);
    tip.SetWindowPos(nullptr, label.left - kLabelMargin, label.top, label.Width() + 2 * kLabelMargin,
                     label.Height(), SWP_NOZORDER | SWP_NOACTIVATE);
    tip.Show(kShowDelay);
}

BOOL ComboTreeTip::IsLabelVisible(const RECT& label)
{
    CRect client(0, 0, 0, 0);
    ::GetClientRect(m_hWnd, client);
    return client.right > label.right;
}

HTREEITEM ComboTreeTip::HitTestLabel(CPoint point, RECT* rect, CString& text)
{
    const HTREEITEM item = ItemAt(point);
    if (item == nullptr)
        return nullptr;
    CTreeCtrl& tree = Tree();
    CRect label;
    if (!tree.GetItemRect(item, label, TRUE))
        return nullptr;
    text = tree.GetItemText(item);
    const auto font = reinterpret_cast<HFONT>(tree.SendMessage(WM_GETFONT));
    label.right = std::max<LONG>(label.right, label.left + MeasureText(tree, font, text).cx);
    if (rect != nullptr)
        *rect = label;
    return item;
}
