#include "gallery/sample_picture.h"

namespace
{

constexpr int kWidth = 256;
constexpr int kHeight = 192;
constexpr int kHorizon = 120;

// Shapes without outline.
void Fill(CDC& dc, COLORREF color, const auto& shape)
{
    const VPen pen(&dc, color);
    const VBrush brush(&dc, color);
    shape();
}

template <int Count>
void FillPolygon(CDC& dc, COLORREF color, POINT (&&points)[Count])
{
    Fill(dc, color, [&] { dc.Polygon(points, Count); });
}

void DrawLandscape(CDC& dc)
{
    VGGradientFillRect(&dc, CRect(0, 0, kWidth, kHorizon), RGB(40, 90, 200), RGB(250, 210, 160), 0);
    Fill(dc, RGB(255, 235, 120), [&] { dc.Ellipse(180, 20, 220, 60); });
    VGGradientFillRect(&dc, CRect(0, kHorizon, kWidth, kHeight), RGB(80, 160, 80), RGB(20, 60, 30), 0);
    FillPolygon(dc, RGB(110, 130, 170),
                {{0, kHorizon}, {50, 70}, {95, 105}, {140, 60}, {200, 110}, {256, 80}, {256, kHorizon}});
    FillPolygon(dc, RGB(70, 120, 80),
                {{0, 130}, {70, 100}, {150, 135}, {210, 112}, {256, 125}, {256, 160}, {0, 160}});
    Fill(dc, RGB(120, 70, 40), [&] { dc.Rectangle(40, 130, 90, 165); });
    FillPolygon(dc, RGB(190, 40, 30), {{34, 130}, {65, 108}, {96, 130}});
    Fill(dc, RGB(250, 240, 150), [&] { dc.Rectangle(50, 140, 62, 152); });

    CFont font;
    VGCreateFont(font, &dc, L"Arial", 18, VGFontBold);
    CFont* const old = dc.SelectObject(&font);
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(RGB(255, 255, 255));
    dc.TextOut(160, 158, L"VGui");
    dc.SelectObject(old);
}

} // namespace

bool DrawSamplePicture(CDib& dib)
{
    CDib picture;
    if (!picture.Create(kWidth, kHeight, 24))
        return false;
    CDC* const dc = picture.BeginPaint(nullptr);
    if (dc == nullptr)
        return false;
    DrawLandscape(*dc);
    picture.EndPaint();
    return dib.Attach(picture.Detach()) != FALSE;
}
