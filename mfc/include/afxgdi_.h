// Device contexts and the objects drawn with: pens, brushes, fonts, bitmaps, palettes, regions.
// Part of afxwin.h.
//
// An object owns the handle that it created or had attached, and deletes it when it is destroyed. Objects
// that FromHandle makes for handles of others own nothing and live until the thread is idle. Coordinates are
// the device context's logical ones unless stated otherwise.
#pragma once

#include "afx.h"
#include "afxver_.h"
#include "atltypes.h"

#include <commctrl.h>
#include <windows.h>

class CBitmap;
class CDC;
class CWnd;

// What all GDI objects share: the handle and its ownership.
class AFX_SUBSET_API CGdiObject : public CObject
{
    DECLARE_DYNCREATE(CGdiObject)

public:
    HGDIOBJ m_hObject;

    CGdiObject();
    // Deletes the handle; selected into a device context it must not be.
    ~CGdiObject() override;
    CGdiObject(const CGdiObject&) = delete;
    CGdiObject& operator=(const CGdiObject&) = delete;

    operator HGDIOBJ() const;
    // Null also for a null object.
    HGDIOBJ GetSafeHandle() const;
    // The object that holds the handle, else a temporary one of the fitting class. Null for a null handle.
    static CGdiObject* PASCAL FromHandle(HGDIOBJ hObject);
    // Deletes the calling thread's temporary objects; their handles stay.
    static void PASCAL DeleteTempMap();

    // Takes ownership. FALSE for a null handle.
    BOOL Attach(HGDIOBJ hObject);
    // Gives the handle, and the duty to delete it, to the caller.
    HGDIOBJ Detach();
    // FALSE when there is no handle or the system refuses; the object is empty afterwards in either case.
    BOOL DeleteObject();

    // Fills lpObject with at most nCount bytes; answers the bytes stored, 0 on failure. With a null lpObject
    // it answers the bytes needed.
    int GetObject(int nCount, LPVOID lpObject) const;
    // OBJ_PEN and its like; 0 when the handle is not a GDI object.
    UINT GetObjectType() const;
    BOOL CreateStockObject(int nIndex);
    BOOL UnrealizeObject();
    // Two objects are equal when their handles are.
    BOOL operator==(const CGdiObject& obj) const;
    BOOL operator!=(const CGdiObject& obj) const;
};

class AFX_SUBSET_API CPen : public CGdiObject
{
    DECLARE_DYNAMIC(CPen)

public:
    CPen();
    // These throw CResourceException when the pen cannot be made.
    CPen(int nPenStyle, int nWidth, COLORREF crColor);
    CPen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount = 0,
         const DWORD* lpStyle = nullptr);

    static CPen* PASCAL FromHandle(HPEN hPen);
    operator HPEN() const;

    // nWidth is in logical units; 0 means one device pixel.
    BOOL CreatePen(int nPenStyle, int nWidth, COLORREF crColor);
    BOOL CreatePen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount = 0,
                   const DWORD* lpStyle = nullptr);
    BOOL CreatePenIndirect(LPLOGPEN lpLogPen);
    int GetLogPen(LOGPEN* pLogPen);
    int GetExtLogPen(EXTLOGPEN* pLogPen);
};

class AFX_SUBSET_API CBrush : public CGdiObject
{
    DECLARE_DYNAMIC(CBrush)

public:
    CBrush();
    // These throw CResourceException when the brush cannot be made.
    CBrush(COLORREF crColor);
    CBrush(int nIndex, COLORREF crColor);
    explicit CBrush(CBitmap* pBitmap);

    static CBrush* PASCAL FromHandle(HBRUSH hBrush);
    operator HBRUSH() const;

    BOOL CreateSolidBrush(COLORREF crColor);
    BOOL CreateHatchBrush(int nIndex, COLORREF crColor);
    BOOL CreateBrushIndirect(const LOGBRUSH* lpLogBrush);
    // The bitmap may be deleted afterwards.
    BOOL CreatePatternBrush(CBitmap* pBitmap);
    // A packed DIB: header, colours and pixels in one block. The block stays the caller's.
    BOOL CreateDIBPatternBrush(HGLOBAL hPackedDIB, UINT nUsage);
    BOOL CreateDIBPatternBrush(const void* lpPackedDIB, UINT nUsage);
    BOOL CreateSysColorBrush(int nIndex);
    int GetLogBrush(LOGBRUSH* pLogBrush);
};

