// CWnd's life: creation, subclassing, destruction, the window procedure and message dispatch.
#include <afxocc.h>

#include "dispatch.h"
#include "module_maps.h"
#include "wnd_access.h"

#include <new>

using namespace afx_subset;

IMPLEMENT_DYNCREATE(CWnd, CCmdTarget)

const CWnd CWnd::wndTop(HWND_TOP);
const CWnd CWnd::wndBottom(HWND_BOTTOM);
const CWnd CWnd::wndTopMost(HWND_TOPMOST);
const CWnd CWnd::wndNoTopMost(HWND_NOTOPMOST);

namespace
{

bool IsPositionConstant(const CWnd* window)
{
    return window == &CWnd::wndTop || window == &CWnd::wndBottom || window == &CWnd::wndTopMost ||
           window == &CWnd::wndNoTopMost;
}

} // namespace

CWnd::CWnd() = default;

CWnd::CWnd(HWND hWnd) : m_hWnd(hWnd) {}

CWnd::~CWnd()
{
    if (IsPositionConstant(this))
        return;
    if (m_pCtrlSite != nullptr)
        m_pCtrlSite->m_pCtrlCont->Remove(m_pCtrlSite);
    if (m_hWnd != nullptr) {
        TRACE(_T("A CWnd is destroyed before its window, which loses its last messages.\n"));
        DestroyWindow();
        Detach(); // a window that was only attached has not told of its end
    }
    // There is none any more where the window's last message has come by this object.
    delete m_pCtrlCont;
}

// ---- Handles

CWnd* HandleTraits<CWnd>::Make(HWND hWnd)
{
    auto* const window = new CWnd;
    window->m_hWnd = hWnd;
    return window;
}

void HandleTraits<CWnd>::Drop(CWnd* window)
{
    window->m_hWnd = nullptr;
    delete window;
}

CWnd* PASCAL CWnd::FromHandle(HWND hWnd)
{
    CWnd* const window = WndMap().FromHandle(hWnd);
    // A temporary object that was detached stands for the window again.
    if (window != nullptr)
        window->m_hWnd = hWnd;
    return window;
}

CWnd* PASCAL CWnd::FromHandlePermanent(HWND hWnd)
{
    return WndMap().Permanent(hWnd);
}

void PASCAL CWnd::DeleteTempMap()
{
    WndMap().DropTemporaries();
}

BOOL CWnd::Attach(HWND hWndNew)
{
    if (hWndNew == nullptr)
        return FALSE;
    ASSERT(m_hWnd == nullptr);
    ASSERT(FromHandlePermanent(hWndNew) == nullptr);
    WndMap().SetPermanent(hWndNew, this);
    m_hWnd = hWndNew;
    return TRUE;
}

HWND CWnd::Detach()
{
    const HWND hWnd = m_hWnd;
    if (hWnd != nullptr && FromHandlePermanent(hWnd) == this)
        WndMap().RemoveHandle(hWnd);
    m_hWnd = nullptr;
    return hWnd;
}

// ---- The window procedure

