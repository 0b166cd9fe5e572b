// The input that a browser's page is given.
#pragma once

#include <afxwin.h>
#include <algorithm>
#include <commctrl.h>
#include <vector>

// What reaches a window after all PreTranslateMessage have looked at it. It ends before the window does.
class PageInput
{
public:
    explicit PageInput(HWND page) : m_page(page)
    {
        ::SetWindowSubclass(page, &Proc, 1, reinterpret_cast<DWORD_PTR>(this));
    }
    ~PageInput() { ::RemoveWindowSubclass(m_page, &Proc, 1); }
    PageInput(const PageInput&) = delete;
    PageInput& operator=(const PageInput&) = delete;

    [[nodiscard]] int Count(UINT message) const
    {
        return static_cast<int>(std::count(m_messages.begin(), m_messages.end(), message));
    }
    // Presses and releases of a key.
    [[nodiscard]] int CountKey(UINT key) const
    {
        return static_cast<int>(std::count(m_keys.begin(), m_keys.end(), key));
    }

private:
    static LRESULT CALLBACK Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                 DWORD_PTR input)
    {
        auto* const self = reinterpret_cast<PageInput*>(input);
        self->m_messages.push_back(message);
        if (message == WM_KEYDOWN || message == WM_KEYUP || message == WM_SYSKEYDOWN ||
            message == WM_SYSKEYUP)
            self->m_keys.push_back(static_cast<UINT>(wParam));
        return ::DefSubclassProc(window, message, wParam, lParam);
    }

    HWND m_page;
    std::vector<UINT> m_messages;
    std::vector<UINT> m_keys;
};
