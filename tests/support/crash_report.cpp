// A crash must neither hang in a dialog nor look like success.
#include "tests/support/environment.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>

namespace support
{

namespace
{

constexpr UINT kCrashExitCode = 99;
constexpr int kMostFrames = 40;

char g_note[160];
void (*g_writeMore)() = nullptr;

// Straight to the handle: the C library's buffers cannot be trusted any more.
void Write(const char* text, int length)
{
    DWORD written;
    ::WriteFile(::GetStdHandle(STD_OUTPUT_HANDLE), text, static_cast<DWORD>(length), &written, nullptr);
}

void WriteFrame(int index, DWORD64 address)
{
    HMODULE module = nullptr;
    char path[MAX_PATH] = "?";
    if (::GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                 GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                             reinterpret_cast<LPCSTR>(address), &module))
        ::GetModuleFileNameA(module, path, MAX_PATH);
    const char* name = strrchr(path, '\\');
    char line[MAX_PATH + 64];
    const int length = snprintf(line, sizeof line, "  #%d %s+0x%llx\n", index, name ? name + 1 : path,
                                address - reinterpret_cast<DWORD64>(module));
    Write(line, length);
}

// One frame up. False at the end of the stack.
bool Unwind(CONTEXT& context, bool isFirst)
{
    DWORD64 base = 0;
    PRUNTIME_FUNCTION function = ::RtlLookupFunctionEntry(context.Rip, &base, nullptr);
    if (function == nullptr) {
        // A leaf function, or a jump to nowhere: the return address is on top of the stack.
        if (!isFirst)
            return false;
        context.Rip = *reinterpret_cast<DWORD64*>(context.Rsp);
        context.Rsp += sizeof(DWORD64);
        return true;
    }
    void* handlerData = nullptr;
    DWORD64 frame = 0;
    ::RtlVirtualUnwind(UNW_FLAG_NHANDLER, base, context.Rip, function, &context, &handlerData, &frame,
                       nullptr);
    return true;
}

void WriteNote()
{
    if (g_note[0] == '\0')
        return;
    Write(g_note, static_cast<int>(strlen(g_note)));
    Write("\n", 1);
}

void WriteBacktrace(CONTEXT context)
{
    WriteNote();
    for (int index = 0; index < kMostFrames && context.Rip != 0; ++index) {
        WriteFrame(index, context.Rip);
        if (!Unwind(context, index == 0))
            break;
    }
}

[[noreturn]] void EndProcess()
{
    if (g_writeMore != nullptr)
        g_writeMore();
    ::TerminateProcess(::GetCurrentProcess(), kCrashExitCode);
    std::abort();
}

LONG WINAPI ReportException(EXCEPTION_POINTERS* exception)
{
    static volatile LONG entered = 0;
    if (::InterlockedExchange(&entered, 1) == 0) {
        char line[64];
        const int length = snprintf(line, sizeof line, "CRASH: exception 0x%08lx\n",
                                    exception->ExceptionRecord->ExceptionCode);
        Write(line, length);
        WriteBacktrace(*exception->ContextRecord);
    }
    EndProcess();
}

void ReportHere(const char* what)
{
    char line[64];
    Write(line, snprintf(line, sizeof line, "CRASH: %s\n", what));
    CONTEXT context;
    ::RtlCaptureContext(&context);
    WriteBacktrace(context);
    EndProcess();
}

} // namespace

void SetCrashWriter(void (*write)())
{
    g_writeMore = write;
}

void ReportHang(DWORD threadId)
{
    constexpr char kLine[] = "CRASH: a thread hangs\n";
    Write(kLine, sizeof kLine - 1);
    const HANDLE thread =
        ::OpenThread(THREAD_SUSPEND_RESUME | THREAD_GET_CONTEXT | THREAD_QUERY_INFORMATION, FALSE, threadId);
    CONTEXT context{};
    context.ContextFlags = CONTEXT_FULL;
    if (::SuspendThread(thread) != static_cast<DWORD>(-1) && ::GetThreadContext(thread, &context))
        WriteBacktrace(context);
    ::ResumeThread(thread); // it may hold a lock that the writer needs
    EndProcess();
}

void InstallCrashReport()
{
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    ::SetUnhandledExceptionFilter(ReportException);
    std::signal(SIGABRT, [](int) { ReportHere("abort"); });
    std::set_terminate([] { ReportHere("terminate"); });
}

void SetCrashNote(const char* note)
{
    snprintf(g_note, sizeof g_note, "%s", note);
}

} // namespace support