namespace
{

// Sets the thread's record of the current message for as long as that message is being handled.
class CurrentMessage
{
public:
    CurrentMessage(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
        : m_record(AfxGetThreadState()->m_lastSentMsg), m_saved(m_record)
    {
        m_record.hwnd = hWnd;
        m_record.message = message;
        m_record.wParam = wParam;
        m_record.lParam = lParam;
    }
    ~CurrentMessage() { m_record = m_saved; }
    CurrentMessage(const CurrentMessage&) = delete;
    CurrentMessage& operator=(const CurrentMessage&) = delete;

private:
    MSG& m_record;
    MSG m_saved;
};

} // namespace

LRESULT AfxWndAccess::Call(CWnd* window, HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    const CurrentMessage current(hWnd, message, wParam, lParam);
    try {
        try {
            // The object may be gone when this returns.
            return window->WindowProc(message, wParam, lParam);
        } catch (const std::bad_alloc&) {
            // A container that gets no memory counts as a failed "new" of MFC's.
            AfxThrowMemoryException();
        }
    } catch (CException* e) {
        const MSG msg = AfxGetThreadState()->m_lastSentMsg;
        CWinThread* const thread = AfxGetThread();
        if (thread == nullptr)
            throw;
        const LRESULT result = thread->ProcessWndProcException(e, &msg);
        e->Delete();
        return result;
    }
}

LRESULT CALLBACK AfxWndProc(HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam)
{
    AFX_MODULE_STATE* state = nullptr;
    CWnd* const window = FindPermanentWindow(hWnd, state);
    if (window == nullptr)
        return ::DefWindowProc(hWnd, nMsg, wParam, lParam);
    if (state == AfxGetModuleState())
        return AfxWndAccess::Call(window, hWnd, nMsg, wParam, lParam);
    AFX_MANAGE_STATE(state);
    return AfxWndAccess::Call(window, hWnd, nMsg, wParam, lParam);
}

LRESULT CWnd::Default()
{
    const MSG& current = AfxGetThreadState()->m_lastSentMsg;
    return DefWindowProc(current.message, current.wParam, current.lParam);
}

const MSG* PASCAL CWnd::GetCurrentMessage()
{
    // The time and position are those of the message that was taken from the queue last.
    _AFX_THREAD_STATE& state = *AfxGetThreadState();
    state.m_lastSentMsg.time = state.m_msgCur.time;
    state.m_lastSentMsg.pt = state.m_msgCur.pt;
    return &state.m_lastSentMsg;
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = 0;
    if (!OnWndMsg(message, wParam, lParam, &result))
        result = DefWindowProc(message, wParam, lParam);
    return result;
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (*GetSuperWndProcAddr() != nullptr)
        return ::CallWindowProc(*GetSuperWndProcAddr(), m_hWnd, message, wParam, lParam);
    return ::DefWindowProc(m_hWnd, message, wParam, lParam);
}

WNDPROC* CWnd::GetSuperWndProcAddr()
{
    return &m_pfnSuper;
}

// ---- Creation

namespace
{

// IME helper windows appear in the middle of the first window's creation.
bool IsInputMethodWindow(HWND hWnd)
{
    WCHAR name[8];
    return ::GetClassNameW(hWnd, name, 8) > 0 && ::lstrcmpiW(name, L"IME") == 0;
}

} // namespace

void AfxWndAccess::TakeWindow(CWnd* window, HWND hWnd)
{
    window->Attach(hWnd);
    try {
        window->PreSubclassWindow();
    } catch (...) {
        // Its messages would never reach the object, not even the last one.
        window->Detach();
        throw;
    }
    const auto previous = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtr(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&AfxWndProc)));
    if (previous != &AfxWndProc && *window->GetSuperWndProcAddr() == nullptr)
        *window->GetSuperWndProcAddr() = previous;
}

LRESULT CALLBACK AfxWndAccess::OnCbt(int code, WPARAM wParam, LPARAM lParam)
{
    _AFX_THREAD_STATE& state = *AfxGetThreadState();
    const HHOOK hook = state.m_hHookOldCbtFilter;
    const HWND hWnd = reinterpret_cast<HWND>(wParam);
    if (code == HCBT_CREATEWND && state.m_pWndInit != nullptr && !IsInputMethodWindow(hWnd)) {
        CWnd* const window = state.m_pWndInit;
        state.m_pWndInit = nullptr;
        try {
            TakeWindow(window, hWnd);
        } catch (...) {
            // An exception would leave the window half made, with nobody to destroy it.
            state.m_pWndInit = window;
            return 1;
        }
    }
    return ::CallNextHookEx(hook, code, wParam, lParam);
}

