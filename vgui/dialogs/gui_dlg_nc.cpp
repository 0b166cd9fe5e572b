// The skinned dialog's non-client area: its place, its painting and the mouse on it.
#include "vgui/dialogs/gui_dlg.h"
#include "vgui/dialogs/gui_dlg_geometry.h"
#include "vgui/foundation/attached.h"
#include "vgui/foundation/draw_helpers.h"
#include "vgui/foundation/gdi_scope.h"
#include "vgui/foundation/gui_manager.h"

namespace
{

constexpr COLORREF kCloseFrom = RGB(255, 0, 0);
constexpr COLORREF kCloseTo = RGB(202, 0, 0);
constexpr COLORREF kCloseCross = RGB(255, 255, 255);
constexpr int kCloseCrossWidth = 2;
constexpr int kCapBtnCorner = 5;
constexpr int kCapBtnInset = 2;
constexpr int kCaptionTextInset = 3;
constexpr int kVertical = 0; // direction of VGGradientFillRect

gui_dlg::NcMetrics Metrics()
{
    return {VGM.Dlg.nFrameWidth, VGM.Dlg.nCaptionHeight};
}

// What the default processing of these messages may have painted over or made out of date.
bool RepaintsNcArea(UINT message)
{
    switch (message) {
    case WM_MOVE:
    case WM_ACTIVATE:
    case WM_SETTEXT:
    case WM_PAINT:
    case WM_NOTIFY:
    case WM_NCPAINT:
    case WM_MOUSEMOVE:
        return true;
    default:
        return false;
    }
}

CRect CapBtnFace(const CRect& button)
{
    CRect face = button;
    face.DeflateRect(kCapBtnInset, kCapBtnInset);
    return face;
}

// Inclusive of its right and bottom edges, as lines are drawn from corner to corner.
CRect CapBtnGlyph(const CRect& button)
{
    CRect glyph = CapBtnFace(button);
    glyph.DeflateRect(kCapBtnInset, kCapBtnInset, kCapBtnInset + 1, kCapBtnInset + 1);
    return glyph;
}

void Line(CDC& dc, int x1, int y1, int x2, int y2)
{
    dc.MoveTo(x1, y1);
    dc.LineTo(x2, y2);
}

void DrawCloseGlyph(CDC& dc, const CRect& button)
{
    VGGradientFillRect(&dc, CapBtnFace(button), kCloseFrom, kCloseTo, kVertical);
    CPen white(PS_SOLID, kCloseCrossWidth, kCloseCross);
    const VSelectScope pen(dc, white);
    const CRect glyph = CapBtnGlyph(button);
    Line(dc, glyph.left, glyph.top, glyph.right, glyph.bottom);
    Line(dc, glyph.left, glyph.bottom, glyph.right, glyph.top);
}

void DrawCapBtnGradient(CDC& dc, const CRect& rect)
{
    VGGradientFillRect(&dc, rect, VGM.Dlg.clrCapActiveTo, VGM.Dlg.clrCapActiveFrom, kVertical);
}

// One of the two windows of the restore glyph.
void DrawWindowOutline(CDC& dc, const CRect& outline)
{
    DrawCapBtnGradient(dc, outline);
    VGDrawBorder(&dc, outline);
}

void DrawRestoreGlyph(CDC& dc, CRect glyph)
{
    glyph.DeflateRect(1, 1);
    glyph.OffsetRect(1, -1);
    DrawWindowOutline(dc, glyph);
    Line(dc, glyph.left, glyph.top + 1, glyph.right, glyph.top + 1);
    glyph.OffsetRect(-2, 2);
    DrawWindowOutline(dc, glyph);
}

void DrawMaximizeGlyph(CDC& dc, const CRect& button, bool maximized)
{
    DrawCapBtnGradient(dc, CapBtnFace(button));
    const VPen pen(&dc, VGM.Dlg.clrCapBtnGlyph);
    const CRect glyph = CapBtnGlyph(button);
    if (maximized) {
        DrawRestoreGlyph(dc, glyph);
        return;
    }
    VGDrawBorder(&dc, glyph);
    Line(dc, glyph.left, glyph.top + 1, glyph.right, glyph.top + 1);
}

void DrawMinimizeGlyph(CDC& dc, const CRect& button)
{
    DrawCapBtnGradient(dc, CapBtnFace(button));
    const VSelectScope pen(dc, VGM.Dlg.penCapBtnGlyph);
    const CRect glyph = CapBtnGlyph(button);
    Line(dc, glyph.left, glyph.bottom, glyph.right, glyph.bottom);
    Line(dc, glyph.left, glyph.bottom - 1, glyph.right, glyph.bottom - 1);
}

void DrawHelpGlyph(CDC& dc, const CRect& button, CBitmap& glyph)
{
    BITMAP size{};
    CDC source;
    if (glyph.GetBitmap(&size) == 0 || !source.CreateCompatibleDC(&dc))
        return;
    const VSelectScope select(source, glyph);
    dc.StretchBlt(button.left, button.top, button.Width(), button.Height(), &source, 0, 0, size.bmWidth,
                  size.bmHeight, SRCCOPY);
}

} // namespace

