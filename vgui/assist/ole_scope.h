// COM for as long as it is needed.
#pragma once

#include <ole2.h>

// Initialises COM for the calling thread until the end of the object, which must be in the same thread. Does
// nothing in a thread that has COM of another kind.
class OleScope
{
public:
    OleScope() : m_initialized(SUCCEEDED(::OleInitialize(nullptr))) {}
    OleScope(const OleScope&) = delete;
    OleScope& operator=(const OleScope&) = delete;
    ~OleScope()
    {
        if (m_initialized)
            ::OleUninitialize();
    }

private:
    bool m_initialized;
};
