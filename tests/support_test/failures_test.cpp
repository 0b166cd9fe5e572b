// What the support must report as a failure; that it works is seen in every other test.
#include "tests/support/census.h"
#include "tests/support/dialog_template.h"
#include "tests/support/input.h"
#include "tests/support/modal.h"
#include "tests/support/pixels.h"
#include "tests/support/recorder.h"

#include <functional>
#include <gtest/gtest-spi.h>

using namespace support;

namespace
{

class Failures : public CensusTest
{
protected:
    void SetUp() override { ASSERT_TRUE(host.Open({300, 200})); }

    HostWnd host;
};

// Keeps itself open, whatever it is told.
INT_PTR CALLBACK StayOpen(HWND, UINT message, WPARAM, LPARAM)
{
    return message == WM_INITDIALOG || message == WM_COMMAND || message == WM_CLOSE;
}

TEST_F(Failures, EveryKindOfLeakIsNoticed)
{
    const struct {
        const char* report;
        std::function<HANDLE()> create;
        std::function<void(HANDLE)> destroy;
    } kinds[] = {
        {"brush", [] { return ::CreateSolidBrush(RGB(1, 2, 3)); }, ::DeleteObject},
        {"bitmap", [] { return ::CreateBitmap(2, 2, 1, 1, nullptr); }, ::DeleteObject},
        {"DC", [] { return ::CreateCompatibleDC(nullptr); }, [](HANDLE dc) { ::DeleteDC(HDC(dc)); }},
        {"menu", [] { return ::CreateMenu(); }, [](HANDLE menu) { ::DestroyMenu(HMENU(menu)); }},
        {"icon", [] { return ::CopyIcon(::LoadIcon(nullptr, IDI_APPLICATION)); },
         [](HANDLE icon) { ::DestroyIcon(HICON(icon)); }},
        {"new window L\"Static\" L\"forgotten\"",
         [] {
             return ::CreateWindow(L"Static", L"forgotten", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr,
                                   nullptr);
         },
         [](HANDLE window) { ::DestroyWindow(HWND(window)); }},
    };
    const Census census;
    for (const auto& kind : kinds) {
        const HANDLE object = kind.create();
        EXPECT_NONFATAL_FAILURE(census.ExpectUnchanged(), kind.report);
        kind.destroy(object);
        EXPECT_TRUE(census.Unchanged());
    }
}

TEST_F(Failures, MismatchNamesPointAndColours)
{
    constexpr COLORREF kWhite = RGB(255, 255, 255);
    DibSurface surface(4, 4, kWhite);
    surface.SetPixel(2, 1, RGB(1, 2, 3));
    const auto white = [](int, int) { return kWhite; };
    EXPECT_NONFATAL_FAILURE(ExpectPixels(surface, white), "at 2,1 is #010203, wanted #FFFFFF");
    ExpectPixels(surface, {0, 2, 4, 4}, white);
    ExpectPixels(surface, [](int x, int y) { return x == 2 && y == 1 ? kAnyColor : kWhite; });
}

TEST_F(Failures, AnswerThatIsNotNeededFailsUnlessWithdrawn)
{
    EXPECT_NONFATAL_FAILURE({ const auto answer = AnswerMessageBox(IDOK); }, "no modal window came up");
    auto withdrawn = AnswerMessageBox(IDOK);
    withdrawn.Withdraw();
    EXPECT_FALSE(withdrawn.Shown());
}

TEST_F(Failures, DialogThatStaysUpIsClosedByForce)
{
    constexpr DWORD kSoon = 100;
    const DialogTemplate dialog(L"stays", 100, 40);
    const auto answer = WhenModal([](HWND) {}, kSoon);
    INT_PTR result = 0;
    EXPECT_NONFATAL_FAILURE(result = ::DialogBoxIndirect(nullptr, dialog, host.m_hWnd, StayOpen),
                            "did not close");
    EXPECT_EQ(result, IDCANCEL);
    EXPECT_TRUE(::IsWindowEnabled(host.m_hWnd));
}

TEST_F(Failures, DragThatIsNotTakenFailsAndLetsGo)
{
    constexpr DWORD kBusy = 200;
    constexpr DWORD kTimeout = 20;
    host.SetAnswer([](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message == WM_LBUTTONDOWN)
            ::Sleep(kBusy); // a handler that takes long is the case under test
        return std::nullopt;
    });
    const CPoint from = CenterOf(host.m_hWnd);
    EXPECT_NONFATAL_FAILURE(Drag({from, from + CSize(5, 5)}, MouseButton::Left, kTimeout),
                            "no message loop took");
    EXPECT_GE(::GetAsyncKeyState(VK_LBUTTON), 0);
}

TEST_F(Failures, WhatIsHeldDownIsLetGoOf)
{
    MoveTo(CenterOf(host.m_hWnd));
    host.SetCapture();
    Press();
    KeyDown(VK_CONTROL);
    ReleaseAll();
    EXPECT_GE(::GetAsyncKeyState(VK_LBUTTON), 0);
    EXPECT_GE(::GetAsyncKeyState(VK_CONTROL), 0);
    EXPECT_EQ(::GetCapture(), nullptr);
}

} // namespace
