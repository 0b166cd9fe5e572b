// Windows that keep a record of what they are told.
#pragma once

#include "tests/support/wait.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace support
{

struct RecordedMessage {
    HWND window;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    // A copy of the header, for WM_NOTIFY only.
    std::optional<NMHDR> notify;
    // For WM_COMMAND and WM_NOTIFY at a HostWnd: whether the message reached the parent's own message
    // map, that is, the control did not keep it for itself by reflection.
    bool reachedParent = false;

    // The sender's id and notification code, for WM_COMMAND and WM_NOTIFY; 0 for other messages.
    [[nodiscard]] UINT Id() const;
    [[nodiscard]] int Code() const;
};

using RecordedMessages = std::vector<RecordedMessage>;

// A top-level window to put controls into. It records WM_COMMAND, WM_NOTIFY and the program's own
// messages (WM_USER to 0xFFFF), and whatever else RecordAlso names, in the order in which they arrive.
class HostWnd : public CWnd
{
public:
    // Answers a message in place of the window; an empty result leaves it to the window.
    using Answer = std::function<std::optional<LRESULT>(UINT message, WPARAM wParam, LPARAM lParam)>;

    static constexpr COLORREF kBackground = RGB(200, 210, 220);

    HostWnd() = default;
    ~HostWnd() override;

    // Creates and shows the window with a client area of this size, in pixels, near the screen's top
    // left corner, active and painted. Fails the test and returns FALSE when that is not possible.
    BOOL Open(CSize client = {400, 300}, DWORD style = WS_POPUP | WS_CLIPCHILDREN, DWORD exStyle = 0);

    // Also records the messages from first to last.
    void RecordAlso(UINT first, UINT last);
    void RecordAlso(UINT message) { RecordAlso(message, message); }
    // Called for every message, recorded or not, before the window handles it.
    void SetAnswer(Answer answer) { m_answer = std::move(answer); }

    [[nodiscard]] const RecordedMessages& Messages() const { return m_messages; }
    [[nodiscard]] RecordedMessages Messages(UINT message) const;
    // The codes that a control sent by WM_COMMAND or WM_NOTIFY, in order.
    [[nodiscard]] std::vector<int> CommandCodes(UINT id) const;
    [[nodiscard]] std::vector<int> NotifyCodes(UINT id) const;
    [[nodiscard]] int CountNotify(UINT id, int code) const;
    void Clear() { m_messages.clear(); }

    BOOL OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* handlerInfo) override;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    [[nodiscard]] bool IsRecorded(UINT message) const;

    struct Range {
        UINT first, last;
    };
    static constexpr size_t kNone = static_cast<size_t>(-1);

    Answer m_answer;
    RecordedMessages m_messages;
    std::vector<Range> m_ranges{{WM_COMMAND, WM_COMMAND}, {WM_NOTIFY, WM_NOTIFY}, {WM_USER, 0xFFFF}};
    size_t m_current = kNone; // the record of the message that is being handled
};

// Records every message, sent or posted, that a window of this thread is given while the spy lives; all
// windows of the thread when none is named. Messages that are only peeked at do not count.
class MessageSpy
{
public:
    explicit MessageSpy(HWND window = nullptr);
    ~MessageSpy();
    MessageSpy(const MessageSpy&) = delete;
    MessageSpy& operator=(const MessageSpy&) = delete;

    [[nodiscard]] const RecordedMessages& Messages() const { return m_messages; }
    [[nodiscard]] RecordedMessages Messages(UINT message) const;
    [[nodiscard]] int Count(UINT message) const;
    void Clear() { m_messages.clear(); }

private:
    friend struct SpyHooks;
    void Note(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND m_window;
    RecordedMessages m_messages;
};

// Points a thread's application at another main window for as long as it lives.
class MainWndScope
{
public:
    explicit MainWndScope(CWnd* window);
    ~MainWndScope();
    MainWndScope(const MainWndScope&) = delete;
    MainWndScope& operator=(const MainWndScope&) = delete;

private:
    CWnd* m_previous;
};

} // namespace support
