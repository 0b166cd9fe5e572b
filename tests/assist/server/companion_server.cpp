// The other process of the companion's tests: a pipe server that does what its arguments say.
//
//     companion_server PIPE READY ROUNDS STEP...
//
// Creates the pipe, signals the event READY, and for each round waits for a client and goes through the
// steps:
//     say TEXT      writes a message and reads the answer
//     put TEXT      writes a message
//     raw N         writes N bytes, all byte values in turn
//     flood N       writes N messages and reads no answer
//     answer        reads an answer
//     set EVENT     signals an event; wait EVENT waits for one
//     stall         says nothing more and reads answers until the client has gone
//     die           ends the process at once
// Prints "SIZE TEXT" for each answer, "gone" when a transfer fails or a wait has lasted too long.
#include <cstdio>
#include <string>
#include <vector>
#include <windows.h>

#include <shellapi.h>

namespace
{

constexpr DWORD kTimeout = 20000; // milliseconds; spent only when a test fails
constexpr DWORD kPipeSize = 4096;

class Server
{
public:
    explicit Server(const wchar_t* name)
        : m_pipe(::CreateNamedPipeW(name, PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE | PIPE_WAIT, 1, kPipeSize,
                                    kPipeSize, kTimeout, nullptr))
    {
    }
    ~Server() { ::CloseHandle(m_pipe); }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    bool IsOpen() const { return m_pipe != INVALID_HANDLE_VALUE; }

    bool Serve(const std::vector<std::wstring>& steps)
    {
        if (!::ConnectNamedPipe(m_pipe, nullptr) && ::GetLastError() != ERROR_PIPE_CONNECTED)
            return false;
        bool alive = true;
        for (size_t i = 0; alive && i < steps.size(); ++i) {
            const std::wstring& step = steps[i];
            const bool alone = step == L"answer" || step == L"stall" || step == L"die";
            alive = Do(step, alone ? std::wstring() : steps[++i]);
        }
        if (!alive)
            puts("gone");
        ::DisconnectNamedPipe(m_pipe);
        return true;
    }

private:
    bool Do(const std::wstring& step, const std::wstring& value)
    {
        if (step == L"say")
            return Put(value) && Answer();
        if (step == L"put")
            return Put(value);
        if (step == L"raw")
            return Raw(std::stoul(value));
        if (step == L"flood")
            return Flood(std::stoul(value));
        if (step == L"answer")
            return Answer();
        if (step == L"set" || step == L"wait")
            return Event(value, step == L"set");
        if (step == L"stall")
            return Stall();
        ::ExitProcess(0);
    }

    bool Put(const std::wstring& text) { return Write(text.data(), text.size() * sizeof(wchar_t)); }
    bool Write(const void* data, size_t size)
    {
        DWORD written = 0;
        return ::WriteFile(m_pipe, data, static_cast<DWORD>(size), &written, nullptr) && written == size;
    }
    bool Raw(size_t size)
    {
        std::string bytes(size, '\0');
        for (size_t i = 0; i < size; ++i)
            bytes[i] = static_cast<char>(i);
        return Write(bytes.data(), size);
    }
    bool Flood(unsigned count)
    {
        bool alive = true;
        for (unsigned i = 0; alive && i < count; ++i)
            alive = Put(L"?Total=" + std::to_wstring(i) + L"?Message=" + std::wstring(i % 400, L'x'));
        return alive;
    }
    bool Answer()
    {
        wchar_t text[64]{};
        DWORD size = 0;
        if (!::ReadFile(m_pipe, text, sizeof text - sizeof(wchar_t), &size, nullptr))
            return false;
        printf("%lu %ls\n", static_cast<unsigned long>(size), text);
        return true;
    }
    static bool Event(const std::wstring& name, bool set)
    {
        const HANDLE event = ::OpenEventW(EVENT_ALL_ACCESS, FALSE, name.c_str());
        const bool done = set ? ::SetEvent(event) : ::WaitForSingleObject(event, kTimeout) == WAIT_OBJECT_0;
        ::CloseHandle(event);
        return done;
    }
    bool Stall()
    {
        while (Answer())
            ;
        return true;
    }

    HANDLE m_pipe;
};

} // namespace

int main()
{
    setvbuf(stdout, nullptr, _IONBF, 0);
    int count = 0;
    wchar_t** const list = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    std::vector<std::wstring> arguments(list, list + count);
    ::LocalFree(list);
    if (count < 4)
        return 2;
    Server server(arguments[1].c_str());
    const HANDLE ready = ::OpenEventW(EVENT_MODIFY_STATE, FALSE, arguments[2].c_str());
    ::SetEvent(ready);
    ::CloseHandle(ready);
    const std::vector<std::wstring> steps(arguments.begin() + 4, arguments.end());
    for (unsigned long round = std::stoul(arguments[3]); server.IsOpen() && round > 0; --round) {
        if (!server.Serve(steps))
            return 1;
    }
    return server.IsOpen() ? 0 : 1;
}
