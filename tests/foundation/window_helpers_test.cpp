#include "vgui/foundation/window_helpers.h"

#include "tests/foundation/opened_links.h"
#include "tests/support/host_test.h"

#include <climits>
#include <utility>

namespace
{

using support::HostWnd;

class WindowHelpersTest : public support::CensusTest
{
protected:
    void SetUp() override { ASSERT_TRUE(m_window.Open(CSize(200, 150), WS_OVERLAPPEDWINDOW)); }

    [[nodiscard]] CRect Place() const
    {
        CRect rect;
        m_window.GetWindowRect(&rect);
        return rect;
    }

    HostWnd m_window;
};

} // namespace

TEST_F(WindowHelpersTest, LockHoldsBackDrawing)
{
    m_window.RecordAlso(WM_SETREDRAW);
    {
        VoWindowLock lock(&m_window);
        m_window.Invalidate();
        EXPECT_FALSE(::GetUpdateRect(m_window.m_hWnd, nullptr, FALSE));
        m_window.Clear();
        EXPECT_TRUE(lock.UnLockWindow());
        EXPECT_FALSE(lock.UnLockWindow());
        EXPECT_EQ(m_window.Messages(WM_SETREDRAW).size(), 1u);
        CRect update;
        EXPECT_TRUE(::GetUpdateRect(m_window.m_hWnd, &update, FALSE));
        CRect client;
        m_window.GetClientRect(&client);
        EXPECT_EQ(update, client);

        EXPECT_TRUE(lock.LockWindow(&m_window));
        EXPECT_TRUE(lock.LockWindow(&m_window));
        m_window.Clear();
    }
    const auto redraws = m_window.Messages(WM_SETREDRAW);
    ASSERT_EQ(redraws.size(), 1u);
    EXPECT_EQ(redraws[0].wParam, WPARAM{TRUE});
}

TEST_F(WindowHelpersTest, LockMovesToAnotherWindowOrNone)
{
    HostWnd other;
    ASSERT_TRUE(other.Open(CSize(30, 30)));
    m_window.RecordAlso(WM_SETREDRAW);
    VoWindowLock lock(&m_window);
    EXPECT_TRUE(lock.LockWindow(&other));
    EXPECT_EQ(m_window.Messages(WM_SETREDRAW).size(), 2u);
    EXPECT_FALSE(lock.LockWindow(nullptr));
    EXPECT_FALSE(lock.UnLockWindow());
    CWnd closed;
    EXPECT_FALSE(lock.LockWindow(&closed));
}

TEST_F(WindowHelpersTest, SingleLockUsesALockOfTheCaller)
{
    m_window.RecordAlso(WM_SETREDRAW);
    VoWindowLock lock(nullptr);
    {
        const CSingleWinLock single(&lock, &m_window);
        const CSingleWinLock none(nullptr, &m_window);
        EXPECT_EQ(m_window.Messages(WM_SETREDRAW).size(), 1u);
    }
    EXPECT_EQ(m_window.Messages(WM_SETREDRAW).size(), 2u);
    EXPECT_FALSE(lock.UnLockWindow());
}

TEST_F(WindowHelpersTest, ShowTakesBackHidingAndMinimising)
{
    {
        const VoWindowShow hidden(&m_window, SW_HIDE);
        EXPECT_FALSE(m_window.IsWindowVisible());
    }
    EXPECT_TRUE(m_window.IsWindowVisible());
    {
        const VoWindowShow minimised(&m_window, SW_MINIMIZE);
        EXPECT_TRUE(m_window.IsIconic());
    }
    EXPECT_TRUE(m_window.IsZoomed());
    {
        const VoWindowShow restored(&m_window, SW_RESTORE);
        EXPECT_FALSE(m_window.IsZoomed());
    }
    EXPECT_FALSE(m_window.IsZoomed());
    m_window.ShowWindow(SW_HIDE);
    {
        const VoWindowShow hidden(&m_window, SW_HIDE);
    }
    EXPECT_FALSE(m_window.IsWindowVisible());
    {
        const VoWindowShow shown(&m_window, SW_SHOW);
        EXPECT_TRUE(m_window.IsWindowVisible());
    }
    EXPECT_TRUE(m_window.IsWindowVisible());
}

