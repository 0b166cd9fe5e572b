// Logical palettes: how they are made, claimed and drawn.
#include "vgui/imaging/dib_pal.h"

#include "vgui/foundation/gdi_scope.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstddef>

namespace
{

constexpr WORD kPaletteVersion = 0x300;
constexpr int kDisplayColors = 256;
// The system keeps the first and the last of a display's colours for itself.
constexpr int kSystemColorsPerEnd = 10;
constexpr int kFirstUpperSystemColor = kDisplayColors - kSystemColorsPerEnd;
// The wash between them.
constexpr int kCubeSteps = 6;
constexpr int kWashGrays = 20;
constexpr int kGridCells = 16;

using DisplayColors = std::array<PALETTEENTRY, kDisplayColors>;

HPALETTE NewPalette(const PALETTEENTRY* entries, int n)
{
    std::vector<BYTE> memory(offsetof(LOGPALETTE, palPalEntry) +
                             static_cast<size_t>(n) * sizeof(PALETTEENTRY));
    auto* const palette = reinterpret_cast<LOGPALETTE*>(memory.data());
    palette->palVersion = kPaletteVersion;
    palette->palNumEntries = static_cast<WORD>(n);
    std::copy_n(entries, n, palette->palPalEntry);
    return ::CreatePalette(palette);
}

// The system palette's first and last colours at their places, black between them.
DisplayColors SystemColors()
{
    DisplayColors colors{};
    const VOwnedMemoryDC dc(::CreateCompatibleDC(nullptr));
    if (::GetSystemPaletteEntries(dc.Get(), 0, kDisplayColors, colors.data()) == 0) {
        // A display without palette need not tell: its static colours are those of the default palette.
        const auto stock = static_cast<HPALETTE>(::GetStockObject(DEFAULT_PALETTE));
        ::GetPaletteEntries(stock, 0, kSystemColorsPerEnd, colors.data());
        ::GetPaletteEntries(stock, kSystemColorsPerEnd, kSystemColorsPerEnd,
                            colors.data() + kFirstUpperSystemColor);
    }
    std::fill(colors.begin() + kSystemColorsPerEnd, colors.begin() + kFirstUpperSystemColor, PALETTEENTRY{});
    return colors;
}

// Step i of n from black on; the last stays below full intensity.
BYTE WashLevel(int i, int n)
{
    return static_cast<BYTE>(i * 255 / n);
}

// Realises a palette for as long as this lives.
class RealizedPalette
{
public:
    RealizedPalette(HDC hdc, HPALETTE palette, BOOL background)
        : m_hdc(hdc), m_old(::SelectPalette(hdc, palette, background))
    {
        ::RealizePalette(hdc);
    }
    RealizedPalette(const RealizedPalette&) = delete;
    RealizedPalette& operator=(const RealizedPalette&) = delete;
    ~RealizedPalette()
    {
        if (m_old != nullptr)
            ::SelectPalette(m_hdc, m_old, FALSE);
    }

private:
    HDC m_hdc;
    HPALETTE m_old;
};

// The edge behind cell i of the grid, one further on so that neighbours share their frame.
LONG CellEnd(LONG start, LONG length, int i)
{
    return start + static_cast<LONG>((i + 1LL) * length / kGridCells) + 1;
}

} // namespace

CDIBPal::~CDIBPal() = default;

int CDIBPal::Replace(HPALETTE hPalette)
{
    if (hPalette == nullptr)
        return FALSE;
    DeleteObject();
    return Attach(hPalette);
}

int CDIBPal::Create(RGBQUAD* colors, int n)
{
    if (colors == nullptr || n <= 0 || n > USHRT_MAX)
        return FALSE;
    std::vector<PALETTEENTRY> entries;
    entries.reserve(static_cast<size_t>(n));
    for (const RGBQUAD* color = colors; color != colors + n; ++color)
        entries.push_back({color->rgbRed, color->rgbGreen, color->rgbBlue, 0});
    return Replace(NewPalette(entries.data(), n));
}

