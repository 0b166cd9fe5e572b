#include "vgui/composite/tip_window.h"

#include "vgui/foundation/attached.h"
#include "vgui/foundation/buffered_dc.h"
#include "vgui/foundation/gdi_scope.h"

#include <algorithm>
#include <cstdint>

namespace
{

constexpr UINT kClassStyle = CS_SAVEBITS | CS_CLASSDC | CS_HREDRAW | CS_VREDRAW;
constexpr int kFontHeight = 12;
constexpr WCHAR kFontFace[] = L"宋体";
constexpr int kBorderWidth = 2;  // what both side borders add to the width
constexpr int kShadowOffset = 5; // to the right and downwards
constexpr int kShadowRings = 5;
constexpr int kRingFade = 15; // how much darker each ring of a graded shadow is than the one around it
constexpr DWORD kPatternAnd = 0x00A000C9; // raster operation: pattern AND destination
constexpr int kMaxExtent = 0x7FFF;        // of a window

int AsExtent(int64_t size)
{
    return static_cast<int>(std::clamp<int64_t>(size, 0, kMaxExtent));
}

void FrameRing(CDC& dc, CRect rect, int inset)
{
    rect.DeflateRect(inset, inset);
    const COLORREF color = ::GetSysColor(COLOR_3DDKSHADOW);
    dc.Draw3dRect(rect, color, color);
}

} // namespace

IMPLEMENT_DYNAMIC(CXTTipWindow, CWnd)

BEGIN_MESSAGE_MAP(CXTTipWindow, CWnd)
    ON_WM_MOUSEMOVE()
    ON_WM_KILLFOCUS()
    ON_WM_PAINT()
    ON_MESSAGE(WM_PRINTCLIENT, &CXTTipWindow::OnPrintClient)
    ON_WM_TIMER()
    ON_WM_ERASEBKGND()
    ON_WM_LBUTTONDOWN()
    ON_WM_RBUTTONDOWN()
    ON_WM_MBUTTONDOWN()
END_MESSAGE_MAP()

CXTTipWindow::CXTTipWindow()
    : m_clrBack(::GetSysColor(COLOR_INFOBK)), m_clrText(::GetSysColor(COLOR_INFOTEXT))
{
}

CXTTipWindow::~CXTTipWindow()
{
    DestroyWindow();
}

// ---- Preparing

BOOL CXTTipWindow::Create(CWnd* parent)
{
    const HWND owner = parent != nullptr ? parent->m_hWnd : nullptr;
    if (m_hWnd != nullptr || !::IsWindow(owner))
        return FALSE;
    if (!CreateEx(0, AfxRegisterWndClass(kClassStyle), L"", WS_POPUP, 0, 0, 0, 0, owner, nullptr))
        return FALSE;
    m_hParent = owner;
    HideTipWindow(); // ends what a window before this one has left
    CreateFonts();
    return TRUE;
}

BOOL CXTTipWindow::Create(LPCWSTR lpszClassName, LPCWSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                          CWnd* pParentWnd, UINT nID, CCreateContext* pContext)
{
    return CWnd::Create(lpszClassName, lpszWindowName, dwStyle, rect, pParentWnd, nID, pContext);
}

void CXTTipWindow::CreateFonts()
{
    LOGFONTW face{};
    face.lfHeight = kFontHeight;
    face.lfWeight = FW_NORMAL;
    face.lfCharSet = DEFAULT_CHARSET;
    std::copy(std::begin(kFontFace), std::end(kFontFace), face.lfFaceName);

    LOGFONTW parentFace{};
    const auto parentFont = reinterpret_cast<HFONT>(::SendMessageW(m_hParent, WM_GETFONT, 0, 0));
    if (parentFont != nullptr && ::GetObjectW(parentFont, sizeof(parentFace), &parentFace) != 0)
        std::copy(std::begin(parentFace.lfFaceName), std::end(parentFace.lfFaceName), face.lfFaceName);

    if (m_fontNormal.m_hObject == nullptr)
        m_fontNormal.CreateFontIndirect(&face);
    face.lfWeight = FW_BOLD;
    if (m_fontBold.m_hObject == nullptr)
        m_fontBold.CreateFontIndirect(&face);
}

