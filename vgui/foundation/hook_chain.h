// The mechanism of stackable window hooks, shared by all hook classes. Internal to the library.
#pragma once

#include <afxstat_.h>
#include <afxwin.h>
#include <unordered_map>
#include <utility>

// Chains of Hook objects, one chain per window. Several kinds of hook, each with a Map of its own, can sit on
// one window without sharing links.
//
// Hook has the members m_hWnd, m_pOldWndProc and m_pNext (the next older hook), all null while it hooks
// nothing, and the virtual functions HookWindow(HWND) and WindowProc(UINT, WPARAM, LPARAM), all accessible
// here. Map has static Map& Instance(), Hook* GetNewest(HWND) and SetNewest(HWND, Hook*), where a null hook
// removes the entry.
//
// A hook may be unhooked or deleted at any moment, also while it is handling a message. All on the thread
// that owns the windows.
template <class Hook, class Map>
class VHookChain
{
public:
    // Whether the window exists and belongs to the calling thread.
    static BOOL CanAttach(HWND hWnd)
    {
        return ::GetWindowThreadProcessId(hWnd, nullptr) == ::GetCurrentThreadId();
    }

    // Makes hook, which must hook nothing, the newest one of a window. FALSE, and nothing changed, when
    // CanAttach says no.
    static BOOL Attach(Hook& hook, HWND hWnd)
    {
        if (!CanAttach(hWnd))
            return FALSE;
        Hook* const older = Map::Instance().GetNewest(hWnd);
        // First, since it may throw: a window whose procedure is ours needs its hook.
        Map::Instance().SetNewest(hWnd, &hook);
        const WNDPROC oldProc = older != nullptr ? older->m_pOldWndProc : TakeOverProc(hWnd);
        if (oldProc == nullptr) {
            Map::Instance().SetNewest(hWnd, older);
            return FALSE;
        }
        hook.m_pNext = older;
        hook.m_pOldWndProc = oldProc;
        hook.m_hWnd = hWnd;
        return TRUE;
    }

    // Takes the hook off its window; nothing happens if it hooks none.
    static void Detach(Hook& hook)
    {
        if (hook.m_hWnd == nullptr)
            return;
        RerouteCalls(hook);
        Hook* const newest = Map::Instance().GetNewest(hook.m_hWnd);
        if (newest == &hook) {
            Map::Instance().SetNewest(hook.m_hWnd, hook.m_pNext);
            if (hook.m_pNext == nullptr)
                GiveBackProc(hook.m_hWnd, hook.m_pOldWndProc);
        } else {
            for (Hook* newer = newest; newer != nullptr; newer = newer->m_pNext)
                if (newer->m_pNext == &hook) {
                    newer->m_pNext = hook.m_pNext;
                    break;
                }
        }
        hook.m_pNext = nullptr;
        hook.m_pOldWndProc = nullptr;
        hook.m_hWnd = nullptr;
    }

    // What a hook does with a message that it does not handle: the next older hook gets it, after the oldest
    // one the window's own procedure. A hook that was unhooked while handling the message may still pass that
    // one on.
    static LRESULT PassOn(Hook& hook, UINT message, WPARAM wParam, LPARAM lParam)
    {
        const Call* call = s_calls;
        while (call != nullptr && call->hook != &hook)
            call = call->outer;
        if (call != nullptr && call->unhooked)
            return Forward(call->hWnd, call->next, call->oldProc, message, wParam, lParam);
        return Forward(hook.m_hWnd, hook.m_pNext, hook.m_pOldWndProc, message, wParam, lParam);
    }

private:
    // A call of a hook's WindowProc that has not returned yet. It never touches the hook, which may be gone.
    struct Call {
        const Hook* hook;
        HWND hWnd;
        Call* outer;
        // Where the message goes on, valid once the hook has been unhooked during the call.
        bool unhooked = false;
        Hook* next = nullptr;
        WNDPROC oldProc = nullptr;
    };

    class CallScope
    {
    public:
        CallScope(const Hook& hook, HWND hWnd) : m_call{&hook, hWnd, s_calls} { s_calls = &m_call; }
        CallScope(const CallScope&) = delete;
        CallScope& operator=(const CallScope&) = delete;
        ~CallScope() { s_calls = m_call.outer; }

    private:
        Call m_call;
    };

