// Random input: mouse and keys, in any order, wherever this process shows a window.
#pragma once

#include "tests/support/input_feeder.h"

#include <atomic>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace monkey
{

struct Plan {
    unsigned seed;  // the same seed makes the same choices, as far as the same windows are there
    int actions;    // how many, 0 for as many as the time allows
    DWORD duration; // milliseconds; 0 for as long as the actions take
};

// Plays from a thread of its own with the windows of the thread that created it, which runs their loops. A
// thread that does not look for messages for half a minute, and a window that nothing closes, end the
// process with a report; so does every crash. One at a time.
class Monkey
{
public:
    // The windows' application begins with this one; the list in it opens the others.
    Monkey(const Plan& plan, int listId);
    ~Monkey();
    Monkey(const Monkey&) = delete;
    Monkey& operator=(const Monkey&) = delete;

    // True once all windows are being closed for good: the caller need not open the main one again.
    [[nodiscard]] bool IsEnding() const { return m_ending; }
    [[nodiscard]] bool HasEnded() const { return m_ended; }
    // What the message boxes said, each text once. For after the end.
    [[nodiscard]] const std::set<std::string>& Messages() const { return m_messages; }
    [[nodiscard]] int Actions() const { return m_index; }

private:
    void Run();
    void Act();
    [[nodiscard]] bool IsOver() const;

    // Windows.
    void AwaitWindows();
    void BringToFront();
    bool AnswerSystemWindows();
    bool LeaveModalWindows();
    void OpenFromList();
    void CloseOne();
    [[nodiscard]] HWND OneWindow();
    void MoveOrSize();
    void ShowOrHide();
    void Notify();
    void CloseAll();

    // The mouse.
    [[nodiscard]] bool FindPlace(CPoint& place);
    [[nodiscard]] CPoint PlaceNear(CPoint place);
    void MovePointer();
    void Click(int times);
    void Drag();
    void Wheel();

    // The keyboard.
    void Stroke();
    void TypeText();
    void Key(UINT key, const std::vector<UINT>& modifiers);
    void Character(wchar_t unit);

    // Sends one record, unless somebody has come between who must not have it. Does not return from a hang.
    void Send(const INPUT& record);
    void ReleaseAll();

    [[nodiscard]] int Below(int limit);
    template <class Container>
    [[nodiscard]] auto OneOf(const Container& choices)
    {
        return choices[Below(static_cast<int>(std::size(choices)))];
    }

    const Plan m_plan;
    const int m_listId;
    const DWORD m_uiThread;
    const support::Deadline m_end;
    support::FedThread m_fed;
    std::mt19937 m_random;
    int m_index = 0;    // of the action
    int m_modalAge = 0; // actions since the uppermost modal window came up
    HWND m_modal = nullptr;
    int m_systemAge = 0; // the same for the system's
    std::set<std::string> m_messages;
    std::atomic<bool> m_ending = false;
    std::atomic<bool> m_ended = false;
    std::thread m_thread;
};

} // namespace monkey