gui_dlg::CapBtns VGuiDlg::GetCapBtns() const
{
    const DWORD style = GetStyle();
    return {(style & WS_MAXIMIZEBOX) != 0, (style & WS_MINIMIZEBOX) != 0, m_bHelpBtn};
}

CRect VGuiDlg::GetCapRect(const CRect& rcWnd)
{
    return gui_dlg::CaptionRect(rcWnd, Metrics());
}

CRect VGuiDlg::GetCloseBtnRect(const CRect& rcWnd)
{
    return gui_dlg::CloseBtnRect(rcWnd, Metrics());
}

void VGuiDlg::OnNcCalcSize(BOOL bCalcValidRects, NCCALCSIZE_PARAMS* lpncsp)
{
    // Both forms of the message begin with the proposed rectangle.
    if (m_bSkinNc && lpncsp != nullptr)
        lpncsp->rgrc[0] = gui_dlg::ClientRect(lpncsp->rgrc[0], Metrics());
    else
        CDialog::OnNcCalcSize(bCalcValidRects, lpncsp);
}

void VGuiDlg::CalWndRgn()
{
    if (!m_bSkinNc || m_hWnd == nullptr)
        return;
    CRect client;
    GetClientRect(client);
    const CSize size = gui_dlg::RegionSize(client.Size(), Metrics());
    const HRGN region = ::CreateRectRgn(0, 0, size.cx, size.cy);
    // The system owns the region once it has accepted it.
    if (region != nullptr && SetWindowRgn(region, TRUE) == 0)
        ::DeleteObject(region);
}

LRESULT VGuiDlg::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const HWND window = m_hWnd;
    const LRESULT result = CDialog::DefWindowProc(message, wParam, lParam);
    if (RepaintsNcArea(message) && VGIsAttached(this, window))
        DrawNcArea();
    return result;
}

void VGuiDlg::DrawNcArea()
{
    if (!m_bSkinNc || m_hWnd == nullptr || !IsWindowVisible())
        return;
    CRect window;
    GetWindowRect(window);
    window.OffsetRect(-window.left, -window.top);
    CWindowDC dc(this);
    DrawFrame(&dc, window);

    const gui_dlg::NcMetrics nc = Metrics();
    CDC memory;
    const CString state = GetCaptionState(window.Width());
    const bool current = m_strCaptionState == state;
    if (!memory.CreateCompatibleDC(&dc) || (!current && !CreateCaptionBitmap(dc, window.Width())))
        return;
    const VSelectScope select(memory, m_bmpCaption);
    if (!current) {
        DrawCaption(&memory, GetCapRect(window));
        m_strCaptionState = state;
    }
    dc.BitBlt(nc.frame, nc.frame, window.Width() - 2 * nc.frame, nc.caption, &memory, nc.frame, nc.frame,
              SRCCOPY);
}

// Everything that the caption's picture depends on. The caption is painted at every movement of the mouse
// and changes at few of them.
CString VGuiDlg::GetCaptionState(int width) const
{
    const gui_dlg::CapBtns present = GetCapBtns();
    CString text;
    GetWindowText(text);
    CString state;
    state.Format(L"%d %d %d %d%d%d %p %p %d ", width, m_bActive, IsZoomed() != FALSE, present.maximize,
                 present.minimize, present.help, m_bmpHelp.GetSafeHandle(),
                 reinterpret_cast<void*>(::SendMessageW(m_hWnd, WM_GETFONT, 0, 0)), text.GetLength());
    return state + text;
}

