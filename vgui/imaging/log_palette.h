// Descriptions of logical palettes. For use inside the library.
#pragma once

#include "vgui/foundation/gdi_scope.h"

#include <afxwin.h>
#include <cstddef>
#include <optional>
#include <vector>

// The version that every LOGPALETTE states.
inline constexpr WORD kLogPaletteVersion = 0x300;

// A LOGPALETTE with its entries, which are black at first.
class VLogPalette
{
public:
    // count: at most 65535.
    explicit VLogPalette(size_t count) : m_memory(offsetof(LOGPALETTE, palPalEntry) + count * kEntryBytes)
    {
        Get()->palVersion = kLogPaletteVersion;
        Get()->palNumEntries = static_cast<WORD>(count);
    }

    // The description; it stays the object's.
    [[nodiscard]] LOGPALETTE* Get() { return reinterpret_cast<LOGPALETTE*>(m_memory.data()); }
    [[nodiscard]] PALETTEENTRY* Entries() { return Get()->palPalEntry; }
    [[nodiscard]] size_t Count() const
    {
        return (m_memory.size() - offsetof(LOGPALETTE, palPalEntry)) / kEntryBytes;
    }
    // Of the whole description.
    [[nodiscard]] size_t Bytes() const { return m_memory.size(); }

    // The palette itself; empty without entries and when GDI refuses.
    [[nodiscard]] VOwnedPalette Create() { return VOwnedPalette(::CreatePalette(Get())); }

private:
    static constexpr size_t kEntryBytes = sizeof(PALETTEENTRY);

    std::vector<BYTE> m_memory;
};

// An identity palette, which needs no translation of indices: the system palette of a DC's device, after a
// palette (null for none) was realised there as foreground palette. Nothing on a device without palette or
// with more than 256 colours. The device's static colours are given up and taken back meanwhile.
std::optional<VLogPalette> SystemIdentityPalette(HDC hDC, HPALETTE hRealized);
