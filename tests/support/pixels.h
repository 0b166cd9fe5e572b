// Surfaces to draw on and ways to say what must be seen on them.
#pragma once

#include "tests/support/wait.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace support
{

// What a model answers for a pixel that may have any colour.
inline constexpr COLORREF kAnyColor = CLR_INVALID;

// The colour wanted at a point of a surface.
using PixelModel = std::function<COLORREF(int x, int y)>;

// A 32-bit top-down DIB section, selected into a memory DC.
class DibSurface
{
public:
    // Unset pixels stand out: the default colour appears in no picture of ours.
    static constexpr COLORREF kBackground = RGB(255, 0, 254);

    DibSurface(int width, int height, COLORREF fill = kBackground);
    ~DibSurface();
    DibSurface(DibSurface&&) noexcept;
    DibSurface& operator=(DibSurface&&) noexcept;

    [[nodiscard]] int Width() const;
    [[nodiscard]] int Height() const;
    [[nodiscard]] CRect Bounds() const { return {0, 0, Width(), Height()}; }

    // The memory DC; valid as long as the surface.
    [[nodiscard]] CDC& DC() const;
    // The bitmap, which stays selected in DC() and belongs to the surface.
    [[nodiscard]] HBITMAP Bitmap() const;

    // The colour at a point, CLR_INVALID outside.
    [[nodiscard]] COLORREF Pixel(int x, int y) const;
    [[nodiscard]] COLORREF Pixel(CPoint point) const { return Pixel(point.x, point.y); }
    // Sets one pixel; nothing happens outside.
    void SetPixel(int x, int y, COLORREF color);
    void Fill(COLORREF color);

    // How many pixels of the area have the colour.
    [[nodiscard]] int Count(COLORREF color, CRect area) const;
    [[nodiscard]] int Count(COLORREF color) const { return Count(color, Bounds()); }

private:
    struct Data;
    std::unique_ptr<Data> m_data;
};

// Whether every pixel of the area (the whole surface by default) is as the model says. A mismatch lists
// the first wrong pixels with both colours and saves the pictures, see SaveArtifact.
[[nodiscard]] testing::AssertionResult PixelsMatch(const DibSurface& actual, const PixelModel& model);
[[nodiscard]] testing::AssertionResult PixelsMatch(const DibSurface& actual, CRect area,
                                                   const PixelModel& model);
// The same as an expectation.
void ExpectPixels(const DibSurface& actual, const PixelModel& model);
void ExpectPixels(const DibSurface& actual, CRect area, const PixelModel& model);

// Whether an area of one surface equals the equally large area of another one that begins at origin.
[[nodiscard]] testing::AssertionResult AreasEqual(const DibSurface& actual, CRect area,
                                                  const DibSurface& expected, CPoint origin);

// A colour as "#RRGGBB", for messages.
[[nodiscard]] std::string ColorText(COLORREF color);

// The colour of a live window at a point relative to the window's top left corner (not its client
// area's). CLR_INVALID where the window is hidden or off the screen.
[[nodiscard]] COLORREF WindowPixel(HWND window, CPoint point);
// The same for a point of the client area.
[[nodiscard]] COLORREF ClientPixel(HWND window, CPoint client);

// Pumps until a point of the window has the colour.
[[nodiscard]] testing::AssertionResult WaitForPixel(HWND window, CPoint point, COLORREF color,
                                                    DWORD timeoutMs = kDefaultTimeout);

// What the window shows now, with frame and caption, or of its client area only. The window is painted
// first and must be visible and wholly on the screen.
[[nodiscard]] DibSurface CaptureWindow(HWND window);
[[nodiscard]] DibSurface CaptureClient(HWND window);

// Writes the surface as PNG; false when the file cannot be written.
bool SavePng(const DibSurface& surface, const std::wstring& path);
// Writes it as <suite>.<test>-<name>.png into the folder that the environment variable
// VGUI_TEST_ARTIFACTS names. Returns the path, empty when there is no such folder.
std::wstring SaveArtifact(const DibSurface& surface, const std::wstring& name);

} // namespace support
