// The client's end of the companion's pipe.
#pragma once

#include "vgui/foundation/gdi_scope.h"

#include <functional>

// Whether to go on waiting; asked several times a second.
using VKeepWaiting = std::function<bool()>;

// Waits for a handle until it is signalled (true) or nobody wants to wait any more (false). Messages that
// other threads send to this thread's windows are handled meanwhile, so that they need not wait, too.
bool VGWaitForHandle(HANDLE handle, const VKeepWaiting& keepWaiting);

class CompanionPipe
{
public:
    // False when there is no such pipe, or no free place at it, or when the name is that of something else.
    // The server can find out who the client is but not act in its name.
    bool Open(LPCWSTR name);
    void Close();

    // Both wait until something or everything has gone through and return the number of bytes: 0 when the
    // server is gone or keepWaiting said no.
    DWORD Read(void* buffer, DWORD size, const VKeepWaiting& keepWaiting);
    DWORD Write(const void* data, DWORD size, const VKeepWaiting& keepWaiting);
    // Whether there is something to read at once.
    [[nodiscard]] bool HasMore() const;

private:
    DWORD Finish(BOOL started, OVERLAPPED& transfer, const VKeepWaiting& keepWaiting);

    VOwnedKernelHandle m_pipe;
    VOwnedKernelHandle m_event; // signalled when a transfer ends
};
