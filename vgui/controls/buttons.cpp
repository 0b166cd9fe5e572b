// The push buttons and the links; check boxes and radio buttons are in check_radio.cpp.
#include "vgui/controls/buttons.h"

#include "vgui/controls/button_paint.h"
#include "vgui/controls/hot_tracking.h"
#include "vgui/foundation/attached.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gdi_scope.h"
#include "vgui/foundation/gui_manager.h"
#include "vgui/foundation/window_helpers.h"

namespace
{

// What lightens a frame colour to that of the bevel beside it.
constexpr int kFrameFade = 30;
constexpr int kHotFrameFade = 25;
// How much of the gradient's blue the focus and the mouse add.
constexpr int kFocusFade = 15;
constexpr int kHoverFade = 20;
constexpr COLORREF kFlatFrame = RGB(10, 36, 106);
constexpr COLORREF kFlatFill = RGB(182, 189, 210);

void DrawBevel(CDC& dc, CRect rect, COLORREF light, COLORREF dark)
{
    rect.DeflateRect(1, 1);
    dc.Draw3dRect(rect, light, dark);
    rect.DeflateRect(1, 1);
    dc.Draw3dRect(rect, VGM.Btn.clrFrom, light);
}

} // namespace

IMPLEMENT_DYNAMIC(VButton, VButtonST)

VButton::VButton()
{
    drawBorder = FALSE;
}

DWORD VButton::OnDrawBorder(CDC* pDC, const RECT* pRect)
{
    const CRect rect(pRect);
    DrawBevel(*pDC, rect, VGFadeColor(VGM.Btn.clrHotFrame, kFrameFade), VGM.Btn.clrHotFrame);
    if (hovering)
        DrawBevel(*pDC, rect, VGFadeColor(VGM.Common.clrHot, kHotFrameFade), VGM.Common.clrHot);
    const VSelectScope hollow(pDC->m_hDC, ::GetStockObject(NULL_BRUSH));
    const VSelectScope frame(*pDC, VGM.Btn.penFrame);
    pDC->RoundRect(rect, CPoint(VGM.Btn.nCornerSize, VGM.Btn.nCornerSize));
    return StResultOk;
}

DWORD VButton::OnDrawBackground(CDC* pDC, const RECT* pRect)
{
    CRect window;
    GetWindowRect(window);
    window.MoveToXY(0, 0);
    OnDrawBorder(pDC, window);

    COLORREF from = VGM.Btn.clrFrom;
    COLORREF to = VGM.Btn.clrTo;
    const auto fade = [&](int blue) {
        from = VGFadeColor(from, 0, 0, blue);
        to = VGFadeColor(to, 0, 0, blue);
    };
    if (focused)
        fade(kFocusFade);
    if (hovering)
        fade(kHoverFade);
    const int inset = VGM.Btn.nCornerSize / 2;
    CRect area(pRect);
    area.DeflateRect(inset, inset - 1, inset, inset);
    VGGradientFillRect(pDC, area, from, to, 0);
    return StResultOk;
}

IMPLEMENT_DYNAMIC(VFlatButton, VButtonST)

DWORD VFlatButton::OnDrawBorder(CDC* pDC, const RECT* pRect)
{
    if (hovering)
        pDC->Draw3dRect(pRect, kFlatFrame, kFlatFrame);
    return StResultOk;
}

DWORD VFlatButton::OnDrawBackground(CDC* pDC, const RECT* pRect)
{
    if (hovering)
        pDC->FillSolidRect(pRect, kFlatFill);
    return StResultOk;
}

// ---- Links

IMPLEMENT_DYNAMIC(VHotTrackBtn, CButton)

BEGIN_MESSAGE_MAP(VHotTrackBtn, CButton)
    ON_WM_MOUSEMOVE()
    ON_WM_MOUSELEAVE()
END_MESSAGE_MAP()

void VHotTrackBtn::PreSubclassWindow()
{
    hot = FALSE; // it may have been on when the object's former window went
    CButton::PreSubclassWindow();
}

