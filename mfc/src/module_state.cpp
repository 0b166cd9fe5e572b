#include <afxwin.h>

#include <afxcmn.h>
#include <afxdllx.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "gdi_handle_traits.h"
#include "image_list_traits.h"
#include "module_maps.h"
#include "wnd_access.h"

using namespace afx_subset;

namespace
{

struct ThreadData {
    _AFX_THREAD_STATE state;
    // One entry per module state that this thread has used; there are hardly ever more than two.
    std::vector<std::pair<AFX_MODULE_STATE*, std::unique_ptr<AFX_MODULE_THREAD_STATE>>> modules;
};

// A raw pointer, freed at thread detach: destructors of static objects still need it at process exit.
thread_local ThreadData* t_threadData = nullptr;

ThreadData& CurrentThread()
{
    if (t_threadData == nullptr)
        t_threadData = new ThreadData;
    return *t_threadData;
}

AFX_MODULE_THREAD_STATE* StateForThread(AFX_MODULE_STATE* moduleState)
{
    auto& modules = CurrentThread().modules;
    for (const auto& [owner, threadState] : modules) {
        if (owner == moduleState)
            return threadState.get();
    }
    modules.emplace_back(moduleState, std::make_unique<AFX_MODULE_THREAD_STATE>());
    return modules.back().second.get();
}

} // namespace

// ---- Thread state

_AFX_THREAD_STATE::_AFX_THREAD_STATE() = default;
_AFX_THREAD_STATE::~_AFX_THREAD_STATE() = default;

_AFX_THREAD_STATE* AFXAPI AfxGetThreadState()
{
    return &CurrentThread().state;
}

AFX_MODULE_THREAD_STATE::AFX_MODULE_THREAD_STATE() : m_pMaps(new ModuleThreadMaps) {}

AFX_MODULE_THREAD_STATE::~AFX_MODULE_THREAD_STATE()
{
    delete m_pMaps;
}

AFX_MODULE_THREAD_STATE* AFXAPI AfxGetModuleThreadState()
{
    return StateForThread(AfxGetModuleState());
}

void afx_subset::ReleaseThreadData()
{
    delete t_threadData;
    t_threadData = nullptr;
}

// ---- Module state

AFX_MODULE_STATE::AFX_MODULE_STATE(BOOL bDLL) : m_bDLL(static_cast<BYTE>(bDLL))
{
    m_hCurrentInstanceHandle = ::GetModuleHandle(nullptr);
    m_hCurrentResourceHandle = m_hCurrentInstanceHandle;
}

AFX_MODULE_STATE::~AFX_MODULE_STATE()
{
    while (m_libraryList != nullptr)
        delete m_libraryList;
    if (t_threadData != nullptr) {
        if (t_threadData->state.m_pModuleState == this)
            t_threadData->state.m_pModuleState = nullptr;
        std::erase_if(t_threadData->modules, [this](const auto& entry) { return entry.first == this; });
    }
}

AFX_MODULE_STATE* AFXAPI AfxGetAppModuleState()
{
    // Never destroyed: windows and GDI objects with static storage outlive every order of destruction.
    static auto* const state = new AFX_MODULE_STATE(FALSE);
    return state;
}

AFX_MODULE_STATE* AFXAPI AfxGetModuleState()
{
    AFX_MODULE_STATE* const current = AfxGetThreadState()->m_pModuleState;
    return current != nullptr ? current : AfxGetAppModuleState();
}

AFX_MODULE_STATE* AFXAPI AfxSetModuleState(AFX_MODULE_STATE* pNewState)
{
    AFX_MODULE_STATE* const previous = AfxGetModuleState();
    AfxGetThreadState()->m_pModuleState = pNewState;
    return previous;
}

AFX_MAINTAIN_STATE2::AFX_MAINTAIN_STATE2(AFX_MODULE_STATE* pModuleState)
    : m_pPrevModuleState(AfxGetThreadState()->m_pModuleState)
{
    AfxGetThreadState()->m_pModuleState = pModuleState;
}

AFX_MAINTAIN_STATE2::~AFX_MAINTAIN_STATE2()
{
    AfxGetThreadState()->m_pModuleState = m_pPrevModuleState;
}