TEST_F(WindowHelpersTest, EnableAndDestroy)
{
    {
        const VoWindowEnable disabled(&m_window, false);
        EXPECT_FALSE(m_window.IsWindowEnabled());
    }
    EXPECT_TRUE(m_window.IsWindowEnabled());
    {
        const VoWindowEnable enabled(&m_window, true);
        EXPECT_TRUE(m_window.IsWindowEnabled());
    }
    EXPECT_FALSE(m_window.IsWindowEnabled());
    {
        const VoWindowDestory doomed(&m_window);
        EXPECT_TRUE(::IsWindow(m_window.m_hWnd));
    }
    EXPECT_EQ(m_window.m_hWnd, nullptr);
}

TEST_F(WindowHelpersTest, ScopesOutliveTheirWindow)
{
    {
        auto doomed = std::make_unique<HostWnd>();
        ASSERT_TRUE(doomed->Open(CSize(30, 30)));
        VoWindowLock lock(doomed.get());
        const VoWindowShow show(doomed.get(), SW_HIDE);
        const VoWindowEnable enable(doomed.get(), false);
        const VoWindowDestory destroy(doomed.get());
        doomed.reset();
        EXPECT_FALSE(lock.UnLockWindow());
    }
    const VoWindowLock lock(nullptr);
    const VoWindowShow show(nullptr, SW_HIDE);
    const VoWindowEnable enable(nullptr, false);
    const VoWindowDestory destroy(nullptr);
    EXPECT_TRUE(m_window.IsWindowEnabled());
}

TEST_F(WindowHelpersTest, PositionIsSavedAndRestored)
{
    VWndPos position(&m_window);
    EXPECT_EQ(position.GetXPos(), -1);
    EXPECT_EQ(position.GetYSize(), -1);
    m_window.SetWindowPos(nullptr, 31, 42, 210, 160, SWP_NOZORDER);
    ASSERT_TRUE(position.Save());
    EXPECT_EQ(position.GetXPos(), 31);
    EXPECT_EQ(position.GetYPos(), 42);
    EXPECT_EQ(position.GetXSize(), 210);
    EXPECT_EQ(position.GetYSize(), 160);

    m_window.SetWindowPos(nullptr, 5, 6, 300, 200, SWP_NOZORDER);
    const VWndPos copy = position;
    EXPECT_TRUE(copy.Restore());
    EXPECT_EQ(Place(), CRect(CPoint(31, 42), CSize(210, 160)));

    position.SetRecordSize(false);
    m_window.SetWindowPos(nullptr, 8, 9, 300, 200, SWP_NOZORDER);
    ASSERT_TRUE(position.Save());
    EXPECT_EQ(position.GetXSize(), -1);
    position.SetPos(50, 60);
    EXPECT_TRUE(position.Restore());
    EXPECT_EQ(Place(), CRect(CPoint(50, 60), CSize(300, 200)));
}

TEST_F(WindowHelpersTest, RestoreDoesOnlyWhatIsKnownAndFits)
{
    const int width = ::GetSystemMetrics(SM_CXFULLSCREEN);
    const int height = ::GetSystemMetrics(SM_CYFULLSCREEN);
    const CRect start(40, 30, 240, 180);
    const struct {
        int x, y, cx, cy;
        CRect expected;
    } cases[] = {
        {-1, -1, 150, 140, CRect(CPoint(40, 30), CSize(150, 140))},
        {-1, 70, 150, 140, CRect(CPoint(40, 30), CSize(150, 140))},
        {60, 70, -1, 140, CRect(CPoint(60, 70), start.Size())},
        {60, 70, 150, -1, CRect(CPoint(60, 70), start.Size())},
        {0, 0, width, height, CRect(0, 0, width, height)},
        {1, 0, width, 140, start},
        {0, 1, 150, height, start},
        {-2, 10, 150, 140, start},
        {10, -2, 150, 140, start},
        {10, 10, 0, 140, start},
        {10, 10, 150, 0, start},
        {10, 10, -5, 140, start},
        {INT_MAX, 10, INT_MAX, 140, start},
    };
    for (const auto& test : cases) {
        m_window.MoveWindow(&start);
        ASSERT_EQ(Place(), start);
        const VWndPos position(&m_window, test.x, test.y, test.cx, test.cy);
        EXPECT_EQ(position.Restore(), test.expected != start);
        EXPECT_EQ(Place(), test.expected) << test.x << "," << test.y << " " << test.cx << "x" << test.cy;
    }
}

