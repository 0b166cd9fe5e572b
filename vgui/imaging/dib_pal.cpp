// Logical palettes: how they are made, claimed and drawn.
#include "vgui/imaging/dib_pal.h"

#include "vgui/foundation/gdi_scope.h"
#include "vgui/imaging/dib_draw.h"
#include "vgui/imaging/log_palette.h"

#include <algorithm>
#include <climits>

namespace
{

constexpr int kDisplayColors = 256;
// The system keeps the first and the last of a display's colours for itself.
constexpr int kSystemColorsPerEnd = 10;
constexpr int kFirstUpperSystemColor = kDisplayColors - kSystemColorsPerEnd;
// The wash between them.
constexpr int kCubeSteps = 6;
constexpr int kWashGrays = 20;
constexpr int kGridCells = 16;

// The system palette's first and last colours at their places, black between them.
VLogPalette SystemColors()
{
    VLogPalette palette(kDisplayColors);
    PALETTEENTRY* const colors = palette.Entries();
    const VOwnedMemoryDC dc(::CreateCompatibleDC(nullptr));
    if (::GetSystemPaletteEntries(dc.Get(), 0, kDisplayColors, colors) == 0) {
        // A display without palette need not tell: its static colours are those of the default palette.
        const auto stock = static_cast<HPALETTE>(::GetStockObject(DEFAULT_PALETTE));
        ::GetPaletteEntries(stock, 0, kSystemColorsPerEnd, colors);
        ::GetPaletteEntries(stock, kSystemColorsPerEnd, kSystemColorsPerEnd, colors + kFirstUpperSystemColor);
    }
    std::fill(colors + kSystemColorsPerEnd, colors + kFirstUpperSystemColor, PALETTEENTRY{});
    return palette;
}

// Step i of n from black on; the last stays below full intensity.
BYTE WashLevel(int i, int n)
{
    return static_cast<BYTE>(i * 255 / n);
}

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
    VLogPalette palette(static_cast<size_t>(n));
    std::transform(colors, colors + n, palette.Entries(), [](const RGBQUAD& color) {
        return PALETTEENTRY{color.rgbRed, color.rgbGreen, color.rgbBlue, 0};
    });
    return Replace(palette.Create().Release());
}

int CDIBPal::Create(BITMAPINFO* info)
{
    if (info == nullptr || info->bmiHeader.biSize != sizeof(BITMAPINFOHEADER))
        return FALSE;
    const BITMAPINFOHEADER& header = info->bmiHeader;
    DWORD n = header.biClrUsed;
    if (header.biBitCount >= 1 && header.biBitCount <= 8) {
        const DWORD most = 1U << header.biBitCount;
        n = n == 0 ? most : std::min(n, most);
    }
    return Create(info->bmiColors, static_cast<int>(std::min<DWORD>(n, INT_MAX)));
}

int CDIBPal::Create(CDIB* dib)
{
    return dib != nullptr && Create(dib->GetColors(), dib->GetColorCount());
}

int CDIBPal::CreateWash()
{
    VLogPalette palette = SystemColors();
    PALETTEENTRY* next = palette.Entries() + kSystemColorsPerEnd;
    for (int red = 0; red < kCubeSteps; ++red)
        for (int green = 0; green < kCubeSteps; ++green)
            for (int blue = 0; blue < kCubeSteps; ++blue)
                *next++ = {WashLevel(red, kCubeSteps), WashLevel(green, kCubeSteps),
                           WashLevel(blue, kCubeSteps), PC_NOCOLLAPSE};
    for (int i = 0; i < kWashGrays; ++i) {
        const BYTE gray = WashLevel(i, kWashGrays);
        *next++ = {gray, gray, gray, PC_NOCOLLAPSE};
    }
    return Replace(palette.Create().Release());
}

int CDIBPal::CreateSystemColorPalette()
{
    return Replace(SystemColors().Create().Release());
}

int CDIBPal::SetSysPalColors()
{
    if (m_hObject == nullptr)
        return FALSE;
    CClientDC dc(CWnd::GetActiveWindow());
    std::optional<VLogPalette> system = SystemIdentityPalette(dc.m_hDC, PaletteHandle(this));
    if (!system)
        return FALSE;
    const auto size = static_cast<UINT>(system->Count());
    return ResizePalette(size) && SetPaletteEntries(0, size, system->Entries()) != 0;
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
    const VPaletteScope realized(hdc, PaletteHandle(this), background, FALSE);
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
    Draw(pDC != nullptr ? pDC->m_hDC : nullptr, rc, background);
}