class AFX_SUBSET_API CFont : public CGdiObject
{
    DECLARE_DYNAMIC(CFont)

public:
    CFont();

    static CFont* PASCAL FromHandle(HFONT hFont);
    operator HFONT() const;

    BOOL CreateFontIndirect(const LOGFONT* lpLogFont);
    // nHeight in logical units: positive for the cell, negative for the characters. Angles in tenths of a
    // degree.
    BOOL CreateFont(int nHeight, int nWidth, int nEscapement, int nOrientation, int nWeight, BYTE bItalic,
                    BYTE bUnderline, BYTE cStrikeOut, BYTE nCharSet, BYTE nOutPrecision, BYTE nClipPrecision,
                    BYTE nQuality, BYTE nPitchAndFamily, LPCTSTR lpszFacename);
    // nPointSize, and lfHeight of the second, in tenths of a point; converted for pDC, for the screen when
    // null.
    BOOL CreatePointFont(int nPointSize, LPCTSTR lpszFaceName, CDC* pDC = nullptr);
    BOOL CreatePointFontIndirect(const LOGFONT* lpLogFont, CDC* pDC = nullptr);
    // Nonzero on success.
    int GetLogFont(LOGFONT* pLogFont);
};

class AFX_SUBSET_API CBitmap : public CGdiObject
{
    DECLARE_DYNAMIC(CBitmap)

public:
    CBitmap();

    static CBitmap* PASCAL FromHandle(HBITMAP hBitmap);
    operator HBITMAP() const;

    // The resource is looked for in the current module and then along the chain of extension modules.
    BOOL LoadBitmap(LPCTSTR lpszResourceName);
    BOOL LoadBitmap(UINT nIDResource);
    BOOL LoadOEMBitmap(UINT nIDBitmap);
    // Replaces colours while loading; a null map stands for the button colours of the system.
    BOOL LoadMappedBitmap(UINT nIDBitmap, UINT nFlags = 0, LPCOLORMAP lpColorMap = nullptr, int nMapSize = 0);

    // Sizes in pixels.
    BOOL CreateBitmap(int nWidth, int nHeight, UINT nPlanes, UINT nBitcount, const void* lpBits);
    BOOL CreateBitmapIndirect(LPBITMAP lpBitmap);
    BOOL CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight);
    BOOL CreateDiscardableBitmap(CDC* pDC, int nWidth, int nHeight);

    // Nonzero on success.
    int GetBitmap(BITMAP* pBitMap);
    // Bytes copied, 0 on failure.
    DWORD SetBitmapBits(DWORD dwCount, const void* lpBits);
    DWORD GetBitmapBits(DWORD dwCount, LPVOID lpBits) const;
    // In units of 0.1 mm; Windows only remembers them. SetBitmapDimension answers the old ones.
    CSize SetBitmapDimension(int nWidth, int nHeight);
    CSize GetBitmapDimension() const;
};

class AFX_SUBSET_API CPalette : public CGdiObject
{
    DECLARE_DYNAMIC(CPalette)

public:
    CPalette();

    static CPalette* PASCAL FromHandle(HPALETTE hPalette);
    operator HPALETTE() const;

    BOOL CreatePalette(LPLOGPALETTE lpLogPalette);
    BOOL CreateHalftonePalette(CDC* pDC);
    int GetEntryCount();
    // The number of entries read or set. With a null array GetPaletteEntries answers the palette's size.
    UINT GetPaletteEntries(UINT nStartIndex, UINT nNumEntries, LPPALETTEENTRY lpPaletteColors) const;
    UINT SetPaletteEntries(UINT nStartIndex, UINT nNumEntries, LPPALETTEENTRY lpPaletteColors);
    void AnimatePalette(UINT nStartIndex, UINT nNumEntries, LPPALETTEENTRY lpPaletteColors);
    UINT GetNearestPaletteIndex(COLORREF crColor) const;
    BOOL ResizePalette(UINT nNumEntries);
};

// Members that answer int give COMPLEXREGION, SIMPLEREGION, NULLREGION or ERROR.
class AFX_SUBSET_API CRgn : public CGdiObject
{
    DECLARE_DYNAMIC(CRgn)

public:
    CRgn();

