#include "tests/support/census.h"

#include "tests/support/recorder.h"

#include <gtest/gtest-spi.h>

namespace
{

using support::Census;

class CensusSelfTest : public support::CensusTest
{
};

TEST_F(CensusSelfTest, EveryKindOfLeakIsNoticed)
{
    const Census census;
    EXPECT_TRUE(census.Unchanged());

    const HBRUSH brush = ::CreateSolidBrush(RGB(1, 2, 3));
    EXPECT_NONFATAL_FAILURE(census.ExpectUnchanged(), "brush");
    ::DeleteObject(brush);

    const HBITMAP bitmap = ::CreateBitmap(2, 2, 1, 1, nullptr);
    EXPECT_NONFATAL_FAILURE(census.ExpectUnchanged(), "bitmap");
    ::DeleteObject(bitmap);

    const HDC dc = ::CreateCompatibleDC(nullptr);
    EXPECT_NONFATAL_FAILURE(census.ExpectUnchanged(), "DC");
    ::DeleteDC(dc);

    const HMENU menu = ::CreateMenu();
    EXPECT_NONFATAL_FAILURE(census.ExpectUnchanged(), "menu");
    ::DestroyMenu(menu);

    const HICON icon = ::CopyIcon(::LoadIcon(nullptr, IDI_APPLICATION));
    EXPECT_NONFATAL_FAILURE(census.ExpectUnchanged(), "icon");
    ::DestroyIcon(icon);

    const HWND window =
        ::CreateWindow(L"Static", L"forgotten", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    EXPECT_NONFATAL_FAILURE(census.ExpectUnchanged(), "new window L\"Static\" L\"forgotten\"");
    ::DestroyWindow(window);

    EXPECT_TRUE(census.Unchanged());
}

TEST_F(CensusSelfTest, WindowThatIsClosedLeavesNothing)
{
    const Census census;
    {
        support::HostWnd host;
        host.Open();
        CClientDC dc(&host);
        dc.TextOut(0, 0, L"text");
    }
    census.ExpectUnchanged();
}

TEST_F(CensusSelfTest, TemporaryObjectsDoNotCount)
{
    support::HostWnd host;
    host.Open();
    const Census census;
    host.GetParent();
    CWnd::FromHandle(::GetDesktopWindow());
    census.ExpectUnchanged();
}

} // namespace
