// Pictures as plain lists of pixels, to compare the DIB object's images with. They know nothing of rows, bits
// and blocks but how to write and read them one pixel at a time.
#pragma once

#include "vgui/imaging/dib.h"

#include <array>
#include <gtest/gtest.h>
#include <vector>

namespace support
{

struct Picture {
    // Blue, green, red and, at 32 bits, the fourth byte (0 otherwise), each 0 to 255.
    using Color = std::array<int, 4>;

    int width = 0;
    int height = 0;
    WORD bitCount = 24;
    std::vector<DWORD> pixels;  // as they stand in the image, row by row from the top
    std::vector<RGBQUAD> table; // 1 << bitCount colours up to 8 bits

    [[nodiscard]] DWORD& At(int x, int y) { return pixels[static_cast<size_t>(y * width + x)]; }
    [[nodiscard]] DWORD At(int x, int y) const { return const_cast<Picture*>(this)->At(x, y); }
    [[nodiscard]] Color ColorAt(int x, int y) const;
    // The same with the border going on outside.
    [[nodiscard]] Color ColorNear(int x, int y) const;
};

inline constexpr WORD kDepths[] = {1, 4, 8, 16, 24, 32};

// A picture of noise, the same for the same arguments.
[[nodiscard]] Picture RandomPicture(WORD bitCount, int width, int height, unsigned seed = 1);

// Gives the picture to a DIB object.
void SetPicture(CDib& dib, const Picture& picture);
// What a DIB object holds.
[[nodiscard]] Picture GetPicture(const CDib& dib);

// Whether palette and bitmap of the object show what its block holds.
[[nodiscard]] testing::AssertionResult IsInStep(const CDib& dib);

} // namespace support