    static CRgn* PASCAL FromHandle(HRGN hRgn);
    operator HRGN() const;

    BOOL CreateRectRgn(int x1, int y1, int x2, int y2);
    BOOL CreateRectRgnIndirect(LPCRECT lpRect);
    BOOL CreateEllipticRgn(int x1, int y1, int x2, int y2);
    BOOL CreateEllipticRgnIndirect(LPCRECT lpRect);
    BOOL CreatePolygonRgn(LPPOINT lpPoints, int nCount, int nMode);
    BOOL CreatePolyPolygonRgn(LPPOINT lpPoints, LPINT lpPolyCounts, int nCount, int nPolyFillMode);
    BOOL CreateRoundRectRgn(int x1, int y1, int x2, int y2, int x3, int y3);
    // The device context's closed path, in device coordinates; the path is used up.
    BOOL CreateFromPath(CDC* pDC);
    BOOL CreateFromData(const XFORM* lpXForm, int nCount, const RGNDATA* pRgnData);

    // The region must exist; its old area is replaced.
    void SetRectRgn(int x1, int y1, int x2, int y2);
    void SetRectRgn(LPCRECT lpRect);
    int CombineRgn(CRgn* pRgn1, CRgn* pRgn2, int nCombineMode);
    int CopyRgn(CRgn* pRgnSrc);
    BOOL EqualRgn(CRgn* pRgn) const;
    int OffsetRgn(int x, int y);
    int OffsetRgn(POINT point);
    int GetRgnBox(LPRECT lpRect) const;
    BOOL PtInRegion(int x, int y) const;
    BOOL PtInRegion(POINT point) const;
    BOOL RectInRegion(LPCRECT lpRect) const;
    // Bytes stored; with a null buffer the bytes needed; 0 on failure.
    int GetRegionData(LPRGNDATA lpRgnData, int nCount) const;
};

// A device context. Drawing goes to m_hDC; questions are answered by m_hAttribDC; members that set state do
// it in both. Usually the two are the same handle.
class AFX_SUBSET_API CDC : public CObject
{
    DECLARE_DYNCREATE(CDC)

public:
    HDC m_hDC;
    HDC m_hAttribDC;

    CDC();
    // Deletes the device context that is still attached.
    ~CDC() override;
    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;

    // The handle and its ownership.
    operator HDC() const;
    // The output device context; null also for a null object.
    HDC GetSafeHdc() const;
    static CDC* PASCAL FromHandle(HDC hDC);
    static void PASCAL DeleteTempMap();
    BOOL Attach(HDC hDC);
    // Both handles are null afterwards; the caller owns the answer.
    HDC Detach();
    // Exchange one of the handles without owning it. SetOutputDC is for objects without an attached handle.
    virtual void SetAttribDC(HDC hDC);
    virtual void SetOutputDC(HDC hDC);
    virtual void ReleaseAttribDC();
    virtual void ReleaseOutputDC();
    // The window that the device context draws into, null for other devices.
    CWnd* GetWindow() const;
    BOOL IsPrinting() const;

    BOOL CreateDC(LPCTSTR lpszDriverName, LPCTSTR lpszDeviceName, LPCTSTR lpszOutput, const void* lpInitData);
    BOOL CreateIC(LPCTSTR lpszDriverName, LPCTSTR lpszDeviceName, LPCTSTR lpszOutput, const void* lpInitData);
    // A memory device context for the device of pDC, for the screen when null.
    BOOL CreateCompatibleDC(CDC* pDC);
    BOOL DeleteDC();
    virtual int SaveDC();
    virtual BOOL RestoreDC(int nSavedDC);
    BOOL ResetDC(const DEVMODE* lpDevMode);
    int GetDeviceCaps(int nIndex) const;
    DWORD GetLayout() const;
    DWORD SetLayout(DWORD dwLayout);

