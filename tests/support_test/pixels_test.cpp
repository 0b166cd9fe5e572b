#include "tests/support/pixels.h"

#include "tests/support/recorder.h"

#include <gtest/gtest-spi.h>

namespace
{

using support::DibSurface;

constexpr COLORREF kInk = RGB(1, 2, 3);

TEST(PixelsTest, SurfaceIsFilledAndKeepsColoursExactly)
{
    DibSurface surface(7, 5);
    EXPECT_EQ(surface.Count(DibSurface::kBackground), 35);
    ::SetPixel(surface.DC().m_hDC, 6, 4, kInk);
    EXPECT_EQ(surface.Pixel(6, 4), kInk);
    EXPECT_EQ(surface.Pixel(7, 4), CLR_INVALID);
    const DibSurface moved = std::move(surface);
    EXPECT_EQ(moved.Pixel(6, 4), kInk);
}

TEST(PixelsTest, MismatchNamesPointAndColours)
{
    DibSurface surface(4, 4, RGB(255, 255, 255));
    surface.SetPixel(2, 1, kInk);
    const auto white = [](int, int) { return RGB(255, 255, 255); };
    EXPECT_NONFATAL_FAILURE(support::ExpectPixels(surface, white), "at 2,1 is #010203, wanted #FFFFFF");
    support::ExpectPixels(surface, {0, 2, 4, 4}, white);
    support::ExpectPixels(surface, [&](int x, int y) {
        return CPoint(x, y) == CPoint(2, 1) ? support::kAnyColor : white(x, y);
    });
}

TEST(PixelsTest, AreasAreComparedAtTheirOwnPlaces)
{
    DibSurface one(6, 6), other(6, 6);
    one.SetPixel(3, 3, kInk);
    other.SetPixel(1, 0, kInk);
    EXPECT_TRUE(support::AreasEqual(one, {2, 3, 5, 6}, other, {0, 0}));
    EXPECT_FALSE(support::AreasEqual(one, {2, 3, 5, 6}, other, {1, 0}));
}

TEST(PixelsTest, LiveWindowIsCapturedWithItsChildrenAndFrame)
{
    support::HostWnd host;
    ASSERT_TRUE(host.Open({100, 60}, WS_POPUP | WS_BORDER | WS_CLIPCHILDREN));
    const HWND child = ::CreateWindow(L"Static", L"", WS_CHILD | WS_VISIBLE | SS_BLACKRECT, 10, 10, 20, 20,
                                      host.m_hWnd, nullptr, ::GetModuleHandle(nullptr), nullptr);
    ::UpdateWindow(child);
    const COLORREF childColor = ::GetSysColor(COLOR_3DDKSHADOW);
    const DibSurface client = support::CaptureClient(host.m_hWnd);
    const COLORREF host_color = support::HostWnd::kBackground;
    support::ExpectPixels(client, [&](int x, int y) {
        return CRect(10, 10, 30, 30).PtInRect({x, y}) ? childColor : host_color;
    });
    EXPECT_TRUE(support::WaitForPixel(host.m_hWnd, {1, 1}, host_color));
    EXPECT_EQ(support::ClientPixel(host.m_hWnd, {12, 12}), childColor);
    const DibSurface whole = support::CaptureWindow(host.m_hWnd);
    EXPECT_EQ(whole.Width(), 102);
    EXPECT_NE(whole.Pixel(0, 0), host_color);
    EXPECT_TRUE(support::AreasEqual(whole, {1, 1, 101, 61}, client, {0, 0}));
}

TEST(PixelsTest, PngHasSignatureAndSize)
{
    wchar_t folder[MAX_PATH], path[MAX_PATH];
    ::GetTempPath(MAX_PATH, folder);
    ASSERT_NE(::GetTempFileName(folder, L"png", 0, path), 0U);
    EXPECT_TRUE(support::SavePng(DibSurface(300, 2, kInk), path));
    const HANDLE file =
        ::CreateFile(path, GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    // Signature, then the header chunk: length, name, width and height in big-endian order.
    BYTE head[24]{};
    DWORD read = 0;
    ::ReadFile(file, head, sizeof head, &read, nullptr);
    ::CloseHandle(file);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(head), 4), "\x89PNG");
    EXPECT_EQ(head[18] << 8 | head[19], 300);
    EXPECT_EQ(head[23], 2);
}

} // namespace