bool VGuiDlg::CreateCaptionBitmap(CDC& dc, int width)
{
    m_strCaptionState.Empty();
    m_bmpCaption.DeleteObject();
    const gui_dlg::NcMetrics nc = Metrics();
    return m_bmpCaption.CreateCompatibleBitmap(&dc, width, nc.frame + nc.caption + 1) != FALSE;
}

void VGuiDlg::DrawFrame(CDC* pDC, const CRect& rcWnd)
{
    CRect client;
    GetClientRect(client);
    CRect ring = rcWnd;
    pDC->Draw3dRect(ring, VGM.Dlg.clrFrameOuter, VGM.Dlg.clrFrameOuter);
    ring.DeflateRect(1, 1);
    pDC->Draw3dRect(ring, VGM.Dlg.clrFrameInner, VGM.Dlg.clrFrameInner);
    ring.DeflateRect(1, 1);
    for (int i = 2; i < VGM.Dlg.nFrameWidth; ++i) {
        if (ring.Width() <= client.Width() || ring.Height() <= client.Height())
            break;
        pDC->Draw3dRect(ring, VGM.Dlg.clrFrameFill, VGM.Dlg.clrFrameFill);
        // The bottom edge stays: these rings share one bottom line on purpose.
        ring.DeflateRect(1, 1, 1, 0);
    }
    // What the shared line leaves open above it would keep whatever was on the screen before.
    const int width = VGM.Dlg.nFrameWidth;
    const CRect open(rcWnd.left + width, rcWnd.bottom - width, rcWnd.right - width, ring.bottom - 1);
    if (open.Width() > 0 && open.Height() > 0)
        pDC->FillSolidRect(open, m_clrBk);
}

void VGuiDlg::DrawCaption(CDC* pDC, const CRect& rcCap)
{
    const auto& look = VGM.Dlg;
    VGGradientFillRect(pDC, rcCap, m_bActive ? look.clrCapActiveFrom : look.clrCapInactiveFrom,
                       m_bActive ? look.clrCapActiveTo : look.clrCapInactiveTo, kVertical);
    {
        const VSelectScope pen(*pDC, VGM.Dlg.penFrameFill);
        Line(*pDC, rcCap.left, rcCap.bottom, rcCap.right, rcCap.bottom);
    }
    DrawCaptionText(pDC, rcCap);
    DrawCapBtns(pDC);
}

void VGuiDlg::DrawCaptionText(CDC* pDC, const CRect& rcCap)
{
    CRect window;
    GetWindowRect(window);
    window.OffsetRect(-window.left, -window.top);
    CRect text = rcCap;
    text.left += kCaptionTextInset;
    // A long text ends at the buttons, so that nothing of it shows to the right of them.
    gui_dlg::ForEachCapBtn(window, Metrics(), GetCapBtns(),
                           [&](LRESULT, const CRect& button) { text.right = button.left; });
    CString caption;
    GetWindowText(caption);
    const HGDIOBJ font = reinterpret_cast<HGDIOBJ>(SendMessage(WM_GETFONT));
    const VSelectScope selected(pDC->m_hDC, font ? font : ::GetStockObject(DEFAULT_GUI_FONT));
    pDC->SetBkMode(TRANSPARENT);
    pDC->SetTextColor(m_bActive ? VGM.Dlg.clrCapActiveText : VGM.Dlg.clrCapInactiveText);
    pDC->DrawText(caption, text, DT_SINGLELINE | DT_VCENTER);
}

void VGuiDlg::DrawCapBtns(CDC* pDC)
{
    CRect window;
    GetWindowRect(window);
    window.OffsetRect(-window.left, -window.top);
    gui_dlg::ForEachCapBtn(window, Metrics(), GetCapBtns(),
                           [&](LRESULT hit, const CRect& button) { DrawCapBtn(pDC, hit, button); });
}

