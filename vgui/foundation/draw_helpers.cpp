#include "vgui/foundation/draw_helpers.h"

#include "vgui/foundation/gdi_scope.h"
#include "vgui/foundation/skin_host.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <iterator>

namespace
{

constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr int kMaxChannel = 255;
constexpr int kRibShade = -20;
constexpr int kPointsPerInch = 72;
constexpr int kMaxSurface = 32767; // no surface of a device is wider or higher

enum FadeDirection { kOutwards = 0, kInwards = 1 };
enum FrameStyle { kFlat = 0, kRaised = 1 };
enum GradientPattern { kPyramid = 0, kVerticalBand = 1, kHorizontalBand = 2 };
constexpr int kVertical = 0;
constexpr int kHorizontal = 1;

// What of the context can be seen; empty when nothing can.
CRect ClipBox(CDC* pDC)
{
    CRect clip;
    if (pDC == nullptr || ::GetClipBox(pDC->m_hDC, &clip) == ERROR)
        clip.SetRectEmpty();
    return clip;
}

// A rectangle of at least one unit whose size is a number, on a context that exists.
bool IsDrawable(const CDC* pDC, const CRect& rect)
{
    return pDC != nullptr && pDC->m_hDC != nullptr && !rect.IsRectEmpty() &&
           int64_t{rect.right} - rect.left <= INT_MAX && int64_t{rect.bottom} - rect.top <= INT_MAX;
}

// False when an edge lies beyond the range of coordinates.
bool MakeRect(int64_t left, int64_t top, int64_t right, int64_t bottom, CRect& rect)
{
    for (const int64_t edge : {left, top, right, bottom})
        if (edge < INT_MIN || edge > INT_MAX)
            return false;
    rect.SetRect(static_cast<int>(left), static_cast<int>(top), static_cast<int>(right),
                 static_cast<int>(bottom));
    return true;
}

int ClampChannel(int64_t value)
{
    return static_cast<int>(std::clamp<int64_t>(value, 0, kMaxChannel));
}

// A colour that moves from clrFrom towards clrTo in equal steps. Every channel moves towards the red one of
// clrTo; this is intended.
class ColorRamp
{
public:
    ColorRamp(COLORREF clrFrom, COLORREF clrTo, int64_t stepCount)
        : m_clrFrom(clrFrom), m_stepR((GetRValue(clrTo) - GetRValue(clrFrom)) / stepCount),
          m_stepG((GetRValue(clrTo) - GetGValue(clrFrom)) / stepCount),
          m_stepB((GetRValue(clrTo) - GetBValue(clrFrom)) / stepCount)
    {
    }

