// How VButtonST paints.
#include "vgui/controls/button_paint.h"
#include "vgui/controls/image_button.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gdi_scope.h"
#include "vgui/foundation/skin_host.h"

namespace
{

constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr int kImageMargin = 3; // pixels from the button's edge to a picture beside a caption
constexpr int kFocusInset = 3;
constexpr UINT kCaptionFormat = DT_WORDBREAK | DT_CENTER;
// Letters may reach a little beyond the width that was measured for them.
constexpr UINT kDrawnFormat = kCaptionFormat | DT_NOCLIP;

// The distance that centres a size in an extent. Unsigned, so a size larger than the extent gives a huge one.
DWORD Centring(int extent, DWORD size)
{
    return (static_cast<DWORD>(extent) - size) / 2;
}

// Moves a coordinate by an unsigned distance, modulo 2^32.
void Advance(LONG& coordinate, DWORD distance)
{
    coordinate = static_cast<LONG>(static_cast<DWORD>(coordinate) + distance);
}

void DrawLines(CDC& dc, COLORREF color, CPoint from, CPoint corner, CPoint to)
{
    const VPen pen(&dc, color);
    dc.MoveTo(from);
    dc.LineTo(corner);
    dc.LineTo(to);
}

} // namespace

BOOL VButtonST::OnEraseBkgnd(CDC*)
{
    return TRUE;
}

BOOL VButtonST::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (message != WM_DRAWITEM)
        return CButton::OnChildNotify(message, wParam, lParam, pResult);
    const DRAWITEMSTRUCT& item = *reinterpret_cast<LPDRAWITEMSTRUCT>(lParam);
    // A parent that spares its children has painted nothing here that could become the background.
    const CWnd* parent = GetParent();
    if (transparent && bkDC.m_hDC == nullptr && parent != nullptr &&
        (parent->GetStyle() & WS_CLIPCHILDREN) != 0)
        PaintParentBackground(*this, *CDC::FromHandle(item.hDC));
    DrawItemOverParent(*this, item, [this](DRAWITEMSTRUCT& buffered) { DrawItem(&buffered); });
    return TRUE;
}

void VButtonST::DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct)
{
    const DRAWITEMSTRUCT& state = *lpDrawItemStruct;
    CDC& dc = *CDC::FromHandle(state.hDC);
    CRect item = state.rcItem;
    const bool selected = (state.itemState & ODS_SELECTED) != 0;
    pressed = selected || (isToggle ? checked != 0 : menu != nullptr && menuShown);
    focused = (state.itemState & ODS_FOCUS) != 0;
    disabled = (state.itemState & ODS_DISABLED) != 0;
    dc.SetBkMode(TRANSPARENT);

    if (!flat && (focused || isDefault)) {
        CBrush black(kBlack);
        dc.FrameRect(item, &black);
        item.DeflateRect(1, 1);
    }
    if (transparent)
        PaintBk(&dc);
    else
        OnDrawBackground(&dc, item);
    DrawButtonBorder(dc, item);

    CRect caption = state.rcItem;
    CString text;
    GetWindowText(text);
    const BOOL hasTitle = !text.IsEmpty();
    if (icons[0].handle != nullptr)
        DrawTheIcon(&dc, hasTitle, item, &caption, pressed, disabled);
    if (bitmaps[0].handle != nullptr) {
        dc.SetBkColor(kWhite);
        DrawTheBitmap(&dc, hasTitle, item, &caption, pressed, disabled);
    }
    if (hasTitle)
        DrawCaption(dc, text, caption);
    if (focused && (!flat || drawFlatFocus)) {
        item.DeflateRect(kFocusInset, kFocusInset);
        dc.DrawFocusRect(item);
    }
}

void VButtonST::DrawButtonBorder(CDC& dc, const CRect& rect)
{
    if (flat) {
        if (drawBorder && (pressed || hovering))
            OnDrawBorder(&dc, rect);
    } else if (pressed) {
        CBrush shadow(::GetSysColor(COLOR_BTNSHADOW));
        dc.FrameRect(rect, &shadow);
    } else {
        DrawRaisedFrame(dc, rect);
    }
}