void CXTTipWindow::SetTipText(LPCWSTR title, LPCWSTR body, BOOL redraw)
{
    m_strTitle = title;
    m_strBody = body;
    m_strBody.Remove(L'\r');
    SplitBody();
    Redraw(redraw);
}

void CXTTipWindow::SetTipColors(COLORREF back, COLORREF text, BOOL redraw)
{
    m_clrBack = back;
    m_clrText = text;
    Redraw(redraw);
}

void CXTTipWindow::Redraw(BOOL redraw)
{
    if (redraw && m_hWnd != nullptr)
        RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
}

void CXTTipWindow::SetMargins(CSize margins)
{
    m_margins = CSize(std::max<int>(margins.cx, 0), std::max<int>(margins.cy, 0));
}

void CXTTipWindow::SetLineSpace(int space)
{
    m_nLineSpace = std::max(space, 0);
}

void CXTTipWindow::SetTextTabStopPositions(int* positions, int count)
{
    m_nTabStops = positions != nullptr ? std::max(count, 0) : 0;
    m_pTabStops = m_nTabStops > 0 ? positions : nullptr;
}

// An empty body has no line, so that the tip ends below its title.
void CXTTipWindow::SplitBody()
{
    m_lines.RemoveAll();
    int start = 0;
    int end = m_strBody.Find(L'\n');
    for (; end >= 0; end = m_strBody.Find(L'\n', start)) {
        m_lines.Add(m_strBody.Mid(start, end - start));
        start = end + 1;
    }
    if (!m_strBody.IsEmpty())
        m_lines.Add(m_strBody.Mid(start));
}

// ---- Showing and hiding

BOOL CXTTipWindow::ShowTipWindow(const CPoint& point, DWORD style, UINT delay, UINT duration, BOOL centre)
{
    m_ptShow = point;
    m_bCentre = centre;
    const bool hasText = !m_strTitle.IsEmpty() || !m_strBody.IsEmpty();
    if (m_hWnd == nullptr || !hasText || m_bShowPending || IsWindowVisible())
        return FALSE;
    m_dwStyle = style;
    if (duration != 0) {
        const uint64_t end = std::min<uint64_t>(uint64_t{delay} + duration, USER_TIMER_MAXIMUM);
        SetTimer(m_nHideTimer, static_cast<UINT>(end), nullptr);
    }
    if (delay == 0) {
        Appear();
    } else {
        SetTimer(m_nShowTimer, std::min<UINT>(delay, USER_TIMER_MAXIMUM), nullptr);
        m_bShowPending = TRUE;
    }
    return TRUE;
}

BOOL CXTTipWindow::ShowTipWindow(const CRect& hot, const CPoint& point, DWORD style, UINT delay,
                                 UINT duration, BOOL centre, BOOL offsetFromPoint)
{
    if (hot.IsRectEmpty())
        return ShowTipWindow(point, style, delay, duration, centre);
    const HWND self = m_hWnd;
    HideTipWindow();
    if (!VGIsAttached(this, self))
        return FALSE;
    m_rcHot = hot;
    ::MapWindowPoints(m_hParent, nullptr, reinterpret_cast<POINT*>(&m_rcHot), 2);
    CPoint place = offsetFromPoint ? point + m_ptOffset : hot.TopLeft();
    ::ClientToScreen(m_hParent, &place);
    return ShowTipWindow(place, style, delay, duration, centre);
}

// Who loses the mouse capture to the tip may destroy it: nothing of it is touched afterwards.
void CXTTipWindow::Appear()
{
    InitializeSize(m_ptShow, m_bCentre);
    CRect window = m_rcWindow;
    if ((m_dwStyle & VGTipShadow) != 0) {
        window.BottomRight().Offset(kShadowOffset, kShadowOffset);
        KeepPictureBelow(window);
    }
    SetWindowPos(&wndTop, window.left, window.top, window.Width(), window.Height(),
                 SWP_NOACTIVATE | SWP_SHOWWINDOW);
    SetCapture();
}

