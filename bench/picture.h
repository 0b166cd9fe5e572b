// A picture to measure image operations with.
#pragma once

#include "bench/bench.h"
#include "vgui/imaging/dib.h"

#include <cmath>
#include <cstring>
#include <vector>

namespace bench
{

// A smooth picture with some noise, as photographs are.
inline void MakePicture(CDib& dib, int width, int height, WORD bitCount)
{
    Require(dib.Create(static_cast<DWORD>(width), static_cast<DWORD>(height), 24), "creating a picture");
    const size_t pitch = static_cast<size_t>(dib.GetWidthBytes());
    BYTE* const rows = dib.GetBitsPtr();
    unsigned noise = 1;
    for (size_t i = 0; i < pitch * static_cast<size_t>(height); ++i) {
        noise = noise * 1664525U + 1013904223U;
        rows[i] = static_cast<BYTE>(i % pitch / 24 + i / pitch / 8 + i % 3 * 16 + (noise >> 29U));
    }
    Require(dib.ConvertFormat(bitCount), "converting a picture");
}

// The packed DIB of an image in plain memory.
class PackedCopy
{
public:
    explicit PackedCopy(const CDib& dib) : m_bytes(::GlobalSize(dib.GetHandle()))
    {
        std::memcpy(m_bytes.data(), ::GlobalLock(dib.GetHandle()), m_bytes.size());
        ::GlobalUnlock(dib.GetHandle());
    }

    BYTE* Data() { return m_bytes.data(); }
    const std::vector<BYTE>& Bytes() const { return m_bytes; }
    // Copies the image's memory to a new block, which is the least that an operation needs for its result.
    Work Copying() const
    {
        return {[this] {
            const HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, m_bytes.size());
            std::memcpy(::GlobalLock(block), m_bytes.data(), m_bytes.size());
            ::GlobalUnlock(block);
            ::GlobalFree(block);
        }};
    }

private:
    std::vector<BYTE> m_bytes;
};

// A picture of about so many pixels is this wide, and three quarters of it high.
inline int PictureWidth(int pixels)
{
    return static_cast<int>(std::lround(std::sqrt(pixels * 4.0 / 3)));
}

inline int PictureHeight(int pixels)
{
    return PictureWidth(pixels) * 3 / 4;
}

} // namespace bench
