// CWnd: position, state, coordinates, painting, scrolling.
#include <afxocc.h>

BOOL CWnd::IsIconic() const
{
    return ::IsIconic(m_hWnd);
}

BOOL CWnd::IsZoomed() const
{
    return ::IsZoomed(m_hWnd);
}

void CWnd::MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint)
{
    if (m_pCtrlSite != nullptr)
        m_pCtrlSite->MoveWindow(x, y, nWidth, nHeight);
    else
        ::MoveWindow(m_hWnd, x, y, nWidth, nHeight, bRepaint);
}

void CWnd::MoveWindow(LPCRECT lpRect, BOOL bRepaint)
{
    MoveWindow(lpRect->left, lpRect->top, lpRect->right - lpRect->left, lpRect->bottom - lpRect->top,
               bRepaint);
}

BOOL CWnd::SetWindowPos(const CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags)
{
    if (m_pCtrlSite != nullptr)
        return m_pCtrlSite->SetWindowPos(pWndInsertAfter, x, y, cx, cy, nFlags);
    return ::SetWindowPos(m_hWnd, pWndInsertAfter->GetSafeHwnd(), x, y, cx, cy, nFlags);
}

int CWnd::SetWindowRgn(HRGN hRgn, BOOL bRedraw)
{
    return ::SetWindowRgn(m_hWnd, hRgn, bRedraw);
}

int CWnd::GetWindowRgn(HRGN hRgn) const
{
    return ::GetWindowRgn(m_hWnd, hRgn);
}

UINT CWnd::ArrangeIconicWindows()
{
    return ::ArrangeIconicWindows(m_hWnd);
}

void CWnd::BringWindowToTop()
{
    ::BringWindowToTop(m_hWnd);
}

void CWnd::GetWindowRect(LPRECT lpRect) const
{
    ::GetWindowRect(m_hWnd, lpRect);
}

void CWnd::GetClientRect(LPRECT lpRect) const
{
    ::GetClientRect(m_hWnd, lpRect);
}

BOOL CWnd::GetWindowPlacement(WINDOWPLACEMENT* lpwndpl) const
{
    lpwndpl->length = sizeof(WINDOWPLACEMENT);
    return ::GetWindowPlacement(m_hWnd, lpwndpl);
}

BOOL CWnd::SetWindowPlacement(const WINDOWPLACEMENT* lpwndpl)
{
    WINDOWPLACEMENT placement = *lpwndpl;
    placement.length = sizeof(WINDOWPLACEMENT);
    return ::SetWindowPlacement(m_hWnd, &placement);
}