// A window has a picture of its own, so the shadow would fall on nothing. The screen may still show a tip
// that was hidden just now; the parent's own picture, where the tip lies over it, does not.
void CXTTipWindow::KeepPictureBelow(const CRect& window)
{
    m_below.DeleteObject();
    const VOwnedScreenDC screen(::GetDC(nullptr));
    CDC memory;
    if (!memory.CreateCompatibleDC(CDC::FromHandle(screen.Get())) ||
        !m_below.Attach(::CreateCompatibleBitmap(screen.Get(), window.Width(), window.Height())))
        return;
    const VSelectScope selected(memory, m_below);
    ::BitBlt(memory.m_hDC, 0, 0, window.Width(), window.Height(), screen.Get(), window.left, window.top,
             SRCCOPY);

    const HWND below = ::GetAncestor(m_hParent, GA_ROOT);
    CRect frame;
    CRect common;
    if (!::GetWindowRect(below, frame) || !common.IntersectRect(frame, window))
        return;
    CWindowDC picture(CWnd::FromHandle(below));
    memory.BitBlt(common.left - window.left, common.top - window.top, common.Width(), common.Height(),
                  &picture, common.left - frame.left, common.top - frame.top, SRCCOPY);
}

void CXTTipWindow::HideTipWindow()
{
    m_bShowPending = FALSE;
    m_rcHot.SetRectEmpty();
    m_below.DeleteObject();
    if (m_hWnd == nullptr)
        return;
    KillTimer(m_nHideTimer);
    KillTimer(m_nShowTimer);
    if (::GetCapture() == m_hWnd)
        ::ReleaseCapture();
    // Last: the host is told when the tip was active, and may destroy it.
    if (IsWindowVisible())
        ShowWindow(SW_HIDE);
}

void CXTTipWindow::OnTimer(UINT_PTR nIDEvent)
{
    if (nIDEvent == m_nHideTimer) {
        HideTipWindow();
        return;
    }
    if (nIDEvent != m_nShowTimer) {
        CWnd::OnTimer(nIDEvent);
        return;
    }
    KillTimer(m_nShowTimer);
    CPoint cursor;
    ::GetCursorPos(&cursor);
    if (!m_rcHot.IsRectEmpty() && !m_rcHot.PtInRect(cursor))
        return; // still pending on purpose: no other show until the tip is hidden
    m_bShowPending = FALSE;
    Appear();
}

// ---- Geometry

// Tabbed extents hold 16 bits only: a text that is wider than a window is taken to be as wide.
CSize CXTTipWindow::MeasureText(CDC& dc, const CString& text) const
{
    CSize extent = dc.GetTabbedTextExtent(text, m_nTabStops, m_pTabStops);
    if (extent.cx < 0 || dc.GetTextExtent(text).cx > kMaxExtent)
        extent.cx = kMaxExtent;
    return extent;
}

CSize CXTTipWindow::MeasureBody(CDC& dc) const
{
    TEXTMETRIC metrics{};
    dc.GetTextMetrics(&metrics);
    int64_t height = 0;
    int width = 0;
    for (int i = 0; i < m_lines.GetSize(); ++i) {
        const CSize extent = MeasureText(dc, m_lines[i]);
        width = std::max<int>(width, extent.cx);
        height += m_lines[i].IsEmpty() ? metrics.tmHeight : extent.cy;
    }
    return {width, AsExtent(height)};
}

void CXTTipWindow::InitializeSize(const CPoint& point, BOOL centre)
{
    CClientDC dc(this);
    {
        const VSelectScope bold(dc, m_fontBold);
        m_titleExtent = MeasureText(dc, m_strTitle);
    }
    const VSelectScope normal(dc, m_fontNormal);
    const CSize body = MeasureBody(dc);

    const int64_t width = int64_t{2} * m_margins.cx + std::max(m_titleExtent.cx, body.cx) + kBorderWidth;
    int64_t height = int64_t{2} * m_margins.cy + body.cy;
    if (!m_strTitle.IsEmpty())
        height += int64_t{m_titleExtent.cy} + m_nLineSpace;
    m_rcWindow = CRect(point, CSize(AsExtent(width), AsExtent(height)));
    if (centre)
        m_rcWindow.OffsetRect(-m_rcWindow.Width() / 2, 0);

    const CRect workArea = GetWorkArea(point);
    if (!workArea.IsRectEmpty()) {
        if (m_rcWindow.left < workArea.left)
            m_rcWindow.MoveToX(workArea.left);
        else if (m_rcWindow.right > workArea.right)
            m_rcWindow.MoveToX(workArea.right - m_rcWindow.Width());
        if (m_rcWindow.bottom > workArea.bottom)
            m_rcWindow.MoveToY(workArea.bottom - m_rcWindow.Height());
    }
    m_rcClient = CRect(CPoint(0, 0), m_rcWindow.Size());
    m_rcShadow = m_rcClient;
    if ((m_dwStyle & VGTipShadow) != 0)
        m_rcShadow.OffsetRect(kShadowOffset, kShadowOffset);
}

