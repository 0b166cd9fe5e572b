// What the test executables share: the anchor window and the state that every test starts from.
#pragma once

#include "tests/support/wait.h"

namespace support
{

// A window of one pixel in the screen's bottom right corner, above all others. It makes the process the
// foreground one, takes the focus when no test window has it, and gives the pointer a place to rest.
[[nodiscard]] HWND AnchorWindow();

// Creates the anchor, stops the caret from blinking and has input released after every test. Called once
// by the test main, after InitGoogleTest. False when the process cannot become the foreground one.
[[nodiscard]] bool BeginTests();
// Puts the settings back and destroys the anchor.
void EndTests();

// Makes every crash print its code and a backtrace of module names with offsets, and end the process with
// exit code 99.
void InstallCrashReport();
// What the report is to say besides, as which input is being worked on; cut at a sensible length.
void SetCrashNote(const char* note);
// What a test wants to add to the report: called after the backtrace, by the thread that crashed. Null:
// nothing.
void SetCrashWriter(void (*write)());
// Ends the process as a crash does, with a backtrace of a thread that does not come back.
[[noreturn]] void ReportHang(DWORD threadId);

} // namespace support
