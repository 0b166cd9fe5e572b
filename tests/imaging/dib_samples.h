// Pictures to load, packed DIBs to mutate, and ways to look at a DIB object.
#pragma once

#include "tests/support/census.h"
#include "vgui/imaging/dib.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace samples
{

using Bytes = std::vector<BYTE>;

// What the pictures in samples/ show.
inline constexpr SIZE kPictureSize = {13, 7};
enum class Picture { Two, Sixteen, Many };
[[nodiscard]] COLORREF PictureColor(Picture picture, int x, int y);

// The bytes of a resource of the test program.
[[nodiscard]] Bytes ResourceBytes(LPCWSTR name, LPCWSTR type);

struct DibSpec {
    WORD bitCount = 24;
    LONG width = 13;
    LONG height = 7; // negative: top-down
    DWORD clrUsed = 0;
    DWORD compression = BI_RGB;
    bool hasCoreHeader = false;
};
// A packed DIB whose colour table and pixels are filled with bytes that differ from place to place.
// biSizeImage is 0; a compressed image has a stream of width x height bytes.
[[nodiscard]] Bytes PackedDib(const DibSpec& spec);
// The header of a packed DIB with 40 bytes.
[[nodiscard]] BITMAPINFOHEADER& HeaderOf(Bytes& dib);
// A BMP file of a packed DIB, with pixels right behind the colour table.
[[nodiscard]] Bytes BmpFile(const Bytes& dib);

// A movable block with these bytes, for whoever takes it.
[[nodiscard]] HGLOBAL GlobalBlock(const Bytes& bytes);
// The bytes of a block, as many as its size says.
[[nodiscard]] Bytes BlockBytes(HGLOBAL hBlock);

// Reads a file that is in memory, from a place on.
int ReadBytes(CDib& dib, const Bytes& file, UINT from = 0);
// The file that Write makes; empty when it refuses.
[[nodiscard]] Bytes WrittenBytes(CDib& dib);

// The colour that a bitmap shows at a point.
[[nodiscard]] COLORREF ShownColor(CBitmap* pBitmap, int x, int y);
// Whether a bitmap shows one of the pictures.
[[nodiscard]] testing::AssertionResult Shows(CBitmap* pBitmap, Picture picture);

// All that an operation which fails must leave as it was.
struct State {
    explicit State(const CDib& dib);
    bool operator==(const State&) const = default;

    HGLOBAL block;
    Bytes bytes;
    HGDIOBJ bitmap;
    HGDIOBJ palette;
};

// A test of one image.
class DibFixture : public support::CensusTest
{
protected:
    // The object holds a pattern.
    void Fill(const DibSpec& spec) { ASSERT_TRUE(m_dib.Create(PackedDib(spec).data())); }
    [[nodiscard]] COLORREF Shown(int x, int y) const { return ShownColor(m_dib.GetBitmap(), x, y); }
    [[nodiscard]] COLORREF Shown(CPoint point) const { return Shown(point.x, point.y); }

    CDib m_dib;
};

} // namespace samples
