#include "tests/support/pixels.h"

#include "tests/support/pump.h"

#include <algorithm>
#include <cstdint>
#include <sstream>

namespace support
{

namespace
{

// How many wrong pixels a message lists.
constexpr int kMostListed = 8;

// A DIB section's pixel is 0x00RRGGBB, a COLORREF 0x00BBGGRR.
uint32_t SwapRedAndBlue(uint32_t value)
{
    return (value & 0x00FF00) | (value & 0xFF) << 16 | (value >> 16 & 0xFF);
}

// A window's device context that shows its children, too, whatever the window's styles.
class WindowDC
{
public:
    WindowDC(HWND window, DWORD area) : m_window(window), m_dc(::GetDCEx(window, nullptr, DCX_CACHE | area))
    {
    }
    ~WindowDC() { ::ReleaseDC(m_window, m_dc); }
    WindowDC(const WindowDC&) = delete;
    WindowDC& operator=(const WindowDC&) = delete;
    operator HDC() const { return m_dc; }

private:
    HWND m_window;
    HDC m_dc;
};

DibSurface Capture(HWND window, const CRect& rect, DWORD area)
{
    ::RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    DibSurface surface(rect.Width(), rect.Height());
    const WindowDC dc(window, area);
    EXPECT_TRUE(::BitBlt(surface.DC().m_hDC, 0, 0, rect.Width(), rect.Height(), dc, 0, 0, SRCCOPY));
    return surface;
}

} // namespace

struct DibSurface::Data {
    CDC dc;
    HBITMAP bitmap = nullptr;
    HGDIOBJ original = nullptr;
    uint32_t* bits = nullptr;
    int width = 0, height = 0;

    ~Data()
    {
        if (original != nullptr)
            ::SelectObject(dc.m_hDC, original);
        if (bitmap != nullptr)
            ::DeleteObject(bitmap);
    }
    [[nodiscard]] bool Contains(int x, int y) const { return x >= 0 && y >= 0 && x < width && y < height; }
    [[nodiscard]] uint32_t& At(int x, int y) const { return bits[static_cast<size_t>(y) * width + x]; }
};

DibSurface::DibSurface(int width, int height, COLORREF fill) : m_data(std::make_unique<Data>())
{
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height; // top-down
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    m_data->dc.CreateCompatibleDC(nullptr);
    m_data->bitmap = ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (m_data->bitmap == nullptr) {
        ADD_FAILURE() << "no surface of " << width << "x" << height;
        return;
    }
    m_data->bits = static_cast<uint32_t*>(bits);
    m_data->width = width;
    m_data->height = height;
    m_data->original = ::SelectObject(m_data->dc.m_hDC, m_data->bitmap);
    Fill(fill);
}

DibSurface::~DibSurface() = default;
DibSurface::DibSurface(DibSurface&&) noexcept = default;
DibSurface& DibSurface::operator=(DibSurface&&) noexcept = default;

int DibSurface::Width() const
{
    return m_data->width;
}

int DibSurface::Height() const
{
    return m_data->height;
}

CDC& DibSurface::DC() const
{
    return m_data->dc;
}

HBITMAP DibSurface::Bitmap() const
{
    return m_data->bitmap;
}

COLORREF DibSurface::Pixel(int x, int y) const
{
    if (!m_data->Contains(x, y))
        return CLR_INVALID;
    ::GdiFlush();
    return SwapRedAndBlue(m_data->At(x, y));
}

void DibSurface::SetPixel(int x, int y, COLORREF color)
{
    if (!m_data->Contains(x, y))
        return;
    ::GdiFlush();
    m_data->At(x, y) = SwapRedAndBlue(color);
}

void DibSurface::Fill(COLORREF color)
{
    ::GdiFlush();
    std::fill_n(m_data->bits, static_cast<size_t>(m_data->width) * m_data->height, SwapRedAndBlue(color));
}

int DibSurface::Count(COLORREF color, CRect area) const
{
    int count = 0;
    for (int y = area.top; y < area.bottom; ++y)
        for (int x = area.left; x < area.right; ++x)
            count += Pixel(x, y) == color;
    return count;
}

std::string ColorText(COLORREF color)
{
    if (color == CLR_INVALID)
        return "none";
    char text[8];
    snprintf(text, sizeof text, "#%02X%02X%02X", GetRValue(color), GetGValue(color), GetBValue(color));
    return text;
}

testing::AssertionResult PixelsMatch(const DibSurface& actual, CRect area, const PixelModel& model)
{
    DibSurface expected(actual.Width(), actual.Height());
    std::ostringstream list;
    int wrong = 0;
    for (int y = area.top; y < area.bottom; ++y) {
        for (int x = area.left; x < area.right; ++x) {
            const COLORREF wanted = model(x, y);
            const COLORREF found = actual.Pixel(x, y);
            expected.SetPixel(x, y, wanted == kAnyColor ? found : wanted);
            if (wanted == kAnyColor || wanted == found)
                continue;
            if (++wrong <= kMostListed)
                list << "\n  at " << x << "," << y << " is " << ColorText(found) << ", wanted "
                     << ColorText(wanted);
        }
    }
    if (wrong == 0)
        return testing::AssertionSuccess();
    SaveArtifact(actual, L"actual");
    SaveArtifact(expected, L"expected");
    return testing::AssertionFailure() << wrong << " wrong pixels" << list.str();
}

testing::AssertionResult PixelsMatch(const DibSurface& actual, const PixelModel& model)
{
    return PixelsMatch(actual, actual.Bounds(), model);
}

void ExpectPixels(const DibSurface& actual, CRect area, const PixelModel& model)
{
    EXPECT_TRUE(PixelsMatch(actual, area, model));
}

void ExpectPixels(const DibSurface& actual, const PixelModel& model)
{
    ExpectPixels(actual, actual.Bounds(), model);
}

testing::AssertionResult AreasEqual(const DibSurface& actual, CRect area, const DibSurface& expected,
                                    CPoint origin)
{
    return PixelsMatch(actual, area, [&](int x, int y) {
        return expected.Pixel(x - area.left + origin.x, y - area.top + origin.y);
    });
}

COLORREF WindowPixel(HWND window, CPoint point)
{
    const WindowDC dc(window, DCX_WINDOW);
    return ::GetPixel(dc, point.x, point.y);
}

COLORREF ClientPixel(HWND window, CPoint client)
{
    const WindowDC dc(window, 0);
    return ::GetPixel(dc, client.x, client.y);
}

testing::AssertionResult WaitForPixel(HWND window, CPoint point, COLORREF color, DWORD timeoutMs)
{
    if (PumpUntil([=] { return WindowPixel(window, point) == color; }, timeoutMs))
        return testing::AssertionSuccess();
    SaveArtifact(CaptureWindow(window), L"window");
    return testing::AssertionFailure()
           << "at " << point.x << "," << point.y << " stays " << ColorText(WindowPixel(window, point))
           << ", wanted " << ColorText(color);
}

DibSurface CaptureWindow(HWND window)
{
    CRect rect;
    ::GetWindowRect(window, &rect);
    return Capture(window, rect, DCX_WINDOW);
}

DibSurface CaptureClient(HWND window)
{
    CRect rect;
    ::GetClientRect(window, &rect);
    return Capture(window, rect, 0);
}

} // namespace support
