#include <afxwin.h>

#include <memory>
#include <process.h>

#include "dispatch.h"
#include "module_maps.h"
#include "ole_init.h"

IMPLEMENT_DYNAMIC(CWinThread, CCmdTarget)

CWinThread::CWinThread() = default;

CWinThread::CWinThread(AFX_THREADPROC pfnThreadProc, LPVOID pParam)
    : m_pfnThreadProc(pfnThreadProc), m_pThreadParams(pParam)
{
}

CWinThread::~CWinThread()
{
    if (m_hThread != nullptr)
        ::CloseHandle(m_hThread);
    AFX_MODULE_THREAD_STATE* const state = AfxGetModuleThreadState();
    if (state->m_pCurrentWinThread == this)
        state->m_pCurrentWinThread = nullptr;
}

// ---- Starting and ending

namespace
{

struct ThreadStart {
    CWinThread* thread;
    AFX_MODULE_STATE* moduleState;
};

unsigned __stdcall ThreadMain(void* parameter)
{
    CWinThread* thread = nullptr;
    {
        const std::unique_ptr<ThreadStart> start(static_cast<ThreadStart*>(parameter));
        thread = start->thread;
        AfxGetThreadState()->m_pModuleState = start->moduleState;
        AfxGetModuleThreadState()->m_pCurrentWinThread = thread;
    }

    UINT exitCode = 0;
    if (thread->m_pfnThreadProc != nullptr)
        exitCode = thread->m_pfnThreadProc(thread->m_pThreadParams);
    else if (thread->InitInstance())
        exitCode = static_cast<UINT>(thread->Run());
    else
        exitCode = static_cast<UINT>(thread->ExitInstance());
    AfxEndThread(exitCode);
    return exitCode;
}

CWinThread* Begin(CWinThread* thread, int nPriority, UINT nStackSize, DWORD dwCreateFlags,
                  LPSECURITY_ATTRIBUTES lpSecurityAttrs)
{
    if (!thread->CreateThread(dwCreateFlags | CREATE_SUSPENDED, nStackSize, lpSecurityAttrs)) {
        thread->Delete();
        return nullptr;
    }
    thread->SetThreadPriority(nPriority);
    if ((dwCreateFlags & CREATE_SUSPENDED) == 0)
        thread->ResumeThread();
    return thread;
}

} // namespace

BOOL CWinThread::CreateThread(DWORD dwCreateFlags, UINT nStackSize, LPSECURITY_ATTRIBUTES lpSecurityAttrs)
{
    auto start = std::make_unique<ThreadStart>(ThreadStart{this, AfxGetThreadState()->m_pModuleState});
    unsigned id = 0;
    // Suspended at first, so that the thread finds its handle and id in the object.
    m_hThread = reinterpret_cast<HANDLE>(::_beginthreadex(
        lpSecurityAttrs, nStackSize, &ThreadMain, start.get(), dwCreateFlags | CREATE_SUSPENDED, &id));
    m_nThreadID = id;
    if (m_hThread == nullptr)
        return FALSE;
    start.release(); // the thread's now
    if ((dwCreateFlags & CREATE_SUSPENDED) == 0)
        ResumeThread();
    return TRUE;
}

CWinThread* AFXAPI AfxBeginThread(AFX_THREADPROC pfnThreadProc, LPVOID pParam, int nPriority, UINT nStackSize,
                                  DWORD dwCreateFlags, LPSECURITY_ATTRIBUTES lpSecurityAttrs)
{
    return Begin(new CWinThread(pfnThreadProc, pParam), nPriority, nStackSize, dwCreateFlags,
                 lpSecurityAttrs);
}

CWinThread* AFXAPI AfxBeginThread(CRuntimeClass* pThreadClass, int nPriority, UINT nStackSize,
                                  DWORD dwCreateFlags, LPSECURITY_ATTRIBUTES lpSecurityAttrs)
{
    CObject* const object = pThreadClass->CreateObject();
    if (object == nullptr)
        AfxThrowMemoryException();
    return Begin(static_cast<CWinThread*>(object), nPriority, nStackSize, dwCreateFlags, lpSecurityAttrs);
}

void AFXAPI AfxEndThread(UINT nExitCode, BOOL bDelete)
{
    AFX_MODULE_THREAD_STATE* const state = AfxGetModuleThreadState();
    CWinThread* const thread = state->m_pCurrentWinThread;
    if (thread != nullptr && bDelete)
        thread->Delete();
    state->m_pCurrentWinThread = nullptr;
    afx_subset::OleTerm();
    afx_subset::ReleaseThreadData();
    ::_endthreadex(nExitCode);
}

void CWinThread::Delete()
{
    if (m_bAutoDelete)
        delete this;
}

int CWinThread::GetThreadPriority()
{
    return ::GetThreadPriority(m_hThread);
}

BOOL CWinThread::SetThreadPriority(int nPriority)
{
    return ::SetThreadPriority(m_hThread, nPriority);
}

DWORD CWinThread::SuspendThread()
{
    return ::SuspendThread(m_hThread);
}

DWORD CWinThread::ResumeThread()
{
    return ::ResumeThread(m_hThread);
}

BOOL CWinThread::PostThreadMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    return ::PostThreadMessage(m_nThreadID, message, wParam, lParam);
}

BOOL CWinThread::InitInstance()
{
    return FALSE;
}

int CWinThread::ExitInstance()
{
    return static_cast<int>(AfxGetThreadState()->m_msgCur.wParam);
}

