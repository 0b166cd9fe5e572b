#include "gallery/drawing_samples.h"

#include <vgui/vgui.h>

namespace
{

constexpr COLORREF kBase = RGB(90, 140, 200);
constexpr COLORREF kFrom = RGB(255, 255, 255);
constexpr COLORREF kTo = RGB(40, 90, 180);
constexpr COLORREF kWarm = RGB(255, 160, 40);
constexpr COLORREF kDark = RGB(30, 40, 60);
constexpr int kHalf = 2;
constexpr int kTextPoints = 12;
constexpr int kGlowPoints = 14;
const wchar_t* const kFace = L"宋体";

// The colour before on the left, after on the right.
void Compare(CDC& dc, const CRect& rect, COLORREF after)
{
    CRect left = rect;
    left.right = rect.left + rect.Width() / kHalf;
    dc.FillSolidRect(left, kBase);
    dc.FillSolidRect(CRect(left.right, rect.top, rect.right, rect.bottom), after);
}

CRect Inside(const CRect& rect, int margin)
{
    CRect inside = rect;
    inside.DeflateRect(margin, margin);
    return inside;
}

void Triangle(CDC& dc, const CRect& rect, int direction)
{
    constexpr int size = 20;
    CPoint apex = rect.CenterPoint();
    const CPoint toTip[] = {{0, size / 2}, {0, -size / 2}, {-size / 2, 0}, {size / 2, 0}};
    apex += toTip[direction];
    VGDrawSmallSolidTriangle(&dc, apex, size, kDark, direction);
}

void Text(CDC& dc, const CRect& rect, DWORD style)
{
    CFont font;
    VGCreateFont(font, &dc, kFace, kTextPoints, style);
    CFont* const old = dc.SelectObject(&font);
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(kDark);
    CRect place = rect;
    dc.DrawText(L"字体 Font", -1, place, DT_SINGLELINE | DT_CENTER | DT_VCENTER);
    dc.SelectObject(old);
}

void Glow(CDC& dc, const CRect& rect, COLORREF text, COLORREF glow, int width)
{
    CFont font;
    VGCreateFont(font, &dc, kFace, kGlowPoints, VGFontBold);
    CFont* const old = dc.SelectObject(&font);
    dc.FillSolidRect(rect, kFrom);
    VGDrawFashionText(&dc, L"光晕 Glow", rect, DT_SINGLELINE | DT_CENTER | DT_VCENTER, text, glow, width);
    dc.SelectObject(old);
}

// Black bars behind, so that the transparency shows.
void Stripes(CDC& dc, const CRect& rect)
{
    constexpr int step = 12;
    dc.FillSolidRect(rect, kFrom);
    for (int x = rect.left; x < rect.right; x += 2 * step)
        dc.FillSolidRect(CRect(x, rect.top, x + step, rect.bottom) & rect, kDark);
}

void Blend(CDC& dc, const CRect& rect, BYTE alpha)
{
    Stripes(dc, rect);
    const CRect place = Inside(rect, 10);
    CDC source;
    CBitmap bitmap;
    if (!source.CreateCompatibleDC(&dc) || !bitmap.CreateCompatibleBitmap(&dc, place.Width(), place.Height()))
        return;
    CBitmap* const old = source.SelectObject(&bitmap);
    VGGradientFillRect(&source, CRect(0, 0, place.Width(), place.Height()), kWarm, kTo, 1);
    VGAlphaBlend(&dc, place, &source, CRect(0, 0, place.Width(), place.Height()), alpha);
    source.SelectObject(old);
}

void Border(CDC& dc, const CRect& rect)
{
    const VPen pen(&dc, VGM.Common.clrFrame);
    VGDrawBorder(&dc, CRect(rect.left, rect.top, rect.right - 1, rect.bottom - 1));
}

void Holders(CDC& dc, const CRect& rect, COLORREF fill)
{
    const VPen pen(&dc, kTo);
    const VBrush brush(&dc, fill);
    dc.RoundRect(Inside(rect, 4), CPoint(16, 16));
}

void RectTriangle(CDC& dc, const CRect& rect)
{
    VGDrawSmallSolidTriangle(&dc, CRect(30, 12, rect.right - 30, rect.bottom), kDark, 0);
}

constexpr DWORD kAllStyles = VGFontBold | VGFontItalic | VGFontUnderline | VGFontStrikeOut;

using Rect = const CRect&;

std::vector<DrawingSample> ColourSamples()
{
    return {
        {L"VGFadeColor", L"nDelta -60", [](CDC& dc, Rect r) { Compare(dc, r, VGFadeColor(kBase, -60)); }},
        {L"VGFadeColor", L"nDelta +60", [](CDC& dc, Rect r) { Compare(dc, r, VGFadeColor(kBase, 60)); }},
        {L"VGFadeColor", L"+90, 0, -90",
         [](CDC& dc, Rect r) { Compare(dc, r, VGFadeColor(kBase, 90, 0, -90)); }},
        {L"VGInvertColor", L"R, G, B", [](CDC& dc, Rect r) { Compare(dc, r, VGInvertColor(kBase)); }},
        {L"VPen, VBrush", L"RGB(255, 160, 40)", [](CDC& dc, Rect r) { Holders(dc, r, kWarm); }},
        {L"VPen, VBrush", L"VGNoColor", [](CDC& dc, Rect r) { Holders(dc, r, VGNoColor); }},
        {L"VGFillShadingRect", L"nSpacing 8",
         [](CDC& dc, Rect r) { VGFillShadingRect(&dc, r, VGM.Dlg.clrCapActiveTo, 8); }},
        {L"VGFillShadingRect", L"nSpacing 16",
         [](CDC& dc, Rect r) { VGFillShadingRect(&dc, r, VGM.Dlg.clrCapActiveTo, 16); }},
    };
}

std::vector<DrawingSample> GradientSamples()
{
    return {
        {L"VGGradientFillRect", L"nDir 0",
         [](CDC& dc, Rect r) { VGGradientFillRect(&dc, r, kFrom, kTo, 0); }},
        {L"VGGradientFillRect", L"nDir 1",
         [](CDC& dc, Rect r) { VGGradientFillRect(&dc, r, kFrom, kTo, 1); }},
        {L"VGGradientFillRectEx", L"nMode 0",
         [](CDC& dc, Rect r) { VGGradientFillRectEx(&dc, r, kFrom, kTo, 0, 0.5); }},
        {L"VGGradientFillRectEx", L"nMode 1, dRatio 0.25",
         [](CDC& dc, Rect r) { VGGradientFillRectEx(&dc, r, kFrom, kTo, 1, 0.25); }},
        {L"VGGradientFillRectEx", L"nMode 1, dRatio 0.5",
         [](CDC& dc, Rect r) { VGGradientFillRectEx(&dc, r, kFrom, kTo, 1, 0.5); }},
        {L"VGGradientFillRectEx", L"nMode 2, dRatio 0.25",
         [](CDC& dc, Rect r) { VGGradientFillRectEx(&dc, r, kFrom, kTo, 2, 0.25); }},
        {L"VGGradientFillRectEx", L"nMode 2, dRatio 0.5",
         [](CDC& dc, Rect r) { VGGradientFillRectEx(&dc, r, kFrom, kTo, 2, 0.5); }},
        {L"VGGradientFillRectEx", L"nMode 2, dRatio 0.75",
         [](CDC& dc, Rect r) { VGGradientFillRectEx(&dc, r, kFrom, kTo, 2, 0.75); }},
    };
}

std::vector<DrawingSample> FrameSamples()
{
    return {
        {L"VGDrawBorder", L"VPen", Border},
        {L"VGDraw3dCtrlFrame", L"nFade 128, nStyle 0",
         [](CDC& dc, Rect r) {
             VGDraw3dCtrlFrame(&dc, r, VGM.Common.clrFrame, VGM.Common.nCtrlFrameFade, 0);
         }},
        {L"VGDraw3dCtrlFrame", L"nFade 128, nStyle 1",
         [](CDC& dc, Rect r) {
             VGDraw3dCtrlFrame(&dc, r, VGM.Common.clrFrame, VGM.Common.nCtrlFrameFade, 1);
         }},
        {L"VGDrawFadeRect", L"nSteps 8, nDir 0",
         [](CDC& dc, Rect r) { VGDrawFadeRect(&dc, Inside(r, 16), kDark, RGB(255, 0, 0), 8, 0); }},
        {L"VGDrawFadeRect", L"nSteps 8, nDir 1",
         [](CDC& dc, Rect r) { VGDrawFadeRect(&dc, r, kDark, RGB(255, 0, 0), 8, 1); }},
    };
}

std::vector<DrawingSample> TriangleSamples()
{
    return {
        {L"CRect overload", L"rect, nDir 0", RectTriangle},
        {L"CPoint overload", L"apex, nSize 20, nDir 0", [](CDC& dc, Rect r) { Triangle(dc, r, 0); }},
        {L"CPoint overload", L"apex, nSize 20, nDir 1", [](CDC& dc, Rect r) { Triangle(dc, r, 1); }},
        {L"CPoint overload", L"apex, nSize 20, nDir 2", [](CDC& dc, Rect r) { Triangle(dc, r, 2); }},
        {L"CPoint overload", L"apex, nSize 20, nDir 3", [](CDC& dc, Rect r) { Triangle(dc, r, 3); }},
    };
}

std::vector<DrawingSample> TextSamples()
{
    return {
        {L"VGCreateFont", L"12, dwStyle 0", [](CDC& dc, Rect r) { Text(dc, r, 0); }},
        {L"VGCreateFont", L"12, dwStyle 1", [](CDC& dc, Rect r) { Text(dc, r, VGFontBold); }},
        {L"VGCreateFont", L"12, dwStyle 2", [](CDC& dc, Rect r) { Text(dc, r, VGFontItalic); }},
        {L"VGCreateFont", L"12, dwStyle 4", [](CDC& dc, Rect r) { Text(dc, r, VGFontUnderline); }},
        {L"VGCreateFont", L"12, dwStyle 8", [](CDC& dc, Rect r) { Text(dc, r, VGFontStrikeOut); }},
        {L"VGCreateFont", L"12, dwStyle 15", [](CDC& dc, Rect r) { Text(dc, r, kAllStyles); }},
        {L"VGDrawFashionText", L"nGlow 2",
         [](CDC& dc, Rect r) { Glow(dc, r, kDark, RGB(255, 255, 255), 2); }},
        {L"VGDrawFashionText", L"nGlow 5",
         [](CDC& dc, Rect r) { Glow(dc, r, RGB(160, 0, 0), RGB(255, 255, 255), 5); }},
    };
}

std::vector<DrawingSample> BlendSamples()
{
    return {
        {L"VGAlphaBlend", L"alpha 64", [](CDC& dc, Rect r) { Blend(dc, r, 64); }},
        {L"VGAlphaBlend", L"alpha 160", [](CDC& dc, Rect r) { Blend(dc, r, 160); }},
        {L"VGAlphaBlend", L"alpha 255", [](CDC& dc, Rect r) { Blend(dc, r, 255); }},
        {L"ColorToRect", L"nAlpha 128, VGNoColor",
         [](CDC& dc, Rect r) {
             Stripes(dc, r);
             VGAlphaBlendColorToRect(&dc, Inside(r, 10), 128, kWarm, VGNoColor);
         }},
        {L"ColorToRect", L"nAlpha 200, clrTo",
         [](CDC& dc, Rect r) {
             Stripes(dc, r);
             VGAlphaBlendColorToRect(&dc, Inside(r, 10), 200, kWarm, kTo);
         }},
    };
}

} // namespace

const std::vector<DrawingSection>& DrawingSections()
{
    static const std::vector<DrawingSection> sections{
        {L"颜色与填充 Colours and fills", ColourSamples()},
        {L"渐变 Gradients", GradientSamples()},
        {L"边框 Frames", FrameSamples()},
        {L"三角形 VGDrawSmallSolidTriangle", TriangleSamples()},
        {L"文字 Text", TextSamples()},
        {L"透明混合 VGAlphaBlend, VGAlphaBlendColorToRect", BlendSamples()},
    };
    return sections;
}
