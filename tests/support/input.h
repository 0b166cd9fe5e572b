// Real mouse and keyboard input, as the user's hand would make it.
//
// Every function that feeds input returns when the input has arrived and the calling thread's queue is
// drained, so a test can look at the outcome on the next line. An input that opens a modal loop (a menu, a
// dialog, moving or sizing a window) keeps the function from returning until that loop ends: set up an
// answer first (modal.h), or use Drag, which feeds the loop from a thread of its own.
//
// All points are in screen coordinates, in pixels, and must lie on the screen.
#pragma once

#include "tests/support/wait.h"

#include <string_view>
#include <vector>

namespace support
{

enum class MouseButton { Left, Right, Middle };

// A point of a window's client area in screen coordinates.
[[nodiscard]] CPoint ClientToScreen(HWND window, CPoint client);
// The middle of a window in screen coordinates.
[[nodiscard]] CPoint CenterOf(HWND window);

// Moves the pointer; exact to the pixel, else the current test fails.
void MoveTo(CPoint screen);

// Presses or releases a button where the pointer is.
void Press(MouseButton button = MouseButton::Left);
void Release(MouseButton button = MouseButton::Left);

// Moves, presses and releases. Never becomes the second half of a double click: see ResetDoubleClick.
void Click(CPoint screen, MouseButton button = MouseButton::Left);
void Click(HWND window, MouseButton button = MouseButton::Left);
void DoubleClick(CPoint screen, MouseButton button = MouseButton::Left);

// Turns the wheel at the pointer's place; one notch away from the user is WHEEL_DELTA.
void Wheel(int delta);

// Makes the system forget the last click, so that the next one cannot be taken for a double click. The
// pointer visits the support's own anchor window for that and returns; while a window has the mouse
// captured, the double-click time is waited for instead.
void ResetDoubleClick();

// Presses at the first point, moves through all of them and releases at the last. Safe inside the
// system's loops for moving and sizing windows and inside the program's own tracking loops: a thread
// feeds the steps one by one, each when the last one has been processed, and gives up with a test
// failure when a step is not taken within the timeout.
void Drag(const std::vector<CPoint>& path, MouseButton button = MouseButton::Left,
          DWORD timeoutMs = kDefaultTimeout);

// Presses or releases a key by its virtual-key code.
void KeyDown(UINT key);
void KeyUp(UINT key);
// One stroke, with modifier keys (VK_SHIFT, VK_CONTROL, VK_MENU) held around it.
void Key(UINT key, const std::vector<UINT>& modifiers = {});
// Types text character by character, whatever the keyboard layout has.
void Type(std::wstring_view text);

// Lets go of every button and key that is down and puts the pointer over the anchor window in the
// screen's bottom right corner. Runs after every test by itself.
void ReleaseAll();

} // namespace support
