#include "tests/support/pump.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace support
{

namespace
{

// How long a wait may sleep before it asks its condition again: a condition can become true without a
// message coming in.
constexpr DWORD kPollInterval = 5;
// What a single message counts for at most when a flood of messages is looked for, in milliseconds.
constexpr ULONGLONG kLongestShare = 50;
// More idle rounds than any idle work asks for.
constexpr LONG kMostIdleRounds = 100;

bool IsQueueEmpty()
{
    MSG message;
    return !::PeekMessage(&message, nullptr, 0, 0, PM_NOREMOVE);
}

// Takes one message out of the queue and dispatches it. FALSE for WM_QUIT.
BOOL PumpOne()
{
    if (CWinThread* thread = AfxGetThread())
        return thread->PumpMessage();
    MSG message;
    if (!::GetMessage(&message, nullptr, 0, 0))
        return FALSE;
    ::TranslateMessage(&message);
    ::DispatchMessage(&message);
    return TRUE;
}

} // namespace

void RunIdle()
{
    CWinThread* thread = AfxGetThread();
    for (LONG round = 0; thread != nullptr && round < kMostIdleRounds && thread->OnIdle(round); ++round) {
    }
}

BOOL PumpMessages()
{
    BOOL goesOn = TRUE;
    DWORD spent = 0;
    while (!IsQueueEmpty()) {
        const ULONGLONG start = ::GetTickCount64();
        if (!PumpOne())
            goesOn = FALSE;
        // One message may have been a long modal loop; only many short ones are a flood.
        spent += static_cast<DWORD>(std::min<ULONGLONG>(::GetTickCount64() - start, kLongestShare));
        if (spent > kDefaultTimeout) {
            ADD_FAILURE() << "the message queue does not become empty";
            break;
        }
    }
    RunIdle();
    return goesOn;
}

bool PumpUntil(const std::function<bool()>& condition, DWORD timeoutMs)
{
    const Deadline deadline(timeoutMs);
    while (!condition()) {
        if (deadline.Passed())
            return false;
        ::MsgWaitForMultipleObjectsEx(0, nullptr, std::min(kPollInterval, deadline.Left()), QS_ALLINPUT,
                                      MWMO_INPUTAVAILABLE);
        PumpMessages();
    }
    return true;
}

} // namespace support
