// Looks after the modal windows and menus of the test's thread: gives them to the answers that wait for
// them, and closes by force what stays up too long. Used by modal.h's classes and the environment.
#pragma once

#include "tests/support/wait.h"

#include <functional>
#include <memory>

namespace support
{

enum class ModalKind { Window, Menu };

// One answer that waits for a modal window or a menu.
struct PendingAnswer {
    ModalKind kind = ModalKind::Window;
    DWORD timeoutMs = 0;
    bool served = false;
    // Runs inside the modal loop, with the window that came up.
    std::function<void(HWND)> serve;
};

// Begins and ends the watch for the calling thread; it uses one timer of that thread.
void StartModalWatch();
void StopModalWatch();

// Windows that exist now are not taken for the awaited one.
void AddPendingAnswer(const std::shared_ptr<PendingAnswer>& answer);
void RemovePendingAnswer(const std::shared_ptr<PendingAnswer>& answer);

} // namespace support