    // Channels wrap at 8 bits instead of stopping at 255.
    COLORREF At(int64_t index) const
    {
        return RGB((GetRValue(m_clrFrom) + m_stepR * index) & 0xFF,
                   (GetGValue(m_clrFrom) + m_stepG * index) & 0xFF,
                   (GetBValue(m_clrFrom) + m_stepB * index) & 0xFF);
    }

private:
    COLORREF m_clrFrom;
    int64_t m_stepR;
    int64_t m_stepG;
    int64_t m_stepB;
};

TRIVERTEX Vertex(int x, int y, COLORREF clr)
{
    return {x,
            y,
            static_cast<COLOR16>(GetRValue(clr) << 8),
            static_cast<COLOR16>(GetGValue(clr) << 8),
            static_cast<COLOR16>(GetBValue(clr) << 8),
            0};
}

void FillTriangle(CDC* pDC, CPoint tip, COLORREF clrTip, CPoint corner1, CPoint corner2, COLORREF clrCorners)
{
    TRIVERTEX vertices[] = {Vertex(tip.x, tip.y, clrTip), Vertex(corner1.x, corner1.y, clrCorners),
                            Vertex(corner2.x, corner2.y, clrCorners)};
    GRADIENT_TRIANGLE triangle = {0, 1, 2};
    ::GradientFill(pDC->m_hDC, vertices, 3, &triangle, 1, GRADIENT_FILL_TRIANGLE);
}

void FillPyramid(CDC* pDC, const CRect& rect, COLORREF clrCentre, COLORREF clrCorners)
{
    const CPoint centre(rect.left + rect.Width() / 2, rect.top + rect.Height() / 2);
    const CPoint topLeft(rect.left, rect.top);
    const CPoint topRight(rect.right, rect.top);
    const CPoint bottomLeft(rect.left, rect.bottom);
    const CPoint bottomRight(rect.right, rect.bottom);
    FillTriangle(pDC, centre, clrCentre, topLeft, topRight, clrCorners);
    FillTriangle(pDC, centre, clrCentre, bottomRight, topRight, clrCorners);
    FillTriangle(pDC, centre, clrCentre, bottomRight, bottomLeft, clrCorners);
    FillTriangle(pDC, centre, clrCentre, topLeft, bottomLeft, clrCorners);
}

// start + extent * ratio, cut to an integer; false when that is no coordinate.
bool SplitAt(int start, int extent, double ratio, int& split)
{
    const double offset = extent * ratio;
    if (!(offset > -INT_MAX / 2.0 && offset < INT_MAX / 2.0))
        return false;
    const int64_t position = int64_t{start} + static_cast<int>(offset);
    split = static_cast<int>(position);
    return split == position;
}

// The second colour for a ratio of 1, the first for 0; outside of that range channels wrap at 8 bits.
COLORREF MixColors(COLORREF clr1, COLORREF clr2, double ratio)
{
    const auto mix = [ratio](int channel1, int channel2) {
        return static_cast<int64_t>(channel1 + (channel2 - channel1) * ratio) & 0xFF;
    };
    return RGB(mix(GetRValue(clr1), GetRValue(clr2)), mix(GetGValue(clr1), GetGValue(clr2)),
               mix(GetBValue(clr1), GetBValue(clr2)));
}

// Sets the pixels of an area, as far as they can be seen. The limits are inclusive and may lie beyond the
// range of coordinates.
void SetPixels(CDC* pDC, const CRect& clip, int64_t left, int64_t top, int64_t right, int64_t bottom,
               COLORREF clr)
{
    left = std::max<int64_t>(left, clip.left);
    top = std::max<int64_t>(top, clip.top);
    right = std::min<int64_t>(right, int64_t{clip.right} - 1);
    bottom = std::min<int64_t>(bottom, int64_t{clip.bottom} - 1);
    for (int64_t y = top; y <= bottom; ++y)
        for (int64_t x = left; x <= right; ++x)
            pDC->SetPixel(static_cast<int>(x), static_cast<int>(y), clr);
}

// By how much a rectangle must grow at least to reach the clip box, and at most so that its outline still
// shows inside; the range is never longer than the clip box.
struct GrowthRange {
    int64_t gap;
    int64_t reach;
};

GrowthRange VisibleRings(const CRect& rect, const CRect& clip)
{
    const int64_t gap = std::max({int64_t{rect.left} - clip.right, int64_t{clip.left} - rect.right,
                                  int64_t{rect.top} - clip.bottom, int64_t{clip.top} - rect.bottom});
    const int64_t reach = std::max({int64_t{rect.left} - clip.left, int64_t{clip.right} - rect.right,
                                    int64_t{rect.top} - clip.top, int64_t{clip.bottom} - rect.bottom});
    return {gap, reach};
}

// How far text that is drawn at the rectangle can reach beyond it.
CSize TextOverhang(CDC* pDC, const CString& text, const CRect& rect, UINT nFormat)
{
    if ((nFormat & DT_NOCLIP) == 0)
        return {0, 0};
    CRect measured(rect);
    ::DrawText(pDC->m_hDC, text, text.GetLength(), &measured, nFormat | DT_CALCRECT);
    // Italic letters lean out of their cells, at most by their height.
    const int lean = measured.Height();
    return {measured.Width() + lean, measured.Height() + lean};
}

// The largest shift of the text in any direction that still leaves something of it to be seen.
int64_t VisibleShift(CDC* pDC, const CString& text, const CRect& rect, UINT nFormat)
{
    const CRect clip = ClipBox(pDC);
    const CSize overhang = TextOverhang(pDC, text, rect, nFormat);
    const int64_t across =
        std::max(int64_t{clip.right} - rect.left, int64_t{rect.right} - clip.left) + overhang.cx;
    const int64_t down =
        std::max(int64_t{clip.bottom} - rect.top, int64_t{rect.bottom} - clip.top) + overhang.cy;
    return std::min<int64_t>(std::max(across, down), kMaxSurface);
}

} // namespace

