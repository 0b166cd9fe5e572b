// The library's device-independent bitmap.
#pragma once

#include "vgui/export.h"

#include <afxwin.h>

#undef AFX_API
// Has DECLARE_SERIAL export the operator that extracts an object from an archive.
#define AFX_API VGUI_API

// One image, held as a packed DIB (header, colour table and pixel rows in one block of movable global memory,
// as on the clipboard), with a logical palette and a DIB-section bitmap that follow it.
//
// - Operations return TRUE (1) or FALSE (0) unless said. Those that need pixels answer FALSE, 0 or null for
//   an empty object.
// - An operation that changes the image makes a new block first. A failure up to there leaves the image, its
//   palette and its bitmap as they were. Then the old block is freed, the new one is kept, and the result is
//   that of rebuilding palette and bitmap: it is FALSE, with the new block kept, for a block that GDI cannot
//   show, as an RLE-compressed one.
// - Points and rectangles are in pixels of the image, y counted from the top row, unless said.
// - Bit depths are 1, 4, 8, 16, 24 and 32. Headers have 40 bytes (BITMAPINFOHEADER) or 12
//   (BITMAPCOREHEADER); what the library makes has 40. Rows are stored bottom row first: a top-down block is
//   turned over when it is taken in.
// - Memory from elsewhere is checked first: a header that makes no sense, or an image whose pixel rows are
//   not all there, is refused.
// - No image has more than 2 GB at 32 bits per pixel, nor more than 67,108,863 pixels in a row: GDI may need
//   it in that form to draw it.
// - One thread uses an object: the user-interface thread.
class VGUI_API CDib : public CObject
{
    DECLARE_SERIAL(CDib)

public:
    CDib();
    // Frees block, palette and bitmap.
    ~CDib() override;

    // ---- Creation: replaces the image

    // An image of the screen's depth, by the rule of the next overload, whose pixel bytes are all 0xFF. On a
    // screen of 8 bits or less the colour table is the system palette; else it is zero.
    int Create(DWORD width, DWORD height);
    // A blank image: colour table and pixels all zero. The depth is rounded up: 0 and 1 to 1, to 4, to 8, to
    // 24; more than 24 gives 4. The last is intended. FALSE for an empty size and one above the limits.
    int Create(DWORD width, DWORD height, WORD bitCount);
    // A copy of the packed DIB in memory, which stays the caller's. Its header is checked, and then as many
    // bytes are read as it tells: header, colour table and the larger of biSizeImage and the pixel rows. The
    // caller vouches for that much memory. FALSE for null.
    int Create(LPBYTE packedDib);
    // The same, converted to a depth when it differs.
    int Create(LPBYTE packedDib, WORD bitCount);
    // The pixels of a DIB section, which stays the caller's and must not be selected in a DC. FALSE for any
    // other bitmap.
    int Create(HBITMAP hBitmap);
    // The same, converted to a depth when it differs.
    int Create(HBITMAP hBitmap, WORD bitCount);
    // The pixels of any bitmap, as 1, 4, 8 or (for all above) 24 bits. The palette gives the colours of a
    // palette device's bitmap; null stands for the default palette. Both stay the caller's.
    int Create(HBITMAP hBitmap, HPALETTE hPalette);
    // The same, converted to a depth when it differs.
    int Create(HBITMAP hBitmap, HPALETTE hPalette, WORD bitCount);
    // A picture of a part of the screen, in screen coordinates, clipped to the screen. FALSE for an empty
    // rectangle and one that lies outside.
    int Create(CRect screenRect);
    // A picture of a window as it is on the screen: mode 1 all of it, mode 2 its client area. FALSE for any
    // other mode and for no window.
    int Create(HWND hWnd, WORD mode);
    // A picture of a part of a window, in its client coordinates.
    int Create(HWND hWnd, CRect clientRect);

    // ---- Ownership and access

