#include "gallery/image_canvas.h"

#include <algorithm>

namespace
{

constexpr int kCheckSize = 12; // pixels
constexpr COLORREF kLightCheck = RGB(255, 255, 255);
constexpr COLORREF kDarkCheck = RGB(215, 215, 215);
constexpr int kMargin = 8;

// Shows what a transparent picture lets through.
void DrawChecks(CDC& dc, const CRect& area)
{
    for (int y = area.top; y < area.bottom; y += kCheckSize) {
        for (int x = area.left; x < area.right; x += kCheckSize) {
            CRect check(CPoint(x, y), CSize(kCheckSize, kCheckSize));
            check.IntersectRect(check, area);
            const bool isDark = ((x - area.left) / kCheckSize + (y - area.top) / kCheckSize) % 2 != 0;
            dc.FillSolidRect(check, isDark ? kDarkCheck : kLightCheck);
        }
    }
}

// The colour of the picture's first pixel, at any depth.
COLORREF CornerColor(CDib& dib)
{
    CDC memory;
    if (!memory.CreateCompatibleDC(nullptr) || dib.GetBitmap() == nullptr)
        return 0;
    CBitmap* const old = memory.SelectObject(dib.GetBitmap());
    const COLORREF color = memory.GetPixel(0, 0);
    memory.SelectObject(old);
    return color;
}

} // namespace

BEGIN_MESSAGE_MAP(ImageCanvas, CStatic)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

void ImageCanvas::Show(ImageView view)
{
    m_view = view;
    m_isWiped = false;
    if (m_hWnd != nullptr)
        Invalidate();
}

void ImageCanvas::Reveal(int effect, int step, DWORD delay)
{
    CClientDC dc(this);
    CRect client;
    GetClientRect(client);
    dc.IntersectClipRect(client);
    dc.FillSolidRect(client, ::GetSysColor(COLOR_WINDOW));
    const CPoint corner = Corner(client);
    m_dib.Display(effect, &dc, corner.x, corner.y, step, delay, SRCCOPY);
    Show(ImageView::Plain);
}

void ImageCanvas::Wipe(int effect, int step, DWORD delay)
{
    Show(ImageView::Plain);
    UpdateWindow();
    CClientDC dc(this);
    CRect client;
    GetClientRect(client);
    const CPoint corner = Corner(client);
    m_dib.Clear(effect, &dc, corner.x, corner.y, step, delay);
    // After a fade-out, palette and bitmap are still black.
    m_dib.BuildPalette();
    m_dib.BuildBitmap();
    m_isWiped = true;
}

BOOL ImageCanvas::OnEraseBkgnd(CDC*)
{
    return TRUE;
}

void ImageCanvas::OnPaint()
{
    CPaintDC target(this);
    CRect client;
    GetClientRect(client);
    VBufferedDC dc(target, client);
    Draw(dc, client);
}

CPoint ImageCanvas::Corner(const CRect& client) const
{
    return {std::max(0L, (client.right - m_dib.GetWidth()) / 2),
            std::max(0L, (client.bottom - m_dib.GetHeight()) / 2)};
}

void ImageCanvas::Draw(CDC& dc, const CRect& client)
{
    dc.FillSolidRect(client, ::GetSysColor(COLOR_WINDOW));
    if (!m_dib.IsEmpty() && !m_isWiped)
        DrawPicture(dc, client);
    VGDraw3dCtrlFrame(&dc, client, VGM.Common.clrFrame, VGM.Common.nCtrlFrameFade, 0);
}

void ImageCanvas::DrawPicture(CDC& dc, const CRect& client)
{
    const CSize size(m_dib.GetWidth(), m_dib.GetHeight());
    const CPoint corner = Corner(client);
    const CRect whole(CPoint(0, 0), size);
    CRect inner = client;
    inner.DeflateRect(kMargin, kMargin);
    switch (m_view) {
    case ImageView::Plain:
        m_dib.Display(&dc, corner.x, corner.y, SRCCOPY);
        break;
    case ImageView::Stretched:
        dc.SetStretchBltMode(COLORONCOLOR);
        m_dib.Display(&dc, inner, whole, SRCCOPY);
        break;
    case ImageView::Transparent:
        DrawChecks(dc, inner);
        m_dib.DisplayTransparent(&dc, corner.x, corner.y, CornerColor(m_dib));
        break;
    case ImageView::Dithered:
        m_dib.DitherDisplay(&dc, CRect(corner, size), whole, SRCCOPY);
        break;
    case ImageView::Palette:
        if (!m_dib.DisplayPalette(&dc, inner)) {
            dc.SetBkMode(TRANSPARENT);
            dc.DrawText(L"该图像没有调色板。 This picture has no palette.", -1, inner,
                        DT_SINGLELINE | DT_CENTER | DT_VCENTER);
        }
        break;
    }
}
