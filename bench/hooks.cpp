// Messages through window hooks, against as many window procedures put before each other by hand.
#include "bench/bench.h"
#include "vgui/foundation/subclass_wnd.h"

#include <memory>
#include <vector>

namespace
{

constexpr int kMessages = 1000;
constexpr UINT kMessage = WM_APP + 1;
constexpr size_t kMostHooks = 8;

class Hook : public CSubclassWnd
{
public:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        m_seen += message == kMessage;
        return CSubclassWnd::WindowProc(message, wParam, lParam);
    }

private:
    long m_seen = 0;
};

// The I-th procedure of a window has to know the one below it: one function for each.
template <size_t I>
struct Procedure {
    inline static WNDPROC below = nullptr;
    inline static long seen = 0;

    static LRESULT CALLBACK Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        seen += message == kMessage;
        return ::CallWindowProcW(below, window, message, wParam, lParam);
    }
    static void PutBefore(HWND window)
    {
        below = reinterpret_cast<WNDPROC>(
            ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Proc)));
    }
};

template <size_t... I>
void PutProcedures(HWND window, int count, std::index_sequence<I...>)
{
    ((static_cast<int>(I) < count ? Procedure<I>::PutBefore(window) : void()), ...);
}

HWND NewWindow()
{
    return ::CreateWindowW(L"Static", nullptr, WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
}

bench::Work Sending(HWND window)
{
    return {[window] {
        for (int i = 0; i < kMessages; ++i)
            ::SendMessageW(window, kMessage, 0, 0);
    }};
}

void Run()
{
    for (const int count : bench::Sizes({1, 2, 4, 8})) {
        const HWND hooked = NewWindow();
        std::vector<std::unique_ptr<Hook>> hooks;
        for (int i = 0; i < count; ++i) {
            hooks.push_back(std::make_unique<Hook>());
            bench::Require(hooks.back()->HookWindow(hooked), "hooking a window");
        }
        const HWND chained = NewWindow();
        PutProcedures(chained, count, std::make_index_sequence<kMostHooks>());
        bench::Compare("1,000 messages sent", count, count == 1 ? "hook" : "hooks", Sending(hooked),
                       {"as many window procedures set by hand", Sending(chained)});
        ::DestroyWindow(hooked);
        ::DestroyWindow(chained);
    }
}

const bench::Subject g_subject("hooks", &Run);

} // namespace