CreationHook::CreationHook(CWnd* window)
    : m_savedWindow(AfxGetThreadState()->m_pWndInit), m_savedHook(AfxGetThreadState()->m_hHookOldCbtFilter)
{
    _AFX_THREAD_STATE& state = *AfxGetThreadState();
    state.m_hHookOldCbtFilter =
        ::SetWindowsHookEx(WH_CBT, &AfxWndAccess::OnCbt, nullptr, ::GetCurrentThreadId());
    if (state.m_hHookOldCbtFilter == nullptr) {
        state.m_hHookOldCbtFilter = m_savedHook;
        AfxThrowMemoryException();
    }
    state.m_pWndInit = window;
}

CreationHook::~CreationHook()
{
    _AFX_THREAD_STATE& state = *AfxGetThreadState();
    ::UnhookWindowsHookEx(state.m_hHookOldCbtFilter);
    state.m_hHookOldCbtFilter = m_savedHook;
    state.m_pWndInit = m_savedWindow;
}

bool CreationHook::Taken() const
{
    return AfxGetThreadState()->m_pWndInit == nullptr;
}

BOOL CWnd::PreCreateWindow(CREATESTRUCT& cs)
{
    if (cs.lpszClass == nullptr) {
        if ((cs.style & WS_CHILD) == 0)
            return FALSE;
        cs.lpszClass =
            AfxRegisterWndClass(CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, ::LoadCursor(nullptr, IDC_ARROW));
    }
    return TRUE;
}

BOOL CWnd::Create(LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                  CWnd* pParentWnd, UINT nID, CCreateContext* pContext)
{
    ASSERT((dwStyle & WS_POPUP) == 0);
    if (pParentWnd->GetSafeHwnd() == nullptr)
        return FALSE;
    return CreateEx(0, lpszClassName, lpszWindowName, dwStyle | WS_CHILD, rect.left, rect.top,
                    rect.right - rect.left, rect.bottom - rect.top, pParentWnd->GetSafeHwnd(),
                    reinterpret_cast<HMENU>(static_cast<UINT_PTR>(nID)), pContext);
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle,
                    const RECT& rect, CWnd* pParentWnd, UINT nID, LPVOID lpParam)
{
    return CreateEx(dwExStyle, lpszClassName, lpszWindowName, dwStyle, rect.left, rect.top,
                    rect.right - rect.left, rect.bottom - rect.top, pParentWnd->GetSafeHwnd(),
                    reinterpret_cast<HMENU>(static_cast<UINT_PTR>(nID)), lpParam);
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, int x,
                    int y, int nWidth, int nHeight, HWND hWndParent, HMENU nIDorHMenu, LPVOID lpParam)
{
    ASSERT(m_hWnd == nullptr);
    CREATESTRUCT cs{};
    cs.dwExStyle = dwExStyle;
    cs.lpszClass = lpszClassName;
    cs.lpszName = lpszWindowName;
    cs.style = static_cast<LONG>(dwStyle);
    cs.x = x;
    cs.y = y;
    cs.cx = nWidth;
    cs.cy = nHeight;
    cs.hwndParent = hWndParent;
    cs.hMenu = nIDorHMenu;
    cs.hInstance = AfxGetInstanceHandle();
    cs.lpCreateParams = lpParam;
    if (!PreCreateWindow(cs)) {
        PostNcDestroy();
        return FALSE;
    }

    HWND hWnd = nullptr;
    bool taken = false;
    {
        const CreationHook hook(this);
        hWnd = ::CreateWindowEx(cs.dwExStyle, cs.lpszClass, cs.lpszName, static_cast<DWORD>(cs.style), cs.x,
                                cs.y, cs.cx, cs.cy, cs.hwndParent, cs.hMenu, cs.hInstance, cs.lpCreateParams);
        taken = hook.Taken();
    }
    // A window that came into being before it failed has run OnNcDestroy, and so PostNcDestroy, by itself.
    if (!taken)
        PostNcDestroy();
    return hWnd != nullptr;
}

