#include "vgui/foundation/subclass_wnd.h"

#include "tests/support/census.h"
#include "tests/support/recorder.h"

#include <afxstat_.h>
#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <vector>

namespace
{

using support::HostWnd;

constexpr UINT kMessage = WM_APP + 1;
constexpr UINT kNested = WM_APP + 2;
constexpr int kWindow = 0; // the window's own entry in a log

using Log = std::vector<int>;

// Writes its number into the log for each of the tests' messages, acts, and passes the message on.
class LogHook : public CSubclassWnd
{
    DECLARE_DYNAMIC(LogHook)

public:
    LogHook(Log& log, int number) : m_log(log), m_number(number) {}

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_NCDESTROY)
            m_sawNcDestroy = true;
        if (message == kMessage || message == kNested) {
            m_log.push_back(m_number);
            // A copy: the action may delete this object.
            if (const auto action = m_action; message == kMessage && action && !action())
                return 0;
        }
        return CSubclassWnd::WindowProc(message, wParam, lParam);
    }

    // Runs on kMessage; false ends the handling at once, for actions that delete the hook.
    std::function<bool()> m_action;
    bool m_sawNcDestroy = false;

private:
    Log& m_log;
    int m_number;
};
IMPLEMENT_DYNAMIC(LogHook, CSubclassWnd)

// Hooks its window again whenever it is asked to unhook.
class StubbornHook : public CSubclassWnd
{
public:
    BOOL HookWindow(HWND hWnd) override
    {
        const HWND old = m_hWnd;
        CSubclassWnd::HookWindow(hWnd);
        return CSubclassWnd::HookWindow(old != nullptr ? old : hWnd);
    }
};

class SubclassWndTest : public support::CensusTest
{
protected:
    void SetUp() override
    {
        m_window = std::make_unique<HostWnd>();
        ASSERT_TRUE(m_window->Open(CSize(60, 40)));
        m_window->SetAnswer([this](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
            if (message != kMessage && message != kNested)
                return std::nullopt;
            m_log.push_back(kWindow);
            return 77;
        });
        m_proc = CurrentProc();
    }

    LONG_PTR CurrentProc() const { return ::GetWindowLongPtr(m_window->m_hWnd, GWLP_WNDPROC); }

    // Sends the message and gives the numbers of those who saw it, in order.
    Log Send(UINT message = kMessage)
    {
        m_log.clear();
        m_result = m_window->SendMessage(message, 0, 0);
        return m_log;
    }

    // Hooks 1 (the oldest) to count.
    std::vector<std::unique_ptr<LogHook>> HookMany(int count)
    {
        std::vector<std::unique_ptr<LogHook>> hooks;
        for (int number = 1; number <= count; ++number) {
            hooks.push_back(std::make_unique<LogHook>(m_log, number));
            EXPECT_TRUE(hooks.back()->HookWindow(m_window.get()));
        }
        return hooks;
    }

    std::unique_ptr<HostWnd> m_window;
    LONG_PTR m_proc = 0;
    LRESULT m_result = 0;
    Log m_log;
};

} // namespace