CWnd* CWinThread::GetMainWnd()
{
    if (m_pMainWnd != nullptr)
        return m_pMainWnd;
    return CWnd::GetActiveWindow();
}

// ---- The loop

int CWinThread::Run()
{
    MSG& msg = AfxGetThreadState()->m_msgCur;
    bool idle = true;
    LONG idleCount = 0;
    for (;;) {
        while (idle && !::PeekMessage(&msg, nullptr, 0, 0, PM_NOREMOVE)) {
            if (!OnIdle(idleCount++))
                idle = false;
        }
        do {
            if (!PumpMessage())
                return ExitInstance();
            if (IsIdleMessage(&msg)) {
                idle = true;
                idleCount = 0;
            }
        } while (::PeekMessage(&msg, nullptr, 0, 0, PM_NOREMOVE));
    }
}

BOOL CWinThread::PumpMessage()
{
    MSG& msg = AfxGetThreadState()->m_msgCur;
    if (::GetMessage(&msg, nullptr, 0, 0) <= 0)
        return FALSE;
    if (!PreTranslateMessage(&msg)) {
        ::TranslateMessage(&msg);
        ::DispatchMessage(&msg);
    }
    return TRUE;
}

BOOL AFXAPI AfxPumpMessage()
{
    if (CWinThread* const thread = AfxGetThread())
        return thread->PumpMessage();
    // A thread that the framework did not start has no object to ask.
    MSG& msg = AfxGetThreadState()->m_msgCur;
    if (::GetMessage(&msg, nullptr, 0, 0) <= 0)
        return FALSE;
    if (!AfxPreTranslateMessage(&msg)) {
        ::TranslateMessage(&msg);
        ::DispatchMessage(&msg);
    }
    return TRUE;
}

BOOL AFXAPI AfxPreTranslateMessage(MSG* pMsg)
{
    CWinThread* const thread = AfxGetThread();
    return thread != nullptr ? thread->PreTranslateMessage(pMsg) : CWnd::WalkPreTranslateTree(nullptr, pMsg);
}

BOOL CWinThread::DispatchThreadMessage(MSG* pMsg)
{
    AFX_MSG_DISPATCH dispatch{};
    dispatch.message = pMsg->message;
    dispatch.wParam = pMsg->wParam;
    dispatch.lParam = pMsg->lParam;
    for (const AFX_MSGMAP* map = GetMessageMap(); map != nullptr; map = afx_subset::BaseMap(map)) {
        if (const AFX_MSGMAP_ENTRY* entry = afx_subset::FindMessage(map->lpEntries, pMsg->message))
            return entry->pfn(this, dispatch);
    }
    return FALSE;
}

BOOL CWinThread::PreTranslateMessage(MSG* pMsg)
{
    // Thread messages have no window to go to.
    if (pMsg->hwnd == nullptr && DispatchThreadMessage(pMsg))
        return TRUE;
    const HWND mainWindow = m_pMainWnd->GetSafeHwnd();
    if (CWnd::WalkPreTranslateTree(mainWindow, pMsg))
        return TRUE;
    // The main window also sees messages of windows that do not descend from it.
    if (mainWindow != nullptr && pMsg->hwnd != mainWindow && !::IsChild(mainWindow, pMsg->hwnd) &&
        CWnd::FromHandle(pMsg->hwnd)->GetTopLevelParent() != m_pMainWnd)
        return m_pMainWnd->PreTranslateMessage(pMsg);
    return FALSE;
}

BOOL CWinThread::IsIdleMessage(MSG* pMsg)
{
    constexpr UINT caretBlink = 0x0118;
    switch (pMsg->message) {
    case WM_PAINT:
    case WM_TIMER:
    case caretBlink:
        return FALSE;
    case WM_MOUSEMOVE:
    case WM_NCMOUSEMOVE:
        // Windows sends these without a movement too.
        if (m_nMsgLast == pMsg->message && m_ptCursorLast.x == pMsg->pt.x && m_ptCursorLast.y == pMsg->pt.y)
            return FALSE;
        m_ptCursorLast = pMsg->pt;
        m_nMsgLast = pMsg->message;
        return TRUE;
    default:
        return TRUE;
    }
}

BOOL CWinThread::OnIdle(LONG lCount)
{
    if (lCount < 1)
        return TRUE;
    afx_subset::ModuleThreadMaps& maps = *AfxGetModuleThreadState()->m_pMaps;
    if (maps.tempLockCount == 0)
        maps.DropTemporaries();
    return FALSE;
}

LRESULT CWinThread::ProcessWndProcException(CException* e, const MSG* pMsg)
{
    // Creation has failed; any other result would let the half-made window live.
    if (pMsg->message == WM_CREATE)
        return -1;
    if (pMsg->message == WM_PAINT) {
        // Left invalid, the window would be asked to paint, and fail, for ever.
        ::ValidateRect(pMsg->hwnd, nullptr);
        return 0;
    }
    if (!e->IsKindOf(RUNTIME_CLASS(CUserException)))
        e->ReportError(MB_ICONEXCLAMATION | MB_SYSTEMMODAL);
    // A command counts as handled.
    return pMsg->message == WM_COMMAND ? TRUE : 0;
}

BOOL CWinThread::ProcessMessageFilter(int, LPMSG)
{
    return FALSE;
}

void AFXAPI AfxPostQuitMessage(int nExitCode)
{
    ::PostQuitMessage(nExitCode);
}