CWinApp* AFXAPI AfxGetApp()
{
    return AfxGetModuleState()->m_pCurrentWinApp;
}

CWinThread* AFXAPI AfxGetThread()
{
    CWinThread* const thread = AfxGetModuleThreadState()->m_pCurrentWinThread;
    // A thread that the framework did not start has no object; the primary one answers with the application.
    if (thread == nullptr && AfxGetApp() != nullptr && AfxGetApp()->m_nThreadID == ::GetCurrentThreadId())
        return AfxGetApp();
    return thread;
}

CWnd* AFXAPI AfxGetMainWnd()
{
    CWinThread* const thread = AfxGetThread();
    return thread != nullptr ? thread->GetMainWnd() : nullptr;
}

LPCTSTR AFXAPI AfxGetAppName()
{
    return AfxGetModuleState()->m_lpszCurrentAppName;
}

HINSTANCE AFXAPI AfxGetInstanceHandle()
{
    return AfxGetModuleState()->m_hCurrentInstanceHandle;
}

HINSTANCE AFXAPI AfxGetResourceHandle()
{
    return AfxGetModuleState()->m_hCurrentResourceHandle;
}

void AFXAPI AfxSetResourceHandle(HINSTANCE hInstResource)
{
    AfxGetModuleState()->m_hCurrentResourceHandle = hInstResource;
}

void AFXAPI AfxEnableControlContainer(void*)
{
    AfxGetModuleState()->m_bControlContainer = TRUE;
}

// ---- Handle maps

namespace
{

ModuleThreadMaps& CurrentMaps()
{
    return *AfxGetModuleThreadState()->m_pMaps;
}

} // namespace

HandleMap<CWnd, HWND>& afx_subset::WndMap()
{
    return CurrentMaps().windows;
}

HandleMap<CMenu, HMENU>& afx_subset::MenuMap()
{
    return CurrentMaps().menus;
}

HandleMap<CDC, HDC>& afx_subset::DCMap()
{
    return CurrentMaps().dcs;
}

HandleMap<CGdiObject, HGDIOBJ>& afx_subset::GdiMap()
{
    return CurrentMaps().gdiObjects;
}

HandleMap<CImageList, struct _IMAGELIST*>& afx_subset::ImageListMap()
{
    return CurrentMaps().imageLists;
}

void ModuleThreadMaps::DropTemporaries()
{
    windows.DropTemporaries();
    menus.DropTemporaries();
    dcs.DropTemporaries();
    gdiObjects.DropTemporaries();
    imageLists.DropTemporaries();
}

CWnd* afx_subset::FindPermanentWindow(HWND hWnd, AFX_MODULE_STATE*& state)
{
    state = AfxGetModuleState();
    if (CWnd* window = WndMap().Permanent(hWnd))
        return window;
    for (const auto& [owner, threadState] : CurrentThread().modules) {
        if (CWnd* window = threadState->m_pMaps->windows.Permanent(hWnd)) {
            state = owner;
            return window;
        }
    }
    return nullptr;
}

void AFXAPI AfxLockTempMaps()
{
    ++CurrentMaps().tempLockCount;
}

BOOL AFXAPI AfxUnlockTempMaps(BOOL bDeleteTemps)
{
    ModuleThreadMaps& maps = CurrentMaps();
    if (maps.tempLockCount == 0 || --maps.tempLockCount > 0)
        return FALSE;
    if (bDeleteTemps)
        maps.DropTemporaries();
    return TRUE;
}

// ---- Extension modules

IMPLEMENT_DYNAMIC(CDynLinkLibrary, CCmdTarget)

BOOL AFXAPI AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE hModule)
{
    if (hModule == nullptr)
        return FALSE;
    if (!state.bInitialized) {
        state.hModule = hModule;
        state.hResource = hModule;
        state.bInitialized = TRUE;
    }
    return TRUE;
}

namespace
{

void DeleteLibraries(AFX_MODULE_STATE& moduleState, HMODULE hModule)
{
    CDynLinkLibrary* library = moduleState.m_libraryList;
    while (library != nullptr) {
        CDynLinkLibrary* const next = library->m_pNextDLL;
        if (library->m_hModule == hModule)
            delete library;
        library = next;
    }
}

} // namespace