    // Selected objects. Each answers what was selected before, possibly as a temporary object; null on
    // failure.
    virtual CGdiObject* SelectStockObject(int nIndex);
    CPen* SelectObject(CPen* pPen);
    CBrush* SelectObject(CBrush* pBrush);
    virtual CFont* SelectObject(CFont* pFont);
    CBitmap* SelectObject(CBitmap* pBitmap);
    // Clips to a copy of the region; the answer is the kind of region as in SelectClipRgn.
    int SelectObject(CRgn* pRgn);
    CGdiObject* SelectObject(CGdiObject* pObject);
    CPalette* SelectPalette(CPalette* pPalette, BOOL bForceBackground);
    UINT RealizePalette();
    void UpdateColors();
    CPen* GetCurrentPen() const;
    CBrush* GetCurrentBrush() const;
    CPalette* GetCurrentPalette() const;
    CFont* GetCurrentFont() const;
    CBitmap* GetCurrentBitmap() const;
    int EnumObjects(int nObjectType, int(CALLBACK* lpfn)(LPVOID, LPARAM), LPARAM lpData);
    // One shared dithered brush of the system's lifetime; it must not be deleted.
    static CBrush* PASCAL GetHalftoneBrush();

    // Drawing attributes. Setters answer the old value.
    COLORREF GetBkColor() const;
    virtual COLORREF SetBkColor(COLORREF crColor);
    int GetBkMode() const;
    int SetBkMode(int nBkMode);
    COLORREF GetTextColor() const;
    virtual COLORREF SetTextColor(COLORREF crColor);
    COLORREF GetDCBrushColor() const;
    COLORREF SetDCBrushColor(COLORREF crColor);
    COLORREF GetDCPenColor() const;
    COLORREF SetDCPenColor(COLORREF crColor);
    COLORREF GetNearestColor(COLORREF crColor) const;
    int GetPolyFillMode() const;
    int SetPolyFillMode(int nPolyFillMode);
    int GetROP2() const;
    int SetROP2(int nDrawMode);
    int GetStretchBltMode() const;
    int SetStretchBltMode(int nStretchMode);
    BOOL GetColorAdjustment(LPCOLORADJUSTMENT lpColorAdjust) const;
    BOOL SetColorAdjustment(const COLORADJUSTMENT* lpColorAdjust);
    int GetArcDirection() const;
    int SetArcDirection(int nArcDirection);
    float GetMiterLimit() const;
    BOOL SetMiterLimit(float fMiterLimit);
    // Brush origins are in device units.
    CPoint GetBrushOrg() const;
    CPoint SetBrushOrg(int x, int y);
    CPoint SetBrushOrg(POINT point);

    // Mapping between logical and device coordinates. Setters answer the old values.
    int GetMapMode() const;
    virtual int SetMapMode(int nMapMode);
    CPoint GetViewportOrg() const;
    virtual CPoint SetViewportOrg(int x, int y);
    CPoint SetViewportOrg(POINT point);
    virtual CPoint OffsetViewportOrg(int nWidth, int nHeight);
    CSize GetViewportExt() const;
    virtual CSize SetViewportExt(int cx, int cy);
    CSize SetViewportExt(SIZE size);
    virtual CSize ScaleViewportExt(int xNum, int xDenom, int yNum, int yDenom);
    CPoint GetWindowOrg() const;
    CPoint SetWindowOrg(int x, int y);
    CPoint SetWindowOrg(POINT point);
    CPoint OffsetWindowOrg(int nWidth, int nHeight);
    CSize GetWindowExt() const;
    virtual CSize SetWindowExt(int cx, int cy);
    CSize SetWindowExt(SIZE size);
    virtual CSize ScaleWindowExt(int xNum, int xDenom, int yNum, int yDenom);
    int GetGraphicsMode() const;
    int SetGraphicsMode(int iMode);
    BOOL GetWorldTransform(XFORM& rXform) const;
    BOOL SetWorldTransform(const XFORM& rXform);
    BOOL ModifyWorldTransform(const XFORM& rXform, DWORD iMode);
    // Sizes come out positive.
    void DPtoLP(LPPOINT lpPoints, int nCount = 1) const;
    void DPtoLP(LPRECT lpRect) const;
    void DPtoLP(LPSIZE lpSize) const;
    void LPtoDP(LPPOINT lpPoints, int nCount = 1) const;
    void LPtoDP(LPRECT lpRect) const;
    void LPtoDP(LPSIZE lpSize) const;
    // HIMETRIC units are 0.01 mm.
    void DPtoHIMETRIC(LPSIZE lpSize) const;
    void HIMETRICtoDP(LPSIZE lpSize) const;
    void LPtoHIMETRIC(LPSIZE lpSize) const;
    void HIMETRICtoLP(LPSIZE lpSize) const;