COLORREF VGFadeColor(COLORREF clr, int nDelta)
{
    return VGFadeColor(clr, nDelta, nDelta, nDelta);
}

COLORREF VGFadeColor(COLORREF clr, int nDeltaR, int nDeltaG, int nDeltaB)
{
    return RGB(ClampChannel(int64_t{GetRValue(clr)} + nDeltaR),
               ClampChannel(int64_t{GetGValue(clr)} + nDeltaG),
               ClampChannel(int64_t{GetBValue(clr)} + nDeltaB));
}

COLORREF VGInvertColor(COLORREF clr)
{
    return RGB(kMaxChannel - GetRValue(clr), kMaxChannel - GetGValue(clr), kMaxChannel - GetBValue(clr));
}

void VGGradientFillRect(CDC* pDC, const CRect& rect, COLORREF clrFrom, COLORREF clrTo, int nDir)
{
    if (!IsDrawable(pDC, rect))
        return;
    TRIVERTEX vertices[] = {Vertex(rect.left, rect.top, clrFrom), Vertex(rect.right, rect.bottom, clrTo)};
    GRADIENT_RECT mesh = {0, 1};
    ::GradientFill(pDC->m_hDC, vertices, 2, &mesh, 1,
                   nDir == kVertical ? GRADIENT_FILL_RECT_V : GRADIENT_FILL_RECT_H);
}

void VGGradientFillRectEx(CDC* pDC, const CRect& rect, COLORREF clr1, COLORREF clr2, int nMode, double dRatio)
{
    if (!IsDrawable(pDC, rect))
        return;
    CRect first(rect);
    CRect second(rect);
    int split = 0;
    switch (nMode) {
    case kPyramid:
        FillPyramid(pDC, rect, clr1, clr2);
        break;
    case kVerticalBand:
        if (!SplitAt(rect.left, rect.Width(), dRatio, split))
            return;
        first.right = second.left = split;
        VGGradientFillRect(pDC, first, clr2, clr1, kHorizontal);
        VGGradientFillRect(pDC, second, clr1, clr2, kHorizontal);
        break;
    case kHorizontalBand:
        if (!SplitAt(rect.top, rect.Height(), dRatio, split))
            return;
        first.bottom = second.top = split;
        VGGradientFillRect(pDC, first, MixColors(clr1, clr2, dRatio), clr1, kVertical);
        VGGradientFillRect(pDC, second, clr1, MixColors(clr1, clr2, 1 - dRatio), kVertical);
        break;
    default:
        break;
    }
}

void VGFillShadingRect(CDC* pDC, const CRect& rect, COLORREF clr, int nSpacing)
{
    constexpr int kRibHeight = 3;
    const CRect clip = ClipBox(pDC);
    if (!IsDrawable(pDC, rect) || rect.left >= clip.right || rect.right <= clip.left)
        return;
    pDC->FillSolidRect(&rect, clr);
    if (nSpacing <= 0)
        return;

    VPen pen(pDC, VGFadeColor(clr, kRibShade));
    const int64_t end = std::min<int64_t>(int64_t{rect.bottom} - rect.top, int64_t{clip.bottom} + kRibHeight);
    const int64_t firstVisible = std::max<int64_t>(1, clip.top / nSpacing);
    for (int64_t y = firstVisible * nSpacing; y < end; y += nSpacing) {
        const int base = static_cast<int>(y);
        POINT rib[] = {{rect.left + 1, base},
                       {rect.left + kRibHeight, base - kRibHeight},
                       {rect.right - kRibHeight, base - kRibHeight},
                       {rect.right - 1, base}};
        pDC->Polyline(rib, static_cast<int>(std::size(rib)));
    }
}

