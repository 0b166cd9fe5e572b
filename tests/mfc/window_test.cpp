// CWnd: handle maps, creation, subclassing and the order in which a window ends.
#include "tests/support/census.h"
#include "tests/support/pump.h"

#include <afxwin.h>

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace
{

using Log = std::vector<std::string>;

class LoggingWnd : public CWnd
{
public:
    explicit LoggingWnd(Log& log) : m_log(log) {}
    BOOL Open(CWnd* parent = nullptr)
    {
        const DWORD style = parent != nullptr ? WS_CHILD : WS_POPUP;
        return CreateEx(0, AfxRegisterWndClass(0), _T("logging"), style, CRect(0, 0, 50, 50), parent, 0);
    }
    using CWnd::m_pfnSuper;

    bool refuseCreation = false;
    bool throwInCreation = false;
    bool throwInSubclassing = false;

protected:
    void PreSubclassWindow() override
    {
        m_log.push_back(m_hWnd != nullptr ? "PreSubclass" : "PreSubclass without window");
        if (throwInSubclassing)
            AfxThrowUserException();
    }
    void PostNcDestroy() override
    {
        m_log.push_back(m_hWnd == nullptr ? "PostNcDestroy" : "PostNcDestroy with window");
    }
    afx_msg BOOL OnNcCreate(LPCREATESTRUCT create)
    {
        m_log.push_back("NcCreate");
        return CWnd::OnNcCreate(create);
    }
    afx_msg int OnCreate(LPCREATESTRUCT create)
    {
        m_log.push_back("Create");
        if (throwInCreation)
            AfxThrowUserException();
        return refuseCreation ? -1 : CWnd::OnCreate(create);
    }
    afx_msg void OnDestroy()
    {
        m_log.push_back("Destroy");
        CWnd::OnDestroy();
    }
    afx_msg void OnNcDestroy()
    {
        m_log.push_back("NcDestroy");
        CWnd::OnNcDestroy();
    }
    DECLARE_MESSAGE_MAP()

private:
    Log& m_log;
};

BEGIN_MESSAGE_MAP(LoggingWnd, CWnd)
    ON_WM_NCCREATE()
    ON_WM_CREATE()
    ON_WM_DESTROY()
    ON_WM_NCDESTROY()
END_MESSAGE_MAP()

class Window : public support::CensusTest
{
};

} // namespace

TEST_F(Window, TheObjectIsAttachedBeforeTheFirstMessage)
{
    Log log;
    LoggingWnd window(log);
    ASSERT_TRUE(window.Open());
    EXPECT_EQ(log, (Log{"PreSubclass", "NcCreate", "Create"}));
    EXPECT_EQ(CWnd::FromHandlePermanent(window.m_hWnd), &window);

    log.clear();
    const HWND handle = window.m_hWnd;
    EXPECT_TRUE(window.DestroyWindow());
    EXPECT_EQ(log, (Log{"Destroy", "NcDestroy", "PostNcDestroy"}));
    EXPECT_EQ(window.m_hWnd, nullptr);
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
    EXPECT_FALSE(window.DestroyWindow());
}

