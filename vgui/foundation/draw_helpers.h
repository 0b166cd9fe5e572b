// Drawing functions shared by all self-drawn windows.
//
// Rectangles and points are in the logical coordinates of the given device context; right and bottom are
// exclusive unless said. A null context draws nothing, an empty or an inverted rectangle nothing but growing
// rings and unclipped text. Sizes are logical units; what lies outside the clip box costs no time.
#pragma once

#include "vgui/export.h"

#include <afxwin.h>

// Stands for "no colour" wherever a colour may be absent.
inline constexpr COLORREF VGNoColor = 0xFFFFFFFF;

// ---- Colour arithmetic

// The colour with nDelta added to each channel, clamped to 0..255; a negative delta darkens.
VGUI_API COLORREF VGFadeColor(COLORREF clr, int nDelta);
// The same with a delta of its own for each channel.
VGUI_API COLORREF VGFadeColor(COLORREF clr, int nDeltaR, int nDeltaG, int nDeltaB);
// Each channel becomes 255 minus itself.
VGUI_API COLORREF VGInvertColor(COLORREF clr);

// ---- Fills

// Fills with a gradient: nDir 0 from top (clrFrom) to bottom (clrTo), any other value from left to right.
VGUI_API void VGGradientFillRect(CDC* pDC, const CRect& rect, COLORREF clrFrom, COLORREF clrTo, int nDir);

// Fills with a two-colour pattern:
//   nMode 0  pyramid: clr1 in the centre, clr2 in the corners; dRatio does not count
//   nMode 1  clr1 in a vertical band at dRatio of the width, clr2 at the left and right edge
//   nMode 2  clr1 in a horizontal band at dRatio of the height; the top edge takes the mix of both colours at
//            dRatio, the bottom edge the mix at 1 - dRatio, so that the edges differ unless dRatio is 0.5
// Any other mode, and a ratio whose split is no valid coordinate (such as NaN), draws nothing in modes 1, 2.
VGUI_API void VGGradientFillRectEx(CDC* pDC, const CRect& rect, COLORREF clr1, COLORREF clr2, int nMode,
                                   double dRatio);

// Fills with clr and draws bevelled ribs in a slightly darker tone every nSpacing units. The ribs are counted
// from y = 0 of the context, not from the rectangle's top. Without a positive spacing there are no ribs.
VGUI_API void VGFillShadingRect(CDC* pDC, const CRect& rect, COLORREF clr, int nSpacing);

// Copies pSrc over rcDest with constant transparency: alpha 0 leaves the destination, 255 replaces it. The
// source is the area of rcSrc's size at the origin of pSrc; rcSrc's own position does not count.
VGUI_API void VGAlphaBlend(CDC* pDest, const CRect& rcDest, CDC* pSrc, const CRect& rcSrc, BYTE alpha);

// Blends a vertical gradient, or plain clrFrom when clrTo is VGNoColor, over the rectangle; the opacity is
// the low byte of nAlpha. Nothing is drawn when there is no memory for the picture.
VGUI_API void VGAlphaBlendColorToRect(CDC* pDC, const CRect& rect, int nAlpha, COLORREF clrFrom,
                                      COLORREF clrTo);

// ---- Frames

// Outlines the rectangle with the selected pen; the lines run through right and bottom.
VGUI_API void VGDrawBorder(CDC* pDC, const CRect& rect);

// Draws a control frame of two 1-unit rings inside the rectangle: nStyle 0 flat, 1 raised, others nothing.
// nFade is what VGFadeColor adds to clr on the shaded sides; controls pass VGM.Common.nCtrlFrameFade.
VGUI_API void VGDraw3dCtrlFrame(CDC* pDC, const CRect& rect, COLORREF clr, int nFade, int nStyle);

// Draws nSteps + 1 concentric 1-unit rings, starting with clrFrom on the rectangle and growing outwards
// (nDir 0) or shrinking inwards (nDir 1); other directions and negative steps draw nothing. All three
// channels move towards the red channel of clrTo, and wrap at 8 bits; this is intended.
VGUI_API void VGDrawFadeRect(CDC* pDC, const CRect& rect, COLORREF clrFrom, COLORREF clrTo, int nSteps,
                             int nDir);

