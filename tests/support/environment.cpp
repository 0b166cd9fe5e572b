#include "tests/support/environment.h"

#include "tests/support/input.h"
#include "tests/support/modal_watch.h"
#include "tests/support/pump.h"

#include <gtest/gtest.h>

namespace support
{

namespace
{

constexpr const wchar_t* kAnchorClass = L"TestAnchor";
HWND g_anchor = nullptr;
UINT g_caretBlinkTime = 0;

LRESULT CALLBACK AnchorProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    // A visit of the pointer must not take the focus from the window under test.
    if (message == WM_MOUSEACTIVATE)
        return MA_NOACTIVATE;
    return ::DefWindowProc(window, message, wParam, lParam);
}

HWND CreateAnchor()
{
    WNDCLASS windowClass{};
    windowClass.lpfnWndProc = AnchorProc;
    windowClass.hInstance = ::GetModuleHandle(nullptr);
    windowClass.hCursor = ::LoadCursor(nullptr, IDC_ARROW);
    windowClass.lpszClassName = kAnchorClass;
    ::RegisterClass(&windowClass);
    return ::CreateWindowEx(WS_EX_TOOLWINDOW | WS_EX_TOPMOST, kAnchorClass, L"anchor", WS_POPUP,
                            ::GetSystemMetrics(SM_CXSCREEN) - 1, ::GetSystemMetrics(SM_CYSCREEN) - 1, 1, 1,
                            nullptr, nullptr, ::GetModuleHandle(nullptr), nullptr);
}

bool IsForeground()
{
    DWORD process = 0;
    ::GetWindowThreadProcessId(::GetForegroundWindow(), &process);
    return process == ::GetCurrentProcessId();
}

bool BecomeForeground()
{
    if (IsForeground())
        return true;
    ::ShowWindow(g_anchor, SW_SHOW);
    ::SetForegroundWindow(g_anchor);
    return PumpUntil(IsForeground);
}

// Every test begins and ends with nothing held down and the pointer at rest.
class InputListener : public testing::EmptyTestEventListener
{
    void OnTestStart(const testing::TestInfo&) override { EXPECT_TRUE(BecomeForeground()); }
    void OnTestEnd(const testing::TestInfo&) override { ReleaseAll(); }
};

} // namespace

HWND AnchorWindow()
{
    return g_anchor;
}

bool BeginTests()
{
    g_anchor = CreateAnchor();
    if (g_anchor == nullptr || !BecomeForeground())
        return false;
    // A caret that blinks changes pixels between two looks.
    g_caretBlinkTime = ::GetCaretBlinkTime();
    ::SetCaretBlinkTime(INFINITE);
    StartModalWatch();
    ReleaseAll();
    testing::UnitTest::GetInstance()->listeners().Append(new InputListener);
    return true;
}

void EndTests()
{
    StopModalWatch();
    ::SetCaretBlinkTime(g_caretBlinkTime);
    ::DestroyWindow(g_anchor);
    g_anchor = nullptr;
}

} // namespace support
