// What the framework's sources share about windows and their creation.
#pragma once

#include "handle_map.h"

// The window procedure's way to CWnd's protected operations.
struct AfxWndAccess {
    static LRESULT Call(CWnd* window, HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);
    // Attaches a window that is just being created and puts the framework's procedure in front of its own.
    static void TakeWindow(CWnd* window, HWND hWnd);
    static LRESULT CALLBACK OnCbt(int code, WPARAM wParam, LPARAM lParam);
};

namespace afx_subset
{

template <>
struct HandleTraits<CWnd> {
    static CWnd* Make(HWND hWnd);
    static void Drop(CWnd* window);
};

// While it lives, the next window that the thread creates is attached to the object before its first message.
class CreationHook
{
public:
    // Throws CMemoryException when the hook cannot be set.
    explicit CreationHook(CWnd* window);
    ~CreationHook();
    CreationHook(const CreationHook&) = delete;
    CreationHook& operator=(const CreationHook&) = delete;
    bool Taken() const;

private:
    CWnd* m_savedWindow;
    HHOOK m_savedHook;
};

} // namespace afx_subset