    // Takes ownership of a packed DIB in movable global memory. FALSE for null and for a block that is no
    // packed DIB; both, and the image so far, stay as they were. A block that GDI cannot show is taken and
    // gives FALSE: GetHandle tells.
    int Attach(HGLOBAL hDib);
    // Gives the block to the caller, who frees it with GlobalFree, and deletes palette and bitmap. Null when
    // the object is empty: palette and bitmap then stay.
    HGLOBAL Detach();
    // Frees the block. Palette and bitmap stay until the next change or the end of the object.
    void Destroy();
    // The block; it stays the object's.
    HGLOBAL GetHandle() const { return m_hDib; }
    // The bitmap, a DIB section. It stays the object's and lasts until the image changes; null when there is
    // none.
    CBitmap* GetBitmap() const { return m_pBitmap; }
    // The palette. It stays the object's and lasts until the image changes; null when there is none, as for
    // an image without colour table.
    CPalette* GetPalette() const { return m_pPalette; }
    // Whether there is no image: no block, or one that holds no DIB. There may be a bitmap nevertheless.
    int IsEmpty() const;

    // How the pixels are stored, a BI_ constant.
    DWORD GetCompression() const;
    // Bits per pixel.
    WORD GetBitCount() const;
    // The width in pixels.
    LONG GetWidth() const;
    // The height in pixels.
    LONG GetHeight() const;
    // The length of a pixel row in bytes, a multiple of 4.
    LONG GetWidthBytes() const;
    // Entries of the colour table; the low 16 bits of the count.
    WORD GetColorNumber() const;
    // The colour table's length in bytes; the low 16 bits.
    WORD GetPaletteSize() const;
    // The first byte of the bottom row. Valid until the image changes; null when empty.
    LPBYTE GetBitsPtr() const;
    // The place of a pixel's first byte, from the first byte of the bottom row. The point is not checked.
    LONG GetPixelOffset(LONG x, LONG y) const;
    // A pixel's colour. At 1 bit white for a set bit and black for a clear one, whatever the colour table
    // says; at 4 and 8 bits the palette's entry, black for one that is missing; above, the pixel's first
    // three bytes as they stand in memory (0x00RRGGBB in 24- and 32-bit images, red and blue the other way
    // round than in a COLORREF): this is intended. 0 outside the image.
    DWORD GetPixel(LONG x, LONG y) const;

    // ---- Rectangles and composition

    // A new packed DIB with that part of the image, which the caller frees with GlobalFree. What lies outside
    // the image is zero. Null on failure, as for an empty rectangle.
    HGLOBAL CopyRect(CRect rect) const;
    // Keeps that part of the image only.
    int Crop(CRect rect);
    // Paints that part of the image white.
    int CutRect(CRect rect);
    // Copies another packed DIB onto the image, its top left corner at a point. It stays the caller's.
    int MergeDib(HGLOBAL hOther, CPoint at);
    // Changes the depth. GDI matches the colours; below 16 bits the colour table becomes black and white, the
    // default palette or the halftone palette. Nothing happens, with TRUE, when the image has that depth.
    int ConvertFormat(WORD bitCount);

    // Makes the palette anew from the block; the operations that change the image do so themselves. FALSE
    // without a colour table, or when GDI refuses; the old palette is gone in any case.
    int BuildPalette();
    // The same for the bitmap. FALSE without an image, or when GDI refuses.
    int BuildBitmap();

    // ---- Files and resources

