// Module and thread state: which module's instance, resources and application object are current.
#pragma once

#include <afx.h>

class CDynLinkLibrary;
class CWinApp;
class CWinThread;
class CWnd;

namespace afx_subset
{
struct ModuleThreadMaps;
}

// What one module keeps for one thread: its thread object and its handle maps.
class AFX_SUBSET_API AFX_MODULE_THREAD_STATE
{
public:
    AFX_MODULE_THREAD_STATE();
    ~AFX_MODULE_THREAD_STATE();
    AFX_MODULE_THREAD_STATE(const AFX_MODULE_THREAD_STATE&) = delete;
    AFX_MODULE_THREAD_STATE& operator=(const AFX_MODULE_THREAD_STATE&) = delete;

    CWinThread* m_pCurrentWinThread = nullptr;
    afx_subset::ModuleThreadMaps* m_pMaps;
};

// The state of one module: the host program's, which its extension DLLs share, or a regular DLL's own.
class AFX_SUBSET_API AFX_MODULE_STATE
{
public:
    explicit AFX_MODULE_STATE(BOOL bDLL);
    ~AFX_MODULE_STATE();
    AFX_MODULE_STATE(const AFX_MODULE_STATE&) = delete;
    AFX_MODULE_STATE& operator=(const AFX_MODULE_STATE&) = delete;

    CWinApp* m_pCurrentWinApp = nullptr;
    HINSTANCE m_hCurrentInstanceHandle = nullptr;
    HINSTANCE m_hCurrentResourceHandle = nullptr;
    LPCTSTR m_lpszCurrentAppName = nullptr;
    BYTE m_bDLL;
    // Set by AfxEnableControlContainer: this module's windows may contain ActiveX controls.
    BOOL m_bControlContainer = FALSE;
    // Newest first; each CDynLinkLibrary links itself in and out.
    CDynLinkLibrary* m_libraryList = nullptr;
};

// What the framework keeps for one thread, whatever the module.
class AFX_SUBSET_API _AFX_THREAD_STATE
{
public:
    _AFX_THREAD_STATE();
    ~_AFX_THREAD_STATE();
    _AFX_THREAD_STATE(const _AFX_THREAD_STATE&) = delete;
    _AFX_THREAD_STATE& operator=(const _AFX_THREAD_STATE&) = delete;

    // Set by AFX_MANAGE_STATE; null while the thread is in the host program's state.
    AFX_MODULE_STATE* m_pModuleState = nullptr;
    // The message that is being handled: what GetCurrentMessage() and Default() use.
    MSG m_lastSentMsg{};
    // The message that the thread's loop took from the queue last.
    MSG m_msgCur{};
    // The object that waits for its window while that is being created.
    CWnd* m_pWndInit = nullptr;
    HHOOK m_hHookOldCbtFilter = nullptr;
};

AFX_SUBSET_API _AFX_THREAD_STATE* AFXAPI AfxGetThreadState();
AFX_SUBSET_API AFX_MODULE_STATE* AFXAPI AfxGetModuleState();
AFX_SUBSET_API AFX_MODULE_STATE* AFXAPI AfxGetAppModuleState();
AFX_SUBSET_API AFX_MODULE_THREAD_STATE* AFXAPI AfxGetModuleThreadState();
// Makes a state current for the calling thread and returns the one before.
AFX_SUBSET_API AFX_MODULE_STATE* AFXAPI AfxSetModuleState(AFX_MODULE_STATE* pNewState);

// The state of the module that calls: a regular DLL (_USRDLL) has one of its own, every other module
// shares the host program's.
#ifdef _USRDLL
inline AFX_MODULE_STATE* AFXAPI AfxGetStaticModuleState()
{
    static AFX_MODULE_STATE state(TRUE);
    return &state;
}
#else
inline AFX_MODULE_STATE* AFXAPI AfxGetStaticModuleState()
{
    return AfxGetAppModuleState();
}
#endif

// Makes a module state current until the end of the block.
class AFX_SUBSET_API AFX_MAINTAIN_STATE2
{
public:
    explicit AFX_MAINTAIN_STATE2(AFX_MODULE_STATE* pModuleState);
    ~AFX_MAINTAIN_STATE2();
    AFX_MAINTAIN_STATE2(const AFX_MAINTAIN_STATE2&) = delete;
    AFX_MAINTAIN_STATE2& operator=(const AFX_MAINTAIN_STATE2&) = delete;

private:
    AFX_MODULE_STATE* m_pPrevModuleState;
};
#define AFX_MANAGE_STATE(p) AFX_MAINTAIN_STATE2 _ctlState(p);

AFX_SUBSET_API CWinApp* AFXAPI AfxGetApp();
AFX_SUBSET_API CWinThread* AFXAPI AfxGetThread();
AFX_SUBSET_API CWnd* AFXAPI AfxGetMainWnd();
AFX_SUBSET_API LPCTSTR AFXAPI AfxGetAppName();
AFX_SUBSET_API HINSTANCE AFXAPI AfxGetInstanceHandle();
AFX_SUBSET_API HINSTANCE AFXAPI AfxGetResourceHandle();
AFX_SUBSET_API void AFXAPI AfxSetResourceHandle(HINSTANCE hInstResource);

// The module that has the resource: the current resource handle's, else one of the extension DLLs, newest
// first, else the framework's own. The resource handle when none has it.
AFX_SUBSET_API HINSTANCE AFXAPI AfxFindResourceHandle(LPCTSTR lpszName, LPCTSTR lpszType);
AFX_SUBSET_API HINSTANCE AFXAPI AfxFindStringResourceHandle(UINT nID);
// Copies a string resource; returns its length, 0 (and an empty text) when there is none.
AFX_SUBSET_API int AFXAPI AfxLoadString(UINT nIDS, LPTSTR lpszBuf, UINT nMaxBuf = 256);