TEST_F(WindowHelpersTest, RestoreMaximisesAWindowSavedSo)
{
    VWndPos position;
    EXPECT_FALSE(position.Init(nullptr));
    EXPECT_FALSE(position.Save());
    EXPECT_FALSE(position.Restore());
    CWnd closed;
    EXPECT_FALSE(position.Init(&closed));
    ASSERT_TRUE(position.Init(&m_window));
    EXPECT_FALSE(position.Init(&closed));

    m_window.ShowWindow(SW_SHOWMAXIMIZED);
    ASSERT_TRUE(position.Save());
    m_window.ShowWindow(SW_RESTORE);
    EXPECT_TRUE(position.Restore());
    EXPECT_TRUE(m_window.IsZoomed());
    m_window.DestroyWindow();
    EXPECT_FALSE(position.Save());
    EXPECT_FALSE(position.Restore());
}

TEST(WindowHelpersPlace, ValidPlacesLieOnTheMainScreen)
{
    const int width = ::GetSystemMetrics(SM_CXFULLSCREEN);
    const int height = ::GetSystemMetrics(SM_CYFULLSCREEN);
    for (const CRect& valid :
         {CRect(0, 0, 10, 10), CRect(0, 0, width, height), CRect(width - 10, height - 10, width, height)})
        EXPECT_TRUE(IsValideWndPos(valid)) << valid.left << "," << valid.top;
    for (const CRect& invalid :
         {CRect(0, 0, 9, 500), CRect(0, 0, 500, 9), CRect(-1, 0, 100, 100), CRect(0, -1, 100, 100),
          CRect(0, 0, width + 1, 100), CRect(0, 0, 100, height + 1), CRect(width - 9, 0, width, 100),
          CRect(0, height - 9, 100, height), CRect(100, 100, 50, 50),
          CRect(INT_MIN, INT_MIN, INT_MAX, INT_MAX)})
        EXPECT_FALSE(IsValideWndPos(invalid)) << invalid.left << "," << invalid.top;
}

TEST(WindowHelpersShell, OpenerCanBeReplaced)
{
    const VGShellOpener shell = VGSetShellOpener(&OpenedLinks::Note);
    EXPECT_TRUE(VGShellExecute(L"open", L"http://localhost/", SW_SHOWMAXIMIZED, SEE_MASK_FLAG_NO_UI));
    EXPECT_TRUE(VGShellExecute(nullptr, L"mailto:a@b", SW_HIDE));
    EXPECT_FALSE(VGShellExecute(L"open", nullptr, SW_SHOW));
    EXPECT_FALSE(VGShellExecute(L"open", L"", SW_SHOW));
    EXPECT_EQ(VGSetShellOpener(nullptr), &OpenedLinks::Note);
    EXPECT_EQ(VGSetShellOpener(shell), shell);

    const std::vector<OpenedLinks::Request> opened = std::exchange(OpenedLinks::Requests(), {});
    ASSERT_EQ(opened.size(), 2u);
    EXPECT_EQ(opened[0].verb, L"open");
    EXPECT_EQ(opened[0].file, L"http://localhost/");
    EXPECT_EQ(opened[0].show, SW_SHOWMAXIMIZED);
    EXPECT_EQ(opened[0].mask, ULONG{SEE_MASK_FLAG_NO_UI});
    EXPECT_EQ(opened[1].verb, L"");
    EXPECT_EQ(opened[1].show, SW_HIDE);
    EXPECT_EQ(opened[1].mask, 0u);
}
