#include "vgui/imaging/log_palette.h"

#include "vgui/imaging/dib_draw.h"

std::optional<VLogPalette> SystemIdentityPalette(HDC hDC, HPALETTE hRealized)
{
    constexpr int kMostColors = 256;
    const int size = ::GetDeviceCaps(hDC, SIZEPALETTE);
    int reserved = ::GetDeviceCaps(hDC, NUMCOLORS);
    if ((::GetDeviceCaps(hDC, RASTERCAPS) & RC_PALETTE) == 0 || reserved > kMostColors || size <= 0 ||
        size > kMostColors)
        return std::nullopt;
    // Drivers that do not know their number of colours know that of the reserved ones.
    if (reserved <= 0 || reserved > size)
        reserved = ::GetDeviceCaps(hDC, NUMRESERVED);

    // Has the system set the static colours anew.
    ::SetSystemPaletteUse(hDC, SYSPAL_NOSTATIC);
    ::SetSystemPaletteUse(hDC, SYSPAL_STATIC);
    {
        const VPaletteScope realized(hDC, hRealized, FALSE, FALSE);
    }
    VLogPalette palette(static_cast<size_t>(size));
    ::GetSystemPaletteEntries(hDC, 0, static_cast<UINT>(size), palette.Entries());
    // The system's own colours stand at both ends.
    for (int i = 0; i < size; ++i) {
        const bool isReserved = i < reserved / 2 || i >= size - reserved / 2;
        palette.Entries()[i].peFlags = isReserved ? 0 : PC_NOCOLLAPSE;
    }
    return palette;
}
