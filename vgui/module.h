// The library as a module of its host.
#pragma once

#include <afxwin.h>

#include "vgui/export.h"

// Links the library into the calling module's chain of resources and classes. A host program, and an
// extension DLL of one, finds the library there as soon as it is loaded and need not call this; a regular
// MFC DLL, which has a module state of its own, calls it once, with that state current, before it uses the
// library. Calling it again changes nothing. FALSE when the library is not initialised or memory is out.
extern "C" VGUI_API BOOL InitVguiDLL();