    // Regions.
    BOOL FillRgn(CRgn* pRgn, CBrush* pBrush);
    BOOL FrameRgn(CRgn* pRgn, CBrush* pBrush, int nWidth, int nHeight);
    BOOL InvertRgn(CRgn* pRgn);
    BOOL PaintRgn(CRgn* pRgn);

    // Clipping. Answers of type int are COMPLEXREGION, SIMPLEREGION, NULLREGION or ERROR. Clip regions are in
    // device units; a null one removes the clipping.
    virtual int GetClipBox(LPRECT lpRect) const;
    virtual BOOL PtVisible(int x, int y) const;
    BOOL PtVisible(POINT point) const;
    virtual BOOL RectVisible(LPCRECT lpRect) const;
    int SelectClipRgn(CRgn* pRgn);
    int SelectClipRgn(CRgn* pRgn, int nMode);
    int ExcludeClipRect(int x1, int y1, int x2, int y2);
    int ExcludeClipRect(LPCRECT lpRect);
    int ExcludeUpdateRgn(CWnd* pWnd);
    int IntersectClipRect(int x1, int y1, int x2, int y2);
    int IntersectClipRect(LPCRECT lpRect);
    int OffsetClipRgn(int x, int y);
    int OffsetClipRgn(SIZE size);
    UINT GetBoundsRect(LPRECT lpRectBounds, UINT flags);
    UINT SetBoundsRect(LPCRECT lpRectBounds, UINT flags);

    // Lines and curves.
    CPoint GetCurrentPosition() const;
    CPoint MoveTo(int x, int y);
    CPoint MoveTo(POINT point);
    // The last point is not drawn.
    BOOL LineTo(int x, int y);
    BOOL LineTo(POINT point);
    BOOL Arc(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4);
    BOOL Arc(LPCRECT lpRect, POINT ptStart, POINT ptEnd);
    BOOL ArcTo(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4);
    BOOL ArcTo(LPCRECT lpRect, POINT ptStart, POINT ptEnd);
    BOOL AngleArc(int x, int y, int nRadius, float fStartAngle, float fSweepAngle);
    BOOL Polyline(LPPOINT lpPoints, int nCount);
    BOOL PolylineTo(const POINT* lpPoints, int nCount);
    BOOL PolyPolyline(const POINT* lpPoints, const DWORD* lpPolyPoints, int nCount);
    BOOL PolyBezier(const POINT* lpPoints, int nCount);
    BOOL PolyBezierTo(const POINT* lpPoints, int nCount);
    BOOL PolyDraw(const POINT* lpPoints, const BYTE* lpTypes, int nCount);

    // Areas; the right and bottom edges are outside.
    void FillRect(LPCRECT lpRect, CBrush* pBrush);
    void FrameRect(LPCRECT lpRect, CBrush* pBrush);
    void InvertRect(LPCRECT lpRect);
    // Leaves the background colour of the device context set to clr.
    void FillSolidRect(LPCRECT lpRect, COLORREF clr);
    void FillSolidRect(int x, int y, int cx, int cy, COLORREF clr);
    // A frame one unit wide, drawn inside the rectangle; it leaves the background colour changed, too.
    void Draw3dRect(LPCRECT lpRect, COLORREF clrTopLeft, COLORREF clrBottomRight);
    void Draw3dRect(int x, int y, int cx, int cy, COLORREF clrTopLeft, COLORREF clrBottomRight);
    BOOL Rectangle(int x1, int y1, int x2, int y2);
    BOOL Rectangle(LPCRECT lpRect);
    BOOL RoundRect(int x1, int y1, int x2, int y2, int x3, int y3);
    BOOL RoundRect(LPCRECT lpRect, POINT point);
    BOOL Ellipse(int x1, int y1, int x2, int y2);
    BOOL Ellipse(LPCRECT lpRect);
    BOOL Chord(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4);
    BOOL Chord(LPCRECT lpRect, POINT ptStart, POINT ptEnd);
    BOOL Pie(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4);
    BOOL Pie(LPCRECT lpRect, POINT ptStart, POINT ptEnd);
    BOOL Polygon(LPPOINT lpPoints, int nCount);
    BOOL PolyPolygon(LPPOINT lpPoints, LPINT lpPolyCounts, int nCount);
    BOOL FloodFill(int x, int y, COLORREF crColor);
    BOOL ExtFloodFill(int x, int y, COLORREF crColor, UINT nFillType);
    BOOL GradientFill(TRIVERTEX* pVertices, ULONG nVertices, void* pMesh, ULONG nMeshElements, DWORD dwMode);