void AFXAPI AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL bAll)
{
    if (!state.bInitialized)
        return;
    DeleteLibraries(*AfxGetModuleState(), state.hModule);
    if (bAll && AfxGetModuleState() != AfxGetAppModuleState())
        DeleteLibraries(*AfxGetAppModuleState(), state.hModule);
    RemoveClasses(state.hModule);
    state.bInitialized = FALSE;
}

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL)
    : m_hModule(state.hModule), m_hResource(state.hResource)
{
    LinkIn();
}

CDynLinkLibrary::CDynLinkLibrary(HINSTANCE hModule, HINSTANCE hResource)
    : m_hModule(hModule), m_hResource(hResource != nullptr ? hResource : hModule)
{
    LinkIn();
}

void CDynLinkLibrary::LinkIn()
{
    m_pModuleState = AfxGetModuleState();
    m_pNextDLL = m_pModuleState->m_libraryList;
    m_pModuleState->m_libraryList = this;
}

CDynLinkLibrary::~CDynLinkLibrary()
{
    CDynLinkLibrary** link = &m_pModuleState->m_libraryList;
    while (*link != nullptr && *link != this)
        link = &(*link)->m_pNextDLL;
    if (*link == this)
        *link = m_pNextDLL;
}

void AFXAPI AfxTermThread(HINSTANCE)
{
    ReleaseThreadData();
}

// ---- Resources

namespace
{

template <class HasResource>
HINSTANCE FindResourceModule(HasResource hasResource)
{
    const AFX_MODULE_STATE& state = *AfxGetModuleState();
    if (hasResource(state.m_hCurrentResourceHandle))
        return state.m_hCurrentResourceHandle;
    for (CDynLinkLibrary* library = state.m_libraryList; library != nullptr; library = library->m_pNextDLL) {
        if (library->m_hResource != nullptr && hasResource(library->m_hResource))
            return library->m_hResource;
    }
    if (hasResource(FrameworkInstance()))
        return FrameworkInstance();
    return state.m_hCurrentResourceHandle;
}

// String tables are stored in blocks of 16, so the block's presence alone says nothing about one string.
const WCHAR* FindString(HINSTANCE instance, UINT id, int& length)
{
    const WCHAR* text = nullptr;
    length = ::LoadStringW(instance, id, reinterpret_cast<LPWSTR>(&text), 0);
    return length > 0 ? text : nullptr;
}

} // namespace

HINSTANCE AFXAPI AfxFindResourceHandle(LPCTSTR lpszName, LPCTSTR lpszType)
{
    return FindResourceModule(
        [=](HINSTANCE instance) { return ::FindResource(instance, lpszName, lpszType) != nullptr; });
}

HINSTANCE AFXAPI AfxFindStringResourceHandle(UINT nID)
{
    return FindResourceModule([=](HINSTANCE instance) {
        int length = 0;
        return FindString(instance, nID, length) != nullptr;
    });
}

int AFXAPI AfxLoadString(UINT nIDS, LPTSTR lpszBuf, UINT nMaxBuf)
{
    if (lpszBuf == nullptr || nMaxBuf == 0)
        return 0;
    lpszBuf[0] = 0;
    int length = 0;
    const WCHAR* const text = FindString(AfxFindStringResourceHandle(nIDS), nIDS, length);
    if (text == nullptr)
        return 0;
    const UINT copied = (std::min)(static_cast<UINT>(length), nMaxBuf - 1);
    std::copy_n(text, copied, lpszBuf);
    lpszBuf[copied] = 0;
    return static_cast<int>(copied);
}

// ---- The framework's own DLL

namespace
{
HINSTANCE s_frameworkInstance = nullptr;
}

HINSTANCE afx_subset::FrameworkInstance()
{
    return s_frameworkInstance;
}

extern "C" BOOL WINAPI DllMain(HINSTANCE hInstance, DWORD dwReason, LPVOID)
{
    if (dwReason == DLL_PROCESS_ATTACH)
        s_frameworkInstance = hInstance;
    else if (dwReason == DLL_THREAD_DETACH)
        ReleaseThreadData();
    return TRUE;
}
