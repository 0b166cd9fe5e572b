// Runs the message loop of the test's thread until there is nothing left to do or a condition holds.
#pragma once

#include "tests/support/wait.h"

#include <functional>

namespace support
{

// Dispatches what lies in the calling thread's queue, through the framework's own pump, so that
// PreTranslateMessage sees every message; then gives the framework its idle time, which drops temporary
// objects. A queue that does not become empty within kDefaultTimeout (a window that never validates its
// paint area, say) fails the current test.
// Returns FALSE when WM_QUIT was among the messages; it is taken off the queue.
BOOL PumpMessages();

// Pumps until condition() is true; it is asked before the first message and after each round. Between
// rounds the thread sleeps until a message comes, at most a few milliseconds.
// Returns false when the time ran out. A WM_QUIT that comes meanwhile is dropped.
[[nodiscard]] bool PumpUntil(const std::function<bool()>& condition, DWORD timeoutMs = kDefaultTimeout);

// Gives the framework its idle time without dispatching anything.
void RunIdle();

} // namespace support
