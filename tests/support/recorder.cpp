#include "tests/support/recorder.h"

#include "tests/support/pump.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace support
{

namespace
{

// Away from the corner, so that frames and popups stay on the screen.
constexpr POINT kHostOrigin{40, 40};

RecordedMessages Select(const RecordedMessages& messages, UINT message)
{
    RecordedMessages selected;
    std::copy_if(messages.begin(), messages.end(), std::back_inserter(selected),
                 [=](const RecordedMessage& one) { return one.message == message; });
    return selected;
}

std::vector<int> CodesFrom(const RecordedMessages& messages, UINT message, UINT id)
{
    std::vector<int> codes;
    for (const RecordedMessage& one : messages) {
        if (one.message == message && one.Id() == id)
            codes.push_back(one.Code());
    }
    return codes;
}

RecordedMessage MakeRecord(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    RecordedMessage record{window, message, wParam, lParam, {}};
    if (message == WM_NOTIFY && lParam != 0)
        record.notify = *reinterpret_cast<const NMHDR*>(lParam);
    return record;
}

} // namespace

UINT RecordedMessage::Id() const
{
    if (message == WM_COMMAND)
        return LOWORD(wParam);
    return notify ? static_cast<UINT>(notify->idFrom) : 0;
}

int RecordedMessage::Code() const
{
    if (message == WM_COMMAND)
        return HIWORD(wParam);
    return notify ? static_cast<int>(notify->code) : 0;
}

HostWnd::~HostWnd()
{
    if (m_hWnd != nullptr)
        DestroyWindow();
}

BOOL HostWnd::Open(CSize client, DWORD style, DWORD exStyle)
{
    CRect rect(CPoint(0, 0), client);
    ::AdjustWindowRectEx(&rect, style, FALSE, exStyle);
    rect.MoveToXY(kHostOrigin);
    const CString windowClass = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursor(nullptr, IDC_ARROW));
    if (!CreateEx(exStyle, windowClass, L"host", style, rect, nullptr, 0)) {
        ADD_FAILURE() << "the host window cannot be created";
        return FALSE;
    }
    ShowWindow(SW_SHOW);
    ::SetForegroundWindow(m_hWnd);
    UpdateWindow();
    const bool isForeground = PumpUntil([this] { return ::GetForegroundWindow() == m_hWnd; });
    EXPECT_TRUE(isForeground) << "the host window is not the foreground window";
    PumpMessages();
    return isForeground;
}

void HostWnd::RecordAlso(UINT first, UINT last)
{
    m_ranges.push_back({first, last});
}

bool HostWnd::IsRecorded(UINT message) const
{
    return std::any_of(m_ranges.begin(), m_ranges.end(),
                       [=](const Range& range) { return range.first <= message && message <= range.last; });
}

RecordedMessages HostWnd::Messages(UINT message) const
{
    return Select(m_messages, message);
}

std::vector<int> HostWnd::CommandCodes(UINT id) const
{
    return CodesFrom(m_messages, WM_COMMAND, id);
}

std::vector<int> HostWnd::NotifyCodes(UINT id) const
{
    return CodesFrom(m_messages, WM_NOTIFY, id);
}

int HostWnd::CountNotify(UINT id, int code) const
{
    const std::vector<int> codes = NotifyCodes(id);
    return static_cast<int>(std::count(codes.begin(), codes.end(), code));
}

LRESULT HostWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const size_t outer = m_current;
    m_current = kNone;
    if (IsRecorded(message)) {
        m_current = m_messages.size();
        m_messages.push_back(MakeRecord(m_hWnd, message, wParam, lParam));
    }
    std::optional<LRESULT> result = m_answer ? m_answer(message, wParam, lParam) : std::nullopt;
    if (!result && message == WM_ERASEBKGND) {
        CRect client;
        GetClientRect(&client);
        // ExtTextOut fills without needing a brush.
        const auto dc = reinterpret_cast<HDC>(wParam);
        const COLORREF previous = ::SetBkColor(dc, kBackground);
        ::ExtTextOut(dc, 0, 0, ETO_OPAQUE, &client, nullptr, 0, nullptr);
        ::SetBkColor(dc, previous);
        result = TRUE;
    }
    if (!result)
        result = CWnd::WindowProc(message, wParam, lParam);
    m_current = outer;
    return *result;
}

BOOL HostWnd::OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* handlerInfo)
{
    // A handler may have cleared the record meanwhile.
    if (handlerInfo == nullptr && m_current < m_messages.size())
        m_messages[m_current].reachedParent = true;
    return CWnd::OnCmdMsg(id, code, extra, handlerInfo);
}

// The system's hooks of this thread, set while there is a spy.
struct SpyHooks {
    std::vector<MessageSpy*> spies;
    HHOOK sent = nullptr, posted = nullptr;

    static SpyHooks& Get()
    {
        static SpyHooks hooks;
        return hooks;
    }
    void Add(MessageSpy* spy)
    {
        if (spies.empty()) {
            sent = ::SetWindowsHookEx(WH_CALLWNDPROC, OnSent, nullptr, ::GetCurrentThreadId());
            posted = ::SetWindowsHookEx(WH_GETMESSAGE, OnPosted, nullptr, ::GetCurrentThreadId());
        }
        spies.push_back(spy);
    }
    void Remove(MessageSpy* spy)
    {
        std::erase(spies, spy);
        if (spies.empty()) {
            ::UnhookWindowsHookEx(sent);
            ::UnhookWindowsHookEx(posted);
        }
    }
    void Note(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        for (MessageSpy* spy : spies)
            spy->Note(window, message, wParam, lParam);
    }
    static LRESULT CALLBACK OnSent(int code, WPARAM wParam, LPARAM lParam)
    {
        const auto* call = reinterpret_cast<const CWPSTRUCT*>(lParam);
        if (code == HC_ACTION)
            Get().Note(call->hwnd, call->message, call->wParam, call->lParam);
        return ::CallNextHookEx(nullptr, code, wParam, lParam);
    }
    static LRESULT CALLBACK OnPosted(int code, WPARAM wParam, LPARAM lParam)
    {
        const auto* message = reinterpret_cast<const MSG*>(lParam);
        if (code == HC_ACTION && wParam == PM_REMOVE)
            Get().Note(message->hwnd, message->message, message->wParam, message->lParam);
        return ::CallNextHookEx(nullptr, code, wParam, lParam);
    }
};

MessageSpy::MessageSpy(HWND window) : m_window(window)
{
    SpyHooks::Get().Add(this);
}

MessageSpy::~MessageSpy()
{
    SpyHooks::Get().Remove(this);
}

void MessageSpy::Note(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (m_window == nullptr || m_window == window)
        m_messages.push_back(MakeRecord(window, message, wParam, lParam));
}

RecordedMessages MessageSpy::Messages(UINT message) const
{
    return Select(m_messages, message);
}

int MessageSpy::Count(UINT message) const
{
    return static_cast<int>(Select(m_messages, message).size());
}

MainWndScope::MainWndScope(CWnd* window) : m_previous(AfxGetThread()->m_pMainWnd)
{
    AfxGetThread()->m_pMainWnd = window;
}

MainWndScope::~MainWndScope()
{
    AfxGetThread()->m_pMainWnd = m_previous;
}

} // namespace support
