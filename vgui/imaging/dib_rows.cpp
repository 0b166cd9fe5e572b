#include "vgui/imaging/dib_rows.h"

#include <algorithm>
#include <cstring>

namespace
{

// 5 bits per channel, as full intensities and back. Each value comes back as itself.
constexpr auto kExpanded5 = [] {
    std::array<BYTE, 32> table{};
    for (int i = 0; i < 32; ++i)
        table[static_cast<size_t>(i)] = static_cast<BYTE>((i * 255 + 15) / 31);
    return table;
}();
constexpr auto kReduced5 = [] {
    std::array<BYTE, 256> table{};
    for (int i = 0; i < 256; ++i)
        table[static_cast<size_t>(i)] = static_cast<BYTE>((i * 31 + 127) / 255);
    return table;
}();

void Expand16(const BYTE* row, size_t count, BYTE* colors)
{
    for (size_t x = 0; x < count; ++x, colors += 3) {
        const unsigned pixel = row[2 * x] | row[2 * x + 1] << 8U;
        colors[0] = kExpanded5[pixel & 31U];
        colors[1] = kExpanded5[pixel >> 5U & 31U];
        colors[2] = kExpanded5[pixel >> 10U & 31U];
    }
}

void Reduce16(const BYTE* colors, size_t count, BYTE* row)
{
    for (size_t x = 0; x < count; ++x, colors += 3) {
        const unsigned pixel =
            kReduced5[colors[0]] | kReduced5[colors[1]] << 5U | kReduced5[colors[2]] << 10U;
        row[2 * x] = static_cast<BYTE>(pixel);
        row[2 * x + 1] = static_cast<BYTE>(pixel >> 8U);
    }
}

} // namespace

void UnpackPixels(const BYTE* row, WORD bitCount, size_t count, BYTE* pixels)
{
    if (bitCount >= 8) {
        std::memcpy(pixels, row, count * UnpackedBytes(bitCount));
        return;
    }
    // Whole bytes first, the leftmost pixel in the highest bits.
    const size_t perByte = 8 / bitCount;
    const unsigned mask = (1U << bitCount) - 1;
    for (; count >= perByte; count -= perByte, ++row)
        for (int shift = 8 - bitCount; shift >= 0; shift -= bitCount)
            *pixels++ = static_cast<BYTE>(*row >> shift & mask);
    for (int shift = 8 - bitCount; count > 0; --count, shift -= bitCount)
        *pixels++ = static_cast<BYTE>(*row >> shift & mask);
}

void PackPixels(const BYTE* pixels, WORD bitCount, size_t count, BYTE* row)
{
    if (bitCount >= 8) {
        std::memcpy(row, pixels, count * UnpackedBytes(bitCount));
        return;
    }
    const size_t perByte = 8 / bitCount;
    for (; count >= perByte; count -= perByte) {
        unsigned byte = 0;
        for (size_t i = 0; i < perByte; ++i)
            byte = byte << bitCount | *pixels++;
        *row++ = static_cast<BYTE>(byte);
    }
    if (count == 0)
        return;
    unsigned byte = 0;
    for (size_t i = 0; i < perByte; ++i)
        byte = byte << bitCount | (i < count ? pixels[i] : 0U);
    *row = static_cast<BYTE>(byte);
}

VColorReader::VColorReader(const VDibView& dib)
    : m_dib(dib), m_width(static_cast<size_t>(dib.Width())), m_channels(ColorChannels(dib.BitCount()))
{
    if (dib.BitCount() > kMaxIndexedBits)
        return;
    for (DWORD i = 0; i < UsableColors(dib); ++i)
        m_table[i] = dib.Color(i);
    m_indices.resize(m_width);
}

void VColorReader::ReadIndexed(const BYTE* row, BYTE* colors)
{
    UnpackPixels(row, m_dib.BitCount(), m_width, m_indices.data());
    for (const BYTE index : m_indices) {
        std::memcpy(colors, &m_table[index], 3);
        colors += 3;
    }
}

void VColorReader::Read(LONG y, BYTE* colors)
{
    const BYTE* const row = m_dib.Row(y);
    if (m_dib.BitCount() <= kMaxIndexedBits)
        ReadIndexed(row, colors);
    else if (m_dib.BitCount() == 16)
        Expand16(row, m_width, colors);
    else
        std::memcpy(colors, row, Length());
}

void WriteColors(const VDibView& dib, LONG y, const BYTE* colors)
{
    const auto width = static_cast<size_t>(dib.Width());
    if (dib.BitCount() == 16)
        Reduce16(colors, width, dib.Row(y));
    else
        std::memcpy(dib.Row(y), colors, width * ColorChannels(dib.BitCount()));
}

DWORD UsableColors(const VDibView& dib)
{
    const WORD bitCount = dib.BitCount();
    return bitCount <= kMaxIndexedBits ? std::min<DWORD>(DIBNumColors(dib.Block()), 1U << bitCount) : 0;
}

VOwnedGlobal NewColorDib(const VDibView& source, LONG width, LONG height)
{
    if (source.BitCount() > kMaxIndexedBits)
        return NewDibLike(source, width, height);
    BITMAPINFOHEADER header = source.Header();
    header.biWidth = width;
    header.biHeight = height;
    header.biBitCount = 24;
    header.biClrUsed = 0;
    header.biClrImportant = 0;
    return NewDib(header);
}