    // Reads a BMP file, from the file's position to its end, and replaces the image. The header must have 40
    // bytes; the pixels are taken to follow the colour table directly (bfOffBits is ignored); the length that
    // the file states does not count. Without biClrUsed every depth but 24 is taken to have 2 to the power of
    // (bit count modulo 32) colours, thus one at 32 bits, whose pixels are read from 4 bytes further on. This
    // is intended. Exceptions of the file give FALSE.
    int Read(CFile* pFile);
    // Writes the image as a BMP file at the file's position. FALSE for a 12-byte header, with nothing
    // written, and when the file throws.
    int Write(CFile* pFile) const;
    // Reads a BMP file. What keeps the file from being opened is shown to the user.
    int Load(LPCWSTR fileName);
    // Writes a BMP file over whatever has that name. Where Write would refuse the image, a file of that name
    // stays as it is.
    int Save(LPCWSTR fileName) const;
    // Reads a BMP file that is stored as a resource of the module whose resources are current.
    int Load(LPCWSTR resourceName, LPCWSTR resourceType);
    int Load(UINT resourceId, LPCWSTR resourceType);
    // Load any picture that GDI+ reads, or a bitmap resource, into GetBitmap() only: block and palette stay.
    // What is transparent becomes black. The host has started GDI+. Without a picture false; the old bitmap
    // is gone then too, unless the file could not be opened.
    bool Load(const CString& fileName);
    bool Load(UINT resourceId);
    // Reads or writes a BMP file at the archive's place. Nothing is stored for an image that Write refuses;
    // loading then leaves the image as it was.
    void Serialize(CArchive& ar) override;

    // ---- Display
    //
    // Destinations are in pDC's logical coordinates. FALSE for no DC, an empty object, and a stretch with
    // coordinates that GDI does not have (beyond 2 to the power of 27). Unless said,
    // pDC's palette, objects and stretch mode are afterwards what they were.

    // The four plain displays: copy w x h pixels from (xSrc, ySrc) to (x, y), stretch a part of the image
    // into a rectangle, copy the whole image to (x, y). They use pDC's stretch mode and answer what GDI does.
    // An image that IsRequireDither is drawn by DitherDisplay.
    int Display(CDC* pDC, int x, int y, int w, int h, int xSrc, int ySrc, DWORD rop) const;
    int Display(CDC* pDC, int x, int y, int w, int h, int xSrc, int ySrc, int wSrc, int hSrc,
                DWORD rop) const;
    int Display(CDC* pDC, int x, int y, DWORD rop) const;
    int Display(CDC* pDC, CRect rcDest, CRect rcSrc, DWORD rop) const;

    // Reveals the image at (x, y) with a transition effect. Returns when it is over; no messages are handled
    // meanwhile. step: pixels per frame, below 1 counts as 1; delay: milliseconds after each frame. FALSE,
    // with nothing drawn, for other effects than
    //   1 to 4    bands from the top, the bottom, the left, the right
    //   5, 6      bands from top and bottom, from both sides, towards the middle
    //   7 to 10   sliding in from the top, the bottom, the left, the right
    //   11, 12    the halves sliding in from top and bottom, from left and right
    //   13        the left half from the top, the right half from the bottom
    //   14        the top half from the left, the bottom half from the right; an odd last row stays out
    //   15, 16    alternate columns from top and bottom, alternate rows from left and right. They sweep over
    //             the image once, in the first frame, when nothing has come in yet, and so show nothing. This
    //             is intended.
    //   17, 18    a blind of columns, of rows, step pixels apart
    //   19        a mosaic: blocks of step x step pixels in the order of rand(), which the host seeds. FALSE
    //             for a step below 1
    //   20        fading in from black in step frames; rop does not count. Palette and bitmap keep the last
    //             frame, the block its colours
    int Display(int effect, CDC* pDC, int x, int y, int step, DWORD delay, DWORD rop);
    // Wipes the image's area with the same effects, towards the window colour; 20 fades to black and leaves
    // palette and bitmap so until the image changes. All others cover the area, and nothing else.
    int Clear(int effect, CDC* pDC, int x, int y, int step, DWORD delay);

