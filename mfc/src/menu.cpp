// CMenu.
#include <afxwin.h>

#include "gdi_handle_traits.h"

using afx_subset::MenuMap;

IMPLEMENT_DYNCREATE(CMenu, CObject)

namespace afx_subset
{

CMenu* HandleTraits<CMenu>::Make(HMENU handle)
{
    CMenu* menu = new CMenu;
    menu->m_hMenu = handle;
    return menu;
}

void HandleTraits<CMenu>::Drop(CMenu* menu)
{
    menu->m_hMenu = nullptr;
    delete menu;
}

} // namespace afx_subset

namespace
{

HBITMAP BitmapOf(const CBitmap* bitmap)
{
    return bitmap == nullptr ? nullptr : static_cast<HBITMAP>(bitmap->m_hObject);
}

// Menu functions take a bitmap in the place of the text.
LPCTSTR AsItemText(const CBitmap* bitmap)
{
    return reinterpret_cast<LPCTSTR>(BitmapOf(bitmap));
}

} // namespace

// ---- The handle

CMenu::CMenu() : m_hMenu(nullptr) {}

CMenu::~CMenu()
{
    DestroyMenu();
}

CMenu::operator HMENU() const
{
    return GetSafeHmenu();
}

HMENU CMenu::GetSafeHmenu() const
{
    return this == nullptr ? nullptr : m_hMenu;
}

BOOL CMenu::operator==(const CMenu& menu) const
{
    return m_hMenu == menu.m_hMenu;
}

BOOL CMenu::operator!=(const CMenu& menu) const
{
    return m_hMenu != menu.m_hMenu;
}

CMenu* PASCAL CMenu::FromHandle(HMENU hMenu)
{
    CMenu* menu = MenuMap().FromHandle(hMenu);
    // A temporary object whose menu was destroyed or detached through it stands again for the same value,
    // which the system has given to a new menu.
    if (menu != nullptr)
        menu->m_hMenu = hMenu;
    return menu;
}

void PASCAL CMenu::DeleteTempMap()
{
    MenuMap().DropTemporaries();
}

BOOL CMenu::Attach(HMENU hMenu)
{
    ASSERT(m_hMenu == nullptr);
    if (hMenu == nullptr)
        return FALSE;
    // Only a program error gets here with another menu still held; that one goes on living without us.
    Detach();
    m_hMenu = hMenu;
    MenuMap().SetPermanent(hMenu, this);
    return TRUE;
}

HMENU CMenu::Detach()
{
    const HMENU handle = m_hMenu;
    if (handle != nullptr && MenuMap().Permanent(handle) == this)
        MenuMap().RemoveHandle(handle);
    m_hMenu = nullptr;
    return handle;
}

BOOL CMenu::CreateMenu()
{
    return Attach(::CreateMenu());
}

BOOL CMenu::CreatePopupMenu()
{
    return Attach(::CreatePopupMenu());
}

BOOL CMenu::LoadMenu(LPCTSTR lpszResourceName)
{
    return Attach(::LoadMenu(AfxFindResourceHandle(lpszResourceName, RT_MENU), lpszResourceName));
}

BOOL CMenu::LoadMenu(UINT nIDResource)
{
    return LoadMenu(MAKEINTRESOURCE(nIDResource));
}

BOOL CMenu::LoadMenuIndirect(const void* lpMenuTemplate)
{
    return lpMenuTemplate != nullptr && Attach(::LoadMenuIndirect(lpMenuTemplate));
}

BOOL CMenu::DestroyMenu()
{
    return m_hMenu != nullptr && ::DestroyMenu(Detach());
}

// ---- Items

BOOL CMenu::AppendMenu(UINT nFlags, UINT_PTR nIDNewItem, LPCTSTR lpszNewItem)
{
    return ::AppendMenu(m_hMenu, nFlags, nIDNewItem, lpszNewItem);
}

BOOL CMenu::AppendMenu(UINT nFlags, UINT_PTR nIDNewItem, const CBitmap* pBmp)
{
    return ::AppendMenu(m_hMenu, nFlags | MF_BITMAP, nIDNewItem, AsItemText(pBmp));
}

BOOL CMenu::InsertMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem, LPCTSTR lpszNewItem)
{
    return ::InsertMenu(m_hMenu, nPosition, nFlags, nIDNewItem, lpszNewItem);
}

BOOL CMenu::InsertMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem, const CBitmap* pBmp)
{
    return ::InsertMenu(m_hMenu, nPosition, nFlags | MF_BITMAP, nIDNewItem, AsItemText(pBmp));
}

BOOL CMenu::InsertMenuItem(UINT uItem, LPMENUITEMINFO lpMenuItemInfo, BOOL fByPos)
{
    return ::InsertMenuItem(m_hMenu, uItem, fByPos, lpMenuItemInfo);
}

BOOL CMenu::ModifyMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem, LPCTSTR lpszNewItem)
{
    return ::ModifyMenu(m_hMenu, nPosition, nFlags, nIDNewItem, lpszNewItem);
}

BOOL CMenu::ModifyMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem, const CBitmap* pBmp)
{
    return ::ModifyMenu(m_hMenu, nPosition, nFlags | MF_BITMAP, nIDNewItem, AsItemText(pBmp));
}

