#include "tests/support/census.h"

#include <afxwin.h>
#include <gtest/gtest.h>

namespace
{

class MenuTest : public support::CensusTest
{
};

TEST_F(MenuTest, AMenuOwnsItsHandle)
{
    HMENU handle = nullptr;
    {
        CMenu menu;
        ASSERT_TRUE(menu.CreatePopupMenu());
        handle = menu.GetSafeHmenu();
        EXPECT_EQ(CMenu::FromHandle(handle), &menu);
    }
    EXPECT_FALSE(::IsMenu(handle));

    CMenu detached;
    ASSERT_TRUE(detached.CreateMenu());
    handle = detached.Detach();
    EXPECT_EQ(detached.m_hMenu, nullptr);
    EXPECT_FALSE(detached.DestroyMenu());
    EXPECT_TRUE(::IsMenu(handle));
    EXPECT_FALSE(detached.Attach(nullptr));
    EXPECT_TRUE(detached.Attach(handle));
    EXPECT_TRUE(detached.DestroyMenu());
    EXPECT_FALSE(::IsMenu(handle));
}

TEST_F(MenuTest, SubMenusAreTemporaryObjects)
{
    CMenu bar;
    ASSERT_TRUE(bar.CreateMenu());
    CMenu popup;
    ASSERT_TRUE(popup.CreatePopupMenu());
    const HMENU handle = popup.m_hMenu;
    ASSERT_TRUE(bar.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(popup.Detach()), _T("文件")));
    ASSERT_TRUE(bar.AppendMenu(MF_STRING, 7, _T("Item")));

    CMenu* sub = bar.GetSubMenu(0);
    ASSERT_NE(sub, nullptr);
    EXPECT_EQ(sub->m_hMenu, handle);
    EXPECT_EQ(bar.GetSubMenu(0), sub);
    EXPECT_EQ(bar.GetSubMenu(1), nullptr);
    EXPECT_EQ(bar.GetSubMenu(5), nullptr);
    EXPECT_EQ(bar.GetMenuItemID(0), static_cast<UINT>(-1));
    CMenu::DeleteTempMap();
    EXPECT_TRUE(::IsMenu(handle)) << "a temporary object destroys nothing";
}

TEST_F(MenuTest, ItemsAreFoundByCommandAndPosition)
{
    CMenu menu;
    ASSERT_TRUE(menu.CreatePopupMenu());
    EXPECT_TRUE(menu.AppendMenu(MF_STRING, 101, _T("First")));
    EXPECT_TRUE(menu.AppendMenu(MF_SEPARATOR));
    EXPECT_TRUE(menu.InsertMenu(101, MF_BYCOMMAND, 100, _T("Zeroth")));
    EXPECT_EQ(menu.GetMenuItemCount(), 3u);
    EXPECT_EQ(menu.GetMenuItemID(0), 100u);
    EXPECT_TRUE(menu.ModifyMenu(0, MF_BYPOSITION | MF_STRING, 102, _T("Changed")));
    EXPECT_EQ(menu.GetMenuItemID(0), 102u);

    EXPECT_EQ(menu.CheckMenuItem(101, MF_CHECKED), static_cast<UINT>(MF_UNCHECKED));
    EXPECT_EQ(menu.CheckMenuItem(101, MF_UNCHECKED), static_cast<UINT>(MF_CHECKED));
    EXPECT_EQ(menu.EnableMenuItem(101, MF_GRAYED), static_cast<UINT>(MF_ENABLED));
    EXPECT_EQ(menu.GetMenuState(101, MF_BYCOMMAND) & MF_GRAYED, static_cast<UINT>(MF_GRAYED));
    EXPECT_EQ(menu.CheckMenuItem(999, MF_CHECKED), static_cast<UINT>(-1));
    EXPECT_EQ(menu.GetMenuState(999, MF_BYCOMMAND), static_cast<UINT>(-1));
    EXPECT_TRUE(menu.SetDefaultItem(101));
    EXPECT_EQ(menu.GetDefaultItem(GMDI_USEDISABLED), 101u);
    EXPECT_EQ(menu.GetDefaultItem(GMDI_USEDISABLED, TRUE), 1u);

    EXPECT_TRUE(menu.DeleteMenu(1, MF_BYPOSITION));
    EXPECT_FALSE(menu.RemoveMenu(101, MF_BYCOMMAND));
    EXPECT_EQ(menu.GetMenuItemCount(), 2u);
    EXPECT_EQ(CMenu().GetMenuItemCount(), static_cast<UINT>(-1));
}

TEST_F(MenuTest, TextsOfAnyLengthAreRead)
{
    CMenu menu;
    ASSERT_TRUE(menu.CreatePopupMenu());
    const CString longText(_T('m'), 700);
    ASSERT_TRUE(menu.AppendMenu(MF_STRING, 1, longText));
    ASSERT_TRUE(menu.AppendMenu(MF_STRING, 2, _T("打开(&O)\tCtrl+O")));

    CString text;
    EXPECT_EQ(menu.GetMenuString(1, text, MF_BYCOMMAND), 700);
    EXPECT_EQ(text, longText);
    const int length = menu.GetMenuString(1, text, MF_BYPOSITION);
    EXPECT_EQ(text, _T("打开(&O)\tCtrl+O"));
    EXPECT_EQ(length, text.GetLength());
    EXPECT_EQ(menu.GetMenuString(77, text, MF_BYCOMMAND), 0);
    EXPECT_TRUE(text.IsEmpty());
    TCHAR buffer[4]{};
    EXPECT_EQ(menu.GetMenuString(1, buffer, 4, MF_BYCOMMAND), 3);
    EXPECT_STREQ(buffer, _T("mmm"));
}

TEST_F(MenuTest, NothingIsLoadedWhereThereIsNothing)
{
    CMenu menu;
    EXPECT_FALSE(menu.LoadMenu(_T("THERE IS NO SUCH MENU")));
    EXPECT_FALSE(menu.LoadMenuIndirect(nullptr));
    EXPECT_EQ(menu.m_hMenu, nullptr);
    EXPECT_EQ(CMenu::FromHandle(nullptr), nullptr);
}

} // namespace
