// Sending control messages without a cast at every argument; shared by the control classes' sources.
#pragma once

#include <afxwin.h>

#include <type_traits>

namespace afx_subset
{

// A message parameter or result of one type as a value of another: numbers keep their sign, pointers and
// handles their bits.
template <class To, class From>
To MessageCast(From value)
{
    if constexpr (std::is_null_pointer_v<From>)
        return To{};
    else if constexpr (std::is_pointer_v<From> || std::is_pointer_v<To>)
        return reinterpret_cast<To>(value);
    else
        return static_cast<To>(value);
}

// Sends the message to the control's window and gives the answer as a Result. A control without a window
// answers 0.
template <class Result = LRESULT, class W = int, class L = int>
Result Send(const CWnd* control, UINT message, W wParam = W{}, L lParam = L{})
{
    const LRESULT answer =
        ::SendMessage(control->m_hWnd, message, MessageCast<WPARAM>(wParam), MessageCast<LPARAM>(lParam));
    return MessageCast<Result>(answer);
}

// The window of an object that may be missing, null then.
inline HWND WindowOf(const CWnd* window)
{
    return window == nullptr ? nullptr : window->m_hWnd;
}

} // namespace afx_subset
