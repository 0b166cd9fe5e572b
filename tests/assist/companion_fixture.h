// A server in another process to test the companion with, and calls that can be watched.
#pragma once

#include "tests/support/census.h"
#include "tests/support/pump.h"
#include "vgui/assist/companion.h"

#include <filesystem>
#include <string>
#include <thread>
#include <vector>

// An event that the server can name in its steps, too.
class NamedEvent
{
public:
    NamedEvent();
    ~NamedEvent() { ::CloseHandle(m_handle); }
    NamedEvent(const NamedEvent&) = delete;
    NamedEvent& operator=(const NamedEvent&) = delete;

    void Set() const { ::SetEvent(m_handle); }
    [[nodiscard]] bool IsSet() const { return ::WaitForSingleObject(m_handle, 0) == WAIT_OBJECT_0; }
    // Without pumping; false when the time ran out.
    [[nodiscard]] bool Wait() const
    {
        return ::WaitForSingleObject(m_handle, support::kDefaultTimeout) == WAIT_OBJECT_0;
    }
    [[nodiscard]] const std::wstring& Name() const { return m_name; }

private:
    std::wstring m_name;
    HANDLE m_handle;
};

// Runs the server program with the steps that are described there, for one client after the other.
class CompanionServer
{
public:
    explicit CompanionServer(const std::vector<std::wstring>& steps, int rounds = 1,
                             const std::wstring& pipe = std::wstring());
    // Waits for the program's end.
    ~CompanionServer();
    CompanionServer(const CompanionServer&) = delete;
    CompanionServer& operator=(const CompanionServer&) = delete;

    [[nodiscard]] const std::wstring& Pipe() const { return m_pipe; }
    // Ends the program at once, for there will be no more clients.
    void Stop() { ::TerminateProcess(m_process, 0); }
    // The call's argument that names the pipe, followed by more fields.
    [[nodiscard]] std::wstring Arguments(const std::wstring& more = {}) const
    {
        return L"?PipeName=" + m_pipe + more;
    }
    // The lines that the program printed. Waits for its end.
    std::vector<std::string> Transcript();

private:
    std::wstring m_pipe;
    HANDLE m_process = nullptr;
    HANDLE m_output = nullptr;
};

// Calls CompanionInfomation in a thread of its own, so that the test can look at the dialog meanwhile.
class CompanionCall
{
public:
    explicit CompanionCall(const std::wstring& arguments, HWND owner = nullptr, UINT mode = 0);
    ~CompanionCall();
    CompanionCall(const CompanionCall&) = delete;
    CompanionCall& operator=(const CompanionCall&) = delete;

    // The progress dialog, once it is up and in its place; null when it does not come.
    [[nodiscard]] HWND Dialog();
    // Waits for the call's end and returns its result.
    UINT Result();

private:
    std::vector<HWND> m_formerWindows;
    UINT m_result = 0;
    std::thread m_thread;
};

// A host's folder of the test's own for "cfg\CompanionInfomation.his", gone with the object. Test programs
// run side by side, and the folder of the program is one for all.
class CompanionFiles
{
public:
    CompanionFiles();
    ~CompanionFiles();
    CompanionFiles(const CompanionFiles&) = delete;
    CompanionFiles& operator=(const CompanionFiles&) = delete;

    [[nodiscard]] std::filesystem::path History() const;
    void WriteHistory(const std::string& text) const;

private:
    std::filesystem::path m_root;
};

// A file's bytes; empty when there is none.
[[nodiscard]] std::string FileBytes(const std::filesystem::path& path);

class CompanionTest : public support::CensusTest
{
protected:
    CompanionFiles files;
};
