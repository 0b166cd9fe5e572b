#include "tests/gallery/monkey.h"

#include "tests/gallery/monkey_windows.h"
#include "tests/support/environment.h"

#include <algorithm>
#include <cstdio>

namespace monkey
{

namespace
{

constexpr DWORD kHang = 30000; // milliseconds: the slowest thing that a page does at once takes a few seconds
// In actions: how long the system's windows and modal dialogs may stay.
constexpr int kSystemAge = 3;
constexpr int kModalAge = 40;
constexpr int kMostPages = 5;
constexpr int kMostClosings = 400;

struct ButtonFlags {
    DWORD down, up;
    const char* name;
};
constexpr ButtonFlags kLeft = {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP, "left"};
constexpr ButtonFlags kRight = {MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP, "right"};
constexpr ButtonFlags kMiddle = {MOUSEEVENTF_MIDDLEDOWN, MOUSEEVENTF_MIDDLEUP, "middle"};

// Nothing here leaves the program: no Windows keys, no switching between tasks.
constexpr UINT kKeys[] = {
    VK_TAB,    VK_TAB,   VK_TAB,  VK_SPACE, VK_SPACE, VK_RETURN, VK_UP,         VK_DOWN,
    VK_LEFT,   VK_RIGHT, VK_HOME, VK_END,   VK_PRIOR, VK_NEXT,   VK_DELETE,     VK_BACK,
    VK_F2,     VK_F4,    VK_APPS, VK_MENU,  VK_ADD,   VK_INSERT, VK_MULTIPLY,   VK_SUBTRACT,
    VK_DIVIDE, VK_F10,   VK_F1,   '0',      '1',      '9',       'A',           'C',
    'V',       'X',      'Z',     'O',      'S',      'N',       VK_PROCESSKEY, VK_ESCAPE,
};
constexpr wchar_t kCharacters[] = L"0123456789aZ ?=\\/.,;:-+%&\t中文图纸€\x0301\xD83D\xDE00\xFFFF";

// The last actions, for the report of a crash. No memory of the heap: a crash may have left it in pieces.
constexpr int kKept = 50;
constexpr int kLineLength = 200;
char g_lines[kKept][kLineLength];
int g_count = 0;
unsigned g_seed = 0;

void Log(int index, const std::string& action)
{
    snprintf(g_lines[g_count % kKept], kLineLength, "%d %s", index, action.c_str());
    ++g_count;
}

// Asks no thread for anything: the one that has the windows may not answer.
BOOL CALLBACK WriteWindow(HWND window, LPARAM)
{
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    if (process != ::GetCurrentProcessId() || !::IsWindowVisible(window))
        return TRUE;
    wchar_t text[40] = L"";
    ::InternalGetWindowText(window, text, static_cast<int>(std::size(text)));
    char utf8[3 * std::size(text)] = "";
    ::WideCharToMultiByte(CP_UTF8, 0, text, -1, utf8, sizeof utf8, nullptr, nullptr);
    RECT rect{};
    ::GetWindowRect(window, &rect);
    printf("  \"%s\" at %ld,%ld to %ld,%ld%s%s\n", utf8, rect.left, rect.top, rect.right, rect.bottom,
           ::IsWindowEnabled(window) ? "" : ", disabled",
           ::GetForegroundWindow() == window ? ", in front" : "");
    return TRUE;
}

void WriteLog()
{
    printf("monkey: the windows that are shown:\n");
    ::EnumWindows(WriteWindow, 0);
    printf("monkey: VGUI_MONKEY_SEED=%u, the last actions of %d:\n", g_seed, g_count);
    for (int i = g_count > kKept ? g_count - kKept : 0; i < g_count; ++i)
        printf("  %s\n", g_lines[i % kKept]);
}

CRect ScreenRect()
{
    return {0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
}

std::string At(CPoint place)
{
    return " at " + std::to_string(place.x) + "," + std::to_string(place.y);
}

// A modal window of the process that is enabled: the one that all others wait for.
HWND UppermostModal()
{
    for (const HWND window : VisibleWindows(WindowKind::Own)) {
        if (::IsWindowEnabled(window) && IsModal(window))
            return window;
    }
    return nullptr;
}

} // namespace

Monkey::Monkey(const Plan& plan, int listId)
    : m_plan(plan), m_listId(listId), m_uiThread(::GetCurrentThreadId()),
      m_end(plan.duration != 0 ? plan.duration : INFINITE)
{
    g_seed = plan.seed;
    g_count = 0;
    support::SetCrashWriter(WriteLog);
    m_thread = std::thread([this] { Run(); });
}

Monkey::~Monkey()
{
    m_thread.join();
    support::SetCrashWriter(nullptr);
}

bool Monkey::IsOver() const
{
    return (m_plan.actions != 0 && m_index >= m_plan.actions) || (m_plan.duration != 0 && m_end.Passed());
}

void Monkey::Run()
{
    while (!IsOver()) {
        // Each action is a series of its own, so that one more or less choice does not change all that
        // follow.
        std::seed_seq series{m_plan.seed, static_cast<unsigned>(m_index)};
        m_random.seed(series);
        Act();
        ++m_index;
    }
    m_ending = true;
    CloseAll();
    m_ended = true;
}

int Monkey::Below(int limit)
{
    return static_cast<int>(m_random() % static_cast<unsigned>(limit));
}

void Monkey::Act()
{
    struct Choice {
        int weight;
        void (*act)(Monkey&);
    };
    static constexpr Choice kChoices[] = {
        {30, [](Monkey& m) { m.Click(1); }},      {6, [](Monkey& m) { m.Click(2); }},
        {12, [](Monkey& m) { m.Drag(); }},        {6, [](Monkey& m) { m.Wheel(); }},
        {10, [](Monkey& m) { m.MovePointer(); }}, {18, [](Monkey& m) { m.Stroke(); }},
        {4, [](Monkey& m) { m.TypeText(); }},     {8, [](Monkey& m) { m.OpenFromList(); }},
        {2, [](Monkey& m) { m.CloseOne(); }},     {3, [](Monkey& m) { m.MoveOrSize(); }},
        {1, [](Monkey& m) { m.ShowOrHide(); }},   {1, [](Monkey& m) { m.Notify(); }},
    };
    AwaitWindows();
    if (AnswerSystemWindows() || LeaveModalWindows())
        return;
    BringToFront();
    int all = 0;
    for (const Choice& choice : kChoices)
        all += choice.weight;
    int chosen = Below(all);
    for (const Choice& choice : kChoices) {
        chosen -= choice.weight;
        if (chosen < 0)
            return choice.act(*this);
    }
}

// The main window opens again when it was closed.
void Monkey::AwaitWindows()
{
    const support::Deadline deadline(kHang);
    while (VisibleWindows(WindowKind::Own).empty() && VisibleWindows(WindowKind::System).empty()) {
        if (deadline.Passed())
            support::ReportHang(m_uiThread);
        ::Sleep(1);
    }
}

void Monkey::BringToFront()
{
    const std::vector<HWND> windows = VisibleWindows(WindowKind::Own);
    for (const HWND window : windows) {
        if (::IsIconic(window) && Below(3) == 0)
            ::ShowWindowAsync(window, SW_RESTORE);
    }
    const HWND front = ::GetForegroundWindow();
    if (front != nullptr && KindOf(::GetAncestor(front, GA_ROOT)) != WindowKind::Foreign)
        return;
    const auto enabled = std::ranges::find_if(windows, [](HWND window) { return ::IsWindowEnabled(window); });
    if (enabled != windows.end())
        ::SetForegroundWindow(*enabled);
}

bool Monkey::AnswerSystemWindows()
{
    const std::vector<HWND> windows = VisibleWindows(WindowKind::System);
    const auto open = std::ranges::find_if(windows, [](HWND window) { return ::IsWindowEnabled(window); });
    if (open == windows.end()) {
        m_systemAge = 0;
        return false;
    }
    if (IsMessageBox(*open))
        m_messages.insert(TextsOf(*open));
    if (++m_systemAge < kSystemAge)
        return false;
    Log(m_index, "escape from " + Describe(*open));
    ::SetForegroundWindow(*open);
    if (::GetForegroundWindow() == *open) {
        Send(support::KeyInput(VK_ESCAPE, true));
        Send(support::KeyInput(VK_ESCAPE, false));
    }
    // Some questions cannot be escaped from.
    if (m_systemAge > 2 * kSystemAge)
        ::PostMessage(*open, WM_COMMAND, IDNO, 0);
    return true;
}

bool Monkey::LeaveModalWindows()
{
    const HWND modal = UppermostModal();
    m_modalAge = modal == m_modal ? m_modalAge + 1 : 0;
    m_modal = modal;
    if (modal == nullptr || m_modalAge < kModalAge)
        return false;
    Log(m_index, "leave " + Describe(modal));
    ::PostMessage(modal, WM_CLOSE, 0, 0);
    // Closing begins once menus and captures are gone.
    Key(VK_ESCAPE, {});
    return true;
}

void Monkey::OpenFromList()
{
    const std::vector<HWND> windows = VisibleWindows(WindowKind::Own);
    if (windows.size() > kMostPages)
        return CloseOne();
    for (const HWND window : windows) {
        const HWND list = ::GetDlgItem(window, m_listId);
        if (list == nullptr || !::IsWindowEnabled(window) || ::IsIconic(window))
            continue;
        ::SetForegroundWindow(window);
        CRect rect;
        ::GetWindowRect(list, &rect);
        const CPoint place(rect.left + 20, rect.top + 8);
        Log(m_index, "open from " + Describe(list));
        Send(support::MouseMoveInput(place));
        if (::WindowFromPoint(place) != list)
            return;
        Send(support::MouseButtonInput(kLeft.down));
        Send(support::MouseButtonInput(kLeft.up));
        Key(VK_HOME, {});
        for (int i = Below(24); i > 0; --i)
            Key(VK_DOWN, {});
        Key(VK_RETURN, {});
        return;
    }
}

void Monkey::CloseOne()
{
    std::vector<HWND> windows = VisibleWindows(WindowKind::Own);
    std::erase_if(windows, [](HWND window) { return !::IsWindowEnabled(window); });
    if (windows.empty())
        return;
    const HWND window = OneOf(windows);
    Log(m_index, "close " + Describe(window));
    if (Below(2) == 0) {
        ::SetForegroundWindow(window);
        Key(VK_F4, {VK_MENU});
    } else {
        // A menu that is open does not end with its window, and there is nothing to click any more.
        ::PostMessage(window, WM_CANCELMODE, 0, 0);
        ::PostMessage(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    }
}

// Null when all are closed just now.
HWND Monkey::OneWindow()
{
    const std::vector<HWND> windows = VisibleWindows(WindowKind::Own);
    return windows.empty() ? nullptr : OneOf(windows);
}

void Monkey::MoveOrSize()
{
    const HWND window = OneWindow();
    const int x = Below(1000) - 100, y = Below(800) - 20;
    const int width = Below(1200), height = Below(900);
    Log(m_index, "put" + At({x, y}) + " with " + std::to_string(width) + "x" + std::to_string(height) + " " +
                     Describe(window));
    ::SetWindowPos(window, nullptr, x, y, width, height,
                   SWP_ASYNCWINDOWPOS | SWP_NOZORDER | SWP_NOACTIVATE | (Below(2) != 0 ? SWP_NOSIZE : 0));
}

void Monkey::ShowOrHide()
{
    const HWND window = OneWindow();
    const int show = OneOf(std::vector{SW_MINIMIZE, SW_MAXIMIZE, SW_RESTORE});
    Log(m_index, "show " + std::to_string(show) + " " + Describe(window));
    ::ShowWindowAsync(window, show);
}

void Monkey::Notify()
{
    const HWND root = OneWindow();
    if (root == nullptr)
        return;
    const HWND window = OneOf(VisibleTree(root));
    const UINT message =
        OneOf(std::vector<UINT>{WM_SYSCOLORCHANGE, WM_SETTINGCHANGE, WM_THEMECHANGED, WM_CANCELMODE});
    Log(m_index, "notify " + std::to_string(message) + " " + Describe(window));
    ::PostMessage(window, message, 0, 0);
}

void Monkey::CloseAll()
{
    ReleaseAll();
    for (int i = 0; i < kMostClosings; ++i) {
        if (AnswerSystemWindows())
            continue;
        if (!VisibleWindows(WindowKind::System).empty()) {
            ::Sleep(10);
            continue;
        }
        std::vector<HWND> windows = VisibleWindows(WindowKind::Own);
        if (windows.empty() && m_fed.IsIdle(kHang))
            return;
        for (const HWND window : windows) {
            if (::IsWindowEnabled(window)) {
                Log(m_index, "end " + Describe(window));
                ::PostMessage(window, WM_CANCELMODE, 0, 0);
                ::PostMessage(window, WM_CLOSE, 0, 0);
                break;
            }
        }
        if (!m_fed.IsIdle(kHang))
            support::ReportHang(m_uiThread);
        ::Sleep(10);
    }
    Log(m_index, "a window stays");
    support::ReportHang(m_uiThread);
}

bool Monkey::FindPlace(CPoint& place)
{
    std::vector<HWND> windows = VisibleWindows(WindowKind::Menu);
    if (windows.empty() || Below(4) == 0)
        windows = VisibleWindows(WindowKind::Own);
    for (int attempt = 0; attempt < 10 && !windows.empty(); ++attempt) {
        const HWND window = OneOf(windows);
        CRect rect;
        ::GetWindowRect(Below(4) == 0 ? window : OneOf(VisibleTree(window)), &rect);
        if (!rect.IntersectRect(rect, ScreenRect()))
            continue;
        place = {rect.left + Below(rect.Width()), rect.top + Below(rect.Height())};
        if (MayClick(place))
            return true;
    }
    return false;
}

CPoint Monkey::PlaceNear(CPoint place)
{
    const int reach = Below(3) == 0 ? 400 : 40;
    const CRect screen = ScreenRect();
    place += CSize(Below(2 * reach) - reach, Below(2 * reach) - reach);
    return {std::clamp<LONG>(place.x, 0, screen.right - 2), std::clamp<LONG>(place.y, 0, screen.bottom - 2)};
}

void Monkey::MovePointer()
{
    CPoint place;
    if (!FindPlace(place))
        return;
    Log(m_index, "move" + At(place) + " over " + Describe(::WindowFromPoint(place)));
    Send(support::MouseMoveInput(place));
}

void Monkey::Click(int times)
{
    CPoint place;
    if (!FindPlace(place))
        return;
    const int kind = Below(12);
    const ButtonFlags& button = kind == 0 ? kMiddle : kind < 3 ? kRight : kLeft;
    const int modifier = Below(10);
    const UINT held = modifier == 0 ? VK_CONTROL : modifier == 1 ? VK_SHIFT : 0;
    Log(m_index, std::to_string(times) + " " + button.name + At(place) + " with " + std::to_string(held) +
                     " on " + Describe(::WindowFromPoint(place)));
    Send(support::MouseMoveInput(place));
    if (held != 0 && MayType())
        Send(support::KeyInput(held, true));
    for (int i = 0; i < times && MayClick(place); ++i) {
        Send(support::MouseButtonInput(button.down));
        Send(support::MouseButtonInput(button.up));
    }
    if (held != 0)
        Send(support::KeyInput(held, false));
}

void Monkey::Drag()
{
    CPoint place;
    if (!FindPlace(place))
        return;
    const ButtonFlags& button = Below(8) == 0 ? kRight : kLeft;
    Log(m_index,
        std::string("drag ") + button.name + At(place) + " on " + Describe(::WindowFromPoint(place)));
    Send(support::MouseMoveInput(place));
    if (!MayClick(place))
        return;
    Send(support::MouseButtonInput(button.down));
    for (int i = 1 + Below(6); i > 0; --i) {
        place = PlaceNear(place);
        Send(support::MouseMoveInput(place));
    }
    if (Below(10) == 0 && MayType()) {
        // Not waited for: the system's tracking loops take nothing but the mouse.
        INPUT escape[] = {support::KeyInput(VK_ESCAPE, true), support::KeyInput(VK_ESCAPE, false)};
        ::SendInput(2, escape, sizeof(INPUT));
    }
    Send(support::MouseButtonInput(button.up));
}

void Monkey::Wheel()
{
    CPoint place;
    if (!FindPlace(place))
        return;
    const int notches = Below(9) - 4;
    Log(m_index, "wheel " + std::to_string(notches) + " over " + Describe(::WindowFromPoint(place)));
    Send(support::MouseMoveInput(place));
    INPUT record = support::MouseButtonInput(MOUSEEVENTF_WHEEL);
    record.mi.mouseData = static_cast<DWORD>(notches * WHEEL_DELTA);
    if (MayClick(place))
        Send(record);
}

void Monkey::Stroke()
{
    const UINT key = OneOf(kKeys);
    const int kind = Below(12);
    std::vector<UINT> modifiers;
    if (kind < 3)
        modifiers = {kind == 0 ? UINT{VK_SHIFT} : kind == 1 ? UINT{VK_CONTROL} : UINT{VK_MENU}};
    // Alt or Ctrl with these would leave the program or this desktop.
    const bool switches = key == VK_TAB || key == VK_ESCAPE || key == VK_DELETE;
    if (switches && !modifiers.empty() && modifiers.front() != VK_SHIFT)
        modifiers.clear();
    Log(m_index, "key " + std::to_string(key) + " with " +
                     std::to_string(modifiers.empty() ? 0 : modifiers[0]) + " to " +
                     Describe(::GetForegroundWindow()));
    Key(key, modifiers);
}

void Monkey::TypeText()
{
    Log(m_index, "type to " + Describe(::GetForegroundWindow()));
    for (int i = 1 + Below(12); i > 0; --i)
        Character(kCharacters[Below(static_cast<int>(std::size(kCharacters)) - 1)]);
}

void Monkey::Key(UINT key, const std::vector<UINT>& modifiers)
{
    if (!MayType())
        return;
    for (const UINT modifier : modifiers)
        Send(support::KeyInput(modifier, true));
    Send(support::KeyInput(key, true));
    Send(support::KeyInput(key, false));
    for (const UINT modifier : modifiers)
        Send(support::KeyInput(modifier, false));
}

void Monkey::Character(wchar_t unit)
{
    if (!MayType())
        return;
    INPUT record{};
    record.type = INPUT_KEYBOARD;
    record.ki.wScan = unit;
    record.ki.dwFlags = KEYEVENTF_UNICODE;
    Send(record);
    record.ki.dwFlags |= KEYEVENTF_KEYUP;
    Send(record);
}

void Monkey::Send(const INPUT& record)
{
    if (!m_fed.Feed(record, kHang))
        support::ReportHang(m_uiThread);
}

void Monkey::ReleaseAll()
{
    for (const ButtonFlags& button : {kLeft, kRight, kMiddle})
        Send(support::MouseButtonInput(button.up));
    for (const UINT key : {VK_SHIFT, VK_CONTROL, VK_MENU})
        Send(support::KeyInput(key, false));
}

} // namespace monkey
