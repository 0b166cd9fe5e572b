#include "tests/gallery/monkey_log.h"

#include "tests/support/environment.h"

#include <cstdio>

namespace monkey
{

namespace
{

constexpr int kKept = 50;
constexpr int kLineLength = 200;

// No memory of the heap: a crash may have left it in pieces.
char g_lines[kKept][kLineLength];
int g_count = 0;
unsigned g_seed = 0;

} // namespace

void BeginLog(unsigned seed)
{
    g_seed = seed;
    g_count = 0;
    support::SetCrashWriter(WriteLog);
}

void Log(int index, const std::string& action)
{
    snprintf(g_lines[g_count % kKept], kLineLength, "%d %s", index, action.c_str());
    ++g_count;
}

void WriteLog()
{
    printf("monkey: VGUI_MONKEY_SEED=%u, the last actions of %d:\n", g_seed, g_count);
    for (int i = g_count > kKept ? g_count - kKept : 0; i < g_count; ++i)
        printf("  %s\n", g_lines[i % kKept]);
}

} // namespace monkey
