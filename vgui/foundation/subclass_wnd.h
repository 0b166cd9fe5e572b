// Hooks that intercept the messages of any window, also of one that a framework object owns.
#pragma once

#include "vgui/export.h"

#include <afxcoll.h>
#include <afxwin.h>

template <class Hook, class Map>
class VHookChain;
class CSubclassWndMap;

// One hook on one window. Derive, override WindowProc, and call HookWindow. Several hooks can sit on one
// window: the newest sees each message first, the window's own procedure last, and they can be unhooked in
// any order. A hook may unhook or delete itself, or destroy the window, while it handles a message.
//
// The window stays its owner's; the hook belongs to whoever made it. When the window is destroyed, all its
// hooks are unhooked; WM_NCDESTROY itself does not reach them.
class VGUI_API CSubclassWnd : public CObject
{
    DECLARE_DYNAMIC(CSubclassWnd)

public:
    CSubclassWnd() = default;
    // Unhooks.
    ~CSubclassWnd() override;

    // Hooks the object's window; a null object unhooks. TRUE on success.
    BOOL HookWindow(CWnd* pWnd);
    // Makes this the newest hook of the window, after taking it off the one that it hooked before. FALSE,
    // with nothing changed, for a window that does not exist or belongs to another thread. Null unhooks,
    // which always succeeds.
    virtual BOOL HookWindow(HWND hWnd);
    // Takes the hook off its window, if it has one. TRUE.
    BOOL Unhook() { return HookWindow(static_cast<HWND>(nullptr)); }
    // Whether the hook is on a window.
    [[nodiscard]] BOOL IsHooked() const { return m_hWnd != nullptr; }

    // Called for each message of the window. What an override does not handle it hands to this one, which
    // passes it to the next older hook or to the window's own procedure. Without a hooked window: 0.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);

    // Passes the thread's current message, as it came in, to the next older hook or to the window's own
    // procedure. Does not call an override of WindowProc, which could not end.
    LRESULT Default();

    // The newest hook on a window whose run-time class is exactly this object's, null when there is none.
    [[nodiscard]] CSubclassWnd* FindHookInstance(HWND hWnd) const;
    // Null for every object: only the handle form searches. Kept so because callers rely on it.
    [[nodiscard]] CSubclassWnd* FindHookInstance(CWnd* pWnd) const;

    HWND m_hWnd = nullptr;           // the hooked window
    WNDPROC m_pOldWndProc = nullptr; // the procedure in place before the window's first hook
    CSubclassWnd* m_pNext = nullptr; // the next older hook on the window

private:
    using Chain = VHookChain<CSubclassWnd, CSubclassWndMap>;
};

// The newest hook of each hooked window, one map for the process.
class VGUI_API CSubclassWndMap : private CMapPtrToPtr
{
public:
    // The one map.
    static CSubclassWndMap& Instance();

    // Null when the window has no hook.
    [[nodiscard]] CSubclassWnd* GetNewest(HWND hWnd) const;
    // Sets the newest hook; null removes the window's entry.
    void SetNewest(HWND hWnd, CSubclassWnd* pHook);

private:
    CSubclassWndMap();
};