// Each pair of lines ends one pixel short of its last point; the third one is meant to end one pixel above
// the top.
void VButtonST::DrawRaisedFrame(CDC& dc, const CRect& r)
{
    DrawLines(dc, ::GetSysColor(COLOR_BTNHIGHLIGHT), {r.left, r.bottom - 1}, {r.left, r.top},
              {r.right, r.top});
    DrawLines(dc, ::GetSysColor(COLOR_3DLIGHT), {r.left + 1, r.bottom - 1}, {r.left + 1, r.top + 1},
              {r.right, r.top + 1});
    DrawLines(dc, ::GetSysColor(COLOR_3DDKSHADOW), {r.left, r.bottom - 1}, {r.right - 1, r.bottom - 1},
              {r.right - 1, r.top - 1});
    DrawLines(dc, ::GetSysColor(COLOR_BTNSHADOW), {r.left + 1, r.bottom - 2}, {r.right - 2, r.bottom - 2},
              {r.right - 2, r.top});
}

CPoint VButtonST::CaptionOffset(CSize area, CSize text) const
{
    const int y = (area.cy - text.cy) / 2;
    if (textAlign == 0)
        return {1, y};
    return {textAlign == 1 ? (area.cx - text.cx) / 2 : area.cx - text.cx - 1, y};
}

void VButtonST::DrawCaption(CDC& dc, const CString& text, CRect caption)
{
    if (pressed && !isToggle)
        caption.OffsetRect(1, 1);
    const CRect area = caption;
    dc.DrawText(text, caption, kCaptionFormat | DT_CALCRECT);
    caption.OffsetRect(CaptionOffset(area.Size(), caption.Size()));
    if (disabled) {
        caption.OffsetRect(1, 1);
        dc.SetTextColor(::GetSysColor(COLOR_3DHILIGHT));
        dc.DrawText(text, caption, kDrawnFormat);
        caption.OffsetRect(-1, -1);
        dc.SetTextColor(::GetSysColor(COLOR_3DSHADOW));
        dc.DrawText(text, caption, kDrawnFormat);
        return;
    }
    const bool in = hovering || pressed;
    COLORREF color = colors[in ? ColorFgIn : ColorFgOut];
    if (VSkinHost* host = VSkinHost::Of(this))
        host->GetSetCtrlClr(static_cast<UINT>(GetDlgCtrlID()), color);
    dc.SetTextColor(color);
    dc.SetBkColor(colors[in ? ColorBkIn : ColorBkOut]);
    dc.DrawText(text, caption, kDrawnFormat);
}

DWORD VButtonST::OnDrawBackground(CDC* pDC, const RECT* pRect)
{
    BYTE index = ColorBkOut;
    if (hovering || pressed)
        index = ColorBkIn;
    else if (focused)
        index = ColorBkFocus;
    CBrush brush(colors[index]);
    pDC->FillRect(pRect, &brush);
    return StResultOk;
}

DWORD VButtonST::OnDrawBorder(CDC* pDC, const RECT* pRect)
{
    const COLORREF shadow = ::GetSysColor(COLOR_BTNSHADOW);
    const COLORREF light = ::GetSysColor(COLOR_BTNHIGHLIGHT);
    pDC->Draw3dRect(pRect, pressed ? shadow : light, pressed ? light : shadow);
    return StResultOk;
}

// ---- Pictures

int VButtonST::ImageIndex(bool hasNormalImage, BOOL bPressed) const
{
    const bool normalLook = !bPressed && (isToggle || !hovering);
    return hasNormalImage && normalLook ? 1 : 0;
}

void VButtonST::PrepareImageRect(BOOL bHasTitle, RECT* pItem, CRect* pCaption, BOOL bPressed, DWORD dwWidth,
                                 DWORD dwHeight, CRect* pImage)
{
    CRect& image = *pImage;
    image = *pItem;
    const CSize room = image.Size();
    const auto width = static_cast<LONG>(dwWidth);
    const auto centreAcross = [&] { Advance(image.left, Centring(room.cx, dwWidth)); };
    const auto centreDown = [&] { Advance(image.top, Centring(room.cy, dwHeight)); };

    switch (imageAlign) {
    case 0:
        if (bHasTitle) {
            image.left += kImageMargin;
            pCaption->left += width + kImageMargin;
        } else {
            centreAcross();
        }
        centreDown();
        break;
    case 1:
        centreAcross();
        if (bHasTitle) {
            image.top = kImageMargin;
            pCaption->top += static_cast<LONG>(dwHeight);
        } else {
            centreDown();
        }
        break;
    default:
        if (!bHasTitle) {
            centreAcross();
            break;
        }
        pCaption->right = pCaption->Width() - width - kImageMargin;
        pCaption->left = kImageMargin;
        CRect client;
        GetClientRect(client);
        image.left = client.Width() - width - kImageMargin;
        centreDown();
        break;
    }
    if (bPressed && !isToggle)
        image.OffsetRect(1, 1);
}

