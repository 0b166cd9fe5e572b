#include "tests/support/window_rounds.h"

#include "tests/support/census.h"
#include "tests/support/pump.h"

namespace support
{

namespace
{

constexpr int kWarmUp = 4;
constexpr int kShortSoak = 100;
// Every suite runs twice in its process.
constexpr int kSuiteRounds = 2;
// What waits in the queue would count as left behind, and grow.
constexpr int kPumpEvery = 50;

int Rounds()
{
    wchar_t text[16] = L"";
    ::GetEnvironmentVariable(L"VGUI_SOAK", text, static_cast<DWORD>(std::size(text)));
    const int count = _wtoi(text);
    return (count > 0 ? count : kShortSoak) / kSuiteRounds;
}

void Run(HostWnd& host, const WindowRound& round, int count)
{
    for (int i = 0; i < count && !testing::Test::HasFatalFailure(); ++i) {
        round.run(host, i);
        if (i % kPumpEvery == 0)
            PumpMessages();
    }
    PumpMessages();
}

} // namespace

void ExpectNothingLeft(HostWnd& host, const std::vector<WindowRound>& rounds)
{
    for (const WindowRound& round : rounds) {
        SCOPED_TRACE(round.name);
        Run(host, round, kWarmUp);
        const Census before;
        Run(host, round, Rounds());
        before.ExpectUnchanged();
    }
}

} // namespace support
