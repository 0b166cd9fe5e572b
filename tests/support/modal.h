// Answers for modal dialogs, message boxes and menus, set up before the call that opens them.
//
//     auto answer = AnswerMessageBox(IDYES);
//     EXPECT_TRUE(grid.DeleteAll());            // asks first
//     EXPECT_EQ(answer.Text(), L"...");
//
// Answers are used in the order in which they were set up: the first takes the first modal window that
// comes up, the second the next one (also one opened from inside the first), and so on. An answer that
// waits at the end of its life for a window that never came fails the test. A modal window that is still
// up when an answer's time has run out is closed by force and fails the test.
#pragma once

#include "tests/support/wait.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace support
{

// How long a modal window may stay up, in milliseconds.
inline constexpr DWORD kModalTimeout = 10000;

struct PendingAnswer;

// What the answers for dialogs and for menus have in common.
class Answer
{
public:
    Answer(const Answer&) = delete;
    Answer& operator=(const Answer&) = delete;

    // Whether the window came up and the action was run.
    [[nodiscard]] bool Shown() const;
    // No window need come any more: the answer is withdrawn without a failure.
    void Withdraw();

protected:
    Answer() = default;
    ~Answer();
    void Await(std::shared_ptr<PendingAnswer> pending, DWORD timeoutMs);

private:
    std::shared_ptr<PendingAnswer> m_pending;
};

class ModalAnswer : public Answer
{
public:
    using Action = std::function<void(HWND modal)>;

    // The action runs on the test's thread, inside the modal loop, once the window is visible, active
    // and painted. What it does must make the window close sooner or later. It may pump, feed input and
    // open further modal windows.
    explicit ModalAnswer(Action action, DWORD timeoutMs = kModalTimeout);

    // The window's caption, taken before the action; empty when it was never shown.
    [[nodiscard]] std::wstring Caption() const;
    // The texts of its static controls, in Z order, separated by line feeds: a message box's text.
    [[nodiscard]] std::wstring Text() const;

private:
    struct State;
    std::shared_ptr<State> m_state;
};

[[nodiscard]] ModalAnswer WhenModal(ModalAnswer::Action action, DWORD timeoutMs = kModalTimeout);
// Presses the button with this id (IDYES, IDCANCEL ...).
[[nodiscard]] ModalAnswer AnswerMessageBox(int button);
// Gives the system's file dialog a name and presses its OK button.
[[nodiscard]] ModalAnswer AnswerFileDialog(const std::wstring& path);
// The field of the name in the system's file dialog.
[[nodiscard]] HWND FileNameField(HWND dialog);

// A window's text, of any length.
[[nodiscard]] std::wstring WindowText(HWND window);

// Posts a button's click to a dialog; usable in a ModalAnswer's action for every kind of dialog.
void PostButton(HWND dialog, int button);

// An answer for one popup menu, with the same rules as ModalAnswer.
class MenuAnswer : public Answer
{
public:
    // The action gets the popup menu's window. It must neither pump nor use input.h, since that would take
    // the menu loop's messages away: it feeds through the given function, which returns at once.
    using Feed = std::function<void(std::vector<INPUT>)>;
    using Action = std::function<void(HWND popup, const Feed& feed)>;

    explicit MenuAnswer(Action action, DWORD timeoutMs = kModalTimeout);
};

// Leaves the menu with Esc.
[[nodiscard]] MenuAnswer CancelMenu();

} // namespace support
