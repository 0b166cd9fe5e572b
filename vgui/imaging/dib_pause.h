// The pause between the frames of a transition.
#pragma once

#include <afxwin.h>
#include <mmsystem.h>

// Waits so many milliseconds, busy and exact: a frame lasts only a few. No messages are handled meanwhile.
inline void PauseTransition(DWORD delay)
{
    const DWORD start = ::timeGetTime();
    while (::timeGetTime() - start < delay) {
    }
}
