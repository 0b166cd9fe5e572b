#include "tests/imaging/dib_picture.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace support
{

namespace
{

size_t RowBits(const Picture& picture)
{
    return static_cast<size_t>(picture.width * picture.bitCount + 31) / 32 * 32;
}

// The place of a pixel's bits: within a byte the leftmost pixel has the highest ones.
template <class Visit>
void ForEachPixel(const Picture& picture, Visit visit)
{
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x) {
            const size_t bit = static_cast<size_t>(picture.height - 1 - y) * RowBits(picture) +
                               static_cast<size_t>(x) * picture.bitCount;
            visit(static_cast<size_t>(y * picture.width + x), bit / 8, 8 - picture.bitCount - bit % 8);
        }
}

} // namespace

Picture::Color Picture::ColorAt(int x, int y) const
{
    const DWORD pixel = At(x, y);
    if (bitCount <= 8) {
        const RGBQUAD color = table[pixel];
        return {color.rgbBlue, color.rgbGreen, color.rgbRed, 0};
    }
    if (bitCount == 16) {
        const auto full = [pixel](int shift) {
            return static_cast<int>(std::lround((pixel >> shift & 31) * 255.0 / 31));
        };
        return {full(0), full(5), full(10), 0};
    }
    return {static_cast<int>(pixel & 255), static_cast<int>(pixel >> 8 & 255),
            static_cast<int>(pixel >> 16 & 255), static_cast<int>(pixel >> 24)};
}

Picture::Color Picture::ColorNear(int x, int y) const
{
    return ColorAt(std::clamp(x, 0, width - 1), std::clamp(y, 0, height - 1));
}

Picture RandomPicture(WORD bitCount, int width, int height, unsigned seed)
{
    std::mt19937 random(seed * 1000 + bitCount * 31U + static_cast<unsigned>(width * 7 + height));
    Picture picture{width, height, bitCount, {}, {}};
    const DWORD most = bitCount == 32 ? 0xFFFFFFFF : bitCount == 16 ? 0x7FFF : (1U << bitCount) - 1;
    for (int i = 0; i < width * height; ++i)
        picture.pixels.push_back(random() & most);
    for (DWORD i = 0; bitCount <= 8 && i <= most; ++i)
        picture.table.push_back(
            {static_cast<BYTE>(random()), static_cast<BYTE>(random()), static_cast<BYTE>(random()), 0});
    return picture;
}

void SetPicture(CDib& dib, const Picture& picture)
{
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = picture.width;
    header.biHeight = picture.height;
    header.biPlanes = 1;
    header.biBitCount = picture.bitCount;
    header.biSizeImage = static_cast<DWORD>(RowBits(picture) / 8 * static_cast<size_t>(picture.height));
    header.biXPelsPerMeter = 1111;
    header.biYPelsPerMeter = 2222;
    std::vector<BYTE> rows(header.biSizeImage);
    ForEachPixel(picture, [&](size_t i, size_t byte, size_t shift) {
        if (picture.bitCount < 8)
            rows[byte] = static_cast<BYTE>(rows[byte] | picture.pixels[i] << shift);
        else
            memcpy(&rows[byte], &picture.pixels[i], picture.bitCount / 8);
    });
    std::vector<BYTE> block(sizeof header + picture.table.size() * sizeof(RGBQUAD));
    memcpy(block.data(), &header, sizeof header);
    std::copy_n(reinterpret_cast<const BYTE*>(picture.table.data()), picture.table.size() * sizeof(RGBQUAD),
                block.data() + sizeof header);
    for (const BYTE byte : rows)
        block.push_back(byte);
    ASSERT_TRUE(dib.Create(block.data()));
}

Picture GetPicture(const CDib& dib)
{
    Picture picture{dib.GetWidth(), dib.GetHeight(), dib.GetBitCount(), {}, {}};
    picture.pixels.resize(static_cast<size_t>(picture.width * picture.height));
    const BYTE* const rows = dib.GetBitsPtr();
    ForEachPixel(picture, [&](size_t i, size_t byte, size_t shift) {
        if (picture.bitCount < 8)
            picture.pixels[i] = rows[byte] >> shift & ((1U << picture.bitCount) - 1);
        else
            memcpy(&picture.pixels[i], rows + byte, picture.bitCount / 8);
    });
    const auto* const table = reinterpret_cast<const RGBQUAD*>(rows) - dib.GetColorNumber();
    picture.table.assign(table, table + dib.GetColorNumber());
    return picture;
}

testing::AssertionResult IsInStep(const CDib& dib)
{
    const Picture picture = GetPicture(dib);
    if ((dib.GetPalette() != nullptr) != (picture.bitCount <= 8))
        return testing::AssertionFailure() << "palette: " << dib.GetPalette();
    if (dib.GetPalette() != nullptr) {
        PALETTEENTRY entries[256];
        const UINT count = dib.GetPalette()->GetPaletteEntries(0, 256, entries);
        if (count != picture.table.size())
            return testing::AssertionFailure() << "the palette has " << count << " entries";
        for (UINT i = 0; i < count; ++i)
            if (entries[i].peRed != picture.table[i].rgbRed || entries[i].peBlue != picture.table[i].rgbBlue)
                return testing::AssertionFailure() << "palette entry " << i << " differs";
    }
    DIBSECTION section{};
    if (dib.GetBitmap() == nullptr || dib.GetBitmap()->GetObject(sizeof section, &section) != sizeof section)
        return testing::AssertionFailure() << "no bitmap";
    const auto bytes = static_cast<size_t>(dib.GetWidthBytes()) * static_cast<size_t>(picture.height);
    const DWORD stated = static_cast<const BITMAPINFOHEADER*>(::GlobalLock(dib.GetHandle()))->biSizeImage;
    ::GlobalUnlock(dib.GetHandle());
    if (stated != 0 && stated != bytes)
        return testing::AssertionFailure() << "biSizeImage is " << stated << " instead of " << bytes;
    if (section.dsBm.bmWidth != picture.width || section.dsBm.bmHeight != picture.height ||
        section.dsBm.bmBitsPixel != picture.bitCount ||
        memcmp(section.dsBm.bmBits, dib.GetBitsPtr(), bytes) != 0)
        return testing::AssertionFailure() << "the bitmap differs";
    return testing::AssertionSuccess();
}

} // namespace support