    // Parts of the user interface.
    void DrawFocusRect(LPCRECT lpRect);
    BOOL DrawEdge(LPRECT lpRect, UINT nEdge, UINT nFlags);
    BOOL DrawFrameControl(LPRECT lpRect, UINT nType, UINT nState);
    BOOL DrawIcon(int x, int y, HICON hIcon);
    BOOL DrawIcon(POINT point, HICON hIcon);
    BOOL DrawState(CPoint pt, CSize size, HBITMAP hBitmap, UINT nFlags, HBRUSH hBrush = nullptr);
    BOOL DrawState(CPoint pt, CSize size, CBitmap* pBitmap, UINT nFlags, CBrush* pBrush = nullptr);
    BOOL DrawState(CPoint pt, CSize size, HICON hIcon, UINT nFlags, HBRUSH hBrush = nullptr);
    BOOL DrawState(CPoint pt, CSize size, HICON hIcon, UINT nFlags, CBrush* pBrush);
    BOOL DrawState(CPoint pt, CSize size, LPCTSTR lpszText, UINT nFlags, BOOL bPrefixText = TRUE,
                   int nTextLen = 0, HBRUSH hBrush = nullptr);
    BOOL DrawState(CPoint pt, CSize size, LPCTSTR lpszText, UINT nFlags, BOOL bPrefixText, int nTextLen,
                   CBrush* pBrush);
    BOOL DrawState(CPoint pt, CSize size, DRAWSTATEPROC lpDrawProc, LPARAM lData, UINT nFlags,
                   HBRUSH hBrush = nullptr);
    BOOL DrawState(CPoint pt, CSize size, DRAWSTATEPROC lpDrawProc, LPARAM lData, UINT nFlags,
                   CBrush* pBrush);
    // Erases the frame of lpRectLast and draws that of lpRect by inverting, the frames being size and
    // sizeLast thick. Null brushes stand for the halftone brush, a null lpRectLast for "none yet".
    void DrawDragRect(LPCRECT lpRect, SIZE size, LPCRECT lpRectLast, SIZE sizeLast, CBrush* pBrush = nullptr,
                      CBrush* pBrushLast = nullptr);

