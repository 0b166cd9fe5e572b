// The main of every test executable: an MFC host program with a console.
#include "tests/support/environment.h"
#include "tests/support/guard_pages.h"

#include <cstdio>
#include <gtest/gtest.h>

namespace
{

class TestApp : public CWinApp
{
};

TestApp theApp;

// What a script looks for, to tell a run that ended from one that was cut off.
constexpr const char* kClosingLine = "ALL TESTS ENDED";

} // namespace

int main(int argc, char** argv)
{
    setvbuf(stdout, nullptr, _IONBF, 0); // what a crash leaves in a buffer is lost
    support::InstallCrashReport();
    if (::GetEnvironmentVariable(L"VGUI_GUARD_PAGES", nullptr, 0) > 0)
        support::InstallGuardPages();
    testing::InitGoogleTest(&argc, argv);
    // Twice: the first round warms up what the second one's census would take for leaks.
    if (testing::GTEST_FLAG(repeat) == 1)
        testing::GTEST_FLAG(repeat) = 2;
    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();

    if (!AfxWinInit(::GetModuleHandle(nullptr), nullptr, ::GetCommandLine(), 0)) {
        puts("the framework cannot be initialised");
        return 1;
    }
    if (!support::BeginTests()) {
        puts("the tests need a desktop whose foreground window they can be");
        return 1;
    }
    const int result = RUN_ALL_TESTS();
    support::EndTests();
    puts(kClosingLine);
    // Only the low byte of an exit code survives everywhere.
    return result == 0 ? 0 : 1;
}
