// What a monkey may play with: the windows of this process that are its own, not the system's.
#pragma once

#include "tests/support/wait.h"

#include <string>
#include <vector>

namespace monkey
{

enum class WindowKind {
    Own,     // of the gallery or the library: takes any input
    Menu,    // a popup menu, a drop-down list, a tip: takes any input
    System,  // a message box or a file dialog: gets nothing but Escape, lest real files are harmed
    Foreign, // of another process, or the tests' anchor: gets nothing
};
[[nodiscard]] WindowKind KindOf(HWND topLevel);

// The visible top-level windows of a kind, the upper ones first.
[[nodiscard]] std::vector<HWND> VisibleWindows(WindowKind kind);
// A window's visible descendants, itself first.
[[nodiscard]] std::vector<HWND> VisibleTree(HWND window);
[[nodiscard]] bool IsModal(HWND topLevel);
// Whether a dialog of the system shows nothing but texts and buttons.
[[nodiscard]] bool IsMessageBox(HWND topLevel);

// Whether what lies at a place of the screen may be clicked.
[[nodiscard]] bool MayClick(CPoint screen);
// Whether the window that keys go to may have them.
[[nodiscard]] bool MayType();

// Class, identifier and the caption of the top-level window, in UTF-8. Asks no window: one may hang.
[[nodiscard]] std::string Describe(HWND window);
// The caption and the texts of a dialog's labels.
[[nodiscard]] std::string TextsOf(HWND dialog);

} // namespace monkey
