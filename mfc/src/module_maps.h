// The handle maps that a module keeps for a thread.
#pragma once

#include "handle_map.h"

namespace afx_subset
{

struct ModuleThreadMaps {
    HandleMap<CWnd, HWND> windows;
    HandleMap<CMenu, HMENU> menus;
    HandleMap<CDC, HDC> dcs;
    HandleMap<CGdiObject, HGDIOBJ> gdiObjects;
    HandleMap<CImageList, struct _IMAGELIST*> imageLists;
    int tempLockCount = 0;

    void DropTemporaries();
};

// The window's permanent object in whichever of the thread's module states it lives; sets state to that.
CWnd* FindPermanentWindow(HWND hWnd, AFX_MODULE_STATE*& state);

// Frees what the calling thread holds. Nothing of the framework may be used on the thread afterwards.
void ReleaseThreadData();

// The instance of the DLL that holds the framework.
HINSTANCE FrameworkInstance();

} // namespace afx_subset
