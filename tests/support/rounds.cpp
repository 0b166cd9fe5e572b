#include "tests/support/rounds.h"

#include "tests/support/pump.h"

#include <set>
#include <tlhelp32.h>
#include <vector>
#include <winternl.h>

namespace support
{

namespace
{

constexpr int kWarmUpRounds = 5;
constexpr auto kExtendedHandles = static_cast<SYSTEM_INFORMATION_CLASS>(64);
constexpr NTSTATUS kTooShort = static_cast<NTSTATUS>(0xC0000004);

// The answer about all handles of all processes.
struct HandleEntry {
    PVOID object;
    ULONG_PTR process;
    ULONG_PTR handle;
    ULONG access;
    USHORT creator;
    USHORT type;
    ULONG attributes;
    ULONG reserved;
};
struct HandleTable {
    ULONG_PTR count;
    ULONG_PTR reserved;
    HandleEntry entries[1];
};

template <class Function>
Function NtFunction(const char* name)
{
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandle(L"ntdll.dll"), name)));
}

std::vector<HANDLE> OwnHandles()
{
    static const auto query = NtFunction<decltype(&NtQuerySystemInformation)>("NtQuerySystemInformation");
    std::vector<ULONG_PTR> buffer(1 << 12);
    while (query(kExtendedHandles, buffer.data(), static_cast<ULONG>(buffer.size() * sizeof(buffer[0])),
                 nullptr) == kTooShort)
        buffer.resize(2 * buffer.size());
    const auto& table = *reinterpret_cast<const HandleTable*>(buffer.data());
    std::vector<HANDLE> handles;
    for (ULONG_PTR i = 0; i < table.count; ++i) {
        if (table.entries[i].process == ::GetCurrentProcessId())
            handles.push_back(reinterpret_cast<HANDLE>(table.entries[i].handle));
    }
    return handles;
}

std::string TypeOf(HANDLE handle)
{
    static const auto query = NtFunction<decltype(&NtQueryObject)>("NtQueryObject");
    alignas(void*) BYTE buffer[1024]{};
    if (query(handle, ObjectTypeInformation, buffer, sizeof buffer, nullptr) < 0)
        return "other";
    const auto& name = *reinterpret_cast<const UNICODE_STRING*>(buffer); // its first member
    return {name.Buffer, name.Buffer + name.Length / sizeof(wchar_t)};
}

int CountThreads()
{
    const HANDLE snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    int count = 0;
    for (BOOL more = ::Thread32First(snapshot, &entry); more; more = ::Thread32Next(snapshot, &entry))
        count += entry.th32OwnerProcessID == ::GetCurrentProcessId();
    ::CloseHandle(snapshot);
    return count;
}

} // namespace

ObjectCounts CountKernelObjects()
{
    ObjectCounts counts;
    counts["thread"] = CountThreads();
    for (HANDLE handle : OwnHandles())
        ++counts[TypeOf(handle) + " handle"];
    return counts;
}

void ExpectRoundsLeaveNothing(const std::function<void()>& round)
{
    for (int i = 0; i < kWarmUpRounds; ++i)
        round();
    PumpMessages();
    static std::set<const testing::TestInfo*> s_warmedUp;
    if (s_warmedUp.insert(testing::UnitTest::GetInstance()->current_test_info()).second)
        return;
    const Census census;
    const ObjectCounts kernel = CountKernelObjects();
    for (int i = 0; i < kRounds && !testing::Test::HasFatalFailure(); ++i)
        round();
    // Threads of the system may take their time to end.
    EXPECT_TRUE(PumpUntil([&] { return CountKernelObjects() == kernel && census.Unchanged(); }));
    EXPECT_EQ(CountKernelObjects(), kernel);
    census.ExpectUnchanged();
}

} // namespace support