TEST_F(SubclassWndTest, ThreeHooksCanGoInEveryOrder)
{
    Log order{1, 2, 3};
    do {
        auto hooks = HookMany(3);
        EXPECT_EQ(Send(), (Log{3, 2, 1, kWindow}));
        EXPECT_EQ(m_result, 77);
        Log left{3, 2, 1};
        for (const int number : order) {
            CSubclassWnd& hook = *hooks[number - 1];
            EXPECT_EQ(CurrentProc(), ::GetWindowLongPtr(m_window->m_hWnd, GWLP_WNDPROC));
            EXPECT_NE(CurrentProc(), m_proc);
            EXPECT_TRUE(hook.Unhook());
            EXPECT_FALSE(hook.IsHooked());
            EXPECT_EQ(hook.m_pOldWndProc, nullptr);
            left.erase(std::find(left.begin(), left.end(), number));
            Log expected(left);
            expected.push_back(kWindow);
            EXPECT_EQ(Send(), expected);
        }
        EXPECT_EQ(CurrentProc(), m_proc);
        EXPECT_EQ(CSubclassWndMap::Instance().GetNewest(m_window->m_hWnd), nullptr);
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(SubclassWndTest, DestructionUnhooks)
{
    auto hooks = HookMany(3);
    hooks[1].reset();
    EXPECT_EQ(Send(), (Log{3, 1, kWindow}));
    hooks.clear();
    EXPECT_EQ(Send(), Log{kWindow});
    EXPECT_EQ(CurrentProc(), m_proc);
}

TEST_F(SubclassWndTest, DestroyedWindowReleasesItsHooks)
{
    auto hooks = HookMany(3);
    const HWND window = m_window->m_hWnd;
    m_window->DestroyWindow();
    for (const auto& hook : hooks) {
        EXPECT_EQ(hook->m_hWnd, nullptr);
        EXPECT_EQ(hook->m_pOldWndProc, nullptr);
        EXPECT_EQ(hook->m_pNext, nullptr);
        EXPECT_FALSE(hook->m_sawNcDestroy);
    }
    EXPECT_EQ(CSubclassWndMap::Instance().GetNewest(window), nullptr);
    // The framework's object saw the last message, too.
    EXPECT_EQ(m_window->m_hWnd, nullptr);
    EXPECT_EQ(CWnd::FromHandlePermanent(window), nullptr);
}

TEST_F(SubclassWndTest, AHookThatHooksAgainCannotHoldADyingWindow)
{
    StubbornHook stubborn;
    auto hooks = HookMany(1);
    stubborn.HookWindow(m_window->m_hWnd);
    const HWND window = m_window->m_hWnd;
    m_window->DestroyWindow();
    EXPECT_FALSE(stubborn.IsHooked());
    EXPECT_FALSE(hooks[0]->IsHooked());
    EXPECT_EQ(CSubclassWndMap::Instance().GetNewest(window), nullptr);
}

TEST_F(SubclassWndTest, UnhookingOrDeletingItselfWhileHandlingAMessage)
{
    for (int number = 1; number <= 3; ++number) {
        for (const bool deletes : {false, true}) {
            auto hooks = HookMany(3);
            std::unique_ptr<LogHook>& hook = hooks[number - 1];
            hook->m_action = [&hook, deletes] {
                if (!deletes)
                    return hook->Unhook() != FALSE;
                hook.reset();
                return false;
            };
            const Log seen = Send();
            if (!deletes) {
                EXPECT_EQ(seen, (Log{3, 2, 1, kWindow})) << number;
                EXPECT_EQ(m_result, 77);
                EXPECT_FALSE(hook->IsHooked());
            }
            EXPECT_EQ(Send().size(), 3u) << number << deletes;
        }
    }
    EXPECT_EQ(CurrentProc(), m_proc);
}

TEST_F(SubclassWndTest, RemovingOthersWhileHandlingAMessage)
{
    auto hooks = HookMany(4);
    // The newest one unhooks itself, then the two that it would have passed the message to.
    hooks[3]->m_action = [&hooks] {
        hooks[3]->Unhook();
        hooks[2].reset();
        hooks[1].reset();
        return true;
    };
    EXPECT_EQ(Send(), (Log{4, 1, kWindow}));
    hooks[0]->m_action = [&hooks] {
        hooks[0]->Unhook();
        return true;
    };
    EXPECT_EQ(Send(), (Log{1, kWindow}));
    EXPECT_EQ(CurrentProc(), m_proc);
}

TEST_F(SubclassWndTest, DestroyingTheWindowWhileHandlingAMessage)
{
    auto hooks = HookMany(3);
    hooks[1]->m_action = [this] { return m_window->DestroyWindow() != FALSE; };
    // The older hooks have gone with the window, before the message could reach them.
    EXPECT_EQ(Send(), (Log{3, 2}));
    EXPECT_EQ(m_result, 0);
    for (const auto& hook : hooks)
        EXPECT_FALSE(hook->IsHooked());
    EXPECT_EQ(m_window->m_hWnd, nullptr);
}

TEST_F(SubclassWndTest, CurrentMessageIsRestoredAfterNestedSends)
{
    MSG& current = AfxGetThreadState()->m_lastSentMsg;
    const MSG outside = current;
    auto hooks = HookMany(2);
    MSG before = {};
    MSG after = {};
    hooks[0]->m_action = [&] {
        before = current;
        m_window->SendMessage(kNested, 5, 6);
        after = current;
        return true;
    };
    m_log.clear();
    m_window->SendMessage(kMessage, 3, 4);
    EXPECT_EQ(m_log, (Log{2, 1, 2, 1, kWindow, kWindow}));
    for (const MSG& message : {before, after}) {
        EXPECT_EQ(message.hwnd, m_window->m_hWnd);
        EXPECT_EQ(message.message, kMessage);
        EXPECT_EQ(message.wParam, 3u);
        EXPECT_EQ(message.lParam, 4);
    }
    EXPECT_EQ(current.hwnd, outside.hwnd);
    EXPECT_EQ(current.message, outside.message);
}

TEST_F(SubclassWndTest, DefaultPassesTheMessageAsItCameIn)
{
    class DefaultHook : public CSubclassWnd
    {
    public:
        LRESULT WindowProc(UINT, WPARAM, LPARAM) override { return Default(); }
    };
    m_window->Clear();
    DefaultHook hook;
    ASSERT_TRUE(hook.HookWindow(m_window.get()));
    EXPECT_EQ(m_window->SendMessage(kMessage, 12, 34), 77);
    hook.Unhook();
    const auto messages = m_window->Messages(kMessage);
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0].wParam, 12u);
    EXPECT_EQ(messages[0].lParam, 34);
    // Without a window there is nobody to pass it to.
    EXPECT_EQ(hook.Default(), 0);
}

