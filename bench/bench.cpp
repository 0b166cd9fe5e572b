#include "bench/bench.h"

#include <afxwin.h>
#include <cstdio>
#include <cstring>

namespace bench
{

namespace
{

Subject* g_first = nullptr;
CWinApp g_app;

} // namespace

Subject::Subject(const char* name, Function run) : m_name(name), m_run(run), m_next(g_first)
{
    g_first = this;
}

bool Subject::Run(int count, const char* const* names)
{
    for (int i = 0; i < count; ++i) {
        const Subject* subject = g_first;
        while (subject != nullptr && std::strcmp(subject->m_name, names[i]) != 0)
            subject = subject->m_next;
        if (subject == nullptr) {
            std::fprintf(stderr, "no such subject: %s\n", names[i]);
            return false;
        }
        subject->m_run();
    }
    for (const Subject* subject = g_first; count == 0 && subject != nullptr; subject = subject->m_next)
        subject->m_run();
    return true;
}

double Now()
{
    LARGE_INTEGER now;
    LARGE_INTEGER perSecond;
    ::QueryPerformanceCounter(&now);
    ::QueryPerformanceFrequency(&perSecond);
    return static_cast<double>(now.QuadPart) / static_cast<double>(perSecond.QuadPart);
}

void PrintHeading(std::string_view title, std::string_view yardstick, double yardstickSeconds)
{
    std::printf("\n%.*s\n%-34.*s %8.0f us\n", static_cast<int>(title.size()), title.data(),
                static_cast<int>(yardstick.size()), yardstick.data(), yardstickSeconds * 1e6);
}

void PrintRow(std::string_view name, double seconds, double yardstickSeconds)
{
    std::printf("%-34.*s %8.1f x\n", static_cast<int>(name.size()), name.data(), seconds / yardstickSeconds);
}

} // namespace bench

int main(int argc, char* argv[])
{
    if (!AfxWinInit(::GetModuleHandle(nullptr), nullptr, ::GetCommandLine(), SW_HIDE))
        return 1;
    return bench::Subject::Run(argc - 1, argv + 1) ? 0 : 1;
}