void VGAlphaBlend(CDC* pDest, const CRect& rcDest, CDC* pSrc, const CRect& rcSrc, BYTE alpha)
{
    if (!IsDrawable(pDest, rcDest) || !IsDrawable(pSrc, rcSrc))
        return;
    const BLENDFUNCTION blend = {AC_SRC_OVER, 0, alpha, 0};
    ::AlphaBlend(pDest->m_hDC, rcDest.left, rcDest.top, rcDest.Width(), rcDest.Height(), pSrc->m_hDC, 0, 0,
                 rcSrc.Width(), rcSrc.Height(), blend);
}

void VGAlphaBlendColorToRect(CDC* pDC, const CRect& rect, int nAlpha, COLORREF clrFrom, COLORREF clrTo)
{
    if (!IsDrawable(pDC, rect))
        return;
    CDC memory;
    CBitmap bitmap;
    if (!memory.CreateCompatibleDC(pDC) || !bitmap.CreateCompatibleBitmap(pDC, rect.Width(), rect.Height()))
        return;
    const VSelectScope selected(memory, bitmap);
    const CRect picture(0, 0, rect.Width(), rect.Height());
    if (clrTo != VGNoColor)
        VGGradientFillRect(&memory, picture, clrFrom, clrTo, kVertical);
    else
        memory.FillSolidRect(&picture, clrFrom);
    VGAlphaBlend(pDC, rect, &memory, picture, LOBYTE(nAlpha));
}

void VGDrawBorder(CDC* pDC, const CRect& rect)
{
    if (!IsDrawable(pDC, rect))
        return;
    pDC->MoveTo(rect.left, rect.top);
    pDC->LineTo(rect.right, rect.top);
    pDC->LineTo(rect.right, rect.bottom);
    pDC->LineTo(rect.left, rect.bottom);
    pDC->LineTo(rect.left, rect.top);
}

void VGDraw3dCtrlFrame(CDC* pDC, const CRect& rect, COLORREF clr, int nFade, int nStyle)
{
    if (!IsDrawable(pDC, rect) || (nStyle != kFlat && nStyle != kRaised))
        return;
    const COLORREF faded = VGFadeColor(clr, nFade);
    pDC->Draw3dRect(&rect, clr, nStyle == kFlat ? clr : faded);
    CRect inner(rect);
    inner.DeflateRect(1, 1);
    if (!inner.IsRectEmpty())
        pDC->Draw3dRect(&inner, kWhite, nStyle == kFlat ? faded : clr);
}

void VGDrawFadeRect(CDC* pDC, const CRect& rect, COLORREF clrFrom, COLORREF clrTo, int nSteps, int nDir)
{
    if (nSteps < 0 || (nDir != kOutwards && nDir != kInwards))
        return;
    const CRect clip = ClipBox(pDC);
    if (clip.IsRectEmpty())
        return;
    const ColorRamp ramp(clrFrom, clrTo, int64_t{nSteps} + 1);
    // Shrinking is growing by a negative amount.
    const int sign = nDir == kOutwards ? 1 : -1;
    const auto [gap, reach] = VisibleRings(rect, clip);
    const int64_t first = std::max<int64_t>(0, sign > 0 ? gap : -reach);
    const int64_t last = std::min<int64_t>(nSteps, sign > 0 ? reach : -gap);
    for (int64_t i = first; i <= last; ++i) {
        const int64_t grown = sign * i;
        CRect ring;
        if (!MakeRect(rect.left - grown, rect.top - grown, rect.right + grown, rect.bottom + grown, ring) ||
            !IsDrawable(pDC, ring))
            continue;
        const COLORREF clr = ramp.At(i);
        pDC->Draw3dRect(&ring, clr, clr);
    }
}

void VGDrawSmallSolidTriangle(CDC* pDC, const CRect& rect, COLORREF clr, int nDir)
{
    if (!IsDrawable(pDC, rect) || nDir != VGTriangleDown)
        return;
    const CRect clip = ClipBox(pDC);
    const int64_t first = std::max<int64_t>(0, int64_t{clip.top} - rect.top);
    const int64_t last =
        std::min<int64_t>(int64_t{rect.bottom} - rect.top, int64_t{clip.bottom} - rect.top) - 1;
    for (int64_t row = first; row <= last; ++row)
        SetPixels(pDC, clip, rect.left + row, rect.top + row, rect.right - row - 1, rect.top + row, clr);
}

