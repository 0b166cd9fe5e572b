#include "tests/support/input.h"

#include "tests/support/environment.h"
#include "tests/support/input_feeder.h"
#include "tests/support/pump.h"

#include <gtest/gtest.h>
#include <optional>

namespace support
{

namespace
{

struct ButtonFlags {
    DWORD down, up;
    int key;
};

ButtonFlags FlagsOf(MouseButton button)
{
    switch (button) {
    case MouseButton::Right:
        return {MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP, VK_RBUTTON};
    case MouseButton::Middle:
        return {MOUSEEVENTF_MIDDLEDOWN, MOUSEEVENTF_MIDDLEUP, VK_MBUTTON};
    default:
        return {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP, VK_LBUTTON};
    }
}

struct LastPress {
    MouseButton button;
    CPoint point;
    ULONGLONG time;
};
std::optional<LastPress> g_lastPress;

CPoint PointerPosition()
{
    CPoint point;
    ::GetCursorPos(&point);
    return point;
}

void Send(std::vector<INPUT> records)
{
    const UINT count = static_cast<UINT>(records.size());
    EXPECT_EQ(::SendInput(count, records.data(), sizeof(INPUT)), count);
}

bool IsKeyDown(int key)
{
    return ::GetAsyncKeyState(key) < 0;
}

// Waits for the system to have taken a button's or key's new state, then lets the messages through.
void Arrive(int key, bool down)
{
    EXPECT_TRUE(PumpUntil([=] { return IsKeyDown(key) == down; })) << "key " << key << " stays as it was";
    PumpMessages();
}

bool WouldDoubleClick(MouseButton button, CPoint point)
{
    if (!g_lastPress || g_lastPress->button != button)
        return false;
    const CPoint distance = point - g_lastPress->point;
    return ::GetTickCount64() - g_lastPress->time <= ::GetDoubleClickTime() &&
           std::abs(distance.x) <= ::GetSystemMetrics(SM_CXDOUBLECLK) &&
           std::abs(distance.y) <= ::GetSystemMetrics(SM_CYDOUBLECLK);
}

void NotePress(MouseButton button)
{
    g_lastPress = LastPress{button, PointerPosition(), ::GetTickCount64()};
}

} // namespace

CPoint ClientToScreen(HWND window, CPoint client)
{
    ::ClientToScreen(window, &client);
    return client;
}

CPoint CenterOf(HWND window)
{
    CRect rect;
    ::GetWindowRect(window, &rect);
    return rect.CenterPoint();
}

void MoveTo(CPoint screen)
{
    Send({MouseMoveInput(screen)});
    EXPECT_TRUE(PumpUntil([=] { return PointerPosition() == screen; }))
        << "the pointer is at " << PointerPosition().x << "," << PointerPosition().y << " instead of "
        << screen.x << "," << screen.y;
    PumpMessages();
}

void Press(MouseButton button)
{
    if (WouldDoubleClick(button, PointerPosition()))
        ResetDoubleClick();
    NotePress(button);
    Send({MouseButtonInput(FlagsOf(button).down)});
    // A modal loop that this opens returns when the button is up again, so the state is not waited for.
    PumpMessages();
}

void Release(MouseButton button)
{
    Send({MouseButtonInput(FlagsOf(button).up)});
    Arrive(FlagsOf(button).key, false);
}

void Click(CPoint screen, MouseButton button)
{
    MoveTo(screen);
    if (WouldDoubleClick(button, screen))
        ResetDoubleClick();
    NotePress(button);
    Send({MouseButtonInput(FlagsOf(button).down), MouseButtonInput(FlagsOf(button).up)});
    Arrive(FlagsOf(button).key, false);
}

void Click(HWND window, MouseButton button)
{
    Click(CenterOf(window), button);
}

void DoubleClick(CPoint screen, MouseButton button)
{
    MoveTo(screen);
    if (WouldDoubleClick(button, screen))
        ResetDoubleClick();
    NotePress(button);
    // All at once, so that a slow machine cannot pull the two clicks apart.
    const INPUT down = MouseButtonInput(FlagsOf(button).down);
    const INPUT up = MouseButtonInput(FlagsOf(button).up);
    Send({down, up, down, up});
    Arrive(FlagsOf(button).key, false);
}

void Wheel(int delta)
{
    INPUT record = MouseButtonInput(MOUSEEVENTF_WHEEL);
    record.mi.mouseData = static_cast<DWORD>(delta);
    Send({record});
    PumpMessages();
}

void ResetDoubleClick()
{
    g_lastPress.reset();
    if (::GetCapture() != nullptr) {
        const Deadline deadline(::GetDoubleClickTime() + 1);
        EXPECT_TRUE(PumpUntil([&] { return deadline.Passed(); }, ::GetDoubleClickTime() + kDefaultTimeout));
        return;
    }
    const CPoint back = PointerPosition();
    MoveTo(CenterOf(AnchorWindow()));
    Send({MouseButtonInput(MOUSEEVENTF_MIDDLEDOWN), MouseButtonInput(MOUSEEVENTF_MIDDLEUP)});
    Arrive(VK_MBUTTON, false);
    MoveTo(back);
}

void Drag(const std::vector<CPoint>& path, MouseButton button, DWORD timeoutMs)
{
    if (path.empty())
        return;
    MoveTo(path.front());
    if (WouldDoubleClick(button, path.front()))
        ResetDoubleClick();
    NotePress(button);
    // The buttons' records name their place: a display that reports an earlier move late would otherwise put
    // them there.
    std::vector<INPUT> records{MouseMoveInput(path.front())};
    for (size_t i = 1; i < path.size(); ++i)
        records.push_back(MouseMoveInput(path[i]));
    records.push_back(MouseMoveInput(path.back()));
    records.front().mi.dwFlags |= FlagsOf(button).down;
    records.back().mi.dwFlags |= FlagsOf(button).up;
    {
        InputFeeder feeder(std::move(records), timeoutMs);
    }
    PumpMessages();
}

void KeyDown(UINT key)
{
    Send({KeyInput(key, true)});
    PumpMessages();
}

void KeyUp(UINT key)
{
    Send({KeyInput(key, false)});
    Arrive(static_cast<int>(key), false);
}

void Key(UINT key, const std::vector<UINT>& modifiers)
{
    std::vector<INPUT> records;
    for (const UINT modifier : modifiers)
        records.push_back(KeyInput(modifier, true));
    records.push_back(KeyInput(key, true));
    records.push_back(KeyInput(key, false));
    for (auto modifier = modifiers.rbegin(); modifier != modifiers.rend(); ++modifier)
        records.push_back(KeyInput(*modifier, false));
    Send(std::move(records));
    Arrive(static_cast<int>(key), false);
}

void Type(std::wstring_view text)
{
    std::vector<INPUT> records;
    for (const wchar_t unit : text) {
        INPUT record{};
        record.type = INPUT_KEYBOARD;
        record.ki.wScan = unit;
        record.ki.dwFlags = KEYEVENTF_UNICODE;
        records.push_back(record);
        record.ki.dwFlags |= KEYEVENTF_KEYUP;
        records.push_back(record);
    }
    if (!records.empty())
        Send(std::move(records));
    PumpMessages();
}

void ReleaseAll()
{
    for (const MouseButton button : {MouseButton::Left, MouseButton::Right, MouseButton::Middle}) {
        if (IsKeyDown(FlagsOf(button).key))
            Release(button);
    }
    // Key codes begin after the mouse buttons'; the last one, 255, is reserved.
    for (UINT key = VK_BACK; key < 255; ++key) {
        if (IsKeyDown(static_cast<int>(key)))
            KeyUp(key);
    }
    if (::GetCapture() != nullptr)
        ::ReleaseCapture();
    if (AnchorWindow() != nullptr)
        MoveTo(CenterOf(AnchorWindow()));
}

} // namespace support