    // Stretch GetBitmap() into a window's client area or a rectangle; false without one. The source begins at
    // the rectangle's top left corner, too: a rectangle that is not at the origin shows less. This is
    // intended.
    bool Display(CWnd* pWnd) const;
    bool Display(CDC* pDC, const CRect& rc) const;
    // Draws the image, leaving out the pixels of the key colour; all of it for 0xFFFFFFFF, which is no
    // colour.
    int DisplayTransparent(CDC* pDC, int x, int y, COLORREF key) const;
    // Draws the palette's entries, outlined with pDC's pen, as a grid of as many columns as rows; entries
    // beyond a square number stand in further rows below the rectangle. FALSE without a palette.
    int DisplayPalette(CDC* pDC, CRect rc) const;
    // Whether the image has 24 bits and the device at most 8.
    int IsRequireDither(CDC* pDC) const;
    // Stretches a part of the image into a rectangle through a dithered 8-bit copy. rop is ignored on
    // purpose: the picture is copied. FALSE also when memory is short.
    int DitherDisplay(CDC* pDC, CRect rcDest, CRect rcSrc, DWORD rop) const;

    // A memory DC, compatible with pDC or, for null, the screen, to draw into GetBitmap(); it stays the
    // object's, and is the same one until EndPaint. The object must not be changed or displayed in between.
    // Null without a bitmap.
    CDC* BeginPaint(CDC* pDC);
    // Takes the drawing over into the image and ends the DC; without BeginPaint nothing happens.
    void EndPaint();

    // ---- Processing: replaces the image
    //
    // All work at every depth. FALSE for parameters out of range, for a compressed image (any biCompression
    // but BI_RGB) and when memory is short. Operations that move pixels or change colours by themselves keep
    // the depth; an image of up to 8 bits keeps its pixels and gets another colour table in the latter case.
    // Operations that mix pixels give 24 bits for an image of up to 8 bits and keep the depth of others. Each
    // channel is worked on by itself; at 16 bits (5 per channel) as its full intensity, 0 to 255; at 32 bits
    // the fourth byte stays, except that resampling mixes it as well.

    // Turns the image by a right angle, clockwise.
    int Rotate90();
    // Turns it by two right angles.
    int Rotate180();
    // Turns it by a right angle, counterclockwise.
    int Rotate270();
    // Exchanges left and right.
    int FlipHorz();
    // Exchanges top and bottom.
    int FlipVert();

    // Resamples to the old lengths times the ratios (above 0), rounded, but at least one pixel.
    int Zoom(double ratioX, double ratioY);
    // Resamples to a size in pixels (1 and more): bilinear interpolation where the image grows, the triangle
    // filter over all that a pixel covers where it shrinks. Mixes pixels; TRUE, with nothing changed, for the
    // present size.
    int ChangeImageSize(int cx, int cy);

    // Where the image lies on a changed canvas.
    enum CanvasPosition {
        CanvasTopLeft,
        CanvasTop,
        CanvasTopRight,
        CanvasLeft,
        CanvasCenter,
        CanvasRight,
        CanvasBottomLeft,
        CanvasBottom,
        CanvasBottomRight,
    };
    // Changes the size (1 and more pixels) without resampling, cutting off what finds no room. New room is
    // white, or the colour of the table nearest to it. position: a CanvasPosition.
    int ChangeCanvasSize(int cx, int cy, int position);

    // Adds a value, -255 to 255, to all channels. Results below 0 and above 255 are cut off, here and below.
    int AdjustBrightness(int value);
    // Stretches intensities around 128 by 259 (255 + value) / (255 (259 - value)); value: -255 (all of the
    // same grey) to 255.
    int AdjustContrast(int value);
    // Adds a value to each channel, and one to all; each -255 to 255.
    int AdjustColor(int red, int green, int blue, int value);

    // How ChangeToGrayscale weighs the channels.
    enum GrayscaleMode {
        GrayWeights,   // weights of the caller's
        GrayBT601,     // 0.299 red, 0.587 green, 0.114 blue
        GrayBT709,     // 0.2126 red, 0.7152 green, 0.0722 blue
        GrayAverage,   // equal weights
        GrayLightness, // the mean of the least and the greatest channel
    };
    // Makes the three channels equal: their weighted mean. mode: a GrayscaleMode. The weights, 0 or more with
    // any sum above 0, count for GrayWeights only.
    int ChangeToGrayscale(int mode, double red, double green, double blue);

