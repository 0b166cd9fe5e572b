// Feeds input into a thread that may be inside any message loop: its own, a menu's, the system's loop for
// moving and sizing.
#pragma once

#include "tests/support/wait.h"

#include <memory>
#include <string>
#include <vector>

namespace support
{

// Small lists of input records, to be joined with operator+= of the caller's vector or one by one.
[[nodiscard]] INPUT MouseMoveInput(CPoint screen);
[[nodiscard]] INPUT MouseButtonInput(DWORD mouseEventFlag);
[[nodiscard]] INPUT KeyInput(UINT key, bool down);

// A thread whose input another one sends. Created and destroyed by the thread that is fed.
class FedThread
{
public:
    FedThread();
    ~FedThread();
    FedThread(const FedThread&) = delete;
    FedThread& operator=(const FedThread&) = delete;

    // For the other thread: sends one record and waits until the fed thread has taken it out of its queue and
    // has come back for more messages. False when that does not happen in time.
    [[nodiscard]] bool Feed(INPUT record, DWORD timeoutMs) const;
    // Waits until the fed thread looks for messages with no input left. False when it does not in time.
    [[nodiscard]] bool IsIdle(DWORD timeoutMs) const;

private:
    HWND m_probe;
};

// Sends the records one by one from a thread of its own. The next record goes out when the thread that
// created the feeder has taken the last one, so no two records are ever merged or met by a loop that is not
// ready for them.
class InputFeeder
{
public:
    // Starts at once. A record that is not taken within the timeout ends the feeding.
    explicit InputFeeder(std::vector<INPUT> records, DWORD timeoutMs = kDefaultTimeout);
    // Waits for the thread. Reports a record that was not taken as a failure of the current test.
    ~InputFeeder();
    InputFeeder(const InputFeeder&) = delete;
    InputFeeder& operator=(const InputFeeder&) = delete;

    // True when the last record has been processed or the feeding was given up.
    [[nodiscard]] bool Done() const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace support