void VGDrawSmallSolidTriangle(CDC* pDC, const CPoint& apex, int nSize, COLORREF clr, int nDir)
{
    const CRect clip = ClipBox(pDC);
    if (clip.IsRectEmpty() || nDir < VGTriangleDown || nDir > VGTriangleRight)
        return;
    const bool sideways = nDir == VGTriangleLeft || nDir == VGTriangleRight;
    const int sign = nDir == VGTriangleDown || nDir == VGTriangleRight ? -1 : 1;
    const int64_t tip = sideways ? apex.x : apex.y;
    const int64_t low = sideways ? clip.left : clip.top;
    const int64_t high = (sideways ? clip.right : clip.bottom) - int64_t{1};
    const int64_t first = std::max<int64_t>(0, sign > 0 ? low - tip : tip - high);
    const int64_t last = std::min<int64_t>(int64_t{nSize} - 1, sign > 0 ? high - tip : tip - low);
    // Row i, counted from the tip, reaches i pixels to both sides.
    for (int64_t i = first; i <= last; ++i) {
        const int64_t line = tip + sign * i;
        if (sideways)
            SetPixels(pDC, clip, line, apex.y - i, line, apex.y + i, clr);
        else
            SetPixels(pDC, clip, apex.x - i, line, apex.x + i, line, clr);
    }
}

void VGDrawFashionText(CDC* pDC, const CString& text, const CRect& rect, UINT nFormat, COLORREF clrText,
                       COLORREF clrGlow, int nGlow)
{
    if (pDC == nullptr || pDC->m_hDC == nullptr)
        return;
    // The text is the caller's: an ellipsis is drawn but not written into it.
    const UINT format = nFormat & ~static_cast<UINT>(DT_MODIFYSTRING);
    const auto drawAt = [&](int64_t dx, int64_t dy) {
        CRect shifted;
        if (MakeRect(rect.left + dx, rect.top + dy, rect.right + dx, rect.bottom + dy, shifted))
            ::DrawText(pDC->m_hDC, text, text.GetLength(), &shifted, format);
    };
    pDC->SetBkMode(TRANSPARENT);
    if (nGlow > 0) {
        const ColorRamp ramp(clrText, clrGlow, int64_t{nGlow} + 1);
        for (int64_t d = std::min<int64_t>(nGlow, VisibleShift(pDC, text, rect, format)); d >= 1; --d) {
            pDC->SetTextColor(ramp.At(d));
            const CPoint directions[] = {{-1, 0},  {1, 0},  {0, -1}, {0, 1},
                                         {-1, -1}, {-1, 1}, {1, -1}, {1, 1}};
            for (const CPoint& direction : directions)
                drawAt(direction.x * d, direction.y * d);
        }
    }
    pDC->SetTextColor(clrText);
    drawAt(0, 0);
}

void VGCreateFont(CFont& font, CDC* pDC, const wchar_t* face, int nPointSize, DWORD dwStyle)
{
    constexpr LONG kBoldWeight = 700;
    if (face == nullptr)
        return;
    const VOwnedScreenDC screen(pDC == nullptr ? ::GetDC(nullptr) : nullptr);
    const HDC dc = pDC != nullptr ? pDC->m_hDC : screen.Get();
    LOGFONTW description = {};
    description.lfHeight = -::MulDiv(nPointSize, ::GetDeviceCaps(dc, LOGPIXELSY), kPointsPerInch);
    description.lfWeight = (dwStyle & VGFontBold) != 0 ? kBoldWeight : 0;
    description.lfItalic = (dwStyle & VGFontItalic) != 0;
    description.lfUnderline = (dwStyle & VGFontUnderline) != 0;
    description.lfStrikeOut = (dwStyle & VGFontStrikeOut) != 0;
    ::lstrcpynW(description.lfFaceName, face, LF_FACESIZE);
    VOwnedFont created(::CreateFontIndirectW(&description));
    if (!created)
        return;
    font.DeleteObject();
    font.Attach(created.Release());
}

COLORREF VGGetParentBkColor(CWnd* pWnd)
{
    const VSkinHost* host = VSkinHost::Of(pWnd);
    return host != nullptr ? host->GetBkClr() : ::GetSysColor(COLOR_BTNFACE);
}