    // Reduces the image to so many colours, 2 to 256, in 4 bits (up to 16 colours) or 8. An image with no
    // more colours keeps them exactly; otherwise they are chosen by median cut. Each pixel gets the nearest
    // one.
    int ColorQuantize(int colors);

    // Filters of 3 x 3 pixels, and more for the median; all of them mix pixels. The pixels of the border are
    // repeated outside. strength: how much of the filtered image there is in the result, 0 to 100 percent.

    // Which edges EdgeEnhance finds.
    enum EdgeMode {
        EdgeVertical,   // Sobel operator across: edges that stand upright
        EdgeHorizontal, // Sobel operator down: edges that lie
        EdgeBoth,       // the sum of both amounts
    };
    // Adds the amount of the gradient, a quarter of the Sobel operator's. mode: an EdgeMode.
    int EdgeEnhance(int strength, int mode);

    // The kernel of HighPass, row by row.
    enum HighPassMode {
        HighPassLaplace8, // -1 -1 -1   -1 9 -1   -1 -1 -1
        HighPassLaplace4, //  0 -1  0   -1 5 -1    0 -1  0
        HighPassMixed,    //  1 -2  1   -2 5 -2    1 -2  1
    };
    // Sharpens. mode: a HighPassMode.
    int HighPass(int strength, int mode);

    // The kernel of LowPass, row by row.
    enum LowPassMode {
        LowPassBox,      // 1 1 1   1 1 1   1 1 1, by 9
        LowPassWeighted, // 1 1 1   1 2 1   1 1 1, by 10
        LowPassGauss,    // 1 2 1   2 4 2   1 2 1, by 16
    };
    // Smooths. mode: a LowPassMode.
    int LowPass(int strength, int mode);

    // Gives each pixel the median of a square of size x size pixels around it. size: odd, 3 to 31.
    int MedianFilter(int size);

    // For the two operations below; combined with a bitwise or.
    enum Channel { ChannelRed = 1, ChannelGreen = 2, ChannelBlue = 4 };
    // Keeps some channels and makes the others 0. channels: a combination of Channel, 0 allowed.
    int FilteRGB(int channels);
    // Shows one channel as a grey image. channel: one Channel.
    int SeparateRGB(int channel);

private:
    // Ends an operation that made a new block, whose owner the object becomes: frees the old one, rebuilds
    // palette and bitmap and answers how that went. For null nothing happens and the answer is FALSE.
    int ReplaceDib(HGLOBAL hDib);
    // BuildPalette, whose result does not count, and BuildBitmap.
    int UpdateInternal();
    // Takes a copy of the packed DIB in length bytes of memory, which are not written to.
    int CreateFromMemory(const BYTE* memory, size_t length);
    // Reads a BMP file from the file's position to a place in it, or to its end, as Read does.
    int ReadUpTo(CFile& file, ULONGLONG end);
    // Takes a bitmap loaded by GDI+ (a GpBitmap*, null allowed), disposing of it, into m_pBitmap.
    bool TakeGdiPlusBitmap(void* gdiPlusBitmap);

    int DisplayFadeIn(CDC* pDC, int x, int y, int steps, DWORD delay);
    int DisplayFadeOut(CDC* pDC, int x, int y, int steps, DWORD delay);
    int DisplayMosaicIn(CDC* pDC, int x, int y, int block, DWORD delay, DWORD rop);
    int DisplayMosaicOut(CDC* pDC, int x, int y, int block, DWORD delay);

    HGLOBAL m_hDib;
    HBITMAP m_hBitmap;        // held by m_pBitmap, null after a GDI+ load
    CPalette* m_pPalette;     // owned
    CBitmap* m_pBitmap;       // owned
    CDC* m_pMemDC;            // owned, between BeginPaint and EndPaint
    CGdiObject* m_pBitmapOld; // what BeginPaint displaced in m_pMemDC; temporary objects
    CPalette* m_pPaletteOld;
};

#undef AFX_API
// Empty again, as MFC has it.
#define AFX_API