// ---- Subclassing

void CWnd::PreSubclassWindow() {}

BOOL CWnd::SubclassWindow(HWND hWnd)
{
    if (m_hWnd != nullptr || FromHandlePermanent(hWnd) != nullptr || !::IsWindow(hWnd))
        return FALSE;
    AfxWndAccess::TakeWindow(this, hWnd);
    return m_hWnd == hWnd;
}

BOOL CWnd::SubclassDlgItem(UINT nID, CWnd* pParent)
{
    const HWND control = ::GetDlgItem(pParent->GetSafeHwnd(), static_cast<int>(nID));
    return control != nullptr && SubclassWindow(control);
}

HWND CWnd::UnsubclassWindow()
{
    if (m_hWnd == nullptr)
        return nullptr;
    WNDPROC& super = *GetSuperWndProcAddr();
    if (super != nullptr) {
        ::SetWindowLongPtr(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(super));
        super = nullptr;
    }
    return Detach();
}

// ---- Destruction

BOOL CWnd::DestroyWindow()
{
    if (m_pCtrlSite != nullptr) {
        // The control destroys its window.
        m_pCtrlSite->m_pCtrlCont->Remove(m_pCtrlSite);
        return TRUE;
    }
    if (m_hWnd == nullptr)
        return FALSE;
    const bool permanent = FromHandlePermanent(m_hWnd) == this;
    const HWND hWnd = m_hWnd;
    // From here on a permanent object may have deleted itself.
    const BOOL destroyed = ::DestroyWindow(hWnd);
    if (!permanent)
        Detach();
    return destroyed;
}

void CWnd::OnNcDestroy()
{
    CWinThread* const thread = AfxGetThread();
    if (thread != nullptr && thread->m_pMainWnd == this) {
        // The program ends with its main window.
        if (thread == AfxGetApp())
            AfxPostQuitMessage(0);
        thread->m_pMainWnd = nullptr;
    }
    if (thread != nullptr && thread->m_pActiveWnd == this)
        thread->m_pActiveWnd = nullptr;
    delete std::exchange(m_pCtrlCont, nullptr);

    const LONG_PTR before = ::GetWindowLongPtr(m_hWnd, GWLP_WNDPROC);
    Default();
    WNDPROC& super = *GetSuperWndProcAddr();
    if (super != nullptr && ::GetWindowLongPtr(m_hWnd, GWLP_WNDPROC) == before)
        ::SetWindowLongPtr(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(super));
    super = nullptr;
    Detach();
    PostNcDestroy();
}

void CWnd::PostNcDestroy() {}

// ---- Window classes

LPCTSTR AFXAPI AfxRegisterWndClass(UINT nClassStyle, HCURSOR hCursor, HBRUSH hbrBackground, HICON hIcon)
{
    static thread_local WCHAR name[96];
    ::swprintf(name, 96, L"Afx:%p:%x:%p:%p:%p", static_cast<void*>(AfxGetInstanceHandle()), nClassStyle,
               static_cast<void*>(hCursor), static_cast<void*>(hbrBackground), static_cast<void*>(hIcon));
    WNDCLASS windowClass{};
    windowClass.style = nClassStyle;
    windowClass.lpfnWndProc = &::DefWindowProc;
    windowClass.hInstance = AfxGetInstanceHandle();
    windowClass.hCursor = hCursor;
    windowClass.hbrBackground = hbrBackground;
    windowClass.hIcon = hIcon;
    windowClass.lpszClassName = name;
    if (!AfxRegisterClass(&windowClass))
        AfxThrowResourceException();
    return name;
}

BOOL AFXAPI AfxRegisterClass(WNDCLASS* lpWndClass)
{
    WNDCLASS existing;
    if (::GetClassInfo(lpWndClass->hInstance, lpWndClass->lpszClassName, &existing))
        return TRUE;
    return ::RegisterClass(lpWndClass) != 0;
}
