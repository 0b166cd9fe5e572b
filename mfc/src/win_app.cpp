#include <afxwin.h>

#include "module_maps.h"
#include "ole_init.h"

IMPLEMENT_DYNAMIC(CWinApp, CWinThread)

BEGIN_MESSAGE_MAP(CWinApp, CWinThread)
    ON_COMMAND(ID_APP_EXIT, &CWinApp::OnAppExit)
END_MESSAGE_MAP()

CWinApp::CWinApp(LPCTSTR lpszAppName)
{
    if (lpszAppName != nullptr)
        m_strAppName = lpszAppName;
    m_bAutoDelete = FALSE;
    m_nThreadID = ::GetCurrentThreadId();
    ::DuplicateHandle(::GetCurrentProcess(), ::GetCurrentThread(), ::GetCurrentProcess(), &m_hThread, 0,
                      FALSE, DUPLICATE_SAME_ACCESS);
    // Until AfxWinInit tells otherwise.
    AFX_MODULE_STATE* const state = AfxGetModuleState();
    m_hInstance = state->m_hCurrentInstanceHandle;
    state->m_pCurrentWinApp = this;
    AfxGetModuleThreadState()->m_pCurrentWinThread = this;
}

CWinApp::~CWinApp()
{
    AFX_MODULE_STATE* const state = AfxGetModuleState();
    if (state->m_pCurrentWinApp == this)
        state->m_pCurrentWinApp = nullptr;
    if (state->m_lpszCurrentAppName == m_pszAppName)
        state->m_lpszCurrentAppName = nullptr;
}

void CWinApp::TakeExecutableName()
{
    WCHAR path[MAX_PATH] = L"";
    ::GetModuleFileName(m_hInstance, path, MAX_PATH);
    const CString file(path);
    const int start = file.ReverseFind(L'\\') + 1;
    const int dot = file.ReverseFind(L'.');
    m_strExeName = file.Mid(start, (dot > start ? dot : file.GetLength()) - start);
    if (m_strAppName.IsEmpty())
        m_strAppName = m_strExeName;
    m_pszExeName = m_strExeName;
    m_pszAppName = m_strAppName;
}

