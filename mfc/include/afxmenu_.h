// Menus. Part of afxwin.h.
#pragma once

#include "afx.h"
#include "afxver_.h"

#include <windows.h>

class CBitmap;
class CWnd;

// A menu or pop-up menu. The object owns the handle that it created, loaded or had attached and destroys it
// with itself; a menu that was given to a window or put into another menu is detached by its user. Positions
// and identifiers follow the MF_BYPOSITION and MF_BYCOMMAND flags.
class AFX_SUBSET_API CMenu : public CObject
{
    DECLARE_DYNCREATE(CMenu)

public:
    HMENU m_hMenu;

    CMenu();
    ~CMenu() override;
    CMenu(const CMenu&) = delete;
    CMenu& operator=(const CMenu&) = delete;

    operator HMENU() const;
    // Null also for a null object.
    HMENU GetSafeHmenu() const;
    BOOL operator==(const CMenu& menu) const;
    BOOL operator!=(const CMenu& menu) const;
    // The object that holds the handle, else a temporary one. Null for a null handle.
    static CMenu* PASCAL FromHandle(HMENU hMenu);
    static void PASCAL DeleteTempMap();
    BOOL Attach(HMENU hMenu);
    HMENU Detach();

    BOOL CreateMenu();
    BOOL CreatePopupMenu();
    // The resource is looked for in the current module and then along the chain of extension modules.
    BOOL LoadMenu(LPCTSTR lpszResourceName);
    BOOL LoadMenu(UINT nIDResource);
    BOOL LoadMenuIndirect(const void* lpMenuTemplate);
    BOOL DestroyMenu();

    // Items. With MF_POPUP nIDNewItem is the handle of a pop-up menu, which becomes this menu's.
    BOOL AppendMenu(UINT nFlags, UINT_PTR nIDNewItem = 0, LPCTSTR lpszNewItem = nullptr);
    BOOL AppendMenu(UINT nFlags, UINT_PTR nIDNewItem, const CBitmap* pBmp);
    BOOL InsertMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem = 0, LPCTSTR lpszNewItem = nullptr);
    BOOL InsertMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem, const CBitmap* pBmp);
    BOOL InsertMenuItem(UINT uItem, LPMENUITEMINFO lpMenuItemInfo, BOOL fByPos = FALSE);
    BOOL ModifyMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem = 0, LPCTSTR lpszNewItem = nullptr);
    BOOL ModifyMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem, const CBitmap* pBmp);
    // DeleteMenu destroys the item's pop-up menu, RemoveMenu leaves it to the caller.
    BOOL DeleteMenu(UINT nPosition, UINT nFlags);
    BOOL RemoveMenu(UINT nPosition, UINT nFlags);
    // The bitmaps stay the caller's and must outlive the item.
    BOOL SetMenuItemBitmaps(UINT nPosition, UINT nFlags, const CBitmap* pBmpUnchecked,
                            const CBitmap* pBmpChecked);

    // The previous state, (UINT)-1 when there is no such item.
    UINT CheckMenuItem(UINT nIDCheckItem, UINT nCheck);
    UINT EnableMenuItem(UINT nIDEnableItem, UINT nEnable);
    BOOL CheckMenuRadioItem(UINT nIDFirst, UINT nIDLast, UINT nIDItem, UINT nFlags);
    BOOL SetDefaultItem(UINT uItem, BOOL fByPos = FALSE);
    UINT GetDefaultItem(UINT gmdiFlags, BOOL fByPos = FALSE);

    // (UINT)-1 on failure; GetMenuItemID answers it for an item with a pop-up menu, too.
    UINT GetMenuItemCount() const;
    UINT GetMenuItemID(int nPos) const;
    UINT GetMenuState(UINT nID, UINT nFlags) const;
    // Characters copied without the terminating zero, which is counted in nMaxCount. With a null buffer the
    // text's length.
    int GetMenuString(UINT nIDItem, LPTSTR lpString, int nMaxCount, UINT nFlags) const;
    int GetMenuString(UINT nIDItem, CString& rString, UINT nFlags) const;
    // Null when the item has no pop-up menu; may be temporary.
    CMenu* GetSubMenu(int nPos) const;
    BOOL GetMenuItemInfo(UINT uItem, LPMENUITEMINFO lpMenuItemInfo, BOOL fByPos = FALSE);
    BOOL SetMenuItemInfo(UINT uItem, LPMENUITEMINFO lpMenuItemInfo, BOOL fByPos = FALSE);
    BOOL GetMenuInfo(LPMENUINFO lpcmi) const;
    BOOL SetMenuInfo(LPCMENUINFO lpcmi);
    DWORD GetMenuContextHelpId() const;
    BOOL SetMenuContextHelpId(DWORD dwContextHelpId);

    // Position in screen coordinates. pWnd gets the menu's messages. With TPM_RETURNCMD the answer is the
    // chosen identifier, 0 when there is none. lpRect of the first is ignored.
    BOOL TrackPopupMenu(UINT nFlags, int x, int y, CWnd* pWnd, LPCRECT lpRect = nullptr);
    BOOL TrackPopupMenuEx(UINT fuFlags, int x, int y, CWnd* pWnd, LPTPMPARAMS lptpm);

    // For menus with MF_OWNERDRAW items; they do nothing here.
    virtual void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct);
    virtual void MeasureItem(LPMEASUREITEMSTRUCT lpMeasureItemStruct);
};