void VHotTrackBtn::OnMouseMove(UINT nFlags, CPoint point)
{
    const HWND window = m_hWnd;
    CButton::OnMouseMove(nFlags, point);
    if (VGIsAttached(this, window))
        BeginHot(*this, hot);
}

void VHotTrackBtn::OnMouseLeave()
{
    EndHot(*this, hot);
}

IMPLEMENT_DYNAMIC(VUrlEmailBtn, VHotTrackBtn)

BEGIN_MESSAGE_MAP(VUrlEmailBtn, VHotTrackBtn)
    ON_CONTROL_REFLECT_EX(BN_CLICKED, &VUrlEmailBtn::OnClicked)
    ON_WM_SETCURSOR()
    ON_WM_NCDESTROY()
    ON_WM_ERASEBKGND()
    ON_MESSAGE(WM_SETFONT, &VUrlEmailBtn::OnSetFontMessage)
END_MESSAGE_MAP()

void VUrlEmailBtn::SetType(int nType)
{
    type = nType;
}

void VUrlEmailBtn::SetLink(const CString& strLink)
{
    link = strLink;
}

void VUrlEmailBtn::PreSubclassWindow()
{
    ModifyStyle(0, BS_OWNERDRAW);
    CreateUnderlineFont(reinterpret_cast<HFONT>(SendMessage(WM_GETFONT)));
    VHotTrackBtn::PreSubclassWindow();
}

// A null font stands for the system's.
void VUrlEmailBtn::CreateUnderlineFont(HFONT hFont)
{
    LOGFONTW font{};
    const HGDIOBJ model = hFont != nullptr ? hFont : ::GetStockObject(SYSTEM_FONT);
    if (::GetObjectW(model, sizeof font, &font) == 0)
        return;
    font.lfUnderline = TRUE;
    underlineFont.DeleteObject();
    underlineFont.CreateFontIndirect(&font);
}

LRESULT VUrlEmailBtn::OnSetFontMessage(WPARAM wParam, LPARAM)
{
    CreateUnderlineFont(reinterpret_cast<HFONT>(wParam));
    return Default();
}

BOOL VUrlEmailBtn::OnEraseBkgnd(CDC*)
{
    return TRUE; // the background is part of each painting
}

BOOL VUrlEmailBtn::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (message != WM_DRAWITEM)
        return VHotTrackBtn::OnChildNotify(message, wParam, lParam, pResult);
    DrawItemOverParent(*this, *reinterpret_cast<LPDRAWITEMSTRUCT>(lParam),
                       [this](DRAWITEMSTRUCT& buffered) { DrawItem(&buffered); });
    return TRUE;
}

void VUrlEmailBtn::DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct)
{
    CDC& dc = *CDC::FromHandle(lpDrawItemStruct->hDC);
    CRect item = lpDrawItemStruct->rcItem;
    CString text;
    GetWindowText(text);
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(hot ? VGM.Common.clrLinkHot : VGM.Common.clrLink);
    const VSelectScope font(dc.m_hDC, hot ? underlineFont.m_hObject : nullptr);
    dc.DrawText(text, item, 0);
}

BOOL VUrlEmailBtn::OnClicked()
{
    // Web addresses get backslashes; this is intended.
    CString target = type == 0 ? L"http:\\\\" : type == 1 ? L"mailto:" : L"";
    CString text = link;
    if (text.IsEmpty())
        GetWindowText(text);
    target += text;
    VGShellExecute(nullptr, target, SW_HIDE);
    return TRUE;
}

BOOL VUrlEmailBtn::OnSetCursor(CWnd*, UINT, UINT)
{
    ::SetCursor(::LoadCursorW(nullptr, hot ? IDC_HAND : IDC_ARROW));
    return TRUE;
}

void VUrlEmailBtn::OnNcDestroy()
{
    // The base may delete this object.
    const VOwnedFont font(static_cast<HFONT>(underlineFont.Detach()));
    VHotTrackBtn::OnNcDestroy();
}