    // Makes a message the framework's current one of this thread for the length of a block.
    class CurrentMessageScope
    {
    public:
        CurrentMessageScope(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
            : m_saved(AfxGetThreadState()->m_lastSentMsg)
        {
            MSG& current = AfxGetThreadState()->m_lastSentMsg;
            current.hwnd = hWnd;
            current.message = message;
            current.wParam = wParam;
            current.lParam = lParam;
        }
        CurrentMessageScope(const CurrentMessageScope&) = delete;
        CurrentMessageScope& operator=(const CurrentMessageScope&) = delete;
        ~CurrentMessageScope() { AfxGetThreadState()->m_lastSentMsg = m_saved; }

    private:
        MSG m_saved;
    };

    static LRESULT CALLBACK HookProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
    {
        const CurrentMessageScope current(hWnd, message, wParam, lParam);
        Hook* const newest = Map::Instance().GetNewest(hWnd);
        if (message == WM_NCDESTROY) {
            WNDPROC oldProc = newest != nullptr ? newest->m_pOldWndProc : nullptr;
            DetachAll(hWnd);
            if (const WNDPROC buried = Unbury(hWnd); oldProc == nullptr)
                oldProc = buried;
            return Forward(hWnd, nullptr, oldProc, message, wParam, lParam);
        }
        const WNDPROC buried = newest != nullptr ? nullptr : BuriedProc(hWnd);
        return Forward(hWnd, newest, buried, message, wParam, lParam);
    }

    static LRESULT Forward(HWND hWnd, Hook* hook, WNDPROC oldProc, UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (hook != nullptr) {
            const CallScope call(*hook, hWnd);
            return hook->WindowProc(message, wParam, lParam);
        }
        // A handler further up may have destroyed the window.
        if (!::IsWindow(hWnd))
            return 0;
        if (oldProc != nullptr)
            return ::CallWindowProc(oldProc, hWnd, message, wParam, lParam);
        return ::DefWindowProc(hWnd, message, wParam, lParam);
    }

    static void RerouteCalls(const Hook& hook)
    {
        for (Call* call = s_calls; call != nullptr; call = call->outer) {
            if (call->unhooked) {
                if (call->next == &hook)
                    call->next = hook.m_pNext;
            } else if (call->hook == &hook) {
                call->unhooked = true;
                call->next = hook.m_pNext;
                call->oldProc = hook.m_pOldWndProc;
            }
        }
    }

    // Each hook is asked once to unhook itself; what is still there then is taken off without asking, so that
    // a hook which answers by hooking again cannot keep the window alive in the map.
    static void DetachAll(HWND hWnd)
    {
        int count = 0;
        for (const Hook* hook = Map::Instance().GetNewest(hWnd); hook != nullptr; hook = hook->m_pNext)
            ++count;
        for (; count > 0; --count)
            if (Hook* const hook = Map::Instance().GetNewest(hWnd))
                hook->HookWindow(static_cast<HWND>(nullptr));
        while (Hook* const hook = Map::Instance().GetNewest(hWnd))
            Detach(*hook);
    }

    // Puts HookProc in place as the window's procedure; the answer is the procedure below it.
    static WNDPROC TakeOverProc(HWND hWnd)
    {
        if (const WNDPROC buried = Unbury(hWnd))
            return buried;
        return reinterpret_cast<WNDPROC>(
            ::SetWindowLongPtr(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&HookProc)));
    }

    // Somebody who replaced the window's procedure after us still calls HookProc and would be cut off if the
    // procedure were put back now. HookProc then stays, buried, and passes everything through.
    static void GiveBackProc(HWND hWnd, WNDPROC oldProc)
    {
        if (!::IsWindow(hWnd))
            return;
        if (reinterpret_cast<WNDPROC>(::GetWindowLongPtr(hWnd, GWLP_WNDPROC)) == &HookProc)
            ::SetWindowLongPtr(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(oldProc));
        else
            s_buried[hWnd] = oldProc;
    }

    static WNDPROC BuriedProc(HWND hWnd)
    {
        const auto found = s_buried.find(hWnd);
        return found == s_buried.end() ? nullptr : found->second;
    }

    static WNDPROC Unbury(HWND hWnd)
    {
        const WNDPROC proc = BuriedProc(hWnd);
        s_buried.erase(hWnd);
        return proc;
    }

    inline static Call* s_calls = nullptr;
    // The procedures below a buried HookProc, by window.
    inline static std::unordered_map<HWND, WNDPROC> s_buried;
};