void VButtonST::DrawTheIcon(CDC* pDC, BOOL bHasTitle, RECT* pItem, CRect* pCaption, BOOL bPressed,
                            BOOL bDisabled)
{
    const Icon& icon = icons[ImageIndex(icons[1].handle != nullptr, bPressed)];
    CRect place;
    PrepareImageRect(bHasTitle, pItem, pCaption, bPressed, icon.width, icon.height, &place);
    pDC->DrawState(place.TopLeft(), CSize(static_cast<int>(icon.width), static_cast<int>(icon.height)),
                   icon.handle, bDisabled ? DSS_DISABLED : DSS_NORMAL, static_cast<HBRUSH>(nullptr));
}

void VButtonST::DrawTheBitmap(CDC* pDC, BOOL bHasTitle, RECT* pItem, CRect* pCaption, BOOL bPressed, BOOL)
{
    const Bitmap& bitmap = bitmaps[ImageIndex(bitmaps[1].handle != nullptr, bPressed)];
    CRect place;
    PrepareImageRect(bHasTitle, pItem, pCaption, bPressed, bitmap.width, bitmap.height, &place);

    const VOwnedMemoryDC picture(::CreateCompatibleDC(pDC->m_hDC));
    const VOwnedMemoryDC mask(::CreateCompatibleDC(nullptr));
    const VSelectScope pictureScope(picture.Get(), bitmap.handle);
    const VSelectScope maskScope(mask.Get(), bitmap.mask);
    // The mask takes the colours of the target, which may have been given others for its caption.
    const VTextColorScope black(pDC->m_hDC, kBlack);
    const auto copy = [&](HDC source, DWORD operation) {
        ::BitBlt(pDC->m_hDC, place.left, place.top, static_cast<int>(bitmap.width),
                 static_cast<int>(bitmap.height), source, 0, 0, operation);
    };
    copy(mask.Get(), SRCAND);
    copy(picture.Get(), SRCPAINT);
}

HBITMAP VButtonST::CreateBitmapMask(HBITMAP hSource, DWORD dwWidth, DWORD dwHeight, COLORREF crTransparent)
{
    const int width = static_cast<int>(dwWidth);
    const int height = static_cast<int>(dwHeight);
    VOwnedBitmap result(::CreateBitmap(width, height, 1, 1, nullptr));
    const VOwnedMemoryDC source(::CreateCompatibleDC(nullptr));
    const VOwnedMemoryDC mask(::CreateCompatibleDC(nullptr));
    if (!result || !source || !mask)
        return nullptr;
    const HGDIOBJ oldSource = ::SelectObject(source.Get(), hSource);
    if (oldSource == nullptr)
        return nullptr;
    const HGDIOBJ oldMask = ::SelectObject(mask.Get(), result.Get());

    const COLORREF oldBackground = ::SetBkColor(source.Get(), crTransparent);
    ::BitBlt(mask.Get(), 0, 0, width, height, source.Get(), 0, 0, SRCCOPY);
    const COLORREF oldText = ::SetTextColor(source.Get(), kWhite);
    ::SetBkColor(source.Get(), kBlack);
    ::BitBlt(source.Get(), 0, 0, width, height, mask.Get(), 0, 0, SRCAND);

    // The text colour goes back to the mask's context, not to the one it came from; this is intended.
    ::SetTextColor(mask.Get(), oldText);
    ::SetBkColor(source.Get(), oldBackground);
    ::SelectObject(source.Get(), oldSource);
    ::SelectObject(mask.Get(), oldMask);
    return result.Release();
}

// ---- The parent's picture

void VButtonST::PaintBk(CDC* pDC)
{
    CWnd* parent = GetParent();
    if (parent == nullptr)
        return;
    CRect client;
    GetClientRect(client);
    if (bkDC.m_hDC == nullptr) {
        CRect place;
        GetWindowRect(place);
        parent->ScreenToClient(place);
        CClientDC source(parent);
        if (!bkDC.CreateCompatibleDC(&source) ||
            !bkBitmap.CreateCompatibleBitmap(&source, client.Width(), client.Height())) {
            DropBackground();
            return;
        }
        oldBkBitmap = bkDC.SelectObject(&bkBitmap);
        bkDC.BitBlt(0, 0, client.Width(), client.Height(), &source, place.left, place.top, SRCCOPY);
    }
    pDC->BitBlt(0, 0, client.Width(), client.Height(), &bkDC, 0, 0, SRCCOPY);
}

// The object for the previous bitmap may be gone by now; the context lets go of ours with its end as well.
void VButtonST::DropBackground()
{
    if (bkDC.m_hDC != nullptr)
        bkDC.DeleteDC();
    bkBitmap.DeleteObject();
    oldBkBitmap = nullptr;
}
