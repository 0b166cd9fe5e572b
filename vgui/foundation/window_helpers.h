// Scoped changes of a window's state, a record of a window's place, and the way to open links and programs.
#pragma once

#include "vgui/export.h"

#include <afxwin.h>
#include <shellapi.h>

// The base of the scoped objects. It keeps the window's handle, not the object, so that both the window and
// its object may go before the scope ends; undoing then does nothing. The window stays its owner's unless
// said. A null object, or one without a window, makes every scope do nothing.
class VGUI_API VoWindowFuncBase
{
public:
    // Takes the window of an object.
    explicit VoWindowFuncBase(CWnd* pWnd);
    virtual ~VoWindowFuncBase() = default;
    VoWindowFuncBase(const VoWindowFuncBase&) = delete;
    VoWindowFuncBase& operator=(const VoWindowFuncBase&) = delete;

protected:
    HWND m_hWnd; // null for none
};

// Holds back a window's redrawing with WM_SETREDRAW. The system marks a window visible when its redrawing
// is switched on again, so lock windows that are shown.
class VGUI_API VoWindowLock : public VoWindowFuncBase
{
public:
    // Locks the window.
    explicit VoWindowLock(CWnd* pWnd);
    // Unlocks.
    ~VoWindowLock() override;

    // Unlocks the window held so far and locks this one. False, with nothing locked, without a window.
    bool LockWindow(CWnd* pWnd);
    // Lets the window draw again and invalidates all of it. False when nothing was locked or the window is
    // gone.
    bool UnLockWindow();
};

// Shows or hides a window. If it was visible before, destruction takes back two commands: a hidden window
// (SW_HIDE) is shown, and a minimised one (SW_MINIMIZE) is maximised; this is intended. Others stay.
class VGUI_API VoWindowShow : public VoWindowFuncBase
{
public:
    // Calls ShowWindow with an SW_ value.
    VoWindowShow(CWnd* pWnd, int nCmdShow);
    ~VoWindowShow() override;

private:
    int m_nCmdShow; // -1: nothing to undo
};

// Enables or disables a window; destruction does the opposite, whatever the state was before.
class VGUI_API VoWindowEnable : public VoWindowFuncBase
{
public:
    // Enables (true) or disables the window.
    VoWindowEnable(CWnd* pWnd, bool bEnable);
    ~VoWindowEnable() override;

private:
    bool m_bEnable;
};

// Destroys the window at the end of the scope.
class VGUI_API VoWindowDestory : public VoWindowFuncBase
{
public:
    // Takes the window to be destroyed.
    explicit VoWindowDestory(CWnd* pWnd);
    ~VoWindowDestory() override;
};

// Uses a lock that outlives the scope: locks on construction and unlocks on destruction. A null lock is
// allowed.
class VGUI_API CSingleWinLock
{
public:
    // Locks the window with pLock, which stays the caller's and must outlive this object.
    CSingleWinLock(VoWindowLock* pLock, CWnd* pWnd);
    virtual ~CSingleWinLock();
    CSingleWinLock(const CSingleWinLock&) = delete;
    CSingleWinLock& operator=(const CSingleWinLock&) = delete;

private:
    VoWindowLock* m_pLock;
};

// Remembers a top-level window's place and size, in screen pixels, and puts the window back there. The
// record lives in memory only. The window object is not owned and must outlive the record's use of it.
class VGUI_API VWndPos
{
public:
    static constexpr int Unknown = -1; // a coordinate or a size that was not recorded

    // A record with these values: the upper left corner and the size in pixels, Unknown for what is not
    // known, and whether the window is maximised.
    explicit VWndPos(CWnd* pWnd = nullptr, int x = Unknown, int y = Unknown, int cx = Unknown,
                     int cy = Unknown, bool bMaximized = false);

    // Sets the window. False, keeping the one before, when there is no window.
    bool Init(CWnd* pWnd);

    // Records the upper left corner, in screen pixels; the window is not moved.
    void SetPos(int x, int y);
    // Records the size in pixels; the window is not sized.
    void SetSize(int cx, int cy);
    // The recorded left edge in screen pixels, Unknown for none.
    [[nodiscard]] int GetXPos() const { return m_x; }
    // The recorded upper edge in screen pixels, Unknown for none.
    [[nodiscard]] int GetYPos() const { return m_y; }
    // The recorded width in pixels, Unknown for none.
    [[nodiscard]] int GetXSize() const { return m_cx; }
    // The recorded height in pixels, Unknown for none.
    [[nodiscard]] int GetYSize() const { return m_cy; }
    // Whether Save and Restore deal with the size, too; they do at first.
    void SetRecordSize(bool bRecordSize) { m_bRecordSize = bRecordSize; }

    // Takes place, size and the maximised state from the window. False without a window.
    bool Save();
    // Maximises the window, or moves and sizes it as far as place and size are known. A place that is not
    // wholly on the main screen, or an empty or negative size, changes nothing. False when nothing was
    // changed.
    bool Restore() const;

private:
    [[nodiscard]] bool HasWindow() const;

    int m_x;
    int m_y;
    int m_cx;
    int m_cy;
    bool m_bMaximized;
    bool m_bRecordSize = true;
    CWnd* m_pWnd;
};

// Whether a window can be put at a place, in screen pixels: it lies wholly on the main screen's work area at
// the origin, and at least 10 pixels of the screen remain to the right of and below its top left corner. The
// right and bottom edges (not the size) must be 10 or more.
VGUI_API bool IsValideWndPos(const CRect& rect);

// Opens what a request describes; the signature of ShellExecuteEx.
using VGShellOpener = BOOL(WINAPI*)(SHELLEXECUTEINFOW* request);

// The one way in which the library starts other programs and opens links. verb null is the default one;
// target is a file, a program or a URL; nShowCmd is an SW_ value; fMask is that of SHELLEXECUTEINFO. FALSE
// when nothing was opened, as for a null or empty target.
VGUI_API BOOL VGShellExecute(LPCWSTR verb, LPCWSTR target, int nShowCmd, ULONG fMask = 0);

// Makes VGShellExecute call something else than the shell, so that a host can open links itself and a test
// can watch. Null brings the shell back. Returns the opener used so far, never null.
VGUI_API VGShellOpener VGSetShellOpener(VGShellOpener opener);