BOOL AFXAPI AfxWinInit(HINSTANCE hInstance, HINSTANCE, LPTSTR lpCmdLine, int nCmdShow)
{
    ::SetErrorMode(::SetErrorMode(0) | SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    AFX_MODULE_STATE* const state = AfxGetModuleState();
    state->m_hCurrentInstanceHandle = hInstance;
    state->m_hCurrentResourceHandle = hInstance;
    if (CWinApp* const app = AfxGetApp()) {
        app->m_hInstance = hInstance;
        app->m_lpCmdLine = lpCmdLine;
        app->m_nCmdShow = nCmdShow;
        app->TakeExecutableName();
        state->m_lpszCurrentAppName = app->m_pszAppName;
    }
    return TRUE;
}

void AFXAPI AfxWinTerm()
{
    if (CWinThread* const thread = AfxGetThread())
        thread->m_pMainWnd = nullptr;
    afx_subset::OleTerm();
}

int AFXAPI AfxWinMain(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPTSTR lpCmdLine, int nCmdShow)
{
    CWinThread* const thread = AfxGetThread();
    CWinApp* const app = AfxGetApp();
    int result = -1;
    if (AfxWinInit(hInstance, hPrevInstance, lpCmdLine, nCmdShow) && thread != nullptr &&
        (app == nullptr || app->InitApplication())) {
        if (thread->InitInstance()) {
            result = thread->Run();
        } else {
            if (thread->m_pMainWnd != nullptr)
                thread->m_pMainWnd->DestroyWindow();
            result = thread->ExitInstance();
        }
    }
    AfxWinTerm();
    return result;
}

BOOL CWinApp::InitApplication()
{
    return TRUE;
}

BOOL CWinApp::InitInstance()
{
    return TRUE;
}

int CWinApp::Run()
{
    // A program without a main window has nothing that could end its loop.
    if (m_pMainWnd == nullptr)
        AfxPostQuitMessage(0);
    return CWinThread::Run();
}

BOOL CWinApp::OnIdle(LONG lCount)
{
    return CWinThread::OnIdle(lCount);
}

int CWinApp::ExitInstance()
{
    return CWinThread::ExitInstance();
}

void CWinApp::OnAppExit()
{
    if (m_pMainWnd != nullptr)
        m_pMainWnd->SendMessage(WM_CLOSE);
}

void CWinApp::DoWaitCursor(int nCode)
{
    m_nWaitCursorCount += nCode;
    if (m_nWaitCursorCount > 0) {
        const HCURSOR previous = ::SetCursor(::LoadCursor(nullptr, IDC_WAIT));
        if (nCode > 0 && m_nWaitCursorCount == 1)
            m_hcurWaitCursorRestore = previous;
    } else {
        m_nWaitCursorCount = 0;
        ::SetCursor(m_hcurWaitCursorRestore);
    }
}

int CWinApp::DoMessageBox(LPCTSTR lpszPrompt, UINT nType, UINT)
{
    if ((nType & MB_ICONMASK) == 0) {
        switch (nType & MB_TYPEMASK) {
        case MB_OK:
        case MB_OKCANCEL:
        case MB_YESNO:
        case MB_YESNOCANCEL:
        case MB_RETRYCANCEL:
        case MB_ABORTRETRYIGNORE:
            nType |= MB_ICONEXCLAMATION;
            break;
        default:
            break;
        }
    }
    // The window that has the user's attention, so that it is disabled while the box is up.
    const HWND mainWindow = m_pMainWnd->GetSafeHwnd();
    const HWND active = ::GetActiveWindow();
    const HWND owner =
        active != nullptr ? active : (mainWindow != nullptr ? ::GetLastActivePopup(mainWindow) : nullptr);
    return ::MessageBox(owner, lpszPrompt, m_pszAppName, nType);
}

int AFXAPI AfxMessageBox(LPCTSTR lpszText, UINT nType, UINT nIDHelp)
{
    if (CWinApp* const app = AfxGetApp())
        return app->DoMessageBox(lpszText, nType, nIDHelp);
    return ::MessageBox(nullptr, lpszText, nullptr, nType);
}

int AFXAPI AfxMessageBox(UINT nIDPrompt, UINT nType, UINT nIDHelp)
{
    CString text;
    if (!text.LoadString(nIDPrompt))
        TRACE(_T("AfxMessageBox: there is no string %u.\n"), nIDPrompt);
    return AfxMessageBox(text, nType, nIDHelp == static_cast<UINT>(-1) ? nIDPrompt : nIDHelp);
}

HCURSOR CWinApp::LoadCursor(LPCTSTR lpszResourceName) const
{
    return ::LoadCursor(AfxFindResourceHandle(lpszResourceName, RT_GROUP_CURSOR), lpszResourceName);
}

HCURSOR CWinApp::LoadCursor(UINT nIDResource) const
{
    return LoadCursor(MAKEINTRESOURCE(nIDResource));
}

HCURSOR CWinApp::LoadStandardCursor(LPCTSTR lpszCursorName) const
{
    return ::LoadCursor(nullptr, lpszCursorName);
}

HICON CWinApp::LoadIcon(LPCTSTR lpszResourceName) const
{
    return ::LoadIcon(AfxFindResourceHandle(lpszResourceName, RT_GROUP_ICON), lpszResourceName);
}

HICON CWinApp::LoadIcon(UINT nIDResource) const
{
    return LoadIcon(MAKEINTRESOURCE(nIDResource));
}

HICON CWinApp::LoadStandardIcon(LPCTSTR lpszIconName) const
{
    return ::LoadIcon(nullptr, lpszIconName);
}