// The parent's monitor counts, wherever the tip is to appear.
CRect CXTTipWindow::GetWorkArea(const CPoint& /*point*/) const
{
    CRect parent(0, 0, 0, 0);
    ::GetWindowRect(m_hParent, parent);
    MONITORINFO monitor{};
    monitor.cbSize = sizeof(monitor);
    if (!::GetMonitorInfoW(::MonitorFromRect(parent, MONITOR_DEFAULTTONEAREST), &monitor))
        return {0, 0, 0, 0};
    return monitor.rcWork;
}

// ---- Drawing

void CXTTipWindow::OnPaint()
{
    CPaintDC target(this);
    CRect client;
    GetClientRect(client);
    VBufferedDC dc(target, client, VBufferedDC::Start::Target);
    Draw(dc);
}

LRESULT CXTTipWindow::OnPrintClient(WPARAM wParam, LPARAM /*lParam*/)
{
    if (CDC* const dc = CDC::FromHandle(reinterpret_cast<HDC>(wParam)))
        Draw(*dc);
    return 0;
}

// The paint handler fills everything.
BOOL CXTTipWindow::OnEraseBkgnd(CDC* /*pDC*/)
{
    return TRUE;
}

void CXTTipWindow::Draw(CDC& dc)
{
    if ((m_dwStyle & VGTipShadow) != 0) {
        CDC below;
        if (m_below.m_hObject != nullptr && below.CreateCompatibleDC(&dc)) {
            const VSelectScope selected(below, m_below);
            dc.BitBlt(0, 0, m_rcShadow.right, m_rcShadow.bottom, &below, 0, 0, SRCCOPY);
        }
        DrawShadowRect(&dc, m_rcShadow);
    }
    dc.FillSolidRect(m_rcClient, m_clrBack);
    FrameRing(dc, m_rcClient, 0);
    if ((m_dwStyle & VGTipDoubleBorder) != 0)
        FrameRing(dc, m_rcClient, 1);
    DrawTexts(dc);
}

void CXTTipWindow::DrawTexts(CDC& dc)
{
    const VBkModeScope transparent(dc.m_hDC, TRANSPARENT);
    const VTextColorScope color(dc.m_hDC, m_clrText);
    const int x = AsExtent(m_margins.cx) + 1;
    int y = AsExtent(m_margins.cy);
    if (!m_strTitle.IsEmpty()) {
        const VSelectScope bold(dc, m_fontBold);
        // Not the measured height: the title may have been set after the tip was sized.
        y += dc.TabbedTextOut(x, y, m_strTitle, m_nTabStops, m_pTabStops, x).cy + AsExtent(m_nLineSpace);
    }
    const VSelectScope normal(dc, m_fontNormal);
    TEXTMETRIC metrics{};
    dc.GetTextMetrics(&metrics);
    for (int i = 0; i < m_lines.GetSize() && y < m_rcClient.bottom; ++i, y += metrics.tmHeight)
        dc.TabbedTextOut(x, y, m_lines[i], m_nTabStops, m_pTabStops, x);
}

void CXTTipWindow::DrawShadowRect(CDC* pDC, const CRect& rect)
{
    if ((m_dwStyle & VGTipGradedShadow) != 0)
        DrawGradedShadow(*pDC, rect);
    else
        DrawDitheredShadow(*pDC, rect);
}