void CWnd::CenterWindow(CWnd* pAlternateOwner)
{
    const bool child = (GetStyle() & WS_CHILD) != 0;
    HWND center = pAlternateOwner->GetSafeHwnd();
    if (center == nullptr)
        center = child ? ::GetParent(m_hWnd) : ::GetWindow(m_hWnd, GW_OWNER);
    if (!child && center != nullptr && (!::IsWindowVisible(center) || ::IsIconic(center)))
        center = nullptr;

    CRect area;
    CRect around;
    if (child) {
        ::GetClientRect(::GetParent(m_hWnd), &area);
        ::GetClientRect(center, &around);
        ::MapWindowPoints(center, ::GetParent(m_hWnd), reinterpret_cast<POINT*>(&around), 2);
    } else {
        MONITORINFO monitor{};
        monitor.cbSize = sizeof(monitor);
        const HWND near_ = center != nullptr ? center : m_hWnd;
        ::GetMonitorInfo(::MonitorFromWindow(near_, MONITOR_DEFAULTTONEAREST), &monitor);
        area = monitor.rcWork;
        around = area;
        if (center != nullptr)
            ::GetWindowRect(center, &around);
    }

    CRect window;
    ::GetWindowRect(m_hWnd, &window);
    int x = (around.left + around.right) / 2 - window.Width() / 2;
    int y = (around.top + around.bottom) / 2 - window.Height() / 2;
    // Wholly on the screen where that is possible, else with its top-left corner on it.
    x = (std::max)(static_cast<int>(area.left), (std::min)(x, static_cast<int>(area.right) - window.Width()));
    y = (std::max)(static_cast<int>(area.top),
                   (std::min)(y, static_cast<int>(area.bottom) - window.Height()));
    ::SetWindowPos(m_hWnd, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

BOOL CWnd::IsWindowEnabled() const
{
    return ::IsWindowEnabled(m_hWnd);
}

BOOL CWnd::EnableWindow(BOOL bEnable)
{
    if (m_pCtrlSite != nullptr)
        return m_pCtrlSite->EnableWindow(bEnable);
    return ::EnableWindow(m_hWnd, bEnable);
}

BOOL CWnd::IsWindowVisible() const
{
    return ::IsWindowVisible(m_hWnd);
}

BOOL CWnd::ShowWindow(int nCmdShow)
{
    return ::ShowWindow(m_hWnd, nCmdShow);
}

CWnd* CWnd::SetActiveWindow()
{
    return FromHandle(::SetActiveWindow(m_hWnd));
}

BOOL CWnd::SetForegroundWindow()
{
    return ::SetForegroundWindow(m_hWnd);
}

CWnd* CWnd::SetCapture()
{
    return FromHandle(::SetCapture(m_hWnd));
}

CWnd* CWnd::SetFocus()
{
    return FromHandle(::SetFocus(m_hWnd));
}

BOOL CWnd::FlashWindow(BOOL bInvert)
{
    return ::FlashWindow(m_hWnd, bInvert);
}

void CWnd::DragAcceptFiles(BOOL bAccept)
{
    ::DragAcceptFiles(m_hWnd, bAccept);
}

void CWnd::ClientToScreen(LPPOINT lpPoint) const
{
    ::ClientToScreen(m_hWnd, lpPoint);
}

void CWnd::ClientToScreen(LPRECT lpRect) const
{
    ::MapWindowPoints(m_hWnd, nullptr, reinterpret_cast<POINT*>(lpRect), 2);
}

void CWnd::ScreenToClient(LPPOINT lpPoint) const
{
    ::ScreenToClient(m_hWnd, lpPoint);
}

void CWnd::ScreenToClient(LPRECT lpRect) const
{
    ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<POINT*>(lpRect), 2);
}

int CWnd::MapWindowPoints(CWnd* pwndTo, LPPOINT lpPoint, UINT nCount) const
{
    return ::MapWindowPoints(m_hWnd, pwndTo->GetSafeHwnd(), lpPoint, nCount);
}

void CWnd::MapWindowPoints(CWnd* pwndTo, LPRECT lpRect) const
{
    ::MapWindowPoints(m_hWnd, pwndTo->GetSafeHwnd(), reinterpret_cast<POINT*>(lpRect), 2);
}

void CWnd::CalcWindowRect(LPRECT lpClientRect, UINT nAdjustType)
{
    DWORD exStyle = GetExStyle();
    // The sunken edge lies inside the given rectangle unless the caller asks for it around.
    if (nAdjustType == adjustBorder)
        exStyle &= ~static_cast<DWORD>(WS_EX_CLIENTEDGE);
    ::AdjustWindowRectEx(lpClientRect, GetStyle(), FALSE, exStyle);
}

CDC* CWnd::BeginPaint(LPPAINTSTRUCT lpPaint)
{
    return CDC::FromHandle(::BeginPaint(m_hWnd, lpPaint));
}

void CWnd::EndPaint(LPPAINTSTRUCT lpPaint)
{
    ::EndPaint(m_hWnd, lpPaint);
}

CDC* CWnd::GetDC()
{
    return CDC::FromHandle(::GetDC(m_hWnd));
}

CDC* CWnd::GetWindowDC()
{
    return CDC::FromHandle(::GetWindowDC(m_hWnd));
}

int CWnd::ReleaseDC(CDC* pDC)
{
    return ::ReleaseDC(m_hWnd, pDC->m_hDC);
}

void CWnd::Print(CDC* pDC, DWORD dwFlags) const
{
    ::SendMessage(m_hWnd, WM_PRINT, reinterpret_cast<WPARAM>(pDC->GetSafeHdc()),
                  static_cast<LPARAM>(dwFlags));
}

void CWnd::PrintClient(CDC* pDC, DWORD dwFlags) const
{
    ::SendMessage(m_hWnd, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(pDC->GetSafeHdc()),
                  static_cast<LPARAM>(dwFlags));
}

void CWnd::UpdateWindow()
{
    ::UpdateWindow(m_hWnd);
}

void CWnd::SetRedraw(BOOL bRedraw)
{
    ::SendMessage(m_hWnd, WM_SETREDRAW, bRedraw, 0);
}

BOOL CWnd::GetUpdateRect(LPRECT lpRect, BOOL bErase)
{
    return ::GetUpdateRect(m_hWnd, lpRect, bErase);
}

int CWnd::GetUpdateRgn(CRgn* pRgn, BOOL bErase)
{
    return ::GetUpdateRgn(m_hWnd, static_cast<HRGN>(pRgn->GetSafeHandle()), bErase);
}

void CWnd::Invalidate(BOOL bErase)
{
    ::InvalidateRect(m_hWnd, nullptr, bErase);
}

void CWnd::InvalidateRect(LPCRECT lpRect, BOOL bErase)
{
    ::InvalidateRect(m_hWnd, lpRect, bErase);
}

void CWnd::InvalidateRgn(CRgn* pRgn, BOOL bErase)
{
    ::InvalidateRgn(m_hWnd, static_cast<HRGN>(pRgn->GetSafeHandle()), bErase);
}

void CWnd::ValidateRect(LPCRECT lpRect)
{
    ::ValidateRect(m_hWnd, lpRect);
}

void CWnd::ValidateRgn(CRgn* pRgn)
{
    ::ValidateRgn(m_hWnd, static_cast<HRGN>(pRgn->GetSafeHandle()));
}

BOOL CWnd::LockWindowUpdate()
{
    return ::LockWindowUpdate(m_hWnd);
}

void CWnd::UnlockWindowUpdate()
{
    ::LockWindowUpdate(nullptr);
}

BOOL CWnd::RedrawWindow(LPCRECT lpRectUpdate, CRgn* prgnUpdate, UINT flags)
{
    const auto region = static_cast<HRGN>(prgnUpdate != nullptr ? prgnUpdate->GetSafeHandle() : nullptr);
    return ::RedrawWindow(m_hWnd, lpRectUpdate, region, flags);
}

CScrollBar* CWnd::GetScrollBarCtrl(int) const
{
    return nullptr;
}

namespace
{

// A scroll bar control that stands in for one of the window's own.
bool FindScrollBar(const CWnd* window, int& bar, HWND& hWnd)
{
    if (bar == SB_CTL || window->GetScrollBarCtrl(bar) == nullptr)
        return false;
    hWnd = window->GetScrollBarCtrl(bar)->GetSafeHwnd();
    bar = SB_CTL;
    return true;
}

} // namespace

int CWnd::GetScrollPos(int nBar) const
{
    HWND hWnd = m_hWnd;
    FindScrollBar(this, nBar, hWnd);
    return ::GetScrollPos(hWnd, nBar);
}

void CWnd::GetScrollRange(int nBar, LPINT lpMinPos, LPINT lpMaxPos) const
{
    HWND hWnd = m_hWnd;
    FindScrollBar(this, nBar, hWnd);
    ::GetScrollRange(hWnd, nBar, lpMinPos, lpMaxPos);
}

int CWnd::SetScrollPos(int nBar, int nPos, BOOL bRedraw)
{
    HWND hWnd = m_hWnd;
    FindScrollBar(this, nBar, hWnd);
    return ::SetScrollPos(hWnd, nBar, nPos, bRedraw);
}

void CWnd::SetScrollRange(int nBar, int nMinPos, int nMaxPos, BOOL bRedraw)
{
    HWND hWnd = m_hWnd;
    FindScrollBar(this, nBar, hWnd);
    ::SetScrollRange(hWnd, nBar, nMinPos, nMaxPos, bRedraw);
}

BOOL CWnd::GetScrollInfo(int nBar, LPSCROLLINFO lpScrollInfo, UINT nMask)
{
    HWND hWnd = m_hWnd;
    FindScrollBar(this, nBar, hWnd);
    lpScrollInfo->cbSize = sizeof(SCROLLINFO);
    lpScrollInfo->fMask = nMask;
    return ::GetScrollInfo(hWnd, nBar, lpScrollInfo);
}

BOOL CWnd::SetScrollInfo(int nBar, LPSCROLLINFO lpScrollInfo, BOOL bRedraw)
{
    HWND hWnd = m_hWnd;
    FindScrollBar(this, nBar, hWnd);
    lpScrollInfo->cbSize = sizeof(SCROLLINFO);
    ::SetScrollInfo(hWnd, nBar, lpScrollInfo, bRedraw);
    return TRUE;
}

int CWnd::GetScrollLimit(int nBar)
{
    SCROLLINFO info{};
    if (!GetScrollInfo(nBar, &info, SIF_PAGE | SIF_RANGE))
        return 0;
    return info.nPage > 1 ? info.nMax - static_cast<int>(info.nPage - 1) : info.nMax;
}

void CWnd::ShowScrollBar(UINT nBar, BOOL bShow)
{
    ::ShowScrollBar(m_hWnd, static_cast<int>(nBar), bShow);
}

BOOL CWnd::EnableScrollBar(int nSBFlags, UINT nArrowFlags)
{
    return ::EnableScrollBar(m_hWnd, static_cast<UINT>(nSBFlags), nArrowFlags);
}

void CWnd::ScrollWindow(int xAmount, int yAmount, LPCRECT lpRect, LPCRECT lpClipRect)
{
    ::ScrollWindow(m_hWnd, xAmount, yAmount, lpRect, lpClipRect);
}

int CWnd::ScrollWindowEx(int dx, int dy, LPCRECT lpRectScroll, LPCRECT lpRectClip, CRgn* prgnUpdate,
                         LPRECT lpRectUpdate, UINT flags)
{
    const auto region = static_cast<HRGN>(prgnUpdate != nullptr ? prgnUpdate->GetSafeHandle() : nullptr);
    return ::ScrollWindowEx(m_hWnd, dx, dy, lpRectScroll, lpRectClip, region, lpRectUpdate, flags);
}
