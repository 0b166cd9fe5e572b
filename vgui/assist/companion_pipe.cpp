#include "vgui/assist/companion_pipe.h"

namespace
{

constexpr DWORD kInterval = 50; // milliseconds between two questions whether to go on

} // namespace

bool VGWaitForHandle(HANDLE handle, const VKeepWaiting& keepWaiting)
{
    for (;;) {
        switch (::MsgWaitForMultipleObjects(1, &handle, FALSE, kInterval, QS_SENDMESSAGE)) {
        case WAIT_OBJECT_0:
            return true;
        case WAIT_OBJECT_0 + 1:
            MSG message;
            ::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
            break;
        case WAIT_TIMEOUT:
            break;
        default:
            return false;
        }
        if (!keepWaiting())
            return false;
    }
}

bool CompanionPipe::Open(LPCWSTR name)
{
    Close();
    constexpr DWORD flags = FILE_FLAG_OVERLAPPED | SECURITY_SQOS_PRESENT | SECURITY_IDENTIFICATION;
    const HANDLE pipe =
        ::CreateFileW(name, GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, flags, nullptr);
    m_pipe.Reset(pipe == INVALID_HANDLE_VALUE ? nullptr : pipe);
    m_event.Reset(::CreateEventW(nullptr, TRUE, FALSE, nullptr));
    // An answer must not end up in a file that happens to have the name.
    if (m_pipe && ::GetFileType(m_pipe.Get()) != FILE_TYPE_PIPE)
        m_pipe.Reset();
    return m_pipe && m_event;
}

void CompanionPipe::Close()
{
    m_pipe.Reset();
    m_event.Reset();
}

DWORD CompanionPipe::Read(void* buffer, DWORD size, const VKeepWaiting& keepWaiting)
{
    OVERLAPPED transfer{};
    transfer.hEvent = m_event.Get();
    return Finish(::ReadFile(m_pipe.Get(), buffer, size, nullptr, &transfer), transfer, keepWaiting);
}

DWORD CompanionPipe::Write(const void* data, DWORD size, const VKeepWaiting& keepWaiting)
{
    OVERLAPPED transfer{};
    transfer.hEvent = m_event.Get();
    return Finish(::WriteFile(m_pipe.Get(), data, size, nullptr, &transfer), transfer, keepWaiting);
}

DWORD CompanionPipe::Finish(BOOL started, OVERLAPPED& transfer, const VKeepWaiting& keepWaiting)
{
    if (!started && ::GetLastError() != ERROR_IO_PENDING)
        return 0;
    if (!VGWaitForHandle(transfer.hEvent, keepWaiting))
        ::CancelIoEx(m_pipe.Get(), &transfer);
    // Also after cancelling, which may have come too late: until it is over, the system may still write into
    // the record and the buffer.
    DWORD transferred = 0;
    return ::GetOverlappedResult(m_pipe.Get(), &transfer, &transferred, TRUE) ? transferred : 0;
}

bool CompanionPipe::HasMore() const
{
    DWORD available = 0;
    return ::PeekNamedPipe(m_pipe.Get(), nullptr, 0, nullptr, &available, nullptr) && available > 0;
}
