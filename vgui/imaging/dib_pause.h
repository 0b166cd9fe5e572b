// The pause between the frames of a transition.
#pragma once

#include <afxwin.h>
#include <mmsystem.h>

// Waits so many milliseconds, busy and, in a VFineTimerScope, exact: a frame lasts only a few. No messages
// are handled meanwhile.
inline void PauseTransition(DWORD delay)
{
    const DWORD start = ::timeGetTime();
    while (::timeGetTime() - start < delay) {
    }
}

// Has the system's timer count every millisecond for as long as this lives.
class VFineTimerScope
{
public:
    VFineTimerScope() { ::timeBeginPeriod(kPeriod); }
    VFineTimerScope(const VFineTimerScope&) = delete;
    VFineTimerScope& operator=(const VFineTimerScope&) = delete;
    ~VFineTimerScope() { ::timeEndPeriod(kPeriod); }

private:
    static constexpr UINT kPeriod = 1;
};
