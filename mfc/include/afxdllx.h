// Extension DLLs: their entry in the host's chain of resources and classes.
#pragma once

#include <afxwin.h>

struct AFX_EXTENSION_MODULE {
    BOOL bInitialized;
    HMODULE hModule;
    HMODULE hResource;
};

// Remembers the module; FALSE when it cannot be initialised. Called from DllMain at process attach.
AFX_SUBSET_API BOOL AFXAPI AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE hModule);
// Removes the module's classes and its CDynLinkLibrary objects. Called from DllMain at process detach.
AFX_SUBSET_API void AFXAPI AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL bAll = FALSE);

// Called from DllMain at thread detach: releases what the framework keeps for the thread.
AFX_SUBSET_API void AFXAPI AfxTermThread(HINSTANCE hInstTerm = nullptr);

// Links a module into the current module state's chain while it lives. AfxTermExtensionModule deletes it.
class AFX_SUBSET_API CDynLinkLibrary : public CCmdTarget
{
    DECLARE_DYNAMIC(CDynLinkLibrary)

public:
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL bSystem = FALSE);
    explicit CDynLinkLibrary(HINSTANCE hModule, HINSTANCE hResource = nullptr);
    virtual ~CDynLinkLibrary();

    HMODULE m_hModule;
    HMODULE m_hResource;
    CDynLinkLibrary* m_pNextDLL = nullptr;

private:
    void LinkIn();
    AFX_MODULE_STATE* m_pModuleState = nullptr;
};
