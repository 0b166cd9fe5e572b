#include "tests/support/input_feeder.h"

#include "tests/support/pump.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

namespace support
{

namespace
{

constexpr UINT kIsInputWaiting = WM_APP + 1;
constexpr DWORD kProbeInterval = 1;
// The normalised coordinates of absolute mouse input run over the screen in this many steps.
constexpr LONG kAbsoluteRange = 65536;
constexpr const wchar_t* kProbeClass = L"InputFeederProbe";

// Runs in the fed thread whenever that thread looks for messages.
LRESULT CALLBACK ProbeProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == kIsInputWaiting)
        return HIWORD(::GetQueueStatus(QS_MOUSE | QS_KEY)) != 0;
    return ::DefWindowProc(window, message, wParam, lParam);
}

HWND CreateProbe()
{
    static const ATOM registered = [] {
        WNDCLASS windowClass{};
        windowClass.lpfnWndProc = ProbeProc;
        windowClass.hInstance = ::GetModuleHandle(nullptr);
        windowClass.lpszClassName = kProbeClass;
        return ::RegisterClass(&windowClass);
    }();
    EXPECT_NE(registered, 0);
    return ::CreateWindow(kProbeClass, nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                          ::GetModuleHandle(nullptr), nullptr);
}

bool IsExtendedKey(UINT key)
{
    switch (key) {
    case VK_LEFT:
    case VK_RIGHT:
    case VK_UP:
    case VK_DOWN:
    case VK_HOME:
    case VK_END:
    case VK_PRIOR:
    case VK_NEXT:
    case VK_INSERT:
    case VK_DELETE:
    case VK_DIVIDE:
    case VK_RCONTROL:
    case VK_RMENU:
    case VK_LWIN:
    case VK_RWIN:
    case VK_APPS:
        return true;
    default:
        return false;
    }
}

// The record that undoes a pressed button or key; type INPUT_HARDWARE when there is nothing to undo.
INPUT Undo(const INPUT& record)
{
    INPUT undo{};
    undo.type = INPUT_HARDWARE;
    if (record.type == INPUT_KEYBOARD && !(record.ki.dwFlags & KEYEVENTF_KEYUP)) {
        undo = record;
        undo.ki.dwFlags |= KEYEVENTF_KEYUP;
    } else if (record.type == INPUT_MOUSE) {
        // Every button's "up" flag is the "down" flag shifted by one.
        constexpr DWORD kDownFlags = MOUSEEVENTF_LEFTDOWN | MOUSEEVENTF_RIGHTDOWN | MOUSEEVENTF_MIDDLEDOWN;
        if (const DWORD down = record.mi.dwFlags & kDownFlags)
            undo = MouseButtonInput(down << 1);
    }
    return undo;
}

LONG ToAbsolute(LONG position, LONG origin, LONG extent)
{
    // Rounded up, so that the system's division, which rounds down, gives back the same pixel.
    return ((position - origin) * kAbsoluteRange + extent - 1) / extent;
}

} // namespace

INPUT MouseMoveInput(CPoint screen)
{
    INPUT record{};
    record.type = INPUT_MOUSE;
    record.mi.dx =
        ToAbsolute(screen.x, ::GetSystemMetrics(SM_XVIRTUALSCREEN), ::GetSystemMetrics(SM_CXVIRTUALSCREEN));
    record.mi.dy =
        ToAbsolute(screen.y, ::GetSystemMetrics(SM_YVIRTUALSCREEN), ::GetSystemMetrics(SM_CYVIRTUALSCREEN));
    record.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_VIRTUALDESK;
    return record;
}

INPUT MouseButtonInput(DWORD mouseEventFlag)
{
    INPUT record{};
    record.type = INPUT_MOUSE;
    record.mi.dwFlags = mouseEventFlag;
    return record;
}

INPUT KeyInput(UINT key, bool down)
{
    INPUT record{};
    record.type = INPUT_KEYBOARD;
    record.ki.wVk = static_cast<WORD>(key);
    record.ki.wScan = static_cast<WORD>(::MapVirtualKey(key, MAPVK_VK_TO_VSC));
    record.ki.dwFlags = (down ? 0 : KEYEVENTF_KEYUP) | (IsExtendedKey(key) ? KEYEVENTF_EXTENDEDKEY : 0);
    return record;
}

FedThread::FedThread() : m_probe(CreateProbe()) {}

FedThread::~FedThread()
{
    ::DestroyWindow(m_probe);
}

bool FedThread::Feed(INPUT record, DWORD timeoutMs) const
{
    return ::SendInput(1, &record, sizeof record) == 1 && IsIdle(timeoutMs);
}

bool FedThread::IsIdle(DWORD timeoutMs) const
{
    const Deadline deadline(timeoutMs);
    // An answer "nothing waits" comes when the fed thread looks for messages after it took the record out
    // of its queue, so the record's message has been handled, or a nested loop is running by now.
    while (!deadline.Passed()) {
        DWORD_PTR waiting = TRUE;
        if (!::SendMessageTimeout(m_probe, kIsInputWaiting, 0, 0, SMTO_NORMAL, deadline.Left(), &waiting))
            return false;
        if (!waiting)
            return true;
        ::Sleep(kProbeInterval);
    }
    return false;
}

struct InputFeeder::State {
    std::vector<INPUT> records;
    DWORD timeoutMs = 0;
    FedThread fed;
    std::atomic<bool> done = false;
    std::atomic<size_t> processed = 0;
    std::thread thread;

    void Run();
    void TakeBack();
};

void InputFeeder::State::Run()
{
    for (const INPUT& record : records) {
        if (!fed.Feed(record, timeoutMs)) {
            TakeBack();
            break;
        }
        ++processed;
    }
    done = true;
}

// Lets go of what is still held down, so that no loop waits for a release that never comes.
void InputFeeder::State::TakeBack()
{
    for (const INPUT& record : records) {
        INPUT undo = Undo(record);
        const bool isDown =
            undo.type == INPUT_KEYBOARD ? ::GetAsyncKeyState(undo.ki.wVk) < 0 : undo.type == INPUT_MOUSE;
        if (isDown)
            ::SendInput(1, &undo, sizeof undo);
    }
}

InputFeeder::InputFeeder(std::vector<INPUT> records, DWORD timeoutMs) : m_state(std::make_unique<State>())
{
    m_state->records = std::move(records);
    m_state->timeoutMs = timeoutMs;
    m_state->thread = std::thread([state = m_state.get()] { state->Run(); });
}

InputFeeder::~InputFeeder()
{
    // Every record has its own deadline, so the thread ends by itself; it needs our messages for that.
    const auto most = static_cast<DWORD>(m_state->records.size() + 1) * m_state->timeoutMs;
    EXPECT_TRUE(PumpUntil([this] { return Done(); }, most));
    m_state->thread.join();
    EXPECT_EQ(m_state->processed, m_state->records.size()) << "input that no message loop took";
}

bool InputFeeder::Done() const
{
    return m_state->done;
}

} // namespace support
