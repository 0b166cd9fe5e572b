// Operations that fail, and no more, when memory is short.
#pragma once

#include <afx.h>
#include <new>

// What run() answers, or an empty answer (0, null) when it could not get the memory that it asked new for.
// That throws std::bad_alloc, or MFC's own exception where MFC replaces it.
template <class Run>
auto VWithinMemory(const Run& run) -> decltype(run())
{
    try {
        return run();
    } catch (const std::bad_alloc&) {
    } catch (CMemoryException* e) {
        e->Delete();
    }
    return {};
}
