// The library as a module of this process: the host stays itself, and finds the library's resources.
#include "tests/support/refusals.h"
#include "vgui/foundation/gui_manager.h"
#include "vgui/module.h"
#include "vgui/res/resource.h"

#include <afxdllx.h>

#include <gtest/gtest.h>

TEST(Module, TheHostKeepsItsApplication)
{
    CWinApp* const app = AfxGetApp();
    ASSERT_NE(app, nullptr);
    EXPECT_NE(VGM.Dlg.nCaptionHeight, 0) << "the library must be loaded for this to mean anything";
    EXPECT_EQ(AfxGetThread(), app);
    EXPECT_EQ(app->m_hInstance, ::GetModuleHandle(nullptr));
    EXPECT_EQ(AfxGetInstanceHandle(), ::GetModuleHandle(nullptr));
    EXPECT_EQ(AfxGetResourceHandle(), ::GetModuleHandle(nullptr));
    EXPECT_TRUE(AfxGetModuleState()->m_bControlContainer);
}

TEST(Module, TheHostFindsTheLibrarysResources)
{
    const HINSTANCE library = ::GetModuleHandle(_T("vgui.dll"));
    ASSERT_NE(library, nullptr);
    EXPECT_EQ(AfxFindResourceHandle(MAKEINTRESOURCE(IDB_HELP_GLYPH), RT_BITMAP), library);
    CBitmap glyph;
    EXPECT_TRUE(glyph.LoadBitmap(IDB_HELP_GLYPH));
}

TEST(Module, ARegularDllLinksTheLibraryIntoItsOwnChainOnce)
{
    const auto libraries = [] {
        int count = 0;
        for (const CDynLinkLibrary* link = AfxGetModuleState()->m_libraryList; link != nullptr;
             link = link->m_pNextDLL)
            ++count;
        return count;
    };
    const int hosts = libraries();
    EXPECT_TRUE(InitVguiDLL());
    EXPECT_EQ(libraries(), hosts) << "the host has the library already";

    AFX_MODULE_STATE regularDll(TRUE);
    AFX_MANAGE_STATE(&regularDll);
    EXPECT_EQ(libraries(), 0);
    EXPECT_TRUE(InitVguiDLL());
    EXPECT_TRUE(InitVguiDLL());
    EXPECT_EQ(libraries(), 1);
    EXPECT_EQ(AfxFindResourceHandle(MAKEINTRESOURCE(IDB_HELP_GLYPH), RT_BITMAP),
              ::GetModuleHandle(_T("vgui.dll")));
}

TEST(Module, ALinkWithoutMemoryIsRefused)
{
    AFX_MODULE_STATE regularDll(TRUE);
    AFX_MANAGE_STATE(&regularDll);
    const auto link = [] {
        BOOL linked = FALSE;
        EXPECT_NO_THROW(linked = InitVguiDLL());
        const CDynLinkLibrary* const made = AfxGetModuleState()->m_libraryList;
        EXPECT_EQ(linked != FALSE, made != nullptr);
        delete made;
    };
    support::ExpectRefusalsSurvived(support::Refused::Memory, {{"link", link}});
}