TEST_F(SubclassWndTest, FindsTheNewestHookOfItsOwnClass)
{
    auto hooks = HookMany(2);
    CSubclassWnd plain;
    ASSERT_TRUE(plain.HookWindow(m_window.get()));
    Log log;
    const LogHook seeker(log, 9);
    EXPECT_EQ(seeker.FindHookInstance(m_window->m_hWnd), hooks[1].get());
    EXPECT_EQ(CSubclassWnd().FindHookInstance(m_window->m_hWnd), &plain);
    EXPECT_EQ(seeker.FindHookInstance(static_cast<HWND>(nullptr)), nullptr);
    // The object form finds nothing, whatever it is given.
    EXPECT_EQ(seeker.FindHookInstance(m_window.get()), nullptr);
    EXPECT_EQ(seeker.FindHookInstance(static_cast<CWnd*>(nullptr)), nullptr);
}

TEST_F(SubclassWndTest, RefusedWindowsKeepTheOldHook)
{
    auto hooks = HookMany(2);
    const HWND gone = m_window->m_hWnd;
    EXPECT_FALSE(hooks[1]->HookWindow(reinterpret_cast<HWND>(INT_PTR{0x7ffffff0})));
    EXPECT_FALSE(hooks[1]->HookWindow(::GetDesktopWindow()));
    std::thread([&] {
        const HWND foreign =
            ::CreateWindow(L"Static", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
        EXPECT_NE(foreign, nullptr);
        ::DestroyWindow(foreign);
    }).join();
    EXPECT_EQ(hooks[1]->m_hWnd, gone);
    EXPECT_EQ(Send(), (Log{2, 1, kWindow}));
    // A null object, or one without a window, unhooks.
    EXPECT_TRUE(hooks[0]->HookWindow(static_cast<CWnd*>(nullptr)));
    EXPECT_TRUE(hooks[0]->Unhook());
    CWnd closed;
    EXPECT_TRUE(hooks[1]->HookWindow(&closed));
    EXPECT_EQ(CurrentProc(), m_proc);
}

TEST_F(SubclassWndTest, HookingAgainMovesTheHookToTheTop)
{
    auto hooks = HookMany(3);
    ASSERT_TRUE(hooks[0]->HookWindow(m_window.get()));
    EXPECT_EQ(Send(), (Log{1, 3, 2, kWindow}));
    HostWnd other;
    ASSERT_TRUE(other.Open(CSize(20, 20)));
    ASSERT_TRUE(hooks[2]->HookWindow(&other));
    EXPECT_EQ(Send(), (Log{1, 2, kWindow}));
    m_log.clear();
    other.SendMessage(kMessage);
    EXPECT_EQ(m_log, Log{3});
}

// Somebody else replaces the procedure of a hooked window and calls the hooks as what came before.
TEST_F(SubclassWndTest, ALaterSubclassOfOthersStaysInPlace)
{
    static WNDPROC below;
    static int seen;
    seen = 0;
    const auto counting = [](HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
        seen += message == kMessage;
        return ::CallWindowProc(below, hWnd, message, wParam, lParam);
    };
    auto hooks = HookMany(1);
    below = reinterpret_cast<WNDPROC>(::SetWindowLongPtr(
        m_window->m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(static_cast<WNDPROC>(counting))));
    const LONG_PTR top = CurrentProc();

    hooks[0]->Unhook();
    EXPECT_EQ(CurrentProc(), top);
    EXPECT_EQ(Send(), Log{kWindow});
    EXPECT_EQ(m_result, 77);
    ASSERT_TRUE(hooks[0]->HookWindow(m_window.get()));
    EXPECT_EQ(Send(), (Log{1, kWindow}));
    EXPECT_EQ(seen, 2);

    // Once the other one has gone, the window gets its own procedure back.
    ::SetWindowLongPtr(m_window->m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(below));
    hooks[0]->Unhook();
    EXPECT_EQ(CurrentProc(), m_proc);
    EXPECT_EQ(Send(), Log{kWindow});
}