int CDIBPal::Create(BITMAPINFO* info)
{
    if (info == nullptr || info->bmiHeader.biSize != sizeof(BITMAPINFOHEADER))
        return FALSE;
    const BITMAPINFOHEADER& header = info->bmiHeader;
    DWORD n = header.biClrUsed;
    if (n == 0 && header.biBitCount <= 8)
        n = 1U << header.biBitCount;
    return Create(info->bmiColors, static_cast<int>(std::min<DWORD>(n, INT_MAX)));
}

int CDIBPal::Create(CDIB* dib)
{
    return dib != nullptr && Create(dib->GetColors(), dib->GetColorCount());
}

int CDIBPal::CreateWash()
{
    DisplayColors colors = SystemColors();
    PALETTEENTRY* next = colors.data() + kSystemColorsPerEnd;
    for (int red = 0; red < kCubeSteps; ++red)
        for (int green = 0; green < kCubeSteps; ++green)
            for (int blue = 0; blue < kCubeSteps; ++blue)
                *next++ = {WashLevel(red, kCubeSteps), WashLevel(green, kCubeSteps),
                           WashLevel(blue, kCubeSteps), PC_NOCOLLAPSE};
    for (int i = 0; i < kWashGrays; ++i) {
        const BYTE gray = WashLevel(i, kWashGrays);
        *next++ = {gray, gray, gray, PC_NOCOLLAPSE};
    }
    return Replace(NewPalette(colors.data(), kDisplayColors));
}

int CDIBPal::CreateSystemColorPalette()
{
    return Replace(NewPalette(SystemColors().data(), kDisplayColors));
}

int CDIBPal::SetSysPalColors()
{
    const auto palette = static_cast<HPALETTE>(GetSafeHandle());
    CClientDC dc(CWnd::GetActiveWindow());
    const int staticColors = dc.GetDeviceCaps(NUMCOLORS);
    const int size = dc.GetDeviceCaps(SIZEPALETTE);
    if (palette == nullptr || (dc.GetDeviceCaps(RASTERCAPS) & RC_PALETTE) == 0 ||
        staticColors > kDisplayColors || size <= 0)
        return FALSE;

    // Giving the static colours up and taking them back has the system set them anew.
    ::SetSystemPaletteUse(dc.m_hDC, SYSPAL_NOSTATIC);
    ::SetSystemPaletteUse(dc.m_hDC, SYSPAL_STATIC);
    {
        const RealizedPalette realized(dc.m_hDC, palette, FALSE);
    }
    std::vector<PALETTEENTRY> entries(static_cast<size_t>(size));
    ::GetSystemPaletteEntries(dc.m_hDC, 0, static_cast<UINT>(size), entries.data());
    for (int i = 0; i < size; ++i) {
        const bool isStatic = i < staticColors / 2 || i >= size - staticColors / 2;
        entries[static_cast<size_t>(i)].peFlags = isStatic ? 0 : PC_NOCOLLAPSE;
    }
    return ResizePalette(static_cast<UINT>(size)) &&
           SetPaletteEntries(0, static_cast<UINT>(size), entries.data()) != 0;
}

int CDIBPal::GetNumColors()
{
    WORD count = 0;
    return GetSafeHandle() != nullptr && GetObject(sizeof count, &count) != 0 ? count : 0;
}

void CDIBPal::Draw(HDC hdc, RECT* rc, BOOL background)
{
    const int colors = std::min(GetNumColors(), kDisplayColors);
    if (hdc == nullptr || rc == nullptr || colors == 0)
        return;
    const RealizedPalette realized(hdc, static_cast<HPALETTE>(GetSafeHandle()), background);
    const CRect area(rc);
    for (int cell = 0; cell < colors; ++cell) {
        const int column = cell % kGridCells;
        const int row = cell / kGridCells;
        const LONG left = column == 0 ? area.left : CellEnd(area.left, area.Width(), column - 1) - 1;
        const LONG top = row == 0 ? area.top : CellEnd(area.top, area.Height(), row - 1) - 1;
        const VOwnedBrush brush(::CreateSolidBrush(PALETTEINDEX(cell)));
        const VSelectScope selected(hdc, brush.Get());
        ::Rectangle(hdc, left, top, CellEnd(area.left, area.Width(), column),
                    CellEnd(area.top, area.Height(), row));
    }
}

void CDIBPal::Draw(CDC* pDC, CRect* rc, BOOL background)
{
    Draw(pDC->GetSafeHdc(), rc, background);
}
