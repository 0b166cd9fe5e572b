// The library's own module, for loading its own resources.
#pragma once

#include <afxwin.h>

// The linker's name for the beginning of the module that this is compiled into.
extern "C" IMAGE_DOS_HEADER __ImageBase;

// The instance handle of vgui.dll. For use inside the library only: a host's resources come first in the
// framework's resource chain, so the library asks for its own by handle.
inline HINSTANCE VGLibraryInstance()
{
    return static_cast<HINSTANCE>(static_cast<void*>(&__ImageBase));
}
