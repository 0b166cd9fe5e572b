// Making the DIB object's image: blank, from memory, from bitmaps and from the screen.
#include "vgui/imaging/dib.h"

#include "vgui/imaging/dib_block.h"
#include "vgui/imaging/log_palette.h"

#include <cstring>
#include <utility>

namespace
{

struct ScreenDepth {
    ScreenDepth()
    {
        const VOwnedScreenDC screen(::GetDC(nullptr));
        bitsPerPixel = static_cast<WORD>(::GetDeviceCaps(screen.Get(), BITSPIXEL));
        planes = static_cast<WORD>(::GetDeviceCaps(screen.Get(), PLANES));
    }

    // The system palette has that many entries; 0 on a screen without one.
    [[nodiscard]] DWORD PaletteEntries() const
    {
        const int bits = bitsPerPixel * planes;
        return bits <= kMaxIndexedBits ? 1U << bits : 0;
    }

    WORD bitsPerPixel = 0;
    WORD planes = 0;
};

// Rounds up to a depth that blank images have. More than 24 bits give 4: hosts rely on it.
WORD BlankDepth(WORD bitCount)
{
    if (bitCount <= 1)
        return 1;
    if (bitCount <= 4)
        return 4;
    if (bitCount <= 8)
        return 8;
    return bitCount <= 24 ? 24 : 4;
}

VOwnedGlobal BlankDib(DWORD width, DWORD height, WORD bitCount)
{
    if (width > LONG_MAX || height > LONG_MAX)
        return {};
    return NewDib(DIBHeader(static_cast<LONG>(width), static_cast<LONG>(height), BlankDepth(bitCount)));
}

// count is at most 256.
void SystemColors(DWORD count, PALETTEENTRY* entries)
{
    const VOwnedScreenDC screen(::GetDC(nullptr));
    ::GetSystemPaletteEntries(screen.Get(), 0, count, entries);
}

// The system palette as a logical one; empty on a screen without palette.
VOwnedPalette SystemPalette()
{
    const DWORD count = ScreenDepth().PaletteEntries();
    if (count == 0)
        return {};
    VLogPalette palette(count);
    SystemColors(count, palette.Entries());
    return palette.Create();
}

VOwnedGlobal CaptureScreen(const CRect& wanted)
{
    const VOwnedMemoryDC screen(::CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr));
    const VOwnedMemoryDC memory(::CreateCompatibleDC(screen.Get()));
    CRect rect;
    if (!rect.IntersectRect(wanted, CRect(0, 0, ::GetDeviceCaps(screen.Get(), HORZRES),
                                          ::GetDeviceCaps(screen.Get(), VERTRES))))
        return {};
    const VOwnedBitmap bitmap(::CreateCompatibleBitmap(screen.Get(), rect.Width(), rect.Height()));
    {
        const VSelectScope selected(memory.Get(), bitmap.Get());
        if (!::BitBlt(memory.Get(), 0, 0, rect.Width(), rect.Height(), screen.Get(), rect.left, rect.top,
                      SRCCOPY))
            return {};
    }
    return DibFromBitmap(bitmap.Get(), SystemPalette().Get());
}

// The block, converted when it has another depth.
VOwnedGlobal InDepth(VOwnedGlobal block, WORD bitCount, HPALETTE hPalette = nullptr)
{
    const bool fits = [&] {
        const VLockedDib dib(block.Get());
        return dib && dib.BitCount() == bitCount;
    }();
    return fits ? std::move(block) : ConvertDIBFormat(block.Get(), bitCount, hPalette);
}

} // namespace

int CDib::Create(DWORD width, DWORD height)
{
    const ScreenDepth depth;
    VOwnedGlobal block = BlankDib(width, height, depth.bitsPerPixel);
    {
        const VLockedDib dib(block.Get());
        if (!dib)
            return FALSE;
        std::memset(dib.Bits(), 0xFF, dib.ImageBytes());
        PALETTEENTRY entries[kMaxDibColors] = {};
        const DWORD count = depth.PaletteEntries();
        SystemColors(count, entries);
        for (DWORD i = 0; i < count; ++i)
            dib.SetColor(i, {entries[i].peBlue, entries[i].peGreen, entries[i].peRed, 0});
    }
    return ReplaceDib(block.Release());
}

int CDib::Create(DWORD width, DWORD height, WORD bitCount)
{
    return ReplaceDib(BlankDib(width, height, bitCount).Release());
}

int CDib::Create(LPBYTE packedDib)
{
    return CreateFromMemory(packedDib, PackedDibBytes(packedDib));
}

int CDib::Create(LPBYTE packedDib, WORD bitCount)
{
    return ReplaceDib(InDepth(CopyPackedDib(packedDib, PackedDibBytes(packedDib)), bitCount).Release());
}

int CDib::CreateFromMemory(const BYTE* memory, size_t length)
{
    return ReplaceDib(CopyPackedDib(memory, length).Release());
}

int CDib::Create(HBITMAP hBitmap)
{
    return ReplaceDib(DibFromSection(hBitmap).Release());
}

int CDib::Create(HBITMAP hBitmap, WORD bitCount)
{
    return ReplaceDib(InDepth(DibFromSection(hBitmap), bitCount).Release());
}

int CDib::Create(HBITMAP hBitmap, HPALETTE hPalette)
{
    return ReplaceDib(DibFromBitmap(hBitmap, hPalette).Release());
}

int CDib::Create(HBITMAP hBitmap, HPALETTE hPalette, WORD bitCount)
{
    return ReplaceDib(InDepth(DibFromBitmap(hBitmap, hPalette), bitCount, hPalette).Release());
}

int CDib::Create(CRect screenRect)
{
    return ReplaceDib(CaptureScreen(screenRect).Release());
}

int CDib::Create(HWND hWnd, WORD mode)
{
    constexpr WORD kWholeWindow = 1;
    constexpr WORD kClientArea = 2;
    CRect rect;
    if (mode == kWholeWindow && ::GetWindowRect(hWnd, &rect))
        return Create(rect);
    if (mode == kClientArea && ::GetClientRect(hWnd, &rect))
        return Create(hWnd, rect);
    return FALSE;
}

int CDib::Create(HWND hWnd, CRect clientRect)
{
    if (!::IsWindow(hWnd))
        return FALSE;
    // Both corners in one call: a mirrored window swaps them.
    ::MapWindowPoints(hWnd, nullptr, reinterpret_cast<POINT*>(&clientRect), 2);
    return Create(clientRect);
}
