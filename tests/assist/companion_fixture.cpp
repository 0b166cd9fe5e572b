#include "tests/assist/companion_fixture.h"

#include "vgui/assist/host_paths.h"

#include <algorithm>
#include <atomic>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>

namespace
{

namespace fs = std::filesystem;

std::wstring UniqueName(const wchar_t* prefix)
{
    static std::atomic<int> number = 0;
    return prefix + std::to_wstring(::GetCurrentProcessId()) + L"-" + std::to_wstring(++number);
}

fs::path ProgramPath()
{
    wchar_t path[MAX_PATH];
    ::GetModuleFileNameW(nullptr, path, MAX_PATH);
    return path;
}

// No argument of the tests holds a quotation mark.
std::wstring Quoted(const std::wstring& argument)
{
    return L"\"" + argument + L"\" ";
}

std::vector<HWND> DialogsOfOtherThreads()
{
    std::vector<HWND> windows;
    ::EnumWindows(
        [](HWND window, LPARAM parameter) -> BOOL {
            DWORD process = 0;
            const DWORD thread = ::GetWindowThreadProcessId(window, &process);
            if (process == ::GetCurrentProcessId() && thread != ::GetCurrentThreadId() &&
                (::GetWindowLongPtrW(window, GWL_STYLE) & WS_CAPTION) == WS_CAPTION)
                reinterpret_cast<std::vector<HWND>*>(parameter)->push_back(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&windows));
    return windows;
}

} // namespace

NamedEvent::NamedEvent()
    : m_name(UniqueName(L"companion-test-event-")),
      m_handle(::CreateEventW(nullptr, TRUE, FALSE, m_name.c_str()))
{
}

CompanionServer::CompanionServer(const std::vector<std::wstring>& steps, int rounds, const std::wstring& pipe)
    : m_pipe(pipe.empty() ? UniqueName(L"\\\\.\\pipe\\companion-test-") : pipe)
{
    const NamedEvent ready;
    const std::wstring program = ProgramPath().replace_filename(L"companion_server.exe").wstring();
    std::wstring command =
        Quoted(program) + Quoted(m_pipe) + Quoted(ready.Name()) + Quoted(std::to_wstring(rounds));
    for (const std::wstring& step : steps)
        command += Quoted(step);

    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    HANDLE output = nullptr;
    ::CreatePipe(&m_output, &output, &inherited, 0);
    ::SetHandleInformation(m_output, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = output;
    startup.hStdError = output;
    PROCESS_INFORMATION process{};
    const BOOL started = ::CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, TRUE,
                                          CREATE_NO_WINDOW, nullptr, nullptr, &startup, &process);
    ::CloseHandle(output);
    EXPECT_TRUE(started) << "companion_server does not start";
    if (!started)
        return;
    ::CloseHandle(process.hThread);
    m_process = process.hProcess;
    EXPECT_TRUE(ready.Wait()) << "companion_server does not come up";
}

CompanionServer::~CompanionServer()
{
    if (m_process != nullptr && ::WaitForSingleObject(m_process, support::kDefaultTimeout) != WAIT_OBJECT_0) {
        ADD_FAILURE() << "companion_server does not end";
        ::TerminateProcess(m_process, 1);
    }
    ::CloseHandle(m_process);
    ::CloseHandle(m_output);
}

std::vector<std::string> CompanionServer::Transcript()
{
    std::string text;
    char part[256];
    for (DWORD size = 0; ::ReadFile(m_output, part, sizeof part, &size, nullptr) && size > 0;)
        text.append(part, size);
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        while (!line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

CompanionCall::CompanionCall(const std::wstring& arguments, HWND owner, UINT mode)
    : m_formerWindows(DialogsOfOtherThreads()),
      m_thread([=, this] { m_result = CompanionInfomation(owner, 0, arguments.c_str(), mode); })
{
}

CompanionCall::~CompanionCall()
{
    Result();
}

HWND CompanionCall::Dialog()
{
    HWND dialog = nullptr;
    const bool found = support::PumpUntil([&] {
        for (HWND window : DialogsOfOtherThreads()) {
            const bool isNew =
                std::find(m_formerWindows.begin(), m_formerWindows.end(), window) == m_formerWindows.end();
            // The last thing that is done to it.
            const UINT close = ::GetMenuState(::GetSystemMenu(window, FALSE), SC_CLOSE, MF_BYCOMMAND);
            if (isNew && (close & MF_GRAYED) != 0)
                dialog = window;
        }
        return dialog != nullptr;
    });
    EXPECT_TRUE(found) << "there is no progress dialog";
    return dialog;
}

UINT CompanionCall::Result()
{
    if (!m_thread.joinable())
        return m_result;
    // The dialog's thread may be waiting for one of this thread's windows.
    const NamedEvent ended;
    std::thread joiner([this, &ended] {
        m_thread.join();
        ended.Set();
    });
    EXPECT_TRUE(support::PumpUntil([&] { return ended.IsSet(); }, 4 * support::kDefaultTimeout));
    joiner.join();
    return m_result;
}

CompanionFiles::CompanionFiles() : m_root(fs::temp_directory_path() / UniqueName(L"companion 测试 "))
{
    fs::create_directories(m_root);
    VGSetHostRoot(m_root.c_str());
}

CompanionFiles::~CompanionFiles()
{
    VGSetHostRoot(nullptr);
    std::error_code ignored;
    fs::remove_all(m_root, ignored);
}

fs::path CompanionFiles::History() const
{
    return m_root / L"cfg" / L"CompanionInfomation.his";
}

void CompanionFiles::WriteHistory(const std::string& text) const
{
    fs::create_directories(History().parent_path());
    std::ofstream(History(), std::ios::binary) << text;
}

std::string FileBytes(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