    // Bitmaps.
    BOOL PatBlt(int x, int y, int nWidth, int nHeight, DWORD dwRop);
    // pSrcDC may be null where dwRop needs no source.
    BOOL BitBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, DWORD dwRop);
    BOOL StretchBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, int nSrcWidth,
                    int nSrcHeight, DWORD dwRop);
    BOOL MaskBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, CBitmap& maskBitmap,
                 int xMask, int yMask, DWORD dwRop);
    BOOL PlgBlt(LPPOINT lpPoint, CDC* pSrcDC, int xSrc, int ySrc, int nWidth, int nHeight,
                CBitmap& maskBitmap, int xMask, int yMask);
    BOOL TransparentBlt(int xDest, int yDest, int nDestWidth, int nDestHeight, CDC* pSrcDC, int xSrc,
                        int ySrc, int nSrcWidth, int nSrcHeight, UINT clrTransparent);
    BOOL AlphaBlend(int xDest, int yDest, int nDestWidth, int nDestHeight, CDC* pSrcDC, int xSrc, int ySrc,
                    int nSrcWidth, int nSrcHeight, BLENDFUNCTION blend);
    COLORREF GetPixel(int x, int y) const;
    COLORREF GetPixel(POINT point) const;
    COLORREF SetPixel(int x, int y, COLORREF crColor);
    COLORREF SetPixel(POINT point, COLORREF crColor);
    BOOL SetPixelV(int x, int y, COLORREF crColor);
    BOOL SetPixelV(POINT point, COLORREF crColor);
    // A null pRgnUpdate or lpRectUpdate is not filled. Device units but for the rectangles.
    BOOL ScrollDC(int dx, int dy, LPCRECT lpRectScroll, LPCRECT lpRectClip, CRgn* pRgnUpdate,
                  LPRECT lpRectUpdate);

    // Text. Counts are in characters; -1 stands for "up to the terminating zero" where Win32 allows it.
    virtual BOOL TextOut(int x, int y, LPCTSTR lpszString, int nCount);
    BOOL TextOut(int x, int y, const CString& str);
    virtual BOOL ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, LPCTSTR lpszString, UINT nCount,
                            LPINT lpDxWidths);
    BOOL ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, const CString& str, LPINT lpDxWidths);
    virtual CSize TabbedTextOut(int x, int y, LPCTSTR lpszString, int nCount, int nTabPositions,
                                LPINT lpnTabStopPositions, int nTabOrigin);
    CSize TabbedTextOut(int x, int y, const CString& str, int nTabPositions, LPINT lpnTabStopPositions,
                        int nTabOrigin);
    // The text's height; with DT_CALCRECT the rectangle is set instead of anything being drawn. Text of a
    // CString that DT_MODIFYSTRING would change is drawn from a copy.
    virtual int DrawText(LPCTSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat);
    int DrawText(const CString& str, LPRECT lpRect, UINT nFormat);
    virtual int DrawTextEx(LPTSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat,
                           LPDRAWTEXTPARAMS lpDTParams);
    int DrawTextEx(const CString& str, LPRECT lpRect, UINT nFormat, LPDRAWTEXTPARAMS lpDTParams);
    virtual BOOL GrayString(CBrush* pBrush, BOOL(CALLBACK* lpfnOutput)(HDC, LPARAM, int), LPARAM lpData,
                            int nCount, int x, int y, int nWidth, int nHeight);
    CSize GetTextExtent(LPCTSTR lpszString, int nCount) const;
    CSize GetTextExtent(const CString& str) const;
    CSize GetOutputTextExtent(LPCTSTR lpszString, int nCount) const;
    CSize GetOutputTextExtent(const CString& str) const;
    CSize GetTabbedTextExtent(LPCTSTR lpszString, int nCount, int nTabPositions,
                              LPINT lpnTabStopPositions) const;
    CSize GetTabbedTextExtent(const CString& str, int nTabPositions, LPINT lpnTabStopPositions) const;
    CSize GetOutputTabbedTextExtent(LPCTSTR lpszString, int nCount, int nTabPositions,
                                    LPINT lpnTabStopPositions) const;
    CSize GetOutputTabbedTextExtent(const CString& str, int nTabPositions, LPINT lpnTabStopPositions) const;
    BOOL GetTextExtentExPointI(LPWORD pgiIn, int cgi, int nMaxExtent, LPINT lpnFit, LPINT alpDx,
                               LPSIZE lpSize) const;
    BOOL GetTextExtentPointI(LPWORD pgiIn, int cgi, LPSIZE lpSize) const;
    UINT GetTextAlign() const;
    UINT SetTextAlign(UINT nFlags);
    int GetTextFace(int nCount, LPTSTR lpszFacename) const;
    int GetTextFace(CString& rString) const;
    BOOL GetTextMetrics(LPTEXTMETRIC lpMetrics) const;
    BOOL GetOutputTextMetrics(LPTEXTMETRIC lpMetrics) const;
    int SetTextJustification(int nBreakExtra, int nBreakCount);
    int GetTextCharacterExtra() const;
    int SetTextCharacterExtra(int nCharExtra);
    DWORD GetCharacterPlacement(LPCTSTR lpString, int nCount, int nMaxExtent, LPGCP_RESULTS lpResults,
                                DWORD dwFlags) const;
    DWORD GetCharacterPlacement(CString& str, int nMaxExtent, LPGCP_RESULTS lpResults, DWORD dwFlags) const;

    // Fonts.
    BOOL GetCharWidth(UINT nFirstChar, UINT nLastChar, LPINT lpBuffer) const;
    BOOL GetCharWidth(UINT nFirstChar, UINT nLastChar, float* lpFloatBuffer) const;
    BOOL GetOutputCharWidth(UINT nFirstChar, UINT nLastChar, LPINT lpBuffer) const;
    BOOL GetCharWidthI(UINT giFirst, UINT cgi, LPWORD pgi, LPINT lpBuffer) const;
    BOOL GetCharABCWidths(UINT nFirstChar, UINT nLastChar, LPABC lpabc) const;
    BOOL GetCharABCWidths(UINT nFirstChar, UINT nLastChar, LPABCFLOAT lpABCF) const;
    BOOL GetCharABCWidthsI(UINT giFirst, UINT cgi, LPWORD pgi, LPABC lpabc) const;
    CSize GetAspectRatioFilter() const;
    DWORD SetMapperFlags(DWORD dwFlag);
    DWORD GetFontData(DWORD dwTable, DWORD dwOffset, LPVOID lpData, DWORD cbData) const;
    DWORD GetFontLanguageInfo() const;
    int GetKerningPairs(int nPairs, LPKERNINGPAIR lpkrnpair) const;
    UINT GetOutlineTextMetrics(UINT cbData, LPOUTLINETEXTMETRIC lpotm) const;
    DWORD GetGlyphOutline(UINT nChar, UINT nFormat, LPGLYPHMETRICS lpgm, DWORD cbBuffer, LPVOID lpBuffer,
                          const MAT2* lpmat2) const;

    // Paths.
    BOOL BeginPath();
    BOOL EndPath();
    BOOL AbortPath();
    BOOL CloseFigure();
    BOOL FillPath();
    BOOL StrokePath();
    BOOL StrokeAndFillPath();
    BOOL FlattenPath();
    BOOL WidenPath();
    BOOL SelectClipPath(int nMode);
    // The number of points; -1 when there is no path or the arrays are too small.
    int GetPath(LPPOINT lpPoints, LPBYTE lpTypes, int nCount) const;

    // Printing and device escapes. Negative answers are errors.
    virtual int Escape(int nEscape, int nCount, LPCSTR lpszInData, LPVOID lpOutData);
    int Escape(int nEscape, int nInputSize, LPCSTR lpszInputData, int nOutputSize, LPSTR lpszOutputData);
    int DrawEscape(int nEscape, int nInputSize, LPCSTR lpszInputData);
    int StartDoc(LPCTSTR lpszDocName);
    int StartDoc(LPDOCINFO lpDocInfo);
    int StartPage();
    int EndPage();
    int SetAbortProc(BOOL(CALLBACK* lpfn)(HDC, int));
    int AbortDoc();
    int EndDoc();
    BOOL QueryAbort() const;

    // Metafiles, played into the output device context only. Bounds in logical units.
    BOOL PlayMetaFile(HMETAFILE hMF);
    BOOL PlayMetaFile(HENHMETAFILE hEnhMetaFile, LPCRECT lpBounds);
    BOOL AddMetaFileComment(UINT nDataSize, const BYTE* pCommentData);