// ---- Triangles

// The directions in which triangles point.
inline constexpr int VGTriangleDown = 0;
inline constexpr int VGTriangleUp = 1;
inline constexpr int VGTriangleLeft = 2;
inline constexpr int VGTriangleRight = 3;

// VGTriangleDown: a triangle whose top row fills the rectangle's width. Other directions draw nothing.
VGUI_API void VGDrawSmallSolidTriangle(CDC* pDC, const CRect& rect, COLORREF clr, int nDir);

// A triangle of nSize rows whose tip is the pixel apex. Other directions draw nothing.
VGUI_API void VGDrawSmallSolidTriangle(CDC* pDC, const CPoint& apex, int nSize, COLORREF clr, int nDir);

// ---- Text

// Draws text with a halo of nGlow units that fades from clrText at the letters towards clrGlow, with the
// channel rule of VGDrawFadeRect. nFormat is that of CDC::DrawText; the text is never modified. Leaves the
// context with a transparent background mode and clrText as text colour.
VGUI_API void VGDrawFashionText(CDC* pDC, const CString& text, const CRect& rect, UINT nFormat,
                                COLORREF clrText, COLORREF clrGlow, int nGlow);

// Styles of VGCreateFont, to be added up.
inline constexpr DWORD VGFontBold = 1;
inline constexpr DWORD VGFontItalic = 2;
inline constexpr DWORD VGFontUnderline = 4;
inline constexpr DWORD VGFontStrikeOut = 8;

// Gives font a new font of nPointSize points for pDC's device, or for the screen when pDC is null. A font it
// held before is deleted. Without a face name, or when no font can be made, font stays as it is. Face names
// are cut at the 31 characters that a logical font holds.
VGUI_API void VGCreateFont(CFont& font, CDC* pDC, const wchar_t* face, int nPointSize, DWORD dwStyle);

// ---- Windows

// The background colour for a control: that of its parent when this is a skinned dialog, otherwise the
// system's button face, also for a null window.
VGUI_API COLORREF VGGetParentBkColor(CWnd* pWnd);

// ---- Scoped pen and brush

// A solid 1-unit pen that is selected into a device context for the length of a block. Destruction selects
// the previous pen again and deletes this one. The context must outlive the holder; scopes on one context
// end in the reverse order of their beginning. With a null context the pen is only held.
class VGUI_API VPen : public CPen
{
public:
    // Makes the pen and selects it into a context, which stays the caller's; null for none.
    VPen(HDC hDC, COLORREF clr);
    VPen(CDC* pDC, COLORREF clr);
    ~VPen() override;
    VPen(const VPen&) = delete;
    VPen& operator=(const VPen&) = delete;

    // Replaces the pen by one of another colour and selects that one.
    void Color(COLORREF clr);
    // The pen's colour; VGNoColor when there is no pen.
    [[nodiscard]] COLORREF Color() const;

private:
    void Select(COLORREF clr);
    void Deselect();

    HDC m_hDC;
    HGDIOBJ m_hOldObject = nullptr;
};

// The same for a solid brush. The colour VGNoColor selects the system's NULL_BRUSH, which fills nothing and
// is not owned.
class VGUI_API VBrush : public CBrush
{
public:
    // Makes the brush and selects it into a context, which stays the caller's; null for none.
    VBrush(HDC hDC, COLORREF clr);
    VBrush(CDC* pDC, COLORREF clr);
    ~VBrush() override;
    VBrush(const VBrush&) = delete;
    VBrush& operator=(const VBrush&) = delete;

    // Replaces the brush by one of another colour and selects that one.
    void Color(COLORREF clr);
    // The brush's colour; VGNoColor for the brush that fills nothing.
    [[nodiscard]] COLORREF Color() const;

private:
    void Select(COLORREF clr);
    void Deselect();

    HDC m_hDC;
    HGDIOBJ m_hOldObject = nullptr;
};