TEST_F(Window, PostNcDestroyRunsOnceHoweverCreationFails)
{
    Log log;
    LoggingWnd refusing(log);
    refusing.refuseCreation = true;
    EXPECT_FALSE(refusing.Open());
    EXPECT_EQ(std::count(log.begin(), log.end(), "PostNcDestroy"), 1);
    EXPECT_EQ(refusing.m_hWnd, nullptr);

    log.clear();
    LoggingWnd throwing(log);
    throwing.throwInCreation = true;
    EXPECT_FALSE(throwing.Open());
    EXPECT_EQ(std::count(log.begin(), log.end(), "PostNcDestroy"), 1);

    log.clear();
    LoggingWnd classless(log);
    EXPECT_FALSE(classless.CreateEx(0, _T("no such window class"), nullptr, WS_POPUP, CRect(), nullptr, 0));
    EXPECT_EQ(log, (Log{"PostNcDestroy"}));
    // The next window of the thread is not mistaken for the one that never came.
    const HWND other =
        ::CreateWindow(_T("STATIC"), nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(CWnd::FromHandlePermanent(other), nullptr);
    ::DestroyWindow(other);
}

TEST_F(Window, DestructorTakesTheWindowAlong)
{
    Log log;
    HWND handle = nullptr;
    {
        LoggingWnd window(log);
        ASSERT_TRUE(window.Open());
        handle = window.m_hWnd;
    }
    EXPECT_FALSE(::IsWindow(handle));
}

TEST_F(Window, TemporariesStandForTheSameHandleUntilIdle)
{
    const HWND handle =
        ::CreateWindow(_T("STATIC"), nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
    CWnd* const temporary = CWnd::FromHandle(handle);
    EXPECT_EQ(CWnd::FromHandle(handle), temporary);
    EXPECT_EQ(CWnd::FromHandle(nullptr), nullptr);
    AfxLockTempMaps();
    support::RunIdle();
    EXPECT_EQ(CWnd::FromHandle(handle), temporary);
    EXPECT_TRUE(AfxUnlockTempMaps(TRUE));
    EXPECT_TRUE(::IsWindow(handle)) << "dropping the object must not touch the window";
    {
        CWnd owner;
        ASSERT_TRUE(owner.Attach(handle));
        EXPECT_EQ(CWnd::FromHandle(handle), &owner);
        EXPECT_EQ(owner.Detach(), handle);
    }
    ::DestroyWindow(handle);
}

TEST_F(Window, SubclassingIsUndoneToTheWindowsOwnProcedure)
{
    const HWND handle =
        ::CreateWindow(_T("EDIT"), nullptr, WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    const LONG_PTR own = ::GetWindowLongPtr(handle, GWLP_WNDPROC);
    Log log;
    LoggingWnd window(log);
    ASSERT_TRUE(window.SubclassWindow(handle));
    EXPECT_EQ(log, (Log{"PreSubclass"}));
    LoggingWnd second(log);
    EXPECT_FALSE(second.SubclassWindow(handle)) << "a window has one permanent object";
    EXPECT_FALSE(window.SubclassWindow(handle));
    EXPECT_FALSE(second.SubclassWindow(nullptr));
    EXPECT_EQ(window.UnsubclassWindow(), handle);
    EXPECT_EQ(::GetWindowLongPtr(handle, GWLP_WNDPROC), own);
    EXPECT_EQ(window.UnsubclassWindow(), nullptr);
    EXPECT_EQ(log, (Log{"PreSubclass"}));

    window.throwInSubclassing = true;
    EXPECT_THROW(window.SubclassWindow(handle), CUserException*);
    EXPECT_EQ(window.m_hWnd, nullptr);
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
    EXPECT_EQ(::GetWindowLongPtr(handle, GWLP_WNDPROC), own);
    // A window that was only attached goes with its object, and is forgotten.
    std::make_unique<CWnd>()->Attach(handle);
    EXPECT_FALSE(::IsWindow(handle));
    EXPECT_EQ(CWnd::FromHandlePermanent(handle), nullptr);
}

TEST_F(Window, NullPointersHaveNoHandle)
{
    CWnd* volatile none = nullptr;
    EXPECT_EQ(none->GetSafeHwnd(), nullptr);
    EXPECT_EQ(CWnd::wndTopMost.GetSafeHwnd(), HWND_TOPMOST);
    Log log;
    LoggingWnd window(log);
    ASSERT_TRUE(window.Open());
    EXPECT_EQ(window.GetDlgItem(4711), nullptr);
    CString text(_T("old"));
    EXPECT_EQ(window.GetDlgItemText(4711, text), 0);
    EXPECT_TRUE(text.IsEmpty());
}

TEST_F(Window, OwnersAndFramesAreFound)
{
    auto* const frame = new CFrameWnd;
    ASSERT_TRUE(frame->Create(nullptr, _T("frame"), WS_OVERLAPPEDWINDOW, CRect(0, 0, 200, 100)));
    Log log;
    LoggingWnd child(log);
    ASSERT_TRUE(child.Open(frame));
    LoggingWnd grandChild(log);
    ASSERT_TRUE(grandChild.Open(&child));
    EXPECT_EQ(grandChild.GetParentFrame(), frame);
    EXPECT_EQ(grandChild.GetTopLevelFrame(), frame);
    EXPECT_EQ(frame->GetTopLevelFrame(), frame);
    EXPECT_EQ(frame->GetParentFrame(), nullptr);
    EXPECT_EQ(grandChild.GetTopLevelParent(), frame);
    EXPECT_EQ(grandChild.GetOwner(), &child);
    grandChild.SetOwner(frame);
    EXPECT_EQ(grandChild.GetOwner(), frame);
    frame->DestroyWindow(); // deletes itself, and the children's windows with it
    EXPECT_EQ(grandChild.m_hWnd, nullptr);
}
