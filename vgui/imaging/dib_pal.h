// Logical palettes for displays of 256 colours, a plain image in memory and a surface to draw on, for
// programs that manage palettes themselves. CDib keeps palette and bitmap of its own.
//
// Operations return TRUE (1) or FALSE (0) unless said.
#pragma once

#include "vgui/export.h"

#include <afxwin.h>
#include <mmsystem.h>
#include <vector>

// A device-independent image in the program's memory: a 40-byte header, a colour table and uncompressed pixel
// rows, bottom row first, each padded to a multiple of 4 bytes. It knows no device; CDIBSurface draws on it.
class VGUI_API CDIB
{
public:
    // An empty image, without header and pixels.
    CDIB() = default;

    // A blank image, colour table and pixels zero. bitCount is 1, 4, 8, 16, 24 or 32. FALSE, and the image
    // stays as it was, for any other depth, an empty size, and one above the limits of CDib.
    int Create(int width, int height, WORD bitCount);
    // The size, depth and colour table of the info, which needs a 40-byte header without compression, and a
    // copy of the pixel rows, or zeros for null. Rows of a top-down image (negative height) are turned over.
    // Colours that the info does not have are black. FALSE as above and for null.
    int Create(const BITMAPINFO* info, const void* bits);

    // The width in pixels; 0 when empty.
    int GetWidth() const;
    // The height in pixels; 0 when empty.
    int GetHeight() const;
    // Bits per pixel; 0 when empty.
    WORD GetBitCount() const;
    // The length of a pixel row in bytes.
    int GetWidthBytes() const;

    // Header and colour table together; null when empty. They stay the object's and last until the next
    // Create.
    const BITMAPINFO* GetInfo() const;
    // The colour table, which may be changed in place; null without one.
    RGBQUAD* GetColors();
    const RGBQUAD* GetColors() const { return const_cast<CDIB*>(this)->GetColors(); }
    // Its entries: 2, 16 or 256, none above 8 bits.
    int GetColorCount() const;
    // The bottom pixel row, with the others behind it; null when empty.
    BYTE* GetBits();
    const BYTE* GetBits() const { return const_cast<CDIB*>(this)->GetBits(); }

private:
    // Header, colour table and rows.
    std::vector<BYTE> m_block;
};

// A memory DC with a bitmap to draw on. The bitmap is a DIB section, so that its pixels can be reached
// directly too.
class VGUI_API CDIBSurface
{
public:
    CDIBSurface() = default;
    CDIBSurface(const CDIBSurface&) = delete;
    CDIBSurface& operator=(const CDIBSurface&) = delete;
    ~CDIBSurface();

    // Replaces the surface by one with the image's size, depth, colours and pixels. FALSE, and the surface
    // stays as it was, for an empty image and when GDI refuses.
    int Create(const CDIB& dib);
    // Ends DC and bitmap. What the program has selected into the DC is its own and no longer selected.
    void Destroy();

    // The DC, which is the surface's own. It has no handle before Create.
    CDC* GetDC() { return &m_dc; }
    // Its handle; null before Create.
    HDC GetHDC() const { return m_dc.m_hDC; }
    // The bitmap's bottom pixel row, laid out as the image's; null before Create. Call GdiFlush between
    // drawing and reading.
    BYTE* GetBits() const { return m_bits; }

private:
    CDC m_dc;
    HBITMAP m_hBitmap = nullptr;    // owned, selected in m_dc
    HBITMAP m_hBitmapOld = nullptr; // what it displaced
    BYTE* m_bits = nullptr;
};

// A logical palette: from a colour table, as a colour wash, or with the system's colours only. Operations
// that make a palette replace the one that the object holds; when they fail it stays.
class VGUI_API CDIBPal : public CPalette
{
public:
    CDIBPal() = default;
    ~CDIBPal() override;

    // Takes red, green and blue of n colours. FALSE for null, for n below 1 and for more than a palette
    // holds.
    int Create(RGBQUAD* colors, int n);
    // Takes the colour table behind a 40-byte header: biClrUsed entries, at 1 to 8 bits at most as many as
    // the depth has, and so many for a biClrUsed of 0. FALSE for null, for another header, and without a
    // colour table.
    int Create(BITMAPINFO* info);
    // Takes the image's colour table. FALSE for null and without one.
    int Create(CDIB* dib);
    // 256 colours: the system's first 10, a cube of 6 x 6 x 6 colours, 20 greys, and the system's last 10.
    // Steps are fractions of 255 that leave out full intensity; this is intended.
    int CreateWash();
    // 256 colours: the system's first 10 and last 10 at their places, black between them.
    int CreateSystemColorPalette();

    // Makes the palette an identity palette: its entries become those of the system palette after it was
    // realised in the active window. FALSE, with nothing changed, without a palette and where the display is
    // no palette device. The display's static colours are given up and taken back meanwhile.
    int SetSysPalColors();

    // Entries of the palette; 0 without one.
    int GetNumColors();

    // Draws the colours as a grid of 16 x 16 swatches in a rectangle in logical coordinates, row by row, each
    // framed with the DC's pen; cells beyond the last colour are left alone. The palette is realised, in the
    // background when background is TRUE.
    void Draw(HDC hdc, RECT* rc, BOOL background);
    void Draw(CDC* pDC, CRect* rc, BOOL background);

    // Palette files (RIFF form "PAL "). Load reads from the current position on, and gives FALSE for a file
    // without palette, for another version than 0x300, for no entries and for entries that are not all there.
    // Save gives FALSE without a palette.

    // Loads from an open multimedia file.
    int Load(HMMIO hmmio);
    // Saves to one.
    int Save(HMMIO hmmio);
    // Loads from a file handle of the operating system, which stays open.
    int Load(UINT hFile);
    // Saves to one.
    int Save(UINT hFile);
    // Loads from an open file on disk; FALSE for null and for a file without a handle, as one in memory.
    int Load(CFile* pFile);
    // Saves to one.
    int Save(CFile* pFile);
    // Loads from a file of that name, in the system's code page. For null and the empty name a file dialog
    // asks; FALSE when it is cancelled. What goes wrong is told in a message box.
    int Load(LPCSTR fileName);
    // Saves over whatever has that name, or asks for one as Load does.
    int Save(LPCSTR fileName);

private:
    // Takes ownership of a palette in place of the present one. FALSE for null.
    int Replace(HPALETTE hPalette);
};