BOOL CMenu::DeleteMenu(UINT nPosition, UINT nFlags)
{
    return ::DeleteMenu(m_hMenu, nPosition, nFlags);
}

BOOL CMenu::RemoveMenu(UINT nPosition, UINT nFlags)
{
    return ::RemoveMenu(m_hMenu, nPosition, nFlags);
}

BOOL CMenu::SetMenuItemBitmaps(UINT nPosition, UINT nFlags, const CBitmap* pBmpUnchecked,
                               const CBitmap* pBmpChecked)
{
    return ::SetMenuItemBitmaps(m_hMenu, nPosition, nFlags, BitmapOf(pBmpUnchecked), BitmapOf(pBmpChecked));
}

UINT CMenu::CheckMenuItem(UINT nIDCheckItem, UINT nCheck)
{
    return ::CheckMenuItem(m_hMenu, nIDCheckItem, nCheck);
}

UINT CMenu::EnableMenuItem(UINT nIDEnableItem, UINT nEnable)
{
    return ::EnableMenuItem(m_hMenu, nIDEnableItem, nEnable);
}

BOOL CMenu::CheckMenuRadioItem(UINT nIDFirst, UINT nIDLast, UINT nIDItem, UINT nFlags)
{
    return ::CheckMenuRadioItem(m_hMenu, nIDFirst, nIDLast, nIDItem, nFlags);
}

BOOL CMenu::SetDefaultItem(UINT uItem, BOOL fByPos)
{
    return ::SetMenuDefaultItem(m_hMenu, uItem, fByPos);
}

UINT CMenu::GetDefaultItem(UINT gmdiFlags, BOOL fByPos)
{
    return ::GetMenuDefaultItem(m_hMenu, fByPos, gmdiFlags);
}

// ---- Questions

UINT CMenu::GetMenuItemCount() const
{
    return ::GetMenuItemCount(m_hMenu);
}

UINT CMenu::GetMenuItemID(int nPos) const
{
    return ::GetMenuItemID(m_hMenu, nPos);
}

UINT CMenu::GetMenuState(UINT nID, UINT nFlags) const
{
    return ::GetMenuState(m_hMenu, nID, nFlags);
}

int CMenu::GetMenuString(UINT nIDItem, LPTSTR lpString, int nMaxCount, UINT nFlags) const
{
    return ::GetMenuString(m_hMenu, nIDItem, lpString, nMaxCount, nFlags);
}

int CMenu::GetMenuString(UINT nIDItem, CString& rString, UINT nFlags) const
{
    const int length = ::GetMenuString(m_hMenu, nIDItem, nullptr, 0, nFlags);
    if (length <= 0) {
        rString.Empty();
        return 0;
    }
    const int copied = ::GetMenuString(m_hMenu, nIDItem, rString.GetBuffer(length), length + 1, nFlags);
    rString.ReleaseBuffer(copied);
    return copied;
}

CMenu* CMenu::GetSubMenu(int nPos) const
{
    return FromHandle(::GetSubMenu(m_hMenu, nPos));
}

BOOL CMenu::GetMenuItemInfo(UINT uItem, LPMENUITEMINFO lpMenuItemInfo, BOOL fByPos)
{
    return ::GetMenuItemInfo(m_hMenu, uItem, fByPos, lpMenuItemInfo);
}

BOOL CMenu::SetMenuItemInfo(UINT uItem, LPMENUITEMINFO lpMenuItemInfo, BOOL fByPos)
{
    return ::SetMenuItemInfo(m_hMenu, uItem, fByPos, lpMenuItemInfo);
}

BOOL CMenu::GetMenuInfo(LPMENUINFO lpcmi) const
{
    return ::GetMenuInfo(m_hMenu, lpcmi);
}

BOOL CMenu::SetMenuInfo(LPCMENUINFO lpcmi)
{
    return ::SetMenuInfo(m_hMenu, lpcmi);
}

DWORD CMenu::GetMenuContextHelpId() const
{
    return ::GetMenuContextHelpId(m_hMenu);
}

BOOL CMenu::SetMenuContextHelpId(DWORD dwContextHelpId)
{
    return ::SetMenuContextHelpId(m_hMenu, dwContextHelpId);
}

// ---- Tracking and drawing

BOOL CMenu::TrackPopupMenu(UINT nFlags, int x, int y, CWnd* pWnd, LPCRECT lpRect)
{
    return ::TrackPopupMenu(m_hMenu, nFlags, x, y, 0, pWnd->GetSafeHwnd(), lpRect);
}

BOOL CMenu::TrackPopupMenuEx(UINT fuFlags, int x, int y, CWnd* pWnd, LPTPMPARAMS lptpm)
{
    return ::TrackPopupMenuEx(m_hMenu, fuFlags, x, y, pWnd->GetSafeHwnd(), lptpm);
}

void CMenu::DrawItem(LPDRAWITEMSTRUCT /*lpDrawItemStruct*/) {}

void CMenu::MeasureItem(LPMEASUREITEMSTRUCT /*lpMeasureItemStruct*/) {}
