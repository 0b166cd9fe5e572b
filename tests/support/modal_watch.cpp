#include "tests/support/modal_watch.h"

#include "tests/support/modal.h"

#include <algorithm>
#include <deque>
#include <gtest/gtest.h>
#include <map>
#include <set>

namespace support
{

namespace
{

// How often the thread's windows are looked at while an answer waits, and otherwise, in milliseconds.
constexpr UINT kBusyInterval = 10;
constexpr UINT kQuietInterval = 500;
// How long each step of closing by force is given, in milliseconds.
constexpr DWORD kForceInterval = 500;

constexpr const wchar_t* kDialogClass = L"#32770";
constexpr const wchar_t* kMenuClass = L"#32768";

struct WatchedWindow {
    ULONGLONG closeAt;
    int forced = 0;
};

struct Watch {
    UINT_PTR timer = 0;
    UINT interval = 0;
    std::deque<std::shared_ptr<PendingAnswer>> pending;
    std::set<HWND> known; // not to be served: there before the answer, or served already
    std::map<HWND, WatchedWindow> up;
};
Watch g_watch;

bool HasClass(HWND window, const wchar_t* name)
{
    wchar_t buffer[16];
    return ::GetClassName(window, buffer, static_cast<int>(std::size(buffer))) > 0 && !wcscmp(buffer, name);
}

bool DisablesOwner(HWND window)
{
    const HWND owner = ::GetWindow(window, GW_OWNER);
    return owner != nullptr && !::IsWindowEnabled(owner);
}

bool IsMenuWindow(HWND window)
{
    return HasClass(window, kMenuClass);
}

// Whether an answer for a modal window can mean this one.
bool IsDialogLike(HWND window)
{
    return !IsMenuWindow(window) && (HasClass(window, kDialogClass) || DisablesOwner(window));
}

// Whether the window keeps a loop of its own running, as far as can be told from outside. A framework
// object's dialog may be modeless; it is modal when it has disabled its owner.
bool IsModal(HWND window)
{
    return IsMenuWindow(window) || DisablesOwner(window) ||
           (HasClass(window, kDialogClass) && CWnd::FromHandlePermanent(window) == nullptr);
}

std::vector<HWND> VisibleWindows()
{
    std::vector<HWND> windows;
    ::EnumThreadWindows(
        ::GetCurrentThreadId(),
        [](HWND window, LPARAM list) -> BOOL {
            if (::IsWindowVisible(window))
                reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&windows));
    return windows;
}

// Fully there: a timer's message comes after the paint messages, but a loop may send itself there early.
bool IsReady(HWND window, ModalKind kind)
{
    if (::GetUpdateRect(window, nullptr, FALSE))
        return false;
    return kind == ModalKind::Menu || (::IsWindowEnabled(window) && ::GetActiveWindow() == window);
}

HWND FindAwaited(ModalKind kind)
{
    HWND found = nullptr;
    for (const HWND window : VisibleWindows()) {
        const bool fits = kind == ModalKind::Menu ? IsMenuWindow(window) : IsDialogLike(window);
        if (!fits)
            continue;
        if (g_watch.known.contains(window)) {
            // A submenu belongs to the menu that has been answered.
            if (kind == ModalKind::Menu)
                return nullptr;
        } else if (IsReady(window, kind)) {
            found = window;
        }
    }
    return found;
}

// Gives the first waiting answer of a kind its window.
void ServeFirst(ModalKind kind)
{
    const auto first = std::find_if(g_watch.pending.begin(), g_watch.pending.end(), [=](const auto& answer) {
        return answer->kind == kind && !answer->served;
    });
    if (first == g_watch.pending.end())
        return;
    const HWND window = FindAwaited(kind);
    if (window == nullptr)
        return;
    const std::shared_ptr<PendingAnswer> answer = *first; // survives the removal of the list's entry
    answer->served = true;
    g_watch.known.insert(window);
    g_watch.up[window] = {::GetTickCount64() + answer->timeoutMs};
    answer->serve(window);
}

// Closes a window in rougher ways from step to step.
void ForceClose(HWND window, int step)
{
    auto* dialog = dynamic_cast<CDialog*>(CWnd::FromHandlePermanent(window));
    switch (step) {
    case 0:
        ::EndMenu();
        ::PostMessage(window, WM_CANCELMODE, 0, 0);
        ::PostMessage(window, WM_COMMAND, IDCANCEL, 0);
        break;
    case 1:
        ::PostMessage(window, WM_CLOSE, 0, 0);
        break;
    case 2:
        if (dialog != nullptr)
            dialog->EndDialog(IDCANCEL);
        else
            ::EndDialog(window, IDCANCEL);
        break;
    default:
        ::DestroyWindow(window);
    }
}

void CloseOverdue()
{
    const ULONGLONG now = ::GetTickCount64();
    for (const HWND window : VisibleWindows()) {
        if (IsModal(window))
            g_watch.up.try_emplace(window, WatchedWindow{now + kModalTimeout});
    }
    std::erase_if(g_watch.up, [](const auto& entry) { return !::IsWindowVisible(entry.first); });
    // Closing can bring this function back in, so it works on a copy of what is due.
    std::vector<std::pair<HWND, int>> due;
    for (auto& [window, watched] : g_watch.up) {
        if (now >= watched.closeAt && IsModal(window)) {
            watched.closeAt = now + kForceInterval;
            due.emplace_back(window, watched.forced++);
        }
    }
    for (const auto& [window, step] : due) {
        if (step == 0)
            ADD_FAILURE() << "a modal window did not close: " << testing::PrintToString(WindowText(window));
        ForceClose(window, step);
    }
}

void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD)
{
    ServeFirst(ModalKind::Window);
    ServeFirst(ModalKind::Menu);
    CloseOverdue();
}

void SetInterval()
{
    const bool isWaiting = std::any_of(g_watch.pending.begin(), g_watch.pending.end(),
                                       [](const auto& answer) { return !answer->served; });
    const UINT interval = isWaiting ? kBusyInterval : kQuietInterval;
    if (g_watch.timer != 0 && interval == g_watch.interval)
        return;
    if (g_watch.timer != 0)
        ::KillTimer(nullptr, g_watch.timer);
    g_watch.timer = ::SetTimer(nullptr, 0, interval, OnTimer);
    g_watch.interval = interval;
}

} // namespace

void StartModalWatch()
{
    SetInterval();
}

void StopModalWatch()
{
    if (g_watch.timer != 0)
        ::KillTimer(nullptr, g_watch.timer);
    g_watch = {};
}

void AddPendingAnswer(const std::shared_ptr<PendingAnswer>& answer)
{
    std::erase_if(g_watch.known, [](HWND window) { return !::IsWindow(window); });
    for (const HWND window : VisibleWindows())
        g_watch.known.insert(window);
    g_watch.pending.push_back(answer);
    SetInterval();
}

void RemovePendingAnswer(const std::shared_ptr<PendingAnswer>& answer)
{
    std::erase(g_watch.pending, answer);
    SetInterval();
}

} // namespace support