private:
    // m_hDC was attached, not merely set, and is ours to delete.
    bool m_attached = false;
    // What SetAbortProc was given, for QueryAbort.
    BOOL(CALLBACK* m_abortProc)(HDC, int) = nullptr;
};

// The client area of a window, of the whole screen for a null window. Throws CResourceException when there is
// no device context to be had; released in the destructor.
class AFX_SUBSET_API CClientDC : public CDC
{
    DECLARE_DYNAMIC(CClientDC)

public:
    explicit CClientDC(CWnd* pWnd);
    ~CClientDC() override;

protected:
    HWND m_hWnd;
};

// The whole window with its frame, of the whole screen for a null window; otherwise as CClientDC.
class AFX_SUBSET_API CWindowDC : public CDC
{
    DECLARE_DYNAMIC(CWindowDC)

public:
    explicit CWindowDC(CWnd* pWnd);
    ~CWindowDC() override;

protected:
    HWND m_hWnd;
};

// BeginPaint and EndPaint around the handling of WM_PAINT, and only there. Throws CResourceException.
class AFX_SUBSET_API CPaintDC : public CDC
{
    DECLARE_DYNAMIC(CPaintDC)

public:
    // What BeginPaint said.
    PAINTSTRUCT m_ps;

    explicit CPaintDC(CWnd* pWnd);
    ~CPaintDC() override;

protected:
    HWND m_hWnd;
};
