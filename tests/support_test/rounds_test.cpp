#include "tests/support/rounds.h"

#include <afxwin.h>
#include <gtest/gtest.h>

using namespace support;

namespace
{

int More(const ObjectCounts& before, const char* kind)
{
    const auto found = before.find(kind);
    return CountKernelObjects()[kind] - (found == before.end() ? 0 : found->second);
}

} // namespace

TEST(Rounds, CountKernelObjectsByType)
{
    const ObjectCounts before = CountKernelObjects();
    const HANDLE event = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    const HANDLE thread = ::CreateThread(
        nullptr, 0, [](void* wanted) { return ::WaitForSingleObject(wanted, INFINITE); }, event, 0, nullptr);
    HKEY key = nullptr;
    ::RegOpenKeyExW(HKEY_CURRENT_USER, L"Software", 0, KEY_READ, &key);
    EXPECT_EQ(More(before, "Event handle"), 1);
    EXPECT_EQ(More(before, "Thread handle"), 1);
    EXPECT_EQ(More(before, "thread"), 1);
    EXPECT_EQ(More(before, "Key handle"), 1);

    ::RegCloseKey(key);
    ::SetEvent(event);
    ::WaitForSingleObject(thread, INFINITE);
    ::CloseHandle(thread);
    ::CloseHandle(event);
    EXPECT_EQ(CountKernelObjects(), before);
}
