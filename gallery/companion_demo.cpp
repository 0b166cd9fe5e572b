#include "gallery/companion_demo.h"

namespace
{

constexpr DWORD kBufferSize = 1024; // bytes
constexpr int kDrawings = 40;
constexpr DWORD kDrawingTime = 120; // milliseconds
constexpr DWORD kContinueSize = 8;  // bytes of the answer that asks for more

class DemoPipe
{
public:
    explicit DemoPipe(LPCWSTR name)
        : m_pipe(::CreateNamedPipeW(name, PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE | PIPE_REJECT_REMOTE_CLIENTS, 1,
                                    kBufferSize, kBufferSize, 0, nullptr))
    {
    }
    DemoPipe(const DemoPipe&) = delete;
    DemoPipe& operator=(const DemoPipe&) = delete;
    ~DemoPipe()
    {
        if (m_pipe != INVALID_HANDLE_VALUE)
            ::CloseHandle(m_pipe);
    }

    bool Connect()
    {
        return m_pipe != INVALID_HANDLE_VALUE &&
               (::ConnectNamedPipe(m_pipe, nullptr) || ::GetLastError() == ERROR_PIPE_CONNECTED);
    }
    // Sends a message and waits for its answer; true when there is to be another one.
    bool Say(const CString& message)
    {
        DWORD size = 0;
        BYTE answer[kContinueSize];
        return ::WriteFile(m_pipe, message, message.GetLength() * sizeof(wchar_t), &size, nullptr) &&
               ::ReadFile(m_pipe, answer, sizeof answer, &size, nullptr) && size == kContinueSize;
    }

private:
    HANDLE m_pipe;
};

} // namespace

bool ServeCompanionDemo(const CString& pipeName)
{
    DemoPipe pipe(pipeName);
    if (!pipe.Connect())
        return false;
    CString message;
    message.Format(L"?Total=%d?Message=正在导出 Exporting", kDrawings);
    bool goOn = pipe.Say(message);
    for (int drawing = 1; goOn && drawing <= kDrawings; ++drawing) {
        ::Sleep(kDrawingTime);
        message.Format(L"?Process=%d?CurObject=图纸 Drawing %d", drawing, drawing);
        goOn = pipe.Say(message);
    }
    return true;
}
