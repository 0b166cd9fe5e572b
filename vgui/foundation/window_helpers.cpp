#include "vgui/foundation/window_helpers.h"

#include <cstdint>
#include <utility>

namespace
{

constexpr int kNothingToUndo = -1;
constexpr int kMinVisible = 10;

// The imported function itself can have several addresses, which would make it hard to recognise.
BOOL WINAPI OpenWithShell(SHELLEXECUTEINFOW* request)
{
    return ::ShellExecuteExW(request);
}

VGShellOpener g_shellOpener = &OpenWithShell;

HWND HandleOf(const CWnd* pWnd)
{
    return pWnd != nullptr ? pWnd->m_hWnd : nullptr;
}

} // namespace

VoWindowFuncBase::VoWindowFuncBase(CWnd* pWnd) : m_hWnd(HandleOf(pWnd)) {}

// The base must not hold the window before it is locked.
VoWindowLock::VoWindowLock(CWnd* pWnd) : VoWindowFuncBase(nullptr)
{
    LockWindow(pWnd);
}

VoWindowLock::~VoWindowLock()
{
    UnLockWindow();
}

bool VoWindowLock::LockWindow(CWnd* pWnd)
{
    UnLockWindow();
    m_hWnd = HandleOf(pWnd);
    if (m_hWnd == nullptr)
        return false;
    ::SendMessage(m_hWnd, WM_SETREDRAW, FALSE, 0);
    return true;
}

bool VoWindowLock::UnLockWindow()
{
    const HWND locked = std::exchange(m_hWnd, nullptr);
    if (!::IsWindow(locked))
        return false;
    ::SendMessage(locked, WM_SETREDRAW, TRUE, 0);
    ::InvalidateRect(locked, nullptr, TRUE);
    return true;
}

VoWindowShow::VoWindowShow(CWnd* pWnd, int nCmdShow) : VoWindowFuncBase(pWnd), m_nCmdShow(nCmdShow)
{
    if (!::ShowWindow(m_hWnd, nCmdShow))
        m_nCmdShow = kNothingToUndo;
}

VoWindowShow::~VoWindowShow()
{
    if (!::IsWindow(m_hWnd))
        return;
    if (m_nCmdShow == SW_HIDE)
        ::ShowWindow(m_hWnd, SW_SHOW);
    else if (m_nCmdShow == SW_MINIMIZE)
        ::ShowWindow(m_hWnd, SW_SHOWMAXIMIZED);
}

VoWindowEnable::VoWindowEnable(CWnd* pWnd, bool bEnable) : VoWindowFuncBase(pWnd), m_bEnable(bEnable)
{
    if (::IsWindow(m_hWnd))
        ::EnableWindow(m_hWnd, m_bEnable);
}

VoWindowEnable::~VoWindowEnable()
{
    if (::IsWindow(m_hWnd))
        ::EnableWindow(m_hWnd, !m_bEnable);
}

VoWindowDestory::VoWindowDestory(CWnd* pWnd) : VoWindowFuncBase(pWnd) {}

VoWindowDestory::~VoWindowDestory()
{
    if (::IsWindow(m_hWnd))
        ::DestroyWindow(m_hWnd);
}

CSingleWinLock::CSingleWinLock(VoWindowLock* pLock, CWnd* pWnd) : m_pLock(pLock)
{
    if (m_pLock != nullptr)
        m_pLock->LockWindow(pWnd);
}

CSingleWinLock::~CSingleWinLock()
{
    if (m_pLock != nullptr)
        m_pLock->UnLockWindow();
}

VWndPos::VWndPos(CWnd* pWnd, int x, int y, int cx, int cy, bool bMaximized)
    : m_x(x), m_y(y), m_cx(cx), m_cy(cy), m_bMaximized(bMaximized), m_pWnd(pWnd)
{
}

bool VWndPos::Init(CWnd* pWnd)
{
    if (!::IsWindow(HandleOf(pWnd)))
        return false;
    m_pWnd = pWnd;
    return true;
}

void VWndPos::SetPos(int x, int y)
{
    m_x = x;
    m_y = y;
}

void VWndPos::SetSize(int cx, int cy)
{
    m_cx = cx;
    m_cy = cy;
}

bool VWndPos::HasWindow() const
{
    return ::IsWindow(HandleOf(m_pWnd)) != FALSE;
}

bool VWndPos::Save()
{
    if (!HasWindow())
        return false;
    CRect rect;
    m_pWnd->GetWindowRect(&rect);
    m_bMaximized = m_pWnd->IsZoomed() != FALSE;
    SetPos(rect.left, rect.top);
    if (m_bRecordSize)
        SetSize(rect.Width(), rect.Height());
    else
        SetSize(Unknown, Unknown);
    return true;
}

bool VWndPos::Restore() const
{
    if (!HasWindow())
        return false;
    if (m_bMaximized) {
        m_pWnd->ShowWindow(SW_SHOWMAXIMIZED);
        return true;
    }
    const bool onScreen = m_x >= Unknown && m_y >= Unknown &&
                          int64_t{m_x} + m_cx <= ::GetSystemMetrics(SM_CXFULLSCREEN) &&
                          int64_t{m_y} + m_cy <= ::GetSystemMetrics(SM_CYFULLSCREEN);
    const auto isEmpty = [](int size) { return size == 0 || size < Unknown; };
    if (!onScreen || isEmpty(m_cx) || isEmpty(m_cy))
        return false;
    UINT flags = SWP_NOZORDER;
    if (m_x == Unknown)
        flags |= SWP_NOMOVE;
    if (m_cx == Unknown || m_cy == Unknown || !m_bRecordSize)
        flags |= SWP_NOSIZE;
    return ::SetWindowPos(m_pWnd->m_hWnd, nullptr, m_x, m_y, m_cx, m_cy, flags) != FALSE;
}

bool IsValideWndPos(const CRect& rect)
{
    const int width = ::GetSystemMetrics(SM_CXFULLSCREEN);
    const int height = ::GetSystemMetrics(SM_CYFULLSCREEN);
    if (rect.right < kMinVisible || rect.bottom < kMinVisible)
        return false;
    if (rect.left < 0 || rect.top < 0 || rect.right > width || rect.bottom > height)
        return false;
    if (rect.left > rect.right || rect.top > rect.bottom)
        return false;
    return rect.left <= width - kMinVisible && rect.top <= height - kMinVisible;
}

BOOL VGShellExecute(LPCWSTR verb, LPCWSTR target, int nShowCmd, ULONG fMask)
{
    if (target == nullptr || *target == L'\0')
        return FALSE;
    SHELLEXECUTEINFOW request = {};
    request.cbSize = sizeof request;
    request.fMask = fMask;
    request.lpVerb = verb;
    request.lpFile = target;
    request.nShow = nShowCmd;
    return g_shellOpener(&request);
}

VGShellOpener VGSetShellOpener(VGShellOpener opener)
{
    return std::exchange(g_shellOpener, opener != nullptr ? opener : &OpenWithShell);
}
