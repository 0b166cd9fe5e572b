// Threads with a message loop, and the application object.
#pragma once

typedef UINT(AFX_CDECL* AFX_THREADPROC)(LPVOID);

// A thread of the program, or (with pfnThreadProc) a worker without a loop.
class AFX_SUBSET_API CWinThread : public CCmdTarget
{
    DECLARE_DYNAMIC(CWinThread)

public:
    CWinThread();
    CWinThread(AFX_THREADPROC pfnThreadProc, LPVOID pParam);
    virtual ~CWinThread();
    BOOL CreateThread(DWORD dwCreateFlags = 0, UINT nStackSize = 0,
                      LPSECURITY_ATTRIBUTES lpSecurityAttrs = nullptr);

    CWnd* m_pMainWnd = nullptr;
    CWnd* m_pActiveWnd = nullptr;
    BOOL m_bAutoDelete = TRUE;
    HANDLE m_hThread = nullptr;
    DWORD m_nThreadID = 0;

    operator HANDLE() const { return m_hThread; }
    int GetThreadPriority();
    BOOL SetThreadPriority(int nPriority);
    DWORD SuspendThread();
    DWORD ResumeThread();
    BOOL PostThreadMessage(UINT message, WPARAM wParam, LPARAM lParam);

    virtual BOOL InitInstance();
    virtual int Run();
    virtual BOOL PreTranslateMessage(MSG* pMsg);
    // One message from the queue, waited for, translated and dispatched; FALSE for WM_QUIT.
    virtual BOOL PumpMessage();
    // lCount is how often it has been called since the last message; TRUE asks for more idle time.
    virtual BOOL OnIdle(LONG lCount);
    virtual BOOL IsIdleMessage(MSG* pMsg);
    virtual int ExitInstance();
    // An exception left a message handler; the result becomes the message's.
    virtual LRESULT ProcessWndProcException(CException* e, const MSG* pMsg);
    virtual BOOL ProcessMessageFilter(int code, LPMSG lpMsg);
    virtual CWnd* GetMainWnd();
    virtual void Delete();

    AFX_THREADPROC m_pfnThreadProc = nullptr;
    LPVOID m_pThreadParams = nullptr;

protected:
    BOOL DispatchThreadMessage(MSG* pMsg);

private:
    POINT m_ptCursorLast{};
    UINT m_nMsgLast = 0;
};

AFX_SUBSET_API CWinThread* AFXAPI AfxBeginThread(AFX_THREADPROC pfnThreadProc, LPVOID pParam,
                                                 int nPriority = THREAD_PRIORITY_NORMAL, UINT nStackSize = 0,
                                                 DWORD dwCreateFlags = 0,
                                                 LPSECURITY_ATTRIBUTES lpSecurityAttrs = nullptr);
AFX_SUBSET_API CWinThread* AFXAPI AfxBeginThread(CRuntimeClass* pThreadClass,
                                                 int nPriority = THREAD_PRIORITY_NORMAL, UINT nStackSize = 0,
                                                 DWORD dwCreateFlags = 0,
                                                 LPSECURITY_ATTRIBUTES lpSecurityAttrs = nullptr);
AFX_SUBSET_API void AFXAPI AfxEndThread(UINT nExitCode, BOOL bDelete = TRUE);

// The one application object of a program.
class AFX_SUBSET_API CWinApp : public CWinThread
{
    DECLARE_DYNAMIC(CWinApp)

public:
    explicit CWinApp(LPCTSTR lpszAppName = nullptr);
    virtual ~CWinApp();

    HINSTANCE m_hInstance = nullptr;
    LPTSTR m_lpCmdLine = nullptr;
    int m_nCmdShow = SW_SHOWNORMAL;
    LPCTSTR m_pszAppName = nullptr;
    LPCTSTR m_pszExeName = nullptr;
    LPCTSTR m_pszProfileName = nullptr;
    LPCTSTR m_pszRegistryKey = nullptr;

    virtual BOOL InitApplication();
    virtual BOOL InitInstance() override;
    virtual int Run() override;
    virtual BOOL OnIdle(LONG lCount) override;
    virtual int ExitInstance() override;
    virtual int DoMessageBox(LPCTSTR lpszPrompt, UINT nType, UINT nIDPrompt);
    virtual void DoWaitCursor(int nCode); // 0 restore, 1 begin, -1 end

    HCURSOR LoadCursor(LPCTSTR lpszResourceName) const;
    HCURSOR LoadCursor(UINT nIDResource) const;
    HCURSOR LoadStandardCursor(LPCTSTR lpszCursorName) const;
    HICON LoadIcon(LPCTSTR lpszResourceName) const;
    HICON LoadIcon(UINT nIDResource) const;
    HICON LoadStandardIcon(LPCTSTR lpszIconName) const;

protected:
    afx_msg void OnAppExit();
    DECLARE_MESSAGE_MAP()

private:
    void TakeExecutableName();

    CString m_strExeName;
    CString m_strAppName;
    int m_nWaitCursorCount = 0;
    HCURSOR m_hcurWaitCursorRestore = nullptr;

    friend BOOL AFXAPI AfxWinInit(HINSTANCE, HINSTANCE, LPTSTR, int);
};

// Prepares the framework for a program; WinMain calls it, a console program calls it itself.
AFX_SUBSET_API BOOL AFXAPI AfxWinInit(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPTSTR lpCmdLine,
                                      int nCmdShow);
AFX_SUBSET_API void AFXAPI AfxWinTerm();
AFX_SUBSET_API int AFXAPI AfxWinMain(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPTSTR lpCmdLine,
                                     int nCmdShow);
AFX_SUBSET_API void AFXAPI AfxPostQuitMessage(int nExitCode);
// Keeps temporary objects alive at idle time; TRUE from the outermost unlock after which they were dropped.
AFX_SUBSET_API void AFXAPI AfxLockTempMaps();
AFX_SUBSET_API BOOL AFXAPI AfxUnlockTempMaps(BOOL bDeleteTemps = TRUE);
AFX_SUBSET_API BOOL AFXAPI AfxPreTranslateMessage(MSG* pMsg);
AFX_SUBSET_API BOOL AFXAPI AfxPumpMessage();
AFX_SUBSET_API void AFXAPI AfxEnableControlContainer(void* pOccManager = nullptr);