void VGuiDlg::DrawCapBtn(CDC* pDC, LRESULT nHit, const CRect& rcBtn)
{
    {
        const VSelectScope pen(*pDC, VGM.Dlg.penCapBtnBorder);
        const VSelectScope brush(pDC->m_hDC, ::GetStockObject(WHITE_BRUSH));
        pDC->RoundRect(rcBtn, {kCapBtnCorner, kCapBtnCorner});
    }
    switch (nHit) {
    case HTCLOSE:
        DrawCloseGlyph(*pDC, rcBtn);
        break;
    case HTMAXBUTTON:
        DrawMaximizeGlyph(*pDC, rcBtn, IsZoomed() != FALSE);
        break;
    case HTMINBUTTON:
        DrawMinimizeGlyph(*pDC, rcBtn);
        break;
    case HTHELP:
        DrawHelpGlyph(*pDC, rcBtn, m_bmpHelp);
        break;
    default:
        break;
    }
}

LRESULT VGuiDlg::NcHitTest(CPoint point)
{
    if (!m_bSkinNc || m_hWnd == nullptr)
        return HTERROR;
    CRect window;
    GetWindowRect(window);
    return gui_dlg::CapBtnAt(point, window, Metrics(), GetCapBtns());
}

LRESULT VGuiDlg::OnNcHitTest(CPoint point)
{
    if (!m_bSkinNc)
        return CDialog::OnNcHitTest(point);
    DrawNcArea();
    if (m_bNcBtnDown) {
        const LRESULT button = NcHitTest(point);
        if (button != HTERROR)
            return button;
    }
    CRect window;
    GetWindowRect(window);
    CPoint client = point;
    ScreenToClient(&client);
    return gui_dlg::IsDragPoint(client, window, Metrics()) ? HTCAPTION : CDialog::OnNcHitTest(point);
}

BOOL VGuiDlg::OnNcActivate(BOOL bActive)
{
    if (!m_bSkinNc)
        return CDialog::OnNcActivate(bActive);
    m_bActive = bActive;
    DrawNcArea();
    return TRUE; // without default processing, which would draw the system's caption
}

void VGuiDlg::OnNcLButtonDown(UINT nHitTest, CPoint point)
{
    m_bNcBtnDown = NcHitTest(point) != HTERROR;
    if (!m_bNcBtnDown)
        CDialog::OnNcLButtonDown(nHitTest, point);
}

void VGuiDlg::OnNcLButtonUp(UINT nHitTest, CPoint point)
{
    if (m_bNcBtnDown) {
        m_bNcBtnDown = 0;
        const HWND window = m_hWnd;
        PressCapBtn(NcHitTest(point));
        if (!VGIsAttached(this, window))
            return;
    }
    CDialog::OnNcLButtonUp(nHitTest, point);
}

// Does what a caption button is for. The dialog may be gone afterwards.
void VGuiDlg::PressCapBtn(LRESULT nHit)
{
    switch (nHit) {
    case HTMINBUTTON:
        // On a maximised dialog this button restores; intended.
        ShowWindow(IsZoomed() ? SW_SHOWNORMAL : SW_SHOWMINIMIZED);
        break;
    case HTMAXBUTTON:
        ShowWindow(IsZoomed() ? SW_RESTORE : SW_SHOWMAXIMIZED);
        break;
    case HTCLOSE: {
        // The host may close the dialog when its control loses the focus.
        const HWND window = m_hWnd;
        SetFocus();
        ::PostMessage(window, WM_CLOSE, 0, 0);
        break;
    }
    case HTHELP:
        PromptHelp();
        break;
    default:
        break;
    }
}

void VGuiDlg::OnNcLButtonDblClk(UINT nHitTest, CPoint point)
{
    CDialog::OnNcLButtonDblClk(nHitTest, point);
}

void VGuiDlg::OnNcMouseMove(UINT nHitTest, CPoint point)
{
    ShowCapBtnTip(point);
    TRACKMOUSEEVENT track{sizeof(track), TME_LEAVE | TME_NONCLIENT, m_hWnd, 0};
    ::TrackMouseEvent(&track);
    CDialog::OnNcMouseMove(nHitTest, point);
    DrawNcArea();
}

void VGuiDlg::OnNcMouseLeave()
{
    if (m_ToolTip.m_hWnd != nullptr) {
        m_ToolTip.Activate(FALSE);
        // The dialog is one tool for both areas: the next activation, by a control's tip, would bring the
        // button's text up over the bare client area.
        m_ToolTip.UpdateTipText(LPSTR_TEXTCALLBACK, this);
    }
    m_bNcBtnDown = 0;
    CDialog::OnNcMouseLeave();
}
