#include "tests/support/environment.h"

#include "tests/support/census.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace
{

struct Outcome {
    DWORD exitCode = 0;
    std::string output;
};

// Runs one test of this program in a process of its own.
Outcome RunAlone(const std::wstring& test)
{
    constexpr DWORD kLongest = 20000;
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    HANDLE readEnd = nullptr, writeEnd = nullptr;
    EXPECT_TRUE(::CreatePipe(&readEnd, &writeEnd, &inheritable, 0));
    ::SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);

    wchar_t program[MAX_PATH];
    ::GetModuleFileName(nullptr, program, MAX_PATH);
    std::wstring command =
        std::wstring(L"\"") + program + L"\" --gtest_also_run_disabled_tests --gtest_filter=" + test;
    STARTUPINFO startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = writeEnd;
    PROCESS_INFORMATION process{};
    EXPECT_TRUE(::CreateProcess(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                &startup, &process));
    ::CloseHandle(writeEnd);
    EXPECT_EQ(::WaitForSingleObject(process.hProcess, kLongest), WAIT_OBJECT_0);

    Outcome outcome;
    char buffer[4096];
    for (DWORD read = 0; ::ReadFile(readEnd, buffer, sizeof buffer, &read, nullptr) && read > 0;)
        outcome.output.append(buffer, read);
    ::GetExitCodeProcess(process.hProcess, &outcome.exitCode);
    ::CloseHandle(readEnd);
    ::CloseHandle(process.hProcess);
    ::CloseHandle(process.hThread);
    return outcome;
}

bool Contains(const Outcome& outcome, const char* text)
{
    return outcome.output.find(text) != std::string::npos;
}

constexpr DWORD kCrashed = 99;

TEST(EnvironmentTest, CrashesAreReportedAndNeverLookLikeSuccess)
{
    const Outcome fault = RunAlone(L"EnvironmentChild.DISABLED_Fault");
    EXPECT_EQ(fault.exitCode, kCrashed);
    EXPECT_TRUE(Contains(fault, "exception 0xc0000005")) << fault.output;
    EXPECT_TRUE(Contains(fault, "#0 support_test_tests.exe+0x")) << fault.output;
    EXPECT_TRUE(Contains(fault, "#3 ")) << fault.output;

    const Outcome abort = RunAlone(L"EnvironmentChild.DISABLED_Abort");
    EXPECT_EQ(abort.exitCode, kCrashed);
    EXPECT_TRUE(Contains(abort, "CRASH: abort")) << abort.output;
    EXPECT_FALSE(Contains(abort, "ALL TESTS ENDED"));
}

TEST(EnvironmentTest, GuardPagesFindOverrunsAndLateUses)
{
    ::SetEnvironmentVariable(L"VGUI_GUARD_PAGES", L"1");
    const Outcome overrun = RunAlone(L"EnvironmentChild.DISABLED_Overrun");
    const Outcome lateUse = RunAlone(L"EnvironmentChild.DISABLED_LateUse");
    ::SetEnvironmentVariable(L"VGUI_GUARD_PAGES", nullptr);
    for (const Outcome& outcome : {overrun, lateUse}) {
        EXPECT_EQ(outcome.exitCode, kCrashed);
        EXPECT_TRUE(Contains(outcome, "exception 0xc0000005")) << outcome.output;
    }
}

TEST(EnvironmentTest, FailureEndsTheRunWithOne)
{
    const Outcome failure = RunAlone(L"EnvironmentChild.DISABLED_Failure");
    EXPECT_EQ(failure.exitCode, 1U);
    EXPECT_TRUE(Contains(failure, "ALL TESTS ENDED")) << failure.output;
}

TEST(EnvironmentTest, LeakInASuiteWithACensusFailsTheRun)
{
    const Outcome leak = RunAlone(L"EnvironmentLeak.DISABLED_Pen");
    EXPECT_EQ(leak.exitCode, 1U);
    EXPECT_TRUE(Contains(leak, "pen: ")) << leak.output;
    EXPECT_EQ(RunAlone(L"EnvironmentLeak.DISABLED_Nothing").exitCode, 0U);
}

// What RunAlone runs; disabled so that nobody else does.
TEST(EnvironmentChild, DISABLED_Fault)
{
    // Low enough to belong to nobody; volatile, lest the compiler notice.
    volatile ULONG_PTR address = 8;
    *reinterpret_cast<volatile int*>(address) = 1;
}

TEST(EnvironmentChild, DISABLED_Overrun)
{
    const auto block = std::make_unique<char[]>(24);
    const volatile char* const bytes = block.get();
    volatile size_t beyond = 24; // volatile, lest the compiler notice
    EXPECT_EQ(bytes[beyond - 1], 0);
    EXPECT_EQ(bytes[beyond], 0);
}

TEST(EnvironmentChild, DISABLED_LateUse)
{
    auto block = std::make_unique<char[]>(24);
    const volatile char* const bytes = block.get();
    block.reset();
    EXPECT_EQ(bytes[0], 0);
}

TEST(EnvironmentChild, DISABLED_Abort)
{
    std::abort();
}

TEST(EnvironmentChild, DISABLED_Failure)
{
    FAIL() << "as it should";
}

class EnvironmentLeak : public support::CensusTest
{
};

TEST_F(EnvironmentLeak, DISABLED_Pen)
{
    EXPECT_NE(::CreatePen(PS_SOLID, 1, RGB(1, 2, 3)), nullptr);
}

TEST_F(EnvironmentLeak, DISABLED_Nothing) {}

} // namespace
