// Where the host keeps its files.
#pragma once

#include "vgui/export.h"

#include <afxwin.h>

// The host's folder, without a separator at the end: the parent of the folder that holds the host's program,
// or what VGSetHostRoot was given. Empty when the program lies less deep.
VGUI_API CString VGHostRoot();

// Sets another folder, for a host whose program does not lie in a folder "bin" of its own; null or empty for
// the usual one.
VGUI_API void VGSetHostRoot(LPCWSTR root);

// The full path of a file in the host's folder "sys", such as "product.ini" and "AssistSystem.ini".
VGUI_API CString VGHostSysFile(LPCWSTR name);

// A value of an INI file, cut to size - 1 characters; the default when there is none. For the library itself:
// not exported.
CString VGReadIniValue(LPCWSTR file, LPCWSTR section, LPCWSTR key, LPCWSTR defaultValue = L"",
                       int size = 260);
