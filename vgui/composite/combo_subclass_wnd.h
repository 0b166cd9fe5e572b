// Hooks with which a tree combo box watches other windows.
#pragma once

#include "vgui/export.h"

#include <afxcoll.h>
#include <afxwin.h>

template <class Hook, class Map>
class VHookChain;
class CComboSubclassWndMap;

// One hook on one window, like CSubclassWnd but in chains of its own: both kinds can sit on one window and
// never share links. The newest hook sees each message first, the window's own procedure last. A hook may
// unhook or delete itself, or destroy the window, while it handles a message.
//
// The window stays its owner's; the hook belongs to whoever made it. When the window is destroyed, all its
// hooks are unhooked; WM_NCDESTROY itself does not reach them.
class VGUI_API CComboSubclassWnd : public CObject
{
public:
    CComboSubclassWnd() = default;
    // Unhooks.
    ~CComboSubclassWnd() override;

    // Makes this the newest hook of the window, after taking it off the one that it hooked before. FALSE,
    // with nothing changed, for a window that does not exist or belongs to another thread. Null unhooks,
    // which always succeeds.
    virtual BOOL HookWindow(HWND hWnd);

    // Called for each message of the window. What an override does not handle it hands to this one, which
    // passes it to the next older hook or to the window's own procedure. Without a hooked window: 0.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);

    HWND m_hWnd = nullptr;                // the hooked window
    WNDPROC m_pOldWndProc = nullptr;      // the procedure in place before the window's first hook
    CComboSubclassWnd* m_pNext = nullptr; // the next older hook on the window

private:
    using Chain = VHookChain<CComboSubclassWnd, CComboSubclassWndMap>;
};

// The newest hook of each hooked window, one map for the process.
class VGUI_API CComboSubclassWndMap : private CMapPtrToPtr
{
public:
    // The one map.
    static CComboSubclassWndMap& Instance();

    // Null when the window has no hook.
    [[nodiscard]] CComboSubclassWnd* GetNewest(HWND hWnd) const;
    // Sets the newest hook; null removes the window's entry.
    void SetNewest(HWND hWnd, CComboSubclassWnd* pHook);

private:
    CComboSubclassWndMap() = default;
};