void CXTTipWindow::DrawGradedShadow(CDC& dc, const CRect& rect)
{
    CRect visible;
    dc.GetClipBox(visible);
    visible &= rect;
    for (int y = visible.top; y < visible.bottom; ++y) {
        for (int x = visible.left; x < visible.right; ++x) {
            const int ring = std::min({x - rect.left, y - rect.top, rect.right - 1 - x, rect.bottom - 1 - y});
            if (ring >= kShadowRings)
                x = rect.right - kShadowRings - 1; // the tip covers what is between
            else if (const COLORREF color = dc.GetPixel(x, y); color != CLR_INVALID)
                dc.SetPixel(x, y, AlphaPixel(color, (ring + 1) * kRingFade));
        }
    }
}

void CXTTipWindow::DrawDitheredShadow(CDC& dc, const CRect& rect)
{
    static constexpr WORD kCheckerboard[] = {0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA};
    const VOwnedBitmap pattern(::CreateBitmap(8, 8, 1, 1, kCheckerboard));
    const VOwnedBrush brush(::CreatePatternBrush(pattern.Get()));
    const VSelectScope selected(dc.m_hDC, brush.Get());
    const VTextColorScope black(dc.m_hDC, RGB(0, 0, 0));
    const VBkColorScope white(dc.m_hDC, RGB(255, 255, 255));
    dc.PatBlt(rect.left, rect.top, rect.Width(), rect.Height(), kPatternAnd);
}

COLORREF CXTTipWindow::AlphaPixel(COLORREF color, int amount)
{
    return RGB(CheckValue(GetRValue(color) - amount), CheckValue(GetGValue(color) - amount),
               CheckValue(GetBValue(color) - amount));
}

int CXTTipWindow::CheckValue(int value)
{
    return std::clamp(value, 0, 255);
}

// ---- Mouse and focus

void CXTTipWindow::OnMouseMove(UINT /*nFlags*/, CPoint point)
{
    const HWND self = m_hWnd;
    ClientToScreen(&point);
    if (!m_rcHot.IsRectEmpty() && !m_rcHot.PtInRect(point))
        HideTipWindow();
    if (VGIsAttached(this, self))
        Default();
}

void CXTTipWindow::OnKillFocus(CWnd* pNewWnd)
{
    CWnd::OnKillFocus(pNewWnd);
    const HWND parent = m_hParent;
    const bool hasShadow = (m_dwStyle & VGTipShadow) != 0;
    HideTipWindow();
    if (hasShadow && ::IsWindow(parent))
        ::RedrawWindow(parent, nullptr, nullptr,
                       RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
}

void CXTTipWindow::ForwardMessage(UINT message, UINT flags, CPoint point)
{
    ClientToScreen(&point);
    const HWND self = m_hWnd;
    HideTipWindow();
    const HWND target = ::WindowFromPoint(point);
    if (target == nullptr || target == self || ::IsChild(target, self))
        return;
    const auto at = [](CPoint place) { return MAKELPARAM(place.x, place.y); };
    const LRESULT hit = ::SendMessageW(target, WM_NCHITTEST, 0, at(point));
    if (const CWnd* mainWindow = AfxGetMainWnd())
        ::SendMessageW(target, WM_MOUSEACTIVATE, reinterpret_cast<WPARAM>(mainWindow->m_hWnd),
                       MAKELPARAM(hit, message));
    ::ScreenToClient(target, &point);
    ::SendMessageW(target, message, flags, at(point));
}

// The window that gets the click may destroy the tip.
void CXTTipWindow::PassOn(UINT message, UINT flags, CPoint point)
{
    const HWND self = m_hWnd;
    ForwardMessage(message, flags, point);
    if (VGIsAttached(this, self))
        Default();
}

void CXTTipWindow::OnLButtonDown(UINT nFlags, CPoint point)
{
    PassOn(WM_LBUTTONDOWN, nFlags, point);
}

void CXTTipWindow::OnRButtonDown(UINT nFlags, CPoint point)
{
    PassOn(WM_RBUTTONDOWN, nFlags, point);
}

void CXTTipWindow::OnMButtonDown(UINT nFlags, CPoint point)
{
    PassOn(WM_MBUTTONDOWN, nFlags, point);
}
