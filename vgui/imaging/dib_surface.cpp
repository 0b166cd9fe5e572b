// The plain image in memory and the surface to draw on.
#include "vgui/foundation/gdi_scope.h"
#include "vgui/foundation/within_memory.h"
#include "vgui/imaging/dib_block.h"
#include "vgui/imaging/dib_pal.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace
{

constexpr size_t kHeaderBytes = sizeof(BITMAPINFOHEADER);

size_t ColorsOfDepth(WORD bitCount)
{
    return bitCount <= kMaxIndexedBits ? size_t{1} << bitCount : 0;
}

size_t BitsOffset(WORD bitCount)
{
    return kHeaderBytes + ColorsOfDepth(bitCount) * sizeof(RGBQUAD);
}

// Header, blank colour table and blank rows; empty when there cannot be such an image.
std::vector<BYTE> NewImage(int width, int height, WORD bitCount)
{
    if (!IsSaneDibSize(width, height) || !IsKnownDepth(bitCount))
        return {};
    const size_t rowBytes = DIBRowBytes(static_cast<size_t>(width), bitCount);
    BITMAPINFOHEADER header = DIBHeader(width, height, bitCount);
    header.biSizeImage = static_cast<DWORD>(rowBytes * static_cast<size_t>(height));
    return VWithinMemory([&] {
        std::vector<BYTE> block(BitsOffset(bitCount) + header.biSizeImage);
        std::memcpy(block.data(), &header, sizeof header);
        return block;
    });
}

} // namespace

// ---- CDIB

int CDIB::Create(int width, int height, WORD bitCount)
{
    std::vector<BYTE> block = NewImage(width, height, bitCount);
    if (block.empty())
        return FALSE;
    m_block = std::move(block);
    return TRUE;
}

int CDIB::Create(const BITMAPINFO* info, const void* bits)
{
    if (info == nullptr || info->bmiHeader.biSize != kHeaderBytes ||
        info->bmiHeader.biCompression != BI_RGB || info->bmiHeader.biHeight == LONG_MIN)
        return FALSE;
    const BITMAPINFOHEADER& header = info->bmiHeader;
    const int height = std::abs(header.biHeight);
    // The info may be the image's own, so that is replaced at the end only.
    CDIB dib;
    if (!dib.Create(header.biWidth, height, header.biBitCount))
        return FALSE;

    const auto ownColors = static_cast<DWORD>(dib.GetColorCount());
    const DWORD givenColors = header.biClrUsed != 0 ? header.biClrUsed : ownColors;
    if (ownColors != 0)
        std::copy_n(info->bmiColors, std::min(ownColors, givenColors), dib.GetColors());
    const auto rowBytes = static_cast<size_t>(dib.GetWidthBytes());
    const auto* row = static_cast<const BYTE*>(bits);
    for (int y = 0; row != nullptr && y < height; ++y, row += rowBytes) {
        const int place = header.biHeight < 0 ? height - 1 - y : y;
        std::memcpy(dib.GetBits() + static_cast<size_t>(place) * rowBytes, row, rowBytes);
    }
    m_block = std::move(dib.m_block);
    return TRUE;
}

const BITMAPINFO* CDIB::GetInfo() const
{
    return m_block.empty() ? nullptr : reinterpret_cast<const BITMAPINFO*>(m_block.data());
}

int CDIB::GetWidth() const
{
    return m_block.empty() ? 0 : GetInfo()->bmiHeader.biWidth;
}

int CDIB::GetHeight() const
{
    return m_block.empty() ? 0 : GetInfo()->bmiHeader.biHeight;
}

WORD CDIB::GetBitCount() const
{
    return m_block.empty() ? WORD{0} : GetInfo()->bmiHeader.biBitCount;
}

int CDIB::GetWidthBytes() const
{
    return static_cast<int>(DIBRowBytes(static_cast<size_t>(GetWidth()), GetBitCount()));
}

int CDIB::GetColorCount() const
{
    return m_block.empty() ? 0 : static_cast<int>(ColorsOfDepth(GetBitCount()));
}

RGBQUAD* CDIB::GetColors()
{
    return GetColorCount() == 0 ? nullptr : reinterpret_cast<RGBQUAD*>(m_block.data() + kHeaderBytes);
}

BYTE* CDIB::GetBits()
{
    return m_block.empty() ? nullptr : m_block.data() + BitsOffset(GetBitCount());
}

// ---- CDIBSurface

CDIBSurface::~CDIBSurface()
{
    Destroy();
}

int CDIBSurface::Create(const CDIB& dib)
{
    if (dib.GetInfo() == nullptr)
        return FALSE;
    void* bits = nullptr;
    VOwnedMemoryDC dc(::CreateCompatibleDC(nullptr));
    VOwnedBitmap bitmap(::CreateDIBSection(dc.Get(), dib.GetInfo(), DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!dc || !bitmap)
        return FALSE;
    std::memcpy(bits, dib.GetBits(), dib.GetInfo()->bmiHeader.biSizeImage);

    Destroy();
    m_hBitmap = bitmap.Release();
    m_dc.Attach(dc.Release());
    m_hBitmapOld = static_cast<HBITMAP>(::SelectObject(m_dc.m_hDC, m_hBitmap));
    m_bits = static_cast<BYTE*>(bits);
    return TRUE;
}

void CDIBSurface::Destroy()
{
    if (m_dc.m_hDC == nullptr)
        return;
    ::SelectObject(m_dc.m_hDC, m_hBitmapOld);
    m_dc.DeleteDC();
    ::DeleteObject(m_hBitmap);
    m_hBitmap = nullptr;
    m_hBitmapOld = nullptr;
    m_bits = nullptr;
}
