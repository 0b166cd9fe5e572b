// The band with the active page's title that takes the place of the tabs in the out-driven mode.
#include "vgui/dialogs/tab_pages.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gdi_scope.h"
#include "vgui/foundation/gui_manager.h"

#include <algorithm>

namespace
{

constexpr int kTitleMargin = 8; // left and right of the title and right of its bitmap

constexpr COLORREF kTitleLine = RGB(66, 145, 220);
constexpr COLORREF kTitleFill = RGB(217, 234, 252);
constexpr COLORREF kTitleFrom = RGB(208, 228, 247);
constexpr COLORREF kTitleTo = RGB(66, 145, 250);

// Draws a bitmap at the left end of a band and answers where the rest of the band begins.
LONG DrawTitleBitmap(CDC& dc, HBITMAP bitmap, const CRect& band)
{
    BITMAP info{};
    if (bitmap == nullptr || ::GetObject(bitmap, sizeof(info), &info) == 0)
        return band.left;
    const int width = std::clamp<int>(band.Width(), 0, info.bmWidth);
    const int height = std::min(static_cast<int>(info.bmHeight), band.Height());
    const VOwnedMemoryDC memory(::CreateCompatibleDC(dc.m_hDC));
    const VSelectScope selected(memory.Get(), bitmap);
    ::BitBlt(dc.m_hDC, band.left, band.top + (band.Height() - height) / 2, width, height, memory.Get(), 0, 0,
             SRCCOPY);
    return band.left + width + kTitleMargin;
}

// The font of a window in bold.
void CreateBoldFont(CFont& bold, const CWnd& window)
{
    LOGFONT log{};
    CFont* const font = window.GetFont();
    if ((font != nullptr && font->GetLogFont(&log) != 0) ||
        ::GetObject(::GetStockObject(DEFAULT_GUI_FONT), sizeof(log), &log) != 0) {
        log.lfWeight = FW_BOLD;
        bold.CreateFontIndirect(&log);
    }
}

} // namespace

CRect VTabDlgCtrl::GetTitleRect() const
{
    CRect rect;
    GetClientRect(rect);
    rect.bottom = std::min(rect.bottom, rect.top + m_nTitleHeight);
    return rect;
}

void VTabDlgCtrl::Draw(CDC& dc)
{
    if (!m_bOutDriven) {
        VTabCtrl::Draw(dc);
        return;
    }
    CRect body;
    GetClientRect(body);
    const CRect title = GetTitleRect();
    DrawTitle(&dc, title);
    body.top = title.bottom;
    dc.FillSolidRect(body, VGM.Tab.clrPageBk);
    // The frame goes on from the band, which is the frame's upper edge.
    dc.FillSolidRect(body.left, body.top, 1, body.Height(), kTitleLine);
    dc.FillSolidRect(body.right - 1, body.top, 1, body.Height(), kTitleLine);
    dc.FillSolidRect(body.left, body.bottom - 1, body.Width(), 1, kTitleLine);
}

// From the outside in: a line, a ring of the fill colour, the gradient with bitmap and bold title.
void VTabDlgCtrl::DrawTitle(CDC* pDC, const CRect& rect)
{
    if (pDC == nullptr)
        return;
    CRect band = rect;
    pDC->FillSolidRect(band, kTitleFill);
    pDC->Draw3dRect(band, kTitleLine, kTitleLine);
    band.DeflateRect(2, 2);
    VGGradientFillRect(pDC, band, kTitleFrom, kTitleTo, 0);
    if (!IsPage(m_nActive))
        return;
    const PageStruct& page = *m_pages[m_nActive];
    CFont bold;
    CreateBoldFont(bold, *this);
    const VSelectScope font(*pDC, bold);
    const VBkModeScope transparent(pDC->m_hDC, TRANSPARENT);
    const VTextColorScope color(pDC->m_hDC, VGM.Outline.clrTitleText);
    band.DeflateRect(kTitleMargin, 0);
    band.left = DrawTitleBitmap(*pDC, page.hBitmap, band);
    pDC->DrawText(page.strTitle, band, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX);
}
