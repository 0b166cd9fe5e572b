// Which module is current, where resources are found, threads with objects of their own.
#include "tests/support/census.h"
#include "tests/support/pump.h"

#include <afxdllx.h>
#include <afxwin.h>

#include <gtest/gtest.h>

namespace
{

HMODULE System(LPCTSTR name)
{
    return ::GetModuleHandle(name);
}

} // namespace

TEST(ModuleState, AManagedStateLastsForItsBlock)
{
    CWinApp* const app = AfxGetApp();
    ASSERT_NE(app, nullptr);
    {
        AFX_MODULE_STATE other(TRUE);
        AFX_MANAGE_STATE(&other);
        EXPECT_EQ(AfxGetModuleState(), &other);
        EXPECT_EQ(AfxGetApp(), nullptr);
        AfxSetResourceHandle(System(_T("user32.dll")));
        EXPECT_EQ(AfxGetResourceHandle(), System(_T("user32.dll")));
    }
    EXPECT_EQ(AfxGetApp(), app);
    EXPECT_EQ(AfxGetResourceHandle(), ::GetModuleHandle(nullptr));
}

TEST(ModuleState, MapsBelongToTheState)
{
    const HWND handle =
        ::CreateWindow(_T("STATIC"), nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    AFX_MODULE_STATE other(TRUE);
    AFX_MODULE_STATE* seenInside = nullptr;
    class Probe : public CWnd
    {
    public:
        AFX_MODULE_STATE** seen = nullptr;

    protected:
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
        {
            if (message == WM_USER)
                *seen = AfxGetModuleState();
            return CWnd::WindowProc(message, wParam, lParam);
        }
    } probe;
    probe.seen = &seenInside;
    {
        AFX_MANAGE_STATE(&other);
        ASSERT_TRUE(probe.SubclassWindow(handle));
        EXPECT_EQ(CWnd::FromHandlePermanent(handle), &probe);
    }
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
    // The window's messages are handled in the state that its object was attached in.
    ::SendMessage(handle, WM_USER, 0, 0);
    EXPECT_EQ(seenInside, &other);
    EXPECT_EQ(AfxGetModuleState(), AfxGetAppModuleState());
    AFX_MANAGE_STATE(&other);
    probe.DestroyWindow();
}

TEST(ModuleState, ResourcesAreFoundAlongTheChain)
{
    // A resource of a system library stands for an extension DLL's.
    const HMODULE library = ::LoadLibrary(_T("shell32.dll"));
    ASSERT_NE(library, nullptr);
    const LPCTSTR icon = MAKEINTRESOURCE(1);
    ASSERT_NE(::FindResource(library, icon, RT_GROUP_ICON), nullptr);
    EXPECT_NE(AfxFindResourceHandle(icon, RT_GROUP_ICON), library);

    AFX_EXTENSION_MODULE extension{};
    EXPECT_FALSE(AfxInitExtensionModule(extension, nullptr));
    ASSERT_TRUE(AfxInitExtensionModule(extension, library));
    auto* const link = new CDynLinkLibrary(extension);
    EXPECT_EQ(AfxFindResourceHandle(icon, RT_GROUP_ICON), library);
    EXPECT_EQ(AfxFindResourceHandle(_T("NO SUCH THING"), RT_BITMAP), AfxGetResourceHandle());
    EXPECT_EQ(link->m_hModule, library);
    AfxTermExtensionModule(extension); // deletes the link
    EXPECT_NE(AfxFindResourceHandle(icon, RT_GROUP_ICON), library);
    ::FreeLibrary(library);
}

TEST(ModuleState, WorkerThreadsHaveTheirOwnObject)
{
    struct Seen {
        CWinThread* thread = nullptr;
        CWinApp* app = nullptr;
    } seen;
    CWinThread* const thread = AfxBeginThread(
        [](LPVOID parameter) -> UINT {
            auto& result = *static_cast<Seen*>(parameter);
            result.thread = AfxGetThread();
            result.app = AfxGetApp();
            return 17;
        },
        &seen, THREAD_PRIORITY_NORMAL, 0, CREATE_SUSPENDED);
    ASSERT_NE(thread, nullptr);
    thread->m_bAutoDelete = FALSE;
    thread->ResumeThread();
    ASSERT_EQ(::WaitForSingleObject(thread->m_hThread, 5000), WAIT_OBJECT_0);
    DWORD code = 0;
    ::GetExitCodeThread(thread->m_hThread, &code);
    EXPECT_EQ(code, 17u);
    EXPECT_EQ(seen.thread, thread);
    EXPECT_EQ(seen.app, AfxGetApp());
    delete thread;
}
