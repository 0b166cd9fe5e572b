// The library as a module: its entry point, its application object and its place in the host's chain of
// extension modules.
#include "vgui/module.h"

#include <afxdllx.h>

namespace
{

// The host's entry in the framework's module state. An application object enters itself there when it is
// constructed, and so does the framework's initialisation; inside a host both must leave the host in place.
class HostEntry
{
public:
    HostEntry()
        : m_state(AfxGetModuleState()), m_app(m_state->m_pCurrentWinApp), m_thread(AfxGetThread()),
          m_instance(m_state->m_hCurrentInstanceHandle), m_resources(m_state->m_hCurrentResourceHandle),
          m_appName(m_state->m_lpszCurrentAppName)
    {
    }

    void Restore() const
    {
        m_state->m_pCurrentWinApp = m_app;
        m_state->m_hCurrentInstanceHandle = m_instance;
        m_state->m_hCurrentResourceHandle = m_resources;
        m_state->m_lpszCurrentAppName = m_appName;
        AfxGetModuleThreadState()->m_pCurrentWinThread = m_thread;
    }

private:
    AFX_MODULE_STATE* m_state;
    CWinApp* m_app;
    CWinThread* m_thread;
    HINSTANCE m_instance;
    HINSTANCE m_resources;
    LPCTSTR m_appName;
};

// The library's own application object. A host that reaches AfxGetApp() still finds its own.
class CGuiApp : public CWinApp
{
public:
    // The default argument is evaluated before the base enters itself.
    explicit CGuiApp(const HostEntry& host = HostEntry()) { host.Restore(); }

    BOOL InitInstance() override
    {
        AfxEnableControlContainer();
        return CWinApp::InitInstance();
    }
};

CGuiApp s_app;
AFX_EXTENSION_MODULE s_extension{};

// Links the library into the current module state's chain. FALSE when there is no memory for the link.
BOOL Link()
{
    try {
        new CDynLinkLibrary(s_extension); // the chain's
        return TRUE;
    } catch (CMemoryException* e) {
        e->Delete();
        return FALSE;
    }
}

BOOL AttachToProcess(HINSTANCE instance)
{
    const HostEntry host;
    // The initialisation writes into the current application object, which must not be the host's.
    AfxGetModuleState()->m_pCurrentWinApp = &s_app;
    if (!AfxWinInit(instance, nullptr, ::GetCommandLine(), SW_SHOWNORMAL))
        return FALSE;
    host.Restore();
    s_app.InitInstance();
    if (!AfxInitExtensionModule(s_extension, instance))
        return FALSE;
    // Without the link the host does not find the library's resources, but all else works.
    Link();
    return TRUE;
}

void DetachFromProcess()
{
    const HostEntry host;
    s_app.ExitInstance();
    AfxWinTerm();
    host.Restore();
    AfxTermExtensionModule(s_extension);
}

} // namespace

BOOL InitVguiDLL()
{
    if (!s_extension.bInitialized)
        return FALSE;
    // A regular DLL has a module state of its own, whose chain does not hold the library yet.
    for (const CDynLinkLibrary* link = AfxGetModuleState()->m_libraryList; link != nullptr;
         link = link->m_pNextDLL) {
        if (link->m_hModule == s_extension.hModule)
            return TRUE;
    }
    return Link();
}

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID)
{
    switch (reason) {
    case DLL_PROCESS_ATTACH:
        return AttachToProcess(instance);
    case DLL_THREAD_DETACH:
        AfxTermThread();
        return TRUE;
    case DLL_PROCESS_DETACH:
        DetachFromProcess();
        return TRUE;
    default:
        return TRUE;
    }
}
