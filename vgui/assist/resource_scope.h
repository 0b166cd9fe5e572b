// Looks for resources in the library first.
#pragma once

#include "vgui/foundation/library_instance.h"

// Makes the library's module the first of the resource chain until the end of the block, so that a template
// of the host with the same id is not taken for the library's.
class VResourceScope
{
public:
    VResourceScope() : m_former(AfxGetResourceHandle()) { AfxSetResourceHandle(VGLibraryInstance()); }
    VResourceScope(const VResourceScope&) = delete;
    VResourceScope& operator=(const VResourceScope&) = delete;
    ~VResourceScope() { AfxSetResourceHandle(m_former); }

private:
    HINSTANCE m_former;
};
